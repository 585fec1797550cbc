// How fast the hand moves what it drags. Some mice report a thousand times a second, others only
// now and then; the way gone within a fixed time is the same for all, and comes to nothing when the
// mouse rests before the button comes up.
#pragma once

// Where the dragged thing was is remembered for a moment; positions in floor units.
void hand_speed_start(float x, float y);
void hand_speed_sample(float x, float y);

// Floor units a frame of the last moments before now, when the thing stands at x, y. False when it
// has rested too long to have a speed.
bool hand_speed_now(float x, float y, float *speed_x, float *speed_y);
