// The window that the preview's OpenGL draws in, and how its picture comes on the screen. It is the
// control itself, except on systems that show nothing of OpenGL inside a dialog: there it is a
// window of the control's size that is never shown, and its picture is copied into the control.
#pragma once

#include <windows.h>

enum class ViewerCanvas { InControl, Hidden };

// What this system needs; the choice holds for the controls made from now on.
ViewerCanvas model_viewer_canvas_of_system();
void model_viewer_canvas_choose(ViewerCanvas canvas);

// The window to draw in, null when there is none. control outlives it.
HWND model_viewer_canvas_make(HWND control);
void model_viewer_canvas_destroy(); // after its context

void model_viewer_canvas_resize(int width, int height); // pixels, of the control

// Brings what was drawn with dc, whose context is current, on the screen.
void model_viewer_canvas_show(HDC dc);
