// The keys that step through the pages of a dialog with tabs, wherever in it the focus is: Ctrl+Tab
// and Ctrl+PageDown go on, Ctrl+Shift+Tab and Ctrl+PageUp go back, round and round.
#pragma once

#include <windows.h>

// For the life of the tab control, which belongs to a dialog run by DialogBox; one at a time. The
// dialog is told of the new page as of one chosen with the mouse.
void tab_keys_attach(HWND tab);
