// The two commands and the two functions that no command reaches.
#include "tests/browser/module/LoadedModule.h"

#include <QApplication>
#include <QTest>

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class Commands : public tests::LoadedModule {
protected:
    Commands() : door(folder.path() / "Oak Door.dwg") {
        WriteDrawing(door);
        AddFolder("Doors", {});
        WriteDrawing(folder.path() / "library1" / "gate.dwg");
    }
    void Activate(std::size_t document) {
        host->documents().activateDocument(host->documents().all().at(document).get());
    }
    /// A command that carries a function of the module out in the document's context.
    void AddDocumentCommand(const wchar_t* name, AcRxFunctionPtr function) {
        EXPECT_EQ(host->commands().addCommand(L"TEST", name, name, ACRX_CMD_MODAL, function), eOk);
    }
    std::filesystem::path door;
};

TEST_F(Commands, TessaroLogsItsStepsAndOpensTheWindow) {
    Load();
    ForgetLog();
    bool seen = false;
    Browse([&](tests::Window& window) {
        seen = window.Dialog().isVisible() && window.Dialog().isModal();
        EXPECT_TRUE(window.Dialog().windowTitle().startsWith("3.9.10 - "));
    });
    EXPECT_TRUE(seen);
    std::vector<std::string> steps;
    for (const std::string& line : Log())
        for (const char* step :
             {"Construct dialog", "DoModal", "SetupDlg", "Grab scale from userr4", "Check TESSAROAdmin",
              "Begin Thread for LoadDir", "ValidateDirs", "SetupDlg return", "LoadIni", "LoadIni return"})
            if (line == step)
                steps.push_back(line);
    EXPECT_THAT(steps, ElementsAre("Construct dialog", "DoModal", "SetupDlg", "Grab scale from userr4",
                                   "Check TESSAROAdmin", "Begin Thread for LoadDir", "ValidateDirs", "SetupDlg return",
                                   "LoadIni", "LoadIni return"));
}

TEST_F(Commands, OpenWithNothingPendingPrintsLogsAndChangesNothing) {
    Load();
    AddDocumentCommand(L"ACOMMANDOFNOTHING1", [] {});
    const std::wstring before = Current();
    const auto said = [&](const std::wstring& command) {
        const std::size_t start = transcript.size();
        host->execute(command + L"\n");
        std::wstring text = transcript.substr(start);
        if (const std::size_t echo = text.find(command); echo != std::wstring::npos)
            text.erase(echo, command.size());
        return text;
    };
    const std::wstring silence = said(L"ACOMMANDOFNOTHING1");
    ForgetLog();
    EXPECT_EQ(said(L"NORVANETESSAROOPEN"), silence);
    EXPECT_THAT(Log(), IsEmpty());
    EXPECT_EQ(Current(), before);
    EXPECT_EQ(OpenDrawings(), 1U);
}

TEST_F(Commands, ADrawingThatIsOpenInAnotherCaseIsActivatedEachTimeAndNoCopyIsOpened) {
    Load();
    ASSERT_EQ(host->documents().open(door.wstring()), eOk);
    PendingOpenPath() = (folder.path() / "OAK DOOR.DWG").wstring();
    for (int time = 0; time < 2; ++time) {
        Activate(0);
        ForgetLog();
        host->execute(L"NORVANETESSAROOPEN\n");
        EXPECT_EQ(Current(), door.wstring());
        EXPECT_EQ(OpenDrawings(), 2U);
        EXPECT_EQ(PendingOpenPath(), (folder.path() / "OAK DOOR.DWG").wstring()) << "the path stays pending";
        EXPECT_THAT(Log(), ElementsAre("TESSAROOpen, iterate documents", "activateDocument"));
    }
}

TEST_F(Commands, InADocumentsContextTheActivationGoesThroughTheApplications) {
    Load();
    ASSERT_EQ(host->documents().open(door.wstring()), eOk);
    Activate(0);
    AddDocumentCommand(L"DOCUMENTOPEN", &Symbol<void()>("_Z11TESSAROOpenv"));
    PendingOpenPath() = door.wstring();
    host->execute(L"DOCUMENTOPEN\n");
    EXPECT_EQ(Current(), door.wstring());
    EXPECT_EQ(PendingOpenPath(), door.wstring());
}

TEST_F(Commands, InADocumentsContextNothingIsOpenedAndThePathIsGone) {
    Load();
    AddDocumentCommand(L"DOCUMENTOPEN", &Symbol<void()>("_Z11TESSAROOpenv"));
    PendingOpenPath() = door.wstring();
    ForgetLog();
    host->execute(L"DOCUMENTOPEN\n");
    EXPECT_EQ(OpenDrawings(), 1U);
    EXPECT_EQ(PendingOpenPath(), L"");
    EXPECT_THAT(Log(), ElementsAre("TESSAROOpen, iterate documents", "TESSAROOpen done"));
}

TEST_F(Commands, ADrawingThatIsNotOpenIsOpenedAndThePathIsGone) {
    Load();
    PendingOpenPath() = door.wstring();
    ForgetLog();
    host->execute(L"NORVANETESSAROOPEN\n");
    EXPECT_EQ(Current(), door.wstring());
    EXPECT_EQ(OpenDrawings(), 2U);
    EXPECT_EQ(PendingOpenPath(), L"");
    EXPECT_THAT(Log(),
                testing::IsSupersetOf({"TESSAROOpen, iterate documents", "DoOpen", "DoOpen done", "TESSAROOpen done"}));
    Activate(0);
    host->execute(L"NORVANETESSAROOPEN\n");
    EXPECT_NE(Current(), door.wstring()) << "after an opening the path is gone";
}

TEST_F(Commands, AFailureToOpenIsTheHostsToReport) {
    Load();
    PendingOpenPath() = (folder.path() / "nowhere.dwg").wstring();
    ForgetLog();
    host->execute(L"NORVANETESSAROOPEN\n");
    EXPECT_EQ(OpenDrawings(), 1U);
    EXPECT_EQ(PendingOpenPath(), L"");
    EXPECT_THAT(Log(), testing::IsSupersetOf({"DoOpen", "DoOpen done", "TESSAROOpen done"}));
}

TEST_F(Commands, TheButtonOpenOpensTheBlocksDrawingAndActivatesItTheNextTime) {
    Load();
    const auto open = [](tests::Window& window) {
        ASSERT_TRUE(window.WaitLoaded(1));
        window.Click(window.Blocks(), 0);
        window.Press("Open");
    };
    const std::wstring gate = (folder.path() / "library1" / "gate.dwg").wstring();
    Browse(open);
    EXPECT_EQ(Current(), gate);
    EXPECT_EQ(PendingOpenPath(), L"") << "opened";
    Activate(0);
    Browse(open);
    EXPECT_EQ(Current(), gate);
    EXPECT_EQ(OpenDrawings(), 2U);
    EXPECT_EQ(PendingOpenPath(), gate) << "activated";
}

TEST_F(Commands, TheFunctionsThatNothingReachesWorkWhenTheyAreCalled) {
    Load();
    static int (*browser)() = nullptr;
    static int (*find)() = nullptr;
    static int result = 0;
    browser = &Symbol<int()>("_Z15TessaroFunctionv");
    find = &Symbol<int()>("_Z17FindBlockFunctionv");
    AddDocumentCommand(L"CALLBROWSER", [] { result = browser(); });
    AddDocumentCommand(L"CALLFIND", [] { result = find(); });
    Run({[](tests::Window& window) { EXPECT_TRUE(window.Dialog().isVisible()); }}, L"CALLBROWSER\n");
    EXPECT_EQ(result, 1);
    result = 0;
    Run({[](tests::Window&) {}}, L"CALLFIND\nno such block\n");
    EXPECT_EQ(result, 1);
    EXPECT_TRUE(Said(L"Enter a block name: "));
}

TEST_F(Commands, ASecondTessaroThatAScriptTypesMeanwhileComesAfterTheFirst) {
    Load();
    int up = 0;
    const auto type = [&](tests::Window&) {
        EXPECT_EQ(++up, 1);
        host->documents().sendStringToExecute(host->documents().current(), L"TESSARO\n");
        QTest::qWait(50);
        int windows = 0;
        for (const QWidget* window : QApplication::topLevelWidgets())
            windows += window->objectName() == "BlockDlg" ? 1 : 0;
        EXPECT_EQ(windows, 1);
    };
    Run({type, [&](tests::Window&) { ++up; }});
    EXPECT_EQ(up, 2);
}

} // namespace
