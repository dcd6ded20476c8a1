#include "tests/kill/Rounds.h"

#include "tests/support/ChildProcess.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <random>

namespace tests {

void killInRounds(std::chrono::microseconds longest, const std::function<void()>& endlessWork,
                  const std::function<void(int round)>& check) {
    constexpr int usual = 50;
    const char* const wanted = std::getenv("TESSARO_KILLS");
    const int rounds = wanted != nullptr ? std::atoi(wanted) : usual;
    ASSERT_GT(rounds, 0) << "TESSARO_KILLS says how many";
    std::mt19937 random(20261121);
    std::uniform_int_distribution<std::chrono::microseconds::rep> moment(0, longest.count());
    for (int round = 1; round <= rounds && !testing::Test::HasFailure(); ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        killAfter(std::chrono::microseconds(moment(random)), [&](const std::function<void()>& begun) {
            begun();
            endlessWork();
        });
        check(round);
    }
}

} // namespace tests
