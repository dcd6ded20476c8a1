#include "tests/documents/Documents.h"

#include "tests/support/TemporaryFolder.h"

#include <algorithm>
#include <sstream>

namespace tests {

namespace {

const std::filesystem::path root = TESSARO_SOURCE_DIR;

/// Calls with each line: its number, its text, and the fence that it is in or opens or closes ("" outside).
template <typename Function> void eachLine(const std::string& document, Function function) {
    std::istringstream in(document);
    std::string line, fence;
    for (int number = 1; std::getline(in, line); ++number) {
        const bool mark = line.starts_with("```");
        if (mark && fence.empty()) {
            fence = line;
            function(number, line, fence, true);
        } else if (mark) {
            function(number, line, fence, true);
            fence.clear();
        } else {
            function(number, line, fence, false);
        }
    }
}

} // namespace

std::vector<std::filesystem::path> documents() {
    std::vector<std::filesystem::path> found = {"README.md", "CHANGELOG.md"};
    for (const char* const folder : {"docs", "bench", "fuzz", "packaging", "samples", "tests", "tools"})
        for (const auto& entry : std::filesystem::recursive_directory_iterator(root / folder))
            if (entry.path().extension() == ".md")
                found.push_back(entry.path().lexically_relative(root));
    std::sort(found.begin(), found.end());
    return found;
}

std::string documentText(const std::filesystem::path& path) {
    return readFile(root / path);
}

std::vector<CodeBlock> codeBlocks(const std::string& document) {
    std::vector<CodeBlock> blocks;
    bool open = false;
    std::string reason;
    eachLine(document, [&](int number, const std::string& line, const std::string& fence, bool mark) {
        constexpr std::string_view comment = "<!-- not executed: ";
        if (mark && !open) {
            blocks.push_back({fence.substr(3), {}, std::exchange(reason, {}), number});
            open = true;
        } else if (mark) {
            open = false;
        } else if (open) {
            blocks.back().text += line + "\n";
        } else if (line.starts_with(comment)) {
            reason = line.substr(comment.size(), line.rfind(" -->") - comment.size());
        } else {
            reason.clear();
        }
    });
    return blocks;
}

std::vector<std::pair<int, std::string>> proseLines(const std::string& document) {
    std::vector<std::pair<int, std::string>> lines;
    eachLine(document, [&](int number, const std::string& line, const std::string& fence, bool) {
        if (fence.empty() && !line.starts_with("<!--") && !line.starts_with("    "))
            lines.emplace_back(number, line);
    });
    return lines;
}

std::string withoutCode(const std::string& text) {
    std::string out;
    for (std::size_t at = 0; at < text.size();) {
        if (text[at] != '`') {
            out += text[at++];
            continue;
        }
        const std::size_t signs = std::min(text.find_first_not_of('`', at), text.size()) - at;
        const std::size_t end = text.find(std::string(signs, '`'), at + signs);
        at = end == std::string::npos ? text.size() : end + signs;
        out += ' ';
    }
    return out;
}

bool hasProgram(const std::string& name) {
    return runShell("command -v " + name).status == 0;
}

} // namespace tests
