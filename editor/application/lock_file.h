#pragma once

#include <memory>
#include <optional>
#include <string>

namespace editor {

/// The file "plan.dwk" beside a drawing "plan.dwg" that is open for writing. It names who has the drawing open, and is
/// removed when the object dies. A file that a process of this machine left behind when it died counts for nothing.
class LockFile {
public:
    struct Holder {
        std::wstring user, machine; ///< empty where the file doesn't say
    };

    /// Null where somebody has the drawing, or the same process already: `holder` is set then. Also null, and `holder`
    /// empty, where no file can be made in the folder.
    static std::unique_ptr<LockFile> take(const std::wstring& drawing, std::optional<Holder>& holder);
    ~LockFile();
    LockFile(const LockFile&) = delete;
    LockFile& operator=(const LockFile&) = delete;

private:
    explicit LockFile(std::string file) : path(std::move(file)) {}
    std::string path;
};

} // namespace editor
