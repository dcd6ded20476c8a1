#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace dwg {

enum class ErrorKind {
    io,          ///< The file can't be opened or read.
    notADrawing, ///< No magic of a release that this codec knows.
    unsupported, ///< A known release or feature that isn't read or written here.
    truncated,   ///< The file or a section ends before what was promised.
    damaged,     ///< Values that contradict each other or lie outside their range.
    tooLarge,    ///< More than this codec agrees to hold in memory.
    missing,     ///< A section, record or object that isn't there.
    invalid      ///< The caller's data can't be stored.
};

/// The word for a kind, for messages: "io", "not a drawing", ...
const char* kindName(ErrorKind kind);

/// Why an operation failed. `offset` is the position in the file or, where the reason names a section, in that section.
struct Error {
    ErrorKind kind = ErrorKind::damaged;
    std::string reason;
    std::uint64_t offset = 0;
};

/// Damage that didn't stop the reading: what was found, in which section or object, at which byte of it.
struct Finding {
    std::string place;
    std::string reason;
    std::uint64_t offset = 0;
};
using Findings = std::vector<Finding>;

/// A value or an Error. Converts from both; test it before taking the value.
template <typename T> class [[nodiscard]] Result {
public:
    Result(T value) : content(std::in_place_index<0>, std::move(value)) {}
    Result(Error error) : content(std::in_place_index<1>, std::move(error)) {}

    bool ok() const { return content.index() == 0; }
    explicit operator bool() const { return ok(); }

    T& value() & { return std::get<0>(content); }
    const T& value() const& { return std::get<0>(content); }
    T&& value() && { return std::get<0>(std::move(content)); }
    T& operator*() & { return value(); }
    const T& operator*() const& { return value(); }
    T&& operator*() && { return std::move(*this).value(); }
    T* operator->() { return &value(); }
    const T* operator->() const { return &value(); }

    const Error& error() const { return std::get<1>(content); }

private:
    std::variant<T, Error> content;
};

/// Success without a value, or an Error.
template <> class [[nodiscard]] Result<void> {
public:
    Result() = default;
    Result(Error error) : failure(std::move(error)) {}

    bool ok() const { return !failure.has_value(); }
    explicit operator bool() const { return ok(); }
    const Error& error() const { return *failure; }

private:
    std::optional<Error> failure;
};

} // namespace dwg
