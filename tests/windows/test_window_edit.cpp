// A page edited in the real window by the messages that mouse, keyboard and menus send.
#include "actions/command.h"
#include "actions/menu.h"
#include "editing/page_edit.h"
#include "editing/undo.h"
#include "page/options.h"
#include "platform/text.h"
#include "scene/gl_util.h"
#include "scene/interaction.h"
#include "scene/scene.h"
#include "scene/scene_page.h"
#include "tests/windows/menu_player.h"
#include "tests/windows/real_window.h"

#include <gtest/gtest.h>

// The home page in edit mode with an object in the middle of the window.
struct WindowEditTest : testing::Test {
    RealWindow window;

    WindowEditTest() {
        orvanel_options.good_graphics_card = 0; // nothing to wait for
        orvanel_options.confirm_object_delete = 0;
        SetForegroundWindow(hWnd);
        handle_messages();
        scene_floor.position_x = scene_floor.position_y = 0.0f;
        node_init_node(0);
        node[0].type = NODE_OBJECT;
        node[0].model_id = 0;
        node[0].x = node[0].y = 0.0f;
        text_copy(node[0].name, "Server");
        node_set_model_dimensions(0);
        node_total = 1;
        page_edit_begin();
        draw();
    }
    ~WindowEditTest() override {
        page_edit_cancel();
    }

    static void draw() {
        scene_request_redraw();
        scene_draw();
    }
};

static LPARAM middle(int dx = 0, int dy = 0) {
    return MAKELPARAM(scene_floor.window_width / 2 + dx, scene_floor.window_height / 2 + dy);
}

static LPARAM corner() {
    return MAKELPARAM(20, scene_floor.window_height - 20);
}

// ---- dragging

// Moves count while the window is in front; the window manager may still be busy with the last one.
static void move_to(LPARAM place, WPARAM buttons) {
    SetForegroundWindow(hWnd);
    SendMessageA(hWnd, WM_MOUSEMOVE, buttons, place);
}

// Sent, not posted: what the window manager has still to say about the focus comes after the drag.
static void press(LPARAM place) {
    SetForegroundWindow(hWnd);
    SendMessageA(hWnd, WM_LBUTTONDOWN, MK_LBUTTON, place);
}

TEST_F(WindowEditTest, an_object_is_dragged_by_the_mouse_and_ctrl_z_brings_it_back) {
    ASSERT_EQ(APP_EDIT, app_mode);
    press(middle());
    EXPECT_EQ(hWnd, GetCapture());
    EXPECT_EQ(GRAB_GRABBED, node[0].grab_state);
    for (int step = 1; step <= 10; step++)
        move_to(middle(10 * step, -5 * step), MK_LBUTTON);
    post(WM_LBUTTONUP, 0, middle(100, -50));
    EXPECT_EQ(nullptr, GetCapture());
    EXPECT_GT(node[0].x, 1.0f);
    EXPECT_GT(node[0].y, 0.5f);
    EXPECT_EQ(0.0f, scene_floor.position_x);
    EXPECT_EQ(1, undo_total);
    EXPECT_EQ(1, scene_changed);
    draw();
    EXPECT_EQ(0, selection(scene_floor.window_width / 2 + 100, scene_floor.window_height / 2 - 50));
    post(WM_KEYDOWN, VK_CONTROL);
    post(WM_KEYDOWN, 'Z');
    post(WM_KEYUP, 'Z');
    post(WM_KEYUP, VK_CONTROL);
    EXPECT_EQ(0.0f, node[0].x);
    EXPECT_EQ(0.0f, node[0].y);
    EXPECT_EQ(0, undo_total);
}

static void lose_to_nobody() {
    ReleaseCapture();
}

static void lose_the_focus() {
    SendMessageA(hWnd, WM_KILLFOCUS, 0, 0);
}

static void lose_the_release() {
    move_to(middle(60), 0);
}

// As a message box of another thread or the system does.
static void lose_to_the_system() {
    SendMessageA(hWnd, WM_CANCELMODE, 0, 0);
}

TEST_F(WindowEditTest, a_drag_that_is_cut_short_leaves_the_object_where_it_is_and_can_be_undone) {
    for (void (*lose)() : {lose_to_nobody, lose_the_focus, lose_the_release, lose_to_the_system}) {
        draw();
        undo_reset();
        press(middle());
        ASSERT_EQ(GRAB_GRABBED, node[0].grab_state);
        move_to(middle(60), MK_LBUTTON);
        const float x = node[0].x;
        EXPECT_GT(x, 0.5f);
        lose();
        EXPECT_NE(GRAB_GRABBED, node[0].grab_state);
        EXPECT_EQ(nullptr, GetCapture());
        move_to(middle(90), MK_LBUTTON);
        EXPECT_EQ(x, node[0].x);
        EXPECT_EQ(1, undo_total);
        undo_pop();
        EXPECT_EQ(0.0f, node[0].x);
    }
}

// ---- menus and their commands

TEST_F(WindowEditTest, a_right_click_opens_the_menu_of_the_object_and_the_choice_is_carried_out) {
    MenuPlayer player;
    player.passes_on = true;
    player.steps = {player.choose(COMMAND_DELETE)};
    player.play([] { post(WM_RBUTTONDOWN, MK_RBUTTON, middle()); });
    EXPECT_EQ((std::vector<int>{COMMAND_DELETE}), player.commands);
    EXPECT_EQ(0, node_total);
    EXPECT_EQ(1, undo_total);
    player.steps = {player.choose(COMMAND_UNDO)};
    draw();
    player.play([] { post(WM_RBUTTONDOWN, MK_RBUTTON, corner()); });
    ASSERT_EQ(1, node_total);
    EXPECT_STREQ("Server", node[0].name);
}

TEST_F(WindowEditTest, the_command_is_for_the_place_of_the_right_click_wherever_the_mouse_is_then) {
    MenuPlayer player;
    player.passes_on = true;
    const auto choose = player.choose(COMMAND_DRAW_LINK);
    player.steps = {[&] {
        move_to(corner(), 0);
        choose();
    }};
    player.play([] { post(WM_RBUTTONDOWN, MK_RBUTTON, middle()); });
    EXPECT_EQ(1, app_line_draw_mode);
    EXPECT_EQ(0, app_line_from_node);
}

TEST_F(WindowEditTest, a_right_click_while_a_link_is_drawn_opens_no_menu) {
    pre_dialog_mouse = {LOWORD(middle()), HIWORD(middle())};
    post(WM_COMMAND, COMMAND_DRAW_LINK);
    ASSERT_EQ(1, app_line_draw_mode);
    MenuPlayer player;
    player.play([] { post(WM_RBUTTONDOWN, MK_RBUTTON, middle()); });
    EXPECT_EQ(nullptr, player.menu);
    EXPECT_EQ(0, app_line_draw_mode);
    player.play([] { post(WM_RBUTTONDOWN, MK_RBUTTON, middle()); });
    EXPECT_NE(nullptr, player.menu);
}

TEST_F(WindowEditTest, a_message_of_a_control_is_no_command) {
    pre_dialog_mouse = {LOWORD(middle()), HIWORD(middle())};
    for (const LPARAM control : {reinterpret_cast<LPARAM>(hWnd), LPARAM{1}}) {
        EXPECT_EQ(0, SendMessageA(hWnd, WM_COMMAND, COMMAND_DELETE, control));
        EXPECT_EQ(1, node_total);
        EXPECT_EQ(0, scene_changed);
    }
    EXPECT_EQ(0, SendMessageA(hWnd, WM_COMMAND, COMMAND_DELETE, 0));
    EXPECT_EQ(0, node_total);
}

static BYTE key_states[256];

static void hold_key(BYTE code, bool down) {
    GetKeyboardState(key_states);
    key_states[code] = down ? 0x80 : 0;
    SetKeyboardState(key_states);
}

TEST_F(WindowEditTest, shift_f10_opens_the_menu_of_the_object_under_the_mouse) {
    move_to(middle(), 0);
    pre_dialog_mouse = {0, 0};
    MenuPlayer player;
    UINT align = 0;
    player.steps = {[&] {
        align = GetMenuState(player.menu, COMMAND_ALIGN_WITH_GRID, MF_BYCOMMAND);
        EndMenu();
    }};
    post(WM_KEYDOWN, VK_SHIFT);
    player.play([] {
        hold_key(VK_SHIFT, true);
        SendMessageA(hWnd, WM_SYSKEYDOWN, VK_F10, 0);
        hold_key(VK_SHIFT, false);
    });
    EXPECT_NE(nullptr, player.menu);
    EXPECT_NE(static_cast<UINT>(-1), align); // that entry stands in an object's menu only
    EXPECT_EQ(scene_floor.window_width / 2, pre_dialog_mouse.x);
    EXPECT_EQ(0, keys[VK_SHIFT]);
}

TEST_F(WindowEditTest, ctrl_f10_is_heard_although_f10_is_a_key_of_the_system_menu) {
    undo_push();
    node[0].x = 5.0f;
    undo_pop();
    ASSERT_EQ(0.0f, node[0].x);
    post(WM_KEYDOWN, VK_CONTROL);
    EXPECT_EQ(0, SendMessageA(hWnd, WM_SYSKEYDOWN, VK_F10, 0));
    EXPECT_EQ(5.0f, node[0].x); // redone, as with Ctrl + Y
    SendMessageA(hWnd, WM_SYSKEYUP, VK_F10, 0);
    EXPECT_EQ(0, keys[VK_F10]);
    post(WM_KEYUP, VK_CONTROL);
}

// ---- keys that come up elsewhere

TEST_F(WindowEditTest, keys_let_go_of_while_alt_is_down_count_as_up) {
    for (const WPARAM code : {VK_CONTROL, VK_SHIFT}) {
        post(WM_KEYDOWN, code);
        ASSERT_EQ(1, keys[code]);
        post(WM_SYSKEYUP, code);
        EXPECT_EQ(0, keys[code]) << code;
    }
}

TEST_F(WindowEditTest, alt_gr_pressed_and_let_go_of_leaves_no_control_key_behind) {
    move_to(middle(), 0);
    SetFocus(hWnd);
    handle_messages();
    keybd_event(VK_LCONTROL, 0x1d, 0, 0);
    keybd_event(VK_RMENU, 0x38, KEYEVENTF_EXTENDEDKEY, 0);
    handle_messages();
    ASSERT_EQ(1, keys[VK_CONTROL]);
    keybd_event(VK_LCONTROL, 0x1d, KEYEVENTF_KEYUP, 0);
    keybd_event(VK_RMENU, 0x38, KEYEVENTF_EXTENDEDKEY | KEYEVENTF_KEYUP, 0);
    handle_messages();
    EXPECT_EQ(0, keys[VK_CONTROL]);
    post(WM_KEYDOWN, 'X'); // would cut the object
    EXPECT_EQ(1, node_total);
}

TEST_F(WindowEditTest, a_right_click_on_the_title_bar_opens_the_systems_menu_and_forgets_keys) {
    RECT frame;
    GetWindowRect(hWnd, &frame);
    const int caption = GetSystemMetrics(SM_CYFRAME) + GetSystemMetrics(SM_CYCAPTION) / 2;
    MenuPlayer player;
    post(WM_KEYDOWN, VK_CONTROL);
    player.play([&] {
        SendMessageA(hWnd, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(hWnd),
                     MAKELPARAM(frame.left + 200, frame.top + caption));
    });
    EXPECT_EQ(GetSystemMenu(hWnd, FALSE), player.menu);
    EXPECT_EQ(0, keys[VK_CONTROL]);
}

TEST_F(WindowEditTest, the_mouse_on_the_page_opens_no_second_menu) {
    RECT frame;
    GetWindowRect(hWnd, &frame);
    MenuPlayer player;
    player.play([&] {
        SendMessageA(hWnd, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(hWnd),
                     MAKELPARAM((frame.left + frame.right) / 2, (frame.top + frame.bottom) / 2));
        post(WM_RBUTTONUP, 0, middle());
    });
    EXPECT_EQ(nullptr, player.menu);
}
