#include "platform/colour_chooser.h"

#include "platform/win32/window_attach.h"

#include <windows.h>

#include <commdlg.h>

#include <algorithm>

static constexpr int CUSTOM_COLOURS = 16;

static COLORREF custom_colours[CUSTOM_COLOURS]; // mixed by the user, black at first

static COLORREF pack(std::int32_t red, std::int32_t green, std::int32_t blue) {
    return static_cast<COLORREF>((red & 255) | (green & 255) << 8 | (blue & 255) << 16);
}

// The near edge of what is centred; it stays on the screen, whose far edge it may pass when it is
// too large.
static int centred(LONG owner_near, LONG owner_far, LONG extent, LONG screen_near,
                   LONG screen_far) {
    const LONG middle = (owner_near + owner_far) / 2 - extent / 2;
    return static_cast<int>(std::max(std::min(middle, screen_far - extent), screen_near));
}

static void centre_on(HWND owner, HWND chooser) {
    MONITORINFO screen = {};
    screen.cbSize = sizeof screen;
    RECT over, area;
    if (!GetMonitorInfoA(MonitorFromWindow(owner, MONITOR_DEFAULTTONEAREST), &screen) ||
        !GetWindowRect(owner, &over) || !GetWindowRect(chooser, &area))
        return;
    const RECT &work = screen.rcWork;
    SetWindowPos(chooser, nullptr,
                 centred(over.left, over.right, area.right - area.left, work.left, work.right),
                 centred(over.top, over.bottom, area.bottom - area.top, work.top, work.bottom), 0,
                 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

// By itself it opens in the top left corner of its owner.
static UINT_PTR CALLBACK chooser_hook(HWND chooser, UINT message, WPARAM, LPARAM lparam) {
    if (message != WM_INITDIALOG)
        return FALSE;
    const HWND owner = reinterpret_cast<CHOOSECOLORA *>(lparam)->hwndOwner;
    if (owner != nullptr)
        centre_on(owner, chooser);
    return TRUE; // the chooser sets the focus
}

std::int32_t colour_choose(std::int32_t *red, std::int32_t *green, std::int32_t *blue) {
    CHOOSECOLORA choice = {};
    choice.lStructSize = sizeof choice;
    choice.hwndOwner = static_cast<HWND>(window_in_front());
    choice.rgbResult = pack(*red, *green, *blue);
    choice.lpCustColors = custom_colours;
    choice.Flags = CC_RGBINIT | CC_FULLOPEN | CC_ANYCOLOR | CC_ENABLEHOOK;
    choice.lpfnHook = chooser_hook;
    if (ChooseColorA(&choice) == 0)
        return 1;
    *red = static_cast<std::int32_t>(choice.rgbResult & 255);
    *green = static_cast<std::int32_t>(choice.rgbResult >> 8 & 255);
    *blue = static_cast<std::int32_t>(choice.rgbResult >> 16 & 255);
    return 0;
}
