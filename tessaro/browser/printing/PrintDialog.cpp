#include "tessaro/browser/printing/PrintDialog.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QLabel>
#include <QPrinter>

namespace {

constexpr int kResolutions[] = {300, 600, 1200};
constexpr int kUsualResolution = 600;
constexpr double kMargin = 10; // mm

} // namespace

PrintDialog::PrintDialog(QPrinter& chosen, QWidget* owner)
    : QPrintDialog(&chosen, owner), resolution(new QComboBox(this)) {
    setObjectName(QStringLiteral("printDialog"));
    setOptions(PrintToFile | PrintCollateCopies | PrintShowPageSize);
    chosen.setPageMargins(QMarginsF(kMargin, kMargin, kMargin, kMargin), QPageLayout::Millimeter);

    resolution->setObjectName(QStringLiteral("pdfResolution"));
    for (const int dots : kResolutions)
        resolution->addItem(QStringLiteral("%1 dpi").arg(dots), dots);
    resolution->setCurrentIndex(resolution->findData(kUsualResolution));
    auto* const label = new QLabel(QStringLiteral("&Resolution of a PDF file:"), this);
    label->setBuddy(resolution);
    auto* const row = new QHBoxLayout;
    row->addWidget(label);
    row->addWidget(resolution);
    row->addStretch();
    if (auto* const rows = qobject_cast<QBoxLayout*>(layout()))
        rows->insertLayout(1, row);
}

void PrintDialog::done(int result) {
    QPrintDialog::done(result);
    if (result == Accepted && printer()->outputFormat() == QPrinter::PdfFormat)
        printer()->setResolution(resolution->currentData().toInt());
}
