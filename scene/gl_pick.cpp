#include "scene/gl_util.h"

#include "page/node.h"
#include "platform/gl.h"
#include "scene/scene.h"
#include "scene/scene_navigation.h"
#include "scene/scene_page.h"

// A hit record: number of names, minimum and maximum depth, and the one name.
static constexpr std::int32_t RECORD_SIZE = 4;
static constexpr std::int32_t SELECTION_SIZE = 512;
// Room for a record of every node.
static constexpr std::int32_t SELECTION_SIZE_MAX = RECORD_SIZE * (NODE_CAPACITY + 1);

static GLuint selection_buffer[SELECTION_SIZE_MAX];

// The projection of the scene narrowed to one pixel.
static void apply_pick_projection(std::int32_t x, std::int32_t y, GLint viewport[4]) {
    glLoadIdentity();
    gluPickMatrix(x, viewport[3] - y, 1.0, 1.0, viewport);
    gluPerspective(static_cast<double>(scene_fov), static_cast<double>(viewport[2]) / viewport[3],
                   SCENE_NEAR, SCENE_FAR);
}

// Number of hit records in selection_buffer, -1 when they did not fit into size entries.
static std::int32_t draw_for_selection(std::int32_t x, std::int32_t y, std::int32_t size) {
    GLint viewport[4] = {};
    glGetIntegerv(GL_VIEWPORT, viewport);
    if (viewport[2] <= 0 || viewport[3] <= 0)
        return 0;
    glSelectBuffer(size, selection_buffer);
    glRenderMode(GL_SELECT);
    glInitNames();
    glPushName(0);
    glMatrixMode(GL_PROJECTION);
    glPushMatrix();
    apply_pick_projection(x, y, viewport);
    glMatrixMode(GL_MODELVIEW);
    scene_draw_nodes_on(
        pick_ray(x, viewport[3] - y, viewport[2], viewport[3], static_cast<double>(scene_fov)));
    glMatrixMode(GL_PROJECTION);
    glPopMatrix();
    glMatrixMode(GL_MODELVIEW);
    return glRenderMode(GL_RENDER);
}

static std::int32_t nearest_hit(std::int32_t hits) {
    std::int32_t nearest = PICK_NOTHING;
    GLuint nearest_depth = 0;
    for (std::int32_t i = 0; i < hits; i++) {
        const GLuint *record = selection_buffer + i * RECORD_SIZE;
        if (nearest == PICK_NOTHING || record[1] < nearest_depth) {
            nearest_depth = record[1];
            nearest = static_cast<std::int32_t>(record[3]);
        }
    }
    return nearest;
}

std::int32_t selection(std::int32_t x, std::int32_t y) {
    const std::int32_t button = scene_stack_depth > 0 ? scene_mouse_over_button(x, y) : -1;
    if (button != -1)
        return button;
    const std::int32_t label = scene_mouse_over_label(x, y);
    if (label != -1)
        return label;
    std::int32_t hits = draw_for_selection(x, y, SELECTION_SIZE);
    if (hits < 0)
        hits = draw_for_selection(x, y, SELECTION_SIZE_MAX);
    return nearest_hit(hits);
}

static bool node_box_holds(const Node &record, float x, float y) {
    return x >= record.x + record.dimensions[EXTENT_LEFT] &&
           x <= record.x + record.dimensions[EXTENT_RIGHT] &&
           y >= record.y + record.dimensions[EXTENT_NEAR] &&
           y <= record.y + record.dimensions[EXTENT_FAR];
}

std::int32_t scene_mouse_within_node_box2(std::int32_t x, std::int32_t y) {
    float floor_x, floor_y;
    GetOGLPos(x, y, &floor_x, &floor_y, gl_depth_of_zoom_level(DEPTH_LOOKUP_LABEL));
    for (std::int32_t i = 0; i < node_total; i++) {
        if (node_box_holds(node[i], scene_floor.position_x + floor_x,
                           scene_floor.position_y + floor_y))
            return i;
    }
    return -1;
}

std::int32_t scene_mouse_within_node_box(std::int32_t id, float dx, float dy) {
    return node_box_holds(node[id], scene_floor.position_x + dx, scene_floor.position_y + dy) ? 0
                                                                                              : 1;
}
