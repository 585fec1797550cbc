#include "platform/clock.h"

#include <windows.h>
// mmsystem.h needs windows.h before it.
#include <mmsystem.h>

#include <ctime>

std::int64_t clock_ticks_per_second() {
    LARGE_INTEGER frequency;
    return QueryPerformanceFrequency(&frequency) != 0 ? frequency.QuadPart : 0;
}

std::int64_t clock_ticks() {
    LARGE_INTEGER count;
    return QueryPerformanceCounter(&count) != 0 ? count.QuadPart : 0;
}

std::uint32_t clock_milliseconds() {
    return timeGetTime();
}

std::uint32_t clock_unix_seconds() {
    return static_cast<std::uint32_t>(std::time(nullptr));
}

void clock_sleep(std::uint32_t milliseconds) {
    Sleep(milliseconds);
}
