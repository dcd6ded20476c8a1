#include "tessaro/platform/Time.h"

#include <cerrno>
#include <ctime>
#include <cwchar>
#include <stdexcept>
#include <thread>
#include <vector>

namespace platform {

std::wstring FormatTime(Time time, const wchar_t* format) {
    const std::time_t seconds = time;
    std::tm local{};
    tzset();
    if (localtime_r(&seconds, &local) == nullptr)
        return {};
    // The C library gives 0 both for no text and for too small a buffer.
    for (std::size_t size = 256; size <= 65536; size *= 4) {
        std::vector<wchar_t> buffer(size);
        if (const std::size_t length = std::wcsftime(buffer.data(), size, format, &local))
            return {buffer.data(), length};
    }
    return {};
}

Time TimeFromLocal(int year, int month, int day, int hour, int minute, int second) {
    if (year < 1900 || month < 1 || month > 12 || day < 1 || day > 31)
        throw std::invalid_argument("no date");
    std::tm local{};
    local.tm_year = year - 1900;
    local.tm_mon = month - 1;
    local.tm_mday = day;
    local.tm_hour = hour;
    local.tm_min = minute;
    local.tm_sec = second;
    local.tm_isdst = -1;
    errno = 0;
    const std::time_t seconds = std::mktime(&local);
    if (seconds == -1 && errno != 0)
        throw std::invalid_argument("no date");
    return seconds;
}

Time CurrentTime() {
    return std::time(nullptr);
}

void SleepFor(std::chrono::milliseconds time) {
    std::this_thread::sleep_for(time);
}

} // namespace platform
