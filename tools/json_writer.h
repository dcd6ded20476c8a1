#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tools {

/// Builds one JSON text, indented by two blanks, in the order of the calls: begin, key, value, end. Text is UTF-8;
/// numbers keep 17 significant digits and follow no locale.
class JsonWriter {
public:
    void beginObject() { begin('{'); }
    void endObject() { end('}'); }
    void beginArray() { begin('['); }
    void endArray() { end(']'); }

    JsonWriter& key(std::string_view name);
    void value(std::string_view text);
    void value(const char* text) { value(std::string_view(text)); }
    void value(std::wstring_view text);
    /// What is no number (infinite, undefined) becomes null.
    void value(double number);
    void value(std::uint64_t number);
    void value(std::int64_t number);
    void value(std::uint32_t number) { value(std::uint64_t{number}); }
    void value(std::int32_t number) { value(std::int64_t{number}); }
    void value(bool truth);
    void null();

    template <class T> void member(std::string_view name, const T& content) {
        key(name);
        value(content);
    }

    const std::string& text() const { return out; }

private:
    void begin(char bracket);
    void end(char bracket);
    /// Comma, line end and indentation ahead of a key or an element.
    void next();
    void quote(std::string_view text);

    std::string out;
    unsigned depth = 0;
    bool first = true; ///< nothing stands in the open bracket yet
    bool afterKey = false;
};

/// UTF-8 of wide text; what is no character becomes U+FFFD.
std::string utf8(std::wstring_view text);

} // namespace tools
