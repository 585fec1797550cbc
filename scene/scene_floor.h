// The floor: where it is scrolled and zoomed to, how it moves, what of it the window shows, and its
// colour. Shared by all of the scene.
#pragma once

#include "page/page_file.h"

#include <cstdint>

inline constexpr float FLOOR_EDGE = 120.0f; // the floor spans -120..120 floor units in x and y
inline constexpr float FLOOR_DISTANCE =
    100.0f; // of the floor from the viewer at distance 0, floor units
inline constexpr std::int32_t ZOOM_LEVELS = 9;
inline constexpr std::int32_t ZOOM_LEVEL_MAX = 8;
inline constexpr float ZOOM_STEP = 10.0f; // floor units of distance a level
inline constexpr float ZOOM_DISTANCE_MIN = -70.0f;
inline constexpr float ZOOM_DISTANCE_MAX = 10.0f;

enum NavigationId : std::int32_t { NAVIGATION_BACK = 1001, NAVIGATION_HOME = 1002 };

struct NavigationButton {
    std::int32_t hover, previous_hover; // -1 at start
    std::int32_t texture_slot;
    std::int32_t id;    // NavigationId
    float x, y;         // top left corner in window pixels where it was last drawn
    std::int32_t shown; // 1 when the last frame drew it
};

struct SceneFloor {
    std::int32_t drag_state;      // 1 while the user drags the floor
    float position_x, position_y; // scroll offset: where the camera looks, floor units
    float home_x, home_y;         // the page's resting offset
    float distance;               // camera distance, ZOOM_DISTANCE_MIN..ZOOM_DISTANCE_MAX
    std::int32_t zoom_level;      // 0..8
    float inertia_x, inertia_y;   // coasting, floor units a frame
    std::int32_t inertia_frames;  // frames of coasting left
    float spring_x, spring_y;     // spring-back, floor units a frame
    float view_left, view_right, view_top,
        view_bottom;                          // what the window shows, relative to position
    float pick_depth;                         // window depth of the floor plane, 0 = not known yet
    std::int32_t window_width, window_height; // client area, pixels
    std::uint32_t list;                       // display list of the floor
    std::int32_t list_valid;
    PageColour colour;
    PageColour previous_colour; // of the page shown before
    NavigationButton button[2]; // back, home
};

extern SceneFloor scene_floor;
extern std::int32_t screen_size_x, screen_size_y; // pixels

// After a page change: drag, inertia, spring and global angle to rest, zoom as the options say.
void scene_floor_init();

// Recomputes grid and text colours from the page colour and has the floor compiled anew.
void scene_invalidate_floor();
