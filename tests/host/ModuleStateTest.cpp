#include "tessaro/host/ModuleState.h"

#include <gtest/gtest.h>

#include <chrono>

TEST(ModuleState, StartsAsTheModuleIsMapped) {
    EXPECT_EQ(moduleHandle, nullptr);
    EXPECT_TRUE(firstDrawing);
    EXPECT_FALSE(closed);
    EXPECT_FALSE(setupEvent.Wait(std::chrono::milliseconds(0)));
    EXPECT_TRUE(askedBlocks.empty());
    EXPECT_EQ(theBlockDlg, nullptr);
    EXPECT_FALSE(dialogOpen);
    EXPECT_EQ(currentDirectory, nullptr);
    EXPECT_TRUE(directories.empty());
    EXPECT_TRUE(loader.loadQueue.empty());
    EXPECT_EQ(loader.pause, 0);
    EXPECT_FALSE(loader.quit);
}

TEST(ModuleState, SettingsStartWithTheirDefaults) {
    EXPECT_TRUE(iniPath.empty());
    EXPECT_TRUE(cachePath.empty());
    for (const int setting : {blockInsert, readDirEveryTime, overlayXRef, demandLoadCache, onlyCacheCurrent,
                              delCacheMemoryOnClose, backupIni, printType})
        EXPECT_EQ(setting, 0);
    EXPECT_EQ(printScale, 4);
    EXPECT_EQ(useCompression, 1);
}

TEST(ModuleState, TheEventsHaveTheirKinds) {
    using namespace std::chrono_literals;
    setupEvent.SetEvent();
    EXPECT_TRUE(setupEvent.Wait(0ms));
    EXPECT_TRUE(setupEvent.Wait(0ms)) << "manual-reset";
    setupEvent.ResetEvent();
    loader.startGate.SetEvent();
    EXPECT_TRUE(loader.startGate.Wait(0ms));
    EXPECT_TRUE(loader.startGate.Wait(0ms)) << "manual-reset";
    loader.startGate.ResetEvent();
    for (platform::Event* const event : {&loader.kickevent, &loader.quitdone}) {
        event->SetEvent();
        EXPECT_TRUE(event->Wait(0ms));
        EXPECT_FALSE(event->Wait(0ms)) << "auto-reset";
    }
}
