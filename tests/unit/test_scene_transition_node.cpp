#include "page/options.h"
#include "scene/frame_clock.h"
#include "scene/scene.h"
#include "scene/scene_transition.h"
#include "tests/support/film.h"
#include "tests/support/scene_stage.h"

#include <gtest/gtest.h>

#include <limits>

struct NodeTransition : testing::Test {
    SceneStage stage;
    NodeTransition() {
        stage_add(NODE_OBJECT, 0.0f, 0.0f);
        stage_add(NODE_OBJECT, 10.0f, 0.0f);
        stage_add(NODE_LABEL, -10.0f, 0.0f);
        stage_draw();
    }
};

static float alpha() {
    return node[0].alpha;
}
static float scale() {
    return node[0].scale;
}
static float height() {
    return node[0].height;
}

static void switch_off() {
    orvanel_options.object_transitions = 0;
}

// ---- fades

TEST_F(NodeTransition, fading_in_adds_7_percent_a_frame_of_12_ms) {
    node[0].alpha = 0.0f;
    node[0].fade_state = 1;
    Film film(alpha);
    scene_node_fade_in_transition();
    // 15 passes reach 1.0; the pass that finds nothing left to do is the last.
    EXPECT_EQ(film.milliseconds(), 16u * 12u);
    ASSERT_EQ(film.values().size(), 16u);
    for (std::size_t i = 0; i < 15; i++)
        EXPECT_NEAR(film.values()[i], 0.07f * static_cast<float>(i), 1e-5f);
    EXPECT_EQ(node[0].alpha, 1.0f);
    EXPECT_EQ(node[0].fade_state, 0);
}

TEST_F(NodeTransition, fading_out_takes_7_percent_a_frame_of_12_ms) {
    node[0].fade_state = 2;
    Film film(alpha);
    scene_node_fade_out_transition();
    EXPECT_EQ(film.milliseconds(), 16u * 12u);
    EXPECT_EQ(film.values().size(), 16u);
    EXPECT_EQ(node[0].alpha, 0.0f);
    EXPECT_EQ(node[0].fade_state, 0);
}

TEST_F(NodeTransition, nodes_of_the_other_fade_state_are_left_alone) {
    node[0].fade_state = 1;
    node[0].alpha = 0.5f;
    node[1].fade_state = 2;
    node[2].alpha = 0.25f;
    Film film(alpha);
    scene_node_fade_in_transition();
    EXPECT_EQ(node[0].alpha, 1.0f);
    EXPECT_EQ(node[1].alpha, 1.0f);
    EXPECT_EQ(node[1].fade_state, 2);
    EXPECT_EQ(node[2].alpha, 0.25f);
}

TEST_F(NodeTransition, a_fade_lasts_until_the_last_node_is_done) {
    node[0].fade_state = node[1].fade_state = 1;
    node[0].alpha = 0.95f;
    node[1].alpha = 0.0f;
    Film film(alpha);
    scene_node_fade_in_transition();
    EXPECT_EQ(film.milliseconds(), 16u * 12u);
    EXPECT_EQ(node[1].alpha, 1.0f);
}

TEST_F(NodeTransition, a_fade_of_nothing_is_one_frame_long) {
    scene_redraw_flag = 0;
    Film film(alpha);
    scene_node_fade_in_transition();
    EXPECT_EQ(film.milliseconds(), 12u);
}

TEST_F(NodeTransition, with_transitions_off_a_fade_only_asks_for_a_redraw) {
    switch_off();
    node[0].fade_state = 1;
    node[0].alpha = 0.0f;
    node[1].fade_state = 2;
    scene_redraw_flag = 0;
    Film film(alpha);
    scene_node_fade_in_transition();
    EXPECT_EQ(scene_redraw_flag, 1);
    scene_redraw_flag = 0;
    scene_node_fade_out_transition();
    EXPECT_EQ(scene_redraw_flag, 1);
    EXPECT_EQ(film.milliseconds(), 0u);
    EXPECT_EQ(node[0].fade_state, 1);
    EXPECT_EQ(node[0].alpha, 0.0f);
    EXPECT_EQ(node[1].fade_state, 2);
}

TEST_F(NodeTransition, an_opacity_that_is_none_fades_and_ends_all_the_same) {
    for (const float value : {std::numeric_limits<float>::quiet_NaN(), -1e30f, 1e30f}) {
        node[0].alpha = value;
        node[0].fade_state = 1;
        node[1].alpha = value;
        node[1].fade_state = 2;
        Film film(alpha);
        scene_node_fade_in_transition();
        scene_node_fade_out_transition();
        EXPECT_EQ(node[0].alpha, 1.0f);
        EXPECT_EQ(node[1].alpha, 0.0f);
        EXPECT_LE(film.milliseconds(), 2u * 16u * 12u);
    }
}

TEST_F(NodeTransition, an_object_that_has_faded_out_shows_the_floor_behind_it) {
    const WindowPoint centre = stage_window_point(0.0f, 0.0f, 10.0f);
    ASSERT_TRUE(is_green(gl_pixel(centre.x, centre.y)));
    orvanel_options.reflections = 0;
    node[0].type = NODE_NONE;
    stage_draw();
    const Pixel floor = gl_pixel(centre.x, centre.y);
    node[0].type = NODE_OBJECT;
    node[0].fade_state = 2;
    Film film(alpha);
    scene_node_fade_out_transition();
    EXPECT_EQ(gl_count_differing(centre.x, centre.y, 1, 1, floor, 4), 0);
}

// ---- a new object, a cut one

TEST_F(NodeTransition, a_new_object_pops_up_in_15_frames_of_25_ms) {
    Film film(scale);
    scene_new_node_transition(0);
    EXPECT_EQ(film.milliseconds(), 375u);
    const std::vector<float> expected = {1.0f,    0.0f,    0.0553f, 0.2136f, 0.4529f, 0.7402f,
                                         1.0358f, 1.2988f, 1.4f,    1.3802f, 1.3247f, 1.2445f,
                                         1.1555f, 1.0753f, 1.0198f, 1.0f};
    EXPECT_EQ(film.values(), expected);
}

TEST_F(NodeTransition, a_cut_object_shrinks_away_in_15_frames_of_12_ms) {
    Film film(scale);
    scene_cut_node_transition(0);
    EXPECT_EQ(film.milliseconds(), 180u);
    const std::vector<float> expected = {1.0f,    1.0001f, 0.9746f, 0.9472f, 0.9177f, 0.8855f,
                                         0.8503f, 0.8114f, 0.7679f, 0.7186f, 0.6617f, 0.5944f,
                                         0.512f,  0.4057f, 0.256f,  0.0f};
    EXPECT_EQ(film.values(), expected);
    EXPECT_EQ(node[0].scale, 0.0f);
}

TEST_F(NodeTransition, a_popping_object_is_drawn_larger_on_its_way) {
    stage_zoom_level(8);
    stage_draw();
    static Pixel floor_colour;
    static std::int32_t largest;
    floor_colour = gl_pixel(5, 5);
    const std::int32_t at_rest =
        gl_count_differing(0, 0, SceneStage::WIDTH, SceneStage::HEIGHT, floor_colour, 20);
    largest = 0;
    Film film([] {
        if (node[0].scale == 1.4f)
            largest =
                gl_count_differing(0, 0, SceneStage::WIDTH, SceneStage::HEIGHT, floor_colour, 20);
        return 0.0f;
    });
    scene_new_node_transition(0);
    EXPECT_GT(largest, at_rest + at_rest / 4);
}

// ---- a deleted object

TEST_F(NodeTransition, a_deleted_object_flies_up_with_growing_steps_in_20_frames_of_12_ms) {
    Film film(height);
    scene_delete_node_transition(0);
    EXPECT_EQ(film.milliseconds(), 240u);
    ASSERT_EQ(film.values().size(), 21u); // at rest and 20 frames
    float expected = 10.0f;
    for (std::size_t i = 1; i <= 20; i++) {
        expected += 0.5f * static_cast<float>(i);
        EXPECT_EQ(film.values()[i], expected) << i;
    }
    EXPECT_EQ(film.values()[20], 115.0f); // 105 units
    EXPECT_EQ(node[0].height, 100.0f);
}

// ---- labels, options, indices

TEST_F(NodeTransition, deleting_a_label_or_cutting_it_or_making_one_plays_no_animation) {
    Film film(height);
    scene_delete_node_transition(2);
    scene_cut_node_transition(2);
    scene_new_node_transition(2);
    EXPECT_EQ(film.milliseconds(), 0u);
    EXPECT_EQ(node[2].scale, 1.0f);
    EXPECT_EQ(node[2].height, 10.0f);
}

static void expect_end_states_at_once() {
    Film film(height);
    node[0].scale = 0.3f;
    scene_new_node_transition(0);
    EXPECT_EQ(node[0].scale, 1.0f);
    scene_cut_node_transition(0);
    EXPECT_EQ(node[0].scale, 0.0f);
    scene_delete_node_transition(0);
    EXPECT_EQ(node[0].height, 100.0f);
    EXPECT_EQ(film.milliseconds(), 0u);
}

TEST_F(NodeTransition, with_transitions_off_objects_are_in_their_end_state_at_once) {
    switch_off();
    expect_end_states_at_once();
}

TEST_F(NodeTransition, with_a_poor_graphics_card_objects_are_in_their_end_state_at_once) {
    orvanel_options.good_graphics_card = 0;
    expect_end_states_at_once();
}

TEST_F(NodeTransition, an_index_of_no_node_does_nothing) {
    Film film(height);
    for (const std::int32_t index : {-1, 3, 255, 100000}) {
        scene_new_node_transition(index);
        scene_cut_node_transition(index);
        scene_delete_node_transition(index);
    }
    EXPECT_EQ(film.milliseconds(), 0u);
}

TEST_F(NodeTransition, the_main_loop_does_not_catch_up_afterwards) {
    Film film(height);
    scene_delete_node_transition(0);
    EXPECT_EQ(next_frame_timer, sys_time_ms + 25);
    EXPECT_GE(sys_time_ms, 239u);
}
