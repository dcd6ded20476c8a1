// What InsertBlock sends and remembers, over every combination of settings, drawing and answer.
#include "tests/mapping_engine/OpenCounter.h"
#include "tests/placement/FakeHost.h"

#include "tessaro/mapping/MapScheme.h"
#include "tessaro/mapping/engine/Engine.h"

#include <algorithm>
#include <array>
#include <functional>
#include <map>
#include <string>

namespace {

constexpr std::array<const wchar_t*, 4> kScaleInFirst = {L"_scale 1", L" _scale 2.500000", L"", L" _scale 48.000000"};
constexpr std::array<const wchar_t*, 4> kScaleInRepeat = {L" _scale 1", L" _scale 2.500000", L"", L" _scale 48.000000"};
constexpr std::array<const wchar_t*, 2> kRotation = {L" _rotate 90.000000\n", L"\n"};

/// What MapAndInsertDrawing has to do with.
enum class Mapping { NoScheme, FileThatCanNotBeRead, ByLayer, ByBlockName };
constexpr bool succeeds(Mapping mapping) {
    return mapping == Mapping::ByLayer || mapping == Mapping::ByBlockName;
}

/// All that decides on the head of the first text.
struct Case {
    bool isInternal, isDefined;
    int setting; ///< BlockInsert
    bool wasAsked, saysYes, maps;
};

enum class Head { ByName, ByPath, Redefine };

/// A row of the rules: what each column must be, -1 for either; then the head and how often the user is asked.
struct Rule {
    int isInternal, isDefined, setting, wasAsked, saysYes, maps;
    Head head;
    std::size_t questions;

    bool appliesTo(const Case& tried) const {
        const auto is = [](int wanted, int found) { return wanted < 0 || wanted == found; };
        return is(isInternal, tried.isInternal) && is(isDefined, tried.isDefined) && is(setting, tried.setting) &&
               is(wasAsked, tried.wasAsked) && is(saysYes, tried.saysYes) && is(maps, tried.maps);
    }
};

constexpr Rule kRules[] = {
    // The blocks of the drawing itself: by name, whatever the rest.
    {1, -1, -1, -1, -1, -1, Head::ByName, 0},
    // A definition that isn't there is brought by the mapping or by the host.
    {0, 0, -1, -1, -1, 0, Head::ByPath, 0},
    {0, 0, -1, -1, -1, 1, Head::ByName, 0},
    // Ask every time.
    {0, 1, 0, -1, 0, -1, Head::ByName, 1},
    {0, 1, 0, -1, 1, 0, Head::Redefine, 1},
    {0, 1, 0, -1, 1, 1, Head::ByName, 1},
    // Ask once; the second time it is replaced without a question, whatever the first answer was.
    {0, 1, 1, 0, 0, -1, Head::ByName, 1},
    {0, 1, 1, 0, 1, 0, Head::Redefine, 1},
    {0, 1, 1, 0, 1, 1, Head::ByName, 1},
    {0, 1, 1, 1, -1, 0, Head::Redefine, 0},
    {0, 1, 1, 1, -1, 1, Head::ByName, 0},
    // Always.
    {0, 1, 2, -1, -1, 0, Head::Redefine, 0},
    {0, 1, 2, -1, -1, 1, Head::ByName, 0},
};

/// Calls with every combination of what decides.
void ForEachCase(const std::function<void(const Case&, Mapping)>& visit) {
    for (const Mapping mapping :
         {Mapping::NoScheme, Mapping::FileThatCanNotBeRead, Mapping::ByLayer, Mapping::ByBlockName})
        for (const bool isInternal : {false, true})
            for (const bool isDefined : {false, true})
                for (const int setting : {0, 1, 2})
                    for (const bool wasAsked : {false, true})
                        for (const bool saysYes : {false, true})
                            visit({isInternal, isDefined, setting, wasAsked, saysYes, succeeds(mapping)}, mapping);
}

class InsertTable : public tests::PlacementTest {
protected:
    ~InsertTable() override { DeleteSchemes(); }

    /// Files that can and can't be read, and schemes, for every way of mapping.
    void MakeLibrary() {
        AcDbDatabase library;
        ASSERT_EQ(library.saveAs((folder.path() / "DOOR.dwg").wstring().c_str()), eOk);
        folder.write("damaged/DOOR.dwg", "no drawing");
        SetScheme(L"By layer", new MapScheme);
        auto* const byName = new MapScheme;
        byName->schemeType = 3;
        byName->maps.SetAt(L"*", L"DOORS");
        SetScheme(L"By name", byName);
    }
    /// The folder and the scheme of the Directory.
    void Choose(Mapping mapping) {
        const std::map<Mapping, const wchar_t*> schemeNames = {{Mapping::NoScheme, L"<None>"},
                                                               {Mapping::FileThatCanNotBeRead, L"By layer"},
                                                               {Mapping::ByLayer, L"By layer"},
                                                               {Mapping::ByBlockName, L"By name"}};
        const bool isDamaged = mapping == Mapping::FileThatCanNotBeRead;
        directory->path = (isDamaged ? folder.path() / "damaged" : folder.path()).wstring();
        directory->schemeName = schemeNames.at(mapping);
    }
    void BringDefinition(bool wanted) {
        if (IsDefined(L"Door") == wanted)
            return;
        if (wanted)
            return Define(L"Door");
        placement.pendingBlockName = L"DOOR";
        EraseBlockDefinition();
    }
    std::wstring CurrentLayer() {
        AcDbLayerTableRecord* layer = nullptr;
        std::wstring name;
        EXPECT_EQ(acdbOpenObject(layer, drawing.clayer(), AcDb::kForRead), eOk);
        layer->getName(name);
        layer->close();
        return name;
    }

    tests::TemporaryFolder folder;
};

} // namespace

TEST_F(InsertTable, ExactlyOneRowOfTheRulesIsThereForEachCombination) {
    int combinations = 0;
    ForEachCase([&](const Case& tried, Mapping) {
        ++combinations;
        EXPECT_EQ(std::ranges::count_if(kRules, [&](const Rule& rule) { return rule.appliesTo(tried); }), 1);
    });
    EXPECT_EQ(combinations, 4 * 2 * 2 * 3 * 2 * 2);
}

TEST_F(InsertTable, EveryCombinationSendsItsTextAndRemembersTheOther) {
    MakeLibrary();
    reals[L"dimscale"] = 2.5;
    drawing.setUserr4(48);
    directory->rotationAngle = 90;
    int placements = 0;
    ForEachCase([&](const Case& tried, Mapping mapping) {
        const Rule& rule =
            *std::ranges::find_if(kRules, [&](const Rule& candidate) { return candidate.appliesTo(tried); });
        for (int scaleMode = 0; scaleMode < 4; ++scaleMode)
            for (int rotationMode = 0; rotationMode < 2; ++rotationMode) {
                SCOPED_TRACE(testing::Message() << "internal " << tried.isInternal << ", defined " << tried.isDefined
                                                << ", setting " << tried.setting << ", asked " << tried.wasAsked
                                                << ", yes " << tried.saysYes << ", mapping " << int(mapping)
                                                << ", scale " << scaleMode << ", rotation " << rotationMode);
                Choose(mapping);
                BringDefinition(tried.isDefined);
                placement = {};
                placement.pendingBlockName = L"BEFORE";
                sent.clear();
                questions.clear();
                askedBlocks.clear();
                if (tried.wasAsked)
                    askedBlocks.push_back(L"DOOR");
                blockInsert = tried.setting;
                answer = tried.saysYes ? platform::MessageAnswer::Yes : platform::MessageAnswer::No;
                directory->isInternal = tried.isInternal;
                directory->scaleMode = scaleMode;
                directory->rotationMode = rotationMode;

                ASSERT_EQ(InsertBlock(door, true), 1);
                ++placements;
                const std::wstring path = directory->path + L"/DOOR.dwg";
                const std::wstring byName = L"._-insert DOOR\n";
                const std::map<Head, std::wstring> heads = {{Head::ByName, byName},
                                                            {Head::ByPath, L"._-insert " + path + L"\n"},
                                                            {Head::Redefine, L"._-insert DOOR=" + path + L"\n_y\n"}};
                ASSERT_EQ(sent.size(), 1u);
                EXPECT_EQ(sent[0].text, heads.at(rule.head) + kScaleInFirst.at(scaleMode) + kRotation.at(rotationMode));
                EXPECT_EQ(placement.repeatCommand, byName + kScaleInRepeat.at(scaleMode) + kRotation.at(rotationMode));
                EXPECT_EQ(questions.size(), rule.questions);
                EXPECT_EQ(placement.pendingBlockName, tried.isInternal ? L"BEFORE" : L"DOOR");
                EXPECT_EQ(placement.definitionSafe, !tried.isInternal && tried.isDefined);
                EXPECT_TRUE(placement.placementActive);
                const bool changesLayer = mapping == Mapping::ByBlockName && !tried.isInternal;
                EXPECT_EQ(clayerSaved, changesLayer);
                EXPECT_EQ(CurrentLayer(), changesLayer ? L"DOORS" : L"0");
                RestoreCurrentLayer();
            }
    });
    EXPECT_EQ(placements, 4 * 2 * 2 * 3 * 2 * 2 * 4 * 2);
}

TEST_F(InsertTable, WithoutASchemeTheLibraryDrawingIsNotOpened) {
    MakeLibrary();
    Choose(Mapping::NoScheme);
    const tests::OpenCounter opens(folder.path() / "DOOR.dwg");
    ASSERT_TRUE(opens.Works());
    for (const bool isDefined : {false, true}) {
        BringDefinition(isDefined);
        for (const int setting : {0, 1, 2}) {
            blockInsert = setting;
            InsertBlock(door, true);
            XrefBlock(door);
            OpenBlock(door);
        }
    }
    EXPECT_EQ(opens.Take(), 0);
    Choose(Mapping::ByLayer);
    InsertBlock(door, true);
    EXPECT_EQ(opens.Take(), 1);
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
