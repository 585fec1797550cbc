#include "assets/tex_font.h"

#include "platform/gl.h"
#include "tests/support/drawn_bounds.h"

#include <gtest/gtest.h>

#include <string>

static constexpr Pixel BLUE = {0, 0, 255};
static constexpr Pixel WHITE = {255, 255, 255};

// ---- widths, with a set made up for it

struct TexFontWidth : testing::Test {
    TexFontSet set = {};

    void SetUp() override {
        tex_font_load_wipe_character_set(&set);
        set.spacing = 1.0f;
        set.padding = 6.0f;
        tex_font_register_glyph(&set, 'i', 0, 0, 9, 10, 8);
        tex_font_register_glyph(&set, 'W', 10, 0, 30, 10, 8);
        tex_font_register_glyph(&set, 163, 30, 0, 45, 10, 8);
    }
};

TEST_F(TexFontWidth, an_empty_string_measures_the_padding) {
    EXPECT_EQ(tex_font_get_string_width(&set, "%s", ""), 6);
}

TEST_F(TexFontWidth, each_glyph_adds_its_width_and_the_spacing_without_the_padding) {
    EXPECT_EQ(tex_font_get_string_width(&set, "W"), 20 + 1 - 6 + 6);
    EXPECT_EQ(tex_font_get_string_width(&set, "WiW"), 15 + 4 + 15 + 6);
}

TEST_F(TexFontWidth, spaces_are_as_wide_as_the_same_number_of_i) {
    EXPECT_EQ(tex_font_get_string_width(&set, "   "), tex_font_get_string_width(&set, "iii"));
}

TEST_F(TexFontWidth, a_space_is_as_wide_as_an_i_even_when_it_is_registered) {
    tex_font_register_glyph(&set, ' ', 0, 0, 100, 10, 8);
    EXPECT_EQ(tex_font_get_string_width(&set, " "), tex_font_get_string_width(&set, "i"));
}

TEST_F(TexFontWidth, a_character_without_a_glyph_takes_the_place_of_an_i) {
    EXPECT_EQ(tex_font_get_string_width(&set, "W\xe4W"), tex_font_get_string_width(&set, "WiW"));
    EXPECT_EQ(tex_font_get_string_width(&set, "a"), tex_font_get_string_width(&set, "i"));
    EXPECT_EQ(tex_font_get_string_width(&set, "\n"), tex_font_get_string_width(&set, "i"));
}

TEST_F(TexFontWidth, the_pound_sign_is_a_glyph_although_its_code_is_negative) {
    EXPECT_EQ(tex_font_get_string_width(&set, "\xa3"), 15 + 1 - 6 + 6);
}

TEST_F(TexFontWidth, the_width_is_cut_to_an_integer) {
    set.spacing = 1.4f;
    EXPECT_EQ(tex_font_get_string_width(&set, "WW"), 36) << "36.8 pixels";
}

TEST_F(TexFontWidth, the_format_is_filled_in) {
    EXPECT_EQ(tex_font_get_string_width(&set, "%s%c", "W", 'i'),
              tex_font_get_string_width(&set, "Wi"));
}

TEST_F(TexFontWidth, a_missing_format_measures_the_padding) {
    const char *const none = nullptr;
    EXPECT_EQ(tex_font_get_string_width(&set, none), 6);
}

TEST_F(TexFontWidth, a_text_of_thousands_of_characters_is_cut) {
    EXPECT_EQ(tex_font_get_string_width(&set, "%s", std::string(5000, 'W').c_str()), 511 * 15 + 6);
}

// ---- drawing

struct TexFont : testing::Test {
    GlContext context{400, 120};

    void SetUp() override {
        tex_font_init();
        glMatrixMode(GL_PROJECTION);
        glLoadIdentity();
        gluPerspective(20.0, 4.0, 5.0, 200.0);
        glMatrixMode(GL_MODELVIEW);
        set_colour(1.0f, 1.0f, 1.0f);
        gl_clear(BLUE);
    }
    void TearDown() override {
        tex_font_stop();
    }
    static void set_colour(float red, float green, float blue) {
        const float rgba[] = {red, green, blue, 1.0f};
        glMaterialfv(GL_FRONT_AND_BACK, GL_AMBIENT_AND_DIFFUSE, rgba);
    }
    DrawnBounds bodies() const {
        return bounds_of_colour(context, WHITE);
    }
};

TEST_F(TexFont, the_baseline_starts_at_window_pixels_from_the_top_left) {
    tex_font_printf(&tahoma_40_normal, 10.0f, 48.0f, "%s", "Home");
    const DrawnBounds bounds = bounds_of_colour(context, WHITE, 20);
    EXPECT_NEAR(bounds.bottom, 47, 1) << "the letters stand on row 48";
    EXPECT_NEAR(bounds.top, 48 - 29, 1) << "capitals are 0.73 of 40 pixels high";
    EXPECT_GE(bounds.left, 10 + 2);
    EXPECT_LE(bounds.left, 10 + 8);
}

TEST_F(TexFont, capitals_of_the_small_sizes_end_exactly_on_the_baseline) {
    tex_font_printf(&tahoma_9_bold, 20.0f, 60.0f, "HHH");
    EXPECT_EQ(bodies().bottom, 59);
    EXPECT_EQ(bodies().top, 53);
}

TEST_F(TexFont, a_text_stays_within_its_width) {
    tex_font_printf(&tahoma_16_bold, 30.0f, 60.0f, "Mail Gateway");
    const DrawnBounds bounds = drawn_bounds(context, BLUE);
    const std::int32_t width = tex_font_get_string_width(&tahoma_16_bold, "Mail Gateway");
    EXPECT_GE(bounds.left, 30);
    EXPECT_LT(bounds.right, 30 + width);
    EXPECT_GT(bounds.width(), width - 8);
}

TEST_F(TexFont, the_bodies_are_in_the_middle_of_the_width) {
    for (const TexFontSet *set : {&tahoma_7_normal, &tahoma_11_bold, &tahoma_15_normal,
                                  &tahoma_24_normal, &tahoma_28_normal}) {
        gl_clear(BLUE);
        tex_font_printf(set, 30.0f, 60.0f, "HaH");
        EXPECT_NEAR(bounds_of_colour(context, WHITE, 60).middle_x(),
                    30.0 + tex_font_get_string_width(set, "HaH") / 2.0, 1.5)
            << set->texture;
    }
}

TEST_F(TexFont, white_text_is_white_with_a_dark_edge_around_it) {
    gl_clear(WHITE);
    tex_font_printf(&tahoma_11_bold, 20.0f, 60.0f, "I");
    // Column by column through the stem.
    std::int32_t left = 20;
    while (gl_pixel(left, 55).red == 255)
        left++;
    EXPECT_LT(gl_pixel(left, 55).red, 160) << "to the left";
    std::int32_t body = left;
    while (gl_pixel(body, 55).red != 255)
        body++;
    std::int32_t right = body;
    while (gl_pixel(right, 55).red == 255)
        right++;
    EXPECT_LE(right - body, 6) << "the stem";
    EXPECT_LT(gl_pixel(right, 55).red, 160) << "to the right";
    EXPECT_LT(gl_pixel(right + 1, 55).red, 255) << "the shadow reaches further";
}

TEST_F(TexFont, every_set_is_readable_on_a_white_page) {
    for (const TexFontSet *set : {&tahoma_7_normal, &tahoma_9_bold, &tahoma_14_bold,
                                  &tahoma_21_normal, &tahoma_40_normal}) {
        gl_clear(WHITE);
        tex_font_printf(set, 20.0f, 60.0f, "Readable");
        std::int32_t dark = 0;
        for (std::int32_t y = 20; y < 75; y++)
            dark += gl_count_differing(20, y, 300, 1, WHITE, 110);
        EXPECT_GT(dark, 50) << set->texture;
    }
}

TEST_F(TexFont, the_text_takes_the_colour_of_the_material) {
    set_colour(1.0f, 0.0f, 0.0f);
    tex_font_printf(&tahoma_16_bold, 30.0f, 60.0f, "Mail");
    EXPECT_EQ(bodies().count, 0);
    EXPECT_GT(bounds_of_colour(context, {255, 0, 0}).count, 50);
}

TEST_F(TexFont, an_unknown_character_draws_nothing_and_takes_the_place_of_an_i) {
    tex_font_printf(&tahoma_16_bold, 30.0f, 60.0f, "\xe4\x80 \n");
    EXPECT_EQ(drawn_bounds(context, BLUE).count, 0);
    tex_font_printf(&tahoma_16_bold, 30.0f, 60.0f, "%s", "\xe4I");
    const std::int32_t with_unknown = bodies().left;
    gl_clear(BLUE);
    tex_font_printf(&tahoma_16_bold, 30.0f, 60.0f, "%s", " I");
    EXPECT_EQ(bodies().left, with_unknown);
    gl_clear(BLUE);
    tex_font_printf(&tahoma_16_bold, 30.0f, 60.0f, "I");
    const TexGlyph &i = tahoma_16_bold.glyph[static_cast<int>('i')];
    EXPECT_EQ(with_unknown - bodies().left, i.width + 1.0f - 6.0f);
}

TEST_F(TexFont, the_pound_sign_is_drawn) {
    tex_font_printf(&tahoma_16_bold, 30.0f, 60.0f, "\xa3");
    EXPECT_GT(bodies().count, 20);
}

TEST_F(TexFont, a_place_between_pixels_is_rounded_so_that_glyphs_stay_sharp) {
    tex_font_printf(&tahoma_9_bold, 30.0f, 60.0f, "Mail");
    const DrawnBounds whole = bodies();
    for (const float offset : {0.3f, -0.4f, 0.49f}) {
        gl_clear(BLUE);
        tex_font_printf(&tahoma_9_bold, 30.0f + offset, 60.0f - offset, "Mail");
        EXPECT_EQ(bodies().left, whole.left);
        EXPECT_EQ(bodies().bottom, whole.bottom);
        EXPECT_EQ(bodies().count, whole.count);
    }
}

TEST_F(TexFont, the_part_inside_the_window_of_a_text_that_begins_outside_is_drawn) {
    tex_font_printf(&tahoma_16_bold, -20.0f, 60.0f, "Mail Gateway");
    const DrawnBounds bounds = drawn_bounds(context, BLUE);
    EXPECT_EQ(bounds.left, 0);
    EXPECT_NEAR(bounds.right, -20 + tex_font_get_string_width(&tahoma_16_bold, "Mail Gateway"), 4);
}

TEST_F(TexFont, window_pixels_follow_the_viewport) {
    glViewport(0, 0, 200, 60); // the lower left quarter
    tex_font_printf(&tahoma_9_bold, 20.0f, 40.0f, "HHH");
    EXPECT_EQ(bodies().bottom, 60 + 39);
}

TEST_F(TexFont, drawing_leaves_the_projection_and_resets_the_model_view_matrix) {
    float projection_before[16], projection_after[16], modelview[16];
    glGetFloatv(GL_PROJECTION_MATRIX, projection_before);
    glTranslatef(3.0f, 4.0f, 5.0f);
    GLint depth_before = 0, depth_after = 0;
    glGetIntegerv(GL_MODELVIEW_STACK_DEPTH, &depth_before);
    glMatrixMode(GL_PROJECTION);
    tex_font_printf(&tahoma_9_bold, 20.0f, 60.0f, "Mail");
    glGetFloatv(GL_PROJECTION_MATRIX, projection_after);
    glGetFloatv(GL_MODELVIEW_MATRIX, modelview);
    glGetIntegerv(GL_MODELVIEW_STACK_DEPTH, &depth_after);
    GLint mode = 0;
    glGetIntegerv(GL_MATRIX_MODE, &mode);
    EXPECT_EQ(mode, GL_MODELVIEW);
    EXPECT_EQ(depth_after, depth_before);
    for (int i = 0; i < 16; i++) {
        EXPECT_EQ(projection_after[i], projection_before[i]) << i;
        EXPECT_EQ(modelview[i], i % 5 == 0 ? 1.0f : 0.0f) << i;
    }
}

TEST_F(TexFont, drawing_ends_without_texture_and_blending_and_with_the_depth_test) {
    glEnable(GL_DEPTH_TEST);
    tex_font_printf(&tahoma_9_bold, 20.0f, 60.0f, "Mail");
    EXPECT_FALSE(glIsEnabled(GL_TEXTURE_2D));
    EXPECT_FALSE(glIsEnabled(GL_BLEND));
    EXPECT_TRUE(glIsEnabled(GL_DEPTH_TEST));
}

static GLint texture_parameter(GLenum name) {
    GLint value = 0;
    glGetTexParameteriv(GL_TEXTURE_2D, name, &value);
    return value;
}

TEST_F(TexFont, a_set_is_drawn_from_its_atlas_repeating_smoothed_and_lit) {
    for (const TexFontSet *set : {&tahoma_40_normal, &tahoma_9_bold, &tahoma_24_normal}) {
        tex_font_start_glyph(set);
        GLint bound = 0, mode = 0;
        glGetIntegerv(GL_TEXTURE_BINDING_2D, &bound);
        glGetTexEnviv(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, &mode);
        EXPECT_EQ(static_cast<std::uint32_t>(bound), tex_font_textures[set->texture]);
        EXPECT_EQ(mode, GL_MODULATE);
        EXPECT_EQ(texture_parameter(GL_TEXTURE_WRAP_S), GL_REPEAT);
        EXPECT_EQ(texture_parameter(GL_TEXTURE_WRAP_T), GL_REPEAT);
        EXPECT_EQ(texture_parameter(GL_TEXTURE_MIN_FILTER), GL_LINEAR);
        EXPECT_EQ(texture_parameter(GL_TEXTURE_MAG_FILTER), GL_LINEAR);
    }
}

TEST_F(TexFont, the_text_neither_shines_nor_glows) {
    const float shiny[4] = {1.0f, 1.0f, 1.0f, 1.0f};
    glMaterialfv(GL_FRONT_AND_BACK, GL_SPECULAR, shiny);
    glMaterialfv(GL_FRONT_AND_BACK, GL_EMISSION, shiny);
    glMaterialf(GL_FRONT_AND_BACK, GL_SHININESS, 50.0f);
    set_colour(0.0f, 0.0f, 0.0f);
    tex_font_printf(&tahoma_16_bold, 30.0f, 60.0f, "Mail");
    EXPECT_EQ(bodies().count, 0);
    EXPECT_GT(bounds_of_colour(context, {0, 0, 0}).count, 50);
    float shininess = 1.0f;
    glGetMaterialfv(GL_FRONT, GL_SHININESS, &shininess);
    EXPECT_EQ(shininess, 0.0f);
}

TEST_F(TexFont, texts_lie_over_everything_whatever_its_depth) {
    glClearDepth(0.0);
    glClear(GL_DEPTH_BUFFER_BIT);
    tex_font_printf(&tahoma_9_bold, 20.0f, 60.0f, "Mail");
    EXPECT_GT(bodies().count, 30);
}

TEST_F(TexFont, missing_and_endless_texts_do_no_harm) {
    const char *const none = nullptr;
    tex_font_printf(&tahoma_9_bold, 20.0f, 60.0f, none);
    EXPECT_EQ(drawn_bounds(context, BLUE).count, 0);
    tex_font_printf(&tahoma_9_bold, 20.0f, 60.0f, "%s", std::string(5000, 'W').c_str());
    tex_font_test();
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}
