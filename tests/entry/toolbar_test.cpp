// The button's road: with and without its companions, in hosts with and without a place for it. Each run is a process
// of its own; the module stands in a folder of its own with the companions that a test puts beside it.
#include "tessaro/host/ModuleState.h"
#include "tessaro/host/entry/DllBase.h"
#include "tessaro/host/entry/Ribbon.h"
#include "tessaro/host/entry/Toolbar.h"
#include "tessaro/platform/SharedLibrary.h"
#include "tessaro/platform/Text.h"
#include "tests/entry/RunRecorder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <lodepng.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <unistd.h>

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsSupersetOf;
using testing::Not;
using testing::StartsWith;

namespace {

constexpr const char* kToolbarFile = "norvanetoolbar-24-64.arx";
const std::string kInit = "1";

class ToolbarPlace : public tests::ModulePlace {
public:
    ToolbarPlace() { makeLogFolder(); }
    void putRibbon() const { put(TESSARO_BIN_DIR "/NorvaneRibbon.dll", "NorvaneRibbon.dll"); }
    void putToolbar() const { put(TESSARO_BIN_DIR "/norvanetoolbar-24-64.arx", kToolbarFile); }
    void putRecordingToolbar() const {
        put(TESSARO_BIN_DIR "/recording_toolbar/norvanetoolbar-24-64.arx", kToolbarFile);
    }
    void put(const std::filesystem::path& file, const std::string& name) const {
        std::filesystem::copy_file(file, folder() / name);
    }
    std::string toolbar() const { return (folder() / kToolbarFile).string(); }
    /// The lines of the log behind "Add Commands", and what the host was asked meanwhile.
    std::vector<std::string> logOfSetup() const {
        const auto lines = log();
        const auto begin = std::find(lines.begin(), lines.end(), "Add Commands");
        return begin == lines.end() ? lines : std::vector<std::string>(begin + 1, lines.end());
    }
};

std::string picture(const tests::ModulePlace& place) {
    return tests::readFile(place.folder() / "picture");
}

const std::string kButtonPicture = tests::readFile(TESSARO_SOURCE_DIR "/tessaro/host/entry/Button.png");

} // namespace

TEST(Toolbar, WithoutCompanionsTheToolbarIsNotFound) {
    const ToolbarPlace place;
    EXPECT_THAT(place.run({"ribbon", "toolbar", kInit, "setup toolbar"}), Contains("result 1"));
    EXPECT_THAT(place.logOfSetup(),
                ElementsAre("SetupToolbar", "Toolbar not found.", "SetupToolbar", "Toolbar not found."));
    EXPECT_THAT(place.errors(), HasSubstr("can't load " + place.folder().string() + "/NorvaneRibbon.dll"));
}

TEST(Toolbar, WithTheRibbonTheToolbarIsNotLookedAt) {
    for (const bool both : {false, true}) {
        const ToolbarPlace place;
        place.putRibbon();
        if (both)
            place.putToolbar();
        const auto lines = place.run({"ribbon", "toolbar", kInit, "setup toolbar", "loaded " + place.toolbar()});
        const std::string added = "ribbon tessaro\\n Tessaro picture of " + std::to_string(kButtonPicture.size());
        EXPECT_EQ(std::count(lines.begin(), lines.end(), added), 2) << testing::PrintToString(lines);
        EXPECT_THAT(lines, Not(Contains(StartsWith("toolbar"))));
        EXPECT_THAT(lines, Not(Contains("loadModule " + place.toolbar() + " print false command true")));
        EXPECT_THAT(lines, IsSupersetOf({"result 1", "not loaded"}));
        EXPECT_THAT(place.logOfSetup(), ElementsAre("SetupToolbar", "SetupToolbar"));
        EXPECT_EQ(place.errors(), "");
    }
}

TEST(Toolbar, TheToolbarAloneIsLoadedByTheHostsLinkerAndGetsTheButton) {
    const ToolbarPlace place;
    place.putRecordingToolbar();
    const auto lines = place.run({"ribbon", kInit});
    EXPECT_THAT(lines, Contains("loadModule " + place.toolbar() + " print false command true"));
    EXPECT_THAT(lines, Contains("AddToToolbar tessaro\\n Tessaro instance true resource 112 0 0"));
    EXPECT_THAT(place.logOfSetup(),
                ElementsAre("SetupToolbar", "LoadToolbarModule", "connect to toolbar", "AddToToolbar"));
}

TEST(Toolbar, TheResultOfTheToolbarIsNotLookedAt) {
    const ToolbarPlace place;
    place.putRecordingToolbar(); // It answers 0.
    EXPECT_THAT(place.run({kInit, "setup toolbar"}), Contains("result 1"));
}

TEST(Toolbar, ALoadedToolbarIsUsedAndNotLoadedAgain) {
    const ToolbarPlace place;
    const ToolbarPlace other;
    other.putRecordingToolbar();
    place.putToolbar();
    const auto lines = place.run({"load " + other.toolbar(), kInit, "setup toolbar", "loaded " + place.toolbar()});
    EXPECT_THAT(lines, Contains("AddToToolbar tessaro\\n Tessaro instance true resource 112 0 0").Times(2));
    EXPECT_THAT(lines, Not(Contains(StartsWith("loadModule /"))));
    EXPECT_THAT(lines, IsSupersetOf({"result 1", "not loaded"}));
    EXPECT_THAT(place.logOfSetup(), ElementsAre("SetupToolbar", "AddToToolbar", "SetupToolbar", "AddToToolbar"));
}

TEST(Toolbar, AToolbarWithoutItsEntryStaysLoadedAndTheResultIsOne) {
    const ToolbarPlace place;
    place.put(TESSARO_BIN_DIR "/fake_helper/TessaroHelper.dll", kToolbarFile);
    const auto lines = place.run({kInit, "loaded " + place.toolbar()});
    EXPECT_THAT(lines, Contains("loaded"));
    EXPECT_THAT(place.logOfSetup(),
                ElementsAre("SetupToolbar", "LoadToolbarModule", "connect to toolbar", "Could not load toolbar."));
    EXPECT_THAT(place.run({kInit, "setup toolbar"}), Contains("result 1"));
}

TEST(Toolbar, AFileThatIsNoModuleCantBeLoaded) {
    const ToolbarPlace place;
    place.put(TESSARO_SOURCE_DIR "/CMakeLists.txt", kToolbarFile);
    place.put(TESSARO_SOURCE_DIR "/CMakeLists.txt", "NorvaneRibbon.dll");
    EXPECT_THAT(place.run({"ribbon", "toolbar", kInit, "setup toolbar"}), Contains("result 1"));
    EXPECT_THAT(place.logOfSetup(), Contains("Could not load toolbar.").Times(2));
}

TEST(Toolbar, TheLtEditionWithoutARibbonGivesZeroAndTriesNothingElse) {
    ToolbarPlace place;
    place.putToolbar();
    place.nameHost("aclt.exe");
    const auto lines = place.run({"toolbar", kInit, "setup toolbar", "loaded " + place.toolbar()});
    EXPECT_THAT(lines, IsSupersetOf({"result 0", "not loaded"}));
    EXPECT_THAT(lines, Not(Contains(StartsWith("loadModule /"))));
    EXPECT_THAT(place.logOfSetup(), ElementsAre("SetupToolbar", "SetupToolbar"));
}

TEST(Toolbar, TheLtEditionTakesTheRibbonLikeAnother) {
    ToolbarPlace place;
    place.putRibbon();
    place.nameHost("aclt.exe");
    EXPECT_THAT(place.run({"ribbon", kInit, "setup toolbar"}), Contains("result 1"));
    EXPECT_EQ(picture(place), kButtonPicture);
}

TEST(Toolbar, ARibbonThatFailsLeavesTheButtonToTheToolbar) {
    const ToolbarPlace place;
    place.putRibbon();
    place.putToolbar();
    const auto lines = place.run({"toolbar", kInit}); // The host has no ribbon.
    EXPECT_THAT(lines, Contains("toolbar tessaro\\n Tessaro picture of " + std::to_string(kButtonPicture.size())));
    EXPECT_THAT(place.errors(), HasSubstr("NorvaneRibbon.API.AddButton: the host has no ribbon"));
    EXPECT_THAT(place.log(), Not(Contains(HasSubstr("ribbon")))) << "it goes to the debugger's stream only";
    EXPECT_EQ(picture(place), kButtonPicture) << "found by the module's handle and the number";
}

TEST(Toolbar, ARibbonWithoutItsTypeIsAFailure) {
    const ToolbarPlace place;
    place.put(TESSARO_BIN_DIR "/fake_helper/TessaroHelper.dll", "NorvaneRibbon.dll");
    place.run({"ribbon", kInit});
    EXPECT_THAT(place.errors(), HasSubstr("NorvaneRibbon.API can't be created"));
    EXPECT_THAT(place.logOfSetup(), ElementsAre("SetupToolbar", "Toolbar not found."));
}

TEST(Toolbar, TheRibbonGetsThePicturesBytesAsTheyStand) {
    const ToolbarPlace place;
    place.putRibbon();
    place.run({"ribbon", kInit});
    EXPECT_EQ(picture(place), kButtonPicture);
}

TEST(Toolbar, UnderAnotherFileNameThereIsNoPictureAndTheRibbonRefusesTheButton) {
    const tests::ModulePlace place("other.arx");
    // The companions are then those beside the host's program.
    const auto lines = place.run({"ribbon", kInit, "setup toolbar"});
    EXPECT_THAT(lines, Contains("ribbon tessaro\\n Tessaro picture of 0"));
    EXPECT_THAT(place.errors(), HasSubstr("the ribbon does not take the button"));
    EXPECT_THAT(lines, Contains("result 1"));
}

TEST(Toolbar, ThePictureIsAPngOf32By32WithEightBitsAndAlpha) {
    ASSERT_GT(kButtonPicture.size(), 33U);
    EXPECT_EQ(kButtonPicture.substr(16, 10), std::string("\0\0\0\x20\0\0\0\x20\x08\x06", 10));
    unsigned char* decoded = nullptr;
    unsigned width = 0, height = 0;
    const auto* const bytes = reinterpret_cast<const unsigned char*>(kButtonPicture.data());
    ASSERT_EQ(lodepng_decode32(&decoded, &width, &height, bytes, kButtonPicture.size()), 0U);
    const std::unique_ptr<unsigned char, decltype(&std::free)> pixels(decoded, &std::free);
    int clear = 0, solid = 0;
    for (std::size_t i = 3; i < std::size_t{width} * height * 4; i += 4) {
        clear += pixels.get()[i] == 0 ? 1 : 0;
        solid += pixels.get()[i] == 255 ? 1 : 0;
    }
    EXPECT_GT(clear, 50);
    EXPECT_GT(solid, 500);
}

TEST(Ribbon, WithoutAPictureTheButtonIsRefused) {
    testing::internal::CaptureStderr();
    EXPECT_FALSE(SetupRibbon(platform::FromNarrow(TESSARO_BIN_DIR), L"tessaro\n", L"Tessaro", {}));
    EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("NorvaneRibbon.API.AddButton"));
}

namespace {

const std::wstring kRecordingToolbar =
    platform::FromNarrow(TESSARO_BIN_DIR "/recording_toolbar/norvanetoolbar-24-64.arx");
using Remove = dll::stdcall::dll1<int, std::wstring>;

/// Calls RemoveToolbar without and with the toolbar in the process; gives the log.
std::string logOfRemoving(const std::filesystem::path& folder) {
    std::filesystem::create_directory(folder / "Log");
    moduleFolder = platform::FromNarrow(folder.string());
    RemoveToolbar();
    const platform::SharedLibrary toolbar(kRecordingToolbar);
    RemoveToolbar();
    std::string text;
    for (const auto& file : std::filesystem::directory_iterator(folder / "Log"))
        text += tests::readFile(file.path());
    return text;
}

TEST(RemoveToolbarDeathTest, TakesTheButtonOutOfALoadedToolbarOnly) {
    // In a process of its own: the log belongs to the process.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const tests::TemporaryFolder folder;
    EXPECT_EXIT(
        {
            dup2(STDERR_FILENO, STDOUT_FILENO); // What the toolbar tells.
            const std::string log = logOfRemoving(folder.path());
            std::fprintf(stderr, "%s", log.c_str());
            std::exit(0);
        },
        testing::ExitedWithCode(0),
        "^RemoveFromToolbar tessaro\\\\n\nremovetoolbar\r\nremovetoolbar\r\nremovefromtoolbar\r\n$");
}

TEST(DllBase, FreesOnlyWhatItLoaded) {
    {
        const Remove loaded(true, kRecordingToolbar, L"RemoveFromToolbar");
        ASSERT_TRUE(loaded.IsValid());
        EXPECT_NE(platform::GetModuleHandle(L"norvanetoolbar-24-64.arx"), nullptr);
        {
            const Remove found(false, L"norvanetoolbar-24-64.arx", L"RemoveFromToolbar");
            EXPECT_TRUE(found.IsValid());
        }
        EXPECT_NE(platform::GetModuleHandle(L"norvanetoolbar-24-64.arx"), nullptr);
        testing::internal::CaptureStdout();
        EXPECT_EQ(loaded(L"words"), 0);
        EXPECT_EQ(testing::internal::GetCapturedStdout(), "RemoveFromToolbar words\n");
    }
    EXPECT_EQ(platform::GetModuleHandle(L"norvanetoolbar-24-64.arx"), nullptr);
}

TEST(DllBase, IsNotValidWithoutTheModuleOrTheFunction) {
    EXPECT_FALSE(Remove(false, L"norvanetoolbar-24-64.arx", L"RemoveFromToolbar").IsValid()) << "not loaded";
    EXPECT_FALSE(Remove(true, L"/none/none.arx", L"RemoveFromToolbar").IsValid());
    EXPECT_FALSE(Remove(true, kRecordingToolbar, L"Other").IsValid());
    EXPECT_EQ(platform::GetModuleHandle(L"norvanetoolbar-24-64.arx"), nullptr) << "freed without its function";
}

} // namespace
