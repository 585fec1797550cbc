#include "page/placement.h"

#include "naive_placement.h"
#include "placement_fixture.h"

#include <gtest/gtest.h>

namespace {

// ---- what would never end or end badly

TEST_F(Placement, an_object_told_to_move_leaves_an_overlap_it_started_in) {
    add(0.0f, 0.0f);
    add(3.0f, 1.0f);
    move(1, 4.0f, 2.0f);
    EXPECT_NEAR(node[1].x, 7.0f, 1e-4f);
    EXPECT_NEAR(node[1].y, 3.0f, 1e-4f);
    EXPECT_EQ(node[0].x, 0.0f);
    EXPECT_EQ(node[0].y, 0.0f);
}

TEST_F(Placement, an_object_of_a_resting_pair_reaches_the_grid_in_sixteen_moves) {
    for (const int moved : {0, 1}) {
        node_total = 0;
        add(moved == 0 ? 3.0f : 0.0f, moved == 0 ? 1.0f : 0.0f);
        add(moved == 0 ? 0.0f : 3.0f, moved == 0 ? 0.0f : 1.0f);
        for (int step = 0; step < 16; step++)
            move(moved, (2.5f - 3.0f) / 16.0f, (0.0f - 1.0f) / 16.0f);
        EXPECT_NEAR(node[moved].x, 2.5f, 1e-4f);
        EXPECT_NEAR(node[moved].y, 0.0f, 1e-4f);
    }
}

TEST_F(Placement, an_object_leaves_a_crowd_that_rests_on_the_same_spot) {
    for (int leaving = 0; leaving < 9; leaving++) {
        node_total = 0;
        for (int i = 0; i < 9; i++)
            add(0.1f * static_cast<float>(i), 0.07f * static_cast<float>(i));
        const float x = node[leaving].x;
        move(leaving, 30.0f, 0.0f);
        EXPECT_NEAR(node[leaving].x, x + 30.0f, 1e-3f) << leaving;
    }
}

TEST_F(Placement, a_push_of_two_thousand_million_steps_ends) {
    add(0.0f, 0.0f);
    tell(0, 1.0f, 0.0f, std::numeric_limits<std::int32_t>::max());
    add(2.0f, 0.5f);
    node_move_nodes();
    EXPECT_TRUE(nothing_is_pending());
    EXPECT_TRUE(all_are_finite());
}

TEST_F(Placement, a_chain_of_throws_is_run_to_its_end) {
    // Each is hit by the last steps of the one before and takes a whole push of its own over.
    for (int i = 0; i < 60; i++) {
        add(static_cast<float>(i) * 9.0f, 0.01f * static_cast<float>(i), {-2, 2, -2, 2});
        node[i].inertia_frames = 10;
        node[i].inertia_dx = 1.0f;
    }
    const Page before = page_now();
    tell(0, 5.5f, 0.0f);
    node_move_nodes();
    const Page ended = page_now();
    restore(before);
    tell(0, 5.5f, 0.0f);
    const int passes = naive_move_nodes(true, 1000000);
    EXPECT_EQ(first_difference(ended), -1);
    EXPECT_GT(passes, 500);
    EXPECT_GT(node[59].x, before[59].x);
}

TEST_F(Placement, a_step_beyond_the_range_of_numbers_is_not_taken) {
    const float largest = std::numeric_limits<float>::max();
    add(largest, 0.0f);
    add(50.0f, 50.0f);
    move(0, largest, 25.0f);
    EXPECT_EQ(node[0].x, largest);
    EXPECT_NEAR(node[0].y, 25.0f, 1e-4f);
    move(1, INFINITE, NOT_A_NUMBER);
    EXPECT_EQ(node[1].x, 50.0f);
    EXPECT_EQ(node[1].y, 50.0f);
    EXPECT_TRUE(nothing_is_pending());
}

TEST_F(Placement, nodes_at_no_position_take_part_in_no_collision) {
    add(NOT_A_NUMBER, 0.0f);
    add(INFINITE, 0.0f);
    add(0.0f, -INFINITE);
    add(0.0f, 0.0f);
    add(4.0f, 1.0f);
    for (int id = 0; id < 3; id++) {
        EXPECT_EQ(node_check_collision(id), -1);
        move(id, 0.5f, 0.5f);
    }
    EXPECT_EQ(node[3].x, 0.0f);
    move(3, 2.0f, 0.0f);
    EXPECT_NEAR(node[3].x, 2.0f, 1e-4f);
    EXPECT_GT(node[4].x, 5.9f);
    EXPECT_TRUE(std::isnan(node[0].x));
    EXPECT_EQ(node[1].x, INFINITE);
    EXPECT_EQ(node[2].y, -INFINITE);
}

TEST_F(Placement, nodes_far_outside_are_pushed_like_others) {
    add(100000.0f, -90000.0f, {-2, 2, -2, 2});
    add(100004.0f, -90000.5f, {-2, 2, -2, 2});
    move(0, 25.0f, 0.0f);
    EXPECT_EQ(node[0].x, 100025.0f);
    EXPECT_GE(node[1].x, 100029.0f);
}

} // namespace
