// The preview's picture in an OpenGL context as bare as that of a new control.
#pragma once

#include "dialogs/rules/model_viewer_picture.h"

#include "assets/model.h"
#include "dialogs/rules/model_spin.h"
#include "page/options.h"
#include "platform/gl.h"
#include "platform/locations.h"
#include "platform/text.h"
#include "support/test_places.h"
#include "tests/support/gl_context.h"
#include "tests/support/test_folder.h"

#include <gtest/gtest.h>

struct ViewerPicture : testing::Test {
    static constexpr std::int32_t SIZE = 200; // pixels
    static constexpr Pixel BACKGROUND = {240, 240, 240};

    GlContext context{SIZE, SIZE};

    ViewerPicture() {
        options_set_defaults();
        text_copy(object_dir_location, ORVANEL_SOURCE_DIR "/models/");
        model_init();
        model_spin_init();
        forget_state();
        model_viewer_picture_init({240 / 255.0f, 240 / 255.0f, 240 / 255.0f});
        model_viewer_resize(SIZE, SIZE);
        model_viewer_model_id = 0;
    }
    ~ViewerPicture() override {
        model_viewer_picture_free();
        model_free_display_lists();
        model_unload_models();
        model_viewer_model_id = -1;
    }
    // What the main window has set in its own context.
    static void forget_state() {
        for (const GLenum ability : {GL_NORMALIZE, GL_DEPTH_TEST, GL_CULL_FACE, GL_LIGHTING,
                                     GL_LIGHT1, GL_COLOR_MATERIAL, GL_MULTISAMPLE})
            glDisable(ability);
        glShadeModel(GL_FLAT);
        glDepthFunc(GL_LESS);
        glHint(GL_PERSPECTIVE_CORRECTION_HINT, GL_DONT_CARE);
        glClearDepth(0.5);
    }
    static void draw(const char *picture = nullptr) {
        model_viewer_picture_draw();
        glFinish();
        if (picture != nullptr)
            gl_save_picture(picture);
    }
};
