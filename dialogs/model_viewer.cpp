#include "dialogs/model_viewer.h"

#include "assets/model.h"
#include "dialogs/model_viewer_canvas.h"
#include "dialogs/rules/model_spin.h"
#include "dialogs/rules/model_viewer_picture.h"
#include "resources/resource_ids.h"

#include <windowsx.h>

static constexpr UINT_PTR FRAME_TIMER = 33;
static constexpr UINT FRAME_TIME = 1;  // milliseconds: as fast as the system's timers go
static constexpr int BORDER_WIDTH = 1; // pixels

static HCURSOR program_cursor(WORD resource) {
    return LoadCursorA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(resource));
}

// What the mouse looks like over a model that nobody holds.
static HCURSOR idle_cursor() {
    const HCURSOR turn = model_spin_allowed() ? program_cursor(RESOURCE_CURSOR_TURN) : nullptr;
    return turn != nullptr ? turn : LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_ARROW));
}

void model_viewer_init() {
    static bool registered;
    if (registered)
        return;
    model_viewer_canvas_choose(model_viewer_canvas_of_system());
    WNDCLASSEXA viewer = {};
    viewer.cbSize = sizeof viewer;
    // A device context of its own, because OpenGL draws into it as long as the control lives.
    viewer.style = CS_HREDRAW | CS_VREDRAW | CS_OWNDC;
    viewer.lpfnWndProc = model_viewer_proc;
    viewer.hInstance = GetModuleHandleA(nullptr);
    viewer.hCursor = idle_cursor();
    viewer.hbrBackground = static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH));
    viewer.lpszClassName = MODEL_VIEWER_CLASS;
    registered = RegisterClassExA(&viewer) != 0;
}

// ---- the messages

static void create(HWND window) {
    model_viewer_enable_gl(window);
    model_viewer_model_id = 0;
    model_spin_init();
    SetTimer(window, FRAME_TIMER, FRAME_TIME, nullptr);
}

static void destroy(HWND window) {
    KillTimer(window, FRAME_TIMER);
    model_viewer_disable_gl();
    model_free_preview();
}

static void paint(HWND window) {
    model_viewer_scene_draw();
    ValidateRect(window, nullptr);
}

// The picture leaves room for the frame around it.
static void reserve_border(RECT *rectangle) {
    InflateRect(rectangle, -BORDER_WIDTH, -BORDER_WIDTH);
}

// The parent must not be clipped to what its children leave free.
void model_viewer_draw_control_border(HWND window) {
    const HWND parent = GetParent(window);
    RECT rectangle;
    GetWindowRect(window, &rectangle);
    MapWindowPoints(nullptr, parent, reinterpret_cast<POINT *>(&rectangle), 2);
    const HDC dc = GetDCEx(parent, nullptr, DCX_CACHE);
    if (dc == nullptr)
        return;
    FrameRect(dc, &rectangle, static_cast<HBRUSH>(GetStockObject(LTGRAY_BRUSH)));
    ReleaseDC(parent, dc);
}

static void grab(HWND window, LPARAM position) {
    SetCapture(window);
    model_spin_grab(GET_X_LPARAM(position), GET_Y_LPARAM(position));
    const HCURSOR held = model_spin_allowed() ? program_cursor(RESOURCE_CURSOR_TURNING) : nullptr;
    if (held != nullptr)
        SetCursor(held);
}

static void release(HWND window) {
    if (!model_spin_grabbed())
        return;
    model_spin_release();
    if (GetCapture() == window)
        ReleaseCapture();
    SetCursor(idle_cursor());
}

LRESULT CALLBACK model_viewer_proc(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
    case WM_CREATE:
        create(window);
        return 0;
    case WM_DESTROY:
        destroy(window);
        return 0;
    case WM_SIZE:
        model_viewer_resize_control(LOWORD(lparam), HIWORD(lparam));
        return 0;
    case WM_PAINT:
        paint(window);
        return 0;
    case WM_ERASEBKGND:
        return 0;
    case WM_TIMER:
        InvalidateRect(window, nullptr, FALSE);
        return 0;
    case WM_NCCALCSIZE:
        reserve_border(reinterpret_cast<RECT *>(lparam)); // first of either form of the message
        return 0;
    case WM_NCPAINT:
        model_viewer_draw_control_border(window);
        return 0;
    case WM_SETCURSOR:
        SetCursor(idle_cursor());
        return TRUE;
    case WM_LBUTTONDOWN:
        grab(window, lparam);
        return 0;
    case WM_MOUSEMOVE:
        model_spin_move(GET_X_LPARAM(lparam), GET_Y_LPARAM(lparam));
        return 0;
    case WM_LBUTTONUP:
        release(window);
        return 0;
    case WM_CAPTURECHANGED:
        model_spin_let_go();
        return 0;
    case MODEL_VIEWER_SHOW:
        model_viewer_model_id = static_cast<std::int32_t>(wparam);
        return 0;
    default:
        return DefWindowProcA(window, message, wparam, lparam);
    }
}
