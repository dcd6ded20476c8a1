// Schemes over real drawings: what a placement leaves in the saved drawing, against what the rules give.

#include "tests/mapping_engine/RealPassTest.h"
#include "tests/support/TemporaryFolder.h"

#include "editor/dwg/read_drawing.h"
#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/mapping/engine/Engine.h"
#include "tessaro/placement/CmdLineReactor.h"
#include "tessaro/placement/Placement.h"
#include "tessaro/platform/Text.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <deque>
#include <map>
#include <set>
#include <sstream>
#include <tuple>

using ::testing::IsEmpty;
using tests::Expectation;
using tests::KindOfScheme;
using tests::kSchemes;
using tests::Look;
using tests::PlainEntity;

namespace {

/// All drawings of more than two layers whose format is read.
struct RealDrawing {
    const char* file;
    const char* release;
};
void PrintTo(const RealDrawing& drawing, std::ostream* out) {
    *out << drawing.file;
}
std::string TestName(const RealDrawing& drawing) {
    std::string name = drawing.file;
    for (char& letter : name)
        if (std::isalnum(static_cast<unsigned char>(letter)) == 0)
            letter = '_';
    return name;
}

constexpr RealDrawing kDrawings[] = {
    {"2000/TS1.dwg", "2000"},       {"example_2000.dwg", "2000"}, {"example_r13.dwg", "r13"},
    {"example_r14.dwg", "r14"},     {"r14/v.dwg", "r14"},         {"example_2004.dwg", "2004"},
    {"example_2007.dwg", "2007"},   {"2010/gh209_1.dwg", "2010"}, {"example_2010.dwg", "2010"},
    {"2013/gh109_1.dwg", "2013"},   {"example_2013.dwg", "2013"}, {"example_2018.dwg", "2018"},
    {"2018/Dynblocks.dwg", "2018"},
};

/// Those of formats that nobody here reads.
constexpr const char* kOlderDrawings[] = {"r9/entities.dwg", "r10/entities.dwg", "r11/ACEB10.dwg",
                                          "r11/entities-2d.dwg", "r11/entities-3d.dwg"};

class PickingUser : public editor::UserInput {
public:
    editor::UserEvent next(const editor::Prompt&) override {
        if (events.empty())
            return {editor::UserEvent::Kind::End, {}, {}};
        const editor::UserEvent event = events.front();
        events.pop_front();
        return event;
    }
    std::deque<editor::UserEvent> events;
};

bool IsLess(const Look& a, const Look& b) {
    return std::tie(a.layer, a.colour, a.linetype) < std::tie(b.layer, b.colour, b.linetype);
}

class OnRealDrawings : public tests::RealPassTest {
protected:
    OnRealDrawings() {
        shared = tests::sharedFolder("drawings");
        host.execute(L"ATTREQ 0\n");
        host.setUserInput(&user);
        host.reactors().addReactor(&cmdLineReactor);
        blockInsert = 2;
        currentDirectory = &directory;
        directory.scaleMode = 0;
        directory.rotationMode = 0;
        block = new Block;
        directory.blocks.push_back(block);
    }
    ~OnRealDrawings() override {
        host.reactors().removeReactor(&cmdLineReactor);
        host.setUserInput(nullptr);
        currentDirectory = nullptr;
        placement = {};
    }

    virtual RealDrawing Drawing() const = 0;
    std::filesystem::path File() const { return shared / Drawing().file; }
    std::wstring Name() const { return File().stem().wstring(); }

    /// A current drawing that takes definitions of the library drawing's release.
    void OpenCurrent() {
        const std::string release = Drawing().release;
        if (release == "2000") {
            host.documents().create();
            return;
        }
        const auto copy = folder.path() / "current.dwg";
        std::filesystem::copy_file(shared / Plain(release), copy, std::filesystem::copy_options::overwrite_existing);
        std::filesystem::permissions(copy, std::filesystem::perms::owner_all);
        ASSERT_EQ(host.documents().open(copy.wstring()), eOk);
    }
    /// A drawing of the release with little in it.
    static std::string Plain(const std::string& release) {
        return release == "r13" ? "example_r13.dwg" : release == "r14" ? "example_r14.dwg" : release + "/circle.dwg";
    }
    AcDbDatabase& Current() { return *host.documents().current()->database(); }

    void Place(const std::wstring& scheme, const std::vector<editor::UserEvent>& events) {
        block->name = Name();
        directory.path = File().parent_path().wstring();
        directory.schemeName = scheme;
        user.events.assign(events.begin(), events.end());
        InsertBlock(block, false);
        host.execute(L"");
    }
    static editor::UserEvent Pick() { return {editor::UserEvent::Kind::Point, {}, {5, 5, 0}}; }
    static editor::UserEvent Escape() { return {editor::UserEvent::Kind::Cancel, {}, {}}; }

    /// What the definition of the library drawing holds, sorted.
    std::vector<Look> LooksIn(AcDbDatabase& database) const {
        std::vector<Look> looks;
        const AcDbObjectId definition = tests::blockNamed(database, Name().c_str());
        if (!definition.isNull())
            for (const AcDbObjectId entity : tests::entitiesOf(definition))
                looks.push_back(UpperLookOf(entity));
        std::sort(looks.begin(), looks.end(), IsLess);
        return looks;
    }

    std::filesystem::path shared;
    tests::TemporaryFolder folder;
    PickingUser user;
    Directory directory;
    Block* block;
};

class RealDrawings : public OnRealDrawings, public testing::WithParamInterface<RealDrawing> {
protected:
    RealDrawing Drawing() const override { return GetParam(); }
};

using OlderDrawings = tests::MappingTest;

class SchemesOnRealDrawings : public OnRealDrawings,
                              public testing::WithParamInterface<std::tuple<RealDrawing, KindOfScheme>> {
protected:
    RealDrawing Drawing() const override { return std::get<0>(GetParam()); }
};

std::vector<Look> Sorted(std::vector<Look> looks) {
    std::sort(looks.begin(), looks.end(), IsLess);
    return looks;
}

} // namespace

TEST_P(SchemesOnRealDrawings, MoveEveryEntityAndEraseEveryLayerAsTheRulesSay) {
    if (shared.empty())
        GTEST_SKIP() << "no shared drawings";
    const KindOfScheme kind = std::get<1>(GetParam());
    const auto file = dwg::DrawingFile::open(File());
    ASSERT_TRUE(file);
    const auto read = dwg::readDrawing(*file);
    ASSERT_TRUE(read);
    Expectation expected = Expectation::read(*read);
    if (kind.schemeType != 3)
        expected.apply(kind.schemeType, kind.maps, kind.byLayer);
    const std::string before = tests::readFile(File());

    if (kind.schemeType != 3)
        ExpectPass(File(), kind, expected);

    // The whole road: placed, saved and read back.
    OpenCurrent();
    const std::wstring clayer = CurrentLayerOf(Current());
    std::set<std::wstring> ownLayers;
    for (const std::wstring& name : LayersOf(Current()))
        ownLayers.insert(platform::ToUpper(name));
    messages.clear();
    Enter(L"Scheme", MakeScheme(kind.schemeType, kind.maps, kind.byLayer));
    Place(L"Scheme", {Pick()});
    EXPECT_THAT(messages, testing::UnorderedElementsAreArray(expected.messages));
    EXPECT_EQ(CurrentLayerOf(Current()), clayer);
    EXPECT_FALSE(clayerSaved);
    std::vector<Look> wanted;
    for (const PlainEntity& entity : expected.entities)
        if (platform::EqualNoCase(entity.block, ACDB_MODEL_SPACE))
            wanted.push_back(Told(entity));
    wanted = Sorted(wanted);
    EXPECT_EQ(LooksIn(Current()), wanted);
    const auto saved = folder.path() / "saved.dwg";
    host.execute(L"SAVEAS " + saved.wstring() + L"\n");
    AcDbDatabase back(false);
    ASSERT_EQ(back.readDwgFile(saved.wstring().c_str()), eOk);
    const std::vector<Look> found = LooksIn(back);
    // The oldest releases are saved as 2000, without what can't be carried there.
    if (Drawing().release[0] == 'r') {
        EXPECT_TRUE(!found.empty() && std::includes(wanted.begin(), wanted.end(), found.begin(), found.end(), IsLess));
    } else {
        EXPECT_EQ(found, wanted);
    }
    const auto placed = tests::entitiesOf(tests::blockNamed(back, ACDB_MODEL_SPACE));
    ASSERT_FALSE(placed.empty());
    if (kind.schemeType == 3) {
        EXPECT_EQ(LookOf(placed.back()).layer, L"Placed");
    } else {
        for (const std::wstring& name : LayersOf(back)) {
            const std::wstring upper = platform::ToUpper(name);
            EXPECT_TRUE(ownLayers.contains(upper) || expected.layersAfter.contains(upper))
                << platform::ToNarrow(name) << " should be gone";
        }
    }
    EXPECT_EQ(tests::readFile(File()), before);
}

TEST_P(RealDrawings, TheLayersOfADefinitionAreThoseThatAnIndependentReaderFoundMapped) {
    if (shared.empty())
        GTEST_SKIP() << "no shared drawings";
    AcDbDatabase sideDrawing(false);
    ASSERT_EQ(sideDrawing.readDwgFile(File().wstring().c_str()), eOk);
    const QJsonObject facts =
        QJsonDocument::fromJson(QByteArray::fromStdString(tests::readFile(shared / "facts.json"))).object();
    const QJsonObject blocks = facts[Drawing().file].toObject()["blocks"].toObject();
    ASSERT_FALSE(blocks.isEmpty());
    MapScheme scheme = MakeScheme(0, {{L"*O*", L"With O"}, {L"#*", L"Digits"}});
    ASSERT_TRUE(MappingRun(sideDrawing, scheme).MapLayerScheme());

    std::map<std::wstring, std::map<std::wstring, int>> expected, found;
    for (auto each = blocks.begin(); each != blocks.end(); ++each) {
        const QJsonObject layers = each.value().toObject()["layers"].toObject();
        for (auto layer = layers.begin(); layer != layers.end(); ++layer) {
            std::wstring name = layer.key().toStdWString();
            // A name in lower case is not found again and stays.
            if (name == platform::ToUpper(name) && name.find(L'O') != std::wstring::npos)
                name = L"WITH O";
            else if (name == platform::ToUpper(name) && name[0] >= L'0' && name[0] <= L'9')
                name = L"DIGITS";
            expected[each.key().toUpper().toStdWString()][platform::ToUpper(name)] += layer.value().toInt();
        }
    }
    AcDbBlockTable* table = nullptr;
    ASSERT_EQ(sideDrawing.getBlockTable(table), eOk);
    AcDbSymbolTableIterator* walk = nullptr;
    ASSERT_EQ(table->newIterator(walk), eOk);
    for (const std::unique_ptr<AcDbSymbolTableIterator> owned(walk); !owned->done(); owned->step()) {
        AcDbSymbolTableRecord* record = nullptr;
        ASSERT_EQ(owned->getRecord(record, AcDb::kForRead), eOk);
        std::wstring name;
        record->getName(name);
        // Anonymous ones are counted together, as they are stored: without a number.
        if (name.size() > 2 && name[0] == L'*' && std::isdigit(static_cast<unsigned char>(name[2])))
            name.resize(2);
        const AcDbObjectId id = record->objectId();
        record->close();
        for (const AcDbObjectId entity : tests::entitiesOf(id))
            ++found[platform::ToUpper(name)][platform::ToUpper(LookOf(entity).layer)];
    }
    table->close();
    EXPECT_EQ(found, expected);
}

TEST_P(RealDrawings, TheCurrentLayerComesBackAfterEndCancelAndFailure) {
    if (shared.empty())
        GTEST_SKIP() << "no shared drawings";
    Enter(L"Scheme", MakeScheme(3, {{L"*", L"Placed"}}));
    OpenCurrent();
    const std::wstring clayer = CurrentLayerOf(Current());
    Place(L"Scheme", {Pick()});
    EXPECT_EQ(CurrentLayerOf(Current()), clayer) << "end";
    EXPECT_FALSE(clayerSaved);
    Place(L"Scheme", {Escape()});
    EXPECT_EQ(CurrentLayerOf(Current()), clayer) << "cancel";
    EXPECT_FALSE(clayerSaved);
    directory.path = folder.path().wstring();
    block->name = L"absent";
    InsertBlock(block, false);
    EXPECT_EQ(CurrentLayerOf(Current()), L"Placed") << "while the command is to run";
    host.execute(L"");
    EXPECT_EQ(CurrentLayerOf(Current()), clayer) << "failure";
    EXPECT_FALSE(clayerSaved);
    EXPECT_THAT(messages, IsEmpty());
}

TEST_P(RealDrawings, TheExpectationIsWorkedOutFromTheEntitiesThatTheToolPrints) {
    if (shared.empty())
        GTEST_SKIP() << "no shared drawings";
    const auto file = dwg::DrawingFile::open(File());
    ASSERT_TRUE(file);
    const auto read = dwg::readDrawing(*file);
    ASSERT_TRUE(read);
    std::map<dwg::Handle, PlainEntity> entities;
    for (const PlainEntity& entity : Expectation::read(*read).entities)
        entities[entity.handle] = entity;

    const auto printed = folder.path() / "entities.txt";
    const std::string command =
        TESSARO_BIN_DIR "/drawing-facts --entities '" + File().string() + "' >'" + printed.string() + "'";
    ASSERT_EQ(std::system(command.c_str()), 0);
    std::istringstream lines(tests::readFile(printed));
    std::size_t found = 0;
    for (std::string line; std::getline(lines, line);) {
        std::vector<std::string> columns;
        std::istringstream split(line);
        for (std::string column; std::getline(split, column, '\t');)
            columns.push_back(column);
        if (columns.size() != 6)
            continue;
        const auto entity = entities.find(std::stoull(columns[0], nullptr, 16));
        const std::string& type = columns[1];
        const bool isPart =
            type == "BLOCK" || type == "ENDBLK" || type == "SEQEND" || type == "ATTRIB" || type.starts_with("VERTEX");
        ASSERT_EQ(entity == entities.end(), isPart) << line;
        if (isPart)
            continue;
        ++found;
        EXPECT_EQ(platform::ToNarrow(entity->second.layer), columns[3]) << line;
        EXPECT_EQ(platform::ToNarrow(entity->second.linetype), columns[5]) << line;
        // A true colour counts by the index that is nearest to it, which the tool does not print.
        if (columns[4][0] != '#') {
            const std::string& colour = columns[4];
            EXPECT_EQ(entity->second.colour, colour == "BYLAYER"   ? 256
                                             : colour == "BYBLOCK" ? 0
                                                                   : std::stoi(colour))
                << line;
        }
    }
    EXPECT_EQ(found, entities.size());
}

TEST_F(OlderDrawings, AreAllThatIsNotAmongTheDrawingsOfThreeLayersOrMore) {
    const auto folderOfDrawings = tests::sharedFolder("drawings");
    if (folderOfDrawings.empty())
        GTEST_SKIP() << "no shared drawings";
    std::set<std::string> told, listed(std::begin(kOlderDrawings), std::end(kOlderDrawings));
    const QJsonObject facts =
        QJsonDocument::fromJson(QByteArray::fromStdString(tests::readFile(folderOfDrawings / "facts.json"))).object();
    for (auto each = facts.begin(); each != facts.end(); ++each)
        if (each.value().toObject()["layers"].toArray().size() >= 3)
            told.insert(each.key().toStdString());
    for (const RealDrawing& listedDrawing : kDrawings)
        listed.insert(listedDrawing.file);
    EXPECT_EQ(told, listed);
}

TEST_F(OlderDrawings, ArePassedOverInSilenceByEveryKindOfScheme) {
    const auto folderOfDrawings = tests::sharedFolder("drawings");
    if (folderOfDrawings.empty())
        GTEST_SKIP() << "no shared drawings";
    for (const char* const file : kOlderDrawings)
        for (const KindOfScheme& kind : kSchemes) {
            Enter(L"Scheme", MakeScheme(kind.schemeType, kind.maps, kind.byLayer));
            EXPECT_FALSE(MapAndInsertDrawing((folderOfDrawings / file).wstring(), L"OLD", L"Scheme")) << file;
        }
    EXPECT_TRUE(tests::blockNamed(drawing, L"OLD").isNull());
    EXPECT_THAT(messages, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(ThreeLayersOrMore, RealDrawings, testing::ValuesIn(kDrawings),
                         [](const auto& tested) { return TestName(tested.param); });
INSTANTIATE_TEST_SUITE_P(ThreeLayersOrMore, SchemesOnRealDrawings,
                         testing::Combine(testing::ValuesIn(kDrawings), testing::ValuesIn(kSchemes)),
                         [](const auto& tested) {
                             return TestName(std::get<0>(tested.param)) + "_" + std::get<1>(tested.param).name;
                         });
