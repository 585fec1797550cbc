#include "scene/scene_floor.h"

#include "assets/font.h"
#include "page/options.h"
#include "platform/gl.h"
#include "scene/gl_util.h"
#include "scene/interaction.h"
#include "scene/scene.h"
#include "scene/scene_text.h"
#include "tests/support/scene_stage.h"

#include <gtest/gtest.h>

#include <cmath>

// How bright the floor is at a point of it.
static int floor_brightness(float x, float y) {
    return brightness(gl_pixel(stage_window_point(x, y, 0.0f).x, stage_window_point(x, y, 0.0f).y));
}

// How much brighter a grid line is than the bare floor beside it.
static int line_contrast(float x) {
    return brightness(stage_brightest_near(stage_window_point(x, 1.25f, 0.0f))) -
           floor_brightness(x + 1.25f, 1.25f);
}

TEST(FloorGrid, small_medium_and_large_lines_are_told_apart_at_every_zoom_level) {
    const SceneStage stage;
    stage_page_colour(0.07f, 0.13f, 0.19f);
    for (std::int32_t level = 0; level <= ZOOM_LEVEL_MAX; level++) {
        stage_zoom_level(level);
        stage_draw();
        EXPECT_GT(line_contrast(2.5f), 2) << level;
        EXPECT_GT(line_contrast(5.0f), line_contrast(2.5f)) << level;
        EXPECT_GT(line_contrast(0.0f), line_contrast(5.0f)) << level;
        EXPECT_GT(line_contrast(-7.5f), 2) << level;
        EXPECT_LT(std::abs(floor_brightness(1.0f, 1.0f) - floor_brightness(1.25f, 1.25f)), 4)
            << level;
    }
}

TEST(FloorGrid, no_line_breaks_along_its_way) {
    const SceneStage stage;
    stage_page_colour(0.07f, 0.13f, 0.19f);
    stage_draw();
    for (float y = -14.0f; y < 14.0f; y += 0.37f) {
        const int grid = brightness(stage_brightest_near(stage_window_point(0.0f, y, 0.0f)));
        EXPECT_GT(grid, floor_brightness(1.25f, 1.25f) + 10) << y;
    }
}

TEST(FloorGrid, is_brighter_on_a_black_page_than_on_any_other) {
    const SceneStage stage;
    stage_draw();
    const int black_small = line_contrast(2.5f);
    const int black_medium = line_contrast(5.0f);
    const int black_large = line_contrast(0.0f);
    stage_page_colour(0.0f, 0.0f, 0.004f); // to the eye as black
    stage_draw();
    EXPECT_GT(black_small, line_contrast(2.5f));
    EXPECT_GT(black_medium, line_contrast(5.0f));
    EXPECT_GT(black_large, line_contrast(0.0f));
}

// Brightness that each grid adds to a floor that is black to the eye.
struct GridContrast {
    int small, medium, large;
};

static GridContrast grid_contrast() {
    return {line_contrast(2.5f), line_contrast(5.0f), line_contrast(0.0f)};
}

// The lines have one colour and lie side by side: what they add goes with their opacity alone.
TEST(FloorGrid, the_opacities_are_5_10_and_20_percent_and_on_black_10_15_and_25) {
    const SceneStage stage;
    stage_draw();
    const GridContrast black = grid_contrast();
    EXPECT_NEAR(black.small, black.large * 0.10 / 0.25, 3.0);
    EXPECT_NEAR(black.medium, black.large * 0.15 / 0.25, 3.0);
    stage_page_colour(0.0f, 0.0f, 0.004f);
    stage_draw();
    const GridContrast other = grid_contrast();
    EXPECT_NEAR(other.small, other.large * 0.05 / 0.20, 3.0);
    EXPECT_NEAR(other.medium, other.large * 0.10 / 0.20, 3.0);
    EXPECT_NEAR(other.large, black.large * 0.20 / 0.25, 3.0);
}

static void expect_material(GLenum name, float red, float green, float blue, float alpha) {
    const float expected[4] = {red, green, blue, alpha};
    float value[4] = {};
    glGetMaterialfv(GL_FRONT, name, value);
    for (int i = 0; i < 4; i++)
        EXPECT_FLOAT_EQ(value[i], expected[i]) << name << ": " << i;
}

// The large grid is drawn last: its material is the one in force afterwards.
TEST(FloorGrid, is_a_quarter_brighter_than_the_page_and_at_most_white) {
    const SceneStage stage;
    stage_page_colour(0.1f, 0.2f, 0.9f);
    scene_draw_floor();
    expect_material(GL_AMBIENT, 0.35f, 0.45f, 1.0f, 0.2f);
    expect_material(GL_DIFFUSE, 0.35f, 0.45f, 1.0f, 0.2f);
    stage_page_colour(0.0f, 0.0f, 0.0f);
    scene_draw_floor();
    expect_material(GL_DIFFUSE, 0.25f, 0.25f, 0.25f, 0.25f);
    app_mode = APP_EDIT;
    scene_invalidate_floor();
    scene_draw_floor();
    expect_material(GL_DIFFUSE, 1.0f, 0.18f, 0.28f, 1.0f);
    app_mode = APP_VIEW;
}

TEST(Floor, is_dull_and_leaves_blending_off) {
    const SceneStage stage;
    const float shiny[4] = {1.0f, 1.0f, 1.0f, 1.0f};
    glMaterialfv(GL_FRONT, GL_SPECULAR, shiny);
    glMaterialfv(GL_FRONT, GL_EMISSION, shiny);
    glMaterialf(GL_FRONT, GL_SHININESS, 50.0f);
    scene_draw_floor();
    expect_material(GL_SPECULAR, 0.0f, 0.0f, 0.0f, 1.0f);
    expect_material(GL_EMISSION, 0.0f, 0.0f, 0.0f, 1.0f);
    float shininess = 1.0f;
    glGetMaterialfv(GL_FRONT, GL_SHININESS, &shininess);
    EXPECT_EQ(shininess, 0.0f);
    EXPECT_FALSE(glIsEnabled(GL_BLEND));
}

TEST(FloorGrid, large_lines_are_red_while_editing) {
    const SceneStage stage;
    app_mode = APP_EDIT;
    scene_invalidate_floor();
    stage_draw();
    const Pixel large = stage_brightest_near(stage_window_point(0.0f, 1.25f, 0.0f));
    EXPECT_GT(large.red, 200);
    EXPECT_LT(large.green, 120);
    const Pixel medium = stage_brightest_near(stage_window_point(5.0f, 1.25f, 0.0f));
    EXPECT_NEAR(medium.red, medium.green, 3);
    app_mode = APP_VIEW;
    scene_invalidate_floor();
    stage_draw();
    EXPECT_LT(stage_brightest_near(stage_window_point(0.0f, 1.25f, 0.0f)).red, 120);
}

TEST(FloorGrid, the_upper_and_lower_edge_are_stronger_than_other_large_lines) {
    const SceneStage stage;
    scene_floor.position_y = FLOOR_EDGE;
    stage_draw();
    const int top = brightness(stage_brightest_near(stage_window_point(1.25f, FLOOR_EDGE, 0.0f)));
    scene_floor.position_y = 100.0f;
    stage_draw();
    const int inside = brightness(stage_brightest_near(stage_window_point(1.25f, 100.0f, 0.0f)));
    EXPECT_GT(top, inside + 8);
}

TEST(Floor, reaches_one_unit_beyond_the_grid_and_ends_there) {
    const SceneStage stage;
    stage_page_colour(0.5f, 0.5f, 0.5f);
    scene_floor.position_x = FLOOR_EDGE;
    scene_floor.position_y = -FLOOR_EDGE;
    stage_draw();
    EXPECT_GT(floor_brightness(120.5f, -111.0f), 150);
    EXPECT_EQ(floor_brightness(122.0f, -111.0f), 0);
    EXPECT_GT(floor_brightness(111.0f, -120.5f), 150);
    EXPECT_EQ(floor_brightness(111.0f, -122.0f), 0);
}

TEST(Floor, shows_the_page_colour) {
    const SceneStage stage;
    stage_page_colour(0.3f, 0.0f, 0.0f);
    stage_draw();
    const WindowPoint bare = stage_window_point(1.25f, 1.25f, 0.0f);
    EXPECT_GT(gl_pixel(bare.x, bare.y).red, 60);
    EXPECT_EQ(gl_pixel(bare.x, bare.y).green, 0);
    stage_page_colour(0.0f, 0.3f, 0.0f);
    stage_draw();
    EXPECT_EQ(gl_pixel(bare.x, bare.y).red, 0);
    EXPECT_GT(gl_pixel(bare.x, bare.y).green, 60);
}

TEST(Floor, is_compiled_once_and_kept_until_it_is_invalidated) {
    const SceneStage stage;
    stage_page_colour(0.3f, 0.0f, 0.0f);
    stage_draw();
    EXPECT_EQ(scene_floor.list_valid, 1);
    scene_floor.colour.green = 1.0f;
    stage_draw();
    const WindowPoint bare = stage_window_point(1.25f, 1.25f, 0.0f);
    EXPECT_EQ(gl_pixel(bare.x, bare.y).green, 0);
    scene_redraw_flag = 0;
    scene_invalidate_floor();
    EXPECT_EQ(scene_floor.list_valid, 0);
    EXPECT_EQ(scene_redraw_flag, 1);
    stage_draw();
    EXPECT_GT(gl_pixel(bare.x, bare.y).green, 60);
}

TEST(Floor, gives_its_list_back_when_it_is_invalidated) {
    const SceneStage stage;
    stage_draw();
    const std::uint32_t list = scene_floor.list;
    ASSERT_EQ(glIsList(list), GL_TRUE);
    scene_invalidate_floor();
    EXPECT_EQ(glIsList(list), GL_FALSE);
}

TEST(Floor, asks_for_one_more_picture_when_it_has_worked_out_the_bounds) {
    const SceneStage stage;
    scene_draw_floor(); // compiles the list
    scene_floor.pick_depth = 0.0f;
    scene_floor.view_left = 0.0f;
    EXPECT_EQ(scene_draw_floor(), 1);
    EXPECT_FLOAT_EQ(scene_floor.pick_depth, 0.98619f) << "not the depth of level 4";
    EXPECT_LT(scene_floor.view_left, -10.0f);
    EXPECT_EQ(scene_draw_floor(), 0);
}

TEST(Floor, asks_for_no_further_picture_when_it_was_just_compiled) {
    const SceneStage stage;
    EXPECT_EQ(scene_floor.list_valid, 0);
    EXPECT_EQ(scene_draw_floor(), 0);
    EXPECT_NE(scene_floor.pick_depth, 0.0f);
}

TEST(FloorBounds, are_what_the_windows_corners_show_of_the_floor) {
    const SceneStage stage;
    stage_draw();
    const float half_height =
        std::tan(scene_fov / 2.0f * 3.14159265f / 180.0f) * (FLOOR_DISTANCE - scene_floor.distance);
    const float half_width = half_height * SceneStage::WIDTH / SceneStage::HEIGHT;
    EXPECT_NEAR(scene_floor.view_left, -half_width, 0.1f);
    EXPECT_NEAR(scene_floor.view_right, half_width, 0.1f);
    EXPECT_NEAR(scene_floor.view_top, half_height, 0.1f);
    EXPECT_NEAR(scene_floor.view_bottom, -half_height, 0.1f);
}

TEST(FloorBounds, do_not_move_when_the_floor_is_scrolled) {
    const SceneStage stage;
    stage_draw();
    const float left = scene_floor.view_left;
    scene_floor.position_x = 33.0f;
    scene_get_window_bounds();
    EXPECT_FLOAT_EQ(scene_floor.view_left, left);
}

static bool is_white(const FontColour &colour) {
    return colour.red == 1.0f && colour.green == 1.0f && colour.blue == 1.0f;
}

static bool is_dark_grey(const FontColour &colour) {
    return colour.red == 0.15f && colour.green == 0.15f && colour.blue == 0.15f;
}

TEST(TextColour, is_dark_grey_on_a_white_page) {
    const SceneStage stage;
    orvanel_options.text_shadows = 0;
    stage_page_colour(1.0f, 1.0f, 1.0f);
    EXPECT_TRUE(is_dark_grey(font_white));
    EXPECT_TRUE(is_dark_grey(font_label_normal));
}

TEST(TextColour, stays_white_on_a_blue_page_however_bright) {
    const SceneStage stage;
    orvanel_options.text_shadows = 0;
    stage_page_colour(0.1f, 0.1f, 1.0f);
    EXPECT_TRUE(is_white(font_white));
    EXPECT_TRUE(is_white(font_label_normal));
}

TEST(TextColour, changes_at_half_brightness_where_the_alpha_counts_in_place_of_the_blue) {
    const SceneStage stage;
    orvanel_options.text_shadows = 0;
    stage_page_colour(0.36f, 0.36f, 0.0f);
    EXPECT_TRUE(is_dark_grey(font_white));
    stage_page_colour(0.34f, 0.34f, 1.0f);
    EXPECT_TRUE(is_white(font_white));
}

TEST(TextColour, turns_white_again_when_the_page_gets_dark) {
    const SceneStage stage;
    orvanel_options.text_shadows = 0;
    stage_page_colour(1.0f, 1.0f, 1.0f);
    stage_page_colour(0.0f, 0.0f, 0.0f);
    EXPECT_TRUE(is_white(font_white));
    EXPECT_TRUE(is_white(font_label_normal));
}

TEST(TextColour, stays_white_on_any_floor_where_texts_have_a_dark_edge) {
    const SceneStage stage;
    orvanel_options.good_graphics_card = 1;
    orvanel_options.text_shadows = 1;
    text_fonts_loaded = 0;
    stage_page_colour(1.0f, 1.0f, 1.0f);
    EXPECT_TRUE(is_white(font_white));
    EXPECT_TRUE(is_white(font_label_normal));
}
