// One pass of the main loop between messages: a page handed over, hover test, frame, drawing and
// catching up, or a short sleep; then a look at the update check, whose offer is made here. While a
// dialog, menu or message box is open there are no passes: the offer waits until it is closed, as
// it does until nothing is dragged any more. All times are those of the frame clock
// (scene/frame_clock.h).
#pragma once

#include <cstdint>

// Call when no message waits. Returns soon but for the dialogs of what it finds to do; clears run
// when the program is to end for an update.
void main_loop_pass();

// Milliseconds from now in which no pass has anything to do unless a message comes; 0 = something
// is due.
std::uint32_t main_loop_spare_time();
