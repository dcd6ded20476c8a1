#include "editor/dwg/checksum.h"
#include "editor/dwg/container_writer.h"
#include "editor/dwg/crc.h"
#include "editor/dwg/image_section.h"
#include "editor/dwg/lz_2004.h"
#include "editor/dwg/paged_format.h"
#include "editor/dwg/section_names.h"
#include "editor/dwg/thumbnail.h"

#include <algorithm>
#include <string_view>

namespace dwg {

namespace {

using namespace paged;

/// A page by its place; its number is its index plus one.
struct Page {
    std::size_t offset = 0;
    std::size_t size = 0;
};

/// A piece of a section, for the section map.
struct Piece {
    std::uint32_t page = 0;
    std::uint32_t storedSize = 0;
    std::uint64_t start = 0;
};

struct WrittenSection {
    const SectionBytes* section = nullptr;
    std::size_t pageSize = dataPageSize;
    std::vector<Piece> pieces;
};

class Writer {
public:
    explicit Writer(const FileContent& from) : content(from) {}

    Result<Bytes> run() {
        file = content.start;
        file.resize(firstPageOffset);
        // Numbers count down from the number of sections in the order of the section map.
        for (const SectionBytes* section : inMapOrder(content))
            written.push_back({section, dataPageSize, {}});
        for (const SectionBytes* section : inFileOrder(content)) {
            const auto place = std::ranges::find(written, section, &WrittenSection::section);
            const auto number = static_cast<std::uint32_t>(written.end() - place);
            writeSection(*place, number);
            if (file.size() > largestFile)
                return Error{ErrorKind::tooLarge, "drawing above 2 GiB", 0};
        }
        const std::uint32_t sectionMap = writeSystemPage(sectionMapType, sectionMapBytes());
        writePageMap();
        writeFileHeader(sectionMap);
        return std::move(file);
    }

private:
    std::uint32_t endPage(std::size_t offset) {
        MaskSequence filling;
        while (file.size() % pageAlignment != 0)
            file.push_back(filling.next());
        pages.push_back({offset, file.size() - offset});
        return static_cast<std::uint32_t>(pages.size());
    }

    void writeSection(WrittenSection& target, std::uint32_t number) {
        const SectionForm& form = formOf(target.section->name);
        const ByteView bytes = target.section->bytes;
        if (!form.packed && !bytes.empty()) {
            target.pageSize = roundedUp(bytes.size(), form.unit);
            Bytes page(bytes.begin(), bytes.end());
            const auto address = static_cast<std::uint32_t>(file.size() + dataPageHead);
            if (form.name == section::preview)
                moveImageSection(page, address);
            setSectionPlace(file, form.name, address);
            page.resize(target.pageSize);
            writePage(target, number, 0, page);
            return;
        }
        for (std::size_t start = 0; start < bytes.size(); start += dataPageSize) {
            // The last page is filled up with zeros, which cost next to nothing.
            const ByteView part = bytes.subspan(start, std::min(dataPageSize, bytes.size() - start));
            Bytes plain(part.begin(), part.end());
            plain.resize(dataPageSize);
            writePage(target, number, start, pack2004(plain));
        }
    }

    void writePage(WrittenSection& target, std::uint32_t number, std::uint64_t start, ByteView stored) {
        const std::size_t offset = file.size();
        const std::size_t size = roundedUp(dataPageHead + stored.size(), pageAlignment);
        const std::uint32_t check = pageChecksum(stored, 0);
        Bytes head;
        for (const std::uint32_t field :
             {dataPageType, number, static_cast<std::uint32_t>(stored.size()), static_cast<std::uint32_t>(size)})
            appendU32(head, field);
        appendU64(head, start);
        appendU32(head, 0);
        appendU32(head, check);
        putU32(head, 24, pageChecksum(head, check));
        maskPageHead(head, offset);
        appendBytes(file, head);
        appendBytes(file, stored);
        const std::uint32_t page = endPage(offset);
        target.pieces.push_back({page, static_cast<std::uint32_t>(stored.size()), start});
    }

    Bytes sectionMapBytes() const {
        constexpr std::uint32_t packedMark = 2, plainMark = 1;
        constexpr std::size_t nameLength = 64;
        Bytes out;
        // A section without a name leads the list; it counts.
        const auto count = static_cast<std::uint32_t>(written.size() + 1);
        for (const std::uint32_t field : {count, packedMark, static_cast<std::uint32_t>(dataPageSize), 0u, count})
            appendU32(out, field);
        const auto describe = [&](std::string_view name, std::uint64_t size, std::size_t pieces, std::size_t pageSize,
                                  std::uint32_t number, const SectionForm& form) {
            appendU64(out, size);
            for (const std::uint32_t field : {static_cast<std::uint32_t>(pieces), static_cast<std::uint32_t>(pageSize),
                                              1u, form.packed ? packedMark : plainMark, number, form.encryption})
                appendU32(out, field);
            const std::size_t at = out.size();
            out.resize(at + nameLength);
            std::ranges::copy(name.substr(0, nameLength - 1), out.begin() + static_cast<std::ptrdiff_t>(at));
        };
        describe({}, 0, 0, dataPageSize, 0, {});
        for (std::size_t i = 0; i < written.size(); ++i) {
            const WrittenSection& one = written[i];
            describe(one.section->name, one.section->bytes.size(), one.pieces.size(), one.pageSize,
                     static_cast<std::uint32_t>(written.size() - i), formOf(one.section->name));
            for (const Piece& piece : one.pieces) {
                appendU32(out, piece.page);
                appendU32(out, piece.storedSize);
                appendU64(out, piece.start);
            }
        }
        return out;
    }

    void appendSystemPage(std::uint32_t type, ByteView plain) {
        constexpr std::uint32_t packing = 2;
        const Bytes packed = pack2004(plain);
        Bytes head;
        for (const std::uint32_t field :
             {type, static_cast<std::uint32_t>(plain.size()), static_cast<std::uint32_t>(packed.size()), packing, 0u})
            appendU32(head, field);
        putU32(head, 16, pageChecksum(packed, pageChecksum(head, 0)));
        appendBytes(file, head);
        appendBytes(file, packed);
    }

    std::uint32_t writeSystemPage(std::uint32_t type, ByteView plain) {
        const std::size_t offset = file.size();
        appendSystemPage(type, plain);
        return endPage(offset);
    }

    /// The page map lists its own page too, so the size is settled before it is packed.
    void writePageMap() {
        const std::size_t offset = file.size();
        const std::size_t mapSize = 8 * (pages.size() + 1);
        const std::size_t size = roundedUp(systemPageHead + mapSize + mapSize / 8 + 32, pageAlignment);
        pages.push_back({offset, size});
        Bytes map;
        for (std::size_t i = 0; i < pages.size(); ++i) {
            appendU32(map, static_cast<std::uint32_t>(i + 1));
            appendU32(map, static_cast<std::uint32_t>(pages[i].size));
        }
        appendSystemPage(pageMapType, map);
        MaskSequence filling;
        while (file.size() < offset + size)
            file.push_back(filling.next());
    }

    void writeFileHeader(std::uint32_t sectionMap) {
        const auto pageCount = static_cast<std::uint32_t>(pages.size());
        const std::size_t end = file.size();
        Bytes header(headerMark.begin(), headerMark.end());
        header.resize(fileHeaderLength);
        putU32(header, 0x10, fileHeaderLength);
        putU32(header, 0x14, 4);
        putU32(header, 0x24, 1);
        putU32(header, 0x28, pageCount); // the last page
        putU64(header, 0x2C, end - firstPageOffset);
        putU64(header, 0x34, end); // where the header is repeated
        putU32(header, 0x40, pageCount);
        putU32(header, 0x44, 0x20);
        putU32(header, 0x48, 0x80);
        putU32(header, 0x4C, 0x40);
        putU32(header, 0x50, pageCount); // the page map is the last page
        putU64(header, 0x54, pages.back().offset - firstPageOffset);
        putU32(header, 0x5C, sectionMap);
        putU32(header, 0x60, pageCount);
        putU32(header, 0x68, crc32(header));
        MaskSequence mask;
        for (std::uint8_t& byte : header)
            byte = static_cast<std::uint8_t>(byte ^ mask.next());
        std::ranges::copy(header, file.begin() + fileHeaderOffset);
        appendBytes(file, header);
        // Behind the header the sequence of its mask goes on as it would from the start of the file.
        MaskSequence filling;
        for (std::size_t i = 0; i < firstPageOffset; ++i) {
            const std::uint8_t byte = filling.next();
            if (i >= fileHeaderOffset + fileHeaderLength)
                file[i] = byte;
        }
    }

    const FileContent& content;
    Bytes file;
    std::vector<Page> pages;
    std::vector<WrittenSection> written;
};

} // namespace

Result<Bytes> writePagedFile(const FileContent& content) {
    return Writer(content).run();
}

} // namespace dwg
