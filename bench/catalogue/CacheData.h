#pragma once

#include <filesystem>
#include <functional>
#include <string>

/// What the cache files of a large catalogue hold.
namespace bench {

/// A folder of its own, on a memory disk where there is one, which `cachePath` lies in.
class CacheFolder {
public:
    CacheFolder();
    ~CacheFolder();
    CacheFolder(const CacheFolder&) = delete;
    CacheFolder& operator=(const CacheFolder&) = delete;
    std::filesystem::path path;
};

/// Fills `directories` with 200 folders of 500 Blocks, whose names have 20 characters and descriptions 30 on average.
void FillCatalogue();
void EmptyCatalogue();

/// The packed bytes of a container and the plain ones.
class Stream {
public:
    explicit Stream(const std::filesystem::path& container);
    /// The floors: zlib alone, with a buffer that is kept or a fresh one.
    void Uncompress();
    void UncompressFresh() const;
    void Compress() const;
    std::size_t PlainSize() const { return plain.size(); }

private:
    std::string packed, plain;
};

} // namespace bench
