#include "dialogs/tab_keys.h"

#include <commctrl.h>

static constexpr UINT_PTR SUBCLASS_ID = 2;

static HWND tab_control;
static HHOOK message_hook;

static bool is_down(int key) {
    return GetKeyState(key) < 0;
}

// Pages to go on; 0 = the message is no such key.
static int step_of(const MSG &message) {
    if (message.message != WM_KEYDOWN || !is_down(VK_CONTROL) || is_down(VK_MENU))
        return 0;
    switch (message.wParam) {
    case VK_TAB:
        return is_down(VK_SHIFT) ? -1 : 1;
    case VK_NEXT:
        return 1;
    case VK_PRIOR:
        return -1;
    default:
        return 0;
    }
}

static void go(int step) {
    const LRESULT pages = SendMessageA(tab_control, TCM_GETITEMCOUNT, 0, 0);
    const LRESULT shown = SendMessageA(tab_control, TCM_GETCURSEL, 0, 0);
    SendMessageA(tab_control, TCM_SETCURSEL, static_cast<WPARAM>((shown + step + pages) % pages),
                 0);
    NMHDR told = {};
    told.hwndFrom = tab_control;
    told.idFrom = static_cast<UINT_PTR>(GetDlgCtrlID(tab_control));
    told.code = TCN_SELCHANGE;
    SendMessageA(GetParent(tab_control), WM_NOTIFY, told.idFrom, reinterpret_cast<LPARAM>(&told));
}

static LRESULT CALLBACK filter(int code, WPARAM wparam, LPARAM lparam) {
    const MSG &message = *reinterpret_cast<const MSG *>(lparam);
    if (code != MSGF_DIALOGBOX || !IsChild(GetParent(tab_control), message.hwnd))
        return CallNextHookEx(message_hook, code, wparam, lparam);
    const int step = step_of(message);
    if (step == 0)
        return CallNextHookEx(message_hook, code, wparam, lparam);
    go(step);
    return 1; // the key is used up
}

static LRESULT CALLBACK watch_end(HWND tab, UINT message, WPARAM wparam, LPARAM lparam, UINT_PTR id,
                                  DWORD_PTR) {
    if (message == WM_NCDESTROY) {
        UnhookWindowsHookEx(message_hook);
        message_hook = nullptr;
        tab_control = nullptr;
        RemoveWindowSubclass(tab, watch_end, id);
    }
    return DefSubclassProc(tab, message, wparam, lparam);
}

// The keys go to whichever control has the focus, and the dialog takes Ctrl+Tab for Tab: they are
// taken out before it sees them.
void tab_keys_attach(HWND tab) {
    tab_control = tab;
    message_hook = SetWindowsHookExA(WH_MSGFILTER, filter, nullptr, GetCurrentThreadId());
    SetWindowSubclass(tab, watch_end, SUBCLASS_ID, 0);
}
