#include "app/input.h"

#include "actions/menu.h"
#include "app/edit_choice.h"
#include "app/input_drag.h"
#include "page/node.h"
#include "platform/window.h"
#include "scene/frame_clock.h"
#include "scene/gl_util.h"
#include "scene/interaction.h"
#include "scene/scene.h"
#include "scene/scene_page.h"
#include "scene/scene_transition.h"

static constexpr std::int32_t MOUSE_BUTTONS = MOUSE_LEFT | MOUSE_MIDDLE | MOUSE_RIGHT;

// ---- buttons

// The mouse is let go of first: the page that is left may have a question to ask.
static void navigate(std::int32_t button) {
    window_release_mouse();
    edit_leave_choice();
    if (button == NAVIGATION_BACK)
        scene_page_back();
    else
        scene_page_back_home();
    open_mode = 0;
    reset_frame_timer();
}

static bool is_navigation(std::int32_t target) {
    return scene_stack_depth > 0 && (target == NAVIGATION_BACK || target == NAVIGATION_HOME);
}

static void press_in_view_mode(std::int32_t target) {
    drag_grab_floor();
    if (node_is_live(target))
        drag_hold_node(target);
}

static void press_in_edit_mode(std::int32_t target) {
    if (app_line_draw_mode == 1 || app_align_mode == 1) {
        drag_grab_floor();
        if (app_line_draw_mode == 1)
            edit_choose_link_end(target);
        else
            edit_choose_alignment(target);
    } else if (node_is_live(target)) {
        drag_grab_node(target);
    } else {
        drag_grab_floor();
    }
}

void input_left_down(std::int32_t x, std::int32_t y) {
    window_capture_mouse();
    mouse.flags |= MOUSE_LEFT;
    mouse_record_position(x, y);
    const std::int32_t target = input_target(mouse.x, mouse.y);
    if (is_navigation(target))
        navigate(target);
    else if (app_mode == APP_EDIT)
        press_in_edit_mode(target);
    else
        press_in_view_mode(target);
    scene_request_redraw();
}

void input_left_up(std::int32_t x, std::int32_t y) {
    mouse.flags &= ~MOUSE_LEFT;
    mouse_record_position(x, y);
    if (drag_is_running())
        drag_release();
    else
        drag_cancel();
    window_release_mouse();
    scene_request_redraw();
}

static MenuType menu_of(std::int32_t target) {
    const bool label = target != PICK_NOTHING && node[target].type == NODE_LABEL;
    if (app_mode == APP_EDIT) {
        if (target == PICK_NOTHING)
            return MENU_EDIT_PAGE;
        return label ? MENU_EDIT_LABEL : MENU_EDIT_OBJECT;
    }
    return target == PICK_NOTHING || label ? MENU_PAGE : MENU_ACTION;
}

// Opens the menu of what is under the mouse; everything comes to rest first.
static void open_menu() {
    input_capture_lost();
    pre_dialog_mouse = {mouse.x, mouse.y};
    scene_prepare_for_menu_activation();
    const std::int32_t target = input_target(mouse.x, mouse.y);
    if (target == PICK_NOTHING || node_is_live(target)) {
        menu_show_menu(menu_of(target), target);
        input_keys_released(); // their releases were the menu's
    }
    reset_frame_timer();
}

void input_right_down(std::int32_t x, std::int32_t y) {
    mouse.flags |= MOUSE_RIGHT;
    mouse_record_position(x, y);
    if (!edit_leave_choice())
        open_menu();
    scene_request_redraw();
}

void input_menu_key() {
    if (!edit_leave_choice())
        open_menu();
    scene_request_redraw();
}

void input_button_up(std::int32_t button) {
    mouse.flags &= ~button;
    scene_request_redraw();
}

void input_capture_lost() {
    mouse.flags &= ~MOUSE_LEFT;
    drag_cancel();
    window_release_mouse();
    scene_request_redraw();
}

void input_mouse_move(std::int32_t x, std::int32_t y, std::int32_t buttons) {
    if (!window_is_foreground())
        return;
    mouse.flags = (mouse.flags & ~MOUSE_BUTTONS) | MOUSE_MOVE | (buttons & MOUSE_BUTTONS);
    mouse_record_position(x, y);
    if (app_align_mode == 1 || app_line_draw_mode == 1)
        scene_request_redraw(); // a line follows the mouse
    if (!drag_is_running())
        return;
    if ((buttons & MOUSE_LEFT) != 0)
        drag_follow_mouse();
    else
        input_capture_lost(); // its release went to somebody else
}
