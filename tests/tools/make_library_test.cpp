// The maker of large libraries: what it writes is whole and of many kinds.
#include "tests/support/TemporaryFolder.h"

#include "editor/sdk/db.h"

#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <set>
#include <sys/wait.h>

namespace {

namespace fs = std::filesystem;

class MakeLibrary : public testing::Test {
protected:
    int Run(const std::string& options) const {
        const int status = std::system(
            ("'" TESSARO_BIN_DIR "/make-library' " + options + " '" + Place().string() + "' > /dev/null 2> /dev/null")
                .c_str());
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    fs::path Place() const { return folder.path() / "library"; }

    const tests::TemporaryFolder folder;
};

std::wstring CommentsOf(AcDbDatabase& database) {
    AcDbDatabaseSummaryInfo* made = nullptr;
    if (acdbGetSummaryInfo(&database, made) != 0)
        return L"no summary";
    const std::unique_ptr<AcDbDatabaseSummaryInfo> summary(made);
    std::wstring text;
    summary->getComments(text);
    return text;
}

} // namespace

TEST_F(MakeLibrary, DrawingsAreWholeAndDifferInNameDescriptionSizeAndDates) {
    ASSERT_EQ(Run("--count 60 --folders 4 --formats 2000,2004,2007,2010,2013,2018"), 0);
    std::map<std::string, int> folders, formats;
    std::set<std::wstring> comments;
    std::set<std::uintmax_t> sizes;
    std::set<fs::file_time_type> times;
    int drawings = 0;
    for (const auto& entry : fs::recursive_directory_iterator(Place())) {
        if (entry.is_directory())
            continue;
        ++drawings;
        ++folders[entry.path().parent_path().filename()];
        ++formats[tests::readFile(entry.path()).substr(0, 6)];
        sizes.insert(entry.file_size());
        times.insert(entry.last_write_time());
        AcDbDatabase database(false, false);
        ASSERT_EQ(database.readDwgFile(entry.path().wstring().c_str()), 0) << entry.path();
        comments.insert(CommentsOf(database));
    }
    EXPECT_EQ(drawings, 60);
    EXPECT_EQ(folders.size(), 4u);
    for (const auto& [name, count] : folders)
        EXPECT_EQ(count, 15) << name;
    EXPECT_EQ(formats.size(), 6u);
    EXPECT_EQ(comments.size(), 60u);
    EXPECT_EQ(times.size(), 60u);
    EXPECT_GT(sizes.size(), 30u);
}

TEST_F(MakeLibrary, TheSameOptionsMakeTheSameFiles) {
    ASSERT_EQ(Run("--count 6 --folders 1 --formats 2004"), 0);
    std::map<fs::path, std::string> first;
    for (const auto& entry : fs::directory_iterator(Place() / "Library 001"))
        first[entry.path()] = tests::readFile(entry.path());
    EXPECT_EQ(first.size(), 6u);
    fs::remove_all(Place());
    ASSERT_EQ(Run("--count 6 --folders 1 --formats 2004"), 0);
    for (const auto& [file, bytes] : first)
        EXPECT_EQ(tests::readFile(file).size(), bytes.size()) << file;
}

TEST_F(MakeLibrary, AWrongCommandLineEndsWithTwoAndMakesNothing) {
    for (const char* const options : {"--count 0", "--count many", "--formats 1999", "--formats ''", "--unknown 1"})
        EXPECT_EQ(Run(options), 2) << options;
    EXPECT_FALSE(fs::exists(Place()));
}

TEST_F(MakeLibrary, APlaceThatCantBeWrittenEndsWithOne) {
    folder.write("library", "a file");
    EXPECT_EQ(Run("--count 2 --folders 1"), 1);
}
