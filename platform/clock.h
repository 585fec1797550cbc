// Clocks of the system. Tests link a clock of their own (tests/support/manual_clock.cpp) that they
// advance by hand; hence these stand in a library by themselves.
#pragma once

#include <cstdint>

// Ticks of the high-resolution counter in a second; 0 when there is none.
std::int64_t clock_ticks_per_second();
std::int64_t clock_ticks();

std::uint32_t clock_milliseconds(); // multimedia clock, wraps after 49 days
std::uint32_t clock_unix_seconds(); // seconds since 1970

void clock_sleep(std::uint32_t milliseconds);
