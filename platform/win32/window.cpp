#include "platform/window.h"

#include "platform/win32/window_attach.h"

#include <windows.h>

static HWND window;
static HDC window_dc;

void window_attach(void *hwnd, void *hdc) {
    window = static_cast<HWND>(hwnd);
    window_dc = static_cast<HDC>(hdc);
}

void *window_attached() {
    return window;
}

void *window_in_front() {
    return window != nullptr ? GetLastActivePopup(window) : nullptr;
}

bool window_is_minimised() {
    return window != nullptr && IsIconic(window);
}

bool window_is_foreground() {
    return window != nullptr && GetForegroundWindow() == window;
}

void window_swap_buffers() {
    if (window_dc != nullptr)
        SwapBuffers(window_dc);
}

void window_toggle_maximised() {
    if (window != nullptr)
        ShowWindow(window, IsZoomed(window) ? SW_RESTORE : SW_MAXIMIZE);
}

// A null window would mean all windows of the screen.
void window_invalidate() {
    if (window != nullptr)
        InvalidateRect(window, nullptr, FALSE);
}

void window_capture_mouse() {
    if (window != nullptr)
        SetCapture(window);
}

// The capture may belong to another window of the program by now.
void window_release_mouse() {
    if (window != nullptr && GetCapture() == window)
        ReleaseCapture();
}

void window_quit(int exit_code) {
    PostQuitMessage(exit_code);
}

void window_cursor_position(std::int32_t *x, std::int32_t *y) {
    POINT position = {0, 0};
    GetCursorPos(&position);
    if (window != nullptr)
        ScreenToClient(window, &position);
    *x = position.x;
    *y = position.y;
}

void screen_size(std::int32_t *width, std::int32_t *height) {
    *width = GetSystemMetrics(SM_CXSCREEN);
    *height = GetSystemMetrics(SM_CYSCREEN);
}

std::int32_t screen_mouse_trails() {
    INT length = 0;
    SystemParametersInfoA(SPI_GETMOUSETRAILS, 0, &length, 0);
    return length;
}

void screen_set_mouse_trails(std::int32_t length) {
    SystemParametersInfoA(SPI_SETMOUSETRAILS, static_cast<UINT>(length), nullptr, 0);
}
