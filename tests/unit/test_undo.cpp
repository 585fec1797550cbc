#include "tests/support/short_memory.h"
#include "tests/unit/edit_fixture.h"

#include <climits>
#include <vector>

struct Undo : Edit {
    Undo() {
        orvanel_options.object_transitions = 0;
        add_node(NODE_OBJECT, "first", 0.0f, 0.0f);
        add_node(NODE_OBJECT, "second", 10.0f, 0.0f);
        add_action(0, "Open", "c:\\open.exe");
        add_action(0, "Close", "c:\\close.exe");
        line_create_from_ids(0, 1);
        stage_draw();
    }
};

// ---- back and forth

TEST_F(Undo, what_is_changed_after_a_push_leaves_the_snapshot_alone) {
    const std::string before = page_text();
    undo_push();
    text_copy(node[0].name, "other");
    text_copy(node[0].actions[1]->command, "c:\\other.exe");
    node[0].actions[0]->type = ACTION_SEPARATOR;
    node[0].action_count = 1;
    node_delete_node(1);
    ASSERT_NE(page_text(), before);
    undo_pop();
    EXPECT_EQ(page_text(), before);
    EXPECT_EQ(line_total, 1);
}

TEST_F(Undo, redo_restores_the_state_before_the_undo) {
    move_node(0, 5.0f, 5.0f);
    rename_node(1, "renamed");
    const std::string newest = page_text();
    undo_pop();
    const std::string middle = page_text();
    undo_pop();
    EXPECT_EQ(node[0].x, 0.0f);
    redo_pop();
    EXPECT_EQ(page_text(), middle);
    redo_pop();
    EXPECT_EQ(page_text(), newest);
    EXPECT_EQ(redo_available(), 1);
}

TEST_F(Undo, a_redo_leaves_the_rest_of_the_redo_stack_and_a_new_edit_empties_it) {
    for (int i = 1; i <= 3; i++)
        move_node(0, static_cast<float>(i), 0.0f);
    undo_pop();
    undo_pop();
    undo_pop();
    EXPECT_EQ(redo_total, 3);
    redo_pop();
    EXPECT_EQ(redo_total, 2);
    EXPECT_EQ(undo_total, 1);
    move_node(0, 50.0f, 0.0f);
    EXPECT_EQ(redo_total, 0);
    EXPECT_EQ(undo_total, 2);
}

TEST_F(Undo, undo_with_nothing_to_undo_changes_nothing_and_leaves_the_redo_stack) {
    move_node(0, 5.0f, 5.0f);
    undo_pop();
    const std::string page = page_text();
    ASSERT_EQ(redo_total, 1);
    undo_pop();
    EXPECT_EQ(page_text(), page);
    EXPECT_EQ(undo_total, 0);
    EXPECT_EQ(redo_total, 1);
}

TEST_F(Undo, redo_with_nothing_to_redo_changes_nothing_and_leaves_the_undo_stack) {
    move_node(0, 5.0f, 5.0f);
    const std::string page = page_text();
    redo_pop();
    EXPECT_EQ(page_text(), page);
    EXPECT_EQ(undo_total, 1);
}

TEST_F(Undo, available_answers_1_for_an_empty_stack) {
    EXPECT_EQ(undo_available(), 1);
    EXPECT_EQ(redo_available(), 1);
    move_node(0, 5.0f, 5.0f);
    EXPECT_EQ(undo_available(), 0);
    EXPECT_EQ(redo_available(), 1);
    undo_pop();
    EXPECT_EQ(undo_available(), 1);
    EXPECT_EQ(redo_available(), 0);
}

TEST_F(Undo, a_reset_empties_both_stacks_and_leaves_the_page) {
    move_node(0, 1.0f, 0.0f);
    move_node(0, 2.0f, 0.0f);
    undo_pop();
    undo_reset();
    EXPECT_EQ(undo_total, 0);
    EXPECT_EQ(redo_total, 0);
    undo_pop();
    redo_pop();
    EXPECT_EQ(node[0].x, 1.0f);
}

// ---- a full stack

TEST_F(Undo, the_51st_push_discards_the_oldest_and_50_undos_restore_the_newest_in_reverse_order) {
    std::vector<std::string> states;
    for (int i = 0; i <= 50; i++) {
        states.push_back(page_text());
        // Every state differs in nodes, actions and links.
        undo_push();
        redo_reset();
        const std::int32_t id =
            add_node(NODE_OBJECT, std::to_string(i).c_str(), static_cast<float>(i), 30.0f);
        add_action(id, "Go", std::to_string(i).c_str());
        line_create_from_ids(0, id);
        undo_duplicate_check(id);
    }
    EXPECT_EQ(undo_total, 50);
    for (std::size_t i = 50; i >= 1; i--) {
        undo_pop();
        EXPECT_EQ(page_text(), states[i]) << i;
    }
    EXPECT_EQ(undo_available(), 1);
    undo_pop();
    EXPECT_EQ(page_text(), states[1]);
    for (std::size_t i = 2; i <= 50; i++) {
        redo_pop();
        EXPECT_EQ(page_text(), states[i]) << i;
    }
}

TEST_F(Undo, each_snapshot_of_a_full_stack_keeps_memory_of_its_own) {
    const Node *first_nodes = undo_stack[0].nodes;
    const Line *last_lines = undo_stack[49].lines;
    for (int i = 0; i < 120; i++)
        move_node(0, static_cast<float>(i + 1), 0.0f);
    EXPECT_EQ(undo_stack[0].nodes, first_nodes);
    EXPECT_EQ(undo_stack[49].lines, last_lines);
    for (int i = 0; i < 49; i++) {
        EXPECT_NE(undo_stack[i].nodes, undo_stack[i + 1].nodes);
        EXPECT_NE(undo_stack[i].nodes[0].actions[0], undo_stack[i + 1].nodes[0].actions[0]);
        EXPECT_EQ(undo_stack[i].nodes[0].x, static_cast<float>(70 + i));
    }
}

TEST_F(Undo, calling_off_the_51st_change_has_still_lost_the_oldest) {
    for (int i = 0; i < 50; i++)
        move_node(0, static_cast<float>(i + 1), 0.0f);
    undo_push();
    EXPECT_EQ(undo_total, 50);
    undo_reject();
    EXPECT_EQ(undo_total, 49);
    EXPECT_EQ(undo_stack[0].nodes[0].x, 1.0f);
}

// ---- changes that are none

TEST_F(Undo, confirming_a_dialog_without_a_change_leaves_no_snapshot) {
    move_node(0, 5.0f, 0.0f);
    undo_push();
    redo_reset();
    undo_duplicate_check(1);
    EXPECT_EQ(undo_total, 1);
}

TEST_F(Undo, editing_only_what_an_action_says_leaves_no_snapshot) {
    undo_push();
    redo_reset();
    text_copy(node[0].actions[0]->command, "c:\\another.exe");
    text_copy(node[0].actions[1]->name, "Another");
    node[0].actions[1]->type = ACTION_SUBMENU;
    undo_duplicate_check(0);
    EXPECT_EQ(undo_total, 0);
}

static void expect_kept(const char *what, void (*change)()) {
    undo_reset();
    undo_push();
    undo_pop();
    ASSERT_EQ(redo_total, 1);
    undo_push();
    change();
    undo_duplicate_check(0);
    EXPECT_EQ(undo_total, 1) << what;
    EXPECT_EQ(redo_total, 0) << what;
}

TEST_F(Undo, a_change_of_place_model_name_description_or_number_of_actions_is_kept) {
    expect_kept("x", [] { node[0].x += 0.001f; });
    expect_kept("y", [] { node[0].y -= 0.001f; });
    expect_kept("model", [] { node[0].model_id++; });
    expect_kept("name", [] { text_copy(node[0].name, "First"); });
    expect_kept("description", [] { text_copy(node[0].description, "on the left"); });
    expect_kept("actions", [] { node[0].action_count--; });
}

TEST_F(Undo, an_unchanged_check_leaves_the_redo_stack) {
    move_node(0, 5.0f, 0.0f);
    undo_pop();
    undo_push(); // the start of a drag
    undo_duplicate_check(0);
    EXPECT_EQ(undo_total, 0);
    EXPECT_EQ(redo_total, 1);
}

TEST_F(Undo, a_node_that_the_newest_snapshot_does_not_hold_counts_as_changed) {
    // The entry of a third node holds what a longer page left there.
    add_node(NODE_OBJECT, "third", 20.0f, 0.0f);
    undo_push();
    undo_reject();
    node_total = 2;
    undo_push();
    redo_reset();
    add_node(NODE_OBJECT, "third", 20.0f, 0.0f);
    undo_duplicate_check(2);
    EXPECT_EQ(undo_total, 1);
}

TEST_F(Undo, a_node_that_is_gone_counts_as_changed) {
    undo_push();
    node_delete_node(1);
    undo_duplicate_check(1);
    EXPECT_EQ(undo_total, 1);
}

TEST_F(Undo, an_index_of_no_node_counts_as_changed_and_is_never_followed) {
    for (const std::int32_t index : {-1, -2, 2, 254, 255, 256, 100'000, INT_MAX, INT_MIN}) {
        undo_reset();
        undo_push();
        undo_duplicate_check(index);
        EXPECT_EQ(undo_total, 1) << index;
    }
}

TEST_F(Undo, a_check_without_a_snapshot_does_nothing) {
    undo_push();
    undo_pop();
    ASSERT_EQ(redo_total, 1);
    undo_duplicate_check(0);
    undo_duplicate_check(-1);
    EXPECT_EQ(undo_total, 0);
    EXPECT_EQ(redo_total, 1);
}

TEST_F(Undo, cancelling_a_dialog_leaves_the_undo_stack_as_it_was_and_the_redo_stack_empty) {
    move_node(0, 5.0f, 0.0f);
    move_node(0, 6.0f, 0.0f);
    undo_pop();
    undo_push();
    redo_reset();
    undo_reject();
    EXPECT_EQ(undo_total, 1);
    EXPECT_EQ(redo_total, 0);
    undo_pop();
    EXPECT_EQ(node[0].x, 0.0f);
}

TEST_F(Undo, rejecting_without_a_snapshot_does_nothing) {
    undo_reject();
    EXPECT_EQ(undo_total, 0);
    undo_push();
    EXPECT_EQ(undo_total, 1);
}

// ---- other pages

TEST_F(Undo, a_snapshot_of_another_page_is_never_put_back) {
    move_node(0, 5.0f, 0.0f);
    move_node(0, 6.0f, 0.0f);
    undo_pop();
    text_copy(scene_page_file_name, "other.orvl");
    node_total = 1;
    const std::string other = page_text();
    EXPECT_EQ(undo_available(), 1);
    EXPECT_EQ(redo_available(), 1);
    undo_pop();
    redo_pop();
    EXPECT_EQ(page_text(), other);
}

TEST_F(Undo, a_push_on_another_page_begins_a_new_history) {
    move_node(0, 5.0f, 0.0f);
    move_node(0, 6.0f, 0.0f);
    undo_pop();
    text_copy(scene_page_file_name, "other.orvl");
    undo_push();
    EXPECT_EQ(undo_total, 1);
    EXPECT_EQ(redo_total, 0);
}

TEST_F(Undo, a_check_on_another_page_forgets_the_history_for_good) {
    move_node(0, 5.0f, 0.0f);
    text_copy(scene_page_file_name, "other.orvl");
    undo_duplicate_check(1);
    EXPECT_EQ(undo_total, 0);
    text_copy(scene_page_file_name, "edited.orvl");
    EXPECT_EQ(undo_available(), 1);
}

// ---- memory

// Requests of undo_init: a stack, then nodes and lines of each entry in turn.
static constexpr std::int32_t STACK_REQUESTS = 1 + 2 * UNDO_CAPACITY;

static std::vector<ShownMessage> init_without(std::int32_t refused) {
    undo_stop();
    MessageScript script;
    const ShortMemory memory(refused);
    undo_init();
    return script.shown();
}

static void expect_message(std::int32_t refused, const char *text) {
    const std::vector<ShownMessage> shown = init_without(refused);
    ASSERT_EQ(shown.size(), 1u) << refused;
    EXPECT_EQ(shown[0].text, text) << refused;
    EXPECT_EQ(shown[0].caption, "Orvanel");
}

TEST_F(Undo, all_memory_but_for_actions_is_taken_at_the_start) {
    undo_stop();
    {
        const ShortMemory memory;
        undo_init();
        EXPECT_EQ(memory.requests(), 2 * STACK_REQUESTS);
    }
    undo_push(); // the actions' slots are filled for the first time
    undo_reject();
    const ShortMemory memory;
    undo_push();
    EXPECT_EQ(memory.requests(), 0);
    undo_push();
    EXPECT_EQ(memory.requests(), 2); // the two actions, in the second entry
}

TEST_F(Undo, the_history_stops_allocating_when_it_has_been_full_once) {
    for (int i = 0; i < 60; i++)
        move_node(0, static_cast<float>(i + 1), 0.0f);
    for (int i = 0; i < 50; i++)
        undo_pop();
    const ShortMemory memory;
    for (int i = 0; i < 50; i++)
        redo_pop();
    for (int i = 0; i < 60; i++)
        move_node(0, static_cast<float>(i + 100), 0.0f);
    EXPECT_EQ(memory.requests(), 0);
}

TEST_F(Undo, missing_memory_for_the_undo_stack_is_message_1) {
    expect_message(1, "Failed to allocate undo memory (1)");
    EXPECT_EQ(undo_stack, nullptr);
    EXPECT_NE(redo_stack[49].lines, nullptr);
}

TEST_F(Undo, missing_memory_for_nodes_of_the_undo_stack_is_message_2_and_ends_its_allocation) {
    expect_message(2, "Failed to allocate undo memory (2)");
    EXPECT_EQ(undo_stack[0].nodes, nullptr);
    expect_message(2 + 2 * 7, "Failed to allocate undo memory (2)");
    EXPECT_NE(undo_stack[6].lines, nullptr);
    for (int i = 7; i < 50; i++) {
        EXPECT_EQ(undo_stack[i].nodes, nullptr);
        EXPECT_EQ(undo_stack[i].lines, nullptr);
    }
    EXPECT_NE(redo_stack[49].lines, nullptr);
}

TEST_F(Undo, missing_memory_for_lines_of_either_stack_is_message_3_and_ends_its_allocation) {
    expect_message(3 + 2 * 49, "Failed to allocate undo memory (3)");
    EXPECT_NE(undo_stack[49].nodes, nullptr);
    EXPECT_EQ(undo_stack[49].lines, nullptr);
    expect_message(STACK_REQUESTS + 3, "Failed to allocate undo memory (3)");
    EXPECT_NE(undo_stack[49].lines, nullptr);
    EXPECT_NE(redo_stack[0].nodes, nullptr);
    EXPECT_EQ(redo_stack[0].lines, nullptr);
    EXPECT_EQ(redo_stack[1].nodes, nullptr);
}

TEST_F(Undo, missing_memory_for_the_redo_stack_is_message_4) {
    expect_message(STACK_REQUESTS + 1, "Failed to allocate undo memory (4)");
    EXPECT_NE(undo_stack[49].lines, nullptr);
    EXPECT_EQ(redo_stack, nullptr);
}

TEST_F(Undo, missing_memory_for_nodes_of_the_redo_stack_is_message_5) {
    expect_message(STACK_REQUESTS + 2, "Failed to allocate undo memory (5)");
    EXPECT_EQ(redo_stack[0].nodes, nullptr);
}

TEST_F(Undo, without_an_undo_stack_nothing_can_be_undone_and_nothing_breaks) {
    for (const std::int32_t refused : {1, 2, 3, 52, 53, STACK_REQUESTS}) {
        init_without(refused);
        for (int i = 0; i < 60; i++)
            undo_push();
        EXPECT_EQ(undo_total, 0) << refused;
        undo_duplicate_check(0);
        undo_reject();
        undo_pop();
        redo_pop();
        EXPECT_EQ(undo_available(), 1);
        EXPECT_EQ(redo_available(), 1);
        EXPECT_EQ(node_total, 2);
    }
}

TEST_F(Undo, without_a_redo_stack_changes_can_still_be_undone) {
    for (const std::int32_t refused : {1, 2, 3, 52, 53, STACK_REQUESTS}) {
        init_without(STACK_REQUESTS + refused);
        move_node(0, 5.0f, 0.0f);
        undo_pop();
        EXPECT_EQ(node[0].x, 0.0f) << refused;
        EXPECT_EQ(redo_total, 0);
        redo_pop();
        EXPECT_EQ(node[0].x, 0.0f);
    }
}

TEST_F(Undo, a_snapshot_without_memory_is_neither_filled_nor_put_back) {
    UndoSnapshot none = {};
    EXPECT_FALSE(undo_common_stack_push(&none));
    none.node_count = 1;
    undo_common_stack_pop(&none);
    EXPECT_EQ(node_total, 2);
}

TEST_F(Undo, a_snapshot_whose_actions_find_no_memory_ends_the_history_instead_of_losing_them) {
    move_node(0, 5.0f, 0.0f);
    const std::string page = page_text();
    {
        const ShortMemory memory(2);
        undo_push();
    }
    EXPECT_EQ(undo_total, 0);
    undo_reject();
    undo_pop();
    EXPECT_EQ(page_text(), page);
    undo_push();
    EXPECT_EQ(undo_total, 1);
}

TEST_F(Undo, when_a_full_stack_finds_no_memory_for_a_node_with_more_actions_it_ends) {
    for (int i = 0; i < 50; i++)
        move_node(0, static_cast<float>(i + 1), 0.0f);
    add_action(0, "Third", "c:\\third.exe");
    move_node(0, 60.0f, 0.0f); // only the newest entry has a third record
    {
        const ShortMemory memory(1);
        move_node(0, 61.0f, 0.0f); // the shift needs one in the entry before
    }
    EXPECT_EQ(undo_total, 0);
}

TEST_F(Undo, an_undo_that_finds_no_memory_for_the_redo_stack_is_carried_out_all_the_same) {
    move_node(0, 5.0f, 0.0f);
    {
        const ShortMemory memory(1);
        undo_pop();
    }
    EXPECT_EQ(node[0].x, 0.0f);
    EXPECT_EQ(redo_total, 0);
}

TEST_F(Undo, a_redo_that_finds_no_memory_for_the_undo_stack_is_carried_out_all_the_same) {
    move_node(0, 5.0f, 0.0f);
    undo_pop();
    node_free_node_actions(&undo_stack[0].nodes[0]);
    {
        const ShortMemory memory(1);
        redo_pop();
    }
    EXPECT_EQ(node[0].x, 5.0f);
    EXPECT_EQ(undo_total, 0);
}

TEST_F(Undo, a_page_of_255_nodes_and_255_links_comes_back_whole) {
    while (node_total < NODE_CAPACITY) {
        const auto id = static_cast<float>(node_total);
        add_node(NODE_OBJECT, "server", id, -id);
    }
    for (std::int32_t id = 2; line_total < LINE_CAPACITY; id++)
        line_create_from_ids(id % NODE_CAPACITY, (id + 2) % NODE_CAPACITY);
    const std::string full = page_text();
    undo_push();
    redo_reset();
    node_delete_node(0);
    node_delete_node(100);
    undo_pop();
    EXPECT_EQ(page_text(), full);
    redo_pop();
    EXPECT_EQ(node_total, 253);
}
