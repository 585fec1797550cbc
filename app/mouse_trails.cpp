#include "app/mouse_trails.h"

#include "platform/window.h"

std::int32_t mouse_trails;

void mouse_trails_init() {
    mouse_trails = screen_mouse_trails();
    if (mouse_trails > 0)
        mouse_disable_trails();
}

void mouse_disable_trails() {
    screen_set_mouse_trails(0);
}

void mouse_enable_trails() {
    screen_set_mouse_trails(mouse_trails);
}

void mouse_trails_stop() {
    if (mouse_trails > 0)
        mouse_enable_trails();
}
