#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace platform {
class File;
}

/// Bytes of an archive in their order, as they come out of a file. One thread at a time.
class ArchiveSource {
public:
    virtual ~ArchiveSource() = default;
    /// Bytes read; fewer than asked for only at the end. Throws FileException.
    virtual std::size_t Read(std::uint8_t* to, std::size_t count) = 0;
    /// No more than this is left; less may be.
    virtual std::uint64_t AtMost() const = 0;
};

/// The file from its present position on. The file outlives the source.
std::unique_ptr<ArchiveSource> SourceOfFile(platform::File& file);
std::unique_ptr<ArchiveSource> SourceOfBytes(std::vector<std::uint8_t> bytes);
/// What a zlib stream inflates to, up to `plainLength` bytes. Damage is an early end. A length is believed only as far
/// as the packed bytes can reach.
std::unique_ptr<ArchiveSource> InflatedSource(std::unique_ptr<ArchiveSource> packed, std::uint64_t plainLength);
