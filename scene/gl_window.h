// The main window's GL side on Windows: the window, its pixel format, plain or multisampled, and
// its context.
#pragma once

#include "scene/gl_util.h"

#include <windows.h>

inline constexpr char MAIN_WINDOW_CLASS[] = "orvanel:main_window";

// Creates the main window, hidden and centred on the screen, with a client area of the size in
// scene_floor, and makes its context current. Its class is registered by the caller. Null when
// there is no window or no OpenGL to be had.
HWND gl_create_window(HDC *dc, HGLRC *context, const char *title);
void gl_destroy_window(HWND window, HDC dc, HGLRC context);

// 0 when the extension is listed, 1 when not: the sense is inverted on purpose.
int WGLisExtensionSupported(const char *name);

// 1 when a multisampled format was found (arbMultisampleFormat), else arbMultisampleSupported.
int InitMultisample(HINSTANCE instance, HWND window, const PIXELFORMATDESCRIPTOR *descriptor);

// What every window of the program asks for that does without multisampling: RGBA, double buffered,
// 24 bits of colour and 16 of depth.
PIXELFORMATDESCRIPTOR gl_plain_pixel_format();
