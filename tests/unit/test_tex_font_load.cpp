#include "assets/tex_font.h"

#include "platform/gl.h"
#include "platform/resource.h"
#include "resources/resource_ids.h"
#include "tests/support/gl_context.h"

#include <gtest/gtest.h>

#include <set>
#include <vector>

struct NamedSet {
    const char *name;
    const TexFontSet *set;
};
static const NamedSet SETS[] = {
    {"tahoma_7_normal", &tahoma_7_normal},   {"tahoma_8_normal", &tahoma_8_normal},
    {"tahoma_9_normal", &tahoma_9_normal},   {"tahoma_9_bold", &tahoma_9_bold},
    {"tahoma_9_close", &tahoma_9_close},     {"tahoma_10_normal", &tahoma_10_normal},
    {"tahoma_10_bold", &tahoma_10_bold},     {"tahoma_11_normal", &tahoma_11_normal},
    {"tahoma_11_bold", &tahoma_11_bold},     {"tahoma_12_normal", &tahoma_12_normal},
    {"tahoma_12_bold", &tahoma_12_bold},     {"tahoma_13_normal", &tahoma_13_normal},
    {"tahoma_13_bold", &tahoma_13_bold},     {"tahoma_14_bold", &tahoma_14_bold},
    {"tahoma_15_normal", &tahoma_15_normal}, {"tahoma_15_bold", &tahoma_15_bold},
    {"tahoma_16_bold", &tahoma_16_bold},     {"tahoma_21_normal", &tahoma_21_normal},
    {"tahoma_24_normal", &tahoma_24_normal}, {"tahoma_28_normal", &tahoma_28_normal},
    {"tahoma_40_normal", &tahoma_40_normal},
};
static constexpr int LIMITS[] = {128, 255, 255, 255, 255, 255}; // by texture

struct TexFontLoad : testing::Test {
    GlContext context{64, 64};

    void SetUp() override {
        tex_font_init();
    }
    void TearDown() override {
        tex_font_stop();
    }
};

// The grey channel that a texture is made of, bottom row first.
static std::vector<std::uint8_t> atlas_of(int texture) {
    BitmapPixels pixels;
    EXPECT_EQ(resource_bitmap(texture < 3 ? RESOURCE_ATLAS_A : RESOURCE_ATLAS_B, &pixels), 0);
    std::vector<std::uint8_t> values;
    for (std::size_t i = static_cast<std::size_t>(texture % 3); i < pixels.bytes.size(); i += 3)
        values.push_back(pixels.bytes[i]);
    return values;
}

static std::vector<std::uint8_t> texture_pixels(int texture) {
    std::vector<std::uint8_t> rgba(512 * 256 * 4);
    glBindTexture(GL_TEXTURE_2D, tex_font_textures[texture]);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glGetTexImage(GL_TEXTURE_2D, 0, GL_RGBA, GL_UNSIGNED_BYTE, rgba.data());
    return rgba;
}

// ---- textures

TEST_F(TexFontLoad, there_are_six_textures_of_the_atlas_size) {
    const std::set<std::uint32_t> names(tex_font_textures, tex_font_textures + 6);
    EXPECT_EQ(names.size(), 6u);
    EXPECT_FALSE(names.contains(0));
    for (const std::uint32_t name : names) {
        GLint width = 0, height = 0;
        glBindTexture(GL_TEXTURE_2D, name);
        glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_WIDTH, &width);
        glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_HEIGHT, &height);
        EXPECT_EQ(width, 512);
        EXPECT_EQ(height, 256);
    }
}

TEST_F(TexFontLoad, values_from_the_limit_on_become_opaque_grey_and_smaller_ones_a_dark_edge) {
    for (int texture = 0; texture < 6; texture++) {
        const std::vector<std::uint8_t> values = atlas_of(texture);
        const std::vector<std::uint8_t> rgba = texture_pixels(texture);
        ASSERT_EQ(values.size() * 4, rgba.size());
        for (std::size_t i = 0; i < values.size(); i++) {
            const int value = values[i];
            const bool body = value >= LIMITS[texture];
            const int grey = body ? value : 0;
            const int alpha = body ? 255 : value == 0 ? 0 : std::min(value + 10, 255);
            ASSERT_EQ(rgba[i * 4], grey) << texture << ": " << i;
            ASSERT_EQ(rgba[i * 4 + 1], grey) << texture << ": " << i;
            ASSERT_EQ(rgba[i * 4 + 2], grey) << texture << ": " << i;
            ASSERT_EQ(rgba[i * 4 + 3], alpha) << texture << ": " << i;
        }
    }
}

TEST_F(TexFontLoad, the_limits_of_a_bitmap_hold_for_blue_green_and_red) {
    // The same bitmap again with other limits: of texture 1's atlas everything is body then.
    tex_font_stop();
    tex_font_load_bitmap(RESOURCE_ATLAS_A, 2, 256, 1, 0, 0, 256);
    const std::vector<std::uint8_t> blue = texture_pixels(2), green = texture_pixels(1),
                                    red = texture_pixels(0);
    const std::vector<std::uint8_t> blue_values = atlas_of(0), red_values = atlas_of(2);
    for (std::size_t i = 0; i < blue_values.size(); i++) {
        ASSERT_EQ(green[i * 4 + 3], 255);
        ASSERT_EQ(blue[i * 4], 0);
        ASSERT_EQ(blue[i * 4 + 3], blue_values[i] == 0 ? 0 : std::min(blue_values[i] + 10, 255));
        ASSERT_EQ(red[i * 4 + 3], red_values[i] == 0 ? 0 : std::min(red_values[i] + 10, 255));
    }
}

TEST_F(TexFontLoad, a_missing_bitmap_makes_no_textures) {
    tex_font_stop();
    tex_font_load_bitmap(9999, 0, 128, 1, 255, 2, 255);
    EXPECT_EQ(tex_font_textures[0], 0u);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST_F(TexFontLoad, stopping_deletes_the_textures) {
    std::uint32_t names[6];
    std::copy_n(tex_font_textures, 6, names);
    EXPECT_TRUE(glIsTexture(names[0]));
    tex_font_stop();
    for (const std::uint32_t name : names)
        EXPECT_FALSE(glIsTexture(name));
    tex_font_stop(); // once more does no harm
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

// ---- glyph tables

TEST(TexFontTables, wiping_unregisters_every_glyph_and_goes_back_to_texture_0) {
    static TexFontSet set;
    set.texture = 4;
    tex_font_register_glyph(&set, 'A', 1, 2, 3, 4, 5);
    tex_font_register_glyph(&set, 163, 1, 2, 3, 4, 5);
    tex_font_load_wipe_character_set(&set);
    EXPECT_EQ(set.texture, 0);
    for (const TexGlyph &glyph : set.glyph)
        EXPECT_EQ(glyph.code, 0);
}

TEST(TexFontTables, a_glyph_knows_its_box_in_pixels_and_in_texture_coordinates) {
    static TexFontSet set;
    tex_font_register_glyph(&set, 'A', 128, 64, 138, 84, 80);
    const TexGlyph &glyph = set.glyph[static_cast<int>('A')];
    EXPECT_EQ(glyph.code, 'A');
    EXPECT_EQ(glyph.x0, 128);
    EXPECT_EQ(glyph.y0, 64);
    EXPECT_EQ(glyph.x1, 138);
    EXPECT_EQ(glyph.y1, 84);
    EXPECT_EQ(glyph.tex_u0, 0.25f);
    EXPECT_EQ(glyph.tex_v0, 0.25f);
    EXPECT_EQ(glyph.tex_u1, 138.0f / 512.0f);
    EXPECT_EQ(glyph.tex_v1, 84.0f / 256.0f);
    EXPECT_EQ(glyph.ascent, 16.0f);
    EXPECT_EQ(glyph.width, 10.0f);
    EXPECT_EQ(glyph.height, 20.0f);
}

TEST(TexFontTables, the_pound_sign_is_code_163_and_a_negative_signed_byte) {
    static TexFontSet set;
    tex_font_register_glyph(&set, 163, 0, 0, 10, 10, 8);
    EXPECT_EQ(set.glyph[163].code, -93);
}

TEST_F(TexFontLoad, every_set_registers_33_to_126_and_the_pound_sign_and_nothing_else) {
    for (const NamedSet &named : SETS) {
        for (int code = 0; code < 256; code++) {
            const bool expected = (code >= 33 && code <= 126) || code == 163;
            const int registered = named.set->glyph[code].code;
            EXPECT_EQ(registered, expected ? static_cast<signed char>(code) : 0)
                << named.name << " " << code;
        }
    }
}

TEST_F(TexFontLoad, the_title_and_the_smallest_names_have_their_known_parameters) {
    EXPECT_EQ(tahoma_40_normal.texture, 0);
    EXPECT_EQ(tahoma_40_normal.spacing, 4.0f);
    EXPECT_EQ(tahoma_40_normal.padding, 8.0f);
    EXPECT_EQ(tahoma_9_bold.texture, 2);
    EXPECT_EQ(tahoma_9_bold.spacing, 1.0f);
    EXPECT_EQ(tahoma_9_bold.padding, 6.0f);
}

TEST_F(TexFontLoad, padding_is_never_so_large_that_a_text_runs_backwards) {
    for (const NamedSet &named : SETS) {
        for (const TexGlyph &glyph : named.set->glyph) {
            if (glyph.code == 0)
                continue;
            EXPECT_GT(glyph.width + named.set->spacing, named.set->padding)
                << named.name << " " << int{glyph.code};
        }
    }
}

// Of the glyph's box; x and y from its upper left corner.
static int value_at(const std::vector<std::uint8_t> &atlas, const TexGlyph &glyph, std::int32_t x,
                    std::int32_t y) {
    return atlas[static_cast<std::size_t>((255 - glyph.y0 - y) * 512 + glyph.x0 + x)];
}

TEST_F(TexFontLoad, every_glyph_has_a_body_inside_of_a_border_for_its_edge) {
    for (const NamedSet &named : SETS) {
        const std::vector<std::uint8_t> atlas = atlas_of(named.set->texture);
        const int limit = LIMITS[named.set->texture];
        for (const TexGlyph &glyph : named.set->glyph) {
            if (glyph.code == 0)
                continue;
            const std::int32_t width = glyph.x1 - glyph.x0, height = glyph.y1 - glyph.y0;
            int body_pixels = 0, at_border = 0;
            for (std::int32_t y = 0; y < height; y++) {
                for (std::int32_t x = 0; x < width; x++) {
                    if (value_at(atlas, glyph, x, y) < limit)
                        continue;
                    body_pixels++;
                    at_border += x == 0 || y == 0 || x == width - 1 || y == height - 1;
                }
            }
            EXPECT_GT(body_pixels, 0) << named.name << " " << int{glyph.code};
            EXPECT_EQ(at_border, 0) << named.name << " " << int{glyph.code};
        }
    }
}

TEST_F(TexFontLoad, a_larger_set_draws_wider_texts) {
    const TexFontSet *const bold[] = {&tahoma_9_bold,  &tahoma_10_bold, &tahoma_11_bold,
                                      &tahoma_12_bold, &tahoma_13_bold, &tahoma_14_bold,
                                      &tahoma_15_bold, &tahoma_16_bold};
    const TexFontSet *const normal[] = {&tahoma_7_normal,  &tahoma_8_normal,  &tahoma_9_close,
                                        &tahoma_9_normal,  &tahoma_10_normal, &tahoma_11_normal,
                                        &tahoma_12_normal, &tahoma_13_normal, &tahoma_15_normal,
                                        &tahoma_21_normal, &tahoma_24_normal, &tahoma_28_normal,
                                        &tahoma_40_normal};
    static constexpr char TEXT[] = "Mail Gateway in the 2nd computer room";
    for (std::size_t i = 1; i < std::size(bold); i++)
        EXPECT_GT(tex_font_get_string_width(bold[i], TEXT),
                  tex_font_get_string_width(bold[i - 1], TEXT))
            << i;
    for (std::size_t i = 1; i < std::size(normal); i++)
        EXPECT_GT(tex_font_get_string_width(normal[i], TEXT),
                  tex_font_get_string_width(normal[i - 1], TEXT))
            << i;
}
