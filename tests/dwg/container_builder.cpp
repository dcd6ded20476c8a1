#include "tests/dwg/container_builder.h"

#include "editor/dwg/checksum.h"
#include "editor/dwg/crc.h"
#include "editor/dwg/reed_solomon.h"

#include <algorithm>

namespace tests {

using dwg::Bytes;
using dwg::ByteView;
using dwg::Release;

namespace {

void put32(Bytes& out, std::size_t at, std::uint32_t value) {
    for (int i = 0; i < 4; ++i)
        out[at + static_cast<std::size_t>(i)] = static_cast<std::uint8_t>(value >> i * 8);
}

Bytes literals2004(ByteView plain) {
    Bytes out;
    const std::size_t count = plain.size();
    if (count > 18) {
        std::size_t rest = count - 18;
        out.push_back(0);
        for (; rest > 255; rest -= 255)
            out.push_back(0);
        out.push_back(static_cast<std::uint8_t>(rest));
    } else {
        out.push_back(static_cast<std::uint8_t>(count - 3));
    }
    append(out, plain);
    out.push_back(0x11);
    return out;
}

// Runs of fewer than four bytes can't be packed as literals; zeros behind them fill up the page.
Bytes atLeastFour(ByteView plain) {
    Bytes out(plain.begin(), plain.end());
    out.resize(std::max<std::size_t>(out.size(), 4));
    return out;
}

Bytes systemPage(std::uint32_t type, ByteView plain) {
    const Bytes packed = literals2004(plain);
    Bytes page;
    append32(page, type);
    append32(page, static_cast<std::uint32_t>(plain.size()));
    append32(page, static_cast<std::uint32_t>(packed.size()));
    append32(page, 2);
    append32(page, 0);
    put32(page, 16, dwg::pageChecksum(packed, dwg::pageChecksum(page, 0)));
    append(page, packed);
    return page;
}

Bytes dataPage(std::uint32_t section, std::uint32_t start, std::uint32_t pageSize, ByteView plain,
               std::uint64_t offset) {
    const Bytes packed = literals2004(atLeastFour(plain));
    const std::uint32_t check = dwg::pageChecksum(packed, 0);
    Bytes head;
    append32(head, 0x4163043B);
    append32(head, section);
    append32(head, static_cast<std::uint32_t>(packed.size()));
    append32(head, pageSize);
    append64(head, start);
    append32(head, 0);
    append32(head, check);
    put32(head, 24, dwg::pageChecksum(head, check));
    const auto mask = static_cast<std::uint32_t>(0x4164536B ^ offset);
    for (std::size_t i = 0; i < head.size(); ++i)
        head[i] = static_cast<std::uint8_t>(head[i] ^ mask >> i % 4 * 8);
    append(head, packed);
    return head;
}

void alignTo(Bytes& out, std::size_t step) {
    out.resize((out.size() + step - 1) / step * step);
}

/// Data bytes of interleaved code words; parity stays zero.
Bytes interleaved(ByteView data, std::size_t dataLength) {
    const std::size_t words = (data.size() + dataLength - 1) / dataLength;
    Bytes out(words * dwg::codeWordLength);
    for (std::size_t i = 0; i < data.size(); ++i)
        out[i % dataLength * words + i / dataLength] = data[i];
    return out;
}

} // namespace

void append16(Bytes& out, std::uint32_t value) {
    for (int i = 0; i < 2; ++i)
        out.push_back(static_cast<std::uint8_t>(value >> i * 8));
}

void append32(Bytes& out, std::uint32_t value) {
    append16(out, value);
    append16(out, value >> 16);
}

void append64(Bytes& out, std::uint64_t value) {
    append32(out, static_cast<std::uint32_t>(value));
    append32(out, static_cast<std::uint32_t>(value >> 32));
}

void append(Bytes& out, ByteView bytes) {
    out.insert(out.end(), bytes.begin(), bytes.end());
}

Bytes fileHead(Release release, std::uint32_t imageAddress) {
    Bytes out;
    for (const char character : dwg::magicOf(release))
        out.push_back(static_cast<std::uint8_t>(character));
    out.resize(0x0D);
    append32(out, imageAddress);
    append16(out, 0);
    append16(out, 30);
    out.resize(0x80);
    return out;
}

Bytes buildFlatFile(Release release, const std::vector<std::pair<std::uint8_t, Bytes>>& records) {
    Bytes out = fileHead(release);
    out.resize(0x15);
    append32(out, static_cast<std::uint32_t>(records.size()));
    std::uint32_t offset = 0x100;
    for (const auto& [number, bytes] : records) {
        out.push_back(number);
        append32(out, offset);
        append32(out, static_cast<std::uint32_t>(bytes.size()));
        offset += static_cast<std::uint32_t>(bytes.size());
    }
    out.resize(0x100);
    for (const auto& [number, bytes] : records)
        append(out, bytes);
    return out;
}

Bytes buildPagedFile(Release release, const std::vector<NamedBytes>& sections) {
    constexpr std::uint32_t pageSize = 0x7400;
    Bytes out = fileHead(release);
    out.resize(0x100);
    Bytes pageMap, sectionMap;
    std::uint32_t nextPage = 1;
    const auto close = [&](std::size_t offset) {
        alignTo(out, 0x20);
        append32(pageMap, nextPage++);
        append32(pageMap, static_cast<std::uint32_t>(out.size() - offset));
    };

    append32(sectionMap, static_cast<std::uint32_t>(sections.size()));
    append32(sectionMap, 2);
    append32(sectionMap, pageSize);
    append32(sectionMap, 0);
    append32(sectionMap, static_cast<std::uint32_t>(sections.size()));
    std::uint32_t number = 0;
    for (const auto& [name, bytes] : sections) {
        const bool zeros = std::all_of(bytes.begin(), bytes.end(), [](std::uint8_t byte) { return byte == 0; });
        const auto pages = zeros ? 0u : static_cast<std::uint32_t>((bytes.size() + pageSize - 1) / pageSize);
        append64(sectionMap, bytes.size());
        append32(sectionMap, pages);
        append32(sectionMap, pageSize);
        append32(sectionMap, 1);
        append32(sectionMap, 2);
        append32(sectionMap, ++number);
        append32(sectionMap, 0);
        Bytes field(name.begin(), name.end());
        field.resize(64);
        append(sectionMap, field);
        for (std::uint32_t page = 0; page < pages; ++page) {
            const std::size_t offset = out.size();
            const std::uint32_t start = page * pageSize;
            const ByteView part = ByteView(bytes).subspan(start, std::min<std::size_t>(pageSize, bytes.size() - start));
            const Bytes stored = dataPage(number, start, pageSize, part, offset);
            append32(sectionMap, nextPage);
            append32(sectionMap, static_cast<std::uint32_t>(stored.size()));
            append64(sectionMap, start);
            append(out, stored);
            close(offset);
        }
    }
    const std::uint32_t sectionMapPage = nextPage;
    const std::size_t sectionMapAt = out.size();
    append(out, systemPage(0x4163003B, sectionMap));
    close(sectionMapAt);
    const std::size_t pageMapAt = out.size();
    append(out, systemPage(0x41630E3B, pageMap));

    Bytes header;
    for (const char character : std::string_view("AcFssFcAJMB\0", 12))
        header.push_back(static_cast<std::uint8_t>(character));
    header.resize(0x54);
    append64(header, pageMapAt - 0x100);
    append32(header, sectionMapPage);
    header.resize(0x6C);
    std::uint32_t random = 1;
    for (std::size_t i = 0; i < header.size(); ++i) {
        random = random * 0x343FD + 0x269EC3;
        out[0x80 + i] = static_cast<std::uint8_t>(header[i] ^ random >> 16);
    }
    return out;
}

Bytes buildFile2007(const std::vector<NamedBytes>& sections) {
    Bytes out = fileHead(Release::r2007);
    out.resize(0x480);
    Bytes pageMap, sectionMap;
    std::uint64_t nextPage = 1;
    const auto close = [&](std::size_t offset) {
        alignTo(out, 0x20);
        append64(pageMap, out.size() - offset);
        append64(pageMap, nextPage++);
    };
    for (const auto& [name, bytes] : sections) {
        append64(sectionMap, bytes.size());
        append64(sectionMap, 0xF800);
        append64(sectionMap, 0);
        append64(sectionMap, 0);
        append64(sectionMap, name.size() * 2);
        append64(sectionMap, 0);
        append64(sectionMap, 4);
        append64(sectionMap, 1);
        for (const char character : name)
            append16(sectionMap, static_cast<unsigned char>(character));
        append64(sectionMap, 0);
        append64(sectionMap, bytes.size());
        append64(sectionMap, nextPage);
        append64(sectionMap, bytes.size());
        append64(sectionMap, bytes.size());
        append64(sectionMap, 0);
        append64(sectionMap, 0);
        const std::size_t offset = out.size();
        Bytes data = bytes;
        alignTo(data, 8);
        append(out, interleaved(data, dwg::pageDataLength));
        close(offset);
    }
    const auto appendSystemPage = [&](Bytes data) {
        alignTo(data, 8);
        append(out, interleaved(data, dwg::systemDataLength));
    };
    const std::uint64_t sectionMapPage = nextPage;
    const std::size_t sectionMapAt = out.size();
    appendSystemPage(sectionMap);
    close(sectionMapAt);
    const std::size_t pageMapAt = out.size();
    appendSystemPage(pageMap);

    Bytes fields(0x18);
    append64(fields, 1);
    fields.resize(0x38);
    append64(fields, pageMapAt - 0x480);
    fields.resize(0x50);
    append64(fields, pageMap.size());
    append64(fields, pageMap.size());
    fields.resize(0xB0);
    append64(fields, sectionMap.size());
    fields.resize(0xC0);
    append64(fields, sectionMapPage);
    append64(fields, sectionMap.size());
    fields.resize(0xD8);
    append64(fields, 1);
    fields.resize(0x110);
    Bytes header(0x18);
    append32(header, static_cast<std::uint32_t>(-static_cast<std::int32_t>(fields.size())));
    append32(header, 0);
    append(header, fields);
    header.resize(3 * dwg::systemDataLength);
    const Bytes coded = interleaved(header, dwg::systemDataLength);
    std::copy(coded.begin(), coded.end(), out.begin() + 0x80);
    return out;
}

Bytes guarded(Release release, const Bytes& content, std::size_t referencesAtBit) {
    Bytes body;
    append32(body, static_cast<std::uint32_t>(content.size() + (release >= Release::r2007 ? 4 : 0)));
    if (release >= Release::r2018)
        append32(body, 0);
    if (release >= Release::r2007)
        append32(body, static_cast<std::uint32_t>(referencesAtBit + 32));
    append(body, content);
    const std::uint16_t check = dwg::crc16(body);
    Bytes out(16, 0xA5);
    append(out, body);
    append16(out, check);
    out.resize(out.size() + 16, 0x5A);
    return out;
}

} // namespace tests
