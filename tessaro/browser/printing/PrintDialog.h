#pragma once

#include <QPrintDialog>

class QComboBox;

/// Asks for the printer, or for the PDF file that takes its place. All pages are printed: a choice of pages is not
/// offered. Beside what such a dialog has, it asks for the resolution of a PDF, as the size of a sheet's pictures on
/// paper follows it.
///
/// Object names: the dialog "printDialog", the resolution "pdfResolution".
class PrintDialog : public QPrintDialog {
public:
    PrintDialog(QPrinter& chosen, QWidget* owner);

    void done(int result) override;

private:
    QComboBox* resolution;
};
