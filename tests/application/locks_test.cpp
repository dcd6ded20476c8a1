// Lock files beside drawings, and external references as their drawing is opened.
#include "tests/application/EditorSession.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/TemporaryFolder.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using namespace editor;

std::wstring wide(const std::filesystem::path& path) {
    return fromUtf8(path.string());
}

TEST(Locks, ADrawingThatIsOpenForWritingHasAFileBesideIt) {
    tests::TemporaryFolder folder;
    const auto lock = folder.path() / "plan.dwk";
    tests::Session session;
    session.editor.execute(L"SAVEAS " + wide(folder.path() / "plan.dwg") + L"\n");
    EXPECT_TRUE(std::filesystem::exists(lock)) << "from the first save on";
    session.editor.execute(L"SAVEAS " + wide(folder.path() / "other.dwg") + L"\n");
    EXPECT_FALSE(std::filesystem::exists(lock));
    EXPECT_TRUE(std::filesystem::exists(folder.path() / "other.dwk"));
    session.editor.execute(L"CLOSE\nOPEN " + wide(folder.path() / "plan.dwg") + L"\n");
    EXPECT_TRUE(std::filesystem::exists(lock));
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "other.dwk"));
    session.editor.quit();
    EXPECT_FALSE(std::filesystem::exists(lock));
}

TEST(Locks, AreHonouredWhoeverMadeThem) {
    tests::TemporaryFolder folder;
    tests::Session session;
    const std::wstring file = wide(folder.path() / "plan.dwg");
    session.editor.execute(L"SAVEAS " + file + L"\nCLOSE\n");
    for (const char* const name : {"plan.dwk", "plan.DWK"}) {
        const auto lock = folder.write(name, "");
        EXPECT_EQ(session.editor.documents().open(file), Acad::eFileSharingViolation);
        EXPECT_TRUE(session.said("is currently in use by another user."));
        EXPECT_EQ(acDocManagerPtr()->appContextOpenDocument(file.c_str()), eOk) << "a module opens it read-only";
        EXPECT_TRUE(session.editor.documents().current()->isReadOnly());
        session.editor.execute(L"CLOSE\n");
        EXPECT_TRUE(std::filesystem::exists(lock)) << "it is somebody else's";
        std::filesystem::remove(lock);
    }
}

TEST(Locks, OfAProcessThatDiedCountForNothing) {
    tests::TemporaryFolder folder;
    tests::Session session;
    const std::wstring file = wide(folder.path() / "plan.dwg");
    session.editor.execute(L"SAVEAS " + file + L"\nCLOSE\n");
    char machine[256] = {};
    ASSERT_EQ(gethostname(machine, sizeof machine - 1), 0);
    const pid_t child = fork();
    if (child == 0)
        _exit(0);
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    folder.write("plan.dwk", "anna\n" + std::string(machine) + "\n" + std::to_string(child) + "\n");
    EXPECT_EQ(session.editor.documents().open(file), eOk);
    EXPECT_FALSE(session.editor.documents().current()->isReadOnly());
    EXPECT_EQ(tests::readFile(folder.path() / "plan.dwk").find("\n" + std::to_string(child) + "\n"), std::string::npos);
}

TEST(Locks, AFolderThatTakesNoFilesIsNoHindrance) {
    tests::TemporaryFolder folder;
    const std::wstring file = wide(folder.path() / "plan.dwg");
    ASSERT_EQ(AcDbDatabase().saveAs(file.c_str()), eOk);
    std::filesystem::permissions(folder.path(), std::filesystem::perms(0755));
    constexpr int opened = 0, refused = 1, unable = 2;
    const int result = tests::inChild([&] {
        if (geteuid() != 0)
            std::filesystem::permissions(folder.path(), std::filesystem::perms(0555));
        else if (!tests::becomeNobody())
            return unable;
        tests::Session session;
        return session.editor.documents().open(file) == eOk ? opened : refused;
    });
    std::filesystem::permissions(folder.path(), std::filesystem::perms(0755));
    if (result == unable)
        GTEST_SKIP() << "no right to become another user";
    EXPECT_EQ(result, opened);
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "plan.dwk"));
}

TEST(References, AreReadWhenTheirDrawingIsOpenedAndFoundBesideIt) {
    tests::TemporaryFolder folder;
    std::filesystem::create_directories(folder.path() / "moved");
    tests::Session session;
    session.editor.execute(L"LINE 0,0 1,1 \nSAVEAS " + wide(folder.path() / "leaf.dwg") + L"\nCLOSE\nNEW\n-XREF A\n" +
                           wide(folder.path() / "leaf.dwg") + L"\nS 1 R 0 0,0\nSAVEAS " +
                           wide(folder.path() / "host.dwg") + L"\nCLOSE\n");
    ASSERT_THAT(session.faults(), testing::IsEmpty()) << session.transcript;
    for (const char* const file : {"leaf.dwg", "host.dwg"})
        std::filesystem::rename(folder.path() / file, folder.path() / "moved" / file);
    session.transcript.clear();
    session.editor.execute(L"OPEN " + wide(folder.path() / "moved/host.dwg") + L"\n-XREF ?\n");
    EXPECT_TRUE(session.said("Resolve Xref \"leaf\": "));
    EXPECT_TRUE(session.said("\"leaf\" loaded."));
    EXPECT_TRUE(session.said("\"leaf\"  Attach  Loaded"));
    session.editor.execute(L"CLOSE\n");
    std::filesystem::remove(folder.path() / "moved/leaf.dwg");
    session.editor.execute(L"OPEN " + wide(folder.path() / "moved/host.dwg") + L"\n-XREF ?\n");
    EXPECT_TRUE(session.said("can't be loaded: the file can't be found."));
    EXPECT_TRUE(session.said("\"leaf\"  Attach  Not loaded"));
    EXPECT_THAT(session.faults(), testing::IsEmpty()) << "a missing reference is no fault of the command";
}

} // namespace
