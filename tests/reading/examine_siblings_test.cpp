#include "tessaro/reading/SiblingFiles.h"
#include "tests/reading/ExamineFixture.h"

#include "tessaro/platform/Text.h"

#include <filesystem>

using namespace tests;
using namespace std::string_literals;

namespace {

constexpr std::uint32_t kGreen = 0x00ff00;

std::string drawing() {
    return DrawingBuilder("AC1015").entry(1, "header\0"s).entry(2, plainBitmap(20, 20, kGreen));
}

using ExamineLock = ExamineFixture;

TEST_F(ExamineLock, aLockFilePassesTheDrawingOverUntouched) {
    folder.write("VEXLIB/a.lsa", "sibling\n");
    folder.write("a.DWK", "");
    EXPECT_FALSE(examine(drawing()));
    EXPECT_EQ(block.fileType, 0);
    EXPECT_EQ(block.description, L"");
    EXPECT_EQ(block.imageIndex, 0);
    EXPECT_TRUE(calls.empty());
}

TEST_F(ExamineLock, isFoundInItsTwoSpellings) {
    folder.write("a.dwk", "");
    EXPECT_FALSE(examine(drawing()));
    EXPECT_EQ(block.fileType, 0);
    std::filesystem::remove(folder.path() / "a.dwk");
    folder.write("a.Dwk", "");
    examine(drawing());
    EXPECT_EQ(block.fileType, 16) << "a third spelling is no lock";
}

TEST_F(ExamineLock, aFolderOfThatNameLocksToo) {
    std::filesystem::create_directory(folder.path() / "a.DWK");
    EXPECT_FALSE(examine(drawing()));
    EXPECT_EQ(block.fileType, 0);
}

TEST_F(ExamineLock, ofAnotherDrawingDoesNotCount) {
    folder.write("b.DWK", "");
    examine(drawing());
    EXPECT_EQ(block.fileType, 16);
}

class ExamineDescriptionFile : public ExamineFixture {
protected:
    /// The description of an early drawing, which has no text of its own.
    std::wstring described(const std::string& sibling, const std::string& name = "VEXLIB/a.lsa") {
        folder.write(name, sibling);
        block.description.clear();
        examine(DrawingBuilder("AC1009"));
        return block.description;
    }
};

TEST_F(ExamineDescriptionFile, itsFirstLineIsTheDescription) {
    EXPECT_EQ(described("one line"), L"one line");
    EXPECT_EQ(described("first\nsecond\n"), L"first");
    EXPECT_EQ(described("first\r\nsecond\r\n"), L"first");
    EXPECT_EQ(described("\nsecond\n"), L"");
    EXPECT_EQ(described(" kept blanks \n"), L" kept blanks ");
    EXPECT_EQ(described("T\xC3\xBCr"), L"Tür");
    EXPECT_EQ(described("T\xFCr"), L"Tür") << "no UTF-8";
    EXPECT_EQ(described("cut\0here"s), L"cut");
    EXPECT_EQ(described("cut\x1Ahere\n"), L"cut") << "the end of a text file";
}

TEST_F(ExamineDescriptionFile, anEmptyFileEmptiesTheDescription) {
    folder.write("VEXLIB/a.lsa", "");
    block.description = L"from the cache";
    examine(DrawingBuilder("AC1009"));
    EXPECT_EQ(block.description, L"");
}

TEST_F(ExamineDescriptionFile, isFoundInItsSpellings) {
    for (const char* name : {"VEXLIB/a.lsa", "VEXLIB/a.LSA", "vexlib/a.lsa", "vexlib/a.LSA"}) {
        EXPECT_EQ(described("text", name), L"text") << name;
        std::filesystem::remove_all((folder.path() / name).parent_path());
    }
}

TEST_F(ExamineDescriptionFile, isNeverLookedForBesideTheDrawing) {
    EXPECT_EQ(described("text", "a.lsa"), L"");
}

TEST_F(ExamineDescriptionFile, countsForAllFormats) {
    folder.write("VEXLIB/a.lsa", "sibling\n");
    examine(DrawingBuilder("AC1015"));
    EXPECT_EQ(block.description, L"sibling");
    examine("no drawing at all");
    EXPECT_EQ(block.description, L"sibling");
}

TEST_F(ExamineDescriptionFile, isOverwrittenByTheHeaderTextAndThenByTheHelper) {
    folder.write("VEXLIB/a.lsa", "sibling\n");
    examine(drawing());
    EXPECT_EQ(block.description, L"header");
    answer = answerPlainly;
    examine(drawing());
    EXPECT_EQ(block.description, L"from the helper");
}

TEST_F(ExamineDescriptionFile, withAnEmptyHeaderTextIsPending) {
    folder.write("VEXLIB/a.lsa", "sibling\n");
    examine(DrawingBuilder("AC1015").entry(1, "\0"s));
    EXPECT_EQ(block.description, L"sibling");
    EXPECT_TRUE(block.descriptionPending);
    EXPECT_TRUE(directory.descriptionsPending);
}

TEST_F(ExamineDescriptionFile, withAnEmptyFirstLineNothingIsPending) {
    folder.write("VEXLIB/a.lsa", "\nsecond\n");
    block.description = L"from the cache";
    examine(DrawingBuilder("AC1015").entry(1, "\0"s));
    EXPECT_EQ(block.description, L"");
    EXPECT_FALSE(block.descriptionPending);
    EXPECT_FALSE(directory.descriptionsPending);
}

TEST_F(ExamineDescriptionFile, anUnopenableOneIsAbsent) {
    std::filesystem::create_directories(folder.path() / "VEXLIB" / "a.lsa");
    block.description = L"from the cache";
    examine(DrawingBuilder("AC1009"));
    EXPECT_EQ(block.description, L"from the cache");
}

TEST_F(ExamineDescriptionFile, isReadEvenIfTheDrawingCantBeOpened) {
    folder.write("VEXLIB/a.lsa", "sibling\n");
    block.fileType = 5;
    EXPECT_FALSE(examine());
    EXPECT_EQ(block.description, L"sibling");
    EXPECT_EQ(block.fileType, 5);
    EXPECT_TRUE(calls.empty());
}

TEST_F(ExamineDescriptionFile, anEndlessLineIsCut) {
    EXPECT_EQ(described(std::string(1'000'000, 'x')).size(), 65536U);
}

using ExamineBitmapFile = ExamineFixture;

TEST_F(ExamineBitmapFile, isThePreviewOfAnEarlyFormatBehindItsFileHeader) {
    for (const char* magic : {"MC0.00", "AC2.10", "AC1009", "AC1032", "rubbish"}) {
        block.imageIndex = 0;
        folder.write("a.bmp", bitmapFile(plainBitmap(20, 20, kGreen)));
        EXPECT_FALSE(examine(DrawingBuilder(magic).entry(1, "not read\0"s)));
        ASSERT_TRUE(hasPicture()) << magic;
        EXPECT_EQ(middle(), kGreen) << magic;
        EXPECT_EQ(calls.back().width, 20);
        EXPECT_EQ(block.description, L"");
    }
}

TEST_F(ExamineBitmapFile, isFoundInItsTwoSpellings) {
    folder.write("a.BMP", bitmapFile(plainBitmap(20, 20, kGreen)));
    examine(DrawingBuilder("AC1009"));
    EXPECT_TRUE(hasPicture());
}

TEST_F(ExamineBitmapFile, absentOrUnopenableThereIsNoPreview) {
    answer = answerPlainly;
    EXPECT_TRUE(examine(DrawingBuilder("AC1009")));
    EXPECT_EQ(block.fileType, 13);
    EXPECT_FALSE(hasPicture());
    std::filesystem::create_directory(folder.path() / "a.bmp");
    EXPECT_TRUE(examine(DrawingBuilder("AC1009")));
    EXPECT_FALSE(hasPicture());
}

TEST_F(ExamineBitmapFile, tooShortForAHeaderIsNoPreview) {
    const std::string whole = bitmapFile(plainBitmap(20, 20, kGreen));
    for (const std::size_t length : {0U, 1U, 13U, 14U, 53U}) {
        folder.write("a.bmp", cut(whole, length));
        examine(DrawingBuilder("AC1009"));
        EXPECT_FALSE(hasPicture()) << length << " bytes";
    }
    folder.write("a.bmp", cut(whole, 54));
    examine(DrawingBuilder("AC1009"));
    EXPECT_TRUE(hasPicture());
}

TEST(FindSpelling, takesTheFirstThatExistsExactlyAsSpelled) {
    const TemporaryFolder folder;
    folder.write("x.bmp", "");
    const std::wstring base = platform::FromNarrow(folder.path().string()) + L"/";
    EXPECT_EQ(FindSpelling({base + L"X.BMP", base + L"x.bmp"}), base + L"x.bmp");
    EXPECT_EQ(FindSpelling({base + L"X.BMP"}), std::nullopt);
}

} // namespace
