#include "page/placement.h"

#include "naive_placement.h"
#include "placement_fixture.h"

#include <gtest/gtest.h>

namespace {

// ---- the same to the last bit as the plain passes

void expect_same_as_naive(unsigned seed, bool special_rules) {
    const Page before = page_now();
    naive_move_nodes(special_rules);
    const Page expected = page_now();
    restore(before);
    node_move_nodes();
    ASSERT_EQ(first_difference(expected), -1) << "seed " << seed << ", " << node_total << " nodes";
}

void make_roomy_page(Dice *dice) {
    make_page(dice, some_total(dice));
    for (int id = 0; id < node_total;)
        if (node_check_collision(id) >= 0)
            node[id] = node[--node_total];
        else
            id++;
    if (node_total == 0)
        add(0.0f, 0.0f);
}

TEST_F(Placement, pages_without_overlaps_end_as_the_bare_passes_have_them) {
    for (unsigned seed = 1; seed <= 400; seed++) {
        Dice dice(seed);
        make_roomy_page(&dice);
        tell_some(&dice);
        ASSERT_NO_FATAL_FAILURE(expect_same_as_naive(seed, false));
    }
}

TEST_F(Placement, overlaps_among_nodes_told_to_move_end_as_the_bare_passes_have_them) {
    for (unsigned seed = 1; seed <= 200; seed++) {
        Dice dice(seed);
        make_page(&dice, some_total(&dice));
        for (int id = 0; id < node_total; id++)
            tell(id, dice.number(-5.0f, 5.0f), dice.number(-5.0f, 5.0f), dice.whole(1, 30));
        ASSERT_NO_FATAL_FAILURE(expect_same_as_naive(seed, false));
    }
}

TEST_F(Placement, crowded_pages_end_as_the_plain_passes_have_them_call_after_call) {
    for (unsigned seed = 1; seed <= 400; seed++) {
        Dice dice(seed);
        make_page(&dice, some_total(&dice));
        for (int call = 0; call < 3; call++) {
            tell_some(&dice);
            ASSERT_NO_FATAL_FAILURE(expect_same_as_naive(seed, true));
        }
    }
}

TEST_F(Placement,
       anchors_old_marks_old_moves_and_odd_boxes_make_no_difference_to_the_plain_passes) {
    for (unsigned seed = 1; seed <= 400; seed++) {
        Dice dice(seed);
        make_page(&dice, some_total(&dice));
        for (int id = 0; id < node_total; id++) {
            if (dice.chance(12))
                node[id].grab_state = GRAB_ANCHORED;
            if (dice.chance(12))
                node[id].collision_with = dice.whole(-1, node_total - 1);
            if (dice.chance(12))
                node[id].move_dx = dice.chance(2) ? -0.0f : dice.number(-3.0f, 3.0f);
            if (dice.chance(30))
                node[id].x = dice.chance(2) ? NOT_A_NUMBER : INFINITE;
            if (dice.chance(30))
                set_extents(id, {EXTENT, -EXTENT, -EXTENT, EXTENT}); // the wrong way round
            if (dice.chance(40))
                set_extents(id, {-INFINITE, INFINITE, -EXTENT, NOT_A_NUMBER});
        }
        tell_some(&dice);
        ASSERT_NO_FATAL_FAILURE(expect_same_as_naive(seed, true));
    }
}

TEST_F(Placement, moving_nodes_one_after_the_other_in_a_frame_ends_as_separate_calls_have_it) {
    for (unsigned seed = 1; seed <= 150; seed++) {
        Dice dice(seed);
        make_page(&dice, some_total(&dice));
        const Page before = page_now();
        const Dice same = dice;
        for (int frame = 0; frame < 2; frame++)
            for (int id = 0; id < node_total; id++)
                move(id, dice.number(-1.0f, 1.0f), dice.number(-1.0f, 1.0f));
        const Page expected = page_now();
        restore(before);
        dice = same;
        for (int frame = 0; frame < 2; frame++) {
            node_move_begin();
            for (int id = 0; id < node_total; id++) {
                tell(id, dice.number(-1.0f, 1.0f), dice.number(-1.0f, 1.0f));
                node_move_node(id);
            }
        }
        ASSERT_EQ(first_difference(expected), -1) << seed;
    }
}

TEST_F(Placement, what_was_pending_before_the_frame_is_run_with_its_first_move) {
    add(0.0f, 0.0f);
    add(50.0f, 0.0f);
    tell(0, 5.0f, 0.0f);
    node_move_begin();
    tell(1, 2.0f, 0.0f);
    node_move_node(1);
    EXPECT_NEAR(node[0].x, 5.0f, 1e-4f);
    EXPECT_NEAR(node[1].x, 52.0f, 1e-4f);
}

TEST_F(Placement, pages_that_come_and_go_between_calls_leave_nothing_behind) {
    Dice dice(7);
    for (unsigned page = 1; page <= 60; page++) {
        make_page(&dice, some_total(&dice));
        tell_some(&dice);
        ASSERT_NO_FATAL_FAILURE(expect_same_as_naive(page, true));
        node_delete_node(dice.whole(0, node_total - 1)); // the later ones move down
        if (node_total > 0)
            tell_some(&dice);
        ASSERT_NO_FATAL_FAILURE(expect_same_as_naive(page, true));
        for (int id = 0; id < node_total; id++)
            if (dice.chance(3))
                set_extents(id, {-4.0f, 1.0f, -0.5f, 3.0f}); // another model, a new text
        if (node_total > 0)
            tell_some(&dice);
        ASSERT_NO_FATAL_FAILURE(expect_same_as_naive(page, true));
    }
}

} // namespace
