#include "tests/support/gl_context.h"

#include "platform/gl.h"
#include "scene/gl_util.h"
#include "scene/scene.h"
#include "support/test_places.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <EGL/egl.h>
#include <EGL/eglext.h>
#endif

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

static std::int32_t drawing_width, drawing_height;

[[noreturn]] static void give_up(const char *step) {
    std::fprintf(stderr, "No OpenGL to test with: %s failed.\n", step);
    std::abort();
}

#ifdef _WIN32

static const char WINDOW_CLASS[] = "orvanel:test_window";
static HWND window;
static HDC dc;
static HGLRC context;

static void create_window(std::int32_t width, std::int32_t height) {
    WNDCLASSA window_class = {};
    window_class.style = CS_OWNDC;
    window_class.lpfnWndProc = DefWindowProcA;
    window_class.hInstance = GetModuleHandleA(nullptr);
    window_class.lpszClassName = WINDOW_CLASS;
    RegisterClassA(&window_class);
    // A window without a frame, so that the client area has the size asked for on every system.
    window = CreateWindowExA(WS_EX_TOOLWINDOW, WINDOW_CLASS, "test",
                             WS_POPUP | WS_CLIPCHILDREN | WS_CLIPSIBLINGS, 0, 0, width, height,
                             nullptr, nullptr, window_class.hInstance, nullptr);
    if (window == nullptr)
        give_up("CreateWindowEx");
    ShowWindow(window, SW_SHOWNOACTIVATE); // pixels of hidden windows may not exist
}

static void create_context(std::int32_t width, std::int32_t height) {
    create_window(width, height);
    dc = GetDC(window);
    PIXELFORMATDESCRIPTOR format = {};
    format.nSize = sizeof format;
    format.nVersion = 1;
    format.dwFlags = PFD_DRAW_TO_WINDOW | PFD_SUPPORT_OPENGL | PFD_DOUBLEBUFFER;
    format.iPixelType = PFD_TYPE_RGBA;
    format.cColorBits = 24;
    format.cDepthBits = 24;
    if (!SetPixelFormat(dc, ChoosePixelFormat(dc, &format), &format))
        give_up("SetPixelFormat");
    context = wglCreateContext(dc);
    if (context == nullptr || !wglMakeCurrent(dc, context))
        give_up("wglMakeCurrent");
}

static void destroy_context() {
    wglMakeCurrent(nullptr, nullptr);
    wglDeleteContext(context);
    ReleaseDC(window, dc);
    DestroyWindow(window);
}

#else

static EGLDisplay display;
static EGLSurface surface;
static EGLContext context;

static EGLDisplay open_display() {
    const auto get_display = reinterpret_cast<PFNEGLGETPLATFORMDISPLAYEXTPROC>(
        eglGetProcAddress("eglGetPlatformDisplayEXT"));
    if (get_display == nullptr)
        give_up("eglGetPlatformDisplayEXT");
    // Rendered in software whatever the machine holds: the pictures are the same everywhere.
    setenv("LIBGL_ALWAYS_SOFTWARE", "1", 1);
    const EGLDisplay opened =
        get_display(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr);
    if (opened == EGL_NO_DISPLAY || !eglInitialize(opened, nullptr, nullptr))
        give_up("eglInitialize");
    return opened;
}

static void create_context(std::int32_t width, std::int32_t height) {
    display = open_display();
    const EGLint wanted[] = {EGL_SURFACE_TYPE,
                             EGL_PBUFFER_BIT,
                             EGL_RENDERABLE_TYPE,
                             EGL_OPENGL_BIT,
                             EGL_RED_SIZE,
                             8,
                             EGL_GREEN_SIZE,
                             8,
                             EGL_BLUE_SIZE,
                             8,
                             EGL_DEPTH_SIZE,
                             24,
                             EGL_NONE};
    EGLConfig config = nullptr;
    EGLint found = 0;
    if (!eglChooseConfig(display, wanted, &config, 1, &found) || found < 1)
        give_up("eglChooseConfig");
    const EGLint size[] = {EGL_WIDTH, width, EGL_HEIGHT, height, EGL_NONE};
    surface = eglCreatePbufferSurface(display, config, size);
    eglBindAPI(EGL_OPENGL_API);
    // Without a version asked for, the context is one with all of the fixed-function calls.
    context = eglCreateContext(display, config, EGL_NO_CONTEXT, nullptr);
    if (surface == EGL_NO_SURFACE || context == EGL_NO_CONTEXT ||
        !eglMakeCurrent(display, surface, surface, context))
        give_up("eglMakeCurrent");
}

// The display stays initialised: the driver's threads and shader cache are slow to bring up.
static void destroy_context() {
    eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    eglDestroyContext(display, context);
    eglDestroySurface(display, surface);
}

#endif

GlContext::GlContext(std::int32_t context_width, std::int32_t context_height)
    : width(context_width), height(context_height) {
    drawing_width = width;
    drawing_height = height;
    create_context(width, height);
    glViewport(0, 0, width, height);
    gl_init_state();
    scene_lights_init();
}

GlContext::~GlContext() {
    destroy_context();
}

Pixel gl_pixel(std::int32_t x, std::int32_t y) {
    unsigned char rgb[4] = {};
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(x, drawing_height - 1 - y, 1, 1, GL_RGB, GL_UNSIGNED_BYTE, rgb);
    return {rgb[0], rgb[1], rgb[2]};
}

static std::vector<unsigned char> read_rectangle(std::int32_t x, std::int32_t y,
                                                 std::int32_t rectangle_width,
                                                 std::int32_t rectangle_height) {
    std::vector<unsigned char> rgb(static_cast<std::size_t>(rectangle_width) *
                                   static_cast<std::size_t>(rectangle_height) * 3);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(x, drawing_height - y - rectangle_height, rectangle_width, rectangle_height,
                 GL_RGB, GL_UNSIGNED_BYTE, rgb.data());
    return rgb;
}

std::int32_t gl_count_differing(std::int32_t x, std::int32_t y, std::int32_t width,
                                std::int32_t height, Pixel colour, int tolerance) {
    const std::vector<unsigned char> rgb = read_rectangle(x, y, width, height);
    std::int32_t differing = 0;
    for (std::size_t i = 0; i < rgb.size(); i += 3) {
        if (std::abs(rgb[i] - colour.red) > tolerance ||
            std::abs(rgb[i + 1] - colour.green) > tolerance ||
            std::abs(rgb[i + 2] - colour.blue) > tolerance)
            differing++;
    }
    return differing;
}

void gl_save_picture(const char *name) {
    const std::vector<unsigned char> rgb = read_rectangle(0, 0, drawing_width, drawing_height);
    const std::string path = std::string(ORVANEL_PICTURE_DIR) + "/" + name + ".ppm";
    FILE *file = std::fopen(path.c_str(), "wb");
    if (file == nullptr)
        return;
    std::fprintf(file, "P6\n%d %d\n255\n", static_cast<int>(drawing_width),
                 static_cast<int>(drawing_height));
    const std::size_t row = static_cast<std::size_t>(drawing_width) * 3;
    for (std::int32_t y = drawing_height - 1; y >= 0; y--)
        std::fwrite(rgb.data() + static_cast<std::size_t>(y) * row, 1, row, file);
    std::fclose(file);
}
