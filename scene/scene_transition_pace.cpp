#include "scene/scene_transition_pace.h"

#include "page/options.h"
#include "platform/clock.h"
#include "scene/frame_clock.h"
#include "scene/scene.h"

// 0.2 + 1.4 * sin^2(pi * k / 31)
const float cool_move[COOL_MOVE_STEPS] = {
    0.2000000f, 0.2143290f, 0.2567295f, 0.3254656f, 0.4177232f, 0.5297252f, 0.6568863f, 0.7940006f,
    0.9354544f, 1.0754568f, 1.2082759f, 1.3284742f, 1.4311307f, 1.5120426f, 1.5678975f, 1.5964085f,
    1.5964085f, 1.5678975f, 1.5120426f, 1.4311307f, 1.3284742f, 1.2082759f, 1.0754568f, 0.9354544f,
    0.7940006f, 0.6568863f, 0.5297252f, 0.4177232f, 0.3254656f, 0.2567295f, 0.2143290f, 0.2000000f,
};

static double sum_of_moves(std::int32_t steps) {
    double sum = 0.0;
    for (std::int32_t k = 0; k < steps; k++)
        sum += static_cast<double>(cool_move[k]);
    return sum;
}

double transition_share_done(std::int32_t steps) {
    return sum_of_moves(steps) / sum_of_moves(COOL_MOVE_STEPS);
}

double transition_half_share_done(std::int32_t steps) {
    return sum_of_moves(steps) / sum_of_moves(COOL_MOVE_STEPS / 2);
}

// Polls a clock until a frame is over and returns the start of the next. Starts are a frame's
// length apart, however late the poll comes; but after a hitch the missed frames are not rushed
// through.
static std::uint32_t wait_for_next_start(std::uint32_t (*now)(), std::uint32_t start,
                                         std::uint32_t milliseconds) {
    const std::uint32_t due = start + milliseconds;
    std::uint32_t time = now();
    while (timer_is_before(time, due))
        time = now();
    return timer_is_before(due + milliseconds, time) ? time : due;
}

static std::uint32_t read_frame_timer() {
    sys_time_ms = timer_get_time_ms(&frame_timer);
    return sys_time_ms;
}

void transition_start_frames() {
    next_frame_timer = read_frame_timer();
}

void transition_wait_frame(std::uint32_t milliseconds) {
    next_frame_timer = wait_for_next_start(read_frame_timer, next_frame_timer, milliseconds);
}

TransitionTicks transition_start_ticks() {
    return {clock_milliseconds()};
}

void transition_wait_ticks(TransitionTicks *ticks, std::uint32_t milliseconds) {
    ticks->frame_start = wait_for_next_start(clock_milliseconds, ticks->frame_start, milliseconds);
}

void transition_draw() {
    scene_request_redraw();
    scene_draw();
}

bool transition_zoom_enabled() {
    return orvanel_options.good_graphics_card != 0 && orvanel_options.zoom_transition != 0;
}

bool transition_objects_enabled() {
    return orvanel_options.good_graphics_card != 0 && orvanel_options.object_transitions != 0;
}

bool transition_floor_enabled() {
    return orvanel_options.good_graphics_card != 0 && orvanel_options.floor_inertia != 0;
}
