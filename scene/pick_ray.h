// The line of sight through one pixel of the window: tells which balls in space cannot show there,
// so that picking need not draw what is in them.
#pragma once

#include <cstdint>

struct PickRay {
    double x, y, z; // direction from the viewer, of length 1; z points out of the screen
    double spread;  // how far the pixel reaches around it, floor units a floor unit of depth
};

// x, y: pixels from the bottom left of a viewport of this size; field_of_view: vertical, degrees.
PickRay pick_ray(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height,
                 double field_of_view);

// False when no part of the ball shows in the pixel. A ball that is not made of numbers may.
bool pick_ray_may_hit(const PickRay &ray, double x, double y, double z, double radius);
