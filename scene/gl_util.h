// Small services over OpenGL: window position to floor position, picking, raster text at any place,
// rounding and colour conversion.
#pragma once

#include <cstdint>

extern std::int32_t fsaa_possible;           // 1 = the driver offers multisampling
extern std::int32_t arbMultisampleSupported; // 1 = a multisampled pixel format was found
extern std::int32_t arbMultisampleFormat;    // its index
extern float scene_fov;                      // vertical field of view, degrees

inline constexpr double SCENE_NEAR = 5.0;
inline constexpr double SCENE_FAR = 200.0;
inline constexpr std::int32_t PICK_NOTHING = -1;

// Window depths of the floor by zoom level, from entry DEPTH_LOOKUP_FLOOR on.
inline constexpr std::int32_t DEPTH_LOOKUP_FLOOR = 3;
inline constexpr std::int32_t DEPTH_LOOKUP_LABEL = 4; // one further, for labels and boxes
extern const float depth_lookup[16];
// The table's value for the current zoom level; entry is DEPTH_LOOKUP_FLOOR or DEPTH_LOOKUP_LABEL.
float gl_depth_of_zoom_level(std::int32_t entry);

// The fixed state that all drawing relies on, for a context just made current.
void gl_init_state();

// Floor coordinates of a window position (pixels from the top left), relative to the scroll offset
// while the modelview matrix is the identity, as it is between drawings. depth 0 = read it from the
// depth buffer. Returns the depth used; a window without area has the coordinates 0, 0.
float GetOGLPos(std::int32_t x, std::int32_t y, float *floor_x, float *floor_y, float depth);

// Id under the window position: a navigation button, a label hit, the nearest object, or
// PICK_NOTHING.
std::int32_t selection(std::int32_t x, std::int32_t y);

// First node whose box holds the window position, or -1.
std::int32_t scene_mouse_within_node_box2(std::int32_t x, std::int32_t y);
// 0 when the floor point (position_x + dx, position_y + dy) lies in the node's box, 1 otherwise:
// the sense is inverted on purpose.
std::int32_t scene_mouse_within_node_box(std::int32_t id, float dx, float dy);

void trRasterPos3f(float x, float y, float z);
void glWindowPos2fMESAemulate(float x, float y);
void glWindowPos4fMESAemulate(float x, float y, float z, float w);

float unit_round(float value, float unit); // exactly half rounds up
std::int32_t colour_opengl_to_win(float component);
float colour_win_to_opengl(std::int32_t value);

// 1 when the vendor string names the system's software renderer.
std::int32_t graphics_adapter_check();
std::int32_t graphics_vendor_is_software(const char *vendor);

// True when name stands in the blank-separated list as a whole word.
bool gl_extension_listed(const char *extensions, const char *name);

// The driver's search for a pixel format: attributes are pairs ending with 0, 0. True when *format
// received one.
using PixelFormatChooser = bool (*)(void *device, const std::int32_t *attributes,
                                    std::int32_t *format);

// Looks for a format with 4 samples, then with 2. 1 when one was found (arbMultisampleFormat), else
// arbMultisampleSupported as it was.
std::int32_t gl_choose_multisample_format(PixelFormatChooser choose, void *device);
