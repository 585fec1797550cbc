// Prints the visible top-level windows of this session as a screen reader would find them: class,
// title, and the text of every control in them, one window a line, parts separated by '|'.
// The end-to-end tests read message boxes with it.
#include <windows.h>

#include <cstdio>

static void print_utf8(const wchar_t *text) {
    char bytes[4096];
    const int length =
        WideCharToMultiByte(CP_UTF8, 0, text, -1, bytes, sizeof bytes, nullptr, nullptr);
    for (int i = 0; i + 1 < length; i++)
        std::putchar(bytes[i] == '\n' || bytes[i] == '\r' ? ' ' : bytes[i]);
}

static BOOL CALLBACK print_control(HWND control, LPARAM) {
    wchar_t text[1024];
    GetWindowTextW(control, text, 1024);
    std::putchar('|');
    print_utf8(text);
    return TRUE;
}

static BOOL CALLBACK print_window(HWND window, LPARAM) {
    if (!IsWindowVisible(window))
        return TRUE;
    wchar_t text[1024];
    GetClassNameW(window, text, 1024);
    print_utf8(text);
    std::putchar('|');
    GetWindowTextW(window, text, 1024);
    print_utf8(text);
    EnumChildWindows(window, print_control, 0);
    std::putchar('\n');
    return TRUE;
}

int main() {
    EnumWindows(print_window, 0);
    return 0;
}
