// The few things the core asks of the main window and the screen.
#pragma once

#include <cstdint>

bool window_is_minimised();
bool window_is_foreground();
void window_swap_buffers();
void window_toggle_maximised();

// Asks the system for a repaint of the whole client area.
void window_invalidate();

// While the mouse is captured its messages come to the main window, wherever it goes. The system
// may take the capture away at any time.
void window_capture_mouse();
void window_release_mouse(); // also when it is not captured

// Ends the program: posts the quit message with this exit code.
void window_quit(int exit_code);

// Position of the mouse pointer in client pixels of the main window, from the top left.
void window_cursor_position(std::int32_t *x, std::int32_t *y);

void screen_size(std::int32_t *width, std::int32_t *height); // pixels of the primary screen

// Mouse trails smear over a GL window. 0 or 1 = off, else the number of pointers in the trail.
std::int32_t screen_mouse_trails();
void screen_set_mouse_trails(std::int32_t length);
