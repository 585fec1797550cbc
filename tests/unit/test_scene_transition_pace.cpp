#include "scene/scene_transition_pace.h"

#include "page/options.h"
#include "platform/clock.h"
#include "scene/frame_clock.h"
#include "tests/support/manual_clock.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numeric>

static void start_clock(std::uint32_t microseconds_a_reading) {
    manual_clock_reset();
    timer_init(&frame_timer);
    manual_clock_step(microseconds_a_reading);
}

TEST(CoolMove, its_entries_follow_a_squared_sine) {
    for (int k = 0; k < COOL_MOVE_STEPS; k++) {
        const double sine = std::sin(3.14159265358979 * k / 31.0);
        EXPECT_NEAR(cool_move[k], 0.2 + 1.4 * sine * sine, 1e-6) << k;
    }
}

TEST(CoolMove, its_entries_add_up_to_28_1_and_the_first_half_to_14_05) {
    EXPECT_NEAR(std::accumulate(cool_move, cool_move + 16, 0.0), 14.05, 1e-5);
    EXPECT_NEAR(std::accumulate(cool_move, cool_move + 32, 0.0), 28.1, 1e-5);
}

TEST(CoolMove, the_second_half_mirrors_the_first) {
    for (int k = 0; k < COOL_MOVE_STEPS / 2; k++)
        EXPECT_EQ(cool_move[k], cool_move[COOL_MOVE_STEPS - 1 - k]) << k;
}

TEST(CoolMove, shares_run_from_exactly_0_to_exactly_1) {
    EXPECT_EQ(transition_share_done(0), 0.0);
    EXPECT_EQ(transition_share_done(32), 1.0);
    EXPECT_EQ(transition_half_share_done(0), 0.0);
    EXPECT_EQ(transition_half_share_done(16), 1.0);
}

TEST(CoolMove, a_step_moves_by_its_entry_out_of_the_sum) {
    EXPECT_NEAR(transition_share_done(8) - transition_share_done(7), 0.7940 / 28.1, 1e-6);
    EXPECT_NEAR(transition_half_share_done(8) - transition_half_share_done(7), 0.7940 / 14.05,
                1e-6);
}

TEST(Pace, frames_of_the_frame_timer_are_exactly_their_length_apart) {
    start_clock(100);
    transition_start_frames();
    for (int frame = 1; frame <= 100; frame++) {
        transition_wait_frame(17);
        EXPECT_EQ(manual_clock_now(), 17u * static_cast<unsigned>(frame));
    }
}

TEST(Pace, frames_of_the_millisecond_clock_are_exactly_their_length_apart) {
    start_clock(100);
    TransitionTicks ticks = transition_start_ticks();
    for (int frame = 1; frame <= 100; frame++) {
        transition_wait_ticks(&ticks, 12);
        EXPECT_EQ(manual_clock_now(), 12u * static_cast<unsigned>(frame));
    }
}

TEST(Pace, without_the_high_resolution_counter_frames_are_as_long) {
    manual_clock_reset();
    manual_clock_high_resolution(false);
    timer_init(&frame_timer);
    manual_clock_step(100);
    transition_start_frames();
    for (int frame = 0; frame < 16; frame++)
        transition_wait_frame(25);
    EXPECT_EQ(manual_clock_now(), 400u);
}

// A clock that ticks as coarsely as the system's may: the waits do not add up its lateness.
TEST(Pace, late_readings_do_not_add_up) {
    start_clock(5000);
    TransitionTicks ticks = transition_start_ticks();
    for (int frame = 0; frame < 50; frame++)
        transition_wait_ticks(&ticks, 12);
    EXPECT_GE(manual_clock_now(), 600u);
    EXPECT_LE(manual_clock_now(), 610u);
}

TEST(Pace, frames_missed_by_a_hitch_are_not_rushed_through) {
    start_clock(100);
    TransitionTicks ticks = transition_start_ticks();
    transition_wait_ticks(&ticks, 12);
    manual_clock_advance(500);
    transition_wait_ticks(&ticks, 12);
    const std::uint32_t after_hitch = manual_clock_now();
    transition_wait_ticks(&ticks, 12);
    EXPECT_NEAR(manual_clock_now() - after_hitch, 12, 1);
}

TEST(Pace, a_wait_ends_across_the_wrap_of_the_clock) {
    start_clock(100);
    manual_clock_advance(0xFFFFFFF0u); // 16 ms before the wrap
    TransitionTicks ticks = transition_start_ticks();
    const std::int64_t start = clock_ticks();
    transition_wait_ticks(&ticks, 25);
    EXPECT_NEAR(static_cast<double>(clock_ticks() - start), 25000.0, 1100.0); // microseconds
}

TEST(Pace, the_frame_timer_is_read_into_the_time_of_the_main_loop) {
    start_clock(100);
    transition_start_frames();
    transition_wait_frame(25);
    EXPECT_EQ(sys_time_ms, 25u);
    EXPECT_EQ(next_frame_timer, 25u);
}

TEST(Pace, a_poor_graphics_card_switches_off_every_transition) {
    options_set_defaults();
    orvanel_options.good_graphics_card = 1;
    orvanel_options.zoom_transition = orvanel_options.object_transitions =
        orvanel_options.floor_inertia = 1;
    EXPECT_TRUE(transition_zoom_enabled() && transition_objects_enabled() &&
                transition_floor_enabled());
    orvanel_options.good_graphics_card = 0;
    EXPECT_FALSE(transition_zoom_enabled() || transition_objects_enabled() ||
                 transition_floor_enabled());
}
