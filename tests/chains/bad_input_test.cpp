// Placements that can't work: the host's message or the placement's own, and the drawing unharmed.
#include "tests/chains/ChainFixture.h"

#include "editor/application/drawing.h"
#include "editor/application/text.h"
#include "tessaro/mapping/MapScheme.h"

#include <fstream>
#include <gmock/gmock.h>
#include <malloc.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class BadInput : public tests::ChainTest {
protected:
    BadInput() {
        auto* const scheme = new MapScheme;
        scheme->maps.SetAt(L"*", L"MAPPED");
        SetScheme(L"By layer", scheme);
    }
    ~BadInput() override { DeleteSchemes(); }

    /// Places the block by insertion, with a scheme too, and as a reference: nothing comes of it but a message on the
    /// command line.
    void ExpectRefused(Block* block, const std::string& message) {
        const std::string before = Content();
        for (const wchar_t* const scheme : {L"By layer", L"<None>"}) {
            directory->schemeName = scheme;
            user.messages.clear();
            transcript.clear();
            Insert(block);
            EXPECT_TRUE(Said(message)) << transcript;
            EXPECT_THAT(user.messages, IsEmpty());
            EXPECT_EQ(Content(), before);
            ExpectFlags(false, false, false, false);
        }
        transcript.clear();
        Place(XrefBlock, block);
        EXPECT_TRUE(Said(message)) << transcript;
        EXPECT_THAT(user.messages, ElementsAre(L"This file cannot be xrefed"));
        EXPECT_EQ(Content(), before);
        ExpectFlags(false, false, false, false);
    }
};

int threads() {
    std::ifstream in("/proc/self/status");
    for (std::string line; std::getline(in, line);) {
        if (line.starts_with("Threads:"))
            return std::stoi(line.substr(8));
    }
    return -1;
}

} // namespace

TEST_F(BadInput, ALibraryDrawingThatCanNotBeRead) {
    folder.write("RUBBISH.dwg", "nothing of the kind");
    ExpectRefused(AddBlockWithoutFile(L"RUBBISH"), "it is not a valid drawing file");
    folder.write("CUT.dwg", "AC1015 and nothing more");
    ExpectRefused(AddBlockWithoutFile(L"CUT"), "the file is damaged");
    folder.write("EMPTY.dwg", "");
    ExpectRefused(AddBlockWithoutFile(L"EMPTY"), "Can't ");
}

TEST_F(BadInput, ALibraryDrawingNewerThanTheHostReads) {
    folder.write("NEWER.dwg", "AC1099" + std::string(4096, 'x'));
    ExpectRefused(AddBlockWithoutFile(L"NEWER"), "Can't ");
}

TEST_F(BadInput, AFileThatVanishedBetweenClickAndCommand) {
    std::filesystem::remove(folder.path() / "DOOR.dwg");
    ExpectRefused(door, "Can't find file");
}

TEST_F(BadInput, TheCurrentDrawingItself) {
    editor.execute(L"SAVEAS " + PathOf(L"SELF.dwg") + L"\n");
    ExpectRefused(AddBlockWithoutFile(L"SELF"), "the drawing would contain itself");
}

TEST_F(BadInput, ADrawingThatContainsABlockOfItsOwnName) {
    Block* const ring = AddBlock(L"RING");
    user.Picks(0, 0);
    Insert(door);
    editor.execute(L"-INSERT RING=" + PathOf(L"DOOR.dwg") + L"\nS 1 R 0 1,1\nSAVEAS " + PathOf(L"RING.dwg") +
                   L"\nY\nCLOSE\nNEW\n");
    ASSERT_FALSE(IsDefined(L"RING"));
    const std::string before = Content();
    Insert(ring);
    EXPECT_TRUE(Said("the drawing would contain itself"));
    EXPECT_EQ(Content(), before);
    ExpectFlags(false, false, false, false);
}

TEST_F(BadInput, AReadOnlyCurrentDrawingTakesBlocksAndKeepsItsFile) {
    editor.execute(L"SAVEAS " + PathOf(L"PLAN.dwg") + L"\nCLOSE\n");
    const auto file = folder.path() / "PLAN.dwg";
    std::filesystem::permissions(file, std::filesystem::perms(0444));
    const std::string bytes = tests::readFile(file);
    editor.execute(L"OPEN " + PathOf(L"PLAN.dwg") + L"\n");
    user.Picks(1, 1);
    Insert(door);
    EXPECT_THAT(Model(), ElementsAre("INSERT DOOR"));
    editor.execute(L"QSAVE\n");
    EXPECT_TRUE(Said("is opened read-only"));
    EXPECT_EQ(tests::readFile(file), bytes);
}

TEST_F(BadInput, APathOfMoreThan260Characters) {
    std::filesystem::path deep = folder.path();
    for (int level = 0; level < 4; ++level)
        deep /= std::string(80, static_cast<char>('a' + level));
    std::filesystem::create_directories(deep);
    std::filesystem::copy_file(folder.path() / "DOOR.dwg", deep / "DEEP.dwg");
    directory->path = editor::fromUtf8(deep.string());
    ASSERT_GT(directory->path.size(), 260u);
    user.Picks(1, 1);
    Insert(AddBlockWithoutFile(L"DEEP"));
    EXPECT_THAT(Model(), ElementsAre("INSERT DEEP"));
    ExpectRefused(AddBlockWithoutFile(L"NONE"), "Can't find file");
}

TEST_F(BadInput, AScaleOfZeroIsTheHostsToRefuse) {
    for (const int mode : {1, 3}) {
        editor.execute(L"DIMSCALE 0\nUSERR4 0\n");
        directory->scaleMode = mode;
        user.answer = platform::MessageAnswer::No;
        transcript.clear();
        user.Picks(1, 1);
        Insert(door);
        EXPECT_TRUE(Said("Value must be nonzero.")) << transcript;
        ExpectFlags(false, false, false, false);
        EXPECT_EQ(Content().find("factor: 0.0000"), std::string::npos);
    }
}

TEST_F(BadInput, ABlockThatIsGoneFromTheCatalogueIsNotPlaced) {
    const Block stranger;
    Insert(const_cast<Block*>(&stranger));
    EXPECT_THAT(Model(), IsEmpty());
    ExpectFlags(false, false, false, false);
}

TEST_F(BadInput, AThousandPlacementsLeaveNothingBehind) {
    user.answer = platform::MessageAnswer::No;
    directory->explode = true;
    const int before = threads();
    const auto place = [this](int count) {
        for (int at = 0; at < count; ++at) {
            user.Picks(at, 0);
            Insert(door);
            // What was placed goes again, so that the drawing stays as large as it is.
            editor.execute(L"ERASE L\n\nU\nU\nU\n");
            transcript.clear();
        }
    };
    place(500);
    const std::size_t used = mallinfo2().uordblks;
    place(500);
    EXPECT_LT(mallinfo2().uordblks, used + 1'500'000) << "memory stays as it is";
    EXPECT_EQ(threads(), before);
    EXPECT_EQ(user.unexpected, 0);
    ExpectFlags(false, false, false, false);
    EXPECT_EQ(placement.repeatCommand, L"._-insert DOOR\n _scale 1 _rotate 0.000000\n");
    // The reactor is there once: one text for one end.
    transcript.clear();
    user.Picks(0, 0);
    Insert(door);
    std::size_t explosions = 0;
    for (auto at = transcript.find("Select objects: "); at != std::string::npos;
         at = transcript.find("Select objects: ", at + 1))
        ++explosions;
    EXPECT_EQ(explosions, 2u);
}
