#include "dialogs/splash_screen.h"

#include "platform/win32/object_count.h"
#include "resources/resource_ids.h"

#include <windows.h>

#include <atomic>

static constexpr int WIDTH = 478; // pixels, of the bitmap
static constexpr int HEIGHT = 288;
static constexpr UINT_PTR CLOSE_TIMER = 1;
static constexpr UINT SHOWN_FOR = 1750; // milliseconds from its first painting on

static std::atomic<HWND> splash_screen_hwnd; // null = there is none, or not yet
static std::atomic<bool> wanted;             // false = it has been hidden

// Its thread's alone.
static HBITMAP splash_screen_bmp;
static HDC splash_screen_bmp_dc;
static bool painted;

static void load_bitmap() {
    splash_screen_bmp = object_made(
        OBJECT_BITMAP, LoadBitmapA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(RESOURCE_SPLASH)));
    splash_screen_bmp_dc = object_made(OBJECT_DC, CreateCompatibleDC(nullptr));
    SelectObject(splash_screen_bmp_dc, splash_screen_bmp);
}

static void free_bitmap() {
    object_destroy(splash_screen_bmp_dc);
    object_destroy(splash_screen_bmp);
}

static void open(HWND dialog) {
    painted = false;
    load_bitmap();
    SetWindowPos(dialog, nullptr, GetSystemMetrics(SM_CXSCREEN) / 2 - WIDTH / 2,
                 GetSystemMetrics(SM_CYSCREEN) / 2 - HEIGHT / 2, WIDTH, HEIGHT,
                 SWP_NOZORDER | SWP_NOACTIVATE);
    splash_screen_hwnd = dialog;
    if (!wanted)
        EndDialog(dialog, 0); // hidden before there was a window to hide
}

// A timer rather than a sleep: hiding it has to wait for nothing.
static void paint(HWND dialog) {
    PAINTSTRUCT state;
    BitBlt(BeginPaint(dialog, &state), 0, 0, WIDTH, HEIGHT, splash_screen_bmp_dc, 0, 0, SRCCOPY);
    EndPaint(dialog, &state);
    if (!painted)
        SetTimer(dialog, CLOSE_TIMER, SHOWN_FOR, nullptr);
    painted = true;
}

static void close() {
    splash_screen_hwnd = nullptr;
    free_bitmap();
}

static INT_PTR CALLBACK splash_screen(HWND dialog, UINT message, WPARAM, LPARAM) {
    switch (message) {
    case WM_INITDIALOG:
        open(dialog);
        return FALSE;
    case WM_PAINT:
        paint(dialog);
        return TRUE;
    case WM_TIMER:
    case WM_CLOSE:
        EndDialog(dialog, 0);
        return TRUE;
    case WM_DESTROY:
        close();
        return TRUE;
    default:
        return FALSE;
    }
}

static DWORD WINAPI show(void *) {
    DialogBoxParamA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(RESOURCE_DIALOG_SPLASH), nullptr,
                    splash_screen, 0);
    return 0;
}

void splash_screen_display() {
    wanted = true;
    const HANDLE thread = CreateThread(nullptr, 0, show, nullptr, 0, nullptr);
    if (thread != nullptr)
        CloseHandle(thread);
}

void splash_screen_hide() {
    wanted = false;
    const HWND window = splash_screen_hwnd;
    if (window == nullptr)
        return;
    ShowWindow(window, SW_HIDE);
    PostMessageA(window, WM_CLOSE, 0, 0);
}
