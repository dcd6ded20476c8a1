#pragma once

#include "tests/support/Shell.h"

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace tests {

/// All Markdown files of the project, their paths from its root, in order.
std::vector<std::filesystem::path> documents();

/// The text of a file of the project, its path from the root.
std::string documentText(const std::filesystem::path& path);

/// A fenced block of a document.
struct CodeBlock {
    std::string language;
    std::string text;
    std::string notExecuted; ///< the reason, from a comment "<!-- not executed: ... -->" ahead of it
    int line = 0;
};
std::vector<CodeBlock> codeBlocks(const std::string& document);

/// The lines of a document that are in no block, in no comment and not indented as code, with their numbers.
std::vector<std::pair<int, std::string>> proseLines(const std::string& document);

/// The text without what stands between backticks.
std::string withoutCode(const std::string& text);

/// Whether the shell finds that program.
bool hasProgram(const std::string& name);

} // namespace tests
