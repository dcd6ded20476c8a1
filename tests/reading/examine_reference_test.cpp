#include "tessaro/platform/Text.h"
#include "tessaro/reading/Examination.h"
#include "tests/reading/HelperFixture.h"
#include "tests/support/Sha256.h"
#include "tests/support/TemporaryFolder.h"

#include <map>

using namespace tests;

namespace {

/// Digests by drawing, background, "large" or "small", and "drawn" or "stored", joined by blanks.
using Digests = std::map<std::string, std::string>;

/// The list of digests is objects in objects in objects of text: its words in their order tell all.
Digests readDigests(const std::string& json) {
    Digests digests;
    std::string drawing, background, size, kind;
    for (std::size_t at = json.find('"'); at != std::string::npos; at = json.find('"', at)) {
        const std::size_t end = json.find('"', at + 1);
        const std::string word = json.substr(at + 1, end - at - 1);
        at = end + 1;
        if (word.ends_with(".dwg"))
            drawing = word;
        else if (word == "large" || word == "small")
            size = word;
        else if (word == "drawn" || word == "stored")
            kind = word;
        else if (word.size() == 6)
            background = word;
        else
            digests[drawing + ' ' + background + ' ' + size + ' ' + kind] = word;
    }
    return digests;
}

class ExamineReference : public HelperFixture {
protected:
    /// The digests of one drawing's four pictures, as ExamineDrawing makes them.
    static Digests examined(const std::filesystem::path& drawings, const std::string& name,
                            const std::string& background) {
        const std::filesystem::path file = drawings / name;
        SetBackground(static_cast<std::uint32_t>(std::stoul(background, nullptr, 16)));
        Directory directory;
        directory.path = platform::FromNarrow(file.parent_path().string());
        Block block;
        block.name = platform::FromNarrow(file.stem().string());
        ExaminationTask task = TaskFor(directory, block);
        task.marks = background == "302821" ? MarkPoints{40.5, 33.25} : MarkPoints{};
        task.keepDrawn = true;
        Examination found;
        Examine(task, found);
        if (!found.drawn || !found.drawn->large)
            return {};
        ApplyExamination(directory, block, found);
        const std::string key = name + ' ' + background + ' ';
        return {{key + "large drawn", sha256(found.drawn->large->pixels)},
                {key + "large stored", sha256(directory.largeImages->Draw(block.imageIndex).pixels)},
                {key + "small drawn", sha256(found.drawn->small.pixels)},
                {key + "small stored", sha256(directory.smallImages->Draw(block.imageIndex).pixels)}};
    }
};

TEST(Sha256, ofKnownTexts) {
    const std::string text = "abc";
    EXPECT_EQ(sha256({}), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
    EXPECT_EQ(sha256({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()}),
              "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
}

TEST_F(ExamineReference, realDrawingsGiveTheReferencePicturesOnThreeBackgrounds) {
    const auto reference = sharedFolder("reference");
    const auto drawings = sharedFolder("drawings");
    if (reference.empty() || drawings.empty())
        GTEST_SKIP() << "no shared drawings and reference pictures";
    const Digests expected = readDigests(readFile(reference / "pictures" / "hashes.json"));
    ASSERT_EQ(expected.size(), 108U * 3 * 4);
    Digests actual;
    for (const auto& [key, digest] : expected) {
        if (!key.ends_with("large drawn"))
            continue;
        const std::size_t cut = key.rfind(' ', key.size() - std::string("large drawn").size() - 2);
        const std::string name = key.substr(0, cut);
        actual.merge(examined(drawings, name, key.substr(cut + 1, 6)));
    }
    EXPECT_EQ(actual.size(), expected.size());
    for (const auto& [key, digest] : expected)
        EXPECT_EQ(actual[key], digest) << key;
}

} // namespace
