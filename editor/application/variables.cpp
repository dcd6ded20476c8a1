#include "editor/application/variables.h"

#include "editor/application/drawing.h"
#include "editor/application/editor.h"
#include "editor/application/format.h"
#include "editor/application/object_snaps.h"
#include "editor/application/search_path.h"
#include "editor/application/text.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <memory>

namespace editor {

namespace {

using Value = std::optional<VariableValue>;

AcDbDatabase* workingDatabase() {
    return acdbHostApplicationServices()->workingDatabase();
}

// What a drawing keeps: null value without a drawing, and a database's refusal is a refusal of the variable.
template <class Get> std::function<Value()> ofDrawing(Get get) {
    return [get]() -> Value {
        AcDbDatabase* const database = workingDatabase();
        return database != nullptr ? Value(get(*database)) : std::nullopt;
    };
}

template <class Type, class Set> std::function<bool(const VariableValue&)> toDrawing(Set set) {
    return [set](const VariableValue& value) {
        AcDbDatabase* const database = workingDatabase();
        return database != nullptr && set(*database, std::get<Type>(value)) == eOk;
    };
}

Value converted(const VariableValue& value, const VariableValue& like) {
    if (value.index() == like.index())
        return value;
    if (std::holds_alternative<double>(like) && std::holds_alternative<int>(value))
        return static_cast<double>(std::get<int>(value));
    if (std::holds_alternative<int>(like) && std::holds_alternative<double>(value)) {
        const double number = std::get<double>(value);
        if (number == std::trunc(number) && std::abs(number) <= std::numeric_limits<int>::max())
            return static_cast<int>(number);
    }
    return std::nullopt;
}

} // namespace

Variables::Variables(Editor& theEditor) : editor(theEditor) {
    addReadOnly();
    addOfDrawing();
    addOfSession();
    std::sort(table.begin(), table.end(),
              [](const Variable& one, const Variable& other) { return one.name < other.name; });
}

void Variables::addReadOnly() {
    table.push_back({L"ACADVER", [this] { return Value(editor.releaseText()); }, {}});
    table.push_back({L"ACADPREFIX",
                     [this] {
                         std::wstring folders;
                         for (const auto& folder : editor.searchFolders())
                             folders += folder + L";";
                         return Value(folders);
                     },
                     {}});
    table.push_back({L"CMDACTIVE", [this] { return Value(editor.processor().running().empty() ? 0 : 1); }, {}});
    table.push_back({L"CMDNAMES",
                     [this] {
                         std::wstring names;
                         for (const auto& name : editor.processor().running())
                             names += (names.empty() ? L"" : L"'") + name;
                         return Value(names);
                     },
                     {}});
    const auto ofDocument = [this](auto get) {
        return [this, get]() -> Value {
            const Document* const document = editor.documents().current();
            return document != nullptr ? Value(get(*document)) : std::nullopt;
        };
    };
    table.push_back({L"DWGNAME", ofDocument([](const Document& document) { return document.title(); }), {}});
    table.push_back({L"DWGPREFIX", ofDocument([](const Document& document) { return document.folder(); }), {}});
    table.push_back(
        {L"DWGTITLED", ofDocument([](const Document& document) { return document.hasFile() ? 1 : 0; }), {}});
    table.push_back({L"DBMOD", ofDocument([](const Document& document) { return document.isChanged() ? 1 : 0; }), {}});
    table.push_back({L"LUPREC", ofDrawing([](AcDbDatabase& database) { return database.luprec(); }), {}});
}

void Variables::addOfDrawing() {
    table.push_back(
        {L"USERR4", ofDrawing([](AcDbDatabase& database) { return database.userr4(); }),
         toDrawing<double>([](AcDbDatabase& database, double value) { return database.setUserr4(value); })});
    table.push_back({L"DIMSCALE", ofDrawing([](AcDbDatabase& database) { return database.dimscale(); }),
                     toDrawing<double>([](AcDbDatabase& database, double value) {
                         return value >= 0 ? database.setDimscale(value) : static_cast<int>(Acad::eOutOfRange);
                     })});
    table.push_back({L"INSBASE", ofDrawing([](AcDbDatabase& database) { return database.insbase(); }),
                     toDrawing<AcGePoint3d>(
                         [](AcDbDatabase& database, const AcGePoint3d& value) { return database.setInsbase(value); })});
    table.push_back({L"CLAYER", ofDrawing([](AcDbDatabase& database) { return recordName(database.clayer()); }),
                     toDrawing<std::wstring>([](AcDbDatabase& database, const std::wstring& name) {
                         const AcDbObjectId layer = findLayer(database, name);
                         return layer.isNull() ? static_cast<int>(Acad::eKeyNotFound) : database.setClayer(layer);
                     })});
}

void Variables::addOfSession() {
    addInteger(L"CMDDIA", 1, 0, 1);
    addInteger(L"FILEDIA", 1, 0, 1);
    addInteger(L"CMDECHO", 1, 0, 1);
    addInteger(L"EXPERT", 0, 0, 5);
    addInteger(L"ATTREQ", 1, 0, 1);
    addInteger(L"OSMODE", snapModeAtFirst, 0, 2 * snapSwitchedOff - 1);
    table.push_back({L"INSNAME", [this] { return Value(insertName); },
                     [this](const VariableValue& value) {
                         insertName = std::get<std::wstring>(value);
                         return true;
                     }});
    table.push_back({L"LASTPOINT", [this] { return Value(editor.commandLine().lastPoint()); },
                     [this](const VariableValue& value) {
                         editor.commandLine().setLastPoint(std::get<AcGePoint3d>(value));
                         return true;
                     }});
}

void Variables::addInteger(std::wstring name, int initial, int lowest, int highest) {
    const auto kept = std::make_shared<int>(initial);
    table.push_back({std::move(name), [kept] { return Value(*kept); },
                     [kept, lowest, highest](const VariableValue& value) {
                         const int number = std::get<int>(value);
                         if (number < lowest || number > highest)
                             return false;
                         *kept = number;
                         return true;
                     }});
}

const Variable* Variables::find(std::wstring_view name) const {
    const auto found = std::find_if(table.begin(), table.end(), [name](const Variable& variable) {
        return equalIgnoringCase(variable.name, name);
    });
    return found != table.end() ? &*found : nullptr;
}

std::optional<VariableValue> Variables::get(std::wstring_view name) const {
    const Variable* const variable = find(name);
    return variable != nullptr ? variable->get() : std::nullopt;
}

bool Variables::set(std::wstring_view name, const VariableValue& value) {
    const Variable* const variable = find(name);
    if (variable == nullptr || !variable->set)
        return false;
    const auto present = variable->get();
    const auto given = present ? converted(value, *present) : std::nullopt;
    return given && variable->set(*given);
}

std::wstring Variables::text(const VariableValue& value) {
    if (const auto* const whole = std::get_if<int>(&value))
        return std::to_wstring(*whole);
    if (const auto* const real = std::get_if<double>(&value))
        return numberText(*real);
    if (const auto* const point = std::get_if<AcGePoint3d>(&value))
        return numberText(point->x) + L"," + numberText(point->y) + L"," + numberText(point->z);
    return L"\"" + std::get<std::wstring>(value) + L"\"";
}

} // namespace editor
