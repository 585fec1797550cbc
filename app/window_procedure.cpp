#include "actions/menu_windows.h"
#include "app/commands.h"
#include "app/hand_over.h"
#include "app/input.h"
#include "app/main_window.h"
#include "scene/frame_clock.h"
#include "scene/interaction.h"
#include "scene/scene.h"

#include <windowsx.h>

static constexpr LONG MINIMUM_WIDTH = 640;  // pixels, frame included
static constexpr LONG MINIMUM_HEIGHT = 480; // pixels, frame included

static void set_minimum_size(MINMAXINFO *limits) {
    limits->ptMinTrackSize.x = MINIMUM_WIDTH;
    limits->ptMinTrackSize.y = MINIMUM_HEIGHT;
}

// A page that a second instance was started with.
static void take_page(HWND window, const COPYDATASTRUCT *message) {
    char path[HAND_OVER_SIZE];
    if (message == nullptr ||
        !hand_over_read(message->dwData, message->lpData, message->cbData, path))
        return;
    SetForegroundWindow(GetLastActivePopup(window)); // a dialog of ours keeps the keyboard
    hand_over_keep(path);
    scene_request_redraw();
}

// F10 reaches the program as a key of the system menu; with Control it is a key of ours.
static bool takes_system_key(WPARAM code) {
    return code == VK_F10 && keys[KEY_CONTROL] == 1;
}

// What a menu sends; a message with a window in it comes from a control, and there is none here.
static void run_command(WPARAM wparam, LPARAM lparam) {
    if (lparam == 0)
        command_run(LOWORD(wparam));
}

static bool is_from_keyboard(LPARAM position) {
    return position == -1;
}

static std::int32_t mouse_buttons(WPARAM keys_down) {
    return ((keys_down & MK_LBUTTON) != 0 ? MOUSE_LEFT : 0) |
           ((keys_down & MK_MBUTTON) != 0 ? MOUSE_MIDDLE : 0) |
           ((keys_down & MK_RBUTTON) != 0 ? MOUSE_RIGHT : 0);
}

LRESULT CALLBACK WndProc(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
    case WM_KEYUP:
        input_key_up(static_cast<std::int32_t>(wparam));
        return 0;
    case WM_SYSKEYUP: // so does a key let go of while Alt is down, as the Control key of AltGr is
        input_key_up(static_cast<std::int32_t>(wparam));
        break;
    case WM_ERASEBKGND:
        scene_request_redraw();
        return 0;
    case WM_MEASUREITEM:
        menu_item_measure(window, reinterpret_cast<MEASUREITEMSTRUCT *>(lparam));
        return 1;
    case WM_DRAWITEM:
        menu_item_draw(window, reinterpret_cast<const DRAWITEMSTRUCT *>(lparam));
        return 1;
    case WM_MENUCHAR:
        return menu_item_char(window, wparam, lparam);
    case MENU_HIGHLIGHT_MESSAGE:
        menu_item_highlight(window, wparam, lparam);
        return 0;
    case WM_COPYDATA:
        take_page(window, reinterpret_cast<const COPYDATASTRUCT *>(lparam));
        return 0;
    case WM_KEYDOWN:
        input_key_down(static_cast<std::int32_t>(wparam));
        return 0;
    case WM_SYSKEYDOWN:
        if (!takes_system_key(wparam))
            break;
        input_key_down(static_cast<std::int32_t>(wparam));
        return 0;
    case WM_CONTEXTMENU: // Shift + F10, or the mouse on the title bar, which has a menu of its own
        if (!is_from_keyboard(lparam))
            break;
        input_menu_key();
        return 0;
    case WM_COMMAND:
        run_command(wparam, lparam);
        return 0;
    case WM_SIZE:
        input_resize(LOWORD(lparam), HIWORD(lparam));
        return 0;
    case WM_PAINT:
        input_paint();
        break; // the system marks the window as painted
    case WM_CLOSE:
        input_close();
        return 0;
    case WM_QUERYENDSESSION:
        return input_end_session() ? TRUE : FALSE;
    case WM_GETMINMAXINFO:
        set_minimum_size(reinterpret_cast<MINMAXINFO *>(lparam));
        return 0;
    case WM_LBUTTONDOWN:
        input_left_down(GET_X_LPARAM(lparam), GET_Y_LPARAM(lparam));
        return 0;
    case WM_LBUTTONUP:
        input_left_up(GET_X_LPARAM(lparam), GET_Y_LPARAM(lparam));
        return 0;
    case WM_CAPTURECHANGED:
        if (reinterpret_cast<HWND>(lparam) != window)
            input_capture_lost();
        return 0;
    case WM_MBUTTONUP:
        input_button_up(MOUSE_MIDDLE);
        return 0;
    case WM_RBUTTONDOWN:
        input_right_down(GET_X_LPARAM(lparam), GET_Y_LPARAM(lparam));
        return 0;
    case WM_RBUTTONUP:
        input_button_up(MOUSE_RIGHT);
        return 0;
    case WM_MOUSEWHEEL:
        input_wheel(GET_WHEEL_DELTA_WPARAM(wparam));
        return 0;
    case WM_MOUSEMOVE:
        input_mouse_move(GET_X_LPARAM(lparam), GET_Y_LPARAM(lparam), mouse_buttons(wparam));
        return 0;
    case WM_LBUTTONDBLCLK:
        input_double_click(GET_X_LPARAM(lparam), GET_Y_LPARAM(lparam));
        return 0;
    case WM_KILLFOCUS:
        input_focus_lost();
        return 0;
    case WM_EXITMENULOOP:
        input_keys_released(); // their releases were the menu's, which may be the title bar's
        [[fallthrough]];
    case WM_EXITSIZEMOVE:
    case WM_POWERBROADCAST:
        // The main loop stood still, perhaps for a whole night.
        reset_frame_timer();
        break;
    default:
        break;
    }
    return DefWindowProcA(window, message, wparam, lparam);
}
