// Folders whose files did not change, and the names of a big one.

#include "bench/Floors.h"
#include "bench/Harness.h"
#include "bench/reading/Reading.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/Text.h"
#include "tessaro/reading/Loader.h"

#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr int kFolders = 20, kFilesOfFolder = 1000;

std::string NameOf(int number) {
    return "Block " + std::to_string(number * 7919 % 1000003) + ".dwg";
}

void MeasureRescan(bench::Table& table) {
    Reading reading;
    std::vector<std::string> folders;
    for (int folder = 0; folder < kFolders; ++folder) {
        folders.push_back(reading.Place() / ("Library of " + std::to_string(folder)));
        std::filesystem::create_directory(folders.back());
        for (int file = 0; file < kFilesOfFolder; ++file)
            close(open((folders.back() + '/' + NameOf(file)).c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0644));
        reading.Add(folders.back());
    }
    reading.ReadAll(false);
    table.Ratio("rescan of 20,000 unchanged files in 20 folders to a bare loop", 1.5,
                {[&] { reading.ReadAll(false); }, Reading::Invalidate}, {[&] {
                    std::uint64_t sum = 0;
                    for (const std::string& folder : folders)
                        sum += bench::ListAndLook(folder);
                    bench::Keep(sum);
                }});
}

/// A folder of `files` names, of which the catalogue knows nine tenths, and a tenth that is gone.
class BigFolder {
public:
    BigFolder(Reading& reading, int files) : count(files) {
        const std::filesystem::path folder = reading.Place() / ("big" + std::to_string(files));
        std::filesystem::create_directory(folder);
        for (int file = 0; file < count; ++file)
            close(open((folder / NameOf(file)).c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0644));
        directory = reading.Add(folder);
    }

    void Prepare() const {
        for (const Block* block : directory->blocks)
            delete block;
        directory->blocks.clear();
        for (int file = count / 10; file < count + count / 10; ++file) {
            auto* const block = new Block;
            const std::string name = NameOf(file);
            block->name = platform::FromNarrow(name.substr(0, name.size() - 4));
            directory->blocks.push_back(block);
        }
        directory->loaded = false;
    }
    bench::Run Scan() const {
        return {[this] { LoadDir(directory); }, [this] { Prepare(); }};
    }

private:
    const int count;
    Directory* directory = nullptr;
};

void MeasureNames(bench::Table& table) {
    Reading reading;
    const BigFolder large(reading, 50000), small(reading, 5000);
    // A pass that finds the dialog closed ends behind its scan.
    dialogOpen = false;
    table.Ratio("names found, removed and new of a folder of 50,000 to one of 5,000", 45, large.Scan(), small.Scan());
}

const bench::Rows rescan("rescan", MeasureRescan);
const bench::Rows names("names", MeasureNames);

} // namespace
