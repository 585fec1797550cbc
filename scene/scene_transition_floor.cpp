#include "scene/scene_transition.h"

#include "scene/frame_clock.h"
#include "scene/scene.h"
#include "scene/scene_transition_pace.h"

#include <cmath>

static constexpr std::uint32_t GLIDE_MILLISECONDS = 17; // a frame

// The offset nearest to the wanted one at which the window, showing low..high of the floor relative
// to its offset, stays inside the floor's edges.
static float keep_on_floor(float wanted, float low, float high) {
    if (!std::isfinite(wanted) || !std::isfinite(low) || !std::isfinite(high))
        return 0.0f; // a hand-edited page or a window without area: the middle is always on the
                     // floor
    if (high - low > 2.0f * FLOOR_EDGE)
        return -(low + high) / 2.0f; // both edges show: the floor rests centred
    if (-FLOOR_EDGE - wanted > low)
        return -FLOOR_EDGE - low;
    if (FLOOR_EDGE - wanted < high)
        return FLOOR_EDGE - high;
    return wanted;
}

static void stop_floor() {
    scene_floor.inertia_x = 0.0f;
    scene_floor.inertia_y = 0.0f;
    scene_floor.inertia_frames = 0;
    scene_floor.drag_state = 0;
}

static void glide_to(float x, float y) {
    const float start_x = scene_floor.position_x;
    const float start_y = scene_floor.position_y;
    transition_start_frames();
    for (std::int32_t k = 0; k < COOL_MOVE_STEPS; k++) {
        const auto done = static_cast<float>(transition_share_done(k + 1));
        scene_floor.position_x = std::lerp(start_x, x, done);
        scene_floor.position_y = std::lerp(start_y, y, done);
        transition_draw();
        transition_wait_frame(GLIDE_MILLISECONDS);
    }
}

void scene_move_floor_transition(float x, float y) {
    stop_floor();
    // After a zoom the window's bounds are those of the last level until the next drawing.
    if (scene_floor.pick_depth == 0.0f)
        transition_draw();
    x = keep_on_floor(x, scene_floor.view_left, scene_floor.view_right);
    y = keep_on_floor(y, scene_floor.view_bottom, scene_floor.view_top);
    const bool there = scene_floor.position_x == x && scene_floor.position_y == y;
    // A glide from nowhere would pass through places that do not exist.
    const bool somewhere =
        std::isfinite(scene_floor.position_x) && std::isfinite(scene_floor.position_y);
    if (transition_floor_enabled() && !there && somewhere) {
        glide_to(x, y);
    } else {
        scene_floor.position_x = x;
        scene_floor.position_y = y;
        transition_draw();
    }
    reset_frame_timer();
}

void scene_return_to_center_transition() {
    scene_move_floor_transition(scene_floor.home_x, scene_floor.home_y);
}
