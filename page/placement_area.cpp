#include "page/placement.h"

#include "page/node.h"
#include "page/overlap_index.h"

#include <cmath>

static constexpr float AREA_SHARE = 13.0f; // a pass moves a node by this part of the distance
static constexpr float APART_STEP = 0.1f;  // floor units: takes two at the same spot apart

static constexpr float ROUNDING = 1e-6f; // floor units: first allowance for rounding

static bool box_is_finite(const NodeBox &box) {
    return std::isfinite(box.left) && std::isfinite(box.right) && std::isfinite(box.near_edge) &&
           std::isfinite(box.far_edge);
}

// A box without end cannot be left, so it counts as none.
static bool stands_in_area(const Node &record, const NodeBox &area) {
    const NodeBox box = node_box(record);
    return box_is_finite(box) && box_is_finite(area) && node_boxes_overlap(box, area);
}

static bool is_lost(float coordinate, float step) {
    return coordinate + step == coordinate;
}

static void set_move_away(Node *record, const Node &placed) {
    record->move_dx = (record->x - placed.x) / AREA_SHARE;
    record->move_dy = (record->y - placed.y) / AREA_SHARE;
    if (record->move_dx == 0.0f)
        record->move_dx = -APART_STEP;
    if (record->move_dy == 0.0f)
        record->move_dy = -APART_STEP;
    // Steps below the precision of both coordinates would leave the node where it is for ever.
    if (is_lost(record->x, record->move_dx / MOVE_STEPS) &&
        is_lost(record->y, record->move_dy / MOVE_STEPS)) {
        record->move_dx = std::copysign(APART_STEP, record->move_dx);
        record->move_dy = std::copysign(APART_STEP, record->move_dy);
    }
    record->move_frames = MOVE_STEPS;
}

// One of the four ways out of an area: the coordinate to set and what to set it to.
struct WayOut {
    float Node::*coordinate;
    float value;
};

// The place just beside the area, rounded away from it. extent is the node's edge that would touch.
static float beside(float edge, float extent, float outwards) {
    float value = edge - extent;
    for (float nudge = ROUNDING; std::isfinite(value) && (value + extent - edge) * outwards < 0.0f;
         nudge *= 2.0f)
        value += nudge * outwards;
    return value;
}

static void take_shorter(WayOut *best, const Node &record, WayOut other) {
    const auto length = [&record](const WayOut &way) {
        return std::fabs(way.value - record.*way.coordinate);
    };
    if (std::isfinite(other.value) && !(length(*best) <= length(other)))
        *best = other;
}

// Puts the node beside the area by the shortest way, through whatever stands there.
static void set_beside(Node *record, const NodeBox &area) {
    const float *const extents = record->dimensions;
    WayOut way = {&Node::x, beside(area.left, extents[EXTENT_RIGHT], -1.0f)};
    take_shorter(&way, *record, {&Node::x, beside(area.right, extents[EXTENT_LEFT], 1.0f)});
    take_shorter(&way, *record, {&Node::y, beside(area.near_edge, extents[EXTENT_FAR], -1.0f)});
    take_shorter(&way, *record, {&Node::y, beside(area.far_edge, extents[EXTENT_NEAR], 1.0f)});
    if (std::isfinite(way.value))
        record->*way.coordinate = way.value;
}

// A push that leaves the node where it was never will get it out.
static void move_out(Node *record, const Node &placed, bool push) {
    const NodeBox area = node_box(placed);
    const float x = record->x;
    const float y = record->y;
    if (push) {
        set_move_away(record, placed);
        node_move_nodes();
    }
    if (record->x == x && record->y == y && stands_in_area(*record, area))
        set_beside(record, area);
}

static bool move_all_out(std::int32_t index, bool push) {
    bool any = false;
    for (std::int32_t id = 0; id < node_total; id++) {
        if (id == index || node[id].collision_with != -1 ||
            !stands_in_area(node[id], node_box(node[index])))
            continue;
        any = true;
        move_out(&node[id], node[index], push);
    }
    return any;
}

// The passes over one area are counted: nodes that others hold in it, or that start too close to
// its middle, would else be pushed for longer than anybody waits, so the last pass sets them
// outside.
bool node_avoid_area_step(std::int32_t index) {
    static std::int32_t area = -1;
    static std::int32_t passes;
    if (index < 0 || index > node_total || index >= NODE_CAPACITY)
        return false;
    passes = index == area ? passes + 1 : 1;
    area = index;
    const bool any = move_all_out(index, passes < AVOID_PASSES) && passes <= AVOID_PASSES;
    if (!any)
        area = -1;
    return any;
}
