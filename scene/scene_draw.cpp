#include "scene/scene.h"

#include "assets/model.h"
#include "page/node.h"
#include "page/options.h"
#include "platform/console.h"
#include "platform/gl.h"
#include "platform/window.h"
#include "scene/gl_util.h"
#include "scene/interaction.h"
#include "scene/scene_navigation.h"

#include <algorithm>
#include <cmath>
#include <numbers>

// Floor units around the window in which objects are still drawn: a part of them may show. The
// reflections lie further away and move more slowly out of the window.
static constexpr float OBJECT_MARGIN = 5.0f;
static constexpr float REFLECTION_MARGIN = 7.0f;
// Floor units that an object may stick out beyond the floor and still have a reflection.
static constexpr float REFLECTION_OVERHANG = 10.0f;

static constexpr float FIELD_OF_VIEW_MAX = 179.0f; // degrees; nothing can be projected beyond

// ---- projection

// Screen pixels of height by which the field of view grows by one degree.
static std::int32_t pixels_per_degree(std::int32_t screen_height) {
    std::int32_t divisor = 30;
    if (screen_height <= 800)
        divisor = 20;
    else if (screen_height <= 1024)
        divisor = 25;
    return std::max(screen_height / divisor, 1);
}

void scene_resize(std::int32_t width, std::int32_t height) {
    scene_floor.window_width = width;
    scene_floor.window_height = height;
    scene_request_redraw();
    glViewport(0, 0, std::max(width, 0), std::max(height, 0));
    // A minimised window has no area; the projection waits for the next size.
    if (width <= 0 || height <= 0)
        return;
    scene_fov =
        std::min(static_cast<float>(height) / static_cast<float>(pixels_per_degree(screen_size_y)),
                 FIELD_OF_VIEW_MAX);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    gluPerspective(static_cast<double>(scene_fov), static_cast<double>(width) / height, SCENE_NEAR,
                   SCENE_FAR);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
}

// ---- objects

static bool has_model(const Node &record) {
    return record.type == NODE_OBJECT || record.type == NODE_PAGE;
}

static bool is_drawn(const Node &record, float margin) {
    const float x = record.x - scene_floor.position_x;
    const float y = record.y - scene_floor.position_y;
    return record.grab_state != GRAB_ANCHORED && has_model(record) &&
           x > scene_floor.view_left - margin && x < scene_floor.view_right + margin &&
           y > scene_floor.view_bottom - margin && y < scene_floor.view_top + margin;
}

// mirror is 1 for the object and -1 for its image below the floor.
static void place_object(const Node &record, float mirror) {
    glLoadIdentity();
    if (global_angle != 0.0f)
        glRotatef(global_angle, 0.0f, 0.0f, 1.0f);
    glTranslatef(record.x - scene_floor.position_x, record.y - scene_floor.position_y,
                 scene_floor.distance + mirror * record.height - FLOOR_DISTANCE);
    glScalef(record.scale, record.scale, mirror * record.scale);
    if (record.bounce_active != BOUNCE_REST) {
        glRotatef(record.angle, 1.0f, 0.0f, 0.0f);
        glRotatef(record.angle_target, 0.0f, 1.0f, 0.0f);
    }
}

static void draw_model_of(const Node &record) {
    Model *model = &models[record.model_id];
    if (record.alpha != 1.0f)
        model_draw_faded(model, record.alpha);
    else
        model_draw(model);
}

// However the object spins, it stays in a ball around its position.
static bool may_show_on(const PickRay &ray, const Node &record) {
    const double turn = static_cast<double>(global_angle) * std::numbers::pi / 180.0;
    const double x = static_cast<double>(record.x - scene_floor.position_x);
    const double y = static_cast<double>(record.y - scene_floor.position_y);
    const double z = static_cast<double>(scene_floor.distance + record.height - FLOOR_DISTANCE);
    const float radius = model_reach(&models[record.model_id]) * std::fabs(record.scale);
    return pick_ray_may_hit(ray, x * std::cos(turn) - y * std::sin(turn),
                            x * std::sin(turn) + y * std::cos(turn), z,
                            static_cast<double>(radius));
}

// ray is null for the picture.
static void draw_nodes(const PickRay *ray) {
    glPushMatrix();
    glCullFace(GL_BACK);
    for (std::int32_t i = 0; i < node_total; i++) {
        Node &record = node[i];
        if (!is_drawn(record, OBJECT_MARGIN)) {
            // Deleting moves nodes to other indices: a name kept would be that of another by now.
            if (has_model(record))
                record.pick_id = NODE_PICK_NONE;
            continue;
        }
        record.pick_id = i;
        if (ray != nullptr && !may_show_on(*ray, record))
            continue;
        place_object(record, 1.0f);
        glLoadName(static_cast<GLuint>(i));
        draw_model_of(record);
    }
    glPopMatrix();
}

void scene_draw_nodes() {
    draw_nodes(nullptr);
}

void scene_draw_nodes_on(const PickRay &ray) {
    draw_nodes(&ray);
}

static bool stands_over_floor(const Node &record) {
    return record.x + record.dimensions[EXTENT_LEFT] + REFLECTION_OVERHANG > -FLOOR_EDGE &&
           record.x + record.dimensions[EXTENT_RIGHT] - REFLECTION_OVERHANG < FLOOR_EDGE &&
           record.y + record.dimensions[EXTENT_NEAR] + REFLECTION_OVERHANG > -FLOOR_EDGE &&
           record.y + record.dimensions[EXTENT_FAR] - REFLECTION_OVERHANG < FLOOR_EDGE;
}

void scene_draw_reflections() {
    if (!orvanel_options.good_graphics_card || !orvanel_options.reflections)
        return;
    // They are drawn before the floor, which works out the bounds: what has just come into the
    // window would be without its reflection for a frame.
    if (scene_floor.pick_depth == 0.0f)
        scene_get_window_bounds();
    glPushMatrix();
    glCullFace(GL_FRONT); // mirroring turns the faces round
    for (std::int32_t i = 0; i < node_total; i++) {
        const Node &record = node[i];
        if (!is_drawn(record, REFLECTION_MARGIN) || !stands_over_floor(record))
            continue;
        place_object(record, -1.0f);
        draw_model_of(record);
    }
    glCullFace(GL_BACK);
    glPopMatrix();
}

// ---- the picture

// The half-transparent floor lies over the reflections, hence they come first.
static std::int32_t draw_scene() {
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    scene_draw_lights();
    scene_draw_reflections();
    const std::int32_t once_more = scene_draw_floor();
    scene_draw_lines();
    if (app_line_draw_mode == 1)
        scene_draw_line_select_lines();
    if (app_align_mode == 1)
        scene_draw_alignment_line();
    scene_draw_nodes();
    scene_draw_node_labels();
    scene_draw_labels();
    scene_draw_page_title();
    scene_draw_navigation_buttons();
    console_draw();
    return once_more;
}

std::int32_t scene_draw() {
    if (scene_redraw_flag != 1 || window_is_minimised())
        return 1;
    scene_redraw_flag = draw_scene();
    window_swap_buffers();
    return 0;
}
