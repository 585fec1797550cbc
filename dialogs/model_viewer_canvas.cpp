#include "dialogs/model_viewer_canvas.h"

#include "platform/gl.h"

#include <cstdint>
#include <vector>

static constexpr GLenum BLUE_GREEN_RED_ALPHA = 0x80E1; // GL_BGRA of OpenGL 1.2, as bitmaps have it
static constexpr WORD PIXEL_SIZE = 4;                  // bytes
static constexpr char CANVAS_CLASS[] = "STATIC";       // never shown, so any window class will do

static ViewerCanvas chosen = ViewerCanvas::InControl;
static HWND control_window;
static HWND canvas_window; // the control's own handle when it draws in itself

// Wine 8 copies the picture of a control with OpenGL to nowhere, and leaves it black.
ViewerCanvas model_viewer_canvas_of_system() {
    const bool wine = GetProcAddress(GetModuleHandleA("ntdll.dll"), "wine_get_version") != nullptr;
    return wine ? ViewerCanvas::Hidden : ViewerCanvas::InControl;
}

void model_viewer_canvas_choose(ViewerCanvas canvas) {
    chosen = canvas;
}

HWND model_viewer_canvas_make(HWND control) {
    RECT client;
    if (!GetClientRect(control, &client))
        return nullptr;
    control_window = control;
    canvas_window =
        chosen == ViewerCanvas::InControl
            ? control
            : CreateWindowExA(WS_EX_NOACTIVATE, CANVAS_CLASS, "", WS_POPUP | WS_DISABLED, 0, 0,
                              client.right, client.bottom, GetAncestor(control, GA_ROOT), nullptr,
                              GetModuleHandleA(nullptr), nullptr);
    return canvas_window;
}

void model_viewer_canvas_destroy() {
    if (canvas_window != nullptr && canvas_window != control_window)
        DestroyWindow(canvas_window);
    canvas_window = nullptr;
    control_window = nullptr;
}

void model_viewer_canvas_resize(int width, int height) {
    if (canvas_window != nullptr && canvas_window != control_window)
        SetWindowPos(canvas_window, nullptr, 0, 0, width, height,
                     SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

// OpenGL and bitmaps both begin with the lowest row.
static void copy_to_control(int width, int height) {
    static std::vector<std::uint8_t> pixels;
    pixels.resize(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * PIXEL_SIZE);
    glReadBuffer(GL_BACK);
    glPixelStorei(GL_PACK_ALIGNMENT, PIXEL_SIZE);
    glReadPixels(0, 0, width, height, BLUE_GREEN_RED_ALPHA, GL_UNSIGNED_BYTE, pixels.data());
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = PIXEL_SIZE * 8;
    info.bmiHeader.biCompression = BI_RGB;
    const HDC dc = GetDC(control_window);
    SetDIBitsToDevice(dc, 0, 0, static_cast<DWORD>(width), static_cast<DWORD>(height), 0, 0, 0,
                      static_cast<UINT>(height), pixels.data(), &info, DIB_RGB_COLORS);
    ReleaseDC(control_window, dc);
}

void model_viewer_canvas_show(HDC dc) {
    if (canvas_window == control_window) {
        SwapBuffers(dc);
        return;
    }
    RECT client = {};
    GetClientRect(control_window, &client);
    if (client.right > 0 && client.bottom > 0)
        copy_to_control(static_cast<int>(client.right), static_cast<int>(client.bottom));
}
