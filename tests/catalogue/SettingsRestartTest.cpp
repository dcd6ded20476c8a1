// What one session leaves for the next, and what it can't.
#include "tests/catalogue/SettingsFixture.h"

#include "tessaro/catalogue/IniStore.h"
#include "tessaro/catalogue/Settings.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/File.h"
#include "tessaro/platform/UserInterface.h"

#include <filesystem>

namespace {

class SettingsRestart : public catalogue_tests::SettingsTest {
protected:
    /// Leaves the records behind and loads them from the file, as the next session does.
    static const Directory& Restarted() {
        for (Directory* directory : directories)
            delete directory;
        directories.clear();
        LoadIni();
        return *directories.front();
    }
};

/// The settings never speak to the user.
class SilentInterface : public platform::UserInterface {
public:
    SilentInterface() { platform::SetUserInterface(this); }
    ~SilentInterface() override { platform::SetUserInterface(nullptr); }
    platform::MessageAnswer MessageBox(const std::wstring&, const std::wstring&, platform::MessageButtons,
                                       platform::MessageIcon) override {
        ADD_FAILURE() << "a message box";
        return platform::MessageAnswer::Ok;
    }
    void BeginWaitCursor() override {}
    void EndWaitCursor() override {}
    std::optional<std::wstring> PickFolder(const std::wstring&, const std::wstring&) override { return {}; }
    std::optional<std::wstring> PickSaveFile(const std::wstring&, const std::wstring&) override { return {}; }
    void ShowHelp(const std::wstring&) override {}
};

} // namespace

TEST_F(SettingsRestart, LocalizeIsLost) {
    Load("[Paths]\nNumPaths=1\nPath1=/a\n[/a]\nLocalize=Yes\n");
    EXPECT_FALSE(directories.front()->localize) << "no key holds it";
    directories.front()->localize = true;
    SaveIni(false);
    EXPECT_EQ(Value("/a", "localize"), "absent");
    EXPECT_FALSE(Restarted().localize);
}

TEST_F(SettingsRestart, TheNameOfTheInternalBlocksAloneMakesNoInternalDirectory) {
    Load("[Paths]\nNumPaths=1\nPath1=Internal Blocks\n[Internal Blocks]\nDescription=Internal Blocks\n");
    EXPECT_FALSE(directories.front()->isInternal);
    SaveIni(false);
    EXPECT_FALSE(directories.front()->isInternal);
    const Directory& again = Restarted();
    EXPECT_EQ(again.path, L"Internal Blocks");
    EXPECT_EQ(again.description, L"Internal Blocks");
    EXPECT_FALSE(again.isInternal);
}

TEST_F(SettingsRestart, AFileThatCannotBeReadIsAnEmptyOne) {
    const SilentInterface silent;
    std::filesystem::create_directory(folder.path() / "tessaro35.ini");
    blockInsert = 2;
    LoadIni();
    EXPECT_TRUE(directories.empty());
    EXPECT_EQ(blockInsert, 0);
    EXPECT_EQ(columnWidths[0], 140);
}

TEST_F(SettingsRestart, AFileThatCannotBeWrittenStaysAsItIsWithoutAMessage) {
    const SilentInterface silent;
    Load("[Paths]\nNumPaths=1\nPath1=/a\n");
    const std::string before = Disk();
    directories.front()->description = L"New";
    const platform::File other(iniPath, platform::File::modeReadWrite | platform::File::shareExclusive);
    SaveIni(false); // tries for five seconds
    EXPECT_EQ(Disk(), before);
    EXPECT_EQ(directories.front()->description, L"New");
}
