// Texture fonts: anti-aliased glyphs of the Tahoma face, rendered beforehand into atlases
// (tools/make_atlas.cpp) and drawn as textured quads in window pixels.
#pragma once

#include "platform/text.h"

#include <cstdint>

inline constexpr std::int32_t TEX_FONT_ATLAS_WIDTH = 512;  // pixels
inline constexpr std::int32_t TEX_FONT_ATLAS_HEIGHT = 256; // pixels
inline constexpr std::int32_t TEX_FONT_TEXTURES = 6;

struct TexGlyph {
    signed char code;            // its own index when registered, 0 otherwise
    std::int32_t x0, y0, x1, y1; // box in atlas pixels, from the top left
    float tex_u0, tex_v0, tex_u1, tex_v1;
    float ascent, width, height; // pixels
};

struct TexFontSet {
    std::int32_t texture; // index into tex_font_textures
    float spacing;        // pixels added after every glyph
    float padding;        // blank border inside every glyph box, pixels
    TexGlyph glyph[256];  // by character code taken as unsigned
};

extern std::uint32_t tex_font_textures[TEX_FONT_TEXTURES]; // GL texture names

extern TexFontSet tahoma_7_normal, tahoma_8_normal, tahoma_9_normal, tahoma_9_bold, tahoma_9_close,
    tahoma_10_normal, tahoma_10_bold, tahoma_11_normal, tahoma_11_bold, tahoma_12_normal,
    tahoma_12_bold, tahoma_13_normal, tahoma_13_bold, tahoma_14_bold, tahoma_15_normal,
    tahoma_15_bold, tahoma_16_bold, tahoma_21_normal, tahoma_24_normal, tahoma_28_normal,
    tahoma_40_normal;

// Builds textures and glyph tables; needs a current GL context.
void tex_font_init();
void tex_font_stop(); // deletes the textures, in the context they were made in

// Three textures from one bitmap: its blue, green and red channel are an atlas each. Values below
// a channel's limit become the dark edge, the others the glyph body.
void tex_font_load_bitmap(int resource_id, std::int32_t texture_a, std::int32_t limit_a,
                          std::int32_t texture_b, std::int32_t limit_b, std::int32_t texture_c,
                          std::int32_t limit_c);
void tex_font_load_wipe_character_set(TexFontSet *set);
void tex_font_register_glyph(TexFontSet *set, int code, std::int32_t x0, std::int32_t y0,
                             std::int32_t x1, std::int32_t y1, std::int32_t baseline);

// Width in pixels; a character without a glyph counts as an 'i'.
std::int32_t tex_font_get_string_width(const TexFontSet *set, const char *format, ...)
    TEXT_PRINTF_LIKE(2, 3);

// Draws with the baseline starting at (x, y), window pixels from the top left, in the current
// material.
void tex_font_printf(const TexFontSet *set, float x, float y, const char *format, ...)
    TEXT_PRINTF_LIKE(4, 5);
void tex_font_start_glyph(const TexFontSet *set);
void tex_font_draw_glyph(const TexFontSet *set, int code, float x, float y);
void tex_font_test(); // hook for diagnostics, empty on purpose
