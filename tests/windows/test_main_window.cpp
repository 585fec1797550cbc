#include "app/main_window.h"

#include "page/options.h"
#include "platform/gl.h"
#include "scene/gl_util.h"
#include "scene/interaction.h"
#include "scene/scene.h"
#include "scene/scene_page.h"
#include "tests/windows/real_window.h"

#include <gtest/gtest.h>

static constexpr GLenum SAMPLES = 0x80A9; // GL_SAMPLES, beyond the system's <GL/gl.h>

static GLint samples() {
    GLint count = 0;
    glGetIntegerv(SAMPLES, &count);
    return count;
}

TEST(ToggleFsaa, the_window_is_made_anew_with_the_format_that_the_option_asks_for) {
    const RealWindow window;
    ASSERT_EQ(1, fsaa_possible);
    EXPECT_GE(samples(), 2);
    const HWND before = hWnd;
    orvanel_options.anti_aliasing = 0;
    toggle_fsaa();
    EXPECT_NE(before, hWnd);
    EXPECT_FALSE(IsWindow(before));
    EXPECT_TRUE(IsWindowVisible(hWnd));
    EXPECT_EQ(wglGetCurrentContext(), hRC);
    EXPECT_LE(samples(), 1);
    orvanel_options.anti_aliasing = 1;
    toggle_fsaa();
    EXPECT_GE(samples(), 2);
    EXPECT_FALSE(handle_messages()); // the old window's end is not the program's
}

TEST(ToggleFsaa, the_page_the_zoom_level_and_the_place_on_the_floor_are_kept) {
    RealWindow window;
    window.write_page("sub.orvl", "<node>\n<type>label</type>\n<text>Text</text>\n"
                                  "<x_position>1</x_position>\n<y_position>2</y_position>\n"
                                  "</node>\n");
    load_page("sub.orvl", "A title");
    scene_zoom_in();
    scene_zoom_in();
    const std::int32_t level = scene_floor.zoom_level;
    const float distance = scene_floor.distance;
    scene_floor.position_x = 12.0f;
    scene_floor.position_y = -7.0f;
    toggle_fsaa();
    EXPECT_STREQ("sub.orvl", scene_page_file_name);
    EXPECT_STREQ("A title", scene_page_title);
    EXPECT_EQ(1, node_total);
    EXPECT_EQ(1, scene_stack_depth);
    EXPECT_EQ(level, scene_floor.zoom_level);
    EXPECT_EQ(distance, scene_floor.distance);
    EXPECT_EQ(12.0f, scene_floor.position_x);
    EXPECT_EQ(-7.0f, scene_floor.position_y);
    EXPECT_EQ(0u, window.script.shown().size());
}

TEST(ToggleFsaa, edit_mode_and_what_the_user_holds_are_given_up) {
    const RealWindow window;
    app_mode = APP_EDIT;
    app_line_draw_mode = 1;
    app_align_mode = 1;
    app_node_grabbed = 1;
    scene_floor.drag_state = 1;
    toggle_fsaa();
    EXPECT_EQ(APP_VIEW, app_mode);
    EXPECT_EQ(0, app_line_draw_mode);
    EXPECT_EQ(0, app_align_mode);
    EXPECT_EQ(0, app_node_grabbed);
    EXPECT_EQ(0, scene_floor.drag_state);
}

TEST(ToggleFsaa, the_window_stays_where_the_user_has_put_it) {
    const RealWindow window;
    handle_messages();
    SetWindowPos(hWnd, nullptr, 40, 60, 900, 700, SWP_NOZORDER);
    handle_messages();
    RECT before;
    GetWindowRect(hWnd, &before);
    toggle_fsaa();
    handle_messages();
    RECT after;
    GetWindowRect(hWnd, &after);
    EXPECT_EQ(before.left, after.left);
    EXPECT_EQ(before.top, after.top);
    EXPECT_EQ(before.right, after.right);
    EXPECT_EQ(before.bottom, after.bottom);
}

TEST(ToggleFsaa, a_maximised_window_is_maximised_again_and_keeps_its_normal_size) {
    const RealWindow window;
    handle_messages();
    RECT normal;
    GetWindowRect(hWnd, &normal);
    ShowWindow(hWnd, SW_MAXIMIZE);
    handle_messages();
    toggle_fsaa();
    handle_messages();
    EXPECT_TRUE(IsZoomed(hWnd));
    ShowWindow(hWnd, SW_RESTORE);
    handle_messages();
    RECT now;
    GetWindowRect(hWnd, &now);
    EXPECT_EQ(normal.right - normal.left, now.right - now.left);
    EXPECT_EQ(normal.bottom - normal.top, now.bottom - now.top);
}

TEST(ToggleFsaa, a_page_that_is_gone_meanwhile_is_reported) {
    RealWindow window;
    file_delete(window.pages.file("home.orvl").c_str());
    toggle_fsaa();
    ASSERT_EQ(1u, window.script.shown().size());
    EXPECT_EQ("Failed to open page file.", window.script.shown()[0].text);
}

TEST(ToggleFsaa, the_new_window_shows_the_page) {
    const RealWindow window;
    for (const std::int32_t anti_aliasing : {0, 1}) {
        orvanel_options.anti_aliasing = anti_aliasing;
        toggle_fsaa();
        handle_messages();
        scene_request_redraw();
        EXPECT_EQ(0, scene_draw());
        unsigned char pixel[4] = {};
        glReadPixels(scene_floor.window_width / 2 + 3, 20, 1, 1, GL_RGB, GL_UNSIGNED_BYTE, pixel);
        EXPECT_GT(pixel[2], 10); // the blue floor, not the black of nothing
    }
}
