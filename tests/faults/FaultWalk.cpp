#include "tests/faults/FaultWalk.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <string_view>
#include <unistd.h>

namespace faults {
namespace {

constexpr FaultOrder File(int error, bool stays) {
    return {FaultOrder::fileCall, 0, error, false, stays};
}

constexpr std::array kFaults{
    Fault{"EIO once", File(EIO, false)},
    Fault{"EIO from then on", File(EIO, true)},
    Fault{"ENOSPC once", File(ENOSPC, false)},
    Fault{"ENOSPC from then on", File(ENOSPC, true)},
    Fault{"EACCES once", File(EACCES, false)},
    Fault{"EACCES from then on", File(EACCES, true)},
    Fault{"an interrupted transfer", {FaultOrder::fileCall, 0, EINTR, true, false}},
    Fault{"a half transfer", {FaultOrder::fileCall, 0, 0, true, false}},
    Fault{"half transfers from then on", {FaultOrder::fileCall, 0, 0, true, true}},
    Fault{"no memory once", {FaultOrder::allocation, 0, ENOMEM, false, false}},
    Fault{"no memory from then on", {FaultOrder::allocation, 0, ENOMEM, false, true}},
};

/// Calls of each operation that a short walk has fail: the most of those failures that find the most, which come alone.
constexpr long kSampleOfFiles = 32, kSampleOfMemory = 8, kSampleOfOthers = 2;
constexpr int kMostFailures = 5;   ///< after so many of one walk the rest would tell nothing new
constexpr unsigned kPatience = 60; ///< seconds that one run may take

long met = 0;

/// What a crash or a hang was met at.
std::array<char, 256> current{};

void TellWhere(int signal) {
    const std::string_view text = current.data();
    // Nothing else can be done where the process is dying.
    if (write(STDERR_FILENO, text.data(), text.size()) < 0)
        _exit(1);
    std::signal(signal, SIG_DFL);
    raise(signal);
}

struct Hooks {
    FaultsArm* arm = reinterpret_cast<FaultsArm*>(dlsym(RTLD_DEFAULT, kFaultsArm));
    FaultsDisarm* disarm = reinterpret_cast<FaultsDisarm*>(dlsym(RTLD_DEFAULT, kFaultsDisarm));
};

const Hooks& TheHooks() {
    static const Hooks hooks;
    return hooks;
}

Outcome RunWith(const MakeOperation& make, const Fault& fault, long number) {
    Outcome outcome;
    outcome.fault = &fault;
    outcome.number = number;
    const testing::UnitTest& test = *testing::UnitTest::GetInstance();
    std::snprintf(current.data(), current.size(), "\nwith %s at call %ld of %s\n", fault.name, number,
                  test.current_test_info()->name());
    alarm(kPatience);
    CountingUser user;
    const std::unique_ptr<Operation> operation = make();
    operation->Prepare();
    user.messages = 0;
    const std::string folder = operation->Folder().native();
    FaultOrder order = fault.order;
    order.number = number;
    TheHooks().arm(folder.c_str(), &order);
    try {
        operation->Run();
    } catch (...) {
        outcome.raised = true;
    }
    TheHooks().disarm(&outcome.count);
    outcome.messages = user.messages;
    EXPECT_EQ(user.waiting, 0) << "a wait cursor was left";
    operation->Check(outcome);
    alarm(0);
    return outcome;
}

/// False where enough is known.
bool Meet(const MakeOperation& make, const Fault& fault, long number, long& faults) {
    const testing::TestResult& result = *testing::UnitTest::GetInstance()->current_test_info()->result();
    const int before = result.total_part_count();
    const Outcome outcome = RunWith(make, fault, number);
    faults += outcome.fired() ? 1 : 0;
    if (result.total_part_count() != before)
        std::printf("  ... %s at call %ld: %s\n", fault.name, number, outcome.count.call);
    return outcome.fired() && result.total_part_count() < kMostFailures;
}

long SampleOf(const Fault& fault) {
    if (&fault == &kFaults.front())
        return kSampleOfFiles;
    return fault.order.error == ENOMEM && !fault.order.stays ? kSampleOfMemory : kSampleOfOthers;
}

bool TakesAll() {
    const char* const wanted = std::getenv("TESSARO_FAULTS");
    return wanted != nullptr && std::string_view(wanted) == "all";
}

} // namespace

long FaultsMet() {
    return met;
}

void WalkFaults(const MakeOperation& make) {
    ASSERT_NE(TheHooks().arm, nullptr) << "the library that makes calls fail is not loaded";
    for (const int signal : {SIGSEGV, SIGABRT, SIGBUS, SIGFPE, SIGALRM})
        std::signal(signal, TellWhere);
    long faults = 0;
    for (const Fault& fault : kFaults) {
        const Outcome whole = RunWith(make, fault, 0);
        ASSERT_FALSE(whole.raised) << "without a fault";
        ASSERT_FALSE(testing::Test::HasFailure()) << "without a fault";
        if (TakesAll()) {
            for (long number = 1; Meet(make, fault, number, faults); ++number) {
            }
        } else {
            const long points = whole.count.seen, taken = std::min(points, SampleOf(fault));
            for (long point = 0; point < taken; ++point)
                Meet(make, fault, 1 + (2 * point + 1) * points / (2 * taken), faults);
        }
        if (testing::Test::HasFailure())
            break;
    }
    for (const int signal : {SIGSEGV, SIGABRT, SIGBUS, SIGFPE, SIGALRM})
        std::signal(signal, SIG_DFL);
    met += faults;
    std::printf("%ld faults met\n", faults);
    EXPECT_GT(faults, 0);
}

} // namespace faults
