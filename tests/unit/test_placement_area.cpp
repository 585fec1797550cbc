#include "page/placement.h"

#include "placement_fixture.h"

#include <gtest/gtest.h>

namespace {

// ---- keeping the area of a placed node free

struct Area {
    int passes;
    bool kept_its_place;
    bool free;
};

// As the scene does it: passes until none is needed. The limit makes a failure of what never ends.
Area clear_area(int id) {
    const float x = node[id].x;
    const float y = node[id].y;
    Area area = {};
    node[id].grab_state = GRAB_ANCHORED;
    while (node_avoid_area_step(id) && area.passes < 10000)
        area.passes++;
    node[id].grab_state = GRAB_IDLE;
    area.kept_its_place = node[id].x == x && node[id].y == y;
    area.free = true;
    for (int other = 0; other < node_total; other++)
        if (other != id && overlap(other, id))
            area.free = false;
    return area;
}

void expect_cleared(int id) {
    const Area area = clear_area(id);
    EXPECT_LE(area.passes, AVOID_PASSES);
    EXPECT_TRUE(area.kept_its_place);
    EXPECT_TRUE(area.free);
    EXPECT_TRUE(all_are_finite());
    EXPECT_TRUE(nothing_is_pending());
}

TEST_F(Placement, a_pass_moves_each_in_the_area_by_a_thirteenth_of_the_distance) {
    add(3.0f, 1.0f);
    add(30.0f, 1.0f);
    const int placed = add(0.4f, 2.3f);
    EXPECT_TRUE(node_avoid_area_step(placed));
    EXPECT_NEAR(node[0].x, 3.0f + 2.6f / 13.0f, 1e-4f);
    EXPECT_NEAR(node[0].y, 1.0f - 1.3f / 13.0f, 1e-4f);
    EXPECT_EQ(node[1].x, 30.0f);
}

TEST_F(Placement, a_pass_over_a_free_area_moves_nobody) {
    add(3.0f, 1.0f);
    add(10.0f, 1.0f);
    const Page before = page_now();
    EXPECT_FALSE(node_avoid_area_step(1));
    EXPECT_EQ(first_difference(before), -1);
}

TEST_F(Placement, two_objects_on_the_same_spot_are_pushed_apart) {
    add(10.0f, 10.0f);
    const int placed = add(10.0f, 10.0f);
    EXPECT_TRUE(node_avoid_area_step(placed));
    EXPECT_NEAR(node[0].x, 9.9f, 1e-4f);
    EXPECT_NEAR(node[0].y, 9.9f, 1e-4f);
    expect_cleared(placed);
}

TEST_F(Placement, an_anchored_object_of_a_low_index_does_not_stop_those_it_pushes) {
    add(0.0f, 0.0f);
    add(3.0f, 1.0f);
    expect_cleared(0);
    EXPECT_GT(node[1].x, 3.0f);
}

TEST_F(Placement, a_paste_beside_two_that_overlap_at_rest_gets_its_place) {
    add(0.0f, 0.0f);
    add(3.0f, 1.0f);
    const int pasted = add(6.0f, 2.0f);
    node_total--; // a paste makes room before it counts the new node
    expect_cleared(pasted);
}

TEST_F(Placement, a_new_object_between_two_that_overlap_at_rest_gets_its_place) {
    add(0.0f, 0.0f);
    add(3.0f, 1.0f);
    expect_cleared(add(2.0f, 1.5f));
}

TEST_F(Placement, a_paste_whose_steps_are_lost_in_precision_gets_its_place) {
    add(100.0f, 100.0f);
    const int pasted = add(100.001f, 100.001f);
    node_total--;
    EXPECT_TRUE(node_avoid_area_step(pasted));
    EXPECT_NEAR(node[0].x, 99.9f, 1e-3f); // as visibly as two at the same spot, and away
    EXPECT_NEAR(node[0].y, 99.9f, 1e-3f);
    expect_cleared(pasted);
}

TEST_F(Placement, a_paste_next_to_nothing_away_gets_its_place_within_the_bound) {
    add(0.0f, 0.0f);
    expect_cleared(add(1e-30f, -1e-38f));
}

TEST_F(Placement, a_node_set_beside_an_area_does_not_reach_into_it_by_rounding) {
    Dice dice(11);
    for (int i = 0; i < 100; i++) {
        node_total = 0;
        const float wide = dice.number(0.3f, 900.0f);
        const float high = dice.number(0.3f, 900.0f);
        add(1e-30f, 1e-30f, {-wide, wide, -high, high});
        set_extents(add(0.0f, 0.0f), {-dice.number(0.1f, 9.0f), dice.number(0.1f, 9.0f),
                                      -dice.number(0.1f, 9.0f), dice.number(0.1f, 9.0f)});
        const Area area = clear_area(1);
        ASSERT_TRUE(area.free) << i;
        ASSERT_EQ(area.passes, AVOID_PASSES) << i;
    }
}

TEST_F(Placement, an_area_is_cleared_where_even_large_steps_are_lost) {
    for (const float far : {1e5f, 1e6f, -1e7f, 2e7f}) {
        node_total = 0;
        add(far, 0.0f);
        add(far, 1.0f);
        expect_cleared(add(far, 0.0f));
    }
}

TEST_F(Placement, a_node_that_no_push_moves_is_set_beside_the_area_by_the_shortest_way) {
    Dice dice(3);
    for (int i = 0; i < 300; i++) {
        node_total = 0;
        const float x = dice.number(2e5f, 1e6f) * (dice.chance(2) ? 1.0f : -1.0f);
        const float y = dice.number(2e5f, 1e6f) * (dice.chance(2) ? 1.0f : -1.0f);
        add(x + dice.number(-1.0f, 1.0f), y + dice.number(-1.0f, 1.0f));
        const int placed = add(x, y);
        const float off_x = std::fabs(node[0].x - x);
        const float off_y = std::fabs(node[0].y - y);
        const float before_x = node[0].x;
        const float before_y = node[0].y;
        const Area area = clear_area(placed);
        ASSERT_EQ(area.passes, 1);
        ASSERT_TRUE(area.free);
        const float moved = std::fabs(node[0].x - before_x) + std::fabs(node[0].y - before_y);
        ASSERT_NEAR(moved, 2.0f * EXTENT - std::max(off_x, off_y), 0.26f); // rounding out here
    }
}

TEST_F(Placement, an_area_in_a_crowd_is_cleared) {
    for (unsigned seed = 1; seed <= 30; seed++) {
        Dice dice(seed);
        make_page(&dice, dice.whole(2, 60));
        ASSERT_NO_FATAL_FAILURE(expect_cleared(dice.whole(0, node_total - 1))) << seed;
        ASSERT_FALSE(HasFailure()) << seed;
    }
}

TEST_F(Placement, an_area_on_a_full_stack_is_cleared) {
    for (int i = 0; i < 255; i++)
        add(0.0f, 0.0f);
    expect_cleared(254);
}

TEST_F(Placement, an_area_is_cleared_of_labels_and_by_labels) {
    add_label(0.0f, 0.0f, 30.0f);
    add(4.0f, 0.2f);
    expect_cleared(add_label(3.0f, 0.1f, 12.0f));
    expect_cleared(1);
}

TEST_F(Placement, an_area_is_cleared_of_a_node_that_cannot_be_pushed) {
    add(1.0f, 0.5f);
    node[0].grab_state = GRAB_ANCHORED;
    expect_cleared(add(0.0f, 0.0f));
}

TEST_F(Placement, boxes_without_end_neither_hold_an_area_up_nor_clear_one) {
    add(0.0f, 0.0f, {-INFINITE, INFINITE, -INFINITE, INFINITE});
    add(NOT_A_NUMBER, 0.0f);
    const int placed = add(0.0f, 0.0f);
    EXPECT_FALSE(node_avoid_area_step(placed));
    EXPECT_FALSE(node_avoid_area_step(0));
    EXPECT_FALSE(node_avoid_area_step(1));
    EXPECT_EQ(node[placed].x, 0.0f);
}

TEST_F(Placement, an_area_of_no_node_is_free) {
    add(0.0f, 0.0f);
    EXPECT_FALSE(node_avoid_area_step(-1));
    EXPECT_FALSE(node_avoid_area_step(2));
    node_total = NODE_CAPACITY;
    EXPECT_FALSE(node_avoid_area_step(NODE_CAPACITY));
}

} // namespace
