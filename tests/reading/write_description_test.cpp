// Descriptions written back into real drawings: which files remain, and with what in them.
#include "tests/support/TemporaryFolder.h"

#include "editor/sdk/db.h"
#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/File.h"
#include "tessaro/reading/PreviewSection.h"
#include "tessaro/reading/WriteDescription.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>

namespace fs = std::filesystem;

namespace {

/// The comments of a drawing; "unreadable" where it can't be read.
std::wstring CommentsOf(const fs::path& file) {
    AcDbDatabase database(false, false);
    if (database.readDwgFile(file.wstring().c_str()) != 0)
        return L"unreadable";
    AcDbDatabaseSummaryInfo* made = nullptr;
    if (acdbGetSummaryInfo(&database, made) != 0)
        return L"no summary";
    const std::unique_ptr<AcDbDatabaseSummaryInfo> summary(made);
    std::wstring text;
    summary->getComments(text);
    return text;
}

/// A 4 by 2 bitmap of 24 bits, each byte of its pixels of that value.
std::string Bitmap(char value) {
    std::string bytes(40, '\0');
    bytes[0] = 40;
    bytes[4] = 4;
    bytes[8] = 2;
    bytes[12] = 1;
    bytes[14] = 24;
    return bytes + std::string(24, value);
}

std::string ImageOf(const fs::path& drawing) {
    platform::File file(drawing.wstring(), platform::File::modeRead);
    const auto entry = FindEntry(file, kBitmapCode);
    if (!entry)
        return {};
    const auto bytes = ReadEntry(file, entry->place, kLargestPreview);
    return {bytes.begin(), bytes.end()};
}

class WriteDescriptionTest : public testing::Test {
protected:
    WriteDescriptionTest() {
        directory.path = folder.path().wstring();
        currentDirectory = &directory;
    }
    ~WriteDescriptionTest() override {
        for (Block* block : directory.blocks)
            delete block;
        directory.blocks.clear();
        currentDirectory = nullptr;
    }

    fs::path Drawing(const std::string& name = "door") const { return folder.path() / (name + ".dwg"); }
    fs::path Temporary(const std::string& name = "door") const { return folder.path() / (name + ".dwg2"); }
    fs::path Backup() const { return folder.path() / "door.bak"; }

    /// A drawing of that release with a picture.
    void WriteDrawing(const std::string& name = "door", AcDb::AcDbDwgVersion version = AcDb::kDHL_1015) const {
        AcDbDatabase database(true, false);
        database.setThumbnailBitmap(Bitmap('\x55'));
        ASSERT_EQ(database.saveAs(Drawing(name).wstring().c_str(), false, version), 0);
    }
    Block& AddBlock(std::int32_t fileType, const std::wstring& description, const std::wstring& name = L"door") {
        auto* const block = new Block;
        block->name = name;
        block->fileType = fileType;
        block->description = description;
        directory.blocks.push_back(block);
        return *block;
    }

    tests::TemporaryFolder folder;
    Directory directory;
};

} // namespace

TEST_F(WriteDescriptionTest, ADrawingOfRelease2000IsReplacedByOneWithTheCommentsItsFormatAndItsPicture) {
    WriteDrawing();
    EXPECT_TRUE(WriteDescription(AddBlock(16, L"Swing door, 900 mm")));
    EXPECT_EQ(CommentsOf(Drawing()), L"Swing door, 900 mm");
    EXPECT_EQ(tests::readFile(Drawing()).substr(0, 6), "AC1015");
    EXPECT_EQ(ImageOf(Drawing()), Bitmap('\x55'));
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
    EXPECT_EQ(tests::readFile(Drawing()), "AC1015 and nothing that makes sense");
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
    const std::string before = tests::readFile(Drawing());
    for (const std::int32_t type : {0, 13, 21}) {
        fs::remove(Backup());
        folder.write("door.dwg", before);
        EXPECT_TRUE(WriteDescription(AddBlock(type, L"gone"))) << type;
        EXPECT_FALSE(fs::exists(Drawing())) << type;
        EXPECT_EQ(tests::readFile(Backup()), before) << type;
    }
}

TEST_F(WriteDescriptionTest, ATemporaryOfAnEarlierRunTakesThePlaceOfADrawingThatWasSavedInPlace) {
    WriteDrawing();
    folder.write("door.dwg2", "left behind");
    EXPECT_TRUE(WriteDescription(AddBlock(0, L"gone")));
    EXPECT_EQ(tests::readFile(Drawing()), "left behind");
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
    ASSERT_EQ(ImageOf(Drawing()), "");
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
        return tests::readFile(Drawing());
    }
    /// The file with its picture at the end, and the bytes of that entry changed.
    static std::string Expected(const std::vector<std::uint8_t>& codes, std::size_t entry) {
        std::string bytes = SectionWith(codes);
        const std::string place = '\2' + Number(bytes.size()) + Number(Bitmap('\x55').size());
        return bytes.replace(121 + 9 * entry, 9, place) + Bitmap('\x55');
    }
};

TEST_F(PictureOfR14, IsAppendedAndTheFirstBitmapEntryLeadsToIt) {
    EXPECT_EQ(PutInto({1, 3, 2, 2}), Expected({1, 3, 2, 2}, 2));
}

TEST_F(PictureOfR14, TakesTheEntryOfTheHeaderDataWhereThereIsNoBitmapEntry) {
    EXPECT_EQ(PutInto({3, 1, 1}), Expected({3, 1, 1}, 1));
}

TEST_F(PictureOfR14, ChangesNoEntryWhereThereIsNeither) {
    EXPECT_EQ(PutInto({3, 6}), SectionWith({3, 6}) + Bitmap('\x55'));
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
