// The two texts of an insertion, over every combination of options.
#include "tessaro/catalogue/Directory.h"
#include "tessaro/placement/InsertTexts.h"

#include <gtest/gtest.h>

namespace {

struct Row {
    int scaleMode;
    int rotationMode;
    bool answerYes;
    const wchar_t* repeat;
    const wchar_t* first;
};

constexpr Row kRows[] = {
    {0, 0, false, L"._-insert DOOR\n _scale 1 _rotate 90.000000\n", L"._-insert S\n_scale 1 _rotate 90.000000\n"},
    {0, 1, false, L"._-insert DOOR\n _scale 1\n", L"._-insert S\n_scale 1\n"},
    {1, 0, false, L"._-insert DOOR\n _scale 2.500000 _rotate 90.000000\n",
     L"._-insert S\n _scale 2.500000 _rotate 90.000000\n"},
    {1, 1, false, L"._-insert DOOR\n _scale 2.500000\n", L"._-insert S\n _scale 2.500000\n"},
    {2, 0, false, L"._-insert DOOR\n _rotate 90.000000\n", L"._-insert S\n _rotate 90.000000\n"},
    {2, 1, false, L"._-insert DOOR\n\n", L"._-insert S\n\n"},
    {3, 0, false, L"._-insert DOOR\n _scale 2.500000 _rotate 90.000000\n",
     L"._-insert S\n _scale 2.500000 _rotate 90.000000\n"},
    {3, 1, false, L"._-insert DOOR\n _scale 2.500000\n", L"._-insert S\n _scale 2.500000\n"},
    {0, 0, true, L"._-insert DOOR\n _scale 1 _rotate 90.000000\n", L"._-insert S\n_y\n_scale 1 _rotate 90.000000\n"},
    {0, 1, true, L"._-insert DOOR\n _scale 1\n", L"._-insert S\n_y\n_scale 1\n"},
    {1, 0, true, L"._-insert DOOR\n _scale 2.500000 _rotate 90.000000\n",
     L"._-insert S\n_y\n _scale 2.500000 _rotate 90.000000\n"},
    {1, 1, true, L"._-insert DOOR\n _scale 2.500000\n", L"._-insert S\n_y\n _scale 2.500000\n"},
    {2, 0, true, L"._-insert DOOR\n _rotate 90.000000\n", L"._-insert S\n_y\n _rotate 90.000000\n"},
    {2, 1, true, L"._-insert DOOR\n\n", L"._-insert S\n_y\n\n"},
    {3, 0, true, L"._-insert DOOR\n _scale 2.500000 _rotate 90.000000\n",
     L"._-insert S\n_y\n _scale 2.500000 _rotate 90.000000\n"},
    {3, 1, true, L"._-insert DOOR\n _scale 2.500000\n", L"._-insert S\n_y\n _scale 2.500000\n"},
};

} // namespace

TEST(InsertTexts, EveryCombinationOfOptionsGivesItsTwoTexts) {
    for (const Row& row : kRows) {
        Directory directory;
        directory.scaleMode = row.scaleMode;
        directory.rotationMode = row.rotationMode;
        directory.rotationAngle = 90;
        const InsertTexts texts = ComposeInsertTexts(
            directory, {.name = L"DOOR", .insertSpec = L"S", .answerYes = row.answerYes, .scale = 2.5});
        EXPECT_EQ(texts.repeat, row.repeat) << row.scaleMode << " " << row.rotationMode << " " << row.answerYes;
        EXPECT_EQ(texts.first, row.first) << row.scaleMode << " " << row.rotationMode << " " << row.answerYes;
    }
}

TEST(InsertTexts, BlanksInNamesAreNotQuotedAndAnglesHaveSixDecimals) {
    Directory directory;
    directory.rotationAngle = -1.0 / 3;
    const InsertTexts texts = ComposeInsertTexts(directory, {.name = L"my door", .insertSpec = L"/a b/my door.dwg"});
    EXPECT_EQ(texts.first, L"._-insert /a b/my door.dwg\n_scale 1 _rotate -0.333333\n");
    EXPECT_EQ(texts.repeat, L"._-insert my door\n _scale 1 _rotate -0.333333\n");
}
