#include "samples/Library.h"

namespace samples {

std::vector<Folder> library() {
    return {doors(), electrical(), furniture(), mechanical(), plants(), sanitary(), titleBlocks(), windows()};
}

} // namespace samples
