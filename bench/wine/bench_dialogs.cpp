// The model preview and the dialog around it, in the program's own window. Prints the microseconds
// of every sample: one frame of the preview, the same drawing in the main window of the same size,
// and the time from a double click in edit mode until the properties of an object can be used: all
// of the dialog is drawn and it waits for the user.
#include "app/main_window.h"
#include "app/startup.h"
#include "assets/model.h"
#include "bench/wine/bench_scene.h"
#include "dialogs/model_viewer.h"
#include "dialogs/rules/model_spin.h"
#include "dialogs/rules/model_viewer_picture.h"
#include "page/node.h"
#include "page/options.h"
#include "platform/gl.h"
#include "scene/gl_util.h"
#include "scene/interaction.h"
#include "scene/scene.h"
#include "scene/scene_page.h"

#include <objbase.h>

#include <cstdlib>

static constexpr int SAMPLES = 15;
static constexpr int PREVIEW_WIDTH = 357; // pixels; of the object dialog at 96 dots an inch
static constexpr int PREVIEW_HEIGHT = 124;
static constexpr ViewerColour BACKGROUND = {0.94f, 0.94f, 0.94f};
static const char MODEL[] = "server.obj";

static void handle_messages() {
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
}

static void open_program() {
    options_set_defaults();
    orvanel_options.zoom_transition = 0;
    bench_find_models();
    interaction_init();
    if (main_window_register(GetModuleHandleA(nullptr)) != 0 || main_window_create() != 0)
        std::abort();
    main_window_show();
    startup_modules();
    handle_messages();
}

// One object in the middle of the window.
static void make_page() {
    node_init_node(0);
    node_total = 1;
    node[0].type = NODE_OBJECT;
    node[0].x = node[0].y = 0.0f;
    node[0].model_id = model_return_model_id(MODEL);
    node_set_model_dimensions(0);
    scene_floor.position_x = scene_floor.position_y = 0.0f;
    scene_invalidate_floor();
    for (int i = 0; i < 3; i++)
        bench_draw_frame();
}

// ---- frames

static double preview_frame() {
    const double begin = bench_microseconds();
    model_viewer_scene_draw();
    return bench_microseconds() - begin;
}

static double main_window_frame() {
    const double begin = bench_microseconds();
    model_viewer_picture_draw();
    SwapBuffers(hDC);
    model_spin_frame();
    return bench_microseconds() - begin;
}

// The first frame compiles the model's list.
static void measure_frames(const char *kind, double (*frame)()) {
    double samples[SAMPLES];
    model_viewer_model_id = model_return_model_id(MODEL);
    frame();
    for (double &sample : samples)
        sample = frame();
    bench_print(kind, samples);
}

static void measure_preview() {
    const HWND parent =
        CreateWindowExA(0, "STATIC", "preview benchmark", WS_OVERLAPPEDWINDOW, 100, 100, 500, 300,
                        hWnd, nullptr, GetModuleHandleA(nullptr), nullptr);
    const HWND preview =
        CreateWindowExA(0, MODEL_VIEWER_CLASS, "", WS_CHILD | WS_VISIBLE, 10, 10, PREVIEW_WIDTH + 2,
                        PREVIEW_HEIGHT + 2, parent, nullptr, GetModuleHandleA(nullptr), nullptr);
    ShowWindow(parent, SW_SHOW);
    if (preview == nullptr || model_viewer_RC == nullptr)
        std::abort();
    measure_frames("preview_frame/control", preview_frame);
    DestroyWindow(parent);
    handle_messages();
}

// The main window as large as the control; both have their borders outside.
static void shrink_main_window() {
    RECT frame = {0, 0, PREVIEW_WIDTH, PREVIEW_HEIGHT};
    AdjustWindowRectEx(&frame, static_cast<DWORD>(GetWindowLongA(hWnd, GWL_STYLE)), FALSE,
                       static_cast<DWORD>(GetWindowLongA(hWnd, GWL_EXSTYLE)));
    // Past the program's own procedure, which keeps the window larger.
    SetWindowLongPtrA(hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(DefWindowProcA));
    SetWindowPos(hWnd, nullptr, 0, 0, frame.right - frame.left, frame.bottom - frame.top,
                 SWP_NOMOVE | SWP_NOZORDER);
    handle_messages();
}

static void measure_main_window() {
    shrink_main_window();
    model_viewer_picture_init(BACKGROUND);
    model_viewer_resize(PREVIEW_WIDTH, PREVIEW_HEIGHT);
    measure_frames("preview_frame/main_window", main_window_frame);
    model_viewer_picture_free();
}

// ---- dialog

static WNDPROC program_procedure;
static double usable_at; // microseconds

// The window is told when its dialog has nothing left to do.
static LRESULT CALLBACK note_idle(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_ENTERIDLE && wparam == MSGF_DIALOGBOX) {
        usable_at = bench_microseconds();
        PostMessageA(reinterpret_cast<HWND>(lparam), WM_COMMAND, IDCANCEL, 0);
        return 0;
    }
    return CallWindowProcA(program_procedure, window, message, wparam, lparam);
}

static double open_dialog(LPARAM position) {
    usable_at = 0.0;
    const double begin = bench_microseconds();
    SendMessageA(hWnd, WM_LBUTTONDBLCLK, MK_LBUTTON, position);
    const double taken = usable_at - begin;
    SendMessageA(hWnd, WM_LBUTTONUP, 0, position);
    handle_messages();
    if (taken < 0.0)
        std::abort(); // no dialog came up
    return taken;
}

static LPARAM object_position() {
    for (int y = 0; y < scene_floor.window_height; y += 10) {
        const int x = scene_floor.window_width / 2;
        if (selection(x, y) == 0)
            return MAKELPARAM(x, y);
    }
    std::abort(); // not the page that was meant
}

static void measure_dialog() {
    app_mode = APP_EDIT;
    const LPARAM position = object_position();
    program_procedure = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrA(hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(note_idle)));
    const double first[] = {open_dialog(position)};
    double again[SAMPLES];
    for (double &sample : again)
        sample = open_dialog(position);
    bench_print("properties_dialog/first", first);
    bench_print("properties_dialog/again", again);
}

int main() {
    CoInitialize(nullptr);
    open_program();
    make_page();
    measure_dialog();
    measure_preview();
    measure_main_window();
    startup_stop_modules();
    main_window_destroy();
    CoUninitialize();
    return 0;
}
