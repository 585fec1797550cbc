#include "page/node.h"

#include "assets/model.h"
#include "platform/text.h"

#include <algorithm>
#include <iterator>

Node node[NODE_CAPACITY];
std::int32_t node_total;

void node_init_nodes() {
    for (std::int32_t id = 0; id < NODE_CAPACITY; id++) {
        node_init_node(id);
        node_init_node_actions(&node[id]);
    }
}

void node_init_node(std::int32_t id) {
    Node *record = &node[id];
    record->grab_state = GRAB_IDLE;
    record->action_count = 0;
    record->bounce_active = BOUNCE_REST;
    record->bounce_step = 0;
    record->height = NODE_REST_HEIGHT;
    record->scale = 1.0f;
    record->grab_x = record->x;
    record->grab_y = record->y;
    record->move_frames = 0;
    record->collision_with = -1;
    record->inertia_dx = 0.0f;
    record->inertia_dy = 0.0f;
    record->inertia_frames = 0;
    std::fill(std::begin(record->dimensions), std::end(record->dimensions), 0.0f);
    record->angle = 0.0f;
    record->angle_target = 0.0f;
    record->rotation_speed = 0.0f;
    record->rotation_step = 0.0f;
    record->fade_state = 0;
    record->alpha = 1.0f;
    record->pick_id = NODE_PICK_NONE;
}

void node_init_node_actions(Node *record) {
    std::fill(std::begin(record->actions), std::end(record->actions), nullptr);
}

void node_free_node_actions(Node *record) {
    for (Action *&slot : record->actions) {
        action_free_action(&slot);
        slot = nullptr;
    }
}

void node_free_nodes() {
    for (Node &record : node)
        node_free_node_actions(&record);
}

std::int32_t node_return_id(const char *name) {
    for (std::int32_t id = 0; id < node_total; id++) {
        if (text_equal(node[id].name, name))
            return id;
    }
    return -1;
}

bool node_is_live(std::int32_t id) {
    return id >= 0 && id < node_total;
}

void node_set_model_dimensions(std::int32_t id) {
    const Model &model = models[node[id].model_id];
    float *dimensions = node[id].dimensions;
    dimensions[EXTENT_LEFT] = model.min_x;
    dimensions[EXTENT_RIGHT] = model.max_x;
    dimensions[EXTENT_NEAR] = model.min_y;
    dimensions[EXTENT_FAR] = model.max_y;
    dimensions[EXTENT_BOTTOM] = model.min_z;
    dimensions[EXTENT_TOP] = model.max_z;
}

void node_copy_node(std::int32_t target, std::int32_t source) {
    node_copy_node2(&node[target], &node[source]);
}

// A slot that stays null because memory ran out is left out: readers of a node ask for null.
static void copy_actions(Node *target, const Node *source) {
    for (std::int32_t i = 0; i < source->action_count && i < NODE_ACTIONS; i++) {
        if (source->actions[i] == nullptr)
            continue;
        action_allocate_action(&target->actions[i]);
        if (target->actions[i] != nullptr)
            action_copy_action(target->actions[i], source->actions[i]);
    }
    target->action_count = source->action_count;
}

static void copy_motion(Node *target, const Node *source) {
    target->grab_state = source->grab_state;
    target->bounce_active = source->bounce_active;
    target->bounce_step = source->bounce_step;
    target->grab_x = source->grab_x;
    target->grab_y = source->grab_y;
    target->move_dx = source->move_dx;
    target->move_dy = source->move_dy;
    target->move_frames = source->move_frames;
    target->collision_with = source->collision_with;
    target->inertia_dx = source->inertia_dx;
    target->inertia_dy = source->inertia_dy;
    target->inertia_frames = source->inertia_frames;
    target->angle = source->angle;
    target->angle_target = source->angle_target;
    target->rotation_speed = source->rotation_speed;
    target->rotation_step = source->rotation_step;
}

void node_copy_node2(Node *target, const Node *source) {
    if (target == source)
        return;
    text_copy_limit(target->name, NODE_NAME_LENGTH, source->name);
    text_copy_limit(target->description, NODE_DESCRIPTION_LENGTH, source->description);
    copy_actions(target, source);
    copy_motion(target, source);
    target->type = source->type;
    target->model_id = source->model_id;
    target->pick_id = source->pick_id;
    target->x = source->x;
    target->y = source->y;
    target->height = source->height;
    target->scale = source->scale;
    std::copy(std::begin(source->dimensions), std::end(source->dimensions), target->dimensions);
    target->label_depth = source->label_depth;
    target->fade_state = source->fade_state;
    target->alpha = source->alpha;
}

void node_delete_node(std::int32_t id) {
    if (!node_is_live(id))
        return;
    node_remove_lines(id);
    for (std::int32_t i = id; i + 1 < node_total; i++)
        node_copy_node(i, i + 1);
    node_total--;
    for (std::int32_t i = 0; i < line_total; i++) {
        if (line[i].from > id)
            line[i].from--;
        if (line[i].to > id)
            line[i].to--;
    }
}
