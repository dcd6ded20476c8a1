// Drawings of one release inserted into drawings of another.

#include "editor/dwg/facts.h"
#include "tests/database/database_support.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

using namespace tests;

namespace {

constexpr AcDb::AcDbDwgVersion versions[] = {AcDb::kDHL_1015, AcDb::kDHL_1800, AcDb::kDHL_1021,
                                             AcDb::kDHL_1024, AcDb::kDHL_1027, AcDb::kDHL_1032};

dwg::BlockFacts factsOf(const AcDbDatabase& database, const std::wstring& name) {
    for (dwg::BlockFacts& block : dwg::blockFacts(database.impl()->drawing))
        if (block.name == name)
            return block;
    return {};
}

void expectNoFindings(const AcDbDatabase& database) {
    for (const dwg::Finding& finding : database.impl()->drawing.findings)
        ADD_FAILURE() << finding.place << ": " << finding.reason;
}

/// A drawing of that release in memory, with a line on a layer of its own and an erased circle.
void makeSource(AcDbDatabase& database, const std::filesystem::path& file, AcDb::AcDbDwgVersion version) {
    {
        AcDbDatabase made;
        addLayer(made, L"W\u00e4nde", 3);
        appendToModel(made, new AcDbLine({1, 2, 3}, {4, 5, 6}), L"W\u00e4nde");
        appendToModel(made, new AcDbCircle({}, AcGeVector3d::kZAxis, 1));
        dwg::Text text;
        text.text.value = L"\u00dcber \u4e2d";
        appendToModel(made, new NewEntity(dwg::object_type::text, text));
        ASSERT_EQ(made.saveAs(file.wstring().c_str(), false, version), eOk);
    }
    ASSERT_EQ(database.readDwgFile(file.wstring().c_str()), eOk);
    ASSERT_EQ(erase(entitiesOf(blockNamed(database, ACDB_MODEL_SPACE))[1]), eOk);
}

TEST(InsertFromAnotherRelease, entitiesComeAsTheyWereAndWhatIsErasedStaysBehind) {
    const TemporaryFolder folder;
    for (const AcDb::AcDbDwgVersion from : versions) {
        for (const AcDb::AcDbDwgVersion into : {AcDb::kDHL_1015, AcDb::kDHL_1032}) {
            SCOPED_TRACE(std::to_string(from) + " into " + std::to_string(into));
            AcDbDatabase source(false), target(false);
            makeSource(source, folder.path() / "source.dwg", from);
            const auto file = folder.path() / "target.dwg";
            ASSERT_EQ(AcDbDatabase().saveAs(file.wstring().c_str(), false, into), eOk);
            ASSERT_EQ(target.readDwgFile(file.wstring().c_str()), eOk);
            AcDbObjectId id;
            ASSERT_EQ(target.insert(id, L"Table", &source), eOk);
            EXPECT_EQ(source.impl()->drawing.objects().size(), source.impl()->origin.objects) << "it keeps all it has";
            ASSERT_EQ(target.saveAs(file.wstring().c_str(), false, into), eOk);
            AcDbDatabase read(false);
            ASSERT_EQ(read.readDwgFile(file.wstring().c_str()), eOk);
            expectNoFindings(read);
            const auto entities = entitiesOf(blockNamed(read, L"Table"));
            ASSERT_EQ(entities.size(), 2u);
            EXPECT_EQ(objectOf(entities[0]).as<dwg::Line>()->end, (dwg::Point3{4, 5, 6}));
            EXPECT_EQ(objectOf(entities[1]).as<dwg::Text>()->text.value, L"\u00dcber \u4e2d");
            AcDbEntity* line = nullptr;
            ASSERT_EQ(acdbOpenObject(line, entities[0], AcDb::kForRead), eOk);
            EXPECT_EQ(line->layer(), L"W\u00e4nde");
        }
    }
}

TEST(InsertFromAnotherRelease, aDrawingIsStillRefusedToItself) {
    const TemporaryFolder folder;
    const auto file = folder.path() / "a.dwg";
    AcDbDatabase database, source(false);
    ASSERT_EQ(database.saveAs(file.wstring().c_str(), false, AcDb::kDHL_1032), eOk);
    ASSERT_EQ(source.readDwgFile(file.wstring().c_str()), eOk);
    AcDbObjectId id;
    EXPECT_EQ(database.insert(id, L"Table", &source), Acad::eSelfReference);
}

/// Model space without what the release of the destination had no room for.
dwg::BlockFacts expectedFacts(const AcDbDatabase& source, const AcDbDatabase& target) {
    const dwg::Drawing& drawing = source.impl()->drawing;
    dwg::BlockFacts facts = factsOf(source, dwg::recordName(drawing, {0, drawing.modelSpace()}));
    for (const dwg::LeftOut& left : target.impl()->leftOut) {
        for (const dwg::Handle handle : left.handles) {
            const dwg::Object* const object = drawing.find(handle);
            if (!object->isEntity() || object->owner.value != drawing.modelSpace())
                continue;
            --facts.entities;
            const auto forget = [](auto& counts, const auto& key) {
                if (--counts[key] == 0)
                    counts.erase(key);
            };
            forget(facts.types, dwg::typeName(drawing, *object));
            forget(facts.layers, dwg::recordName(drawing, object->entity->layer));
        }
    }
    return facts;
}

TEST(InsertFromAnotherRelease, realDrawingsOfEveryReleaseIntoANewAndARealOne) {
    const std::filesystem::path shared = sharedFolder("drawings");
    if (shared.empty())
        GTEST_SKIP() << "shared drawings are absent";
    const TemporaryFolder folder;
    for (const char* const name : {"example_r13.dwg", "example_r14.dwg", "example_2000.dwg", "example_2004.dwg",
                                   "example_2007.dwg", "example_2010.dwg", "example_2013.dwg", "example_2018.dwg"}) {
        SCOPED_TRACE(name);
        AcDbDatabase source(false);
        ASSERT_EQ(source.readDwgFile((shared / name).wstring().c_str()), eOk);
        AcDbDatabase fresh, real(false);
        ASSERT_EQ(real.readDwgFile((shared / "2013" / "circle.dwg").wstring().c_str()), eOk);
        for (AcDbDatabase* const target : {&fresh, &real}) {
            const AcDb::AcDbDwgVersion version = target == &fresh ? AcDb::kDHL_1015 : AcDb::kDHL_1027;
            AcDbObjectId id;
            ASSERT_EQ(target->insert(id, L"Inserted", &source), eOk);
            const dwg::BlockFacts expected = expectedFacts(source, *target);
            const auto file = folder.path() / "target.dwg";
            ASSERT_EQ(target->saveAs(file.wstring().c_str(), false, version), eOk);
            AcDbDatabase read(false);
            ASSERT_EQ(read.readDwgFile(file.wstring().c_str()), eOk);
            expectNoFindings(read);
            const dwg::BlockFacts found = factsOf(read, L"Inserted");
            EXPECT_EQ(found.entities, expected.entities);
            EXPECT_EQ(found.types, expected.types);
            EXPECT_EQ(found.layers, expected.layers);
        }
    }
}

} // namespace
