#include "editor/dwg/classes.h"

#include "editor/dwg/bits.h"
#include "editor/dwg/guarded_section.h"

namespace dwg {

namespace {

class ClassReader {
public:
    ClassReader(GuardedSection& opened, Release stored, const CodePage& page)
        : section(opened), bits(opened.data), release(stored), codePage(page) {}

    /// What stands ahead of the records: the highest number, and what is always the same.
    void skipHead() {
        if (release < Release::r2004)
            return;
        bits.bs();
        bits.rc();
        bits.rc();
        bits.b();
    }

    /// A record takes more than a byte; what is left at the end is filling, or from 2007 on the texts.
    bool more() const {
        const std::size_t end = release < Release::r2007 ? bits.end() : section.textsAt;
        return bits.position() + 8 <= end;
    }
    bool failed() const { return bits.failed() || section.text.failed(); }
    std::size_t position() const { return bits.position() / 8; }

    ObjectClass next() {
        ObjectClass record;
        record.number = bits.bs();
        record.proxyFlags = bits.bs();
        record.application = text();
        record.cppName = text();
        record.dxfName = text();
        record.wasProxy = bits.b();
        record.item = bits.bs();
        if (release >= Release::r2004) {
            record.instances = bits.bl();
            record.dwgVersion = bits.bl();
            record.maintenance = bits.bl();
            for (std::uint32_t& number : record.unknown)
                number = bits.bl();
        }
        return record;
    }

private:
    /// Some writers store a text with its closing null.
    std::wstring text() {
        std::wstring wide = release >= Release::r2007 ? section.text.tu() : codePage.decode(bits.t());
        while (!wide.empty() && wide.back() == L'\0')
            wide.pop_back();
        return wide;
    }

    GuardedSection& section;
    BitReader& bits;
    const Release release;
    const CodePage& codePage;
};

} // namespace

Result<std::vector<ObjectClass>> readClasses(Bytes bytes, Release release, std::uint8_t maintenance,
                                             const CodePage& codePage, Findings& findings) {
    const std::string place(section::classes);
    auto section = openGuardedSection(std::move(bytes), release, maintenance, place.c_str(), &findings);
    if (!section)
        return section.error();
    ClassReader reader(*section, release, codePage);
    reader.skipHead();
    std::vector<ObjectClass> classes;
    while (reader.more()) {
        const std::size_t start = reader.position();
        ObjectClass record = reader.next();
        const bool follows =
            record.number >= object_type::firstClass && (classes.empty() || record.number > classes.back().number);
        if (reader.failed() || !follows) {
            findings.push_back({place, "a class record that can't be; it and those behind it are left out", start});
            break;
        }
        classes.push_back(std::move(record));
    }
    return classes;
}

Bytes encodeClasses(const std::vector<ObjectClass>& classes, const CodePage& codePage, Release release) {
    GuardedContent content;
    BitWriter& bits = content.data;
    const auto text = [&](const std::wstring& value) {
        if (release >= Release::r2007)
            content.texts.tu(value);
        else
            bits.t(codePage.encode(value));
    };
    if (release >= Release::r2004) {
        bits.bs(classes.empty() ? std::uint16_t{object_type::firstClass - 1} : classes.back().number);
        bits.rc(0);
        bits.rc(0);
        bits.b(true);
    }
    for (const ObjectClass& record : classes) {
        bits.bs(record.number);
        bits.bs(record.proxyFlags);
        text(record.application);
        text(record.cppName);
        text(record.dxfName);
        bits.b(record.wasProxy);
        bits.bs(record.item);
        if (release >= Release::r2004) {
            bits.bl(record.instances);
            bits.bl(record.dwgVersion);
            bits.bl(record.maintenance);
            for (const std::uint32_t number : record.unknown)
                bits.bl(number);
        }
    }
    return content.bytes(release);
}

} // namespace dwg
