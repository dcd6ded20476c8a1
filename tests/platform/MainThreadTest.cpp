#include "tessaro/platform/MainThread.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <semaphore>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

using namespace platform;

TEST(MainThread, TheThreadThatLoadedTheCodeIsTheMainThread) {
    EXPECT_TRUE(IsMainThread());
    bool other = true;
    std::thread([&] { other = IsMainThread(); }).join();
    EXPECT_FALSE(other);
}

TEST(MainThread, AnotherThreadMayBeNamed) {
    std::thread([] {
        SetMainThread();
        EXPECT_TRUE(IsMainThread());
    }).join();
    EXPECT_FALSE(IsMainThread());
    SetMainThread();
    EXPECT_TRUE(IsMainThread());
}

TEST(MainThread, ACallOfTheMainThreadItselfRunsAtOnce) {
    bool ran = false;
    CallOnMainThread([&] { ran = true; });
    EXPECT_TRUE(ran);
    EXPECT_THROW(CallOnMainThread([] { throw 2; }), int);
}

TEST(MainThread, CallsOfOtherThreadsRunHereInTheirOrderWhileTheyWait) {
    std::atomic<int> left{4};
    std::vector<int> seen;
    std::vector<std::thread> threads;
    for (int number = 0; number < 4; ++number)
        threads.emplace_back([&, number] {
            for (int i = 0; i < 500; ++i) {
                int result = 0;
                CallOnMainThread([&] {
                    EXPECT_TRUE(IsMainThread());
                    seen.push_back(number * 1000 + i);
                    result = i + 1;
                });
                EXPECT_EQ(result, i + 1);
            }
            --left;
            WakeMainThread();
        });
    ServeMainThreadUntil([&] { return left == 0; });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(seen.size(), 2000u);
    for (int number = 0; number < 4; ++number) {
        int next = number * 1000;
        for (const int value : seen)
            if (value / 1000 == number) {
                ASSERT_EQ(value, next++);
            }
    }
}

TEST(MainThread, AnExceptionIsThrownOnTheCallersSide) {
    std::atomic<bool> done{false};
    std::string caught;
    std::thread thread([&] {
        try {
            CallOnMainThread([] { throw std::runtime_error("told"); });
        } catch (const std::runtime_error& failed) {
            caught = failed.what();
        }
        done = true;
        WakeMainThread();
    });
    EXPECT_NO_THROW(ServeMainThreadUntil([&] { return done.load(); }));
    thread.join();
    EXPECT_EQ(caught, "told");
}

TEST(MainThread, CallsNest) {
    std::atomic<bool> done{false};
    std::vector<int> order;
    std::binary_semaphore inside{0};
    std::thread first([&] {
        CallOnMainThread([&] {
            order.push_back(1);
            inside.release();
            CallOnMainThread([&] { order.push_back(2); });
            bool served = false;
            std::atomic<bool> secondDone{false};
            std::thread second([&] {
                CallOnMainThread([&] { served = true; });
                secondDone = true;
                WakeMainThread();
            });
            ServeMainThreadUntil([&] { return secondDone.load(); });
            second.join();
            EXPECT_TRUE(served);
            order.push_back(3);
        });
        order.push_back(4);
        done = true;
        WakeMainThread();
    });
    ServeMainThreadUntil([&] { return done.load(); });
    first.join();
    EXPECT_EQ(order, (std::vector<int>{1, 2, 3, 4}));
}

TEST(MainThread, TheWakeUpIsCalledWithoutTheLock) {
    std::atomic<int> wakeUps{0};
    SetMainThreadWakeUp([&] {
        ++wakeUps;
        WakeMainThread(); // would block for good under the lock
    });
    std::atomic<int> ran{0};
    std::thread thread([&] {
        CallOnMainThread([&] { ++ran; });
        CallOnMainThread([&] { ++ran; });
    });
    while (ran < 2) {
        ServeMainThreadCalls();
        std::this_thread::yield();
    }
    thread.join();
    SetMainThreadWakeUp(nullptr);
    EXPECT_EQ(wakeUps, 2);
    EXPECT_NO_THROW(ServeMainThreadCalls()) << "with nothing waiting";
}

TEST(MainThread, AnEventLoopThatComesLateIsWokenForWhatWaits) {
    std::thread thread([] { CallOnMainThread([] {}); });
    std::atomic<bool> woken{false};
    while (!woken) {
        SetMainThreadWakeUp([&] { woken = true; });
        std::this_thread::yield();
    }
    SetMainThreadWakeUp(nullptr);
    ServeMainThreadCalls();
    thread.join();
}

TEST(MainThread, NoThreadIsInsideAWakeUpThatWasTakenAway) {
    std::atomic<bool> started{false}, finished{false};
    SetMainThreadWakeUp([&] {
        started = true;
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        finished = true;
    });
    std::thread thread([] { CallOnMainThread([] {}); });
    while (!started)
        std::this_thread::yield();
    SetMainThreadWakeUp(nullptr);
    EXPECT_TRUE(finished);
    ServeMainThreadCalls();
    thread.join();
}

TEST(MainThread, ABusyThreadDoesNotHoldTheEventLoopUp) {
    std::atomic<bool> stop{false};
    std::atomic<int> calls{0};
    std::thread thread([&] {
        while (!stop)
            CallOnMainThread([&] { ++calls; });
    });
    for (int round = 0; round < 100; ++round) {
        const int before = calls;
        ServeMainThreadCalls();
        EXPECT_LE(calls - before, 1);
    }
    stop = true;
    std::atomic<bool> joined{false};
    std::thread joiner([&] {
        thread.join();
        joined = true;
        WakeMainThread();
    });
    ServeMainThreadUntil([&] { return joined.load(); });
    joiner.join();
}
