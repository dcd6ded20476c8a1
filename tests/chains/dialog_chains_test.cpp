// Every row of the chains driven through the browser, with blocks of the sample library and of real drawings.
#include "tests/chains/ChainRows.h"
#include "tests/chains/LibraryDrawing.h"
#include "tests/chains/ProgramFixture.h"
#include "tests/chains/SavedDrawing.h"

#include "editor/application/text.h"

#include <gmock/gmock.h>
#include <map>

using testing::IsEmpty;
using tests::Chain;
using tests::kChains;
using tests::kList;
using tests::kQuit;

namespace {

class DialogChains : public tests::ProgramTest, public testing::WithParamInterface<tests::LibraryDrawing> {
protected:
    /// Brings the library drawing into the catalogue; false where its folder is absent.
    bool MakeLibrary() {
        const std::filesystem::path file = tests::fileOf(GetParam(), folder.path());
        if (file.empty())
            return false;
        block = file.stem().string();
        std::filesystem::create_directory(folder.path() / "lib");
        std::filesystem::copy_file(file, folder.path() / "lib" / file.filename());
        Catalogue(folder.path() / "lib");
        for (const auto& [type, layer] : tests::exploded(tests::piecesIn(file))) {
            ++layers["Layer: \"" + editor::toUtf8(layer) + "\""];
            ++pieces;
        }
        return true;
    }

    /// The chain, what is there then, an insertion of the user's own, what is there then, all taken back, what is left.
    std::string Script(const Chain& chain) const {
        const auto box = [](const char* caption, bool on) {
            return std::string("> set \"") + caption + (on ? "\" on\n" : "\" off\n");
        };
        std::string script =
            "(setq row \"row\")\nUNDO M\n" +
            Choose(block,
                   box("Explode", chain.explode) + box("Multiple Insert", chain.multiple) + box("Repeat", chain.repeat),
                   chain.isXref ? "Xref/A" : "Insert");
        for (int at = 0; at < chain.picks; ++at)
            script += std::to_string(at) + ",7\n";
        if (chain.cancels)
            script += "^C\n";
        if (chain.opened == 2)
            script += "> wait-until blockList \"" + block + "\"\n> set Repeat off\n> click Close\n";
        script += kList;
        if (!chain.isXref)
            script += "-INSERT " + block + "\nS 1 R 0 90,90\n" + std::string(kList);
        return script + "UNDO B\n" + kList;
    }

    /// What the transcript says from each LIST on, of one row.
    static std::vector<std::string> Lists(const std::string& row) {
        std::vector<std::string> lists;
        const std::string mark = "Command: LIST";
        for (auto at = row.find(mark); at != std::string::npos;) {
            const auto next = row.find(mark, at + 1);
            lists.push_back(row.substr(at, next - at));
            at = next;
        }
        return lists;
    }

    std::string block;
    std::size_t pieces = 0;
    std::map<std::string, std::size_t> layers; ///< of the library drawing, as LIST tells them
};

} // namespace

TEST_P(DialogChains, EveryRowEndsInTheRightDrawingAndBrowserAndGoesBack) {
    if (!MakeLibrary())
        GTEST_SKIP() << "no shared drawings";
    std::string script = "ATTREQ 0\nSAVEAS 2000\n" + (folder.path() / "before.dwg").string() + "\n";
    for (const Chain& chain : kChains)
        script += Script(chain);
    EXPECT_EQ(Run(script + "SAVEAS 2000\n" + (folder.path() / "after.dwg").string() + "\n" + kQuit), 0) << transcript;

    std::size_t at = 0;
    for (const Chain& chain : kChains) {
        SCOPED_TRACE(chain.name);
        const std::string mark = "Command: (setq row";
        at = transcript.find(mark, at);
        ASSERT_NE(at, std::string::npos);
        const std::string row = transcript.substr(at, transcript.find(mark, at + 1) - at);
        ++at;
        const std::vector<std::string> lists = Lists(row);
        ASSERT_EQ(lists.size(), chain.isXref ? 2u : 3u) << row;
        const auto picks = static_cast<std::size_t>(chain.picks);
        const std::size_t found = chain.explodes ? picks * pieces : picks;
        const std::string zero = "Layer: \"0\""; // the references' own
        const std::string reference = (chain.isXref ? "External reference \"" : "Block Name: \"") + block + "\"";
        EXPECT_EQ(CountIn(lists[0], "\n" + std::to_string(found) + " found"), 1u) << row;
        EXPECT_EQ(CountIn(lists[0], reference), chain.explodes ? 0u : picks) << row;
        for (const auto& [layer, count] : layers)
            EXPECT_EQ(CountIn(lists[0], layer), chain.explodes ? count * picks : layer == zero ? picks : 0) << layer;
        if (!chain.isXref) {
            EXPECT_EQ(CountIn(lists[1], "\n" + std::to_string(found + 1) + " found"), 1u)
                << "the user's own insertion starts no chain\n"
                << row;
            EXPECT_EQ(CountIn(lists[1], reference), chain.explodes ? 1u : picks + 1) << row;
        }
        EXPECT_EQ(CountIn(lists.back(), "\n0 found"), 1u) << row;
    }
    const auto before = tests::SavedDrawing::read(folder.path() / "before.dwg");
    const auto after = tests::SavedDrawing::read(folder.path() / "after.dwg");
    EXPECT_THAT(before.differences(after), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Library, DialogChains,
                         testing::Values(tests::LibraryDrawing{"samples", "electrical"},
                                         tests::LibraryDrawing{"drawings", "sample_2000"}),
                         [](const auto& tested) { return tests::TestName(tested.param); });
