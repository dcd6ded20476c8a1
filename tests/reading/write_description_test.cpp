// Descriptions written back into real drawings: which files remain, and with what in them.
#include "tests/reading/WriteDescriptionFixture.h"

#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/File.h"
#include "tessaro/reading/WriteDescription.h"

namespace fs = std::filesystem;
using namespace tests;

TEST_F(WriteDescriptionTest, ADrawingOfRelease2000IsReplacedByOneWithTheCommentsItsFormatAndItsPicture) {
    WriteDrawing();
    EXPECT_TRUE(WriteDescription(AddBlock(16, L"Swing door, 900 mm")));
    EXPECT_EQ(CommentsOf(Drawing()), L"Swing door, 900 mm");
    EXPECT_EQ(readFile(Drawing()).substr(0, 6), "AC1015");
    EXPECT_EQ(BitmapOf(Drawing()), SmallBitmap('\x55'));
    EXPECT_FALSE(fs::exists(Temporary()));
    EXPECT_FALSE(fs::exists(Backup()));
}

TEST_F(WriteDescriptionTest, FilesOfAnEarlierRunUnderTheTemporaryNameAreReplaced) {
    WriteDrawing();
    folder.write("door.dwg2", "left behind");
    EXPECT_TRUE(WriteDescription(AddBlock(16, L"new")));
    EXPECT_EQ(CommentsOf(Drawing()), L"new");
    EXPECT_FALSE(fs::exists(Temporary()));
}

TEST_F(WriteDescriptionTest, TextsOfAnyScriptOfAnyLengthAndNoneAreWritten) {
    WriteDrawing();
    Block& block = AddBlock(16, L"");
    for (const std::wstring& text : {std::wstring(L"Tür 門 Дверь"), std::wstring(70, L'x'), std::wstring(71, L'y'),
                                     std::wstring(L"two\r\nlines"), std::wstring()}) {
        block.description = text;
        EXPECT_TRUE(WriteDescription(block));
        EXPECT_EQ(CommentsOf(Drawing()), text);
    }
}

TEST_F(WriteDescriptionTest, ADrawingThatTheHostCantReadStaysAsItIs) {
    folder.write("door.dwg", "AC1015 and nothing that makes sense");
    EXPECT_FALSE(WriteDescription(AddBlock(16, L"lost")));
    EXPECT_EQ(readFile(Drawing()), "AC1015 and nothing that makes sense");
    EXPECT_FALSE(fs::exists(Temporary()));
}

TEST_F(WriteDescriptionTest, AMissingDrawingIsNotMade) {
    EXPECT_FALSE(WriteDescription(AddBlock(16, L"lost")));
    EXPECT_TRUE(fs::is_empty(folder.path()));
}

TEST_F(WriteDescriptionTest, AFailedSaveLeavesNoDrawing) {
    // The drawing's name is as long as the file system allows, the temporary one's is longer.
    const std::string name(251, 'd');
    WriteDrawing();
    fs::rename(Drawing(), Drawing(name));
    EXPECT_FALSE(WriteDescription(AddBlock(16, L"lost", std::wstring(251, L'd'))));
    EXPECT_TRUE(fs::is_empty(folder.path()));
}

TEST_F(WriteDescriptionTest, AnUnknownFormatIsSavedInPlaceAndThenDeletedSoThatOnlyTheBackupRemains) {
    WriteDrawing();
    const std::string before = readFile(Drawing());
    for (const std::int32_t type : {0, 13, 21}) {
        fs::remove(Backup());
        folder.write("door.dwg", before);
        EXPECT_TRUE(WriteDescription(AddBlock(type, L"gone"))) << type;
        EXPECT_FALSE(fs::exists(Drawing())) << type;
        EXPECT_EQ(readFile(Backup()), before) << type;
    }
}

TEST_F(WriteDescriptionTest, ATemporaryOfAnEarlierRunTakesThePlaceOfADrawingThatWasSavedInPlace) {
    WriteDrawing();
    folder.write("door.dwg2", "left behind");
    EXPECT_TRUE(WriteDescription(AddBlock(0, L"gone")));
    EXPECT_EQ(readFile(Drawing()), "left behind");
    EXPECT_FALSE(fs::exists(Temporary()));
    EXPECT_TRUE(fs::exists(Backup()));
}

TEST_F(WriteDescriptionTest, DrawingsOfR13AndR14AreDeletedBehindTheirSaveAndTheLookForThemRaises) {
    for (const std::int32_t type : {14, 15}) {
        WriteDrawing();
        fs::remove(Backup());
        EXPECT_THROW(WriteDescription(AddBlock(type, L"gone")), platform::FileException) << type;
        EXPECT_FALSE(fs::exists(Drawing())) << type;
        EXPECT_TRUE(fs::exists(Backup())) << type;
    }
}

TEST_F(WriteDescriptionTest, AMissingDrawingOfR14RaisesBeforeAnythingIsDone) {
    EXPECT_THROW(WriteDescription(AddBlock(15, L"gone")), platform::FileException);
    EXPECT_TRUE(fs::is_empty(folder.path()));
}

TEST_F(WriteDescriptionTest, AnR14DrawingWithoutAPictureHasNothingToPutBack) {
    AcDbDatabase database(true, false);
    ASSERT_EQ(database.saveAs(Drawing().wstring().c_str()), 0);
    ASSERT_EQ(BitmapOf(Drawing()), "");
    EXPECT_TRUE(WriteDescription(AddBlock(15, L"gone")));
    EXPECT_FALSE(fs::exists(Drawing()));
}

namespace {

/// A file with an image section of these entries at 100.
std::string SectionWith(const std::vector<std::uint8_t>& codes) {
    std::string bytes(100, '\0');
    bytes[13] = 100;
    bytes += std::string(20, 's') + static_cast<char>(codes.size());
    for (const std::uint8_t code : codes)
        bytes += static_cast<char>(code) + std::string(8, static_cast<char>('a' + code));
    return bytes + "tail";
}

std::string Number(std::size_t value) {
    std::string bytes;
    for (int i = 0; i < 4; ++i)
        bytes += static_cast<char>(value >> (8 * i) & 255);
    return bytes;
}

} // namespace

struct PictureOfR14 : WriteDescriptionTest {
    /// What becomes of a file with those entries that stands under the temporary name.
    std::string PutInto(const std::vector<std::uint8_t>& codes) {
        WriteDrawing();
        folder.write("door.dwg2", SectionWith(codes));
        EXPECT_TRUE(WriteDescription(AddBlock(15, L"text")));
        return readFile(Drawing());
    }
    /// The file with its picture at the end, and the bytes of that entry changed.
    static std::string Expected(const std::vector<std::uint8_t>& codes, std::size_t entry) {
        std::string bytes = SectionWith(codes);
        const std::string place = '\2' + Number(bytes.size()) + Number(SmallBitmap('\x55').size());
        return bytes.replace(121 + 9 * entry, 9, place) + SmallBitmap('\x55');
    }
};

TEST_F(PictureOfR14, IsAppendedAndTheFirstBitmapEntryLeadsToIt) {
    EXPECT_EQ(PutInto({1, 3, 2, 2}), Expected({1, 3, 2, 2}, 2));
}

TEST_F(PictureOfR14, TakesTheEntryOfTheHeaderDataWhereThereIsNoBitmapEntry) {
    EXPECT_EQ(PutInto({3, 1, 1}), Expected({3, 1, 1}, 1));
}

TEST_F(PictureOfR14, ChangesNoEntryWhereThereIsNeither) {
    EXPECT_EQ(PutInto({3, 6}), SectionWith({3, 6}) + SmallBitmap('\x55'));
}

TEST_F(WriteDescriptionTest, PendingDescriptionsAreWrittenAndNoLongerPending) {
    WriteDrawing("a");
    WriteDrawing("b");
    WriteDrawing("c");
    AddBlock(16, L"first", L"a").descriptionPending = true;
    AddBlock(16, L"not asked for", L"b");
    AddBlock(16, L"third", L"c").descriptionPending = true;
    AddBlock(16, L"no file", L"missing").descriptionPending = true;
    directory.descriptionsPending = true;
    SavePendingDescriptions();
    EXPECT_EQ(CommentsOf(Drawing("a")), L"first");
    EXPECT_EQ(CommentsOf(Drawing("b")), L"");
    EXPECT_EQ(CommentsOf(Drawing("c")), L"third");
    for (const Block* block : directory.blocks)
        EXPECT_FALSE(block->descriptionPending);
    EXPECT_FALSE(directory.descriptionsPending);
}

TEST_F(WriteDescriptionTest, AReadOnlyDrawingKeepsItsTextsAndTheTemporaryStaysBesideIt) {
    WriteDrawing();
    fs::permissions(Drawing(), fs::perms::owner_read);
    AddBlock(16, L"refused").descriptionPending = true;
    SavePendingDescriptions();
    EXPECT_FALSE(directory.blocks.front()->descriptionPending);
    EXPECT_EQ(CommentsOf(Drawing()), L"");
    EXPECT_EQ(CommentsOf(Temporary()), L"refused");
}

TEST_F(WriteDescriptionTest, WithoutACurrentDirectoryNothingIsWritten) {
    WriteDrawing();
    Block& block = AddBlock(16, L"text");
    block.descriptionPending = true;
    currentDirectory = nullptr;
    EXPECT_FALSE(WriteDescription(block));
    SavePendingDescriptions();
    EXPECT_TRUE(block.descriptionPending);
    EXPECT_EQ(CommentsOf(Drawing()), L"");
}
