// Entities of real drawings of every release: their classes, and layer, colour and linetype of all of them.

#include "tests/database/database_support.h"
#include "tests/support/TemporaryFolder.h"

#include "editor/dwg/objects_codec.h"

#include <gtest/gtest.h>

namespace {

constexpr const char* examples[] = {"example_r13.dwg",  "example_r14.dwg",  "example_2000.dwg", "example_2004.dwg",
                                    "example_2007.dwg", "example_2010.dwg", "example_2013.dwg", "example_2018.dwg"};

class EveryRelease : public testing::TestWithParam<const char*> {
protected:
    void SetUp() override {
        const auto folder = tests::sharedFolder("drawings");
        if (folder.empty())
            GTEST_SKIP() << "no shared drawings";
        ASSERT_EQ(database.readDwgFile((folder / GetParam()).wstring().c_str()), Acad::eOk);
    }

    /// Entities of all block records, their parts too.
    std::vector<AcDbObjectId> entities() {
        std::vector<AcDbObjectId> ids;
        for (const auto& object : database.impl()->drawing.objects()) {
            if (object->isEntity())
                ids.push_back({&database, object->handle});
        }
        return ids;
    }

    AcDbDatabase database{false};
};

/// The object as a reader finds it that has nothing but its record.
dwg::Object stored(AcDbDatabase& database, const dwg::Object& object) {
    const dwg::ObjectContext context(database.impl()->drawing);
    const auto record = dwg::encodeObject(object, context);
    EXPECT_TRUE(record.ok());
    auto again = dwg::decodeObject(record->bytes, context);
    EXPECT_TRUE(again.ok());
    return std::move(*again);
}

TEST_P(EveryRelease, everyEntityTakesLayerColourAndLinetypeAndKeepsItsBody) {
    const AcDbObjectId layer = tests::addLayer(database, L"Anew");
    std::size_t carried = 0;
    for (const AcDbObjectId id : entities()) {
        const dwg::Object& object = tests::objectOf(id);
        const dwg::Body body = object.body;
        carried += object.as<dwg::Carried>() != nullptr;
        AcDbEntity* entity = nullptr;
        ASSERT_EQ(acdbOpenObject(entity, id, AcDb::kForWrite), Acad::eOk);
        EXPECT_EQ(entity->setLayer(layer, false), Acad::eOk);
        EXPECT_EQ(entity->setColorIndex(5, false), Acad::eOk);
        EXPECT_EQ(entity->setLinetype(L"ByBlock", false), Acad::eOk);
        EXPECT_EQ(entity->layer(), L"Anew");
        EXPECT_EQ(entity->colorIndex(), 5);
        EXPECT_EQ(entity->linetype(), L"BYBLOCK");
        entity->close();
        // Releases up to R14 store a linetype by its record alone.
        if (database.impl()->drawing.release < dwg::Release::r2000)
            continue;
        const dwg::Object again = stored(database, object);
        EXPECT_EQ(again.entity->layer.value, layer.handle);
        EXPECT_EQ(again.entity->color, dwg::Color{5});
        EXPECT_EQ(again.entity->linetypeFrom, dwg::ByWhat::block);
        if (const auto* const bits = body.as<dwg::Carried>()) {
            EXPECT_EQ(*again.as<dwg::Carried>(), *bits);
        }
        EXPECT_EQ(again.body.index(), body.index());
    }
    EXPECT_GT(carried, 5u) << "some are of types that aren't decoded";
}

TEST_P(EveryRelease, everyEntityKnowsItsClass) {
    std::size_t dimensions = 0, inserts = 0, texts = 0;
    for (const AcDbObjectId id : entities()) {
        AcDbEntity* entity = nullptr;
        ASSERT_EQ(acdbOpenObject(entity, id, AcDb::kForRead), Acad::eOk);
        EXPECT_TRUE(entity->isA()->isDerivedFrom(AcDbEntity::desc()));
        EXPECT_FALSE(std::wstring(entity->isA()->name()) == L"AcDbUnknown");
        dimensions += entity->isA()->isDerivedFrom(AcDbDimension::desc());
        inserts += entity->isA()->isDerivedFrom(AcDbBlockReference::desc());
        texts += entity->isA()->isDerivedFrom(AcDbText::desc());
        entity->close();
    }
    // Nine of fixed types and one of a class.
    EXPECT_EQ(dimensions, 10u);
    EXPECT_GE(inserts, 10u);
    EXPECT_GE(texts, 2u);
}

INSTANTIATE_TEST_SUITE_P(Examples, EveryRelease, testing::ValuesIn(examples), [](const auto& example) {
    const std::string name = example.param;
    return name.substr(0, name.find('.'));
});

} // namespace
