#include "tessaro/browser/ListModel.h"

#include <QSignalSpy>

#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <set>

namespace {

struct Items {
    Items() {
        model.InsertColumn(L"Name");
        model.InsertColumn(L"Count", Qt::AlignRight);
    }
    std::wstring Names() const {
        std::wstring all;
        for (int row = 0; row < model.RowCount(); ++row)
            all += model.Text(row, 0) + L" ";
        return all;
    }
    ListModel model;
    int one = 1, two = 2, three = 3;
};

TEST(ListModel, NewRowShowsItsTextOnly) {
    Items items;
    EXPECT_EQ(items.model.InsertRow(0, L"12345678"), 0);
    EXPECT_EQ(items.model.Text(0, 0), L"12345678");
    EXPECT_EQ(items.model.Text(0, 1), L"");
    EXPECT_EQ(items.model.Image(0), -1);
    EXPECT_EQ(items.model.Data(0), nullptr);
}

TEST(ListModel, FindsTheRowOfAnItemAfterInsertDeleteAndSort) {
    Items items;
    items.model.InsertRow(0, L"b", &items.two);
    items.model.InsertRow(0, L"a", &items.one);
    items.model.InsertRow(2, L"c", &items.three);
    EXPECT_EQ(items.model.FindData(&items.one), 0);
    EXPECT_EQ(items.model.FindData(&items.three), 2);
    items.model.Sort(
        [](const void* a, const void* b) { return *static_cast<const int*>(a) > *static_cast<const int*>(b); });
    EXPECT_EQ(items.Names(), L"c b a ");
    EXPECT_EQ(items.model.FindData(&items.one), 2);
    items.model.DeleteRow(0);
    EXPECT_EQ(items.model.FindData(&items.one), 1);
    EXPECT_EQ(items.model.FindData(&items.three), -1);
    items.model.DeleteAllRows();
    EXPECT_EQ(items.model.FindData(&items.one), -1);
}

TEST(ListModel, AnExchangedItemIsFoundAtItsNewRow) {
    Items items;
    items.model.InsertRow(0, L"a", &items.one);
    items.model.InsertRow(1, L"b", &items.two);
    items.model.SetData(0, &items.two);
    items.model.SetData(1, &items.one);
    EXPECT_EQ(items.model.FindData(&items.one), 1);
    EXPECT_EQ(items.model.FindData(&items.two), 0);
}

TEST(ListModel, SortKeepsTheOrderOfEqualRowsAndPersistentIndexesFollowTheirRow) {
    Items items;
    int equal = 2;
    items.model.InsertRow(0, L"b", &items.two);
    items.model.InsertRow(1, L"B", &equal);
    items.model.InsertRow(2, L"a", &items.one);
    const QPersistentModelIndex kept = items.model.index(2, 0);
    items.model.Sort(
        [](const void* a, const void* b) { return *static_cast<const int*>(a) < *static_cast<const int*>(b); });
    EXPECT_EQ(items.Names(), L"a b B ");
    EXPECT_EQ(kept.row(), 0);
}

TEST(ListModel, AComparisonThatContradictsItselfGivesSomeOrderOfTheSameRows) {
    Items items;
    std::vector<int> numbers(1000);
    for (int number = 0; number < 1000; ++number) {
        numbers[static_cast<std::size_t>(number)] = number;
        items.model.InsertRow(number, std::to_wstring(number), &numbers[static_cast<std::size_t>(number)]);
    }
    std::mt19937 random(7);
    const std::function<bool(const void*, const void*)> comparisons[]{
        [](const void*, const void*) { return true; },
        [&](const void*, const void*) { return random() % 2 == 0; },
        [](const void* a, const void* b) { return *static_cast<const int*>(a) % 3 > *static_cast<const int*>(b) % 7; },
    };
    for (const auto& comparison : comparisons) {
        items.model.Sort(comparison);
        std::set<const void*> present;
        for (int row = 0; row < 1000; ++row) {
            present.insert(items.model.Data(row));
            EXPECT_EQ(items.model.FindData(items.model.Data(row)), row);
        }
        EXPECT_EQ(present.size(), 1000U);
    }
}

TEST(ListModel, SortsAnyNumberOfRows) {
    for (int count = 0; count < 70; ++count) {
        Items items;
        std::vector<int> numbers;
        for (int row = 0; row < count; ++row)
            numbers.push_back(row * 37 % 71);
        for (int row = 0; row < count; ++row)
            items.model.InsertRow(row, L"x", &numbers[static_cast<std::size_t>(row)]);
        items.model.Sort(
            [](const void* a, const void* b) { return *static_cast<const int*>(a) < *static_cast<const int*>(b); });
        for (int row = 1; row < count; ++row)
            EXPECT_LT(*static_cast<int*>(items.model.Data(row - 1)), *static_cast<int*>(items.model.Data(row)));
    }
}

TEST(ListModel, RowsThatAreNotThereAreIgnored) {
    Items items;
    items.model.SetText(0, 0, L"x");
    items.model.SetImage(-1, 3);
    items.model.SetData(5, &items.one);
    items.model.DeleteRow(0);
    EXPECT_EQ(items.model.RowCount(), 0);
    EXPECT_EQ(items.model.Text(7, 0), L"");
    EXPECT_EQ(items.model.FindData(&items.one), -1);
    items.model.InsertRow(0, L"a");
    items.model.SetText(0, 9, L"x");
    EXPECT_EQ(items.model.Text(0, 9), L"");
}

TEST(ListModel, OnlyTheFirstTextOfARowThatMayBeEditedIsEditable) {
    Items items;
    items.model.InsertRow(0, L"a");
    items.model.InsertRow(1, L"b");
    EXPECT_FALSE(items.model.flags(items.model.index(0, 0)) & Qt::ItemIsEditable);
    items.model.mayEdit = [](int row) { return row == 1; };
    std::wstring taken;
    items.model.edited = [&](int row, const std::wstring& text) { taken = std::to_wstring(row) + text; };
    EXPECT_FALSE(items.model.flags(items.model.index(0, 0)) & Qt::ItemIsEditable);
    EXPECT_TRUE(items.model.flags(items.model.index(1, 0)) & Qt::ItemIsEditable);
    EXPECT_FALSE(items.model.flags(items.model.index(1, 1)) & Qt::ItemIsEditable);
    EXPECT_TRUE(items.model.setData(items.model.index(1, 0), QStringLiteral("new"), Qt::EditRole));
    EXPECT_EQ(taken, L"1new");
    EXPECT_FALSE(items.model.setData(items.model.index(1, 1), QStringLiteral("new"), Qt::EditRole));
}

TEST(ListModel, CellsAreAlignedAsTheirColumn) {
    Items items;
    items.model.InsertRow(0, L"a");
    EXPECT_TRUE(items.model.index(0, 1).data(Qt::TextAlignmentRole).toInt() & Qt::AlignRight);
    EXPECT_TRUE(items.model.headerData(0, Qt::Horizontal, Qt::TextAlignmentRole).toInt() & Qt::AlignLeft);
    EXPECT_EQ(items.model.headerData(1, Qt::Horizontal, Qt::DisplayRole).toString(), QStringLiteral("Count"));
}

} // namespace
