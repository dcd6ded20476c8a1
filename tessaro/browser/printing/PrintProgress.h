#pragma once

#include <QDialog>

class QProgressBar;

/// "Print Progress": shows how far a print has come, above all windows and in the middle of its owner. It offers
/// nothing, since a print can't be ended early; it is painted at once, as no event loop runs meanwhile.
class PrintProgress : public QDialog {
public:
    PrintProgress(QWidget* owner, int range);

    void SetPosition(int position);

private:
    QProgressBar* bar;
};
