#pragma once

#include "editor/sdk/ge.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace editor {

class Editor;

using VariableValue = std::variant<int, double, std::wstring, AcGePoint3d>;

/// A system variable. What belongs to a drawing is kept by its database and can't be read while no drawing is open.
struct Variable {
    std::wstring name; ///< upper case
    std::function<std::optional<VariableValue>()> get;
    /// False for a value that is refused; an empty function for a variable that can only be read. The value has the
    /// type that `get` gives.
    std::function<bool(const VariableValue&)> set;
};

/// The system variables, in the order of their names. Names ignore case.
class Variables {
public:
    explicit Variables(Editor& editor);

    const std::vector<Variable>& all() const { return table; }
    const Variable* find(std::wstring_view name) const;
    std::optional<VariableValue> get(std::wstring_view name) const;
    /// Whole numbers are taken for reals, reals without a fraction for whole numbers. False where there is no such
    /// variable, where it can only be read, and for a value of another type or out of range.
    bool set(std::wstring_view name, const VariableValue& value);
    /// The last block that was inserted, as INSNAME gives it.
    void setInsertName(std::wstring name) { insertName = std::move(name); }

    /// As the command line shows it.
    static std::wstring text(const VariableValue& value);

private:
    void addReadOnly();
    void addOfDrawing();
    void addOfSession();
    void addInteger(std::wstring name, int initial, int lowest, int highest);

    Editor& editor;
    std::vector<Variable> table;
    std::wstring insertName;
};

} // namespace editor
