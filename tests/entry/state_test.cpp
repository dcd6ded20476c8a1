// What the messages leave in the module's state; here the module's code is part of the test's process.
#include "editor/sdk/rx.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/host/entry/Exports.h"
#include "tessaro/host/entry/Lifecycle.h"
#include "tessaro/platform/Text.h"

#include <gtest/gtest.h>

#include <filesystem>

TEST(ModuleMessages, ALaterDrawingEmptiesTheBlocksAskedAboutAndLoadsNothing) {
    firstDrawing = false;
    askedBlocks = {L"CHAIR", L"DESK"};
    EXPECT_EQ(acrxEntryPoint(AcRx::kLoadDwgMsg, nullptr), 0);
    EXPECT_TRUE(askedBlocks.empty());
    EXPECT_TRUE(iniPath.empty()) << "no settings were sought";
    EXPECT_TRUE(browseFolder.empty()) << "nor was the module set up";
    EXPECT_FALSE(setupEvent.Wait(std::chrono::milliseconds(0)));
    firstDrawing = true;
}

TEST(ModuleMessages, InitialisationInAHostThatOffersNoServicesAnswersWithOk) {
    EXPECT_EQ(acrxSysRegistry(), nullptr);
    EXPECT_EQ(acrxEntryPoint(AcRx::kInitAppMsg, nullptr), 0);
    EXPECT_EQ(versionText, L"3.9.10");
}

TEST(ModuleMessages, WithoutAFileOfItsNameTheModulesFolderIsTheExecutables) {
    SetModuleInfo();
    EXPECT_EQ(moduleHandle, nullptr);
    const std::filesystem::path executable = std::filesystem::read_symlink("/proc/self/exe");
    EXPECT_EQ(moduleFolder, platform::FromNarrow(executable.parent_path().string()));
}
