#include "tessaro/platform/Memory.h"

#include <malloc.h>

namespace platform {

void ReturnFreedMemory() {
    malloc_trim(0);
}

} // namespace platform
