// The scene as a whole: set up, advanced by a frame, drawn, stopped. scene_init needs a current GL
// context; everything here runs on the main thread.
#pragma once

#include "scene/pick_ray.h"
#include "scene/scene_floor.h"

#include <cstdint>

extern std::int32_t scene_redraw_flag; // 1 = draw on the next pass
extern float global_angle; // degrees; the whole scene is turned by it in page transitions

// ---- life (scene.cpp)
void scene_init();
void scene_stop(); // releases fonts and models

// ---- frames (scene_frame.cpp)
void scene_process_frame();
std::int32_t scene_request_redraw(); // always 1
void scene_zoom_in();
void scene_zoom_out();
void node_init_effects(); // fills the tables of scale factors
// Nonzero when the object has no room to spin: another one stands within its spin radius.
std::int32_t scene_check_for_rotation_space(std::int32_t index);

// ---- hovering (scene_hover.cpp)
// Finds what the mouse rests on and marks it; every 100 ms from the main loop.
void scene_hover_test();

// ---- drawing (scene_draw.cpp)
// 0 drawn; 1 nothing to do: no redraw was asked for, or the window is minimised.
std::int32_t scene_draw();
void scene_resize(std::int32_t width, std::int32_t height); // client area, pixels
void scene_lights_init();
void scene_draw_lights();
std::int32_t scene_draw_floor(); // 1 = pick depth and bounds were worked out, draw once more
void scene_draw_nodes();
void scene_draw_nodes_on(const PickRay &ray); // only those that may show in its pixel
void scene_draw_reflections();

// Floor coordinates of the window's corners into scene_floor.view_*.
void scene_get_window_bounds();

// ---- text and lines (scene_text.cpp, scene_lines.cpp)
void scene_fonts_init();
void scene_fonts_stop();
bool scene_uses_texture_fonts();
void scene_draw_node_labels();
void scene_draw_labels();
void scene_draw_page_title();
void scene_draw_lines();
void scene_draw_line_select_lines();                                 // the link being drawn
void scene_draw_alignment_line();                                    // the alignment being chosen
std::int32_t scene_mouse_over_label(std::int32_t x, std::int32_t y); // index, -1 = none
