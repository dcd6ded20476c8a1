#pragma once

#include "tessaro/platform/File.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace platform {

/// A file that takes the place of another in one step, so that a process that dies at any moment leaves the whole old
/// file or the whole new one. What is written goes into a new file beside the target ("x.ini.saving" for "x.ini"),
/// Commit renames that over the target. Rights, owner and group of the old file are kept; of a symbolic link the file
/// it leads to is replaced, the link stays. Where the folder allows no new file, or the owner could not be kept, the
/// bytes are held in memory and Commit writes them in place.
///
/// Without Commit (destructor, Abort, a new Open) the old file stays as it is. What a killed process left beside the
/// target is taken away by the next save. One thread at a time; two processes may save the same file at once, the later
/// Commit stays.
class SafeFile {
public:
    enum class Flush {
        no, ///< whole after the death of the process
        yes ///< also after a loss of power
    };

    SafeFile() = default;
    /// Opens or throws FileException. The same is refused as by a File with modeCreate and modeWrite: a read-only file,
    /// what is no regular file, a missing folder. `mode` is 0 or File::shareExclusive: the old file is then held by an
    /// advisory lock until Commit, and one that another holds is a sharingViolation.
    explicit SafeFile(std::wstring_view path, unsigned mode = 0);
    ~SafeFile();
    SafeFile(const SafeFile&) = delete;
    SafeFile& operator=(const SafeFile&) = delete;

    /// False where it can't be opened.
    bool Open(std::wstring_view path, unsigned mode = 0);
    /// Appends; throws FileException, for instance on a full disk.
    void Write(const void* buffer, std::size_t count);
    /// The new file becomes the target and is closed. Throws FileException; the old file then stays, except where a
    /// write in place broke off.
    void Commit(Flush flush = Flush::no);
    /// Discards what was written and closes.
    void Abort() noexcept;
    bool IsOpen() const { return open; }
    /// True while a new file stands beside the target, false where Commit is going to write in place.
    bool IsBeside() const { return descriptor >= 0; }
    const std::wstring& Path() const { return name; }

private:
    FileException::Cause TryOpen(std::wstring_view path, unsigned mode);
    FileException::Cause OpenBeside(unsigned mode);
    void CommitBeside(Flush flush);
    void CommitInPlace(Flush flush);

    std::wstring name;
    std::string given;     ///< the target as found, links unresolved
    std::string target;    ///< the file that links lead to
    std::string temporary; ///< beside `target`
    std::string pending;   ///< what a write in place is going to write
    int descriptor = -1;   ///< of `temporary`
    int old = -1;          ///< of the old file, with its lock
    bool open = false;
};

} // namespace platform
