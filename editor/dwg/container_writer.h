#pragma once

#include "editor/dwg/source.h"
#include "editor/dwg/version.h"

#include <string>
#include <string_view>
#include <vector>

/// Writing whole files of the releases that keep their sections in pages.
namespace dwg {

/// A section by its name, unpacked.
struct SectionBytes {
    std::string name;
    Bytes bytes;
};

/// What a file is made of.
struct FileContent {
    Release release = Release::r2004;
    /// The first bytes of the file as makeFileStart or a file of this release has them; the places of sections in it
    /// are filled in.
    Bytes start;
    /// In any order, each name once. The entries of section::preview count from the section's own start.
    std::vector<SectionBytes> sections;
};

constexpr std::size_t fileStartLength = 0x80;

/// The first bytes of a new file: magic, maintenance number, code page.
Bytes makeFileStart(Release release, std::uint16_t codePage);

/// A file of release 2004, 2010, 2013 or 2018. `tooLarge` for a file that would pass 2 GiB.
Result<Bytes> writePagedFile(const FileContent& content);

/// A file of release 2007, with its checks and parity.
Result<Bytes> writeFile2007(const FileContent& content);

/// Whichever of the two the release asks for.
Result<Bytes> writeFile(const FileContent& content);

/// How a section is stored; the same in all files of a release. Sections that aren't known are packed.
struct SectionForm {
    std::string_view name;
    /// Packed in pages of a fixed size, or as it is in one page.
    bool packed = true;
    /// Of a section that isn't packed: its page is a multiple of this.
    std::size_t unit = 0x80;
    /// As the section map tells it; what it says of these sections is that they are plain.
    std::uint32_t encryption = 0;
    /// Of 2007: what the section map tells of the name, and the page size that it declares.
    std::uint32_t nameCode = 0;
    std::uint32_t pageSize2007 = 0xF800;
};

const SectionForm& formOf(std::string_view section);

/// The sections in the order that they lie in the file, and in the order that the section map lists them.
std::vector<const SectionBytes*> inFileOrder(const FileContent& content);
std::vector<const SectionBytes*> inMapOrder(const FileContent& content);

/// Where a section lies, for the places in the file's start; `address` is that of its bytes.
void setSectionPlace(Bytes& file, std::string_view section, std::uint32_t address);

void putU32(Bytes& bytes, std::size_t at, std::uint32_t value);
void putU64(Bytes& bytes, std::size_t at, std::uint64_t value);
void appendU32(Bytes& bytes, std::uint32_t value);
void appendU64(Bytes& bytes, std::uint64_t value);
void appendBytes(Bytes& bytes, ByteView more);

constexpr std::size_t roundedUp(std::size_t value, std::size_t step) {
    return (value + step - 1) / step * step;
}

/// Nothing in these files lies beyond this.
constexpr std::size_t largestFile = 0x7FFFFFFF;

} // namespace dwg
