#include "tessaro/browser/MyList.h"
#include "tessaro/catalogue/ImageList.h"

#include <QHeaderView>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>
#include <set>

namespace {

struct List {
    explicit List(int rows, QSize size = {600, 400}) : list(nullptr) {
        for (const wchar_t* heading : {L"Block", L"Rel", L"Comments"})
            list.Rows().InsertColumn(heading);
        for (int row = 0; row < rows; ++row)
            list.Rows().InsertRow(row, L"block " + std::to_wstring(row));
        list.resize(size);
        list.show();
        QTest::qWait(1);
    }
    MyList list;
};

Picture Filled(int width, int height, std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
    Picture picture(width, height);
    for (std::size_t at = 0; at < picture.pixels.size(); at += 3) {
        picture.pixels[at] = red;
        picture.pixels[at + 1] = green;
        picture.pixels[at + 2] = blue;
    }
    return picture;
}

TEST(ListView, StartsInReportViewWithSingleSelectionOfRows) {
    List shown(3);
    EXPECT_EQ(shown.list.ViewBits(), ListView::ReportView);
    EXPECT_EQ(shown.list.selectionMode(), QAbstractItemView::SingleSelection);
    EXPECT_TRUE(shown.list.Header()->isVisible());
    shown.list.SetViewBits(ListView::IconView);
    EXPECT_FALSE(shown.list.Header()->isVisible());
}

TEST(ListView, ReportRowsLieBelowEachOther) {
    List shown(3);
    EXPECT_EQ(shown.list.RowBounds(0).top(), 0);
    EXPECT_EQ(shown.list.RowBounds(1).top(), shown.list.RowBounds(0).height());
    EXPECT_EQ(shown.list.indexAt(shown.list.RowBounds(2).center()).row(), 2);
    EXPECT_FALSE(shown.list.indexAt({5, shown.list.RowBounds(2).bottom() + 2}).isValid());
}

TEST(ListView, IconCellsHaveTheIconSpacing) {
    List shown(10);
    shown.list.SetIconSpacing({142, 120});
    shown.list.SetViewBits(ListView::IconView);
    EXPECT_EQ(shown.list.RowBounds(0), QRect(0, 0, 142, 120));
    EXPECT_EQ(shown.list.RowBounds(1), QRect(142, 0, 142, 120));
    const int across = shown.list.viewport()->width() / 142;
    EXPECT_EQ(shown.list.RowBounds(across), QRect(0, 120, 142, 120));
    EXPECT_EQ(shown.list.indexAt(shown.list.RowBounds(7).center()).row(), 7);
}

TEST(ListView, SmallIconsRunAcrossAndListRunsDown) {
    List shown(200);
    shown.list.SetViewBits(ListView::SmallIconView);
    EXPECT_EQ(shown.list.RowBounds(1).top(), shown.list.RowBounds(0).top());
    EXPECT_GT(shown.list.RowBounds(1).left(), shown.list.RowBounds(0).left());
    shown.list.SetViewBits(ListView::SmallListView);
    EXPECT_EQ(shown.list.RowBounds(1).left(), shown.list.RowBounds(0).left());
    EXPECT_GT(shown.list.RowBounds(1).top(), shown.list.RowBounds(0).top());
    EXPECT_GT(shown.list.horizontalScrollBar()->maximum(), 0);
    EXPECT_EQ(shown.list.verticalScrollBar()->maximum(), 0);
}

TEST(ListView, SelectingARowScrollsToItInEveryView) {
    List shown(100'000);
    for (const int view :
         {ListView::IconView, ListView::SmallIconView, ListView::SmallListView, ListView::ReportView}) {
        shown.list.SetViewBits(view);
        for (const int row : {99'999, 0, 50'000}) {
            shown.list.SelectRow(row);
            EXPECT_EQ(shown.list.SelectedRow(), row) << "view " << view;
            EXPECT_TRUE(shown.list.viewport()->rect().contains(shown.list.RowBounds(row).center()))
                << "view " << view << " row " << row;
        }
    }
    shown.list.SelectRow(100'000);
    EXPECT_EQ(shown.list.SelectedRow(), 50'000);
}

TEST(ListView, TopIndexIsTheFirstWhollyVisibleRow) {
    List shown(1000);
    EXPECT_EQ(shown.list.TopIndex(), 0);
    shown.list.verticalScrollBar()->setValue(10 * shown.list.RowBounds(0).height());
    EXPECT_EQ(shown.list.TopIndex(), 10);
    shown.list.verticalScrollBar()->setValue(10 * shown.list.RowBounds(0).height() + 1);
    EXPECT_EQ(shown.list.TopIndex(), 11);
}

TEST(ListView, LargePicturesServeTheIconViewSmallOnesAllOthers) {
    ImageList large(130, 96, 1, 25);
    ImageList small(66, 49, 1, 25);
    large.Add(Filled(130, 96, 255, 0, 0));
    small.Add(Filled(66, 49, 0, 0, 255));
    List shown(3);
    shown.list.SetImages(&large, &small);
    shown.list.Rows().SetImage(1, 0);
    const auto colourIn = [&](int xInRow) {
        const QRect bounds = shown.list.RowBounds(1);
        return shown.list.viewport()->grab().toImage().pixelColor(bounds.left() + xInRow, bounds.top() + 30);
    };
    EXPECT_EQ(colourIn(20), QColor(Qt::blue));
    for (const int view : {ListView::SmallIconView, ListView::SmallListView}) {
        shown.list.SetViewBits(view);
        EXPECT_EQ(colourIn(20), QColor(Qt::blue)) << view;
    }
    shown.list.SetViewBits(ListView::IconView);
    EXPECT_EQ(colourIn(71), QColor(Qt::red));

    large.Replace(0, Filled(130, 96, 0, 255, 0));
    EXPECT_EQ(colourIn(71), QColor(Qt::green));
    shown.list.SetImages(nullptr, nullptr);
    EXPECT_NE(colourIn(71), QColor(Qt::green));
}

/// Notes the rows that it paints.
struct CountingList : MyList {
    using MyList::MyList;
    void PaintRow(QPainter& painter, int row, const QRect& bounds) override {
        painted.insert(row);
        MyList::PaintRow(painter, row, bounds);
    }
    std::set<int> painted;
};

TEST(ListView, PaintsWhatIsVisibleAndNothingElseInEveryView) {
    ImageList large(130, 96, 1, 25);
    ImageList small(66, 49, 1, 25);
    large.Add(Filled(130, 96, 255, 0, 0));
    small.Add(Filled(66, 49, 0, 0, 255));
    CountingList list(nullptr);
    list.Rows().InsertColumn(L"Block");
    for (int row = 0; row < 20'000; ++row)
        list.Rows().InsertRow(row, L"block");
    list.SetIconSpacing({142, 120});
    list.SetImages(&large, &small);
    list.resize(600, 400);
    list.show();
    QTest::qWait(1);
    for (const int view :
         {ListView::IconView, ListView::SmallIconView, ListView::SmallListView, ListView::ReportView}) {
        list.SetViewBits(view);
        for (const int row : {0, 9'999, 19'999}) {
            list.SelectRow(row);
            list.painted.clear();
            list.viewport()->repaint();
            std::set<int> visible;
            for (int each = std::max(0, row - 500); each < std::min(20'000, row + 500); ++each)
                if (list.RowBounds(each).intersects(list.viewport()->rect()))
                    visible.insert(each);
            EXPECT_EQ(list.painted, visible) << "view " << view << " row " << row;
            EXPECT_TRUE(list.painted.contains(row));
        }
    }
}

TEST(ListView, ARowThatChangesIsPaintedAlone) {
    CountingList list(nullptr);
    list.Rows().InsertColumn(L"Block");
    for (int row = 0; row < 100; ++row)
        list.Rows().InsertRow(row, L"block");
    list.resize(600, 400);
    list.show();
    QTest::qWait(20);
    list.painted.clear();
    list.Rows().SetText(3, 0, L"other");
    list.Rows().SetText(90, 0, L"out of sight");
    ASSERT_TRUE(QTest::qWaitFor([&] { return !list.painted.empty(); }, 30'000));
    EXPECT_EQ(list.painted, std::set<int>{3});
}

TEST(ListView, ThePicturesAreTheImageListsPixels) {
    ImageList small(66, 49, 1, 25);
    Picture picture(66, 49);
    for (std::size_t at = 0; at < picture.pixels.size(); ++at)
        picture.pixels[at] = at / 3 % 5 == 0 ? 255 : 0;
    small.Add(picture);
    List shown(2);
    shown.list.SetImages(nullptr, &small);
    shown.list.Rows().SetImage(0, 0);
    const QImage seen = shown.list.viewport()->grab().toImage();
    const QRect bounds = shown.list.RowBounds(0);
    const int top = bounds.top() + (bounds.height() - 49) / 2;
    for (int y = 0; y < 49; ++y)
        for (int x = 0; x < 66; ++x)
            ASSERT_EQ(seen.pixel(2 + x, top + y), (y * 66 + x) % 5 == 0 ? qRgb(255, 255, 255) : qRgb(0, 0, 0))
                << x << "," << y;
}

TEST(ListView, ASelectionIsShownWithoutTheFocusToo) {
    List shown(3);
    QWidget other;
    other.show();
    shown.list.clearFocus();
    shown.list.SelectRow(1);
    ASSERT_FALSE(shown.list.hasFocus());
    const QImage seen = shown.list.viewport()->grab().toImage();
    const QRect bounds = shown.list.RowBounds(1);
    EXPECT_EQ(seen.pixelColor(bounds.right() - 3, bounds.center().y()),
              shown.list.palette().color(QPalette::Inactive, QPalette::Highlight));
}

TEST(ListView, AHeadingThatDoesNotFitShowsItsBeginning) {
    const auto drawn = [&](int width, Qt::Alignment alignment) {
        MyList list(nullptr);
        list.Rows().InsertColumn(L"Status", alignment);
        list.Header()->resizeSection(0, width);
        list.resize(300, 100);
        list.show();
        QTest::qWait(1);
        return list.Header()->viewport()->grab({0, 0, width - 2, list.Header()->height()}).toImage();
    };
    EXPECT_EQ(drawn(20, Qt::AlignRight), drawn(20, Qt::AlignLeft));
    EXPECT_NE(drawn(120, Qt::AlignRight), drawn(120, Qt::AlignLeft));
}

TEST(ListView, ADoubleClickBetweenHeadingsFitsTheColumnToWhatIsInSight) {
    List shown(3);
    const ImageList pictures(66, 49, 1, 25);
    shown.list.SetImages(nullptr, &pictures);
    const std::wstring text(40, L'w');
    QHeaderView& header = *shown.list.Header();
    for (const int column : {2, 0}) {
        shown.list.Rows().SetText(1, column, text);
        header.resizeSection(column, 20);
        const QPoint divider(header.sectionViewportPosition(column) + 19, header.height() / 2);
        QTest::mouseDClick(header.viewport(), Qt::LeftButton, {}, divider);
        const QRect cell = shown.list.visualRect(shown.list.Rows().index(1, column));
        const int needed = shown.list.fontMetrics().horizontalAdvance(QString::fromStdWString(text));
        EXPECT_GT(cell.width(), needed) << column;
        EXPECT_LT(cell.width(), needed + 20) << column;
    }
    shown.list.Rows().DeleteAllRows();
    shown.list.FitColumn(1);
    EXPECT_GE(header.sectionSize(1), shown.list.fontMetrics().horizontalAdvance("Rel")) << "the heading alone";
}

TEST(ListView, APressBesideTheRowsTakesTheSelectionAway) {
    List shown(2);
    shown.list.SelectRow(1);
    QTest::mouseClick(shown.list.viewport(), Qt::LeftButton, {}, {10, 300});
    EXPECT_EQ(shown.list.SelectedRow(), -1);
    QTest::mouseClick(shown.list.viewport(), Qt::LeftButton, {}, shown.list.RowBounds(0).center());
    EXPECT_EQ(shown.list.SelectedRow(), 0);
}

TEST(ListView, NoNeighbourTakesOverTheSelectionOfADeletedRow) {
    List shown(3);
    shown.list.SelectRow(1);
    int selections = 0;
    QObject::connect(shown.list.selectionModel(), &QItemSelectionModel::selectionChanged, &shown.list, [&] {
        if (shown.list.SelectedRow() >= 0)
            ++selections;
    });
    shown.list.Rows().DeleteRow(1);
    QTest::qWait(1);
    EXPECT_EQ(shown.list.SelectedRow(), -1);
    EXPECT_EQ(selections, 0);
}

TEST(ListView, CursorKeysMoveByTheViewsOwnSteps) {
    List shown(100);
    shown.list.SetIconSpacing({142, 120});
    const auto press = [&](int key) {
        QTest::keyClick(&shown.list, static_cast<Qt::Key>(key));
        return shown.list.SelectedRow();
    };
    shown.list.setFocus();
    shown.list.SelectRow(0);
    EXPECT_EQ(press(Qt::Key_Down), 1);
    EXPECT_EQ(press(Qt::Key_End), 99);
    EXPECT_EQ(press(Qt::Key_Home), 0);
    EXPECT_EQ(press(Qt::Key_PageDown), shown.list.CountPerPage());
    shown.list.SetViewBits(ListView::IconView);
    shown.list.SelectRow(0);
    EXPECT_EQ(press(Qt::Key_Right), 1);
    EXPECT_EQ(press(Qt::Key_Down), 1 + shown.list.viewport()->width() / 142);
    shown.list.SetViewBits(ListView::SmallListView);
    shown.list.SelectRow(0);
    EXPECT_EQ(press(Qt::Key_Down), 1);
}

TEST(MyList, HasNoTipInReportViewAndOneInTheOthers) {
    List shown(3);
    QRect bounds;
    EXPECT_EQ(shown.list.OnToolHitTest(shown.list.RowBounds(1).center(), bounds), -1);
    for (const int view : {ListView::IconView, ListView::SmallIconView, ListView::SmallListView}) {
        shown.list.SetViewBits(view);
        EXPECT_EQ(shown.list.OnToolHitTest(shown.list.RowBounds(1).center(), bounds), 2) << view;
        EXPECT_EQ(bounds, shown.list.RowBounds(1));
        EXPECT_EQ(shown.list.OnToolHitTest({5, 395}, bounds), -1) << view;
    }
}

TEST(MyList2, HasATipInAnyView) {
    MyList2 list(nullptr);
    list.Rows().InsertColumn(L"Library");
    list.Rows().InsertRow(0, L"Furniture");
    list.resize(300, 200);
    QRect bounds;
    for (int view = 0; view < 4; ++view) {
        list.SetViewBits(view);
        EXPECT_EQ(list.OnToolHitTest({5, 5}, bounds), 1) << view;
    }
    EXPECT_EQ(list.OnToolHitTest({5, 180}, bounds), -1);
}

TEST(ListView, ATipIsNameAndThirdColumnCutToEightyCharacters) {
    List shown(2);
    shown.list.Rows().SetText(0, 2, L"a chair");
    EXPECT_EQ(shown.list.ToolTipText(1), L"block 0 / a chair");
    EXPECT_EQ(shown.list.ToolTipText(2), L"block 1");
    EXPECT_EQ(shown.list.ToolTipText(0), L"");
    shown.list.Rows().SetText(0, 2, std::wstring(200, L'x'));
    EXPECT_EQ(shown.list.ToolTipText(1), L"block 0 / " + std::wstring(70, L'x'));
}

TEST(MyList, CellRectFromPointFindsTheCellInReportViewOnly) {
    List shown(3);
    shown.list.Header()->resizeSection(0, 100);
    shown.list.Header()->resizeSection(1, 50);
    shown.list.Header()->resizeSection(2, 2000);
    QRect cell;
    int column = -1;
    const QRect second = shown.list.RowBounds(1);
    EXPECT_EQ(shown.list.CellRectFromPoint({120, second.center().y()}, cell, column), 1);
    EXPECT_EQ(column, 1);
    EXPECT_EQ(cell, QRect(100, second.top(), 50, second.height()));
    EXPECT_EQ(shown.list.CellRectFromPoint({200, second.center().y()}, cell, column), 1);
    EXPECT_EQ(cell.right(), shown.list.viewport()->width() - 1) << "cut off at the client area";
    EXPECT_EQ(shown.list.CellRectFromPoint({20, 390}, cell, column), -1);
    shown.list.SetViewBits(ListView::IconView);
    EXPECT_EQ(shown.list.CellRectFromPoint({20, 20}, cell, column), -1);
}

} // namespace
