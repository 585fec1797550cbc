// A clock that only moves when told to: link orvanel_manual_clock instead of orvanel_clock.
#pragma once

#include <cstdint>

// Back to 0, high resolution, no step.
void manual_clock_reset();
void manual_clock_advance(std::uint32_t milliseconds);
std::uint32_t manual_clock_now(); // milliseconds since the reset

// Every reading moves the clock on by this much, so that loops waiting for a time come to their
// end.
void manual_clock_step(std::uint32_t microseconds);

// Called before every reading and every sleep: what a program that waits for the clock looks like
// from outside. Null = nobody looks.
void manual_clock_watch(void (*watcher)());

// Without the high-resolution counter the timer falls back to the millisecond clock.
void manual_clock_high_resolution(bool available);

// The clocks of the system stand still, the high-resolution counter goes on.
void manual_clock_stall_system_clock(bool stalled);

// Milliseconds asked for by clock_sleep since the reset; a sleep moves the clock.
std::uint32_t manual_clock_slept();
