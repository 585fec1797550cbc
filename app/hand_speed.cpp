#include "app/hand_speed.h"

#include "scene/frame_clock.h"

#include <algorithm>

static constexpr std::uint32_t SPEED_WINDOW = 100;  // milliseconds looked back
static constexpr std::uint32_t SAMPLE_DISTANCE = 5; // milliseconds at least from one to the next
static constexpr std::int32_t SAMPLES = 32;         // more than come within the window

struct Sample {
    std::uint32_t time; // milliseconds
    float x, y;         // floor units
};

static Sample samples[SAMPLES]; // a ring
static std::int32_t sample_total, next_sample;

void hand_speed_start(float x, float y) {
    sample_total = 0;
    hand_speed_sample(x, y);
}

void hand_speed_sample(float x, float y) {
    const std::uint32_t now = timer_get_time_ms(&frame_timer);
    const Sample &newest = samples[(next_sample + SAMPLES - 1) % SAMPLES];
    if (sample_total > 0 && now - newest.time < SAMPLE_DISTANCE)
        return;
    samples[next_sample] = {now, x, y};
    next_sample = (next_sample + 1) % SAMPLES;
    sample_total = std::min(sample_total + 1, SAMPLES);
}

// The earliest that is still within the window, or null.
static const Sample *earliest_sample(std::uint32_t now) {
    for (std::int32_t age = sample_total; age > 0; age--) {
        const Sample &sample = samples[(next_sample + SAMPLES - age) % SAMPLES];
        if (now - sample.time <= SPEED_WINDOW)
            return &sample;
    }
    return nullptr;
}

bool hand_speed_now(float x, float y, float *speed_x, float *speed_y) {
    const std::uint32_t now = timer_get_time_ms(&frame_timer);
    const Sample *start = earliest_sample(now);
    if (start == nullptr)
        return false;
    // A jerk shorter than a frame counts as one of a frame.
    const std::uint32_t elapsed = std::max(now - start->time, FRAME_MILLISECONDS);
    const float frames = static_cast<float>(elapsed) / FRAME_MILLISECONDS;
    *speed_x = (x - start->x) / frames;
    *speed_y = (y - start->y) / frames;
    return true;
}
