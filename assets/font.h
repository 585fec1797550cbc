// Fonts of the system as GL display lists: raster fonts for text on the screen and flat outline
// fonts for text in the scene.
#pragma once

#include "platform/font_lists.h"
#include "platform/text.h"

#include <cstdint>

struct FontColour {
    float red, green, blue; // 0..1
};

// White, or dark grey on a bright page (scene_invalidate_floor switches the first two).
extern FontColour font_white;          // names, descriptions, page title
extern FontColour font_label_normal;   // labels
extern FontColour font_label_selected; // the label under the mouse in edit mode

struct BitmapFont {
    std::uint32_t list_base; // first of 96 lists, characters 32..127
    float width[128];        // advance by character code, sixteenths of a pixel
};

struct OutlineFont {
    std::uint32_t list_base; // first of 256 lists
    GlyphOutlineMetrics metrics[256];
};

// height is the character height in pixels, weight a FontWeight.
void font_load(BitmapFont *font, const char *face_name, std::int32_t height, std::int32_t weight);
void font_unload(BitmapFont *font);

// Draws at the current raster position; a null format draws nothing. Only characters 32..127 have
// a picture, others are left out.
void font_printf(const BitmapFont *font, const char *format, ...) TEXT_PRINTF_LIKE(2, 3);

// 0.7 x the sum of the advances: a length in floor units. -1.0 for an empty string.
float font_get_string_width(const BitmapFont *font, const char *text);

// The sum of the advances in pixels.
float font_pixel_width(const BitmapFont *font, const char *text);

// Makes the current colour take effect for the raster text that follows.
void font_set_colour();

void font3d_load(OutlineFont *font, const char *face_name, std::int32_t height);
void font3d_unload(OutlineFont *font);
void font3d_printf(const OutlineFont *font, const char *format, ...)
    TEXT_PRINTF_LIKE(2, 3); // centred
