#include "editor/dwg/summary_info.h"

#include "editor/dwg/bits.h"
#include "editor/dwg/code_page.h"

#include <algorithm>

namespace dwg {

namespace {

constexpr std::size_t longestText = 0x7FFF;

void appendUnit(std::wstring& text, std::uint16_t unit) {
    const bool second = unit >= 0xDC00 && unit <= 0xDFFF;
    if (second && !text.empty() && text.back() >= 0xD800 && text.back() <= 0xDBFF)
        text.back() = static_cast<wchar_t>(0x10000 + ((text.back() - 0xD800) << 10) + (unit - 0xDC00));
    else
        text += static_cast<wchar_t>(unit);
}

std::vector<std::uint16_t> toUtf16(std::wstring_view text) {
    std::vector<std::uint16_t> units;
    for (const wchar_t character : text) {
        const auto code = static_cast<std::uint32_t>(character);
        if (code < 0x10000) {
            units.push_back(static_cast<std::uint16_t>(code));
            continue;
        }
        units.push_back(static_cast<std::uint16_t>(0xD800 + ((code - 0x10000) >> 10)));
        units.push_back(static_cast<std::uint16_t>(0xDC00 + (code & 0x3FF)));
    }
    return units;
}

/// Texts are counted with the zero that ends them.
class Reader {
public:
    Reader(ByteView section, Release from, std::uint16_t codePageNumber)
        : in(section), wide(from >= Release::r2007), codePage(codePageNumber) {}

    BitReader in;

    std::wstring text() {
        const std::size_t count = in.rs();
        if (wide) {
            std::wstring value;
            for (std::size_t i = 0; i < count && !in.failed(); ++i)
                appendUnit(value, in.rs());
            value.resize(std::min(value.find(L'\0'), value.size()));
            return value;
        }
        const std::vector<std::uint8_t> bytes = in.bytes(count);
        const auto end = std::find(bytes.begin(), bytes.end(), 0);
        return codePage.decode(
            {reinterpret_cast<const char*>(bytes.data()), static_cast<std::size_t>(end - bytes.begin())});
    }

    DayAndTime time() {
        DayAndTime value;
        value.day = in.rl();
        value.milliseconds = in.rl();
        return value;
    }

private:
    bool wide;
    CodePage codePage;
};

class Writer {
public:
    Writer(Release to, std::uint16_t codePageNumber) : wide(to >= Release::r2007), codePage(codePageNumber) {}

    BitWriter out;

    void text(std::wstring_view value) {
        if (wide) {
            const std::vector<std::uint16_t> units = toUtf16(value.substr(0, longestText / 2));
            out.rs(static_cast<std::uint16_t>(units.size() + 1));
            for (const std::uint16_t unit : units)
                out.rs(unit);
            out.rs(0);
            return;
        }
        const std::string bytes = codePage.encode(value).substr(0, longestText) + '\0';
        out.rs(static_cast<std::uint16_t>(bytes.size()));
        for (const char byte : bytes)
            out.rc(static_cast<std::uint8_t>(byte));
    }

    void time(DayAndTime value) {
        out.rl(value.day);
        out.rl(value.milliseconds);
    }

private:
    bool wide;
    CodePage codePage;
};

} // namespace

Result<SummaryInfo> readSummaryInfo(const DrawingFile& file, Findings* findings) {
    if (file.release() < Release::r2004)
        return Error{ErrorKind::missing, "drawings of this release have no section with a summary", 0};
    auto bytes = file.section(section::summaryInfo, findings);
    if (!bytes)
        return bytes.error();
    return readSummaryInfo(*bytes, file.release(), file.codePage());
}

Result<SummaryInfo> readSummaryInfo(ByteView section, Release release, std::uint16_t codePage) {
    Reader reader(section, release, codePage);
    SummaryInfo info;
    SummaryTexts& texts = info.texts;
    for (std::wstring* text : {&texts.title, &texts.subject, &texts.author, &texts.keywords, &texts.comments,
                               &texts.lastSavedBy, &texts.revision, &info.hyperlinkBase})
        *text = reader.text();
    info.editingTime = reader.time();
    info.created = reader.time();
    info.updated = reader.time();
    const std::size_t count = reader.in.rs();
    for (std::size_t i = 0; i < count && !reader.in.failed(); ++i) {
        std::wstring name = reader.text();
        info.properties.emplace_back(std::move(name), reader.text());
    }
    if (reader.in.failed())
        return Error{ErrorKind::truncated, "AcDb:SummaryInfo ends before its last property", reader.in.position() / 8};
    return info;
}

Bytes writeSummaryInfo(const SummaryInfo& info, Release release, std::uint16_t codePage) {
    Writer writer(release, codePage);
    const SummaryTexts& texts = info.texts;
    for (const std::wstring* text : {&texts.title, &texts.subject, &texts.author, &texts.keywords, &texts.comments,
                                     &texts.lastSavedBy, &texts.revision, &info.hyperlinkBase})
        writer.text(*text);
    writer.time(info.editingTime);
    writer.time(info.created);
    writer.time(info.updated);
    const std::size_t count = std::min<std::size_t>(info.properties.size(), 0xFFFF);
    writer.out.rs(static_cast<std::uint16_t>(count));
    for (std::size_t i = 0; i < count; ++i) {
        writer.text(info.properties[i].first);
        writer.text(info.properties[i].second);
    }
    writer.time({}); // two numbers that are always zero
    return writer.out.bytes();
}

} // namespace dwg
