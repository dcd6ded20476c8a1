#include "editor/dwg/byte_cursor.h"
#include "editor/dwg/checksum.h"
#include "editor/dwg/container.h"
#include "editor/dwg/lz_2004.h"
#include "editor/dwg/paged_format.h"
#include "editor/dwg/paged_sections.h"

#include <unordered_map>

namespace dwg {

namespace {

using namespace paged;

constexpr std::uint32_t largestMap = 16u << 20;

/// The part of the file header that finds the maps.
struct MapPlaces {
    std::uint64_t pageMapOffset = 0;
    std::uint32_t sectionMapPage = 0;
};

Result<MapPlaces> readFileHeader(const Source& source) {
    auto bytes = source.bytes(fileHeaderOffset, fileHeaderLength);
    if (!bytes)
        return bytes.error();
    MaskSequence mask;
    for (auto& byte : *bytes)
        byte = static_cast<std::uint8_t>(byte ^ mask.next());
    if (std::string_view(reinterpret_cast<const char*>(bytes->data()), headerMark.size()) != headerMark)
        return Error{ErrorKind::damaged, "the inner file header doesn't carry its mark", fileHeaderOffset};
    ByteCursor cursor(*bytes, 0x54);
    MapPlaces places;
    const std::uint64_t address = cursor.u64();
    if (address > source.size())
        return Error{ErrorKind::damaged, "the page map lies outside the file", fileHeaderOffset + 0x54};
    places.pageMapOffset = address + firstPageOffset;
    places.sectionMapPage = cursor.u32();
    return places;
}

Result<Bytes> readSystemPage(const Source& source, std::uint64_t offset, std::uint32_t type, const char* name,
                             Findings& findings) {
    auto head = source.bytes(offset, systemPageHead);
    if (!head)
        return head.error();
    ByteCursor cursor(*head);
    const std::uint32_t foundType = cursor.u32();
    const std::uint32_t unpackedSize = cursor.u32();
    const std::uint32_t packedSize = cursor.u32();
    const std::uint32_t packing = cursor.u32();
    const std::uint32_t stored = cursor.u32();
    if (foundType != type)
        return Error{ErrorKind::damaged, std::string("the ") + name + " doesn't begin with its page mark", offset};
    if (unpackedSize > largestMap || unpackedSize > unpackedLimit(source.size()))
        return Error{ErrorKind::tooLarge, std::string("the ") + name + " declares too large a size", offset + 4};
    if (packing != 2)
        return Error{ErrorKind::unsupported, std::string("the ") + name + " is packed in an unknown way", offset + 12};
    auto packed = source.bytes(offset + systemPageHead, packedSize);
    if (!packed)
        return packed.error();

    // The check covers the head with its own field zeroed, then the packed bytes.
    for (std::size_t i = 16; i < systemPageHead; ++i)
        (*head)[i] = 0;
    if (pageChecksum(*packed, pageChecksum(*head, 0)) != stored)
        findings.push_back({name, "the page's checksum doesn't match", offset + 16});

    auto unpacked = unpack2004(*packed, unpackedSize);
    if (!unpacked)
        return Error{unpacked.error().kind, std::string(name) + ": " + unpacked.error().reason,
                     offset + systemPageHead + unpacked.error().offset};
    if (unpacked->size() != unpackedSize)
        findings.push_back({name, "unpacks to fewer bytes than declared", offset + 4});
    return unpacked;
}

using PageOffsets = std::unordered_map<std::uint32_t, std::uint64_t>;

PageOffsets readPageMap(ByteView map) {
    PageOffsets offsets;
    ByteCursor cursor(map);
    std::uint64_t address = firstPageOffset;
    while (cursor.remaining() >= 8) {
        const std::int32_t number = cursor.i32();
        const std::uint32_t size = cursor.u32();
        if (number < 0)
            cursor.skip(16); // a gap, with its place in the tree of gaps
        else
            offsets.emplace(static_cast<std::uint32_t>(number), address);
        address += size;
    }
    return offsets;
}

Result<SectionMap> readSectionMap(ByteView map, const PageOffsets& pages, Findings& findings) {
    ByteCursor cursor(map);
    const std::uint32_t count = cursor.u32();
    cursor.skip(16);
    SectionMap sections;
    for (std::uint32_t i = 0; i < count && !cursor.failed(); ++i) {
        PagedSection section;
        section.size = cursor.u64();
        const std::uint32_t pageCount = cursor.u32();
        const std::uint32_t pageSize = cursor.u32();
        cursor.skip(4);
        section.packed = cursor.u32() == 2;
        cursor.skip(4);
        section.encrypted = cursor.u32() == 1;
        const ByteView name = cursor.take(64);
        std::string text(name.begin(), name.end());
        text.resize(text.find('\0') == std::string::npos ? text.size() : text.find('\0'));
        if (pageCount > cursor.remaining() / 16)
            return Error{ErrorKind::damaged, "section map: more pages are declared than it holds", cursor.position()};
        for (std::uint32_t p = 0; p < pageCount; ++p) {
            const std::uint32_t number = cursor.u32();
            SectionPage page;
            page.size = pageSize;
            cursor.skip(4);
            page.start = cursor.u64();
            if (const auto found = pages.find(number); found != pages.end())
                page.offset = found->second;
            else
                findings.push_back({text, "page " + std::to_string(number) + " isn't in the page map", 0});
            section.pages.push_back(page);
        }
        if (!cursor.failed() && !text.empty())
            sections.emplace(text, std::move(section));
    }
    if (cursor.failed())
        return Error{ErrorKind::truncated, "the section map ends within a section", map.size()};
    return sections;
}

class PagedContainer final : public PagedSections {
public:
    PagedContainer(SourcePtr file, SectionMap sections) : PagedSections(std::move(file), std::move(sections)) {}

private:
    Result<Bytes> readPage(const std::string& name, const PagedSection& section, const SectionPage& page,
                           Findings* findings) const override {
        auto head = file().bytes(page.offset, dataPageHead);
        if (!head)
            return head.error();
        maskPageHead(*head, page.offset);
        ByteCursor cursor(*head);
        const std::uint32_t type = cursor.u32();
        cursor.skip(4);
        const std::uint32_t storedSize = cursor.u32();
        cursor.skip(12); // size and start in the section, told by the section map
        const std::uint32_t headCheck = cursor.u32();
        const std::uint32_t dataCheck = cursor.u32();
        if (type != dataPageType)
            return Error{ErrorKind::damaged, name + ": a page doesn't begin with its page mark", page.offset};
        if (storedSize > storedLimit(page))
            return Error{ErrorKind::tooLarge, name + ": a page is stored in more bytes than it can need",
                         page.offset + 8};
        auto stored = file().bytes(page.offset + dataPageHead, storedSize);
        if (!stored)
            return stored.error();

        if (findings != nullptr) {
            for (std::size_t i = 24; i < 28; ++i)
                (*head)[i] = 0;
            if (pageChecksum(*stored, 0) != dataCheck)
                findings->push_back({name, "the checksum of a page's data doesn't match", page.offset + 28});
            else if (pageChecksum(*head, dataCheck) != headCheck)
                findings->push_back({name, "the checksum of a page's head doesn't match", page.offset + 24});
        }
        if (!section.packed)
            return stored;
        auto unpacked = unpack2004(*stored, page.size);
        if (!unpacked)
            return Error{unpacked.error().kind, name + ": " + unpacked.error().reason,
                         page.offset + dataPageHead + unpacked.error().offset};
        return unpacked;
    }
};

} // namespace

Result<ContainerPtr> openPagedContainer(SourcePtr source, Findings& findings) {
    auto places = readFileHeader(*source);
    if (!places)
        return places.error();
    auto pageMap = readSystemPage(*source, places->pageMapOffset, pageMapType, "page map", findings);
    if (!pageMap)
        return pageMap.error();
    const PageOffsets pages = readPageMap(*pageMap);
    const auto found = pages.find(places->sectionMapPage);
    if (found == pages.end())
        return Error{ErrorKind::damaged, "the section map isn't in the page map", fileHeaderOffset + 0x5C};
    auto sectionMap = readSystemPage(*source, found->second, sectionMapType, "section map", findings);
    if (!sectionMap)
        return sectionMap.error();
    auto sections = readSectionMap(*sectionMap, pages, findings);
    if (!sections)
        return sections.error();
    return ContainerPtr(std::make_shared<PagedContainer>(std::move(source), std::move(*sections)));
}

} // namespace dwg
