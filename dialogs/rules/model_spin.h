// How the model of the preview turns: by itself, in the hand, and after a throw. The control tells
// what the mouse does and asks for a step whenever it has drawn.
#pragma once

#include <cstdint>

extern float model_viewer_model_angle;   // degrees about the vertical axis
extern float model_viewer_model_speed;   // degrees a frame, of turning by itself
extern float model_viewer_model_inertia; // degrees a frame that a throw adds
extern float model_viewer_grab_angle;    // angle when the drag began
extern float model_viewer_mouse_grab_x;  // mouse when the drag began, -1 = no drag

void model_spin_init();

// The options let models turn and be turned by hand.
bool model_spin_allowed();

void model_spin_grab(std::int32_t x, std::int32_t y); // pixels of the control
void model_spin_move(std::int32_t x, std::int32_t y);
void model_spin_release(); // throws the model by the last move; without a drag nothing changes
void model_spin_let_go();  // ends a drag that the user did not end: no throw
bool model_spin_grabbed();

void model_spin_frame(); // one step
