// A child control that shows a model turning above a floor, in an OpenGL context of its own; the
// mouse can take hold of the model and throw it. One at a time. Whoever had the current context
// gets it back after each of the control's drawings, and the models' display lists stay those of
// the main window: the control compiles one for itself.
#pragma once

#include <windows.h>

inline constexpr char MODEL_VIEWER_CLASS[] = "orvanel:model_viewer"; // as the templates write it

// wparam is the index of the model to show, -1 none.
inline constexpr UINT MODEL_VIEWER_SHOW = WM_USER;

extern HDC model_viewer_DC;   // what the control draws with, null while there is none
extern HGLRC model_viewer_RC; // its context

// Registers the control's class, once a run.
void model_viewer_init();

LRESULT CALLBACK model_viewer_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam);

// ---- the parts of the control; window is its handle
void model_viewer_enable_gl(HWND window); // says in a message box what failed
void model_viewer_disable_gl();
void model_viewer_resize_control(int width, int height); // pixels
void model_viewer_scene_draw();                          // one frame, on the screen
void model_viewer_draw_control_border(HWND window);      // in the parent, around the control
