#include "scene/scene_align.h"

#include "page/node.h"
#include "scene/gl_util.h"
#include "scene/interaction.h"
#include "scene/scene.h"
#include "scene/scene_floor.h"
#include "tests/support/gl_context.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>

namespace {

struct SceneAlign : testing::Test {
    GlContext context{400, 300};

    SceneAlign() {
        node_total = 0;
        screen_size_y = 1024;
        scene_resize(400, 300);
        scene_floor.zoom_level = 4;
        scene_floor.position_x = 31.0f;
        scene_floor.position_y = -17.0f;
        mouse.x = 250;
        mouse.y = 90;
    }
    ~SceneAlign() override {
        node_total = 0;
    }
};

int add(float x, float y) {
    const int id = node_total++;
    node[id].type = NODE_OBJECT;
    node[id].x = x;
    node[id].y = y;
    node_init_node(id);
    const float extents[] = {-2, 2, -2, 2, -2, 2};
    std::copy(std::begin(extents), std::end(extents), node[id].dimensions);
    return id;
}

// An object that far from the place on the floor that the mouse shows.
int add_off_mouse(float off_x, float off_y) {
    float x = 0.0f;
    float y = 0.0f;
    GetOGLPos(mouse.x, mouse.y, &x, &y, gl_depth_of_zoom_level(DEPTH_LOOKUP_FLOOR));
    return add(x + scene_floor.position_x + off_x, y + scene_floor.position_y + off_y);
}

TEST_F(SceneAlign, the_side_of_the_object_that_the_mouse_is_on_chooses_row_or_column) {
    const int from = add_off_mouse(40.0f, 40.0f);
    const int beside = add_off_mouse(3.0f, 0.2f);
    const int above = add_off_mouse(0.2f, -9.0f);
    EXPECT_EQ(node_align_node(from, beside), ALIGN_ROW);
    EXPECT_EQ(node_align_node(from, above), ALIGN_COLUMN);
}

TEST_F(SceneAlign, the_mouse_is_taken_to_the_floor_at_the_current_zoom_level) {
    const int from = add_off_mouse(40.0f, 40.0f);
    const int target = add_off_mouse(1.0f, 0.0f);
    EXPECT_EQ(node_align_node(from, target), ALIGN_ROW);
    scene_floor.zoom_level = 8; // the mouse now shows a place nearer to the middle, above all in y
    mouse.x = 200;
    node[target].x = scene_floor.position_x;
    EXPECT_EQ(node_align_node(from, target), ALIGN_COLUMN);
}

TEST_F(SceneAlign, aligning_with_itself_or_with_nothing_under_the_mouse_yields_none) {
    const int from = add_off_mouse(40.0f, 40.0f);
    add_off_mouse(3.0f, 0.2f);
    EXPECT_EQ(node_align_node(from, from), ALIGN_NONE);
    EXPECT_EQ(node_align_node(from, -1), ALIGN_NONE);
    EXPECT_EQ(node_align_node(from, NAVIGATION_HOME), ALIGN_NONE);
}

} // namespace
