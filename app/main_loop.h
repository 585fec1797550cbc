// One pass of the main loop between messages: a page handed over, hover test, frame, drawing and
// catching up, or a short sleep. All times are those of the frame clock (scene/frame_clock.h).
#pragma once

#include <cstdint>

// Call when no message waits. Returns soon in any case.
void main_loop_pass();

// Milliseconds from now in which no pass has anything to do unless a message comes; 0 = something
// is due.
std::uint32_t main_loop_spare_time();
