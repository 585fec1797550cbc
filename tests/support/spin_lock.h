// What tests lock between threads; the compiler for Windows has no std::mutex.
#pragma once

#include "platform/thread.h"

#include <atomic>
#include <mutex> // std::lock_guard

class SpinLock {
public:
    void lock() {
        while (taken.test_and_set(std::memory_order_acquire))
            thread_sleep(0);
    }

    void unlock() {
        taken.clear(std::memory_order_release);
    }

private:
    std::atomic_flag taken;
};
