#pragma once

#include <QString>
#include <QStringList>

#include <optional>

class QWidget;

namespace editor {

/// One line of a script that acts on a window: `> VERB WORD...`. Words in double quotes hold blanks; \" and \\ stand
/// for themselves in them.
struct WindowAction {
    QString verb;
    QStringList words;

    /// Nothing for a line whose quotes don't close or that has no verb.
    static std::optional<WindowAction> parse(const QString& line);
};

/// What became of an attempt: done, to be tried again (with what is missing), or of no use.
struct ActionResult {
    enum class Kind { Done, Again, Failed };
    Kind kind = Kind::Done;
    QString reason;

    static ActionResult done() { return {}; }
    static ActionResult again(const QString& missing) { return {Kind::Again, missing}; }
    static ActionResult failed(const QString& reason) { return {Kind::Failed, reason}; }
};

/// Acts on a window by the names and texts of its controls, as a user would with mouse and keyboard. What may open
/// another window is only posted, so that the caller's event loop comes to it.
ActionResult act(QWidget& window, const WindowAction& action);

/// The texts that a window shows its user: its title and its labels.
QString windowText(const QWidget& window);

} // namespace editor
