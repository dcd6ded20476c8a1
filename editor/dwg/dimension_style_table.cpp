#include "editor/dwg/dimension_style_table.h"

namespace dwg {

namespace {

/// The references: `styles` of the table itself, then `further` ones.
struct Lists {
    std::vector<HandleRef> styles, further;
};

Lists split(const Carried& table) {
    BitReader in(table.bits.bytes, 0, table.bits.count);
    const std::size_t count = in.bl();
    if (in.failed() || count > table.references.size())
        return {};
    const auto middle = table.references.begin() + static_cast<std::ptrdiff_t>(count);
    return {{table.references.begin(), middle}, {middle, table.references.end()}};
}

void join(Carried& table, const Lists& lists) {
    BitWriter out;
    out.bl(static_cast<std::uint32_t>(lists.styles.size()));
    out.rc(static_cast<std::uint8_t>(lists.further.size()));
    table.bits = out.bits();
    table.references = lists.styles;
    table.references.insert(table.references.end(), lists.further.begin(), lists.further.end());
}

} // namespace

Carried makeDimensionStyleTable(const std::vector<HandleRef>& styles) {
    Carried table;
    join(table, {styles, {}});
    return table;
}

std::vector<HandleRef> dimensionStyles(const Carried& table) {
    return split(table).styles;
}

void addDimensionStyle(Carried& table, Handle style) {
    Lists lists = split(table);
    lists.styles.push_back({handle_code::softOwner, style});
    join(table, lists);
}

void removeDimensionStyle(Carried& table, Handle style) {
    Lists lists = split(table);
    const auto isStyle = [style](HandleRef reference) { return reference.value == style; };
    std::erase_if(lists.styles, isStyle);
    std::erase_if(lists.further, isStyle);
    join(table, lists);
}

} // namespace dwg
