#include "tessaro/catalogue/ArchiveSource.h"

#include "tessaro/platform/File.h"

#include <zlib.h>

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

namespace {

/// The most that a byte of a zlib stream can inflate to.
constexpr std::uint64_t kMostInflation = 1032;
constexpr std::size_t kPackedBuffer = std::size_t{1} << 16;
constexpr std::size_t kMostInflatedAtOnce = std::size_t{1} << 30;

class FileSource : public ArchiveSource {
public:
    explicit FileSource(platform::File& read) : file(read) {
        const std::uint64_t length = file.Length(), position = file.Position();
        left = length > position ? length - position : 0;
    }
    std::size_t Read(std::uint8_t* to, std::size_t count) override {
        const std::size_t done = file.Read(to, count);
        left -= std::min<std::uint64_t>(left, done);
        return done;
    }
    std::uint64_t AtMost() const override { return left; }

private:
    platform::File& file;
    std::uint64_t left = 0;
};

class ByteSourceOfMemory : public ArchiveSource {
public:
    explicit ByteSourceOfMemory(std::vector<std::uint8_t> held) : bytes(std::move(held)) {}
    std::size_t Read(std::uint8_t* to, std::size_t count) override {
        count = std::min(count, bytes.size() - at);
        if (count > 0)
            std::memcpy(to, bytes.data() + at, count);
        at += count;
        return count;
    }
    std::uint64_t AtMost() const override { return bytes.size() - at; }

private:
    const std::vector<std::uint8_t> bytes;
    std::size_t at = 0;
};

class Inflating : public ArchiveSource {
public:
    Inflating(std::unique_ptr<ArchiveSource> source, std::uint64_t plainLength) : packed(std::move(source)) {
        const std::uint64_t bytes = packed->AtMost();
        left = bytes > plainLength / kMostInflation ? plainLength : bytes * kMostInflation;
        if (inflateInit(&stream) != Z_OK)
            throw std::bad_alloc();
    }
    ~Inflating() override { inflateEnd(&stream); }
    Inflating(const Inflating&) = delete;
    Inflating& operator=(const Inflating&) = delete;

    std::size_t Read(std::uint8_t* to, std::size_t count) override {
        count = static_cast<std::size_t>(std::min<std::uint64_t>({count, left, kMostInflatedAtOnce}));
        stream.next_out = to;
        stream.avail_out = static_cast<uInt>(count);
        while (!ended && stream.avail_out > 0) {
            if (stream.avail_in == 0)
                Refill();
            const int result = inflate(&stream, Z_NO_FLUSH);
            if (result == Z_MEM_ERROR)
                throw std::bad_alloc();
            // What else went wrong does not matter: what came out by then counts.
            ended = result != Z_OK;
        }
        const std::size_t done = count - stream.avail_out;
        left = ended ? 0 : left - done;
        return done;
    }
    std::uint64_t AtMost() const override { return left; }

private:
    void Refill() {
        stream.next_in = buffer.data();
        stream.avail_in = static_cast<uInt>(packed->Read(buffer.data(), buffer.size()));
    }

    const std::unique_ptr<ArchiveSource> packed;
    std::vector<std::uint8_t> buffer = std::vector<std::uint8_t>(kPackedBuffer);
    z_stream stream{};
    std::uint64_t left = 0;
    bool ended = false;
};

} // namespace

std::unique_ptr<ArchiveSource> SourceOfFile(platform::File& file) {
    return std::make_unique<FileSource>(file);
}

std::unique_ptr<ArchiveSource> SourceOfBytes(std::vector<std::uint8_t> bytes) {
    return std::make_unique<ByteSourceOfMemory>(std::move(bytes));
}

std::unique_ptr<ArchiveSource> InflatedSource(std::unique_ptr<ArchiveSource> packed, std::uint64_t plainLength) {
    return std::make_unique<Inflating>(std::move(packed), plainLength);
}
