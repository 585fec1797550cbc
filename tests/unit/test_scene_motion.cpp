#include "scene/scene_motion.h"

#include "page/node.h"
#include "page/options.h"
#include "scene/interaction.h"
#include "scene/scene.h"
#include "tests/support/scene_stage.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

static constexpr float INFINITE = std::numeric_limits<float>::infinity();
static constexpr float NO_NUMBER = std::numeric_limits<float>::quiet_NaN();

// A page in memory; nothing here draws. What the window shows is set by hand: 20 units each way.
struct Page {
    Page() {
        options_set_defaults();
        interaction_init();
        node_init_nodes();
        node_init_effects();
        node_total = 0;
        scene_motion_reset();
        scene_floor = {};
        scene_floor.pick_depth = 0.98f;
        show(20.0f, 20.0f);
        scene_redraw_flag = 0;
    }

    static void show(float half_width, float half_height) {
        scene_floor.view_left = -half_width;
        scene_floor.view_right = half_width;
        scene_floor.view_bottom = -half_height;
        scene_floor.view_top = half_height;
    }
};

static Node *add_box(float x, float y, float left, float right, float near_edge, float far_edge) {
    const std::int32_t id = node_total++;
    node_init_node(id);
    node[id].type = NODE_OBJECT;
    node[id].x = x;
    node[id].y = y;
    node[id].move_dx = node[id].move_dy = 0.0f;
    const float extents[6] = {left, right, near_edge, far_edge, -2.0f, 2.0f};
    std::copy(std::begin(extents), std::end(extents), node[id].dimensions);
    return &node[id];
}

static Node *add(float x, float y) {
    return add_box(x, y, -2.0f, 2.0f, -2.0f, 2.0f);
}

static void frames(int count) {
    for (int i = 0; i < count; i++)
        scene_process_frame();
}

// Frames until nothing asks for a picture any more; limit + 1 when that does not happen.
static int frames_to_rest(int limit) {
    for (int i = 0; i <= limit; i++) {
        scene_redraw_flag = 0;
        scene_process_frame();
        if (scene_redraw_flag == 0)
            return i;
    }
    return limit + 1;
}

// ---- thrown objects

TEST(ThrownObject, glides_and_slows_down_by_1_15_a_frame) {
    const Page page;
    Node *object = add(0.0f, 0.0f);
    object->inertia_dx = 2.3f;
    object->inertia_dy = -1.15f;
    object->inertia_frames = 30;
    frames(1);
    EXPECT_NEAR(object->x, 2.3f, 1e-4f);
    EXPECT_NEAR(object->y, -1.15f, 1e-4f);
    EXPECT_FLOAT_EQ(object->inertia_dx, 2.0f);
    EXPECT_FLOAT_EQ(object->inertia_dy, -1.0f);
    EXPECT_EQ(object->inertia_frames, 29);
    EXPECT_EQ(scene_redraw_flag, 1);
    frames(1);
    EXPECT_NEAR(object->x, 4.3f, 1e-4f);
    EXPECT_NEAR(object->y, -2.15f, 1e-4f);
}

TEST(ThrownObject, takes_the_place_it_left_last_along_as_that_of_its_grab) {
    const Page page;
    Node *object = add(1.0f, 2.0f);
    object->inertia_dx = 2.3f;
    object->inertia_frames = 2;
    frames(1);
    EXPECT_FLOAT_EQ(object->grab_x, 1.0f);
    EXPECT_FLOAT_EQ(object->grab_y, 2.0f);
    frames(1);
    EXPECT_NEAR(object->grab_x, 3.3f, 1e-4f);
    frames(1);
    EXPECT_NEAR(object->grab_x, 3.3f, 1e-4f);
}

TEST(ThrownObject, rests_when_its_frames_are_used_up) {
    const Page page;
    Node *object = add(0.0f, 0.0f);
    object->inertia_dx = 1.0f;
    object->inertia_frames = 30;
    EXPECT_EQ(frames_to_rest(100), 30);
    EXPECT_EQ(object->inertia_frames, 0);
    EXPECT_EQ(object->move_frames, 0);
    // The sum of 30 steps, each a 1.15th of the one before.
    EXPECT_NEAR(object->x, (1.0 - std::pow(1.0 / 1.15, 30)) / (1.0 - 1.0 / 1.15), 1e-3);
}

TEST(ThrownObject, hands_its_throw_on_to_the_one_it_hits) {
    const Page page;
    Node *thrown = add(0.0f, 0.0f);
    Node *hit = add(5.0f, 0.5f);
    thrown->inertia_dx = 3.0f;
    thrown->inertia_frames = 30;
    frames(1);
    EXPECT_GT(hit->inertia_frames, 0);
    EXPECT_GT(hit->inertia_dx, 0.0f);
    EXPECT_LT(thrown->inertia_dx, 1.0f);
    EXPECT_LE(frames_to_rest(100), 60);
    EXPECT_GT(hit->x, 8.0f);
    EXPECT_GT(hit->x, thrown->x);
}

TEST(ThrownObject, hands_on_the_speed_that_it_has_left_and_keeps_a_quarter_of_it) {
    const Page page;
    Node *hit = add(5.0f, 0.5f);
    Node *thrown = add(0.0f, 0.0f);
    thrown->inertia_dx = 3.0f;
    thrown->inertia_frames = 30;
    frames(1);
    EXPECT_FLOAT_EQ(hit->inertia_dx, 3.0f / 1.15f);
    EXPECT_FLOAT_EQ(thrown->inertia_dx, 3.0f / 1.15f / 4.0f);
}

TEST(ThrownObject, one_thrown_over_the_edge_comes_back) {
    const Page page;
    Node *object = add(110.0f, 0.0f);
    object->inertia_dx = 4.0f;
    object->inertia_frames = 30;
    frames(10);
    EXPECT_GT(object->x, 118.0f);
    EXPECT_LE(frames_to_rest(200), 200);
    EXPECT_LE(object->x, 114.0f);
    EXPECT_GT(object->x, 113.4f);
}

// ---- objects over the edge

TEST(ObjectOverTheEdge, slides_in_by_half_a_unit_a_frame_until_it_keeps_4_units_from_the_edge) {
    const Page page;
    Node *left = add(-116.2f, 0.0f);
    Node *right = add(116.2f, 50.0f);
    frames(1);
    EXPECT_NEAR(left->x, -115.7f, 1e-4f);
    EXPECT_NEAR(right->x, 115.7f, 1e-4f);
    EXPECT_EQ(scene_redraw_flag, 1);
    EXPECT_EQ(frames_to_rest(100), 4);
    EXPECT_NEAR(left->x, -113.7f, 1e-3f);
    EXPECT_NEAR(right->x, 113.7f, 1e-3f);
    EXPECT_FLOAT_EQ(left->y, 0.0f);
}

TEST(ObjectOverTheEdge, one_that_just_keeps_its_distance_stays) {
    const Page page;
    add(-114.0f, -114.0f);
    add(114.0f, 114.0f);
    EXPECT_EQ(frames_to_rest(1), 0);
    EXPECT_FLOAT_EQ(node[0].x, -114.0f);
    EXPECT_FLOAT_EQ(node[1].y, 114.0f);
}

TEST(ObjectOverTheEdge, near_and_far_edge_count_with_the_extents_subtracted) {
    const Page page;
    Node *low = add_box(0.0f, -112.0f, -2.0f, 2.0f, -1.0f, 6.0f);  // -112 - 6 - 4
    Node *high = add_box(50.0f, 112.0f, -2.0f, 2.0f, -1.0f, 6.0f); // 112 + 1 + 4 is inside
    frames(100);
    EXPECT_NEAR(low->y, -109.8f, 0.31f);
    EXPECT_GE(low->y, -110.0f);
    EXPECT_FLOAT_EQ(high->y, 112.0f);
}

TEST(ObjectOverTheEdge, a_corner_is_left_along_both_axes_at_once) {
    const Page page;
    Node *object = add(-120.0f, 120.0f);
    frames(1);
    EXPECT_NEAR(object->x, -119.5f, 1e-4f);
    EXPECT_NEAR(object->y, 119.5f, 1e-4f);
}

TEST(ObjectOverTheEdge, stays_while_any_object_is_held) {
    const Page page;
    Node *object = add(130.0f, 0.0f);
    app_node_grabbed = 1;
    frames(50);
    EXPECT_FLOAT_EQ(object->x, 130.0f);
    app_node_grabbed = 0;
    frames(1);
    EXPECT_NEAR(object->x, 129.5f, 1e-3f);
}

TEST(ObjectOverTheEdge, one_dragged_far_out_stays_under_the_mouse_until_it_is_let_go) {
    const Page page;
    Node *object = add(1000.0f, 0.0f);
    app_node_grabbed = 1;
    frames(3);
    EXPECT_FLOAT_EQ(object->x, 1000.0f);
}

TEST(ObjectOverTheEdge, one_that_comes_out_again_much_later_comes_back_again) {
    const Page page;
    Node *object = add(116.0f, 0.0f);
    frames(1500);
    EXPECT_LE(object->x, 114.0f);
    object->x = 116.0f;
    frames(10);
    EXPECT_LE(object->x, 114.0f);
}

TEST(ObjectOverTheEdge, pushes_the_one_in_its_way_along) {
    const Page page;
    Node *outside = add(-120.0f, 0.0f);
    Node *inside = add(-115.9f, 1.0f);
    EXPECT_LE(frames_to_rest(100), 100);
    EXPECT_GE(outside->x, -114.0f);
    EXPECT_GE(inside->x - outside->x, 3.999f);
}

TEST(ObjectOverTheEdge, one_that_overlaps_another_still_ends_on_the_floor) {
    for (const float dx : {0.0f, 0.3f, 2.0f, -2.0f, 3.9f}) {
        for (const float dy : {0.0f, 0.3f, -2.0f, 3.9f}) {
            const Page page;
            add(-116.0f, 10.0f);
            add(-116.0f + dx, 10.0f + dy);
            EXPECT_LE(frames_to_rest(100), 60) << dx << ' ' << dy;
            EXPECT_GE(node[0].x, -114.0f) << dx << ' ' << dy;
            EXPECT_GE(node[1].x, -114.0f) << dx << ' ' << dy;
        }
    }
}

TEST(ObjectOverTheEdge, one_too_wide_for_the_floor_does_not_shake) {
    for (const float half : {115.8f, 115.9f, 116.0f, 118.0f, 119.9f, 120.0f, 500.0f}) {
        for (const float at : {0.0f, 10.0f, -10.0f, 1.3f, -300.0f}) {
            const Page page;
            add_box(at, at, -half, half, -half, half);
            EXPECT_LE(frames_to_rest(1000), 620) << half << ' ' << at;
        }
    }
}

TEST(ObjectOverTheEdge, one_that_just_fits_finds_its_place) {
    const Page page;
    Node *object = add_box(10.0f, 0.0f, -115.5f, 115.5f, -2.0f, 2.0f); // half a unit of play
    EXPECT_LE(frames_to_rest(100), 30);
    EXPECT_GE(object->x, -0.5f);
    EXPECT_LE(object->x, 0.5f);
}

TEST(ObjectOverTheEdge, extents_that_are_no_numbers_or_infinite_end) {
    for (const float extent : {NO_NUMBER, INFINITE, 1e30f}) {
        const Page page;
        add_box(0.0f, 0.0f, -extent, extent, -extent, extent);
        add_box(0.0f, 0.0f, -extent, 2.0f, -2.0f, extent);
        EXPECT_LE(frames_to_rest(1000), 300) << extent;
    }
}

TEST(ObjectOverTheEdge, one_far_outside_is_on_the_floor_within_13_seconds) {
    for (const float at : {1000.0f, -1e9f, 3e38f, INFINITE, -INFINITE}) {
        const Page page;
        Node *object = add(at, -at);
        EXPECT_LE(frames_to_rest(1000), 520) << at;
        EXPECT_NEAR(object->x, std::copysign(113.75f, at), 0.5f) << at;
        EXPECT_NEAR(object->y, std::copysign(113.75f, -at), 0.5f) << at;
    }
}

TEST(ObjectOverTheEdge, one_that_is_nowhere_is_put_in_the_middle_of_the_floor) {
    const Page page;
    Node *object = add(NO_NUMBER, 5.0f);
    add(5.0f, NO_NUMBER)->type = NODE_LABEL;
    EXPECT_LE(frames_to_rest(10), 1);
    EXPECT_FLOAT_EQ(object->x, 0.0f);
    EXPECT_FLOAT_EQ(object->y, 5.0f);
    EXPECT_FLOAT_EQ(node[1].y, 0.0f);
}

TEST(ObjectOverTheEdge, objects_that_do_not_all_fit_are_let_be_after_30_seconds) {
    const Page page;
    for (int i = 0; i < 58; i++) // a row of 260 units
        add(4.5f * (static_cast<float>(i) - 28.5f), 0.0f);
    EXPECT_GT(frames_to_rest(1100), 1100);
    EXPECT_LE(frames_to_rest(200), 110);
    // Taking hold of something sets them moving again.
    app_node_grabbed = 1;
    frames(1);
    app_node_grabbed = 0;
    EXPECT_GT(frames_to_rest(100), 100);
    // And so does another page.
    frames(1300);
    EXPECT_EQ(frames_to_rest(1), 0);
    scene_motion_reset();
    EXPECT_GT(frames_to_rest(100), 100);
}

TEST(ObjectOverTheEdge, all_255_at_once_come_back) {
    const Page page;
    for (int i = 0; i < NODE_CAPACITY; i++) {
        const float along = -100.0f + 4.2f * static_cast<float>(i % 48);
        const float out = 118.0f + 4.2f * static_cast<float>(i / 48 % 2);
        const bool vertical = i / 96 % 2 == 1;
        const float side = i >= 192 ? 1.0f : -1.0f;
        add(vertical ? along : side * out, vertical ? side * out : along);
    }
    EXPECT_LE(frames_to_rest(1200), 400);
    for (int i = 0; i < NODE_CAPACITY; i++) {
        EXPECT_LE(std::fabs(node[i].x), 114.001f) << i;
        EXPECT_LE(std::fabs(node[i].y), 114.001f) << i;
    }
}

// ---- the floor springs back

TEST(SpringBack, pulls_by_a_tenth_of_the_way_left_and_a_hundredth_of_a_unit) {
    const Page page;
    scene_floor.position_x = -110.0f; // shows 10 units too many
    scene_floor.position_y = 105.0f;  // 5 units
    frames(1);
    EXPECT_NEAR(scene_floor.spring_x, 1.01f, 1e-5f);
    EXPECT_NEAR(scene_floor.position_x, -108.99f, 1e-4f);
    EXPECT_NEAR(scene_floor.spring_y, -0.51f, 1e-5f);
    EXPECT_NEAR(scene_floor.position_y, 104.49f, 1e-4f);
    EXPECT_EQ(scene_redraw_flag, 1);
    frames(1);
    EXPECT_NEAR(scene_floor.position_x, -108.99f + 0.899f + 0.01f, 1e-4f);
}

TEST(SpringBack, each_edge_ends_just_inside_the_window) {
    for (const float side : {-1.0f, 1.0f}) {
        const Page page;
        scene_floor.position_x = side * 130.0f;
        scene_floor.position_y = side * 150.0f;
        EXPECT_LE(frames_to_rest(200), 80);
        EXPECT_LE(std::fabs(scene_floor.position_x), 100.0f);
        EXPECT_NEAR(scene_floor.position_x, side * 100.0f, 0.0101f);
        EXPECT_NEAR(scene_floor.position_y, side * 100.0f, 0.0101f);
        EXPECT_FLOAT_EQ(scene_floor.spring_x, 0.0f);
        EXPECT_FLOAT_EQ(scene_floor.spring_y, 0.0f);
    }
}

TEST(SpringBack, a_floor_within_its_edges_stays) {
    const Page page;
    scene_floor.position_x = -100.0f;
    scene_floor.position_y = 100.0f;
    EXPECT_EQ(frames_to_rest(1), 0);
    EXPECT_FLOAT_EQ(scene_floor.position_x, -100.0f);
}

TEST(SpringBack, waits_while_the_floor_is_held) {
    const Page page;
    scene_floor.position_x = -130.0f;
    scene_floor.drag_state = 1;
    EXPECT_EQ(frames_to_rest(1), 0);
    EXPECT_FLOAT_EQ(scene_floor.position_x, -130.0f);
}

TEST(SpringBack, waits_for_the_bounds_of_a_new_zoom_level) {
    const Page page;
    scene_floor.position_x = -105.0f;
    scene_floor.pick_depth = 0.0f;
    EXPECT_EQ(frames_to_rest(1), 0);
    Page::show(10.0f, 10.0f);
    scene_floor.pick_depth = 0.97f;
    EXPECT_EQ(frames_to_rest(1), 0);
    EXPECT_FLOAT_EQ(scene_floor.position_x, -105.0f);
}

TEST(SpringBack, a_window_that_shows_the_whole_floor_rests_centred_on_that_axis) {
    for (const float half_width : {119.995f, 120.0f, 130.0f, 162.0f, 20000.0f}) {
        for (const float at : {0.0f, 40.0f, -7.0f, 300.0f}) {
            const Page page;
            Page::show(half_width, 45.0f);
            scene_floor.position_x = at;
            scene_floor.position_y = 10.0f;
            EXPECT_LE(frames_to_rest(200), 100) << half_width << ' ' << at;
            EXPECT_NEAR(scene_floor.position_x, 0.0f, 0.03f) << half_width << ' ' << at;
            EXPECT_FLOAT_EQ(scene_floor.position_y, 10.0f);
        }
    }
}

TEST(SpringBack, a_view_that_is_not_centred_on_the_offset_rests_with_the_floor_in_its_middle) {
    const Page page;
    scene_floor.view_left = -170.0f;
    scene_floor.view_right = 190.0f;
    scene_floor.position_x = 5.0f;
    EXPECT_LE(frames_to_rest(200), 100);
    EXPECT_NEAR(scene_floor.position_x, -10.0f, 1e-3f);
}

TEST(SpringBack, nearly_the_whole_floor_does_not_swing_either) {
    for (float half = 119.9f; half < 120.1f; half += 0.0013f) {
        const Page page;
        Page::show(half, half);
        scene_floor.position_x = 17.0f;
        scene_floor.position_y = -3.0f;
        EXPECT_LE(frames_to_rest(200), 90) << half;
        EXPECT_NEAR(scene_floor.position_x, 0.0f, 0.11f) << half;
    }
}

TEST(SpringBack, a_floor_scrolled_far_away_or_to_nowhere_is_back_within_3_seconds) {
    for (const float at : {1e6f, -3e38f, INFINITE, -INFINITE, NO_NUMBER}) {
        const Page page;
        scene_floor.position_x = at;
        scene_floor.position_y = -at;
        EXPECT_LE(frames_to_rest(200), 110) << at;
        EXPECT_LE(std::fabs(scene_floor.position_x), 100.0f) << at;
        EXPECT_LE(std::fabs(scene_floor.position_y), 100.0f) << at;
    }
}

TEST(SpringBack, ends_the_coasting_beyond_the_edge) {
    const Page page;
    scene_floor.position_x = 99.0f;
    scene_floor.inertia_x = 5.0f;
    scene_floor.inertia_frames = 30;
    frames(3);
    EXPECT_GT(scene_floor.position_x, 105.0f);
    EXPECT_LE(frames_to_rest(200), 150);
    EXPECT_LE(scene_floor.position_x, 100.0f);
}

// ---- with a real window

TEST(SpringBack, a_very_wide_window_shows_the_floor_centred_at_zoom_levels_0_to_4) {
    for (std::int32_t level = 0; level <= 4; level++) {
        SceneStage stage;
        screen_size_x = 5120;
        screen_size_y = 1440;
        scene_resize(5120, 1440);
        stage_zoom_level(level);
        stage_draw();
        ASSERT_GT(scene_floor.view_right - scene_floor.view_left, 240.0f) << level;
        scene_floor.position_x = 31.0f;
        EXPECT_LE(frames_to_rest(200), 100) << level;
        EXPECT_NEAR(scene_floor.position_x, 0.0f, 0.05f) << level;
    }
}

TEST(SpringBack, brings_the_edge_of_the_floor_to_the_edge_of_the_window) {
    const SceneStage stage;
    stage_page_colour(0.5f, 0.5f, 0.5f);
    scene_floor.position_x = -150.0f;
    stage_draw();
    EXPECT_EQ(brightness(gl_pixel(2, 200)), 0);
    EXPECT_LE(frames_to_rest(200), 100);
    stage_draw();
    EXPECT_GT(brightness(gl_pixel(2, 200)), 100);
    const WindowPoint edge = stage_window_point(-120.0f, 0.0f, 0.0f);
    EXPECT_NEAR(edge.x, 0, 2);
}

TEST(SpringBack, a_window_without_area_leaves_the_floor_where_it_can_be_found) {
    const SceneStage stage;
    stage_draw();
    scene_resize(0, 0);
    scene_floor.pick_depth = 0.0f;
    stage_draw();
    scene_floor.position_x = 500.0f;
    EXPECT_LE(frames_to_rest(300), 200);
    EXPECT_LE(std::fabs(scene_floor.position_x), 120.0f);
}

TEST(SpringBack, a_screen_lower_than_20_pixels_rests_centred) {
    const SceneStage stage;
    screen_size_y = 19;
    scene_resize(640, 480);
    scene_floor.pick_depth = 0.0f;
    stage_draw();
    EXPECT_TRUE(std::isfinite(scene_floor.view_left));
    scene_floor.position_x = 50.0f;
    EXPECT_LE(frames_to_rest(300), 200);
    EXPECT_NEAR(scene_floor.position_x, 0.0f, 1.0f);
}
