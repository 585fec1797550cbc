#include "scene/scene_floor.h"

#include "assets/font.h"
#include "page/options.h"
#include "platform/gl.h"
#include "scene/gl_util.h"
#include "scene/interaction.h"
#include "scene/scene.h"
#include "scene/scene_materials.h"
#include "scene/scene_text.h"

#include <algorithm>

SceneFloor scene_floor;
std::int32_t screen_size_x, screen_size_y;

// RGBA; scene_invalidate_floor derives all but the last from the page colour.
static float scene_floor_graph_small_colour[4] = {0.08f, 0.18f, 0.28f, 0.3f};
static float scene_floor_graph_medium_colour[4] = {0.11f, 0.21f, 0.31f, 0.2f};
static float scene_floor_graph_large_colour[4] = {0.15f, 0.25f, 0.35f, 0.1f};
static const float scene_floor_graph_large_colour_edit[4] = {1.0f, 0.18f, 0.28f, 1.0f};

static constexpr float GRID_BRIGHTER = 0.25f; // than the page, each component
static constexpr float GRID_HEIGHT = 0.01f;   // floor units above the floor
static constexpr float FLOOR_OVERHANG = 1.0f; // floor units that the floor reaches beyond the grid
static constexpr float SMALL_STEP = 2.5f;     // floor units
static constexpr float MEDIUM_STEP = 5.0f;
static constexpr float LARGE_STEP = 20.0f;
static constexpr std::int32_t MEDIUM_STEPS_PER_LARGE = 4;

static constexpr float BRIGHT_PAGE = 0.5f; // from this brightness on white text would not show
static constexpr FontColour TEXT_ON_DARK = {1.0f, 1.0f, 1.0f};
static constexpr FontColour TEXT_ON_BRIGHT = {0.15f, 0.15f, 0.15f};

static void set_grid_colour(float (&colour)[4], float alpha) {
    const PageColour &page = scene_floor.colour;
    colour[0] = std::min(page.red + GRID_BRIGHTER, 1.0f);
    colour[1] = std::min(page.green + GRID_BRIGHTER, 1.0f);
    colour[2] = std::min(page.blue + GRID_BRIGHTER, 1.0f);
    colour[3] = alpha;
}

static void set_grid_colours() {
    const PageColour &page = scene_floor.colour;
    const bool black = page.red == 0.0f && page.green == 0.0f && page.blue == 0.0f;
    set_grid_colour(scene_floor_graph_small_colour, black ? 0.1f : 0.05f);
    set_grid_colour(scene_floor_graph_medium_colour, black ? 0.15f : 0.1f);
    set_grid_colour(scene_floor_graph_large_colour, black ? 0.25f : 0.2f);
}

// Texture fonts have a dark edge and are read on any floor. The mix takes the alpha in place of the
// blue on purpose: a blue floor is dark to the eye.
static void set_text_colours() {
    const PageColour &page = scene_floor.colour;
    const float brightness = (page.red + page.green + page.alpha) / 3.0f;
    const bool bright = brightness >= BRIGHT_PAGE && !scene_uses_texture_fonts();
    font_white = bright ? TEXT_ON_BRIGHT : TEXT_ON_DARK;
    font_label_normal = font_white;
}

void scene_invalidate_floor() {
    set_grid_colours();
    set_text_colours();
    if (scene_floor.list_valid)
        glDeleteLists(scene_floor.list, 1);
    scene_floor.list_valid = 0;
    scene_request_redraw();
}

static void draw_floor_quad() {
    constexpr float edge = FLOOR_EDGE + FLOOR_OVERHANG;
    const PageColour &page = scene_floor.colour;
    scene_flat_colour({page.red, page.green, page.blue, page.alpha});
    // A depth buffer of 16 bits cannot tell the grid from the floor; the floor gives way.
    glEnable(GL_POLYGON_OFFSET_FILL);
    glPolygonOffset(1.0f, 2.0f);
    glBegin(GL_QUADS);
    glVertex3f(-edge, edge, 0.0f);
    glVertex3f(-edge, -edge, 0.0f);
    glVertex3f(edge, -edge, 0.0f);
    glVertex3f(edge, edge, 0.0f);
    glEnd();
    glDisable(GL_POLYGON_OFFSET_FILL);
}

static void horizontal_line(float y) {
    glVertex3f(-FLOOR_EDGE, y, GRID_HEIGHT);
    glVertex3f(FLOOR_EDGE, y, GRID_HEIGHT);
}

static void grid_line_pair(float at) {
    horizontal_line(at);
    glVertex3f(at, -FLOOR_EDGE, GRID_HEIGHT);
    glVertex3f(at, FLOOR_EDGE, GRID_HEIGHT);
}

// Lines every step units; every leave_out-th one is left to the next larger grid (0 = none is).
static void draw_grid(float step, std::int32_t leave_out, const float (&colour)[4]) {
    scene_flat_colour(colour);
    glBegin(GL_LINES);
    const std::int32_t lines = static_cast<std::int32_t>(2.0f * FLOOR_EDGE / step);
    for (std::int32_t i = 0; i <= lines; i++) {
        if (leave_out == 0 || i % leave_out != 0)
            grid_line_pair(-FLOOR_EDGE + static_cast<float>(i) * step);
    }
    glEnd();
}

// Blended, so that the edges come out stronger for being drawn twice.
static void draw_edges() {
    glBegin(GL_LINES);
    horizontal_line(-FLOOR_EDGE);
    horizontal_line(FLOOR_EDGE);
    glEnd();
}

static void compile_floor() {
    scene_floor.list = glGenLists(1);
    glNewList(scene_floor.list, GL_COMPILE);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    scene_flat_material();
    draw_floor_quad();
    draw_grid(SMALL_STEP, 2, scene_floor_graph_small_colour);
    draw_grid(MEDIUM_STEP, MEDIUM_STEPS_PER_LARGE, scene_floor_graph_medium_colour);
    draw_grid(LARGE_STEP, 0,
              app_mode != APP_VIEW ? scene_floor_graph_large_colour_edit
                                   : scene_floor_graph_large_colour);
    draw_edges();
    glDisable(GL_BLEND);
    glEndList();
    scene_floor.list_valid = 1;
}

static void call_floor_list() {
    glPushMatrix();
    glCullFace(GL_BACK);
    glLoadIdentity();
    glTranslatef(-scene_floor.position_x, -scene_floor.position_y,
                 scene_floor.distance - FLOOR_DISTANCE);
    glCallList(scene_floor.list);
    glPopMatrix();
}

std::int32_t scene_draw_floor() {
    const bool compiled_now = !scene_floor.list_valid;
    if (compiled_now)
        compile_floor();
    call_floor_list();
    if (scene_floor.pick_depth != 0.0f)
        return 0;
    scene_floor.pick_depth = gl_depth_of_zoom_level(DEPTH_LOOKUP_FLOOR);
    scene_get_window_bounds();
    return compiled_now ? 0 : 1;
}

void scene_get_window_bounds() {
    const float depth = scene_floor.pick_depth != 0.0f ? scene_floor.pick_depth
                                                       : gl_depth_of_zoom_level(DEPTH_LOOKUP_FLOOR);
    glPushMatrix();
    glLoadIdentity();
    GetOGLPos(1, 1, &scene_floor.view_left, &scene_floor.view_top, depth);
    GetOGLPos(scene_floor.window_width - 1, scene_floor.window_height - 1, &scene_floor.view_right,
              &scene_floor.view_bottom, depth);
    glPopMatrix();
}
