#include "app/commands.h"

#include "app/input.h"
#include "editing/clipboard.h"
#include "editing/undo.h"
#include "page/node.h"
#include "platform/message.h"
#include "platform/text.h"
#include "scene/interaction.h"
#include "scene/scene_page.h"
#include "scene/scene_transition.h"

bool command_has_room() {
    if (node_total < NODE_CAPACITY)
        return true;
    message_box("The maximum number of items has been reached on this page.", MESSAGE_CAPTION,
                MessageIcon::Exclamation);
    return false;
}

void command_begin_change() {
    undo_push();
    redo_reset();
}

void command_copy(std::int32_t) {
    const std::int32_t target = command_target();
    if (target != -1)
        clipboard_fill(target, CLIPBOARD_COPIED);
}

void command_cut(std::int32_t) {
    const std::int32_t target = command_target();
    if (target == -1)
        return;
    command_begin_change();
    clipboard_fill(target, CLIPBOARD_CUT);
    if (node[target].type == NODE_OBJECT)
        scene_page_hosts_total--;
    else if (node[target].type == NODE_PAGE)
        scene_page_links_total--;
    scene_cut_node_transition(target);
    node_delete_node(target);
    scene_changed = 1;
}

void command_paste(std::int32_t) {
    if (!command_has_room() || clipboard_used == CLIPBOARD_EMPTY)
        return;
    command_begin_change();
    float x = 0.0f;
    float y = 0.0f;
    input_node_position(pre_dialog_mouse.x, pre_dialog_mouse.y, &x, &y);
    clipboard_paste(x, y);
    scene_changed = 1;
}

void command_paste_actions(std::int32_t) {
    const std::int32_t target = command_target();
    if (target == -1 || node[target].type != NODE_OBJECT)
        return;
    command_begin_change();
    clipboard_paste_actions(target);
    scene_changed = 1;
    undo_duplicate_check(target);
    if (text_equal(node[target].name, "Template"))
        template_object_load();
}

void command_undo(std::int32_t) {
    undo_pop();
}

void command_redo(std::int32_t) {
    redo_pop();
}
