#include "scene/scene.h"

#include "page/node.h"
#include "page/options.h"
#include "scene/interaction.h"
#include "scene/scene_effects.h"
#include "scene/scene_motion.h"

#include <algorithm>
#include <cmath>

std::int32_t scene_redraw_flag;

float node_effect_bounce1[NODE_EFFECT_FRAMES];
float node_effect_bounce2[NODE_EFFECT_FRAMES];

static constexpr std::int32_t LAST_FRAME = NODE_EFFECT_FRAMES - 1;
static constexpr std::int32_t REST_BEFORE_SPIN = 80; // frames the mouse rests on an object
static constexpr float SPIN_SPEED_A = 1.0f;          // degrees a frame
static constexpr float SPIN_SPEED_B = 0.7f;
static constexpr float FULL_TURN = 360.0f; // degrees

std::int32_t scene_request_redraw() {
    scene_redraw_flag = 1;
    return 1;
}

void node_init_effects() {
    // Overshoots to 1.16 and rests at the hover size; undershoots to 0.92 and rests at full size.
    static constexpr float grow[NODE_EFFECT_FRAMES] = {1.0f,    1.0079f, 1.0301f, 1.0622f, 1.0978f,
                                                       1.1299f, 1.1521f, 1.16f,   1.156f,  1.1449f,
                                                       1.1289f, 1.1111f, 1.0951f, 1.084f,  1.08f};
    static constexpr float settle[NODE_EFFECT_FRAMES] = {
        1.08f,  1.0721f, 1.0499f, 1.0178f, 0.9822f, 0.9501f, 0.9279f, 0.92f,
        0.924f, 0.9351f, 0.9511f, 0.9689f, 0.9849f, 0.996f,  1.0f};
    std::copy_n(grow, NODE_EFFECT_FRAMES, node_effect_bounce1);
    std::copy_n(settle, NODE_EFFECT_FRAMES, node_effect_bounce2);
}

// ---- hover effect

static bool scale_is_animated() {
    return orvanel_options.good_graphics_card && orvanel_options.object_transitions;
}

static void set_scale(Node *record, float scale) {
    record->scale = scale;
    scene_request_redraw();
}

static void face_viewer_now(Node *record) {
    record->rotation_speed = 0.0f;
    record->rotation_step = 0.0f;
    record->angle = 0.0f;
    record->angle_target = 0.0f;
    scene_request_redraw();
}

static bool faces_viewer(const Node *record) {
    return record->angle == 0.0f && record->angle_target == 0.0f;
}

// Speed that brings the angle to a whole turn by the shorter way.
static float turn_back_speed(float angle) {
    return (angle >= FULL_TURN / 2.0f ? FULL_TURN - angle : -angle) / NODE_EFFECT_FRAMES;
}

static void turn_back(Node *record) {
    if (faces_viewer(record))
        return;
    record->rotation_speed = turn_back_speed(record->angle);
    record->rotation_step = turn_back_speed(record->angle_target);
}

static bool can_be_left(const Node *record) {
    return record->bounce_active != BOUNCE_REST && record->bounce_active != BOUNCE_SETTLE &&
           record->bounce_active != BOUNCE_FACE_VIEWER;
}

static void enter(Node *record, BounceState state) {
    record->bounce_active = state;
    record->bounce_step = 0;
}

static void grow(Node *record) {
    if (record->bounce_step < NODE_EFFECT_FRAMES) {
        const bool animated = scale_is_animated();
        set_scale(record, node_effect_bounce1[animated ? record->bounce_step : LAST_FRAME]);
        record->bounce_step = animated ? record->bounce_step + 1 : NODE_EFFECT_FRAMES;
    }
    if (record->bounce_step >= NODE_EFFECT_FRAMES)
        enter(record, BOUNCE_HOVERED);
}

static void wait_for_spin(Node *record, std::int32_t index) {
    if (record->bounce_step < REST_BEFORE_SPIN) {
        record->bounce_step++;
        return;
    }
    record->bounce_active = BOUNCE_SPIN;
    if (scene_check_for_rotation_space(index) == 0 && app_align_mode == 0 &&
        orvanel_options.good_graphics_card && orvanel_options.object_rotation) {
        record->rotation_speed = SPIN_SPEED_A;
        record->rotation_step = SPIN_SPEED_B;
    }
}

// The object also turns back while it settles, and that takes its frames where rotation is on.
static void settle(Node *record) {
    if (record->bounce_step <= LAST_FRAME) {
        const bool animated = scale_is_animated();
        set_scale(record, node_effect_bounce2[animated ? record->bounce_step : LAST_FRAME]);
        const bool counts = animated || orvanel_options.object_rotation;
        record->bounce_step = counts ? record->bounce_step + 1 : NODE_EFFECT_FRAMES;
    }
    if (record->bounce_step > LAST_FRAME) {
        enter(record, BOUNCE_REST);
        face_viewer_now(record);
    }
}

static void prepare_for_menu(Node *record) {
    const bool faced = faces_viewer(record);
    turn_back(record);
    enter(record, BOUNCE_FACE_VIEWER);
    if (faced)
        record->bounce_step = NODE_EFFECT_FRAMES;
}

static void face_viewer(Node *record) {
    if (record->bounce_step <= LAST_FRAME)
        record->bounce_step++;
    if (record->bounce_step > LAST_FRAME) {
        enter(record, BOUNCE_GROW);
        face_viewer_now(record);
    }
}

// Coming round to the start counts as facing the viewer; falling below it goes on from the top.
static void spin(float *angle, float speed) {
    if (speed == 0.0f)
        return;
    *angle += speed;
    if (*angle >= FULL_TURN)
        *angle = 0.0f;
    else if (*angle < 0.0f)
        *angle = FULL_TURN - 1.0f;
    scene_request_redraw();
}

// One frame may pass through several states; the order of the steps is part of the effect.
static void advance_hover_effect(Node *record, std::int32_t index) {
    if (record->grab_state == GRAB_HOVERED && record->bounce_active == BOUNCE_REST)
        enter(record, BOUNCE_GROW);
    if (record->bounce_active == BOUNCE_GROW)
        grow(record);
    if (record->bounce_active == BOUNCE_HOVERED)
        wait_for_spin(record, index);
    if (record->grab_state == GRAB_IDLE && can_be_left(record)) {
        turn_back(record);
        enter(record, BOUNCE_SETTLE);
    }
    if (record->bounce_active == BOUNCE_SETTLE)
        settle(record);
    if (record->grab_state == GRAB_GRABBED && can_be_left(record))
        prepare_for_menu(record);
    if (record->bounce_active == BOUNCE_FACE_VIEWER)
        face_viewer(record);
    spin(&record->angle, record->rotation_speed);
    spin(&record->angle_target, record->rotation_step);
}

static float spin_radius(const Node &record) {
    float radius = 0.0f;
    for (const float extent : record.dimensions)
        radius = std::max(radius, std::fabs(extent));
    return radius;
}

std::int32_t scene_check_for_rotation_space(std::int32_t index) {
    const Node &spinner = node[index];
    const float radius = spin_radius(spinner);
    for (std::int32_t i = 0; i < node_total; i++) {
        const Node &other = node[i];
        if (i == index || (other.type != NODE_OBJECT && other.type != NODE_PAGE))
            continue;
        if (spinner.x - radius < other.x + other.dimensions[EXTENT_RIGHT] &&
            spinner.x + radius > other.x + other.dimensions[EXTENT_LEFT] &&
            spinner.y - radius < other.y + other.dimensions[EXTENT_FAR] &&
            spinner.y + radius > other.y + other.dimensions[EXTENT_NEAR])
            return 1;
    }
    return 0;
}

// ---- the frame

void scene_process_frame() {
    scene_motion_begin_frame();
    for (std::int32_t i = 0; i < node_total; i++) {
        advance_hover_effect(&node[i], i);
        scene_motion_move_node(i);
    }
    scene_motion_move_floor();
}

// ---- zoom

static void zoom_changed() {
    scene_floor.pick_depth = 0.0f;
    scene_request_redraw();
}

void scene_zoom_in() {
    if (scene_floor.distance >= ZOOM_DISTANCE_MAX)
        return;
    scene_floor.distance += ZOOM_STEP;
    if (scene_floor.zoom_level <= ZOOM_LEVELS)
        scene_floor.zoom_level++;
    zoom_changed();
}

void scene_zoom_out() {
    if (scene_floor.distance <= ZOOM_DISTANCE_MIN)
        return;
    scene_floor.distance -= ZOOM_STEP;
    if (scene_floor.zoom_level > 0)
        scene_floor.zoom_level--;
    zoom_changed();
}
