#pragma once

#include "editor/sdk/db.h"

#include <functional>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>

namespace editor {

/// A value of an expression: nil, text, a real, a whole number, or an object of a drawing.
using LispValue = std::variant<std::monostate, std::wstring, double, int, AcDbObjectId>;

class LispError : public std::runtime_error {
public:
    explicit LispError(const std::string& reason) : std::runtime_error(reason) {}
};

/// The symbols of the session and the few expressions that command texts use: `(entlast)`, `(setq name value ...)`,
/// numbers, texts in double quotes, symbols, nil. Symbol names ignore case. Symbols belong to the editor's run.
class Lisp {
public:
    /// `lastEntity` gives the last entity of the current drawing, null where there is none.
    explicit Lisp(std::function<AcDbObjectId()> lastEntity);

    LispValue symbol(std::wstring_view name) const;
    void setSymbol(std::wstring_view name, LispValue value);
    /// Throws LispError where it can't be evaluated.
    LispValue evaluate(std::wstring_view expression);
    /// The expressions of a file, one after the other, with their comments (from a semicolon on); the last one's value.
    /// Throws LispError at the first that can't be evaluated; those before it stand.
    LispValue evaluateAll(std::wstring_view expressions);

    /// A value as the command line shows it.
    static std::wstring text(const LispValue& value);

private:
    std::function<AcDbObjectId()> entlast;
    std::map<std::wstring, LispValue> symbols;
};

} // namespace editor
