#include "editing/undo.h"

#include "editing/node_rest.h"
#include "platform/clock.h"
#include "scene/frame_clock.h"
#include "scene/interaction.h"
#include "scene/scene.h"
#include "scene/scene_page.h"
#include "scene/scene_transition.h"
#include "scene/scene_transition_pace.h"

#include <algorithm>
#include <cmath>

static constexpr float VIEW_MARGIN = 5.0f; // floor units; nearer to the edge is out of view
static constexpr std::uint32_t LOOK_MILLISECONDS = 150; // after the floor's glide
enum FadeState : std::int32_t { FADE_NONE = 0, FADE_IN = 1, FADE_OUT = 2 };

// ---- what comes and what goes

static bool has_node_at(const Node *nodes, std::int32_t count, const Node &place) {
    return std::any_of(nodes, nodes + count, [&](const Node &candidate) {
        return candidate.x == place.x && candidate.y == place.y;
    });
}

static bool appears(const Node &saved) {
    return !has_node_at(node, node_total, saved);
}

static bool vanishes(const UndoSnapshot &snapshot, const Node &live) {
    return !has_node_at(snapshot.nodes, snapshot.node_count, live);
}

static void mark(Node *saved, bool fading) {
    saved->fade_state = fading ? FADE_IN : FADE_NONE;
    saved->alpha = fading ? 0.0f : 1.0f;
}

static void mark_appearing(UndoSnapshot *snapshot) {
    for (std::int32_t id = 0; id < snapshot->node_count; id++) {
        Node *saved = &snapshot->nodes[id];
        mark(saved, transition_objects_enabled() && saved->type != NODE_LABEL && appears(*saved));
    }
}

static void fade_out_vanishing(const UndoSnapshot &snapshot) {
    bool any = false;
    for (std::int32_t id = 0; id < node_total; id++) {
        if (node[id].type == NODE_LABEL || !vanishes(snapshot, node[id]))
            continue;
        node[id].fade_state = FADE_OUT;
        any = true;
    }
    if (any)
        scene_node_fade_out_transition();
}

// ---- where it comes and goes

struct Bounds {
    float min_x = FLOOR_EDGE, max_x = -FLOOR_EDGE;
    float min_y = FLOOR_EDGE, max_y = -FLOOR_EDGE;
    bool any = false;
};

// A node of a hand-edited page may stand nowhere.
static void extend(Bounds *bounds, const Node &record) {
    if (!std::isfinite(record.x) || !std::isfinite(record.y))
        return;
    bounds->min_x = std::min(bounds->min_x, record.x);
    bounds->max_x = std::max(bounds->max_x, record.x);
    bounds->min_y = std::min(bounds->min_y, record.y);
    bounds->max_y = std::max(bounds->max_y, record.y);
    bounds->any = true;
}

// Of what appears; only when nothing does, of what vanishes.
static Bounds changing_bounds(const UndoSnapshot &snapshot) {
    Bounds bounds;
    bool appearing = false;
    for (std::int32_t id = 0; id < snapshot.node_count; id++) {
        if (!appears(snapshot.nodes[id]))
            continue;
        appearing = true;
        extend(&bounds, snapshot.nodes[id]);
    }
    for (std::int32_t id = 0; !appearing && id < node_total; id++) {
        if (vanishes(snapshot, node[id]))
            extend(&bounds, node[id]);
    }
    return bounds;
}

static bool in_view(float x, float y) {
    x -= scene_floor.position_x;
    y -= scene_floor.position_y;
    return x >= scene_floor.view_left + VIEW_MARGIN && x <= scene_floor.view_right - VIEW_MARGIN &&
           y >= scene_floor.view_bottom + VIEW_MARGIN && y <= scene_floor.view_top - VIEW_MARGIN;
}

static void show_changes(const UndoSnapshot &snapshot) {
    const Bounds bounds = changing_bounds(snapshot);
    const float x = (bounds.min_x + bounds.max_x) / 2.0f;
    const float y = (bounds.min_y + bounds.max_y) / 2.0f;
    if (!bounds.any || in_view(x, y))
        return;
    scene_move_floor_transition(x, y);
    clock_sleep(LOOK_MILLISECONDS);
}

// ---- putting back

// At rest but for the fade it was marked for.
static void restore_node(std::int32_t id, const Node &saved) {
    node_copy_node2(&node[id], &saved);
    node_rest(&node[id]);
    node[id].fade_state = saved.fade_state;
    node[id].alpha = saved.alpha;
}

static void restore_tables(const UndoSnapshot &snapshot) {
    node_total = snapshot.node_count;
    for (std::int32_t id = 0; id < node_total; id++)
        restore_node(id, snapshot.nodes[id]);
    line_total = snapshot.line_count;
    for (std::int32_t i = 0; i < line_total; i++)
        line_copy_line2(&line[i], &snapshot.lines[i]);
}

static std::int32_t count_nodes(NodeType type) {
    return static_cast<std::int32_t>(std::count_if(
        node, node + node_total, [=](const Node &record) { return record.type == type; }));
}

static bool has_template() {
    const std::int32_t id = node_return_id("Template");
    return id != -1 && node[id].type == NODE_OBJECT;
}

// What hangs on the tables. The running number of labels is left: names given from now on must not
// meet those that a redo brings back. Nodes chosen by index may be other ones now.
static void follow_tables(bool had_template) {
    scene_page_hosts_total = count_nodes(NODE_OBJECT);
    scene_page_links_total = count_nodes(NODE_PAGE);
    app_line_draw_mode = 0;
    app_align_mode = 0;
    if (has_template())
        template_object_load();
    else if (had_template)
        template_object_delete();
}

void undo_common_stack_pop(UndoSnapshot *entry) {
    if (entry->nodes == nullptr || entry->lines == nullptr)
        return;
    mark_appearing(entry);
    show_changes(*entry);
    if (transition_objects_enabled())
        fade_out_vanishing(*entry);
    const bool had_template = has_template();
    restore_tables(*entry);
    follow_tables(had_template);
    if (transition_objects_enabled())
        scene_node_fade_in_transition();
    scene_changed = 1; // it may have been saved since the snapshot was taken
    scene_request_redraw();
    reset_frame_timer(); // the pause is not caught up
}
