#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <span>
#include <string>
#include <type_traits>

namespace platform {
class File;
class SafeFile;
} // namespace platform

class ArchiveSource;

/// A stream of little-endian primitives that is packed with zlib as a whole on its way to a file, or stands there as it
/// is. Loading unpacks piece by piece, so that a stream is never whole in memory; storing holds it until Close.
///
/// One object serves one pass over one file, which outlives it. What can't be read as what it should be throws
/// ArchiveException, a failing file FileException. Allocations follow bytes that are there, whatever a length claims.
/// One thread at a time.
class CArchiveExt {
public:
    /// What a destructor does that finds the stream open.
    enum class OnDelete { close, drop };

    /// For loading. With `compress` (or a password) a file that begins with the container's marks is unpacked and any
    /// other read from its start as a plain stream; without, the file is a plain stream from its present position on.
    /// Where a password does not fit, a message is shown and UserException thrown.
    CArchiveExt(platform::File* file, const std::wstring& password, bool compress);
    /// For storing. The file is written by Close alone; committing it is its owner's.
    CArchiveExt(platform::SafeFile* file, const std::wstring& password, bool compress,
                OnDelete onDelete = OnDelete::close);
    /// A failing Close is logged.
    virtual ~CArchiveExt();
    /// Finishes the stream; nothing where that was done. The file is left, also by a Close that throws.
    virtual void Close();
    /// Drops the stream, writing nothing.
    virtual void Abort();
    /// Changes `length` 16-bit units by the password's, of which the buffer has that many; false, and nothing, without
    /// a password. Its own reverse.
    virtual bool XorBuffer(void* buffer, std::size_t length, const std::wstring& word);

    CArchiveExt(const CArchiveExt&) = delete;
    CArchiveExt& operator=(const CArchiveExt&) = delete;

    bool IsStoring() const { return storing; }
    /// Between construction and Close or Abort.
    bool HasFile() const { return realFile != nullptr || newFile != nullptr; }

    CArchiveExt& operator<<(std::int32_t value) { return Put(value); }
    CArchiveExt& operator<<(std::uint32_t value) { return Put(value); }
    CArchiveExt& operator<<(std::int64_t value) { return Put(value); }
    CArchiveExt& operator<<(std::uint64_t value) { return Put(value); }
    CArchiveExt& operator<<(double value) { return Put(value); }
    /// Always as wide text: UTF-16.
    CArchiveExt& operator<<(const std::wstring& text);

    CArchiveExt& operator>>(std::int32_t& value) { return Get(value); }
    CArchiveExt& operator>>(std::uint32_t& value) { return Get(value); }
    CArchiveExt& operator>>(std::int64_t& value) { return Get(value); }
    CArchiveExt& operator>>(std::uint64_t& value) { return Get(value); }
    CArchiveExt& operator>>(double& value) { return Get(value); }
    /// Wide text, or narrow text in the system code page.
    CArchiveExt& operator>>(std::wstring& text);

    /// Loading: that many bytes, which stay until the next call, or none where fewer are left. At most kMostTaken.
    std::span<const std::uint8_t> Take(std::size_t count);
    static constexpr std::size_t kMostTaken = std::size_t{1} << 18;
    /// Loading: no more than this is left; less may be.
    std::uint64_t AtMost() const;
    /// Loading: nothing is left.
    bool AtEnd() { return next == end && !Fill(1); }
    /// Loading: bytes of the plain stream that were read.
    std::uint64_t Position() const { return filled - static_cast<std::uint64_t>(end - next); }
    /// Storing: the plain stream so far, for those who append more than a primitive.
    std::string& PlainBytes();
    /// Name of the file, for messages.
    const std::wstring& Path() const { return path; }

private:
    static_assert(std::endian::native == std::endian::little, "primitives are copied as they are");

    template <typename Value> CArchiveExt& Put(Value value) {
        char bytes[sizeof value];
        std::memcpy(bytes, &value, sizeof value);
        PlainBytes().append(bytes, sizeof value);
        return *this;
    }
    template <typename Value> CArchiveExt& Get(Value& value) {
        std::memcpy(&value, Need(sizeof value), sizeof value);
        return *this;
    }
    template <typename Value> Value Next() {
        Value value;
        Get(value);
        return value;
    }
    /// The next bytes, which are passed over; throws where they are not there.
    const std::uint8_t* Need(std::size_t count) {
        if (static_cast<std::size_t>(end - next) < count && !Fill(count))
            EndsEarly();
        next += count;
        return next - count;
    }
    bool Fill(std::size_t count);
    [[noreturn]] void EndsEarly() const;

    void OpenContainer();
    std::unique_ptr<ArchiveSource> OpenProtected(std::uint32_t checksum);
    void WriteContainer();
    void WriteLength(std::uint64_t units);
    struct TextLength {
        bool wide = false;
        std::uint64_t length = 0;
    };
    TextLength ReadLength();
    std::wstring ReadWide(std::uint64_t units);
    std::wstring ReadNarrow(std::uint64_t bytes);

    const bool storing;
    const OnDelete onDelete = OnDelete::drop;
    const std::wstring password;
    const bool compressed;
    const std::wstring path;
    platform::File* realFile = nullptr;     ///< read from
    platform::SafeFile* newFile = nullptr;  ///< written to
    std::string memoryFile;                 ///< storing: the plain stream
    std::unique_ptr<ArchiveSource> source;  ///< loading: the plain stream
    std::unique_ptr<std::uint8_t[]> window; ///< loading: its bytes from `next` to `end` were not read yet
    const std::uint8_t* next = nullptr;
    const std::uint8_t* end = nullptr;
    std::uint64_t filled = 0; ///< bytes that have come out of `source`
};
