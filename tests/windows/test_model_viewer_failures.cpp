// What the preview does when one of the steps to its OpenGL context fails. The calls to the system
// are taken over by this program: they do their work unless a test wants one of them to fail.
#include "dialogs/model_viewer.h"

#include "dialogs/model_viewer_canvas.h"
#include "dialogs/rules/model_spin.h"
#include "dialogs/rules/model_viewer_picture.h"
#include "platform/gl.h"
#include "scene/gl_util.h"
#include "scene/scene.h"
#include "tests/windows/imported.h"
#include "tests/windows/model_viewer_stage.h"

#include <algorithm>
#include <string>
#include <vector>

enum class Step : char {
    None = '-',
    Device = 'D',
    Format = 'F',
    Set = 'S',
    Create = 'C',
    Current = 'M'
};

static Step failing = Step::None;
static std::string trail;            // the steps tried
static PIXELFORMATDESCRIPTOR wished; // format that the system last looked for
static std::vector<HDC> devices;     // taken and not yet given back
static int contexts;                 // the same

// Notes the step; false when it is to fail.
static bool passes(Step step) {
    trail += static_cast<char>(step);
    return step != failing;
}

static HDC WINAPI get_dc(HWND window) {
    static const auto real = system_function<decltype(&GetDC)>("user32.dll", "GetDC");
    const HDC dc = passes(Step::Device) ? real(window) : nullptr;
    if (dc != nullptr)
        devices.push_back(dc);
    return dc;
}

static int WINAPI release_dc(HWND window, HDC dc) {
    static const auto real = system_function<decltype(&ReleaseDC)>("user32.dll", "ReleaseDC");
    devices.erase(std::remove(devices.begin(), devices.end(), dc), devices.end());
    return real(window, dc);
}

static int WINAPI choose_format(HDC dc, const PIXELFORMATDESCRIPTOR *format) {
    static const auto real =
        system_function<decltype(&ChoosePixelFormat)>("gdi32.dll", "ChoosePixelFormat");
    wished = *format;
    return passes(Step::Format) ? real(dc, format) : 0;
}

static BOOL WINAPI set_format(HDC dc, int index, const PIXELFORMATDESCRIPTOR *format) {
    static const auto real =
        system_function<decltype(&SetPixelFormat)>("gdi32.dll", "SetPixelFormat");
    return passes(Step::Set) ? real(dc, index, format) : FALSE;
}

static HGLRC WINAPI create_context(HDC dc) {
    static const auto real =
        system_function<decltype(&wglCreateContext)>("opengl32.dll", "wglCreateContext");
    const HGLRC context = passes(Step::Create) ? real(dc) : nullptr;
    contexts += context != nullptr ? 1 : 0;
    return context;
}

static BOOL WINAPI delete_context(HGLRC context) {
    static const auto real =
        system_function<decltype(&wglDeleteContext)>("opengl32.dll", "wglDeleteContext");
    contexts--;
    return real(context);
}

// A change that fails leaves no context current. That of the main window never fails.
static BOOL WINAPI make_current(HDC dc, HGLRC context) {
    static const auto real =
        system_function<decltype(&wglMakeCurrent)>("opengl32.dll", "wglMakeCurrent");
    if (context == nullptr || context == hRC || passes(Step::Current))
        return real(dc, context);
    real(nullptr, nullptr);
    return FALSE;
}

extern "C" {
decltype(&GetDC) imported_get_dc IMPORTED(GetDC, 4) = get_dc;
decltype(&ReleaseDC) imported_release_dc IMPORTED(ReleaseDC, 8) = release_dc;
decltype(&ChoosePixelFormat) imported_choose_format IMPORTED(ChoosePixelFormat, 8) = choose_format;
decltype(&SetPixelFormat) imported_set_format IMPORTED(SetPixelFormat, 12) = set_format;
decltype(&wglCreateContext) imported_create_context IMPORTED(wglCreateContext, 4) = create_context;
decltype(&wglDeleteContext) imported_delete_context IMPORTED(wglDeleteContext, 4) = delete_context;
decltype(&wglMakeCurrent) imported_make_current IMPORTED(wglMakeCurrent, 8) = make_current;
}

static constexpr ViewerCanvas CANVASES[] = {ViewerCanvas::InControl, ViewerCanvas::Hidden};

static constexpr struct {
    Step step;
    const char *steps_tried;
    const char *text;
} FAILURES[] = {{Step::Device, "D", "Failed to create DC.\n"},
                {Step::Format, "DF", "Failed to create pixel format.\n"},
                {Step::Set, "DFS", "SetPixelFormat failed.\n"},
                {Step::Create, "DFSC", "Failed to create RC.\n"},
                {Step::Current, "DFSCM", "wglMakeCurrent failed.\n"}};

static BOOL CALLBACK count_canvas(HWND window, LPARAM count) {
    char name[16] = "";
    GetClassNameA(window, name, sizeof name);
    *reinterpret_cast<int *>(count) += lstrcmpiA(name, "STATIC") == 0 ? 1 : 0;
    return TRUE;
}

// Hidden windows that a preview draws in.
static int canvases() {
    int count = 0;
    EnumThreadWindows(GetCurrentThreadId(), count_canvas, reinterpret_cast<LPARAM>(&count));
    return count;
}

struct ModelViewerFailures : testing::Test, ModelViewerStage {
    const std::int32_t found_format = arbMultisampleFormat;
    const std::int32_t format_supported = arbMultisampleSupported;

    ModelViewerFailures() {
        orvanel_options.anti_aliasing = 0;
        trail.clear();
    }
    ~ModelViewerFailures() override {
        failing = Step::None;
        arbMultisampleFormat = found_format;
        arbMultisampleSupported = format_supported;
        close();
        model_viewer_canvas_choose(model_viewer_canvas_of_system());
    }
    std::size_t boxes_shown() const {
        return window.script.shown().size();
    }
    // One more box than before, with this text.
    void expect_box(std::size_t before, const char *text) const {
        const std::vector<ShownMessage> shown = window.script.shown();
        ASSERT_EQ(shown.size(), before + 1) << text;
        EXPECT_EQ(shown.back().text, text);
        EXPECT_EQ(shown.back().caption, "Orvanel");
        EXPECT_EQ(shown.back().icon, MessageIcon::Error);
    }
    static void expect_no_context() {
        EXPECT_EQ(model_viewer_RC, nullptr);
        EXPECT_EQ(model_viewer_DC, nullptr);
        expect_main_context();
    }
    // Every message of the control, as the user and the dialog cause them.
    void use() const {
        send(MODEL_VIEWER_SHOW, 0);
        paint();
        size(120, 80);
        send(WM_TIMER, 33);
        handle_messages();
        send(WM_LBUTTONDOWN, MK_LBUTTON, 50, 20);
        send(WM_MOUSEMOVE, MK_LBUTTON, 80, 20);
        paint();
        send(WM_LBUTTONUP, 0, 80, 20);
        EXPECT_EQ(GetCapture(), nullptr);
        send(MODEL_VIEWER_SHOW, static_cast<WPARAM>(-1));
        paint();
        expect_main_context();
    }
    void expect_dialog_usable() const {
        EXPECT_TRUE(IsWindow(viewer));
        EXPECT_TRUE(IsWindowVisible(dialog));
        EXPECT_TRUE(IsWindowEnabled(dialog));
        EXPECT_TRUE(IsWindowEnabled(hWnd));
        SetFocus(GetDlgItem(dialog, RESOURCE_MODEL_NEXT));
        EXPECT_EQ(GetFocus(), GetDlgItem(dialog, RESOURCE_MODEL_NEXT));
    }
};

TEST_F(ModelViewerFailures, each_failed_step_is_the_last_and_says_in_a_box_what_failed) {
    for (const ViewerCanvas canvas : CANVASES) {
        model_viewer_canvas_choose(canvas);
        for (const auto &failure : FAILURES) {
            const std::size_t before = boxes_shown();
            trail.clear();
            failing = failure.step;
            open();
            EXPECT_EQ(trail, failure.steps_tried);
            expect_box(before, failure.text);
            close();
        }
    }
}

TEST_F(ModelViewerFailures, without_a_failure_no_box_is_shown) {
    open();
    EXPECT_EQ(trail.substr(0, 5), "DFSCM");
    EXPECT_NE(model_viewer_RC, nullptr);
    EXPECT_EQ(boxes_shown(), 0u);
}

TEST_F(ModelViewerFailures, asks_for_two_buffers_24_bits_of_colour_and_16_of_depth) {
    open();
    EXPECT_EQ(wished.dwFlags,
              static_cast<DWORD>(PFD_DRAW_TO_WINDOW | PFD_SUPPORT_OPENGL | PFD_DOUBLEBUFFER));
    EXPECT_EQ(wished.iPixelType, PFD_TYPE_RGBA);
    EXPECT_EQ(wished.cColorBits, 24);
    EXPECT_EQ(wished.cDepthBits, 16);
}

TEST_F(ModelViewerFailures, the_dialog_stays_usable_and_the_control_empty) {
    for (const ViewerCanvas canvas : CANVASES) {
        model_viewer_canvas_choose(canvas);
        for (const auto &failure : FAILURES) {
            SCOPED_TRACE(failure.text);
            failing = failure.step;
            open();
            failing = Step::None;
            const std::size_t boxes = boxes_shown();
            expect_no_context();
            expect_dialog_usable();
            use();
            expect_no_context();
            EXPECT_EQ(boxes_shown(), boxes);
            close();
        }
    }
}

TEST_F(ModelViewerFailures, nothing_is_left_behind_and_the_next_preview_works) {
    for (const ViewerCanvas canvas : CANVASES) {
        model_viewer_canvas_choose(canvas);
        for (const auto &failure : FAILURES) {
            SCOPED_TRACE(failure.text);
            const std::size_t devices_before = devices.size();
            const int contexts_before = contexts;
            failing = failure.step;
            open();
            EXPECT_EQ(canvases(), 0);
            EXPECT_EQ(devices.size(), devices_before);
            EXPECT_EQ(contexts, contexts_before);
            failing = Step::None;
            close();
            open();
            EXPECT_NE(model_viewer_RC, nullptr);
            EXPECT_EQ(canvases(), canvas == ViewerCanvas::Hidden ? 1 : 0);
            use();
            close();
            EXPECT_EQ(canvases(), 0);
            EXPECT_EQ(devices.size(), devices_before);
            EXPECT_EQ(contexts, contexts_before);
        }
    }
}

// ---- failures that the system itself reports

TEST_F(ModelViewerFailures, a_window_that_does_not_exist_has_no_device_context) {
    for (const ViewerCanvas canvas : CANVASES) {
        model_viewer_canvas_choose(canvas);
        const std::size_t before = boxes_shown();
        model_viewer_enable_gl(reinterpret_cast<HWND>(0xBAD0));
        expect_box(before, "Failed to create DC.\n");
        expect_no_context();
        EXPECT_EQ(canvases(), 0);
    }
}

TEST_F(ModelViewerFailures, formats_of_the_main_window_that_the_system_does_not_know_are_refused) {
    orvanel_options.anti_aliasing = 1;
    arbMultisampleSupported = 1;
    for (const auto &[format, text] : {std::pair{0, "Failed to create pixel format.\n"},
                                       std::pair{99999, "SetPixelFormat failed.\n"}}) {
        const std::size_t before = boxes_shown();
        arbMultisampleFormat = format;
        open();
        expect_box(before, text);
        expect_no_context();
        close();
    }
}

TEST_F(ModelViewerFailures, the_format_of_the_main_window_is_used_only_where_all_options_want_it) {
    arbMultisampleFormat = 99999; // tells by its box that it was used
    for (int wishes = 0; wishes < 8; wishes++) {
        arbMultisampleSupported = wishes & 1;
        orvanel_options.good_graphics_card = wishes >> 1 & 1;
        orvanel_options.anti_aliasing = wishes >> 2;
        open();
        EXPECT_EQ(boxes_shown(), wishes == 7 ? 1u : 0u) << wishes;
        close();
    }
}

// ---- whose turn it is

// A driver that was reset refuses a context that it has made itself.
TEST_F(ModelViewerFailures, the_main_window_has_its_context_back_when_the_change_to_another_fails) {
    open();
    ASSERT_NE(model_viewer_RC, nullptr);
    failing = Step::Current;
    model_viewer_scene_draw();
    expect_main_context();
    use();
    DestroyWindow(viewer);
    expect_main_context();
    EXPECT_EQ(boxes_shown(), 0u);
    scene_request_redraw();
    scene_draw();
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST_F(ModelViewerFailures, a_preview_that_cannot_draw_for_a_moment_goes_on_afterwards) {
    open();
    KillTimer(viewer, 33);
    handle_messages();
    failing = Step::Current;
    const float angle = model_viewer_model_angle;
    paint();
    EXPECT_EQ(model_viewer_model_angle, angle);
    failing = Step::None;
    paint();
    EXPECT_NE(model_viewer_model_angle, angle);
}
