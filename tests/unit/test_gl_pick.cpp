#include "scene/gl_util.h"

#include "page/options.h"
#include "platform/gl.h"
#include "scene/interaction.h"
#include "scene/scene.h"
#include "scene/scene_page.h"
#include "tests/support/scene_stage.h"

#include <gtest/gtest.h>

static std::int32_t pick(float x, float y) {
    const WindowPoint point = stage_window_point(x, y, NODE_REST_HEIGHT);
    return selection(point.x, point.y);
}

TEST(Selection, the_object_under_the_mouse_is_picked_by_its_index) {
    const SceneStage stage;
    stage_add(NODE_OBJECT, -8.0f, 0.0f);
    stage_add(NODE_PAGE, 8.0f, 4.0f);
    stage_draw();
    EXPECT_EQ(pick(-8.0f, 0.0f), 0);
    EXPECT_EQ(pick(8.0f, 4.0f), 1);
}

TEST(Selection, bare_floor_is_nothing) {
    const SceneStage stage;
    stage_add(NODE_OBJECT, -8.0f, 0.0f);
    stage_draw();
    EXPECT_EQ(pick(0.0f, 5.0f), PICK_NOTHING);
}

TEST(Selection, of_two_objects_under_the_mouse_the_nearer_one_is_picked) {
    const SceneStage stage;
    stage_add(NODE_OBJECT, 0.0f, 0.0f);
    stage_add(NODE_OBJECT, 0.0f, 0.0f);
    stage_draw();
    node[1].height = 20.0f;
    EXPECT_EQ(pick(0.0f, 0.0f), 1);
    node[0].height = 30.0f;
    EXPECT_EQ(pick(0.0f, 0.0f), 0);
}

TEST(Selection, at_the_same_depth_the_earlier_object_is_picked) {
    const SceneStage stage;
    stage_add(NODE_OBJECT, 0.0f, 0.0f);
    stage_add(NODE_OBJECT, 0.0f, 0.0f);
    stage_draw();
    EXPECT_EQ(pick(0.0f, 0.0f), 0);
}

TEST(Selection, a_heap_of_more_objects_than_the_first_buffer_holds_is_still_picked_from) {
    const SceneStage stage;
    for (int i = 0; i < NODE_CAPACITY; i++)
        stage_add(NODE_OBJECT, 0.0f, 0.0f);
    stage_draw();
    node[200].height = 20.0f;
    EXPECT_EQ(pick(0.0f, 0.0f), 200);
}

TEST(Selection, picks_with_the_projection_that_the_window_is_drawn_with) {
    const SceneStage stage;
    stage_add(NODE_OBJECT, 10.0f, 5.0f);
    for (std::int32_t level = 0; level <= ZOOM_LEVEL_MAX; level++) {
        stage_zoom_level(level);
        stage_draw();
        EXPECT_EQ(pick(10.0f, 5.0f), 0) << level;
        EXPECT_EQ(pick(10.0f, 8.0f), PICK_NOTHING) << level;
    }
}

TEST(Selection, leaves_projection_and_drawing_as_they_were) {
    const SceneStage stage;
    stage_add(NODE_OBJECT, 0.0f, 0.0f);
    stage_draw();
    double before[16], after[16];
    glGetDoublev(GL_PROJECTION_MATRIX, before);
    pick(0.0f, 0.0f);
    glGetDoublev(GL_PROJECTION_MATRIX, after);
    GLint mode, depth;
    glGetIntegerv(GL_RENDER_MODE, &mode);
    glGetIntegerv(GL_PROJECTION_STACK_DEPTH, &depth);
    EXPECT_EQ(mode, GL_RENDER);
    EXPECT_EQ(depth, 1);
    for (int i = 0; i < 16; i++)
        EXPECT_DOUBLE_EQ(after[i], before[i]);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST(Selection, a_window_without_area_has_nothing_under_the_mouse) {
    const SceneStage stage;
    stage_add(NODE_OBJECT, 0.0f, 0.0f);
    stage_draw();
    scene_resize(0, 0);
    EXPECT_EQ(selection(0, 0), PICK_NOTHING);
    scene_resize(640, 0);
    EXPECT_EQ(selection(320, 0), PICK_NOTHING);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST(Selection, the_back_button_wins_over_an_object_when_a_sub_page_is_shown) {
    const SceneStage stage;
    open_mode = 0;
    scene_stack_depth = 1;
    stage_draw();
    const std::int32_t x = static_cast<std::int32_t>(scene_floor.button[0].x) + 16;
    const std::int32_t y = static_cast<std::int32_t>(scene_floor.button[0].y) + 16;
    float floor_x, floor_y;
    GetOGLPos(x, y, &floor_x, &floor_y, gl_depth_of_zoom_level(DEPTH_LOOKUP_LABEL));
    stage_add(NODE_OBJECT, floor_x, floor_y);
    stage_draw();
    EXPECT_EQ(selection(x, y), NAVIGATION_BACK);
    scene_stack_depth = 0;
    EXPECT_EQ(selection(x, y), 0);
}

TEST(Selection, a_label_is_picked_before_an_object_that_is_nearer) {
    const SceneStage stage;
    stage_add(NODE_OBJECT, 0.0f, 0.0f);
    const std::int32_t label = stage_add(NODE_LABEL, 0.0f, 0.0f);
    stage_draw();
    node[label].dimensions[EXTENT_LEFT] = node[label].dimensions[EXTENT_NEAR] = -2.0f;
    node[label].dimensions[EXTENT_RIGHT] = node[label].dimensions[EXTENT_FAR] = 2.0f;
    EXPECT_EQ(pick(0.0f, 0.0f), label);
}

static void set_box(std::int32_t id, float half_size) {
    node[id].dimensions[EXTENT_LEFT] = node[id].dimensions[EXTENT_NEAR] = -half_size;
    node[id].dimensions[EXTENT_RIGHT] = node[id].dimensions[EXTENT_FAR] = half_size;
}

static std::int32_t box_pick(float x, float y) {
    const WindowPoint point = stage_window_point(x, y, NODE_REST_HEIGHT);
    return scene_mouse_within_node_box2(point.x, point.y);
}

TEST(BoxPicking, the_first_box_that_holds_the_mouse_wins) {
    const SceneStage stage;
    stage_add(NODE_OBJECT, 0.0f, 0.0f);
    stage_add(NODE_OBJECT, 2.0f, 0.0f);
    set_box(0, 3.0f);
    set_box(1, 3.0f);
    EXPECT_EQ(box_pick(1.0f, 0.0f), 0);
    EXPECT_EQ(box_pick(4.0f, 0.0f), 1);
    EXPECT_EQ(box_pick(4.0f, 4.0f), -1);
}

TEST(BoxPicking, goes_with_the_floor_when_it_is_scrolled) {
    const SceneStage stage;
    stage_add(NODE_OBJECT, 50.0f, -40.0f);
    set_box(0, 1.0f);
    scene_floor.position_x = 45.0f;
    scene_floor.position_y = -44.0f;
    EXPECT_EQ(box_pick(50.0f, -40.0f), 0);
    EXPECT_EQ(box_pick(45.0f, -44.0f), -1);
}

TEST(BoxPicking, zero_means_inside_and_the_edges_are_inside) {
    node[3].x = 10.0f;
    node[3].y = 20.0f;
    set_box(3, 2.0f);
    scene_floor.position_x = 5.0f;
    scene_floor.position_y = 5.0f;
    EXPECT_EQ(scene_mouse_within_node_box(3, 5.0f, 15.0f), 0);
    EXPECT_EQ(scene_mouse_within_node_box(3, 7.0f, 17.0f), 0);
    EXPECT_EQ(scene_mouse_within_node_box(3, 3.0f, 13.0f), 0);
    EXPECT_EQ(scene_mouse_within_node_box(3, 7.1f, 15.0f), 1);
    EXPECT_EQ(scene_mouse_within_node_box(3, 2.9f, 15.0f), 1);
    EXPECT_EQ(scene_mouse_within_node_box(3, 5.0f, 17.1f), 1);
    EXPECT_EQ(scene_mouse_within_node_box(3, 5.0f, 12.9f), 1);
}
