#include "editor/dwg/checks_2007.h"
#include "editor/dwg/container_writer.h"
#include "editor/dwg/lz_2007.h"
#include "editor/dwg/reed_solomon.h"
#include "editor/dwg/section_names.h"
#include "editor/dwg/thumbnail.h"

#include <algorithm>
#include <unordered_map>

namespace dwg {

namespace {

constexpr std::size_t firstPageOffset = 0x480;
constexpr std::size_t fileHeaderOffset = 0x80;
constexpr std::size_t fileHeaderSize = firstPageOffset - fileHeaderOffset;
constexpr std::size_t fileHeaderWords = 3;
constexpr std::size_t pageAlignment = 0x20;
constexpr std::size_t largestPage = 0xF800;
constexpr std::size_t checkUnit = 8;
constexpr std::size_t leastSystemPage = 0x400;

/// Packed bytes, or the bytes themselves where packing doesn't help: equal sizes then tell that.
Bytes packedOrPlain(ByteView plain) {
    Bytes packed = pack2007(plain);
    return packed.size() < plain.size() ? packed : Bytes(plain.begin(), plain.end());
}

/// A map, repeated within its code words as often as they hold it.
struct SystemPage {
    Bytes plain, packed, coded;
    std::size_t copies = 0;

    explicit SystemPage(Bytes map) : plain(std::move(map)), packed(packedOrPlain(plain)) {
        constexpr std::size_t leastCopies = 5;
        const std::size_t unit = roundedUp(packed.size(), checkUnit);
        const std::size_t size =
            std::max(leastSystemPage, roundedUp(wordsOf(unit * leastCopies) * codeWordLength, pageAlignment));
        copies = size / codeWordLength * systemDataLength / unit;
        Bytes data;
        for (std::size_t i = 0; i < copies; ++i) {
            data.resize(i * unit);
            appendBytes(data, packed);
        }
        coded = interleave(data, wordsOf(unit * copies), systemDataLength);
        coded.resize(size);
    }

private:
    static std::size_t wordsOf(std::size_t bytes) { return (bytes + systemDataLength - 1) / systemDataLength; }
};

/// A page of a section as the section map tells it.
struct Piece {
    std::size_t start = 0;
    std::size_t number = 0;
    std::size_t plainSize = 0, storedSize = 0;
    std::uint32_t checksum = 0;
    std::uint64_t check = 0;
};

struct WrittenSection {
    const SectionBytes* section = nullptr;
    std::size_t pageSize = 0;
    std::vector<Piece> pieces;
};

/// A page of a packed section, as it will lie in the file wherever that is.
struct CodedPage {
    Piece piece;
    Bytes coded;
};

class Writer {
public:
    explicit Writer(const FileContent& from) : content(from) {}

    Result<Bytes> run() {
        for (const SectionBytes* section : inMapOrder(content))
            written.push_back({section, formOf(section->name).pageSize2007, {}});
        packSections();
        // All lies behind the two copies of the page map, whose size depends on what they tell of the rest.
        std::size_t pageMapSize = leastSystemPage;
        constexpr int triesToShrink = 4;
        for (int tries = 0;; ++tries) {
            if (auto done = layOut(pageMapSize); !done)
                return done.error();
            const SystemPage sectionMap(sectionMapBytes());
            const std::size_t sectionMapNumber = firstPageNumber + pageSizes.size();
            for (int copy = 0; copy < 2; ++copy)
                endPage(sectionMap.coded);
            const SystemPage pageMap(pageMapBytes(pageMapSize));
            const std::size_t needed = pageMap.coded.size();
            if (needed == pageMapSize || (needed < pageMapSize && tries > triesToShrink)) {
                for (std::size_t copy = 0; copy < 2; ++copy)
                    std::ranges::copy(pageMap.coded,
                                      file.begin() + static_cast<std::ptrdiff_t>(firstPageOffset + copy * pageMapSize));
                writeFileHeader(pageMap, pageMapSize, sectionMap, sectionMapNumber);
                return std::move(file);
            }
            pageMapSize = needed;
        }
    }

private:
    static constexpr std::size_t firstPageNumber = 3;
    /// Between the numbers of the section map and those of the page map two are left out.
    std::size_t pageMapNumber() const { return firstPageNumber + pageSizes.size() + 2; }

    void packSections() {
        for (const WrittenSection& one : written) {
            if (!formOf(one.section->name).packed)
                continue;
            const ByteView bytes = one.section->bytes;
            std::vector<CodedPage>& pages = codedPages[one.section];
            for (std::size_t start = 0; start < bytes.size(); start += largestPage) {
                const ByteView plain = bytes.subspan(start, std::min(largestPage, bytes.size() - start));
                const Bytes stored = packedOrPlain(plain);
                const std::size_t words = (roundedUp(stored.size(), checkUnit) + pageDataLength - 1) / pageDataLength;
                pages.push_back({makePiece(start, plain, stored), interleave(stored, words, pageDataLength)});
            }
        }
    }

    static Piece makePiece(std::size_t start, ByteView plain, ByteView stored) {
        return {start, 0, plain.size(), stored.size(), pageChecksum2007(plain), pageCheck2007(stored)};
    }

    Result<void> layOut(std::size_t pageMapSize) {
        file = content.start;
        file.resize(firstPageOffset + 2 * pageMapSize);
        pageSizes.clear();
        for (const SectionBytes* section : inFileOrder(content)) {
            WrittenSection& target = *std::ranges::find(written, section, &WrittenSection::section);
            target.pieces.clear();
            if (!formOf(section->name).packed)
                writePlain(target);
            else
                for (const CodedPage& page : codedPages[section])
                    writePage(target, page.piece, page.coded);
            if (file.size() > largestFile)
                return Error{ErrorKind::tooLarge, "drawing above 2 GiB", 0};
        }
        return {};
    }

    void writePlain(WrittenSection& target) {
        const SectionForm& form = formOf(target.section->name);
        Bytes page = target.section->bytes;
        if (page.empty())
            return;
        target.pageSize = roundedUp(page.size(), form.unit);
        const auto address = static_cast<std::uint32_t>(file.size());
        if (form.name == section::preview)
            moveImageSection(page, address);
        setSectionPlace(file, form.name, address);
        const Piece piece = makePiece(0, page, page);
        page.resize(roundedUp(page.size(), checkUnit));
        appendBytes(page, pageParity(page));
        page.resize(std::max(page.size(), target.pageSize));
        writePage(target, piece, page);
    }

    void writePage(WrittenSection& target, Piece piece, ByteView coded) {
        piece.number = firstPageNumber + pageSizes.size();
        target.pieces.push_back(piece);
        endPage(coded);
    }

    void endPage(ByteView page) {
        const std::size_t size = roundedUp(page.size(), pageAlignment);
        appendBytes(file, page);
        file.resize(file.size() + size - page.size());
        pageSizes.push_back(size);
    }

    Bytes sectionMapBytes() const {
        constexpr std::uint64_t interleaved = 4, plainRow = 1;
        Bytes out;
        const auto append = [&out](std::initializer_list<std::uint64_t> fields) {
            for (const std::uint64_t field : fields)
                appendU64(out, field);
        };
        for (const WrittenSection& one : written) {
            const SectionForm& form = formOf(one.section->name);
            const std::string& name = one.section->name;
            append({one.section->bytes.size(), one.pageSize, form.encryption, form.nameCode, 2 * (name.size() + 1), 0,
                    form.packed ? interleaved : plainRow, one.pieces.size()});
            for (std::size_t i = 0; i <= name.size(); ++i) {
                out.push_back(i < name.size() ? static_cast<std::uint8_t>(name[i]) : 0);
                out.push_back(0);
            }
            for (const Piece& piece : one.pieces)
                append({piece.start, one.pageSize, piece.number, piece.plainSize, piece.storedSize, piece.checksum,
                        piece.check});
        }
        append({0, largestPage, 0, 0, 0, 0, interleaved, 0}); // one without a name ends the list
        return out;
    }

    Bytes pageMapBytes(std::size_t pageMapSize) const {
        Bytes out;
        for (std::size_t copy = 0; copy < 2; ++copy) {
            appendU64(out, pageMapSize);
            appendU64(out, pageMapNumber() + copy);
        }
        for (std::size_t i = 0; i < pageSizes.size(); ++i) {
            appendU64(out, pageSizes[i]);
            appendU64(out, firstPageNumber + i);
        }
        return out;
    }

    void writeFileHeader(const SystemPage& pageMap, std::size_t pageMapSize, const SystemPage& sectionMap,
                         std::size_t sectionMapNumber) {
        const std::size_t repeatedAt = file.size();
        const std::size_t fileSize = repeatedAt + fileHeaderSize;
        constexpr std::uint64_t headerSize = 0x70, streamVersion = 0x60100;
        Bytes record;
        for (const std::uint64_t field : {headerSize,
                                          std::uint64_t{fileSize},
                                          pageCheck2007(pageMap.packed),
                                          std::uint64_t{pageMap.copies},
                                          std::uint64_t{0},
                                          std::uint64_t{pageMapSize},
                                          std::uint64_t{pageMapNumber() + 1},
                                          std::uint64_t{0},
                                          std::uint64_t{pageMapNumber()},
                                          std::uint64_t{repeatedAt - firstPageOffset},
                                          std::uint64_t{pageMap.packed.size()},
                                          std::uint64_t{pageMap.plain.size()},
                                          std::uint64_t{pageSizes.size() + 2},
                                          std::uint64_t{pageMapNumber() + 1},
                                          std::uint64_t{0x20},
                                          std::uint64_t{0x40},
                                          pageCheck2007(pageMap.plain),
                                          std::uint64_t{largestPage},
                                          std::uint64_t{4},
                                          std::uint64_t{1},
                                          std::uint64_t{written.size() + 1},
                                          pageCheck2007(sectionMap.plain),
                                          std::uint64_t{sectionMap.packed.size()},
                                          std::uint64_t{sectionMapNumber + 1},
                                          std::uint64_t{sectionMapNumber},
                                          std::uint64_t{sectionMap.plain.size()},
                                          pageCheck2007(sectionMap.packed),
                                          std::uint64_t{sectionMap.copies},
                                          std::uint64_t{0},
                                          streamVersion,
                                          std::uint64_t{0},
                                          std::uint64_t{0},
                                          std::uint64_t{0},
                                          std::uint64_t{0}})
            appendU64(record, field);
        putU64(record, record.size() - 8, headerCheck2007(record));

        const Bytes packed = pack2007(record);
        const std::uint64_t key = fileSize;
        Bytes unit;
        appendU64(unit, keyCheck2007(key));
        appendU64(unit, key);
        appendU64(unit, headerCheck2007(packed));
        appendU64(unit, packed.size());
        appendBytes(unit, packed);
        unit.resize(roundedUp(unit.size(), checkUnit));
        Bytes data;
        while (data.size() + unit.size() <= fileHeaderWords * systemDataLength)
            appendBytes(data, unit);

        Bytes header = interleave(data, fileHeaderWords, systemDataLength);
        header.resize(fileHeaderSize - checkDataLength2007);
        appendBytes(header, checkData2007(key, fileSize ^ repeatedAt, 0));
        std::ranges::copy(header, file.begin() + fileHeaderOffset);
        appendBytes(file, header);
    }

    const FileContent& content;
    Bytes file;
    std::vector<WrittenSection> written;
    std::unordered_map<const SectionBytes*, std::vector<CodedPage>> codedPages;
    /// From the first page behind the page maps on.
    std::vector<std::size_t> pageSizes;
};

} // namespace

Result<Bytes> writeFile2007(const FileContent& content) {
    return Writer(content).run();
}

} // namespace dwg
