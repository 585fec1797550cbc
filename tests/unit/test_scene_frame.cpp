#include "scene/scene.h"

#include "page/node.h"
#include "page/options.h"
#include "scene/interaction.h"
#include "scene/scene_effects.h"

#include <gtest/gtest.h>

// A page in memory with all effects on; nothing here draws.
struct Page {
    Page() {
        options_set_defaults();
        interaction_init();
        node_init_nodes();
        node_init_effects();
        node_total = 0;
        scene_floor = {};
        scene_redraw_flag = 0;
    }
};

static Node *add(NodeType type, float x, float y) {
    const std::int32_t id = node_total++;
    node_init_node(id);
    node[id].type = type;
    node[id].x = x;
    node[id].y = y;
    for (std::int32_t i = EXTENT_LEFT; i <= EXTENT_TOP; i += 2) {
        node[id].dimensions[i] = -2.0f;
        node[id].dimensions[i + 1] = 2.0f;
    }
    return &node[id];
}

static void frames(int count) {
    for (int i = 0; i < count; i++)
        scene_process_frame();
}

// ---- hovering

TEST(HoverEffect, an_idle_page_asks_for_no_picture) {
    const Page page;
    add(NODE_OBJECT, 0.0f, 0.0f);
    frames(200);
    EXPECT_EQ(scene_redraw_flag, 0);
    EXPECT_FLOAT_EQ(node[0].scale, 1.0f);
}

TEST(HoverEffect, grows_within_15_frames_along_the_bounce_and_rests_at_the_hover_size) {
    const Page page;
    Node *object = add(NODE_OBJECT, 0.0f, 0.0f);
    object->grab_state = GRAB_HOVERED;
    const float expected[] = {1.0f,   1.0079f, 1.0301f, 1.0622f, 1.0978f, 1.1299f, 1.1521f, 1.16f,
                              1.156f, 1.1449f, 1.1289f, 1.1111f, 1.0951f, 1.084f,  1.08f};
    for (const float scale : expected) {
        scene_redraw_flag = 0;
        scene_process_frame();
        EXPECT_FLOAT_EQ(object->scale, scale);
        EXPECT_EQ(scene_redraw_flag, 1);
    }
    scene_redraw_flag = 0;
    frames(10);
    EXPECT_FLOAT_EQ(object->scale, 1.08f);
    EXPECT_EQ(scene_redraw_flag, 0);
}

TEST(HoverEffect, settles_within_15_frames_when_the_mouse_leaves) {
    const Page page;
    Node *object = add(NODE_OBJECT, 0.0f, 0.0f);
    object->grab_state = GRAB_HOVERED;
    frames(20);
    object->grab_state = GRAB_IDLE;
    const float expected[] = {1.08f,  1.0721f, 1.0499f, 1.0178f, 0.9822f, 0.9501f, 0.9279f, 0.92f,
                              0.924f, 0.9351f, 0.9511f, 0.9689f, 0.9849f, 0.996f,  1.0f};
    for (const float scale : expected) {
        scene_redraw_flag = 0;
        scene_process_frame();
        EXPECT_FLOAT_EQ(object->scale, scale);
        EXPECT_EQ(scene_redraw_flag, 1);
    }
    EXPECT_EQ(object->bounce_active, BOUNCE_REST);
}

TEST(HoverEffect, a_mouse_that_comes_back_while_it_settles_makes_it_grow_afterwards) {
    const Page page;
    Node *object = add(NODE_OBJECT, 0.0f, 0.0f);
    object->grab_state = GRAB_HOVERED;
    frames(20);
    object->grab_state = GRAB_IDLE;
    frames(5);
    object->grab_state = GRAB_HOVERED;
    frames(10);
    EXPECT_EQ(object->bounce_active, BOUNCE_REST);
    frames(15);
    EXPECT_FLOAT_EQ(object->scale, 1.08f);
}

TEST(HoverEffect, without_a_good_graphics_card_it_jumps_to_the_hover_size_and_never_spins) {
    const Page page;
    orvanel_options.good_graphics_card = 0;
    Node *object = add(NODE_OBJECT, 0.0f, 0.0f);
    object->grab_state = GRAB_HOVERED;
    scene_process_frame();
    EXPECT_FLOAT_EQ(object->scale, 1.08f);
    frames(300);
    EXPECT_FLOAT_EQ(object->angle, 0.0f);
    EXPECT_FLOAT_EQ(object->angle_target, 0.0f);
}

TEST(HoverEffect, without_object_transitions_it_jumps_both_ways) {
    const Page page;
    orvanel_options.object_transitions = 0;
    orvanel_options.object_rotation = 0;
    Node *object = add(NODE_OBJECT, 0.0f, 0.0f);
    object->grab_state = GRAB_HOVERED;
    scene_process_frame();
    EXPECT_FLOAT_EQ(object->scale, 1.08f);
    object->grab_state = GRAB_IDLE;
    scene_process_frame();
    EXPECT_FLOAT_EQ(object->scale, 1.0f);
    EXPECT_EQ(object->bounce_active, BOUNCE_REST);
}

TEST(HoverEffect, without_object_transitions_the_turn_back_still_takes_15_frames) {
    const Page page;
    orvanel_options.object_transitions = 0;
    Node *object = add(NODE_OBJECT, 0.0f, 0.0f);
    object->grab_state = GRAB_HOVERED;
    frames(150);
    ASSERT_GT(object->angle, 10.0f);
    object->grab_state = GRAB_IDLE;
    frames(14);
    EXPECT_EQ(object->bounce_active, BOUNCE_SETTLE);
    EXPECT_FLOAT_EQ(object->scale, 1.0f);
    EXPECT_GT(object->angle, 0.0f);
    scene_process_frame();
    EXPECT_EQ(object->bounce_active, BOUNCE_REST);
    EXPECT_FLOAT_EQ(object->angle, 0.0f);
}

// ---- spinning

// Frames until the object has grown and rested long enough to spin.
static constexpr int FRAMES_TO_SPIN = 15 + 80;

TEST(Spin, starts_after_the_mouse_rested_80_frames_on_the_grown_object) {
    const Page page;
    Node *object = add(NODE_OBJECT, 0.0f, 0.0f);
    object->grab_state = GRAB_HOVERED;
    frames(FRAMES_TO_SPIN - 1);
    EXPECT_EQ(object->bounce_active, BOUNCE_HOVERED);
    frames(1);
    EXPECT_EQ(object->bounce_active, BOUNCE_SPIN);
    scene_redraw_flag = 0;
    const float before = object->angle;
    const float before_b = object->angle_target;
    frames(1);
    EXPECT_NEAR(object->angle - before, 1.0f, 0.0001f);
    EXPECT_NEAR(object->angle_target - before_b, 0.7f, 0.0001f);
    EXPECT_EQ(scene_redraw_flag, 1);
}

TEST(Spin, does_not_start_beside_another_object_and_does_on_the_next_hover_once_moved_apart) {
    const Page page;
    Node *object = add(NODE_OBJECT, 0.0f, 0.0f);
    Node *other = add(NODE_PAGE, 3.9f, 0.0f);
    object->grab_state = GRAB_HOVERED;
    frames(FRAMES_TO_SPIN + 50);
    EXPECT_FLOAT_EQ(object->angle, 0.0f);
    other->x = 10.0f;
    frames(50);
    EXPECT_FLOAT_EQ(object->angle, 0.0f);
    object->grab_state = GRAB_IDLE;
    frames(15);
    object->grab_state = GRAB_HOVERED;
    frames(FRAMES_TO_SPIN + 50);
    EXPECT_GT(object->angle, 10.0f);
}

TEST(Spin, does_not_start_in_align_mode_nor_with_rotation_off) {
    const Page page;
    Node *object = add(NODE_OBJECT, 0.0f, 0.0f);
    object->grab_state = GRAB_HOVERED;
    app_align_mode = 1;
    frames(FRAMES_TO_SPIN + 50);
    EXPECT_FLOAT_EQ(object->angle, 0.0f);
    app_align_mode = 0;
    object->bounce_active = BOUNCE_REST;
    orvanel_options.object_rotation = 0;
    frames(FRAMES_TO_SPIN + 50);
    EXPECT_FLOAT_EQ(object->angle, 0.0f);
}

TEST(Spin, wraps_at_the_full_turn) {
    const Page page;
    Node *object = add(NODE_OBJECT, 0.0f, 0.0f);
    object->bounce_active = BOUNCE_SPIN;
    object->grab_state = GRAB_HOVERED;
    object->angle = 359.5f;
    object->angle_target = 0.5f;
    object->rotation_speed = 1.0f;
    object->rotation_step = -1.0f;
    scene_process_frame();
    EXPECT_FLOAT_EQ(object->angle, 0.0f);
    EXPECT_FLOAT_EQ(object->angle_target, 359.0f);
}

TEST(Spin, an_object_at_350_degrees_turns_on_to_360_and_not_back_through_180) {
    const Page page;
    Node *object = add(NODE_OBJECT, 0.0f, 0.0f);
    object->bounce_active = BOUNCE_SPIN;
    object->angle = 350.0f;
    object->angle_target = 90.0f;
    for (int i = 1; i < 15; i++) {
        scene_process_frame();
        EXPECT_NEAR(object->angle, 350.0f + static_cast<float>(i) * 10.0f / 15.0f, 0.001f);
        EXPECT_NEAR(object->angle_target, 90.0f - static_cast<float>(i) * 6.0f, 0.001f);
    }
    scene_process_frame();
    EXPECT_FLOAT_EQ(object->angle, 0.0f);
    EXPECT_FLOAT_EQ(object->angle_target, 0.0f);
    EXPECT_FLOAT_EQ(object->rotation_speed, 0.0f);
    EXPECT_FLOAT_EQ(object->rotation_step, 0.0f);
}

TEST(Spin, exactly_half_a_turn_goes_forward) {
    const Page page;
    Node *object = add(NODE_OBJECT, 0.0f, 0.0f);
    object->bounce_active = BOUNCE_SPIN;
    object->angle = 180.0f;
    scene_process_frame();
    EXPECT_FLOAT_EQ(object->angle, 192.0f);
}

// ---- facing the viewer before a menu

TEST(MenuActivation, a_spinning_object_faces_the_viewer_in_15_frames_and_grows_again) {
    const Page page;
    Node *object = add(NODE_OBJECT, 0.0f, 0.0f);
    object->bounce_active = BOUNCE_SPIN;
    object->angle = 30.0f;
    object->angle_target = 330.0f;
    object->grab_state = GRAB_GRABBED;
    frames(1);
    EXPECT_EQ(object->bounce_active, BOUNCE_FACE_VIEWER);
    EXPECT_FLOAT_EQ(object->angle, 28.0f);
    EXPECT_FLOAT_EQ(object->angle_target, 332.0f);
    frames(13);
    EXPECT_EQ(object->bounce_active, BOUNCE_FACE_VIEWER);
    frames(1);
    EXPECT_EQ(object->bounce_active, BOUNCE_GROW);
    EXPECT_FLOAT_EQ(object->angle, 0.0f);
    EXPECT_FLOAT_EQ(object->rotation_speed, 0.0f);
    object->grab_state = GRAB_HOVERED;
    frames(8);
    EXPECT_FLOAT_EQ(object->scale, 1.16f);
}

TEST(MenuActivation, an_object_that_faces_the_viewer_needs_no_frames) {
    const Page page;
    Node *object = add(NODE_OBJECT, 0.0f, 0.0f);
    object->grab_state = GRAB_HOVERED;
    frames(20);
    object->grab_state = GRAB_GRABBED;
    frames(1);
    EXPECT_EQ(object->bounce_active, BOUNCE_GROW);
}

TEST(MenuActivation, an_object_at_rest_stays_at_rest) {
    const Page page;
    Node *object = add(NODE_OBJECT, 0.0f, 0.0f);
    object->grab_state = GRAB_GRABBED;
    frames(5);
    EXPECT_EQ(object->bounce_active, BOUNCE_REST);
    EXPECT_FLOAT_EQ(object->scale, 1.0f);
}

// ---- room to spin

TEST(RoomToSpin, is_taken_by_objects_and_page_objects_within_the_largest_extent) {
    const Page page;
    add(NODE_OBJECT, 0.0f, 0.0f)->dimensions[EXTENT_TOP] = 5.0f;
    Node *other = add(NODE_OBJECT, 6.9f, 0.0f);
    EXPECT_NE(scene_check_for_rotation_space(0), 0);
    other->type = NODE_PAGE;
    EXPECT_NE(scene_check_for_rotation_space(0), 0);
    other->x = 0.0f;
    other->y = -6.9f;
    EXPECT_NE(scene_check_for_rotation_space(0), 0);
    other->y = -7.1f;
    EXPECT_EQ(scene_check_for_rotation_space(0), 0);
}

TEST(RoomToSpin, the_largest_extent_may_be_a_negative_one) {
    const Page page;
    add(NODE_OBJECT, 0.0f, 0.0f)->dimensions[EXTENT_BOTTOM] = -5.0f;
    add(NODE_OBJECT, 6.9f, 0.0f);
    EXPECT_NE(scene_check_for_rotation_space(0), 0);
}

TEST(RoomToSpin, touching_edges_leave_room) {
    const Page page;
    add(NODE_OBJECT, 0.0f, 0.0f);
    Node *other = add(NODE_OBJECT, 4.0f, 0.0f);
    EXPECT_EQ(scene_check_for_rotation_space(0), 0);
    other->x = -4.0f;
    EXPECT_EQ(scene_check_for_rotation_space(0), 0);
    other->x = 0.0f;
    other->y = 4.0f;
    EXPECT_EQ(scene_check_for_rotation_space(0), 0);
    other->y = -4.0f;
    EXPECT_EQ(scene_check_for_rotation_space(0), 0);
}

TEST(RoomToSpin, labels_are_ignored) {
    const Page page;
    add(NODE_OBJECT, 0.0f, 0.0f);
    add(NODE_LABEL, 1.0f, 0.0f);
    EXPECT_EQ(scene_check_for_rotation_space(0), 0);
}

// ---- coasting

TEST(Coasting, the_released_floor_goes_on_and_slows_down_by_1_09_a_frame) {
    const Page page;
    scene_floor.inertia_x = 2.18f;
    scene_floor.inertia_y = -1.09f;
    scene_floor.inertia_frames = 30;
    scene_process_frame();
    EXPECT_FLOAT_EQ(scene_floor.position_x, 2.18f);
    EXPECT_FLOAT_EQ(scene_floor.position_y, -1.09f);
    EXPECT_FLOAT_EQ(scene_floor.inertia_x, 2.0f);
    EXPECT_FLOAT_EQ(scene_floor.inertia_y, -1.0f);
    EXPECT_EQ(scene_floor.inertia_frames, 29);
    EXPECT_EQ(scene_redraw_flag, 1);
}

TEST(Coasting, ends_when_its_frames_are_used_up) {
    const Page page;
    scene_floor.inertia_x = 1.0f;
    scene_floor.inertia_frames = 3;
    frames(3);
    const float end = scene_floor.position_x;
    scene_redraw_flag = 0;
    frames(5);
    EXPECT_FLOAT_EQ(scene_floor.position_x, end);
    EXPECT_EQ(scene_redraw_flag, 0);
}

TEST(Coasting, waits_while_the_user_holds_the_floor) {
    const Page page;
    scene_floor.inertia_x = 1.0f;
    scene_floor.inertia_frames = 3;
    scene_floor.drag_state = 1;
    frames(5);
    EXPECT_FLOAT_EQ(scene_floor.position_x, 0.0f);
    EXPECT_EQ(scene_floor.inertia_frames, 3);
}

// ---- zoom

static void set_zoom(std::int32_t level) {
    scene_floor.zoom_level = level;
    scene_floor.distance = ZOOM_STEP * static_cast<float>(level) + ZOOM_DISTANCE_MIN;
    scene_floor.pick_depth = 0.5f;
}

TEST(Zoom, a_step_moves_the_camera_by_ten_and_forgets_the_pick_depth) {
    const Page page;
    set_zoom(4);
    scene_zoom_in();
    EXPECT_EQ(scene_floor.zoom_level, 5);
    EXPECT_FLOAT_EQ(scene_floor.distance, -20.0f);
    EXPECT_FLOAT_EQ(scene_floor.pick_depth, 0.0f);
    EXPECT_EQ(scene_redraw_flag, 1);
    scene_floor.pick_depth = 0.5f;
    scene_redraw_flag = 0;
    scene_zoom_out();
    EXPECT_EQ(scene_floor.zoom_level, 4);
    EXPECT_FLOAT_EQ(scene_floor.distance, -30.0f);
    EXPECT_FLOAT_EQ(scene_floor.pick_depth, 0.0f);
    EXPECT_EQ(scene_redraw_flag, 1);
}

TEST(Zoom, zooming_in_at_the_nearest_level_does_nothing) {
    const Page page;
    set_zoom(8);
    scene_zoom_in();
    EXPECT_EQ(scene_floor.zoom_level, 8);
    EXPECT_FLOAT_EQ(scene_floor.distance, 10.0f);
    EXPECT_FLOAT_EQ(scene_floor.pick_depth, 0.5f);
    EXPECT_EQ(scene_redraw_flag, 0);
}

TEST(Zoom, zooming_out_at_the_farthest_level_does_nothing) {
    const Page page;
    set_zoom(0);
    scene_zoom_out();
    EXPECT_EQ(scene_floor.zoom_level, 0);
    EXPECT_FLOAT_EQ(scene_floor.distance, -70.0f);
    EXPECT_FLOAT_EQ(scene_floor.pick_depth, 0.5f);
    EXPECT_EQ(scene_redraw_flag, 0);
}

TEST(Zoom, all_levels_can_be_gone_through_in_both_directions) {
    const Page page;
    set_zoom(0);
    for (int i = 0; i < 20; i++)
        scene_zoom_in();
    EXPECT_EQ(scene_floor.zoom_level, 8);
    EXPECT_FLOAT_EQ(scene_floor.distance, 10.0f);
    for (int i = 0; i < 20; i++)
        scene_zoom_out();
    EXPECT_EQ(scene_floor.zoom_level, 0);
    EXPECT_FLOAT_EQ(scene_floor.distance, -70.0f);
}
