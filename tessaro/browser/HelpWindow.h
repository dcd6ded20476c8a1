#pragma once

#include <QTextBrowser>

#include <string>

/// A window with the pages of a compiled help file. Closed by Escape or its cross, and gone then.
class HelpWindow : public QTextBrowser {
public:
    /// Shows the file's first page, in the window that is open already or in a new one of that owner. False where the
    /// file can't be read or its pages are not stored as they are.
    static bool Show(QWidget* owner, const std::wstring& path);

protected:
    QVariant loadResource(int type, const QUrl& name) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    HelpWindow(QWidget* owner, std::string bytes);

    const std::string file;
};
