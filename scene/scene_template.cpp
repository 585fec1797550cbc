#include "scene/scene_page.h"

TemplateObject template_object{.empty = 1, .node = {}};

inline constexpr char TEMPLATE_NAME[] = "Template";

// May be called again when the window is made anew, so earlier records are freed.
void template_object_init() {
    template_object.empty = 1;
    node_free_node_actions(&template_object.node);
}

void template_object_load() {
    const std::int32_t id = node_return_id(TEMPLATE_NAME);
    if (id == -1 || node[id].type != NODE_OBJECT)
        return;
    node_copy_node2(&template_object.node, &node[id]);
    template_object.empty = 0;
}

std::int32_t template_object_check() {
    return template_object.empty;
}

void template_object_copy(TemplateObject *target, const TemplateObject *source) {
    target->empty = source->empty;
    node_copy_node2(&target->node, &source->node);
}

void template_object_delete() {
    template_object.empty = 1;
    for (std::int32_t i = scene_stack_depth - 1; i >= 0; i--) {
        if (scene_stack[i].template_object.empty == 0) {
            template_object_copy(&template_object, &scene_stack[i].template_object);
            return;
        }
    }
}

void template_object_free() {
    node_free_node_actions(&template_object.node);
    for (SceneStackEntry &entry : scene_stack)
        node_free_node_actions(&entry.template_object.node);
}
