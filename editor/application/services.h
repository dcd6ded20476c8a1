#pragma once

#include "editor/sdk/db.h"

#include <optional>
#include <string>
#include <vector>

/// What the editor needs of a window. All calls come on the main thread.
namespace editor {

/// What of the model is seen, from above. Lengths in drawing units.
struct View {
    AcGePoint3d center;
    double width = 1, height = 1;
};

/// A block that follows the pointer until its point is given.
struct Ghost {
    AcDbObjectId block;
    AcGeVector3d scale{1, 1, 1};
    double rotation = 0; ///< radians
};

/// What a prompt is asking for, for whoever supplies the answers.
struct Prompt {
    enum class Kind { Command, Text, Point, Number, Angle, Keyword, Selection };
    Kind kind = Kind::Command;
    std::wstring text;               ///< as shown
    std::optional<AcGePoint3d> base; ///< a rubber band is drawn from here
    bool wholeLine = false;          ///< blanks belong to the answer; otherwise a blank ends it like Enter
    bool rectangle = false;          ///< the rubber band is a rectangle with `base` as its other corner
    std::optional<Ghost> ghost{};    ///< shown at the pointer
};

/// One thing that the user did.
struct UserEvent {
    enum class Kind {
        Text,        ///< `text` was typed, with the blanks and line feeds that end its answers
        Point,       ///< `point` was picked
        Cancel,      ///< Escape
        Interrupted, ///< nothing: UserInput::interrupt was called
        End,         ///< there will be no more input
    };
    Kind kind = Kind::End;
    std::wstring text;
    AcGePoint3d point;
};

/// Where answers come from when no text is waiting: a window's event loop, or a script's lines.
class UserInput {
public:
    virtual ~UserInput() = default;
    /// Waits for the user. The prompt has been printed.
    virtual UserEvent next(const Prompt& prompt) = 0;
    /// Makes a `next` that waits at the command prompt return Interrupted soon; does nothing otherwise.
    virtual void interrupt() {}
};

enum class SaveAnswer { Save, Discard, Cancel };

/// Windows that the editor shows, and what it tells the window. Every call has an answer for an editor without a
/// window.
class WindowServices {
public:
    virtual ~WindowServices() = default;
    /// The main window (a QWidget), for dialogs of modules.
    virtual void* mainWindow() { return nullptr; }
    /// Whether files are asked for by dialogs; otherwise the command line asks.
    virtual bool asksForFiles() const { return false; }
    virtual std::optional<std::wstring> pickFileToOpen(const std::wstring& start);
    virtual std::optional<std::wstring> pickFileToSave(const std::wstring& start);
    /// Whether unsaved changes are asked about by a message; otherwise the command line asks.
    virtual bool asksToSave() const { return false; }
    virtual SaveAnswer askToSave(const std::wstring& drawing);
    /// A colour index from 1 to 255 (256 BYLAYER, 0 BYBLOCK), or nothing on cancel.
    virtual std::optional<int> pickColour(int start);
    /// The topmost object of the current drawing at a point that was picked; null where there is none.
    virtual AcDbObjectId objectAt(const AcGePoint3d& point);
    /// The whole drawing is to be shown.
    virtual void zoomExtents() {}
    /// Nothing without a window.
    virtual std::optional<View> view() const { return std::nullopt; }
    /// Shows all of that part of the model, and what else fits the window's shape.
    virtual void setView(const View&) {}
    /// The drawing is to be drawn anew from its database.
    virtual void regenerate() {}
    /// These objects are marked as selected; none ends it.
    virtual void highlight(const std::vector<AcDbObjectId>&) {}
    /// Applications have added or removed buttons of the ribbon or the toolbar.
    virtual void buttonsChanged() {}
    /// Drawings were opened, closed, renamed or made current.
    virtual void documentsChanged() {}
    /// A command has ended that may have changed the current drawing.
    virtual void drawingChanged() {}
};

} // namespace editor
