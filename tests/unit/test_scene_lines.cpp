#include "platform/gl.h"
#include "scene/gl_util.h"
#include "scene/interaction.h"
#include "scene/scene.h"
#include "scene/scene_align.h"
#include "tests/support/scene_stage.h"

#include <gtest/gtest.h>

static constexpr float LINK_HEIGHT = 1.0f; // floor units above the floor

static Pixel line_pixel(float x, float y) {
    return stage_brightest_near(stage_window_point(x, y, LINK_HEIGHT));
}

static bool is_yellow(Pixel pixel) {
    return pixel.red > 120 && pixel.green > 120 && pixel.blue < 60;
}

static bool is_bright_white(Pixel pixel) {
    return pixel.red > 200 && pixel.green > 200 && pixel.blue > 200;
}

static std::int32_t stage_nodes() {
    stage_add(NODE_OBJECT, -9.0f, 6.0f);
    stage_add(NODE_OBJECT, 9.0f, -6.0f);
    return stage_add(NODE_LABEL, 9.0f, 6.0f);
}

TEST(LinkLines, run_from_object_to_object_in_the_links_colour) {
    const SceneStage stage;
    stage_nodes();
    line_create_from_ids(0, 1);
    stage_draw();
    EXPECT_TRUE(is_yellow(line_pixel(0.0f, 0.0f)));
    EXPECT_TRUE(is_yellow(line_pixel(4.5f, -3.0f)));
    EXPECT_TRUE(is_yellow(line_pixel(-4.5f, 3.0f)));
    EXPECT_FALSE(is_yellow(line_pixel(4.5f, 3.0f)));
    line[0].colour[0] = 0.0f;
    line[0].colour[2] = 0.5f;
    stage_draw();
    EXPECT_LT(line_pixel(0.0f, 0.0f).red, 60);
    EXPECT_GT(line_pixel(0.0f, 0.0f).blue, 100);
}

TEST(LinkLines, end_in_a_filled_square_that_shows_where_no_object_covers_it) {
    const SceneStage stage;
    const std::int32_t label = stage_nodes();
    line_create_from_ids(label, 1);
    stage_draw();
    for (const float beside : {-0.1f, 0.0f, 0.1f}) {
        const WindowPoint point = stage_window_point(9.0f + beside, 6.1f, LINK_HEIGHT);
        EXPECT_TRUE(is_yellow(gl_pixel(point.x, point.y))) << beside;
    }
    EXPECT_FALSE(is_yellow(line_pixel(10.0f, 6.1f)));
}

TEST(LinkLines, lie_on_the_floor_behind_the_objects) {
    const SceneStage stage;
    stage_nodes();
    line_create_from_ids(0, 1);
    stage_add(NODE_OBJECT, 0.0f, 0.0f);
    stage_draw();
    const WindowPoint point = stage_window_point(0.0f, 0.0f, LINK_HEIGHT);
    EXPECT_TRUE(is_green(gl_pixel(point.x, point.y)));
}

TEST(LinkLines, to_objects_that_the_page_does_not_hold_are_not_drawn_and_are_kept) {
    const SceneStage stage;
    stage_nodes();
    stage_draw();
    const std::int32_t without = gl_count_differing(0, 0, 640, 480, {0, 0, 0}, 100);
    const std::int32_t bad[] = {-1, 3, 254, 255, 256, 100000, -2147483647, 2147483647};
    for (const std::int32_t id : bad) {
        line_create_from_ids(0, id);
        line_create_from_ids(id, 1);
    }
    stage_draw();
    EXPECT_EQ(gl_count_differing(0, 0, 640, 480, {0, 0, 0}, 100), without);
    EXPECT_EQ(line_total, 16);
}

TEST(LinkLines, rise_and_fall_with_the_objects_during_a_transition) {
    const SceneStage stage;
    stage_nodes();
    line_create_from_ids(0, 2);
    line[0].height_offset = 59.0f;
    stage_draw();
    EXPECT_TRUE(is_yellow(stage_brightest_near(stage_window_point(0.0f, 6.0f, 41.0f))));
    EXPECT_FALSE(is_yellow(line_pixel(0.0f, 6.0f)));
    line[0].height_offset = LINE_REST_OFFSET;
    stage_draw();
    EXPECT_TRUE(is_yellow(line_pixel(0.0f, 6.0f)));
}

// What was drawn before leaves a material that shines and glows.
static void expect_dull_lines(void (*draw)()) {
    const float shiny[4] = {1.0f, 1.0f, 1.0f, 1.0f};
    glMaterialfv(GL_FRONT, GL_SPECULAR, shiny);
    glMaterialfv(GL_FRONT, GL_EMISSION, shiny);
    glMaterialf(GL_FRONT, GL_SHININESS, 50.0f);
    glNormal3f(1.0f, 0.0f, 0.0f);
    draw();
    float specular[4], emission[4], shininess = 1.0f, normal[3];
    glGetMaterialfv(GL_FRONT, GL_SPECULAR, specular);
    glGetMaterialfv(GL_FRONT, GL_EMISSION, emission);
    glGetMaterialfv(GL_FRONT, GL_SHININESS, &shininess);
    glGetFloatv(GL_CURRENT_NORMAL, normal);
    for (int i = 0; i < 3; i++) {
        EXPECT_EQ(specular[i], 0.0f);
        EXPECT_EQ(emission[i], 0.0f);
        EXPECT_EQ(normal[i], i == 2 ? 1.0f : 0.0f);
    }
    EXPECT_EQ(shininess, 0.0f);
}

TEST(LinkLines, neither_shine_nor_glow_finished_or_being_drawn) {
    const SceneStage stage;
    stage_nodes();
    line_create_from_ids(0, 1);
    expect_dull_lines(scene_draw_lines);
    app_line_from_node = app_align_from_node = 0;
    expect_dull_lines(scene_draw_line_select_lines);
    expect_dull_lines(scene_draw_alignment_line);
}

TEST(LinkLines, turn_with_the_whole_scene) {
    const SceneStage stage;
    stage_nodes();
    line_create_from_ids(0, 2);
    global_angle = 90.0f;
    stage_draw();
    EXPECT_TRUE(is_yellow(line_pixel(-6.0f, 2.0f)));
    EXPECT_FALSE(is_yellow(line_pixel(2.0f, 6.0f)));
}

TEST(LinkLines, go_with_the_floor_when_it_is_scrolled) {
    const SceneStage stage;
    stage_nodes();
    line_create_from_ids(0, 1);
    scene_floor.position_x = 5.0f;
    scene_floor.position_y = -3.0f;
    stage_draw();
    EXPECT_TRUE(is_yellow(line_pixel(0.0f, 0.0f)));
}

static void point_mouse_at(float x, float y) {
    const WindowPoint point = stage_window_point(x, y, 0.0f);
    mouse.x = point.x;
    mouse.y = point.y;
}

TEST(LinkBeingDrawn, follows_the_mouse) {
    const SceneStage stage;
    stage_nodes();
    app_line_draw_mode = 1;
    app_line_from_node = 0;
    point_mouse_at(3.0f, -6.0f);
    stage_draw();
    EXPECT_TRUE(is_yellow(line_pixel(-3.0f, 0.0f)));
    EXPECT_TRUE(is_yellow(line_pixel(3.0f, -6.0f)));
    point_mouse_at(3.0f, 6.0f);
    stage_draw();
    EXPECT_FALSE(is_yellow(line_pixel(-3.0f, 0.0f)));
    EXPECT_TRUE(is_yellow(line_pixel(0.0f, 6.0f)));
}

TEST(LinkBeingDrawn, snaps_to_the_object_under_the_mouse_but_not_to_a_label) {
    const SceneStage stage;
    const std::int32_t label = stage_nodes();
    app_line_draw_mode = 1;
    app_line_from_node = 0;
    node[1].grab_state = GRAB_HOVERED;
    point_mouse_at(7.5f, -7.0f);
    stage_draw();
    EXPECT_TRUE(is_yellow(line_pixel(4.5f, -3.0f)));
    for (const GrabState other : {GRAB_IDLE, GRAB_GRABBED}) {
        node[1].grab_state = other;
        stage_draw();
        EXPECT_FALSE(is_yellow(line_pixel(4.5f, -3.0f))) << other;
    }
    node[1].grab_state = GRAB_IDLE;
    node[label].grab_state = GRAB_HOVERED;
    stage_draw();
    EXPECT_FALSE(is_yellow(line_pixel(4.5f, -3.0f)));
    EXPECT_FALSE(is_yellow(line_pixel(0.0f, 6.0f)));
}

static bool is_yellow_at(float x, float y) {
    const WindowPoint point = stage_window_point(x, y, LINK_HEIGHT);
    return is_yellow(gl_pixel(point.x, point.y));
}

// Looked at beside the line: at an angle to its way.
static void expect_square(float x, float y) {
    static constexpr float INSIDE = 0.08f, OUTSIDE = 0.22f; // of a half size of 0.15
    EXPECT_TRUE(is_yellow_at(x + INSIDE, y - INSIDE)) << x;
    EXPECT_TRUE(is_yellow_at(x - INSIDE, y + INSIDE)) << x;
    EXPECT_FALSE(is_yellow_at(x + OUTSIDE, y - OUTSIDE)) << x;
    EXPECT_FALSE(is_yellow_at(x - OUTSIDE, y + OUTSIDE)) << x;
}

TEST(LinkBeingDrawn, ends_in_a_small_square_at_either_end) {
    const SceneStage stage;
    stage_zoom_level(ZOOM_LEVEL_MAX);
    app_line_draw_mode = 1;
    app_line_from_node = stage_nodes(); // no object covers the square of a label
    point_mouse_at(3.0f, -6.0f);
    stage_draw();
    expect_square(9.0f, 6.0f);
    expect_square(3.0f, -6.0f);
}

TEST(LinkBeingDrawn, is_not_drawn_outside_its_mode_or_without_a_start) {
    const SceneStage stage;
    stage_nodes();
    point_mouse_at(3.0f, -6.0f);
    app_line_from_node = 0;
    stage_draw();
    EXPECT_FALSE(is_yellow(line_pixel(-3.0f, 0.0f)));
    app_line_draw_mode = 1;
    for (const std::int32_t bad : {-1, 3, 255, 70000}) {
        app_line_from_node = bad;
        stage_draw();
        EXPECT_FALSE(is_yellow(line_pixel(3.0f, -6.0f))) << bad;
    }
}

// An object to be aligned and one to align it with, far enough apart for its row and its column.
static void stage_alignment() {
    stage_add(NODE_OBJECT, -9.0f, 6.0f);
    stage_add(NODE_OBJECT, 9.0f, -6.0f);
    app_align_mode = 1;
    app_align_from_node = 0;
    app_align_to_node = 1;
}

TEST(AlignmentLine, runs_to_the_place_in_the_row_that_the_mouse_chooses_and_along_the_row) {
    const SceneStage stage;
    stage_alignment();
    point_mouse_at(11.0f, -6.0f);
    stage_draw();
    EXPECT_TRUE(is_bright_white(line_pixel(-9.0f, 0.0f)));
    EXPECT_TRUE(is_bright_white(line_pixel(-9.0f, -5.0f)));
    EXPECT_TRUE(is_bright_white(line_pixel(0.0f, -6.0f)));
    EXPECT_FALSE(is_bright_white(line_pixel(0.0f, 0.0f)));
    EXPECT_FALSE(is_bright_white(line_pixel(0.0f, 6.0f)));
    EXPECT_FALSE(is_bright_white(line_pixel(9.0f, 0.0f)));
}

TEST(AlignmentLine, runs_to_the_place_in_the_column_that_the_mouse_chooses_and_along_the_column) {
    const SceneStage stage;
    stage_alignment();
    scene_floor.position_x = 2.0f;
    scene_floor.position_y = -1.0f;
    point_mouse_at(9.0f, -8.0f);
    stage_draw();
    EXPECT_TRUE(is_bright_white(line_pixel(0.0f, 6.0f)));
    EXPECT_TRUE(is_bright_white(line_pixel(9.0f, 5.0f)));
    EXPECT_TRUE(is_bright_white(line_pixel(9.0f, 0.0f)));
    EXPECT_FALSE(is_bright_white(line_pixel(0.0f, 0.0f)));
    EXPECT_FALSE(is_bright_white(line_pixel(0.0f, -6.0f)));
    EXPECT_FALSE(is_bright_white(line_pixel(-9.0f, 0.0f)));
}

TEST(AlignmentLine, leads_to_the_mouse_while_both_ways_are_blocked) {
    const SceneStage stage;
    stage_alignment();
    stage_add(NODE_OBJECT, -9.0f, -3.0f);
    stage_add(NODE_OBJECT, 3.0f, 6.0f);
    point_mouse_at(9.0f, -8.0f);
    ASSERT_EQ(node_align_node(0, 1), ALIGN_NONE);
    stage_draw();
    EXPECT_TRUE(is_bright_white(line_pixel(0.0f, -1.0f)));
    EXPECT_FALSE(is_bright_white(line_pixel(0.0f, -6.0f)));
    EXPECT_FALSE(is_bright_white(line_pixel(9.0f, 2.0f)));
}

TEST(AlignmentLine, follows_the_mouse_while_it_points_at_nothing_to_align_with) {
    const SceneStage stage;
    stage_nodes();
    app_align_mode = 1;
    app_align_from_node = 0;
    for (const std::int32_t nothing : {-1, 0, 3, 1001}) {
        app_align_to_node = nothing;
        point_mouse_at(3.0f, -6.0f);
        stage_draw();
        EXPECT_TRUE(is_bright_white(line_pixel(-3.0f, 0.0f))) << nothing;
    }
}

TEST(AlignmentLine, is_not_drawn_outside_its_mode_or_without_a_start) {
    const SceneStage stage;
    stage_nodes();
    point_mouse_at(3.0f, -6.0f);
    app_align_from_node = 0;
    stage_draw();
    EXPECT_FALSE(is_bright_white(line_pixel(-3.0f, 0.0f)));
    app_align_mode = 1;
    app_align_from_node = -1;
    stage_draw();
    EXPECT_FALSE(is_bright_white(line_pixel(3.0f, -6.0f)));
}
