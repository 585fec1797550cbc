// What the boxes of the options dialog change in the running program: each is clicked in the
// dialog, opened by its command over the real window, and the program is looked at afterwards.
#include "actions/command.h"
#include "actions/menu.h"
#include "actions/menu_content.h"
#include "app/commands.h"
#include "app/startup.h"
#include "dialogs/splash_screen.h"
#include "page/node.h"
#include "page/options.h"
#include "platform/gl.h"
#include "platform/locations.h"
#include "platform/text.h"
#include "resources/resource_ids.h"
#include "scene/gl_util.h"
#include "scene/interaction.h"
#include "scene/scene.h"
#include "scene/scene_page.h"
#include "tests/support/scene_stage.h"
#include "tests/windows/options_effects_fixture.h"

#include <gtest/gtest.h>

#include <commctrl.h>

#include <algorithm>
#include <cmath>

// ---- pictures of the window

struct Picture {
    int width = scene_floor.window_width, height = scene_floor.window_height;
    std::vector<unsigned char> pixels;

    Picture() : pixels(static_cast<std::size_t>(4 * width * height)) {
        scene_request_redraw();
        scene_draw();
        glReadPixels(0, 0, width, height, GL_RGBA, GL_UNSIGNED_BYTE, pixels.data());
    }
    // From the top left.
    Pixel at(int x, int y) const {
        const unsigned char *pixel =
            &pixels[static_cast<std::size_t>(4 * ((height - 1 - y) * width + x))];
        return {pixel[0], pixel[1], pixel[2]};
    }
};

// Where two pictures differ, window pixels from the top left; nothing when they are the same.
static RECT difference(const Picture &a, const Picture &b) {
    RECT area = {a.width, a.height, 0, 0};
    for (int i = 0; i < a.width * a.height; i++) {
        if (std::equal(&a.pixels[static_cast<std::size_t>(4 * i)],
                       &a.pixels[static_cast<std::size_t>(4 * i)] + 3,
                       &b.pixels[static_cast<std::size_t>(4 * i)]))
            continue;
        const LONG x = i % a.width, y = a.height - 1 - i / a.width;
        area = {std::min(area.left, x), std::min(area.top, y), std::max(area.right, x + 1),
                std::max(area.bottom, y + 1)};
    }
    return area.right > 0 ? area : RECT{};
}

static bool is_same(const Picture &a, const Picture &b) {
    const RECT area = difference(a, b);
    return IsRectEmpty(&area) != 0;
}

static RECT around_object() {
    const WindowPoint point = stage_window_point(OBJECT_X, OBJECT_Y, NODE_REST_HEIGHT);
    return {point.x - 120, point.y - 120, point.x + 120, point.y + 160};
}

static bool is_within(const RECT &inner, const RECT &outer) {
    return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
           inner.bottom <= outer.bottom;
}

TEST_F(OptionsEffects, The_objects_reflection_goes_with_its_box_and_comes_back) {
    const Picture before;
    tick(OPTIONS_GRAPHICS, RESOURCE_GRAPHICS_REFLECTIONS);
    const Picture without;
    EXPECT_FALSE(is_same(before, without));
    EXPECT_TRUE(is_within(difference(before, without), around_object()));
    tick(OPTIONS_GRAPHICS, RESOURCE_GRAPHICS_REFLECTIONS);
    EXPECT_TRUE(is_same(before, Picture()));
}

TEST_F(OptionsEffects, The_shadows_of_texts_go_with_their_box_and_come_back) {
    orvanel_options.show_home_page_title = 0;
    const Picture before;
    tick(OPTIONS_GRAPHICS, RESOURCE_GRAPHICS_TEXT_SHADOWS);
    const Picture without;
    EXPECT_FALSE(is_same(before, without));
    EXPECT_TRUE(is_within(difference(before, without), around_object())); // the object's name
    tick(OPTIONS_GRAPHICS, RESOURCE_GRAPHICS_TEXT_SHADOWS);
    EXPECT_TRUE(is_same(before, Picture()));
}

TEST_F(OptionsEffects, The_title_of_the_home_page_goes_with_its_box_and_comes_back) {
    const Picture before;
    tick(OPTIONS_GENERAL, RESOURCE_GENERAL_HOME_TITLE);
    const Picture without;
    EXPECT_FALSE(is_same(before, without));
    EXPECT_LT(difference(before, without).bottom, 100);
    tick(OPTIONS_GENERAL, RESOURCE_GENERAL_HOME_TITLE);
    EXPECT_TRUE(is_same(before, Picture()));
}

// ---- anti-aliasing

static GLint samples() {
    static constexpr GLenum SAMPLES = 0x80A9; // GL_SAMPLES, beyond the system's <GL/gl.h>
    GLint count = 0;
    glGetIntegerv(SAMPLES, &count);
    return count;
}

TEST_F(OptionsEffects, The_window_is_made_anew_without_anti_aliasing_and_with_it) {
    ASSERT_GE(samples(), 2);
    const Picture smooth;
    const HWND first = hWnd;
    tick(OPTIONS_GRAPHICS, RESOURCE_GRAPHICS_ANTI_ALIASING);
    EXPECT_NE(hWnd, first);
    EXPECT_LE(samples(), 1);
    const Picture rough;
    EXPECT_FALSE(is_same(smooth, rough));
    EXPECT_EQ(node_total, 1);
    tick(OPTIONS_GRAPHICS, RESOURCE_GRAPHICS_ANTI_ALIASING);
    EXPECT_GE(samples(), 2);
    EXPECT_TRUE(is_same(smooth, Picture()));
}

TEST_F(OptionsEffects,
       Turning_Enhanced_graphics_off_with_anti_aliasing_on_rebuilds_the_GL_window_after_OK) {
    ASSERT_GE(samples(), 2);
    const Picture before;
    const HWND first = hWnd;
    tick(OPTIONS_GRAPHICS, RESOURCE_GRAPHICS_ENHANCED);
    EXPECT_EQ(orvanel_options.anti_aliasing, 1);
    EXPECT_NE(hWnd, first);
    EXPECT_FALSE(IsWindow(first));
    EXPECT_TRUE(IsWindowVisible(hWnd));
    EXPECT_LE(samples(), 1);
    EXPECT_FALSE(is_same(before, Picture()));
    tick(OPTIONS_GRAPHICS, RESOURCE_GRAPHICS_ENHANCED);
    EXPECT_GE(samples(), 2);
    EXPECT_TRUE(is_same(before, Picture()));
}

// ---- zoom and colour

TEST_F(OptionsEffects, The_zoom_level_moves_the_camera_at_once) {
    const WindowPoint before = stage_window_point(OBJECT_X, OBJECT_Y, NODE_REST_HEIGHT);
    const Picture far_away;
    change({{OPTIONS, [](HWND dialog) {
                 const HWND track =
                     GetDlgItem(options_page(dialog, OPTIONS_GENERAL), RESOURCE_GENERAL_ZOOM);
                 for (int i = 0; i < 3; i++)
                     SendMessageA(track, WM_KEYDOWN, VK_RIGHT, 1);
             }}});
    const WindowPoint after = stage_window_point(OBJECT_X, OBJECT_Y, NODE_REST_HEIGHT);
    EXPECT_LT(after.x, before.x - 20);
    const Picture near_by;
    EXPECT_FALSE(is_same(far_away, near_by));
    EXPECT_TRUE(is_green(near_by.at(after.x, after.y)));
    EXPECT_EQ(selection(after.x, after.y), 0);
}

static void choose_black(HWND dialog) {
    const HWND list = GetDlgItem(options_page(dialog, OPTIONS_GENERAL), RESOURCE_GENERAL_COLOUR);
    while (SendMessageA(list, CB_GETCURSEL, 0, 0) != 5)
        SendMessageA(list, WM_KEYDOWN, VK_DOWN, 1);
}

static Pixel floor_pixel() {
    return Picture().at(scene_floor.window_width / 2 + 7, scene_floor.window_height - 12);
}

TEST_F(OptionsEffects, Another_default_colour_covers_a_page_of_the_default_colour_only) {
    for (const std::int32_t uses_default : {1, 0}) {
        text_copy(orvanel_options.default_page_colour_name, "Blue");
        scene_floor.colour = {
            .use_default = uses_default, .red = 0.6f, .green = 0.1f, .blue = 0.1f, .alpha = 0.8f};
        scene_invalidate_floor();
        const Pixel before = floor_pixel();
        change({{OPTIONS, choose_black}});
        const Pixel after = floor_pixel();
        EXPECT_GT(before.red, 60);
        if (uses_default == 1)
            EXPECT_LT(after.red, 40);
        else
            EXPECT_EQ(after.red, before.red);
    }
}

// ---- the page folder

TEST_F(OptionsEffects, A_new_folder_gets_copies_of_the_pages_and_shows_its_home_page) {
    TestFolder target;
    window.write_page("extra.orvl");
    load_page("sub.orvl", "Sub");
    ASSERT_EQ(scene_stack_depth, 1);
    ASSERT_EQ(node_total, 0);
    window.script.answer({MessageAnswer::Yes});
    choose_folder(target.path);
    ASSERT_EQ(window.script.shown().size(), 2u);
    EXPECT_EQ(window.script.shown()[1].text,
              "Your page files have been copied to the new Page file folder.\n\n"
              "Orvanel will now reload the Home page from the new location.");
    for (const char *page : {"home.orvl", "sub.orvl", "extra.orvl"})
        EXPECT_EQ(target.read(page), window.pages.read(page)) << page;
    EXPECT_EQ(scene_stack_depth, 0);
    EXPECT_STREQ(scene_page_file_name, "home.orvl");
    EXPECT_EQ(node_total, 1);
    target.write("sub.orvl", target.read("home.orvl")); // pages come from there from now on
    load_page("sub.orvl", "Sub");
    EXPECT_EQ(node_total, 1);
    EXPECT_NE(file.text().find(target.path), std::string::npos);
}

TEST_F(OptionsEffects, An_invalid_folder_leaves_page_and_settings_as_they_are) {
    load_page("sub.orvl", "Sub");
    const std::string before = page_dir_location;
    DialogPlayer player({{OPTIONS,
                          [](HWND dialog) {
                              click(options_open_page(dialog, OPTIONS_GRAPHICS),
                                    RESOURCE_GRAPHICS_REFLECTIONS);
                              type(options_page(dialog, OPTIONS_GENERAL), RESOURCE_GENERAL_FOLDER,
                                   "C:\\orvanel test\\missing");
                              click(dialog, IDOK);
                          }},
                         {OPTIONS, [](HWND dialog) { click(dialog, IDCANCEL); }}});
    command_run(COMMAND_OPTIONS);
    EXPECT_TRUE(player.done());
    EXPECT_EQ(window.script.shown().size(), 1u);
    EXPECT_EQ(page_dir_location, before);
    EXPECT_STREQ(scene_page_file_name, "sub.orvl");
    EXPECT_EQ(orvanel_options.reflections, 1);
    EXPECT_EQ(file.text(), "");
}

TEST_F(OptionsEffects, A_read_only_options_file_only_warns_and_the_change_is_seen) {
    xml_save_options();
    const std::string saved = file.text();
    const Picture before;
    file.set_read_only(true);
    tick(OPTIONS_GRAPHICS, RESOURCE_GRAPHICS_REFLECTIONS);
    file.set_read_only(false);
    ASSERT_EQ(window.script.shown().size(), 1u);
    EXPECT_EQ(window.script.shown()[0].text, "The options file (options.xml) is read-only.  Any "
                                             "alterations will be lost when Orvanel is closed.");
    EXPECT_FALSE(is_same(before, Picture()));
    EXPECT_EQ(file.text(), saved);
}

// ---- zoom between pages, questions, actions

TEST_F(OptionsEffects, The_zoom_level_is_kept_between_pages_when_its_box_is_ticked) {
    for (const std::int32_t kept : {0, 1}) {
        scene_zoom_in();
        scene_zoom_in();
        load_page("sub.orvl", "Sub");
        EXPECT_EQ(scene_floor.zoom_level, kept == 1 ? 6 : orvanel_options.initial_zoom_level);
        scene_page_back();
        tick(OPTIONS_GENERAL, RESOURCE_GENERAL_MAINTAIN_ZOOM);
        scene_floor_init();
        scene_floor.zoom_level = orvanel_options.initial_zoom_level;
    }
}

static void delete_object() {
    const WindowPoint point = stage_window_point(node[0].x, node[0].y, NODE_REST_HEIGHT);
    pre_dialog_mouse = {point.x, point.y};
    command_run(COMMAND_DELETE);
}

TEST_F(OptionsEffects, An_object_is_deleted_after_a_question_when_the_box_is_ticked) {
    app_mode = APP_EDIT;
    tick(OPTIONS_GENERAL, RESOURCE_GENERAL_CONFIRM_OBJECT);
    const Picture shown;
    window.script.answer({MessageAnswer::No});
    delete_object();
    ASSERT_EQ(window.script.shown().size(), 1u);
    EXPECT_EQ(window.script.shown()[0].text, "Are you sure?");
    EXPECT_EQ(node_total, 1);
    tick(OPTIONS_GENERAL, RESOURCE_GENERAL_CONFIRM_OBJECT);
    delete_object();
    EXPECT_EQ(window.script.shown().size(), 1u);
    EXPECT_EQ(node_total, 0);
    scene_changed = 0;
}

TEST_F(OptionsEffects, The_file_of_a_deleted_page_is_asked_for_when_the_box_is_ticked) {
    app_mode = APP_EDIT;
    for (const bool asks : {true, false}) {
        window.write_page("other.orvl");
        node[0].type = NODE_PAGE;
        text_copy(node[0].actions[0]->command, "other.orvl");
        node_total = 1;
        const Picture shown;
        const std::size_t before = window.script.shown().size();
        if (asks)
            window.script.answer({MessageAnswer::No});
        delete_object();
        EXPECT_EQ(window.script.shown().size(), before + (asks ? 1 : 0));
        EXPECT_EQ(file_exists(window.pages.file("other.orvl").c_str()), asks);
        tick(OPTIONS_GENERAL, RESOURCE_GENERAL_CONFIRM_PAGE_FILE);
    }
    scene_changed = 0;
}

static bool double_click_quits() {
    const Picture shown;
    const WindowPoint point = stage_window_point(node[0].x, node[0].y, NODE_REST_HEIGHT);
    return post(WM_LBUTTONDBLCLK, 0, MAKELPARAM(point.x, point.y));
}

TEST_F(OptionsEffects, A_double_click_runs_the_first_action_as_long_as_its_box_is_ticked) {
    EXPECT_FALSE(double_click_quits());
    EXPECT_STREQ(scene_page_file_name, "sub.orvl");
    scene_page_back();
    tick(OPTIONS_ACTIONS, RESOURCE_ACTIONS_DOUBLE_CLICK);
    EXPECT_FALSE(double_click_quits());
    EXPECT_STREQ(scene_page_file_name, "home.orvl");
}

TEST_F(OptionsEffects, The_program_ends_after_action_1_when_its_box_is_ticked) {
    tick(OPTIONS_ACTIONS, RESOURCE_ACTIONS_EXIT_FIRST);
    EXPECT_TRUE(double_click_quits());
}

TEST_F(OptionsEffects, The_program_ends_after_any_action_of_the_menu_when_its_box_is_ticked) {
    for (const bool ends : {false, true}) {
        const Picture shown;
        const WindowPoint point = stage_window_point(node[0].x, node[0].y, NODE_REST_HEIGHT);
        pre_dialog_mouse = {point.x, point.y};
        EXPECT_EQ(post(WM_COMMAND, COMMAND_ACTION_FIRST), ends);
        scene_page_back();
        if (!ends)
            tick(OPTIONS_ACTIONS, RESOURCE_ACTIONS_EXIT_ANY);
    }
}

TEST_F(OptionsEffects, The_start_warns_of_a_slow_graphics_card_unless_the_box_is_ticked) {
    tick(OPTIONS_GRAPHICS, RESOURCE_GRAPHICS_NO_WARNINGS);
    startup_graphics_check(1);
    EXPECT_TRUE(window.script.shown().empty());
    EXPECT_EQ(orvanel_options.good_graphics_card, 1);
    tick(OPTIONS_GRAPHICS, RESOURCE_GRAPHICS_NO_WARNINGS);
    startup_graphics_check(1);
    EXPECT_EQ(window.script.shown().size(), 1u);
    EXPECT_EQ(orvanel_options.good_graphics_card, 0);
}

static MenuContent menu_of_object() {
    MenuContent content = {};
    menu_content_build(&content, MENU_ACTION, 0);
    return content;
}

TEST_F(OptionsEffects, The_action_menu_has_a_title_and_icons_when_their_boxes_are_ticked) {
    ASSERT_EQ(menu_of_object().entries[0].kind, MENU_ENTRY_COMMAND);
    EXPECT_STRNE(menu_of_object().entries[0].icon_source, "");
    tick(OPTIONS_ACTIONS, RESOURCE_ACTIONS_MENU_TITLE);
    EXPECT_EQ(menu_of_object().entries[0].kind, MENU_ENTRY_TITLE);
    EXPECT_STREQ(menu_of_object().entries[0].text, "Server");
    tick(OPTIONS_ACTIONS, RESOURCE_ACTIONS_MENU_ICONS);
    EXPECT_STREQ(menu_of_object().entries[1].icon_source, "");
}

static bool splash_screen_is_shown() {
    for (HWND window = nullptr;
         (window = FindWindowExA(nullptr, window, "#32770", "")) != nullptr;) {
        DWORD process = 0;
        GetWindowThreadProcessId(window, &process);
        if (process == GetCurrentProcessId() && IsWindowVisible(window))
            return true;
    }
    return false;
}

TEST_F(OptionsEffects, The_splash_screen_is_shown_at_the_start_as_long_as_its_box_is_ticked) {
    static constexpr int LOOKS = 1000; // ten seconds
    startup_splash_screen();
    for (int look = 0; look < LOOKS && !splash_screen_is_shown(); look++)
        Sleep(10);
    EXPECT_TRUE(splash_screen_is_shown());
    splash_screen_hide();
    for (int look = 0; look < LOOKS && splash_screen_is_shown(); look++)
        Sleep(10);
    tick(OPTIONS_GENERAL, RESOURCE_GENERAL_SPLASH_SCREEN);
    startup_splash_screen();
    Sleep(300); // milliseconds; its thread would have come to its window
    EXPECT_FALSE(splash_screen_is_shown());
}

// ---- motion

// Whether a picture of an object under the mouse still changes once it has grown.
static bool object_turns() {
    node[0].grab_state = GRAB_HOVERED;
    for (int frame = 0; frame < 120; frame++)
        scene_process_frame();
    const Picture first;
    for (int frame = 0; frame < 20; frame++)
        scene_process_frame();
    const bool turns = !is_same(first, Picture());
    node[0].grab_state = GRAB_IDLE;
    for (int frame = 0; frame < 400; frame++)
        scene_process_frame();
    return turns;
}

TEST_F(OptionsEffects, An_object_under_the_mouse_turns_as_long_as_its_box_is_ticked) {
    EXPECT_TRUE(object_turns());
    tick(OPTIONS_GRAPHICS, RESOURCE_GRAPHICS_ROTATION);
    EXPECT_FALSE(object_turns());
    tick(OPTIONS_GRAPHICS, RESOURCE_GRAPHICS_ROTATION);
    EXPECT_TRUE(object_turns());
}

// Throws what is at a window position to the right, and lets 20 frames pass.
static void throw_from(WindowPoint point) {
    SetForegroundWindow(hWnd);
    SendMessageA(hWnd, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(point.x, point.y));
    for (int step = 1; step <= 8; step++) {
        Sleep(8); // milliseconds; the speed of a hand is measured
        SetForegroundWindow(hWnd);
        SendMessageA(hWnd, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(point.x + 10 * step, point.y));
    }
    SendMessageA(hWnd, WM_LBUTTONUP, 0, MAKELPARAM(point.x + 80, point.y));
}

static float way_in_20_frames(const float *coordinate) {
    const float before = *coordinate;
    for (int frame = 0; frame < 20; frame++)
        scene_process_frame();
    return std::abs(*coordinate - before);
}

TEST_F(OptionsEffects, A_thrown_page_coasts_on_when_its_box_is_ticked) {
    for (const bool coasts : {false, true}) {
        scene_floor_init();
        const Picture shown;
        throw_from({scene_floor.window_width / 2, scene_floor.window_height - 60});
        EXPECT_EQ(way_in_20_frames(&scene_floor.position_x) > 0.5f, coasts);
        scene_floor_init();
        tick(OPTIONS_GRAPHICS, RESOURCE_GRAPHICS_PAGE_INERTIA);
    }
}

TEST_F(OptionsEffects, A_thrown_object_glides_on_when_its_box_is_ticked) {
    app_mode = APP_EDIT;
    for (const bool glides : {false, true}) {
        const Picture shown;
        throw_from(stage_window_point(node[0].x, node[0].y, NODE_REST_HEIGHT));
        EXPECT_EQ(way_in_20_frames(&node[0].x) > 0.5f, glides);
        node[0].inertia_frames = 0;
        tick(OPTIONS_GRAPHICS, RESOURCE_GRAPHICS_OBJECT_INERTIA);
    }
    scene_changed = 0;
}
