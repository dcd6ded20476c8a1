#include "tessaro/platform/Event.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

using namespace platform;
using namespace std::chrono_literals;

TEST(Event, AnAutoResetEventEndsOneWait) {
    Event event(Event::Kind::AutoReset);
    EXPECT_FALSE(event.Wait(0ms));
    event.SetEvent();
    event.SetEvent();
    EXPECT_TRUE(event.Wait(0ms));
    EXPECT_FALSE(event.Wait(0ms));
}

TEST(Event, AManualResetEventStaysSet) {
    Event event(Event::Kind::ManualReset);
    event.SetEvent();
    EXPECT_TRUE(event.Wait(0ms));
    event.Wait();
    event.ResetEvent();
    EXPECT_FALSE(event.Wait(1ms));
}

TEST(Event, ThreadsWaitForIt) {
    Event event(Event::Kind::AutoReset);
    std::atomic<int> through{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < 3; ++i)
        threads.emplace_back([&] {
            event.Wait();
            ++through;
        });
    for (int expected = 1; expected <= 3; ++expected) {
        event.SetEvent();
        while (through < expected)
            std::this_thread::yield();
        EXPECT_EQ(through, expected);
    }
    for (std::thread& thread : threads)
        thread.join();
}
