// What two corners select.
#include "editor/application/selecting.h"

#include "editor/application/drawing.h"
#include "editor/database/database_state.h"
#include "tests/application/EditorSession.h"

#include <gtest/gtest.h>

namespace {

using namespace editor;

struct NewRay : AcDbEntity {
    NewRay(std::uint16_t type, const dwg::Ray& body) : AcDbEntity(Impl::freshEntity(desc(), type, body)) {}
};

class Selecting : public testing::Test {
protected:
    std::size_t found(AcGePoint3d corner, AcGePoint3d opposite, bool crossing) {
        return entitiesInBox(session.database(), corner, opposite, crossing).size();
    }
    void addEndless(std::uint16_t type) {
        dwg::Ray body;
        body.point = {1, 1, 0};
        body.direction = {1, 1, 0};
        ASSERT_FALSE(addToModelSpace(session.database(), std::make_unique<NewRay>(type, body)).isNull());
    }

    tests::Session session;
};

TEST_F(Selecting, AWindowHoldsWhatLiesInsideAndACrossingBoxWhatItMeets) {
    session.editor.execute(L"LINE 0,0 10,0 \nCIRCLE 5,5 1\n");
    EXPECT_EQ(found({3, 3, 0}, {7, 7, 0}, false), 1u);
    EXPECT_EQ(found({3, -1, 0}, {7, 7, 0}, false), 1u);
    EXPECT_EQ(found({3, -1, 0}, {7, 7, 0}, true), 2u);
    EXPECT_EQ(found({20, 20, 0}, {30, 30, 0}, true), 0u);
}

TEST_F(Selecting, AnEndlessLineIsInNoWindowAndMetFarFromItsPoints) {
    addEndless(dwg::object_type::ray);
    EXPECT_EQ(found({-9, -9, 0}, {9, 9, 0}, false), 0u);
    EXPECT_EQ(found({500, 400, 0}, {600, 700, 0}, true), 1u);
    EXPECT_EQ(found({-600, -700, 0}, {-500, -400, 0}, true), 0u) << "it has a beginning";
    addEndless(dwg::object_type::constructionLine);
    EXPECT_EQ(found({-600, -700, 0}, {-500, -400, 0}, true), 1u);
}

TEST_F(Selecting, WhatIsLeftOfAnotherCornerMakesNoDifferenceToTheBox) {
    session.editor.execute(L"CIRCLE 5,5 1\n");
    for (const bool crossing : {false, true})
        EXPECT_EQ(found({7, 3, 0}, {3, 7, 0}, crossing), 1u);
}

} // namespace
