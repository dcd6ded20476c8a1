// Drawings of one release inserted into drawings of another.

#include "tests/database/database_support.h"
#include "tests/dwg/real_drawings.h"
#include "tests/support/TemporaryFolder.h"
#include "tools/matrix_cases.h"

#include <cstdlib>
#include <gtest/gtest.h>

using namespace tests;

namespace {

constexpr AcDb::AcDbDwgVersion versions[] = {AcDb::kDHL_1015, AcDb::kDHL_1800, AcDb::kDHL_1021,
                                             AcDb::kDHL_1024, AcDb::kDHL_1027, AcDb::kDHL_1032};

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

// All drawings, into a new one and into one of another release: TESSARO_ALL_DRAWINGS=1, or drawing-matrix --insert.
TEST(InsertFromAnotherRelease, realDrawingsOfEveryReleaseIntoANewAndARealOne) {
    const std::filesystem::path shared = sharedFolder("drawings");
    if (shared.empty())
        GTEST_SKIP() << "shared drawings are absent";
    std::vector<std::filesystem::path> files = realDrawings();
    EXPECT_EQ(files.size(), 130u);
    if (std::getenv("TESSARO_ALL_DRAWINGS") == nullptr)
        std::erase_if(files, [](const auto& file) {
            const std::string stem = file.stem().string();
            return stem.find("example_") != 0 && stem != "Leader" && stem != "Constraints";
        });
    const TemporaryFolder folder;
    const auto copy = folder.path() / "copy.dwg";
    std::size_t entities = 0;
    for (const auto& file : files) {
        // Of release 2013, for drawings of that release one of 2004.
        const bool is2013 = file.parent_path().filename() == "2013" || file.stem() == "example_2013";
        const auto other = shared / (is2013 ? "2004" : "2013") / "Leader.dwg";
        for (const auto& into : {std::filesystem::path(), other}) {
            const auto& target = matrix::targets[into.empty() ? 0 : is2013 ? 1 : 4];
            const matrix::Outcome outcome = matrix::insertAndCompare(file, into, copy, target);
            for (const std::string& difference : outcome.differences)
                ADD_FAILURE() << file << " into " << into << ": " << difference;
            entities += outcome.compared;
        }
    }
    EXPECT_GT(entities, 400u);
}

} // namespace
