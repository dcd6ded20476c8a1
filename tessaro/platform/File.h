#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <string>
#include <string_view>

namespace platform {

/// A failed file operation. Causes have the numbers that the log shows.
class FileException : public std::exception {
public:
    enum Cause {
        none = 0,
        genericException = 1,
        fileNotFound = 2,
        badPath = 3,
        tooManyOpenFiles = 4,
        accessDenied = 5,
        invalidFile = 6,
        removeCurrentDir = 7,
        directoryFull = 8,
        badSeek = 9,
        hardIO = 10,
        sharingViolation = 11,
        lockViolation = 12,
        diskFull = 13,
        endOfFile = 14,
    };
    FileException(Cause why, std::wstring file) : cause(why), path(std::move(file)) {}
    const char* what() const noexcept override { return "file exception"; }
    /// Words for the user, in the platform's manner, with the file's name.
    std::wstring ErrorText() const;

    const Cause cause;
    const std::wstring path;
};

/// A stream that can't be read or written as what it should be.
class ArchiveException : public std::exception {
public:
    enum Cause {
        none = 0,
        genericException = 1,
        readOnly = 2,
        endOfFile = 3,
        writeOnly = 4,
        badIndex = 5,
        badClass = 6,
        badSchema = 7,
    };
    ArchiveException(Cause why, std::wstring file) : cause(why), path(std::move(file)) {}
    const char* what() const noexcept override { return "archive exception"; }
    std::wstring ErrorText() const;

    const Cause cause;
    const std::wstring path;
};

/// The user was told already; nothing is left to say.
class UserException : public std::exception {
public:
    const char* what() const noexcept override { return "user exception"; }
};

/// A binary file. Operations that fail throw FileException; a short read is none.
class File {
public:
    enum Mode : unsigned {
        modeRead = 1,
        modeWrite = 2,
        modeReadWrite = 3,
        modeCreate = 4,
        modeNoTruncate = 8,
        shareExclusive = 16, ///< an advisory lock; a second such opening fails with sharingViolation
        modeAppend = 32,     ///< each Write goes to the end of the file in one step
    };
    File() = default;
    /// Opens or throws. A read-only file is refused for writing, also for root; what is no regular file is refused.
    /// With modeCreate a missing file is made (in an existing folder) and, without modeNoTruncate, an old one emptied.
    File(std::wstring_view path, unsigned mode);
    ~File();
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    /// False where it can't be opened.
    bool Open(std::wstring_view path, unsigned mode);
    /// Bytes read, fewer at the end of the file.
    std::size_t Read(void* buffer, std::size_t count);
    void Write(const void* buffer, std::size_t count);
    void Seek(std::uint64_t position);
    std::uint64_t SeekToEnd();
    std::uint64_t Position() const;
    std::uint64_t Length() const;
    void Close();
    /// Closes without reporting anything.
    void Abort() noexcept;
    bool IsOpen() const { return descriptor >= 0; }
    const std::wstring& Path() const { return name; }

private:
    int descriptor = -1;
    std::wstring name;
};

} // namespace platform
