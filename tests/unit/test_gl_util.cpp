#include "scene/gl_util.h"

#include "platform/gl.h"
#include "scene/scene.h"
#include "tests/support/scene_stage.h"

#include <gtest/gtest.h>

#include <string>

TEST(UnitRound, rounds_to_the_nearest_multiple_and_exactly_half_upwards) {
    EXPECT_FLOAT_EQ(unit_round(13.75f, 2.5f), 15.0f);
    EXPECT_FLOAT_EQ(unit_round(13.74f, 2.5f), 12.5f);
    EXPECT_FLOAT_EQ(unit_round(-1.0f, 20.0f), 0.0f);
    EXPECT_FLOAT_EQ(unit_round(-11.0f, 20.0f), -20.0f);
    EXPECT_FLOAT_EQ(unit_round(-10.0f, 20.0f), 0.0f);
    EXPECT_FLOAT_EQ(unit_round(40.0f, 20.0f), 40.0f);
}

TEST(UnitRound, without_a_unit_the_value_stays) {
    EXPECT_FLOAT_EQ(unit_round(13.75f, 0.0f), 13.75f);
}

TEST(Colour, the_full_component_is_418_in_the_colour_dialog) {
    EXPECT_EQ(colour_opengl_to_win(1.0f), 418);
    EXPECT_EQ(colour_opengl_to_win(0.0f), 0);
    EXPECT_EQ(colour_opengl_to_win(-1.0f), 0);
    EXPECT_EQ(colour_opengl_to_win(0.14f), 58);
}

TEST(Colour, the_full_byte_of_the_colour_dialog_is_0_6098) {
    EXPECT_NEAR(colour_win_to_opengl(255), 0.6098f, 0.00005f);
    EXPECT_FLOAT_EQ(colour_win_to_opengl(0), 0.0f);
    EXPECT_FLOAT_EQ(colour_win_to_opengl(-3), 0.0f);
    EXPECT_NEAR(colour_win_to_opengl(1), 0.00239f, 0.00001f);
}

TEST(Vendor, the_software_renderer_is_known_by_its_maker_in_any_case) {
    EXPECT_EQ(graphics_vendor_is_software("Microsoft Corporation"), 1);
    EXPECT_EQ(graphics_vendor_is_software("the MICROSOFT one"), 1);
    EXPECT_EQ(graphics_vendor_is_software("NVIDIA Corporation"), 0);
    EXPECT_EQ(graphics_vendor_is_software(""), 0);
}

TEST(Vendor, only_the_first_99_characters_are_looked_at) {
    EXPECT_EQ(graphics_vendor_is_software((std::string(90, ' ') + "microsoft").c_str()), 1);
    EXPECT_EQ(graphics_vendor_is_software((std::string(91, ' ') + "microsoft").c_str()), 0);
}

TEST(Vendor, the_renderer_of_the_tests_is_not_the_systems_software_one) {
    const GlContext context(64, 64);
    EXPECT_EQ(graphics_adapter_check(), 0);
}

TEST(ExtensionList, a_longer_name_that_begins_alike_does_not_count) {
    EXPECT_FALSE(gl_extension_listed("WGL_ARB_multisample_extra", "WGL_ARB_multisample"));
    EXPECT_FALSE(gl_extension_listed("A WGL_ARB_multisample_extra B", "WGL_ARB_multisample"));
    EXPECT_FALSE(gl_extension_listed("X_WGL_ARB_multisample", "WGL_ARB_multisample"));
    EXPECT_FALSE(gl_extension_listed("", "WGL_ARB_multisample"));
    EXPECT_FALSE(gl_extension_listed("A B", ""));
}

TEST(ExtensionList, the_name_counts_at_the_start_in_the_middle_and_at_the_end) {
    EXPECT_TRUE(gl_extension_listed("WGL_ARB_multisample", "WGL_ARB_multisample"));
    EXPECT_TRUE(gl_extension_listed("WGL_ARB_multisample B", "WGL_ARB_multisample"));
    EXPECT_TRUE(gl_extension_listed("A WGL_ARB_multisample B", "WGL_ARB_multisample"));
    EXPECT_TRUE(gl_extension_listed("A WGL_ARB_multisample", "WGL_ARB_multisample"));
}

TEST(ExtensionList, a_name_behind_a_longer_one_that_begins_alike_is_found) {
    EXPECT_TRUE(gl_extension_listed("WGL_ARB_multisample_extra WGL_ARB_multisample",
                                    "WGL_ARB_multisample"));
}

// Window depth of a plane this far from the viewer.
static float depth_of(float away) {
    const double range = SCENE_FAR / (SCENE_FAR - SCENE_NEAR);
    return static_cast<float>(range * (1.0 - SCENE_NEAR / static_cast<double>(away)));
}

TEST(DepthLookup, holds_the_depth_of_the_floor_and_of_the_objects_at_every_zoom_level) {
    for (std::int32_t level = 0; level <= ZOOM_LEVEL_MAX; level++) {
        const float away = 170.0f - 10.0f * static_cast<float>(level);
        EXPECT_NEAR(depth_lookup[DEPTH_LOOKUP_FLOOR + level], depth_of(away), 0.000006f) << level;
        EXPECT_NEAR(depth_lookup[DEPTH_LOOKUP_LABEL + level], depth_of(away - 10.0f), 0.000006f)
            << level;
    }
}

TEST(DepthLookup, a_zoom_level_out_of_range_reads_no_foreign_memory) {
    scene_floor.zoom_level = 4000;
    EXPECT_FLOAT_EQ(gl_depth_of_zoom_level(DEPTH_LOOKUP_LABEL), 0.96154f);
    scene_floor.zoom_level = -4000;
    EXPECT_FLOAT_EQ(gl_depth_of_zoom_level(DEPTH_LOOKUP_FLOOR), 0.99547f);
}

TEST(MouseToFloor, the_middle_of_the_window_is_the_middle_of_the_view) {
    const SceneStage stage;
    float x = 9.0f, y = 9.0f;
    EXPECT_FLOAT_EQ(GetOGLPos(320, 240, &x, &y, 0.99359f), 0.99359f);
    EXPECT_NEAR(x, 0.0f, 0.01f);
    EXPECT_NEAR(y, 0.0f, 0.01f);
}

TEST(MouseToFloor, follows_the_perspective_at_every_zoom_level) {
    const SceneStage stage;
    for (std::int32_t level = 0; level <= ZOOM_LEVEL_MAX; level++) {
        stage_zoom_level(level);
        const WindowPoint point = stage_window_point(6.0f, -4.0f, 0.0f);
        float x, y;
        GetOGLPos(point.x, point.y, &x, &y, gl_depth_of_zoom_level(DEPTH_LOOKUP_FLOOR));
        EXPECT_NEAR(x, 6.0f, 0.12f) << level;
        EXPECT_NEAR(y, -4.0f, 0.12f) << level;
    }
}

TEST(MouseToFloor, without_a_depth_given_the_depth_of_what_was_drawn_is_taken) {
    const SceneStage stage;
    stage_add(NODE_OBJECT, 0.0f, 0.0f);
    stage_draw();
    float x, y;
    const WindowPoint bare = stage_window_point(10.0f, 5.0f, 0.0f);
    EXPECT_NEAR(GetOGLPos(bare.x, bare.y, &x, &y, 0.0f), depth_lookup[7], 0.0001f);
    const float top =
        FLOOR_DISTANCE - scene_floor.distance - NODE_REST_HEIGHT - node[0].dimensions[EXTENT_TOP];
    const float on_cube = GetOGLPos(320, 240, &x, &y, 0.0f);
    EXPECT_LT(on_cube, depth_lookup[8]);
    EXPECT_NEAR(on_cube, depth_of(top), 0.0005f);
}

TEST(MouseToFloor, a_window_without_area_maps_to_the_middle) {
    const SceneStage stage;
    scene_resize(0, 0);
    float x = 9.0f, y = 9.0f;
    GetOGLPos(5, 5, &x, &y, 0.99f);
    EXPECT_FLOAT_EQ(x, 0.0f);
    EXPECT_FLOAT_EQ(y, 0.0f);
}

struct RasterPosition {
    float x, y, depth, w;
    bool valid;
};

static RasterPosition raster_position() {
    float position[4];
    GLboolean valid;
    glGetFloatv(GL_CURRENT_RASTER_POSITION, position);
    glGetBooleanv(GL_CURRENT_RASTER_POSITION_VALID, &valid);
    return {position[0], position[1], position[2], position[3], valid == GL_TRUE};
}

TEST(RasterPosition, is_where_the_point_shows_in_the_window) {
    const SceneStage stage;
    trRasterPos3f(5.0f, 3.0f, scene_floor.distance - FLOOR_DISTANCE);
    const WindowPoint expected = stage_window_point(5.0f, 3.0f, 0.0f);
    EXPECT_TRUE(raster_position().valid);
    EXPECT_NEAR(raster_position().x, static_cast<float>(expected.x), 1.5f);
    EXPECT_NEAR(raster_position().y, static_cast<float>(SceneStage::HEIGHT - expected.y), 1.5f);
}

TEST(RasterPosition, has_the_depth_of_the_point) {
    const SceneStage stage;
    for (const float away : {20.0f, 90.0f, 190.0f}) {
        trRasterPos3f(0.0f, 0.0f, -away);
        EXPECT_NEAR(raster_position().depth, depth_of(away), 0.0001f) << away;
    }
}

TEST(RasterPosition, stays_valid_for_a_point_outside_the_view) {
    const SceneStage stage;
    trRasterPos3f(-60.0f, 0.0f, scene_floor.distance - FLOOR_DISTANCE);
    EXPECT_TRUE(raster_position().valid);
    EXPECT_LT(raster_position().x, 0.0f);
}

TEST(RasterPosition, leaves_the_matrices_as_they_were) {
    const SceneStage stage;
    double before[32], after[32];
    glGetDoublev(GL_PROJECTION_MATRIX, before);
    glTranslatef(1.0f, 2.0f, 3.0f);
    glGetDoublev(GL_MODELVIEW_MATRIX, before + 16);
    trRasterPos3f(5.0f, 3.0f, -100.0f);
    glWindowPos2fMESAemulate(7.0f, 8.0f);
    glGetDoublev(GL_PROJECTION_MATRIX, after);
    glGetDoublev(GL_MODELVIEW_MATRIX, after + 16);
    for (int i = 0; i < 32; i++)
        EXPECT_DOUBLE_EQ(after[i], before[i]) << i;
    GLint viewport[4];
    glGetIntegerv(GL_VIEWPORT, viewport);
    EXPECT_EQ(viewport[2], SceneStage::WIDTH);
    EXPECT_EQ(viewport[3], SceneStage::HEIGHT);
}

TEST(RasterPosition, a_window_position_is_taken_as_it_is_fractions_included) {
    const SceneStage stage;
    glWindowPos2fMESAemulate(12.25f, 437.75f);
    EXPECT_TRUE(raster_position().valid);
    EXPECT_NEAR(raster_position().x, 12.25f, 0.01f);
    EXPECT_NEAR(raster_position().y, 437.75f, 0.01f);
}

TEST(RasterPosition, a_window_position_outside_the_window_stays_valid) {
    const SceneStage stage;
    glWindowPos2fMESAemulate(-40.0f, -3.0f);
    EXPECT_TRUE(raster_position().valid);
    EXPECT_NEAR(raster_position().x, -40.0f, 0.01f);
    EXPECT_NEAR(raster_position().y, -3.0f, 0.01f);
}

TEST(RasterPosition, a_window_position_takes_the_depth_and_w_that_it_is_given) {
    const SceneStage stage;
    glWindowPos4fMESAemulate(7.5f, 8.5f, 0.25f, 2.0f);
    EXPECT_NEAR(raster_position().x, 7.25f, 0.01f) << "w divides what is beyond the whole pixel";
    EXPECT_NEAR(raster_position().y, 8.25f, 0.01f);
    EXPECT_NEAR(raster_position().depth, 0.25f, 0.0001f);
    EXPECT_FLOAT_EQ(raster_position().w, 2.0f);
    float range[2] = {};
    glGetFloatv(GL_DEPTH_RANGE, range);
    EXPECT_FLOAT_EQ(range[0], 0.0f);
    EXPECT_FLOAT_EQ(range[1], 1.0f);
}
