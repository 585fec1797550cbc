#include "page/placement.h"

#include "placement_fixture.h"

#include <gtest/gtest.h>

namespace {

// ---- alignment

constexpr float AT_TARGET = 0.0f;

// The mouse this far from the target along each axis, the window's middle somewhere.
int choice(int from, int to, float off_x, float off_y) {
    const float centre_x = 3.0f;
    const float centre_y = -7.0f;
    return node_align_choice(from, to, node[to].x - centre_x + off_x, node[to].y - centre_y + off_y,
                             centre_x, centre_y);
}

TEST_F(Placement, aligning_a_node_with_itself_or_with_nothing_yields_none) {
    add(0.0f, 0.0f);
    add(20.0f, 20.0f);
    EXPECT_EQ(node_align_choice(0, 0, 0, 0, 0, 0), ALIGN_NONE);
    EXPECT_EQ(node_align_choice(0, -1, 0, 0, 0, 0), ALIGN_NONE);
    EXPECT_EQ(node_align_choice(-1, 1, 0, 0, 0, 0), ALIGN_NONE);
    EXPECT_EQ(node_align_choice(0, 2, 0, 0, 0, 0), ALIGN_NONE);
    EXPECT_EQ(node_align_choice(0, 1001, 0, 0, 0, 0), ALIGN_NONE);
    EXPECT_EQ(node_align_choice(0, 1, 0, 0, 0, 0), ALIGN_ROW);
    const int not_drawn_yet = add(5.0f, 5.0f, {0, 0, 0, 0}, NODE_LABEL);
    EXPECT_EQ(node_align_choice(not_drawn_yet, not_drawn_yet, 0, 0, 0, 0), ALIGN_NONE);
}

TEST_F(Placement, with_row_and_column_free_a_mouse_near_the_targets_row_gives_the_row) {
    add(0.0f, 0.0f);
    add(20.0f, 20.0f);
    EXPECT_EQ(choice(0, 1, -2.0f, 0.5f), ALIGN_ROW);
    EXPECT_EQ(choice(0, 1, 0.5f, 2.0f), ALIGN_COLUMN);
    EXPECT_EQ(choice(0, 1, AT_TARGET, 0.3f), ALIGN_ROW); // objects prefer the row by 0.4
    EXPECT_EQ(choice(0, 1, AT_TARGET, 0.5f), ALIGN_COLUMN);
}

TEST_F(Placement, for_a_label_target_the_row_is_not_preferred) {
    add(0.0f, 0.0f);
    add_label(20.0f, 20.0f, 4.0f);
    EXPECT_EQ(choice(0, 1, AT_TARGET, 0.3f), ALIGN_COLUMN);
    EXPECT_EQ(choice(0, 1, 0.3f, AT_TARGET), ALIGN_ROW);
    EXPECT_EQ(choice(0, 1, AT_TARGET, AT_TARGET), ALIGN_ROW); // equal counts as the row
}

TEST_F(Placement, nodes_that_share_columns_cannot_go_to_one_row_and_the_other_way_round) {
    add(0.0f, 0.0f);
    add(3.0f, 20.0f);
    EXPECT_EQ(choice(0, 1, 9.0f, AT_TARGET), ALIGN_COLUMN);
    node[1].x = 20.0f;
    node[1].y = 3.0f;
    EXPECT_EQ(choice(0, 1, AT_TARGET, 9.0f), ALIGN_ROW);
    node[1].x = 3.0f;
    EXPECT_EQ(choice(0, 1, AT_TARGET, AT_TARGET), ALIGN_NONE);
}

TEST_F(Placement, spans_that_only_touch_leave_the_way_open) {
    add(0.0f, 0.0f, {-2, 2, -2, 2});
    add(4.0f, 20.0f, {-2, 2, -2, 2});
    EXPECT_EQ(choice(0, 1, 9.0f, AT_TARGET), ALIGN_ROW);
    node[1].x = -4.0f;
    EXPECT_EQ(choice(0, 1, 9.0f, AT_TARGET), ALIGN_ROW);
}

TEST_F(Placement, an_object_in_the_lane_to_the_targets_column_leaves_only_the_row) {
    add(0.0f, 0.0f);
    add(20.0f, 20.0f);
    const int other = add(10.0f, 2.0f); // its near edge inside the lane
    EXPECT_EQ(choice(0, 1, AT_TARGET, 9.0f), ALIGN_ROW);
    node[other].y = -2.0f; // its far edge
    EXPECT_EQ(choice(0, 1, AT_TARGET, 9.0f), ALIGN_ROW);
    set_extents(other, {-1, 1, -9, 9}); // spans the lane
    EXPECT_EQ(choice(0, 1, AT_TARGET, 9.0f), ALIGN_ROW);
    set_extents(other, {-1, 1, -EXTENT, EXTENT}); // exactly the lane
    node[other].y = 0.0f;
    EXPECT_EQ(choice(0, 1, AT_TARGET, 9.0f), ALIGN_ROW);
    node[other].y = 5.0f; // beside the lane
    EXPECT_EQ(choice(0, 1, AT_TARGET, 9.0f), ALIGN_COLUMN);
    node[other].y = 0.0f;
    node[other].x = 23.5f; // behind the place the object would take
    EXPECT_EQ(choice(0, 1, AT_TARGET, 9.0f), ALIGN_COLUMN);
    node[other].x = 23.0f; // reaches into it
    EXPECT_EQ(choice(0, 1, AT_TARGET, 9.0f), ALIGN_ROW);
    node[other].x = -10.0f; // on the other side
    EXPECT_EQ(choice(0, 1, AT_TARGET, 9.0f), ALIGN_COLUMN);
}

TEST_F(Placement, the_way_to_the_left_is_blocked_alike) {
    add(0.0f, 0.0f);
    add(-20.0f, 20.0f);
    const int other = add(-10.0f, 2.0f);
    EXPECT_EQ(choice(0, 1, AT_TARGET, 9.0f), ALIGN_ROW);
    node[other].x = -25.0f;
    EXPECT_EQ(choice(0, 1, AT_TARGET, 9.0f), ALIGN_COLUMN);
}

TEST_F(Placement, an_object_in_the_lane_to_the_targets_row_leaves_only_the_column) {
    add(0.0f, 0.0f);
    add(20.0f, 20.0f);
    const int other = add(2.0f, 10.0f);
    EXPECT_EQ(choice(0, 1, 9.0f, AT_TARGET), ALIGN_COLUMN);
    node[other].x = 5.0f;
    EXPECT_EQ(choice(0, 1, 9.0f, AT_TARGET), ALIGN_ROW);
    node[other].x = 0.0f;
    node[other].y = 25.0f;
    EXPECT_EQ(choice(0, 1, 9.0f, AT_TARGET), ALIGN_ROW);
}

TEST_F(Placement, with_both_ways_blocked_there_is_no_alignment) {
    add(0.0f, 0.0f);
    add(20.0f, 20.0f);
    add(10.0f, 0.0f);
    add(0.0f, 10.0f);
    EXPECT_EQ(choice(0, 1, AT_TARGET, 9.0f), ALIGN_NONE);
    EXPECT_EQ(choice(0, 1, 9.0f, AT_TARGET), ALIGN_NONE);
}

} // namespace
