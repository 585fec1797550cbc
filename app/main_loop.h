// One pass of the main loop between messages: a page handed over, hover test, frame, drawing and
// catching up, or a short sleep. All times are those of the frame clock (scene/frame_clock.h).
#pragma once

// Call when no message waits. Returns soon in any case.
void main_loop_pass();
