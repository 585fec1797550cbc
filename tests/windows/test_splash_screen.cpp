#include "dialogs/splash_screen.h"

#include "platform/win32/object_count.h"
#include "resources/resource_ids.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>

static constexpr DWORD TIMEOUT = 20'000; // milliseconds
static constexpr DWORD STEP = 10;        // milliseconds
// Milliseconds after which the thread of a splash screen has surely come to its window.
static constexpr DWORD THREAD_START = 200;

static BOOL CALLBACK look_at(HWND window, LPARAM found) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    char name[16] = "";
    GetClassNameA(window, name, sizeof name);
    if (process == GetCurrentProcessId() && lstrcmpA(name, "#32770") == 0 &&
        IsWindowVisible(window))
        *reinterpret_cast<HWND *>(found) = window;
    return TRUE;
}

static HWND find() {
    HWND found = nullptr;
    EnumWindows(look_at, reinterpret_cast<LPARAM>(&found));
    return found;
}

// The splash screen, or null when it does not come (present) or has gone (not present) in time.
static HWND wait_for(bool present) {
    HWND found = find();
    for (DWORD waited = 0; waited < TIMEOUT && (found != nullptr) != present; waited += STEP) {
        Sleep(STEP);
        found = find();
    }
    return found;
}

TEST(SplashScreen, It_stands_in_the_middle_of_the_screen_in_the_pictures_size) {
    splash_screen_display();
    const HWND window = wait_for(true);
    ASSERT_NE(window, nullptr);
    RECT area;
    GetWindowRect(window, &area);
    EXPECT_EQ(area.left, GetSystemMetrics(SM_CXSCREEN) / 2 - 239);
    EXPECT_EQ(area.top, GetSystemMetrics(SM_CYSCREEN) / 2 - 144);
    EXPECT_EQ(area.right - area.left, 478);
    EXPECT_EQ(area.bottom - area.top, 288);
    EXPECT_EQ(GetWindow(window, GW_OWNER), nullptr);
    EXPECT_NE(GetWindowThreadProcessId(window, nullptr), GetCurrentThreadId());
    splash_screen_hide();
    EXPECT_EQ(wait_for(false), nullptr);
}

static COLORREF picture_pixel(int x, int y) {
    const HDC dc = CreateCompatibleDC(nullptr);
    const HBITMAP bitmap =
        LoadBitmapA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(RESOURCE_SPLASH));
    const HGDIOBJ before = SelectObject(dc, bitmap);
    const COLORREF colour = GetPixel(dc, x, y);
    SelectObject(dc, before);
    DeleteObject(bitmap);
    DeleteDC(dc);
    return colour;
}

static COLORREF window_pixel(HWND window, int x, int y) {
    const HDC dc = GetDC(window);
    const COLORREF colour = GetPixel(dc, x, y);
    ReleaseDC(window, dc);
    return colour;
}

static bool shows_picture(HWND window) {
    static constexpr POINT points[] = {{110, 80}, {300, 130}, {470, 280}, {5, 150}};
    return std::all_of(std::begin(points), std::end(points), [window](const POINT &point) {
        return window_pixel(window, point.x, point.y) == picture_pixel(point.x, point.y);
    });
}

TEST(SplashScreen, It_shows_the_picture_pixel_by_pixel_and_then_closes_itself) {
    bool seen = false;
    for (int i = 0; i < 5 && !seen; i++) { // a busy machine may miss it in the time it stands
        splash_screen_display();
        const HWND window = wait_for(true);
        ASSERT_NE(window, nullptr);
        for (; IsWindow(window) && !seen; Sleep(STEP))
            seen = shows_picture(window);
        EXPECT_EQ(wait_for(false), nullptr); // nobody hides it
        for (DWORD waited = 0; waited < TIMEOUT && IsWindow(window); waited += STEP)
            Sleep(STEP);
        EXPECT_FALSE(IsWindow(window));
    }
    EXPECT_TRUE(seen);
}

TEST(SplashScreen, It_stays_for_at_least_1750_milliseconds) {
    const DWORD before = GetTickCount();
    splash_screen_display();
    ASSERT_NE(wait_for(true), nullptr);
    EXPECT_EQ(wait_for(false), nullptr);
    EXPECT_GE(GetTickCount() - before, 1750u);
}

TEST(SplashScreen, Being_painted_again_does_not_keep_it_longer) {
    splash_screen_display();
    const HWND window = wait_for(true);
    ASSERT_NE(window, nullptr);
    for (DWORD waited = 0; waited < TIMEOUT && IsWindow(window); waited += STEP) {
        RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE);
        Sleep(STEP);
    }
    EXPECT_FALSE(IsWindow(window));
    splash_screen_hide();
}

TEST(SplashScreen, Its_bitmap_is_there_as_long_as_the_window_and_no_longer) {
    splash_screen_display();
    const HWND window = wait_for(true);
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(object_count[OBJECT_BITMAP], 1);
    EXPECT_EQ(object_count[OBJECT_DC], 1);
    splash_screen_hide();
    for (DWORD waited = 0; waited < TIMEOUT && IsWindow(window); waited += STEP)
        Sleep(STEP);
    EXPECT_EQ(object_count[OBJECT_BITMAP], 0);
    EXPECT_EQ(object_count[OBJECT_DC], 0);
}

TEST(SplashScreen, Hiding_it_at_once_keeps_it_from_staying) {
    for (int i = 0; i < 20; i++) {
        splash_screen_display();
        if (i % 2 == 1)
            Sleep(static_cast<DWORD>(i)); // meets it in other states
        splash_screen_hide();
        Sleep(THREAD_START);
        EXPECT_EQ(wait_for(false), nullptr);
    }
    splash_screen_hide(); // there is none
}
