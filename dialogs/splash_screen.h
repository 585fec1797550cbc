// The picture shown while the program starts. It has a thread of its own, so that it is painted
// while the main thread loads, and closes itself some time after that.
#pragma once

// Shows it; once a run.
void splash_screen_display();

// Takes it away at once, or keeps it from appearing. Allowed at any time.
void splash_screen_hide();
