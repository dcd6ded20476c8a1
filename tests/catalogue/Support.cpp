#include "tests/catalogue/Support.h"

#include "tessaro/catalogue/Directory.h"
#include "tessaro/catalogue/IniStore.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/mapping/MapScheme.h"
#include "tessaro/platform/Text.h"
#include "tests/support/TemporaryFolder.h"

#include <stdexcept>

namespace catalogue_tests {
namespace {

void Reset() {
    for (Directory* directory : directories)
        delete directory;
    directories.clear();
    DeleteSchemes();
    ForgetIniFile(iniPath);
    iniPath.clear();
    cachePath.clear();
    columnWidths = {};
    dirColumnWidths = {};
    blockInsert = readDirEveryTime = overlayXRef = demandLoadCache = onlyCacheCurrent = delCacheMemoryOnClose =
        backupIni = printType = 0;
    printScale = 4;
    useCompression = 1;
    theBlockDlg = nullptr;
    currentDirectory = nullptr;
    moduleFolder.clear();
}

std::uint32_t Number(const std::string& bytes, std::size_t at) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < 4; ++i)
        value |= static_cast<std::uint32_t>(static_cast<unsigned char>(bytes.at(at + i))) << (8 * i);
    return value;
}

} // namespace

std::wstring Wide(const std::filesystem::path& path) {
    return platform::FromNarrow(path.native());
}

std::span<const std::uint8_t> Bytes(const std::string& text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

Picture ReadBitmap(const std::filesystem::path& file) {
    const std::string bytes = tests::readFile(file);
    if (bytes.size() < 54)
        throw std::runtime_error("no bitmap: " + file.string());
    Picture picture(static_cast<int>(Number(bytes, 18)), -static_cast<int>(Number(bytes, 22)));
    std::size_t at = Number(bytes, 10);
    for (std::size_t i = 0; i < picture.pixels.size(); i += 3, at += 4) {
        picture.pixels[i] = static_cast<std::uint8_t>(bytes.at(at + 2));
        picture.pixels[i + 1] = static_cast<std::uint8_t>(bytes.at(at + 1));
        picture.pixels[i + 2] = static_cast<std::uint8_t>(bytes.at(at));
    }
    return picture;
}

std::filesystem::path DataFile(const std::string& name) {
    return std::filesystem::path(TESSARO_SOURCE_DIR) / "tests/catalogue/data" / name;
}

CleanState::CleanState() {
    Reset();
}

CleanState::~CleanState() {
    Reset();
}

} // namespace catalogue_tests
