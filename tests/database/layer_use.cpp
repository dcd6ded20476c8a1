// Which layers can be erased, over changes of what lies on them.
#include "tests/database/database_support.h"

#include <gtest/gtest.h>

using namespace tests;

namespace {

AcDbEntity* newLine() {
    return new AcDbLine({0, 0, 0}, {1, 1, 0});
}

TEST(LayerUse, FollowsAnEntityThatStaysOpenWhileItsLayerChanges) {
    AcDbDatabase database;
    const AcDbObjectId a = addLayer(database, L"A"), b = addLayer(database, L"B");
    const AcDbObjectId line = appendToModel(database, newLine(), L"A");
    AcDbEntity* open = nullptr;
    ASSERT_EQ(acdbOpenObject(open, line, AcDb::kForWrite), eOk);
    EXPECT_EQ(erase(a), Acad::eObjectIsReferenced);
    ASSERT_EQ(open->setLayer(L"B"), eOk);
    EXPECT_EQ(erase(b), Acad::eObjectIsReferenced);
    EXPECT_EQ(erase(a), eOk);
}

TEST(LayerUse, FollowsEntitiesThatAreAddedErasedAndTakenBack) {
    AcDbDatabase database;
    const AcDbObjectId a = addLayer(database, L"A"), b = addLayer(database, L"B");
    const AcDbObjectId other = appendToModel(database, newLine(), L"B");
    EXPECT_EQ(erase(b), Acad::eObjectIsReferenced);
    const AcDbObjectId line = appendToModel(database, newLine(), L"A");
    EXPECT_EQ(erase(a), Acad::eObjectIsReferenced);
    ASSERT_EQ(erase(line), eOk);
    ASSERT_EQ(erase(other), eOk);
    EXPECT_EQ(erase(a), eOk);
    AcDbEntity* open = nullptr;
    ASSERT_EQ(acdbOpenObject(open, appendToModel(database, newLine(), L"B"), AcDb::kForWrite), eOk);
    EXPECT_EQ(erase(b), Acad::eObjectIsReferenced);
    ASSERT_EQ(open->erase(), eOk);
    EXPECT_EQ(erase(b), eOk);
    ASSERT_EQ(open->erase(false), eOk);
    open->close();
}

TEST(LayerUse, EndsWithADefinitionThatIsErased) {
    AcDbDatabase database;
    const AcDbObjectId a = addLayer(database, L"A");
    const AcDbObjectId block = addBlock(database, L"BLOCK");
    append(block, newLine(), L"A");
    EXPECT_EQ(erase(a), Acad::eObjectIsReferenced);
    ASSERT_EQ(erase(block), eOk);
    EXPECT_EQ(erase(a), eOk);
}

TEST(LayerUse, TheMarksOfADefinitionsEndsHoldNoLayerAndGoToZeroWithIt) {
    AcDbDatabase database;
    const AcDbObjectId a = addLayer(database, L"A");
    const AcDbObjectId block = addBlock(database, L"BLOCK");
    const dwg::Handle begin = objectOf(block).as<dwg::BlockHeader>()->begin.value;
    database.impl()->drawing.find(begin)->entity->layer.value = a.handle;
    EXPECT_EQ(erase(a), eOk);
    database.impl()->purgeErased();
    EXPECT_EQ(database.impl()->drawing.find(begin)->entity->layer.value, layerNamed(database, L"0").handle);
}

} // namespace
