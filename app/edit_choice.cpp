#include "app/edit_choice.h"

#include "editing/undo.h"
#include "page/node.h"
#include "scene/frame_clock.h"
#include "scene/interaction.h"
#include "scene/scene_align.h"
#include "scene/scene_page.h"
#include "scene/scene_transition.h"

bool edit_leave_choice() {
    const bool choosing = app_align_mode == 1 || app_line_draw_mode == 1;
    app_align_mode = 0;
    app_line_draw_mode = 0;
    return choosing;
}

void edit_begin_link(std::int32_t from) {
    app_line_draw_mode = 1;
    app_line_from_node = from;
    app_line_to_node = -1;
}

void edit_begin_alignment(std::int32_t from) {
    app_align_mode = 1;
    app_align_from_node = from;
    app_align_to_node = -1;
}

static bool can_be_linked(std::int32_t id) {
    return node_is_live(id) && (node[id].type == NODE_OBJECT || node[id].type == NODE_PAGE);
}

// A link that is there already, or that the table has no room for, changes nothing.
static void link_nodes(std::int32_t from, std::int32_t to) {
    undo_push();
    redo_reset();
    if (line_create_from_ids(from, to) == 0)
        scene_changed = 1;
    else
        undo_reject();
}

void edit_choose_link_end(std::int32_t target) {
    if (target < 0)
        return;
    app_line_draw_mode = 0;
    if (target != app_line_from_node && can_be_linked(app_line_from_node) && can_be_linked(target))
        link_nodes(app_line_from_node, target);
}

void edit_choose_alignment(std::int32_t target) {
    app_align_to_node = node_is_live(target) ? target : -1;
    if (!node_is_live(app_align_from_node))
        return;
    const std::int32_t alignment = node_align_node(app_align_from_node, app_align_to_node);
    if (alignment == ALIGN_NONE)
        return;
    scene_changed = 1;
    app_align_mode = 0;
    undo_push();
    redo_reset();
    scene_align_node_transition(app_align_from_node, app_align_to_node, alignment);
    undo_duplicate_check(app_align_from_node);
    reset_frame_timer();
}
