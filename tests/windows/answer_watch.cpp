#include "tests/windows/answer_watch.h"

#include "tests/windows/memory_use.h"

#include <algorithm>
#include <cstdlib>

static constexpr DWORD PAUSE = 5;       // milliseconds between two questions
static constexpr int MEMORY_PERIOD = 8; // questions between two looks at the memory

// Of all processors' time, when the program is the only one that works.
static constexpr double IDLE_SHARE = 0.25;

static ULONGLONG number(const FILETIME &time) {
    return static_cast<ULONGLONG>(time.dwHighDateTime) << 32 | time.dwLowDateTime;
}

// What has passed since the times that are there.
static void take_times(ULONGLONG *idle_time, ULONGLONG *time) {
    FILETIME idle = {}, kernel = {}, user = {};
    GetSystemTimes(&idle, &kernel, &user);
    *idle_time = number(idle) - *idle_time;
    *time = number(kernel) + number(user) - *time; // that of the kernel counts the idle one
}

// A window that has gone meanwhile has nothing to answer.
static void ask(HWND window, AnswerWatch::Asked *asked) {
    if (window == nullptr || !IsWindow(window))
        return;
    if (SendMessageTimeoutA(window, WM_NULL, 0, 0, SMTO_BLOCK, ANSWER_LIMIT, nullptr) != 0)
        asked->in_time++;
    else if (IsWindow(window))
        asked->late++;
}

static DWORD WINAPI ask_program(void *parameter) {
    AnswerWatch *watch = static_cast<AnswerWatch *>(parameter);
    for (int i = 0; !watch->stopping; i++) {
        if (watch->dialog != nullptr) {
            ask(watch->main_window, &watch->main_asked);
            ask(watch->dialog, &watch->dialog_asked);
        }
        if (i % MEMORY_PERIOD == 0)
            watch->most_memory =
                std::max(watch->most_memory, static_cast<SIZE_T>(working_set_bytes()));
        Sleep(PAUSE);
    }
    return 0;
}

static DWORD WINAPI ask_idle_window(void *parameter) {
    AnswerWatch *watch = static_cast<AnswerWatch *>(parameter);
    while (!watch->stopping) {
        ask(watch->idle_window, &watch->idle_asked);
        Sleep(PAUSE);
    }
    return 0;
}

static DWORD WINAPI be_idle(void *parameter) {
    AnswerWatch *watch = static_cast<AnswerWatch *>(parameter);
    watch->idle_window =
        CreateWindowA("STATIC", "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    MSG message;
    while (GetMessageA(&message, nullptr, 0, 0) > 0)
        DispatchMessageA(&message);
    DestroyWindow(watch->idle_window);
    return 0;
}

AnswerWatch::AnswerWatch(HWND window) : idle_time(0), time(0), main_window(window) {
    take_times(&idle_time, &time);
    static constexpr LPTHREAD_START_ROUTINE FUNCTIONS[] = {be_idle, ask_idle_window, ask_program};
    for (int i = 0; i < 3; i++) {
        threads[i] = CreateThread(nullptr, 0, FUNCTIONS[i], this, 0, nullptr);
        if (threads[i] == nullptr)
            abort(); // nothing would be watched
    }
    while (idle_window == nullptr)
        Sleep(PAUSE);
}

void AnswerWatch::stop() {
    if (stopping.exchange(true))
        return;
    take_times(&idle_time, &time);
    // The caller's own windows are asked until here: they go on answering.
    while (MsgWaitForMultipleObjects(1, &threads[2], FALSE, INFINITE, QS_SENDMESSAGE) !=
           WAIT_OBJECT_0) {
        MSG message;
        PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE | PM_QS_SENDMESSAGE);
    }
    WaitForSingleObject(threads[1], INFINITE);
    PostThreadMessageA(GetThreadId(threads[0]), WM_QUIT, 0, 0);
    WaitForMultipleObjects(3, threads, TRUE, INFINITE);
    for (const HANDLE thread : threads)
        CloseHandle(thread);
}

bool AnswerWatch::machine_was_busy() const {
    return idle_asked.late > 0 ||
           static_cast<double>(idle_time) < IDLE_SHARE * static_cast<double>(time);
}

AnswerWatch::~AnswerWatch() {
    stop();
}
