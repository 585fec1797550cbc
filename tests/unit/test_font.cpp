#include "assets/font.h"

#include "platform/gl.h"
#include "tests/support/drawn_bounds.h"

#include <gtest/gtest.h>

#include <string>

static constexpr Pixel BLACK = {0, 0, 0};

struct Font : testing::Test {
    GlContext context{300, 100};
    BitmapFont font = {};

    void SetUp() override {
        gl_clear(BLACK);
        glMatrixMode(GL_PROJECTION);
        glLoadIdentity();
        glOrtho(0.0, 300.0, 0.0, 100.0, -1.0, 1.0);
        glMatrixMode(GL_MODELVIEW);
        glLoadIdentity();
        glDisable(GL_LIGHTING);
        glDisable(GL_CULL_FACE);
        glColor3f(1.0f, 1.0f, 1.0f);
        font_load(&font, "Tahoma", 11, FONT_WEIGHT_NORMAL);
        glRasterPos2f(10.0f, 50.0f);
    }
    void TearDown() override {
        font_unload(&font);
    }
};

static float raster_x() {
    float position[4];
    glGetFloatv(GL_CURRENT_RASTER_POSITION, position);
    return position[0];
}

// ---- widths

TEST(FontWidth, an_empty_string_is_minus_one_wide) {
    const BitmapFont font = {};
    EXPECT_EQ(font_get_string_width(&font, ""), -1.0f);
}

TEST(FontWidth, a_text_is_seven_tenths_of_its_advances_wide) {
    BitmapFont font = {};
    font.width[int{'A'}] = 10.0f;
    font.width[int{'b'}] = 4.0f;
    EXPECT_FLOAT_EQ(font_get_string_width(&font, "A"), 7.0f);
    EXPECT_FLOAT_EQ(font_get_string_width(&font, "AbA"), 16.8f);
    EXPECT_FLOAT_EQ(font_pixel_width(&font, "AbA"), 24.0f * 16.0f);
}

TEST(FontWidth, characters_without_a_picture_have_no_width) {
    BitmapFont font = {};
    font.width[int{'A'}] = 10.0f;
    font.width[int{'\n'}] = 1000.0f;
    EXPECT_FLOAT_EQ(font_get_string_width(&font, "A\n\xe4\xff\x80"), 7.0f);
    EXPECT_FLOAT_EQ(font_get_string_width(&font, "\xe4"), 0.0f) << "not empty, hence not -1";
}

TEST_F(Font, loading_records_widths_for_the_characters_32_to_127_only) {
    for (std::int32_t code = 0; code < 32; code++)
        EXPECT_EQ(font.width[code], 0.0f) << code;
    for (std::int32_t code = 32; code < 127; code++) {
        EXPECT_GT(font.width[code], 1.0f / 16.0f) << code;
        EXPECT_LE(font.width[code], 14.0f / 16.0f) << code;
    }
}

// ---- printing

TEST_F(Font, a_text_is_drawn_from_the_raster_position_on) {
    font_printf(&font, "Hello");
    const DrawnBounds bounds = drawn_bounds(context, BLACK);
    EXPECT_GT(bounds.count, 30);
    EXPECT_GE(bounds.left, 10);
    EXPECT_LE(bounds.right, 10 + static_cast<int>(font_pixel_width(&font, "Hello")));
    EXPECT_EQ(bounds.bottom, 100 - 50 - 1) << "on the baseline";
}

TEST_F(Font, each_character_selects_its_own_list) {
    for (char character = 32; character < 127; character++) {
        glRasterPos2f(10.0f, 50.0f);
        const float before = raster_x();
        font_printf(&font, "%c", character);
        EXPECT_NEAR(raster_x() - before, font.width[static_cast<int>(character)] * 16.0f, 0.01f)
            << character;
    }
}

TEST_F(Font, characters_outside_32_to_127_are_left_out) {
    const float before = raster_x();
    font_printf(&font, "\t\x01\x1f\x80\xe4\xff");
    EXPECT_EQ(raster_x(), before);
    EXPECT_EQ(drawn_bounds(context, BLACK).count, 0);
    font_printf(&font, "\xe4"
                       "A\n");
    EXPECT_NEAR(raster_x() - before, font.width[int{'A'}] * 16.0f, 0.01f);
}

TEST_F(Font, characters_beyond_127_do_not_reach_the_lists_of_the_next_font) {
    BitmapFont next = {};
    font_load(&next, "Tahoma", 11, FONT_WEIGHT_BOLD);
    ASSERT_EQ(next.list_base, font.list_base + 96);
    glRasterPos2f(10.0f, 50.0f);
    const float before = raster_x();
    font_printf(&font, "\xa1\xb0\xdf"); // 'A', 'P' and the last of the other font's lists
    EXPECT_EQ(raster_x(), before);
    EXPECT_EQ(drawn_bounds(context, BLACK).count, 0);
    font_unload(&next);
}

TEST_F(Font, a_null_format_draws_nothing) {
    const float before = raster_x();
    const char *const none = nullptr;
    font_printf(&font, none);
    EXPECT_EQ(raster_x(), before);
}

TEST_F(Font, the_format_is_filled_in) {
    const float before = raster_x();
    font_printf(&font, "%d%s", 42, "x");
    EXPECT_NEAR(raster_x() - before, font_pixel_width(&font, "42x"), 0.01f);
}

TEST_F(Font, a_text_of_thousands_of_characters_is_cut) {
    const std::string text(5000, 'i');
    const float before = raster_x();
    font_printf(&font, "%s", text.c_str());
    EXPECT_NEAR(raster_x() - before, font_pixel_width(&font, text.substr(0, 511).c_str()), 1.0f);
}

TEST_F(Font, printing_leaves_the_list_base_as_it_was) {
    glListBase(77);
    font_printf(&font, "Hello");
    GLint base = 0;
    glGetIntegerv(GL_LIST_BASE, &base);
    EXPECT_EQ(base, 77);
}

TEST_F(Font, a_font_that_was_unloaded_draws_nothing) {
    font_unload(&font);
    const float before = raster_x();
    font_printf(&font, "Hello");
    EXPECT_EQ(raster_x(), before);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

// ---- life

TEST_F(Font, unloading_frees_all_of_its_lists) {
    const std::uint32_t base = font.list_base;
    for (std::uint32_t i = 0; i < 96; i++)
        EXPECT_TRUE(glIsList(base + i)) << i;
    font_unload(&font);
    for (std::uint32_t i = 0; i < 96; i++)
        EXPECT_FALSE(glIsList(base + i)) << i;
}

TEST_F(Font, unloading_twice_frees_no_list_of_others) {
    const std::uint32_t base = font.list_base;
    font_unload(&font);
    glNewList(base + 5, GL_COMPILE); // another's by now
    glEndList();
    font_unload(&font);
    EXPECT_TRUE(glIsList(base + 5));
}

TEST_F(Font, setting_the_colour_draws_nothing_to_be_seen) {
    glColor3f(1.0f, 0.0f, 0.0f);
    font_set_colour();
    EXPECT_EQ(drawn_bounds(context, BLACK).count, 0);
    glRasterPos2f(10.0f, 50.0f);
    font_printf(&font, "H");
    EXPECT_EQ(bounds_of_colour(context, {255, 0, 0}).count, drawn_bounds(context, BLACK).count);
}

TEST_F(Font, setting_the_colour_draws_a_tenth_of_a_unit_100_units_to_the_left) {
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(-200.0, 100.0, -50.0, 50.0, -1.0, 1.0); // a pixel is a unit
    GLfloat drawn[16] = {};
    glFeedbackBuffer(16, GL_2D, drawn);
    glRenderMode(GL_FEEDBACK);
    font_set_colour();
    ASSERT_EQ(glRenderMode(GL_RENDER), 5) << "one line: what it is, and two points";
    EXPECT_TRUE(drawn[0] == GL_LINE_TOKEN || drawn[0] == GL_LINE_RESET_TOKEN) << drawn[0];
    const GLfloat expected[] = {100.0f, 50.0f, 99.9f, 50.0f};
    for (int i = 0; i < 4; i++)
        EXPECT_NEAR(drawn[1 + i], expected[i], 0.01f) << i;
}

// ---- outline fonts

struct Font3d : Font {
    OutlineFont outline = {};

    void SetUp() override {
        Font::SetUp();
        font3d_load(&outline, "Tahoma", 40);
        glTranslatef(150.0f, 40.0f, 0.0f);
        glScalef(40.0f, 40.0f, 40.0f);
    }
    void TearDown() override {
        font3d_unload(&outline);
        Font::TearDown();
    }
};

TEST_F(Font3d, a_text_is_centred_on_the_origin) {
    font3d_printf(&outline, "%s%d", "HOH", 8);
    const DrawnBounds bounds = drawn_bounds(context, BLACK);
    EXPECT_GT(bounds.width(), 60);
    EXPECT_NEAR(bounds.middle_x(), 150.0, 3.0);
}

TEST_F(Font3d, a_text_faces_the_viewer) {
    glNormal3f(1.0f, 0.0f, 0.0f);
    font3d_printf(&outline, " ");
    float normal[3] = {};
    glGetFloatv(GL_CURRENT_NORMAL, normal);
    EXPECT_EQ(normal[0], 0.0f);
    EXPECT_EQ(normal[1], 0.0f);
    EXPECT_EQ(normal[2], 1.0f);
}

TEST_F(Font3d, the_metrics_of_the_characters_0_to_254_are_kept) {
    EXPECT_GT(outline.metrics[static_cast<unsigned char>('H')].cell_x, 0.3f);
    EXPECT_LT(outline.metrics[static_cast<unsigned char>('i')].cell_x,
              outline.metrics[static_cast<unsigned char>('m')].cell_x);
    EXPECT_GT(outline.metrics[254].cell_x, 0.0f);
    EXPECT_EQ(outline.metrics[255].cell_x, 0.0f);
}

TEST_F(Font3d, printing_leaves_the_list_base_as_it_was) {
    glListBase(77);
    font3d_printf(&outline, "H");
    GLint base = 0;
    glGetIntegerv(GL_LIST_BASE, &base);
    EXPECT_EQ(base, 77);
}

TEST_F(Font3d, long_and_missing_texts_do_no_harm) {
    const char *const none = nullptr;
    font3d_printf(&outline, none);
    EXPECT_EQ(drawn_bounds(context, BLACK).count, 0);
    font3d_printf(&outline, "%s", std::string(5000, '\xff').c_str());
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST_F(Font3d, unloading_frees_all_of_its_lists) {
    const std::uint32_t base = outline.list_base;
    EXPECT_TRUE(glIsList(base));
    EXPECT_TRUE(glIsList(base + 254));
    font3d_unload(&outline);
    for (std::uint32_t i = 0; i < 256; i++)
        EXPECT_FALSE(glIsList(base + i)) << i;
}
