#include "editor/database/external_references.h"
#include "editor/database/wireframe.h"
#include "tests/database/database_support.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

using namespace tests;

namespace {

class References : public testing::Test {
protected:
    std::wstring path(const char* name) const { return wide((folder.path() / name).string()); }

    std::wstring save(const char* name, AcDbDatabase& drawing) {
        EXPECT_EQ(drawing.saveAs(path(name).c_str()), eOk);
        return path(name);
    }

    static std::optional<std::wstring> find(const std::wstring& file) {
        return std::filesystem::exists(std::filesystem::path(file)) ? std::optional(file) : std::nullopt;
    }

    std::pair<double, double> endOfFirstStroke() const {
        const AcGePoint3d end = editor::wireframeOfModelSpace(host).strokes.at(0).points.at(1);
        return {end.x, end.y};
    }

    TemporaryFolder folder;
    AcDbDatabase host;
};

TEST_F(References, AreBlockRecordsWithAPathAndShowTheFilesModelSpace) {
    AcDbDatabase plan;
    appendToModel(plan, new AcDbLine({}, {1, 0, 0}));
    const std::wstring file = save("plan.dwg", plan);
    AcDbObjectId block;
    ASSERT_EQ(editor::attachReference(host, L"plan", file, true, block), eOk);
    EXPECT_EQ(editor::referencedDrawing(block), nullptr);
    ASSERT_EQ(editor::loadReference(block, find), eOk);
    ASSERT_NE(editor::referencedDrawing(block), nullptr);
    EXPECT_EQ(entitiesOf(blockNamed(*editor::referencedDrawing(block), ACDB_MODEL_SPACE)).size(), 1u);
    AcDbBlockTableRecord* record = nullptr;
    ASSERT_EQ(acdbOpenObject(record, block, AcDb::kForRead), eOk);
    EXPECT_TRUE(record->isFromExternalReference());
    EXPECT_TRUE(record->isFromOverlayReference());
    record->close();
}

TEST_F(References, SaveNothingOfTheOtherDrawingButItsNameAndPath) {
    AcDbDatabase plan;
    addLayer(plan, L"Foreign");
    appendToModel(plan, new AcDbLine({}, {1, 0, 0}), L"Foreign");
    const std::wstring file = save("plan.dwg", plan);
    AcDbObjectId block;
    editor::attachReference(host, L"plan", file, false, block);
    ASSERT_EQ(editor::loadReference(block, find), eOk);
    appendToModel(host, new AcDbBlockReference({5, 5, 0}, block));
    save("host.dwg", host);
    AcDbDatabase again(false);
    ASSERT_EQ(again.readDwgFile(path("host.dwg").c_str()), eOk);
    const auto all = editor::externalReferences(again);
    ASSERT_EQ(all.size(), 1u);
    EXPECT_EQ(all[0].name, L"plan");
    EXPECT_EQ(all[0].path, file);
    EXPECT_FALSE(all[0].overlay);
    EXPECT_FALSE(all[0].loaded);
    EXPECT_TRUE(entitiesOf(all[0].block).empty());
    EXPECT_EQ(layerNamed(again, L"Foreign").handle, 0u);
    EXPECT_EQ(editor::loadReference(all[0].block, find), eOk);
}

TEST_F(References, FollowAttachedReferencesAndLeaveOverlaysOut) {
    AcDbDatabase leaf, middle;
    appendToModel(leaf, new AcDbLine({}, {1, 0, 0}));
    const std::wstring leafFile = save("leaf.dwg", leaf);
    AcDbObjectId attached, overlaid;
    editor::attachReference(middle, L"leaf", leafFile, false, attached);
    editor::attachReference(middle, L"over", leafFile, true, overlaid);
    const std::wstring middleFile = save("middle.dwg", middle);
    AcDbObjectId block;
    editor::attachReference(host, L"middle", middleFile, false, block);
    ASSERT_EQ(editor::loadReference(block, find), eOk);
    AcDbDatabase& shown = *editor::referencedDrawing(block);
    EXPECT_NE(editor::referencedDrawing(blockNamed(shown, L"leaf")), nullptr);
    EXPECT_EQ(editor::referencedDrawing(blockNamed(shown, L"over")), nullptr);
}

TEST_F(References, RefuseADrawingThatReferstoItself) {
    save("host.dwg", host);
    AcDbObjectId block;
    editor::attachReference(host, L"self", path("host.dwg"), false, block);
    EXPECT_EQ(editor::loadReference(block, find), Acad::eSelfReference);
    save("host.dwg", host);
    AcDbDatabase other;
    editor::attachReference(other, L"host", path("host.dwg"), false, block);
    EXPECT_EQ(editor::loadReference(block, find), eOk) << "the ring inside is left open";
}

TEST_F(References, AreDrawnWhereTheirReferencesLieAndMarkedAsForeign) {
    AcDbDatabase leaf, middle;
    appendToModel(leaf, new AcDbLine({}, {1, 0, 0}), nullptr);
    addLayer(leaf, L"Red", 1);
    appendToModel(leaf, new AcDbLine({}, {0, 1, 0}), L"Red");
    AcDbObjectId block;
    editor::attachReference(middle, L"leaf", save("leaf.dwg", leaf), false, block);
    appendToModel(middle, new AcDbBlockReference({10, 0, 0}, block));
    editor::attachReference(host, L"middle", save("middle.dwg", middle), false, block);
    const AcDbObjectId reference = appendToModel(host, new AcDbBlockReference({0, 100, 0}, block));
    appendToModel(host, new AcDbLine({}, {5, 5, 0}));
    EXPECT_EQ(editor::wireframeOfModelSpace(host).strokes.size(), 1u) << "nothing is loaded yet";
    ASSERT_EQ(editor::loadReference(block, find), eOk);
    const editor::Wireframe shown = editor::wireframeOfModelSpace(host);
    ASSERT_EQ(shown.strokes.size(), 3u);
    EXPECT_TRUE(shown.strokes[0].foreign);
    EXPECT_EQ(shown.strokes[0].entity, reference);
    EXPECT_EQ(shown.strokes[0].points[1].x, 11);
    EXPECT_EQ(shown.strokes[0].points[1].y, 100);
    EXPECT_EQ(shown.strokes[1].colour, 1);
    EXPECT_FALSE(shown.strokes[2].foreign);
}

TEST_F(References, LieWithTheBasePointOfTheirDrawingAtTheirInsertionPoint) {
    AcDbDatabase plan;
    appendToModel(plan, new AcDbLine({}, {1, 0, 0}));
    plan.setInsbase({1, 2, 0});
    AcDbObjectId block;
    editor::attachReference(host, L"plan", save("plan.dwg", plan), false, block);
    appendToModel(host, new AcDbBlockReference({5, 5, 0}, block));
    ASSERT_EQ(editor::loadReference(block, find), eOk);
    EXPECT_EQ(endOfFirstStroke(), std::pair(5.0, 3.0));
    plan.setInsbase({1, 0, 0});
    save("plan.dwg", plan);
    ASSERT_EQ(editor::loadReference(block, find), eOk);
    EXPECT_EQ(endOfFirstStroke(), std::pair(5.0, 5.0)) << "a reload takes the new one";
}

TEST_F(References, TellWhatIsWrong) {
    AcDbObjectId block;
    EXPECT_EQ(editor::attachReference(host, L"a|b", L"x.dwg", false, block), Acad::eInvalidInput);
    EXPECT_EQ(editor::attachReference(host, L"a", L"", false, block), Acad::eInvalidInput);
    addBlock(host, L"DOOR");
    EXPECT_EQ(editor::attachReference(host, L"door", L"x.dwg", false, block), Acad::eDuplicateRecordName);
    ASSERT_EQ(editor::attachReference(host, L"x", path("none.dwg"), false, block), eOk);
    EXPECT_EQ(editor::loadReference(block, find), Acad::eFileNotFound);
    folder.write("none.dwg", "no drawing");
    EXPECT_EQ(editor::loadReference(block, find), Acad::eBadDwgHeader);
    EXPECT_EQ(editor::loadReference(blockNamed(host, L"DOOR"), find), Acad::eInvalidKey);
    EXPECT_EQ(editor::detachReference(blockNamed(host, L"DOOR")), Acad::eInvalidKey);
}

TEST_F(References, DetachingTakesTheInsertionsAndLayersAlong) {
    AcDbObjectId block;
    editor::attachReference(host, L"plan", L"plan.dwg", false, block);
    appendToModel(host, new AcDbBlockReference({}, block));
    const AcDbObjectId inner = addBlock(host, L"INNER");
    append(inner, new AcDbBlockReference({}, block));
    host.impl()->drawing.find(addLayer(host, L"Brought").handle)->as<dwg::Layer>()->head.name = L"PLAN|Walls";
    const AcDbObjectId line = appendToModel(host, new AcDbLine({}, {1, 0, 0}));
    EXPECT_EQ(editor::detachReference(block), eOk);
    EXPECT_EQ(blockNamed(host, L"plan").handle, 0u);
    EXPECT_EQ(layerNamed(host, L"plan|walls").handle, 0u);
    EXPECT_EQ(entitiesOf(blockNamed(host, ACDB_MODEL_SPACE)), std::vector{line});
    EXPECT_TRUE(entitiesOf(inner).empty());
}

} // namespace
