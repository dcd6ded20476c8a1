// Whatever the documents point to is there: pages, headings, pictures, files, manual pages.
#include "tests/documents/Documents.h"
#include "tools/markdown.h"

#include <gtest/gtest.h>
#include <regex>
#include <set>

namespace {

namespace fs = std::filesystem;

const fs::path root = TESSARO_SOURCE_DIR;

std::set<std::string> anchorsOf(const fs::path& page) {
    std::set<std::string> anchors;
    for (const auto& [number, line] : tests::proseLines(tests::documentText(page)))
        if (line.starts_with("#") && line.find(' ') != std::string::npos)
            anchors.insert(tools::anchorOf(line.substr(line.find(' ') + 1)));
    return anchors;
}

TEST(Links, LeadToPagesPicturesAndHeadingsThatAreThere) {
    const std::regex link(R"(\]\(([^)\s]+)\))");
    int checked = 0;
    for (const fs::path& page : tests::documents()) {
        for (const auto& [number, line] : tests::proseLines(tests::documentText(page))) {
            const std::string text = tests::withoutCode(line);
            for (std::sregex_iterator at(text.begin(), text.end(), link), end; at != end; ++at) {
                const std::string target = (*at)[1];
                if (target.starts_with("http://") || target.starts_with("https://"))
                    continue;
                const std::size_t sign = std::min(target.find('#'), target.size());
                const fs::path file =
                    sign == 0 ? page : (page.parent_path() / target.substr(0, sign)).lexically_normal();
                EXPECT_TRUE(fs::exists(root / file)) << page << ":" << number << " leads to " << target;
                if (sign < target.size()) {
                    EXPECT_TRUE(anchorsOf(file).contains(target.substr(sign + 1)))
                        << page << ":" << number << ": no heading " << target;
                }
                ++checked;
            }
        }
    }
    EXPECT_GT(checked, 50);
}

TEST(Links, PathsBetweenBackticksLeadToFilesThatAreThere) {
    // A room or a top folder, then at least one more name; patterns and made-up names hold other characters.
    const std::regex path(
        R"(`((?:bench|cmake|companions|dev|docs|editor|fuzz|packaging|samples|tessaro|tests|tools)/[-A-Za-z0-9_./]+)`)");
    int checked = 0;
    for (const fs::path& page : tests::documents()) {
        for (const auto& [number, line] : tests::proseLines(tests::documentText(page))) {
            for (std::sregex_iterator at(line.begin(), line.end(), path), end; at != end; ++at) {
                const std::string name = (*at)[1];
                if (name.ends_with("/ROOM"))
                    continue; // any of them
                EXPECT_TRUE(fs::exists(root / name)) << page << ":" << number << " names " << name;
                ++checked;
            }
        }
    }
    EXPECT_GT(checked, 20);
}

TEST(Links, EveryPictureOfTheDocumentsIsShownSomewhere) {
    std::string all;
    for (const fs::path& page : tests::documents())
        all += tests::documentText(page);
    for (const auto& entry : fs::directory_iterator(root / "docs/images"))
        EXPECT_NE(all.find("images/" + entry.path().filename().string()), std::string::npos) << entry.path().filename();
}

TEST(Links, ManualPagesNameOnlyEachOther) {
    const std::regex page(R"(\\fB([-\\a-z]+)\\fR\(1\))");
    int checked = 0;
    for (const auto& entry : fs::directory_iterator(root / "docs/man")) {
        const std::string text = tests::documentText(entry.path().lexically_relative(root));
        for (std::sregex_iterator at(text.begin(), text.end(), page), end; at != end; ++at) {
            const std::string name = std::regex_replace((*at)[1].str(), std::regex(R"(\\-)"), "-");
            EXPECT_TRUE(fs::exists(root / "docs/man" / (name + ".1"))) << entry.path().filename() << " names " << name;
            ++checked;
        }
    }
    EXPECT_GT(checked, 5);
}

TEST(Links, GuidePagesLeadOnlyToWhatTheHelpFileHolds) {
    for (const auto& entry : fs::directory_iterator(root / "docs/guide")) {
        if (entry.path().extension() != ".md")
            continue;
        const tools::MarkdownTargets targets{
            [&](const std::string& target) {
                const fs::path page = target.substr(0, target.find('#'));
                EXPECT_TRUE(page.parent_path().empty() || page.string().starts_with("../"))
                    << entry.path() << ": " << target;
                return target;
            },
            [&](const std::string& picture) {
                EXPECT_TRUE(picture.starts_with("../images/")) << entry.path() << ": " << picture;
                return "src=\"" + picture + "\"";
            }};
        const std::string html =
            tools::htmlOfMarkdown(tests::documentText(entry.path().lexically_relative(root)), targets);
        EXPECT_EQ(html.find("]("), std::string::npos) << entry.path() << " has a link that was not understood";
        EXPECT_EQ(html.find("**"), std::string::npos) << entry.path();
    }
}

} // namespace
