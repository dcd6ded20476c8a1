// The C library's allocation, which the operator `new` uses too.
#include "tests/faults/preload/FaultState.h"

#include <cerrno>
#include <cstddef>

using faults::AllocationFails;

extern "C" {

// The library's own names for the functions that are wrapped here, reached without a look-up, which may allocate.
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);

#define LABELLED __attribute__((visibility("default")))

LABELLED void* faulty_malloc(std::size_t size) __asm__("malloc");
LABELLED void* faulty_calloc(std::size_t count, std::size_t size) __asm__("calloc");
LABELLED void* faulty_realloc(void* block, std::size_t size) __asm__("realloc");
LABELLED void* faulty_memalign(std::size_t alignment, std::size_t size) __asm__("memalign");
LABELLED void* faulty_aligned_alloc(std::size_t alignment, std::size_t size) __asm__("aligned_alloc");
LABELLED int faulty_posix_memalign(void** block, std::size_t alignment, std::size_t size) __asm__("posix_memalign");

void* faulty_malloc(std::size_t size) {
    return AllocationFails() ? nullptr : __libc_malloc(size);
}

void* faulty_calloc(std::size_t count, std::size_t size) {
    return AllocationFails() ? nullptr : __libc_calloc(count, size);
}

void* faulty_realloc(void* block, std::size_t size) {
    return AllocationFails() ? nullptr : __libc_realloc(block, size);
}

void* faulty_memalign(std::size_t alignment, std::size_t size) {
    return AllocationFails() ? nullptr : __libc_memalign(alignment, size);
}

void* faulty_aligned_alloc(std::size_t alignment, std::size_t size) {
    return AllocationFails() ? nullptr : __libc_memalign(alignment, size);
}

int faulty_posix_memalign(void** block, std::size_t alignment, std::size_t size) {
    *block = AllocationFails() ? nullptr : __libc_memalign(alignment, size);
    return *block == nullptr ? ENOMEM : 0;
}

} // extern "C"
