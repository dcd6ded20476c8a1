// The commands, in the real editor.
#include "tests/browser/BrowserFixture.h"

#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/host/entry/Commands.h"

#include <QApplication>
#include <QTest>
#include <QTimer>

namespace {

int shown = 0;

/// Closes each dialog that comes up, and counts them.
struct Closer {
    Closer() {
        shown = 0;
        QObject::connect(&timer, &QTimer::timeout, [] {
            auto* const dialog = dynamic_cast<BlockDlg*>(QApplication::activeModalWidget());
            if (dialog == nullptr || !closeArmed)
                return;
            ++shown;
            dialog->reject();
        });
        timer.start(5);
    }
    QTimer timer;
};

struct OpenCommand : Browser {
    OpenCommand() {
        add(L"TESSARO", ACRX_CMD_MODAL, TessaroCommand);
        add(L"NORVANETESSAROOPEN", ACRX_CMD_SESSION, ::OpenCommand);
        add(L"MODALOPEN", ACRX_CMD_MODAL, TESSAROOpen);
        add(L"CALLTESSARO", ACRX_CMD_MODAL, [] { result = TessaroFunction(); });
        add(L"CALLFIND", ACRX_CMD_MODAL, [] { result = FindBlockFunction(); });
        result = 0;
        first = host.documents().current()->fileName();
        path = (folder.path() / "Oak Door.dwg").wstring();
        editor::Document& saved = host.documents().create();
        EXPECT_EQ(saved.saveAs(path, AcDb::kDHL_1015), 0);
        host.documents().close(saved);
        pendingOpenPath.clear();
    }
    ~OpenCommand() override { pendingOpenPath.clear(); }
    void add(const wchar_t* name, int flags, AcRxFunctionPtr function) {
        EXPECT_EQ(host.commands().addCommand(L"NORVANETESSARO", name, name, flags, function), eOk);
    }
    std::wstring Current() { return host.documents().current()->fileName(); }
    std::size_t Open() { return host.documents().all().size(); }

    std::wstring path, first;
    inline static int result = 0;
};

TEST_F(OpenCommand, WithNothingPendingItChangesNothing) {
    host.execute(L"NORVANETESSAROOPEN\n");
    EXPECT_EQ(Open(), 1U);
    EXPECT_EQ(Current(), first);
    EXPECT_EQ(pendingOpenPath, L"");
    EXPECT_TRUE(host.processor().faults().empty());
}

TEST_F(OpenCommand, ADrawingThatIsNotOpenIsOpenedAndThePathIsGone) {
    pendingOpenPath = path;
    host.execute(L"NORVANETESSAROOPEN\n");
    EXPECT_EQ(Current(), path);
    EXPECT_EQ(Open(), 2U);
    EXPECT_EQ(pendingOpenPath, L"");
    host.documents().activateDocument(host.documents().all().front().get());
    host.execute(L"NORVANETESSAROOPEN\n");
    EXPECT_EQ(Current(), first) << "after an opening the path is gone";
}

TEST_F(OpenCommand, ADrawingThatIsOpenInAnotherCaseIsActivatedAndStaysPending) {
    ASSERT_EQ(host.documents().open(path), 0);
    pendingOpenPath = (folder.path() / "OAK DOOR.DWG").wstring();
    for (int time = 0; time < 2; ++time) {
        host.documents().activateDocument(host.documents().all().front().get());
        ASSERT_EQ(Current(), first);
        host.execute(L"NORVANETESSAROOPEN\n");
        EXPECT_EQ(Current(), path) << time;
        EXPECT_EQ(Open(), 2U) << "no second copy";
        EXPECT_EQ(pendingOpenPath, (folder.path() / "OAK DOOR.DWG").wstring());
    }
}

TEST_F(OpenCommand, InADocumentsContextAnOpenDrawingIsActivatedAllTheSame) {
    ASSERT_EQ(host.documents().open(path), 0);
    host.documents().activateDocument(host.documents().all().front().get());
    pendingOpenPath = path;
    host.execute(L"MODALOPEN\n");
    EXPECT_EQ(Current(), path) << "by way of the application context";
    EXPECT_EQ(pendingOpenPath, path);
}

TEST_F(OpenCommand, InADocumentsContextNothingIsOpenedButThePathIsGone) {
    pendingOpenPath = path;
    host.execute(L"MODALOPEN\n");
    EXPECT_EQ(Open(), 1U);
    EXPECT_EQ(pendingOpenPath, L"");
}

TEST_F(OpenCommand, AFailureToOpenIsTheHostsToReport) {
    pendingOpenPath = (folder.path() / "nowhere.dwg").wstring();
    host.execute(L"NORVANETESSAROOPEN\n");
    EXPECT_EQ(Open(), 1U);
    EXPECT_EQ(pendingOpenPath, L"");
}

TEST_F(OpenCommand, TessaroRunsTheDialogToItsEnd) {
    const Closer closer;
    host.execute(L"TESSARO\n");
    EXPECT_EQ(shown, 1);
    EXPECT_FALSE(BlockDlg::IsUp());
    EXPECT_FALSE(dialogOpen);
}

TEST_F(OpenCommand, TheFunctionOfTheDialogGivesOne) {
    const Closer closer;
    host.execute(L"CALLTESSARO\n");
    EXPECT_EQ(shown, 1);
    EXPECT_EQ(result, 1);
}

TEST_F(OpenCommand, ABlockThatIsAskedForByNameIsPlacedWithoutADialog) {
    auto* const blocks = new Directory;
    blocks->path = L"/lib";
    blocks->isInternal = true;
    auto* const door = new Block;
    door->name = L"DOOR";
    blocks->blocks.push_back(door);
    directories.push_back(blocks);
    std::wstring transcript;
    host.console().setSink([&](std::wstring_view text) { transcript += text; });
    const Closer closer;
    host.execute(L"CALLFIND\ndoor\n");
    EXPECT_EQ(shown, 0);
    EXPECT_EQ(result, 1);
    EXPECT_NE(transcript.find(L"Enter a block name: "), std::wstring::npos);
    EXPECT_NE(transcript.find(L"DOOR"), std::wstring::npos) << "the insertion was sent";
}

TEST_F(OpenCommand, ANameThatPlacesNothingOpensTheDialog) {
    const Closer closer;
    host.execute(L"CALLFIND\nno such block\n");
    EXPECT_EQ(shown, 1);
    EXPECT_EQ(result, 1);
}

TEST_F(OpenCommand, ASecondTessaroWhileTheDialogIsOpenDoesNotArrive) {
    AddFolder(L"Furniture", {"chair"});
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        RunBrowser();
        EXPECT_EQ(theBlockDlg.load(), &dlg);
        EXPECT_TRUE(dlg.isVisible());
        EXPECT_TRUE(closeArmed) << "the open dialog is not touched";
        dlg.reject();
        ASSERT_TRUE(WaitFor([] { return theBlockDlg == nullptr; }));
        RunBrowser();
        EXPECT_EQ(theBlockDlg.load(), nullptr) << "nor one that is closing";
    });
}

TEST_F(OpenCommand, ATessaroThatAScriptSendsMeanwhileRunsAfterTheDialog) {
    bool overlapped = false;
    int dialogs = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        auto* const dialog = dynamic_cast<BlockDlg*>(QApplication::activeModalWidget());
        if (dialog == nullptr || !closeArmed || dialog->property("met").toBool())
            return;
        dialog->setProperty("met", true);
        overlapped = overlapped || dialogs++ != shown;
        if (dialogs == 1)
            host.documents().sendStringToExecute(host.documents().current(), L"TESSARO\n");
        dialog->placementCallback = [](Block*) { return ++shown; };
        QTimer::singleShot(20, dialog, [dialog] { dialog->reject(); });
    });
    shown = 0;
    timer.start(5);
    host.execute(L"TESSARO\n");
    EXPECT_EQ(dialogs, 2);
    EXPECT_EQ(shown, 2);
    EXPECT_FALSE(overlapped) << "the second one came before the first had ended";
}

} // namespace
