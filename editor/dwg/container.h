#pragma once

#include "editor/dwg/source.h"
#include "editor/dwg/version.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace dwg {

/// How a release keeps its sections in the file. Immutable once opened: several threads may read sections at once.
class Container {
public:
    Container() = default;
    virtual ~Container() = default;
    Container(const Container&) = delete;
    Container& operator=(const Container&) = delete;

    /// Names of the sections that the file holds.
    virtual std::vector<std::string> names() const = 0;
    virtual bool has(std::string_view name) const = 0;
    /// Length of the section unpacked, `missing` without it.
    virtual Result<std::uint64_t> size(std::string_view name) const = 0;
    /// `count` bytes from `offset` of the unpacked section, unpacking only the pages that are touched. Damage that
    /// leaves the bytes readable is added to `findings` where given.
    virtual Result<Bytes> range(std::string_view name, std::uint64_t offset, std::uint64_t count,
                                Findings* findings) const = 0;
};

/// The largest section that is unpacked, whatever a file declares.
constexpr std::uint64_t largestSection = 128u << 20;

/// What a section of a file of this size may declare as its unpacked length. The packings here reach 255 to 1 at
/// best; drawings stay below ten, and small ones have room for more.
constexpr std::uint64_t unpackedLimit(std::uint64_t fileSize) {
    const std::uint64_t byExpansion = (48u << 20) + fileSize * 12;
    return byExpansion < largestSection ? byExpansion : largestSection;
}

using ContainerPtr = std::shared_ptr<const Container>;

/// R13 to 2000: records found by number through the locators in the file header.
Result<ContainerPtr> openFlatContainer(SourcePtr source, Findings& findings);
/// 2004, 2010, 2013, 2018.
Result<ContainerPtr> openPagedContainer(SourcePtr source, Findings& findings);
/// 2007.
Result<ContainerPtr> openContainer2007(SourcePtr source, Findings& findings);

} // namespace dwg
