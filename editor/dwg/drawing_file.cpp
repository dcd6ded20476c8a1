#include "editor/dwg/drawing_file.h"

#include "editor/dwg/byte_cursor.h"

namespace dwg {

namespace {

constexpr std::uint64_t headLength = 0x15;

Result<ContainerPtr> openContainer(Release release, SourcePtr source, Findings& findings) {
    if (release <= Release::r2000)
        return openFlatContainer(std::move(source), findings);
    if (release == Release::r2007)
        return openContainer2007(std::move(source), findings);
    return openPagedContainer(std::move(source), findings);
}

// Magics of all releases begin "AC" or "MC" followed by digits, with a point in the oldest ones.
bool looksLikeMagic(std::string_view text) {
    if (text.substr(0, 2) != "AC" && text.substr(0, 2) != "MC")
        return false;
    return text.substr(2).find_first_not_of("0123456789.") == std::string_view::npos;
}

} // namespace

Result<std::string> readMagic(const Source& source) {
    auto bytes = source.bytes(0, 6);
    if (!bytes)
        return bytes.error();
    return std::string(bytes->begin(), bytes->end());
}

Result<DrawingFile> DrawingFile::open(SourcePtr source) {
    auto magic = readMagic(*source);
    if (!magic)
        return magic.error();
    const auto release = releaseOf(*magic);
    if (!release && looksLikeMagic(*magic))
        return Error{ErrorKind::unsupported, "drawings of release " + *magic + " aren't read", 0};
    if (!release)
        return Error{ErrorKind::notADrawing, "the file doesn't begin like a drawing", 0};

    auto head = source->bytes(0, headLength);
    if (!head)
        return head.error();

    DrawingFile file;
    file.fileRelease = *release;
    ByteCursor cursor(*head, 0x0B);
    file.fileMaintenance = cursor.u8();
    cursor.skip(1);
    file.fileImageAddress = cursor.u32();
    cursor.skip(2);
    file.fileCodePage = cursor.u16();
    file.bytes = source;
    auto container = openContainer(*release, std::move(source), file.met);
    if (!container)
        return container.error();
    file.container = std::move(*container);
    return file;
}

Result<DrawingFile> DrawingFile::open(const std::filesystem::path& file) {
    auto source = openSource(file);
    if (!source)
        return source.error();
    return open(std::move(*source));
}

Result<Bytes> DrawingFile::section(std::string_view name, Findings* findings) const {
    const auto size = container->size(name);
    if (!size)
        return size.error();
    return container->range(name, 0, *size, findings);
}

} // namespace dwg
