#include "tessaro/browser/QtUserInterface.h"

#include "editor/sdk/editor.h"
#include "tessaro/browser/HelpWindow.h"
#include "tessaro/browser/QtText.h"

#include <QApplication>
#include <QDesktopServices>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QUrl>

namespace {

QWidget* Owner() {
    if (QWidget* modal = QApplication::activeModalWidget())
        return modal;
    return static_cast<QWidget*>(adsw_acadMainWnd());
}

std::optional<std::wstring> Chosen(QFileDialog& dialog) {
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return std::nullopt;
    return FromQt(dialog.selectedFiles().constFirst());
}

} // namespace

platform::MessageAnswer QtUserInterface::MessageBox(const std::wstring& text, const std::wstring& caption,
                                                    platform::MessageButtons buttons, platform::MessageIcon icon) {
    QMessageBox box(Owner());
    box.setObjectName(QStringLiteral("messageBox"));
    box.setWindowTitle(ToQt(caption));
    box.setTextFormat(Qt::PlainText);
    box.setText(ToQt(text));
    if (icon == platform::MessageIcon::Question)
        box.setIcon(QMessageBox::Question);
    else if (icon == platform::MessageIcon::Exclamation)
        box.setIcon(QMessageBox::Warning);
    const bool question = buttons == platform::MessageButtons::YesNo;
    box.setStandardButtons(question ? QMessageBox::Yes | QMessageBox::No : QMessageBox::Ok);
    const int answer = box.exec();
    if (!question)
        return platform::MessageAnswer::Ok;
    return answer == QMessageBox::Yes ? platform::MessageAnswer::Yes : platform::MessageAnswer::No;
}

void QtUserInterface::BeginWaitCursor() {
    QApplication::setOverrideCursor(Qt::WaitCursor);
}

void QtUserInterface::EndWaitCursor() {
    QApplication::restoreOverrideCursor();
}

std::optional<std::wstring> QtUserInterface::PickFolder(const std::wstring& title, const std::wstring& start) {
    QFileDialog dialog(Owner(), ToQt(title), ToQt(start));
    dialog.setObjectName(QStringLiteral("folderDialog"));
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOptions(QFileDialog::ShowDirsOnly | QFileDialog::DontUseNativeDialog);
    return Chosen(dialog);
}

std::optional<std::wstring> QtUserInterface::PickSaveFile(const std::wstring& title, const std::wstring& start) {
    const QFileInfo preset(ToQt(start));
    QFileDialog dialog(Owner(), ToQt(title), preset.path());
    dialog.setObjectName(QStringLiteral("saveDialog"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.selectFile(preset.fileName());
    return Chosen(dialog);
}

void QtUserInterface::ShowHelp(const std::wstring& file) {
    if (!HelpWindow::Show(Owner(), file))
        QDesktopServices::openUrl(QUrl::fromLocalFile(ToQt(file)));
}
