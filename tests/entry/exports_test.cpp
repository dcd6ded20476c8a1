#include "tests/support/Shell.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

TEST(Exports, TheModuleExportsItsThreeFunctionsAndNothingElse) {
    const std::string table = tests::runShell("nm -D --defined-only " TESSARO_BIN_DIR "/tessaro24-64.arx").output;
    std::vector<std::string> names;
    std::istringstream lines(table);
    for (std::string address, kind, name; lines >> address >> kind >> name;)
        names.push_back(name);
    EXPECT_THAT(names, testing::UnorderedElementsAre("acrxEntryPoint", "acrxGetApiVersion", "NorvaneSetupToolbar"));
}
