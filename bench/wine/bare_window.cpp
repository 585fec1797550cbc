// The least that shows a frame: the same window and context as the program's, one swap. The start
// benchmark measures the program beside it.
#include "bench/wine/first_frame.h"
#include "page/options.h"
#include "platform/gl.h"
#include "platform/window.h"
#include "scene/gl_window.h"
#include "scene/scene_floor.h"

#include <windows.h>

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR, int) {
    options_set_defaults();
    WNDCLASSEXA window_class = {};
    window_class.cbSize = sizeof window_class;
    window_class.style = CS_HREDRAW | CS_VREDRAW | CS_OWNDC;
    window_class.lpfnWndProc = DefWindowProcA;
    window_class.hInstance = instance;
    window_class.lpszClassName = MAIN_WINDOW_CLASS;
    RegisterClassExA(&window_class);
    screen_size(&screen_size_x, &screen_size_y);
    scene_floor.window_width = 1280;
    scene_floor.window_height = 980;
    HDC dc = nullptr;
    HGLRC context = nullptr;
    const HWND window = gl_create_window(&dc, &context, "bare");
    ShowWindow(window, SW_SHOW);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    SwapBuffers(dc);
    first_frame_shown();
    MSG message;
    while (GetMessageA(&message, nullptr, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
    return 0;
}
