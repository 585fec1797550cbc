#include "dialogs/rules/dialog_object_rules.h"

#include "assets/object_files.h"
#include "dialogs/rules/action_tree.h"
#include "dialogs/rules/dialog_model_rules.h"
#include "page/node.h"
#include "platform/text.h"
#include "scene/scene_floor.h"
#include "scene/scene_page.h"

std::int32_t dialog_object_node_id = DIALOG_OBJECT_NEW;
float dialog_object_mouse_x, dialog_object_mouse_y;
std::int32_t &dialog_object_last_model_used = last_host_model_used;

void dialog_object_init() {
    dialog_object_node_id = DIALOG_OBJECT_NEW;
    dialog_object_last_model_used = OBJECT_NONE;
}

void dialog_object_set_node(std::int32_t index) {
    dialog_object_node_id = index;
}

void dialog_object_set_mouse(float x, float y) {
    dialog_object_mouse_x = x;
    dialog_object_mouse_y = y;
}

bool dialog_object_edits_node() {
    return node_is_live(dialog_object_node_id);
}

const char *dialog_object_title() {
    return dialog_object_edits_node() ? "Object Properties" : "New Object";
}

const Node *dialog_object_source() {
    if (dialog_object_edits_node())
        return &node[dialog_object_node_id];
    return template_object_check() == 0 ? &template_object.node : nullptr;
}

std::int32_t dialog_object_first_model() {
    const Node *source = dialog_object_source();
    return source == nullptr ? 0 : source->model_id;
}

std::int32_t dialog_object_first_entry() {
    const std::int32_t own = dialog_model_entry(dialog_object_first_model());
    return dialog_object_edits_node()
               ? own
               : dialog_model_entry_used_last(dialog_object_last_model_used, own);
}

// The position stays in the table's entry when it is initialised, and the entry may have held
// another node before.
static void begin_new_node(std::int32_t id) {
    node[id].type = NODE_OBJECT;
    node[id].model_id = dialog_object_first_model();
    node[id].x = dialog_object_mouse_x + scene_floor.position_x;
    node[id].y = dialog_object_mouse_y + scene_floor.position_y;
    node[id].move_dx = node[id].move_dy = 0.0f;
    node[id].label_depth = 0;
    node_init_node(id);
}

std::int32_t dialog_object_apply(const ObjectDetails &details) {
    const bool edited = dialog_object_edits_node();
    if (!edited && node_total >= NODE_CAPACITY)
        return -1;
    const std::int32_t id = edited ? dialog_object_node_id : node_total;
    if (!edited)
        begin_new_node(id);
    text_copy_limit(node[id].name, NODE_NAME_LENGTH, details.name);
    text_copy_limit(node[id].description, NODE_DESCRIPTION_LENGTH, details.description);
    dialog_model_take(id, details.model_entry);
    dialog_model_remember(&dialog_object_last_model_used, details.model_entry);
    dialog_object_save_actions(&node[id]);
    if (!edited)
        node_total++;
    template_object_load();
    return id;
}
