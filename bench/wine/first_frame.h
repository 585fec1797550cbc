// How the start benchmark learns of a program's first frame: a named event.
#pragma once

inline constexpr char FIRST_FRAME_EVENT[] = "orvanel:first_frame";

// Sets the event once; called after every swap.
void first_frame_shown();
