// An empty page in a real context, set up as at program start, for tests that draw and look.
#pragma once

#include "page/node.h"
#include "tests/support/gl_context.h"

#include <cstdint>

struct WindowPoint {
    std::int32_t x, y; // pixels from the top left
};

struct SceneStage {
    static constexpr std::int32_t WIDTH = 640, HEIGHT = 480; // pixels
    GlContext context{WIDTH, HEIGHT};

    // Default options but the page title, a black page, zoom level 4, a screen of 1920 x 1080.
    SceneStage();
    ~SceneStage();
};

// Adds a node at rest; objects and page objects show the built-in cube. Returns its index.
std::int32_t stage_add(NodeType type, float x, float y);

void stage_page_colour(float red, float green, float blue);
void stage_zoom_level(std::int32_t level);

// Draws until nothing asks for another picture, ten times at most; returns the number of pictures.
int stage_draw();

// Where a point this far above the floor shows in the window.
WindowPoint stage_window_point(float x, float y, float height);

int brightness(Pixel pixel); // 0..765
bool is_green(Pixel pixel);  // the cube's colour, or its reflection's

// The brightest pixel at most one pixel away: lines may come out on either side.
Pixel stage_brightest_near(WindowPoint point);
