// Starts itself anew with the library in front that makes calls fail, and tells in the end how many did.
#include "tests/faults/FaultWalk.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <unistd.h>

namespace {

class Total : public testing::Environment {
    void TearDown() override { std::printf("%ld faults met in all\n", faults::FaultsMet()); }
};

} // namespace

int main(int count, char** arguments) {
    if (dlsym(RTLD_DEFAULT, kFaultsArm) == nullptr && std::getenv("LD_PRELOAD") == nullptr) {
        setenv("LD_PRELOAD", TESSARO_BIN_DIR "/libfault-preload.so", 1);
        execv("/proc/self/exe", arguments);
        std::perror("test_faults");
        return 2;
    }
    testing::InitGoogleTest(&count, arguments);
    testing::AddGlobalTestEnvironment(new Total);
    return RUN_ALL_TESTS();
}
