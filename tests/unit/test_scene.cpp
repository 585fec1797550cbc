#include "scene/scene.h"

#include "assets/model.h"
#include "page/options.h"
#include "platform/gl.h"
#include "scene/scene_page.h"
#include "scene/scene_text.h"
#include "tests/support/scene_stage.h"

#include <gtest/gtest.h>

TEST(SceneInit, begins_with_an_unchanged_page_the_options_zoom_level_and_a_picture_to_draw) {
    const SceneStage stage;
    scene_changed = 1;
    scene_redraw_flag = 0;
    global_angle = 45.0f;
    template_object.empty = 0;
    orvanel_options.initial_zoom_level = 6;
    scene_init();
    EXPECT_EQ(scene_changed, 0);
    EXPECT_EQ(scene_redraw_flag, 1);
    EXPECT_FLOAT_EQ(global_angle, 0.0f);
    EXPECT_EQ(template_object.empty, 1);
    EXPECT_EQ(scene_floor.zoom_level, 6);
    EXPECT_EQ(scene_floor.previous_colour.use_default, -1);
    EXPECT_FLOAT_EQ(scene_floor.previous_colour.red, -1.0f);
    EXPECT_FLOAT_EQ(scene_floor.previous_colour.green, -1.0f);
    EXPECT_FLOAT_EQ(scene_floor.previous_colour.blue, -1.0f);
    EXPECT_FLOAT_EQ(scene_floor.previous_colour.alpha, -1.0f);
    EXPECT_EQ(glIsEnabled(GL_LIGHTING), GL_TRUE);
    EXPECT_EQ(glIsEnabled(GL_LIGHT1), GL_TRUE);
}

// The window is made anew when the user switches anti-aliasing: numbers of lists begin again.
TEST(SceneInit, a_list_of_the_window_before_is_forgotten_and_deletes_nothing_of_the_new_one) {
    std::uint32_t old_list = 0;
    {
        const SceneStage stage;
        stage_draw();
        old_list = scene_floor.list;
    }
    const GlContext context(64, 64);
    std::uint32_t list = 0;
    while (list < old_list) {
        list = glGenLists(1);
        glNewList(list, GL_COMPILE);
        glEndList();
    }
    scene_floor.list = old_list; // as a window left behind that was closed unawares
    scene_floor.list_valid = 1;
    scene_init();
    scene_invalidate_floor();
    EXPECT_EQ(glIsList(old_list), GL_TRUE);
}

TEST(SceneFloorInit, brings_everything_that_moves_to_rest) {
    scene_floor.drag_state = 1;
    scene_floor.inertia_x = scene_floor.inertia_y = 3.0f;
    scene_floor.inertia_frames = 30;
    scene_floor.spring_x = scene_floor.spring_y = 3.0f;
    scene_floor.pick_depth = 0.5f;
    global_angle = 45.0f;
    scene_floor_init();
    EXPECT_EQ(scene_floor.drag_state, 0);
    EXPECT_FLOAT_EQ(scene_floor.inertia_x, 0.0f);
    EXPECT_FLOAT_EQ(scene_floor.inertia_y, 0.0f);
    EXPECT_EQ(scene_floor.inertia_frames, 0);
    EXPECT_FLOAT_EQ(scene_floor.spring_x, 0.0f);
    EXPECT_FLOAT_EQ(scene_floor.spring_y, 0.0f);
    EXPECT_FLOAT_EQ(global_angle, 0.0f);
    EXPECT_FLOAT_EQ(scene_floor.pick_depth, 0.0f);
}

TEST(SceneFloorInit, returns_to_the_options_zoom_level) {
    options_set_defaults();
    for (std::int32_t level = 0; level <= ZOOM_LEVEL_MAX; level++) {
        orvanel_options.initial_zoom_level = level;
        scene_floor_init();
        EXPECT_EQ(scene_floor.zoom_level, level);
        EXPECT_FLOAT_EQ(scene_floor.distance, static_cast<float>(level * 10 - 70));
    }
}

TEST(SceneFloorInit, keeps_the_zoom_level_when_the_user_wants_it_so) {
    options_set_defaults();
    orvanel_options.maintain_zoom_level = 1;
    orvanel_options.initial_zoom_level = 2;
    scene_floor.zoom_level = 7;
    scene_floor_init();
    EXPECT_EQ(scene_floor.zoom_level, 7);
    EXPECT_FLOAT_EQ(scene_floor.distance, 0.0f);
}

TEST(SceneStop, releases_models_and_the_floor_in_both_renderings_of_text) {
    for (const std::int32_t shadows : {0, 1}) {
        const GlContext context(64, 64);
        options_set_defaults();
        orvanel_options.text_shadows = shadows;
        model_init();
        scene_init();
        scene_draw_floor();
        const std::uint32_t list = scene_floor.list;
        scene_stop();
        EXPECT_EQ(glIsList(list), GL_FALSE);
        EXPECT_EQ(scene_floor.list_valid, 0);
        EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
    }
}

TEST(SceneStop, releases_the_fonts_of_the_system_also_when_shadows_were_asked_for_since) {
    for (const std::int32_t shadows : {0, 1}) {
        const GlContext context(64, 64);
        options_set_defaults();
        orvanel_options.text_shadows = 0;
        model_init();
        scene_init();
        const std::uint32_t lists[] = {font_page_title.list_base, font_node_name_0.list_base,
                                       font_node_name_10.list_base, font_node_desc_8.list_base};
        for (const std::uint32_t list : lists)
            ASSERT_EQ(glIsList(list), GL_TRUE);
        orvanel_options.text_shadows = shadows;
        scene_stop();
        for (const std::uint32_t list : lists)
            EXPECT_EQ(glIsList(list), GL_FALSE) << shadows;
    }
}
