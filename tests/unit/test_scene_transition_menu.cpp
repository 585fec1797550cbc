#include "page/options.h"
#include "scene/frame_clock.h"
#include "scene/scene.h"
#include "scene/scene_transition.h"
#include "tests/support/film.h"
#include "tests/support/scene_stage.h"

#include <gtest/gtest.h>

// Longer than any effect takes to settle, shorter than a user would call a hang.
static constexpr std::uint32_t AT_ONCE = 1600; // milliseconds

struct MenuActivation : testing::Test {
    SceneStage stage;
    MenuActivation() {
        stage_add(NODE_OBJECT, 0.0f, 0.0f);
        stage_add(NODE_OBJECT, 10.0f, 0.0f);
        stage_add(NODE_PAGE, 20.0f, 0.0f);
        stage_draw();
    }
};

static float spin() {
    return node[0].angle;
}

static void spin_node(std::int32_t i, float angle) {
    node[i].grab_state = GRAB_HOVERED;
    node[i].bounce_active = BOUNCE_SPIN;
    node[i].scale = 1.08f;
    node[i].angle = node[i].angle_target = angle;
    node[i].rotation_speed = 1.0f;
    node[i].rotation_step = 0.7f;
}

static bool at_rest_or_growing(std::int32_t i) {
    return node[i].bounce_active <= BOUNCE_GROW;
}

TEST_F(MenuActivation, a_spinning_object_faces_the_viewer_within_15_frames_of_25_ms) {
    spin_node(0, 90.0f);
    Film film(spin);
    scene_prepare_for_menu_activation();
    EXPECT_EQ(film.milliseconds(), 15u * 25u);
    EXPECT_EQ(node[0].angle, 0.0f);
    EXPECT_EQ(node[0].angle_target, 0.0f);
    EXPECT_EQ(node[0].bounce_active, BOUNCE_GROW);
    EXPECT_EQ(node[0].grab_state, GRAB_HOVERED);
}

TEST_F(MenuActivation, an_object_that_faces_the_viewer_is_ready_after_one_frame) {
    node[0].grab_state = GRAB_HOVERED;
    node[0].bounce_active = BOUNCE_HOVERED;
    Film film(spin);
    scene_prepare_for_menu_activation();
    EXPECT_EQ(film.milliseconds(), 25u);
    EXPECT_EQ(node[0].grab_state, GRAB_HOVERED);
}

TEST_F(MenuActivation, the_object_stops_where_it_is) {
    node[0].grab_state = GRAB_HOVERED;
    node[0].inertia_dx = node[0].inertia_dy = 3.0f;
    node[0].inertia_frames = 20;
    node[0].move_dx = node[0].move_dy = 3.0f;
    node[0].move_frames = 20;
    Film film(spin);
    scene_prepare_for_menu_activation();
    EXPECT_EQ(node[0].x, 0.0f);
    EXPECT_EQ(node[0].y, 0.0f);
    EXPECT_EQ(node[0].inertia_frames, 0);
    EXPECT_EQ(node[0].inertia_dx, 0.0f);
    EXPECT_EQ(node[0].inertia_dy, 0.0f);
}

TEST_F(MenuActivation, the_floor_stops) {
    scene_floor.drag_state = 1;
    scene_floor.inertia_x = 5.0f;
    scene_floor.inertia_frames = 30;
    Film film(spin);
    scene_prepare_for_menu_activation();
    EXPECT_EQ(scene_floor.drag_state, 0);
    EXPECT_EQ(scene_floor.inertia_frames, 0);
    EXPECT_EQ(scene_floor.position_x, 0.0f);
}

TEST_F(MenuActivation, all_other_objects_settle) {
    spin_node(1, 200.0f);
    node[1].grab_state = GRAB_IDLE;
    node[0].grab_state = GRAB_HOVERED;
    Film film(spin);
    scene_prepare_for_menu_activation();
    EXPECT_EQ(node[1].bounce_active, BOUNCE_REST);
    EXPECT_EQ(node[1].scale, 1.0f);
    EXPECT_EQ(node[1].angle, 0.0f);
    EXPECT_TRUE(at_rest_or_growing(0));
    EXPECT_LE(film.milliseconds(), 16u * 25u);
}

TEST_F(MenuActivation, with_transitions_off_nothing_waits_and_the_end_is_the_same) {
    orvanel_options.object_transitions = 0;
    spin_node(0, 90.0f);
    spin_node(1, 270.0f);
    node[1].grab_state = GRAB_IDLE;
    Film film(spin);
    scene_prepare_for_menu_activation();
    EXPECT_EQ(film.milliseconds(), 0u);
    EXPECT_EQ(node[0].angle, 0.0f);
    EXPECT_EQ(node[0].bounce_active, BOUNCE_GROW);
    EXPECT_EQ(node[1].bounce_active, BOUNCE_REST);
}

TEST_F(MenuActivation, nothing_hovered_is_one_frame) {
    Film film(spin);
    scene_prepare_for_menu_activation();
    EXPECT_EQ(film.milliseconds(), 25u);
    EXPECT_EQ(scene_redraw_flag, 0); // drawn
}

TEST_F(MenuActivation, two_hovered_objects_come_to_rest_and_the_first_is_the_one_of_the_menu) {
    spin_node(0, 90.0f);
    spin_node(1, 45.0f);
    Film film(spin);
    scene_prepare_for_menu_activation();
    EXPECT_LE(film.milliseconds(), 16u * 25u);
    EXPECT_EQ(node[0].grab_state, GRAB_HOVERED);
    EXPECT_EQ(node[0].angle, 0.0f);
    EXPECT_EQ(node[1].bounce_active, BOUNCE_REST);
    EXPECT_EQ(node[1].angle, 0.0f);
    EXPECT_EQ(node[1].scale, 1.0f);
}

TEST_F(MenuActivation, an_object_left_anchored_does_not_keep_the_menu_from_opening) {
    spin_node(1, 45.0f);
    node[1].grab_state = GRAB_ANCHORED;
    node[0].grab_state = GRAB_HOVERED;
    Film film(spin);
    scene_prepare_for_menu_activation();
    EXPECT_LE(film.milliseconds(), AT_ONCE);
    EXPECT_EQ(node[0].grab_state, GRAB_HOVERED);
    EXPECT_EQ(node[1].bounce_active, BOUNCE_REST);
}

TEST_F(MenuActivation, objects_left_held_do_not_keep_the_menu_from_opening) {
    for (std::int32_t i = 0; i < 3; i++) {
        spin_node(i, 100.0f * static_cast<float>(i));
        node[i].grab_state = GRAB_GRABBED;
    }
    Film film(spin);
    scene_prepare_for_menu_activation();
    EXPECT_LE(film.milliseconds(), AT_ONCE);
    for (std::int32_t i = 0; i < 3; i++) {
        EXPECT_TRUE(at_rest_or_growing(i)) << i;
        EXPECT_EQ(node[i].grab_state, GRAB_GRABBED) << i;
    }
}

// Hover and effect states of a second object that the rules may or may not bring to rest.
TEST_F(MenuActivation, no_combination_of_states_keeps_the_menu_from_opening) {
    for (const std::int32_t grab : {GRAB_HOVERED, GRAB_GRABBED, GRAB_ANCHORED}) {
        for (const std::int32_t effect : {-1, 1, 2, 3, 4, 5, 7}) {
            spin_node(0, 90.0f);
            node[1].grab_state = grab;
            node[1].bounce_active = effect;
            node[1].bounce_step = 0;
            node[1].angle = 123.0f;
            Film film(spin);
            scene_prepare_for_menu_activation();
            EXPECT_LE(film.milliseconds(), AT_ONCE) << grab << ' ' << effect;
            EXPECT_EQ(node[0].grab_state, GRAB_HOVERED) << grab << ' ' << effect;
        }
    }
}

TEST_F(MenuActivation, the_main_loop_does_not_catch_up_afterwards) {
    spin_node(0, 90.0f);
    Film film(spin);
    scene_prepare_for_menu_activation();
    EXPECT_EQ(next_frame_timer, sys_time_ms + 25);
    EXPECT_GE(sys_time_ms, 374u);
}
