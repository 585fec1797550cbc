// Helpers that all dialogs share.
#pragma once

#include <windows.h>

#include <cstdint>

// Moves the dialog over the middle of the parent's client area, kept on the screen; its size stays.
// Without a parent it goes to the middle of the screen.
void dialog_center_on_parent(HWND parent, HWND dialog);

// Gives a tab's page the themed background where the system has themes, else does nothing.
void enable_xp_theme(HWND dialog);

// For Enter a button may report to the dialog, although it stands on the page of a tab: hands that
// on to the page. False when the command is from no control of a page.
bool dialog_pass_to_page(HWND dialog, WPARAM wparam, LPARAM lparam);

// Opens a dialog of the program's resources over the main window and waits for its end. Returns a
// DialogResult (dialogs/dialogs.h).
std::int32_t dialog_run(int template_id, DLGPROC procedure);
