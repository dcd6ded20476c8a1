#include "tessaro/browser/Administrators.h"

#include "tessaro/platform/File.h"
#include "tessaro/platform/Text.h"

#include <sstream>
#include <vector>

namespace {

constexpr std::size_t kUserLimit = 49;      ///< characters of a user name
constexpr std::size_t kSectionLimit = 8190; ///< characters of the section, each line with its end
constexpr std::uint64_t kFileLimit = 1 << 20;

std::wstring ReadText(const std::wstring& path) {
    platform::File file;
    if (!file.Open(path, platform::File::modeRead))
        return {};
    try {
        std::string bytes(static_cast<std::size_t>(std::min(file.Length(), kFileLimit)), '\0');
        bytes.resize(file.Read(bytes.data(), bytes.size()));
        return platform::FromNarrow(bytes);
    } catch (const platform::FileException&) {
        return {};
    }
}

/// Lines of the section without blanks and comments, as far as the section's buffer holds them.
std::vector<std::wstring> SectionLines(const std::wstring& text, const std::wstring& section) {
    std::vector<std::wstring> lines;
    std::wistringstream in(text);
    std::wstring line;
    bool inside = false;
    std::size_t used = 0;
    while (std::getline(in, line)) {
        line = platform::Trim(line);
        if (line.starts_with(L'[')) {
            if (inside)
                break;
            inside = platform::EqualNoCase(line, L"[" + section + L"]");
            continue;
        }
        if (!inside || line.empty() || line.starts_with(L';'))
            continue;
        if (used + line.size() + 1 > kSectionLimit) {
            lines.push_back(line.substr(0, kSectionLimit - used));
            break;
        }
        used += line.size() + 1;
        lines.push_back(line);
    }
    return lines;
}

} // namespace

bool IsAdministrator(const std::wstring& listPath, const std::wstring& user) {
    if (listPath.empty())
        return true;
    if (user.size() > kUserLimit)
        return false;
    for (const std::wstring& line : SectionLines(ReadText(listPath), L"Users"))
        if (platform::EqualNoCase(line, user))
            return true;
    return false;
}
