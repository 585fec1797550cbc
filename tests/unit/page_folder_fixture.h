// A fresh page folder and an empty scene in a small context; transitions are off.
#pragma once

#include "assets/model.h"
#include "page/options.h"
#include "platform/locations.h"
#include "platform/text.h"
#include "scene/interaction.h"
#include "scene/scene.h"
#include "scene/scene_page.h"
#include "tests/support/gl_context.h"
#include "tests/support/test_folder.h"

#include <gtest/gtest.h>

struct PageFolderTest : testing::Test {
    GlContext context{64, 64};
    TestFolder folder;

    PageFolderTest() {
        text_copy(page_dir_location, folder.path);
        text_copy(object_dir_location, folder.path);
        options_set_defaults();
        orvanel_options.good_graphics_card = 0;
        model_init();
        node_init_nodes();
        template_object_init();
        interaction_init();
        scene_floor = {};
        scene_resize(64, 64);
        scene_stack_depth = 0;
        open_mode = 0;
    }
    ~PageFolderTest() override {
        node_free_nodes();
        template_object_free();
        model_unload_models();
        models_total = 0;
        node_total = 0;
        scene_stack_depth = 0;
        scene_changed = 0;
        open_mode = 0;
        app_mode = APP_VIEW;
        app_align_mode = 0;
        page_dir_location[0] = object_dir_location[0] = '\0';
    }
};
