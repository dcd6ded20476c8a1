#pragma once

#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <cstring>
#include <filesystem>

namespace tests {

/// Counts how often a file is opened, by whomever, from the object's making on.
class OpenCounter {
public:
    explicit OpenCounter(const std::filesystem::path& file) : watch(inotify_init1(IN_NONBLOCK)) {
        inotify_add_watch(watch, file.c_str(), IN_OPEN);
    }
    ~OpenCounter() { close(watch); }
    OpenCounter(const OpenCounter&) = delete;
    OpenCounter& operator=(const OpenCounter&) = delete;

    bool Works() const { return watch >= 0; }
    /// Opens since the last call.
    int Take() const {
        int opens = 0;
        alignas(inotify_event) std::array<char, 4096> buffer{};
        for (ssize_t got = 0; (got = read(watch, buffer.data(), buffer.size())) > 0;)
            for (std::size_t at = 0; at < static_cast<std::size_t>(got);) {
                inotify_event event{};
                std::memcpy(&event, buffer.data() + at, sizeof event);
                opens += (event.mask & IN_OPEN) != 0 ? 1 : 0;
                at += sizeof event + event.len;
            }
        return opens;
    }

private:
    int watch;
};

} // namespace tests
