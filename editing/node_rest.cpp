#include "editing/node_rest.h"

#include "page/node.h"

static void stop_effects(Node *record) {
    record->bounce_active = BOUNCE_REST;
    record->bounce_step = 0;
    record->height = NODE_REST_HEIGHT;
    record->scale = 1.0f;
    record->angle = 0.0f;
    record->angle_target = 0.0f;
    record->rotation_speed = 0.0f;
    record->rotation_step = 0.0f;
    record->fade_state = 0;
    record->alpha = 1.0f;
}

static void stop_motion(Node *record) {
    record->move_dx = 0.0f;
    record->move_dy = 0.0f;
    record->move_frames = 0;
    record->collision_with = -1;
    record->inertia_dx = 0.0f;
    record->inertia_dy = 0.0f;
    record->inertia_frames = 0;
}

void node_rest(Node *record) {
    stop_effects(record);
    stop_motion(record);
    record->grab_state = GRAB_IDLE;
    record->grab_x = record->x;
    record->grab_y = record->y;
    record->label_depth = 0;
    record->pick_id = -2;
}
