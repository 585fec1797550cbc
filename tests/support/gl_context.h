// A real GL context to draw into and read back: EGL without a display natively, a window under
// Windows.
#pragma once

#include <cstdint>

struct GlContext {
    std::int32_t width, height; // drawing area, pixels

    // Makes the context current and lights, depth and culling as the main window has them.
    GlContext(std::int32_t width, std::int32_t height);
    ~GlContext();
    GlContext(const GlContext &) = delete;
    GlContext &operator=(const GlContext &) = delete;
};

struct Pixel {
    int red, green, blue; // 0..255
};

// Pixel at window position x, y from the top left, of the buffer last drawn (before or after the
// swap, whichever the platform keeps).
Pixel gl_pixel(std::int32_t x, std::int32_t y);

// Number of pixels in the rectangle that differ from colour by more than tolerance in some channel.
std::int32_t gl_count_differing(std::int32_t x, std::int32_t y, std::int32_t width,
                                std::int32_t height, Pixel colour, int tolerance);

// Saves the picture as a PNG-readable PPM below the build folder's "pictures", for looking at.
void gl_save_picture(const char *name);
