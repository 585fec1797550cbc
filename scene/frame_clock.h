// The frame clock: when the next frame and the next hover test are due. The main loop and the
// transitions pace themselves by it.
#pragma once

#include "platform/timer.h"

#include <cstdint>

inline constexpr std::uint32_t FRAME_MILLISECONDS = 25;
inline constexpr std::uint32_t HOVER_TEST_MILLISECONDS = 100;

extern Timer frame_timer;                     // started by timer_init
extern std::uint32_t sys_time_ms;             // last reading of frame_timer, milliseconds
extern std::uint32_t next_frame_timer;        // the next frame is due, milliseconds
extern std::uint32_t next_mouse_timer;        // the next hover test is due, milliseconds
extern std::int32_t mandatory_redraw_counter; // frames in a row that drew nothing

// Counts from now: call it when a dialog, a menu or another long step returns, so that the frames
// missed meanwhile are not caught up.
void reset_frame_timer();
