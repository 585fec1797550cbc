#include "tests/support/film.h"

#include "scene/frame_clock.h"
#include "tests/support/manual_clock.h"

// Fine enough that a wait of whole milliseconds ends within the millisecond it is for.
static constexpr std::uint32_t MICROSECONDS_A_READING = 100;

static float (*sample)();
static std::vector<float> kept;

static void keep_sample() {
    const float value = sample();
    if (kept.empty() || kept.back() != value)
        kept.push_back(value);
}

Film::Film(float (*what)()) {
    sample = what;
    kept.clear();
    manual_clock_reset();
    timer_init(&frame_timer);
    reset_frame_timer();
    manual_clock_step(MICROSECONDS_A_READING);
    manual_clock_watch(keep_sample);
}

Film::~Film() {
    manual_clock_watch(nullptr);
}

const std::vector<float> &Film::values() const {
    return kept;
}

std::uint32_t Film::milliseconds() const {
    return manual_clock_now();
}
