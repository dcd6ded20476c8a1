#include "editor/application/search_path.h"
#include "tests/application/EditorSession.h"
#include "tests/support/TemporaryFolder.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace {

using namespace editor;
using testing::ElementsAre;

constexpr const char* moduleFolder = TESSARO_BIN_DIR "/modules/";

std::wstring moduleFile(const std::string& name) {
    return fromUtf8(moduleFolder + name + ".arx");
}

std::wstring wide(const std::filesystem::path& path) {
    return fromUtf8(path.string());
}

/// The transcript's lines that begin so.
std::vector<std::string> lines(const std::string& transcript, const std::string& beginning) {
    std::vector<std::string> found;
    for (std::size_t at = 0; at < transcript.size();) {
        const std::size_t end = std::min(transcript.find('\n', at), transcript.size());
        if (transcript.compare(at, beginning.size(), beginning) == 0)
            found.push_back(transcript.substr(at, end - at));
        at = end + 1;
    }
    return found;
}

TEST(NoEditor, TheHostGivesNothingAndItsCallsFail) {
    EXPECT_EQ(acrxSysRegistry(), nullptr);
    EXPECT_EQ(acDocManagerPtr(), nullptr);
    EXPECT_EQ(adsw_acadMainWnd(), nullptr);
    resbuf value;
    EXPECT_EQ(acedGetVar(L"ACADVER", &value), RTERROR);
    EXPECT_NE(acedCmdS(nullptr), 0);
    EXPECT_EQ(acutPrintf(L"x"), RTERROR);
    AcColorSettings colours;
    EXPECT_FALSE(acedGetCurrentColors(&colours));
}

TEST(OneEditor, ASecondIsRefusedAndTheFirstGoesOn) {
    tests::Session session;
    EXPECT_THROW(Editor(), std::logic_error);
    EXPECT_EQ(Editor::instance(), &session.editor);
    EXPECT_EQ(acdbHostApplicationServices()->workingDatabase(), &session.database());
}

TEST(Registry, GivesItsThreeObjects) {
    tests::Session session;
    EXPECT_NE(dynamic_cast<AcRxDynamicLinker*>(acrxSysRegistry()->at(L"DynamicLinker")), nullptr);
    EXPECT_NE(dynamic_cast<AcEdCommandStack*>(acrxSysRegistry()->at(L"ACAD_REGISTERED_COMMANDS")), nullptr);
    EXPECT_NE(dynamic_cast<AcEditor*>(acrxSysRegistry()->at(L"AcEditor")), nullptr);
    EXPECT_EQ(acrxSysRegistry()->at(L"aceditor"), nullptr);
    EXPECT_EQ(acrxSysRegistry()->at(nullptr), nullptr);
}

TEST(Documents, NewOnesAreNumberedAndTheLastIsCurrent) {
    tests::Session session;
    session.editor.execute(L"NEW\n");
    AcApDocManager* const manager = acDocManagerPtr();
    EXPECT_STREQ(manager->curDocument()->fileName(), L"Drawing2.dwg");
    std::vector<std::wstring> names;
    const std::unique_ptr<AcApDocumentIterator> iterator(manager->newAcApDocumentIterator());
    for (; !iterator->done(); iterator->step())
        names.push_back(iterator->document()->fileName());
    EXPECT_THAT(names, ElementsAre(L"Drawing1.dwg", L"Drawing2.dwg"));
    EXPECT_EQ(iterator->document(), nullptr);
}

TEST(Documents, ActivatingMakesTheDatabaseTheWorkingOneAndClosingGoesBack) {
    tests::Session session;
    Document* const first = session.editor.documents().current();
    Document& second = session.editor.documents().create();
    EXPECT_EQ(acDocManagerPtr()->activateDocument(first, true), eOk);
    EXPECT_EQ(acdbHostApplicationServices()->workingDatabase(), first->database());
    EXPECT_EQ(acDocManagerPtr()->activateDocument(nullptr), Acad::eNoDocument);
    session.editor.documents().close(*first);
    EXPECT_EQ(acDocManagerPtr()->curDocument(), &second);
    session.editor.documents().close(second);
    EXPECT_EQ(acDocManagerPtr()->curDocument(), nullptr);
    EXPECT_EQ(acdbHostApplicationServices()->workingDatabase(), nullptr);
}

TEST(Documents, LocksAreCounted) {
    tests::Session session;
    AcApDocument* const document = acDocManagerPtr()->curDocument();
    EXPECT_EQ(acDocManagerPtr()->lockDocument(document), eOk);
    EXPECT_EQ(acDocManagerPtr()->lockDocument(document), eOk);
    EXPECT_EQ(session.editor.documents().current()->locks(), 2);
    EXPECT_EQ(acDocManagerPtr()->unlockDocument(document), eOk);
    EXPECT_EQ(acDocManagerPtr()->unlockDocument(document), eOk);
    EXPECT_EQ(acDocManagerPtr()->unlockDocument(document), Acad::eLockViolation);
    EXPECT_EQ(acDocManagerPtr()->lockDocument(nullptr), Acad::eNoDocument);
}

TEST(Documents, TheContextIsTheApplicationsForSessionCommandsOnly) {
    tests::Session session;
    static bool modal, sessionCommand, insideCall, afterwards;
    session.addCommand(L"INDRAWING", [] {
        modal = acDocManagerPtr()->isApplicationContext();
        acDocManagerPtr()->executeInApplicationContext(
            [](void* seen) { *static_cast<bool*>(seen) = acDocManagerPtr()->isApplicationContext(); }, &insideCall);
        afterwards = acDocManagerPtr()->isApplicationContext();
        EXPECT_EQ(acDocManagerPtr()->appContextOpenDocument(L"x.dwg"), Acad::eNotApplicable);
    });
    session.addCommand(
        L"INSESSION", [] { sessionCommand = acDocManagerPtr()->isApplicationContext(); }, ACRX_CMD_SESSION);
    session.editor.execute(L"INDRAWING\nINSESSION\n");
    EXPECT_FALSE(modal);
    EXPECT_TRUE(insideCall);
    EXPECT_FALSE(afterwards);
    EXPECT_TRUE(sessionCommand);
}

TEST(Documents, SavedAndOpenedAgainADrawingIsTheSame) {
    tests::TemporaryFolder folder;
    const std::wstring file = wide(folder.path() / "a plan.dwg");
    tests::Session session;
    session.editor.execute(L"LINE 0,0 1,1 \nSETVAR USERR4 2.5\nSAVEAS 2000\n" + file + L"\n");
    ASSERT_THAT(session.faults(), testing::IsEmpty()) << session.transcript;
    EXPECT_EQ(session.variable(L"DWGNAME"), "\"a plan.dwg\"");
    EXPECT_EQ(session.variable(L"DWGTITLED"), "1");
    EXPECT_EQ(session.variable(L"DBMOD"), "0");
    session.editor.execute(L"CLOSE\nOPEN " + file + L"\n");
    EXPECT_THAT(tests::modelSpaceOf(session.database()), ElementsAre("LINE"));
    EXPECT_EQ(session.database().userr4(), 2.5);
    EXPECT_STREQ(acDocManagerPtr()->curDocument()->fileName(), file.c_str());
}

TEST(Documents, AFileThatIsOpenIsOnlyMadeCurrent) {
    tests::TemporaryFolder folder;
    const std::wstring file = wide(folder.path() / "plan.dwg");
    tests::Session session;
    session.editor.execute(L"SAVEAS " + file + L"\nNEW\n");
    EXPECT_EQ(acDocManagerPtr()->appContextOpenDocument(wide(folder.path() / "PLAN.dwg").c_str()), eOk);
    EXPECT_EQ(session.editor.documents().all().size(), 2u);
    EXPECT_STREQ(acDocManagerPtr()->curDocument()->fileName(), file.c_str());
}

TEST(Documents, WhatCanNotBeOpenedIsToldAndChangesNothing) {
    tests::TemporaryFolder folder;
    const auto rubbish = folder.write("rubbish.dwg", "AC1015 and nothing more");
    const auto nothing = folder.write("nothing.dwg", "");
    tests::Session session;
    EXPECT_EQ(acDocManagerPtr()->appContextOpenDocument(wide(folder.path() / "none.dwg").c_str()), Acad::eFileNotFound);
    EXPECT_NE(acDocManagerPtr()->appContextOpenDocument(wide(rubbish).c_str()), eOk);
    session.editor.execute(L"OPEN " + wide(nothing) + L"\nOPEN none.dwg\n");
    EXPECT_THAT(session.faults(), ElementsAre("OPEN failed", "OPEN failed"));
    EXPECT_TRUE(session.said("Can't find file \"none.dwg\"."));
    EXPECT_EQ(session.editor.documents().all().size(), 1u);
}

TEST(Documents, QuitAndCloseAskAboutChanges) {
    tests::Session session;
    session.editor.execute(L"CIRCLE 0,0 1\nQUIT\nN\n");
    EXPECT_FALSE(session.editor.isQuitting());
    session.editor.execute(L"CLOSE\n\n");
    EXPECT_NE(session.editor.documents().current(), nullptr);
    session.editor.execute(L"QUIT\nY\n");
    EXPECT_TRUE(session.editor.isQuitting());
}

TEST(Documents, QuitAsksNothingWithoutChanges) {
    tests::Session session;
    session.editor.execute(L"QUIT\n");
    EXPECT_TRUE(session.editor.isQuitting());
}

TEST(Documents, SavingOverAnotherDrawingIsAsked) {
    tests::TemporaryFolder folder;
    const auto other = folder.write("other.dwg", "not to be lost");
    tests::Session session;
    session.editor.execute(L"SAVEAS " + wide(other) + L"\n\n");
    EXPECT_EQ(tests::readFile(other), "not to be lost");
    session.editor.execute(L"SAVEAS " + wide(other) + L"\nY\n");
    EXPECT_EQ(tests::readFile(other).substr(0, 6), "AC1015");
}

/// A window that answers and counts.
class AskingWindow : public WindowServices {
public:
    bool asksToSave() const override { return true; }
    SaveAnswer askToSave(const std::wstring& drawing) override {
        asked.push_back(drawing);
        return answer;
    }
    bool asksForFiles() const override { return true; }
    std::optional<std::wstring> pickFileToSave(const std::wstring&) override { return file; }
    std::optional<int> pickColour(int start) override { return start == 3 ? std::optional(5) : std::nullopt; }

    SaveAnswer answer = SaveAnswer::Cancel;
    std::vector<std::wstring> asked;
    std::optional<std::wstring> file;
};

TEST(Windows, AnswerTheSaveQuestionAndTheFileDialog) {
    tests::TemporaryFolder folder;
    AskingWindow window;
    tests::Session session;
    session.editor.setWindow(&window);
    session.editor.execute(L"CIRCLE 0,0 1\nQUIT\n");
    EXPECT_FALSE(session.editor.isQuitting());
    EXPECT_THAT(window.asked, ElementsAre(L"Drawing1.dwg"));
    window.answer = SaveAnswer::Save;
    session.editor.execute(L"QUIT\n");
    EXPECT_FALSE(session.editor.isQuitting()) << "a cancelled file dialog cancels the quitting";
    window.file = wide(folder.path() / "saved.dwg");
    session.editor.execute(L"QUIT\n");
    EXPECT_TRUE(session.editor.isQuitting());
    EXPECT_TRUE(std::filesystem::exists(folder.path() / "saved.dwg"));
    session.editor.setWindow(nullptr);
}

TEST(Windows, TheColourDialogAnswersByItsFunction) {
    AskingWindow window;
    tests::Session session;
    session.editor.setWindow(&window);
    resbuf* const list = acutNewRb(RTSTR);
    acutNewString(L"acad_colordlg", list->resval.rstring);
    list->rbnext = acutNewRb(RTSHORT);
    list->rbnext->resval.rint = 3;
    list->rbnext->rbnext = acutNewRb(RTNIL);
    resbuf* result = nullptr;
    ASSERT_EQ(acedInvoke(list, &result), RTNORM);
    ASSERT_NE(result, nullptr);
    EXPECT_EQ(result->resval.rint, 5);
    acutRelRb(result);
    list->rbnext->resval.rint = 7;
    EXPECT_EQ(acedInvoke(list, &result), RTNORM) << "a cancelled dialog is no failure";
    EXPECT_EQ(result, nullptr);
    list->resval.rstring[0] = L'x';
    EXPECT_EQ(acedInvoke(list, &result), RTERROR);
    acutRelRb(list);
    session.editor.setWindow(nullptr);
}

TEST(Messages, AModuleThatIsLoadedIntoADrawingHearsOfBoth) {
    tests::Session session;
    EXPECT_TRUE(session.editor.linker().loadModule(moduleFile("recording").c_str(), true));
    EXPECT_THAT(lines(session.transcript, "message"),
                ElementsAre("message 1 with Drawing1.dwg", "message 3 with Drawing1.dwg"));
    EXPECT_THAT(lines(session.transcript, "several drawings"), testing::SizeIs(1));
    EXPECT_TRUE(session.editor.linker().modules().front()->severalDocuments);
    EXPECT_FALSE(session.said("registered too late"));
    session.editor.execute(L"recordinghello\n");
    EXPECT_TRUE(session.said("hello from the module"));
}

TEST(Messages, FollowTheLivesOfDrawingsAndEditor) {
    tests::Session session(false);
    ASSERT_TRUE(session.editor.linker().loadModule(moduleFile("recording").c_str(), true));
    session.editor.execute(L"NEW\nNEW\nCLOSE\n");
    session.editor.quit();
    session.editor.quit();
    EXPECT_THAT(lines(session.transcript, "message"),
                ElementsAre("message 1 with no drawing", "message 3 with Drawing1.dwg", "message 3 with Drawing2.dwg",
                            "message 4 with Drawing2.dwg", "message 4 with Drawing1.dwg", "message 8 with no drawing"));
}

TEST(Linker, LoadsAModuleOnceAndSaysSo) {
    tests::Session session;
    session.editor.addSupportFolder(fromUtf8(moduleFolder));
    EXPECT_TRUE(session.editor.linker().loadModule(L"recording.arx", true));
    EXPECT_TRUE(session.editor.linker().loadModule(moduleFile("recording").c_str(), false));
    EXPECT_FALSE(session.said("already"));
    session.editor.execute(L"ARX Load recording.arx\n");
    EXPECT_TRUE(session.said("\"" + tests::utf8(moduleFile("recording")) + "\" is already loaded."));
    EXPECT_THAT(lines(session.transcript, "message 1"), testing::SizeIs(1));
}

TEST(Linker, AMissingModuleIsSilentUnlessItIsToBePrinted) {
    tests::Session session;
    EXPECT_FALSE(session.editor.linker().loadModule(L"acISMui.arx", false, true));
    EXPECT_EQ(session.transcript, "");
    EXPECT_FALSE(session.editor.linker().loadModule(L"acISMui.arx", true, true));
    EXPECT_EQ(session.transcript, "\"acISMui.arx\" can't be loaded: the file can't be found.\n");
}

TEST(Linker, RefusesWhatIsNoModuleOfThisRelease) {
    tests::TemporaryFolder folder;
    const auto text = folder.write("text.arx", "no library");
    tests::Session session;
    for (const std::wstring& file :
         {moduleFile("refusing"), moduleFile("foreign"), moduleFile("incomplete"), wide(text)})
        EXPECT_FALSE(session.editor.linker().loadModule(file.c_str(), true)) << tests::utf8(file);
    EXPECT_TRUE(session.said("it could not be initialised"));
    EXPECT_TRUE(session.said("it was built for release 23"));
    EXPECT_TRUE(session.said("it is no application module"));
    session.editor.execute(L"NEW\n");
    EXPECT_THAT(lines(session.transcript, "message 3"), testing::IsEmpty()) << "a refused module hears nothing more";
}

TEST(Linker, AModuleThatThrowsIsNamedAndTheEditorGoesOn) {
    tests::Session session;
    EXPECT_TRUE(session.editor.linker().loadModule(moduleFile("throwing").c_str(), true));
    EXPECT_TRUE(session.said("\"throwing.arx\" failed in message 3: no room for drawings"));
}

TEST(SupportPath, IsTheDrawingsFolderThenTheGivenOnesThenTheModules) {
    tests::TemporaryFolder folder;
    const auto given = folder.write("given/one.ini", "");
    folder.write("given/two.ini", "");
    const auto beside = folder.write("drawing/two.ini", "");
    tests::Session session;
    session.editor.execute(L"SAVEAS " + wide(folder.path() / "drawing/plan.dwg") + L"\n");
    session.editor.addSupportFolder(wide(folder.path() / "given"));
    wchar_t found[512];
    EXPECT_EQ(acedFindFile(L"one.ini", found, 512), RTNORM);
    EXPECT_EQ(found, wide(given));
    EXPECT_EQ(acedFindFile(L"two.ini", found, 512), RTNORM);
    EXPECT_EQ(found, wide(beside));
    EXPECT_EQ(acedFindFile(L"ONE.INI", found, 512), RTNORM) << "case is ignored where no name matches exactly";
    EXPECT_EQ(found, wide(given));
    EXPECT_EQ(acedFindFile(L"recording.arx", found, 512), RTERROR);
    EXPECT_EQ(std::wstring(found), L"");
    ASSERT_TRUE(session.editor.linker().loadModule(moduleFile("recording").c_str(), true));
    EXPECT_EQ(acedFindFile(L"recording.arx", found, 512), RTNORM);
    EXPECT_EQ(acedFindFile(wide(given).c_str(), found, 512), RTNORM) << "a full path is not searched for";
    EXPECT_EQ(acedFindFile(L"one.ini", found, 8), RTERROR) << "a buffer that is too small";
    EXPECT_EQ(acedFindFile(L"", found, 512), RTERROR);
    EXPECT_EQ(acedFindFile(wide(folder.path()).c_str(), found, 512), RTERROR) << "a folder is no file";
}

TEST(Variables, HaveTheirTypes) {
    tests::Session session;
    const auto type = [](const wchar_t* name) {
        resbuf value;
        const int result = acedGetVar(name, &value);
        if (result == RTNORM && value.restype == RTSTR)
            std::free(value.resval.rstring);
        return result == RTNORM ? value.restype : 0;
    };
    EXPECT_EQ(type(L"acadver"), RTSTR);
    EXPECT_EQ(type(L"dimscale"), RTREAL);
    EXPECT_EQ(type(L"USERR4"), RTREAL);
    EXPECT_EQ(type(L"CMDDIA"), RTSHORT);
    EXPECT_EQ(type(L"LUPREC"), RTSHORT);
    EXPECT_EQ(type(L"CLAYER"), RTSTR);
    EXPECT_EQ(type(L"INSBASE"), RT3DPOINT);
    EXPECT_EQ(type(L"NOSUCH"), 0);
    EXPECT_EQ(session.variable(L"ACADVER").substr(0, 4), "\"24.");
    session.editor.setReleaseText(L"19.1");
    EXPECT_EQ(session.variable(L"ACADVER"), "\"19.1\"");
}

TEST(Variables, AreSetWithinTheirBounds) {
    tests::Session session;
    resbuf value;
    value.restype = RTSHORT;
    value.resval.rint = 0;
    EXPECT_EQ(acedSetVar(L"CMDDIA", &value), RTNORM);
    EXPECT_EQ(session.variable(L"CMDDIA"), "0");
    value.resval.rint = 7;
    EXPECT_EQ(acedSetVar(L"CMDDIA", &value), RTERROR);
    EXPECT_EQ(acedSetVar(L"DIMSCALE", &value), RTNORM) << "a whole number is taken for a real";
    EXPECT_EQ(session.database().dimscale(), 7);
    EXPECT_EQ(acedSetVar(L"ACADVER", &value), RTERROR) << "read only";
    EXPECT_EQ(acedSetVar(L"CLAYER", &value), RTERROR) << "another type";
    EXPECT_EQ(acedSetVar(L"NOSUCH", &value), RTERROR);
    value.restype = RTREAL;
    value.resval.rreal = 48;
    EXPECT_EQ(acedSetVar(L"userr4", &value), RTNORM);
    EXPECT_EQ(session.database().userr4(), 48);
    session.editor.execute(L"CLOSE\nY\n");
    EXPECT_EQ(acedSetVar(L"USERR4", &value), RTERROR) << "no drawing is open";
}

TEST(Variables, TheCommandListsAndSetsThem) {
    tests::Session session;
    session.editor.execute(L"SETVAR ? *DIA\nSETVAR FILEDIA 5 0 SETVAR DWGNAME\nSETVAR CLAYER\nNoSuchLayer\n0\n"
                           L"SETVAR INSBASE 1,2,3 SETVAR NOSUCH\n");
    EXPECT_TRUE(session.said("CMDDIA = 1\nFILEDIA = 1\n"));
    EXPECT_EQ(session.variable(L"FILEDIA"), "0");
    EXPECT_TRUE(session.said("FILEDIA does not take this value."));
    EXPECT_TRUE(session.said("DWGNAME = \"Drawing1.dwg\" (read only)"));
    EXPECT_EQ(session.database().insbase().z, 3);
    EXPECT_THAT(session.faults(), ElementsAre("SETVAR failed"));
}

TEST(Symbols, PassThroughTheHostsCalls) {
    tests::Session session;
    session.editor.execute(L"(setq S_LYR \"OBJECTS\" n 7)\n");
    resbuf* value = nullptr;
    ASSERT_EQ(acedGetSym(L"s_lyr", &value), RTNORM);
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(value->restype, RTSTR);
    EXPECT_STREQ(value->resval.rstring, L"OBJECTS");
    EXPECT_EQ(acedPutSym(L"copy", value), RTNORM);
    EXPECT_EQ(session.editor.lisp().symbol(L"COPY"), LispValue(L"OBJECTS"));
    acutRelRb(value);
    EXPECT_EQ(acedGetSym(L"unknown", &value), RTNORM);
    EXPECT_EQ(value, nullptr) << "nil is no element";
    EXPECT_EQ(acedPutSym(L"copy", nullptr), RTNORM);
    EXPECT_EQ(session.editor.lisp().symbol(L"COPY"), LispValue());
}

TEST(Colours, AreDarkAtFirstAndMayBeSet) {
    tests::Session session;
    AcColorSettings colours;
    ASSERT_TRUE(acedGetCurrentColors(&colours));
    EXPECT_EQ(colours.dwGfxModelBkColor, 0x302821u);
    session.editor.setColours({0xFFFFFF, 0xFFFFFF});
    ASSERT_TRUE(acedGetCurrentColors(&colours));
    EXPECT_EQ(colours.dwGfxModelBkColor, 0xFFFFFFu);
}

TEST(Scripts, RunInPlaceWithTheirComments) {
    tests::TemporaryFolder folder;
    const auto script = folder.write("a script.scr", "; two objects\r\nLINE 0,0 1,1\r\n\r\nCIRCLE 0,0\r\n");
    tests::Session session;
    session.editor.execute(L"SCRIPT " + wide(script) + L"\n3\nSCRIPT none\n");
    EXPECT_THAT(tests::modelSpaceOf(session.database()), ElementsAre("LINE", "CIRCLE"));
    EXPECT_THAT(session.faults(), ElementsAre("SCRIPT failed"));
}

} // namespace
