#include "scene/interaction.h"
#include "scene/scene.h"
#include "tests/support/scene_stage.h"

#include <gtest/gtest.h>

#ifdef _WIN32
#include "platform/win32/window_attach.h"

#include <windows.h>
#else
#include "platform/posix/recorder.h"
#endif

// Puts the window that the program asks about into the fore- or background.
static void set_foreground(bool foreground) {
#ifdef _WIN32
    window_attach(foreground ? GetForegroundWindow() : nullptr, nullptr);
#else
    recorder.background = !foreground;
#endif
}

struct HoverStage : SceneStage {
    HoverStage() {
#ifdef _WIN32
        SetForegroundWindow(FindWindowA("orvanel:test_window", nullptr));
#else
        recorder_reset();
#endif
        set_foreground(true);
    }
    ~HoverStage() {
        set_foreground(false);
    }
};

static void hover(float x, float y) {
    const WindowPoint point = stage_window_point(x, y, NODE_REST_HEIGHT);
    mouse.x = point.x;
    mouse.y = point.y;
    scene_hover_test();
}

TEST(HoverTest, the_object_under_the_mouse_is_hovered_and_no_other) {
    const HoverStage stage;
    stage_add(NODE_OBJECT, -8.0f, 0.0f);
    stage_add(NODE_PAGE, 8.0f, 0.0f);
    stage_draw();
    hover(8.0f, 0.0f);
    EXPECT_EQ(node[0].grab_state, GRAB_IDLE);
    EXPECT_EQ(node[1].grab_state, GRAB_HOVERED);
    hover(-8.0f, 0.0f);
    EXPECT_EQ(node[0].grab_state, GRAB_HOVERED);
    EXPECT_EQ(node[1].grab_state, GRAB_IDLE);
    hover(0.0f, 6.0f);
    EXPECT_EQ(node[0].grab_state, GRAB_IDLE);
    EXPECT_EQ(node[1].grab_state, GRAB_IDLE);
}

TEST(HoverTest, an_object_stays_hovered_while_the_mouse_is_in_its_box_but_beside_its_model) {
    const HoverStage stage;
    stage_add(NODE_OBJECT, 0.0f, 0.0f);
    node[0].dimensions[EXTENT_RIGHT] = 6.0f;
    stage_draw();
    hover(5.0f, 0.0f);
    EXPECT_EQ(node[0].grab_state, GRAB_IDLE);
    hover(0.0f, 0.0f);
    hover(5.0f, 0.0f);
    EXPECT_EQ(node[0].grab_state, GRAB_HOVERED);
    hover(7.0f, 0.0f);
    EXPECT_EQ(node[0].grab_state, GRAB_IDLE);
}

TEST(HoverTest, after_a_deletion_no_object_outside_the_window_is_hovered_in_place_of_another) {
    const HoverStage stage;
    stage_add(NODE_OBJECT, -8.0f, 0.0f);
    stage_add(NODE_OBJECT, 8.0f, 0.0f);
    stage_add(NODE_OBJECT, 0.0f, 0.0f);
    stage_add(NODE_OBJECT, 0.0f, 6.0f);
    stage_draw();
    node[1].x = 90.0f; // scrolled out of the window, as it were
    node_delete_node(0);
    stage_draw();
    hover(0.0f, 0.0f);
    EXPECT_EQ(node[0].grab_state, GRAB_IDLE);
    EXPECT_EQ(node[1].grab_state, GRAB_HOVERED);
    EXPECT_EQ(node[2].grab_state, GRAB_IDLE);
}

TEST(HoverTest, follows_the_scrolled_floor) {
    const HoverStage stage;
    stage_add(NODE_OBJECT, 50.0f, 30.0f);
    scene_floor.position_x = 48.0f;
    scene_floor.position_y = 31.0f;
    stage_draw();
    hover(50.0f, 30.0f);
    EXPECT_EQ(node[0].grab_state, GRAB_HOVERED);
}

TEST(HoverTest, a_held_object_stays_held_and_is_told_to_the_rest_of_the_program) {
    const HoverStage stage;
    stage_add(NODE_OBJECT, 0.0f, 0.0f);
    stage_draw();
    app_node_grabbed = 1;
    hover(5.0f, 5.0f);
    EXPECT_EQ(app_node_grabbed, 0);
    node[0].grab_state = GRAB_GRABBED;
    hover(5.0f, 5.0f);
    EXPECT_EQ(node[0].grab_state, GRAB_GRABBED);
    EXPECT_EQ(app_node_grabbed, 1);
}

TEST(HoverTest, forgets_that_the_mouse_moved_but_no_button) {
    const HoverStage stage;
    mouse.flags = MOUSE_MOVE | MOUSE_LEFT | MOUSE_DOUBLE_CLICK;
    hover(0.0f, 0.0f);
    EXPECT_EQ(mouse.flags, MOUSE_LEFT | MOUSE_DOUBLE_CLICK);
}

TEST(HoverTest, nothing_is_hovered_while_another_window_is_in_front) {
    const HoverStage stage;
    stage_add(NODE_OBJECT, 0.0f, 0.0f);
    stage_add(NODE_OBJECT, 8.0f, 0.0f);
    stage_draw();
    node[1].grab_state = GRAB_GRABBED;
    set_foreground(false);
    hover(0.0f, 0.0f);
    EXPECT_EQ(node[0].grab_state, GRAB_IDLE);
    EXPECT_EQ(node[1].grab_state, GRAB_IDLE);
}

TEST(HoverTest, in_align_mode_the_object_under_the_mouse_is_the_one_to_align_with) {
    const HoverStage stage;
    stage_add(NODE_OBJECT, -8.0f, 0.0f);
    stage_add(NODE_OBJECT, 8.0f, 0.0f);
    stage_draw();
    hover(8.0f, 0.0f);
    EXPECT_EQ(app_align_to_node, -1);
    app_align_mode = 1;
    hover(8.0f, 0.0f);
    EXPECT_EQ(app_align_to_node, 1);
    hover(0.0f, 8.0f);
    EXPECT_EQ(app_align_to_node, -1);
}

TEST(HoverTest, in_align_mode_another_object_under_the_mouse_asks_for_its_line_to_be_drawn) {
    const HoverStage stage;
    stage_add(NODE_OBJECT, -8.0f, 0.0f);
    stage_add(NODE_OBJECT, 8.0f, 0.0f);
    stage_draw();
    app_align_mode = 1;
    for (const float x : {8.0f, -8.0f, 0.0f}) {
        scene_redraw_flag = 0;
        hover(x, 0.0f);
        EXPECT_EQ(scene_redraw_flag, 1) << x;
        scene_redraw_flag = 0;
        hover(x, 0.0f);
        EXPECT_EQ(scene_redraw_flag, 0) << x;
    }
}

TEST(HoverTest, in_align_mode_the_box_counts_where_the_model_leaves_a_gap) {
    const HoverStage stage;
    stage_add(NODE_OBJECT, 0.0f, 0.0f);
    node[0].dimensions[EXTENT_RIGHT] = 6.0f;
    stage_draw();
    app_align_mode = 1;
    hover(5.0f, 0.0f);
    EXPECT_EQ(app_align_to_node, 0);
}
