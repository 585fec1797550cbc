#include "page/placement.h"

#include "placement_fixture.h"

#include <gtest/gtest.h>

namespace {

// ---- the overlap test

TEST_F(Placement, two_boxes_that_only_touch_along_an_edge_do_not_collide) {
    add(0.0f, 0.0f, {-2, 2, -2, 2});
    add(4.0f, 0.0f, {-2, 2, -2, 2});
    add(0.0f, 4.0f, {-2, 2, -2, 2});
    EXPECT_EQ(node_check_collision(0), -1);
    node[1].x = std::nextafter(4.0f, 0.0f);
    EXPECT_EQ(node_check_collision(0), 1);
}

TEST_F(Placement, a_collision_is_reported_with_the_lowest_index_not_pushed_yet) {
    for (int i = 0; i < 4; i++)
        add(0.0f, 0.0f);
    EXPECT_EQ(node_check_collision(0), 1);
    EXPECT_EQ(node_check_collision(2), 0);
    node[0].collision_with = 3;
    EXPECT_EQ(node_check_collision(2), 1);
    node[1].collision_with = node[3].collision_with = 0;
    EXPECT_EQ(node_check_collision(2), -1);
}

TEST_F(Placement, boxes_that_overlap_on_one_axis_only_do_not_collide) {
    add(0.0f, 0.0f);
    add(1.0f, 10.0f);
    add(10.0f, 1.0f);
    EXPECT_EQ(node_check_collision(0), -1);
}

// ---- a single push

TEST_F(Placement, a_push_goes_along_the_axis_of_the_smaller_overlap) {
    const int mover = add(0.0f, 0.0f);
    const int hit = add(4.0f, 1.0f);
    tell(mover, 3.0f, 2.0f);
    node[hit].move_dy = 7.0f;
    node_collision_handle(hit, mover);
    EXPECT_EQ(node[hit].move_dx, 3.0f);
    EXPECT_EQ(node[hit].move_dy, 0.0f);
    EXPECT_EQ(node[hit].move_frames, 1);
    node[hit].x = 1.0f;
    node[hit].y = 4.0f;
    node_collision_handle(hit, mover);
    EXPECT_EQ(node[hit].move_dx, 0.0f);
    EXPECT_EQ(node[hit].move_dy, 2.0f);
}

TEST_F(Placement, equal_overlaps_push_along_y) {
    const int mover = add(0.0f, 0.0f);
    const int hit = add(3.0f, 3.0f);
    tell(mover, 3.0f, 2.0f);
    node_collision_handle(hit, mover);
    EXPECT_EQ(node[hit].move_dx, 0.0f);
    EXPECT_EQ(node[hit].move_dy, 2.0f);
}

TEST_F(Placement, a_mover_that_covers_the_other_overlaps_it_by_its_own_width) {
    const int mover = add(0.0f, 0.0f, {-6, 6, -3, 3});
    const int hit = add(0.5f, 2.5f, {-1, 1, -1, 1});
    tell(mover, 5.0f, 5.0f);
    node_collision_handle(hit, mover); // 12 along x, 1.5 along y
    EXPECT_EQ(node[hit].move_dy, 5.0f);
    EXPECT_EQ(node[hit].move_dx, 0.0f);
    set_extents(mover, {-6, 6, -13, 13});
    node[hit].move_dy = 0.0f;
    node_collision_handle(hit, mover); // 12 along x, 26 along y
    EXPECT_EQ(node[hit].move_dx, 5.0f);
}

TEST_F(Placement, a_mover_on_its_way_from_the_other_does_not_push_it) {
    const int mover = add(0.0f, 0.0f);
    const int hit = add(4.0f, 1.0f);
    tell(mover, -3.0f, 2.0f);
    node_collision_handle(hit, mover);
    EXPECT_EQ(node[hit].move_frames, 0);
    node[hit].x = -4.0f;
    node_collision_handle(hit, mover);
    EXPECT_EQ(node[hit].move_dx, -3.0f);
}

TEST_F(Placement, a_mover_without_motion_along_the_axis_stops_what_it_hits_on_either_side) {
    const int mover = add(0.0f, 0.0f);
    const int hit = add(4.0f, 1.0f);
    tell(mover, 0.0f, 2.0f);
    for (const float x : {4.0f, -4.0f}) {
        node[hit].x = x;
        tell(hit, 5.0f, 6.0f);
        node_collision_handle(hit, mover);
        EXPECT_EQ(node[hit].move_dx, 0.0f);
        EXPECT_EQ(node[hit].move_dy, 0.0f);
        EXPECT_EQ(node[hit].move_frames, 1);
    }
    tell(mover, 2.0f, 0.0f);
    for (const float y : {4.0f, -4.0f}) {
        node[hit].x = 1.0f;
        node[hit].y = y;
        tell(hit, 5.0f, 6.0f);
        node_collision_handle(hit, mover);
        EXPECT_EQ(node[hit].move_dx, 0.0f);
        EXPECT_EQ(node[hit].move_dy, 0.0f);
    }
}

TEST_F(Placement,
       a_node_dropped_exactly_on_anothers_y_with_the_smaller_overlap_in_y_is_not_pushed) {
    const int mover = add(0.0f, 5.0f, {-2, 2, -1, 1});
    const int hit = add(0.5f, 5.0f, {-2, 2, -1, 1});
    tell(mover, 3.0f, 3.0f);
    node_collision_handle(hit, mover);
    EXPECT_EQ(node[hit].move_frames, 0);
    EXPECT_EQ(node[hit].move_dx, 0.0f);
    EXPECT_EQ(node[hit].move_dy, 0.0f);
    node[mover].move_dy = 0.0f;
    node_move_nodes();
    EXPECT_EQ(node[hit].x, 0.5f);
    EXPECT_EQ(node[hit].y, 5.0f);
}

TEST_F(Placement, a_thrown_mover_hands_its_throw_on_and_keeps_a_quarter) {
    const int mover = add(0.0f, 0.0f);
    const int hit = add(4.0f, 1.0f);
    tell(mover, 3.0f, 2.0f);
    node[mover].inertia_frames = 12;
    node[mover].inertia_dx = 0.8f;
    node[mover].inertia_dy = 0.4f;
    node_collision_handle(hit, mover);
    EXPECT_EQ(node[hit].inertia_frames, 12);
    EXPECT_EQ(node[hit].inertia_dx, 0.8f);
    EXPECT_EQ(node[hit].inertia_dy, 0.0f);
    EXPECT_EQ(node[hit].move_frames, MOVE_STEPS);
    EXPECT_EQ(node[mover].inertia_dx, 0.2f);
    EXPECT_EQ(node[mover].inertia_dy, 0.4f);
    EXPECT_EQ(node[mover].inertia_frames, 12);
}

TEST_F(Placement, a_throw_along_y_is_handed_on_along_y) {
    const int mover = add(0.0f, 0.0f);
    const int hit = add(1.0f, -4.0f);
    tell(mover, 3.0f, -2.0f);
    node[mover].inertia_frames = 5;
    node[mover].inertia_dx = 0.8f;
    node[mover].inertia_dy = -0.4f;
    node_collision_handle(hit, mover);
    EXPECT_EQ(node[hit].inertia_dy, -0.4f);
    EXPECT_EQ(node[hit].inertia_dx, 0.0f);
    EXPECT_EQ(node[mover].inertia_dy, -0.1f);
    EXPECT_EQ(node[mover].inertia_dx, 0.8f);
}

TEST_F(Placement, an_anchored_node_is_never_pushed) {
    const int mover = add(0.0f, 0.0f);
    const int hit = add(4.0f, 1.0f);
    node[hit].grab_state = GRAB_ANCHORED;
    tell(mover, 3.0f, 0.0f);
    node_collision_handle(hit, mover);
    EXPECT_EQ(node[hit].move_frames, 0);
    node_move_nodes();
    EXPECT_EQ(node[hit].x, 4.0f);
    EXPECT_NEAR(node[mover].x, 3.0f, 1e-4f);
}

TEST_F(Placement, an_anchored_node_does_not_move_even_when_told) {
    const int id = add(4.0f, 1.0f);
    node[id].grab_state = GRAB_ANCHORED;
    move(id, 5.0f, 5.0f);
    EXPECT_EQ(node[id].x, 4.0f);
    EXPECT_EQ(node[id].y, 1.0f);
    EXPECT_TRUE(nothing_is_pending());
}

// ---- running pushes

TEST_F(Placement, a_whole_push_moves_a_node_by_its_displacement) {
    const int id = add(10.0f, 20.0f);
    move(id, 5.0f, -2.5f);
    EXPECT_NEAR(node[id].x, 15.0f, 1e-4f);
    EXPECT_NEAR(node[id].y, 17.5f, 1e-4f);
    EXPECT_TRUE(nothing_is_pending());
}

TEST_F(Placement, a_push_with_fewer_steps_left_moves_a_node_by_that_part) {
    const int id = add(0.0f, 0.0f);
    tell(id, 25.0f, 50.0f, 3);
    node_move_nodes();
    EXPECT_EQ(node[id].x, 3.0f);
    EXPECT_EQ(node[id].y, 6.0f);
}

TEST_F(Placement, a_move_without_steps_left_is_forgotten) {
    const int id = add(0.0f, 0.0f);
    tell(id, 25.0f, 50.0f, 0);
    node_move_nodes();
    EXPECT_EQ(node[id].x, 0.0f);
    EXPECT_TRUE(nothing_is_pending());
}

TEST_F(Placement, a_chain_of_three_moves_on_and_the_pushed_ones_take_double_steps) {
    add(0.0f, 0.0f, {-2, 2, -2, 2});
    add(4.0f, 0.25f, {-2, 2, -2, 2});
    add(8.0f, 0.5f, {-2, 2, -2, 2});
    tell(0, 25.0f, 0.0f, 1); // a single step of 1
    node_move_nodes();
    EXPECT_EQ(node[0].x, 1.0f);
    EXPECT_EQ(node[1].x, 6.0f);
    EXPECT_EQ(node[2].x, 10.0f);
    EXPECT_EQ(node[1].y, 0.25f);
    EXPECT_EQ(node[2].y, 0.5f);
}

TEST_F(Placement, a_pushed_node_of_a_lower_index_takes_its_double_step_in_the_next_pass) {
    add(8.0f, 0.5f, {-2, 2, -2, 2});
    add(4.0f, 0.25f, {-2, 2, -2, 2});
    add(0.0f, 0.0f, {-2, 2, -2, 2});
    tell(2, 25.0f, 0.0f, 1);
    node_move_nodes();
    EXPECT_EQ(node[2].x, 1.0f);
    EXPECT_EQ(node[1].x, 6.0f);
    EXPECT_EQ(node[0].x, 10.0f);
}

TEST_F(Placement, a_long_push_ends_with_nobody_overlapping_the_mover) {
    add(0.0f, 0.0f);
    add(5.0f, 0.5f);
    add(10.0f, 1.0f);
    move(0, 12.0f, 0.0f);
    EXPECT_NEAR(node[0].x, 12.0f, 1e-3f);
    EXPECT_GT(node[1].x, node[0].x);
    EXPECT_GT(node[2].x, node[1].x);
    EXPECT_EQ(node_check_collision(0), -1);
}

TEST_F(Placement, labels_are_pushed_by_the_size_of_their_text) {
    const int label = add_label(10.0f, 0.1f, 12.0f);
    const int object = add(0.0f, 0.0f);
    move(object, 1.0f, 0.0f); // reaches 3.29; the label begins at 3.7
    EXPECT_EQ(node[label].x, 10.0f);
    move(object, 1.0f, 0.0f);
    EXPECT_GT(node[label].x, 10.0f);
    EXPECT_EQ(node[label].y, 0.1f);
}

TEST_F(Placement, no_mark_is_left_when_three_overlap_at_rest) {
    add(0.0f, 0.0f);
    add(1.0f, 0.5f);
    add(0.5f, 1.0f);
    node_move_nodes();
    EXPECT_TRUE(nothing_is_pending());
    move(add(50.0f, 50.0f), 1.0f, 1.0f);
    EXPECT_TRUE(nothing_is_pending());
    move(2, 3.0f, 0.0f);
    EXPECT_TRUE(nothing_is_pending());
}

TEST_F(Placement, nodes_that_are_not_involved_do_not_move) {
    for (unsigned seed = 1; seed <= 40; seed++) {
        Dice dice(seed);
        make_page(&dice, 60);
        const int far_off = node_total;
        for (int i = 0; i < 30; i++)
            add(dice.number(5000.0f, 5020.0f), dice.number(-10.0f, 10.0f)); // overlapping at rest
        const Page before = page_now();
        move(dice.whole(0, far_off - 1), dice.number(-9.0f, 9.0f), dice.number(-9.0f, 9.0f));
        for (int id = far_off; id < node_total; id++)
            ASSERT_EQ(std::memcmp(&node[id], &before[static_cast<std::size_t>(id)], sizeof(Node)),
                      0);
    }
}

TEST_F(Placement, pushes_end_on_every_page_with_finite_coordinates_and_nothing_pending) {
    for (unsigned seed = 1; seed <= 60; seed++) {
        Dice dice(seed);
        make_page(&dice, dice.chance(2) ? 255 : dice.whole(1, 255));
        for (int call = 0; call < 4; call++) {
            tell_some(&dice);
            node_move_nodes();
            ASSERT_TRUE(all_are_finite()) << seed;
            ASSERT_TRUE(nothing_is_pending()) << seed;
        }
    }
}

TEST_F(Placement, an_empty_page_has_nothing_to_run) {
    node_move_nodes();
    EXPECT_EQ(node_total, 0);
}

} // namespace
