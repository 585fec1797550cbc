// The main window's GL side on Windows: the window, its pixel format, plain or multisampled, and
// its context.
#pragma once

#include "scene/gl_util.h"

#include <windows.h>

inline constexpr char MAIN_WINDOW_CLASS[] = "orvanel:main_window";

// Creates the main window centred on the screen and makes its context current.
HWND gl_create_window(HDC *dc, HGLRC *context, const char *title);
void gl_destroy_window(HWND window, HDC dc, HGLRC context);

// 0 when the extension is listed, 1 when not: the sense is inverted on purpose.
int WGLisExtensionSupported(const char *name);

// 1 when a multisampled format was found (arbMultisampleFormat), else arbMultisampleSupported.
int InitMultisample(HINSTANCE instance, HWND window, const PIXELFORMATDESCRIPTOR *descriptor);
