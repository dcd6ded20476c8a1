#include "tessaro/platform/File.h"
#include "tessaro/platform/Paths.h"
#include "tessaro/platform/Text.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace platform;

namespace {

std::wstring Wide(const std::filesystem::path& path) {
    return FromNarrow(path.native());
}

/// Why an opening fails; none where it does not.
FileException::Cause CauseOf(const std::wstring& path, unsigned mode) {
    try {
        const File file(path, mode);
        return FileException::none;
    } catch (const FileException& failed) {
        EXPECT_EQ(failed.path, path);
        return failed.cause;
    }
}

constexpr unsigned kCreate = File::modeCreate | File::modeWrite;

} // namespace

TEST(File, WritesAndReadsBack) {
    const tests::TemporaryFolder folder;
    const std::wstring path = Wide(folder.path() / "f");
    {
        File file(path, kCreate);
        file.Write("hello world", 11);
        file.Seek(6);
        file.Write("W", 1);
        EXPECT_EQ(file.Position(), 7u);
        EXPECT_EQ(file.SeekToEnd(), 11u);
        file.Close();
        EXPECT_FALSE(file.IsOpen());
    }
    File file;
    ASSERT_TRUE(file.Open(path, File::modeRead));
    EXPECT_EQ(file.Length(), 11u);
    EXPECT_EQ(file.Path(), path);
    char bytes[20] = {};
    EXPECT_EQ(file.Read(bytes, sizeof bytes), 11u) << "a short read is no failure";
    EXPECT_STREQ(bytes, "hello World");
    EXPECT_EQ(file.Read(bytes, 1), 0u);
    file.Seek(100);
    EXPECT_EQ(file.Read(bytes, 1), 0u);
    EXPECT_THROW(file.Seek(~std::uint64_t{0}), FileException);
}

TEST(File, CreationEmptiesAnOldFileUnlessToldOtherwise) {
    const tests::TemporaryFolder folder;
    const auto path = folder.write("F.txt", "old");
    File(Wide(folder.path() / "f.TXT"), kCreate | File::modeNoTruncate).Close();
    EXPECT_EQ(tests::readFile(path), "old");
    File(Wide(folder.path() / "f.TXT"), kCreate).Close();
    EXPECT_EQ(tests::readFile(path), "");
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "f.TXT")) << "the old spelling is kept";
}

TEST(File, AppendingWritesAtTheEnd) {
    const tests::TemporaryFolder folder;
    const auto path = folder.write("f", "one ");
    File file(Wide(path), kCreate | File::modeNoTruncate | File::modeAppend);
    file.Seek(0);
    file.Write("two", 3);
    EXPECT_EQ(tests::readFile(path), "one two");
}

TEST(File, ANewFileGoesIntoAnExistingFolderOfAnotherSpelling) {
    const tests::TemporaryFolder folder;
    folder.write("Sub/x", "");
    File(Wide(folder.path() / "SUB" / "New"), kCreate).Close();
    EXPECT_TRUE(std::filesystem::exists(folder.path() / "Sub" / "New"));
}

TEST(File, FailedOpeningsTellTheirCause) {
    const tests::TemporaryFolder folder;
    const std::wstring root = Wide(folder.path());
    EXPECT_EQ(CauseOf(root + L"/none", File::modeRead), FileException::fileNotFound);
    EXPECT_EQ(CauseOf(root + L"/none", File::modeWrite), FileException::fileNotFound);
    EXPECT_EQ(CauseOf(root + L"/none/x", kCreate), FileException::badPath);
    EXPECT_EQ(CauseOf(root + L"/" + std::wstring(300, L'x'), kCreate), FileException::badPath);
    EXPECT_EQ(CauseOf(root, File::modeRead), FileException::accessDenied) << "a folder";
    ASSERT_EQ(mkfifo((folder.path() / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(CauseOf(root + L"/pipe", File::modeRead), FileException::accessDenied);
    EXPECT_EQ(CauseOf(L"", File::modeRead), FileException::fileNotFound);
    EXPECT_EQ(CauseOf(L"", kCreate), FileException::badPath);
}

TEST(File, AReadOnlyFileIsNotWrittenByAnybody) {
    const tests::TemporaryFolder folder;
    const auto path = folder.write("f", "kept");
    ASSERT_EQ(chmod(path.c_str(), 0444), 0);
    EXPECT_EQ(CauseOf(Wide(path), kCreate), FileException::accessDenied);
    EXPECT_EQ(CauseOf(Wide(path), File::modeReadWrite), FileException::accessDenied);
    EXPECT_EQ(CauseOf(Wide(path), File::modeRead), FileException::none);
    EXPECT_EQ(tests::readFile(path), "kept");
}

TEST(File, ExclusiveSharingIsALockThatTheSecondOpeningMeets) {
    const tests::TemporaryFolder folder;
    const auto path = folder.write("f", "kept");
    File first(Wide(path), File::modeReadWrite | File::shareExclusive);
    EXPECT_EQ(CauseOf(Wide(path), kCreate | File::shareExclusive), FileException::sharingViolation);
    EXPECT_EQ(tests::readFile(path), "kept") << "not emptied before the lock is had";
    first.Close();
    EXPECT_EQ(CauseOf(Wide(path), kCreate | File::shareExclusive), FileException::none);
}

TEST(File, AFullDiskIsTold) {
    const tests::TemporaryFolder folder;
    const std::wstring path = Wide(folder.path() / "f");
    const pid_t child = fork();
    if (child == 0) {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{4, 4};
        setrlimit(RLIMIT_FSIZE, &limit);
        try {
            File file(path, kCreate);
            file.Write("123456", 6);
        } catch (const FileException& failed) {
            _exit(failed.cause == FileException::diskFull ? 0 : 2);
        }
        _exit(1);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0);
}

TEST(File, AClosedFileIsNoFile) {
    File file;
    char byte;
    EXPECT_THROW(file.Read(&byte, 1), FileException);
    EXPECT_THROW(file.Write("x", 1), FileException);
    EXPECT_THROW(file.Length(), FileException);
    EXPECT_THROW(file.Seek(0), FileException);
    EXPECT_NO_THROW(file.Close());
    EXPECT_FALSE(file.Open(L"/none/none", File::modeRead));
    EXPECT_FALSE(file.IsOpen());
}

TEST(File, EveryCauseHasWordsWithTheFilesName) {
    for (int cause = FileException::none; cause <= FileException::endOfFile; ++cause) {
        const FileException failed(static_cast<FileException::Cause>(cause), L"/a/b.ini");
        EXPECT_NE(failed.ErrorText().find(L"\"/a/b.ini\""), std::wstring::npos) << cause;
    }
    for (int cause = ArchiveException::none; cause <= ArchiveException::badSchema; ++cause) {
        const ArchiveException failed(static_cast<ArchiveException::Cause>(cause), L"/a/b.cache");
        EXPECT_NE(failed.ErrorText().find(L"\"/a/b.cache\""), std::wstring::npos) << cause;
    }
}
