#include "platform/window.h"

#include "platform/posix/recorder.h"

static constexpr std::int32_t DEFAULT_SCREEN_WIDTH = 1920;
static constexpr std::int32_t DEFAULT_SCREEN_HEIGHT = 1080;

bool window_is_minimised() {
    return recorder.minimised;
}

bool window_is_foreground() {
    return !recorder.background;
}

void window_swap_buffers() {
    recorder.swaps++;
}

void window_toggle_maximised() {
    recorder.toggles++;
}

void window_invalidate() {
    recorder.invalidations++;
}

void window_capture_mouse() {
    recorder.mouse_captured = true;
}

void window_release_mouse() {
    recorder.mouse_captured = false;
}

void window_quit(int exit_code) {
    recorder.quit = true;
    recorder.quit_code = exit_code;
}

void window_cursor_position(std::int32_t *x, std::int32_t *y) {
    *x = recorder.cursor_x;
    *y = recorder.cursor_y;
}

void screen_size(std::int32_t *width, std::int32_t *height) {
    const bool set = recorder.screen_width != 0;
    *width = set ? recorder.screen_width : DEFAULT_SCREEN_WIDTH;
    *height = set ? recorder.screen_height : DEFAULT_SCREEN_HEIGHT;
}

std::int32_t screen_mouse_trails() {
    return recorder.mouse_trails;
}

void screen_set_mouse_trails(std::int32_t length) {
    recorder.mouse_trails = length;
}
