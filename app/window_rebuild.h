// Making the main window anew, asked for by the core; the main window's module does it, the posix
// side counts it (platform/posix/recorder.h).
#pragma once

// Makes a changed anti-aliasing option take effect: a window keeps its pixel format for life, so it
// is made anew and the page loaded into it again. Leaves edit mode without saving.
void toggle_fsaa();
