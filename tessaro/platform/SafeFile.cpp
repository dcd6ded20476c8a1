#include "tessaro/platform/SafeFile.h"

#include "tessaro/platform/FileRules.h"
#include "tessaro/platform/NativePath.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <optional>
#include <sys/file.h>
#include <unistd.h>
#include <utility>

namespace platform {
namespace {

constexpr int kMostLinks = 40;
constexpr int kMostSavers = 9;

int Close(int& descriptor) {
    const int closing = std::exchange(descriptor, -1);
    return closing < 0 || close(closing) == 0 || errno == EINTR ? 0 : errno;
}

bool Leads(const std::string& path, int descriptor) {
    struct stat there, here;
    return lstat(path.c_str(), &there) == 0 && fstat(descriptor, &here) == 0 && there.st_dev == here.st_dev &&
           there.st_ino == here.st_ino;
}

/// Where the last name's links lead, whether a file is there or not; nothing in a circle of links.
std::optional<std::string> FollowLinks(std::string path) {
    for (int links = 0; links < kMostLinks; ++links) {
        struct stat status;
        if (lstat(path.c_str(), &status) != 0 || !S_ISLNK(status.st_mode))
            return path;
        std::string goal(static_cast<std::size_t>(std::max<off_t>(status.st_size, 4095)) + 1, '\0');
        const ssize_t length = readlink(path.c_str(), goal.data(), goal.size());
        if (length <= 0)
            return path;
        goal.resize(static_cast<std::size_t>(length));
        path = goal.front() == '/' ? goal : SplitNative(path).folder + '/' + goal;
    }
    return std::nullopt;
}

/// Takes away what a killed process left under that name; false where a living one holds it.
bool ClearLeftover(const std::string& path) {
    int descriptor = open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0)
        return errno == ENOENT;
    struct stat status;
    const bool ours = fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) &&
                      flock(descriptor, LOCK_EX | LOCK_NB) == 0 && Leads(path, descriptor) && unlink(path.c_str()) == 0;
    Close(descriptor);
    return ours;
}

/// A new file that is locked, so that no other save takes it for a leftover. -1, with errno, where the folder refuses.
int CreateLocked(const std::string& path) {
    if (!ClearLeftover(path)) {
        errno = EEXIST;
        return -1;
    }
    int descriptor = open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666);
    if (descriptor < 0)
        return -1;
    if (flock(descriptor, LOCK_EX | LOCK_NB) == 0 && Leads(path, descriptor))
        return descriptor;
    Close(descriptor);
    errno = EEXIST;
    return -1;
}

/// Owner before rights: a change of owner takes rights away.
bool TakeAfter(int descriptor, const struct stat& old) {
    struct stat now;
    if (fstat(descriptor, &now) != 0)
        return false;
    if ((now.st_uid != old.st_uid || now.st_gid != old.st_gid) && fchown(descriptor, old.st_uid, old.st_gid) != 0)
        return false;
    return (now.st_mode & 07777) == (old.st_mode & 07777) || fchmod(descriptor, old.st_mode & 07777) == 0;
}

/// The folder, or its file system, takes no new file or no other owner, or the file is mounted by itself; a full disk
/// and the like are no such refusal.
bool RefusesNewFiles(int error) {
    return error == EACCES || error == EPERM || error == EROFS || error == ENAMETOOLONG || error == ENOTSUP ||
           error == EINVAL || error == EBUSY || error == EXDEV;
}

} // namespace

SafeFile::SafeFile(std::wstring_view path, unsigned mode) {
    if (const auto cause = TryOpen(path, mode); cause != FileException::none)
        throw FileException(cause, name);
}

SafeFile::~SafeFile() {
    Abort();
}

bool SafeFile::Open(std::wstring_view path, unsigned mode) {
    return TryOpen(path, mode) == FileException::none;
}

FileException::Cause SafeFile::TryOpen(std::wstring_view path, unsigned mode) {
    Abort();
    name = path;
    const auto native = NativeForCreation(path);
    const auto goal = native ? FollowLinks(*native) : std::nullopt;
    if (!goal)
        return FileException::badPath;
    given = *native;
    target = *goal;
    const auto cause = OpenBeside(mode);
    open = cause == FileException::none;
    if (!open)
        Abort();
    return cause;
}

/// The old file is opened for writing, as what may not be written may not be replaced either.
FileException::Cause SafeFile::OpenBeside(unsigned mode) {
    struct stat status;
    const bool exists = stat(target.c_str(), &status) == 0;
    // What can't be looked at is not taken for missing, as it may be read-only.
    if (!exists && errno != ENOENT)
        return CauseOf(errno);
    if (exists) {
        if (const auto cause = Refusal(status, true); cause != FileException::none)
            return cause;
        old = ::open(target.c_str(), O_WRONLY | O_CLOEXEC | O_NONBLOCK);
        if (old < 0 || fstat(old, &status) != 0)
            return CauseOf(errno);
        if ((mode & File::shareExclusive) != 0 && flock(old, LOCK_EX | LOCK_NB) != 0)
            return CauseOf(errno);
    }
    for (int saver = 1; saver <= kMostSavers; ++saver) {
        temporary = target + ".saving" + (saver == 1 ? "" : std::to_string(saver));
        descriptor = CreateLocked(temporary);
        if (descriptor >= 0)
            break;
        if (errno == EEXIST)
            continue;
        // Where there is no old file, a folder that refuses the one refuses the other.
        return RefusesNewFiles(errno) && (exists || errno == ENAMETOOLONG) ? FileException::none : CauseOf(errno);
    }
    if (descriptor < 0)
        return FileException::sharingViolation;
    if (exists && !TakeAfter(descriptor, status)) {
        unlink(temporary.c_str());
        Close(descriptor);
    }
    return FileException::none;
}

void SafeFile::Write(const void* buffer, std::size_t count) {
    if (!open)
        throw FileException(FileException::invalidFile, name);
    const auto* const bytes = static_cast<const char*>(buffer);
    if (!IsBeside())
        pending.append(bytes, count);
    else if (!WriteAll(descriptor, bytes, count))
        throw FileException(CauseOf(errno), name);
}

void SafeFile::Commit(Flush flush) {
    if (!open)
        throw FileException(FileException::invalidFile, name);
    try {
        if (IsBeside())
            CommitBeside(flush);
        else
            CommitInPlace(flush);
    } catch (const FileException&) {
        Abort();
        throw;
    }
    open = false;
    pending.clear();
    Close(old);
}

void SafeFile::CommitBeside(Flush flush) {
    if (flush == Flush::yes && fsync(descriptor) != 0)
        throw FileException(CauseOf(errno), name);
    if (rename(temporary.c_str(), target.c_str()) == 0) {
        // The lock goes with the descriptor: other savers see this name free only now.
        if (const int error = Close(descriptor); error != 0)
            throw FileException(CauseOf(error), name);
        return;
    }
    // A folder of which each may take away only his own files.
    if (!RefusesNewFiles(errno))
        throw FileException(CauseOf(errno), name);
    const off_t size = lseek(descriptor, 0, SEEK_END);
    pending.resize(size < 0 ? 0 : static_cast<std::size_t>(size));
    if (size < 0 || pread(descriptor, pending.data(), pending.size(), 0) != size)
        throw FileException(CauseOf(errno), name);
    unlink(temporary.c_str());
    Close(descriptor);
    CommitInPlace(flush);
}

/// The old file may have been moved away since the opening, so it is looked for again.
void SafeFile::CommitInPlace(Flush flush) {
    int file = ::open(given.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | O_NONBLOCK, 0666);
    struct stat status {};
    int error = file < 0 || fstat(file, &status) != 0 ? errno : 0;
    // Room first, so that a full disk costs nothing of the old file.
    if (error == 0 && static_cast<off_t>(pending.size()) > status.st_size) {
        error = posix_fallocate(file, 0, static_cast<off_t>(pending.size()));
        if (error != 0 && ftruncate(file, status.st_size) != 0)
            error = errno;
    }
    if (error == 0 &&
        (!WriteAll(file, pending.data(), pending.size()) || ftruncate(file, static_cast<off_t>(pending.size())) != 0 ||
         (flush == Flush::yes && fsync(file) != 0)))
        error = errno;
    const int closing = Close(file);
    if (error != 0 || closing != 0)
        throw FileException(CauseOf(error != 0 ? error : closing), name);
}

void SafeFile::Abort() noexcept {
    if (IsBeside())
        unlink(temporary.c_str());
    Close(descriptor);
    Close(old);
    pending.clear();
    open = false;
}

} // namespace platform
