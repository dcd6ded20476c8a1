// The system's functions for files, each wrapped under its own name. They are not declared as the headers declare them,
// which differ with the build's settings; a label gives each wrapper its name.
#include "tests/faults/preload/FaultState.h"

#include <cerrno>
#include <cstdarg>
#include <cstddef>
#include <cstdio>
#include <ctime>
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>

using faults::Fails;
using faults::Fate;
using faults::Watches;

/// A wrapper of NAME: where it is watched and its turn has come, it gives FAILURE instead.
#define WRAP(RESULT, NAME, PARAMETERS, ARGUMENTS, WATCHED, FAILURE)                                                    \
    __attribute__((visibility("default"))) RESULT faulty_##NAME PARAMETERS __asm__(#NAME);                             \
    RESULT faulty_##NAME PARAMETERS {                                                                                  \
        static const auto real = reinterpret_cast<RESULT(*) PARAMETERS>(dlsym(RTLD_NEXT, #NAME));                      \
        if ((WATCHED) && Fails(#NAME))                                                                                 \
            return FAILURE;                                                                                            \
        return real ARGUMENTS;                                                                                         \
    }

/// The same for what moves bytes, of which half may be moved. `count` is the number of bytes.
#define WRAP_TRANSFER(NAME, PARAMETERS, ARGUMENTS)                                                                     \
    __attribute__((visibility("default"))) ssize_t faulty_##NAME PARAMETERS __asm__(#NAME);                            \
    ssize_t faulty_##NAME PARAMETERS {                                                                                 \
        static const auto real = reinterpret_cast<ssize_t(*) PARAMETERS>(dlsym(RTLD_NEXT, #NAME));                     \
        if (Watches(file)) {                                                                                           \
            const Fate fate = faults::DecideTransfer(#NAME);                                                           \
            if (fate == Fate::fails)                                                                                   \
                return -1;                                                                                             \
            if (fate == Fate::isHalved)                                                                                \
                count = (count + 1) / 2;                                                                               \
        }                                                                                                              \
        return real ARGUMENTS;                                                                                         \
    }

/// An opening, which takes rights only where it may make a file.
#define WRAP_OPEN(NAME, PARAMETERS, ARGUMENTS, WATCHED)                                                                \
    __attribute__((visibility("default"))) int faulty_##NAME PARAMETERS __asm__(#NAME);                                \
    int faulty_##NAME PARAMETERS {                                                                                     \
        static const auto real = reinterpret_cast<int(*) PARAMETERS>(dlsym(RTLD_NEXT, #NAME));                         \
        mode_t mode = 0;                                                                                               \
        if ((flags & (O_CREAT | O_TMPFILE)) != 0) {                                                                    \
            std::va_list more;                                                                                         \
            va_start(more, flags);                                                                                     \
            mode = va_arg(more, mode_t);                                                                               \
            va_end(more);                                                                                              \
        }                                                                                                              \
        if ((WATCHED) && Fails(#NAME))                                                                                 \
            return -1;                                                                                                 \
        return real ARGUMENTS;                                                                                         \
    }

namespace {

/// Behind a closing the descriptor is gone, whatever it said.
int ClosedAll(int (*real)(int), int file) {
    const bool watched = Watches(file);
    const int result = real(file);
    return watched && Fails("close") ? -1 : result;
}

} // namespace

extern "C" {

WRAP_OPEN(open, (const char* path, int flags, ...), (path, flags, mode), Watches(path))
WRAP_OPEN(open64, (const char* path, int flags, ...), (path, flags, mode), Watches(path))
WRAP_OPEN(openat, (int folder, const char* path, int flags, ...), (folder, path, flags, mode), Watches(folder, path))
WRAP_OPEN(openat64, (int folder, const char* path, int flags, ...), (folder, path, flags, mode), Watches(folder, path))
WRAP(int, __open_2, (const char* path, int flags), (path, flags), Watches(path), -1)
WRAP(int, __open64_2, (const char* path, int flags), (path, flags), Watches(path), -1)
WRAP(int, mkstemp, (char* path), (path), Watches(path), -1)
WRAP(int, mkstemp64, (char* path), (path), Watches(path), -1)
WRAP(FILE*, fopen, (const char* path, const char* mode), (path, mode), Watches(path), nullptr)
WRAP(FILE*, fopen64, (const char* path, const char* mode), (path, mode), Watches(path), nullptr)
WRAP(DIR*, opendir, (const char* path), (path), Watches(path), nullptr)
WRAP(dirent*, readdir, (DIR * listing), (listing), Watches(dirfd(listing)), nullptr)
WRAP(dirent64*, readdir64, (DIR * listing), (listing), Watches(dirfd(listing)), nullptr)

WRAP_TRANSFER(read, (int file, void* bytes, size_t count), (file, bytes, count))
WRAP_TRANSFER(write, (int file, const void* bytes, size_t count), (file, bytes, count))
WRAP_TRANSFER(pread, (int file, void* bytes, size_t count, off_t at), (file, bytes, count, at))
WRAP_TRANSFER(pread64, (int file, void* bytes, size_t count, off_t at), (file, bytes, count, at))
WRAP_TRANSFER(pwrite, (int file, const void* bytes, size_t count, off_t at), (file, bytes, count, at))
WRAP_TRANSFER(pwrite64, (int file, const void* bytes, size_t count, off_t at), (file, bytes, count, at))
WRAP_TRANSFER(__read_chk, (int file, void* bytes, size_t count, size_t room), (file, bytes, count, room))
WRAP_TRANSFER(__pread_chk, (int file, void* bytes, size_t count, off_t at, size_t room), (file, bytes, count, at, room))
WRAP_TRANSFER(__pread64_chk, (int file, void* bytes, size_t count, off_t at, size_t room),
              (file, bytes, count, at, room))
WRAP_TRANSFER(sendfile, (int file, int from, off_t* at, size_t count), (file, from, at, count))
WRAP_TRANSFER(sendfile64, (int file, int from, off_t* at, size_t count), (file, from, at, count))

WRAP(int, stat, (const char* path, void* status), (path, status), Watches(path), -1)
WRAP(int, stat64, (const char* path, void* status), (path, status), Watches(path), -1)
WRAP(int, lstat, (const char* path, void* status), (path, status), Watches(path), -1)
WRAP(int, lstat64, (const char* path, void* status), (path, status), Watches(path), -1)
WRAP(int, fstat, (int file, void* status), (file, status), Watches(file), -1)
WRAP(int, fstat64, (int file, void* status), (file, status), Watches(file), -1)
WRAP(int, fstatat, (int folder, const char* path, void* status, int flags), (folder, path, status, flags),
     Watches(folder, path), -1)
WRAP(int, fstatat64, (int folder, const char* path, void* status, int flags), (folder, path, status, flags),
     Watches(folder, path), -1)
WRAP(int, statx, (int folder, const char* path, int flags, unsigned mask, void* status),
     (folder, path, flags, mask, status), Watches(folder, path), -1)
WRAP(ssize_t, readlink, (const char* path, char* goal, size_t room), (path, goal, room), Watches(path), -1)

WRAP(int, rename, (const char* from, const char* to), (from, to), Watches(from) || Watches(to), -1)
WRAP(int, renameat, (int first, const char* from, int second, const char* to), (first, from, second, to),
     Watches(first, from) || Watches(second, to), -1)
WRAP(int, renameat2, (int first, const char* from, int second, const char* to, unsigned flags),
     (first, from, second, to, flags), Watches(first, from) || Watches(second, to), -1)
WRAP(int, link, (const char* from, const char* to), (from, to), Watches(from) || Watches(to), -1)
WRAP(int, linkat, (int first, const char* from, int second, const char* to, int flags),
     (first, from, second, to, flags), Watches(first, from) || Watches(second, to), -1)
WRAP(int, unlink, (const char* path), (path), Watches(path), -1)
WRAP(int, unlinkat, (int folder, const char* path, int flags), (folder, path, flags), Watches(folder, path), -1)
WRAP(int, remove, (const char* path), (path), Watches(path), -1)
WRAP(int, mkdir, (const char* path, mode_t mode), (path, mode), Watches(path), -1)

WRAP(int, fsync, (int file), (file), Watches(file), -1)
WRAP(int, fdatasync, (int file), (file), Watches(file), -1)
WRAP(int, ftruncate, (int file, off_t length), (file, length), Watches(file), -1)
WRAP(int, ftruncate64, (int file, off_t length), (file, length), Watches(file), -1)
WRAP(int, posix_fallocate, (int file, off_t at, off_t length), (file, at, length), Watches(file), errno)
WRAP(int, posix_fallocate64, (int file, off_t at, off_t length), (file, at, length), Watches(file), errno)
WRAP(off_t, lseek, (int file, off_t at, int whence), (file, at, whence), Watches(file), -1)
WRAP(off_t, lseek64, (int file, off_t at, int whence), (file, at, whence), Watches(file), -1)
WRAP(int, flock, (int file, int operation), (file, operation), Watches(file), -1)
WRAP(int, fchmod, (int file, mode_t mode), (file, mode), Watches(file), -1)
WRAP(int, fchown, (int file, uid_t owner, gid_t group), (file, owner, group), Watches(file), -1)
WRAP(int, futimens, (int file, const timespec* times), (file, times), Watches(file), -1)
WRAP(void*, mmap, (void* place, size_t length, int rights, int flags, int file, off_t at),
     (place, length, rights, flags, file, at), Watches(file), MAP_FAILED)
WRAP(void*, mmap64, (void* place, size_t length, int rights, int flags, int file, off_t at),
     (place, length, rights, flags, file, at), Watches(file), MAP_FAILED)

__attribute__((visibility("default"))) int faulty_nanosleep(const timespec* time, timespec* left) __asm__("nanosleep");
int faulty_nanosleep(const timespec* time, timespec* left) {
    static const auto real = reinterpret_cast<int (*)(const timespec*, timespec*)>(dlsym(RTLD_NEXT, "nanosleep"));
    return faults::CutsWaitsShort() ? 0 : real(time, left);
}

__attribute__((visibility("default"))) int faulty_close(int file) __asm__("close");
int faulty_close(int file) {
    static const auto real = reinterpret_cast<int (*)(int)>(dlsym(RTLD_NEXT, "close"));
    return ClosedAll(real, file);
}

} // extern "C"
