#include "tests/windows/dialog_growth.h"

#include "platform/gl.h"
#include "platform/win32/object_count.h"
#include "tests/windows/dialog_player.h"

#include <gtest/gtest.h>

#include <psapi.h>

#include <numeric>

static constexpr int WARM_UP = 30; // what is made once and kept
// The 64-bit program does not ship; it has the same code and is given less time.
static constexpr int CYCLES = sizeof(void *) == 4 ? 300 : 60;
static constexpr long long MEMORY_TOLERANCE =
    300 * 1024; // bytes; a kilobyte a cycle of the 32-bit program

static BOOL CALLBACK count_window(HWND, LPARAM count) {
    ++*reinterpret_cast<int *>(count);
    return TRUE;
}

struct Holdings {
    int windows = 0;
    int objects = std::accumulate(std::begin(object_count), std::end(object_count), 0);
    long long memory = 0; // bytes
    GLuint lists = glGenLists(1);

    Holdings() {
        EnumThreadWindows(GetCurrentThreadId(), count_window, reinterpret_cast<LPARAM>(&windows));
        PROCESS_MEMORY_COUNTERS_EX counters = {};
        counters.cb = sizeof counters;
        GetProcessMemoryInfo(GetCurrentProcess(),
                             reinterpret_cast<PROCESS_MEMORY_COUNTERS *>(&counters),
                             sizeof counters);
        memory = static_cast<long long>(counters.PrivateUsage);
        glDeleteLists(lists, 1); // the next free one: a leak moves it on
    }
};

void expect_no_growth(void (*open_and_close)()) {
    DialogPlayer player({}); // cancels
    for (int i = 0; i < WARM_UP; i++)
        open_and_close();
    const Holdings before;
    for (int i = 0; i < CYCLES; i++)
        open_and_close();
    const Holdings after;
    EXPECT_EQ(after.windows, before.windows);
    EXPECT_EQ(after.objects, before.objects);
    EXPECT_LT(after.lists, before.lists + CYCLES); // the next free one may be another by chance
    EXPECT_LT(after.memory, before.memory + MEMORY_TOLERANCE);
}
