// Prints a cache file as text: a main cache with its records, or a picture file with its slots.
//
//   cache-dump FILE [--ini FILE]
//
// With --ini it is told whether the main cache speaks for that settings file. Of a damaged file all is printed that
// stands ahead of the damage, then where that is; the exit status is 1.

#include "tools/cache_dump_print.h"

#include "tessaro/catalogue/ArchiveSource.h"
#include "tessaro/catalogue/ArchivedBytes.h"
#include "tessaro/catalogue/CArchiveExt.h"
#include "tessaro/catalogue/ContainerHead.h"
#include "tessaro/platform/File.h"
#include "tessaro/platform/Paths.h"
#include "tessaro/platform/Text.h"

#include <zlib.h>

#include <array>
#include <cstdio>
#include <exception>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace {

using tools::dated;
using tools::quoted;

constexpr const char* kUsage = "usage: cache-dump FILE [--ini FILE]";

struct Options {
    std::wstring file;
    std::optional<std::wstring> ini;
    bool help = false;
};

Options parseOptions(int argc, char** argv) {
    Options options;
    for (int i = 1; i < argc; ++i) {
        const std::string_view argument = argv[i];
        if (argument == "--help" || argument == "-h")
            options.help = true;
        else if (argument == "--ini" && i + 1 < argc)
            options.ini = platform::FromNarrow(argv[++i]);
        else if (argument.starts_with("--") || !options.file.empty())
            throw std::invalid_argument("unknown argument: " + std::string(argument));
        else
            options.file = platform::FromNarrow(argument);
    }
    if (options.file.empty() && !options.help)
        throw std::invalid_argument(kUsage);
    return options;
}

/// Bytes that come out of a source, and their checksum.
struct Counted {
    std::uint64_t bytes = 0;
    std::uint32_t checksum = 1;
};

Counted count(ArchiveSource& source) {
    Counted counted;
    std::vector<std::uint8_t> buffer(std::size_t{1} << 16);
    uLong sum = adler32(0, nullptr, 0);
    for (std::size_t read = buffer.size(); read == buffer.size();) {
        read = source.Read(buffer.data(), buffer.size());
        counted.bytes += read;
        sum = adler32(sum, buffer.data(), static_cast<uInt>(read));
    }
    counted.checksum = static_cast<std::uint32_t>(sum);
    return counted;
}

/// Tells of the container; false where its packed stream is damaged.
bool printContainer(const std::wstring& path, tools::LinePrinter& out) {
    platform::File file(path, platform::File::modeRead);
    out.line("file " + quoted(path) + ", " + std::to_string(file.Length()) + " bytes");
    std::array<std::uint8_t, ContainerHead::kSize> bytes{};
    const std::size_t read = file.Read(bytes.data(), bytes.size());
    const auto head = ContainerHead::Parse(std::span(bytes).first(read));
    if (!head) {
        out.line("no container: a plain stream");
        return true;
    }
    const Counted packed = count(*SourceOfFile(file));
    out.line(
        "container of kind " + std::to_string(head->kind) + ", " + std::to_string(packed.bytes) + " packed bytes, " +
        std::to_string(head->plainLength) + " plain bytes, checksum " + tools::hexadecimal(head->checksum) +
        (packed.checksum == head->checksum ? "" : ", which is not theirs: " + tools::hexadecimal(packed.checksum)));
    file.Seek(ContainerHead::kSize);
    const Counted plain = count(*InflatedSource(SourceOfFile(file), head->plainLength));
    if (plain.bytes == head->plainLength)
        return true;
    out.line("damaged: the packed stream breaks off behind " + std::to_string(plain.bytes) + " plain bytes");
    return false;
}

/// A value of the stream.
template <typename Value> Value next(CArchiveExt& archive) {
    Value value{};
    archive >> value;
    return value;
}

/// Fields in the order of the stream, each printed as it is read.
class FieldPrinter {
public:
    FieldPrinter(CArchiveExt& read, tools::LinePrinter& written) : archive(read), out(written) {}

    void number(const std::string& name) { show(name, std::to_string(next<std::int32_t>(archive))); }
    void size(const std::string& name) {
        const auto value = next<std::uint64_t>(archive);
        show(name, value == ~std::uint64_t{0} ? "none" : std::to_string(value));
    }
    void real(const std::string& name) {
        show(name, platform::ToNarrow(platform::Format(L"%g", next<double>(archive))));
    }
    void time(const std::string& name) { show(name, dated(next<std::int64_t>(archive))); }
    void text(const std::string& name) { show(name, quoted(next<std::wstring>(archive))); }

private:
    void show(const std::string& name, const std::string& value) { out.add(name.empty() ? value : name + " " + value); }

    CArchiveExt& archive;
    tools::LinePrinter& out;
};

void printBlock(CArchiveExt& archive, tools::LinePrinter& out, std::uint32_t number) {
    FieldPrinter fields(archive, out);
    out.add("  block " + std::to_string(number));
    fields.text("");
    fields.text("");
    fields.number("mark");
    fields.time("file created");
    fields.time("written");
    fields.size("size");
    fields.time("shown as created");
    fields.time("modified");
    fields.number("slot");
    fields.number("type");
    out.end();
}

void printDirectory(CArchiveExt& archive, tools::LinePrinter& out, std::uint32_t number) {
    FieldPrinter fields(archive, out);
    out.line("directory " + std::to_string(number) + " at byte " + std::to_string(archive.Position()));
    for (const char* name : {" scale", "rotation", "sort"})
        fields.number(name);
    fields.real("angle");
    for (const char* name : {"explode", "multiple insert", "repeat", "use cache", "insertion points"})
        fields.number(name);
    out.end();
    fields.text(" path");
    fields.text("description");
    out.end();
    for (const char* name : {" top", "selected", "view"})
        fields.number(name);
    fields.text("scheme");
    fields.number("large pictures");
    out.end();
    fields.text(" cache file");
    const auto blocks = next<std::uint32_t>(archive);
    out.add("blocks " + std::to_string(blocks)).end();
    for (std::uint32_t block = 1; block <= blocks && block != 0; ++block)
        printBlock(archive, out, block);
}

void printStamp(platform::Time stamp, const std::optional<std::wstring>& ini, tools::LinePrinter& out) {
    out.line("stamp " + dated(stamp));
    if (!ini)
        return;
    const auto status = platform::GetFileStatus(*ini);
    if (!status)
        out.line("the settings file is missing: the catalogue will be emptied");
    else if (status->modified != stamp)
        out.line("the settings file was written at " + dated(status->modified) + ": its paths count");
    else if (status->readOnly)
        out.line("the settings file was written then, but is read-only: its paths count");
    else
        out.line("the settings file was written then: the cache speaks for it");
}

void printRecords(CArchiveExt& archive, const Options& options, tools::LinePrinter& out) {
    out.line("main cache");
    printStamp(next<std::int64_t>(archive), options.ini, out);
    FieldPrinter fields(archive, out);
    out.add("column widths");
    for (int column = 0; column < 6; ++column)
        fields.number("");
    out.end();
    const auto directories = next<std::uint32_t>(archive);
    out.line("directories " + std::to_string(directories));
    for (std::uint32_t number = 1; number <= directories && number != 0; ++number)
        printDirectory(archive, out, number);
}

void printList(const ImageList& list, tools::LinePrinter& out) {
    out.line("picture list of " + std::to_string(list.Width()) + " by " + std::to_string(list.Height()) + " pixels, " +
             std::to_string(list.Count()) + " slots");
    for (int slot = 0; slot < list.Count(); ++slot) {
        const Picture picture = list.Draw(slot);
        std::set<std::uint32_t> colours;
        for (std::size_t i = 0; i + 2 < picture.pixels.size(); i += 3)
            colours.insert(static_cast<std::uint32_t>(picture.pixels[i] << 16 | picture.pixels[i + 1] << 8 |
                                                      picture.pixels[i + 2]));
        const auto sum = static_cast<std::uint32_t>(adler32_z(1, picture.pixels.data(), picture.pixels.size()));
        out.line("  slot " + std::to_string(slot) + "  colours " + std::to_string(colours.size()) + "  checksum " +
                 tools::hexadecimal(sum));
    }
}

void printPictures(CArchiveExt& archive, tools::LinePrinter& out) {
    out.line("picture file");
    ArchivedBytes bytes(archive);
    do {
        out.line("at byte " + std::to_string(archive.Position()));
        const auto list = ImageList::Read(bytes);
        if (list == nullptr)
            throw platform::ArchiveException(platform::ArchiveException::genericException, archive.Path());
        printList(*list, out);
    } while (!archive.AtEnd());
}

bool holdsPictures(const std::wstring& path) {
    platform::File file(path, platform::File::modeRead);
    CArchiveExt archive(&file, L"", true);
    const auto head = archive.Take(4);
    return head.size() == 4 && head[0] == 'I' && head[1] == 'L' && head[2] == 1 && head[3] == 1;
}

/// False where the file is damaged.
bool print(const Options& options) {
    tools::LinePrinter out;
    bool whole = printContainer(options.file, out);
    const bool pictures = holdsPictures(options.file);
    platform::File file(options.file, platform::File::modeRead);
    CArchiveExt archive(&file, L"", true);
    try {
        if (pictures)
            printPictures(archive, out);
        else
            printRecords(archive, options, out);
        if (!archive.AtEnd())
            out.line("more bytes follow from byte " + std::to_string(archive.Position()) + " on");
    } catch (const platform::ArchiveException&) {
        out.end();
        out.line("damaged: nothing of that kind can be read at byte " + std::to_string(archive.Position()) +
                 " of the plain stream");
        whole = false;
    }
    return whole;
}

} // namespace

int main(int argc, char** argv) {
    try {
        const Options options = parseOptions(argc, argv);
        if (options.help) {
            std::puts(kUsage);
            return 0;
        }
        return print(options) ? 0 : 1;
    } catch (const platform::FileException& exception) {
        std::fprintf(stderr, "cache-dump: %s\n", platform::ToNarrow(exception.ErrorText()).c_str());
    } catch (const platform::UserException&) {
        std::puts("damaged, or protected by a password: the checksum does not fit the bytes");
    } catch (const std::exception& exception) {
        std::fprintf(stderr, "cache-dump: %s\n", exception.what());
    }
    return 1;
}
