#include "tessaro/platform/Time.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <limits>
#include <stdexcept>

using namespace platform;

namespace {

/// The time zone for the life of the object.
class Zone {
public:
    explicit Zone(const char* name) {
        setenv("TZ", name, 1);
        tzset();
    }
    ~Zone() {
        unsetenv("TZ");
        tzset();
    }
};

} // namespace

TEST(Time, TextIsInLocalTime) {
    const Time time = 1'700'000'000; // 2023-11-14 22:13:20 UTC
    {
        const Zone berlin("Europe/Berlin");
        EXPECT_EQ(FormatTime(time, L"%Y-%m-%d %H:%M:%S"), L"2023-11-14 23:13:20");
    }
    const Zone newYork("America/New_York");
    EXPECT_EQ(FormatTime(time, L"%Y-%m-%d %H:%M:%S"), L"2023-11-14 17:13:20");
    EXPECT_EQ(FormatTime(time, L"%x, %X"), L"11/14/23, 17:13:20");
}

TEST(Time, DatesBecomeSecondsWithTheZonesDaylightSaving) {
    {
        const Zone berlin("Europe/Berlin");
        EXPECT_EQ(TimeFromLocal(2023, 11, 14, 23, 13, 20), 1'700'000'000);
        EXPECT_EQ(TimeFromLocal(2023, 7, 1, 12, 0, 0), 1'688'205'600) << "summer time";
    }
    const Zone newYork("America/New_York");
    EXPECT_EQ(TimeFromLocal(2023, 11, 14, 17, 13, 20), 1'700'000'000);
    EXPECT_EQ(TimeFromLocal(2023, 7, 1, 12, 0, 0), 1'688'227'200);
}

TEST(Time, WhatIsNoDateThrows) {
    EXPECT_THROW(TimeFromLocal(1, 1, 1, 0, 0, 0), std::invalid_argument);
    EXPECT_THROW(TimeFromLocal(1899, 12, 31, 0, 0, 0), std::invalid_argument);
    EXPECT_THROW(TimeFromLocal(2000, 0, 1, 0, 0, 0), std::invalid_argument);
    EXPECT_THROW(TimeFromLocal(2000, 13, 1, 0, 0, 0), std::invalid_argument);
    EXPECT_THROW(TimeFromLocal(2000, 1, 0, 0, 0, 0), std::invalid_argument);
    EXPECT_THROW(TimeFromLocal(2000, 1, 32, 0, 0, 0), std::invalid_argument);
}

TEST(Time, TheSecondBeforeTheEpochIsADate) {
    const Zone utc("UTC");
    EXPECT_EQ(TimeFromLocal(1969, 12, 31, 23, 59, 59), -1);
    EXPECT_EQ(TimeFromLocal(1900, 1, 1, 0, 0, 0), -2'208'988'800);
}

TEST(Time, AYearWithoutANumberGivesNoText) {
    EXPECT_EQ(FormatTime(std::numeric_limits<Time>::max(), L"%x"), L"");
    EXPECT_EQ(FormatTime(0, L""), L"");
}

TEST(Time, TheClockRuns) {
    const Time before = CurrentTime();
    EXPECT_LE(std::llabs(before - std::time(nullptr)), 1);
    const auto start = std::chrono::steady_clock::now();
    SleepFor(std::chrono::milliseconds(5));
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(5));
}
