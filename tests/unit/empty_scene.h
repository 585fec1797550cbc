// A scene with nothing in it and the options as they are at first, for fixtures of scene tests.
#pragma once

#include "assets/model.h"
#include "page/node.h"
#include "page/options.h"
#include "scene/interaction.h"
#include "scene/scene.h"
#include "scene/scene_page.h"

inline void empty_scene_init() {
    options_set_defaults();
    model_init();
    node_init_nodes();
    node_total = 0;
    line_init();
    template_object_init();
    interaction_init();
    scene_floor = {};
    scene_stack_depth = 0;
}

// Frees what a test has put into it. The GL context in which it did is still there.
inline void empty_scene_free() {
    node_free_nodes();
    node_total = 0;
    line_init();
    template_object_free();
    template_object.empty = 1;
    model_unload_models();
    models_total = 0;
    scene_stack_depth = 0;
}
