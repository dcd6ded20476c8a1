// tessaro-help OUT PAGE...
//
// Makes a compiled help file (mark "ITSF", version 3) of the pages, each under its file's name, the first as the one to
// begin with. Pages in Markdown become HTML, with the pictures that they show and links between them. Pages are stored
// as they are, not compressed, so that the same input gives the same bytes.
#include "tools/markdown.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

constexpr std::size_t kChunkSize = 0x1000, kChunkHead = 20;
constexpr std::uint32_t kEnglish = 0x409, kNone = 0xFFFFFFFF;
constexpr int kQuickStep = 5; // every fifth entry of a chunk is listed at its end

struct Page {
    std::string name, bytes;
    std::uint64_t offset = 0;
};

void Number(std::string& out, std::uint64_t value, int size) {
    for (int byte = 0; byte < size; ++byte)
        out += static_cast<char>(value >> (8 * byte) & 0xFF);
}

void Packed(std::string& out, std::uint64_t value) {
    for (int shift = 56; shift >= 0; shift -= 7)
        if (value >> shift != 0 || shift == 0)
            out += static_cast<char>((value >> shift & 0x7F) | (shift == 0 ? 0 : 0x80));
}

void Guid(std::string& out, std::uint32_t first, std::uint16_t second, std::uint16_t third, const char* rest) {
    Number(out, first, 4);
    Number(out, second, 2);
    Number(out, third, 2);
    out.append(rest, 8);
}

/// What the viewer is told of the whole: the page to begin with and the title.
std::string SystemPage(const std::string& first, const std::string& title) {
    std::string out;
    Number(out, 3, 4);
    const auto entry = [&out](std::uint16_t code, std::string text) {
        text += '\0';
        Number(out, code, 2);
        Number(out, text.size(), 2);
        out += text;
    };
    entry(2, first);
    entry(3, title);
    return out;
}

/// The directory: one chunk, which all that a guide needs fits into; empty where it doesn't.
std::string DirectoryChunk(const std::vector<Page>& pages) {
    std::string entries;
    std::vector<std::size_t> starts;
    for (const Page& page : pages) {
        starts.push_back(entries.size());
        Packed(entries, page.name.size());
        entries += page.name;
        Packed(entries, 0);
        Packed(entries, page.offset);
        Packed(entries, page.bytes.size());
    }
    std::string quick;
    for (std::size_t entry = kQuickStep; entry < starts.size(); entry += kQuickStep) {
        std::string place;
        Number(place, starts[entry], 2);
        quick.insert(0, place);
    }
    Number(quick, pages.size(), 2);
    if (kChunkHead + entries.size() + quick.size() > kChunkSize)
        return {};
    std::string chunk = "PMGL";
    Number(chunk, kChunkSize - kChunkHead - entries.size(), 4);
    Number(chunk, 0, 4);
    Number(chunk, kNone, 4);
    Number(chunk, kNone, 4);
    chunk += entries;
    chunk.resize(kChunkSize - quick.size());
    return chunk + quick;
}

std::string HelpFile(std::vector<Page> pages, const std::string& title) {
    constexpr const char* kFileGuid = "\x9E\x0C\x00\xA0\xC9\x22\xE6\xEC";
    const std::string first = pages.front().name.substr(1);
    pages.push_back({"/", "", 0});
    pages.push_back({"/#SYSTEM", SystemPage(first, title), 0});
    std::sort(pages.begin(), pages.end(), [](const Page& a, const Page& b) { return a.name < b.name; });
    std::string content;
    for (Page& page : pages) {
        page.offset = content.size();
        content += page.bytes;
    }
    const std::string chunk = DirectoryChunk(pages);
    if (chunk.empty())
        return {};

    constexpr std::uint64_t kHead = 0x60, kSizes = 0x18, kDirectoryHead = 0x54;
    const std::uint64_t contentPlace = kHead + kSizes + kDirectoryHead + kChunkSize;
    std::string out = "ITSF";
    for (const std::uint32_t value : {3U, static_cast<std::uint32_t>(kHead), 1U, 0U, kEnglish})
        Number(out, value, 4);
    Guid(out, 0x7C01FD10, 0x7BAA, 0x11D0, kFileGuid);
    Guid(out, 0x7C01FD11, 0x7BAA, 0x11D0, kFileGuid);
    for (const std::uint64_t value : {kHead, kSizes, kHead + kSizes, kDirectoryHead + kChunkSize, contentPlace})
        Number(out, value, 8);
    Number(out, 0x1FE, 4);
    Number(out, 0, 4);
    Number(out, contentPlace + content.size(), 8);
    Number(out, 0, 8);

    out += "ITSP";
    for (const std::uint32_t value :
         {1U, static_cast<std::uint32_t>(kDirectoryHead), 10U, static_cast<std::uint32_t>(kChunkSize), 2U, 1U, kNone,
          0U, 0U, kNone, 1U, kEnglish})
        Number(out, value, 4);
    Guid(out, 0x5D02926A, 0x212E, 0x11D0, "\x9D\xF9\x00\xA0\xC9\x22\xE6\xEC");
    for (const std::uint32_t value : {static_cast<std::uint32_t>(kDirectoryHead), kNone, kNone, kNone})
        Number(out, value, 4);
    return out + chunk + content;
}

std::string ReadFile(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream bytes;
    bytes << in.rdbuf();
    if (!in)
        throw std::runtime_error("can't read " + path.string());
    return bytes.str();
}

/// The pages of a guide and what they show.
class Guide {
public:
    explicit Guide(const std::vector<std::filesystem::path>& files) {
        for (const auto& file : files)
            names.insert(NameOf(file));
        for (const auto& file : files)
            pages.push_back({"/" + NameOf(file), file.extension() == ".md" ? Html(file) : ReadFile(file), 0});
        for (auto& [name, bytes] : pictures)
            pages.push_back({"/" + name, std::move(bytes), 0});
    }
    std::vector<Page> pages;

private:
    static constexpr unsigned kWidest = 620; ///< pixels of a picture that the help window shows whole

    static std::string NameOf(std::filesystem::path file) {
        if (file.extension() == ".md")
            file.replace_extension(".html");
        return file.filename().string();
    }

    std::string Html(const std::filesystem::path& file) {
        const std::string text = ReadFile(file);
        const tools::MarkdownTargets targets{
            [this](const std::string& link) { return Target(link); },
            [this, &file](const std::string& picture) { return Show(file.parent_path() / picture); }};
        return "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n<title>" +
               tools::titleOfMarkdown(text) + "</title>\n</head>\n<body>\n" + tools::htmlOfMarkdown(text, targets) +
               (NameOf(file) == kContents ? "" : "<p><a href=\"index.html\">Contents</a></p>\n") + "</body>\n</html>\n";
    }

    /// Only what is in the help file can be gone to.
    std::string Target(const std::string& link) const {
        const std::size_t sign = std::min(link.find('#'), link.size());
        if (sign == 0)
            return link;
        const std::string name = NameOf(link.substr(0, sign));
        return names.contains(name) ? name + link.substr(sign) : std::string();
    }

    std::string Show(const std::filesystem::path& picture) {
        const std::string name = "images/" + picture.filename().string();
        const std::string& bytes = pictures.try_emplace(name, ReadFile(picture)).first->second;
        unsigned width = 0; // big-endian, behind the mark and the head of the first chunk
        for (std::size_t place = 16; place < 20 && place < bytes.size(); ++place)
            width = width << 8 | static_cast<std::uint8_t>(bytes[place]);
        return "src=\"" + name + "\"" + (width > kWidest ? " width=\"" + std::to_string(kWidest) + "\"" : "");
    }

    static constexpr const char* kContents = "index.html";
    std::set<std::string> names;
    std::map<std::string, std::string> pictures;
};

} // namespace

int main(int count, char** arguments) try {
    if (count < 3) {
        std::fprintf(stderr, "usage: tessaro-help OUT PAGE...\n");
        return 2;
    }
    const std::string file = HelpFile(Guide({arguments + 2, arguments + count}).pages, "Tessaro");
    std::ofstream out(arguments[1], std::ios::binary | std::ios::trunc);
    if (file.empty() || !out.write(file.data(), static_cast<std::streamsize>(file.size())).flush())
        throw std::runtime_error(std::string("can't make ") + arguments[1]);
    return 0;
} catch (const std::exception& failure) {
    std::fprintf(stderr, "tessaro-help: %s\n", failure.what());
    return 1;
}
