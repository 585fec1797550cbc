#include "tests/windows/dialog_growth.h"

#include "page/options.h"
#include "platform/gl.h"
#include "platform/win32/object_count.h"
#include "tests/windows/memory_use.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <iterator>
#include <numeric>

static constexpr int WARM_UP = 30; // what is made once and kept
// The 64-bit program does not ship; it has the same code and is given less time.
static constexpr int CYCLES = sizeof(void *) == 4 ? 300 : 60;
static constexpr long long HEAP_TOLERANCE = 15 * 1024; // bytes; 50 a cycle of the 32-bit program
// Bytes; a driver's caches. A context or a window's picture left behind each time is far more.
static constexpr long long MEMORY_TOLERANCE = 8 * 1024 * 1024;

static BOOL CALLBACK count_window(HWND, LPARAM count) {
    ++*reinterpret_cast<int *>(count);
    return TRUE;
}

struct Holdings {
    int windows = 0;
    int objects = std::accumulate(std::begin(object_count), std::end(object_count), 0);
    long long heap = heap_bytes();
    long long memory = working_set_bytes();
    GLuint lists = glGenLists(1);

    Holdings() {
        EnumThreadWindows(GetCurrentThreadId(), count_window, reinterpret_cast<LPARAM>(&windows));
        glDeleteLists(lists, 1); // the next free one: a leak moves it on
    }
};

// ---- the user, who cancels a dialog as soon as it stands there

static bool cancelled;

static void cancel(HWND dialog) {
    if (!cancelled)
        cancelled = PostMessageA(dialog, WM_COMMAND, IDCANCEL, 0) != 0;
}

// A dialog's loop tells the owner that nothing is left to do. With a preview in it there always is.
static LRESULT CALLBACK cancel_when_idle(int code, WPARAM wparam, LPARAM lparam) {
    const CWPSTRUCT *sent = reinterpret_cast<const CWPSTRUCT *>(lparam);
    if (code == HC_ACTION && sent->message == WM_ENTERIDLE && sent->wParam == MSGF_DIALOGBOX)
        cancel(reinterpret_cast<HWND>(sent->lParam));
    return CallNextHookEx(nullptr, code, wparam, lparam);
}

// Timers come after painting: the dialog has been drawn when one of its own comes.
static LRESULT CALLBACK cancel_when_drawn(int code, WPARAM wparam, LPARAM lparam) {
    const MSG *message = reinterpret_cast<const MSG *>(lparam);
    if (code == HC_ACTION && message->message == WM_TIMER && message->hwnd != nullptr) {
        const HWND window = GetAncestor(message->hwnd, GA_ROOT);
        if (GetWindow(window, GW_OWNER) != nullptr && IsWindowVisible(window))
            cancel(window);
    }
    return CallNextHookEx(nullptr, code, wparam, lparam);
}

struct Canceller {
    HHOOK idle = SetWindowsHookExA(WH_CALLWNDPROC, cancel_when_idle, nullptr, GetCurrentThreadId());
    HHOOK drawn =
        SetWindowsHookExA(WH_GETMESSAGE, cancel_when_drawn, nullptr, GetCurrentThreadId());

    Canceller() = default;
    ~Canceller() {
        UnhookWindowsHookEx(idle);
        UnhookWindowsHookEx(drawn);
    }
    Canceller(const Canceller &) = delete;
    Canceller &operator=(const Canceller &) = delete;
};

static void open_times(void (*open_and_close)(), int times) {
    for (int i = 0; i < times; i++) {
        cancelled = false;
        open_and_close();
        ASSERT_TRUE(cancelled) << i; // it did open
    }
}

void expect_no_growth(void (*open_and_close)()) {
    const Canceller canceller;
    open_times(open_and_close, WARM_UP);
    const Holdings before;
    open_times(open_and_close, CYCLES);
    const Holdings after;
    EXPECT_EQ(after.windows, before.windows);
    EXPECT_EQ(after.objects, before.objects);
    EXPECT_LT(after.lists, before.lists + CYCLES); // the next free one may be another by chance
    EXPECT_LT(after.heap, before.heap + HEAP_TOLERANCE);
    EXPECT_LT(after.memory, before.memory + MEMORY_TOLERANCE);
}

void expect_no_growth_with_preview(void (*open_and_close)()) {
    const std::int32_t before = orvanel_options.anti_aliasing;
    orvanel_options.anti_aliasing = 0;
    expect_no_growth(open_and_close);
    orvanel_options.anti_aliasing = before;
}
