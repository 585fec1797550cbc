#include "page/options.h"
#include "scene/frame_clock.h"
#include "scene/scene.h"
#include "scene/scene_transition.h"
#include "scene/scene_transition_pace.h"
#include "tests/support/film.h"
#include "tests/support/manual_clock.h"
#include "tests/support/scene_stage.h"

#include <gtest/gtest.h>

static constexpr std::int32_t OPENING = 0, BACK = 1;
static constexpr float RISE = 7.117438f; // floor units a unit of cool_move
static constexpr float TURN = 6.405694f; // degrees a unit of cool_move

struct PageTransition : testing::Test {
    SceneStage stage;

    PageTransition() {
        stage_add(NODE_OBJECT, 0.0f, 0.0f);
        stage_add(NODE_PAGE, 10.0f, 5.0f);
        stage_add(NODE_LABEL, -10.0f, 0.0f);
        line_create_from_ids(0, 1);
        stage_draw();
    }
};

static float angle() {
    return global_angle;
}
static float height() {
    return node[0].height;
}
static float line_offset() {
    return line[0].height_offset;
}
static float red() {
    return scene_floor.colour.red;
}

// ---- out

TEST_F(PageTransition, page_out_takes_16_frames_of_25_ms) {
    Film film(height);
    scene_page_out_transition(OPENING);
    EXPECT_EQ(film.milliseconds(), 400u);
    EXPECT_EQ(film.values().size(), 17u); // at rest and 16 frames
}

TEST_F(PageTransition, page_out_lifts_all_nodes_by_exactly_100) {
    node[1].height = 12.5f;
    Film film(height);
    scene_page_out_transition(OPENING);
    EXPECT_EQ(node[0].height, 110.0f);
    EXPECT_EQ(node[1].height, 112.5f);
    EXPECT_EQ(node[2].height, 110.0f);
}

TEST_F(PageTransition, page_out_lifts_links_by_exactly_100) {
    Film film(line_offset);
    scene_page_out_transition(OPENING);
    EXPECT_EQ(line[0].height_offset, -1.0f);
    EXPECT_EQ(film.values().size(), 17u);
}

TEST_F(PageTransition, opening_a_page_turns_the_scene_by_exactly_minus_90_degrees) {
    Film film(angle);
    scene_page_out_transition(OPENING);
    EXPECT_EQ(global_angle, -90.0f);
    EXPECT_EQ(film.values().size(), 17u);
}

TEST_F(PageTransition, going_back_turns_the_scene_by_exactly_90_degrees) {
    global_angle = 33.0f; // whatever was left: the turn starts from 0
    Film film(angle);
    scene_page_out_transition(BACK);
    EXPECT_EQ(global_angle, 90.0f);
}

TEST_F(PageTransition, page_out_moves_by_the_easing_table) {
    Film film(height);
    scene_page_out_transition(OPENING);
    ASSERT_EQ(film.values().size(), 17u);
    for (std::size_t k = 0; k < 16; k++)
        EXPECT_NEAR(film.values()[k + 1] - film.values()[k], cool_move[k] * RISE, 1e-3f) << k;
}

TEST_F(PageTransition, page_out_turns_by_the_easing_table) {
    global_angle = 0.0f;
    Film film(angle);
    scene_page_out_transition(BACK);
    ASSERT_EQ(film.values().size(), 17u);
    for (std::size_t k = 0; k < 16; k++)
        EXPECT_NEAR(film.values()[k + 1] - film.values()[k], cool_move[k] * TURN, 1e-3f) << k;
}

TEST_F(PageTransition, page_out_leaves_the_empty_floor_on_the_screen) {
    stage_zoom_level(0); // far enough away for the risen objects to stay in view
    node_total = 0;
    stage_draw();
    const WindowPoint centre = stage_window_point(0.0f, 0.0f, 0.0f);
    const Pixel floor = gl_pixel(centre.x, centre.y);
    node_total = 3;
    stage_draw();
    ASSERT_GT(gl_count_differing(centre.x, centre.y, 1, 1, floor, 8), 0);
    Film film(height);
    scene_page_out_transition(OPENING);
    EXPECT_EQ(gl_count_differing(centre.x, centre.y, 1, 1, floor, 2), 0);
}

TEST_F(PageTransition, a_page_without_objects_has_no_out_flight_but_the_new_one_flies_in) {
    node_total = 0;
    Film film(angle);
    scene_page_out_transition(OPENING);
    EXPECT_EQ(film.milliseconds(), 0u);
    EXPECT_EQ(global_angle, 0.0f);
    stage_add(NODE_OBJECT, 0.0f, 0.0f);
    scene_page_in_transition(OPENING);
    EXPECT_EQ(film.milliseconds(), 400u);
}

// ---- in

TEST_F(PageTransition, page_in_takes_16_frames_of_25_ms) {
    Film film(height);
    scene_page_in_transition(OPENING);
    EXPECT_EQ(film.milliseconds(), 400u);
    EXPECT_EQ(film.values().size(), 17u); // the start, 110, and 16 frames
}

TEST_F(PageTransition, page_in_ends_at_exact_heights_and_angle) {
    node[0].height = 63.0f;
    line[0].height_offset = 5.0f;
    Film film(height);
    scene_page_in_transition(OPENING);
    for (std::int32_t i = 0; i < node_total; i++)
        EXPECT_EQ(node[i].height, 10.0f);
    EXPECT_EQ(line[0].height_offset, 99.0f);
    EXPECT_EQ(global_angle, 0.0f);
}

TEST_F(PageTransition, page_in_reads_the_table_backwards_from_110_down) {
    Film film(height);
    scene_page_in_transition(BACK);
    ASSERT_EQ(film.values().size(), 17u);
    EXPECT_EQ(film.values()[0], 110.0f);
    for (std::size_t k = 0; k < 16; k++)
        EXPECT_NEAR(film.values()[k] - film.values()[k + 1], cool_move[15 - k] * RISE, 1e-3f) << k;
}

TEST_F(PageTransition, links_fall_with_the_objects_from_minus_1_to_99) {
    Film film(line_offset);
    scene_page_in_transition(OPENING);
    EXPECT_EQ(film.values().front(), -1.0f);
    EXPECT_EQ(line[0].height_offset, 99.0f);
}

TEST_F(PageTransition, opening_turns_in_from_plus_90_and_going_back_from_minus_90) {
    {
        Film film(angle);
        scene_page_in_transition(OPENING);
        EXPECT_NEAR(film.values()[1], 90.0f - cool_move[15] * TURN, 1e-3f);
        EXPECT_EQ(film.values().back(), 0.0f);
    }
    Film film(angle);
    scene_page_in_transition(BACK);
    EXPECT_NEAR(film.values()[1], -90.0f + cool_move[15] * TURN, 1e-3f);
    EXPECT_EQ(film.values().back(), 0.0f);
}

TEST_F(PageTransition, page_in_blends_the_floor_in_16_equal_steps_to_exactly_the_new_colour) {
    scene_floor.colour = {0, 0.9f, 0.3f, 0.1f, 0.8f};
    scene_floor.previous_colour = {0, 0.1f, 0.3f, 0.7f, 0.8f};
    Film film(red);
    scene_page_in_transition(OPENING);
    ASSERT_EQ(film.values().size(), 17u);
    for (std::size_t i = 0; i < 17; i++)
        EXPECT_NEAR(film.values()[i], 0.1f + 0.05f * static_cast<float>(i), 1e-5f);
    EXPECT_EQ(scene_floor.colour.red, 0.9f);
    EXPECT_EQ(scene_floor.colour.green, 0.3f);
    EXPECT_EQ(scene_floor.colour.blue, 0.1f);
    EXPECT_EQ(scene_floor.colour.alpha, 0.8f);
}

TEST_F(PageTransition, the_floor_on_the_screen_follows_the_blend) {
    node_total = 0;
    const auto floor_on_screen = [] { return brightness(gl_pixel(5, 400)); };
    stage_page_colour(0.0f, 0.0f, 0.0f);
    stage_draw();
    const int before = floor_on_screen();
    stage_page_colour(0.3f, 0.3f, 0.3f);
    stage_draw();
    const int after = floor_on_screen();
    scene_floor.previous_colour = {0, 0.0f, 0.0f, 0.0f, 0.8f};
    Film film(red);
    scene_page_in_transition(OPENING);
    // The last frame shows 15 of the 16 steps; what follows it is drawn by the caller.
    EXPECT_NEAR(floor_on_screen(), before + (after - before) * 15 / 16, 9);
    EXPECT_LT(floor_on_screen(), after);
    stage_draw();
    EXPECT_EQ(floor_on_screen(), after);
}

TEST_F(PageTransition, an_empty_page_flies_in_as_well) {
    node_total = 0;
    line_total = 0;
    Film film(angle);
    scene_page_in_transition(OPENING);
    EXPECT_EQ(film.milliseconds(), 400u);
}

TEST_F(PageTransition, there_and_back_many_times_leaves_no_drift) {
    Film film(height);
    for (int i = 0; i < 5; i++) {
        scene_page_out_transition(i % 2);
        scene_page_in_transition(i % 2);
    }
    EXPECT_EQ(film.milliseconds(), 10u * 400u);
    EXPECT_EQ(node[0].height, 10.0f);
    EXPECT_EQ(line[0].height_offset, 99.0f);
    EXPECT_EQ(global_angle, 0.0f);
}

TEST_F(PageTransition, the_main_loop_does_not_catch_up_after_a_flight) {
    Film film(angle);
    scene_page_out_transition(OPENING);
    EXPECT_EQ(next_frame_timer, sys_time_ms + 25);
    EXPECT_EQ(next_mouse_timer, sys_time_ms + 100);
    EXPECT_GE(sys_time_ms, 399u);
}

// ---- switched off

static void expect_no_flight(Film &film) {
    scene_floor.colour = {0, 0.5f, 0.6f, 0.7f, 0.8f};
    scene_floor.previous_colour = {0, 0.1f, 0.1f, 0.1f, 0.8f};
    scene_page_out_transition(OPENING);
    scene_page_in_transition(OPENING);
    EXPECT_EQ(film.milliseconds(), 0u);
    EXPECT_EQ(scene_floor.colour.red, 0.5f);
    EXPECT_EQ(node[0].height, 10.0f);
    EXPECT_EQ(line[0].height_offset, 99.0f);
    EXPECT_EQ(global_angle, 0.0f);
}

TEST_F(PageTransition, with_zoom_transition_off_the_new_page_is_there_at_once_in_its_own_colour) {
    orvanel_options.zoom_transition = 0;
    Film film(height);
    expect_no_flight(film);
}

TEST_F(PageTransition, a_poor_graphics_card_has_no_flights) {
    orvanel_options.good_graphics_card = 0;
    Film film(height);
    expect_no_flight(film);
}

// ---- colour

TEST_F(PageTransition, a_new_page_colour_comes_in_32_steps_of_15_ms_of_sleep) {
    stage_page_colour(0.1f, 0.2f, 0.3f);
    Film film(red);
    scene_page_colour_transition(0.74f, 0.2f, 0.0f);
    EXPECT_EQ(manual_clock_slept(), 32u * 15u);
    ASSERT_EQ(film.values().size(), 32u);
    for (std::size_t i = 0; i < 32; i++)
        EXPECT_NEAR(film.values()[i], 0.1f + 0.02f * static_cast<float>(i + 1), 1e-5f);
}

TEST_F(PageTransition, a_new_page_colour_is_exact_in_the_end_and_drawn_next) {
    stage_page_colour(0.1f, 0.2f, 0.3f);
    Film film(red);
    scene_redraw_flag = 0;
    scene_page_colour_transition(0.07f, 0.13f, 0.19f);
    EXPECT_EQ(scene_floor.colour.red, 0.07f);
    EXPECT_EQ(scene_floor.colour.green, 0.13f);
    EXPECT_EQ(scene_floor.colour.blue, 0.19f);
    EXPECT_EQ(scene_floor.list_valid, 0);
    EXPECT_EQ(scene_redraw_flag, 1);
}

TEST_F(PageTransition, with_zoom_transition_off_a_new_page_colour_is_there_at_once) {
    stage_draw();
    orvanel_options.zoom_transition = 0;
    Film film(red);
    scene_page_colour_transition(0.25f, 0.13f, 0.0f);
    EXPECT_EQ(manual_clock_slept(), 0u);
    EXPECT_EQ(scene_floor.colour.red, 0.25f);
    EXPECT_EQ(scene_floor.list_valid, 0);
    EXPECT_EQ(scene_redraw_flag, 1);
}
