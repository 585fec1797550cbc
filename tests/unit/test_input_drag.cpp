#include "app/input_drag.h"

#include "app/input.h"
#include "editing/undo.h"
#include "page/options.h"
#include "scene/gl_util.h"
#include "scene/interaction.h"
#include "scene/scene.h"
#include "scene/scene_page.h"
#include "tests/support/edit_stage.h"
#include "tests/support/manual_clock.h"

#include <gtest/gtest.h>

#ifdef _WIN32
#include "platform/win32/window_attach.h"

#include <windows.h>
#else
#include "platform/posix/recorder.h"
#endif

// The window manager may just be busy with the window of the test before.
static void bring_to_front() {
#ifdef _WIN32
    SetForegroundWindow(static_cast<HWND>(window_attached()));
#endif
}

struct DragStage : EditStage {
    DragStage() {
        manual_clock_step(0); // the time between two moves is the test's
#ifdef _WIN32
        // The test's window stands in for the main window.
        HWND window = FindWindowA("orvanel:test_window", nullptr);
        window_attach(window, GetDC(window));
#endif
    }
    ~DragStage() {
        input_capture_lost();
#ifdef _WIN32
        window_attach(nullptr, nullptr);
#endif
    }
};

static void press(std::int32_t id) {
    stage_draw();
    const WindowPoint point = stage_node_point(id);
    input_left_down(point.x, point.y);
}

// From where the mouse is, in steps of at most 5 pixels.
static void move_by(std::int32_t dx, std::int32_t dy, std::uint32_t milliseconds = 10) {
    const std::int32_t steps = (std::abs(dx) + std::abs(dy)) / 5 + 1;
    const std::int32_t x = mouse.x;
    const std::int32_t y = mouse.y;
    for (std::int32_t i = 1; i <= steps; i++) {
        manual_clock_advance(milliseconds);
        bring_to_front();
        input_mouse_move(x + dx * i / steps, y + dy * i / steps, MOUSE_LEFT);
    }
}

static void release() {
    input_left_up(mouse.x, mouse.y);
}

static void rest_and_release() {
    manual_clock_advance(1000);
    release();
}

static void press_key(std::int32_t code) {
    input_key_down(code);
    input_key_up(code);
}

static void press_with_control(std::int32_t code) {
    input_key_down(KEY_CONTROL);
    press_key(code);
    input_key_up(KEY_CONTROL);
}

TEST(NodeDrag, the_object_stays_under_the_mouse_and_the_floor_where_it_is) {
    for (const std::int32_t level : {0, 4, 8}) {
        const DragStage stage;
        stage_zoom_level(level);
        const std::int32_t id = stage_add_object("a", 0.0f, 0.0f);
        press(id);
        EXPECT_EQ(node[id].grab_state, GRAB_GRABBED);
        EXPECT_EQ(scene_floor.drag_state, 0);
        EXPECT_EQ(app_node_grabbed, 1);
        move_by(120, -60);
        EXPECT_NEAR(stage_node_point(id).x, mouse.x, 1) << level;
        EXPECT_NEAR(stage_node_point(id).y, mouse.y, 1) << level;
        EXPECT_EQ(scene_floor.position_x, 0.0f);
        rest_and_release();
        EXPECT_EQ(node[id].grab_state, GRAB_HOVERED);
        EXPECT_EQ(scene_changed, 1);
    }
}

TEST(NodeDrag, a_label_stays_under_the_mouse_too) {
    const DragStage stage;
    const std::int32_t id = stage_add_label("a label", 0.0f, 0.0f);
    press(id);
    ASSERT_EQ(node[id].grab_state, GRAB_GRABBED);
    EXPECT_EQ(node[id].label_depth, 1);
    move_by(100, 50);
    EXPECT_NEAR(stage_node_point(id).x, mouse.x, 1);
    EXPECT_NEAR(stage_node_point(id).y, mouse.y, 1);
    rest_and_release();
}

TEST(NodeDrag, goes_on_under_the_mouse_when_the_floor_scrolls_or_zooms_meanwhile) {
    const DragStage stage;
    const std::int32_t id = stage_add_object("a", 0.0f, 0.0f);
    press(id);
    move_by(40, 0);
    press_key(KEY_UP);
    input_wheel(120);
    stage_draw();
    move_by(40, 20);
    stage_draw();
    EXPECT_EQ(node[id].grab_state, GRAB_GRABBED);
    EXPECT_NEAR(stage_node_point(id).x, mouse.x, 6); // where it was held shows elsewhere now
    EXPECT_NEAR(stage_node_point(id).y, mouse.y, 6);
    rest_and_release();
}

TEST(NodeDrag, stops_the_floor_and_what_the_object_did_by_itself) {
    const DragStage stage;
    const std::int32_t id = stage_add_object("a", 3.0f, 4.0f);
    stage_draw();
    node[id].grab_x = node[id].grab_y = 0.0f;
    node[id].inertia_dx = node[id].inertia_dy = 1.0f;
    node[id].label_depth = 7;
    scene_floor.inertia_x = scene_floor.inertia_y = 1.0f;
    scene_floor.inertia_frames = 9;
    const WindowPoint point = stage_node_point(id);
    input_left_down(point.x, point.y);
    EXPECT_EQ(node[id].grab_x, 3.0f);
    EXPECT_EQ(node[id].grab_y, 4.0f);
    EXPECT_EQ(node[id].inertia_dx, 0.0f);
    EXPECT_EQ(node[id].inertia_dy, 0.0f);
    EXPECT_EQ(node[id].label_depth, 0);
    EXPECT_EQ(scene_floor.inertia_frames, 0);
    EXPECT_EQ(scene_floor.inertia_x, 0.0f);
    EXPECT_EQ(scene_floor.inertia_y, 0.0f);
    release();
}

TEST(NodeDrag, pushes_the_objects_in_its_way_aside) {
    const DragStage stage;
    const std::int32_t a = stage_add_object("a", -10.0f, 0.0f);
    const std::int32_t b = stage_add_object("b", 0.0f, 0.5f);
    press(a);
    move_by(150, 0);
    rest_and_release();
    EXPECT_GT(node[a].x, -5.0f);
    EXPECT_GT(node[b].x, node[a].x);
    EXPECT_GE(node[b].x + node[b].dimensions[EXTENT_LEFT],
              node[a].x + node[a].dimensions[EXTENT_RIGHT] - 1e-3f);
}

TEST(NodeDrag, is_one_undo_entry_that_brings_everything_back) {
    const DragStage stage;
    const std::int32_t a = stage_add_object("a", -10.0f, 0.0f);
    const std::int32_t b = stage_add_object("b", 0.0f, 0.5f);
    press(a);
    move_by(150, 30);
    rest_and_release();
    EXPECT_EQ(undo_total, 1);
    undo_pop();
    EXPECT_EQ(node[a].x, -10.0f);
    EXPECT_EQ(node[a].y, 0.0f);
    EXPECT_EQ(node[b].x, 0.0f);
    EXPECT_EQ(node[b].y, 0.5f);
}

TEST(NodeDrag, back_to_where_it_began_is_undone_for_those_that_it_pushed_aside) {
    const DragStage stage;
    const std::int32_t a = stage_add_object("a", -10.0f, 0.0f);
    const std::int32_t b = stage_add_object("b", -5.0f, 0.5f);
    press(a);
    move_by(100, 0);
    ASSERT_NE(node[b].x, -5.0f);
    move_by(-100, 0);
    EXPECT_NEAR(node[a].x, -10.0f, 1e-3f);
    node[a].x = -10.0f; // as rounding has it now and then
    node[a].y = 0.0f;
    rest_and_release();
    ASSERT_EQ(undo_total, 1);
    undo_pop();
    EXPECT_EQ(node[b].x, -5.0f);
}

TEST(NodeDrag, a_click_without_moving_leaves_no_undo_entry_and_keeps_what_can_be_redone) {
    const DragStage stage;
    const std::int32_t id = stage_add_object("a", 0.0f, 0.0f);
    redo_push();
    press(id);
    EXPECT_EQ(undo_total, 1);
    release();
    EXPECT_EQ(undo_total, 0);
    EXPECT_EQ(redo_total, 1);
    EXPECT_EQ(scene_changed, 0);
    EXPECT_EQ(node[id].x, 0.0f);
}

TEST(NodeDrag, a_click_while_another_object_glides_leaves_no_undo_entry) {
    const DragStage stage;
    const std::int32_t a = stage_add_object("a", 10.0f, 8.0f);
    const std::int32_t id = stage_add_object("b", 0.0f, 0.0f);
    press(id);
    node[a].x += 1.0f;
    release();
    EXPECT_EQ(undo_total, 0);
}

TEST(NodeDrag, ends_where_it_is_when_the_mouse_is_taken_away) {
    const DragStage stage;
    const std::int32_t id = stage_add_object("a", 0.0f, 0.0f);
    press(id);
    move_by(60, 0);
    const float x = node[id].x;
    input_capture_lost();
    EXPECT_EQ(node[id].grab_state, GRAB_HOVERED);
    EXPECT_EQ(undo_total, 1);
    move_by(60, 0);
    EXPECT_EQ(node[id].x, x);
}

TEST(NodeDrag, whatever_comes_between_lets_go_of_the_object) {
    void (*const interruptions[])() = {
        input_capture_lost,
        input_focus_lost,
        [] { EXPECT_TRUE(input_end_session()); },
        [] { input_mouse_move(mouse.x, mouse.y, 0); },
        [] { press_key(KEY_TAB); },
        [] { press_key(KEY_ESCAPE); },
        [] { press_key(KEY_BACKSPACE); },
        [] { press_with_control('C'); },
        [] { press_with_control('Y'); },
#ifndef _WIN32 // a real menu would wait for the user
        [] { press_key(KEY_MENU); },
        [] { input_right_down(mouse.x, mouse.y); },
#endif
    };
    for (void (*interrupt)() : interruptions) {
        const DragStage stage;
        const std::int32_t id = stage_add_object("a", 0.0f, 0.0f);
        press(id);
        move_by(60, 0);
        interrupt();
        EXPECT_NE(node[id].grab_state, GRAB_GRABBED);
        EXPECT_EQ(node[id].inertia_frames, 0);
        EXPECT_EQ(mouse.flags & MOUSE_LEFT, 0);
#ifndef _WIN32
        EXPECT_FALSE(recorder.mouse_captured);
#endif
        const float x = node[id].x;
        EXPECT_GT(x, 0.5f);
        move_by(60, 0);
        EXPECT_EQ(node[id].x, x);
    }
}

TEST(NodeDrag, an_undo_in_the_middle_of_it_ends_it) {
    const DragStage stage;
    const std::int32_t id = stage_add_object("a", 0.0f, 0.0f);
    press(id);
    move_by(60, 0);
    input_key_down(KEY_CONTROL);
    input_key_down('Z');
    input_key_up('Z');
    input_key_up(KEY_CONTROL);
    EXPECT_EQ(node[id].x, 0.0f);
    move_by(60, 0);
    EXPECT_EQ(node[id].x, 0.0f);
    release();
    EXPECT_EQ(undo_total, 0);
    EXPECT_EQ(redo_total, 1);
}

TEST(NodeDrag, cutting_the_object_in_the_middle_of_it_drags_no_other_along) {
    const DragStage stage;
    const std::int32_t a = stage_add_object("a", 0.0f, 0.0f);
    const std::int32_t b = stage_add_object("b", 15.0f, 10.0f);
    (void)b;
    press(a);
    move_by(20, 0);
    stage_draw();
    input_key_down(KEY_CONTROL);
    input_key_down('X');
    input_key_up(KEY_CONTROL);
    ASSERT_EQ(node_total, 1);
    move_by(40, 0);
    EXPECT_EQ(node[0].x, 15.0f);
    release();
}

// ---- throwing

TEST(NodeThrow, keeps_the_speed_of_the_hand_for_30_frames) {
    const DragStage stage;
    orvanel_options.good_graphics_card = 1;
    const std::int32_t id = stage_add_object("a", -10.0f, 0.0f);
    press(id);
    move_by(100, 0, 25);
    const float before = node[id].x;
    release();
    EXPECT_EQ(node[id].inertia_frames, 30);
    EXPECT_GT(node[id].inertia_dx, 0.05f);
    EXPECT_NEAR(node[id].inertia_dy, 0.0f, 1e-3f);
    const float speed = node[id].inertia_dx;
    scene_process_frame();
    EXPECT_NEAR(node[id].x, before + speed, 1e-3f);
    EXPECT_EQ(undo_total, 1);
}

TEST(NodeThrow, needs_both_options_and_a_hand_that_moves) {
    for (int lacking = 0; lacking < 3; lacking++) {
        const DragStage stage;
        orvanel_options.good_graphics_card = lacking != 0;
        orvanel_options.object_inertia = lacking != 1;
        const std::int32_t id = stage_add_object("a", 0.0f, 0.0f);
        press(id);
        move_by(100, 0);
        if (lacking == 2)
            rest_and_release();
        else
            release();
        EXPECT_EQ(node[id].inertia_dx, 0.0f) << lacking;
    }
}

TEST(NodeThrow, grabbing_the_object_again_stops_it) {
    const DragStage stage;
    const std::int32_t id = stage_add_object("a", 0.0f, 0.0f);
    node[id].inertia_dx = 1.0f;
    node[id].inertia_frames = 20;
    press(id);
    EXPECT_EQ(node[id].inertia_frames, 0);
    EXPECT_EQ(node[id].inertia_dx, 0.0f);
    EXPECT_EQ(node[id].grab_x, node[id].x);
    release();
}

TEST(EditModePress, on_the_empty_floor_drags_the_floor) {
    const DragStage stage;
    stage_add_object("a", 10.0f, 10.0f);
    stage_draw();
    const WindowPoint point = stage_window_point(-5.0f, -5.0f, 0.0f);
    input_left_down(point.x, point.y);
    EXPECT_EQ(scene_floor.drag_state, 1);
    move_by(50, 0);
    EXPECT_LT(scene_floor.position_x, -0.5f);
    EXPECT_EQ(undo_total, 0);
    release();
}
