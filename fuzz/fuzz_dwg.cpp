// The whole of the drawing codec on bytes that libFuzzer makes up. The seeds are small files of each container, made by
// the tests' own builders.

#include "tools/torture_cases.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    tools::readEverything(dwg::Bytes(data, data + size));
    return 0;
}
