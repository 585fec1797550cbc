#include "scene/scene_transition.h"

#include "page/node.h"
#include "page/options.h"
#include "page/placement.h"
#include "scene/frame_clock.h"
#include "scene/gl_util.h"
#include "scene/scene.h"
#include "scene/scene_transition_pace.h"

#include <cmath>

static constexpr std::uint32_t ALIGN_MILLISECONDS = 17; // a frame
static constexpr std::uint32_t GRID_MILLISECONDS = 12;
static constexpr std::uint32_t AVOID_MILLISECONDS = 12;

// The small grid where its steps can be seen, the large one where the object just jumps. Both
// meant.
static constexpr float GRID_FINE = 2.5f;    // floor units
static constexpr float GRID_COARSE = 20.0f; // floor units
static constexpr std::int32_t GRID_STEPS = 16;
// What 16 moves of 25 steps each may lose in float precision, floor units.
static constexpr float GRID_TOLERANCE = 0.01f;

static void glide_coordinate(float *coordinate, float target) {
    const float start = *coordinate;
    TransitionTicks ticks = transition_start_ticks();
    for (std::int32_t k = 0; k < COOL_MOVE_STEPS; k++) {
        *coordinate = std::lerp(start, target, static_cast<float>(transition_share_done(k + 1)));
        transition_draw();
        transition_wait_ticks(&ticks, ALIGN_MILLISECONDS);
    }
    reset_frame_timer();
}

void scene_align_node_transition(std::int32_t index, std::int32_t to, std::int32_t axis) {
    if (!node_is_live(index) || !node_is_live(to) || (axis != ALIGN_COLUMN && axis != ALIGN_ROW))
        return;
    float Node::*const coordinate = axis == ALIGN_COLUMN ? &Node::x : &Node::y;
    const float target = node[to].*coordinate;
    if (transition_objects_enabled())
        glide_coordinate(&(node[index].*coordinate), target);
    node[index].*coordinate = target;
    scene_request_redraw();
}

static void move_by(Node *record, float dx, float dy) {
    record->move_dx = dx;
    record->move_dy = dy;
    record->move_frames = MOVE_STEPS;
    node_move_nodes();
}

// On the grid line itself, unless others kept the object from reaching it.
static void settle(float *coordinate, float target) {
    if (std::fabs(*coordinate - target) < GRID_TOLERANCE)
        *coordinate = target;
}

void scene_align_with_grid(std::int32_t index) {
    if (!node_is_live(index) || !std::isfinite(node[index].x) || !std::isfinite(node[index].y))
        return;
    Node *const record = &node[index];
    const float unit = orvanel_options.good_graphics_card != 0 ? GRID_FINE : GRID_COARSE;
    const float target_x = unit_round(record->x, unit);
    const float target_y = unit_round(record->y, unit);
    const float step_x = (target_x - record->x) / GRID_STEPS;
    const float step_y = (target_y - record->y) / GRID_STEPS;
    TransitionTicks ticks = transition_start_ticks();
    for (std::int32_t step = 0; step < GRID_STEPS; step++) {
        move_by(record, step_x, step_y);
        if (transition_objects_enabled())
            transition_draw();
        transition_wait_ticks(&ticks, GRID_MILLISECONDS);
    }
    settle(&record->x, target_x);
    settle(&record->y, target_y);
    scene_request_redraw();
    reset_frame_timer();
}

void scene_nodes_avoid_node_area(std::int32_t index) {
    TransitionTicks ticks = transition_start_ticks();
    while (node_avoid_area_step(index)) {
        transition_draw();
        transition_wait_ticks(&ticks, AVOID_MILLISECONDS);
    }
    reset_frame_timer();
}
