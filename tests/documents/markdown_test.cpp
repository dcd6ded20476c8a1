// Markdown to HTML, as the help file's pages are made.
#include "tools/markdown.h"

#include <gtest/gtest.h>

namespace {

std::string html(std::string_view text) {
    return tools::htmlOfMarkdown(text,
                                 {[](const std::string& link) { return link == "away" ? std::string() : "to/" + link; },
                                  [](const std::string& picture) { return "src=\"" + picture + "\""; }});
}

TEST(Markdown, BlocksBecomeTheirElements) {
    const struct {
        const char* text;
        const char* expected;
    } rows[] = {
        {"", ""},
        {"one\ntwo\n\nthree", "<p>one two</p>\n<p>three</p>\n"},
        {"# The log", "<h1><a name=\"the-log\"></a>The log</h1>\n"},
        {"#### Four", "<h4><a name=\"four\"></a>Four</h4>\n"},
        {"#no heading", "<p>#no heading</p>\n"},
        {"text\n## Head", "<p>text</p>\n<h2><a name=\"head\"></a>Head</h2>\n"},
        {"- one\n  more\n- two\n\nend", "<ul>\n<li>one more</li>\n<li>two</li>\n</ul>\n<p>end</p>\n"},
        {"1. one\n2. two", "<ol>\n<li>one</li>\n<li>two</li>\n</ol>\n"},
        {"1. one\n\n   more\n   words\n2. two\n\n- other", "<ol>\n<li>one<p>more words</p></li>\n<li>two</li>\n</ol>\n"
                                                           "<ul>\n<li>other</li>\n</ul>\n"},
        {"12 apples", "<p>12 apples</p>\n"},
        {"```sh\na < b\n\n```\nend", "<pre>a &lt; b\n\n</pre>\n<p>end</p>\n"},
        {"```\nnever closed", "<pre>never closed\n</pre>\n"},
        {"    code\n    more", "<pre>code\nmore\n</pre>\n"},
        {"<!-- not\nshown -->\nshown", "<p>shown</p>\n"},
        {"| a | b |\n|---|---|\n| `x|y` | p\\|q |",
         "<table border=\"1\" cellpadding=\"4\" cellspacing=\"0\">\n<tr><th>a</th><th>b</th></tr>\n"
         "<tr><td><code>x|y</code></td><td>p|q</td></tr>\n</table>\n"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(html(row.text), row.expected) << row.text;
}

TEST(Markdown, MarksInALineBecomeTheirElements) {
    const struct {
        const char* text;
        const char* expected;
    } rows[] = {
        {"**bold** and *slanted*", "<b>bold</b> and <i>slanted</i>"},
        {"**bold *both***", "<b>bold *both</b>*"},
        {"a * b * c", "a * b * c"},
        {"2*3", "2*3"},
        {"`a*b*c` & more", "<code>a*b*c</code> &amp; more"},
        {"`` ` ``", "<code>`</code>"},
        {"a ` b", "a ` b"},
        {"[text *x*](page.md)", "<a href=\"to/page.md\">text <i>x</i></a>"},
        {"[text](away)", "text"},
        {"[no link]", "[no link]"},
        {"![words](a.png)", "<img src=\"a.png\" alt=\"words\">"},
        {"really! [x](y)", "really! <a href=\"to/y\">x</a>"},
        {"\\*plain\\*", "*plain*"},
        {"end\\", "end\\"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(html(row.text), "<p>" + std::string(row.expected) + "</p>\n") << row.text;
}

TEST(Markdown, TheTitleIsTheFirstHeadingAndAnchorsFollowIt) {
    EXPECT_EQ(tools::titleOfMarkdown("text\n\n## A title \nmore\n# Other"), "A title");
    EXPECT_EQ(tools::titleOfMarkdown("text"), "");
    EXPECT_EQ(tools::anchorOf("Before you edit: which drawings lose by it"),
              "before-you-edit-which-drawings-lose-by-it");
    EXPECT_EQ(tools::anchorOf("`code` & Größe"), "code--größe");
}

} // namespace
