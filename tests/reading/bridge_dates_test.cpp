// The real helper on drawings whose stored dates are none, and on two threads at once.

#include "editor/dwg/default_drawing.h"
#include "editor/dwg/default_header.h"
#include "editor/dwg/write_drawing.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/Text.h"
#include "tessaro/reading/Examine.h"
#include "tests/reading/HelperFixture.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <sys/stat.h>
#include <thread>

using namespace tests;

namespace {

constexpr std::int64_t kWritten = 1600000000;
constexpr std::int64_t kFirstDay = 2440588; // 1970-01-01

class HelperDates : public testing::Test {
protected:
    HelperDates() {
        // Without it the C library makes its text of the zone anew at each call, under a lock that no race checker
        // sees.
        setenv("TZ", ":/etc/localtime", 0);
        tzset();
        ForgetServices();
        LocalPath = platform::FromNarrow(TESSARO_BIN_DIR);
    }
    ~HelperDates() override {
        ForgetServices();
        LocalPath.clear();
    }

    /// A drawing that stores these dates, in a file that was last written at kWritten.
    std::wstring Write(const char* name, dwg::DayAndTime created, dwg::DayAndTime updated) const {
        dwg::Drawing drawing = dwg::makeDefaultDrawing();
        dwg::HeaderVariables header = dwg::makeDefaultHeader(created);
        header.TDUPDATE = updated;
        const auto bytes = dwg::writeDrawing(drawing, header, {}, 1);
        EXPECT_TRUE(bytes);
        const auto file =
            folder.write(name, std::string_view(reinterpret_cast<const char*>(bytes->data()), bytes->size()));
        const timespec times[] = {{kWritten, 0}, {kWritten, 0}};
        EXPECT_EQ(utimensat(AT_FDCWD, file.c_str(), times, 0), 0);
        return platform::FromNarrow(file.string());
    }
    /// The date that both fields of a Block get; -1 where the helper gives none.
    static platform::Time DateOf(const std::wstring& file) {
        Block block;
        MarkPoints points;
        if (!LoadDrawing(file, block, false, nullptr, points))
            return -1;
        EXPECT_EQ(block.created, block.modified);
        return block.modified;
    }

    TemporaryFolder folder;
};

} // namespace

TEST_F(HelperDates, TheDateIsThatOfTheLastChange) {
    EXPECT_EQ(DateOf(Write("a.dwg", {2459000, 1000}, {2459001, 2999})), (2459001 - kFirstDay) * 86400 + 2);
}

TEST_F(HelperDates, ADateThatIsNoneIsTheFilesWriteTime) {
    constexpr dwg::DayAndTime possible{2459000, 0};
    for (const dwg::DayAndTime stored :
         {dwg::DayAndTime{0, 0}, dwg::DayAndTime{2440587, 86399999}, dwg::DayAndTime{2816788, 0},
          dwg::DayAndTime{2459000, 86400000}, dwg::DayAndTime{0xFFFFFFFF, 0xFFFFFFFF}})
        EXPECT_EQ(DateOf(Write("a.dwg", possible, stored)), kWritten) << stored.day << " " << stored.milliseconds;
    EXPECT_EQ(DateOf(Write("a.dwg", {0, 0}, possible)), (2459000 - kFirstDay) * 86400)
        << "the date of its making is written first, and does not count";
}

TEST_F(HelperDates, TheFirstAndTheLastDayThatCountAreKept) {
    EXPECT_EQ(DateOf(Write("a.dwg", {2459000, 0}, {2440588, 0})), 0);
    EXPECT_EQ(DateOf(Write("a.dwg", {2459000, 0}, {2816787, 0})), (2816787 - kFirstDay) * 86400);
}

TEST_F(HelperDates, TwoThreadsAskForDifferentDrawingsAtOnce) {
    const std::array<std::wstring, 2> files = {Write("a.dwg", {2459000, 0}, {2459000, 0}),
                                               Write("b.dwg", {2459100, 0}, {2459100, 0})};
    std::array<int, 2> right{};
    const auto ask = [&](std::size_t which) {
        const platform::Time expected = (2459000 + 100 * static_cast<std::int64_t>(which) - kFirstDay) * 86400;
        for (int round = 0; round < 40; ++round)
            right[which] += DateOf(files[which]) == expected ? 1 : 0;
    };
    std::thread other(ask, 1);
    ask(0);
    other.join();
    EXPECT_EQ(right, (std::array{40, 40}));
}
