// What keys, mouse and window do to the scene. The window procedure decodes a message and calls one
// of these; positions are client pixels from the top left.
#pragma once

#include <cstdint>

// Key codes with a meaning of their own; most keys have a second one.
enum KeyCode : std::int32_t {
    KEY_BACKSPACE = 8,
    KEY_TAB = 9,
    KEY_SHIFT = 16,
    KEY_CONTROL = 17,
    KEY_ESCAPE = 27,
    KEY_HOME = 36,
    KEY_LEFT = 37,
    KEY_UP = 38,
    KEY_RIGHT = 39,
    KEY_DOWN = 40,
    KEY_MENU = 93,
    KEY_NUMERIC_PLUS = 107,
    KEY_NUMERIC_MINUS = 109,
    KEY_PLUS = 187,
    KEY_MINUS = 189,
};
inline constexpr std::int32_t KEY_FIRST = 8;  // codes below and above are remembered as down or up,
inline constexpr std::int32_t KEY_LAST = 189; // but do nothing

void input_key_down(std::int32_t code);
void input_key_up(std::int32_t code);
void input_keys_released(); // keys released elsewhere are not heard of: all count as up
void input_focus_lost();

void input_wheel(std::int32_t delta); // above 0 = away from the user
void input_double_click(std::int32_t x, std::int32_t y);

// Index of the node under a position, a NavigationId, or PICK_NOTHING.
std::int32_t input_target(std::int32_t x, std::int32_t y);

// ---- mouse (input_mouse.cpp)
void input_left_down(std::int32_t x, std::int32_t y);
void input_left_up(std::int32_t x, std::int32_t y);
void input_right_down(std::int32_t x, std::int32_t y);
void input_menu_key();                     // as a right click where the mouse stands
void input_button_up(std::int32_t button); // MouseFlag value
void input_mouse_move(std::int32_t x, std::int32_t y, std::int32_t buttons); // MouseFlag values
// The mouse went to another window while the button was down: its release will not be heard of.
void input_capture_lost();

// Where a node stands that shows at a window position, relative to the floor's offset
// (input_drag.cpp).
void input_node_position(std::int32_t x, std::int32_t y, float *node_x, float *node_y);

// ---- window
void input_resize(std::int32_t width, std::int32_t height);
void input_paint();
void input_close(); // asks about unsaved changes; quits unless the user would rather stay
// The user logs off: changes are saved unasked, as at the end of editing. False after a message
// when they cannot be, so that the session may wait.
bool input_end_session();
