#include "page/options.h"
#include "page/placement.h"
#include "scene/frame_clock.h"
#include "scene/scene.h"
#include "scene/scene_transition.h"
#include "scene/scene_transition_pace.h"
#include "tests/support/film.h"
#include "tests/support/scene_stage.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

static float x() {
    return node[0].x;
}
static float y() {
    return node[0].y;
}

struct PlaceTransition : testing::Test {
    SceneStage stage;
};

// ---- aligning with another node

TEST_F(PlaceTransition, aligning_takes_32_frames_of_17_ms) {
    stage_add(NODE_OBJECT, 0.0f, 0.0f);
    stage_add(NODE_OBJECT, 12.3f, 8.0f);
    Film film(x);
    scene_align_node_transition(0, 1, ALIGN_COLUMN);
    EXPECT_EQ(film.milliseconds(), 544u);
    EXPECT_EQ(film.values().size(), 33u); // where it stood and 32 frames
}

TEST_F(PlaceTransition, aligning_with_a_column_takes_exactly_the_others_x) {
    stage_add(NODE_OBJECT, -7.7f, 1.1f);
    stage_add(NODE_OBJECT, 12.3f, 8.8f);
    Film film(x);
    scene_align_node_transition(0, 1, ALIGN_COLUMN);
    EXPECT_EQ(node[0].x, 12.3f);
    EXPECT_EQ(node[0].y, 1.1f);
}

TEST_F(PlaceTransition, aligning_with_a_row_takes_exactly_the_others_y) {
    stage_add(NODE_OBJECT, -7.7f, 11.1f);
    stage_add(NODE_LABEL, 12.3f, -8.8f);
    Film film(y);
    scene_align_node_transition(0, 1, ALIGN_ROW);
    EXPECT_EQ(node[0].x, -7.7f);
    EXPECT_EQ(node[0].y, -8.8f);
}

TEST_F(PlaceTransition, aligning_moves_by_the_easing_table_from_either_side) {
    stage_add(NODE_OBJECT, 0.0f, 0.0f);
    stage_add(NODE_OBJECT, 28.1f, 10.0f);
    stage_add(NODE_OBJECT, 0.0f, -10.0f);
    {
        Film film(x);
        scene_align_node_transition(0, 1, ALIGN_COLUMN);
        ASSERT_EQ(film.values().size(), 33u);
        for (std::size_t k = 0; k < 32; k++)
            EXPECT_NEAR(film.values()[k + 1] - film.values()[k], cool_move[k], 1e-4f) << k;
    }
    Film film(x);
    scene_align_node_transition(0, 2, ALIGN_COLUMN);
    ASSERT_EQ(film.values().size(), 33u);
    for (std::size_t k = 0; k < 32; k++)
        EXPECT_NEAR(film.values()[k] - film.values()[k + 1], cool_move[k], 1e-4f) << k;
}

TEST_F(PlaceTransition, other_axes_and_nodes_that_are_none_move_nothing) {
    stage_add(NODE_OBJECT, 1.0f, 2.0f);
    stage_add(NODE_OBJECT, 12.0f, 8.0f);
    Film film(x);
    scene_align_node_transition(0, 1, ALIGN_NONE);
    scene_align_node_transition(0, 1, 3);
    scene_align_node_transition(0, -1, ALIGN_ROW);
    scene_align_node_transition(2, 1, ALIGN_ROW);
    EXPECT_EQ(film.milliseconds(), 0u);
    EXPECT_EQ(node[0].x, 1.0f);
    EXPECT_EQ(node[0].y, 2.0f);
}

TEST_F(PlaceTransition, with_transitions_off_an_object_is_aligned_at_once) {
    orvanel_options.object_transitions = 0;
    stage_add(NODE_OBJECT, 1.0f, 2.0f);
    stage_add(NODE_OBJECT, 12.0f, 8.0f);
    Film film(x);
    scene_align_node_transition(0, 1, ALIGN_ROW);
    EXPECT_EQ(film.milliseconds(), 0u);
    EXPECT_EQ(node[0].y, 8.0f);
    EXPECT_EQ(scene_redraw_flag, 1);
}

// ---- the grid

TEST_F(PlaceTransition, with_good_graphics_x_of_13_75_goes_to_15_on_the_fine_grid) {
    stage_add(NODE_OBJECT, 13.75f, -13.75f);
    Film film(x);
    scene_align_with_grid(0);
    EXPECT_EQ(node[0].x, 15.0f);
    EXPECT_EQ(node[0].y, -12.5f); // half a unit rounds up
    EXPECT_EQ(film.milliseconds(), 16u * 12u);
    ASSERT_GE(film.values().size(), 17u);
    for (std::size_t i = 0; i < 17; i++)
        EXPECT_NEAR(film.values()[i], 13.75f + 1.25f / 16.0f * static_cast<float>(i), 1e-3f);
}

TEST_F(PlaceTransition, without_good_graphics_x_of_13_75_goes_to_20_on_the_coarse_grid) {
    orvanel_options.good_graphics_card = 0;
    stage_add(NODE_OBJECT, 13.75f, 0.0f);
    Film film(x);
    scene_align_with_grid(0);
    EXPECT_EQ(node[0].x, 20.0f);
    EXPECT_EQ(node[0].y, 0.0f);
    EXPECT_EQ(film.milliseconds(), 16u * 12u); // it waits although nothing is drawn
}

TEST_F(PlaceTransition, without_transitions_the_way_to_the_grid_is_not_drawn) {
    orvanel_options.object_transitions = 0;
    stage_add(NODE_OBJECT, 13.75f, 0.0f);
    stage_draw();
    scene_redraw_flag = 1; // drawing would clear it
    Film film([] { return static_cast<float>(scene_redraw_flag); });
    scene_align_with_grid(0);
    EXPECT_EQ(film.values(), std::vector<float>{1.0f});
    EXPECT_EQ(film.milliseconds(), 16u * 12u);
    EXPECT_EQ(node[0].x, 15.0f);
}

TEST_F(PlaceTransition, an_object_is_exactly_on_the_grid_wherever_it_comes_from) {
    stage_add(NODE_OBJECT, 0.0f, 0.0f);
    orvanel_options.object_transitions = 0;
    for (int i = 0; i < 200; i++) {
        node[0].x = -118.0f + 1.1777f * static_cast<float>(i);
        node[0].y = 103.3f - 0.777f * static_cast<float>(i);
        Film film(x);
        scene_align_with_grid(0);
        EXPECT_EQ(std::fmod(node[0].x, 2.5f), 0.0f);
        EXPECT_EQ(std::fmod(node[0].y, 2.5f), 0.0f);
    }
}

static bool overlap(const Node &a, const Node &b) {
    return a.x + a.dimensions[EXTENT_LEFT] < b.x + b.dimensions[EXTENT_RIGHT] &&
           a.x + a.dimensions[EXTENT_RIGHT] > b.x + b.dimensions[EXTENT_LEFT] &&
           a.y + a.dimensions[EXTENT_NEAR] < b.y + b.dimensions[EXTENT_FAR] &&
           a.y + a.dimensions[EXTENT_FAR] > b.y + b.dimensions[EXTENT_NEAR];
}

TEST_F(PlaceTransition, on_its_way_to_the_grid_an_object_pushes_others_aside) {
    stage_add(NODE_OBJECT, 13.75f, 0.0f);
    const float width = node[0].dimensions[EXTENT_RIGHT] - node[0].dimensions[EXTENT_LEFT];
    stage_add(NODE_OBJECT, 13.75f + width + 0.1f, 0.2f);
    Film film(x);
    scene_align_with_grid(0);
    EXPECT_EQ(node[0].x, 15.0f);
    EXPECT_GT(node[1].x, 13.75f + width + 0.5f);
    EXPECT_FALSE(overlap(node[0], node[1]));
}

TEST_F(PlaceTransition, an_object_that_overlaps_another_at_rest_still_reaches_the_grid) {
    stage_add(NODE_OBJECT, 0.0f, 0.0f);
    stage_add(NODE_OBJECT, 3.0f, 1.0f);
    Film film([] { return node[1].x; });
    scene_align_with_grid(1);
    EXPECT_EQ(node[1].x, 2.5f);
    EXPECT_EQ(node[1].y, 0.0f);
}

TEST_F(PlaceTransition, an_object_that_is_nowhere_is_left_there) {
    stage_add(NODE_OBJECT, std::numeric_limits<float>::quiet_NaN(), 0.0f);
    stage_add(NODE_OBJECT, 1.0f, std::numeric_limits<float>::infinity());
    Film film(y);
    scene_align_with_grid(0);
    scene_align_with_grid(1);
    scene_align_with_grid(2);
    scene_align_with_grid(-1);
    EXPECT_EQ(film.milliseconds(), 0u);
    EXPECT_EQ(node[0].y, 0.0f);
    EXPECT_EQ(node[1].x, 1.0f);
}

TEST_F(PlaceTransition, a_far_away_object_ends_on_a_number) {
    stage_add(NODE_OBJECT, 3e38f, -3e38f);
    Film film(x);
    scene_align_with_grid(0);
    EXPECT_TRUE(std::isfinite(node[0].x));
    EXPECT_TRUE(std::isfinite(node[0].y));
    EXPECT_EQ(film.milliseconds(), 16u * 12u);
}

// ---- making room

static void place_anchored(std::int32_t index) {
    node[index].grab_state = GRAB_ANCHORED;
    scene_nodes_avoid_node_area(index);
    node[index].grab_state = GRAB_IDLE;
}

TEST_F(PlaceTransition, two_objects_on_the_same_spot_are_pushed_apart) {
    stage_add(NODE_OBJECT, 5.0f, 5.0f);
    stage_add(NODE_OBJECT, 5.0f, 5.0f);
    Film film(x);
    place_anchored(1);
    EXPECT_FALSE(overlap(node[0], node[1]));
    EXPECT_LT(node[0].x, 5.0f); // towards the lower left
    EXPECT_LT(node[0].y, 5.0f);
    EXPECT_EQ(node[1].x, 5.0f);
    EXPECT_EQ(node[1].y, 5.0f);
}

TEST_F(PlaceTransition, making_room_takes_12_ms_for_each_pass_that_moved_something) {
    stage_add(NODE_OBJECT, 5.0f, 5.0f);
    stage_add(NODE_OBJECT, 5.5f, 6.0f);
    Film film(x);
    place_anchored(1);
    ASSERT_GT(film.values().size(), 2u);
    EXPECT_EQ(film.milliseconds(), (film.values().size() - 1) * 12u);
    EXPECT_FALSE(overlap(node[0], node[1]));
}

TEST_F(PlaceTransition, making_room_is_animated_whatever_the_options_say) {
    orvanel_options.good_graphics_card = 0;
    orvanel_options.object_transitions = 0;
    stage_add(NODE_OBJECT, 5.0f, 5.0f);
    stage_add(NODE_OBJECT, 5.5f, 6.0f);
    Film film(x);
    place_anchored(1);
    EXPECT_GE(film.milliseconds(), 24u);
    EXPECT_EQ(scene_redraw_flag, 0); // drawn
}

TEST_F(PlaceTransition, where_there_is_room_nothing_happens) {
    stage_add(NODE_OBJECT, -20.0f, 5.0f);
    stage_add(NODE_OBJECT, 5.0f, 5.0f);
    Film film(x);
    place_anchored(1);
    EXPECT_EQ(film.milliseconds(), 0u);
    EXPECT_EQ(node[0].x, -20.0f);
}

TEST_F(PlaceTransition, a_full_page_makes_room_within_a_bound) {
    for (int i = 0; i < NODE_CAPACITY; i++)
        stage_add(NODE_OBJECT, static_cast<float>(i % 16), static_cast<float>(i / 16));
    Film film([] { return 0.0f; });
    place_anchored(100);
    EXPECT_LE(film.milliseconds(), static_cast<std::uint32_t>(AVOID_PASSES) * 12u);
    EXPECT_EQ(node[100].x, 4.0f);
    EXPECT_EQ(node[100].y, 6.0f);
}

TEST_F(PlaceTransition, an_index_outside_the_table_makes_no_room) {
    stage_add(NODE_OBJECT, 5.0f, 5.0f);
    Film film(x);
    scene_nodes_avoid_node_area(-1);
    scene_nodes_avoid_node_area(NODE_CAPACITY);
    EXPECT_EQ(film.milliseconds(), 0u);
}
