// Turns a face of the system's fonts into GL display lists in the current context.
#pragma once

#include <cstdint>

enum FontWeight : std::int32_t { FONT_WEIGHT_NORMAL = 400, FONT_WEIGHT_BOLD = 700 };

struct GlyphOutlineMetrics {
    float box_x, box_y;       // black box
    float origin_x, origin_y; // upper left corner of the black box
    float cell_x, cell_y;     // advance
};

// Compiles the characters first .. first + count - 1 as raster bitmaps into the lists from
// list_base on. height is the character height in pixels. widths[i] receives the advance of
// character first + i in sixteenths of a pixel (11 pixels read 0.6875), the unit in which the
// system reports widths as floats.
// Returns 0, or 1 when the face cannot be had (the widths are 0 then).
int font_lists_bitmaps(const char *face, std::int32_t height, std::int32_t weight,
                       std::uint32_t list_base, std::int32_t first, std::int32_t count,
                       float *widths);

// The same as flat polygons, one unit = the character height; metrics per character.
int font_lists_outlines(const char *face, std::int32_t height, std::int32_t weight,
                        std::uint32_t list_base, std::int32_t first, std::int32_t count,
                        GlyphOutlineMetrics *metrics);
