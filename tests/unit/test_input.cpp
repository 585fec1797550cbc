#include "app/input.h"

#include "page/options.h"
#include "platform/locations.h"
#include "platform/text.h"
#include "scene/frame_clock.h"
#include "scene/gl_util.h"
#include "scene/interaction.h"
#include "scene/scene.h"
#include "scene/scene_page.h"
#include "tests/support/message_script.h"
#include "tests/support/scene_stage.h"
#include "tests/support/test_folder.h"

#include <gtest/gtest.h>

#include <string>

#ifdef _WIN32
#include "platform/win32/window_attach.h"

#include <windows.h>
#else
#include "platform/posix/recorder.h"
#endif

static constexpr char EMPTY_PAGE[] = "<page>\n<offv>004</offv>\n</page>\n";

// True when the program was asked to end since the last question.
static bool took_quit() {
#ifdef _WIN32
    MSG message;
    return PeekMessageA(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE) != 0;
#else
    const bool quit = recorder.quit;
    recorder.quit = false;
    return quit;
#endif
}

struct InputStage : SceneStage {
    TestFolder pages;

    InputStage() {
        orvanel_options.good_graphics_card = 0; // no transitions: nothing to wait for
        text_copy(page_dir_location, pages.path);
        mouse = {};
        scene_changed = 0;
        timer_init(&frame_timer);
        reset_frame_timer();
#ifdef _WIN32
        // The test's window stands in for the main window.
        HWND window = FindWindowA("orvanel:test_window", nullptr);
        SetForegroundWindow(window);
        window_attach(window, GetDC(window));
#endif
        stage_draw();
        scene_redraw_flag = 0;
    }
    ~InputStage() {
#ifdef _WIN32
        window_attach(nullptr, nullptr);
#endif
        took_quit();
        node_free_nodes();
        scene_changed = 0;
    }
};

static std::int32_t add(NodeType type, float x, float y, const char *command) {
    const std::int32_t id = stage_add(type, x, y);
    text_copy(node[id].name, "Name");
    action_allocate_action(&node[id].actions[0]);
    text_copy(node[id].actions[0]->name, "Action");
    text_copy(node[id].actions[0]->command, command);
    node[id].action_count = 1;
    return id;
}

static void double_click(float x, float y) {
    stage_draw();
    const WindowPoint point = stage_window_point(x, y, NODE_REST_HEIGHT);
    input_double_click(point.x, point.y);
}

// ---- keys

TEST(KeyDown, it_is_remembered_until_the_key_comes_up) {
    const InputStage stage;
    input_key_down(KEY_SHIFT);
    EXPECT_EQ(1, keys[KEY_SHIFT]);
    scene_redraw_flag = 0;
    input_key_up(KEY_SHIFT);
    EXPECT_EQ(0, keys[KEY_SHIFT]);
    EXPECT_EQ(1, scene_redraw_flag);
}

TEST(KeyDown, codes_below_8_and_above_189_are_remembered_but_do_nothing) {
    const InputStage stage;
    for (const std::int32_t code : {1, 7, 190, 255}) {
        input_key_down(code);
        EXPECT_EQ(1, keys[code]);
        EXPECT_EQ(0, scene_redraw_flag) << code;
    }
    input_key_down(KEY_BACKSPACE);
    EXPECT_EQ(1, scene_redraw_flag);
    scene_redraw_flag = 0;
    input_key_down(KEY_MINUS);
    EXPECT_EQ(1, scene_redraw_flag);
}

TEST(KeyDown, a_code_outside_the_table_touches_nothing) {
    const InputStage stage;
    for (const std::int32_t code : {-1, 256, 0x7fffffff, static_cast<int>(0x80000000u)}) {
        input_key_down(code);
        input_key_up(code);
    }
    for (const std::int32_t key : keys)
        EXPECT_EQ(0, key);
}

TEST(KeyDown, keys_released_while_another_program_listens_count_as_up) {
    const InputStage stage;
    input_key_down(KEY_SHIFT);
    input_focus_lost();
    EXPECT_EQ(0, keys[KEY_SHIFT]);
}

TEST(KeyDown, escape_in_view_mode_quits_without_any_question) {
    const InputStage stage;
    const MessageScript script;
    scene_changed = 1; // changed while it was last edited; leaving edit mode saved it
    input_key_down(KEY_ESCAPE);
    EXPECT_TRUE(took_quit());
    EXPECT_EQ(0u, script.shown().size());
}

TEST(KeyDown, in_view_mode_ctrl_c_ctrl_v_ctrl_x_ctrl_y_and_ctrl_z_do_nothing) {
    const InputStage stage;
    const std::int32_t id = add(NODE_OBJECT, 0.0f, 0.0f, "");
    stage_draw();
    const WindowPoint point = stage_window_point(0.0f, 0.0f, NODE_REST_HEIGHT);
    input_mouse_move(point.x, point.y, 0);
    ASSERT_EQ(id, input_target(mouse.x, mouse.y));
    input_key_down(17); // Control
    for (const std::int32_t code : {67, 99, 86, 118, 88, 120, 89, 121, 90, 122})
        input_key_down(code);
    EXPECT_EQ(1, node_total);
    EXPECT_EQ(0, scene_changed);
    EXPECT_EQ(APP_VIEW, app_mode);
}

TEST(KeyDown, the_arrow_keys_scroll_the_floor_by_one_unit) {
    const InputStage stage;
    const struct {
        std::int32_t code;
        float x, y;
    } arrows[] = {{KEY_LEFT, -1.0f, 0.0f},
                  {KEY_RIGHT, 1.0f, 0.0f},
                  {KEY_UP, 0.0f, 1.0f},
                  {KEY_DOWN, 0.0f, -1.0f}};
    for (const auto &arrow : arrows) {
        scene_floor.position_x = 5.0f;
        scene_floor.position_y = 7.0f;
        scene_redraw_flag = 0;
        input_key_down(arrow.code);
        EXPECT_EQ(5.0f + arrow.x, scene_floor.position_x) << arrow.code;
        EXPECT_EQ(7.0f + arrow.y, scene_floor.position_y) << arrow.code;
        EXPECT_EQ(1, scene_redraw_flag);
    }
}

TEST(KeyDown, home_brings_the_floor_back_to_the_pages_resting_place) {
    const InputStage stage;
    scene_floor.home_x = 3.0f;
    scene_floor.home_y = -4.0f;
    scene_floor.position_x = 20.0f;
    scene_floor.inertia_x = 1.0f;
    scene_floor.inertia_frames = 30;
    input_key_down(KEY_HOME);
    EXPECT_EQ(3.0f, scene_floor.position_x);
    EXPECT_EQ(-4.0f, scene_floor.position_y);
    EXPECT_EQ(0, scene_floor.inertia_frames);
}

TEST(KeyDown, both_plus_keys_zoom_in_and_both_minus_keys_zoom_out) {
    const InputStage stage;
    input_key_down(KEY_NUMERIC_PLUS);
    EXPECT_EQ(5, scene_floor.zoom_level);
    input_key_down(KEY_PLUS);
    EXPECT_EQ(6, scene_floor.zoom_level);
    input_key_down(KEY_NUMERIC_MINUS);
    EXPECT_EQ(5, scene_floor.zoom_level);
    input_key_down(KEY_MINUS);
    EXPECT_EQ(4, scene_floor.zoom_level);
}

TEST(KeyDown, backspace_goes_up_one_level) {
    InputStage stage;
    stage.pages.write("home.orvl", EMPTY_PAGE);
    stage.pages.write("sub.orvl", EMPTY_PAGE);
    scene_load_page("home.orvl", "Home");
    load_page("sub.orvl", "Sub");
    ASSERT_EQ(1, scene_stack_depth);
    input_key_down(KEY_BACKSPACE);
    EXPECT_EQ(0, scene_stack_depth);
    EXPECT_STREQ("home.orvl", scene_page_file_name);
    input_key_down(KEY_BACKSPACE);
    EXPECT_STREQ("home.orvl", scene_page_file_name);
}

TEST(KeyDown, backspace_with_the_pointer_in_the_boxes_of_two_objects_goes_up_one_level) {
    InputStage stage;
    stage.pages.write("home.orvl", EMPTY_PAGE);
    stage.pages.write("sub.orvl", EMPTY_PAGE);
    scene_load_page("home.orvl", "Home");
    load_page("sub.orvl", "Sub");
    for (const float x : {0.0f, 1.0f}) {
        const std::int32_t id = add(NODE_OBJECT, x, 0.0f, "");
        node[id].grab_state = GRAB_HOVERED;
        node[id].bounce_active = BOUNCE_SPIN;
        node[id].angle = 90.0f;
    }
    input_key_down(KEY_BACKSPACE); // must come to its end
    EXPECT_EQ(0, scene_stack_depth);
    EXPECT_STREQ("home.orvl", scene_page_file_name);
}

// ---- mouse

TEST(Wheel, away_from_the_user_zooms_in_and_towards_the_user_out) {
    const InputStage stage;
    input_wheel(120);
    EXPECT_EQ(5, scene_floor.zoom_level);
    input_wheel(-120);
    input_wheel(-1);
    EXPECT_EQ(3, scene_floor.zoom_level);
    scene_redraw_flag = 0;
    input_wheel(0);
    EXPECT_EQ(3, scene_floor.zoom_level);
    EXPECT_EQ(1, scene_redraw_flag);
}

TEST(MouseMove, the_position_and_the_buttons_are_recorded) {
    const InputStage stage;
    input_mouse_move(10, 20, MOUSE_LEFT);
    input_mouse_move(30, 40, MOUSE_MIDDLE | MOUSE_RIGHT);
    EXPECT_EQ(MOUSE_MOVE | MOUSE_MIDDLE | MOUSE_RIGHT, mouse.flags);
    EXPECT_EQ(30, mouse.x);
    EXPECT_EQ(40, mouse.y);
    EXPECT_EQ(10, mouse.previous_x);
    EXPECT_EQ(20, mouse.previous_y);
    scene_redraw_flag = 0;
    input_button_up(MOUSE_RIGHT);
    EXPECT_EQ(MOUSE_MOVE | MOUSE_MIDDLE, mouse.flags);
    EXPECT_EQ(1, scene_redraw_flag);
}

TEST(MouseMove, a_position_left_of_the_window_is_negative) {
    const InputStage stage;
    input_mouse_move(0xfffb, 0x8000, 0);
    EXPECT_EQ(-5, mouse.x);
    EXPECT_EQ(-32768, mouse.y);
}

TEST(MouseMove, a_picture_is_asked_for_only_while_a_line_follows_the_mouse) {
    const InputStage stage;
    input_mouse_move(10, 20, 0);
    EXPECT_EQ(0, scene_redraw_flag);
    for (std::int32_t *mode : {&app_align_mode, &app_line_draw_mode}) {
        scene_redraw_flag = 0;
        *mode = 1;
        input_mouse_move(11, 20, 0);
        EXPECT_EQ(1, scene_redraw_flag);
        *mode = 0;
    }
}

TEST(MouseMove, it_is_ignored_while_another_window_is_in_front) {
    const InputStage stage;
#ifdef _WIN32
    window_attach(nullptr, nullptr);
#else
    recorder.background = true;
#endif
    input_mouse_move(10, 20, MOUSE_LEFT);
    EXPECT_EQ(0, mouse.x);
    EXPECT_EQ(0, mouse.flags);
}

// ---- double click

TEST(DoubleClick, empty_floor_maximises_or_restores_the_window) {
    const InputStage stage;
    double_click(12.0f, 12.0f);
#ifdef _WIN32
    HWND window = static_cast<HWND>(window_attached());
    EXPECT_TRUE(IsZoomed(window));
    double_click(12.0f, 12.0f);
    EXPECT_FALSE(IsZoomed(window));
#else
    EXPECT_EQ(1, recorder.toggles);
    double_click(12.0f, 12.0f);
    EXPECT_EQ(2, recorder.toggles);
#endif
    EXPECT_NE(0, mouse.flags & MOUSE_DOUBLE_CLICK);
    EXPECT_EQ(1, scene_redraw_flag);
}

TEST(DoubleClick, a_page_object_opens_its_page_whatever_the_option_says) {
    InputStage stage;
    stage.pages.write("sub.orvl", EMPTY_PAGE);
    orvanel_options.action_double_click_run = 0;
    orvanel_options.action_exit_action_1 = 1;
    add(NODE_PAGE, 0.0f, 0.0f, "sub.orvl");
    double_click(0.0f, 0.0f);
    EXPECT_STREQ("sub.orvl", scene_page_file_name);
    EXPECT_STREQ("Name", scene_page_title);
    EXPECT_FALSE(took_quit()); // quitting is for programs
}

TEST(DoubleClick, the_gap_in_an_objects_box_counts_as_the_object) {
    const InputStage stage;
    const std::int32_t id = add(NODE_PAGE, 0.0f, 0.0f, "sub.orvl");
    node[id].dimensions[EXTENT_LEFT] = -12.0f; // far more than is drawn
    stage_draw();
    const WindowPoint point = stage_window_point(-9.0f, 0.0f, NODE_REST_HEIGHT);
    EXPECT_EQ(PICK_NOTHING, selection(point.x, point.y));
    EXPECT_EQ(id, input_target(point.x, point.y));
}

TEST(DoubleClick, an_object_with_shift_held_runs_action_0_but_never_quits) {
    const InputStage stage;
    orvanel_options.action_exit_action_1 = 1;
    orvanel_options.action_exit_any = 1;
    add(NODE_OBJECT, 0.0f, 0.0f, "cmd.exe /c exit");
    input_key_down(KEY_SHIFT);
    double_click(0.0f, 0.0f);
    EXPECT_FALSE(took_quit());
    EXPECT_EQ(0, keys[KEY_SHIFT]); // the key may come up elsewhere
#ifndef _WIN32
    ASSERT_EQ(1u, recorder.starts.size());
    EXPECT_EQ("cmd.exe /c exit", recorder.starts[0].command_line);
#endif
    double_click(0.0f, 0.0f);
    EXPECT_TRUE(took_quit());
}

#ifndef _WIN32
// Here the start is only recorded; the end-to-end tests see the program start.

static int nothing_starts(const RecordedStart &) {
    return 1;
}

TEST(DoubleClick, an_object_runs_its_first_action) {
    const InputStage stage;
    add(NODE_OBJECT, 0.0f, 0.0f, "notepad $NAME.txt");
    double_click(0.0f, 0.0f);
    ASSERT_EQ(1u, recorder.starts.size());
    EXPECT_EQ("notepad Name.txt", recorder.starts[0].command_line);
    EXPECT_FALSE(took_quit());
}

TEST(DoubleClick, nothing_runs_when_the_option_is_off) {
    const InputStage stage;
    orvanel_options.action_double_click_run = 0;
    orvanel_options.action_exit_action_1 = 1;
    add(NODE_OBJECT, 0.0f, 0.0f, "notepad");
    double_click(0.0f, 0.0f);
    EXPECT_EQ(0u, recorder.starts.size());
    EXPECT_FALSE(took_quit());
}

TEST(DoubleClick, the_program_quits_after_the_action_when_the_option_asks_for_it) {
    const InputStage stage;
    orvanel_options.action_exit_action_1 = 1;
    add(NODE_OBJECT, 0.0f, 0.0f, "notepad");
    double_click(0.0f, 0.0f);
    EXPECT_TRUE(took_quit());
    EXPECT_EQ(0, recorder.quit_code);
}

TEST(DoubleClick, the_program_stays_when_the_action_failed) {
    const InputStage stage;
    orvanel_options.action_exit_action_1 = 1;
    recorder.start_result = nothing_starts;
    add(NODE_OBJECT, 0.0f, 0.0f, "notepad");
    double_click(0.0f, 0.0f);
    EXPECT_FALSE(took_quit());
    EXPECT_EQ(1u, recorder.messages.size());
}

// The keyboard goes to the program that starts before the start returns.
static int starts_and_takes_the_keyboard(const RecordedStart &) {
    input_focus_lost();
    return 0;
}

TEST(DoubleClick, shift_counts_as_held_although_the_program_that_starts_takes_the_keyboard) {
    const InputStage stage;
    orvanel_options.action_exit_action_1 = 1;
    recorder.start_result = starts_and_takes_the_keyboard;
    add(NODE_OBJECT, 0.0f, 0.0f, "notepad");
    input_key_down(KEY_SHIFT);
    double_click(0.0f, 0.0f);
    EXPECT_EQ(1u, recorder.starts.size());
    EXPECT_FALSE(took_quit());
}

TEST(DoubleClick, time_spent_in_a_message_is_not_caught_up) {
    const InputStage stage;
    recorder.start_result = nothing_starts;
    add(NODE_OBJECT, 0.0f, 0.0f, "notepad");
    next_frame_timer = timer_get_time_ms(&frame_timer) - 10'000;
    double_click(0.0f, 0.0f);
    EXPECT_FALSE(timer_is_before(next_frame_timer, timer_get_time_ms(&frame_timer)));
}

TEST(DoubleClick, a_label_does_nothing) {
    const InputStage stage;
    const std::int32_t id = stage_add(NODE_LABEL, 0.0f, 0.0f);
    text_copy(node[id].description, "A label that is wide enough");
    stage_draw();
    const WindowPoint point = stage_window_point(0.0f, 0.0f, 0.0f);
    ASSERT_EQ(id, input_target(point.x, point.y));
    input_double_click(point.x, point.y);
    EXPECT_EQ(0, recorder.toggles);
    EXPECT_EQ(0u, recorder.starts.size());
}
#endif

// ---- window

TEST(Resize, the_scene_takes_the_new_size_and_the_pick_depth_is_worked_out_anew) {
    const InputStage stage;
    ASSERT_NE(0.0f, scene_floor.pick_depth);
    input_resize(800, 500);
    EXPECT_EQ(800, scene_floor.window_width);
    EXPECT_EQ(500, scene_floor.window_height);
    EXPECT_EQ(0.0f, scene_floor.pick_depth);
    EXPECT_EQ(1, scene_redraw_flag);
}

TEST(Resize, a_minimised_window_keeps_the_size_it_had) {
    const InputStage stage;
    input_resize(0, 0);
    EXPECT_EQ(SceneStage::WIDTH, scene_floor.window_width);
    EXPECT_EQ(SceneStage::HEIGHT, scene_floor.window_height);
    input_resize(100, 0);
    EXPECT_EQ(SceneStage::WIDTH, scene_floor.window_width);
}

TEST(Paint, the_scene_is_drawn_although_nothing_changed) {
    const InputStage stage;
    input_paint();
    EXPECT_EQ(0, scene_redraw_flag); // asked for, and done
#ifndef _WIN32
    EXPECT_GE(recorder.swaps, 1);
#endif
}

TEST(Close, an_unchanged_page_is_closed_without_a_question) {
    const InputStage stage;
    const MessageScript script;
    input_close();
    EXPECT_TRUE(took_quit());
    EXPECT_EQ(0u, script.shown().size());
}

TEST(Close, a_changed_page_is_saved_thrown_away_or_kept_open_as_the_user_says) {
    InputStage stage;
    stage.pages.write("page.orvl", EMPTY_PAGE);
    for (const MessageAnswer answer :
         {MessageAnswer::Cancel, MessageAnswer::No, MessageAnswer::Yes}) {
        ASSERT_EQ(PAGE_LOADED, scene_load_page("page.orvl", "Page"));
        scene_changed = 1;
        const MessageScript script({answer});
        input_close();
        ASSERT_EQ(1u, script.shown().size());
        EXPECT_EQ("Save changes?", script.shown()[0].text);
        EXPECT_EQ(answer != MessageAnswer::Cancel, took_quit());
        EXPECT_EQ(answer != MessageAnswer::Yes, stage.pages.read("page.orvl") == EMPTY_PAGE);
    }
}
