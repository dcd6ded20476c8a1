#include "tessaro/platform/File.h"

#include "tessaro/platform/FileRules.h"
#include "tessaro/platform/NativePath.h"
#include "tessaro/platform/Text.h"

#include <cerrno>
#include <fcntl.h>
#include <limits>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {

FileException::Cause CauseOf(int error) {
    switch (error) {
    case ENOENT:
        return FileException::fileNotFound;
    case ENOTDIR:
    case ENAMETOOLONG:
    case ELOOP:
        return FileException::badPath;
    case EMFILE:
    case ENFILE:
        return FileException::tooManyOpenFiles;
    case EACCES:
    case EPERM:
    case EROFS:
    case EISDIR:
    case ETXTBSY:
    case ENXIO:
        return FileException::accessDenied;
    case EBADF:
        return FileException::invalidFile;
    case EWOULDBLOCK:
        return FileException::sharingViolation;
    case EDQUOT:
    case EFBIG:
    case ENOSPC:
        return FileException::diskFull;
    case EINVAL:
        return FileException::badSeek;
    case EIO:
        return FileException::hardIO;
    default:
        return FileException::genericException;
    }
}

FileException::Cause Refusal(const struct stat& status, bool writes) {
    return !S_ISREG(status.st_mode) || (writes && (status.st_mode & 0222) == 0) ? FileException::accessDenied
                                                                                : FileException::none;
}

bool WriteAll(int descriptor, const char* bytes, std::size_t count) {
    while (count > 0) {
        const ssize_t written = write(descriptor, bytes, count);
        if (written < 0 && errno != EINTR)
            return false;
        if (written > 0) {
            bytes += written;
            count -= static_cast<std::size_t>(written);
        }
    }
    return true;
}

namespace {

int SystemFlags(unsigned mode) {
    const bool writes = (mode & File::modeWrite) != 0, reads = (mode & File::modeRead) != 0 || !writes;
    int flags = writes ? (reads ? O_RDWR : O_WRONLY) : O_RDONLY;
    if ((mode & File::modeCreate) != 0)
        flags |= O_CREAT;
    if ((mode & File::modeAppend) != 0)
        flags |= O_APPEND;
    // Not to wait for the other end of a pipe.
    return flags | O_CLOEXEC | O_NONBLOCK;
}

struct Opened {
    int descriptor = -1;
    FileException::Cause cause = FileException::none;
};

Opened OpenDescriptor(std::wstring_view path, unsigned mode) {
    const bool creates = (mode & File::modeCreate) != 0, writes = (mode & File::modeWrite) != 0;
    const auto native = creates ? NativeForCreation(path) : FindNative(path);
    if (!native)
        return {-1, creates ? FileException::badPath : FileException::fileNotFound};
    struct stat status;
    if (stat(native->c_str(), &status) == 0)
        if (const auto cause = Refusal(status, writes); cause != FileException::none)
            return {-1, cause};
    const int descriptor = open(native->c_str(), SystemFlags(mode), 0666);
    if (descriptor < 0)
        return {-1, CauseOf(errno)};
    auto cause = FileException::none;
    if (fstat(descriptor, &status) != 0)
        cause = CauseOf(errno);
    else
        cause = Refusal(status, writes);
    if (cause == FileException::none && (mode & File::shareExclusive) != 0 && flock(descriptor, LOCK_EX | LOCK_NB) != 0)
        cause = CauseOf(errno);
    // Emptied only once it is known to be ours.
    if (cause == FileException::none && creates && writes && (mode & File::modeNoTruncate) == 0 &&
        ftruncate(descriptor, 0) != 0)
        cause = CauseOf(errno);
    if (cause != FileException::none) {
        close(descriptor);
        return {-1, cause};
    }
    return {descriptor, cause};
}

} // namespace

File::File(std::wstring_view path, unsigned mode) : name(path) {
    const Opened opened = OpenDescriptor(path, mode);
    if (opened.descriptor < 0)
        throw FileException(opened.cause, name);
    descriptor = opened.descriptor;
}

File::~File() {
    Abort();
}

bool File::Open(std::wstring_view path, unsigned mode) {
    Abort();
    name = path;
    descriptor = OpenDescriptor(path, mode).descriptor;
    return IsOpen();
}

std::size_t File::Read(void* buffer, std::size_t count) {
    std::size_t done = 0;
    while (done < count) {
        const ssize_t part = read(descriptor, static_cast<char*>(buffer) + done, count - done);
        if (part == 0)
            break;
        if (part > 0)
            done += static_cast<std::size_t>(part);
        else if (errno != EINTR)
            throw FileException(CauseOf(errno), name);
    }
    return done;
}

void File::Write(const void* buffer, std::size_t count) {
    if (!WriteAll(descriptor, static_cast<const char*>(buffer), count))
        throw FileException(CauseOf(errno), name);
}

void File::Seek(std::uint64_t position) {
    if (position > static_cast<std::uint64_t>(std::numeric_limits<off_t>::max()))
        throw FileException(FileException::badSeek, name);
    if (lseek(descriptor, static_cast<off_t>(position), SEEK_SET) < 0)
        throw FileException(CauseOf(errno), name);
}

std::uint64_t File::SeekToEnd() {
    const off_t position = lseek(descriptor, 0, SEEK_END);
    if (position < 0)
        throw FileException(CauseOf(errno), name);
    return static_cast<std::uint64_t>(position);
}

std::uint64_t File::Position() const {
    const off_t position = lseek(descriptor, 0, SEEK_CUR);
    if (position < 0)
        throw FileException(CauseOf(errno), name);
    return static_cast<std::uint64_t>(position);
}

std::uint64_t File::Length() const {
    struct stat status;
    if (fstat(descriptor, &status) != 0)
        throw FileException(CauseOf(errno), name);
    return static_cast<std::uint64_t>(status.st_size);
}

void File::Close() {
    const int closing = descriptor;
    descriptor = -1;
    if (closing >= 0 && close(closing) != 0 && errno != EINTR)
        throw FileException(CauseOf(errno), name);
}

void File::Abort() noexcept {
    if (descriptor >= 0)
        close(descriptor);
    descriptor = -1;
}

} // namespace platform
