#include "tests/support/scene_stage.h"

#include "assets/model.h"
#include "page/options.h"
#include "scene/gl_util.h"
#include "scene/interaction.h"
#include "scene/scene.h"
#include "scene/scene_page.h"

#include <cmath>

SceneStage::SceneStage() {
    options_set_defaults();
    orvanel_options.show_home_page_title = 0;
    orvanel_options.initial_zoom_level = 4;
    interaction_init();
    node_init_nodes();
    node_total = 0;
    line_init();
    scene_stack_depth = 0;
    scene_floor = {};
    screen_size_x = 1920;
    screen_size_y = 1080;
    model_init();
    scene_init();
    node_init_effects();
    scene_resize(WIDTH, HEIGHT);
    scene_floor_init();
    stage_page_colour(0.0f, 0.0f, 0.0f);
}

SceneStage::~SceneStage() {
    scene_stop();
}

std::int32_t stage_add(NodeType type, float x, float y) {
    const std::int32_t id = node_total++;
    node_init_node(id);
    node[id].type = type;
    node[id].name[0] = '\0';
    node[id].description[0] = '\0';
    node[id].x = x;
    node[id].y = y;
    node[id].model_id = 0;
    if (type != NODE_LABEL)
        node_set_model_dimensions(id);
    return id;
}

void stage_page_colour(float red, float green, float blue) {
    scene_floor.colour = {
        .use_default = 0, .red = red, .green = green, .blue = blue, .alpha = 0.8f};
    scene_invalidate_floor();
}

void stage_zoom_level(std::int32_t level) {
    orvanel_options.initial_zoom_level = level;
    scene_floor_init();
}

int stage_draw() {
    int pictures = 0;
    scene_request_redraw();
    while (pictures < 10 && scene_draw() == 0)
        pictures++;
    return pictures;
}

WindowPoint stage_window_point(float x, float y, float height) {
    const float half_angle = scene_fov / 2.0f * 3.14159265f / 180.0f;
    const float away = FLOOR_DISTANCE - scene_floor.distance - height;
    const float pixels_per_unit =
        static_cast<float>(scene_floor.window_height) / 2.0f / (std::tan(half_angle) * away);
    return {static_cast<std::int32_t>(static_cast<float>(scene_floor.window_width) / 2.0f +
                                      (x - scene_floor.position_x) * pixels_per_unit),
            static_cast<std::int32_t>(static_cast<float>(scene_floor.window_height) / 2.0f -
                                      (y - scene_floor.position_y) * pixels_per_unit)};
}

int brightness(Pixel pixel) {
    return pixel.red + pixel.green + pixel.blue;
}

bool is_green(Pixel pixel) {
    return pixel.green > pixel.red + 8 && pixel.green > pixel.blue + 8;
}

Pixel stage_brightest_near(WindowPoint point) {
    Pixel brightest = gl_pixel(point.x, point.y);
    for (std::int32_t y = point.y - 1; y <= point.y + 1; y++) {
        for (std::int32_t x = point.x - 1; x <= point.x + 1; x++) {
            const Pixel pixel = gl_pixel(x, y);
            if (brightness(pixel) > brightness(brightest))
                brightest = pixel;
        }
    }
    return brightest;
}
