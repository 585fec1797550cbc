// The frame timer: milliseconds since timer_init, from the high-resolution counter where there is
// one, else from the multimedia clock.
#pragma once

#include <cstdint>

struct Timer {
    bool high_resolution;
    float period;               // seconds a tick
    std::int64_t start_ticks;   // counter at timer_init, when high_resolution
    std::uint32_t start_millis; // clock at timer_init, otherwise
};

void timer_init(Timer *timer);

// Whole milliseconds since timer_init; wraps after 49 days (compare with timer_is_before).
std::uint32_t timer_get_time_ms(const Timer *timer);

// True when a is earlier than b, also across the wrap.
constexpr bool timer_is_before(std::uint32_t a, std::uint32_t b) {
    return static_cast<std::int32_t>(a - b) < 0;
}
