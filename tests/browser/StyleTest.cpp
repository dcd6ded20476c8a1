// Light and dark style of the desktop.
#include "tests/browser/BrowserFixture.h"

#include "tessaro/catalogue/Directory.h"

#include <QApplication>
#include <QLabel>
#include <QTest>

namespace {

/// The contrast of two colours, from 1 to 21, as guidelines for readable text define it.
double Contrast(QColor one, QColor other) {
    const auto brightness = [](const QColor& colour) {
        const auto part = [](double value) {
            return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * part(colour.redF()) + 0.7152 * part(colour.greenF()) + 0.0722 * part(colour.blueF());
    };
    const double a = brightness(one), b = brightness(other);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

/// The two most different colours of a picture by brightness.
double ContrastIn(const QImage& image) {
    QColor darkest = Qt::white, brightest = Qt::black;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const QColor colour = image.pixelColor(x, y);
            if (colour.lightness() < darkest.lightness())
                darkest = colour;
            if (colour.lightness() > brightest.lightness())
                brightest = colour;
        }
    return Contrast(darkest, brightest);
}

struct Style : Browser, testing::WithParamInterface<bool> {
    Style() : before(QApplication::palette()) {
        if (!GetParam())
            return;
        QPalette dark(QColor(53, 53, 53));
        dark.setColor(QPalette::Base, QColor(35, 35, 35));
        dark.setColor(QPalette::Highlight, QColor(42, 130, 218));
        dark.setColor(QPalette::HighlightedText, Qt::white);
        QApplication::setPalette(dark);
    }
    ~Style() override { QApplication::setPalette(before); }
    const QPalette before;
};

TEST_P(Style, EveryTextIsReadable) {
    AddFolder(L"Furniture", {"chair", "desk"});
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        dlg.Controls().blockList->SelectRow(1);
        for (QWidget* control : dlg.findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
            const auto* label = qobject_cast<QLabel*>(control);
            const bool hasText = qobject_cast<QAbstractButton*>(control) != nullptr ||
                                 qobject_cast<QComboBox*>(control) != nullptr ||
                                 (label != nullptr && !label->text().isEmpty());
            if (!hasText || !control->isVisible() || !control->isEnabled())
                continue;
            EXPECT_GE(ContrastIn(control->grab().toImage()), 4.5) << control->objectName().toStdString();
        }
        for (ListView* list : std::initializer_list<ListView*>{dlg.Controls().blockList, dlg.Controls().directoryList})
            for (int row = 0; row < list->Rows().RowCount(); ++row) {
                QRect cell = list->visualRect(list->Rows().index(row, 0));
                // The colours of a selection are the desktop's own choice.
                EXPECT_GE(ContrastIn(list->viewport()->grab(cell).toImage()), row == list->SelectedRow() ? 3 : 4.5)
                    << list->objectName().toStdString() << " row " << row;
            }
    });
}

TEST_P(Style, TheListsStandOnTheDesktopsBackground) {
    AddFolder(L"Furniture", {"chair"});
    Run([&](BlockDlg& dlg) {
        ASSERT_TRUE(WaitIdle());
        const QImage list = dlg.Controls().blockList->viewport()->grab().toImage();
        EXPECT_EQ(list.pixelColor(list.width() / 2, list.height() - 5), dlg.palette().color(QPalette::Base));
        EXPECT_EQ(dlg.palette().color(QPalette::Base).lightness() < 128, GetParam());
    });
}

INSTANTIATE_TEST_SUITE_P(LightAndDark, Style, testing::Bool());

} // namespace
