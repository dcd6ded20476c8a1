#include "tessaro/browser/Administrators.h"
#include "tessaro/browser/HostRelease.h"
#include "tessaro/browser/SortBlocks.h"
#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace {

TEST(HostRelease, TellsTheHighestFileType) {
    const std::pair<const wchar_t*, int> table[]{
        {L"13.0", 14}, {L"14.01", 15}, {L"15.06s", 16}, {L"16.2", 17}, {L"17.0", 18}, {L"18.2s", 19},
        {L"19.1", 20}, {L"20.0", 20},  {L"21.0s", 20},  {L"22.0", 21}, {L"23.1", 21}, {L"24.3s", 21},
    };
    for (const auto& [release, type] : table)
        EXPECT_EQ(MaxFileType(release, -7), type) << testing::PrintToString(std::wstring(release));
    EXPECT_EQ(MaxFileType(L"12.0", -7), -7);
    EXPECT_EQ(MaxFileType(L"25.0", -7), -7);
    EXPECT_EQ(MaxFileType(L"", -7), -7);
}

struct AdministratorList : testing::Test {
    std::wstring Write(const std::string& text) const { return folder.write("tessaroadmin.ini", text).wstring(); }
    tests::TemporaryFolder folder;
};

TEST_F(AdministratorList, WithoutAFileEverybodyMayChangeTheCatalogue) {
    EXPECT_TRUE(IsAdministrator(L"", L"anna"));
}

TEST_F(AdministratorList, ALineIsABareUserNameComparedIgnoringCase) {
    const std::wstring list = Write("[Users]\r\nBert\r\n\r\n  Anna  \r\n");
    EXPECT_TRUE(IsAdministrator(list, L"ANNA"));
    EXPECT_TRUE(IsAdministrator(list, L"bert"));
    EXPECT_FALSE(IsAdministrator(list, L"ann"));
    EXPECT_FALSE(IsAdministrator(Write("[Users]\nanna=1\n"), L"anna"));
}

TEST_F(AdministratorList, OnlyTheSectionUsersCounts) {
    const std::wstring list = Write("anna\n[Others]\nanna\n[users]\n;anna\nbert\n[More]\nanna\n");
    EXPECT_FALSE(IsAdministrator(list, L"anna"));
    EXPECT_TRUE(IsAdministrator(list, L"bert"));
}

TEST_F(AdministratorList, AListThatCannotBeReadRestrictsEverybody) {
    EXPECT_FALSE(IsAdministrator((folder.path() / "absent.ini").wstring(), L"anna"));
    EXPECT_FALSE(IsAdministrator(folder.path().wstring(), L"anna"));
    EXPECT_FALSE(IsAdministrator(Write(""), L"anna"));
}

TEST_F(AdministratorList, TheSectionIsReadAsFarAsItsBufferGoes) {
    std::string text = "[Users]\n";
    for (int line = 0; line < 1000; ++line)
        text += "user number\n";
    const std::wstring list = Write(text + "anna\n");
    EXPECT_TRUE(IsAdministrator(list, L"user number"));
    EXPECT_FALSE(IsAdministrator(list, L"anna"));
}

TEST_F(AdministratorList, AUserNameOfFiftyCharactersIsNotMatched) {
    const std::string name(50, 'a');
    const std::wstring list = Write("[Users]\n" + name + "\n" + name.substr(1) + "\n");
    EXPECT_FALSE(IsAdministrator(list, std::wstring(50, L'a')));
    EXPECT_TRUE(IsAdministrator(list, std::wstring(49, L'a')));
}

struct Order : testing::Test {
    Order() {
        a.name = L"alpha";
        b.name = L"BETA";
        a.fileType = 16;
        b.fileType = 21;
        a.description = L"One";
        b.description = L"two";
        a.status = {100, 5, 50};
        b.status = {200, 6, 60};
        currentDirectory = &directory;
    }
    ~Order() override { currentDirectory = nullptr; }
    Directory directory;
    Block a, b;
};

TEST_F(Order, ComparesByTheKeyOfTheStyle) {
    for (int style = 1; style < 7; ++style) {
        directory.sortStyle = style;
        EXPECT_EQ(CompareBlocks(&a, &b, style), -1) << style;
        EXPECT_EQ(CompareBlocks(&b, &a, style), 1) << style;
        EXPECT_EQ(CompareBlocks(&a, &a, style), 0) << style;
    }
}

TEST_F(Order, EachKeyReadsItsOwnField) {
    const auto orderBy = [&](int style) {
        directory.sortStyle = style;
        return CompareBlocks(&a, &b, style);
    };
    b.name = L"ALPHA";
    EXPECT_EQ(orderBy(1), 0) << "names ignore case";
    b.fileType = 1;
    EXPECT_EQ(orderBy(2), 1);
    b.description = L"a";
    EXPECT_EQ(orderBy(3), 1);
    b.status.m_size = 1;
    EXPECT_EQ(orderBy(4), 1);
    b.status.m_mtime = 1;
    EXPECT_EQ(orderBy(5), 1);
    EXPECT_EQ(orderBy(6), -1);
    b.status.m_ctime = 1;
    EXPECT_EQ(orderBy(6), 1);
}

TEST_F(Order, EightAndUpReverses) {
    for (int style = 8; style < 14; ++style) {
        directory.sortStyle = style;
        EXPECT_EQ(CompareBlocks(&a, &b, style), 1) << style;
    }
}

TEST_F(Order, WithoutAKeyEverythingIsLess) {
    for (const int style : {0, 7}) {
        directory.sortStyle = style;
        EXPECT_EQ(CompareBlocks(&a, &b, style), -1) << style;
        EXPECT_EQ(CompareBlocks(&b, &a, style), -1) << style;
    }
}

TEST_F(Order, AMissingBlockIsEqual) {
    EXPECT_EQ(CompareBlocks(nullptr, &a, 1), 0);
    EXPECT_EQ(CompareBlocks(&a, nullptr, 0), 0);
}

TEST(SortStyle, ColumnsMapToKeys) {
    const int keys[]{1, 2, 3, 4, 6, 5};
    for (int column = 0; column < 6; ++column) {
        EXPECT_EQ(SortStyleAfterClick(column, 0), keys[column]) << column;
        EXPECT_EQ(SortColumn(keys[column]), column);
        EXPECT_EQ(SortColumn(keys[column] + 7), column);
    }
    EXPECT_EQ(SortColumn(0), -1);
}

TEST(SortStyle, ASecondClickReversesAThirdGivesThePlainOrder) {
    EXPECT_EQ(SortStyleAfterClick(0, 1), 8);
    EXPECT_EQ(SortStyleAfterClick(0, 8), 1);
    EXPECT_EQ(SortStyleAfterClick(4, 6), 13);
    EXPECT_EQ(SortStyleAfterClick(4, 13), 6);
}

TEST(SortStyle, AnotherColumnAfterAReversedOneGivesItsPlainOrder) {
    EXPECT_EQ(SortStyleAfterClick(1, 8), 2);
    EXPECT_EQ(SortStyleAfterClick(5, 13), 5);
}

} // namespace
