#include "editor/dwg/byte_cursor.h"
#include "editor/dwg/container.h"
#include "editor/dwg/section_names.h"

#include <array>
#include <map>

namespace dwg {

namespace {

constexpr std::uint64_t locatorsOffset = 0x15;
constexpr std::uint32_t mostLocators = 64; // releases store three to six

// By record number.
constexpr std::array<std::string_view, 6> recordNames = {section::header,          section::classes,
                                                         section::handles,         section::objectFreeSpace,
                                                         section::templateSection, section::auxHeader};

struct Extent {
    std::uint64_t offset = 0;
    std::uint64_t size = 0;
};

class FlatContainer final : public Container {
public:
    FlatContainer(SourcePtr file, std::map<std::string, Extent, std::less<>> records)
        : source(std::move(file)), extents(std::move(records)) {}

    std::vector<std::string> names() const override {
        std::vector<std::string> out;
        for (const auto& [name, extent] : extents)
            out.push_back(name);
        return out;
    }

    bool has(std::string_view name) const override { return extents.find(name) != extents.end(); }

    Result<std::uint64_t> size(std::string_view name) const override {
        const auto found = extents.find(name);
        if (found == extents.end())
            return Error{ErrorKind::missing, "the file has no section " + std::string(name), 0};
        return found->second.size;
    }

    Result<Bytes> range(std::string_view name, std::uint64_t offset, std::uint64_t count, Findings*) const override {
        const auto length = size(name);
        if (!length)
            return length.error();
        const Extent& extent = extents.find(name)->second;
        if (offset > extent.size || count > extent.size - offset)
            return Error{ErrorKind::truncated, "section " + std::string(name) + " ends before the bytes asked for",
                         extent.offset + offset};
        if (count > largestSection)
            return Error{ErrorKind::tooLarge, "section " + std::string(name) + " is larger than is read at once",
                         extent.offset};
        return source->bytes(extent.offset + offset, count);
    }

private:
    SourcePtr source;
    std::map<std::string, Extent, std::less<>> extents;
};

} // namespace

Result<ContainerPtr> openFlatContainer(SourcePtr source, Findings& findings) {
    auto countBytes = source->bytes(locatorsOffset, 4);
    if (!countBytes)
        return countBytes.error();
    const std::uint32_t count = ByteCursor(*countBytes).u32();
    if (count > mostLocators)
        return Error{ErrorKind::damaged, "the file header declares " + std::to_string(count) + " records",
                     locatorsOffset};
    auto table = source->bytes(locatorsOffset + 4, std::uint64_t{count} * 9);
    if (!table)
        return table.error();

    std::map<std::string, Extent, std::less<>> extents;
    extents.emplace(section::objects, Extent{0, source->size()});
    ByteCursor cursor(*table);
    for (std::uint32_t i = 0; i < count; ++i) {
        const std::uint64_t at = locatorsOffset + 4 + cursor.position();
        const std::uint8_t number = cursor.u8();
        Extent extent;
        extent.offset = cursor.u32();
        extent.size = cursor.u32();
        if (number >= recordNames.size() || extent.offset == 0)
            continue;
        if (extent.offset > source->size() || extent.size > source->size() - extent.offset) {
            findings.push_back(
                {"file header", "record " + std::to_string(number) + " lies outside the file and is left out", at});
            continue;
        }
        extents.emplace(recordNames[number], extent);
    }
    return ContainerPtr(std::make_shared<FlatContainer>(std::move(source), std::move(extents)));
}

} // namespace dwg
