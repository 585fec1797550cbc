#include "platform/thread.h"

#include <algorithm>

static constexpr std::uint32_t LOOK_AROUND = 10; // milliseconds between two looks at the flag

bool thread_sleep_unless(const std::atomic<bool> &stop, std::uint32_t milliseconds) {
    while (milliseconds > 0 && !stop) {
        const std::uint32_t step = std::min(milliseconds, LOOK_AROUND);
        thread_sleep(step);
        milliseconds -= step;
    }
    return !stop;
}
