#include "platform/thread.h"

#include <windows.h>

struct Thread {
    HANDLE handle;
};

static DWORD WINAPI run(void *function) {
    reinterpret_cast<void (*)()>(function)();
    return 0;
}

Thread *thread_start(void (*function)()) {
    const HANDLE handle =
        CreateThread(nullptr, 0, run, reinterpret_cast<void *>(function), 0, nullptr);
    return handle != nullptr ? new Thread{handle} : nullptr;
}

bool thread_join(Thread *thread, std::uint32_t milliseconds) {
    const bool ended = WaitForSingleObject(thread->handle, milliseconds) == WAIT_OBJECT_0;
    CloseHandle(thread->handle);
    delete thread;
    return ended;
}

void thread_sleep(std::uint32_t milliseconds) {
    Sleep(milliseconds);
}
