#include "platform/clock.h"

#include <gtest/gtest.h>

#include <ctime>

TEST(Clock, the_counter_advances_by_the_time_slept) {
    const std::int64_t frequency = clock_ticks_per_second();
    ASSERT_GT(frequency, 0);
    const std::int64_t start = clock_ticks();
    clock_sleep(50);
    const double seconds =
        static_cast<double>(clock_ticks() - start) / static_cast<double>(frequency);
    EXPECT_GE(seconds, 0.045);
    EXPECT_LT(seconds, 5.0); // a machine under load may be late, not that late
}

TEST(Clock, the_millisecond_clock_advances_with_the_counter) {
    const std::uint32_t start = clock_milliseconds();
    clock_sleep(50);
    const std::uint32_t passed = clock_milliseconds() - start;
    EXPECT_GE(passed, 40u);
    EXPECT_LT(passed, 5000u);
}

TEST(Clock, unix_seconds_are_those_of_the_system) {
    const auto now = static_cast<std::uint32_t>(std::time(nullptr));
    const std::uint32_t told = clock_unix_seconds();
    EXPECT_GE(told, now);
    EXPECT_LE(told, now + 2);
}
