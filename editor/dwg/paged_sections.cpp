#include "editor/dwg/paged_sections.h"

#include <algorithm>

namespace dwg {

namespace {

// Pages lie in order and never overlap, which also bounds the work of unpacking a section by its size.
bool inOrder(const PagedSection& section, std::uint64_t limit) {
    std::uint64_t next = 0;
    for (const SectionPage& page : section.pages) {
        if (page.start < next || page.start > limit || page.size == 0 || page.size > limit)
            return false;
        next = page.start + page.size;
    }
    return true;
}

} // namespace

std::vector<std::string> PagedSections::names() const {
    std::vector<std::string> out;
    for (const auto& [name, section] : map)
        out.push_back(name);
    return out;
}

bool PagedSections::has(std::string_view name) const {
    return map.find(name) != map.end();
}

Result<const SectionMap::value_type*> PagedSections::checked(std::string_view name) const {
    const auto found = map.find(name);
    const std::string text(name);
    if (found == map.end())
        return Error{ErrorKind::missing, "the file has no section " + text, 0};
    const PagedSection& section = found->second;
    if (section.encrypted)
        return Error{ErrorKind::unsupported, text + " is encrypted", 0};
    if (section.size > unpackedLimit(source->size()))
        return Error{ErrorKind::tooLarge, text + " declares a size of " + std::to_string(section.size) + " bytes", 0};
    if (section.size != 0 && !inOrder(section, unpackedLimit(source->size())))
        return Error{ErrorKind::damaged, text + " has pages that overlap or are too large", 0};
    return &*found;
}

Result<std::uint64_t> PagedSections::size(std::string_view name) const {
    const auto found = checked(name);
    if (!found)
        return found.error();
    return (*found)->second.size;
}

Result<Bytes> PagedSections::range(std::string_view name, std::uint64_t offset, std::uint64_t count,
                                   Findings* findings) const {
    const auto found = checked(name);
    if (!found)
        return found.error();
    const auto& [text, section] = **found;
    if (offset > section.size || count > section.size - offset)
        return Error{ErrorKind::truncated, text + " ends before the bytes asked for", offset};

    Bytes out(count);
    for (const SectionPage& page : section.pages) {
        if (count == 0 || page.start >= offset + count || page.start + page.size <= offset)
            continue;
        if (page.offset == 0)
            return Error{ErrorKind::damaged, text + " has a page that isn't in the page map", page.start};
        auto bytes = readPage(text, section, page, findings);
        if (!bytes)
            return bytes.error();
        const std::uint64_t from = std::max(page.start, offset);
        const std::uint64_t until = std::min(page.start + bytes->size(), offset + count);
        if (from < until)
            std::copy(bytes->begin() + static_cast<std::ptrdiff_t>(from - page.start),
                      bytes->begin() + static_cast<std::ptrdiff_t>(until - page.start),
                      out.begin() + static_cast<std::ptrdiff_t>(from - offset));
    }
    return out;
}

} // namespace dwg
