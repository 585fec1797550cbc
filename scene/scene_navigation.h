// Navigation buttons: back and home, two small pictures after the page title while a sub-page is
// shown.
#pragma once

#include <cstdint>

inline constexpr std::int32_t NAVIGATION_BUTTONS = 2;  // back, home: scene_floor.button
inline constexpr float NAVIGATION_BUTTON_SIZE = 32.0f; // pixels

extern std::uint32_t navigation_button_texture[NAVIGATION_BUTTONS]; // GL texture names

// Records at their start and both textures; needs a current GL context.
void scene_navigation_init();
void scene_navigation_stop(); // deletes the textures

// Makes a texture of a bitmap resource: left half normal, right half highlighted, pixels without
// red transparent. A bitmap that is missing leaves the slot without a texture.
void scene_load_navigation_button_texture(int resource_id, std::int32_t slot);

// NavigationId of the button at a window position (pixels from the top left), -1 = none. Lights the
// button up. A button that is not shown is never hit.
std::int32_t scene_mouse_over_button(std::int32_t x, std::int32_t y);

void scene_draw_navigation_buttons();
