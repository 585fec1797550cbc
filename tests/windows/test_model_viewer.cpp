#include "dialogs/model_viewer.h"

#include "assets/model.h"
#include "dialogs/model_viewer_canvas.h"
#include "dialogs/rules/model_spin.h"
#include "dialogs/rules/model_viewer_picture.h"
#include "page/node.h"
#include "page/options.h"
#include "platform/gl.h"
#include "platform/locations.h"
#include "platform/text.h"
#include "resources/resource_ids.h"
#include "scene/gl_util.h"
#include "scene/scene.h"
#include "tests/windows/memory_use.h"
#include "tests/windows/model_viewer_stage.h"

#include <gtest/gtest.h>

#include <vector>

struct ModelViewer : testing::Test, ModelViewerStage {
    ModelViewer() {
        open();
        handle_messages();
    }
};

TEST_F(ModelViewer, begins_with_the_built_in_model_turning_slowly) {
    close();
    open();
    ASSERT_NE(viewer, nullptr);
    EXPECT_EQ(model_viewer_model_id, 0);
    EXPECT_EQ(model_viewer_model_speed, -0.55f);
    EXPECT_EQ(model_viewer_mouse_grab_x, -1.0f);
    EXPECT_NE(model_viewer_RC, nullptr);
    EXPECT_NE(model_viewer_RC, hRC);
}

TEST_F(ModelViewer, the_main_window_has_its_context_back_after_every_message) {
    expect_main_context(); // the control has been made
    paint();
    expect_main_context();
    size(150, 90);
    expect_main_context();
    DestroyWindow(viewer);
    expect_main_context();
    EXPECT_EQ(model_viewer_RC, nullptr);
    EXPECT_EQ(model_viewer_DC, nullptr);
}

TEST_F(ModelViewer, with_no_context_current_there_is_none_afterwards_either) {
    wglMakeCurrent(nullptr, nullptr);
    model_viewer_scene_draw();
    EXPECT_EQ(wglGetCurrentContext(), nullptr);
    wglMakeCurrent(hDC, hRC);
}

TEST_F(ModelViewer, shows_the_model_that_it_is_told_to) {
    send(MODEL_VIEWER_SHOW, 7);
    EXPECT_EQ(model_viewer_model_id, 7);
    send(MODEL_VIEWER_SHOW, static_cast<WPARAM>(-1));
    EXPECT_EQ(model_viewer_model_id, -1);
}

TEST_F(ModelViewer, is_painted_whole_and_turns_the_model_a_step_each_time) {
    KillTimer(viewer, 33);
    handle_messages();
    model_viewer_model_angle = 100.0f;
    InvalidateRect(viewer, nullptr, FALSE);
    UpdateWindow(viewer);
    EXPECT_FLOAT_EQ(model_viewer_model_angle, 99.45f);
    EXPECT_FALSE(GetUpdateRect(viewer, nullptr, FALSE));
    handle_messages();
    EXPECT_FLOAT_EQ(model_viewer_model_angle, 99.45f);
}

TEST_F(ModelViewer, with_no_model_to_show_nothing_turns) {
    KillTimer(viewer, 33);
    handle_messages();
    model_viewer_model_angle = 100.0f;
    model_viewer_model_inertia = 2.0f;
    send(MODEL_VIEWER_SHOW, static_cast<WPARAM>(-1));
    paint();
    EXPECT_EQ(model_viewer_model_angle, 100.0f);
    EXPECT_EQ(model_viewer_model_inertia, 2.0f);
    send(MODEL_VIEWER_SHOW, 0);
    paint();
    EXPECT_FLOAT_EQ(model_viewer_model_angle, 101.45f);
}

TEST_F(ModelViewer, its_timer_asks_for_the_whole_picture_without_erasing) {
    KillTimer(viewer, 33);
    handle_messages();
    ValidateRect(viewer, nullptr);
    send(WM_TIMER, 33);
    RECT dirty = {}, client;
    EXPECT_TRUE(GetUpdateRect(viewer, &dirty, FALSE));
    GetClientRect(viewer, &client);
    EXPECT_TRUE(EqualRect(&dirty, &client));
    EXPECT_EQ(SendMessageA(viewer, WM_ERASEBKGND, reinterpret_cast<WPARAM>(model_viewer_DC), 0), 0);
}

TEST_F(ModelViewer, keeps_turning_by_itself) {
    const float angle = model_viewer_model_angle;
    for (int i = 0; i < 500 && model_viewer_model_angle == angle; i++) {
        handle_messages();
        Sleep(10);
    }
    EXPECT_NE(model_viewer_model_angle, angle);
}

TEST_F(ModelViewer, the_mouse_takes_hold_turns_and_throws_the_model) {
    KillTimer(viewer, 33);
    handle_messages();
    model_viewer_model_angle = 100.0f;
    send(WM_LBUTTONDOWN, MK_LBUTTON, 50, 20);
    EXPECT_EQ(GetCapture(), viewer);
    EXPECT_EQ(model_viewer_grab_angle, 100.0f);
    EXPECT_EQ(model_viewer_mouse_grab_x, 50.0f);
    send(WM_MOUSEMOVE, MK_LBUTTON, 80, 20);
    paint();
    EXPECT_EQ(model_viewer_model_angle, 130.0f);
    send(WM_MOUSEMOVE, MK_LBUTTON, -6, 20); // outside, to the left
    paint();
    EXPECT_EQ(model_viewer_model_angle, 44.0f);
    send(WM_MOUSEMOVE, MK_LBUTTON, -2, 20);
    send(WM_LBUTTONUP, 0, -2, 20);
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_EQ(model_viewer_mouse_grab_x, -1.0f);
    EXPECT_EQ(model_viewer_model_inertia, 4.0f);
    EXPECT_EQ(model_viewer_model_speed, 0.55f);
}

TEST_F(ModelViewer, a_drag_that_another_window_takes_away_ends_without_a_throw) {
    send(WM_LBUTTONDOWN, MK_LBUTTON, 50, 20);
    send(WM_MOUSEMOVE, MK_LBUTTON, 80, 20);
    SetCapture(dialog);
    EXPECT_EQ(model_viewer_mouse_grab_x, -1.0f);
    EXPECT_EQ(model_viewer_model_inertia, 0.0f);
    send(WM_LBUTTONUP, 0, 80, 20);
    EXPECT_EQ(GetCapture(), dialog);
    ReleaseCapture();
}

static HCURSOR cursor(int resource) {
    return LoadCursorA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(resource));
}

TEST_F(ModelViewer, the_cursor_tells_that_the_model_can_be_turned_and_that_it_is_held) {
    ASSERT_NE(cursor(RESOURCE_CURSOR_TURN), nullptr);
    ASSERT_NE(cursor(RESOURCE_CURSOR_TURNING), nullptr);
    EXPECT_EQ(SendMessageA(viewer, WM_SETCURSOR, reinterpret_cast<WPARAM>(viewer),
                           MAKELPARAM(HTCLIENT, WM_MOUSEMOVE)),
              TRUE);
    EXPECT_EQ(GetCursor(), cursor(RESOURCE_CURSOR_TURN));
    send(WM_LBUTTONDOWN, MK_LBUTTON, 50, 20);
    EXPECT_EQ(GetCursor(), cursor(RESOURCE_CURSOR_TURNING));
    send(WM_LBUTTONUP, 0, 50, 20);
    EXPECT_EQ(GetCursor(), cursor(RESOURCE_CURSOR_TURN));
}

TEST_F(ModelViewer, the_cursor_is_the_arrow_where_models_do_not_turn) {
    const HCURSOR arrow = LoadCursorA(nullptr, IDC_ARROW);
    for (std::int32_t *option :
         {&orvanel_options.good_graphics_card, &orvanel_options.object_rotation}) {
        *option = 0;
        send(WM_SETCURSOR, 0, HTCLIENT, WM_MOUSEMOVE);
        EXPECT_EQ(GetCursor(), arrow);
        send(WM_LBUTTONDOWN, MK_LBUTTON, 50, 20);
        EXPECT_EQ(GetCursor(), arrow);
        send(WM_LBUTTONUP, 0, 50, 20);
        *option = 1;
    }
}

// ---- what the screen shows

static COLORREF screen_pixel(HWND control, int x, int y) {
    POINT position = {x, y};
    ClientToScreen(control, &position);
    const HDC screen = GetDC(nullptr);
    const COLORREF colour =
        GetPixel(screen, static_cast<int>(position.x), static_cast<int>(position.y));
    ReleaseDC(nullptr, screen);
    return colour;
}

// The control's picture as it stands in its own buffer before the swap.
struct Picture {
    int width, height; // pixels
    std::vector<std::uint8_t> rgb;
};

static Picture picture_of(HWND viewer) {
    RECT client;
    GetClientRect(viewer, &client);
    Picture picture = {static_cast<int>(client.right), static_cast<int>(client.bottom), {}};
    picture.rgb.resize(static_cast<std::size_t>(3 * picture.width * picture.height));
    wglMakeCurrent(model_viewer_DC, model_viewer_RC);
    model_viewer_picture_draw();
    glReadBuffer(GL_BACK);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, picture.width, picture.height, GL_RGB, GL_UNSIGNED_BYTE, picture.rgb.data());
    wglMakeCurrent(hDC, hRC);
    return picture;
}

static std::size_t count_green(const Picture &picture) {
    std::size_t count = 0;
    for (std::size_t i = 0; i < picture.rgb.size(); i += 3) {
        const std::uint8_t *pixel = &picture.rgb[i];
        count += pixel[1] > pixel[0] + 40 && pixel[1] > pixel[2] + 40 ? 1 : 0;
    }
    return count;
}

TEST_F(ModelViewer, the_picture_fills_the_control_and_shows_the_model_in_its_colours) {
    const Picture picture = picture_of(viewer);
    EXPECT_GT(count_green(picture), picture.rgb.size() / 3 / 12); // the built-in model
    const std::size_t corner = picture.rgb.size() - 3;            // top right
    const COLORREF face = GetSysColor(COLOR_3DFACE);
    EXPECT_NEAR(picture.rgb[corner], GetRValue(face), 1);
    EXPECT_NEAR(picture.rgb[corner + 1], GetGValue(face), 1);
    EXPECT_NEAR(picture.rgb[corner + 2], GetBValue(face), 1);
    EXPECT_LT(picture.rgb[0], GetRValue(face)); // bottom left: the floor
}

// Of a grid of points of the control, how many have on the screen the colour they have in picture.
static int count_seen(HWND viewer, const Picture &picture, int *looked_at) {
    static constexpr int STEP = 8;      // pixels
    static constexpr int TOLERANCE = 8; // of 255
    int seen = 0;
    *looked_at = 0;
    for (int y = STEP; y < picture.height; y += STEP) {
        for (int x = STEP; x < picture.width; x += STEP) {
            const COLORREF shown = screen_pixel(viewer, x, y);
            const std::uint8_t *drawn = &picture.rgb[static_cast<std::size_t>(
                3 * ((picture.height - 1 - y) * picture.width + x))];
            seen += abs(GetRValue(shown) - drawn[0]) <= TOLERANCE &&
                            abs(GetGValue(shown) - drawn[1]) <= TOLERANCE &&
                            abs(GetBValue(shown) - drawn[2]) <= TOLERANCE
                        ? 1
                        : 0;
            ++*looked_at;
        }
    }
    return seen;
}

TEST_F(ModelViewer, the_picture_is_seen_on_the_screen) {
    KillTimer(viewer, 33);
    handle_messages();
    model_viewer_model_speed = 0.0f;
    const Picture picture = picture_of(viewer);
    ASSERT_GT(count_green(picture), 0u);
    int looked_at = 0, seen = 0;
    for (int i = 0; i < 100 && (i == 0 || seen < looked_at); i++) {
        paint();
        handle_messages();
        Sleep(10);
        seen = count_seen(viewer, picture, &looked_at);
    }
    EXPECT_EQ(seen, looked_at);
}

// Both ways of drawing on every system, whichever is the one that it shows.
TEST_F(ModelViewer, draws_the_same_into_the_control_as_into_a_hidden_window) {
    Picture pictures[2];
    for (const ViewerCanvas canvas : {ViewerCanvas::InControl, ViewerCanvas::Hidden}) {
        close();
        model_viewer_canvas_choose(canvas);
        open();
        EXPECT_EQ(WindowFromDC(model_viewer_DC) == viewer, canvas == ViewerCanvas::InControl);
        model_viewer_scene_draw();
        expect_main_context();
        size(120, 80);
        model_viewer_model_angle = 100.0f;
        pictures[canvas == ViewerCanvas::Hidden] = picture_of(viewer);
    }
    model_viewer_canvas_choose(model_viewer_canvas_of_system());
    EXPECT_GT(count_green(pictures[0]), pictures[0].rgb.size() / 3 / 12);
    std::size_t different = 0;
    for (std::size_t i = 0; i < pictures[0].rgb.size(); i++)
        different += abs(pictures[0].rgb[i] - pictures[1].rgb[i]) > 8 ? 1 : 0;
    EXPECT_EQ(different, 0u);
}

TEST_F(ModelViewer, the_picture_follows_the_size_of_the_control) {
    size(120, 80);
    const Picture picture = picture_of(viewer);
    EXPECT_EQ(picture.width, 118);
    EXPECT_EQ(picture.height, 78);
    EXPECT_GT(count_green(picture), picture.rgb.size() / 3 / 12);
    GLint viewport[4] = {};
    wglMakeCurrent(model_viewer_DC, model_viewer_RC);
    glGetIntegerv(GL_VIEWPORT, viewport);
    wglMakeCurrent(hDC, hRC);
    EXPECT_EQ(viewport[2], 118);
    EXPECT_EQ(viewport[3], 78);
}

TEST_F(ModelViewer, with_no_model_the_control_shows_the_background_of_the_dialog) {
    send(MODEL_VIEWER_SHOW, static_cast<WPARAM>(-1));
    const Picture picture = picture_of(viewer);
    EXPECT_EQ(count_green(picture), 0u);
    EXPECT_NEAR(picture.rgb[0], GetRValue(GetSysColor(COLOR_3DFACE)), 1);
}

static constexpr COLORREF LIGHT_GREY = RGB(192, 192, 192);

static bool becomes_grey(HWND viewer, int x, int y) {
    for (int i = 0; i < 300 && screen_pixel(viewer, x, y) != LIGHT_GREY; i++) {
        handle_messages();
        Sleep(10);
    }
    return screen_pixel(viewer, x, y) == LIGHT_GREY;
}

TEST_F(ModelViewer, a_frame_of_light_grey_stands_around_the_picture) {
    RECT client, whole;
    GetClientRect(viewer, &client);
    GetWindowRect(viewer, &whole);
    EXPECT_EQ(whole.right - whole.left, client.right + 2);
    EXPECT_EQ(whole.bottom - whole.top, client.bottom + 2);
    const int right = static_cast<int>(client.right), bottom = static_cast<int>(client.bottom);
    EXPECT_TRUE(becomes_grey(viewer, -1, -1));
    EXPECT_TRUE(becomes_grey(viewer, right / 2, -1));
    EXPECT_TRUE(becomes_grey(viewer, -1, bottom / 2));
    EXPECT_TRUE(becomes_grey(viewer, right, bottom / 2));
    EXPECT_TRUE(becomes_grey(viewer, right, bottom));
    EXPECT_NE(screen_pixel(viewer, -2, -2), LIGHT_GREY);
}

TEST_F(ModelViewer, the_frame_stays_when_the_dialog_is_painted_anew) {
    RedrawWindow(dialog, nullptr, nullptr,
                 RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN | RDW_FRAME | RDW_UPDATENOW);
    EXPECT_TRUE(becomes_grey(viewer, -1, 20));
}

static int samples_of_viewer() {
    GLint samples = -1;
    wglMakeCurrent(model_viewer_DC, model_viewer_RC);
    glGetIntegerv(0x80A9 /* GL_SAMPLES */, &samples);
    wglMakeCurrent(hDC, hRC);
    return samples;
}

TEST_F(ModelViewer, is_anti_aliased_as_the_main_window_is) {
    if (!arbMultisampleSupported)
        GTEST_SKIP() << "this driver has no multisampled formats";
    EXPECT_GE(samples_of_viewer(), 2);
    EXPECT_EQ(GetPixelFormat(model_viewer_DC), arbMultisampleFormat);
    close();
    orvanel_options.anti_aliasing = 0;
    open();
    EXPECT_LE(samples_of_viewer(), 1);
}

static std::vector<std::uint8_t> main_picture() {
    scene_request_redraw();
    scene_draw();
    scene_request_redraw();
    scene_draw();
    std::vector<std::uint8_t> pixels(600 * 400 * 3);
    glReadBuffer(GL_FRONT);
    glReadPixels(300, 200, 600, 400, GL_RGB, GL_UNSIGNED_BYTE, pixels.data());
    return pixels;
}

TEST_F(ModelViewer, the_main_window_draws_its_objects_as_before) {
    ShowWindow(dialog, SW_HIDE);
    handle_messages();
    node_init_node(node_total);
    node[node_total].type = NODE_OBJECT;
    node_total++;
    const std::vector<std::uint8_t> before = main_picture();
    const std::uint32_t list = models[0].display_list;
    ASSERT_EQ(models[0].display_list_compiled, 1);
    model_viewer_scene_draw();
    EXPECT_EQ(models[0].display_list, list);
    EXPECT_EQ(models[0].display_list_compiled, 1);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
    EXPECT_TRUE(main_picture() == before);
}

// ---- growth

static int lists_of_main_window() {
    int count = 0;
    for (GLuint name = 1; name < 3000; name++)
        count += glIsList(name) + glIsTexture(name);
    return count;
}

static void make_and_destroy(HWND dialog, int times) {
    for (int i = 0; i < times; i++) {
        const HWND viewer =
            CreateWindowExA(0, MODEL_VIEWER_CLASS, "", WS_CHILD | WS_VISIBLE, 0, 0, 100, 80, dialog,
                            nullptr, GetModuleHandleA(nullptr), nullptr);
        ASSERT_NE(model_viewer_RC, nullptr) << i;
        model_viewer_scene_draw();
        DestroyWindow(viewer);
    }
}

TEST_F(ModelViewer, making_and_destroying_it_300_times_leaves_nothing_behind) {
    // The dialogs' own tests open it without; this one is to have what the driver offers.
    EXPECT_EQ(samples_of_viewer() >= 2, arbMultisampleSupported == 1);
    DestroyWindow(viewer);
    make_and_destroy(dialog, 20);
    const int lists = lists_of_main_window();
    const long long heap = heap_bytes(), working_set = working_set_bytes();
    make_and_destroy(dialog, 300);
    EXPECT_EQ(lists_of_main_window(), lists);
    EXPECT_LT(heap_bytes(), heap + 15 * 1024);               // 50 a time
    EXPECT_LT(working_set_bytes(), working_set + (8 << 20)); // a driver's caches
    expect_main_context();
}
