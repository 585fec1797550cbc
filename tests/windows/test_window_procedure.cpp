#include "app/hand_over.h"
#include "app/input.h"
#include "app/main_loop.h"
#include "page/node.h"
#include "page/options.h"
#include "platform/clock.h"
#include "platform/locations.h"
#include "platform/text.h"
#include "scene/frame_clock.h"
#include "scene/gl_window.h"
#include "scene/interaction.h"
#include "scene/scene.h"
#include "scene/scene_page.h"
#include "tests/windows/real_window.h"

#include <gtest/gtest.h>

static LRESULT send_page(ULONG_PTR id, const char *text, DWORD size) {
    COPYDATASTRUCT data = {};
    data.dwData = id;
    data.cbData = size;
    data.lpData = const_cast<char *>(text);
    return SendMessageA(hWnd, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&data));
}

static LRESULT hand_over(ULONG_PTR id, const char *text, DWORD size) {
    const LRESULT result = send_page(id, text, size);
    main_loop_pass();
    return result;
}

TEST(WindowProcedure, the_window_has_the_class_title_and_size_of_the_rule) {
    const RealWindow window;
    EXPECT_EQ(hWnd, FindWindowA("orvanel:main_window", "Orvanel"));
    WNDCLASSEXA window_class = {};
    window_class.cbSize = sizeof window_class;
    ASSERT_TRUE(GetClassInfoExA(GetModuleHandleA(nullptr), MAIN_WINDOW_CLASS, &window_class));
    const UINT wanted = CS_HREDRAW | CS_VREDRAW | CS_DBLCLKS;
    EXPECT_EQ(wanted, window_class.style & wanted);
    EXPECT_EQ(GetStockObject(BLACK_BRUSH), window_class.hbrBackground);
    EXPECT_EQ(nullptr, window_class.lpszMenuName);
    EXPECT_EQ(LoadCursorA(nullptr, IDC_ARROW), window_class.hCursor);
    RECT client;
    GetClientRect(hWnd, &client);
    EXPECT_EQ(scene_floor.window_width, client.right);
    EXPECT_EQ(scene_floor.window_height, client.bottom);
}

TEST(WindowProcedure, keys_zoom_and_scroll_and_are_remembered_while_they_are_down) {
    const RealWindow window;
    const std::int32_t level = scene_floor.zoom_level;
    post(WM_KEYDOWN, VK_ADD);
    post(WM_KEYDOWN, VK_OEM_PLUS);
    EXPECT_EQ(level + 2, scene_floor.zoom_level);
    EXPECT_EQ(1, keys[VK_ADD]);
    post(WM_KEYUP, VK_ADD);
    EXPECT_EQ(0, keys[VK_ADD]);
    post(WM_KEYDOWN, VK_SUBTRACT);
    post(WM_KEYDOWN, VK_OEM_MINUS);
    EXPECT_EQ(level, scene_floor.zoom_level);
    const float x = scene_floor.position_x;
    post(WM_KEYDOWN, VK_RIGHT);
    EXPECT_EQ(x + 1.0f, scene_floor.position_x);
    post(WM_KEYDOWN, VK_HOME);
    EXPECT_EQ(0.0f, scene_floor.position_x);
    EXPECT_FALSE(handle_messages());
}

TEST(WindowProcedure, escape_and_close_quit) {
    const RealWindow window;
    EXPECT_TRUE(post(WM_KEYDOWN, VK_ESCAPE));
    EXPECT_TRUE(post(WM_CLOSE));
    EXPECT_TRUE(IsWindow(hWnd)); // destroyed in the order of the shutdown, not here
    EXPECT_EQ(0u, window.script.shown().size());
}

TEST(WindowProcedure, closing_a_changed_page_asks_and_stays_when_the_user_cancels) {
    const RealWindow window;
    scene_changed = 1;
    EXPECT_FALSE(post(WM_CLOSE)); // the script presses Cancel: there is no Ok
    ASSERT_EQ(1u, window.script.shown().size());
    EXPECT_EQ("Save changes?", window.script.shown()[0].text);
    scene_changed = 0;
}

static bool session_may_end() {
    return SendMessageA(hWnd, WM_QUERYENDSESSION, 0, ENDSESSION_LOGOFF) != 0;
}

TEST(WindowProcedure, at_log_off_a_changed_page_is_saved_without_a_question) {
    const RealWindow window;
    app_mode = APP_EDIT;
    scene_floor.home_x = 12.5f;
    EXPECT_TRUE(session_may_end());
    EXPECT_EQ(std::string::npos, window.pages.read("home.orvl").find("12.50")); // not changed yet
    scene_changed = 1;
    EXPECT_TRUE(session_may_end());
    EXPECT_NE(std::string::npos, window.pages.read("home.orvl").find("12.50"));
    EXPECT_EQ(0, scene_changed);
    EXPECT_EQ(APP_EDIT, app_mode); // another program may keep the session
    EXPECT_FALSE(handle_messages());
    EXPECT_EQ(0u, window.script.shown().size());
}

TEST(WindowProcedure, at_log_off_a_page_that_cannot_be_saved_keeps_the_session) {
    const RealWindow window;
    app_mode = APP_EDIT;
    scene_changed = 1;
    text_append(page_dir_location, "gone\\");
    EXPECT_FALSE(session_may_end());
    ASSERT_EQ(1u, window.script.shown().size());
    EXPECT_EQ("Failed to save page file.", window.script.shown()[0].text);
    EXPECT_EQ(1, scene_changed);
    scene_changed = 0;
}

TEST(WindowProcedure, the_wheel_zooms) {
    const RealWindow window;
    const std::int32_t level = scene_floor.zoom_level;
    post(WM_MOUSEWHEEL, MAKEWPARAM(0, WHEEL_DELTA));
    EXPECT_EQ(level + 1, scene_floor.zoom_level);
    post(WM_MOUSEWHEEL, MAKEWPARAM(0, -WHEEL_DELTA));
    post(WM_MOUSEWHEEL, MAKEWPARAM(0, -WHEEL_DELTA));
    EXPECT_EQ(level - 1, scene_floor.zoom_level);
}

TEST(WindowProcedure, the_window_cannot_become_smaller_than_640_by_480) {
    const RealWindow window;
    MINMAXINFO limits = {};
    EXPECT_EQ(0, SendMessageA(hWnd, WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&limits)));
    EXPECT_EQ(640, limits.ptMinTrackSize.x);
    EXPECT_EQ(480, limits.ptMinTrackSize.y);
    SetWindowPos(hWnd, nullptr, 0, 0, 100, 100, SWP_NOMOVE | SWP_NOZORDER);
    RECT frame;
    GetWindowRect(hWnd, &frame);
    EXPECT_EQ(640, frame.right - frame.left);
    EXPECT_EQ(480, frame.bottom - frame.top);
}

TEST(WindowProcedure, a_new_size_reaches_the_scene) {
    const RealWindow window;
    SetWindowPos(hWnd, nullptr, 0, 0, 900, 700, SWP_NOMOVE | SWP_NOZORDER);
    handle_messages();
    RECT client;
    GetClientRect(hWnd, &client);
    EXPECT_EQ(client.right, scene_floor.window_width);
    EXPECT_EQ(client.bottom, scene_floor.window_height);
    EXPECT_LT(client.right, 900);
}

TEST(WindowProcedure, a_minimised_window_keeps_its_size_and_is_not_drawn) {
    const RealWindow window;
    const std::int32_t width = scene_floor.window_width;
    ShowWindow(hWnd, SW_MINIMIZE);
    handle_messages();
    EXPECT_EQ(width, scene_floor.window_width);
    scene_request_redraw();
    EXPECT_EQ(1, scene_draw());
    ShowWindow(hWnd, SW_RESTORE);
}

TEST(WindowProcedure, the_system_never_erases_the_background) {
    const RealWindow window;
    scene_redraw_flag = 0;
    EXPECT_EQ(0, SendMessageA(hWnd, WM_ERASEBKGND, reinterpret_cast<WPARAM>(hDC), 0));
    EXPECT_EQ(1, scene_redraw_flag);
}

TEST(WindowProcedure, painting_draws_the_scene_and_marks_the_window_as_painted) {
    const RealWindow window;
    scene_redraw_flag = 0;
    InvalidateRect(hWnd, nullptr, FALSE);
    UpdateWindow(hWnd);
    EXPECT_EQ(0, scene_redraw_flag);
    RECT rest;
    EXPECT_FALSE(GetUpdateRect(hWnd, &rest, FALSE));
}

TEST(WindowProcedure, mouse_moves_are_recorded_with_their_signed_position_and_buttons) {
    const RealWindow window;
    SetForegroundWindow(hWnd);
    handle_messages();
    SendMessageA(hWnd, WM_MOUSEMOVE, MK_LBUTTON | MK_RBUTTON, MAKELPARAM(0xfffe, 25));
    EXPECT_EQ(-2, mouse.x);
    EXPECT_EQ(25, mouse.y);
    EXPECT_EQ(MOUSE_LEFT | MOUSE_RIGHT, mouse.flags & (MOUSE_LEFT | MOUSE_MIDDLE | MOUSE_RIGHT));
    SendMessageA(hWnd, WM_RBUTTONUP, 0, 0);
    EXPECT_EQ(MOUSE_LEFT, mouse.flags & (MOUSE_LEFT | MOUSE_MIDDLE | MOUSE_RIGHT));
    SendMessageA(hWnd, WM_MOUSEMOVE, MK_MBUTTON, MAKELPARAM(1, 2));
    SendMessageA(hWnd, WM_MBUTTONUP, 0, 0);
    EXPECT_EQ(0, mouse.flags & (MOUSE_LEFT | MOUSE_MIDDLE | MOUSE_RIGHT));
}

TEST(WindowProcedure, a_double_click_on_empty_floor_maximises_and_restores) {
    const RealWindow window;
    const LPARAM middle = MAKELPARAM(scene_floor.window_width / 2, scene_floor.window_height / 2);
    post(WM_LBUTTONDBLCLK, MK_LBUTTON, middle);
    EXPECT_TRUE(IsZoomed(hWnd));
    post(WM_LBUTTONDBLCLK, MK_LBUTTON, middle);
    EXPECT_FALSE(IsZoomed(hWnd));
}

TEST(WindowProcedure, a_double_click_on_a_page_object_opens_its_page_and_backspace_returns) {
    RealWindow window;
    window.write_page("home.orvl",
                      "<node>\n<type>page</type>\n<name>Sub</name>\n<description></description>\n"
                      "<x_position>0</x_position>\n<y_position>0</y_position>\n"
                      "<model>none.obj</model>\n<page_file>sub.orvl</page_file>\n</node>\n");
    ASSERT_EQ(PAGE_LOADED, scene_load_page("home.orvl", "Home"));
    main_window_update();
    post(WM_LBUTTONDBLCLK, MK_LBUTTON,
         MAKELPARAM(scene_floor.window_width / 2, scene_floor.window_height / 2));
    EXPECT_STREQ("sub.orvl", scene_page_file_name);
    EXPECT_EQ(1, scene_stack_depth);
    post(WM_KEYDOWN, VK_BACK);
    EXPECT_STREQ("home.orvl", scene_page_file_name);
    EXPECT_EQ(0, scene_stack_depth);
}

TEST(WindowProcedure, a_page_handed_over_opens_above_the_home_page) {
    const RealWindow window;
    char path[HAND_OVER_SIZE];
    std::string command_line = window.pages.file("sub.orvl");
    command_line.insert(0, 1, '"').push_back('"');
    ASSERT_TRUE(hand_over_write(command_line.c_str(), path));
    EXPECT_EQ(0, hand_over(HAND_OVER_ID, path, HAND_OVER_SIZE));
    EXPECT_EQ(window.pages.file("sub.orvl"), scene_page_file_name);
    EXPECT_STREQ("Sub", scene_page_title);
    EXPECT_EQ(1, scene_stack_depth);
    EXPECT_EQ(1, open_mode);
    EXPECT_EQ(0, hand_over(HAND_OVER_ID, "home.orvl", 10));
    EXPECT_STREQ("home.orvl", scene_page_file_name);
}

TEST(WindowProcedure, a_page_in_a_folder_with_blanks_and_accents_is_opened) {
    const RealWindow window;
    const std::string folder = window.pages.file("B\xfc"
                                                 "cher und T\xf6pfe");
    ASSERT_EQ(0, folder_create(folder.c_str()));
    const std::string path = folder + "\\\xe4rzte im dienst.orvl";
    ASSERT_EQ(0, file_replace_text(path.c_str(), "<page>\n<offv>004</offv>\n</page>\n"));
    hand_over(HAND_OVER_ID, path.c_str(), static_cast<DWORD>(path.size() + 1));
    EXPECT_EQ(path, scene_page_file_name);
    EXPECT_STREQ("\xc4rzte Im Dienst", scene_page_title);
    EXPECT_EQ(0u, window.script.shown().size());
    file_delete(path.c_str());
    RemoveDirectoryA(folder.c_str());
}

TEST(WindowProcedure, a_page_with_the_longest_path_that_the_system_takes_is_opened) {
    RealWindow window;
    std::string folder = std::string(window.pages.path) + std::string(60, 'f');
    while (folder.size() < 190) {
        ASSERT_EQ(0, folder_create(folder.c_str())) << folder;
        folder += "\\" + std::string(60, 'f');
    }
    folder.erase(folder.rfind('\\'));
    const std::string path = folder + "\\" + std::string(253 - folder.size(), 'p') + ".orvl";
    ASSERT_EQ(259u, path.size()); // the system counts the terminator
    window.write_page(path.substr(std::string(window.pages.path).size()).c_str());
    hand_over(HAND_OVER_ID, path.c_str(), static_cast<DWORD>(path.size() + 1));
    EXPECT_EQ(path, scene_page_file_name);
    EXPECT_EQ(0u, window.script.shown().size());
}

TEST(WindowProcedure, a_page_handed_over_while_a_dialog_or_menu_is_open_waits_for_the_main_loop) {
    const RealWindow window;
    send_page(HAND_OVER_ID, "sub.orvl", 9);
    handle_messages(); // as the loop of a dialog does
    EXPECT_STREQ("home.orvl", scene_page_file_name);
    main_loop_pass();
    EXPECT_STREQ("sub.orvl", scene_page_file_name);
}

TEST(WindowProcedure, a_page_handed_over_before_everything_is_started_does_no_harm) {
    ASSERT_EQ(0, (RealWindow(), 0)); // registers the class
    options_set_defaults();
    ASSERT_EQ(0, main_window_create());
    send_page(HAND_OVER_ID, "sub.orvl", 9);
    handle_messages();
    EXPECT_EQ(0, scene_stack_depth);
    char path[HAND_OVER_SIZE];
    EXPECT_TRUE(hand_over_take(path));
    EXPECT_STREQ("sub.orvl", path);
    main_window_destroy();
}

TEST(WindowProcedure, a_page_that_cannot_be_loaded_is_reported_and_the_home_page_stays) {
    const RealWindow window;
    hand_over(HAND_OVER_ID, "missing.orvl", 13);
    ASSERT_EQ(1u, window.script.shown().size());
    EXPECT_EQ("Failed to load page file.", window.script.shown()[0].text);
    EXPECT_STREQ("home.orvl", scene_page_file_name);
    EXPECT_EQ(0, scene_stack_depth);
}

TEST(WindowProcedure, what_other_programs_send_is_ignored) {
    const RealWindow window;
    EXPECT_EQ(0, hand_over(HAND_OVER_ID + 1, "sub.orvl", 9));
    EXPECT_EQ(0, hand_over(HAND_OVER_ID, nullptr, 0));
    EXPECT_EQ(0, hand_over(HAND_OVER_ID, "", 1));
    EXPECT_EQ(0, SendMessageA(hWnd, WM_COPYDATA, 0, 0));
    EXPECT_STREQ("home.orvl", scene_page_file_name);
    EXPECT_EQ(0, scene_stack_depth);
    EXPECT_EQ(0u, window.script.shown().size());
}

TEST(WindowProcedure, a_text_handed_over_without_its_terminator_is_read_to_its_end_only) {
    const RealWindow window;
    EXPECT_EQ(0, hand_over(HAND_OVER_ID, "sub.orvlRUBBISH", 8));
    EXPECT_STREQ("sub.orvl", scene_page_file_name);
}

static LPARAM middle_of_window() {
    return MAKELPARAM(scene_floor.window_width / 2, scene_floor.window_height / 2);
}

TEST(WindowProcedure, the_mouse_is_captured_from_the_left_buttons_press_to_its_release) {
    const RealWindow window;
    ASSERT_EQ(nullptr, GetCapture());
    SendMessageA(hWnd, WM_LBUTTONDOWN, MK_LBUTTON, middle_of_window());
    EXPECT_EQ(hWnd, GetCapture());
    EXPECT_EQ(1, scene_floor.drag_state);
    SendMessageA(hWnd, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(0xfff0, 0xfff0));
    EXPECT_EQ(hWnd, GetCapture());
    SendMessageA(hWnd, WM_LBUTTONUP, 0, MAKELPARAM(0xfff0, 0xfff0));
    EXPECT_EQ(nullptr, GetCapture());
    EXPECT_EQ(0, scene_floor.drag_state);
}

// An object in the middle of the window, held by the mouse, and one beyond the edge of the floor.
static void hold_object_in_the_middle() {
    scene_floor.position_x = scene_floor.position_y = 0.0f;
    node_total = 2;
    for (std::int32_t i = 0; i < 2; i++) {
        node_init_node(i);
        node[i].type = NODE_OBJECT;
        node[i].model_id = 0;
        node[i].x = 130.0f * static_cast<float>(i);
        node[i].y = 0.0f;
        node_set_model_dimensions(i);
    }
    scene_request_redraw();
    scene_draw();
    node[0].grab_state = GRAB_HOVERED;
    SendMessageA(hWnd, WM_LBUTTONDOWN, MK_LBUTTON, middle_of_window());
    scene_hover_test();
}

static void lose_to_another_window() {
    const HWND other = CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr,
                                       GetModuleHandleA(nullptr), nullptr);
    SetCapture(other);
    DestroyWindow(other);
}

static void lose_to_nobody() {
    ReleaseCapture();
}

static void lose_the_focus() {
    SendMessageA(hWnd, WM_KILLFOCUS, 0, 0);
}

static void lose_the_release() {
    SendMessageA(hWnd, WM_MOUSEMOVE, 0, middle_of_window());
}

TEST(WindowProcedure, an_object_held_when_the_capture_is_lost_is_let_go_and_others_slide_again) {
    for (void (*lose)() :
         {lose_to_another_window, lose_to_nobody, lose_the_focus, lose_the_release}) {
        const RealWindow window;
        SetForegroundWindow(hWnd);
        handle_messages();
        hold_object_in_the_middle();
        ASSERT_EQ(GRAB_GRABBED, node[0].grab_state);
        ASSERT_EQ(1, app_node_grabbed);
        scene_process_frame();
        EXPECT_EQ(130.0f, node[1].x);
        lose();
        EXPECT_NE(GRAB_GRABBED, node[0].grab_state);
        EXPECT_EQ(0, scene_floor.drag_state);
        EXPECT_NE(hWnd, GetCapture());
        scene_hover_test();
        EXPECT_EQ(0, app_node_grabbed);
        scene_process_frame();
        EXPECT_LT(node[1].x, 130.0f);
    }
}

TEST(WindowProcedure, keys_count_as_up_when_another_window_takes_the_keyboard) {
    const RealWindow window;
    post(WM_KEYDOWN, VK_SHIFT);
    EXPECT_EQ(1, keys[VK_SHIFT]);
    SendMessageA(hWnd, WM_KILLFOCUS, 0, 0);
    EXPECT_EQ(0, keys[VK_SHIFT]);
}

TEST(WindowProcedure, time_spent_in_moving_the_window_or_asleep_is_not_caught_up) {
    const RealWindow window;
    for (const UINT message : {WM_EXITSIZEMOVE, WM_EXITMENULOOP, WM_POWERBROADCAST}) {
        next_frame_timer = timer_get_time_ms(&frame_timer) - 60'000;
        SendMessageA(hWnd, message, 0, 0);
        EXPECT_FALSE(timer_is_before(next_frame_timer, timer_get_time_ms(&frame_timer)));
    }
}
