#include "tests/placement/FakeHost.h"

#include "tessaro/mapping/engine/ResBuf.h"

#include <gtest/gtest.h>

#include <stdexcept>

using tests::PlacementTest;

TEST_F(PlacementTest, AListIsBuiltElementByElement) {
    ResBuf list;
    EXPECT_EQ(list.Count(), 0u);
    EXPECT_EQ(list.Head(), nullptr);
    list.AppendString(L"text");
    list.AppendReal(1.5);
    list.AppendShort(7);
    reals[L"dimscale"] = 2;
    EXPECT_TRUE(list.AppendVariable(L"dimscale"));
    EXPECT_FALSE(list.AppendVariable(L"unknown"));
    ASSERT_EQ(list.Count(), 4u);
    EXPECT_STREQ(list.At(0).resval.rstring, L"text");
    EXPECT_EQ(list.At(1).resval.rreal, 1.5);
    EXPECT_EQ(list.At(2).resval.rint, 7);
    EXPECT_TRUE(list.IsType(3, RTREAL));
    EXPECT_FALSE(list.IsType(0, RTREAL));
}

TEST_F(PlacementTest, AnElementThatIsNotThereRaises) {
    ResBuf list;
    list.AppendReal(1);
    try {
        list.At(1);
        FAIL() << "no exception";
    } catch (const std::out_of_range& exception) {
        EXPECT_STREQ(exception.what(), "ResBuf: Index out of range.");
    }
}
