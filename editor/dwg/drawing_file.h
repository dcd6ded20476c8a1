#pragma once

#include "editor/dwg/container.h"
#include "editor/dwg/section_names.h"

namespace dwg {

/// A drawing opened for reading at section level: release, file header, and sections by name. Opening reads the file
/// header and, from 2004 on, the maps of pages and sections, nothing else. Copies share the open file; several
/// threads may read from one object.
class DrawingFile {
public:
    /// `notADrawing` for an unknown magic, `truncated`/`damaged` for maps that can't be followed.
    static Result<DrawingFile> open(SourcePtr source);
    static Result<DrawingFile> open(const std::filesystem::path& file);

    Release release() const { return fileRelease; }
    /// Maintenance number of the release that saved the file (byte 0x0B).
    std::uint8_t maintenance() const { return fileMaintenance; }
    /// The number of the code page of narrow text as drawings count them: 28 is Windows-1250, 29 is 1251, 30 is 1252
    /// ...
    std::uint16_t codePage() const { return fileCodePage; }
    /// File offset of the image section; 0 where there is none.
    std::uint32_t imageAddress() const { return fileImageAddress; }
    const Source& source() const { return *bytes; }
    const SourcePtr& sourcePtr() const { return bytes; }
    /// Damage met while opening.
    const Findings& findings() const { return met; }

    std::vector<std::string> sections() const { return container->names(); }
    bool has(std::string_view name) const { return container->has(name); }
    Result<std::uint64_t> sectionSize(std::string_view name) const { return container->size(name); }
    /// A whole section, unpacked. In a flat file section::objects is the whole file.
    Result<Bytes> section(std::string_view name, Findings* findings = nullptr) const;
    /// A part of a section; only the pages that it touches are read and unpacked.
    Result<Bytes> sectionRange(std::string_view name, std::uint64_t offset, std::uint64_t count,
                               Findings* findings = nullptr) const {
        return container->range(name, offset, count, findings);
    }

private:
    DrawingFile() = default;

    Release fileRelease = Release::r2000;
    std::uint8_t fileMaintenance = 0;
    std::uint16_t fileCodePage = 0;
    std::uint32_t fileImageAddress = 0;
    SourcePtr bytes;
    ContainerPtr container;
    Findings met;
};

/// The magic of a file: its first six bytes as text, `truncated` for a shorter file.
Result<std::string> readMagic(const Source& source);

} // namespace dwg
