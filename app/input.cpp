#include "app/input.h"

#include "actions/command.h"
#include "actions/misc.h"
#include "app/commands.h"
#include "app/edit_choice.h"
#include "editing/page_edit.h"
#include "page/node.h"
#include "page/options.h"
#include "platform/window.h"
#include "scene/frame_clock.h"
#include "scene/gl_util.h"
#include "scene/interaction.h"
#include "scene/scene.h"
#include "scene/scene_page.h"
#include "scene/scene_transition.h"

#include <iterator>

static constexpr float ARROW_STEP = 1.0f; // floor units

static bool is_key(std::int32_t code) {
    return code >= 0 && code < static_cast<std::int32_t>(std::size(keys));
}

static void scroll(float x, float y) {
    scene_floor.position_x += x;
    scene_floor.position_y += y;
}

static void toggle_edit_mode() {
    if (app_mode == APP_EDIT)
        page_edit_end();
    else
        page_edit_begin();
    reset_frame_timer();
}

static void escape() {
    if (app_mode != APP_EDIT)
        window_quit(0);
    else if (!edit_leave_choice())
        toggle_edit_mode();
}

static void press(std::int32_t code) {
    switch (code) {
    case KEY_BACKSPACE:
        input_capture_lost();
        scene_prepare_for_menu_activation();
        app_line_draw_mode = 0;
        scene_page_back();
        reset_frame_timer();
        break;
    case KEY_TAB:
        input_capture_lost();
        toggle_edit_mode();
        break;
    case KEY_ESCAPE:
        input_capture_lost();
        escape();
        break;
    case KEY_MENU:
        input_menu_key();
        break;
    case KEY_HOME:
        scene_return_to_center_transition();
        reset_frame_timer();
        break;
    case KEY_LEFT:
        scroll(-ARROW_STEP, 0.0f);
        break;
    case KEY_RIGHT:
        scroll(ARROW_STEP, 0.0f);
        break;
    case KEY_UP:
        scroll(0.0f, ARROW_STEP);
        break;
    case KEY_DOWN:
        scroll(0.0f, -ARROW_STEP);
        break;
    case KEY_NUMERIC_PLUS:
    case KEY_PLUS:
        scene_zoom_in();
        break;
    case KEY_NUMERIC_MINUS:
    case KEY_MINUS:
        scene_zoom_out();
        break;
    default:
        break;
    }
}

void input_key_down(std::int32_t code) {
    if (is_key(code))
        keys[code] = 1;
    if (code < KEY_FIRST || code > KEY_LAST)
        return;
    const bool edits = keys[KEY_CONTROL] == 1 && app_mode == APP_EDIT;
    if (!edits || !command_run_key(code))
        press(code);
    scene_request_redraw();
}

void input_key_up(std::int32_t code) {
    if (is_key(code))
        keys[code] = 0;
    scene_request_redraw();
}

void input_keys_released() {
    for (std::int32_t &key : keys)
        key = 0;
}

void input_focus_lost() {
    input_keys_released();
    input_capture_lost();
}

void input_wheel(std::int32_t delta) {
    if (delta < 0)
        scene_zoom_out();
    else if (delta > 0)
        scene_zoom_in();
    scene_request_redraw();
}

std::int32_t input_target(std::int32_t x, std::int32_t y) {
    const std::int32_t picked = selection(x, y);
    if (picked == PICK_NOTHING)
        return scene_mouse_within_node_box2(x, y);
    if (picked == NAVIGATION_BACK || picked == NAVIGATION_HOME || node_is_live(picked))
        return picked;
    return PICK_NOTHING;
}

static void run_first_action(std::int32_t id) {
    // As it was when the user clicked: a program that starts takes the keyboard away.
    const bool shift = keys[KEY_SHIFT] != 0;
    if (orvanel_options.action_double_click_run == 1 && run_action(id, 0) == 0 &&
        orvanel_options.action_exit_action_1 == 1 && !shift)
        window_quit(0);
    // The program that was started has taken the keyboard and will hear the key come up.
    keys[KEY_SHIFT] = 0;
}

static void double_click_node(std::int32_t id) {
    if (app_mode == APP_EDIT) {
        pre_dialog_mouse = {mouse.x, mouse.y};
        command_run(COMMAND_PROPERTIES);
        return;
    }
    switch (node[id].type) {
    case NODE_OBJECT:
        run_first_action(id);
        break;
    case NODE_PAGE:
        run_action(id, 0);
        break;
    default:
        break;
    }
}

void input_double_click(std::int32_t x, std::int32_t y) {
    mouse.flags |= MOUSE_DOUBLE_CLICK;
    mouse_record_position(x, y);
    edit_leave_choice();
    const std::int32_t target = input_target(mouse.x, mouse.y);
    if (target == PICK_NOTHING)
        window_toggle_maximised();
    else if (node_is_live(target))
        double_click_node(target);
    reset_frame_timer();
    scene_request_redraw();
}

void input_resize(std::int32_t width, std::int32_t height) {
    if (width <= 0 || height <= 0)
        return; // minimised: there is nothing to draw on
    scene_resize(width, height);
    scene_floor.pick_depth = 0.0f;
    scene_request_redraw();
}

void input_paint() {
    scene_request_redraw();
    scene_draw();
}

void input_close() {
    if (page_edit_settle_changes() == PageEditAnswer::Settled)
        window_quit(0);
    reset_frame_timer();
    scene_request_redraw();
}

bool input_end_session() {
    input_capture_lost(); // what is being dragged stays where it is
    return page_edit_save() == 0;
}
