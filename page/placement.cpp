#include "page/placement.h"

#include "page/node.h"
#include "page/overlap_index.h"

#include <algorithm>
#include <bit>
#include <cmath>

static constexpr float INERTIA_KEPT = 0.25f; // share left to a mover that hands its inertia on

// No arrangement found needs more than some 200 passes; a row of 255 coasting nodes, each hit by
// the last step of the one before, needs 255 times 25. What goes on longer has no end.
static constexpr std::int32_t PASSES_MAX = 20000;

// ---- the overlap test and a single push

std::int32_t node_check_collision(std::int32_t id) {
    const NodeBox box = node_box(node[id]);
    for (std::int32_t other = 0; other < node_total; other++)
        if (other != id && node[other].collision_with == -1 &&
            node_boxes_overlap(box, node_box(node[other])))
            return other;
    return -1;
}

// How far the mover reaches into the range from .. to; its own width when it covers that range.
static float overlap_along(float mover_from, float mover_to, float from, float to) {
    if (mover_from > from && mover_from < to)
        return to - mover_from;
    if (mover_to > from && mover_to < to)
        return mover_to - from;
    return mover_to - mover_from;
}

// Standing level is neither: such nodes pass through each other.
static bool approaches(float mover, float hit, float move) {
    return (mover > hit && move <= 0.0f) || (mover < hit && move >= 0.0f);
}

// A thrown mover hands its throw on and keeps a part of it.
static void hand_on_motion(Node *hit, Node *mover, float Node::*move, float Node::*other_move,
                           float Node::*inertia) {
    hit->*other_move = 0.0f;
    hit->*move = mover->*move;
    hit->move_frames = 1;
    if (mover->inertia_frames > 0) {
        hit->inertia_frames = mover->inertia_frames;
        hit->*inertia = mover->*inertia;
        hit->move_frames = MOVE_STEPS;
        mover->*inertia *= INERTIA_KEPT;
    }
}

void node_collision_handle(std::int32_t pushed, std::int32_t mover) {
    Node *const a = &node[pushed];
    Node *const b = &node[mover];
    if (a->grab_state == GRAB_ANCHORED)
        return;
    const NodeBox a_box = node_box(*a);
    const NodeBox b_box = node_box(*b);
    const float overlap_x = overlap_along(b_box.left, b_box.right, a_box.left, a_box.right);
    const float overlap_y =
        overlap_along(b_box.near_edge, b_box.far_edge, a_box.near_edge, a_box.far_edge);
    if (overlap_y <= overlap_x) {
        if (approaches(b->y, a->y, b->move_dy))
            hand_on_motion(a, b, &Node::move_dy, &Node::move_dx, &Node::inertia_dy);
    } else if (approaches(b->x, a->x, b->move_dx)) {
        hand_on_motion(a, b, &Node::move_dx, &Node::move_dy, &Node::inertia_dx);
    }
}

// ---- passes
//
// The rule is: in every pass each node in index order takes a step if it has one left, then pushes
// what it overlaps and nobody has pushed yet. Only nodes that move, carry a mark or overlap another
// have any part in that, and only those get a turn here.

static NodeSet pending; // nodes to be looked at in the next run: on the move or marked

// What the passes know of the table beside the records; valid from begin_passes to end_passes.
static NodeSet busy;   // nodes that need a turn
static NodeSet moving; // nodes that have steps left or a move not yet cleared
static NodeSet marked; // nodes that were pushed in the current step,
static std::int32_t pushed_by[NODE_CAPACITY]; // and by whom: collision_with while the passes run
static NodeSet anchored;

// Nodes told to move, and for each of them the nodes at rest that it overlapped from the start.
static NodeSet told;
static NodeSet left_behind[NODE_CAPACITY];

static bool has_motion(const Node &record) {
    return record.move_frames > 0 || (std::bit_cast<std::uint32_t>(record.move_dx) |
                                      std::bit_cast<std::uint32_t>(record.move_dy)) != 0;
}

static bool stands_still(std::int32_t id) {
    return !moving.has(id) || (node[id].move_dx == 0.0f && node[id].move_dy == 0.0f);
}

static void rest(Node *record) {
    record->move_dx = 0.0f;
    record->move_dy = 0.0f;
    record->move_frames = 0;
}

static void note_if_pending(std::int32_t id) {
    if (node[id].collision_with != -1 || has_motion(node[id]))
        pending.add(id);
}

static void step_coordinate(float *coordinate, float step) {
    const float moved = *coordinate + step;
    if (std::isfinite(moved))
        *coordinate = moved;
}

// Pushed nodes outrun their pusher: they take the step twice.
static void take_step(std::int32_t id) {
    Node *const record = &node[id];
    const float times = marked.has(id) ? 2.0f : 1.0f;
    record->move_frames--;
    step_coordinate(&record->x, record->move_dx / MOVE_STEPS * times);
    step_coordinate(&record->y, record->move_dy / MOVE_STEPS * times);
    overlap_index_update(id);
    busy |= overlap_index_of(id);
}

static bool is_let_go(std::int32_t mover, std::int32_t hit) {
    return told.has(hit) && left_behind[hit].has(mover);
}

// False when the node goes no further in this turn: it met its own pusher, or nothing moves here.
static bool push(std::int32_t hit, std::int32_t id) {
    if (pushed_by[id] == hit && marked.has(id))
        return false;
    pushed_by[hit] = id;
    marked.add(hit);
    if (stands_still(id) && stands_still(hit))
        return false;
    node_collision_handle(hit, id);
    if (has_motion(node[hit]))
        moving.add(hit);
    return true;
}

static void push_what_is_hit(std::int32_t id) {
    const NodeSet &overlapped = overlap_index_of(id);
    for (std::size_t word = 0; word < NODE_SET_WORDS; word++)
        // Nothing but what has been passed is marked meanwhile, so that one look is enough.
        for (std::uint64_t rest = overlapped.words[word] & ~marked.words[word]; rest != 0;
             rest &= rest - 1) {
            const auto hit =
                static_cast<std::int32_t>(word * NODE_SET_WORD_BITS) + std::countr_zero(rest);
            if (!is_let_go(id, hit) && !push(hit, id))
                return;
        }
}

// True when the node had a step to take.
static bool take_turn(std::int32_t id) {
    Node *const record = &node[id];
    bool steps = false;
    if (moving.has(id)) {
        steps = record->move_frames > 0 && !anchored.has(id);
        if (steps)
            take_step(id);
        else
            rest(record);
        if (!has_motion(*record))
            moving.remove(id);
    }
    if (!anchored.has(id)) {
        push_what_is_hit(id);
        marked.remove(id);
    }
    if (!moving.has(id) && overlap_index_of(id).empty())
        busy.remove(id);
    return steps;
}

static bool run_pass() {
    bool moved = false;
    for (std::int32_t id = busy.next(0); id >= 0; id = busy.next(id + 1))
        moved |= take_turn(id);
    return moved;
}

static void take_over_record(std::int32_t id) {
    Node *const record = &node[id];
    if (has_motion(*record))
        moving.add(id);
    if (record->move_frames > 0)
        told.add(id);
    if (record->collision_with != -1)
        marked.add(id);
    pushed_by[id] = record->collision_with;
    record->collision_with = -1;
}

static void begin_passes() {
    busy = pending;
    moving = marked = told = anchored = {};
    for (std::int32_t id = pending.next(0); id >= 0; id = pending.next(id + 1))
        take_over_record(id);
    for (std::int32_t id = 0; id < node_total; id++) {
        if (!overlap_index_of(id).empty())
            busy.add(id);
        if (node[id].grab_state == GRAB_ANCHORED)
            anchored.add(id);
    }
    marked |= anchored; // so that nobody finds them
    for (std::int32_t id = told.next(0); id >= 0; id = told.next(id + 1))
        left_behind[id] = overlap_index_of(id).without(told);
}

static void run_passes() {
    begin_passes();
    // Without the limit, a push that is handed round in a circle would never end.
    for (std::int32_t pass = 0; pass < PASSES_MAX && run_pass(); pass++)
        ;
    for (std::int32_t id = moving.next(0); id >= 0; id = moving.next(id + 1))
        rest(&node[id]);
}

static NodeBox hull(const NodeBox &a, const NodeBox &b) {
    return {std::min(a.left, b.left), std::max(a.right, b.right),
            std::min(a.near_edge, b.near_edge), std::max(a.far_edge, b.far_edge)};
}

// The whole push at once, step by step as it would round, for a node that has nothing in its way.
// False, and nothing done, when there is more to it.
static bool glide_freely(std::int32_t id) {
    Node *const record = &node[id];
    if (record->move_frames < 1 || record->move_frames > MOVE_STEPS ||
        record->collision_with != -1 || record->grab_state == GRAB_ANCHORED ||
        !overlap_index_of(id).empty())
        return false;
    const float step_x = record->move_dx / MOVE_STEPS;
    const float step_y = record->move_dy / MOVE_STEPS;
    float x = record->x;
    float y = record->y;
    for (std::int32_t step = 0; step < record->move_frames; step++) {
        x += step_x;
        y += step_y;
    }
    if (!std::isfinite(x) || !std::isfinite(y))
        return false;
    const NodeBox start = node_box(*record);
    if (!overlap_index_is_free(id, hull(start, node_box_at(*record, x, y))))
        return false;
    record->x = x;
    record->y = y;
    rest(record);
    overlap_index_update_lone(id);
    return true;
}

static void run_pending() {
    if (pending.empty())
        return;
    const std::int32_t first = pending.next(0);
    const bool alone = pending.next(first + 1) < 0;
    if (!alone || !glide_freely(first))
        run_passes();
    pending = {};
}

void node_move_begin() {
    overlap_index_update_all();
    pending = {};
    for (std::int32_t id = 0; id < node_total; id++)
        note_if_pending(id);
}

void node_move_node(std::int32_t id) {
    overlap_index_update(id);
    note_if_pending(id);
    run_pending();
}

void node_move_nodes() {
    node_move_begin();
    run_pending();
}
