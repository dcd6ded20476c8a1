// The words of docs/platform.md for failed operations are those that users see.
#include "tessaro/platform/File.h"
#include "tessaro/platform/Text.h"

#include "tests/support/TemporaryFolder.h"

#include <gmock/gmock.h>

using testing::HasSubstr;

namespace {

template <class Exception> std::string Words(int cause) {
    return platform::ToNarrow(Exception(static_cast<typename Exception::Cause>(cause), L"FILE").ErrorText());
}

/// What the page says between its headings of the two kinds of exceptions.
std::string Section(const std::string& from, const std::string& to) {
    const std::string page = tests::readFile(std::filesystem::path(TESSARO_SOURCE_DIR) / "docs/platform.md");
    const std::size_t begin = page.find(from);
    return begin == std::string::npos ? "" : page.substr(begin, page.find(to, begin) - begin);
}

} // namespace

TEST(ExceptionTexts, OfFilesStandInThePageWithTheirNumbers) {
    const std::string page = Section("| Number | `FileException` |", "| Number | `ArchiveException` |");
    for (int cause = 0; cause <= 14; ++cause)
        EXPECT_TRUE(testing::Matches(testing::ContainsRegex("\\| " + std::to_string(cause) + " \\| `[a-zA-Z]+` \\| " +
                                                            Words<platform::FileException>(cause)))(page))
            << cause << " " << Words<platform::FileException>(cause);
}

TEST(ExceptionTexts, OfArchivesStandInThePage) {
    const std::string page = Section("| Number | `ArchiveException` |", "`UserException`");
    for (int cause = 0; cause <= 7; ++cause) {
        EXPECT_THAT(page, HasSubstr("| " + Words<platform::ArchiveException>(cause) + " |")) << cause;
        EXPECT_THAT(page, HasSubstr(std::to_string(cause)));
    }
}
