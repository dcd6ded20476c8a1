#include "editor/application/command_line.h"

#include "editor/application/console.h"
#include "editor/application/drawing.h"
#include "editor/application/format.h"
#include "editor/application/numbers.h"
#include "editor/application/text.h"
#include "editor/sdk/resbuf.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace editor {

namespace {

constexpr const wchar_t* pauseElement = L"\\";
// Drawings store no more than 65,535 bytes of a text, and some releases seven for a letter.
constexpr std::size_t longestText = 8192;

CommandCancelled cancelled(CommandCancelled::Reason reason) {
    return CommandCancelled{reason};
}

std::wstring unquoted(std::wstring text) {
    if (text.size() >= 2 && text.front() == L'"' && text.back() == L'"')
        return text.substr(1, text.size() - 2);
    return text;
}

std::optional<SnapKind> snapNamed(const std::wstring& text) {
    const auto word = Keywords(L"ENDpoint MIDpoint CENter INSertion").match(text);
    if (!word)
        return std::nullopt;
    return word->front() == L'E'   ? SnapKind::End
           : word->front() == L'M' ? SnapKind::Middle
           : word->front() == L'C' ? SnapKind::Center
                                   : SnapKind::Insertion;
}

double distance(const AcGePoint3d& one, const AcGePoint3d& other) {
    return (one - other).length();
}

} // namespace

CommandLine::CommandLine(Console& theConsole, Lisp& theLisp) : console(theConsole), lisp(theLisp) {}

void CommandLine::push(std::wstring_view text, bool echo) {
    InputText input(text, echo);
    if (!input.empty())
        texts.push_back(std::move(input));
}

void CommandLine::interruptUser() {
    if (user != nullptr)
        user->interrupt();
}

CommandLine::Answer CommandLine::ask(const Prompt& prompt) {
    while (true) {
        if (auto answer = askOnce(prompt))
            return *answer;
    }
}

std::optional<CommandLine::Answer> CommandLine::askOnce(const Prompt& prompt) {
    if (!lists.empty() && !pausing)
        return fromList();
    return texts.empty() ? fromUser(prompt) : fromText(prompt);
}

std::optional<CommandLine::Answer> CommandLine::fromList() {
    Elements& list = lists.back();
    if (list.rest.empty() && list.endsInPause) {
        pausing = true;
        return std::nullopt;
    }
    if (list.rest.empty())
        throw cancelled(CommandCancelled::Reason::ListEnded);
    const Element element = std::move(list.rest.front());
    list.rest.pop_front();
    list.endsInPause = false;
    if (const auto* const point = std::get_if<AcGePoint3d>(&element))
        return PickedPoint{*point};
    const auto& text = std::get<std::wstring>(element);
    if (text == pauseElement) {
        pausing = list.endsInPause = true;
        return std::nullopt;
    }
    return text;
}

std::optional<CommandLine::Answer> CommandLine::fromText(const Prompt& prompt) {
    InputText& input = texts.back();
    const bool echo = input.echoes();
    const auto answer = input.take(prompt.wholeLine ? AnswerEnd::Line : AnswerEnd::BlankOrLine);
    if (answer.kind == InputText::Answer::Kind::Unfinished) {
        texts.pop_back();
        if (texts.empty())
            unfinished = answer.text;
        else
            texts.back().prepend(answer.text);
        return std::nullopt;
    }
    if (input.empty())
        texts.pop_back();
    // Something else may have been printed while the user was at it.
    const bool shown = std::exchange(promptShown, false) && !console.isAtLineStart();
    if (echo && shown)
        console.print(answer.text + L"\n");
    else if (echo)
        console.printLine(prompt.text + answer.text);
    else if (!shown && prompt.kind != Prompt::Kind::Command)
        console.printLine(prompt.text);
    return resolved(prompt, answer);
}

std::optional<CommandLine::Answer> CommandLine::fromUser(const Prompt& prompt) {
    console.beginLine();
    console.print(prompt.text);
    UserEvent event = user != nullptr ? user->next(prompt) : UserEvent();
    promptShown = event.kind == UserEvent::Kind::Text;
    switch (event.kind) {
    case UserEvent::Kind::Text: {
        InputText typed(std::exchange(unfinished, {}) + event.text);
        if (!typed.empty())
            texts.push_back(std::move(typed));
        return std::nullopt;
    }
    case UserEvent::Kind::Point:
        unfinished.clear();
        console.print(L"\n");
        return PickedPoint{event.point};
    case UserEvent::Kind::Cancel:
        unfinished.clear();
        console.print(L"*Cancel*\n");
        throw cancelled(CommandCancelled::Reason::User);
    case UserEvent::Kind::Interrupted:
        return prompt.kind == Prompt::Kind::Command ? std::optional<Answer>(Interrupted()) : std::nullopt;
    case UserEvent::Kind::End:
        break;
    }
    console.beginLine();
    throw cancelled(CommandCancelled::Reason::InputEnded);
}

std::optional<CommandLine::Answer> CommandLine::resolved(const Prompt& prompt, const InputText::Answer& typed) {
    switch (typed.kind) {
    case InputText::Answer::Kind::Cancel:
        console.print(L"*Cancel*\n");
        throw cancelled(CommandCancelled::Reason::User);
    case InputText::Answer::Kind::Expression:
        return evaluated(prompt, typed.text);
    default:
        break;
    }
    if (!prompt.wholeLine && typed.text.size() > 1 && typed.text[0] == L'!')
        return evaluated(prompt, typed.text.substr(1));
    if (!prompt.wholeLine && prompt.kind != Prompt::Kind::Command && typed.text.size() > 1 && typed.text[0] == L'\'' &&
        transparent && transparent(typed.text.substr(1)))
        return std::nullopt;
    return typed.text;
}

std::optional<CommandLine::Answer> CommandLine::evaluated(const Prompt& prompt, const std::wstring& expression) {
    LispValue value;
    try {
        value = lisp.evaluate(expression);
    } catch (const LispError& error) {
        console.printLine(L"; error: " + fromUtf8(error.what()));
        return std::nullopt;
    }
    if (prompt.kind == Prompt::Kind::Command) {
        console.printLine(Lisp::text(value));
        return std::nullopt;
    }
    if (const auto* const text = std::get_if<std::wstring>(&value))
        return *text;
    if (const auto* const object = std::get_if<AcDbObjectId>(&value))
        return *object;
    if (std::holds_alternative<std::monostate>(value))
        return std::nullopt;
    return Lisp::text(value);
}

std::optional<std::wstring> CommandLine::getCommand() {
    const Prompt prompt{Prompt::Kind::Command, L"Command: ", {}, false};
    const Answer answer = ask(prompt);
    if (const auto* const text = std::get_if<std::wstring>(&answer))
        return *text;
    return std::nullopt;
}

std::wstring CommandLine::getLine(const std::wstring& prompt) {
    return unquoted(trimmed(getText(prompt, true)));
}

std::wstring CommandLine::getText(const std::wstring& prompt, bool blanks) {
    pausing = false;
    while (true) {
        const Answer answer = ask(Prompt{Prompt::Kind::Text, prompt, {}, blanks});
        const auto* const text = std::get_if<std::wstring>(&answer);
        if (text != nullptr && text->size() <= longestText)
            return *text;
        if (text == nullptr)
            console.printLine(L"Requires text.");
        else
            console.printFault(L"The text is too long.");
    }
}

Prompt CommandLine::promptFor(Prompt::Kind kind, const std::wstring& text, const PromptOptions& options) {
    Prompt prompt{kind, text, options.base, false};
    prompt.rectangle = options.rectangle;
    prompt.ghost = options.ghost;
    return prompt;
}

std::optional<AcGePoint3d> CommandLine::pointOf(const Answer& answer) const {
    if (const auto* const picked = std::get_if<PickedPoint>(&answer))
        return picked->point;
    const auto* const text = std::get_if<std::wstring>(&answer);
    return text != nullptr ? parsePoint(*text, latestPoint) : std::nullopt;
}

PromptAnswer<AcGePoint3d> CommandLine::getPoint(const std::wstring& prompt, const PromptOptions& options) {
    pausing = false;
    while (true) {
        const Answer answer = ask(promptFor(Prompt::Kind::Point, prompt, options));
        std::optional<AcGePoint3d> point = pointOf(answer);
        if (const auto* const text = std::get_if<std::wstring>(&answer); text != nullptr && !point) {
            if (text->empty()) {
                if (options.mayBeEmpty)
                    return {};
                continue;
            }
            if (const auto keyword = options.keywords.match(*text))
                return {std::nullopt, *keyword};
            if (const auto snap = snapNamed(*text)) {
                point = getSnapped(*snap);
                if (!point)
                    continue;
            } else if (options.takesText) {
                return {std::nullopt, {}, *text};
            }
        }
        if (point) {
            latestPoint = *point;
            return {point, {}};
        }
        if (options.keywords.empty())
            console.printLine(L"Invalid point.");
        else
            console.printFault(L"Point or option keyword required.");
    }
}

// A point as answer is a distance or an angle from the prompt's base.
std::optional<double> CommandLine::valueOf(const Answer& answer, const Prompt& prompt) {
    const bool angle = prompt.kind == Prompt::Kind::Angle;
    if (const auto* const picked = std::get_if<PickedPoint>(&answer)) {
        if (!prompt.base)
            return std::nullopt;
        const AcGeVector3d reach = picked->point - *prompt.base;
        return angle ? std::atan2(reach.y, reach.x) : distance(picked->point, *prompt.base);
    }
    if (const auto* const text = std::get_if<std::wstring>(&answer)) {
        if (const auto number = parseNumber(*text))
            return angle ? radians(*number) : *number;
        if (const auto point = prompt.base ? parsePoint(*text, *prompt.base) : std::nullopt)
            return valueOf(PickedPoint{*point}, prompt);
    }
    return std::nullopt;
}

PromptAnswer<double> CommandLine::getValue(const Prompt& prompt, const PromptOptions& options) {
    pausing = false;
    while (true) {
        const Answer answer = ask(prompt);
        if (const auto* const text = std::get_if<std::wstring>(&answer)) {
            if (text->empty()) {
                if (options.mayBeEmpty)
                    return {};
                continue;
            }
            if (const auto keyword = options.keywords.match(*text))
                return {std::nullopt, *keyword};
        }
        const auto value = valueOf(answer, prompt);
        if (!value && options.keywords.empty())
            console.printLine(L"Requires numeric value.");
        else if (!value)
            console.printFault(L"Requires numeric value or option keyword.");
        else if (options.positive && *value <= 0)
            console.printLine(L"Value must be positive and nonzero.");
        else if (options.nonZero && *value == 0)
            console.printLine(L"Value must be nonzero.");
        else
            return {value, {}};
    }
}

PromptAnswer<double> CommandLine::getNumber(const std::wstring& prompt, const PromptOptions& options) {
    return getValue(promptFor(Prompt::Kind::Number, prompt, options), options);
}

PromptAnswer<double> CommandLine::getAngle(const std::wstring& prompt, const PromptOptions& options) {
    return getValue(promptFor(Prompt::Kind::Angle, prompt, options), options);
}

std::wstring CommandLine::getKeyword(const std::wstring& prompt, const Keywords& keywords,
                                     const std::wstring& byDefault) {
    while (true) {
        PromptOptions options;
        options.keywords = keywords;
        options.mayBeEmpty = true;
        const auto answer = getWord(prompt, options);
        if (answer.empty() && !byDefault.empty())
            return byDefault;
        if (!answer.keyword.empty())
            return answer.keyword;
        if (!answer.empty())
            console.printFault(L"Invalid option keyword.");
    }
}

PromptAnswer<std::wstring> CommandLine::getWord(const std::wstring& prompt, const PromptOptions& options) {
    pausing = false;
    while (true) {
        const Answer answer = ask(Prompt{Prompt::Kind::Keyword, prompt, {}, false});
        const auto* const text = std::get_if<std::wstring>(&answer);
        if (text == nullptr) {
            console.printFault(L"Invalid option keyword.");
            continue;
        }
        if (text->empty()) {
            if (options.mayBeEmpty)
                return {};
            continue;
        }
        if (const auto keyword = options.keywords.match(*text))
            return {std::nullopt, *keyword};
        return {*text, {}};
    }
}

// With a window the object under the point is meant, otherwise any object of the drawing.
std::optional<AcGePoint3d> CommandLine::getSnapped(SnapKind kind) {
    const Answer answer = ask(Prompt{Prompt::Kind::Point, L"of ", {}, false});
    const auto near = pointOf(answer);
    AcDbDatabase* const database = acdbHostApplicationServices()->workingDatabase();
    if (!near || database == nullptr) {
        console.printLine(L"Invalid point.");
        return std::nullopt;
    }
    const AcDbObjectId hit = window != nullptr ? window->objectAt(*near) : AcDbObjectId();
    std::vector<AcDbObjectId> objects{hit};
    if (hit.isNull())
        objects = modelSpaceEntities(*database);
    std::optional<AcGePoint3d> best;
    for (const AcDbObjectId object : objects) {
        for (const AcGePoint3d& point : snapPoints(object, kind)) {
            if (!best || distance(point, *near) < distance(*best, *near))
                best = point;
        }
    }
    if (!best)
        console.printLine(L"No such point found.");
    return best;
}

CommandLine::List::List(CommandLine& commandLine, const resbuf* elements) : line(commandLine) {
    Elements given;
    std::deque<Element>& list = given.rest;
    for (; elements != nullptr; elements = elements->rbnext) {
        switch (elements->restype) {
        case RTSTR:
            list.emplace_back(std::wstring(elements->resval.rstring != nullptr ? elements->resval.rstring : L""));
            break;
        case RTREAL:
            list.emplace_back(numberText(elements->resval.rreal));
            break;
        case RTSHORT:
            list.emplace_back(std::to_wstring(elements->resval.rint));
            break;
        case RTLONG:
            list.emplace_back(std::to_wstring(elements->resval.rlong));
            break;
        case RTPOINT:
        case RT3DPOINT:
            list.emplace_back(AcGePoint3d{elements->resval.rpoint[0], elements->resval.rpoint[1],
                                          elements->restype == RT3DPOINT ? elements->resval.rpoint[2] : 0});
            break;
        default: // RTNONE ends the list, other types have no meaning here
            break;
        }
        if (elements->restype == RTNONE)
            break;
    }
    line.lists.push_back(std::move(given));
}

CommandLine::List::~List() {
    line.lists.pop_back();
    line.pausing = false;
}

std::wstring CommandLine::List::takeCommand() {
    auto& list = line.lists.back().rest;
    const Element element = std::move(list.front());
    list.pop_front();
    const auto* const text = std::get_if<std::wstring>(&element);
    return text != nullptr ? *text : std::wstring();
}

bool CommandLine::List::done() const {
    return line.lists.back().rest.empty();
}

} // namespace editor
