#include "platform/timer.h"

#include "platform/clock.h"

static constexpr float MULTIMEDIA_CLOCK_PERIOD = 0.001f; // seconds
static constexpr double MILLISECONDS_PER_SECOND = 1000.0;

void timer_init(Timer *timer) {
    const std::int64_t frequency = clock_ticks_per_second();
    timer->high_resolution = frequency > 0;
    if (timer->high_resolution) {
        timer->period = 1.0f / static_cast<float>(frequency);
        timer->start_ticks = clock_ticks();
    } else {
        timer->period = MULTIMEDIA_CLOCK_PERIOD;
        timer->start_millis = clock_milliseconds();
    }
}

std::uint32_t timer_get_time_ms(const Timer *timer) {
    if (!timer->high_resolution)
        return clock_milliseconds() - timer->start_millis;
    const double ticks = static_cast<double>(clock_ticks() - timer->start_ticks);
    const double milliseconds =
        ticks * static_cast<double>(timer->period) * MILLISECONDS_PER_SECOND;
    return static_cast<std::uint32_t>(static_cast<std::int64_t>(milliseconds));
}
