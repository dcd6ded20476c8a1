// Handlers of the commands and what else the host may call, with a host that keeps what they ask of it.
#include "tests/support/TemporaryFolder.h"

#include "editor/sdk/documents.h"
#include "editor/sdk/editor.h"
#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/host/entry/Commands.h"
#include "tessaro/host/entry/DllBase.h"
#include "tessaro/host/entry/Toolbar.h"
#include "tessaro/placement/Placement.h"
#include "tessaro/platform/MainThread.h"
#include "tessaro/platform/Text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

std::vector<std::wstring> calls;
std::vector<std::wstring> openDrawings;
bool inApplicationContext = true;
std::wstring typedName;
int typedResult = RTNORM;

class FakeDocument : public AcApDocument {
public:
    explicit FakeDocument(std::wstring file) : name(std::move(file)) {}
    const wchar_t* fileName() const override { return name.c_str(); }
    AcDbDatabase* database() const override { return nullptr; }

private:
    std::wstring name;
};

class FakeIterator : public AcApDocumentIterator {
public:
    FakeIterator() {
        calls.push_back(L"iterator");
        for (const std::wstring& name : openDrawings)
            documents.emplace_back(name);
    }
    ~FakeIterator() override { calls.push_back(L"iterator destroyed"); }
    bool done() const override { return place == documents.size(); }
    void step() override { ++place; }
    AcApDocument* document() const override { return const_cast<FakeDocument*>(&documents[place]); }

private:
    std::vector<FakeDocument> documents;
    std::size_t place = 0;
};

class FakeDocuments : public AcApDocManager {
    AcApDocument* curDocument() const override { return nullptr; }
    AcApDocument* mdiActiveDocument() const override { return nullptr; }
    AcApDocumentIterator* newAcApDocumentIterator() override { return new FakeIterator; }
    bool isApplicationContext() const override { return inApplicationContext; }
    int activateDocument(AcApDocument*, bool passFocus) override {
        calls.push_back(passFocus ? L"activate passively" : L"activate");
        return 0;
    }
    void executeInApplicationContext(void (*function)(void*), void* data) const override {
        calls.push_back(L"execute");
        function(data);
    }
    int appContextOpenDocument(const wchar_t* file) override {
        calls.push_back(L"open " + std::wstring(file));
        return 1;
    }
    int lockDocument(AcApDocument*, AcAp::DocLockMode) override { return 0; }
    int unlockDocument(AcApDocument*) override { return 0; }
    void pushResourceHandle() override { calls.push_back(L"push"); }
    void popResourceHandle() override { calls.push_back(L"pop"); }
    int sendStringToExecute(AcApDocument*, const wchar_t* text, bool, bool, bool) override {
        calls.push_back(L"send " + std::wstring(text));
        return 0;
    }
};

class CommandsTest : public testing::Test {
protected:
    CommandsTest() {
        // One folder for the life of the process: the log's file is chosen once.
        static const tests::TemporaryFolder place;
        std::filesystem::create_directory(place.path() / "Log");
        moduleFolder = platform::FromNarrow(place.path().string());
        platform::SetMainThread();
        calls.clear();
        openDrawings.clear();
        inApplicationContext = true;
        typedResult = RTNORM;
        placement = {};
        pendingOpenPath.clear();
        Logged();
    }
    ~CommandsTest() override {
        currentDirectory = nullptr;
        for (Directory* directory : directories)
            delete directory;
        directories.clear();
    }

    /// Lines since the last call.
    std::vector<std::string> Logged() {
        std::string text;
        const std::string folder = platform::ToNarrow(moduleFolder) + "/Log";
        for (const auto& file : std::filesystem::directory_iterator(folder)) {
            text = tests::readFile(file.path());
            std::filesystem::resize_file(file.path(), 0);
        }
        std::vector<std::string> lines;
        std::istringstream in(text);
        for (std::string line; std::getline(in, line);)
            lines.push_back(line.substr(0, line.find('\r')));
        return lines;
    }

    static void AddBlock(const wchar_t* name) {
        auto* const directory = new Directory;
        directory->path = L"/lib";
        directory->isInternal = true;
        auto* const block = new Block;
        block->name = name;
        directory->blocks.push_back(block);
        directories.push_back(directory);
    }
};

} // namespace

AcApDocManager* acDocManagerPtr() {
    static FakeDocuments documents;
    return &documents;
}

int acedGetString(int cronly, const wchar_t* prompt, wchar_t* result, std::size_t size) {
    calls.push_back(platform::Format(L"getString %d %s%d", cronly, prompt, static_cast<int>(size)));
    typedName.copy(result, size - 1);
    return typedResult;
}

int acedRetVoid() {
    calls.push_back(L"retVoid");
    return RTNORM;
}

void* adsw_acadMainWnd() {
    return nullptr;
}

TEST_F(CommandsTest, WithNothingPendingNothingIsAskedOrLogged) {
    TESSAROOpen();
    EXPECT_THAT(calls, IsEmpty());
    EXPECT_THAT(Logged(), IsEmpty());
}

TEST_F(CommandsTest, APathThatIsOpenInAnyCaseIsActivatedAndStaysPending) {
    openDrawings = {L"/other.dwg", L"/Lib/DOOR.dwg"};
    pendingOpenPath = L"/lib/door.DWG";
    TESSAROOpen();
    EXPECT_THAT(calls, ElementsAre(L"iterator", L"iterator destroyed", L"activate passively"));
    EXPECT_THAT(Logged(), ElementsAre("TESSAROOpen, iterate documents", "activateDocument"));
    EXPECT_EQ(pendingOpenPath, L"/lib/door.DWG");
    TESSAROOpen();
    EXPECT_EQ(calls.size(), 6u) << "typing the command again activates it again";
}

TEST_F(CommandsTest, OutsideOfTheApplicationContextTheActivationIsHandedOver) {
    openDrawings = {L"/a.dwg"};
    pendingOpenPath = L"/a.dwg";
    inApplicationContext = false;
    TESSAROOpen();
    EXPECT_THAT(calls, ElementsAre(L"iterator", L"iterator destroyed", L"execute", L"activate passively"));
}

TEST_F(CommandsTest, ADrawingThatIsNotOpenIsOpenedAndThePathIsGone) {
    openDrawings = {L"/other.dwg"};
    pendingOpenPath = L"/a b.dwg";
    TESSAROOpen();
    EXPECT_THAT(calls, ElementsAre(L"iterator", L"iterator destroyed", L"push", L"open /a b.dwg", L"pop"));
    EXPECT_THAT(Logged(), ElementsAre("TESSAROOpen, iterate documents", "DoOpen", "DoOpen done", "TESSAROOpen done"));
    EXPECT_EQ(pendingOpenPath, L"");
}

TEST_F(CommandsTest, OutsideOfTheApplicationContextNothingIsOpenedButThePathIsGone) {
    pendingOpenPath = L"/a.dwg";
    inApplicationContext = false;
    TESSAROOpen();
    EXPECT_THAT(calls, ElementsAre(L"iterator", L"iterator destroyed"));
    EXPECT_THAT(Logged(), ElementsAre("TESSAROOpen, iterate documents", "TESSAROOpen done"));
    EXPECT_EQ(pendingOpenPath, L"");
}

TEST_F(CommandsTest, AHostWithoutAWindowSystemGetsNoDialog) {
    EXPECT_EQ(TessaroFunction(), 1);
    EXPECT_THAT(Logged(), ElementsAre("No window system"));
    EXPECT_THAT(calls, ElementsAre(L"retVoid"));
}

TEST_F(CommandsTest, ABlockIsAskedForByNameAndPlaced) {
    AddBlock(L"DOOR");
    typedName = L"door";
    EXPECT_EQ(FindBlockFunction(), 1);
    EXPECT_THAT(calls, ElementsAre(L"getString 1 Enter a block name: 133", L"retVoid",
                                   L"send ._-insert DOOR\n_scale 1 _rotate 0.000000\n"));
    EXPECT_THAT(Logged(), IsEmpty());
}

TEST_F(CommandsTest, ANameThatPlacesNothingOpensTheBrowser) {
    AddBlock(L"DOORWAY");
    typedName = L"door";
    EXPECT_EQ(FindBlockFunction(), 1);
    EXPECT_THAT(Logged(), ElementsAre("No window system")) << "the dialog was asked for";
}

TEST_F(CommandsTest, ACancelledNameEndsIt) {
    AddBlock(L"DOOR");
    typedName = L"door";
    typedResult = RTCAN;
    EXPECT_EQ(FindBlockFunction(), 1);
    EXPECT_THAT(calls, ElementsAre(L"getString 1 Enter a block name: 133", L"retVoid"));
    EXPECT_THAT(Logged(), IsEmpty());
}

TEST_F(CommandsTest, WithoutCompanionsTheToolbarIsNotFoundAndTheAnswerIsOne) {
    EXPECT_EQ(NorvaneSetupToolbar(), 1);
    EXPECT_THAT(Logged(), ElementsAre("SetupToolbar", "Toolbar not found."));
}

TEST_F(CommandsTest, RemovingFromAToolbarThatIsNotThereDoesNothing) {
    RemoveToolbar();
    EXPECT_THAT(Logged(), ElementsAre("removetoolbar"));
}

TEST_F(CommandsTest, AToolbarFileThatOffersNothingCouldNotBeLoaded) {
    const std::filesystem::path file = platform::ToNarrow(moduleFolder) + "/norvanetoolbar-24-64.arx";
    std::filesystem::copy_file(TESSARO_BIN_DIR "/fake_helper/TessaroHelper.dll", file);
    EXPECT_EQ(NorvaneSetupToolbar(), 1);
    std::filesystem::remove(file);
    EXPECT_THAT(Logged(),
                ElementsAre("SetupToolbar", "LoadToolbarModule", "connect to toolbar", "Could not load toolbar."));
}

TEST_F(CommandsTest, AFunctionOfAnotherModuleIsFoundByName) {
    const std::wstring library = platform::FromNarrow(TESSARO_BIN_DIR "/fake_helper/TessaroHelper.dll");
    using Find = dll::stdcall::dll1<void*, int>;
    EXPECT_TRUE(Find(true, library, L"TessaroHelper_Services").IsValid());
    EXPECT_FALSE(Find(true, library, L"NoSuchFunction").IsValid());
    EXPECT_FALSE(Find(true, L"/no/such/module", L"TessaroHelper_Services").IsValid());
    EXPECT_FALSE(Find(false, L"nosuchmodule.dll", L"TessaroHelper_Services").IsValid());
    const Find loaded(true, library, L"TessaroHelper_Services");
    EXPECT_TRUE(Find(false, L"TessaroHelper.dll", L"TessaroHelper_Services").IsValid());

    const dll::stdcall::dll1<int, int> absolute(false, L"libc.so.6", L"abs");
    ASSERT_TRUE(absolute.IsValid());
    EXPECT_EQ(absolute(-5), 5);
}
