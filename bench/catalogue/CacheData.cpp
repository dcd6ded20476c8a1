#include "bench/catalogue/CacheData.h"

#include "bench/Harness.h"
#include "tessaro/catalogue/Directory.h"
#include "tessaro/catalogue/Settings.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/Text.h"

#include <zlib.h>

#include <cstdint>
#include <fstream>
#include <iterator>
#include <memory>
#include <random>
#include <stdexcept>
#include <stdlib.h>

namespace bench {
namespace {

constexpr int kDirectories = 200, kBlocks = 500;

/// Words of a parts list up to about that many characters.
std::wstring Words(std::mt19937& random, std::size_t length) {
    static const wchar_t* const words[] = {L"door",   L"window", L"pump",  L"valve",  L"flange", L"DN",     L"left",
                                           L"right",  L"oak",    L"steel", L"glazed", L"double", L"single", L"frame",
                                           L"hinged", L"90 cm",  L"120",   L"mm",     L"wall",   L"type"};
    std::wstring text;
    while (text.size() < length) {
        text += words[random() % std::size(words)];
        text += random() % 3 == 0 ? std::to_wstring(random() % 1000) : L" ";
    }
    text.resize(length);
    return text;
}

std::string ReadAll(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

void Inflate(const std::string& packed, Bytef* to, std::size_t size) {
    uLongf length = size;
    if (uncompress(to, &length, reinterpret_cast<const Bytef*>(packed.data()), packed.size()) != Z_OK || length != size)
        throw std::runtime_error("the stream is damaged");
}

} // namespace

CacheFolder::CacheFolder() {
    const std::filesystem::path memory = "/dev/shm";
    std::string pattern = (std::filesystem::is_directory(memory) ? memory : std::filesystem::temp_directory_path()) /
                          "tessaro-bench-XXXXXX";
    if (mkdtemp(pattern.data()) == nullptr)
        throw std::runtime_error("no temporary folder");
    path = pattern;
    iniPath = platform::FromNarrow((path / "tessaro35.ini").native());
    cachePath = platform::FromNarrow((path / "tessaro35.cache").native());
}

CacheFolder::~CacheFolder() {
    std::filesystem::remove_all(path);
}

void FillCatalogue() {
    EmptyCatalogue();
    std::mt19937 random(35);
    for (int number = 1; number <= kDirectories; ++number) {
        auto* const directory = new Directory;
        directory->path = platform::Format(L"/srv/library/Blocks of department %d", number);
        directory->description = platform::Format(L"Department %d", number);
        directory->cacheFile = CacheFileName(number);
        for (int i = 0; i < kBlocks; ++i) {
            auto* const block = new Block;
            block->name = Words(random, 14 + random() % 13);
            block->description = Words(random, 20 + random() % 21);
            const auto written = static_cast<platform::Time>(1600000000 + random() % 100000000);
            block->cachedStatus = {20000 + random() % 500000, written - 1000, written};
            block->created = written - 5000000;
            block->modified = written;
            block->imageIndex = i + 1;
            block->fileType = 16 + static_cast<std::int32_t>(random() % 6);
            directory->blocks.push_back(block);
        }
        directories.push_back(directory);
    }
}

void EmptyCatalogue() {
    for (const Directory* directory : directories)
        delete directory;
    directories.clear();
}

Stream::Stream(const std::filesystem::path& container) {
    constexpr std::size_t head = 16;
    const std::string bytes = ReadAll(container);
    std::uint32_t length = 0;
    for (std::size_t i = 0; i < 4; ++i)
        length |= static_cast<std::uint32_t>(static_cast<unsigned char>(bytes.at(8 + i))) << (8 * i);
    packed = bytes.substr(head);
    plain.resize(length);
    Uncompress();
}

void Stream::Uncompress() {
    Inflate(packed, reinterpret_cast<Bytef*>(plain.data()), plain.size());
}

void Stream::UncompressFresh() const {
    const auto fresh = std::make_unique_for_overwrite<Bytef[]>(plain.size());
    Inflate(packed, fresh.get(), plain.size());
    Keep(fresh[0]);
}

void Stream::Compress() const {
    const auto to = std::make_unique_for_overwrite<Bytef[]>(compressBound(plain.size()));
    uLongf length = compressBound(plain.size());
    compress(to.get(), &length, reinterpret_cast<const Bytef*>(plain.data()), plain.size());
    Keep(length);
}

} // namespace bench
