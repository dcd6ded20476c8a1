#include "editor/dwg/byte_cursor.h"
#include "editor/dwg/lz_2007.h"
#include "editor/dwg/paged_sections.h"
#include "editor/dwg/reed_solomon.h"

#include <unordered_map>

namespace dwg {

namespace {

constexpr std::uint64_t fileHeaderOffset = 0x80;
constexpr std::size_t fileHeaderWords = 3;
constexpr std::size_t fileHeaderLength = 0x110;
constexpr std::uint64_t firstPageOffset = 0x480;
constexpr std::uint64_t largestMap = 16u << 20;

/// A page of the container's own: where it lies and how its bytes are packed.
struct SystemPage {
    std::uint64_t offset = 0;
    std::uint64_t packedSize = 0;
    std::uint64_t unpackedSize = 0;
    std::uint64_t copies = 0; // the data is repeated so often within the code words
};

struct FileHeader {
    SystemPage pageMap;
    SystemPage sectionMap; // offset still to be looked up by its page number
    std::uint64_t sectionMapPage = 0;
};

std::uint64_t roundUp(std::uint64_t value, std::uint64_t step) {
    return (value + step - 1) / step * step;
}

Result<FileHeader> readFileHeader(const Source& source) {
    auto coded = source.bytes(fileHeaderOffset, fileHeaderWords * codeWordLength);
    if (!coded)
        return coded.error();
    auto data = deinterleave(*coded, fileHeaderWords, systemDataLength);
    if (!data)
        return data.error();
    ByteCursor head(*data, 0x18);
    const std::int32_t length = head.i32();
    head.skip(4);
    // A negative length stands for data that isn't packed.
    const std::uint64_t stored = length < 0 ? -static_cast<std::int64_t>(length) : length;
    const ByteView content = head.take(stored);
    if (head.failed())
        return Error{ErrorKind::damaged, "the file header declares a length beyond its code words", fileHeaderOffset};
    Result<Bytes> plain = Bytes(content.begin(), content.end());
    if (length >= 0)
        plain = unpack2007(content, fileHeaderLength);
    if (!plain)
        return Error{plain.error().kind, "file header: " + plain.error().reason, fileHeaderOffset};

    ByteCursor cursor(*plain, 0x18);
    FileHeader header;
    header.pageMap.copies = cursor.u64();
    cursor.skip(0x38 - 0x20);
    header.pageMap.offset = cursor.u64();
    cursor.skip(0x50 - 0x40);
    header.pageMap.packedSize = cursor.u64();
    header.pageMap.unpackedSize = cursor.u64();
    cursor.skip(0xB0 - 0x60);
    header.sectionMap.packedSize = cursor.u64();
    cursor.skip(0xC0 - 0xB8);
    header.sectionMapPage = cursor.u64();
    header.sectionMap.unpackedSize = cursor.u64();
    cursor.skip(0xD8 - 0xD0);
    header.sectionMap.copies = cursor.u64();
    if (cursor.failed())
        return Error{ErrorKind::truncated, "the file header is shorter than its fields", fileHeaderOffset};
    if (header.pageMap.offset > source.size())
        return Error{ErrorKind::damaged, "the page map lies outside the file", fileHeaderOffset};
    header.pageMap.offset += firstPageOffset;
    return header;
}

Result<Bytes> readSystemPage(const Source& source, const SystemPage& page, const char* name) {
    const std::string text(name);
    if (page.packedSize > source.size() || page.copies > source.size() || page.copies == 0)
        return Error{ErrorKind::damaged, "the " + text + " declares a size beyond the file", page.offset};
    if (page.unpackedSize > largestMap || page.unpackedSize > unpackedLimit(source.size()))
        return Error{ErrorKind::tooLarge, "the " + text + " declares too large a size", page.offset};
    const std::uint64_t dataSize = roundUp(page.packedSize, 8) * page.copies;
    const std::uint64_t words = roundUp(dataSize, systemDataLength) / systemDataLength;
    if (words > source.size() / codeWordLength)
        return Error{ErrorKind::damaged, "the " + text + " declares a size beyond the file", page.offset};
    auto coded = source.bytes(page.offset, words * codeWordLength);
    if (!coded)
        return coded.error();
    auto data = deinterleave(*coded, words, systemDataLength);
    if (!data)
        return data.error();
    data->resize(page.packedSize);
    if (page.packedSize == page.unpackedSize)
        return data;
    auto plain = unpack2007(*data, page.unpackedSize);
    if (!plain)
        return Error{plain.error().kind, text + ": " + plain.error().reason, page.offset};
    return plain;
}

using PageOffsets = std::unordered_map<std::uint64_t, std::uint64_t>;

PageOffsets readPageMap(ByteView map, std::uint64_t fileSize) {
    PageOffsets offsets;
    ByteCursor cursor(map);
    std::uint64_t address = firstPageOffset;
    while (cursor.remaining() >= 16) {
        const std::uint64_t size = cursor.u64();
        const std::int64_t number = cursor.i64(); // negative: a gap
        if (number >= 0)
            offsets.emplace(static_cast<std::uint64_t>(number), address);
        if (size > fileSize)
            break;
        address += size;
    }
    return offsets;
}

std::string asciiName(ByteView utf16) {
    std::string out;
    ByteCursor cursor(utf16);
    while (cursor.remaining() >= 2) {
        const std::uint16_t unit = cursor.u16();
        if (unit == 0)
            break;
        out.push_back(unit < 0x80 ? static_cast<char>(unit) : '?');
    }
    return out;
}

Result<SectionMap> readSectionMap(ByteView map, const PageOffsets& pages, Findings& findings) {
    ByteCursor cursor(map);
    SectionMap sections;
    while (cursor.remaining() >= 64) {
        PagedSection section;
        section.size = cursor.u64();
        cursor.skip(8);                        // largest page; pages tell their own length
        section.encrypted = cursor.u64() == 1; // 2 marks the list of files, which is plain
        cursor.skip(8);
        const std::uint64_t nameLength = cursor.u64();
        cursor.skip(8);
        section.interleaved = cursor.u64() == 4;
        const std::uint64_t pageCount = cursor.u64();
        section.packed = true;
        if (nameLength > cursor.remaining())
            return Error{ErrorKind::damaged, "section map: a name reaches beyond its end", cursor.position()};
        const std::string name = asciiName(cursor.take(nameLength));
        if (pageCount > cursor.remaining() / 56)
            return Error{ErrorKind::damaged, "section map: more pages are declared than it holds", cursor.position()};
        for (std::uint64_t p = 0; p < pageCount; ++p) {
            SectionPage page;
            page.start = cursor.u64();
            cursor.skip(8);
            const std::uint64_t number = cursor.u64();
            page.size = cursor.u64();
            page.packedSize = cursor.u64();
            cursor.skip(16); // checks of a kind that isn't recomputed here
            if (const auto found = pages.find(number); found != pages.end())
                page.offset = found->second;
            else
                findings.push_back({name, "page " + std::to_string(number) + " isn't in the page map", 0});
            section.pages.push_back(page);
        }
        if (!name.empty())
            sections.emplace(name, std::move(section));
    }
    return sections;
}

class Container2007 final : public PagedSections {
public:
    Container2007(SourcePtr file, SectionMap sections) : PagedSections(std::move(file), std::move(sections)) {}

private:
    Result<Bytes> readPage(const std::string& name, const PagedSection& section, const SectionPage& page,
                           Findings*) const override {
        if (page.packedSize > storedLimit(page))
            return Error{ErrorKind::damaged, name + ": a page is stored in more bytes than it can need", page.offset};
        auto data = section.interleaved ? readWords(page) : file().bytes(page.offset, page.packedSize);
        if (!data)
            return data.error();
        if (page.packedSize >= page.size) { // not packed
            data->resize(page.size);
            return data;
        }
        auto plain = unpack2007(*data, page.size);
        if (!plain)
            return Error{plain.error().kind, name + ": " + plain.error().reason, page.offset};
        return plain;
    }

    Result<Bytes> readWords(const SectionPage& page) const {
        const std::uint64_t words = roundUp(roundUp(page.packedSize, 8), pageDataLength) / pageDataLength;
        auto coded = file().bytes(page.offset, words * codeWordLength);
        if (!coded)
            return coded.error();
        auto data = deinterleave(*coded, words, pageDataLength);
        if (data)
            data->resize(page.packedSize);
        return data;
    }
};

} // namespace

Result<ContainerPtr> openContainer2007(SourcePtr source, Findings& findings) {
    auto header = readFileHeader(*source);
    if (!header)
        return header.error();
    auto pageMap = readSystemPage(*source, header->pageMap, "page map");
    if (!pageMap)
        return pageMap.error();
    const PageOffsets pages = readPageMap(*pageMap, source->size());
    const auto found = pages.find(header->sectionMapPage);
    if (found == pages.end())
        return Error{ErrorKind::damaged, "the section map isn't in the page map", fileHeaderOffset};
    header->sectionMap.offset = found->second;
    auto sectionMap = readSystemPage(*source, header->sectionMap, "section map");
    if (!sectionMap)
        return sectionMap.error();
    auto sections = readSectionMap(*sectionMap, pages, findings);
    if (!sections)
        return sections.error();
    return ContainerPtr(std::make_shared<Container2007>(std::move(source), std::move(*sections)));
}

} // namespace dwg
