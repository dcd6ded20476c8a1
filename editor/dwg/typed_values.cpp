#include "editor/dwg/typed_values.h"

#include "editor/dwg/bits.h"

#include <algorithm>
#include <array>
#include <limits>

namespace dwg {

namespace {

/// What follows a code.
enum class Form : std::uint8_t { unknown, text, chunk, one, two, four, eight, point };

constexpr std::size_t sizeOf(Form form) {
    constexpr std::array<std::size_t, 8> sizes = {0, 0, 0, 1, 2, 4, 8, 24};
    return sizes[static_cast<std::size_t>(form)];
}

/// By the code of extended data less 1000.
Form formOfExtended(unsigned code) {
    if (code == 0 || code == 1)
        return Form::text;
    if (code == 2)
        return Form::one;
    if (code == 3 || code == 5)
        return Form::eight;
    if (code == 4)
        return Form::chunk;
    if (code >= 10 && code <= 13)
        return Form::point;
    if (code >= 40 && code <= 42)
        return Form::eight;
    if (code == 70)
        return Form::two;
    return code == 71 ? Form::four : Form::unknown;
}

struct Range {
    unsigned first, last;
    Form form;
};

constexpr Range recordForms[] = {
    {0, 4, Form::text},        {5, 5, Form::text},       {6, 9, Form::text},        {10, 39, Form::point},
    {40, 59, Form::eight},     {60, 79, Form::two},      {90, 99, Form::four},      {100, 102, Form::text},
    {105, 105, Form::text},    {110, 119, Form::point},  {120, 149, Form::eight},   {160, 169, Form::eight},
    {170, 179, Form::two},     {210, 219, Form::point},  {220, 239, Form::eight},   {270, 279, Form::two},
    {280, 299, Form::one},     {300, 309, Form::text},   {310, 319, Form::chunk},   {320, 369, Form::eight},
    {370, 389, Form::two},     {390, 399, Form::eight},  {400, 409, Form::two},     {410, 419, Form::text},
    {420, 429, Form::four},    {430, 439, Form::text},   {440, 459, Form::four},    {460, 469, Form::eight},
    {470, 479, Form::text},    {480, 481, Form::eight},  {999, 1002, Form::text},   {1003, 1003, Form::text},
    {1004, 1004, Form::chunk}, {1005, 1005, Form::text}, {1010, 1013, Form::point}, {1040, 1042, Form::eight},
    {1070, 1070, Form::two},   {1071, 1071, Form::four},
};

Form formOfRecord(unsigned code) {
    for (const Range& range : recordForms)
        if (code >= range.first && code <= range.last)
            return range.form;
    return Form::unknown;
}

/// The two kinds of list differ in the width of the code and of a narrow text's length.
struct Layout {
    bool wideCodes;
    bool wideLengths;
    Form (*formOf)(unsigned);
};
constexpr Layout extendedData{false, false, formOfExtended};
constexpr Layout recordValues{true, true, formOfRecord};

class Converter {
public:
    Converter(ByteView data, const Layout& kind, Release from, Release to, const CodePage& page, std::uint16_t number)
        : in(data), layout(kind), isWide(from >= Release::r2007), becomesWide(to >= Release::r2007), codePage(page),
          codePageNumber(number) {}

    std::optional<Bytes> run() {
        while (in.remaining() > 0) {
            const unsigned code = layout.wideCodes ? in.rs() : in.rc();
            if (layout.wideCodes)
                out.rs(static_cast<std::uint16_t>(code));
            else
                out.rc(static_cast<std::uint8_t>(code));
            const Form form = layout.formOf(code);
            if (form == Form::unknown || in.failed())
                return std::nullopt;
            if (form == Form::text) {
                writeText(readText());
            } else if (form == Form::chunk) {
                const std::uint8_t size = in.rc();
                out.rc(size);
                out.append(in.bytes(size));
            } else {
                out.append(in.bytes(sizeOf(form)));
            }
            if (in.failed())
                return std::nullopt;
        }
        return out.bytes();
    }

private:
    std::wstring readText() {
        if (isWide)
            return in.tr();
        const std::size_t length = layout.wideLengths ? in.rs() : in.rc();
        if (layout.wideLengths)
            in.rc(); // code page
        else
            in.rs();
        const std::vector<std::uint8_t> bytes = in.bytes(length);
        return codePage.decode({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
    }

    void writeText(const std::wstring& text) {
        if (becomesWide) {
            out.tr(text);
            return;
        }
        constexpr std::size_t longest = std::numeric_limits<std::uint8_t>::max();
        std::string narrow = codePage.encode(text);
        if (layout.wideLengths) {
            narrow.resize(std::min<std::size_t>(narrow.size(), std::numeric_limits<std::int16_t>::max()));
            out.rs(static_cast<std::uint16_t>(narrow.size()));
            out.rc(static_cast<std::uint8_t>(codePageNumber));
        } else {
            narrow.resize(std::min(narrow.size(), longest));
            out.rc(static_cast<std::uint8_t>(narrow.size()));
            out.rs(static_cast<std::uint16_t>(codePageNumber << 8));
        }
        for (const char byte : narrow)
            out.rc(static_cast<std::uint8_t>(byte));
    }

    BitReader in;
    BitWriter out;
    const Layout& layout;
    bool isWide, becomesWide;
    const CodePage& codePage;
    std::uint16_t codePageNumber;
};

std::optional<Bytes> convert(ByteView data, const Layout& layout, Release from, Release to, const CodePage& codePage,
                             std::uint16_t number) {
    if ((from >= Release::r2007) == (to >= Release::r2007))
        return Bytes(data.begin(), data.end());
    return Converter(data, layout, from, to, codePage, number).run();
}

} // namespace

std::optional<Bytes> convertExtendedData(ByteView data, Release from, Release to, const CodePage& codePage,
                                         std::uint16_t codePageNumber) {
    return convert(data, extendedData, from, to, codePage, codePageNumber);
}

std::optional<Bytes> convertRecordValues(ByteView data, Release from, Release to, const CodePage& codePage,
                                         std::uint16_t codePageNumber) {
    return convert(data, recordValues, from, to, codePage, codePageNumber);
}

} // namespace dwg
