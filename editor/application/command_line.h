#pragma once

#include "editor/application/input_text.h"
#include "editor/application/keywords.h"
#include "editor/application/lisp.h"
#include "editor/application/services.h"
#include "editor/database/snap_points.h"
#include "editor/sdk/db.h"

#include <deque>
#include <functional>
#include <string>
#include <variant>
#include <vector>

struct resbuf;

namespace editor {

class Console;

/// Thrown through a command that the user (or the end of the input) cancels.
struct CommandCancelled {
    enum class Reason { User, InputEnded, ListEnded };
    Reason reason = Reason::User;
};

/// Answer to a prompt: exactly one of a value, a keyword, other text where the prompt takes it, or an empty answer.
template <class Value> struct PromptAnswer {
    std::optional<Value> value;
    std::wstring keyword;
    std::wstring text{};
    bool empty() const { return !value && keyword.empty() && text.empty(); }
};

struct PromptOptions {
    Keywords keywords;
    bool mayBeEmpty = false; ///< an empty answer is given back; otherwise it asks again
    bool nonZero = false;
    bool positive = false;
    bool takesText = false;          ///< a point prompt gives back what is neither point nor keyword
    bool rectangle = false;          ///< the rubber band from `base` is a rectangle
    std::optional<AcGePoint3d> base; ///< a point as answer to a number gives the distance from here
    std::optional<Ghost> ghost{};    ///< shown at the pointer
};

/// The prompts of commands and where their answers come from.
///
/// Answers are taken, in this order, from the list of the innermost acedCmdS call, from the texts that were pushed (the
/// last one first), and from the user. What a text holds without a blank or line end behind it is put in front of what
/// comes next. A list whose last element is a pause leaves all that its command still asks to the user; any other list
/// cancels its command when it ends too early. Every function but the last group throws CommandCancelled.
///
/// A point prompt takes "END", "MID", "CEN" and "INS" too: the point that is given next is moved to the nearest such
/// point of the object there.
class CommandLine {
public:
    CommandLine(Console& console, Lisp& lisp);
    CommandLine(const CommandLine&) = delete;
    CommandLine& operator=(const CommandLine&) = delete;

    /// A name, path or text: the whole line without blanks at its ends and without double quotes around it.
    std::wstring getLine(const std::wstring& prompt);
    /// A text for an application; `blanks`: blanks belong to it.
    std::wstring getText(const std::wstring& prompt, bool blanks);
    PromptAnswer<AcGePoint3d> getPoint(const std::wstring& prompt, const PromptOptions& options = {});
    PromptAnswer<double> getNumber(const std::wstring& prompt, const PromptOptions& options = {});
    /// In radians; typed in degrees.
    PromptAnswer<double> getAngle(const std::wstring& prompt, const PromptOptions& options = {});
    /// One of the keywords as declared; an empty answer gives `byDefault`.
    std::wstring getKeyword(const std::wstring& prompt, const Keywords& keywords, const std::wstring& byDefault);
    /// An answer that is none of the keywords is given back as typed in `value`.
    PromptAnswer<std::wstring> getWord(const std::wstring& prompt, const PromptOptions& options = {});
    /// Objects of the current drawing, none for an empty answer; `single` ends with the first. Objects are given by a
    /// point on them, two corners where there is nothing, Last, Previous, ALL, Window, Crossing, or an expression that
    /// names one; Remove takes away again.
    std::vector<AcDbObjectId> getSelection(const std::wstring& prompt, bool single);
    /// The next command's name; empty for an empty answer. Expressions are evaluated and printed, and the next answer
    /// asked for. Nothing where the user source was interrupted.
    std::optional<std::wstring> getCommand();

    const AcGePoint3d& lastPoint() const { return latestPoint; }
    void setLastPoint(const AcGePoint3d& point) { latestPoint = point; }

    /// Text that is taken before anything that waits now.
    void push(std::wstring_view text, bool echo);
    bool hasText() const { return !texts.empty(); }
    void setUserInput(UserInput* source) { user = source; }
    void interruptUser();
    void setWindow(WindowServices* services) { window = services; }
    /// Whether the prompts would be answered by the user and not by a text or a list.
    bool isInteractive() const { return texts.empty() && lists.empty(); }
    /// Carries a transparent command out that is typed at a prompt ("'ZOOM").
    void setTransparent(std::function<bool(const std::wstring& name)> function) { transparent = std::move(function); }

    /// The elements of an acedCmdS list, as answers while the object lives.
    class List {
    public:
        List(CommandLine& commandLine, const resbuf* elements);
        ~List();
        List(const List&) = delete;
        List& operator=(const List&) = delete;
        bool done() const;
        /// The next element as a command's name: empty for an element that isn't text.
        std::wstring takeCommand();

    private:
        CommandLine& line;
    };

private:
    struct PickedPoint {
        AcGePoint3d point;
    };
    struct Interrupted {};
    using Answer = std::variant<std::wstring, PickedPoint, AcDbObjectId, Interrupted>;
    using Element = std::variant<std::wstring, AcGePoint3d>;
    struct Elements {
        std::deque<Element> rest;
        bool endsInPause = false; ///< the element taken last was one
    };

    Answer ask(const Prompt& prompt);
    std::optional<Answer> askOnce(const Prompt& prompt);
    std::optional<Answer> fromList();
    std::optional<Answer> fromText(const Prompt& prompt);
    std::optional<Answer> fromUser(const Prompt& prompt);
    std::optional<Answer> resolved(const Prompt& prompt, const InputText::Answer& typed);
    std::optional<Answer> evaluated(const Prompt& prompt, const std::wstring& expression);
    PromptAnswer<double> getValue(const Prompt& prompt, const PromptOptions& options);
    static std::optional<double> valueOf(const Answer& answer, const Prompt& prompt);
    static Prompt promptFor(Prompt::Kind kind, const std::wstring& text, const PromptOptions& options);
    std::optional<AcGePoint3d> pointOf(const Answer& answer) const;
    std::optional<AcGePoint3d> getSnapped(SnapKind kind);
    std::vector<AcDbObjectId> selectByBox(const AcGePoint3d& corner, std::optional<bool> crossing);
    std::optional<std::vector<AcDbObjectId>> selectByKeyword(const std::wstring& keyword, AcDbDatabase& database);

    Console& console;
    Lisp& lisp;
    UserInput* user = nullptr;
    WindowServices* window = nullptr;
    std::vector<InputText> texts; // the last one is taken first
    std::wstring unfinished;      // typed without an end, to be put in front of what comes next
    std::vector<Elements> lists;  // of nested acedCmdS calls
    bool pausing = false;         // a list's pause element was met: the present prompt is the user's
    bool promptShown = false;     // the user's answer follows the prompt on its line
    std::function<bool(const std::wstring&)> transparent;
    AcGePoint3d latestPoint;
    std::vector<AcDbObjectId> previousSelection;
};

} // namespace editor
