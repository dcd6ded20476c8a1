#pragma once

#include <chrono>
#include <functional>

namespace tests {

/// Again and again kills a child (SIGKILL) at a random moment of its endless work, 50 times or as often as
/// TESSARO_KILLS says, and has `check` look at what it left; `check` is told the round, from 1. Ends early where a
/// check has failed.
void killInRounds(std::chrono::microseconds longest, const std::function<void()>& endlessWork,
                  const std::function<void(int round)>& check);

} // namespace tests
