#include "page/options.h"
#include "scene/frame_clock.h"
#include "scene/scene.h"
#include "scene/scene_transition.h"
#include "scene/scene_transition_pace.h"
#include "tests/support/film.h"
#include "tests/support/scene_stage.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

static constexpr float NOT_A_NUMBER = std::numeric_limits<float>::quiet_NaN();
static constexpr float INFINITE = std::numeric_limits<float>::infinity();

static float position_x() {
    return scene_floor.position_x;
}

struct FloorTransition : testing::Test {
    SceneStage stage;
    FloorTransition() {
        stage_draw(); // works out the window's bounds
    }
};

TEST_F(FloorTransition, a_glide_takes_32_frames_of_17_ms) {
    Film film(position_x);
    scene_move_floor_transition(30.0f, -20.0f);
    EXPECT_EQ(film.milliseconds(), 544u);
    EXPECT_EQ(film.values().size(), 33u); // where it starts and 32 frames
}

TEST_F(FloorTransition, a_glide_ends_exactly_where_it_is_to) {
    scene_floor.position_x = 17.3f;
    scene_floor.position_y = -3.7f;
    Film film(position_x);
    scene_move_floor_transition(30.1f, -20.7f);
    EXPECT_EQ(scene_floor.position_x, 30.1f);
    EXPECT_EQ(scene_floor.position_y, -20.7f);
}

TEST_F(FloorTransition, a_glide_moves_by_the_easing_table) {
    scene_floor.position_x = -10.0f;
    Film film(position_x);
    scene_move_floor_transition(30.0f, 0.0f);
    ASSERT_EQ(film.values().size(), 33u);
    for (std::size_t k = 0; k < 32; k++)
        EXPECT_NEAR(film.values()[k + 1] - film.values()[k], 40.0f / 28.1f * cool_move[k], 1e-4f);
}

TEST_F(FloorTransition, a_glide_stops_the_floor_first) {
    scene_floor.inertia_x = scene_floor.inertia_y = 2.0f;
    scene_floor.inertia_frames = 12;
    scene_floor.drag_state = 1;
    Film film(position_x);
    scene_move_floor_transition(5.0f, 5.0f);
    EXPECT_EQ(scene_floor.inertia_x, 0.0f);
    EXPECT_EQ(scene_floor.inertia_y, 0.0f);
    EXPECT_EQ(scene_floor.inertia_frames, 0);
    EXPECT_EQ(scene_floor.drag_state, 0);
}

TEST_F(FloorTransition, a_glide_towards_an_edge_stops_where_the_window_meets_it) {
    Film film(position_x);
    scene_move_floor_transition(500.0f, 119.0f);
    EXPECT_EQ(scene_floor.position_x, 120.0f - scene_floor.view_right);
    EXPECT_EQ(scene_floor.position_y, 120.0f - scene_floor.view_top);
    scene_move_floor_transition(-119.0f, -500.0f);
    EXPECT_EQ(scene_floor.position_x, -120.0f - scene_floor.view_left);
    EXPECT_EQ(scene_floor.position_y, -120.0f - scene_floor.view_bottom);
}

TEST_F(FloorTransition, at_the_target_nothing_glides_but_the_scene_is_drawn) {
    scene_floor.position_x = 3.0f;
    scene_floor.position_y = 4.0f;
    scene_redraw_flag = 1;
    Film film(position_x);
    scene_move_floor_transition(3.0f, 4.0f);
    EXPECT_EQ(film.milliseconds(), 0u);
    EXPECT_EQ(scene_redraw_flag, 0);
}

static void expect_jump() {
    Film film(position_x);
    scene_move_floor_transition(11.0f, 7.0f);
    EXPECT_EQ(film.milliseconds(), 0u);
    EXPECT_EQ(scene_floor.position_x, 11.0f);
    EXPECT_EQ(scene_floor.position_y, 7.0f);
    EXPECT_EQ(scene_redraw_flag, 0);
}

TEST_F(FloorTransition, with_floor_inertia_off_the_floor_is_there_at_once) {
    orvanel_options.floor_inertia = 0;
    expect_jump();
}

TEST_F(FloorTransition, with_a_poor_graphics_card_the_floor_is_there_at_once) {
    orvanel_options.good_graphics_card = 0;
    expect_jump();
}

TEST_F(FloorTransition, with_a_poor_graphics_card_the_target_is_kept_on_the_floor_too) {
    orvanel_options.good_graphics_card = 0;
    scene_move_floor_transition(500.0f, 0.0f);
    EXPECT_EQ(scene_floor.position_x, 120.0f - scene_floor.view_right);
}

TEST_F(FloorTransition, the_home_key_glides_to_the_home_position_of_the_page) {
    scene_floor.home_x = -12.5f;
    scene_floor.home_y = 40.25f;
    Film film(position_x);
    scene_return_to_center_transition();
    EXPECT_EQ(film.milliseconds(), 544u);
    EXPECT_EQ(scene_floor.position_x, -12.5f);
    EXPECT_EQ(scene_floor.position_y, 40.25f);
}

TEST_F(FloorTransition, a_window_that_shows_more_than_the_floor_is_wide_centres_it_on_that_axis) {
    scene_floor.view_left = -200.0f;
    scene_floor.view_right = 196.0f;
    Film film(position_x);
    scene_move_floor_transition(30.0f, 15.0f);
    EXPECT_EQ(scene_floor.position_x, 2.0f);
    EXPECT_EQ(scene_floor.position_y, 15.0f);
}

TEST_F(FloorTransition, a_home_that_is_not_a_number_leads_to_the_middle) {
    scene_floor.home_x = NOT_A_NUMBER;
    scene_floor.home_y = INFINITE;
    scene_floor.position_x = 20.0f;
    Film film(position_x);
    scene_return_to_center_transition();
    EXPECT_EQ(film.milliseconds(), 544u);
    EXPECT_EQ(scene_floor.position_x, 0.0f);
    EXPECT_EQ(scene_floor.position_y, 0.0f);
    for (const float value : film.values())
        EXPECT_TRUE(std::isfinite(value));
}

TEST_F(FloorTransition, a_floor_that_is_nowhere_is_put_to_the_target_at_once) {
    scene_floor.position_x = NOT_A_NUMBER;
    scene_floor.position_y = -INFINITE;
    Film film(position_x);
    scene_move_floor_transition(20.0f, 10.0f);
    EXPECT_EQ(film.milliseconds(), 0u);
    EXPECT_EQ(scene_floor.position_x, 20.0f);
    EXPECT_EQ(scene_floor.position_y, 10.0f);
}

TEST_F(FloorTransition, a_far_away_floor_comes_home) {
    scene_floor.position_x = 3e38f;
    scene_floor.position_y = -3e38f;
    Film film(position_x);
    scene_move_floor_transition(-20.0f, 10.0f);
    EXPECT_EQ(scene_floor.position_x, -20.0f);
    EXPECT_EQ(scene_floor.position_y, 10.0f);
}

TEST_F(FloorTransition, window_bounds_that_are_not_numbers_lead_to_the_middle) {
    scene_floor.view_left = NOT_A_NUMBER;
    scene_floor.view_top = INFINITE;
    orvanel_options.floor_inertia = 0;
    scene_move_floor_transition(50.0f, 50.0f);
    EXPECT_EQ(scene_floor.position_x, 0.0f);
    EXPECT_EQ(scene_floor.position_y, 0.0f);
}

TEST_F(FloorTransition, right_after_a_zoom_the_edge_is_that_of_the_new_window) {
    scene_move_floor_transition(120.0f, 0.0f);
    const float at_old_zoom = scene_floor.position_x;
    stage_zoom_level(6);
    Film film(position_x);
    scene_move_floor_transition(120.0f, 0.0f);
    EXPECT_GT(scene_floor.position_x, at_old_zoom + 1.0f);
    EXPECT_EQ(scene_floor.position_x, 120.0f - scene_floor.view_right);
}

TEST_F(FloorTransition, the_main_loop_does_not_catch_up_after_a_glide) {
    Film film(position_x);
    scene_move_floor_transition(30.0f, 0.0f);
    EXPECT_EQ(next_frame_timer, sys_time_ms + 25);
    EXPECT_GE(sys_time_ms, 543u);
}
