#include "tessaro/catalogue/Directory.h"

#include <gtest/gtest.h>

#include <type_traits>

TEST(Block, StartsUnlikeAnyFile) {
    const Block block;
    EXPECT_FALSE(block.checked);
    EXPECT_FALSE(block.cached);
    EXPECT_FALSE(block.descriptionPending);
    EXPECT_EQ(block.status, (BlockStatus{0, 0, 0}));
    EXPECT_EQ(block.cachedStatus.m_size, ~std::uint64_t{0});
    EXPECT_EQ(block.cachedStatus.m_ctime, 0);
    EXPECT_EQ(block.cachedStatus.m_mtime, 0);
    EXPECT_NE(block.status, block.cachedStatus);
    EXPECT_EQ(block.created, 0);
    EXPECT_EQ(block.modified, 0);
    EXPECT_EQ(block.imageIndex, 0);
    EXPECT_EQ(block.fileType, 0);
}

TEST(Block, AllLoseTheirMarkAtOnceAndASetOneHoldsUntilThen) {
    Block one, other;
    one.checked = true;
    EXPECT_TRUE(one.checked);
    EXPECT_FALSE(other.checked);
    CheckedMark::ClearAll();
    EXPECT_FALSE(one.checked);
    other.checked = true;
    const Block copy = other;
    EXPECT_TRUE(copy.checked);
    EXPECT_FALSE(one.checked);
    other.checked = false;
    EXPECT_FALSE(other.checked);
    EXPECT_TRUE(copy.checked);
    CheckedMark::ClearAll();
    EXPECT_FALSE(copy.checked);
    EXPECT_FALSE(other.checked);
}

TEST(Block, FormatsHaveNames) {
    const wchar_t* const names[] = {L"Unknwn", L"0.0",  L"1.2",  L"1.4",  L"1.5",  L"2.1",    L"2.2", L"2.21",
                                    L"2.22",   L"2.5",  L"2.6",  L"R9",   L"R10",  L"R11/12", L"R13", L"R14",
                                    L"2000",   L"2004", L"2007", L"2010", L"2013", L"2018"};
    ASSERT_EQ(std::size(names), std::size_t{kFileTypeCount});
    for (std::int32_t i = 0; i < kFileTypeCount; ++i)
        EXPECT_EQ(FileTypeName(i), names[i]);
    EXPECT_EQ(FileTypeName(-1), L"Unknwn");
    EXPECT_EQ(FileTypeName(kFileTypeCount), L"Unknwn");
}

TEST(Directory, StartsWithItsDefaults) {
    const Directory directory;
    EXPECT_FALSE(directory.isInternal);
    EXPECT_EQ(directory.scaleMode, 0);
    EXPECT_EQ(directory.sortStyle, 1);
    EXPECT_EQ(directory.rotationMode, 0);
    EXPECT_EQ(directory.rotationAngle, 0.0);
    EXPECT_FALSE(directory.explode);
    EXPECT_FALSE(directory.multipleInsert);
    EXPECT_FALSE(directory.repeat);
    EXPECT_FALSE(directory.localize);
    EXPECT_TRUE(directory.useCache);
    EXPECT_TRUE(directory.showInsPts);
    EXPECT_FALSE(directory.descriptionsPending);
    EXPECT_FALSE(directory.dirty);
    EXPECT_TRUE(directory.path.empty());
    EXPECT_TRUE(directory.description.empty());
    EXPECT_EQ(directory.topIndex, -1);
    EXPECT_EQ(directory.selectedIndex, -1);
    EXPECT_EQ(directory.viewMode, 3);
    EXPECT_TRUE(directory.useLargeImages);
    EXPECT_TRUE(directory.blocks.empty());
    EXPECT_FALSE(directory.loaded);
    EXPECT_EQ(directory.schemeName, L"<None>");
    EXPECT_TRUE(directory.cacheFile.empty());
    EXPECT_FALSE(directory.imagesLoaded);
}

TEST(Directory, OwnsTwoListsWithThePlaceholderFromItsConstruction) {
    const Directory directory;
    EXPECT_EQ(directory.largeImages->Count(), 1);
    EXPECT_EQ(directory.largeImages->Draw(0), PlaceholderPicture(130, 96));
    EXPECT_EQ(directory.smallImages->Count(), 1);
    EXPECT_EQ(directory.smallImages->Draw(0), PlaceholderPicture(66, 49));
}

TEST(Directory, ListsThatHoldOnlyThePlaceholderShareOneCopy) {
    Directory one, two;
    EXPECT_EQ(one.largeImages, two.largeImages);
    EXPECT_EQ(one.smallImages, two.smallImages);
    EXPECT_EQ(one.LargeForWrite().Add(Picture(130, 96)), 1) << "the next picture lands in slot 1";
    EXPECT_EQ(one.SmallForWrite().Add(Picture(66, 49)), 1);
    EXPECT_EQ(two.largeImages->Count(), 1);
    EXPECT_EQ(two.smallImages->Count(), 1);
    const ImageList* const own = one.largeImages.get();
    one.LargeForWrite().Add(Picture(130, 96));
    EXPECT_EQ(one.largeImages.get(), own) << "one's own list is not copied again";
    const std::shared_ptr<const ImageList> shown = one.largeImages;
    one.LargeForWrite().Add(Picture(130, 96));
    EXPECT_EQ(shown->Count(), 3) << "what somebody else holds does not change";
    EXPECT_EQ(one.largeImages->Count(), 4);
}

TEST(Directory, AResetLeavesThePlaceholderAlone) {
    Directory directory;
    directory.LargeForWrite().Add(Picture(130, 96));
    directory.SmallForWrite().Add(Picture(66, 49));
    directory.imagesLoaded = true;
    directory.ResetImageLists(true);
    EXPECT_FALSE(directory.imagesLoaded);
    EXPECT_EQ(directory.largeImages->Count(), 1);
    EXPECT_EQ(directory.smallImages->Count(), 1);
}

TEST(Directory, ThePlaceholderIsAddedToTheLargeListUnguarded) {
    Directory directory;
    directory.useLargeImages = false;
    directory.ResetImageLists(false);
    EXPECT_EQ(directory.largeImages->Count(), 2) << "the old list is kept and gets one more";
    EXPECT_EQ(directory.largeImages->Draw(1), PlaceholderPicture(130, 96));
    EXPECT_EQ(directory.smallImages->Count(), 1);
    directory.ResetImageLists(true);
    EXPECT_EQ(directory.largeImages->Count(), 1);
    const Directory other;
    EXPECT_EQ(other.largeImages->Count(), 1);
}

TEST(Directory, SettingsAreCopiedForAnEmptyCopy) {
    Directory old;
    old.path = L"/a";
    old.schemeName = L"S";
    old.isInternal = old.localize = old.descriptionsPending = old.dirty = old.loaded = old.imagesLoaded = true;
    old.blocks.push_back(new Block);
    Directory fresh;
    static_cast<DirectorySettings&>(fresh) = old;
    EXPECT_EQ(fresh.path, L"/a");
    EXPECT_EQ(fresh.schemeName, L"S");
    EXPECT_FALSE(fresh.isInternal || fresh.localize || fresh.descriptionsPending || fresh.dirty || fresh.loaded ||
                 fresh.imagesLoaded);
    EXPECT_TRUE(fresh.blocks.empty());
    static_assert(!std::is_copy_constructible_v<Directory>);
}
