#include "editor/database/saving.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace editor {

namespace {

dwg::Error systemError(const std::string& what) {
    return {dwg::ErrorKind::io, what + ": " + std::strerror(errno), 0};
}

/// A new file beside `file`, removed again unless it took the name.
class TemporaryFile {
public:
    explicit TemporaryFile(const std::filesystem::path& file)
        : name(file.string() + ".XXXXXX"), descriptor(mkstemp(name.data())) {}
    ~TemporaryFile() {
        if (descriptor >= 0)
            ::close(descriptor);
        if (!name.empty())
            ::unlink(name.c_str());
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    bool isOpen() const { return descriptor >= 0; }

    bool write(dwg::ByteView bytes, mode_t mode) {
        while (!bytes.empty()) {
            const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
            if (written < 0 && errno == EINTR)
                continue;
            if (written <= 0)
                return false;
            bytes = bytes.subspan(static_cast<std::size_t>(written));
        }
        return ::fchmod(descriptor, mode) == 0 && ::fsync(descriptor) == 0;
    }

    /// Stands for the content of `other` instead: as a further name of it, or as a copy where a file has one name only.
    bool holdContentOf(const std::filesystem::path& other) {
        ::unlink(name.c_str());
        if (::link(other.c_str(), name.c_str()) == 0)
            return true;
        std::error_code failure;
        std::filesystem::copy_file(other, name, failure);
        return !failure;
    }

    bool take(const std::filesystem::path& file) {
        if (::rename(name.c_str(), file.c_str()) != 0)
            return false;
        ::unlink(name.c_str()); // Two names of the same content both stay.
        name.clear();
        return true;
    }

private:
    std::string name;
    int descriptor;
};

/// The old file stays in its place until the new one takes it, and an earlier back-up until this one does.
bool keepAsBackup(const std::filesystem::path& file) {
    std::filesystem::path backup = file;
    backup.replace_extension(".bak");
    TemporaryFile kept(backup);
    return kept.isOpen() && kept.holdContentOf(file) && kept.take(backup);
}

} // namespace

dwg::Result<void> replaceFile(const std::filesystem::path& file, dwg::ByteView bytes, bool keepBackup) {
    constexpr mode_t writeBits = S_IWUSR | S_IWGRP | S_IWOTH;
    constexpr mode_t usualMode = S_IRUSR | S_IWUSR | S_IRGRP | S_IROTH;
    struct stat status {};
    const bool exists = ::stat(file.c_str(), &status) == 0;
    // A file that can't be looked at is not taken for a missing one: it would go without its back-up.
    if (!exists && errno != ENOENT)
        return systemError("the file can't be looked at");
    if (exists && ((status.st_mode & writeBits) == 0 || !S_ISREG(status.st_mode)))
        return dwg::Error{dwg::ErrorKind::io, "the file is read-only"};

    TemporaryFile temporary(file);
    if (!temporary.isOpen())
        return systemError("no file can be made in the folder");
    if (!temporary.write(bytes, exists ? status.st_mode & 07777 : usualMode))
        return systemError("the file can't be written");
    if (exists && keepBackup && !keepAsBackup(file))
        return systemError("the back-up can't be made");
    if (!temporary.take(file))
        return systemError("the file can't be replaced");
    return {};
}

} // namespace editor
