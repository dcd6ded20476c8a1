// Settings files of 5,000 and of 500 directories: what is done for each must not look at all the others.

#include "tessaro/catalogue/Settings.h"
#include "bench/Harness.h"
#include "tessaro/catalogue/Directory.h"
#include "tessaro/catalogue/IniStore.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/mapping/MapScheme.h"
#include "tessaro/platform/Text.h"

#include <filesystem>
#include <stdexcept>
#include <stdlib.h>

namespace {

constexpr double kBound = 30;
constexpr int kMany = 5000, kFew = 500;

class Folder {
public:
    Folder() {
        std::string pattern = std::filesystem::temp_directory_path() / "tessaro-bench-XXXXXX";
        if (mkdtemp(pattern.data()) == nullptr)
            throw std::runtime_error("no temporary folder");
        path = pattern;
    }
    ~Folder() { std::filesystem::remove_all(path); }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    std::filesystem::path path;
};

void Empty() {
    for (const Directory* directory : directories)
        delete directory;
    directories.clear();
    DeleteSchemes();
}

void Fill(int count) {
    Empty();
    for (int number = 1; number <= count; ++number) {
        auto* const directory = new Directory;
        directory->path = platform::Format(L"/srv/library/Blocks of department %d", number);
        directory->description = platform::Format(L"Department %d", number);
        directory->cacheFile = CacheFileName(number);
        directories.push_back(directory);
    }
}

void Use(const Folder& folder, int count) {
    iniPath = platform::FromNarrow((folder.path / ("with" + std::to_string(count) + ".ini")).native());
    cachePath = platform::FromNarrow((folder.path / "tessaro35.cache").native());
}

void Measure(bench::Table& table) {
    const Folder folder;
    for (const int count : {kFew, kMany}) {
        Use(folder, count);
        Fill(count);
        SaveIni(false);
    }
    const auto load = [&](int count) {
        return bench::Run{[] { LoadIni(); },
                          [&folder, count] {
                              Empty();
                              Use(folder, count);
                              ForgetIniFile(iniPath);
                          }};
    };
    const auto save = [&](int count) {
        return bench::Run{[] { SaveIni(false); },
                          [&folder, count] {
                              Use(folder, count);
                              Fill(count);
                              ForgetIniFile(iniPath);
                          }};
    };
    table.Ratio("LoadIni of 5,000 directories to 500", kBound, load(kMany), load(kFew));
    table.Ratio("SaveIni of 5,000 directories to 500", kBound, save(kMany), save(kFew));
    Empty();
}

const bench::Rows rows("settings", Measure);

} // namespace
