#include "tessaro/platform/FileRules.h"
#include "tessaro/platform/NativePath.h"
#include "tessaro/platform/Paths.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace platform {
namespace {

bool IsReadOnly(const struct stat& status) {
    return (status.st_mode & 0222) == 0;
}

bool SameFile(const struct stat& a, const struct stat& b) {
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

class Descriptor {
public:
    explicit Descriptor(int open) : value(open) {}
    ~Descriptor() {
        if (value >= 0)
            close(value);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    const int value;
};

/// Contents, rights and times of one open file into another that is empty, down to the disk.
bool CopyContents(int source, int target) {
    struct stat status;
    if (fstat(source, &status) != 0 || !S_ISREG(status.st_mode))
        return false;
    std::vector<char> buffer(1 << 18);
    for (;;) {
        const ssize_t count = read(source, buffer.data(), buffer.size());
        if (count == 0)
            break;
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0 || !WriteAll(target, buffer.data(), static_cast<std::size_t>(count)))
            return false;
    }
    const timespec times[] = {status.st_atim, status.st_mtim};
    // Rights are kept where the file system knows them.
    const bool kept = fchmod(target, status.st_mode & 07777) == 0 || errno == EPERM || errno == ENOTSUP;
    return kept && futimens(target, times) == 0 && fsync(target) == 0;
}

/// Copies to a path where nothing is. The new file gets its name when it is whole, so that a process that dies leaves
/// no part of one, unless the file system has no files without a name.
bool CopyToNew(const std::string& from, const std::string& to) {
    const Descriptor source(open(from.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (source.value < 0)
        return false;
    const Descriptor nameless(open(SplitNative(to).folder.c_str(), O_WRONLY | O_TMPFILE | O_CLOEXEC, 0600));
    if (nameless.value >= 0) {
        const std::string self = "/proc/self/fd/" + std::to_string(nameless.value);
        return CopyContents(source.value, nameless.value) &&
               linkat(AT_FDCWD, self.c_str(), AT_FDCWD, to.c_str(), AT_SYMLINK_FOLLOW) == 0;
    }
    const Descriptor target(open(to.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    if (target.value < 0)
        return false;
    if (CopyContents(source.value, target.value))
        return true;
    unlink(to.c_str());
    return false;
}

/// Copies over what is there; nothing is left of a copy that fails.
bool CopyOver(const std::string& from, const std::string& to) {
    const Descriptor source(open(from.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (source.value < 0)
        return false;
    const Descriptor target(open(to.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600));
    if (target.value < 0)
        return false;
    if (CopyContents(source.value, target.value))
        return true;
    unlink(to.c_str());
    return false;
}

/// The road of a move between file systems, and on those that can't move without replacing.
bool MoveByCopy(const std::string& from, const std::string& to) {
    struct stat status;
    if (stat(from.c_str(), &status) != 0 || !S_ISREG(status.st_mode) || IsReadOnly(status))
        return false;
    if (!CopyToNew(from, to))
        return false;
    if (unlink(from.c_str()) == 0)
        return true;
    unlink(to.c_str());
    return false;
}

bool SameEntry(const std::string& a, const std::string& b) {
    const NativeParts first = SplitNative(a), second = SplitNative(b);
    struct stat firstFolder, secondFolder;
    return first.name == second.name && stat(first.folder.c_str(), &firstFolder) == 0 &&
           stat(second.folder.c_str(), &secondFolder) == 0 && SameFile(firstFolder, secondFolder);
}

} // namespace

bool RemoveFile(std::wstring_view path) {
    const auto native = FindNative(path);
    struct stat status;
    if (!native || stat(native->c_str(), &status) != 0 || IsReadOnly(status))
        return false;
    return unlink(native->c_str()) == 0;
}

bool MoveFile(std::wstring_view from, std::wstring_view to) {
    const auto source = FindNative(from);
    auto target = NativeForCreation(to);
    if (!source || !target)
        return false;
    struct stat status;
    const bool respelled = stat(target->c_str(), &status) == 0;
    if (respelled) {
        if (!SameEntry(*source, *target))
            return false;
        const std::string name = SplitNative(NativeAsSpelled(to)).name;
        const NativeParts old = SplitNative(*target);
        if (old.name == name)
            return true;
        target = old.folder + '/' + name;
    }
    if (renameat2(AT_FDCWD, source->c_str(), AT_FDCWD, target->c_str(), RENAME_NOREPLACE) == 0)
        return true;
    // A file system that ignores case finds the old spelling under the new one.
    if (errno == EEXIST)
        return respelled && rename(source->c_str(), target->c_str()) == 0;
    return (errno == EXDEV || errno == EINVAL || errno == ENOSYS) && MoveByCopy(*source, *target);
}

bool ReplaceFile(std::wstring_view from, std::wstring_view replaced) {
    const auto source = FindNative(from);
    const auto target = FindNative(replaced);
    struct stat sourceStatus, targetStatus;
    if (!source || !target || stat(source->c_str(), &sourceStatus) != 0 || stat(target->c_str(), &targetStatus) != 0 ||
        IsReadOnly(sourceStatus) || IsReadOnly(targetStatus) || SameFile(sourceStatus, targetStatus))
        return false;
    return rename(source->c_str(), target->c_str()) == 0;
}

bool BackupFile(std::wstring_view from, std::wstring_view to) {
    const auto source = FindNative(from);
    const auto target = NativeForCreation(to);
    if (!source || !target)
        return false;
    if (linkat(AT_FDCWD, source->c_str(), AT_FDCWD, target->c_str(), AT_SYMLINK_FOLLOW) == 0)
        return true;
    struct stat status;
    if (errno == EEXIST || stat(target->c_str(), &status) == 0)
        return false;
    const bool behindLink = lstat(source->c_str(), &status) == 0 && S_ISLNK(status.st_mode);
    return behindLink ? CopyToNew(*source, *target) : MoveFile(from, to);
}

bool CopyFile(std::wstring_view from, std::wstring_view to) {
    const auto source = FindNative(from);
    const auto target = NativeForCreation(to);
    struct stat sourceStatus, targetStatus;
    if (!source || !target || stat(source->c_str(), &sourceStatus) != 0 || !S_ISREG(sourceStatus.st_mode))
        return false;
    if (stat(target->c_str(), &targetStatus) == 0 &&
        (SameFile(sourceStatus, targetStatus) || IsReadOnly(targetStatus) || !S_ISREG(targetStatus.st_mode)))
        return false;
    return CopyOver(*source, *target);
}

bool CreateFolder(std::wstring_view path) {
    if (FileExists(path))
        return false;
    const std::wstring_view name = path.substr(0, path.find_last_not_of(L"/\\") + 1);
    const std::size_t cut = name.find_last_of(L"/\\");
    if (cut != std::wstring_view::npos && cut > 0 && !FileExists(name.substr(0, cut)) &&
        !CreateFolder(name.substr(0, cut)))
        return false;
    const auto native = NativeForCreation(name);
    return native && mkdir(native->c_str(), 0777) == 0;
}

} // namespace platform
