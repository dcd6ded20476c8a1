#include "tests/browser/PrintFixture.h"

#include "tessaro/catalogue/Directory.h"
#include "tessaro/host/ModuleState.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QPrintDialog>
#include <QTimer>

#include <utility>

PrintBrowser::~PrintBrowser() {
    printScale = 4;
    printType = 0;
}

void PrintBrowser::Answer(const std::function<bool(QWidget& window)>& handler) {
    auto* const timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, timer, [timer, handler] {
        QWidget* const window = QApplication::activeModalWidget();
        if (window == nullptr || !handler(*window))
            return;
        timer->deleteLater();
    });
    timer->start(5);
}

QString PrintBrowser::PrintTo(BlockDlg& dlg, const std::filesystem::path& file, int dots,
                              const std::function<void()>& happens) {
    QString said;
    bool isHappening = false;
    Answer([&](QWidget& window) {
        if (auto* const dialog = qobject_cast<QPrintDialog*>(&window)) {
            // It may serve events, and with them this answer.
            if (std::exchange(isHappening, true))
                return false;
            if (happens)
                happens();
            isHappening = false;
            dialog->findChild<QLineEdit*>(QStringLiteral("filename"))->setText(QString::fromStdString(file.string()));
            auto* const resolution = dialog->findChild<QComboBox*>(QStringLiteral("pdfResolution"));
            resolution->setCurrentIndex(resolution->findData(dots));
            dialog->accept();
            return false;
        }
        auto* const box = qobject_cast<QMessageBox*>(&window);
        if (box == nullptr)
            return false;
        said = box->text();
        box->accept();
        return true;
    });
    dlg.Controls().print->click();
    return said;
}

bool PrintBrowser::Show(BlockDlg& dlg) {
    dlg.SelectDirectoryRow(0);
    return WaitFor([] { return currentDirectory != nullptr && currentDirectory.load()->loaded; }) && WaitIdle();
}
