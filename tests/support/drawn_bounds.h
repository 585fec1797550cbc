// Where in a picture something was drawn.
#pragma once

#include "tests/support/gl_context.h"

struct DrawnBounds {
    std::int32_t left, top, right, bottom; // first and last pixels, from the top left
    std::int32_t count;                    // pixels that differ; 0 = nothing was drawn

    std::int32_t width() const {
        return count == 0 ? 0 : right - left + 1;
    }
    double middle_x() const {
        return (left + right + 1) / 2.0;
    }
};

// Clears colour and depth of the whole picture.
void gl_clear(Pixel colour);

// Bounds of the pixels that differ from the background by more than tolerance in some channel.
DrawnBounds drawn_bounds(const GlContext &context, Pixel background, int tolerance = 0);

// Bounds of the pixels that have this colour.
DrawnBounds bounds_of_colour(const GlContext &context, Pixel colour, int tolerance = 0);
