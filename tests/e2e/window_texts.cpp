// Prints what stands on the screen as a screen reader would find it, parts separated by '|'. Alone:
// the visible top-level windows, one a line: class, title, and the text of every control. With a
// title as argument: the visible controls of that window, one a line in tab order: class, id, text,
// left, top, right, bottom (screen pixels), state ('checked', 'disabled', 'focus' or nothing, by
// commas). The end-to-end tests read message boxes and dialogs with it.
#include <windows.h>

#include <cstdio>

static void print_utf8(const wchar_t *text) {
    char bytes[4096];
    const int length =
        WideCharToMultiByte(CP_UTF8, 0, text, -1, bytes, sizeof bytes, nullptr, nullptr);
    for (int i = 0; i + 1 < length; i++)
        std::putchar(bytes[i] == '\n' || bytes[i] == '\r' ? ' ' : bytes[i]);
}

// Titles and captions, which the system keeps itself: a program that is busy holds nobody up.
static void print_caption(HWND window) {
    wchar_t text[1024] = L"";
    GetWindowTextW(window, text, 1024);
    print_utf8(text);
}

static void print_class(HWND window) {
    wchar_t text[256];
    GetClassNameW(window, text, 256);
    print_utf8(text);
}

// ---- all windows

static BOOL CALLBACK print_caption_of_control(HWND control, LPARAM) {
    std::putchar('|');
    print_caption(control);
    return TRUE;
}

static BOOL CALLBACK print_window(HWND window, LPARAM) {
    if (!IsWindowVisible(window))
        return TRUE;
    print_class(window);
    std::putchar('|');
    print_caption(window);
    EnumChildWindows(window, print_caption_of_control, 0);
    std::putchar('\n');
    return TRUE;
}

// ---- one window

static constexpr UINT ANSWER_TIME = 5000; // milliseconds

static bool is_of_class(HWND window, const wchar_t *wanted) {
    wchar_t name[256];
    GetClassNameW(window, name, 256);
    return lstrcmpW(name, wanted) == 0;
}

// What stands in a control, of whatever kind it is. Each one that is asked waits for a busy dialog.
static void print_text(HWND control) {
    if (is_of_class(control, L"Button") || is_of_class(control, L"Static")) {
        print_caption(control);
        return;
    }
    wchar_t text[1024] = L"";
    SendMessageTimeoutW(control, WM_GETTEXT, 1024, reinterpret_cast<LPARAM>(text), SMTO_ABORTIFHUNG,
                        ANSWER_TIME, nullptr);
    print_utf8(text);
}

static void print_state(HWND control) {
    GUITHREADINFO thread = {};
    thread.cbSize = sizeof thread;
    GetGUIThreadInfo(GetWindowThreadProcessId(control, nullptr), &thread);
    DWORD_PTR check = BST_UNCHECKED;
    if (is_of_class(control, L"Button"))
        SendMessageTimeoutW(control, BM_GETCHECK, 0, 0, SMTO_ABORTIFHUNG, ANSWER_TIME, &check);
    if (check == BST_CHECKED)
        std::printf("checked,");
    if (!IsWindowEnabled(control))
        std::printf("disabled,");
    if (thread.hwndFocus == control)
        std::printf("focus,");
}

static BOOL CALLBACK print_control(HWND control, LPARAM) {
    if (!IsWindowVisible(control))
        return TRUE;
    RECT area;
    GetWindowRect(control, &area);
    print_class(control);
    std::printf("|%d|", GetDlgCtrlID(control));
    print_text(control);
    std::printf("|%ld|%ld|%ld|%ld|", area.left, area.top, area.right, area.bottom);
    print_state(control);
    std::putchar('\n');
    return TRUE;
}

int main(int count, char **arguments) {
    if (count < 2)
        EnumWindows(print_window, 0);
    else
        EnumChildWindows(FindWindowA("#32770", arguments[1]), print_control, 0);
    return 0;
}
