// Keys, right clicks and double clicks in edit mode and the menus they open.
#include "actions/command.h"
#include "actions/menu.h"
#include "app/commands.h"
#include "app/input.h"
#include "editing/clipboard.h"
#include "editing/undo.h"
#include "page/options.h"
#include "scene/gl_util.h"
#include "scene/interaction.h"
#include "scene/scene_page.h"
#include "tests/support/edit_stage.h"
#include "tests/support/message_script.h"

#include <gtest/gtest.h>

#ifndef _WIN32
#include "platform/posix/recorder.h"
#endif

static void press(std::int32_t code) {
    input_key_down(code);
    input_key_up(code);
}

static void press_with_control(std::int32_t code) {
    input_key_down(KEY_CONTROL);
    press(code);
    input_key_up(KEY_CONTROL);
}

// ---- modes

TEST(EditKeys, Tab_toggles_edit_mode_and_saves_on_the_way_out) {
    const EditStage stage;
    stage_add_object("a", 0.0f, 0.0f);
    scene_changed = 1;
    press(KEY_TAB);
    EXPECT_EQ(app_mode, APP_VIEW);
    EXPECT_EQ(scene_changed, 0);
    EXPECT_NE(stage.page_text().find("<name>a</name>"), std::string::npos);
    press(KEY_TAB);
    EXPECT_EQ(app_mode, APP_EDIT);
}

TEST(EditKeys, Escape_leaves_align_mode_then_edit_mode_then_the_program) {
    const EditStage stage;
    app_align_mode = 1;
    scene_changed = 1;
    press(KEY_ESCAPE);
    EXPECT_EQ(app_align_mode, 0);
    EXPECT_EQ(app_mode, APP_EDIT);
    stage_add_object("a", 0.0f, 0.0f);
    press(KEY_ESCAPE);
    EXPECT_EQ(app_mode, APP_VIEW);
    EXPECT_EQ(scene_changed, 0);
    EXPECT_NE(stage.page_text().find("<name>a</name>"), std::string::npos);
#ifndef _WIN32
    EXPECT_FALSE(recorder.quit);
    press(KEY_ESCAPE);
    EXPECT_TRUE(recorder.quit);
#endif
}

#ifndef _WIN32
TEST(EditKeys, Escape_in_view_mode_quits_without_any_question_even_if_a_page_was_changed) {
    const EditStage stage;
    stage_add_object("a", 0.0f, 0.0f);
    scene_changed = 1;
    press(KEY_TAB);
    const MessageScript script;
    press(KEY_ESCAPE);
    EXPECT_TRUE(recorder.quit);
    EXPECT_TRUE(script.shown().empty());
}
#endif

// ---- clipboard and history

TEST(EditKeys, in_view_mode_Ctrl_C_V_X_Y_and_Z_do_nothing) {
    const EditStage stage;
    const std::int32_t id = stage_add_object("a", 0.0f, 0.0f);
    undo_push();
    redo_push();
    app_mode = APP_VIEW;
    stage_point_at(id);
    for (const std::int32_t code : {67, 99, 86, 118, 88, 120, 89, 121, 90, 122})
        press_with_control(code);
    EXPECT_EQ(node_total, 1);
    EXPECT_EQ(clipboard_used, CLIPBOARD_EMPTY);
    EXPECT_EQ(undo_total, 1);
    EXPECT_EQ(redo_total, 1);
}

TEST(EditKeys, without_Control_the_letters_do_nothing) {
    const EditStage stage;
    stage_point_at(stage_add_object("a", 0.0f, 0.0f));
    for (const std::int32_t code : {67, 99, 86, 118, 88, 120, 89, 121, 90, 122})
        press(code);
    EXPECT_EQ(node_total, 1);
    EXPECT_EQ(clipboard_used, CLIPBOARD_EMPTY);
}

TEST(EditKeys, in_edit_mode_Ctrl_F11_undoes_like_Ctrl_Z) {
    constexpr std::int32_t F11 = 122;
    for (const std::int32_t code : {static_cast<std::int32_t>('Z'), F11}) {
        const EditStage stage;
        undo_push();
        stage_add_object("a", 0.0f, 0.0f);
        press_with_control(code);
        EXPECT_EQ(node_total, 0) << code;
    }
}

TEST(EditKeys, each_shortcut_works_with_both_of_its_key_codes) {
    for (const bool second : {false, true}) {
        const EditStage stage;
        const std::int32_t id = stage_add_object("a", 0.0f, 0.0f);
        stage_point_at(id);
        press_with_control(second ? 99 : 67);
        EXPECT_EQ(clipboard_used, CLIPBOARD_COPIED);
        press_with_control(second ? 120 : 88);
        EXPECT_EQ(clipboard_used, CLIPBOARD_CUT);
        EXPECT_EQ(node_total, 0);
        stage_point_at_place(6.0f, 4.0f);
        press_with_control(second ? 118 : 86);
        ASSERT_EQ(node_total, 1);
        EXPECT_NEAR(node[0].x, 6.0f, 0.2f);
        EXPECT_EQ(scene_changed, 1);
        press_with_control(second ? 122 : 90);
        EXPECT_EQ(node_total, 0);
        press_with_control(second ? 121 : 89);
        EXPECT_EQ(node_total, 1);
    }
}

TEST(EditKeys, paste_remembers_where_the_mouse_stood) {
    const EditStage stage;
    stage_point_at(stage_add_object("a", 0.0f, 0.0f));
    press_with_control('C');
    stage_point_at_place(6.0f, 4.0f);
    pre_dialog_mouse = {1, 1};
    press_with_control('V');
    EXPECT_EQ(pre_dialog_mouse.x, mouse.x);
    EXPECT_EQ(pre_dialog_mouse.y, mouse.y);
}

// ---- menus

#ifndef _WIN32 // a real menu would wait for the user; tests/windows has them

static RecordedMenu menu_at(WindowPoint point) {
    recorder.menus.clear();
    input_right_down(point.x, point.y);
    input_button_up(MOUSE_RIGHT);
    return recorder.menus.empty() ? RecordedMenu{-1, -1} : recorder.menus.back();
}

static void expect_menu(WindowPoint point, MenuType type, std::int32_t id) {
    const RecordedMenu menu = menu_at(point);
    EXPECT_EQ(menu.type, type);
    EXPECT_EQ(menu.node, id);
    EXPECT_EQ(pre_dialog_mouse.x, point.x);
    EXPECT_EQ(pre_dialog_mouse.y, point.y);
}

TEST(RightClick, opens_the_menu_of_what_is_under_the_mouse_in_either_mode) {
    const EditStage stage;
    const std::int32_t object = stage_add_object("a", -10.0f, 0.0f);
    const std::int32_t page = stage_add_page("p", "p.orvl", 10.0f, 0.0f);
    const std::int32_t label = stage_add_label("a label", 0.0f, 9.0f);
    stage_draw();
    const WindowPoint floor = stage_window_point(0.0f, -9.0f, 0.0f);
    expect_menu(floor, MENU_EDIT_PAGE, -1);
    expect_menu(stage_node_point(object), MENU_EDIT_OBJECT, object);
    expect_menu(stage_node_point(page), MENU_EDIT_OBJECT, page);
    expect_menu(stage_node_point(label), MENU_EDIT_LABEL, label);
    app_mode = APP_VIEW;
    expect_menu(floor, MENU_PAGE, -1);
    expect_menu(stage_node_point(object), MENU_ACTION, object);
    expect_menu(stage_node_point(page), MENU_ACTION, page);
    expect_menu(stage_node_point(label), MENU_PAGE, label);
}

TEST(RightClick, on_a_navigation_button_opens_no_menu) {
    const EditStage stage;
    scene_stack_depth = 2; // both buttons
    stage_draw();
    for (const NavigationButton &button : scene_floor.button) {
        ASSERT_EQ(button.shown, 1);
        EXPECT_EQ(menu_at({static_cast<std::int32_t>(button.x) + 5,
                           static_cast<std::int32_t>(button.y) + 5})
                      .type,
                  -1);
    }
}

TEST(RightClick, lets_go_of_what_is_being_dragged) {
    const EditStage stage;
    const std::int32_t id = stage_add_object("a", 0.0f, 0.0f);
    stage_draw();
    const WindowPoint point = stage_node_point(id);
    input_left_down(point.x, point.y);
    input_mouse_move(point.x + 30, point.y, MOUSE_LEFT);
    input_right_down(point.x + 30, point.y);
    EXPECT_NE(node[id].grab_state, GRAB_GRABBED);
    EXPECT_FALSE(recorder.mouse_captured);
    EXPECT_EQ(undo_total, 1);
}

TEST(RightClick, forgets_keys_that_were_released_in_the_menu) {
    const EditStage stage;
    input_key_down(KEY_CONTROL);
    stage_draw();
    menu_at({100, 100});
    EXPECT_EQ(keys[KEY_CONTROL], 0);
}

TEST(MenuKey, opens_the_menu_of_the_object_under_the_mouse) {
    const EditStage stage;
    const std::int32_t id = stage_add_object("a", 0.0f, 0.0f);
    stage_point_at(id);
    pre_dialog_mouse = {0, 0};
    press(KEY_MENU);
    ASSERT_EQ(recorder.menus.size(), 1u);
    EXPECT_EQ(recorder.menus[0].node, id);
    EXPECT_EQ(pre_dialog_mouse.x, mouse.x);
}

// ---- actions of a menu

static void choose_action(std::int32_t id, std::int32_t action) {
    stage_point_at(id);
    command_run(COMMAND_ACTION_FIRST + action);
}

TEST(ChosenAction, runs_the_action_of_its_index) {
    const EditStage stage;
    const std::int32_t id = stage_add_object("a", 0.0f, 0.0f, 3);
    choose_action(id, 2);
    ASSERT_EQ(recorder.starts.size(), 1u);
    EXPECT_NE(recorder.starts[0].command_line.find("command 3"), std::string::npos);
    EXPECT_FALSE(recorder.quit);
}

TEST(ChosenAction, quits_the_program_with_either_option_whatever_its_index) {
    for (int option = 0; option < 2; option++) {
        const EditStage stage;
        orvanel_options.action_exit_any = option == 0;
        orvanel_options.action_exit_action_1 = option == 1;
        choose_action(stage_add_object("a", 0.0f, 0.0f, 3), 2);
        EXPECT_TRUE(recorder.quit) << option;
    }
}

TEST(ChosenAction, that_fails_never_quits) {
    const EditStage stage;
    orvanel_options.action_exit_any = 1;
    choose_action(stage_add_object("a", 0.0f, 0.0f, 3), 7);
    EXPECT_FALSE(recorder.quit);
}

TEST(ChosenAction, of_a_page_object_opens_its_page_and_never_quits) {
    EditStage stage;
    stage.folder.write("sub.orvl", "<page>\n<offv>004</offv>\n</page>\n");
    orvanel_options.action_exit_any = 1;
    choose_action(stage_add_page("p", "sub.orvl", 0.0f, 0.0f), 0);
    EXPECT_STREQ(scene_page_file_name, "sub.orvl");
    EXPECT_FALSE(recorder.quit);
}

// ---- double clicks

TEST(EditDoubleClick, on_the_empty_floor_maximises_or_restores_the_window_and_leaves_a_choice) {
    const EditStage stage;
    app_line_draw_mode = 1;
    stage_draw();
    input_double_click(100, 100);
    EXPECT_EQ(app_line_draw_mode, 0);
    EXPECT_EQ(recorder.toggles, 1);
}

#endif
