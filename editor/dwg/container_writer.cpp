#include "editor/dwg/container_writer.h"

#include "editor/dwg/section_names.h"

#include <algorithm>
#include <array>

namespace dwg {

namespace {

// In the order of the section map. In the file the plain ones come first, the summary ahead of all.
constexpr std::array forms = {
    SectionForm{"AcDb:Security", false, 0x80, 0, 0x4A0204EA, 0xF800},
    SectionForm{section::fileDependencyList, false, 0x80, 2, 0x6C4205CA, 0x100},
    SectionForm{"AcDb:VBAProject", false, 0x80, 0, 0x586E0544, 0x80},
    SectionForm{section::binaryData, true, 0, 0, 0, 0xF800},
    SectionForm{"AcDb:AppInfoHistory", false, 0x80, 0, 0x96DE0737, 0x580},
    SectionForm{section::appInfo, false, 0x80, 0, 0x3FA0043E, 0x300},
    SectionForm{section::preview, false, 0x400, 0, 0x40AA0473, 0x400},
    SectionForm{section::summaryInfo, false, 0x80, 0, 0x717A060F, 0x80},
    SectionForm{section::revisionHistory, true, 0, 0, 0x60A205B3, 0x1000},
    SectionForm{section::objects, true, 0, 0, 0x674C05A9, 0xF800},
    SectionForm{section::objectFreeSpace, true, 0, 0, 0x77E2061F, 0xF800},
    SectionForm{section::templateSection, true, 0, 0, 0x4A1404CE, 0x400},
    SectionForm{section::handles, true, 0, 0, 0x3F6E0450, 0xF800},
    SectionForm{section::classes, true, 0, 0, 0x3F54045F, 0xF800},
    SectionForm{section::auxHeader, true, 0, 0, 0x54F0050A, 0x800},
    SectionForm{section::header, true, 0, 0, 0x32B803D9, 0x800},
};
constexpr SectionForm unknownForm{};

std::size_t mapRank(std::string_view section) {
    const auto found = std::ranges::find(forms, section, &SectionForm::name);
    return static_cast<std::size_t>(found - forms.begin()); // unknown ones come last
}

std::size_t fileRank(std::string_view section) {
    const std::size_t rank = mapRank(section), lastPlain = mapRank(section::summaryInfo);
    return rank <= lastPlain ? lastPlain - rank : rank;
}

template <class Rank> std::vector<const SectionBytes*> ordered(const FileContent& content, Rank rank) {
    std::vector<const SectionBytes*> out;
    for (const SectionBytes& section : content.sections)
        out.push_back(&section);
    std::ranges::stable_sort(out, {}, [&](const SectionBytes* section) { return rank(section->name); });
    return out;
}

/// Maintenance numbers that programs of each release write.
std::uint8_t maintenanceOf(Release release) {
    switch (release) {
    case Release::r2004:
        return 0x68;
    case Release::r2007:
        return 0x32;
    case Release::r2010:
        return 0x6D;
    case Release::r2013:
        return 0x08;
    case Release::r2018:
        return 0x04;
    default:
        return 0;
    }
}

} // namespace

Bytes makeFileStart(Release release, std::uint16_t codePage) {
    Bytes start(fileStartLength);
    std::ranges::copy(magicOf(release), start.begin());
    start[0x0B] = maintenanceOf(release);
    start[0x0C] = 3;
    // The program's release and maintenance number, told twice before 2018. Some readers go by this number in place of
    // the first one.
    constexpr std::uint8_t program = 0x21;
    const std::uint8_t programMaintenance = release < Release::r2018 ? 0x1D : maintenanceOf(release);
    start[0x11] = program;
    start[0x12] = programMaintenance;
    start[0x13] = static_cast<std::uint8_t>(codePage & 0xFF);
    start[0x14] = static_cast<std::uint8_t>(codePage >> 8);
    if (release < Release::r2018) {
        start[0x16] = program;
        start[0x17] = programMaintenance;
    }
    start[0x28] = 0x80; // where the inner header lies
    start[0x34] = 2;
    return start;
}

const SectionForm& formOf(std::string_view section) {
    const std::size_t rank = mapRank(section);
    return rank < forms.size() ? forms[rank] : unknownForm;
}

std::vector<const SectionBytes*> inFileOrder(const FileContent& content) {
    return ordered(content, fileRank);
}

std::vector<const SectionBytes*> inMapOrder(const FileContent& content) {
    return ordered(content, mapRank);
}

void setSectionPlace(Bytes& file, std::string_view section, std::uint32_t address) {
    if (section == section::preview)
        putU32(file, 0x0D, address);
    else if (section == section::summaryInfo)
        putU32(file, 0x20, address);
    else if (section == "AcDb:VBAProject")
        putU32(file, 0x24, address);
    else if (section == section::appInfo)
        putU32(file, 0x2C, address);
    else if (section == "AcDb:AppInfoHistory")
        putU32(file, 0x30, address);
}

Result<Bytes> writeFile(const FileContent& content) {
    return content.release == Release::r2007 ? writeFile2007(content) : writePagedFile(content);
}

void putU32(Bytes& bytes, std::size_t at, std::uint32_t value) {
    for (unsigned shift = 0; shift < 32; shift += 8)
        bytes[at++] = static_cast<std::uint8_t>(value >> shift);
}

void putU64(Bytes& bytes, std::size_t at, std::uint64_t value) {
    putU32(bytes, at, static_cast<std::uint32_t>(value));
    putU32(bytes, at + 4, static_cast<std::uint32_t>(value >> 32));
}

void appendU32(Bytes& bytes, std::uint32_t value) {
    bytes.resize(bytes.size() + 4);
    putU32(bytes, bytes.size() - 4, value);
}

void appendU64(Bytes& bytes, std::uint64_t value) {
    bytes.resize(bytes.size() + 8);
    putU64(bytes, bytes.size() - 8, value);
}

void appendBytes(Bytes& bytes, ByteView more) {
    bytes.insert(bytes.end(), more.begin(), more.end());
}

} // namespace dwg
