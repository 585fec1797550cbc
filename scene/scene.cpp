#include "scene/scene.h"

#include "assets/model.h"
#include "page/options.h"
#include "platform/gl.h"
#include "scene/scene_navigation.h"
#include "scene/scene_page.h"
#include "scene/scene_text.h"

float global_angle;

// The context is new: lists of the one before are gone, and their numbers may belong to others now.
static void forget_floor_list() {
    scene_floor.list = 0;
    scene_floor.list_valid = 0;
    scene_floor.pick_depth = 0.0f;
}

void scene_init() {
    forget_floor_list();
    scene_lights_init();
    scene_fonts_init();
    scene_navigation_init();
    scene_changed = 0;
    scene_request_redraw();
    scene_floor.zoom_level = orvanel_options.initial_zoom_level;
    // No page before the first one.
    scene_floor.previous_colour = {
        .use_default = -1, .red = -1.0f, .green = -1.0f, .blue = -1.0f, .alpha = -1.0f};
    global_angle = 0.0f;
    template_object_init();
}

void scene_stop() {
    if (scene_floor.list_valid)
        glDeleteLists(scene_floor.list, 1);
    forget_floor_list();
    if (!orvanel_options.text_shadows || text_fonts_loaded == 1)
        scene_fonts_stop();
    scene_navigation_stop();
    model_unload_models();
}

void scene_floor_init() {
    scene_floor.drag_state = 0;
    if (!orvanel_options.maintain_zoom_level)
        scene_floor.zoom_level = orvanel_options.initial_zoom_level;
    scene_floor.inertia_x = 0.0f;
    scene_floor.inertia_y = 0.0f;
    scene_floor.inertia_frames = 0;
    scene_floor.spring_x = 0.0f;
    scene_floor.spring_y = 0.0f;
    global_angle = 0.0f;
    scene_floor.distance =
        ZOOM_STEP * static_cast<float>(scene_floor.zoom_level) + ZOOM_DISTANCE_MIN;
    scene_floor.pick_depth = 0.0f; // it belongs to the zoom level
}
