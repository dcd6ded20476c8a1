#include "editor/dwg/source.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace dwg {

namespace {

bool within(std::uint64_t size, std::uint64_t offset, std::uint64_t count) {
    return offset <= size && count <= size - offset;
}

Error beyondTheEnd(std::uint64_t offset, std::uint64_t count) {
    return {ErrorKind::truncated, "the file ends before the " + std::to_string(count) + " bytes that are read here",
            offset};
}

class FileSource final : public Source {
public:
    FileSource(int file, std::uint64_t bytes) : descriptor(file), length(bytes) {}
    ~FileSource() override { ::close(descriptor); }

    std::uint64_t size() const override { return length; }

    Result<void> read(std::uint64_t offset, std::span<std::uint8_t> out) const override {
        if (!within(length, offset, out.size()))
            return beyondTheEnd(offset, out.size());
        std::size_t done = 0;
        while (done < out.size()) {
            const ssize_t got =
                ::pread(descriptor, out.data() + done, out.size() - done, static_cast<off_t>(offset + done));
            if (got < 0 && errno == EINTR)
                continue;
            if (got < 0)
                return Error{ErrorKind::io, std::strerror(errno), offset + done};
            if (got == 0) // shortened since it was opened
                return beyondTheEnd(offset + done, out.size() - done);
            done += static_cast<std::size_t>(got);
        }
        return {};
    }

private:
    int descriptor;
    std::uint64_t length;
};

class MemorySource final : public Source {
public:
    explicit MemorySource(Bytes bytes) : content(std::move(bytes)) {}

    std::uint64_t size() const override { return content.size(); }

    Result<void> read(std::uint64_t offset, std::span<std::uint8_t> out) const override {
        if (!within(content.size(), offset, out.size()))
            return beyondTheEnd(offset, out.size());
        std::copy_n(content.begin() + static_cast<std::ptrdiff_t>(offset), out.size(), out.begin());
        return {};
    }

private:
    Bytes content;
};

} // namespace

Result<Bytes> Source::bytes(std::uint64_t offset, std::uint64_t count) const {
    if (!within(size(), offset, count))
        return beyondTheEnd(offset, count);
    Bytes out(count);
    if (auto done = read(offset, out); !done)
        return done.error();
    return out;
}

std::filesystem::path pathOf(std::wstring_view name) {
    // From wide text a path is made by the locale, from this by UTF-8.
    return std::u32string(name.begin(), name.end());
}

Result<SourcePtr> openSource(const std::filesystem::path& file) {
    const int descriptor = ::open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (descriptor < 0)
        return Error{ErrorKind::io, std::strerror(errno), 0};
    struct stat status {};
    if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
        const std::string reason = S_ISDIR(status.st_mode) ? std::strerror(EISDIR) : "not a regular file";
        ::close(descriptor);
        return Error{ErrorKind::io, reason, 0};
    }
    return SourcePtr(std::make_shared<FileSource>(descriptor, static_cast<std::uint64_t>(status.st_size)));
}

SourcePtr memorySource(Bytes bytes) {
    return std::make_shared<MemorySource>(std::move(bytes));
}

} // namespace dwg
