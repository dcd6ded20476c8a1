// The stored forms of the records, from and to literal bytes.
#include "tests/catalogue/ArchiveFixture.h"

#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"

using catalogue_tests::Digits;
using catalogue_tests::Hex;
using platform::ArchiveException;

namespace {

class RecordStream : public catalogue_tests::ArchiveTest {
protected:
    RecordStream() { demandLoadCache = 1; }

    template <typename Record> std::string Bytes(Record& record) const {
        return Stored([&](CArchiveExt& archive) { record.Serialize(archive); });
    }
    template <typename Record> void Read(const std::string& bytes, Record& record) const {
        Load(bytes, [&](CArchiveExt& archive) {
            record.Serialize(archive);
            EXPECT_EQ(archive.AtMost(), 0u) << "all was read";
        });
    }
};

Block Example() {
    Block block;
    block.checked = true;
    block.name = L"Tür";
    block.description = L"90 cm";
    block.status = {0x0102030405060708, 0x11, 0x12};
    block.cachedStatus = {0x21, 0x22, 0x23};
    block.created = 0x31;
    block.modified = -1;
    block.imageIndex = 4;
    block.listIndex = 99;
    block.fileType = 16;
    return block;
}

const char* const kExample = "fffeff03 5400 fc00 7200  fffeff05 '90 cm'"
                             "01000000"                          // the mark
                             "1100000000000000 1200000000000000" // file: creation, write
                             "0807060504030201"                  // size
                             "3100000000000000 ffffffffffffffff" // created, modified
                             "04000000 10000000";                // slot, type

const char* const kFolder = "03000000 01000000 09000000"                   // scale, rotation, sort
                            "0000000000002940"                             // angle 12.5
                            "01000000 00000000 01000000 00000000 01000000" // explode to insertion points
                            "fffeff02 '/a'  fffeff04 'Door'"               // path, description
                            "05000000 ffffffff 02000000"                   // top, selected, view
                            "fffeff06 'Office' 00000000"                   // scheme, large pictures
                            "fffeff0f '/path1_35.cache'";                  // cache file

} // namespace

TEST_F(RecordStream, ABlockIsItsFieldsInTheirOrder) {
    Block block = Example();
    EXPECT_EQ(Digits(Bytes(block)), Digits(Hex(kExample)));
}

TEST_F(RecordStream, ABlockThatWasNotCheckedIsWrittenWithTheStatusThatItWasReadWith) {
    Block block = Example();
    block.checked = false;
    std::string expected = Hex(kExample);
    expected.replace(10 + 14 + 4, 24, Hex("2200000000000000 2300000000000000 2100000000000000"));
    EXPECT_EQ(Digits(Bytes(block)), Digits(expected));
    Block read;
    Read(expected, read);
    EXPECT_EQ(Digits(Bytes(read)), Digits(expected)) << "exactly as it was read";
}

TEST_F(RecordStream, ABlockIsReadIntoTheCachedStatus) {
    Block block;
    block.status = {1, 2, 3};
    Read(Hex(kExample), block);
    EXPECT_EQ(block.name, L"Tür");
    EXPECT_EQ(block.description, L"90 cm");
    EXPECT_TRUE(block.cached);
    EXPECT_FALSE(block.checked) << "is not stored";
    EXPECT_FALSE(block.descriptionPending);
    EXPECT_EQ(block.cachedStatus, (BlockStatus{0x0102030405060708, 0x11, 0x12}));
    EXPECT_EQ(block.status, (BlockStatus{1, 2, 3})) << "nor is this";
    EXPECT_EQ(block.created, 0x31);
    EXPECT_EQ(block.modified, -1);
    EXPECT_EQ(block.imageIndex, 4);
    EXPECT_EQ(block.fileType, 16);
}

TEST_F(RecordStream, ABlockThatWasNeverExaminedWritesASizeOfAllOnesAndTheMark) {
    Block block;
    block.name = L"x";
    block.status = {5, 6, 7};
    EXPECT_EQ(Digits(Bytes(block)),
              Digits(Hex("fffeff01 'x' fffeff00 01000000 0000000000000000 0000000000000000 ffffffffffffffff"
                         "0000000000000000 0000000000000000 00000000 00000000")));
    Block read;
    Read(Disk(), read);
    EXPECT_TRUE(read.cached);
    read.status = {5, 6, 7};
    EXPECT_NE(read.cachedStatus, read.status) << "so that it is examined";
}

TEST_F(RecordStream, AMarkOfZeroIsABlockWithoutARecord) {
    std::string bytes = Hex(kExample);
    bytes.replace(24, 4, Hex("00000000"));
    Block block;
    Read(bytes, block);
    EXPECT_FALSE(block.cached);
    bytes.replace(24, 4, Hex("00000080"));
    Read(bytes, block);
    EXPECT_TRUE(block.cached);
}

TEST_F(RecordStream, ADirectoryIsItsFieldsInTheirOrderThenItsBlocks) {
    Directory directory;
    directory.scaleMode = 3;
    directory.rotationMode = 1;
    directory.sortStyle = 9;
    directory.rotationAngle = 12.5;
    directory.explode = directory.repeat = directory.showInsPts = true;
    directory.multipleInsert = directory.useCache = directory.useLargeImages = false;
    directory.path = L"/a";
    directory.description = L"Door";
    directory.topIndex = 5;
    directory.viewMode = 2;
    directory.schemeName = L"Office";
    directory.cacheFile = L"/path1_35.cache";
    EXPECT_EQ(Digits(Bytes(directory)), Digits(Hex(kFolder) + Hex("00000000"))) << "with no Block a count of 0";
    directory.blocks.push_back(new Block(Example()));
    directory.blocks.push_back(new Block);
    EXPECT_EQ(Digits(Bytes(directory)),
              Digits(Hex(kFolder) + Hex("02000000") + Hex(kExample) +
                     Hex("fffeff00 fffeff00 01000000 0000000000000000 0000000000000000 ffffffffffffffff"
                         "0000000000000000 0000000000000000 00000000 00000000")));
}

TEST_F(RecordStream, ADirectoryIsReadWithItsBlocksInTheirOrder) {
    Directory directory;
    Read(Hex(kFolder) + Hex("02000000") + Hex(kExample) +
             Hex("01 |b| 00 01000000 0000000000000000 0000000000000000 0000000000000000"
                 "0000000000000000 0000000000000000 00000000 00000000"),
         directory);
    EXPECT_EQ(directory.scaleMode, 3);
    EXPECT_EQ(directory.rotationMode, 1);
    EXPECT_EQ(directory.sortStyle, 9);
    EXPECT_EQ(directory.rotationAngle, 12.5);
    EXPECT_TRUE(directory.explode);
    EXPECT_FALSE(directory.multipleInsert);
    EXPECT_TRUE(directory.repeat);
    EXPECT_FALSE(directory.useCache);
    EXPECT_TRUE(directory.showInsPts);
    EXPECT_EQ(directory.path, L"/a");
    EXPECT_EQ(directory.description, L"Door");
    EXPECT_EQ(directory.topIndex, 5);
    EXPECT_EQ(directory.selectedIndex, -1);
    EXPECT_EQ(directory.viewMode, 2);
    EXPECT_EQ(directory.schemeName, L"Office");
    EXPECT_FALSE(directory.useLargeImages);
    EXPECT_EQ(directory.cacheFile, L"/path1_35.cache");
    ASSERT_EQ(directory.blocks.size(), 2u);
    EXPECT_EQ(directory.blocks.front()->name, L"Tür");
    EXPECT_EQ(directory.blocks.back()->name, L"b");
    EXPECT_FALSE(directory.imagesLoaded) << "the pictures are left for later";
}

TEST_F(RecordStream, AnyFlagThatIsNotZeroIsTrueAndIsWrittenAsOne) {
    std::string bytes = Hex(kFolder) + Hex("00000000");
    for (const std::size_t at : {20, 24, 28, 32, 36})
        bytes.replace(at, 4, Hex("00000080"));
    Directory directory;
    Read(bytes, directory);
    EXPECT_TRUE(directory.explode && directory.multipleInsert && directory.repeat && directory.useCache &&
                directory.showInsPts);
    EXPECT_EQ(Digits(Bytes(directory).substr(20, 20)), Digits(Hex("01000000 01000000 01000000 01000000 01000000")));
}

TEST_F(RecordStream, WhatIsNotStoredIsAsItWasAfterReading) {
    Directory directory;
    directory.localize = directory.dirty = directory.descriptionsPending = directory.loaded = true;
    directory.listIndex = 7;
    Bytes(directory);
    Directory again;
    Read(Disk(), again);
    EXPECT_FALSE(again.localize) << "lost at every save";
    EXPECT_FALSE(again.dirty);
    EXPECT_FALSE(again.descriptionsPending);
    EXPECT_FALSE(again.loaded);
}

TEST_F(RecordStream, TheDirectoryOfInternalBlocksIsInternalOnlyOnceItWasStored) {
    Directory directory;
    directory.path = directory.description = L"Internal Blocks";
    EXPECT_FALSE(directory.isInternal);
    Bytes(directory);
    EXPECT_TRUE(directory.isInternal);
    Directory again;
    Read(Disk(), again);
    EXPECT_EQ(again.path, L"Internal Blocks");
    EXPECT_EQ(again.description, L"Internal Blocks");
    EXPECT_FALSE(again.isInternal);
}

TEST_F(RecordStream, ANameThatDiffersInTheCaseOfOneLetterIsNotInternal) {
    for (const auto& [path, description] :
         {std::pair(L"Internal blocks", L"Internal Blocks"), std::pair(L"Internal Blocks", L"internal Blocks"),
          std::pair(L"Internal Blocks", L""), std::pair(L"/a", L"Internal Blocks")}) {
        Directory directory;
        directory.path = path;
        directory.description = description;
        Bytes(directory);
        EXPECT_FALSE(directory.isInternal) << platform::FileException(platform::FileException::none, path).path.size();
    }
}

TEST_F(RecordStream, AStreamCutAnywhereEndsEarlyAndKeepsTheBlocksReadByThen) {
    const std::string whole = Hex(kFolder) + Hex("02000000") + Hex(kExample) + Hex(kExample);
    for (std::size_t length = 0; length < whole.size(); ++length) {
        Directory directory;
        EXPECT_EQ(Cause([&] { Read(whole.substr(0, length), directory); }), ArchiveException::endOfFile) << length;
        EXPECT_LE(directory.blocks.size(), 2u);
    }
}

TEST_F(RecordStream, ACountThatNothingBacksEndsEarly) {
    Directory directory;
    EXPECT_EQ(Cause([&] { Read(Hex(kFolder) + Hex("ffffffff") + Hex(kExample), directory); }),
              ArchiveException::endOfFile);
    EXPECT_EQ(directory.blocks.size(), 2u) << "the whole one, and the one that was begun";
}
