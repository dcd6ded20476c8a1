#include "editor/application/lisp.h"

#include "editor/application/format.h"
#include "editor/application/numbers.h"
#include "editor/application/text.h"

#include <algorithm>
#include <limits>

namespace editor {

namespace {

constexpr int deepestNesting = 64;

class Evaluator {
public:
    Evaluator(Lisp& interpreter, const std::function<AcDbObjectId()>& lastEntity, std::wstring_view expression)
        : lisp(interpreter), entlast(lastEntity), rest(expression) {}

    LispValue whole() {
        LispValue result = value(0);
        skipBlanks();
        if (!rest.empty())
            throw LispError("extra text behind the expression");
        return result;
    }

    LispValue all() {
        LispValue result;
        for (skipBlanks(); !rest.empty(); skipBlanks())
            result = value(0);
        return result;
    }

private:
    void skipBlanks() {
        constexpr std::wstring_view blanks = L" \n\t\r\f\uFEFF";
        while (!rest.empty()) {
            if (rest[0] == L';')
                rest.remove_prefix(std::min(rest.find(L'\n'), rest.size()));
            else if (blanks.find(rest[0]) != std::wstring_view::npos)
                rest.remove_prefix(1);
            else
                return;
        }
    }

    wchar_t next() {
        skipBlanks();
        if (rest.empty())
            throw LispError("malformed list on input");
        return rest[0];
    }

    LispValue value(int depth) {
        if (depth > deepestNesting)
            throw LispError("expression nested too deep");
        const wchar_t first = next();
        if (first == L'"')
            return quoted();
        if (first == L'(')
            return call(depth);
        if (first == L')')
            throw LispError("extra right paren on input");
        return atom(word());
    }

    LispValue quoted() {
        std::wstring text;
        rest.remove_prefix(1);
        while (!rest.empty() && rest[0] != L'"') {
            if (rest[0] == L'\\' && rest.size() > 1) {
                rest.remove_prefix(1);
                text += rest[0] == L'n' ? L'\n' : rest[0] == L't' ? L'\t' : rest[0];
            } else {
                text += rest[0];
            }
            rest.remove_prefix(1);
        }
        if (rest.empty())
            throw LispError("malformed string on input");
        rest.remove_prefix(1);
        return text;
    }

    std::wstring word() {
        const auto end = std::min(rest.find_first_of(L" \n\t\r\f;()\""), rest.size());
        std::wstring text(rest.substr(0, end));
        rest.remove_prefix(end);
        return text;
    }

    LispValue atom(const std::wstring& text) {
        if (const auto whole = parseWholeNumber(text);
            whole && *whole >= std::numeric_limits<int>::min() && *whole <= std::numeric_limits<int>::max())
            return static_cast<int>(*whole);
        if (const auto real = parseNumber(text))
            return *real;
        return lisp.symbol(text);
    }

    LispValue call(int depth) {
        rest.remove_prefix(1);
        if (next() == L')') {
            rest.remove_prefix(1);
            return {};
        }
        const std::wstring function = upperCased(word());
        LispValue result;
        if (function == L"SETQ") {
            while (next() != L')') {
                const std::wstring name = word();
                if (name.empty())
                    throw LispError("setq needs a symbol");
                result = value(depth + 1);
                lisp.setSymbol(name, result);
            }
        } else if (function == L"ENTLAST") {
            if (const AcDbObjectId last = entlast(); !last.isNull())
                result = last;
        } else {
            throw LispError("no function definition: " + toUtf8(function));
        }
        if (next() != L')')
            throw LispError("too many arguments");
        rest.remove_prefix(1);
        return result;
    }

    Lisp& lisp;
    const std::function<AcDbObjectId()>& entlast;
    std::wstring_view rest;
};

} // namespace

Lisp::Lisp(std::function<AcDbObjectId()> lastEntity) : entlast(std::move(lastEntity)) {}

LispValue Lisp::symbol(std::wstring_view name) const {
    const auto found = symbols.find(upperCased(name));
    return found == symbols.end() ? LispValue() : found->second;
}

void Lisp::setSymbol(std::wstring_view name, LispValue value) {
    if (std::holds_alternative<std::monostate>(value))
        symbols.erase(upperCased(name));
    else
        symbols[upperCased(name)] = std::move(value);
}

LispValue Lisp::evaluate(std::wstring_view expression) {
    return Evaluator(*this, entlast, expression).whole();
}

LispValue Lisp::evaluateAll(std::wstring_view expressions) {
    return Evaluator(*this, entlast, expressions).all();
}

std::wstring Lisp::text(const LispValue& value) {
    if (const auto* const text = std::get_if<std::wstring>(&value))
        return L"\"" + *text + L"\"";
    if (const auto* const real = std::get_if<double>(&value))
        return numberText(*real);
    if (const auto* const whole = std::get_if<int>(&value))
        return std::to_wstring(*whole);
    if (const auto* const object = std::get_if<AcDbObjectId>(&value)) {
        std::wstring digits;
        for (auto handle = object->handle; handle != 0; handle >>= 4)
            digits.insert(digits.begin(), L"0123456789abcdef"[handle & 15]);
        return L"<Entity name: " + digits + L">";
    }
    return L"nil";
}

} // namespace editor
