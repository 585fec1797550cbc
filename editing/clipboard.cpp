#include "editing/clipboard.h"

#include "editing/clipboard_page_file.h"
#include "editing/node_rest.h"
#include "scene/scene_page.h"
#include "scene/scene_transition.h"

#include <algorithm>

Node clipboard;
std::int32_t clipboard_used;

void clipboard_init() {
    node_init_node_actions(&clipboard);
}

void clipboard_stop() {
    node_free_node_actions(&clipboard);
    clipboard_used = CLIPBOARD_EMPTY;
}

void clipboard_fill(std::int32_t id, ClipboardUse use) {
    if (!node_is_live(id))
        return;
    node_copy_node2(&clipboard, &node[id]);
    clipboard_used = use;
}

// ---- pasting a node

static void paste_page(Node *page) {
    if (clipboard_used == CLIPBOARD_CUT)
        clipboard_used = CLIPBOARD_COPIED; // any more of them are copies
    else
        clipboard_duplicate_page_file(page);
    scene_page_links_total++;
}

static void paste_kind(Node *pasted) {
    if (pasted->type == NODE_PAGE)
        paste_page(pasted);
    else if (pasted->type == NODE_OBJECT)
        scene_page_hosts_total++;
}

static void make_room(std::int32_t id) {
    node[id].grab_state = GRAB_ANCHORED;
    scene_nodes_avoid_node_area(id);
    node[id].grab_state = GRAB_IDLE;
}

// The node counts only when there is room for it: until then it is not drawn.
void clipboard_paste(float x, float y) {
    const std::int32_t id = node_total;
    if (clipboard_used == CLIPBOARD_EMPTY || id >= NODE_CAPACITY)
        return;
    node_init_node(id);
    node_copy_node2(&node[id], &clipboard);
    paste_kind(&node[id]);
    node[id].x = x + scene_floor.position_x;
    node[id].y = y + scene_floor.position_y;
    node_rest(&node[id]);
    make_room(id);
    node_total++;
    scene_new_node_transition(id);
}

// ---- pasting actions

std::int32_t clipboard_paste_actions_available() {
    return clipboard.type != NODE_OBJECT || clipboard.action_count < 1 ? 1 : 0;
}

void clipboard_paste_actions(std::int32_t id) {
    if (clipboard_used == CLIPBOARD_EMPTY || clipboard_paste_actions_available() != 0)
        return;
    if (!node_is_live(id) || node[id].type != NODE_OBJECT)
        return;
    const std::int32_t count = std::min(clipboard.action_count, NODE_ACTIONS);
    for (std::int32_t i = 0; i < count; i++) {
        Action **slot = &node[id].actions[i];
        action_allocate_action(slot);
        if (*slot != nullptr && clipboard.actions[i] != nullptr)
            action_copy_action(*slot, clipboard.actions[i]);
    }
    node[id].action_count = count;
}
