#pragma once

#include "editor/dwg/container.h"

#include <map>

namespace dwg {

/// A piece of a section: where it starts in the unpacked section and where it is kept in the file.
struct SectionPage {
    std::uint64_t start = 0;
    std::uint64_t offset = 0; ///< 0 where the page map doesn't know the page
    /// Length unpacked: of all pages of 2004, of each page for itself in 2007. Only the last page may hold fewer.
    std::uint64_t size = 0;
    /// Of 2007 only: length packed; the pages of the other releases tell it themselves.
    std::uint64_t packedSize = 0;
};

struct PagedSection {
    std::uint64_t size = 0;
    bool packed = false;
    bool encrypted = false;
    /// Of 2007 only: pages are interleaved code words, else plain data with its parity behind it.
    bool interleaved = false;
    std::vector<SectionPage> pages;
};

using SectionMap = std::map<std::string, PagedSection, std::less<>>;

/// Sections that are cut into pages, whatever a page looks like in the file. Bytes that no page covers are zero:
/// writers leave out pages that hold nothing else. What a section map declares is checked
/// when the section is asked for, so that one damaged section doesn't hide the others.
class PagedSections : public Container {
public:
    std::vector<std::string> names() const override;
    bool has(std::string_view name) const override;
    Result<std::uint64_t> size(std::string_view name) const override;
    Result<Bytes> range(std::string_view name, std::uint64_t offset, std::uint64_t count,
                        Findings* findings) const override;

protected:
    PagedSections(SourcePtr file, SectionMap sections) : source(std::move(file)), map(std::move(sections)) {}

    const Source& file() const { return *source; }

    /// What a packed page may take in the file: packing never makes data longer by more than a few bytes a page.
    static std::uint64_t storedLimit(const SectionPage& page) { return page.size + page.size / 8 + 1024; }

    /// The unpacked bytes of one page, at most its size.
    virtual Result<Bytes> readPage(const std::string& name, const PagedSection& section, const SectionPage& page,
                                   Findings* findings) const = 0;

private:
    Result<const SectionMap::value_type*> checked(std::string_view name) const;

    SourcePtr source;
    SectionMap map;
};

} // namespace dwg
