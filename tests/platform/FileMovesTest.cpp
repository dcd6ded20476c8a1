#include "tessaro/platform/Paths.h"
#include "tessaro/platform/Text.h"
#include "tests/support/ChildProcess.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>

using namespace platform;

namespace {

constexpr Time kOldTime = 1'000'000'000;

std::wstring Wide(const std::filesystem::path& path) {
    return FromNarrow(path.native());
}

void MakeOld(const std::filesystem::path& path) {
    const timespec times[] = {{kOldTime, 0}, {kOldTime, 0}};
    ASSERT_EQ(utimensat(AT_FDCWD, path.c_str(), times, 0), 0);
}

void MakeReadOnly(const std::filesystem::path& path) {
    ASSERT_EQ(chmod(path.c_str(), 0444), 0);
}

/// A folder on another file system than the temporary one; empty without any.
std::filesystem::path OtherFileSystem(const std::filesystem::path& here) {
    struct stat first, second;
    for (const char* folder : {"/dev/shm", "/run", "/var/tmp"})
        if (stat(here.c_str(), &first) == 0 && stat(folder, &second) == 0 && first.st_dev != second.st_dev &&
            access(folder, W_OK) == 0)
            return folder;
    return {};
}

} // namespace

TEST(FileMoves, RemoveTakesAnySpellingAndNoFolder) {
    const tests::TemporaryFolder folder;
    const auto path = folder.write("File", "x");
    EXPECT_TRUE(RemoveFile(Wide(folder.path() / "fILE")));
    EXPECT_FALSE(std::filesystem::exists(path));
    EXPECT_FALSE(RemoveFile(Wide(path)));
    std::filesystem::create_directory(folder.path() / "sub");
    EXPECT_FALSE(RemoveFile(Wide(folder.path() / "sub")));
}

TEST(FileMoves, AReadOnlyFileIsNeitherDeletedNorReplaced) {
    const tests::TemporaryFolder folder;
    const auto path = folder.write("f", "kept"), other = folder.write("g", "new");
    MakeReadOnly(path);
    EXPECT_FALSE(RemoveFile(Wide(path)));
    EXPECT_FALSE(CopyFile(Wide(other), Wide(path)));
    EXPECT_FALSE(MoveFile(Wide(other), Wide(path)));
    EXPECT_EQ(tests::readFile(path), "kept");
}

TEST(FileMoves, AMoveNeverReplaces) {
    const tests::TemporaryFolder folder;
    const auto from = folder.write("from", "1"), to = folder.write("To", "2");
    EXPECT_FALSE(MoveFile(Wide(from), Wide(to)));
    EXPECT_FALSE(MoveFile(Wide(from), Wide(folder.path() / "TO"))) << "in another spelling either";
    EXPECT_EQ(tests::readFile(from), "1");
    EXPECT_EQ(tests::readFile(to), "2");
    EXPECT_TRUE(MoveFile(Wide(from), Wide(folder.path() / "new")));
    EXPECT_EQ(tests::readFile(folder.path() / "new"), "1");
    EXPECT_FALSE(std::filesystem::exists(from));
    EXPECT_FALSE(MoveFile(Wide(from), Wide(folder.path() / "more"))) << "nothing to move";
    EXPECT_FALSE(MoveFile(Wide(to), Wide(folder.path() / "none" / "x"))) << "no such folder";
}

TEST(FileMoves, AFileMayTakeAnotherSpellingOfItsName) {
    const tests::TemporaryFolder folder;
    const auto path = folder.write("chair.dwg", "1");
    EXPECT_TRUE(MoveFile(Wide(path), Wide(folder.path() / "Chair.DWG")));
    EXPECT_FALSE(std::filesystem::exists(path));
    EXPECT_EQ(tests::readFile(folder.path() / "Chair.DWG"), "1");
    EXPECT_TRUE(MoveFile(Wide(folder.path() / "Chair.DWG"), Wide(folder.path() / "Chair.DWG")));
}

TEST(FileMoves, AReadOnlyFileMayBeRenamed) {
    const tests::TemporaryFolder folder;
    const auto path = folder.write("f", "1");
    MakeReadOnly(path);
    EXPECT_TRUE(MoveFile(Wide(path), Wide(folder.path() / "g")));
    EXPECT_TRUE(GetFileStatus(Wide(folder.path() / "g"))->readOnly);
}

TEST(FileMoves, AMoveAcrossFileSystemsCopiesWithTimeAndRights) {
    const tests::TemporaryFolder folder;
    const auto elsewhere = OtherFileSystem(folder.path());
    if (elsewhere.empty())
        GTEST_SKIP() << "there is no second file system";
    const auto target = elsewhere / folder.path().filename();
    const auto path = folder.write("f", std::string(1'000'000, 'x'));
    ASSERT_EQ(chmod(path.c_str(), 0640), 0);
    MakeOld(path);
    ASSERT_TRUE(MoveFile(Wide(path), Wide(target)));
    EXPECT_FALSE(std::filesystem::exists(path));
    EXPECT_EQ(tests::readFile(target), std::string(1'000'000, 'x'));
    EXPECT_EQ(GetFileStatus(Wide(target))->modified, kOldTime);
    struct stat status;
    ASSERT_EQ(stat(target.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0640u);
    const auto second = folder.write("g", "2");
    EXPECT_FALSE(MoveFile(Wide(second), Wide(target))) << "never replaces";
    std::filesystem::remove(target);
    MakeReadOnly(second);
    EXPECT_FALSE(MoveFile(Wide(second), Wide(target))) << "the old one would have to be deleted";
    EXPECT_FALSE(std::filesystem::exists(target));
    EXPECT_EQ(tests::readFile(second), "2");
}

TEST(FileMoves, AMoveAcrossFileSystemsThatIsKilledLeavesTheOldFileOrTheWholeNewOneAndNoPart) {
    const tests::TemporaryFolder folder;
    const auto other = OtherFileSystem(folder.path());
    if (other.empty())
        GTEST_SKIP() << "no second file system";
    const auto place = other / ("moves-" + std::to_string(getpid()));
    std::filesystem::create_directory(place);
    const std::string bytes(1 << 20, 'x');
    for (int number = 1;; ++number) {
        const auto from = folder.write("f", bytes);
        std::filesystem::remove(place / "f");
        const tests::Killed killed = tests::killAtFileCall(number, [&] { MoveFile(Wide(from), Wide(place / "f")); });
        if (killed.refused)
            break;
        EXPECT_TRUE(std::filesystem::exists(from) || std::filesystem::exists(place / "f")) << killed.at;
        for (const auto& file : {from, place / "f"})
            EXPECT_TRUE(!std::filesystem::exists(file) || tests::readFile(file) == bytes) << killed.at << file;
        EXPECT_LE(std::distance(std::filesystem::directory_iterator(place), {}), 1) << killed.at;
        if (killed.at == "end")
            break;
    }
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "f"));
    std::filesystem::remove_all(place);
}

TEST(FileMoves, ACopyReplacesAndKeepsTheTime) {
    const tests::TemporaryFolder folder;
    const auto from = folder.write("from", "new"), to = folder.write("To", "older and longer");
    MakeOld(from);
    EXPECT_TRUE(CopyFile(Wide(from), Wide(folder.path() / "TO")));
    EXPECT_EQ(tests::readFile(to), "new");
    EXPECT_EQ(GetFileStatus(Wide(to))->modified, kOldTime);
    EXPECT_EQ(tests::readFile(from), "new");
    EXPECT_TRUE(CopyFile(Wide(from), Wide(folder.path() / "third")));
    EXPECT_EQ(tests::readFile(folder.path() / "third"), "new");
}

TEST(FileMoves, AFileIsNotCopiedOntoItself) {
    const tests::TemporaryFolder folder;
    const auto path = folder.write("f", "kept");
    std::filesystem::create_hard_link(path, folder.path() / "same");
    EXPECT_FALSE(CopyFile(Wide(path), Wide(path)));
    EXPECT_FALSE(CopyFile(Wide(path), Wide(folder.path() / "same")));
    EXPECT_FALSE(CopyFile(Wide(path), Wide(folder.path())));
    EXPECT_FALSE(CopyFile(Wide(folder.path()), Wide(folder.path() / "x")));
    EXPECT_FALSE(CopyFile(Wide(folder.path() / "none"), Wide(folder.path() / "x")));
    EXPECT_EQ(tests::readFile(path), "kept");
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "x"));
}
