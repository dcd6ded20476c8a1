#include "tools/markdown.h"

#include <cctype>
#include <vector>

namespace tools {

namespace {

std::vector<std::string_view> linesOf(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        lines.push_back(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return lines;
}

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t\r");
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

std::string escaped(std::string_view text) {
    std::string out;
    for (const char c : text) {
        if (c == '&')
            out += "&amp;";
        else if (c == '<')
            out += "&lt;";
        else if (c == '>')
            out += "&gt;";
        else
            out += c;
    }
    return out;
}

/// The signs of a heading, 0 for any other line.
std::size_t headingLevel(std::string_view line) {
    const std::size_t signs = line.find_first_not_of('#');
    return signs <= 6 && line[signs] == ' ' ? signs : 0;
}

/// The length of "- " or "12. " at the start of a line, 0 for any other.
std::size_t itemMark(std::string_view line) {
    if (line.starts_with("- ") || line.starts_with("* "))
        return 2;
    const std::size_t digits = line.find_first_not_of("0123456789");
    return digits != std::string_view::npos && digits > 0 && line.substr(digits).starts_with(". ") ? digits + 2 : 0;
}

/// Text in a line.
class Inline {
public:
    Inline(std::string_view source, const MarkdownTargets& lookUp) : text(source), targets(lookUp) {}

    std::string html() {
        while (at < text.size())
            if (!code() && !link() && !emphasis("**", "b") && !emphasis("*", "i") && !escape())
                out += escaped(text.substr(at++, 1));
        return out;
    }

private:
    bool escape() {
        if (text[at] != '\\' || at + 1 >= text.size() || std::ispunct(static_cast<unsigned char>(text[at + 1])) == 0)
            return false;
        out += escaped(text.substr(at + 1, 1));
        at += 2;
        return true;
    }
    bool code() {
        const std::size_t signs = text.substr(at).find_first_not_of('`');
        if (signs == 0 || signs == std::string_view::npos)
            return false;
        const std::string fence(signs, '`');
        const std::size_t end = text.find(fence, at + signs);
        if (end == std::string_view::npos)
            return false;
        std::string_view inside = text.substr(at + signs, end - at - signs);
        if (signs > 1)
            inside = trimmed(inside);
        out += "<code>" + escaped(inside) + "</code>";
        at = end + signs;
        return true;
    }
    bool link() {
        const bool picture = text[at] == '!';
        const std::size_t open = picture ? at + 1 : at;
        if (open >= text.size() || text[open] != '[')
            return false;
        const std::size_t middle = text.find("](", open);
        const std::size_t end = middle == std::string_view::npos ? middle : text.find(')', middle);
        if (end == std::string_view::npos)
            return false;
        const std::string_view words = text.substr(open + 1, middle - open - 1);
        const std::string target(text.substr(middle + 2, end - middle - 2));
        if (picture) {
            out += "<img " + targets.picture(target) + " alt=\"" + escaped(words) + "\">";
        } else {
            const std::string place = targets.link(target), shown = Inline(words, targets).html();
            out += place.empty() ? shown : "<a href=\"" + escaped(place) + "\">" + shown + "</a>";
        }
        at = end + 1;
        return true;
    }
    bool emphasis(std::string_view sign, const std::string& tag) {
        if (!text.substr(at).starts_with(sign) || at + sign.size() >= text.size() || text[at + sign.size()] == ' ')
            return false;
        const std::size_t end = text.find(sign, at + sign.size());
        if (end == std::string_view::npos || end == at + sign.size())
            return false;
        const std::string_view inside = text.substr(at + sign.size(), end - at - sign.size());
        out += "<" + tag + ">" + Inline(inside, targets).html() + "</" + tag + ">";
        at = end + sign.size();
        return true;
    }

    const std::string_view text;
    const MarkdownTargets& targets;
    std::size_t at = 0;
    std::string out;
};

/// The cells of a table's row; a sign behind a backslash or in code parts none.
std::vector<std::string> cellsOf(std::string_view line) {
    line = trimmed(line);
    line.remove_prefix(1);
    if (line.ends_with('|'))
        line.remove_suffix(1);
    std::vector<std::string> cells(1);
    bool code = false;
    for (std::size_t at = 0; at < line.size(); ++at) {
        code ^= line[at] == '`';
        if (line[at] == '\\' && at + 1 < line.size() && line[at + 1] == '|')
            cells.back() += line[++at];
        else if (line[at] == '|' && !code)
            cells.emplace_back();
        else
            cells.back() += line[at];
    }
    return cells;
}

class Blocks {
public:
    Blocks(std::string_view text, const MarkdownTargets& lookUp) : lines(linesOf(text)), targets(lookUp) {}

    std::string html() {
        while (at < lines.size()) {
            const std::string_view line = lines[at];
            if (trimmed(line).empty())
                ++at;
            else if (line.starts_with("<!--"))
                comment();
            else if (headingLevel(line) != 0)
                heading();
            else if (line.starts_with("```"))
                fence();
            else if (line.starts_with("    "))
                indented();
            else if (line.starts_with("|"))
                table();
            else if (itemMark(line) != 0)
                list();
            else
                paragraph();
        }
        return out;
    }

private:
    std::string inlined(std::string_view text) const { return Inline(text, targets).html(); }

    void comment() {
        while (at < lines.size() && lines[at++].find("-->") == std::string_view::npos) {
        }
    }
    void heading() {
        const std::size_t level = headingLevel(lines[at]);
        const std::string_view words = trimmed(lines[at++].substr(level));
        const std::string tag = "h" + std::to_string(level);
        out += "<" + tag + "><a name=\"" + anchorOf(words) + "\"></a>" + inlined(words) + "</" + tag + ">\n";
    }
    void fence() {
        out += "<pre>";
        for (++at; at < lines.size() && !lines[at].starts_with("```"); ++at)
            out += escaped(lines[at]) + "\n";
        ++at;
        out += "</pre>\n";
    }
    void indented() {
        out += "<pre>";
        for (; at < lines.size() && lines[at].starts_with("    "); ++at)
            out += escaped(lines[at].substr(4)) + "\n";
        out += "</pre>\n";
    }
    void row(const std::string& tag) {
        out += "<tr>";
        for (const std::string& cell : cellsOf(lines[at++]))
            out += "<" + tag + ">" + inlined(trimmed(cell)) + "</" + tag + ">";
        out += "</tr>\n";
    }
    void table() {
        out += "<table border=\"1\" cellpadding=\"4\" cellspacing=\"0\">\n";
        row("th");
        if (at < lines.size() && lines[at].starts_with("|-"))
            ++at;
        while (at < lines.size() && lines[at].starts_with("|"))
            row("td");
        out += "</table>\n";
    }
    /// Whether the line goes on with what stands above it.
    bool goesOn() const {
        return at < lines.size() && !trimmed(lines[at]).empty() && headingLevel(lines[at]) == 0 &&
               itemMark(lines[at]) == 0 && !lines[at].starts_with("```") && !lines[at].starts_with("|") &&
               !lines[at].starts_with("<!--");
    }
    static std::string listTag(std::string_view line) {
        return std::isdigit(static_cast<unsigned char>(line[0])) != 0 ? "ol" : "ul";
    }
    bool isItem(const std::string& tag) const {
        return at < lines.size() && itemMark(lines[at]) != 0 && listTag(lines[at]) == tag;
    }
    void skipEmpty() {
        while (at < lines.size() && trimmed(lines[at]).empty())
            ++at;
    }
    /// The words of this line and of those that go on with it.
    std::string run(std::string_view first) {
        std::string words(trimmed(first));
        for (++at; goesOn(); ++at)
            words.append(" ").append(trimmed(lines[at]));
        return words;
    }
    /// Items, with empty lines between them or without; indented lines behind an empty one belong to the item.
    void list() {
        const std::string tag = listTag(lines[at]);
        out += "<" + tag + ">\n";
        while (isItem(tag)) {
            out += "<li>" + inlined(run(lines[at].substr(itemMark(lines[at]))));
            skipEmpty();
            while (at < lines.size() && lines[at].starts_with("  ")) {
                out += "<p>" + inlined(run(lines[at])) + "</p>";
                skipEmpty();
            }
            out += "</li>\n";
        }
        out += "</" + tag + ">\n";
    }
    void paragraph() { out += "<p>" + inlined(run(lines[at])) + "</p>\n"; }

    const std::vector<std::string_view> lines;
    const MarkdownTargets& targets;
    std::size_t at = 0;
    std::string out;
};

} // namespace

std::string htmlOfMarkdown(std::string_view text, const MarkdownTargets& targets) {
    return Blocks(text, targets).html();
}

std::string titleOfMarkdown(std::string_view text) {
    for (const std::string_view line : linesOf(text))
        if (const std::size_t level = headingLevel(line))
            return std::string(trimmed(line.substr(level)));
    return {};
}

std::string anchorOf(std::string_view heading) {
    std::string anchor;
    for (const char c : heading) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == ' ')
            anchor += '-';
        else if (std::isalnum(byte) != 0 || c == '-' || c == '_' || byte >= 0x80)
            anchor += static_cast<char>(std::tolower(byte));
    }
    return anchor;
}

} // namespace tools
