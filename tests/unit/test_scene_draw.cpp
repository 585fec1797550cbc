#include "scene/scene.h"

#include "page/options.h"
#include "platform/gl.h"
#include "platform/text.h"
#include "scene/gl_util.h"
#include "scene/scene_page.h"
#include "tests/support/scene_stage.h"

#include <gtest/gtest.h>

#ifndef _WIN32
#include "platform/posix/recorder.h"
#endif

// The built-in cube turned by 45 degrees reaches this far out, floor units; unturned it does not.
static constexpr float CORNER = 2.15f;

static Pixel pixel_at(float x, float y, float height) {
    const WindowPoint point = stage_window_point(x, y, height);
    return gl_pixel(point.x, point.y);
}

static bool object_shows_at(float x, float y) {
    return is_green(pixel_at(x, y, NODE_REST_HEIGHT));
}

static bool reflection_shows_at(float x, float y) {
    return is_green(pixel_at(x, y, -NODE_REST_HEIGHT));
}

// ---- when a picture is drawn

TEST(SceneDraw, nothing_is_drawn_while_no_redraw_is_asked_for) {
    const SceneStage stage;
    stage_draw();
    stage_add(NODE_OBJECT, 0.0f, 0.0f);
    scene_redraw_flag = 0;
    EXPECT_EQ(scene_draw(), 1);
    EXPECT_FALSE(object_shows_at(0.0f, 0.0f));
    EXPECT_EQ(scene_request_redraw(), 1);
    EXPECT_EQ(scene_draw(), 0);
    EXPECT_TRUE(object_shows_at(0.0f, 0.0f));
    EXPECT_EQ(scene_redraw_flag, 0);
}

TEST(SceneDraw, a_changed_zoom_is_drawn_twice_and_then_rests) {
    const SceneStage stage;
    stage_draw();
    scene_zoom_in();
    EXPECT_EQ(scene_draw(), 0);
    EXPECT_EQ(scene_redraw_flag, 1);
    EXPECT_EQ(scene_draw(), 0);
    EXPECT_EQ(scene_redraw_flag, 0);
    EXPECT_EQ(scene_draw(), 1);
}

#ifndef _WIN32
TEST(SceneDraw, a_minimised_window_is_not_drawn_and_is_drawn_once_it_is_back) {
    const SceneStage stage;
    recorder_reset();
    stage_draw();
    const std::int32_t swaps = recorder.swaps;
    scene_request_redraw();
    recorder.minimised = true;
    EXPECT_EQ(scene_draw(), 1);
    EXPECT_EQ(recorder.swaps, swaps);
    recorder.minimised = false;
    EXPECT_EQ(scene_draw(), 0);
    EXPECT_EQ(recorder.swaps, swaps + 1);
}
#endif

TEST(SceneDraw, a_picture_holds_the_title_and_the_name_below_the_object) {
    const SceneStage stage;
    stage_draw();
    const auto title = [] { return gl_count_differing(10, 10, 120, 50, {0, 0, 0}, 150); };
    EXPECT_EQ(title(), 0);
    orvanel_options.show_home_page_title = 1;
    text_copy(scene_page_title, "Home");
    stage_draw();
    EXPECT_GT(title(), 100);
    const std::int32_t id = stage_add(NODE_OBJECT, 0.0f, 0.0f);
    const WindowPoint below = stage_window_point(0.0f, -3.0f, 0.0f);
    const auto name = [below] {
        return gl_count_differing(below.x - 30, below.y - 12, 60, 24, {0, 0, 0}, 200);
    };
    stage_draw();
    EXPECT_EQ(name(), 0);
    text_copy(node[id].name, "Mail");
    stage_draw();
    EXPECT_GT(name(), 20);
}

TEST(SceneDraw, leaves_no_error_and_no_matrix_behind) {
    const SceneStage stage;
    stage_add(NODE_OBJECT, 0.0f, 0.0f);
    stage_draw();
    GLint depth;
    glGetIntegerv(GL_MODELVIEW_STACK_DEPTH, &depth);
    EXPECT_EQ(depth, 1);
    double matrix[16];
    glGetDoublev(GL_MODELVIEW_MATRIX, matrix);
    for (int i = 0; i < 16; i++)
        EXPECT_DOUBLE_EQ(matrix[i], i % 5 == 0 ? 1.0 : 0.0);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

// ---- projection

TEST(Resize, twice_the_height_doubles_the_field_of_view) {
    const SceneStage stage;
    scene_resize(640, 300);
    const float before = scene_fov;
    scene_resize(640, 600);
    EXPECT_FLOAT_EQ(scene_fov, 2.0f * before);
}

TEST(Resize, the_field_of_view_depends_on_the_screens_height) {
    const SceneStage stage;
    const struct {
        std::int32_t screen, pixels_per_degree;
    } cases[] = {{600, 30},  {768, 38},  {800, 40},  {801, 32},
                 {1024, 40}, {1025, 34}, {1080, 36}, {2160, 72}};
    for (const auto &screen : cases) {
        screen_size_y = screen.screen;
        scene_resize(640, 480);
        EXPECT_FLOAT_EQ(scene_fov, 480.0f / static_cast<float>(screen.pixels_per_degree))
            << screen.screen;
    }
}

TEST(Resize, the_size_is_kept_the_viewport_set_and_a_picture_asked_for) {
    const SceneStage stage;
    scene_redraw_flag = 0;
    scene_resize(300, 200);
    EXPECT_EQ(scene_floor.window_width, 300);
    EXPECT_EQ(scene_floor.window_height, 200);
    EXPECT_EQ(scene_redraw_flag, 1);
    GLint viewport[4];
    glGetIntegerv(GL_VIEWPORT, viewport);
    EXPECT_EQ(viewport[2], 300);
    EXPECT_EQ(viewport[3], 200);
}

TEST(Resize, objects_stay_in_shape_in_a_wide_window) {
    const SceneStage stage;
    stage_add(NODE_OBJECT, 0.0f, 0.0f);
    scene_resize(640, 240);
    stage_draw();
    const WindowPoint right = stage_window_point(1.5f, 0.0f, NODE_REST_HEIGHT);
    const std::int32_t reach = right.x - 320;
    // The picture is in the lower half of the drawing area.
    EXPECT_TRUE(is_green(gl_pixel(320 + reach, 240 + 120)));
    EXPECT_TRUE(is_green(gl_pixel(320, 240 + 120 + reach)));
    EXPECT_FALSE(is_green(gl_pixel(320 + 2 * reach, 240 + 120)));
}

TEST(Resize, sizes_and_screens_of_nothing_divide_nothing_by_zero) {
    const SceneStage stage;
    const float before = scene_fov;
    scene_resize(0, 480);
    EXPECT_FLOAT_EQ(scene_fov, before);
    scene_resize(640, 0);
    EXPECT_FLOAT_EQ(scene_fov, before);
    scene_resize(0, 0);
    EXPECT_FLOAT_EQ(scene_fov, before);
    for (const std::int32_t screen : {0, 1, 19}) {
        screen_size_y = screen;
        scene_resize(640, 100);
        EXPECT_FLOAT_EQ(scene_fov, 100.0f);
        scene_resize(640, 480);
        EXPECT_LT(scene_fov, 180.0f);
    }
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

// ---- objects

TEST(Objects, show_where_they_stand) {
    const SceneStage stage;
    stage_add(NODE_OBJECT, -9.0f, 5.0f);
    stage_add(NODE_PAGE, 9.0f, -5.0f);
    stage_draw();
    EXPECT_TRUE(object_shows_at(-9.0f, 5.0f));
    EXPECT_TRUE(object_shows_at(9.0f, -5.0f));
    EXPECT_FALSE(object_shows_at(9.0f, 5.0f));
    EXPECT_FALSE(object_shows_at(-9.0f, 8.5f));
}

TEST(Objects, move_against_the_scrolling) {
    const SceneStage stage;
    stage_add(NODE_OBJECT, 60.0f, 40.0f);
    scene_floor.position_x = 58.0f;
    scene_floor.position_y = 41.0f;
    stage_draw();
    EXPECT_TRUE(object_shows_at(60.0f, 40.0f));
}

TEST(Objects, get_larger_as_the_user_zooms_in) {
    const SceneStage stage;
    stage_add(NODE_OBJECT, 0.0f, 0.0f);
    std::int32_t before = 0;
    for (std::int32_t level = 0; level <= ZOOM_LEVEL_MAX; level++) {
        stage_zoom_level(level);
        orvanel_options.reflections = 0;
        stage_draw();
        const std::int32_t covered = gl_count_differing(240, 160, 160, 160, {0, 0, 0}, 60);
        EXPECT_GT(covered, before) << level;
        before = covered;
    }
}

TEST(Objects, are_drawn_in_their_scale) {
    const SceneStage stage;
    stage_add(NODE_OBJECT, 0.0f, 0.0f);
    stage_draw();
    EXPECT_FALSE(object_shows_at(3.5f, 0.0f));
    node[0].scale = 2.0f;
    stage_draw();
    EXPECT_TRUE(object_shows_at(3.5f, 0.0f));
}

TEST(Objects, turn_only_while_their_effect_runs) {
    const SceneStage stage;
    stage_add(NODE_OBJECT, 0.0f, 0.0f);
    node[0].angle_target = 45.0f;
    stage_draw();
    EXPECT_FALSE(object_shows_at(-CORNER, 0.0f));
    node[0].bounce_active = BOUNCE_SPIN;
    stage_draw();
    EXPECT_TRUE(object_shows_at(-CORNER, 0.0f));
}

// A cube turned about both axes reaches further along the one that it was turned about last.
TEST(Objects, turn_about_y_and_then_about_x_as_seen_by_the_viewer) {
    static constexpr float BETWEEN = 2.6f; // 2.35 floor units along x, 2.8 along y
    const SceneStage stage;
    orvanel_options.reflections = 0;
    stage_add(NODE_OBJECT, 0.0f, 0.0f);
    node[0].bounce_active = BOUNCE_SPIN;
    node[0].angle = 45.0f;
    stage_draw();
    EXPECT_TRUE(object_shows_at(0.0f, CORNER));
    EXPECT_FALSE(object_shows_at(CORNER, 0.0f));
    node[0].angle_target = 45.0f;
    stage_draw();
    EXPECT_TRUE(object_shows_at(0.0f, BETWEEN));
    EXPECT_TRUE(object_shows_at(0.0f, -BETWEEN));
    EXPECT_FALSE(object_shows_at(BETWEEN, 0.0f));
    EXPECT_FALSE(object_shows_at(-BETWEEN, 0.0f));
}

TEST(Objects, being_created_are_not_drawn) {
    const SceneStage stage;
    stage_add(NODE_OBJECT, 0.0f, 0.0f);
    node[0].grab_state = GRAB_ANCHORED;
    orvanel_options.reflections = 0;
    stage_draw();
    EXPECT_FALSE(object_shows_at(0.0f, 0.0f));
}

TEST(Objects, that_fade_are_blended_with_what_lies_below) {
    const SceneStage stage;
    stage_add(NODE_OBJECT, 0.0f, 0.0f);
    orvanel_options.reflections = 0;
    stage_draw();
    const int opaque = pixel_at(1.0f, 1.0f, NODE_REST_HEIGHT).green;
    node[0].alpha = 0.5f;
    stage_draw();
    EXPECT_NEAR(pixel_at(1.0f, 1.0f, NODE_REST_HEIGHT).green, opaque / 2, opaque / 8);
    node[0].alpha = 0.0f;
    stage_draw();
    EXPECT_FALSE(object_shows_at(1.0f, 1.0f));
}

TEST(Objects, outside_the_window_are_skipped_but_those_at_its_edge_are_drawn) {
    const SceneStage stage;
    stage_draw();
    const float right = scene_floor.view_right;
    stage_add(NODE_OBJECT, right + 4.9f, 0.0f);
    stage_add(NODE_OBJECT, right + 5.1f, 0.0f);
    stage_add(NODE_OBJECT, 0.0f, scene_floor.view_bottom - 4.9f);
    stage_add(NODE_OBJECT, 0.0f, scene_floor.view_bottom - 5.1f);
    stage_add(NODE_OBJECT, scene_floor.view_left - 5.1f, 0.0f);
    stage_add(NODE_OBJECT, 0.0f, scene_floor.view_top + 5.1f);
    stage_draw();
    // What is drawn is given its name for picking.
    EXPECT_EQ(node[0].pick_id, 0);
    EXPECT_EQ(node[1].pick_id, -2);
    EXPECT_EQ(node[2].pick_id, 2);
    EXPECT_EQ(node[3].pick_id, -2);
    EXPECT_EQ(node[4].pick_id, -2);
    EXPECT_EQ(node[5].pick_id, -2);
}

TEST(Objects, that_leave_the_window_cannot_be_picked_any_more) {
    const SceneStage stage;
    stage_add(NODE_OBJECT, 0.0f, 0.0f);
    stage_add(NODE_LABEL, 4.0f, 0.0f);
    stage_draw();
    EXPECT_EQ(node[0].pick_id, 0);
    EXPECT_EQ(node[1].pick_id, 1);
    node[0].x = node[1].x = 90.0f;
    stage_draw();
    EXPECT_EQ(node[0].pick_id, NODE_PICK_NONE);
    EXPECT_EQ(node[1].pick_id, NODE_PICK_NONE);
}

TEST(Objects, turn_with_the_whole_scene) {
    const SceneStage stage;
    stage_add(NODE_OBJECT, 8.0f, 0.0f);
    orvanel_options.reflections = 0;
    global_angle = 90.0f;
    stage_draw();
    EXPECT_TRUE(object_shows_at(0.0f, 8.0f));
    EXPECT_FALSE(object_shows_at(8.0f, 0.0f));
}

// ---- reflections

TEST(Reflections, show_through_the_floor_below_the_object) {
    const SceneStage stage;
    stage_add(NODE_OBJECT, 12.0f, 0.0f);
    stage_draw();
    EXPECT_TRUE(reflection_shows_at(11.0f, 0.0f));
    EXPECT_LT(pixel_at(11.0f, 0.0f, -NODE_REST_HEIGHT).green,
              pixel_at(12.0f, 0.0f, NODE_REST_HEIGHT).green / 2);
}

TEST(Reflections, are_off_when_the_user_wants_none_and_the_floor_looks_the_same) {
    const SceneStage stage;
    stage_page_colour(0.05f, 0.05f, 0.05f);
    stage_add(NODE_OBJECT, 12.0f, 0.0f);
    stage_draw();
    EXPECT_TRUE(reflection_shows_at(11.0f, 0.0f));
    const Pixel floor_before = pixel_at(-5.8f, 1.3f, 0.0f);
    orvanel_options.reflections = 0;
    stage_draw();
    EXPECT_FALSE(reflection_shows_at(11.0f, 0.0f));
    EXPECT_TRUE(object_shows_at(12.0f, 0.0f));
    EXPECT_EQ(brightness(pixel_at(-5.8f, 1.3f, 0.0f)), brightness(floor_before));
    orvanel_options.reflections = 1;
    orvanel_options.good_graphics_card = 0;
    stage_draw();
    EXPECT_FALSE(reflection_shows_at(11.0f, 0.0f));
}

TEST(Reflections, come_through_the_floor_by_a_fifth) {
    const SceneStage stage;
    stage_add(NODE_OBJECT, 12.0f, 1.25f);
    stage_draw();
    const int mirrored = pixel_at(11.0f, 1.25f, -NODE_REST_HEIGHT).green; // beside the grid's lines
    EXPECT_GT(mirrored, 20);
    EXPECT_LT(mirrored, 53);
}

TEST(Reflections, end_where_an_object_sticks_out_ten_units_over_the_edge) {
    const SceneStage stage;
    const struct {
        float x, y; // direction of the edge
    } edges[] = {{1, 0}, {-1, 0}, {0, 1}, {0, -1}};
    for (const auto &edge : edges) {
        node_total = 0;
        stage_add(NODE_OBJECT, 0.0f, 0.0f);
        // Seen from further inside, object and reflection stand apart in the window.
        const float out = FLOOR_EDGE + 10.0f - node[0].dimensions[EXTENT_RIGHT];
        scene_floor.position_x = (out - 12.0f) * edge.x;
        scene_floor.position_y = (out - 12.0f) * edge.y;
        node[0].x = (out - 0.1f) * edge.x;
        node[0].y = (out - 0.1f) * edge.y;
        stage_draw();
        EXPECT_TRUE(reflection_shows_at(node[0].x - 1.4f * edge.x, node[0].y - 1.4f * edge.y))
            << edge.x << " " << edge.y;
        node[0].x = (out + 0.1f) * edge.x;
        node[0].y = (out + 0.1f) * edge.y;
        stage_draw();
        EXPECT_FALSE(reflection_shows_at(node[0].x - 1.4f * edge.x, node[0].y - 1.4f * edge.y))
            << edge.x << " " << edge.y;
        EXPECT_TRUE(object_shows_at(node[0].x, node[0].y)) << edge.x << " " << edge.y;
    }
}

TEST(Reflections, mirror_the_height_of_a_lifted_object) {
    const SceneStage stage;
    stage_add(NODE_OBJECT, 12.0f, 0.0f);
    stage_draw();
    EXPECT_TRUE(is_green(pixel_at(12.8f, 0.0f, -NODE_REST_HEIGHT)));
    node[0].height = 30.0f;
    stage_draw();
    EXPECT_TRUE(is_green(pixel_at(12.0f, 0.0f, -30.0f)));
    EXPECT_FALSE(is_green(pixel_at(12.8f, 0.0f, -NODE_REST_HEIGHT)));
}

TEST(Reflections, show_at_once_for_objects_that_a_new_page_brings_into_view) {
    const SceneStage stage;
    stage_zoom_level(ZOOM_LEVEL_MAX);
    stage_draw();
    stage_add(NODE_OBJECT, 19.0f, 0.0f);
    stage_zoom_level(0);
    scene_invalidate_floor();
    EXPECT_EQ(scene_draw(), 0);
    EXPECT_TRUE(reflection_shows_at(18.5f, 0.0f));
}

TEST(Reflections, are_drawn_up_to_7_units_outside_of_the_window) {
    const SceneStage stage;
    stage_draw();
    stage_add(NODE_OBJECT, scene_floor.view_right + 6.9f, 0.0f);
    node[0].scale = 4.0f; // so large that it reaches into the window
    stage_draw();
    EXPECT_EQ(node[0].pick_id, -2) << "the object itself is skipped from 5 units on";
    EXPECT_TRUE(reflection_shows_at(scene_floor.view_right + 0.5f, 1.0f));
    node[0].x += 0.2f;
    stage_draw();
    EXPECT_FALSE(reflection_shows_at(scene_floor.view_right + 0.5f, 1.0f));
}

TEST(Reflections, turn_with_the_object) {
    const SceneStage stage;
    stage_add(NODE_OBJECT, 12.0f, 0.0f);
    stage_draw();
    EXPECT_FALSE(reflection_shows_at(12.0f - CORNER, 0.0f));
    node[0].bounce_active = BOUNCE_SPIN;
    node[0].angle_target = 45.0f;
    stage_draw();
    EXPECT_TRUE(reflection_shows_at(12.0f - CORNER, 0.0f));
}

// ---- light

TEST(Light, comes_from_the_upper_left) {
    const SceneStage stage;
    stage_page_colour(0.5f, 0.5f, 0.5f);
    stage_draw();
    EXPECT_GT(brightness(pixel_at(-8.8f, 8.8f, 0.0f)), brightness(pixel_at(8.7f, -8.7f, 0.0f)));
}

TEST(Light, follows_the_zoom_so_that_objects_look_the_same_at_every_level) {
    const SceneStage stage;
    stage_add(NODE_OBJECT, 0.0f, 0.0f);
    stage_zoom_level(0);
    stage_draw();
    const int far_away = pixel_at(0.0f, 0.0f, NODE_REST_HEIGHT).green;
    stage_zoom_level(ZOOM_LEVEL_MAX);
    stage_draw();
    EXPECT_NEAR(pixel_at(0.0f, 0.0f, NODE_REST_HEIGHT).green, far_away, 3);
}

static void expect_light(GLenum name, float x, float y, float z, float w) {
    const float expected[4] = {x, y, z, w};
    float value[4] = {};
    glGetLightfv(GL_LIGHT1, name, value);
    for (int i = 0; i < 4; i++)
        EXPECT_FLOAT_EQ(value[i], expected[i]) << name << ": " << i;
}

TEST(Light, is_white_and_hangs_100_units_above_the_floors_distance) {
    const SceneStage stage;
    for (const GLenum name : {GL_AMBIENT, GL_DIFFUSE, GL_SPECULAR})
        expect_light(name, 1.0f, 1.0f, 1.0f, 1.0f);
    scene_floor.position_x = 7.0f;
    scene_floor.position_y = -3.0f;
    for (const std::int32_t level : {0, 8}) {
        stage_zoom_level(level);
        stage_draw();
        expect_light(GL_POSITION, -100.0f, 100.0f, 100.0f + scene_floor.distance, 1.0f);
    }
}

TEST(Light, hangs_beside_the_floors_offset_until_the_first_picture) {
    const SceneStage stage;
    scene_floor.position_x = 7.0f;
    scene_floor.position_y = -3.0f;
    scene_lights_init();
    expect_light(GL_POSITION, -107.0f, 103.0f, 100.0f + scene_floor.distance, 1.0f);
}
