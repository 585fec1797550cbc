// Helpers that all dialogs share.
#pragma once

#include <windows.h>

// Moves the dialog over the middle of the parent's client area, kept on the screen; its size stays.
// Without a parent it goes to the middle of the screen.
void dialog_center_on_parent(HWND parent, HWND dialog);

// Gives a tab's page the themed background where the system has themes, else does nothing.
void enable_xp_theme(HWND dialog);
