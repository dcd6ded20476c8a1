// A settings file, from its bytes to the options, directories and schemes that it tells of, and written again.

#include "fuzz/FuzzFolder.h"
#include "tessaro/catalogue/Directory.h"
#include "tessaro/catalogue/DirectorySection.h"
#include "tessaro/catalogue/IniStore.h"
#include "tessaro/catalogue/OptionsSection.h"
#include "tessaro/catalogue/SchemeSection.h"
#include "tessaro/mapping/MapScheme.h"
#include "tessaro/platform/Text.h"

#include <cstdlib>
#include <fstream>
#include <iterator>

namespace {

std::string Bytes(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

void Rewrite(const std::wstring& file) {
    if (!ReadIniFile(file) || !WriteIniFile(file, false))
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::filesystem::path path = FuzzFolder::Path() / "settings.ini";
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    const std::wstring file = platform::FromNarrow(path.native());
    if (!ReadIniFile(file))
        std::abort();

    ReadOptions(file);
    ReadColumnWidths(file);
    std::vector<DirectorySettings> list;
    for (const std::wstring& folder : ReadPaths(file)) {
        Directory directory;
        directory.path = folder;
        ReadDirectoryDescription(directory, file);
        ReadDirectorySection(directory, file);
        list.push_back(directory);
    }
    std::vector<NamedScheme> named;
    for (const std::wstring& name : ReadSchemeNames(file))
        named.emplace_back(name, *ReadSchemeSection(name, file));

    // A second writing of what was read changes nothing any more.
    Rewrite(file);
    Rewrite(file);
    const std::string second = Bytes(path);
    Rewrite(file);
    if (Bytes(path) != second)
        std::abort();

    ForgetIniFile(file);
    WriteOptions(CurrentOptions(), file);
    WritePaths(list, file);
    for (const DirectorySettings& settings : list)
        WriteDirectorySection(settings, file);
    WriteSchemes(named, file);
    if (!WriteIniFile(file, false))
        std::abort();
    ForgetIniFile(file);
    return 0;
}
