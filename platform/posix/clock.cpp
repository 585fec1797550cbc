#include "platform/clock.h"

#include <ctime>

static constexpr std::int64_t NANOSECONDS_PER_SECOND = 1'000'000'000;
static constexpr std::int64_t NANOSECONDS_PER_MILLISECOND = 1'000'000;
static constexpr std::uint32_t MILLISECONDS_PER_SECOND = 1000;

std::int64_t clock_ticks_per_second() {
    return NANOSECONDS_PER_SECOND;
}

std::int64_t clock_ticks() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<std::int64_t>(now.tv_sec) * NANOSECONDS_PER_SECOND + now.tv_nsec;
}

std::uint32_t clock_milliseconds() {
    return static_cast<std::uint32_t>(clock_ticks() / NANOSECONDS_PER_MILLISECOND);
}

std::uint32_t clock_unix_seconds() {
    return static_cast<std::uint32_t>(std::time(nullptr));
}

void clock_sleep(std::uint32_t milliseconds) {
    timespec left{};
    left.tv_sec = milliseconds / MILLISECONDS_PER_SECOND;
    left.tv_nsec = static_cast<long>(milliseconds % MILLISECONDS_PER_SECOND) *
                   static_cast<long>(NANOSECONDS_PER_MILLISECOND);
    while (nanosleep(&left, &left) != 0) {
        // a signal cut the sleep short; left holds what remains
    }
}
