#include "scene/gl_util.h"

#include "assets/model.h"
#include "page/options.h"
#include "platform/gl.h"
#include "scene/interaction.h"
#include "scene/scene.h"
#include "scene/scene_page.h"
#include "tests/support/scene_stage.h"

#include <gtest/gtest.h>

#include <random>

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

// ---- what need not be drawn

// The nearest object under the mouse when all that the window shows is drawn, by the plain rules.
static std::int32_t pick_from_all(std::int32_t x, std::int32_t y) {
    GLuint buffer[4 * (NODE_CAPACITY + 1)];
    GLint viewport[4];
    glGetIntegerv(GL_VIEWPORT, viewport);
    glSelectBuffer(4 * (NODE_CAPACITY + 1), buffer);
    glRenderMode(GL_SELECT);
    glInitNames();
    glPushName(0);
    glMatrixMode(GL_PROJECTION);
    glPushMatrix();
    glLoadIdentity();
    gluPickMatrix(x, viewport[3] - y, 1.0, 1.0, viewport);
    gluPerspective(static_cast<double>(scene_fov), static_cast<double>(viewport[2]) / viewport[3],
                   5.0, 200.0);
    glMatrixMode(GL_MODELVIEW);
    scene_draw_nodes();
    glMatrixMode(GL_PROJECTION);
    glPopMatrix();
    glMatrixMode(GL_MODELVIEW);
    const GLint hits = glRenderMode(GL_RENDER);
    std::int32_t nearest = PICK_NOTHING;
    GLuint depth = 0;
    for (GLint i = 0; i < hits; i++) {
        if (nearest != PICK_NOTHING && buffer[4 * i + 1] >= depth)
            continue;
        depth = buffer[4 * i + 1];
        nearest = static_cast<std::int32_t>(buffer[4 * i + 3]);
    }
    return nearest;
}

// A spike that reaches far to one side and up: its bounding box is wrong at the top, and the middle
// of it is far from its position.
static const char SPIKE[] = "v 0 0 0\nv 9 1 4\nv 9 2 4\nv 0 1 0\nv -1 7 2\n"
                            "f 1 2 3\nf 1 3 4\nf 4 3 2\nf 1 4 5\nf 5 4 1\n";

struct Dice {
    std::mt19937 engine;

    float number(float from, float to) {
        return from + (to - from) * static_cast<float>(engine() % 100003) / 100003.0f;
    }
    std::int32_t whole(std::int32_t from, std::int32_t to) {
        return from + static_cast<std::int32_t>(engine() % static_cast<unsigned>(to - from + 1));
    }
};

static void random_object(Dice *dice) {
    const std::int32_t id = stage_add(NODE_OBJECT, dice->number(-70, 70), dice->number(-50, 50));
    node[id].model_id = dice->whole(0, 1);
    if (dice->whole(0, 1) == 0)
        node[id].height = dice->number(-30.0f, 110.0f);
    if (dice->whole(0, 2) == 0)
        node[id].scale = dice->number(-0.5f, 3.0f);
    if (dice->whole(0, 2) == 0)
        node[id].alpha = 0.5f;
    if (dice->whole(0, 1) == 0) {
        node[id].bounce_active = BOUNCE_SPIN;
        node[id].angle = dice->number(0.0f, 360.0f);
        node[id].angle_target = dice->number(0.0f, 360.0f);
    }
}

static void random_page(Dice *dice) {
    node_total = 0;
    stage_zoom_level(dice->whole(0, ZOOM_LEVEL_MAX));
    global_angle = dice->whole(0, 2) == 0 ? dice->number(-90.0f, 90.0f) : 0.0f;
    scene_floor.position_x = dice->number(-60.0f, 60.0f);
    scene_floor.position_y = dice->number(-60.0f, 60.0f);
    const std::int32_t total = dice->whole(1, NODE_CAPACITY);
    for (std::int32_t i = 0; i < total; i++)
        random_object(dice);
    stage_draw();
}

TEST(Selection, on_random_pages_it_picks_what_is_picked_when_every_object_is_drawn) {
    const SceneStage stage;
    models_total = 2;
    ASSERT_EQ(model_load_memory(SPIKE, "", &models[1], 1.0f), 0);
    orvanel_options.reflections = 0;
    Dice dice{std::mt19937(5)};
    int picked = 0;
    for (int page = 0; page < 25; page++) {
        random_page(&dice);
        for (int i = 0; i < 40; i++) {
            const std::int32_t x = dice.whole(0, SceneStage::WIDTH);
            const std::int32_t y = dice.whole(0, SceneStage::HEIGHT);
            const std::int32_t expected = pick_from_all(x, y);
            ASSERT_EQ(selection(x, y), expected) << page << ": " << x << ", " << y;
            picked += expected != PICK_NOTHING ? 1 : 0;
        }
    }
    EXPECT_GT(picked, 100);
    EXPECT_LT(picked, 900);
}

TEST(Selection, an_object_whose_ball_the_pixel_misses_is_not_drawn) {
    const SceneStage stage;
    stage_add(NODE_OBJECT, -8.0f, 0.0f);
    stage_draw();
    const GLuint list = models[0].display_list;
    // A model that fills the window although it says that it is small.
    models[0].display_list = glGenLists(1);
    glNewList(models[0].display_list, GL_COMPILE);
    glRectf(-100.0f, -100.0f, 100.0f, 100.0f);
    glEndList();
    EXPECT_EQ(pick(-8.0f, 0.0f), 0);
    EXPECT_EQ(pick(8.0f, 0.0f), PICK_NOTHING);
    models[0].reach = 100.0f;
    EXPECT_EQ(pick(8.0f, 0.0f), 0);
    models[0].display_list = list;
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

TEST(BoxPicking, takes_the_mouse_to_the_plane_that_objects_stand_on_at_every_zoom_level) {
    const SceneStage stage;
    stage_add(NODE_OBJECT, 9.0f, -6.0f);
    set_box(0, 0.3f);
    for (std::int32_t level = 0; level <= ZOOM_LEVEL_MAX; level++) {
        stage_zoom_level(level);
        EXPECT_EQ(box_pick(9.0f, -6.0f), 0) << level;
    }
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
