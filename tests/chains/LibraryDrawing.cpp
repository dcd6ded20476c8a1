#include "tests/chains/LibraryDrawing.h"

#include "tests/support/TemporaryFolder.h"

#include "editor/application/drawing.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <gtest/gtest.h>
#include <ostream>

namespace tests {

void PrintTo(const LibraryDrawing& drawing, std::ostream* out) {
    *out << drawing.library << "/" << drawing.name;
}

std::string TestName(const LibraryDrawing& drawing) {
    std::string name = drawing.name;
    for (char& letter : name)
        if (std::isalnum(static_cast<unsigned char>(letter)) == 0)
            letter = '_';
    return name;
}

std::filesystem::path fileOf(const LibraryDrawing& drawing, const std::filesystem::path& place) {
    if (std::string(drawing.library) != "samples") {
        const std::filesystem::path shared = sharedFolder(drawing.library);
        return shared.empty() ? shared : shared / (std::string(drawing.name) + ".dwg");
    }
    const std::filesystem::path root = place / "samples";
    std::filesystem::create_directory(root);
    const std::string command = TESSARO_BIN_DIR "/tessaro-samples '" + root.string() + "' >/dev/null";
    EXPECT_EQ(std::system(command.c_str()), 0);
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(root / drawing.name))
        if (entry.path().extension() == ".dwg")
            files.push_back(entry.path());
    EXPECT_FALSE(files.empty());
    return files.empty() ? std::filesystem::path() : *std::ranges::min_element(files);
}

std::vector<Piece> piecesIn(const std::filesystem::path& file) {
    std::vector<Piece> pieces;
    AcDbDatabase drawing(false);
    EXPECT_EQ(drawing.readDwgFile(file.wstring().c_str()), eOk) << file;
    for (const AcDbObjectId id : editor::modelSpaceEntities(drawing)) {
        AcDbEntity* entity = nullptr;
        EXPECT_EQ(acdbOpenObject(entity, id, AcDb::kForRead), eOk);
        pieces.emplace_back(entity->isA()->name(), entity->layer());
        entity->close();
    }
    EXPECT_FALSE(pieces.empty()) << file;
    return pieces;
}

std::vector<Piece> exploded(std::vector<Piece> pieces) {
    std::erase_if(pieces, [](const Piece& piece) { return piece.first == L"AcDbAttributeDefinition"; });
    return pieces;
}

} // namespace tests
