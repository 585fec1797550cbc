#include "platform/thread.h"

#include "platform/posix/recorder.h"

#include <chrono>
#include <ctime>
#include <pthread.h>
#include <thread>

struct Thread {
    pthread_t handle;
};

static void *run(void *function) {
    reinterpret_cast<void (*)()>(function)();
    return nullptr;
}

Thread *thread_start(void (*function)()) {
    pthread_t handle;
    if (recorder.threads_refused ||
        pthread_create(&handle, nullptr, run, reinterpret_cast<void *>(function)) != 0)
        return nullptr;
    return new Thread{handle};
}

static timespec time_after(std::uint32_t milliseconds) {
    static constexpr long NANOSECONDS = 1'000'000'000;
    timespec time;
    clock_gettime(CLOCK_REALTIME, &time);
    time.tv_sec += milliseconds / 1000;
    time.tv_nsec += static_cast<long>(milliseconds % 1000) * 1'000'000;
    time.tv_sec += time.tv_nsec / NANOSECONDS;
    time.tv_nsec %= NANOSECONDS;
    return time;
}

bool thread_join(Thread *thread, std::uint32_t milliseconds) {
    const timespec limit = time_after(milliseconds);
    const bool ended = pthread_timedjoin_np(thread->handle, nullptr, &limit) == 0;
    if (!ended)
        pthread_detach(thread->handle);
    delete thread;
    return ended;
}

void thread_sleep(std::uint32_t milliseconds) {
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}
