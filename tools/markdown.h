#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace tools {

/// What a page's links and pictures become, asked for each of them as written in the page.
struct MarkdownTargets {
    /// Where a link leads; empty for one that is shown as plain text.
    std::function<std::string(const std::string& link)> link;
    /// The attributes of a picture, src and perhaps a width.
    std::function<std::string(const std::string& picture)> picture;
};

/// The body of an HTML page, without head, from the Markdown that our documents are written in: headings with an anchor
/// each, paragraphs, lists of one level, tables, fenced and indented code, and in a line bold, italic, code, links,
/// pictures. Comments are left out.
std::string htmlOfMarkdown(std::string_view text, const MarkdownTargets& targets);

/// The text of the first heading; empty without one.
std::string titleOfMarkdown(std::string_view text);

/// The anchor of a heading: small letters, digits and hyphens, a blank being a hyphen.
std::string anchorOf(std::string_view heading);

} // namespace tools
