// What InsertBlock sends and remembers, over every combination of settings, drawing and answer.
#include "tests/placement/FakeHost.h"

#include <array>
#include <string>

namespace {

constexpr std::array<const wchar_t*, 4> kScaleInFirst = {L"_scale 1", L" _scale 2.500000", L"", L" _scale 48.000000"};
constexpr std::array<const wchar_t*, 4> kScaleInRepeat = {L" _scale 1", L" _scale 2.500000", L"", L" _scale 48.000000"};
constexpr std::array<const wchar_t*, 2> kRotation = {L" _rotate 90.000000\n", L"\n"};

/// Which head the first text has, by what decides on it.
struct Row {
    bool isInternal;
    bool isDefined;
    int setting; ///< BlockInsert
    bool answer; ///< Yes
    bool wasAsked;
    const wchar_t* head;
    std::size_t questions;
};

constexpr const wchar_t* kByName = L"._-insert DOOR\n";
constexpr const wchar_t* kByPath = L"._-insert /lib/DOOR.dwg\n";
constexpr const wchar_t* kRedefine = L"._-insert DOOR=/lib/DOOR.dwg\n_y\n";

constexpr Row kRows[] = {
    // An internal block: by its name, whatever the rest.
    {true, true, 0, true, false, kByName, 0},
    {true, true, 0, false, false, kByName, 0},
    {true, true, 1, true, false, kByName, 0},
    {true, true, 1, false, true, kByName, 0},
    {true, true, 2, true, false, kByName, 0},
    {true, false, 0, true, false, kByName, 0},
    // A definition that isn't there: by path, without a question.
    {false, false, 0, true, false, kByPath, 0},
    {false, false, 0, false, false, kByPath, 0},
    {false, false, 1, true, false, kByPath, 0},
    {false, false, 1, false, true, kByPath, 0},
    {false, false, 2, true, false, kByPath, 0},
    {false, false, 2, false, true, kByPath, 0},
    // Ask every time.
    {false, true, 0, true, false, kRedefine, 1},
    {false, true, 0, false, false, kByName, 1},
    {false, true, 0, true, true, kRedefine, 1},
    {false, true, 0, false, true, kByName, 1},
    // Ask once; the second time it is replaced without a question, whatever the first answer was.
    {false, true, 1, true, false, kRedefine, 1},
    {false, true, 1, false, false, kByName, 1},
    {false, true, 1, true, true, kRedefine, 0},
    {false, true, 1, false, true, kRedefine, 0},
    // Always.
    {false, true, 2, true, false, kRedefine, 0},
    {false, true, 2, false, false, kRedefine, 0},
    {false, true, 2, false, true, kRedefine, 0},
};

using InsertTable = tests::PlacementTest;

} // namespace

TEST_F(InsertTable, EveryCombinationSendsItsTextAndRemembersTheOther) {
    reals[L"dimscale"] = 2.5;
    drawing.setUserr4(48);
    directory->rotationAngle = 90;
    directory->schemeName = L"<None>";
    for (const bool isDefined : {false, true}) {
        if (isDefined)
            Define(L"Door");
        for (const Row& row : kRows) {
            if (row.isDefined != isDefined)
                continue;
            for (int scaleMode = 0; scaleMode < 4; ++scaleMode)
                for (int rotationMode = 0; rotationMode < 2; ++rotationMode) {
                    placement = {};
                    placement.pendingBlockName = L"BEFORE";
                    sent.clear();
                    questions.clear();
                    askedBlocks.clear();
                    if (row.wasAsked)
                        askedBlocks.push_back(L"DOOR");
                    blockInsert = row.setting;
                    answer = row.answer ? platform::MessageAnswer::Yes : platform::MessageAnswer::No;
                    directory->isInternal = row.isInternal;
                    directory->scaleMode = scaleMode;
                    directory->rotationMode = rotationMode;

                    ASSERT_EQ(InsertBlock(door, true), 1);
                    const auto where = testing::Message()
                                       << "internal " << row.isInternal << ", defined " << isDefined << ", setting "
                                       << row.setting << ", yes " << row.answer << ", asked " << row.wasAsked
                                       << ", scale " << scaleMode << ", rotation " << rotationMode;
                    ASSERT_EQ(sent.size(), 1u) << where;
                    EXPECT_EQ(sent[0].text,
                              std::wstring(row.head) + kScaleInFirst.at(scaleMode) + kRotation.at(rotationMode))
                        << where;
                    EXPECT_EQ(placement.repeatCommand,
                              std::wstring(kByName) + kScaleInRepeat.at(scaleMode) + kRotation.at(rotationMode))
                        << where;
                    EXPECT_EQ(questions.size(), row.questions) << where;
                    EXPECT_EQ(placement.pendingBlockName, row.isInternal ? L"BEFORE" : L"DOOR") << where;
                    EXPECT_EQ(placement.definitionSafe, !row.isInternal && isDefined) << where;
                    EXPECT_TRUE(placement.placementActive) << where;
                }
        }
    }
}

TEST_F(InsertTable, EveryCombinationOfXrefSettingsBuildsItsListAndText) {
    reals[L"dimscale"] = 2.5;
    drawing.setUserr4(48);
    directory->rotationAngle = 90;
    directory->path = L"/a b";
    using Words = std::vector<std::wstring>;
    const std::array<Words, 4> scaleWords = {
        Words{L"_scale", L"1"}, {L"_scale", L"real 2.500000"}, {}, {L"_scale", L"real 48.000000"}};
    for (const bool overlay : {false, true})
        for (int scaleMode = 0; scaleMode < 4; ++scaleMode)
            for (int rotationMode = 0; rotationMode < 2; ++rotationMode)
                for (const bool repeat : {false, true}) {
                    placement = {};
                    overlayXRef = overlay ? 1 : 0;
                    directory->scaleMode = scaleMode;
                    directory->rotationMode = rotationMode;
                    directory->repeat = repeat;
                    ASSERT_EQ(XrefBlock(door), 1);
                    Words list = {L"._-xref", overlay ? L"_overlay" : L"_attach", L"/a b/DOOR.dwg"};
                    list.insert(list.end(), scaleWords.at(scaleMode).begin(), scaleWords.at(scaleMode).end());
                    if (rotationMode == 0)
                        list.insert(list.end(), {L"_rotate", L"real 90.000000"});
                    list.insert(list.end(), {L"\\", L"end"});
                    EXPECT_EQ(lists.back(), list);
                    EXPECT_EQ(placement.repeatCommand, std::wstring(overlay ? L"._-xref _o " : L"._-xref _a ") +
                                                           L"/a b/DOOR.dwg\n" + kScaleInRepeat.at(scaleMode) +
                                                           kRotation.at(rotationMode));
                    EXPECT_EQ(placement.relaunchPending, repeat);
                    EXPECT_TRUE(placement.placementActive);
                    EXPECT_FALSE(placement.explodePending || placement.multiplePending);
                    EXPECT_TRUE(sent.empty());
                }
}

TEST_F(InsertTable, NamesGoIntoTheTextAsTheyStand) {
    for (const wchar_t* const name : {L"oak door", L"door.v2", L"50%s door", L"T\u00FCr", L"\u30C9\u30A2 \u1F6AA"}) {
        sent.clear();
        Block* const block = AddBlock(*directory, name);
        InsertBlock(block, true);
        ASSERT_EQ(sent.size(), 1u);
        EXPECT_EQ(sent[0].text, L"._-insert /lib/" + std::wstring(name) + L".dwg\n_scale 1 _rotate 0.000000\n");
        EXPECT_EQ(placement.repeatCommand, L"._-insert " + std::wstring(name) + L"\n _scale 1 _rotate 0.000000\n");
        EXPECT_EQ(placement.pendingBlockName, name);
    }
}

TEST_F(InsertTable, APathOfAnyLengthIsSentWhole) {
    directory->path = L"/" + std::wstring(300, L'x');
    InsertBlock(door, true);
    ASSERT_EQ(sent.size(), 1u);
    EXPECT_EQ(sent[0].text, L"._-insert " + directory->path + L"/DOOR.dwg\n_scale 1 _rotate 0.000000\n");
}
