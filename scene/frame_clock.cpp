#include "scene/frame_clock.h"

Timer frame_timer;
std::uint32_t sys_time_ms, next_frame_timer, next_mouse_timer;
std::int32_t mandatory_redraw_counter;

void reset_frame_timer() {
    sys_time_ms = timer_get_time_ms(&frame_timer);
    next_mouse_timer = sys_time_ms + HOVER_TEST_MILLISECONDS;
    next_frame_timer = sys_time_ms + FRAME_MILLISECONDS;
    mandatory_redraw_counter = 0;
}
