#include "scene/scene_transition.h"

#include "page/node.h"
#include "scene/frame_clock.h"
#include "scene/scene.h"
#include "scene/scene_transition_pace.h"

static std::int32_t first_hovered_node() {
    for (std::int32_t i = 0; i < node_total; i++) {
        if (node[i].grab_state == GRAB_HOVERED)
            return i;
    }
    return -1;
}

static void hold_for_menu(Node *record) {
    record->move_dx = 0.0f;
    record->move_dy = 0.0f;
    record->move_frames = 0;
    record->inertia_dx = 0.0f;
    record->inertia_dy = 0.0f;
    record->inertia_frames = 0;
    record->grab_state = GRAB_GRABBED;
}

// A second object under the pointer, or one left anchored, would stay in its hover effect for ever;
// an object that is held comes to rest as it is.
static void release_others(std::int32_t index) {
    for (std::int32_t i = 0; i < node_total; i++) {
        if (i != index && node[i].grab_state != GRAB_GRABBED)
            node[i].grab_state = GRAB_IDLE;
    }
}

static bool any_effect_running() {
    for (std::int32_t i = 0; i < node_total; i++) {
        if (node[i].bounce_active > BOUNCE_GROW)
            return true;
    }
    return false;
}

static void settle_nodes() {
    TransitionTicks ticks = transition_start_ticks();
    do {
        scene_process_frame();
        if (transition_objects_enabled()) {
            transition_wait_ticks(&ticks, FRAME_MILLISECONDS);
            transition_draw();
        }
    } while (any_effect_running());
}

void scene_prepare_for_menu_activation() {
    scene_floor.drag_state = 0;
    scene_floor.inertia_frames = 0;
    const std::int32_t hovered = first_hovered_node();
    if (hovered != -1)
        hold_for_menu(&node[hovered]);
    release_others(hovered);
    settle_nodes();
    if (hovered != -1)
        node[hovered].grab_state = GRAB_HOVERED;
    transition_draw();
    reset_frame_timer();
}
