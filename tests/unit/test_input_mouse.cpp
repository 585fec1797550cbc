#include "app/input.h"

#include "page/options.h"
#include "platform/locations.h"
#include "platform/text.h"
#include "scene/frame_clock.h"
#include "scene/gl_util.h"
#include "scene/interaction.h"
#include "scene/scene.h"
#include "scene/scene_page.h"
#include "tests/support/manual_clock.h"
#include "tests/support/scene_stage.h"
#include "tests/support/test_folder.h"

#include <gtest/gtest.h>

#include <cmath>

#ifdef _WIN32
#include "platform/win32/window_attach.h"

#include <windows.h>
#else
#include "platform/posix/recorder.h"
#endif

static bool is_captured() {
#ifdef _WIN32
    return GetCapture() != nullptr && GetCapture() == window_attached();
#else
    return recorder.mouse_captured;
#endif
}

struct MouseStage : SceneStage {
    MouseStage() {
        manual_clock_reset();
        manual_clock_high_resolution(false); // the millisecond clock is exact
        timer_init(&frame_timer);
        reset_frame_timer();
        mouse = {};
        open_mode = 0;
#ifdef _WIN32
        HWND window = FindWindowA("orvanel:test_window", nullptr);
        SetForegroundWindow(window);
        window_attach(window, GetDC(window));
#else
        recorder_reset();
#endif
        stage_draw();
        scene_redraw_flag = 0;
    }
    ~MouseStage() {
        input_capture_lost();
#ifdef _WIN32
        window_attach(nullptr, nullptr);
#endif
    }
};

static void move(std::int32_t x, std::int32_t y, std::uint32_t milliseconds = 10) {
    manual_clock_advance(milliseconds);
    input_mouse_move(x, y, MOUSE_LEFT);
}

static float floor_x_under(std::int32_t x, std::int32_t y) {
    float floor_x, floor_y;
    GetOGLPos(x, y, &floor_x, &floor_y, scene_floor.pick_depth);
    return scene_floor.position_x + floor_x;
}

// ---- dragging the floor

TEST(FloorDrag, the_point_of_the_floor_under_the_mouse_stays_under_it) {
    for (std::int32_t level = 0; level <= ZOOM_LEVEL_MAX; level++) {
        const MouseStage stage;
        stage_zoom_level(level);
        stage_draw();
        const float held = floor_x_under(300, 200);
        input_left_down(300, 200);
        EXPECT_EQ(scene_floor.drag_state, 1);
        move(310, 220);
        scene_redraw_flag = 0;
        move(500, 17);
        EXPECT_NEAR(floor_x_under(500, 17), held, 1e-3f) << level;
        EXPECT_LT(scene_floor.position_x, -1.0f);
        EXPECT_EQ(scene_redraw_flag, 1);
        move(300, 200);
        EXPECT_NEAR(scene_floor.position_x, 0.0f, 1e-3f) << level;
        EXPECT_NEAR(scene_floor.position_y, 0.0f, 1e-3f) << level;
    }
}

TEST(FloorDrag, right_after_a_zoom_an_object_under_the_mouse_makes_no_difference) {
    const MouseStage stage;
    stage_add(NODE_OBJECT, 0.0f, 0.0f);
    stage_draw();
    scene_zoom_in();
    ASSERT_EQ(scene_floor.pick_depth, 0.0f);
    const float depth = gl_depth_of_zoom_level(DEPTH_LOOKUP_FLOOR);
    float from_x, to_x, y;
    GetOGLPos(320, 240, &from_x, &y, depth);
    GetOGLPos(400, 240, &to_x, &y, depth);
    input_left_down(320, 240);
    move(400, 240);
    EXPECT_NEAR(scene_floor.position_x, from_x - to_x, 1e-3f);
}

TEST(FloorDrag, a_floor_scrolled_by_the_keys_meanwhile_is_not_pulled_back) {
    const MouseStage stage;
    input_left_down(300, 200);
    move(320, 200);
    const float before = scene_floor.position_x;
    input_key_down(KEY_RIGHT);
    move(321, 200);
    EXPECT_NEAR(scene_floor.position_x, before + 1.0f, 0.2f);
}

TEST(FloorDrag, goes_past_the_edge_and_springs_back_after_the_release) {
    const MouseStage stage;
    scene_floor.position_x = -90.0f;
    input_left_down(100, 200);
    for (std::int32_t x = 110; x <= 600; x += 10)
        move(x, 200);
    const float dragged = scene_floor.position_x;
    for (int i = 0; i < 20; i++)
        scene_process_frame();
    EXPECT_FLOAT_EQ(scene_floor.position_x, dragged);
    EXPECT_LT(dragged + scene_floor.view_left, -121.0f);
    manual_clock_advance(500);
    input_left_up(600, 200);
    for (int i = 0; i < 100; i++)
        scene_process_frame();
    EXPECT_NEAR(scene_floor.position_x + scene_floor.view_left, -120.0f, 0.02f);
}

TEST(FloorDrag, the_release_counts_as_the_last_move_and_each_step_is_drawn) {
    const MouseStage stage;
    const float held = floor_x_under(300, 200);
    input_left_down(300, 200);
    EXPECT_EQ(scene_redraw_flag, 1);
    scene_redraw_flag = 0;
    manual_clock_advance(10);
    input_left_up(340, 200);
    EXPECT_NEAR(floor_x_under(340, 200), held, 1e-3f);
    EXPECT_EQ(scene_redraw_flag, 1);
}

TEST(FloorDrag, the_mouse_is_captured_until_the_button_comes_up) {
    const MouseStage stage;
    input_left_down(300, 200);
    EXPECT_TRUE(is_captured());
    EXPECT_NE(mouse.flags & MOUSE_LEFT, 0);
    move(-50, 900);
    input_left_up(-50, 900);
    EXPECT_FALSE(is_captured());
    EXPECT_EQ(mouse.flags & MOUSE_LEFT, 0);
    EXPECT_EQ(scene_floor.drag_state, 0);
}

TEST(FloorDrag, grabbing_the_floor_stops_its_coasting) {
    const MouseStage stage;
    scene_floor.inertia_x = scene_floor.inertia_y = 1.0f;
    scene_floor.inertia_frames = 20;
    input_left_down(300, 200);
    EXPECT_EQ(scene_floor.inertia_frames, 0);
    EXPECT_FLOAT_EQ(scene_floor.inertia_x, 0.0f);
    EXPECT_FLOAT_EQ(scene_floor.inertia_y, 0.0f);
}

// ---- throwing it

// 10 pixels to the right every interval, for 12 moves; the way of a single one in floor units.
static float drag_right(std::uint32_t interval) {
    const float start = scene_floor.position_x;
    input_left_down(200, 200);
    for (std::int32_t i = 1; i <= 12; i++)
        move(200 + 10 * i, 200, interval);
    return (scene_floor.position_x - start) / 12.0f;
}

TEST(FloorThrow, coasts_for_30_frames_with_the_speed_of_the_hand_in_units_a_frame) {
    // From a quick mouse to a program that is busy drawing and hears of it only now and then.
    for (const std::uint32_t interval : {5u, 10u, 25u, 50u, 99u, 120u, 300u}) {
        const MouseStage stage;
        const float step = drag_right(interval);
        input_left_up(320, 200);
        EXPECT_EQ(scene_floor.inertia_frames, 30);
        EXPECT_NEAR(scene_floor.inertia_x, step * 25.0f / static_cast<float>(interval), 1e-3f)
            << interval;
        EXPECT_NEAR(scene_floor.inertia_y, 0.0f, 1e-4f);
    }
}

TEST(FloorThrow, a_mouse_that_reports_every_millisecond_throws_as_far) {
    const MouseStage stage;
    const float start = scene_floor.position_x;
    input_left_down(100, 200);
    for (std::int32_t i = 1; i <= 400; i++)
        move(100 + i, 200, 1);
    const float step = (scene_floor.position_x - start) / 400.0f;
    input_left_up(500, 200);
    EXPECT_NEAR(scene_floor.inertia_x, step * 25.0f, 0.01f);
}

TEST(FloorThrow, positions_reported_every_millisecond_reach_back_as_far) {
    const MouseStage stage;
    const float start = scene_floor.position_x;
    input_left_down(100, 200);
    for (std::int32_t time = 1; time <= 100; time++)
        move(time <= 60 ? 100 + 5 * time : 400, time <= 60 ? 200 : 200 + time % 2, 1);
    const float way = scene_floor.position_x - start;
    input_left_up(400, 200);
    EXPECT_NEAR(scene_floor.inertia_x, way / 4.0f, std::fabs(way) / 20.0f);
}

TEST(FloorThrow, a_jerk_shorter_than_a_frame_counts_as_one_of_a_frame) {
    const MouseStage stage;
    input_left_down(300, 200);
    move(310, 200, 1);
    input_left_up(310, 200);
    EXPECT_LT(scene_floor.inertia_x, -0.01f);
    EXPECT_FLOAT_EQ(scene_floor.inertia_x, scene_floor.position_x);
}

TEST(FloorThrow, a_mouse_that_rested_before_the_release_does_not_throw) {
    const MouseStage stage;
    drag_right(10);
    manual_clock_advance(101);
    input_left_up(320, 200);
    EXPECT_FLOAT_EQ(scene_floor.inertia_x, 0.0f);
    EXPECT_EQ(scene_floor.inertia_frames, 0);
}

TEST(FloorThrow, a_click_without_moving_does_not_throw) {
    const MouseStage stage;
    input_left_down(300, 200);
    move(300, 200);
    input_left_up(300, 200);
    EXPECT_EQ(scene_floor.inertia_frames, 0);
    EXPECT_FLOAT_EQ(scene_floor.position_x, 0.0f);
}

TEST(FloorThrow, hangs_on_both_options) {
    for (std::int32_t *option :
         {&orvanel_options.floor_inertia, &orvanel_options.good_graphics_card}) {
        const MouseStage stage;
        *option = 0;
        drag_right(10);
        input_left_up(320, 200);
        EXPECT_EQ(scene_floor.inertia_frames, 0);
    }
}

// ---- objects

static WindowPoint on(std::int32_t id) {
    return stage_window_point(node[id].x, node[id].y, NODE_REST_HEIGHT);
}

TEST(ViewModeGrab, a_hovered_object_is_held_until_the_release_and_then_hovered_again) {
    const MouseStage stage;
    const std::int32_t id = stage_add(NODE_OBJECT, 0.0f, 0.0f);
    stage_draw();
    node[id].grab_state = GRAB_HOVERED;
    input_left_down(on(id).x, on(id).y);
    EXPECT_EQ(node[id].grab_state, GRAB_GRABBED);
    EXPECT_EQ(scene_floor.drag_state, 1);
    move(on(id).x + 40, on(id).y);
    EXPECT_FLOAT_EQ(node[id].x, 0.0f);
    EXPECT_LT(scene_floor.position_x, 0.0f);
    input_left_up(on(id).x, on(id).y);
    EXPECT_EQ(node[id].grab_state, GRAB_HOVERED);
}

TEST(ViewModeGrab, a_held_label_lies_deeper_by_an_entry_of_the_depth_table_and_an_object_does_not) {
    const MouseStage stage;
    const std::int32_t object = stage_add(NODE_OBJECT, 8.0f, 8.0f);
    const std::int32_t label = stage_add(NODE_LABEL, 0.0f, 0.0f);
    text_copy(node[label].description, "A label that is wide enough");
    stage_draw();
    for (const std::int32_t id : {object, label}) {
        node[id].label_depth = 7;
        node[id].grab_state = GRAB_HOVERED;
        const WindowPoint point = id == label ? stage_window_point(0.0f, 0.0f, 0.0f) : on(object);
        input_left_down(point.x, point.y);
        EXPECT_EQ(node[id].grab_state, GRAB_GRABBED);
        EXPECT_EQ(node[id].label_depth, id == label ? 1 : 0);
        input_left_up(point.x, point.y);
    }
}

TEST(ViewModeGrab, an_object_that_is_not_hovered_yet_is_not_held) {
    const MouseStage stage;
    const std::int32_t id = stage_add(NODE_OBJECT, 0.0f, 0.0f);
    stage_draw();
    input_left_down(on(id).x, on(id).y);
    EXPECT_EQ(node[id].grab_state, GRAB_IDLE);
}

TEST(ViewModeGrab, an_object_is_not_left_held_when_the_release_or_the_capture_is_lost) {
    for (int loss = 0; loss < 3; loss++) {
        const MouseStage stage;
        const std::int32_t id = stage_add(NODE_OBJECT, 0.0f, 0.0f);
        stage_draw();
        node[id].grab_state = GRAB_HOVERED;
        input_left_down(on(id).x, on(id).y);
        if (loss == 0)
            input_capture_lost();
        else if (loss == 1)
            input_focus_lost();
        else
            input_mouse_move(310, 200, 0); // the button is up
        EXPECT_EQ(node[id].grab_state, GRAB_HOVERED) << loss;
        EXPECT_EQ(mouse.flags & MOUSE_LEFT, 0) << loss;
        EXPECT_EQ(scene_floor.drag_state, 0) << loss;
        EXPECT_EQ(scene_floor.inertia_frames, 0) << loss;
        EXPECT_FALSE(is_captured()) << loss;
        const float before = scene_floor.position_x;
        move(400, 300);
        EXPECT_FLOAT_EQ(scene_floor.position_x, before) << loss;
    }
}

// ---- navigation buttons

TEST(NavigationClick, on_the_home_page_the_place_of_the_buttons_is_floor) {
    const MouseStage stage;
    open_mode = 1;
    scene_floor.button[0].shown = scene_floor.button[1].shown = 1;
    input_left_down(10, 10);
    EXPECT_EQ(scene_floor.drag_state, 1);
    EXPECT_EQ(open_mode, 1);
}

// Pages "Home", "One" and "Two" on top of each other; no transitions, so that nothing waits.
struct Levels : MouseStage {
    TestFolder pages;

    Levels() {
        orvanel_options.good_graphics_card = 0;
        text_copy(page_dir_location, pages.path);
        for (const char *name : {"home.orvl", "one.orvl", "two.orvl"})
            pages.write(name, "<page>\n<offv>004</offv>\n</page>\n");
        scene_load_page("home.orvl", "Home");
        load_page("one.orvl", "One");
        load_page("two.orvl", "Two");
        stage_draw();
    }
    ~Levels() {
        node_free_nodes();
        template_object_free();
        scene_stack_depth = 0;
        open_mode = 0;
        page_dir_location[0] = '\0';
    }

    static void click(const NavigationButton &button) {
        EXPECT_EQ(button.shown, 1);
        input_left_down(static_cast<std::int32_t>(button.x) + 5,
                        static_cast<std::int32_t>(button.y) + 5);
    }
};

TEST(NavigationClick, the_back_button_goes_up_one_level) {
    const Levels levels;
    Levels::click(scene_floor.button[0]);
    EXPECT_STREQ(scene_page_title, "One");
    EXPECT_EQ(scene_stack_depth, 1);
    EXPECT_EQ(open_mode, 0);
    Levels::click(scene_floor.button[0]);
    EXPECT_STREQ(scene_page_title, "Home");
    EXPECT_EQ(scene_stack_depth, 0);
}

TEST(NavigationClick, the_home_button_goes_home_from_any_depth) {
    const Levels levels;
    Levels::click(scene_floor.button[1]);
    EXPECT_STREQ(scene_page_title, "Home");
    EXPECT_EQ(scene_stack_depth, 0);
    EXPECT_EQ(open_mode, 0);
}

TEST(NavigationClick, from_a_page_of_the_command_line_home_leads_home_and_to_the_usual_buttons) {
    const Levels levels;
    scene_open_handed_over_page("one.orvl");
    stage_draw();
    ASSERT_EQ(open_mode, 1);
    ASSERT_EQ(scene_floor.button[0].shown, 0);
    Levels::click(scene_floor.button[1]);
    EXPECT_STREQ(scene_page_title, "Home");
    EXPECT_EQ(scene_stack_depth, 0);
    EXPECT_EQ(open_mode, 0);
}

TEST(NavigationClick, leaves_align_and_link_mode_without_holding_anything) {
    for (const std::int32_t button : {0, 1}) {
        const Levels levels;
        app_align_mode = app_line_draw_mode = 1;
        Levels::click(scene_floor.button[button]);
        EXPECT_EQ(app_align_mode, 0);
        EXPECT_EQ(app_line_draw_mode, 0);
        EXPECT_EQ(scene_floor.drag_state, 0);
        EXPECT_FALSE(is_captured());
    }
}

TEST(NavigationClick, the_home_button_leads_from_a_page_handed_over_to_the_home_page) {
    TestFolder pages;
    for (const char *name : {"home.orvl", "other.orvl"})
        pages.write(name, "<page>\n<offv>004</offv>\n</page>\n");
    const MouseStage stage;
    orvanel_options.good_graphics_card = 0; // no transitions: nothing to wait for
    text_copy(page_dir_location, pages.path);
    ASSERT_EQ(PAGE_LOADED, scene_load_page("home.orvl", "Home"));
    scene_open_handed_over_page("other.orvl");
    ASSERT_EQ(1, open_mode);
    stage_draw();
    const NavigationButton &home = scene_floor.button[1];
    ASSERT_EQ(home.shown, 1);
    input_left_down(static_cast<std::int32_t>(home.x) + 5, static_cast<std::int32_t>(home.y) + 5);
    EXPECT_STREQ("home.orvl", scene_page_file_name);
    EXPECT_EQ(0, scene_stack_depth);
    EXPECT_EQ(0, open_mode);
    EXPECT_EQ(0, scene_floor.drag_state);
}

TEST(NavigationClick, a_double_click_on_a_button_does_not_maximise_the_window) {
    const MouseStage stage;
    scene_stack_push();
    stage_draw();
    const NavigationButton &back = scene_floor.button[0];
    ASSERT_EQ(back.shown, 1);
    input_double_click(static_cast<std::int32_t>(back.x) + 5,
                       static_cast<std::int32_t>(back.y) + 5);
    EXPECT_EQ(1, scene_stack_depth);
#ifdef _WIN32
    EXPECT_FALSE(IsZoomed(static_cast<HWND>(window_attached())));
#else
    EXPECT_EQ(0, recorder.toggles);
#endif
    scene_stack_depth = 0;
}
