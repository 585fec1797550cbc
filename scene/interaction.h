// What the user is doing: the state that the window procedure changes and the scene draws by.
#pragma once

#include <cstdint>

enum AppMode : std::int32_t { APP_VIEW = 0, APP_EDIT = 1 };

enum MouseFlag : std::int32_t {
    MOUSE_MOVE = 1, // since the last hover test
    MOUSE_LEFT = 2,
    MOUSE_MIDDLE = 4,
    MOUSE_RIGHT = 8,
    MOUSE_DOUBLE_CLICK = 16,
};

struct MouseState {
    std::int32_t flags; // MouseFlag values
    std::int32_t x, y;  // client pixels from the top left
    std::int32_t previous_x, previous_y;
};

extern std::int32_t app_mode;           // AppMode
extern std::int32_t app_line_draw_mode; // 1 while the second end of a new link is chosen
extern std::int32_t app_line_from_node; // node indices, -1 = none
extern std::int32_t app_line_to_node;
extern std::int32_t app_align_mode; // 1 while the object to align with is chosen
extern std::int32_t app_align_from_node;
extern std::int32_t app_align_to_node;
extern std::int32_t app_node_grabbed; // 1 while an object is held
extern std::int32_t open_mode;        // 1 = the page came from the command line
extern std::int32_t run;              // 1 while the main loop runs
extern std::int32_t keys[256];        // 1 = down, by virtual-key code
extern MouseState mouse;

struct WindowPosition {
    std::int32_t x, y; // client pixels from the top left
};
extern WindowPosition
    pre_dialog_mouse; // of the last right click: commands are for what stands there

// View mode, nothing grabbed, no links drawn, no keys down.
void interaction_init();

// Reads the pointer's position as both current and previous one and clears the flags.
void mouse_init();

// previous = current; current = the 16-bit signed values of x and y.
void mouse_record_position(std::int32_t x, std::int32_t y);
