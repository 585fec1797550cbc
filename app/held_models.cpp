#include "app/held_models.h"

#include "assets/model.h"
#include "editing/clipboard.h"
#include "platform/text.h"
#include "scene/scene_page.h"

static constexpr std::int32_t HELD_NODES = 2 + SCENE_STACK_CAPACITY;

static char file_names[HELD_NODES][sizeof models[0].file_name];

static Node *held_node(std::int32_t index) {
    if (index == 0)
        return &clipboard;
    if (index == 1)
        return &template_object.node;
    return &scene_stack[index - 2].template_object.node;
}

void held_models_remember() {
    for (std::int32_t i = 0; i < HELD_NODES; i++) {
        const std::int32_t id = held_node(i)->model_id;
        text_copy(file_names[i], id >= 0 && id < models_total ? models[id].file_name : "");
    }
}

void held_models_find_again() {
    for (std::int32_t i = 0; i < HELD_NODES; i++)
        held_node(i)->model_id = model_return_model_id(file_names[i]);
}
