#include "tests/support/manual_clock.h"

#include "platform/clock.h"

static constexpr std::int64_t MICROSECONDS_PER_SECOND = 1'000'000;
static constexpr std::int64_t MICROSECONDS_PER_MILLISECOND = 1000;

static std::int64_t now;    // microseconds since the reset
static std::uint32_t step;  // microseconds a reading
static std::uint32_t slept; // milliseconds
static bool no_counter;
static bool stalled;
static std::int64_t stalled_at; // microseconds since the reset
static void (*watcher)();

static void show_watcher() {
    if (watcher != nullptr)
        watcher();
}

void manual_clock_reset() {
    now = 0;
    step = 0;
    slept = 0;
    no_counter = false;
    stalled = false;
    watcher = nullptr;
}

void manual_clock_advance(std::uint32_t milliseconds) {
    now += milliseconds * MICROSECONDS_PER_MILLISECOND;
}

std::uint32_t manual_clock_now() {
    return static_cast<std::uint32_t>(now / MICROSECONDS_PER_MILLISECOND);
}

void manual_clock_step(std::uint32_t microseconds) {
    step = microseconds;
}

void manual_clock_watch(void (*new_watcher)()) {
    watcher = new_watcher;
}

void manual_clock_high_resolution(bool available) {
    no_counter = !available;
}

void manual_clock_stall_system_clock(bool stall) {
    stalled = stall;
    stalled_at = now;
}

static std::int64_t system_clock() {
    return stalled ? stalled_at : now;
}

std::uint32_t manual_clock_slept() {
    return slept;
}

std::int64_t clock_ticks_per_second() {
    return no_counter ? 0 : MICROSECONDS_PER_SECOND;
}

std::int64_t clock_ticks() {
    show_watcher();
    now += step;
    return now;
}

std::uint32_t clock_milliseconds() {
    show_watcher();
    now += step;
    return static_cast<std::uint32_t>(system_clock() / MICROSECONDS_PER_MILLISECOND);
}

std::uint32_t clock_unix_seconds() {
    return static_cast<std::uint32_t>(system_clock() / MICROSECONDS_PER_SECOND);
}

void clock_sleep(std::uint32_t milliseconds) {
    show_watcher();
    slept += milliseconds;
    manual_clock_advance(milliseconds);
}
