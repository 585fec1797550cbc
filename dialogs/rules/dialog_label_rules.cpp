#include "dialogs/rules/dialog_label_rules.h"

#include "dialogs/dialogs.h"
#include "editing/undo.h"
#include "page/node.h"
#include "platform/text.h"
#include "scene/gl_util.h"
#include "scene/interaction.h"
#include "scene/scene_page.h"

std::int32_t dialog_node_id = -1;

static bool is_new() {
    return dialog_node_id < 0;
}

const char *dialog_label_title() {
    return is_new() ? LABEL_TITLE_NEW : LABEL_TITLE_EXISTING;
}

const char *dialog_label_text() {
    return is_new() ? "" : node[dialog_node_id].description;
}

static void place_at_menu(Node *label) {
    float x = 0.0f;
    float y = 0.0f;
    GetOGLPos(pre_dialog_mouse.x, pre_dialog_mouse.y, &x, &y,
              gl_depth_of_zoom_level(DEPTH_LOOKUP_FLOOR));
    label->x = scene_floor.position_x + x;
    label->y = scene_floor.position_y + y;
    label->grab_x = label->x; // it rests there
    label->grab_y = label->y;
}

// Also a label that only gets another text takes a new name: names are for links alone, and those
// go by index.
static void store_text(Node *label, const char *text) {
    text_copy_limit(label->description, NODE_DESCRIPTION_LENGTH, text);
    text_format(label->name, sizeof label->name, "_lbl%dlbl_", static_cast<int>(node_label_total));
    node_label_total++;
}

void dialog_label_store(const char *text) {
    const std::int32_t id = is_new() ? node_total : dialog_node_id;
    if (id >= NODE_CAPACITY)
        return;
    if (is_new())
        node_init_node(id);
    redo_reset();
    node[id].type = NODE_LABEL;
    if (text[0] == '\0')
        return;
    store_text(&node[id], text);
    if (!is_new())
        return;
    place_at_menu(&node[id]);
    node_total++;
}
