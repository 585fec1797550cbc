#include "dialogs/rules/dialog_object_rules.h"

#include "assets/model.h"
#include "assets/object_files.h"
#include "dialogs/rules/action_tree.h"
#include "page/node.h"
#include "page/options.h"
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

// The position stays in the table's entry when it is initialised, and the entry may have held
// another node before.
static void begin_new_node(std::int32_t id) {
    node[id].type = NODE_OBJECT;
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
    node[id].model_id = details.model_id;
    node_set_model_dimensions(id);
    dialog_object_save_actions(&node[id]);
    if (!edited)
        node_total++;
    template_object_load();
    return id;
}

std::int32_t dialog_object_first_entry() {
    const bool remembers = orvanel_options.remember_last_model == 1;
    if (!dialog_object_edits_node() && remembers && dialog_object_last_model_used != OBJECT_NONE)
        return dialog_object_last_model_used;
    const Node *source = dialog_object_source();
    const std::int32_t model = source == nullptr ? 0 : source->model_id;
    if (model < 0 || model >= models_total)
        return OBJECT_DEFAULT;
    const std::int32_t entry = object_files_get_id_from_file(models[model].file_name);
    return entry == OBJECT_NONE ? OBJECT_DEFAULT : entry;
}

void dialog_object_remember_entry(std::int32_t entry) {
    if (orvanel_options.remember_last_model == 1)
        dialog_object_last_model_used = entry;
}

std::int32_t dialog_object_entry_model(std::int32_t entry) {
    if (entry < 0 || entry >= object_files_total)
        return 0;
    return model_return_model_id(object_files[entry].file);
}
