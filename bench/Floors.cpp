#include "bench/Floors.h"

#include "bench/Harness.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <lodepng.h>
#include <strings.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace bench {
namespace {

std::uint32_t Number(const unsigned char* bytes) {
    std::uint32_t number = 0;
    std::memcpy(&number, bytes, sizeof number);
    return number;
}

} // namespace

void ReadBareDrawing(const std::string& path) {
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    std::array<unsigned char, 6> magic{};
    std::array<unsigned char, 4> address{};
    std::array<unsigned char, 5> head{};
    bool got = read(file, magic.data(), magic.size()) == 6 && pread(file, address.data(), 4, 13) == 4 &&
               pread(file, head.data(), 5, Number(address.data()) + 16) == 5;
    std::vector<unsigned char> entries(got ? std::size_t{head[4]} * 9 : 0), image;
    got = got && pread(file, entries.data(), entries.size(), Number(address.data()) + 21) ==
                     static_cast<ssize_t>(entries.size());
    bool png = false;
    for (std::size_t at = 0; got && at < entries.size(); at += 9)
        if (entries[at] == 2 || entries[at] == 6) {
            png |= entries[at] == 6;
            image.resize(Number(&entries[at + 5]) < (1U << 24) ? Number(&entries[at + 5]) : 0);
            if (pread(file, image.data(), image.size(), Number(&entries[at + 1])) < 0)
                image.clear();
        }
    close(file);
    if (!png)
        return;
    unsigned char* pixels = nullptr;
    unsigned width = 0, height = 0;
    lodepng_decode24(&pixels, &width, &height, image.data(), image.size());
    Keep(pixels);
    std::free(pixels);
}

std::uint64_t ListAndLook(const std::string& folder) {
    std::vector<std::string> names;
    DIR* const listing = opendir(folder.c_str());
    while (const dirent* entry = readdir(listing)) {
        const std::string name = entry->d_name;
        if (name.size() > 4 && strcasecmp(name.c_str() + name.size() - 4, ".dwg") == 0)
            names.push_back(name);
    }
    closedir(listing);
    std::sort(names.begin(), names.end(),
              [](const std::string& a, const std::string& b) { return strcasecmp(a.c_str(), b.c_str()) < 0; });
    std::uint64_t sum = 0;
    for (const std::string& name : names) {
        struct statx status {};
        statx(AT_FDCWD, (folder + '/' + name).c_str(), 0, STATX_BASIC_STATS | STATX_BTIME, &status);
        sum += status.stx_size + static_cast<std::uint64_t>(status.stx_mtime.tv_sec + status.stx_btime.tv_sec);
    }
    return sum;
}

} // namespace bench
