#include "editor/database/text_lines.h"

namespace editor {

namespace {

bool isDigit(wchar_t character) {
    return character >= L'0' && character <= L'9';
}

void wrap(std::vector<std::wstring>& lines, std::wstring line, std::size_t limit) {
    while (limit > 0 && line.size() > limit) {
        std::size_t end = line.rfind(L' ', limit);
        if (end == std::wstring::npos || end == 0)
            end = line.find(L' ');
        if (end == std::wstring::npos)
            break;
        lines.push_back(line.substr(0, end));
        line.erase(0, end + 1);
    }
    lines.push_back(std::move(line));
}

} // namespace

std::wstring plainText(std::wstring_view text) {
    constexpr wchar_t degree = 0xB0, plusMinus = 0xB1, diameter = 0xD8;
    std::wstring plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text.substr(i, 2) != L"%%" || i + 2 >= text.size()) {
            plain += text[i];
            continue;
        }
        i += 2;
        switch (text[i]) {
        case L'd':
        case L'D':
            plain += degree;
            break;
        case L'p':
        case L'P':
            plain += plusMinus;
            break;
        case L'c':
        case L'C':
            plain += diameter;
            break;
        case L'u':
        case L'U':
        case L'o':
        case L'O':
            break;
        default:
            if (i + 2 < text.size() && isDigit(text[i]) && isDigit(text[i + 1]) && isDigit(text[i + 2])) {
                plain += static_cast<wchar_t>((text[i] - L'0') * 100 + (text[i + 1] - L'0') * 10 + text[i + 2] - L'0');
                i += 2;
            } else {
                plain += text[i];
            }
        }
    }
    return plain;
}

std::vector<std::wstring> linesOfParagraph(std::wstring_view text, std::size_t charactersPerLine) {
    std::vector<std::wstring> lines;
    std::wstring line;
    const auto finish = [&] {
        wrap(lines, plainText(line), charactersPerLine);
        line.clear();
    };
    for (std::size_t i = 0; i < text.size(); ++i) {
        const wchar_t character = text[i];
        if (character == L'{' || character == L'}')
            continue;
        if (character == L'\n') {
            finish();
            continue;
        }
        if (character != L'\\' || i + 1 >= text.size()) {
            line += character;
            continue;
        }
        const wchar_t code = text[++i];
        constexpr std::wstring_view withValue = L"fFHCcTQWApS";
        if (code == L'P' || code == L'X') {
            finish();
        } else if (code == L'~') {
            line += L' ';
        } else if (code == L'\\' || code == L'{' || code == L'}') {
            line += code;
        } else if (withValue.find(code) != std::wstring_view::npos) {
            const std::size_t end = text.find(L';', i);
            // A fraction shows what it holds.
            for (std::size_t k = i + 1; code == L'S' && k < text.size() && k < end; ++k)
                line += text[k] == L'^' || text[k] == L'#' ? L'/' : text[k];
            i = end == std::wstring_view::npos ? text.size() : end;
        }
    }
    finish();
    return lines;
}

} // namespace editor
