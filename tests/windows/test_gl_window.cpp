#include "scene/gl_window.h"

#include "page/options.h"
#include "platform/gl.h"
#include "platform/window.h"
#include "scene/scene_floor.h"

#include <gtest/gtest.h>

static constexpr GLenum SAMPLES = 0x80A9; // GL_SAMPLES, beyond the system's <GL/gl.h>

static void register_class() {
    WNDCLASSEXA window_class = {};
    window_class.cbSize = sizeof window_class;
    window_class.style = CS_HREDRAW | CS_VREDRAW | CS_DBLCLKS;
    window_class.lpfnWndProc = DefWindowProcA;
    window_class.hInstance = GetModuleHandleA(nullptr);
    window_class.hCursor = LoadCursorA(nullptr, IDC_ARROW);
    window_class.hbrBackground = static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH));
    window_class.lpszClassName = MAIN_WINDOW_CLASS;
    RegisterClassExA(&window_class);
}

struct MainWindow {
    HDC dc = nullptr;
    HGLRC context = nullptr;
    HWND window = nullptr;

    explicit MainWindow(bool anti_aliasing, std::int32_t width = 800, std::int32_t height = 600) {
        register_class();
        options_set_defaults();
        orvanel_options.anti_aliasing = anti_aliasing ? 1 : 0;
        scene_floor.window_width = width;
        scene_floor.window_height = height;
        screen_size(&screen_size_x, &screen_size_y);
        window = gl_create_window(&dc, &context, "Orvanel");
    }
    ~MainWindow() {
        if (window != nullptr)
            gl_destroy_window(window, dc, context);
    }
    MainWindow(const MainWindow &) = delete;
    MainWindow &operator=(const MainWindow &) = delete;
};

static GLint gl_integer(GLenum name) {
    GLint value = -1;
    glGetIntegerv(name, &value);
    return value;
}

TEST(GlWindow, has_the_client_size_asked_for_and_stands_in_the_middle_of_the_screen) {
    const MainWindow main(false, 1280, 980);
    ASSERT_NE(main.window, nullptr);
    RECT client, frame;
    GetClientRect(main.window, &client);
    GetWindowRect(main.window, &frame);
    EXPECT_EQ(client.right, 1280);
    EXPECT_EQ(client.bottom, 980);
    EXPECT_NEAR(frame.left + frame.right, screen_size_x, 2);
    EXPECT_NEAR(frame.top + frame.bottom, screen_size_y, 2);
}

TEST(GlWindow, keeps_its_title_bar_on_a_screen_that_is_too_small) {
    const MainWindow main(false, 9000, 9000);
    ASSERT_NE(main.window, nullptr);
    RECT frame;
    GetWindowRect(main.window, &frame);
    EXPECT_GE(frame.left, 0);
    EXPECT_GE(frame.top, 0);
}

TEST(GlWindow, is_an_overlapped_application_window_of_the_main_class) {
    const MainWindow main(true);
    char name[64] = "", title[64] = "";
    GetClassNameA(main.window, name, sizeof name);
    GetWindowTextA(main.window, title, sizeof title);
    EXPECT_STREQ(name, "orvanel:main_window");
    EXPECT_STREQ(title, "Orvanel");
    const LONG style = GetWindowLongA(main.window, GWL_STYLE);
    const LONG wanted = WS_CAPTION | WS_THICKFRAME | WS_SYSMENU | WS_MINIMIZEBOX | WS_MAXIMIZEBOX |
                        WS_CLIPCHILDREN | WS_CLIPSIBLINGS;
    EXPECT_EQ(style & wanted, wanted);
    EXPECT_EQ(style & WS_VISIBLE, 0);
    EXPECT_NE(GetWindowLongA(main.window, GWL_EXSTYLE) & WS_EX_APPWINDOW, 0);
}

TEST(GlWindow, its_context_is_current_and_set_up_for_the_scene) {
    for (const bool anti_aliasing : {false, true}) {
        const MainWindow main(anti_aliasing);
        EXPECT_EQ(wglGetCurrentContext(), main.context);
        EXPECT_EQ(wglGetCurrentDC(), main.dc);
        EXPECT_EQ(gl_integer(GL_SHADE_MODEL), GL_SMOOTH);
        EXPECT_EQ(gl_integer(GL_DEPTH_FUNC), GL_LEQUAL);
        EXPECT_EQ(gl_integer(GL_PERSPECTIVE_CORRECTION_HINT), GL_NICEST);
        EXPECT_EQ(gl_integer(GL_CULL_FACE_MODE), GL_BACK);
        EXPECT_EQ(gl_integer(GL_DOUBLEBUFFER), 1);
        EXPECT_GE(gl_integer(GL_DEPTH_BITS), 16);
        for (const GLenum state : {GL_DEPTH_TEST, GL_NORMALIZE, GL_MULTISAMPLE, GL_CULL_FACE})
            EXPECT_TRUE(glIsEnabled(state)) << state;
        EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
    }
}

TEST(GlWindow, is_anti_aliased_when_the_user_wants_it_and_the_driver_can) {
    const MainWindow main(true);
    if (!fsaa_possible)
        GTEST_SKIP() << "this driver has no multisampled formats";
    EXPECT_EQ(arbMultisampleSupported, 1);
    EXPECT_EQ(GetPixelFormat(main.dc), arbMultisampleFormat);
    EXPECT_GE(gl_integer(SAMPLES), 2);
}

TEST(GlWindow, is_not_anti_aliased_when_the_user_does_not_want_it) {
    const MainWindow main(false);
    EXPECT_LE(gl_integer(SAMPLES), 1);
}

TEST(GlWindow, is_not_anti_aliased_without_a_good_graphics_card) {
    const MainWindow first(false); // brings the options to their defaults
    orvanel_options.anti_aliasing = 1;
    orvanel_options.good_graphics_card = 0;
    HDC dc;
    HGLRC context;
    const HWND window = gl_create_window(&dc, &context, "Orvanel");
    EXPECT_LE(gl_integer(SAMPLES), 1);
    gl_destroy_window(window, dc, context);
}

TEST(GlWindow, tells_by_zero_that_an_extension_is_supported) {
    const MainWindow main(false);
    EXPECT_EQ(WGLisExtensionSupported("WGL_ARB_extensions_string"), 0);
    EXPECT_EQ(WGLisExtensionSupported("WGL_ARB_extensions_str"), 1);
    EXPECT_EQ(WGLisExtensionSupported("WGL_ARB_multisample"), fsaa_possible ? 0 : 1);
}

static void handle_messages() {
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE))
        DispatchMessageA(&message);
}

// What the screen shows at a client position, as 0x00bbggrr.
static COLORREF screen_pixel(HWND window, int x, int y) {
    POINT position = {x, y};
    ClientToScreen(window, &position);
    const HDC screen = GetDC(nullptr);
    const COLORREF colour =
        GetPixel(screen, static_cast<int>(position.x), static_cast<int>(position.y));
    ReleaseDC(nullptr, screen);
    return colour;
}

TEST(GlWindow, shows_what_is_drawn_after_the_swap) {
    const MainWindow main(true);
    ShowWindow(main.window, SW_SHOW);
    SetForegroundWindow(main.window);
    COLORREF shown = 0;
    for (int i = 0; i < 100 && shown != RGB(51, 102, 153); i++) {
        handle_messages();
        glClearColor(0.2f, 0.4f, 0.6f, 1.0f);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        window_swap_buffers();
        glFinish();
        Sleep(20);
        shown = screen_pixel(main.window, 400, 300);
    }
    EXPECT_EQ(shown, RGB(51, 102, 153));
}

TEST(GlWindow, leaves_no_window_and_no_context_when_it_is_destroyed) {
    HWND window;
    {
        const MainWindow main(true);
        window = main.window;
        EXPECT_TRUE(IsWindow(window));
    }
    EXPECT_FALSE(IsWindow(window));
    EXPECT_EQ(wglGetCurrentContext(), nullptr);
    EXPECT_FALSE(window_is_minimised());
    window_swap_buffers(); // without a window there is nothing to swap
    EXPECT_EQ(FindWindowA(MAIN_WINDOW_CLASS, nullptr), nullptr);
}

TEST(GlWindow, can_be_made_anew_as_often_as_the_user_switches_anti_aliasing) {
    for (int i = 0; i < 12; i++) {
        const MainWindow main(i % 2 == 0);
        ASSERT_NE(main.context, nullptr) << i;
        ASSERT_EQ(wglGetCurrentContext(), main.context) << i;
        if (fsaa_possible) {
            EXPECT_EQ(gl_integer(SAMPLES) > 1, i % 2 == 0) << i;
        }
    }
}

// ---- platform/window.h over a real window

static bool becomes_true(bool (*condition)()) {
    for (int i = 0; i < 100; i++) {
        handle_messages();
        if (condition())
            return true;
        Sleep(20);
    }
    return false;
}

// Milliseconds. The window manager answers late, and its answer to a window that was minimised
// would take back that it is restored.
static constexpr DWORD SETTLE_TIME = 500;

TEST(PlatformWindow, knows_when_it_is_minimised) {
    const MainWindow main(false);
    ShowWindow(main.window, SW_SHOW);
    EXPECT_FALSE(window_is_minimised());
    ShowWindow(main.window, SW_MINIMIZE);
    EXPECT_TRUE(becomes_true(window_is_minimised));
    Sleep(SETTLE_TIME);
    handle_messages();
    ShowWindow(main.window, SW_RESTORE);
    EXPECT_TRUE(becomes_true([] { return !window_is_minimised(); }));
}

TEST(PlatformWindow, knows_whether_it_is_in_the_foreground) {
    const MainWindow main(false);
    ShowWindow(main.window, SW_SHOW);
    SetForegroundWindow(main.window);
    EXPECT_TRUE(becomes_true(window_is_foreground));
    const HWND other = CreateWindowExA(0, "STATIC", "other", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0,
                                       200, 100, nullptr, nullptr, nullptr, nullptr);
    SetForegroundWindow(other);
    EXPECT_TRUE(becomes_true([] { return !window_is_foreground(); }));
    DestroyWindow(other);
}

TEST(PlatformWindow, toggles_between_maximised_and_its_own_size) {
    const MainWindow main(false);
    ShowWindow(main.window, SW_SHOW);
    window_toggle_maximised();
    EXPECT_TRUE(IsZoomed(main.window));
    window_toggle_maximised();
    EXPECT_FALSE(IsZoomed(main.window));
}

TEST(PlatformWindow, gives_the_pointer_in_pixels_of_the_client_area) {
    const MainWindow main(false);
    ShowWindow(main.window, SW_SHOW);
    handle_messages();
    POINT corner = {0, 0};
    ClientToScreen(main.window, &corner);
    SetCursorPos(static_cast<int>(corner.x) + 30, static_cast<int>(corner.y) + 40);
    std::int32_t x = 0, y = 0;
    window_cursor_position(&x, &y);
    EXPECT_EQ(x, 30);
    EXPECT_EQ(y, 40);
}

TEST(PlatformWindow, asks_for_a_repaint_of_the_whole_client_area) {
    const MainWindow main(false);
    ShowWindow(main.window, SW_SHOW);
    handle_messages();
    ValidateRect(main.window, nullptr);
    window_invalidate();
    RECT dirty = {};
    EXPECT_TRUE(GetUpdateRect(main.window, &dirty, FALSE));
    EXPECT_EQ(dirty.right, 800);
    EXPECT_EQ(dirty.bottom, 600);
}

TEST(PlatformWindow, quits_with_the_exit_code) {
    const MainWindow main(false);
    window_quit(7);
    MSG message = {};
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE) && message.message != WM_QUIT)
        DispatchMessageA(&message);
    EXPECT_EQ(message.message, static_cast<UINT>(WM_QUIT));
    EXPECT_EQ(message.wParam, 7u);
}

TEST(PlatformWindow, sets_the_mouse_trails_and_reads_them_back) {
    const std::int32_t before = screen_mouse_trails();
    screen_set_mouse_trails(5);
    EXPECT_EQ(screen_mouse_trails(), 5);
    screen_set_mouse_trails(0);
    EXPECT_EQ(screen_mouse_trails(), 0);
    screen_set_mouse_trails(before);
}
