// British English, with the words of the field and of this system in docs/words.txt.
#include "tests/documents/Documents.h"
#include "tests/support/TemporaryFolder.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <regex>
#include <set>
#include <sstream>

namespace {

namespace fs = std::filesystem;

/// The prose of a document without code, link targets and messages that are quoted word by word.
std::string proseOf(const std::string& document) {
    std::string text;
    for (const auto& [number, line] : tests::proseLines(document))
        text += tests::withoutCode(line) + "\n";
    return std::regex_replace(text, std::regex(R"(\]\([^)]*\))"), "]");
}

/// The text of a manual page without requests and fonts.
std::string manualText(const std::string& page) {
    const std::string lines = std::regex_replace(page, std::regex(R"((^|\n)\.[A-Z]+)"), "\n");
    return std::regex_replace(std::regex_replace(lines, std::regex(R"(\\f[BIRP])"), " "), std::regex(R"(\\-)"), "-");
}

class Spelling : public testing::Test {
protected:
    void SetUp() override {
        if (!tests::hasProgram("aspell") || tests::runShell("aspell dicts | grep -qx en_GB").status != 0)
            GTEST_SKIP() << "aspell with its British dictionary is not installed";
        std::istringstream list(tests::documentText("docs/words.txt"));
        std::string words = "personal_ws-1.1 en 0 utf-8\n";
        for (std::string word; list >> word;)
            words += word + "\n";
        dictionary = folder.write("words.pws", words);
    }

    std::set<std::string> unknownIn(const std::string& text) const {
        const auto file = folder.write("text", text);
        const auto [status, printed] =
            tests::runShell("aspell --lang=en_GB --encoding=utf-8 --ignore=2 --home-dir='" + folder.path().string() +
                            "' --personal='" + dictionary.string() + "' list < '" + file.string() + "'");
        EXPECT_EQ(status, 0) << printed;
        std::istringstream words(printed);
        std::set<std::string> unknown;
        // Capitals behind the first letter make it a name: of a command, a class, a key.
        for (std::string word; words >> word;)
            if (std::none_of(word.begin() + 1, word.end(), [](char c) { return c >= 'A' && c <= 'Z'; }))
                unknown.insert(word);
        return unknown;
    }

    static void expectNone(const fs::path& page, const std::set<std::string>& unknown) {
        std::string words;
        for (const std::string& word : unknown)
            words += " " + word;
        EXPECT_EQ(words, "") << page << ": correct the words, or put those of the field into docs/words.txt";
    }

    const tests::TemporaryFolder folder;
    fs::path dictionary;
};

TEST_F(Spelling, DocumentsHaveNoUnknownWords) {
    for (const fs::path& page : tests::documents())
        expectNone(page, unknownIn(proseOf(tests::documentText(page))));
}

TEST_F(Spelling, ManualPagesHaveNoUnknownWords) {
    for (const auto& entry : fs::directory_iterator(TESSARO_SOURCE_DIR "/docs/man"))
        expectNone(entry.path().filename(), unknownIn(manualText(tests::readFile(entry.path()))));
}

TEST_F(Spelling, TheCheckFindsAMistake) {
    EXPECT_EQ(unknownIn(proseOf("A drawwing with `cooode`.\n\n```sh\nnoise\n```\n")),
              (std::set<std::string>{"drawwing"}));
}

} // namespace
