#include "editor/dwg/header_variables.h"

#include "editor/dwg/code_page.h"
#include "editor/dwg/guarded_section.h"

namespace dwg {

namespace {

namespace kind = header_kind;

/// Reads one variable after the other; the three streams are one before 2007.
class Reader {
public:
    Reader(GuardedSection& section, Release from, std::uint16_t codePageNumber)
        : release(from), data(section.data), text(section.text), handles(section.handles), codePage(codePageNumber),
          separate(from >= Release::r2007) {}

    const Release release;

    bool failed() const { return data.failed() || text.failed() || handles.failed(); }
    std::size_t bit() const { return data.position(); }

    void field(kind::B, bool& value) { value = data.b(); }
    void field(kind::RC, std::int16_t& value) { value = data.rc(); }
    void field(kind::BS, std::int16_t& value) { value = static_cast<std::int16_t>(data.bs()); }
    void field(kind::BL, std::int32_t& value) { value = static_cast<std::int32_t>(data.bl()); }
    void field(kind::BLL, std::uint64_t& value) { value = data.bll(); }
    void field(kind::BD, double& value) { value = data.bd(); }
    void field(kind::BD3, Point3& value) { value = data.bd3(); }
    void field(kind::RD2, Point2& value) { value = data.rd2(); }
    void field(kind::TD, DayAndTime& value) {
        value.day = data.bl();
        value.milliseconds = data.bl();
    }
    void field(kind::SEED, Handle& value) { value = data.h().value; }
    void field(kind::H, HandleRef& value) { value = separate ? handles.h() : data.h(); }
    void field(kind::T, std::wstring& value) { value = separate ? text.tu() : codePage.decode(data.t()); }
    void field(kind::CMC, Color& value) {
        const auto index = static_cast<std::int16_t>(data.bs());
        if (release < Release::r2004) {
            value = Color{index};
            return;
        }
        value = unpackedColor(data.bl(), index);
        const std::uint8_t named = data.rc();
        std::wstring ignored; // names of the colour and of its book
        if ((named & 1) != 0)
            field(kind::T{}, ignored);
        if ((named & 2) != 0)
            field(kind::T{}, ignored);
    }

private:
    BitReader& data;
    BitReader& text;
    BitReader& handles;
    CodePage codePage;
    bool separate;
};

class Writer {
public:
    Writer(Release to, std::uint16_t codePageNumber)
        : release(to), codePage(codePageNumber), separate(to >= Release::r2007) {}

    const Release release;

    Bytes bytes() const { return content.bytes(release); }

    void field(kind::B, bool value) { data.b(value); }
    void field(kind::RC, std::int16_t value) { data.rc(static_cast<std::uint8_t>(value)); }
    void field(kind::BS, std::int16_t value) { data.bs(static_cast<std::uint16_t>(value)); }
    void field(kind::BL, std::int32_t value) { data.bl(static_cast<std::uint32_t>(value)); }
    void field(kind::BLL, std::uint64_t value) { data.bll(value); }
    void field(kind::BD, double value) { data.bd(value); }
    void field(kind::BD3, Point3 value) { data.bd3(value); }
    void field(kind::RD2, Point2 value) { data.rd2(value); }
    void field(kind::TD, DayAndTime value) {
        data.bl(value.day);
        data.bl(value.milliseconds);
    }
    void field(kind::SEED, Handle value) { data.h({handle_code::none, value}); }
    void field(kind::H, HandleRef value) { (separate ? content.handles : data).h(value); }
    void field(kind::T, const std::wstring& value) {
        if (separate)
            content.texts.tu(value);
        else
            data.t(codePage.encode(value));
    }
    void field(kind::CMC, const Color& value) {
        if (release < Release::r2004) {
            data.bs(static_cast<std::uint16_t>(value.index));
            return;
        }
        data.bs(0);
        data.bl(packedColor(value));
        data.rc(0);
    }

private:
    GuardedContent content;
    BitWriter& data = content.data;
    CodePage codePage;
    bool separate;
};

template <class Stream, class Variables> void transfer(Stream& stream, Variables& variables) {
#define HEADER_FIELD(kindName, name, first, last, ...)                                                                 \
    if (Release::first <= stream.release && stream.release <= Release::last)                                           \
        stream.field(kind::kindName{}, variables.name);
#define HEADER_FIELD_AGAIN(kindName, name, first, last) HEADER_FIELD(kindName, name, first, last)
#define HEADER_FIELD_WHEN(condition, kindName, name, first, last, ...)                                                 \
    if (Release::first <= stream.release && stream.release <= Release::last && (condition))                            \
        stream.field(kind::kindName{}, variables.name);
#include "editor/dwg/header_fields.inc"
}

} // namespace

Result<HeaderVariables> readHeaderVariables(const DrawingFile& file, Findings* findings) {
    auto bytes = file.section(section::header, findings);
    if (!bytes)
        return bytes.error();
    auto section = openGuardedSection(std::move(*bytes), file.release(), file.maintenance(), "AcDb:Header", findings);
    if (!section)
        return section.error();
    Reader reader(*section, file.release(), file.codePage());
    HeaderVariables variables;
    transfer(reader, variables);
    if (reader.failed())
        return Error{ErrorKind::truncated, "AcDb:Header ends before its last variable", reader.bit() / 8};
    return variables;
}

Bytes writeHeaderVariables(const HeaderVariables& variables, std::uint16_t codePage, Release release) {
    Writer writer(release, codePage);
    transfer(writer, variables);
    return writer.bytes();
}

} // namespace dwg
