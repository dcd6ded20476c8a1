#include "companions/TessaroHelper/Dates.h"

#include <ctime>
#include <sys/stat.h>

namespace helper {
namespace {

constexpr std::int64_t kFirstDay = 2440588; // 1970-01-01
constexpr std::int64_t kEndDay = 2816788;   // 3000-01-01
constexpr std::uint32_t kMillisecondsOfDay = 86'400'000;

HelperDate localTime(std::time_t seconds) {
    std::tm parts{};
    localtime_r(&seconds, &parts);
    return {parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday, parts.tm_hour, parts.tm_min, parts.tm_sec};
}

} // namespace

std::optional<HelperDate> localDate(const dwg::DayAndTime& stored) {
    const std::int64_t day = stored.day;
    if (day < kFirstDay || day >= kEndDay || stored.milliseconds >= kMillisecondsOfDay)
        return std::nullopt;
    return localTime((day - kFirstDay) * 86400 + stored.milliseconds / 1000);
}

HelperDate dateOfFile(const std::filesystem::path& file) {
    struct stat status;
    return localTime(::stat(file.c_str(), &status) == 0 ? status.st_mtime : std::time(nullptr));
}

} // namespace helper
