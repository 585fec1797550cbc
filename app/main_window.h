// The main window on Windows: its class, its life, and the handles that belong to it.
#pragma once

#include "app/window_rebuild.h"

#include <windows.h>

extern HINSTANCE hInst; // the program
extern HWND hWnd;       // main window; these three are null while there is none
extern HDC hDC;         // of its client area, held as long as the window lives
extern HGLRC hRC;       // its OpenGL context

// Registers the window class. 0, or 1 when the system refuses.
int main_window_register(HINSTANCE instance);

// Creates the window, still hidden, in the size that suits the screen. 0, or 1 when the system
// refuses.
int main_window_create();
void main_window_show(); // in front, with the focus
void main_window_destroy();

// Repaints at once.
void main_window_update();

// Window procedure of the class (window_procedure.cpp).
LRESULT CALLBACK WndProc(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
