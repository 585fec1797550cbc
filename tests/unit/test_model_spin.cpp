#include "dialogs/rules/model_spin.h"

#include "page/options.h"

#include <gtest/gtest.h>

struct ModelSpin : testing::Test {
    ModelSpin() {
        options_set_defaults();
        orvanel_options.good_graphics_card = 1;
        orvanel_options.object_rotation = 1;
        orvanel_options.floor_inertia = 1;
        model_spin_init();
    }
    static void expect_speed(float speed, float inertia) {
        EXPECT_FLOAT_EQ(model_viewer_model_speed, speed);
        EXPECT_FLOAT_EQ(model_viewer_model_inertia, inertia);
    }
};

TEST_F(ModelSpin, begins_at_45_degrees_turning_slowly) {
    EXPECT_EQ(model_viewer_model_angle, 45.0f);
    expect_speed(-0.55f, 0.0f);
    EXPECT_EQ(model_viewer_mouse_grab_x, -1.0f);
    EXPECT_EQ(model_viewer_grab_angle, 0.0f);
    model_spin_frame();
    EXPECT_FLOAT_EQ(model_viewer_model_angle, 44.45f);
}

TEST_F(ModelSpin, stands_still_and_is_not_turned_by_hand_where_the_options_say_so) {
    for (std::int32_t *option :
         {&orvanel_options.good_graphics_card, &orvanel_options.object_rotation}) {
        *option = 0;
        model_spin_frame();
        model_spin_grab(10, 10);
        model_spin_move(60, 10);
        model_spin_frame();
        EXPECT_EQ(model_viewer_model_angle, 45.0f);
        model_spin_init();
        *option = 1;
    }
}

TEST_F(ModelSpin, an_angle_beyond_359_becomes_0_and_one_below_0_becomes_359) {
    model_viewer_model_speed = 0.55f;
    model_viewer_model_angle = 358.4f;
    model_spin_frame();
    EXPECT_FLOAT_EQ(model_viewer_model_angle, 358.95f);
    model_spin_frame();
    EXPECT_EQ(model_viewer_model_angle, 0.0f);
    model_viewer_model_speed = -0.55f;
    model_spin_frame();
    EXPECT_EQ(model_viewer_model_angle, 359.0f);
}

TEST_F(ModelSpin, the_held_model_follows_the_mouse_by_one_degree_a_pixel) {
    model_spin_grab(100, 50);
    model_spin_frame();
    EXPECT_EQ(model_viewer_model_angle, 45.0f);
    model_spin_move(130, 70);
    model_spin_frame();
    EXPECT_EQ(model_viewer_model_angle, 75.0f);
    model_spin_move(90, 70);
    model_spin_frame();
    model_spin_frame();
    EXPECT_EQ(model_viewer_model_angle, 35.0f);
}

TEST_F(ModelSpin, the_angle_stays_within_a_full_turn_however_far_the_mouse_goes) {
    model_spin_grab(100, 0);
    model_spin_move(500, 0);
    model_spin_frame();
    EXPECT_EQ(model_viewer_model_angle, 85.0f);
    model_spin_move(-100, 0); // outside of the control, which holds the mouse
    model_spin_frame();
    EXPECT_EQ(model_viewer_model_angle, 205.0f);
    model_spin_move(1100, 0);
    model_spin_frame();
    EXPECT_EQ(model_viewer_model_angle, 325.0f);
}

TEST_F(ModelSpin, a_throw_takes_the_last_move_and_the_model_goes_on_turning_its_way) {
    model_spin_grab(100, 0);
    model_spin_move(150, 0);
    model_spin_move(147, 0);
    model_spin_release();
    expect_speed(-0.55f, -3.0f);
    model_spin_grab(100, 0);
    model_spin_move(50, 0);
    model_spin_move(52, 0);
    model_spin_release();
    expect_speed(0.55f, 2.0f);
    EXPECT_FALSE(model_spin_grabbed());
}

TEST_F(ModelSpin, a_throw_is_no_faster_than_six_and_a_half_degrees_a_frame) {
    model_spin_grab(100, 0);
    model_spin_move(200, 0);
    model_spin_release();
    expect_speed(0.55f, 6.5f);
    model_spin_grab(100, 0);
    model_spin_move(0, 0);
    model_spin_release();
    expect_speed(-0.55f, -6.5f);
}

TEST_F(ModelSpin, releasing_the_button_without_having_moved_leaves_the_previous_spin_unchanged) {
    model_spin_grab(100, 0);
    model_spin_move(100, 0); // the system reports such moves as well
    model_spin_release();
    expect_speed(-0.55f, 0.0f);
    model_viewer_model_speed = 0.55f;
    model_spin_grab(100, 0);
    model_spin_release();
    expect_speed(0.55f, 0.0f);
}

TEST_F(ModelSpin, a_report_of_a_move_that_leads_nowhere_does_not_take_the_throw_away) {
    model_spin_grab(100, 0);
    model_spin_move(104, 0);
    model_spin_move(104, 0);
    model_spin_release();
    expect_speed(0.55f, 4.0f);
}

TEST_F(ModelSpin, a_model_let_go_without_sideways_movement_stops) {
    model_spin_grab(100, 0);
    model_spin_move(120, 0);
    model_spin_move(120, 9);
    model_spin_release();
    expect_speed(0.0f, 0.0f);
}

TEST_F(ModelSpin, without_inertia_a_model_that_was_moved_stops) {
    for (std::int32_t *option :
         {&orvanel_options.good_graphics_card, &orvanel_options.floor_inertia}) {
        model_spin_init();
        *option = 0;
        model_spin_grab(100, 0);
        model_spin_move(120, 0);
        model_spin_release();
        expect_speed(0.0f, 0.0f);
        *option = 1;
    }
}

TEST_F(ModelSpin, releasing_without_a_drag_changes_nothing) {
    model_spin_move(20, 0);
    model_spin_move(28, 0);
    model_spin_release();
    expect_speed(-0.55f, 0.0f);
}

TEST_F(ModelSpin, taking_hold_ends_the_throw_before) {
    model_viewer_model_inertia = 5.0f;
    model_spin_grab(100, 0);
    EXPECT_EQ(model_viewer_model_inertia, 0.0f);
    EXPECT_TRUE(model_spin_grabbed());
}

TEST_F(ModelSpin, a_drag_that_is_taken_away_does_not_throw) {
    model_spin_grab(100, 0);
    model_spin_move(150, 0);
    model_spin_let_go();
    EXPECT_FALSE(model_spin_grabbed());
    expect_speed(-0.55f, 0.0f);
    model_spin_release();
    expect_speed(-0.55f, 0.0f);
}

TEST_F(ModelSpin, inertia_fades_by_0_035_a_frame_and_ends_at_exactly_0) {
    for (const float sign : {1.0f, -1.0f}) {
        model_viewer_model_inertia = sign * 0.08f;
        model_spin_frame();
        EXPECT_FLOAT_EQ(model_viewer_model_inertia, sign * 0.045f);
        model_spin_frame();
        EXPECT_FLOAT_EQ(model_viewer_model_inertia, sign * 0.01f);
        model_spin_frame();
        EXPECT_EQ(model_viewer_model_inertia, 0.0f);
        model_spin_frame();
        EXPECT_EQ(model_viewer_model_inertia, 0.0f);
    }
}

TEST_F(ModelSpin, a_throw_adds_to_the_idle_speed) {
    model_viewer_model_speed = 0.55f;
    model_viewer_model_inertia = 2.0f;
    model_spin_frame();
    EXPECT_FLOAT_EQ(model_viewer_model_angle, 47.55f);
}

TEST_F(ModelSpin, no_drag_or_throw_leaves_the_full_turn) {
    std::uint32_t random = 12345;
    for (int i = 0; i < 20000; i++) {
        random = random * 1664525u + 1013904223u;
        const std::int32_t x = static_cast<std::int32_t>(random >> 16) % 3000 - 1000;
        switch (random >> 29) {
        case 0:
            model_spin_grab(std::abs(x), 0);
            break;
        case 1:
            model_spin_release();
            break;
        case 2:
            model_spin_move(x, 0);
            break;
        default:
            model_spin_frame();
        }
        ASSERT_GE(model_viewer_model_angle, 0.0f);
        ASSERT_LE(model_viewer_model_angle, 360.0f);
        ASSERT_LE(std::abs(model_viewer_model_inertia), 6.5f);
    }
}
