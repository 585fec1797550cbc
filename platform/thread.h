// Threads of the system, for the little that does not run on the main thread. What two threads
// share they hand over through atomic flags.
#pragma once

#include <atomic>
#include <cstdint>

struct Thread;

// Runs function on a thread of its own. Null when the system refuses; else the caller ends the
// record with thread_join.
Thread *thread_start(void (*function)());

// Waits until the thread has ended, so many milliseconds at most, and releases the record in either
// case. False when the thread still runs: it goes on by itself until the process ends.
bool thread_join(Thread *thread, std::uint32_t milliseconds);

// The calling thread's sleep: in real time, unlike clock_sleep in a test that has its own clock.
void thread_sleep(std::uint32_t milliseconds);

// The same, cut short soon after stop is set. False when it is set.
bool thread_sleep_unless(const std::atomic<bool> &stop, std::uint32_t milliseconds);
