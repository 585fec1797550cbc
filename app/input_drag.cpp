#include "app/input_drag.h"

#include "app/hand_speed.h"
#include "app/input.h"
#include "editing/undo.h"
#include "page/node.h"
#include "page/options.h"
#include "page/placement.h"
#include "scene/gl_util.h"
#include "scene/interaction.h"
#include "scene/scene.h"
#include "scene/scene_page.h"

static constexpr std::int32_t COASTING_FRAMES = 30;

struct FloorPoint {
    float x, y; // floor units
};

static FloorPoint held;  // floor: the point that stays under the mouse; node: its place from there
static FloorPoint put;   // the floor's offset as the drag left it
static bool mouse_moved; // since something was grabbed
static FloorPoint places_before[NODE_CAPACITY]; // of all nodes when one was grabbed

// Relative to the floor's offset.
static FloorPoint floor_point(std::int32_t x, std::int32_t y) {
    FloorPoint point = {};
    const bool known = scene_floor.pick_depth != 0.0f; // not since the last zoom
    GetOGLPos(x, y, &point.x, &point.y,
              known ? scene_floor.pick_depth : gl_depth_of_zoom_level(DEPTH_LOOKUP_FLOOR));
    return point;
}

void input_node_position(std::int32_t x, std::int32_t y, float *node_x, float *node_y) {
    GetOGLPos(x, y, node_x, node_y, gl_depth_of_zoom_level(DEPTH_LOOKUP_LABEL));
}

// The same on the plane that nodes stand on, a little above the floor.
static FloorPoint node_point() {
    FloorPoint point = {};
    input_node_position(mouse.x, mouse.y, &point.x, &point.y);
    return point;
}

static bool mouse_has_moved() {
    return mouse.x != mouse.previous_x || mouse.y != mouse.previous_y;
}

// ---- the floor

static void hold_point(std::int32_t x, std::int32_t y) {
    const FloorPoint point = floor_point(x, y);
    held = {scene_floor.position_x + point.x, scene_floor.position_y + point.y};
    put = {scene_floor.position_x, scene_floor.position_y};
}

static void stop_coasting() {
    scene_floor.inertia_x = 0.0f;
    scene_floor.inertia_y = 0.0f;
    scene_floor.inertia_frames = 0;
}

void drag_grab_floor() {
    scene_floor.drag_state = 1;
    stop_coasting();
    hold_point(mouse.x, mouse.y);
    mouse_moved = false;
    hand_speed_start(scene_floor.position_x, scene_floor.position_y);
}

static void drag_floor() {
    // Keys scroll the floor under the mouse as well; it is not pulled back then.
    if (scene_floor.position_x != put.x || scene_floor.position_y != put.y)
        hold_point(mouse.previous_x, mouse.previous_y);
    const FloorPoint point = floor_point(mouse.x, mouse.y);
    put = {held.x - point.x, held.y - point.y};
    scene_floor.position_x = put.x;
    scene_floor.position_y = put.y;
    mouse_moved = true;
    hand_speed_sample(put.x, put.y);
}

static void throw_floor() {
    if (orvanel_options.floor_inertia == 1 && orvanel_options.good_graphics_card == 1 &&
        hand_speed_now(scene_floor.position_x, scene_floor.position_y, &scene_floor.inertia_x,
                       &scene_floor.inertia_y))
        scene_floor.inertia_frames = COASTING_FRAMES;
}

// ---- a node

static std::int32_t label_depth(const Node &record) {
    return record.type == NODE_LABEL ? DEPTH_LOOKUP_LABEL - DEPTH_LOOKUP_FLOOR : 0;
}

void drag_hold_node(std::int32_t id) {
    if (node[id].grab_state != GRAB_HOVERED)
        return;
    node[id].grab_state = GRAB_GRABBED;
    node[id].label_depth = label_depth(node[id]);
}

static void remember_places() {
    for (std::int32_t i = 0; i < node_total; i++)
        places_before[i] = {node[i].x, node[i].y};
}

void drag_grab_node(std::int32_t id) {
    stop_coasting();
    undo_push();
    remember_places();
    Node *record = &node[id];
    record->grab_state = GRAB_GRABBED;
    record->grab_x = record->x;
    record->grab_y = record->y;
    record->inertia_dx = 0.0f;
    record->inertia_dy = 0.0f;
    record->inertia_frames = 0;
    record->label_depth = label_depth(*record);
    app_node_grabbed = 1; // nothing slides back onto the floor meanwhile
    const FloorPoint point = node_point();
    held = {record->x - scene_floor.position_x - point.x,
            record->y - scene_floor.position_y - point.y};
    mouse_moved = false;
    hand_speed_start(record->x, record->y);
}

// The one that follows the mouse, or -1; an undo or a deletion may have taken it away.
static std::int32_t dragged_node() {
    if (app_mode != APP_EDIT || scene_floor.drag_state == 1)
        return -1;
    for (std::int32_t i = 0; i < node_total; i++) {
        if (node[i].grab_state == GRAB_GRABBED)
            return i;
    }
    return -1;
}

static void drag_node(std::int32_t id) {
    Node *record = &node[id];
    const FloorPoint point = node_point();
    record->move_dx = held.x + point.x + scene_floor.position_x - record->x;
    record->move_dy = held.y + point.y + scene_floor.position_y - record->y;
    record->move_frames = MOVE_STEPS;
    node_move_nodes();
    mouse_moved = true;
    scene_changed = 1; // wherever it ends up: others may have been pushed
    hand_speed_sample(record->x, record->y);
}

static void throw_node(Node *record) {
    if (orvanel_options.object_inertia == 1 && orvanel_options.good_graphics_card == 1 &&
        hand_speed_now(record->x, record->y, &record->inertia_dx, &record->inertia_dy))
        record->inertia_frames = COASTING_FRAMES;
}

// The dragged node, or one that it pushed aside before it came back to where it was.
static std::int32_t node_that_moved(std::int32_t dragged) {
    for (std::int32_t i = 0; mouse_moved && i < node_total; i++) {
        if (node[i].x != places_before[i].x || node[i].y != places_before[i].y)
            return i;
    }
    return dragged;
}

// All of them: one that was still held would keep every object from sliding back onto the floor.
static void release_nodes() {
    const std::int32_t dragged = dragged_node();
    for (std::int32_t i = 0; i < node_total; i++) {
        if (node[i].grab_state == GRAB_GRABBED)
            node[i].grab_state = GRAB_HOVERED;
    }
    if (dragged != -1)
        undo_duplicate_check(node_that_moved(dragged));
}

// ---- both

bool drag_is_running() {
    return scene_floor.drag_state == 1 || dragged_node() != -1;
}

void drag_follow_mouse() {
    if (!mouse_has_moved())
        return;
    if (scene_floor.drag_state == 1)
        drag_floor();
    else if (dragged_node() != -1)
        drag_node(dragged_node());
    scene_request_redraw();
}

void drag_release() {
    const std::int32_t dragged = dragged_node();
    drag_follow_mouse();
    if (scene_floor.drag_state == 1 && mouse_moved)
        throw_floor();
    else if (dragged != -1 && mouse_moved)
        throw_node(&node[dragged]);
    drag_cancel();
}

void drag_cancel() {
    release_nodes();
    scene_floor.drag_state = 0;
}
