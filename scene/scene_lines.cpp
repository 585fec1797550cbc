#include "scene/scene.h"

#include "page/node.h"
#include "platform/gl.h"
#include "scene/gl_util.h"
#include "scene/interaction.h"
#include "scene/scene_align.h"
#include "scene/scene_materials.h"

static const float col_line_draw_mode[4] = {1.0f, 1.0f, 0.0f, 1.0f};
static const float col_line_align_mode[4] = {1.0f, 1.0f, 1.0f, 1.0f};

static constexpr float CHOICE_SQUARE = 0.15f; // half sizes, floor units
static constexpr float LINK_SQUARE = 0.2f;

// Relative to the floor's position, floor units.
struct FloorPoint {
    float x, y;
};

static FloorPoint node_point(const Node &record) {
    return {record.x - scene_floor.position_x, record.y - scene_floor.position_y};
}

static void draw_segment(FloorPoint from, FloorPoint to, float z) {
    glBegin(GL_LINES);
    glVertex3f(from.x, from.y, z);
    glVertex3f(to.x, to.y, z);
    glEnd();
}

static void draw_square(FloorPoint centre, float half_size, float z) {
    glBegin(GL_QUADS);
    glVertex3f(centre.x - half_size, centre.y + half_size, z);
    glVertex3f(centre.x - half_size, centre.y - half_size, z);
    glVertex3f(centre.x + half_size, centre.y - half_size, z);
    glVertex3f(centre.x + half_size, centre.y + half_size, z);
    glEnd();
}

static void draw_link(const Line &link) {
    const FloorPoint from = node_point(node[link.from]);
    const FloorPoint to = node_point(node[link.to]);
    const float z = scene_floor.distance - link.height_offset;
    scene_flat_colour(link.colour);
    draw_segment(from, to, z);
    draw_square(from, LINK_SQUARE, z);
    draw_square(to, LINK_SQUARE, z);
}

void scene_draw_lines() {
    glPushMatrix();
    glLoadIdentity();
    if (global_angle != 0.0f)
        glRotatef(global_angle, 0.0f, 0.0f, 1.0f);
    scene_flat_material();
    for (std::int32_t i = 0; i < line_total; i++) {
        // A page file may link objects that it does not hold; such links are kept for it.
        if (node_is_live(line[i].from) && node_is_live(line[i].to))
            draw_link(line[i]);
    }
    glPopMatrix();
}

static FloorPoint mouse_point() {
    FloorPoint point;
    GetOGLPos(mouse.x, mouse.y, &point.x, &point.y, scene_floor.pick_depth);
    return point;
}

static FloorPoint hovered_object_or_mouse() {
    for (std::int32_t i = 0; i < node_total; i++) {
        if (node[i].grab_state == GRAB_HOVERED &&
            (node[i].type == NODE_OBJECT || node[i].type == NODE_PAGE))
            return node_point(node[i]);
    }
    return mouse_point();
}

static void draw_choice(FloorPoint from, FloorPoint to, const float (&colour)[4]) {
    const float z = scene_floor.distance - LINE_REST_OFFSET;
    scene_flat_material();
    scene_flat_colour(colour);
    draw_segment(from, to, z);
    draw_square(from, CHOICE_SQUARE, z);
    draw_square(to, CHOICE_SQUARE, z);
}

void scene_draw_line_select_lines() {
    if (!node_is_live(app_line_from_node))
        return;
    glPushMatrix();
    glLoadIdentity();
    draw_choice(node_point(node[app_line_from_node]), hovered_object_or_mouse(),
                col_line_draw_mode);
    glPopMatrix();
}

// Where the object would go, with the row or column of the one chosen that it would then stand in.
static void draw_alignment(FloorPoint from, FloorPoint to, std::int32_t alignment) {
    const FloorPoint place =
        alignment == ALIGN_COLUMN ? FloorPoint{to.x, from.y} : FloorPoint{from.x, to.y};
    draw_choice(from, place, col_line_align_mode);
    draw_choice(place, to, col_line_align_mode);
}

// To the mouse while a click would align nothing.
void scene_draw_alignment_line() {
    if (!node_is_live(app_align_from_node))
        return;
    glPushMatrix();
    glLoadIdentity();
    const FloorPoint from = node_point(node[app_align_from_node]);
    const std::int32_t alignment = node_align_node(app_align_from_node, app_align_to_node);
    if (alignment == ALIGN_NONE)
        draw_choice(from, mouse_point(), col_line_align_mode);
    else
        draw_alignment(from, node_point(node[app_align_to_node]), alignment);
    glPopMatrix();
}
