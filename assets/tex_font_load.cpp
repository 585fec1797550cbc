#include "assets/tex_font.h"

#include "assets/tex_font_glyphs.h"
#include "platform/gl.h"
#include "platform/resource.h"
#include "resources/resource_ids.h"

#include <algorithm>
#include <span>
#include <vector>

std::uint32_t tex_font_textures[TEX_FONT_TEXTURES];

#define DEFINE_SET(set, texture, spacing, padding) TexFontSet set;
TEX_FONT_SETS(DEFINE_SET)
#undef DEFINE_SET

static constexpr std::int32_t EDGE_ALPHA_OFFSET = 10; // makes the faintest edge just visible

// ---- atlas textures

static void expand_value(std::int32_t value, std::int32_t limit, std::uint8_t *rgba) {
    const bool body = value >= limit;
    const std::int32_t grey = body ? value : 0;
    const std::int32_t edge_alpha = value == 0 ? 0 : std::min(value + EDGE_ALPHA_OFFSET, 255);
    std::fill_n(rgba, 3, static_cast<std::uint8_t>(grey));
    rgba[3] = static_cast<std::uint8_t>(body ? 255 : edge_alpha);
}

static void upload_channel(const BitmapPixels &pixels, std::size_t channel, std::int32_t texture,
                           std::int32_t limit) {
    const std::size_t total = pixels.bytes.size() / 3;
    std::vector<std::uint8_t> rgba(total * 4);
    for (std::size_t i = 0; i < total; i++)
        expand_value(pixels.bytes[i * 3 + channel], limit, &rgba[i * 4]);

    glGenTextures(1, &tex_font_textures[texture]);
    glBindTexture(GL_TEXTURE_2D, tex_font_textures[texture]);
    // Without mipmaps the default filter would leave the texture incomplete.
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, pixels.width, pixels.height, 0, GL_RGBA,
                 GL_UNSIGNED_BYTE, rgba.data());
}

void tex_font_load_bitmap(int resource_id, std::int32_t texture_a, std::int32_t limit_a,
                          std::int32_t texture_b, std::int32_t limit_b, std::int32_t texture_c,
                          std::int32_t limit_c) {
    BitmapPixels pixels;
    if (resource_bitmap(resource_id, &pixels) != 0)
        return; // texts stay invisible
    upload_channel(pixels, 0, texture_a, limit_a);
    upload_channel(pixels, 1, texture_b, limit_b);
    upload_channel(pixels, 2, texture_c, limit_c);
}

// ---- glyph tables

void tex_font_load_wipe_character_set(TexFontSet *set) {
    set->texture = 0;
    for (TexGlyph &glyph : set->glyph)
        glyph.code = 0;
}

void tex_font_register_glyph(TexFontSet *set, int code, std::int32_t x0, std::int32_t y0,
                             std::int32_t x1, std::int32_t y1, std::int32_t baseline) {
    constexpr float ATLAS_WIDTH = TEX_FONT_ATLAS_WIDTH;
    constexpr float ATLAS_HEIGHT = TEX_FONT_ATLAS_HEIGHT;
    TexGlyph *glyph = &set->glyph[static_cast<unsigned char>(code)];
    glyph->code = static_cast<signed char>(code);
    glyph->x0 = x0;
    glyph->y0 = y0;
    glyph->x1 = x1;
    glyph->y1 = y1;
    glyph->tex_u0 = static_cast<float>(x0) / ATLAS_WIDTH;
    glyph->tex_v0 = static_cast<float>(y0) / ATLAS_HEIGHT;
    glyph->tex_u1 = static_cast<float>(x1) / ATLAS_WIDTH;
    glyph->tex_v1 = static_cast<float>(y1) / ATLAS_HEIGHT;
    glyph->ascent = static_cast<float>(baseline - y0);
    glyph->width = static_cast<float>(x1 - x0);
    glyph->height = static_cast<float>(y1 - y0);
}

static void build_set(TexFontSet *set, std::int32_t texture, float spacing, float padding,
                      std::span<const TexGlyphPlace> places) {
    tex_font_load_wipe_character_set(set);
    set->texture = texture;
    set->spacing = spacing;
    set->padding = padding;
    for (const TexGlyphPlace &place : places)
        tex_font_register_glyph(set, place.code, place.x0, place.y0, place.x1, place.y1,
                                place.baseline);
}

void tex_font_init() {
    // In the first texture the bodies have grey levels of their own, hence its lower limit.
    tex_font_load_bitmap(RESOURCE_ATLAS_A, 0, 128, 1, 255, 2, 255);
    tex_font_load_bitmap(RESOURCE_ATLAS_B, 3, 255, 4, 255, 5, 255);
#define BUILD_SET(set, texture, spacing, padding)                                                  \
    build_set(&(set), texture, spacing, padding, set##_places);
    TEX_FONT_SETS(BUILD_SET)
#undef BUILD_SET
}

void tex_font_stop() {
    glDeleteTextures(TEX_FONT_TEXTURES, tex_font_textures);
    std::fill_n(tex_font_textures, TEX_FONT_TEXTURES, 0u);
}
