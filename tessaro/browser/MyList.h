#pragma once

#include "tessaro/browser/CTitleTip.h"
#include "tessaro/browser/ListView.h"

/// The block list. Rows have a tip in all views but the report view.
class MyList : public ListView {
public:
    explicit MyList(QWidget* parent);

    int OnToolHitTest(QPoint point, QRect& bounds) const override;
    /// Report view only: the row and column under the point, and the cell cut off at the client area. -1 for none.
    int CellRectFromPoint(QPoint point, QRect& cell, int& column) const;

private:
    CTitleTip titleTip;
};

/// The directory list. Rows have a tip in any view.
class MyList2 : public ListView {
public:
    explicit MyList2(QWidget* parent);

    int OnToolHitTest(QPoint point, QRect& bounds) const override;
    int CellRectFromPoint(QPoint point, QRect& cell, int& column) const;

private:
    CTitleTip titleTip;
};
