#include "scene/scene_align.h"

#include "scene/gl_util.h"
#include "scene/interaction.h"
#include "scene/scene_floor.h"

std::int32_t node_align_node(std::int32_t from, std::int32_t to) {
    if (from == to || to == -1)
        return ALIGN_NONE;
    float mouse_x = 0.0f;
    float mouse_y = 0.0f;
    GetOGLPos(mouse.x, mouse.y, &mouse_x, &mouse_y, gl_depth_of_zoom_level(DEPTH_LOOKUP_FLOOR));
    return node_align_choice(from, to, mouse_x, mouse_y, scene_floor.position_x,
                             scene_floor.position_y);
}
