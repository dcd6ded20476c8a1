#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <sstream>

namespace {

std::string OutputOf(const std::string& command) {
    std::string output;
    FILE* const pipe = popen(command.c_str(), "r");
    if (pipe == nullptr)
        return output;
    std::array<char, 4096> part{};
    while (fgets(part.data(), part.size(), pipe) != nullptr)
        output += part.data();
    pclose(pipe);
    return output;
}

} // namespace

TEST(Exports, TheModuleExportsItsThreeFunctionsAndNothingElse) {
    const std::string table = OutputOf("nm -D --defined-only " TESSARO_BIN_DIR "/tessaro24-64.arx");
    std::vector<std::string> names;
    std::istringstream lines(table);
    for (std::string address, kind, name; lines >> address >> kind >> name;)
        names.push_back(name);
    EXPECT_THAT(names, testing::UnorderedElementsAre("acrxEntryPoint", "acrxGetApiVersion", "NorvaneSetupToolbar"));
}
