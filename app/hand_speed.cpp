#include "app/hand_speed.h"

#include "scene/frame_clock.h"

#include <algorithm>
#include <cmath>

static constexpr std::uint32_t SPEED_WINDOW = 100;  // milliseconds looked back
static constexpr std::uint32_t SAMPLE_DISTANCE = 5; // milliseconds at least from one to the next
static constexpr std::int32_t SAMPLES = 32;         // more than come within the window

struct Sample {
    std::uint32_t time; // milliseconds
    float x, y;         // floor units
};

static Sample samples[SAMPLES]; // a ring
static std::int32_t sample_total, next_sample;

// The sample of an age in samples, 1 = the newest.
static const Sample &sample_of_age(std::int32_t age) {
    return samples[(next_sample + SAMPLES - age) % SAMPLES];
}

void hand_speed_start(float x, float y) {
    sample_total = 0;
    hand_speed_sample(x, y);
}

void hand_speed_sample(float x, float y) {
    const std::uint32_t now = timer_get_time_ms(&frame_timer);
    if (sample_total > 0 && now - sample_of_age(1).time < SAMPLE_DISTANCE)
        return;
    samples[next_sample] = {now, x, y};
    next_sample = (next_sample + 1) % SAMPLES;
    sample_total = std::min(sample_total + 1, SAMPLES);
}

// Where the thing was a window's length before, or at the start if that was later. A program that
// is busy drawing hears of the mouse less often than that: the place lies between two samples then.
// False when the mouse has rested since.
static bool sample_at_window_start(std::uint32_t now, Sample *start) {
    std::int32_t age = sample_total; // of the earliest within the window
    while (age > 0 && now - sample_of_age(age).time > SPEED_WINDOW)
        age--;
    if (age == 0)
        return false;
    *start = sample_of_age(age);
    if (age == sample_total)
        return true;
    const Sample &before = sample_of_age(age + 1);
    const float share = static_cast<float>(now - SPEED_WINDOW - before.time) /
                        static_cast<float>(start->time - before.time);
    *start = {now - SPEED_WINDOW, std::lerp(before.x, start->x, share),
              std::lerp(before.y, start->y, share)};
    return true;
}

bool hand_speed_now(float x, float y, float *speed_x, float *speed_y) {
    const std::uint32_t now = timer_get_time_ms(&frame_timer);
    Sample start;
    if (!sample_at_window_start(now, &start))
        return false;
    // A jerk shorter than a frame counts as one of a frame.
    const std::uint32_t elapsed = std::max(now - start.time, FRAME_MILLISECONDS);
    const float frames = static_cast<float>(elapsed) / FRAME_MILLISECONDS;
    *speed_x = (x - start.x) / frames;
    *speed_y = (y - start.y) / frames;
    return true;
}
