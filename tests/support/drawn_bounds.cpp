#include "tests/support/drawn_bounds.h"

#include "platform/gl.h"

#include <algorithm>
#include <cstdlib>
#include <vector>

void gl_clear(Pixel colour) {
    glClearColor(static_cast<float>(colour.red) / 255.0f, static_cast<float>(colour.green) / 255.0f,
                 static_cast<float>(colour.blue) / 255.0f, 1.0f);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
}

static DrawnBounds bounds(const GlContext &context, Pixel colour, int tolerance, bool alike) {
    const std::int32_t width = context.width, height = context.height;
    std::vector<unsigned char> rgb(static_cast<std::size_t>(width * height) * 3);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, width, height, GL_RGB, GL_UNSIGNED_BYTE, rgb.data());
    DrawnBounds found = {width, height, -1, -1, 0};
    for (std::int32_t y = 0; y < height; y++) {
        for (std::int32_t x = 0; x < width; x++) {
            const unsigned char *pixel =
                &rgb[static_cast<std::size_t>((height - 1 - y) * width + x) * 3];
            const bool near = std::abs(pixel[0] - colour.red) <= tolerance &&
                              std::abs(pixel[1] - colour.green) <= tolerance &&
                              std::abs(pixel[2] - colour.blue) <= tolerance;
            if (near != alike)
                continue;
            found = {std::min(found.left, x), std::min(found.top, y), std::max(found.right, x),
                     std::max(found.bottom, y), found.count + 1};
        }
    }
    return found;
}

DrawnBounds drawn_bounds(const GlContext &context, Pixel background, int tolerance) {
    return bounds(context, background, tolerance, false);
}

DrawnBounds bounds_of_colour(const GlContext &context, Pixel colour, int tolerance) {
    return bounds(context, colour, tolerance, true);
}
