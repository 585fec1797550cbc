#include "scene/interaction.h"

#include "platform/window.h"

std::int32_t app_mode;
std::int32_t app_line_draw_mode;
std::int32_t app_line_from_node = -1;
std::int32_t app_line_to_node = -1;
std::int32_t app_align_mode;
std::int32_t app_align_from_node = -1;
std::int32_t app_align_to_node = -1;
std::int32_t app_node_grabbed;
std::int32_t open_mode;
std::int32_t run = 1;
std::int32_t keys[256];
MouseState mouse;
WindowPosition pre_dialog_mouse;

void interaction_init() {
    app_mode = APP_VIEW;
    app_line_draw_mode = 0;
    app_line_from_node = -1;
    app_line_to_node = -1;
    app_align_mode = 0;
    app_align_from_node = -1;
    app_align_to_node = -1;
    app_node_grabbed = 0;
    for (std::int32_t &key : keys)
        key = 0;
}

void mouse_init() {
    std::int32_t x = 0;
    std::int32_t y = 0;
    window_cursor_position(&x, &y);
    mouse = {.flags = 0, .x = x, .y = y, .previous_x = x, .previous_y = y};
}

// Left of or above the client area the message words hold negative positions.
static std::int32_t signed_word(std::int32_t value) {
    return static_cast<std::int16_t>(value & 0xffff);
}

void mouse_record_position(std::int32_t x, std::int32_t y) {
    mouse.previous_x = mouse.x;
    mouse.previous_y = mouse.y;
    mouse.x = signed_word(x);
    mouse.y = signed_word(y);
}
