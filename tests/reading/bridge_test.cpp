#include "tessaro/reading/Bridge.h"

#include "tessaro/browser/preview/Dib.h"
#include "tessaro/host/ModuleState.h"
#include "tessaro/platform/Text.h"
#include "tests/reading/HelperFixture.h"
#include "tests/support/TemporaryFolder.h"

#include <array>
#include <barrier>
#include <stdexcept>
#include <thread>

using namespace tests;

namespace {

/// A view of 20 by 10 about (5, 2), seen from above, that fills the picture.
std::vector<double> plainRecord(double x, double y) {
    return {x, y, 0, 0, 0, 1, 1, 0, 0, 0, 0, 0, 1, 20, 10, 0, 5, 2};
}

PreviewBytes previewOf(std::int32_t width, std::int32_t height) {
    PreviewBytes preview(kDibHeaderSize, 0);
    for (std::size_t i = 0; i < 4; ++i) {
        preview[4 + i] = static_cast<std::uint8_t>(width >> (8 * i));
        preview[8 + i] = static_cast<std::uint8_t>(height >> (8 * i));
    }
    return preview;
}

class Bridge : public HelperFixture {
protected:
    Block block;
    MarkPoints points;
    const PreviewBytes preview = previewOf(200, 100);

    bool load(bool wantInsPts = true, bool withPreview = true) {
        return LoadDrawing(L"/library/a.dwg", block, wantInsPts, withPreview ? &preview : nullptr, points);
    }
    void answerRecords(const std::vector<double>& numbers) {
        answer = [numbers](HelperCall& call) {
            call.numbers = numbers;
            return answerPlainly(call);
        };
    }
};

TEST_F(Bridge, helperIsAskedWithPathFlagAndSizeOfThePreview) {
    answer = answerPlainly;
    EXPECT_TRUE(load());
    ASSERT_EQ(calls.size(), 1U);
    EXPECT_EQ(calls[0].path, L"/library/a.dwg");
    EXPECT_TRUE(calls[0].wantInsPts);
    EXPECT_EQ(calls[0].width, 200);
    EXPECT_EQ(calls[0].height, 100);
}

TEST_F(Bridge, withoutAPreviewNoPointsAreAskedForAndTheRestIsSet) {
    answer = answerPlainly;
    EXPECT_TRUE(load(true, false));
    ASSERT_EQ(calls.size(), 1U);
    EXPECT_FALSE(calls[0].wantInsPts);
    EXPECT_EQ(calls[0].width, 0);
    EXPECT_EQ(calls[0].height, 0);
    EXPECT_EQ(block.description, L"from the helper");
    EXPECT_NE(block.created, 0);
    EXPECT_TRUE(points.empty());
}

TEST_F(Bridge, withoutInsertionPointsTheSizeIsPassedAllTheSame) {
    answer = answerPlainly;
    EXPECT_TRUE(load(false));
    ASSERT_EQ(calls.size(), 1U);
    EXPECT_FALSE(calls[0].wantInsPts);
    EXPECT_EQ(calls[0].width, 200);
    EXPECT_EQ(calls[0].height, 100);
    EXPECT_TRUE(points.empty());
}

TEST_F(Bridge, bothDatesAreTheLaterWrite) {
    answer = [](HelperCall& call) {
        *call.first = {2001, 2, 3, 4, 5, 6};
        *call.second = {2014, 5, 17, 13, 51, 21};
        return kHelperTrue;
    };
    EXPECT_TRUE(load());
    EXPECT_EQ(block.modified, platform::TimeFromLocal(2014, 5, 17, 13, 51, 21));
    EXPECT_EQ(block.created, block.modified);

    answer = [](HelperCall& call) {
        *call.second = {2014, 5, 17, 13, 51, 21};
        *call.first = {2001, 2, 3, 4, 5, 6};
        return kHelperTrue;
    };
    EXPECT_TRUE(load());
    EXPECT_EQ(block.modified, platform::TimeFromLocal(2001, 2, 3, 4, 5, 6)) << "whichever of the two it is";
    EXPECT_EQ(block.created, block.modified);
}

TEST_F(Bridge, theDateIsTheFirstDayOfTheFirstYearUntilItIsWritten) {
    answer = [](HelperCall& call) {
        EXPECT_EQ(call.first, call.second);
        EXPECT_EQ(call.first->year, 1);
        EXPECT_EQ(call.first->month, 1);
        EXPECT_EQ(call.first->day, 1);
        EXPECT_EQ(call.first->hour, 0);
        return kHelperTrue;
    };
    block.created = 7;
    EXPECT_THROW(load(), std::invalid_argument) << "no date that the catalogue takes";
    EXPECT_EQ(block.created, 7);
}

TEST_F(Bridge, aNullDescriptionEmptiesTheBlocks) {
    block.description = L"found before";
    answer = [](HelperCall& call) {
        const HelperResult result = answerPlainly(call);
        call.description = nullptr;
        return result;
    };
    EXPECT_TRUE(load());
    EXPECT_EQ(block.description, L"");
}

TEST_F(Bridge, falseLeavesBlockAndPointsUntouched) {
    block.description = L"kept";
    block.created = 11;
    block.modified = 12;
    points = {1, 2};
    answer = [](HelperCall& call) {
        answerPlainly(call);
        call.numbers = plainRecord(5, 2);
        return kHelperFalse;
    };
    EXPECT_FALSE(load());
    EXPECT_EQ(block.description, L"kept");
    EXPECT_EQ(block.created, 11);
    EXPECT_EQ(block.modified, 12);
    EXPECT_EQ(points, (MarkPoints{1, 2}));
}

TEST_F(Bridge, pointsAreAppended) {
    points = {1, 2};
    answerRecords(plainRecord(5, 2));
    EXPECT_TRUE(load());
    EXPECT_EQ(points, (MarkPoints{1, 2, 100, 50}));
}

TEST_F(Bridge, threeRecordsGiveTheFirstPointThreeTimes) {
    std::vector<double> numbers = plainRecord(5, 2);
    for (const double x : {0.0, 1000.0}) {
        const std::vector<double> more = plainRecord(x, 2);
        numbers.insert(numbers.end(), more.begin(), more.end());
    }
    answerRecords(numbers);
    EXPECT_TRUE(load());
    EXPECT_EQ(points, (MarkPoints{100, 50, 100, 50, 100, 50}));
}

TEST_F(Bridge, aFirstPointOutsideLeavesNoPointHoweverTheOthersLie) {
    std::vector<double> numbers = plainRecord(1000, 2);
    const std::vector<double> inside = plainRecord(5, 2);
    numbers.insert(numbers.end(), inside.begin(), inside.end());
    answerRecords(numbers);
    EXPECT_TRUE(load());
    EXPECT_TRUE(points.empty());
}

TEST_F(Bridge, aBrokenLastRecordStillCountsARound) {
    std::vector<double> numbers = plainRecord(5, 2);
    numbers.push_back(0);
    answerRecords(numbers);
    EXPECT_TRUE(load());
    EXPECT_EQ(points.size(), 4U);
}

TEST_F(Bridge, fewerNumbersThanARecordRaiseAfterTheBlockWasSet) {
    answerRecords(std::vector<double>(17, 1));
    EXPECT_THROW(load(), std::out_of_range);
    EXPECT_EQ(block.description, L"from the helper");
    answerRecords({});
    EXPECT_TRUE(load()) << "none at all are no record";
}

TEST_F(Bridge, whatTheHelperRaisesPassesWithItsText) {
    answer = [](HelperCall& call) {
        call.failure = L"gefährlich";
        return kHelperRaised;
    };
    try {
        load();
        FAIL() << "nothing was thrown";
    } catch (const std::runtime_error& raised) {
        EXPECT_EQ(std::string(raised.what()), "gefährlich");
    }
}

TEST_F(Bridge, aMissingHelperRaisesAtEachCallAndIsTriedAnew) {
    const std::wstring present = LocalPath;
    const TemporaryFolder empty;
    LocalPath = platform::FromNarrow(empty.path().string());
    EXPECT_THROW(load(), std::runtime_error);
    EXPECT_THROW(load(), std::runtime_error);
    EXPECT_EQ(servicesptr, 0);
    LocalPath = present;
    EXPECT_FALSE(load());
    EXPECT_NE(servicesptr, 0);
}

TEST_F(Bridge, aFileThatIsNoHelperRaises) {
    const TemporaryFolder folder;
    folder.write("TessaroHelper.dll", "no shared object");
    LocalPath = platform::FromNarrow(folder.path().string());
    EXPECT_THROW(load(), std::runtime_error);
    EXPECT_EQ(servicesptr, 0);
}

TEST_F(Bridge, oneObjectServesAllCalls) {
    load();
    const std::intptr_t made = servicesptr;
    EXPECT_NE(made, 0);
    LocalPath = L"/nowhere";
    load();
    EXPECT_EQ(servicesptr, made);
    EXPECT_EQ(calls.size(), 2U);
}

TEST_F(Bridge, twoFirstCallsAtOnceMakeOneObject) {
    std::array<std::intptr_t, 2> seen{};
    std::barrier start(2);
    const auto call = [&](std::size_t i) {
        Block own;
        MarkPoints ownPoints;
        start.arrive_and_wait();
        LoadDrawing(L"/library/a.dwg", own, false, nullptr, ownPoints);
        seen[i] = servicesptr;
    };
    std::thread other(call, 1);
    call(0);
    other.join();
    EXPECT_NE(seen[0], 0);
    EXPECT_EQ(seen[0], seen[1]);
    EXPECT_EQ(calls.size(), 2U);
}

TEST_F(Bridge, anyAssemblyNameIsLookedForBesideTheModule) {
    const platform::SharedLibrary library = ResolveHandler(L"TessaroHelper, Version=1.0.0.0, Culture=neutral");
    EXPECT_TRUE(library.IsLoaded());
    EXPECT_TRUE(ResolveHandler(L"TessaroHelper").IsLoaded()) << "without a comma the whole name";
    try {
        ResolveHandler(L"Some.Other, Version=2");
        FAIL() << "nothing was thrown";
    } catch (const std::runtime_error& raised) {
        EXPECT_NE(std::string(raised.what()).find("/Some.Other.dll"), std::string::npos) << raised.what();
    }
}

} // namespace
