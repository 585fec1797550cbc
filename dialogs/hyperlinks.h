// Turns a static control of a dialog into a hyperlink: underlined and with a hand under the mouse;
// a click posts WM_COMMAND with both parameters 0 to the dialog. The Tab key goes to it as well,
// and Enter and the space bar are clicks then. It cleans up after itself when the control is
// destroyed.
#pragma once

#include <windows.h>

// False when the system refuses; the control is what it was then.
bool ConvertStaticToHyperlink(HWND control);
