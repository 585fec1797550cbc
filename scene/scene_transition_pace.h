// What all transitions share: the easing of their movements, the wait for their next frame, and the
// options they hang on.
#pragma once

#include <cstdint>

inline constexpr std::int32_t COOL_MOVE_STEPS = 32;

// Speeds of a movement that starts and ends gently; the second half mirrors the first.
extern const float cool_move[COOL_MOVE_STEPS];

// Shares of a movement done after a number of steps, out of 32 and out of the first 16: 0 before
// the first step and exactly 1 after the last, so that a movement ends where it is to end.
double transition_share_done(std::int32_t steps);
double transition_half_share_done(std::int32_t steps);

// Start, and end of a frame, by the frame timer.
void transition_start_frames();
void transition_wait_frame(std::uint32_t milliseconds);

// The same by the millisecond clock.
struct TransitionTicks {
    std::uint32_t frame_start; // milliseconds
};
TransitionTicks transition_start_ticks();
void transition_wait_ticks(TransitionTicks *ticks, std::uint32_t milliseconds);

// Draws the scene as it stands.
void transition_draw();

bool transition_zoom_enabled();    // pages and their colour
bool transition_objects_enabled(); // objects and labels
bool transition_floor_enabled();
