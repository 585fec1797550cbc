#include "platform/font_lists.h"

#include "platform/gl.h"
#include "tests/support/drawn_bounds.h"

#include <gtest/gtest.h>

static constexpr Pixel BLACK = {0, 0, 0};

struct FontLists : testing::Test {
    GlContext context{200, 100};
    std::uint32_t base = glGenLists(96);
    float widths[96] = {};

    void SetUp() override {
        gl_clear(BLACK);
        glMatrixMode(GL_PROJECTION);
        glLoadIdentity();
        glOrtho(0.0, 200.0, 0.0, 100.0, -1.0, 1.0);
        glMatrixMode(GL_MODELVIEW);
        glLoadIdentity();
        glDisable(GL_LIGHTING);
        glColor3f(1.0f, 1.0f, 1.0f);
    }
};

static float raster_x() {
    float position[4];
    glGetFloatv(GL_CURRENT_RASTER_POSITION, position);
    return position[0];
}

TEST_F(FontLists, widths_are_the_advances_in_sixteenths_of_a_pixel) {
    ASSERT_EQ(font_lists_bitmaps("Tahoma", 11, FONT_WEIGHT_NORMAL, base, 32, 96, widths), 0);
    for (const char character : {'A', 'i', 'm', ' ', '~'}) {
        const std::uint32_t index = static_cast<std::uint32_t>(character - 32);
        glRasterPos2f(10.0f, 10.0f);
        const float before = raster_x();
        glCallList(base + index);
        EXPECT_NEAR(raster_x() - before, widths[index] * 16.0f, 0.01f) << character;
    }
    EXPECT_GT(widths['m' - 32], widths['i' - 32]);
}

// A driver may refuse to compile a bitmap without pixels, and the error would be found by whoever
// asks next.
TEST_F(FontLists, compiling_leaves_no_error_behind_blanks_and_empty_outlines_included) {
    ASSERT_EQ(font_lists_bitmaps("Tahoma", 11, FONT_WEIGHT_NORMAL, base, 32, 96, widths), 0);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR)) << "bitmaps";
    GlyphOutlineMetrics metrics[96] = {};
    ASSERT_EQ(font_lists_outlines("Tahoma", 40, FONT_WEIGHT_NORMAL, base, 32, 96, metrics), 0);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR)) << "outlines";
}

TEST_F(FontLists, letters_stand_on_the_baseline_and_are_as_high_as_asked_for) {
    ASSERT_EQ(font_lists_bitmaps("Tahoma", 40, FONT_WEIGHT_NORMAL, base, 32, 96, widths), 0);
    glRasterPos2f(20.0f, 30.0f);
    glCallList(base + 'H' - 32);
    const DrawnBounds bounds = drawn_bounds(context, BLACK);
    EXPECT_EQ(bounds.bottom, 100 - 30 - 1);
    EXPECT_NEAR(bounds.bottom - bounds.top + 1, 40 * 0.73, 2.0) << "a capital letter";
    EXPECT_GT(bounds.left, 19);
    EXPECT_LE(bounds.right, 20 + static_cast<int>(widths['H' - 32] * 16.0f));
}

TEST_F(FontLists, letters_stand_upright) {
    ASSERT_EQ(font_lists_bitmaps("Tahoma", 40, FONT_WEIGHT_NORMAL, base, 32, 96, widths), 0);
    glRasterPos2f(20.0f, 30.0f);
    glCallList(base + 'L' - 32);
    const DrawnBounds bounds = drawn_bounds(context, BLACK);
    EXPECT_EQ(gl_pixel(bounds.right, bounds.bottom).red, 255) << "the foot";
    EXPECT_EQ(gl_pixel(bounds.right, bounds.top).red, 0);
    EXPECT_EQ(gl_pixel(bounds.left, bounds.top).red, 255) << "the stem";
}

TEST_F(FontLists, bold_letters_have_more_pixels_than_normal_ones) {
    ASSERT_EQ(font_lists_bitmaps("Tahoma", 12, FONT_WEIGHT_NORMAL, base, 32, 96, widths), 0);
    glRasterPos2f(20.0f, 30.0f);
    glCallList(base + 'H' - 32);
    const std::int32_t normal = drawn_bounds(context, BLACK).count;
    gl_clear(BLACK);
    ASSERT_EQ(font_lists_bitmaps("Tahoma", 12, FONT_WEIGHT_BOLD, base, 32, 96, widths), 0);
    glRasterPos2f(20.0f, 30.0f);
    glCallList(base + 'H' - 32);
    EXPECT_GT(drawn_bounds(context, BLACK).count, normal);
}

TEST_F(FontLists, outlines_are_measured_in_character_heights) {
    GlyphOutlineMetrics metrics[96] = {};
    ASSERT_EQ(font_lists_outlines("Tahoma", 40, FONT_WEIGHT_NORMAL, base, 32, 96, metrics), 0);
    const GlyphOutlineMetrics &letter = metrics['H' - 32];
    EXPECT_NEAR(letter.box_y, 0.73f, 0.03f);
    EXPECT_NEAR(letter.origin_y, letter.box_y, 0.02f) << "stands on the baseline";
    EXPECT_GT(letter.cell_x, letter.box_x);
    EXPECT_EQ(letter.cell_y, 0.0f);
    EXPECT_GT(metrics[' ' - 32].cell_x, 0.0f);
}

TEST_F(FontLists, an_outline_is_a_filled_shape_with_its_holes_and_moves_on) {
    GlyphOutlineMetrics metrics[96] = {};
    ASSERT_EQ(font_lists_outlines("Tahoma", 40, FONT_WEIGHT_NORMAL, base, 32, 96, metrics), 0);
    glDisable(GL_CULL_FACE);
    glTranslatef(50.0f, 20.0f, 0.0f);
    glScalef(80.0f, 80.0f, 1.0f);
    glCallList(base + 'O' - 32);
    const DrawnBounds bounds = drawn_bounds(context, BLACK);
    const std::int32_t middle_x = (bounds.left + bounds.right) / 2;
    const std::int32_t middle_y = (bounds.top + bounds.bottom) / 2;
    EXPECT_NEAR(bounds.width(), metrics['O' - 32].box_x * 80.0f, 2.0f);
    EXPECT_EQ(gl_pixel(middle_x, middle_y).red, 0) << "the hole";
    EXPECT_EQ(gl_pixel(bounds.left + 3, middle_y).red, 255) << "the ring";
    float matrix[16];
    glGetFloatv(GL_MODELVIEW_MATRIX, matrix);
    EXPECT_NEAR(matrix[12], 50.0f + 80.0f * metrics['O' - 32].cell_x, 0.01f);
}

#ifndef _WIN32
// Windows puts another face in place of one that is missing.
TEST_F(FontLists, a_face_that_cannot_be_had_is_reported_and_has_no_widths) {
    widths[5] = 3.0f;
    EXPECT_EQ(font_lists_bitmaps("No such face", 11, FONT_WEIGHT_NORMAL, base, 32, 96, widths), 1);
    EXPECT_EQ(widths[5], 0.0f);
    GlyphOutlineMetrics metrics[96] = {};
    metrics[5].cell_x = 3.0f;
    EXPECT_EQ(font_lists_outlines("No such face", 11, FONT_WEIGHT_NORMAL, base, 32, 96, metrics),
              1);
    EXPECT_EQ(metrics[5].cell_x, 0.0f);
}
#endif
