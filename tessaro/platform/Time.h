#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>

namespace platform {

/// Seconds since 1970-01-01 UTC.
using Time = std::int64_t;

/// The C library's strftime in local time and the user's locale for dates ("%x, %X"). Empty for a time whose year has
/// no number.
std::wstring FormatTime(Time time, const wchar_t* format);
/// Local time to seconds; the zone decides on daylight saving. Throws std::invalid_argument for what is no date
/// (year before 1900, month or day out of range).
Time TimeFromLocal(int year, int month, int day, int hour, int minute, int second);
Time CurrentTime();

/// How a thread waits between two attempts; callers that retry take it as an argument, so that the clock comes from
/// outside.
using Sleeper = std::function<void(std::chrono::milliseconds)>;
void SleepFor(std::chrono::milliseconds time);

} // namespace platform
