// The scene without floor and objects: only its texts, on a blue ground.
#pragma once

#include "scene/scene_text.h"

#include "assets/tex_font.h"
#include "platform/gl.h"
#include "platform/text.h"
#include "scene/gl_util.h"
#include "tests/support/drawn_bounds.h"
#include "tests/unit/empty_scene.h"

#include <gtest/gtest.h>

inline constexpr Pixel BLUE = {0, 0, 255};
inline constexpr Pixel WHITE = {255, 255, 255};

struct SceneText : testing::Test {
    GlContext context{500, 400};

    void SetUp() override {
        empty_scene_init();
        screen_size_x = 1024;
        screen_size_y = 768;
        scene_resize(500, 400);
        scene_floor.view_left = scene_floor.view_bottom = -20.0f;
        scene_floor.view_right = scene_floor.view_top = 20.0f;
        font_white = font_label_normal = {1.0f, 1.0f, 1.0f};
        set_zoom(3);
        scene_lights_init();
        gl_clear(BLUE);
    }
    void TearDown() override {
        scene_fonts_stop();
        empty_scene_free();
    }
    static void use_texture_fonts(bool texture) {
        orvanel_options.text_shadows = texture ? 1 : 0;
        scene_fonts_init();
    }
    static void set_zoom(std::int32_t level) {
        scene_floor.zoom_level = level;
        scene_floor.distance = ZOOM_STEP * static_cast<float>(level) + ZOOM_DISTANCE_MIN;
    }
    static Node &add(NodeType type, const char *name, const char *description, float x, float y) {
        node_init_node(node_total);
        Node &record = node[node_total++];
        record.type = type;
        record.x = x;
        record.y = y;
        text_copy(record.name, name);
        text_copy(record.description, description);
        record.dimensions[EXTENT_NEAR] = -1.0f;
        return record;
    }
    DrawnBounds draw_names() const {
        gl_clear(BLUE);
        scene_draw_node_labels();
        return drawn_bounds(context, BLUE);
    }
    DrawnBounds draw_labels() const {
        gl_clear(BLUE);
        scene_draw_labels();
        return drawn_bounds(context, BLUE);
    }
    DrawnBounds draw_title() const {
        gl_clear(BLUE);
        scene_draw_page_title();
        return drawn_bounds(context, BLUE);
    }
};

struct WindowPlace {
    double x, y; // pixels from the top left
};

inline WindowPlace place(double x, double y, double z) {
    double modelview[16], projection[16], window[3] = {};
    GLint viewport[4];
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glGetDoublev(GL_MODELVIEW_MATRIX, modelview);
    glGetDoublev(GL_PROJECTION_MATRIX, projection);
    glGetIntegerv(GL_VIEWPORT, viewport);
    gluProject(x, y, z, modelview, projection, viewport, &window[0], &window[1], &window[2]);
    return {window[0], viewport[3] - window[1]};
}
