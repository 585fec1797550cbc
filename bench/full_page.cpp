#include "bench/full_page.h"

#include "page/node.h"
#include "platform/text.h"

static void fill_action(Action *action, int number) {
    text_format(action->name, sizeof action->name, "Remote desktop %d", number);
    text_format(action->command, sizeof action->command,
                "c:\\windows\\system32\\mstsc.exe /v:$NAME /port:%d", 3389 + number);
    text_copy(action->icon, "c:\\windows\\system32\\mstsc.exe");
}

void fill_page() {
    node_total = NODE_CAPACITY;
    for (std::int32_t id = 0; id < NODE_CAPACITY; id++) {
        Node *object = &node[id];
        node_init_node(id);
        object->type = NODE_OBJECT;
        object->model_id = 0;
        text_format(object->name, sizeof object->name, "Server %03d", id);
        text_format(object->description, sizeof object->description, "Rack %d, row %d", id / 16,
                    id % 16);
        object->x = static_cast<float>(id % 16) * 7.5f - 60.0f;
        object->y = static_cast<float>(id / 16) * 7.5f - 60.0f;
        object->action_count = NODE_ACTIONS;
        for (int i = 0; i < NODE_ACTIONS; i++) {
            action_allocate_action(&object->actions[i]);
            fill_action(object->actions[i], i);
        }
    }
}
