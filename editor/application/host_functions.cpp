#include "editor/sdk/editor.h"

#include "editor/application/editor.h"
#include "editor/application/format.h"
#include "editor/application/text.h"
#include "editor/application/wild_card.h"

#include <cstdarg>
#include <limits>

// The editor calls of the host interface. Each answers RTERROR (or its own word for failure) while no editor runs.

namespace {

using editor::Editor;

template <class... Cases> struct Overloaded : Cases... {
    using Cases::operator()...;
};
template <class... Cases> Overloaded(Cases...) -> Overloaded<Cases...>;

bool copyOut(const std::wstring& text, wchar_t* result, std::size_t size) {
    if (result == nullptr || size == 0)
        return false;
    const bool fits = text.size() < size;
    const std::size_t length = fits ? text.size() : 0;
    text.copy(result, length);
    result[length] = 0;
    return fits;
}

int giveText(resbuf& element, const std::wstring& text) {
    element.restype = RTSTR;
    return acutNewString(text.c_str(), element.resval.rstring);
}

int giveReal(resbuf& element, double value) {
    element.restype = RTREAL;
    element.resval.rreal = value;
    return RTNORM;
}

int giveWhole(resbuf& element, int value) {
    if (value >= std::numeric_limits<short>::min() && value <= std::numeric_limits<short>::max()) {
        element.restype = RTSHORT;
        element.resval.rint = static_cast<short>(value);
    } else {
        element.restype = RTLONG;
        element.resval.rlong = value;
    }
    return RTNORM;
}

int givePoint(resbuf& element, const AcGePoint3d& point) {
    element.restype = RT3DPOINT;
    element.resval.rpoint[0] = point.x;
    element.resval.rpoint[1] = point.y;
    element.resval.rpoint[2] = point.z;
    return RTNORM;
}

int giveObject(resbuf& element, AcDbObjectId object) {
    element.restype = RTENAME;
    element.resval.rlname = object.handle;
    return RTNORM;
}

std::optional<editor::VariableValue> variableValue(const resbuf& element) {
    switch (element.restype) {
    case RTSTR:
        return std::wstring(element.resval.rstring != nullptr ? element.resval.rstring : L"");
    case RTREAL:
        return element.resval.rreal;
    case RTSHORT:
        return static_cast<int>(element.resval.rint);
    case RTLONG:
        return element.resval.rlong;
    case RTPOINT:
        return AcGePoint3d{element.resval.rpoint[0], element.resval.rpoint[1], 0};
    case RT3DPOINT:
        return AcGePoint3d{element.resval.rpoint[0], element.resval.rpoint[1], element.resval.rpoint[2]};
    default:
        return std::nullopt;
    }
}

} // namespace

int acedGetVar(const wchar_t* name, resbuf* value) {
    Editor* const running = Editor::instance();
    if (running == nullptr || name == nullptr || value == nullptr)
        return RTERROR;
    const auto found = running->variables().get(name);
    if (!found)
        return RTERROR;
    return std::visit(Overloaded{[&](int whole) { return giveWhole(*value, whole); },
                                 [&](double real) { return giveReal(*value, real); },
                                 [&](const std::wstring& text) { return giveText(*value, text); },
                                 [&](const AcGePoint3d& point) { return givePoint(*value, point); }},
                      *found);
}

int acedSetVar(const wchar_t* name, const resbuf* value) {
    Editor* const running = Editor::instance();
    if (running == nullptr || name == nullptr || value == nullptr)
        return RTERROR;
    const auto given = variableValue(*value);
    return given && running->variables().set(name, *given) ? RTNORM : RTERROR;
}

int acedFindFile(const wchar_t* name, wchar_t* result, std::size_t size) {
    Editor* const running = Editor::instance();
    const auto found = running != nullptr && name != nullptr ? running->findFile(name) : std::nullopt;
    return copyOut(found.value_or(L""), result, size) && found ? RTNORM : RTERROR;
}

int acutPrintf(const wchar_t* format, ...) {
    Editor* const running = Editor::instance();
    if (running == nullptr || format == nullptr)
        return RTERROR;
    va_list arguments;
    va_start(arguments, format);
    const std::wstring text = editor::formatWide(format, arguments);
    va_end(arguments);
    running->console().print(text);
    return RTNORM;
}

int acutWcMatch(const wchar_t* text, const wchar_t* pattern) {
    if (text == nullptr || pattern == nullptr)
        return RTERROR;
    return editor::matchesWildCard(text, pattern) ? RTNORM : RTERROR;
}

int acedCmdS(const resbuf* list) {
    Editor* const running = Editor::instance();
    return running != nullptr ? running->processor().runList(list) : RTERROR;
}

int acedGetSym(const wchar_t* name, resbuf** value) {
    Editor* const running = Editor::instance();
    if (running == nullptr || name == nullptr || value == nullptr)
        return RTERROR;
    *value = nullptr;
    const editor::LispValue held = running->lisp().symbol(name);
    if (std::holds_alternative<std::monostate>(held))
        return RTNORM;
    resbuf* const element = acutNewRb(RTNIL);
    if (element == nullptr)
        return RTERROR;
    const int result = std::visit(Overloaded{[&](int whole) { return giveWhole(*element, whole); },
                                             [&](double real) { return giveReal(*element, real); },
                                             [&](const std::wstring& text) { return giveText(*element, text); },
                                             [&](const AcDbObjectId& object) { return giveObject(*element, object); },
                                             [](std::monostate) { return RTNORM; }},
                                  held);
    *value = element;
    return result;
}

int acedPutSym(const wchar_t* name, resbuf* value) {
    Editor* const running = Editor::instance();
    if (running == nullptr || name == nullptr || *name == 0)
        return RTERROR;
    editor::LispValue given;
    if (value != nullptr && value->restype != RTNIL) {
        switch (value->restype) {
        case RTSTR:
            given = std::wstring(value->resval.rstring != nullptr ? value->resval.rstring : L"");
            break;
        case RTREAL:
            given = value->resval.rreal;
            break;
        case RTSHORT:
            given = static_cast<int>(value->resval.rint);
            break;
        case RTLONG:
            given = value->resval.rlong;
            break;
        default:
            return RTERROR;
        }
    }
    running->lisp().setSymbol(name, std::move(given));
    return RTNORM;
}

int acedInvoke(const resbuf* arguments, resbuf** result) {
    if (result != nullptr)
        *result = nullptr;
    Editor* const running = Editor::instance();
    if (running == nullptr || result == nullptr || arguments == nullptr || arguments->restype != RTSTR ||
        arguments->resval.rstring == nullptr || !editor::equalIgnoringCase(arguments->resval.rstring, L"acad_colordlg"))
        return RTERROR;
    const resbuf* const start = arguments->rbnext;
    const auto colour = start != nullptr ? variableValue(*start) : std::nullopt;
    if (!colour || !std::holds_alternative<int>(*colour))
        return RTERROR;
    // A cancelled dialog is a success without a result.
    if (const auto chosen = running->window().pickColour(std::get<int>(*colour))) {
        *result = acutNewRb(RTSHORT);
        if (*result == nullptr)
            return RTERROR;
        giveWhole(**result, *chosen);
    }
    return RTNORM;
}

int acedGetString(int cronly, const wchar_t* prompt, wchar_t* result, std::size_t size) {
    Editor* const running = Editor::instance();
    if (running == nullptr || result == nullptr || size == 0)
        return RTERROR;
    result[0] = 0;
    try {
        std::wstring text = running->commandLine().getText(prompt != nullptr ? prompt : L"", cronly != 0);
        text.resize(std::min(text.size(), size - 1));
        return copyOut(text, result, size) ? RTNORM : RTERROR;
    } catch (const editor::CommandCancelled&) {
        return RTCAN;
    }
}

int acedRetVoid() {
    return Editor::instance() != nullptr ? RTNORM : RTERROR;
}

bool acedGetCurrentColors(AcColorSettings* colors) {
    Editor* const running = Editor::instance();
    if (running == nullptr || colors == nullptr)
        return false;
    *colors = running->colours();
    return true;
}

void* adsw_acadMainWnd() {
    Editor* const running = Editor::instance();
    return running != nullptr ? running->window().mainWindow() : nullptr;
}
