#pragma once

#include "tessaro/platform/Text.h"
#include "tessaro/reading/DrawingType.h"
#include "tessaro/reading/Examine.h"
#include "tessaro/reading/PreviewSection.h"

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

namespace bench {

/// One drawing as the parts of an examination take it.
struct Subject {
    std::wstring path;
    std::string native;
    std::int32_t fileType = 0;
    bool isPng = false;
    std::optional<PreviewBytes> preview;
    MarkPoints points;
};

/// Reads the drawing's type and picture; its points stay empty.
inline Subject Examined(const std::filesystem::path& file) {
    Subject subject;
    subject.native = file.native();
    subject.path = platform::FromNarrow(subject.native);
    platform::File drawing(subject.path, platform::File::modeRead);
    std::array<std::uint8_t, kMagicSize> magic{};
    drawing.Read(magic.data(), magic.size());
    subject.fileType = DrawingType(magic);
    if (subject.fileType >= 14) {
        const PreviewSection section = ReadPreviewSection(drawing);
        subject.isPng = section.isPng;
        subject.preview = ReadSectionImage(drawing, section);
    }
    return subject;
}

} // namespace bench
