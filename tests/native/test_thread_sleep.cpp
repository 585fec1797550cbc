// Sleeps that can be cut short, counted instead of measured: the linker puts the sleep of this file
// into the place of the system's (tests/CMakeLists.txt).
#include "platform/thread.h"

#include <gtest/gtest.h>

static std::atomic<bool> stop;
static std::uint32_t slept, stop_after; // milliseconds

extern "C" void __wrap__Z12thread_sleepj(std::uint32_t milliseconds) {
    slept += milliseconds;
    stop = slept >= stop_after;
}

struct ThreadSleep : testing::Test {
    ThreadSleep() {
        stop = false;
        slept = 0;
        stop_after = UINT32_MAX;
    }
};

TEST_F(ThreadSleep, it_takes_as_long_as_it_is_told_when_nothing_stops_it) {
    for (const std::uint32_t wanted : {0u, 5u, 10u, 495u, 500u}) {
        slept = 0;
        EXPECT_TRUE(thread_sleep_unless(stop, wanted));
        EXPECT_EQ(slept, wanted);
    }
}

TEST_F(ThreadSleep, it_ends_soon_after_it_is_stopped) {
    stop_after = 100;
    EXPECT_FALSE(thread_sleep_unless(stop, 60'000));
    EXPECT_LT(slept, 150u);
}

TEST_F(ThreadSleep, it_does_not_begin_when_it_is_stopped_already) {
    stop = true;
    EXPECT_FALSE(thread_sleep_unless(stop, 60'000));
    EXPECT_EQ(slept, 0u);
}
