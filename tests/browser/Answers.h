#pragma once

#include <QString>
#include <QStringList>

#include <memory>

/// What a test answers to the windows that the browser opens over itself. Each is made before the window comes up.

/// Shows and answers the next message box with its button of that text; keeps what it said.
class MessageAnswer {
public:
    explicit MessageAnswer(const QString& button);
    QString Text() const { return *text; }

private:
    std::shared_ptr<QString> text;
};

/// Texts of the menu that opens next, top level and submenus ("Sort/Size"), greyed ones in brackets, checked ones with
/// an asterisk. Then picks an entry (with its path) or dismisses the menu.
class MenuAnswer {
public:
    explicit MenuAnswer(const QString& entry = {});
    QStringList Texts() const { return *texts; }

private:
    std::shared_ptr<QStringList> texts;
};

/// Answers the folder picker that opens next; an empty path cancels it.
void AnswerFolderPicker(const QString& path);
