#include "app/main_loop.h"

#include "app/hand_over.h"
#include "page/options.h"
#include "platform/locations.h"
#include "platform/text.h"
#include "scene/frame_clock.h"
#include "scene/interaction.h"
#include "scene/scene.h"
#include "scene/scene_page.h"
#include "tests/support/manual_clock.h"
#include "tests/support/scene_stage.h"
#include "tests/support/test_folder.h"

#include <gtest/gtest.h>

#ifndef _WIN32
#include "platform/posix/recorder.h"
#endif

static constexpr std::int32_t MANY_FRAMES = 1'000'000;

static void start_clock(bool high_resolution) {
    manual_clock_reset();
    manual_clock_high_resolution(high_resolution);
    timer_init(&frame_timer);
    reset_frame_timer();
}

// The millisecond clock is exact; the period of the other one is a rounded number of seconds.
// Floor coasting at no speed counts the frames for us.
struct LoopStage : SceneStage {
    LoopStage() {
        start_clock(false);
        stage_draw();
        scene_floor.inertia_frames = MANY_FRAMES;
    }
};

static std::int32_t frames() {
    return MANY_FRAMES - scene_floor.inertia_frames;
}

// True when this pass made a hover test: only that clears the flag.
static bool pass_tests_hover() {
    mouse.flags |= MOUSE_MOVE;
    main_loop_pass();
    return (mouse.flags & MOUSE_MOVE) == 0;
}

TEST(ResetFrameTimer, everything_is_due_a_whole_step_from_now) {
    const LoopStage stage;
    manual_clock_advance(5000);
    mandatory_redraw_counter = 7;
    reset_frame_timer();
    EXPECT_EQ(5000u, sys_time_ms);
    EXPECT_EQ(5025u, next_frame_timer);
    EXPECT_EQ(5100u, next_mouse_timer);
    EXPECT_EQ(0, mandatory_redraw_counter);
}

TEST(MainLoop, an_idle_pass_sleeps_one_millisecond) {
    const LoopStage stage;
    main_loop_pass();
    EXPECT_EQ(1u, manual_clock_slept());
    EXPECT_EQ(0, frames());
}

TEST(MainLoop, spare_time_ends_with_the_pass_in_which_something_is_due) {
    const LoopStage stage;
    for (std::uint32_t now = 0; now < 300; now++) {
        const std::uint32_t spare = main_loop_spare_time();
        const std::int32_t frames_before = frames();
        const bool hover = pass_tests_hover();
        EXPECT_EQ(spare == 0, hover || frames() > frames_before) << now;
        EXPECT_LE(spare, 26u);
        manual_clock_reset();
        manual_clock_high_resolution(false);
        manual_clock_advance(now + 1);
    }
}

TEST(MainLoop, spare_time_is_what_the_next_frame_or_hover_test_leaves) {
    const LoopStage stage;
    EXPECT_EQ(main_loop_spare_time(), 26u);
    manual_clock_advance(20);
    EXPECT_EQ(main_loop_spare_time(), 6u);
    next_mouse_timer = 22;
    EXPECT_EQ(main_loop_spare_time(), 3u);
    manual_clock_advance(3);
    EXPECT_EQ(main_loop_spare_time(), 0u);
}

TEST(MainLoop, a_frame_is_due_only_after_its_25_milliseconds_have_passed) {
    const LoopStage stage;
    manual_clock_advance(25); // at the due time it is not yet due
    main_loop_pass();
    EXPECT_EQ(0, frames());
    EXPECT_EQ(1u, manual_clock_slept()); // and the pass was idle: now it is 26
    main_loop_pass();
    EXPECT_EQ(1, frames());
    EXPECT_EQ(50u, next_frame_timer);
    EXPECT_EQ(1u, manual_clock_slept()); // a pass with a frame does not sleep
}

TEST(MainLoop, forty_frames_run_in_a_second_of_passes) {
    const LoopStage stage;
    while (manual_clock_now() <= 1001)
        main_loop_pass();
    EXPECT_EQ(40, frames());
}

TEST(MainLoop, frames_that_were_missed_are_caught_up_without_drawing) {
    const LoopStage stage;
#ifndef _WIN32
    recorder.swaps = 0;
#endif
    manual_clock_advance(1010);
    scene_request_redraw();
    main_loop_pass();
    EXPECT_EQ(40, frames());
    EXPECT_EQ(1025u, next_frame_timer);
#ifndef _WIN32
    EXPECT_EQ(1, recorder.swaps);
#endif
}

TEST(MainLoop, catching_up_is_given_up_when_frames_are_slower_than_the_clock) {
    const LoopStage stage;
    manual_clock_advance(3'600'000);
    manual_clock_step(30'000); // a frame takes 30 ms
    main_loop_pass();
    EXPECT_LE(frames(), 12);
    manual_clock_step(0);
    EXPECT_LE(manual_clock_now() - next_frame_timer, 25u);
}

TEST(MainLoop, time_lost_in_a_dialog_is_not_caught_up) {
    const LoopStage stage;
    manual_clock_advance(3'600'000);
    reset_frame_timer();
    main_loop_pass();
    EXPECT_EQ(0, frames());
}

TEST(MainLoop, the_hover_test_runs_every_100_milliseconds) {
    const LoopStage stage;
    EXPECT_FALSE(pass_tests_hover());
    manual_clock_advance(100 - manual_clock_now());
    EXPECT_FALSE(pass_tests_hover()); // at the due time it is not yet due
    manual_clock_advance(1);
    EXPECT_TRUE(pass_tests_hover());
    EXPECT_EQ(200u, next_mouse_timer);
    EXPECT_FALSE(pass_tests_hover());
    std::int32_t tests = 0;
    while (manual_clock_now() <= 1101)
        tests += pass_tests_hover() ? 1 : 0;
    EXPECT_EQ(10, tests);
}

TEST(MainLoop,
     with_the_system_clock_stalled_the_hover_test_still_runs_every_100_ms_of_the_frame_timer) {
    const LoopStage stage;
    start_clock(true);
    manual_clock_stall_system_clock(true);
    std::int32_t tests = 0;
    while (manual_clock_now() <= 1003)
        tests += pass_tests_hover() ? 1 : 0;
    EXPECT_EQ(10, tests);
    EXPECT_EQ(40, frames());
}

TEST(MainLoop, a_pass_with_a_hover_test_does_not_sleep) {
    const LoopStage stage;
    manual_clock_advance(101);
    next_frame_timer = 1000; // no frame is due
    EXPECT_TRUE(pass_tests_hover());
    EXPECT_EQ(0u, manual_clock_slept());
}

TEST(MainLoop, a_still_scene_is_drawn_again_after_26_frames_without_drawing) {
    const LoopStage stage;
    scene_floor.inertia_frames = 0; // coasting asks for a picture every time
    scene_redraw_flag = 0;
    manual_clock_advance(1);
    for (std::int32_t frame = 1; frame <= 25; frame++) {
        manual_clock_advance(25);
        main_loop_pass();
        EXPECT_EQ(frame, mandatory_redraw_counter);
        EXPECT_EQ(0, scene_redraw_flag);
    }
    manual_clock_advance(25);
    main_loop_pass();
    EXPECT_EQ(0, mandatory_redraw_counter);
    EXPECT_EQ(1, scene_redraw_flag);
    manual_clock_advance(25);
    main_loop_pass();
    EXPECT_EQ(0, scene_redraw_flag); // drawn
    EXPECT_EQ(0, mandatory_redraw_counter);
}

TEST(MainLoop, a_drawn_frame_starts_the_count_anew) {
    const LoopStage stage;
    mandatory_redraw_counter = 20;
    scene_request_redraw();
    manual_clock_advance(26);
    main_loop_pass();
    EXPECT_EQ(0, mandatory_redraw_counter);
}

TEST(MainLoop, the_clock_may_wrap_while_it_runs) {
    const LoopStage stage;
    next_frame_timer = 0xFFFFFFF0u; // due just before the wrap
    next_mouse_timer = 200;
    manual_clock_advance(5);
    main_loop_pass();
    EXPECT_EQ(1, frames());
    EXPECT_EQ(9u, next_frame_timer);
}

struct HandOverStage {
    TestFolder pages;
    const LoopStage stage;

    HandOverStage() {
        for (const char *name : {"home.orvl", "other.orvl"})
            pages.write(name, "<page>\n<offv>004</offv>\n</page>\n");
        orvanel_options.good_graphics_card = 0; // no transitions: nothing to wait for
        text_copy(page_dir_location, pages.path);
        EXPECT_EQ(PAGE_LOADED, scene_load_page("home.orvl", "Home"));
        scene_floor.inertia_frames = MANY_FRAMES;
    }
    ~HandOverStage() {
        scene_stack_depth = 0;
        open_mode = 0;
    }
};

TEST(MainLoop, a_page_that_was_handed_over_is_opened_once_on_the_next_pass) {
    const HandOverStage stage;
    hand_over_keep("other.orvl");
    main_loop_pass();
    EXPECT_STREQ("other.orvl", scene_page_file_name);
    EXPECT_EQ(1, scene_stack_depth);
    ASSERT_EQ(PAGE_LOADED, scene_load_page("home.orvl", "Home"));
    main_loop_pass();
    EXPECT_STREQ("home.orvl", scene_page_file_name);
}

TEST(MainLoop, time_lost_in_opening_a_page_handed_over_is_not_caught_up) {
    const HandOverStage stage;
    hand_over_keep("home.orvl");
    manual_clock_advance(60'000);
    main_loop_pass();
    EXPECT_STREQ("home.orvl", scene_page_file_name);
    EXPECT_EQ(0, frames());
}
