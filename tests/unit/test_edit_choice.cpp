#include "app/edit_choice.h"

#include "actions/command.h"
#include "app/input.h"
#include "editing/undo.h"
#include "scene/frame_clock.h"
#include "scene/gl_util.h"
#include "scene/interaction.h"
#include "scene/scene.h"
#include "scene/scene_page.h"
#include "tests/support/edit_stage.h"
#include "tests/support/manual_clock.h"

#include <gtest/gtest.h>

#ifndef _WIN32
#include "platform/posix/recorder.h"
#endif

static void click(std::int32_t id) {
    const WindowPoint point = stage_node_point(id);
    input_left_down(point.x, point.y);
    input_left_up(point.x, point.y);
}

static void click_floor(float x, float y) {
    const WindowPoint point = stage_window_point(x, y, 0.0f);
    input_left_down(point.x, point.y);
    input_left_up(point.x, point.y);
}

// Objects a and b and a label.
struct LinkStage : EditStage {
    std::int32_t a = stage_add_object("a", -8.0f, 0.0f);
    std::int32_t b = stage_add_object("b", 8.0f, 0.0f);
    std::int32_t label = stage_add_label("label", 0.0f, 8.0f);

    LinkStage() {
        stage_command(COMMAND_DRAW_LINK, a);
        stage_draw();
    }
};

// ---- links

TEST(DrawLink, joins_the_two_objects_and_can_be_undone) {
    const LinkStage stage;
    EXPECT_EQ(app_line_draw_mode, 1);
    EXPECT_EQ(app_line_from_node, stage.a);
    click(stage.b);
    EXPECT_EQ(app_line_draw_mode, 0);
    ASSERT_EQ(line_total, 1);
    EXPECT_EQ(line[0].from, stage.a);
    EXPECT_EQ(line[0].to, stage.b);
    EXPECT_EQ(scene_changed, 1);
    EXPECT_EQ(undo_total, 1);
    undo_pop();
    EXPECT_EQ(line_total, 0);
}

TEST(DrawLink, forgets_what_could_be_redone) {
    const LinkStage stage;
    redo_push();
    click(stage.b);
    EXPECT_EQ(line_total, 1);
    EXPECT_EQ(redo_total, 0);
}

TEST(DrawLink, whose_start_is_gone_or_a_label_ends_without_a_link) {
    for (const std::int32_t from : {200, 2}) { // 2 is the label
        const LinkStage stage;
        app_line_from_node = from;
        click(stage.b);
        EXPECT_EQ(line_total, 0) << from;
        EXPECT_EQ(app_line_draw_mode, 0);
        EXPECT_EQ(undo_total, 0);
    }
}

TEST(DrawLink, the_click_that_ends_it_may_drag_the_floor_but_no_object) {
    const LinkStage stage;
    const WindowPoint point = stage_node_point(stage.b);
    input_left_down(point.x, point.y);
    EXPECT_EQ(scene_floor.drag_state, 1);
    EXPECT_NE(node[stage.b].grab_state, GRAB_GRABBED);
    input_left_up(point.x, point.y);
}

TEST(DrawLink, is_left_by_Backspace_also_on_the_home_page) {
    const LinkStage stage;
    input_key_down(KEY_BACKSPACE);
    EXPECT_EQ(app_line_draw_mode, 0);
    EXPECT_EQ(app_mode, APP_EDIT);
}

TEST(DrawLink, goes_on_after_a_click_on_the_empty_floor) {
    const LinkStage stage;
    click_floor(0.0f, -10.0f);
    EXPECT_EQ(app_line_draw_mode, 1);
    EXPECT_EQ(undo_total, 0);
    click(stage.b);
    EXPECT_EQ(line_total, 1);
}

TEST(DrawLink, ends_without_a_link_on_its_own_start_and_on_a_label) {
    for (const bool on_label : {false, true}) {
        const LinkStage stage;
        click(on_label ? stage.label : stage.a);
        EXPECT_EQ(app_line_draw_mode, 0) << on_label;
        EXPECT_EQ(line_total, 0);
        EXPECT_EQ(undo_total, 0);
        EXPECT_EQ(scene_changed, 0);
    }
}

TEST(DrawLink, that_is_there_already_changes_nothing_and_leaves_no_undo_entry) {
    const LinkStage stage;
    line_create_from_ids(stage.b, stage.a);
    click(stage.b);
    EXPECT_EQ(line_total, 1);
    EXPECT_EQ(undo_total, 0);
    EXPECT_EQ(scene_changed, 0);
    EXPECT_EQ(app_line_draw_mode, 0);
}

TEST(DrawLink, beyond_the_255th_link_changes_nothing) {
    const LinkStage stage;
    while (line_create_from_ids(200, line_total) == 0) {
    }
    ASSERT_EQ(line_total, 255);
    click(stage.b);
    EXPECT_EQ(line_total, 255);
    EXPECT_EQ(undo_total, 0);
    line_total = 0;
}

#ifndef _WIN32 // a real menu would wait for the user
TEST(DrawLink, a_right_click_only_cancels_it_no_menu_opens) {
    const LinkStage stage;
    const WindowPoint point = stage_node_point(stage.b);
    input_right_down(point.x, point.y);
    EXPECT_EQ(app_line_draw_mode, 0);
    EXPECT_TRUE(recorder.menus.empty());
    EXPECT_EQ(line_total, 0);
    input_right_down(point.x, point.y);
    EXPECT_EQ(recorder.menus.size(), 1u);
}
#endif

TEST(DrawLink, is_left_by_Escape_which_stays_in_edit_mode) {
    const LinkStage stage;
    input_key_down(KEY_ESCAPE);
    EXPECT_EQ(app_line_draw_mode, 0);
    EXPECT_EQ(app_mode, APP_EDIT);
}

TEST(DrawLink, is_left_by_a_command_that_may_delete_its_start) {
    const LinkStage stage;
    stage_command(COMMAND_DELETE, stage.a);
    EXPECT_EQ(app_line_draw_mode, 0);
}

// ---- alignment

TEST(AlignWithObject, takes_the_row_of_the_object_that_is_clicked) {
    const EditStage stage;
    const std::int32_t a = stage_add_object("a", -8.0f, -5.0f);
    const std::int32_t b = stage_add_object("b", 8.0f, 5.0f);
    stage_command(COMMAND_ALIGN_WITH_OBJECT, a);
    EXPECT_EQ(app_align_mode, 1);
    stage_draw();
    click(b);
    EXPECT_EQ(app_align_mode, 0);
    EXPECT_FLOAT_EQ(node[a].y, 5.0f);
    EXPECT_FLOAT_EQ(node[a].x, -8.0f);
    EXPECT_EQ(scene_changed, 1);
    EXPECT_EQ(undo_total, 1);
    undo_pop();
    EXPECT_FLOAT_EQ(node[a].y, -5.0f);
}

TEST(AlignWithObject, forgets_what_could_be_redone_and_takes_no_time_to_catch_up) {
    const EditStage stage;
    const std::int32_t a = stage_add_object("a", -8.0f, -5.0f);
    const std::int32_t b = stage_add_object("b", 8.0f, 5.0f);
    stage_command(COMMAND_ALIGN_WITH_OBJECT, a);
    stage_draw();
    redo_push();
    manual_clock_step(0);
    next_frame_timer = timer_get_time_ms(&frame_timer) - 10'000;
    click(b);
    EXPECT_EQ(redo_total, 0);
    EXPECT_FALSE(timer_is_before(next_frame_timer, timer_get_time_ms(&frame_timer)));
}

TEST(AlignWithObject, of_an_object_that_is_gone_does_nothing) {
    const EditStage stage;
    const std::int32_t b = stage_add_object("b", 8.0f, 5.0f);
    app_align_mode = 1;
    app_align_from_node = 200;
    stage_draw();
    click(b);
    EXPECT_EQ(undo_total, 0);
    EXPECT_EQ(scene_changed, 0);
}

TEST(AlignWithObject, goes_on_when_the_click_meets_nothing_or_the_object_itself) {
    const EditStage stage;
    const std::int32_t a = stage_add_object("a", -8.0f, -5.0f);
    stage_command(COMMAND_ALIGN_WITH_OBJECT, a);
    stage_draw();
    click_floor(10.0f, 10.0f);
    click(a);
    EXPECT_EQ(app_align_mode, 1);
    EXPECT_EQ(undo_total, 0);
    EXPECT_EQ(scene_changed, 0);
}

TEST(AlignWithObject, in_a_row_already_leaves_no_undo_entry) {
    const EditStage stage;
    const std::int32_t a = stage_add_object("a", -8.0f, 5.0f);
    const std::int32_t b = stage_add_object("b", 8.0f, 5.0f);
    stage_command(COMMAND_ALIGN_WITH_OBJECT, a);
    stage_draw();
    click(b);
    EXPECT_EQ(app_align_mode, 0);
    EXPECT_EQ(undo_total, 0);
}
