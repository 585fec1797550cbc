// Helpers that all dialogs share.
#pragma once

#include <windows.h>

#include <cstdint>

// Moves the dialog over the middle of the parent's client area, kept on the screen; its size stays.
// Without a parent it goes to the middle of the screen.
void dialog_center_on_parent(HWND parent, HWND dialog);

// Gives a tab's page the themed background where the system has themes, else does nothing.
void enable_xp_theme(HWND dialog);

// Opens a dialog of the program's resources over the main window and waits for its end. Returns a
// DialogResult (dialogs/dialogs.h).
std::int32_t dialog_run(int template_id, DLGPROC procedure);
