#include "editor/application/lock_file.h"

#include "editor/application/search_path.h"
#include "editor/application/text.h"

#include <cerrno>
#include <charconv>
#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <pwd.h>
#include <unistd.h>

namespace editor {

namespace {

std::string machineName() {
    char name[256] = {};
    return gethostname(name, sizeof name - 1) == 0 ? name : "";
}

std::string userName() {
    const passwd* const entry = getpwuid(getuid());
    return entry != nullptr && entry->pw_name != nullptr ? entry->pw_name : std::to_string(getuid());
}

struct Content {
    std::string user, machine;
    pid_t process = 0;
};

Content readContent(const std::string& path) {
    Content content;
    std::ifstream in(path, std::ios::binary);
    std::string process;
    std::getline(in, content.user);
    std::getline(in, content.machine);
    std::getline(in, process);
    std::from_chars(process.data(), process.data() + process.size(), content.process);
    return content;
}

bool isLeftBehind(const Content& content) {
    return content.process > 0 && content.machine == machineName() && kill(content.process, 0) != 0 && errno == ESRCH;
}

bool write(const std::string& path) {
    const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
    if (file < 0)
        return false;
    const std::string text = userName() + "\n" + machineName() + "\n" + std::to_string(getpid()) + "\n";
    const bool written = ::write(file, text.data(), text.size()) == static_cast<ssize_t>(text.size());
    const int failure = errno;
    ::close(file);
    if (!written) {
        ::unlink(path.c_str());
        errno = failure;
    }
    return written;
}

} // namespace

std::unique_ptr<LockFile> LockFile::take(const std::wstring& drawing, std::optional<Holder>& holder) {
    holder.reset();
    const std::wstring stem = drawing.substr(0, drawing.size() - std::min<std::size_t>(drawing.size(), 3));
    // Other programs write the extension in capitals.
    for (const wchar_t* const extension : {L"dwk", L"DWK"}) {
        const std::string path = toUtf8(stem + extension);
        if (::access(path.c_str(), F_OK) != 0)
            continue;
        const Content content = readContent(path);
        if (!isLeftBehind(content) || ::unlink(path.c_str()) != 0) {
            holder = Holder{fromNarrow(content.user), fromNarrow(content.machine)};
            return nullptr;
        }
    }
    const std::string path = toUtf8(stem + L"dwk");
    if (write(path))
        return std::unique_ptr<LockFile>(new LockFile(path));
    if (errno == EEXIST) {
        const Content content = readContent(path);
        holder = Holder{fromNarrow(content.user), fromNarrow(content.machine)};
    }
    return nullptr;
}

LockFile::~LockFile() {
    ::unlink(path.c_str());
}

} // namespace editor
