// Hands the main window over to platform/window.h.
#pragma once

// hwnd is an HWND, hdc the HDC that is drawn to; both null = there is no window any more.
void window_attach(void *hwnd, void *hdc);

// The attached window, an HWND: the owner of dialogs. Null while there is none.
void *window_attached();

// It, or the dialog that is open over it: the owner of message boxes and of the system's choosers.
void *window_in_front();
