#include "tessaro/host/Log.h"

#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/File.h"
#include "tessaro/platform/Paths.h"
#include "tessaro/platform/Text.h"

#include <atomic>
#include <cstdarg>
#include <mutex>
#include <string>

namespace {

/// Characters of one message, its line end included.
constexpr std::size_t kMessageLimit = 1999;

std::atomic<bool> logEnabled{true};

/// The session's file; written once, under the lock that every reader takes before it opens the file.
struct LogFile {
    std::mutex lock;
    std::wstring path;
};
LogFile& logFile = *new LogFile;

std::wstring FreeName(const std::wstring& folder) {
    const std::wstring computer = platform::ComputerName();
    for (int number = 1;; ++number) {
        std::wstring name =
            platform::Join(folder, platform::Format(L"tessaro for %s %d.log", computer.c_str(), number));
        if (!platform::FileExists(name))
            return name;
    }
}

/// Empty where there is no log.
std::wstring SessionFile() {
    const std::lock_guard guard(logFile.lock);
    if (!logEnabled)
        return {};
    if (logFile.path.empty()) {
        logFile.path = platform::Join(moduleFolder, L"Log");
        if (!platform::FolderExists(logFile.path)) {
            logEnabled = false;
            return {};
        }
        logFile.path = FreeName(logFile.path);
        if (platform::FileExists(logFile.path))
            platform::RemoveFile(logFile.path);
    }
    return logFile.path;
}

/// Cut to the limit, keeping the line end; line feeds as they stand on disk.
std::string Bytes(std::wstring message) {
    if (message.size() > kMessageLimit) {
        const bool lineEnd = message.back() == L'\n';
        message.resize(kMessageLimit);
        if (lineEnd)
            message.back() = L'\n';
    }
    std::string bytes;
    for (const char c : platform::ToNarrow(message)) {
        if (c == '\n')
            bytes += '\r';
        bytes += c;
    }
    return bytes;
}

} // namespace

void Log(const wchar_t* format, ...) {
    if (!logEnabled)
        return;
    std::va_list arguments;
    va_start(arguments, format);
    try {
        const std::wstring path = SessionFile();
        platform::File file;
        if (!path.empty() && file.Open(path, platform::File::modeCreate | platform::File::modeWrite |
                                                 platform::File::modeNoTruncate | platform::File::modeAppend)) {
            const std::string bytes = Bytes(platform::FormatV(format, arguments));
            file.Write(bytes.data(), bytes.size());
        }
    } catch (...) {
        // A line that can't be written is dropped: there is no other place to tell it.
    }
    va_end(arguments);
}
