#include "scene/gl_window.h"

#include "page/options.h"
#include "platform/gl.h"
#include "platform/win32/window_attach.h"
#include "scene/scene_floor.h"

#include <algorithm>

static constexpr DWORD WINDOW_STYLE = WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN | WS_CLIPSIBLINGS;
static constexpr DWORD WINDOW_STYLE_EXTENDED = WS_EX_APPWINDOW | WS_EX_WINDOWEDGE;

using GetExtensionsString = const char *(WINAPI *)(HDC dc);
using ChooseFormat = BOOL(WINAPI *)(HDC dc, const int *integers, const FLOAT *floats, UINT wanted,
                                    int *formats, UINT *found);

// The library gives out all its functions under one type.
template <typename Function>
static Function gl_function(const char *name) {
    return reinterpret_cast<Function>(reinterpret_cast<void *>(wglGetProcAddress(name)));
}

static const char *extension_list() {
    const auto get_list = gl_function<GetExtensionsString>("wglGetExtensionsStringARB");
    if (get_list != nullptr)
        return get_list(wglGetCurrentDC());
    return reinterpret_cast<const char *>(glGetString(GL_EXTENSIONS));
}

int WGLisExtensionSupported(const char *name) {
    const char *list = extension_list();
    return list != nullptr && gl_extension_listed(list, name) ? 0 : 1;
}

static bool choose_format(void *dc, const std::int32_t *attributes, std::int32_t *format) {
    const auto choose = gl_function<ChooseFormat>("wglChoosePixelFormatARB");
    int chosen = 0;
    UINT found = 0;
    if (choose == nullptr ||
        !choose(static_cast<HDC>(dc), attributes, nullptr, 1, &chosen, &found) || found < 1)
        return false;
    *format = chosen;
    return true;
}

int InitMultisample(HINSTANCE, HWND window, const PIXELFORMATDESCRIPTOR *) {
    if (WGLisExtensionSupported("WGL_ARB_multisample") != 0 ||
        wglGetProcAddress("wglChoosePixelFormatARB") == nullptr)
        return 0;
    const HDC dc = GetDC(window);
    const int found = gl_choose_multisample_format(choose_format, dc);
    ReleaseDC(window, dc);
    return found;
}

PIXELFORMATDESCRIPTOR gl_plain_pixel_format() {
    PIXELFORMATDESCRIPTOR format = {};
    format.nSize = sizeof format;
    format.nVersion = 1;
    format.dwFlags = PFD_DRAW_TO_WINDOW | PFD_SUPPORT_OPENGL | PFD_DOUBLEBUFFER;
    format.iPixelType = PFD_TYPE_RGBA;
    format.cColorBits = 24;
    format.cDepthBits = 16;
    format.iLayerType = PFD_MAIN_PLANE;
    return format;
}

static HWND create_window(const char *title) {
    RECT frame = {0, 0, scene_floor.window_width, scene_floor.window_height};
    AdjustWindowRectEx(&frame, WINDOW_STYLE, FALSE, WINDOW_STYLE_EXTENDED);
    const int width = static_cast<int>(frame.right - frame.left);
    const int height = static_cast<int>(frame.bottom - frame.top);
    // The title bar stays within reach on a screen that is smaller than the window.
    const int left = std::max((screen_size_x - width) / 2, 0);
    const int top = std::max((screen_size_y - height) / 2, 0);
    return CreateWindowExA(WINDOW_STYLE_EXTENDED, MAIN_WINDOW_CLASS, title, WINDOW_STYLE, left, top,
                           width, height, nullptr, nullptr, GetModuleHandleA(nullptr), nullptr);
}

static void destroy_window(HWND window, HDC dc, HGLRC context) {
    wglMakeCurrent(nullptr, nullptr);
    if (context != nullptr)
        wglDeleteContext(context);
    if (dc != nullptr)
        ReleaseDC(window, dc);
    if (window != nullptr)
        DestroyWindow(window);
}

// Null when the window or its context cannot be had; nothing is left behind then. format_index 0
// stands for the plain pixel format.
static HWND open_window(const char *title, int format_index, HDC *dc, HGLRC *context) {
    *dc = nullptr;
    *context = nullptr;
    const HWND window = create_window(title);
    if (window == nullptr)
        return nullptr;
    PIXELFORMATDESCRIPTOR format = gl_plain_pixel_format();
    *dc = GetDC(window);
    SetPixelFormat(*dc, format_index != 0 ? format_index : ChoosePixelFormat(*dc, &format),
                   &format);
    *context = wglCreateContext(*dc);
    if (*context != nullptr && wglMakeCurrent(*dc, *context))
        return window;
    destroy_window(window, *dc, *context);
    *dc = nullptr;
    *context = nullptr;
    return nullptr;
}

static bool finds_multisampled_format(HWND window) {
    const PIXELFORMATDESCRIPTOR format = gl_plain_pixel_format();
    return orvanel_options.good_graphics_card && orvanel_options.anti_aliasing &&
           InitMultisample(GetModuleHandleA(nullptr), window, &format);
}

// The functions that look for a multisampled format need a context, and a window keeps its first
// pixel format for life: hence the second window. A driver that fails with the format it named gets
// the plain one back.
HWND gl_create_window(HDC *dc, HGLRC *context, const char *title) {
    HWND window = open_window(title, 0, dc, context);
    if (window == nullptr)
        return nullptr;
    fsaa_possible = WGLisExtensionSupported("WGL_ARB_multisample") == 0 ? 1 : 0;
    if (finds_multisampled_format(window)) {
        destroy_window(window, *dc, *context);
        window = open_window(title, arbMultisampleFormat, dc, context);
        if (window == nullptr)
            window = open_window(title, 0, dc, context);
    }
    window_attach(window, *dc);
    gl_init_state();
    return window;
}

void gl_destroy_window(HWND window, HDC dc, HGLRC context) {
    window_attach(nullptr, nullptr);
    destroy_window(window, dc, context);
}
