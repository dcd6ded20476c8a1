#include "tessaro/mapping/MapScheme.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

template <class T> std::vector<std::wstring> Keys(const OrderedTextMap<T>& map) {
    std::vector<std::wstring> keys;
    for (const auto& [key, value] : map)
        keys.push_back(key);
    return keys;
}

} // namespace

TEST(OrderedTextMap, IteratesInOrderOfInsertionAndAKeySetAgainKeepsItsPlace) {
    OrderedTextMap<int> map;
    map.SetAt(L"z", 1);
    map.SetAt(L"a", 2);
    map.SetAt(L"Z", 3);
    map.SetAt(L"z", 4);
    EXPECT_EQ(Keys(map), (std::vector<std::wstring>{L"z", L"a", L"Z"}));
    EXPECT_EQ(*map.Lookup(L"z"), 4);
    EXPECT_EQ(*map.Lookup(L"Z"), 3) << "look-up is exact, with case";
    EXPECT_EQ(map.Lookup(L"b"), nullptr);
    EXPECT_EQ(map.size(), 3u);
}

TEST(OrderedTextMap, ARemovedKeyLeavesTheOthersInPlace) {
    OrderedTextMap<int> map;
    for (int i = 0; i < 5; ++i)
        map.SetAt(std::to_wstring(i), i);
    EXPECT_TRUE(map.RemoveKey(L"2"));
    EXPECT_FALSE(map.RemoveKey(L"2"));
    EXPECT_EQ(Keys(map), (std::vector<std::wstring>{L"0", L"1", L"3", L"4"}));
    for (int i : {0, 1, 3, 4})
        EXPECT_EQ(*map.Lookup(std::to_wstring(i)), i);
    map.SetAt(L"2", 22);
    EXPECT_EQ(Keys(map).back(), L"2");
    map.clear();
    EXPECT_TRUE(map.empty());
    EXPECT_EQ(map.Lookup(L"0"), nullptr);
}

TEST(MapScheme, StartsIgnoringUnknownNamesAndResettingToByLayer) {
    const MapScheme scheme;
    EXPECT_EQ(scheme.unknownMode, 0);
    EXPECT_TRUE(scheme.unknownValue.empty());
    EXPECT_FALSE(scheme.unknownIsVariable);
    EXPECT_TRUE(scheme.defaultToByLayer);
    EXPECT_EQ(scheme.schemeType, 0);
    EXPECT_TRUE(scheme.maps.empty());
    EXPECT_TRUE(scheme.variableMaps.empty());
}

TEST(MapScheme, AReplacedSchemeIsFreedAndKeepsItsPlace) {
    SetScheme(L"One", new MapScheme);
    SetScheme(L"Two", new MapScheme);
    auto* const replacement = new MapScheme;
    SetScheme(L"One", replacement);
    SetScheme(L"One", replacement);
    EXPECT_EQ(Keys(schemes), (std::vector<std::wstring>{L"One", L"Two"}));
    EXPECT_EQ(*schemes.Lookup(L"One"), replacement);
    EXPECT_EQ(schemes.Lookup(L"one"), nullptr);
    DeleteSchemes();
    EXPECT_TRUE(schemes.empty());
}
