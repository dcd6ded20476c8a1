#pragma once

#include "editor/dwg/result.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

namespace dwg {

using Bytes = std::vector<std::uint8_t>;
using ByteView = std::span<const std::uint8_t>;

/// Bytes that are read at an offset, a file or memory, so that the facts of a drawing cost a few reads. Reading
/// doesn't change the object; several threads may read from one Source.
class Source {
public:
    Source() = default;
    virtual ~Source() = default;
    Source(const Source&) = delete;
    Source& operator=(const Source&) = delete;

    virtual std::uint64_t size() const = 0;

    /// Fills `out` from `offset`. A range that doesn't lie whole within the source is `truncated` and reads nothing.
    virtual Result<void> read(std::uint64_t offset, std::span<std::uint8_t> out) const = 0;

    /// `count` bytes from `offset`; nothing is allocated before the range was checked against the size.
    Result<Bytes> bytes(std::uint64_t offset, std::uint64_t count) const;
};

using SourcePtr = std::shared_ptr<const Source>;

/// The path of a file by its wide name, in UTF-8 whatever the locale is.
std::filesystem::path pathOf(std::wstring_view name);

/// Opens a regular file for reading; it stays open as long as the Source lives.
Result<SourcePtr> openSource(const std::filesystem::path& file);

/// A Source over bytes that it owns.
SourcePtr memorySource(Bytes bytes);

} // namespace dwg
