// A fresh page folder and an empty scene in a small context; transitions are off.
#pragma once

#include "platform/locations.h"
#include "platform/text.h"
#include "tests/support/gl_context.h"
#include "tests/support/test_folder.h"
#include "tests/unit/empty_scene.h"

#include <gtest/gtest.h>

struct PageFolderTest : testing::Test {
    GlContext context{64, 64};
    TestFolder folder;

    PageFolderTest() {
        text_copy(page_dir_location, folder.path);
        text_copy(object_dir_location, folder.path);
        empty_scene_init();
        orvanel_options.good_graphics_card = 0;
        scene_resize(64, 64);
        open_mode = 0;
    }
    ~PageFolderTest() override {
        empty_scene_free();
        scene_changed = 0;
        open_mode = 0;
        app_mode = APP_VIEW;
        app_align_mode = 0;
        page_dir_location[0] = object_dir_location[0] = '\0';
    }
};
