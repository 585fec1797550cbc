// The transitions with the system's own clock: they come to their end, and not before their time.
#include "page/placement.h"
#include "platform/clock.h"
#include "scene/frame_clock.h"
#include "scene/scene.h"
#include "scene/scene_transition.h"
#include "tests/support/scene_stage.h"

#include <gtest/gtest.h>

// What a busy machine may add to a transition; only a wait that never ends is a failure.
static constexpr std::uint32_t PATIENCE = 20'000; // milliseconds
static constexpr std::uint32_t TICK = 16; // milliseconds that the system's clock may be coarse

static void expect_length(const char *name, std::uint32_t milliseconds, void (*transition)()) {
    const std::uint32_t start = clock_milliseconds();
    transition();
    const std::uint32_t taken = clock_milliseconds() - start;
    EXPECT_GE(taken + TICK, milliseconds) << name;
    EXPECT_LE(taken, milliseconds + PATIENCE) << name;
}

TEST(RealTime, every_transition_lasts_its_time_and_ends_where_it_should) {
    const SceneStage stage;
    timer_init(&frame_timer);
    reset_frame_timer();
    stage_add(NODE_OBJECT, 0.0f, 0.0f);
    stage_add(NODE_OBJECT, 13.75f, 7.0f);
    stage_draw();

    expect_length("page out", 400, [] { scene_page_out_transition(0); });
    EXPECT_EQ(global_angle, -90.0f);
    expect_length("page in", 400, [] { scene_page_in_transition(0); });
    EXPECT_EQ(global_angle, 0.0f);
    EXPECT_EQ(node[0].height, 10.0f);
    expect_length("page colour", 480, [] { scene_page_colour_transition(0.25f, 0.13f, 0.0f); });
    EXPECT_EQ(scene_floor.colour.red, 0.25f);
    expect_length("new object", 375, [] { scene_new_node_transition(0); });
    EXPECT_EQ(node[0].scale, 1.0f);
    expect_length("floor", 544, [] { scene_move_floor_transition(9.5f, -3.25f); });
    EXPECT_EQ(scene_floor.position_x, 9.5f);
    expect_length("grid", 192, [] { scene_align_with_grid(1); });
    EXPECT_EQ(node[1].x, 15.0f);
    expect_length("align", 544, [] { scene_align_node_transition(0, 1, ALIGN_ROW); });
    EXPECT_EQ(node[0].y, node[1].y);
    node[0].fade_state = 2;
    expect_length("fade out", 192, [] { scene_node_fade_out_transition(); });
    EXPECT_EQ(node[0].alpha, 0.0f);
    node[0].grab_state = GRAB_HOVERED;
    node[0].bounce_active = BOUNCE_SPIN;
    node[0].angle = 120.0f;
    expect_length("menu", 375, [] { scene_prepare_for_menu_activation(); });
    EXPECT_EQ(node[0].angle, 0.0f);
    expect_length("cut", 180, [] { scene_cut_node_transition(0); });
    EXPECT_EQ(node[0].scale, 0.0f);
    expect_length("delete", 240, [] { scene_delete_node_transition(1); });
    EXPECT_EQ(node[1].height, 100.0f);
}
