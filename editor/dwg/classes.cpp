#include "editor/dwg/classes.h"

#include "editor/dwg/bits.h"
#include "editor/dwg/crc.h"
#include "editor/dwg/section_names.h"

namespace dwg {

namespace {

constexpr std::size_t guardSize = 16;
constexpr std::size_t lengthSize = 4;

/// Some writers store a text with its closing null.
std::wstring text(BitReader& bits, const CodePage& codePage) {
    std::wstring wide = codePage.decode(bits.t());
    while (!wide.empty() && wide.back() == L'\0')
        wide.pop_back();
    return wide;
}

} // namespace

Result<std::vector<ObjectClass>> readClasses(ByteView section, const CodePage& codePage, Findings& findings) {
    const std::string place(section::classes);
    BitReader head(section);
    head.skip(guardSize * 8);
    const std::size_t length = head.rl();
    if (head.failed() || length > section.size() - guardSize - lengthSize)
        return Error{ErrorKind::truncated, "the classes are longer than their section", guardSize};

    const ByteView content = section.subspan(guardSize + lengthSize, length);
    const ByteView checked = section.subspan(guardSize, lengthSize + length);
    BitReader check(section.subspan(guardSize + lengthSize + length));
    const std::uint16_t expected = check.rs();
    if (check.failed() || expected != crc16(checked))
        findings.push_back({place, "the check of the classes doesn't fit", guardSize + lengthSize + length});

    std::vector<ObjectClass> classes;
    BitReader bits(content);
    // A record takes more than a byte, what is left at the end is filling.
    while (bits.remaining() >= 8) {
        const std::size_t start = bits.position();
        ObjectClass record;
        record.number = bits.bs();
        record.proxyFlags = bits.bs();
        record.application = text(bits, codePage);
        record.cppName = text(bits, codePage);
        record.dxfName = text(bits, codePage);
        record.wasProxy = bits.b();
        record.item = bits.bs();
        const bool follows =
            record.number >= object_type::firstClass && (classes.empty() || record.number > classes.back().number);
        if (bits.failed() || !follows) {
            findings.push_back({place, "a class record that can't be; it and those behind it are left out", start / 8});
            break;
        }
        classes.push_back(std::move(record));
    }
    return classes;
}

Bytes encodeClasses(const std::vector<ObjectClass>& classes, const CodePage& codePage) {
    BitWriter bits;
    for (const ObjectClass& record : classes) {
        bits.bs(record.number);
        bits.bs(record.proxyFlags);
        bits.t(codePage.encode(record.application));
        bits.t(codePage.encode(record.cppName));
        bits.t(codePage.encode(record.dxfName));
        bits.b(record.wasProxy);
        bits.bs(record.item);
    }
    return bits.bytes();
}

} // namespace dwg
