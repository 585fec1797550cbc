#include "scene/scene.h"

#include "page/node.h"
#include "platform/window.h"
#include "scene/gl_util.h"
#include "scene/interaction.h"

// Navigation buttons are picked too, but nothing is aligned with them.
static std::int32_t alignment_candidate(std::int32_t picked) {
    if (picked < 0)
        return scene_mouse_within_node_box2(mouse.x, mouse.y);
    return node_is_live(picked) ? picked : -1;
}

static void choose_alignment_target(std::int32_t candidate) {
    if (candidate == app_align_to_node)
        return;
    app_align_to_node = candidate;
    scene_request_redraw(); // its line
}

// A hovered object keeps the hover while the mouse stays in its box, so that the effect does not
// flicker between the parts of a model.
static void mark_hovered(std::int32_t picked, float floor_x, float floor_y) {
    app_node_grabbed = 0;
    for (std::int32_t i = 0; i < node_total; i++) {
        Node &record = node[i];
        if (record.grab_state == GRAB_GRABBED)
            app_node_grabbed = 1;
        else if (record.pick_id == picked)
            record.grab_state = GRAB_HOVERED;
        else if (scene_mouse_within_node_box(i, floor_x, floor_y) != 0)
            record.grab_state = GRAB_IDLE;
    }
}

void scene_hover_test() {
    mouse.flags &= ~MOUSE_MOVE;
    const std::int32_t picked = selection(mouse.x, mouse.y);
    if (app_align_mode == 1)
        choose_alignment_target(alignment_candidate(picked));
    float floor_x, floor_y;
    GetOGLPos(mouse.x, mouse.y, &floor_x, &floor_y, gl_depth_of_zoom_level(DEPTH_LOOKUP_LABEL));
    mark_hovered(picked, floor_x, floor_y);
    if (!window_is_foreground()) {
        for (std::int32_t i = 0; i < node_total; i++)
            node[i].grab_state = GRAB_IDLE;
    }
}
