#include "dialogs/rules/action_tree.h"

#include "tests/unit/tree_text.h"

#include <random>

// ---- loading

TEST(
    ActionTree,
    a_page_file_whose_owner_number_names_a_submenu_that_does_not_exist_loads_the_item_at_the_top_level) {
    ActionNode source;
    source.add(ACTION_COMMAND, "lost", 2);
    source.add(ACTION_SUBMENU, "menu", 0);
    source.add(ACTION_COMMAND, "found", 1);
    source.add(ACTION_COMMAND, "below zero", -5);
    dialog_object_load_actions(&source.node);
    EXPECT_EQ(tree_text(), "aB[c]d");
    EXPECT_EQ(action_tree_record(0)->owner, TREE_NONE);
    EXPECT_EQ(action_tree_record(2)->owner, 1);
}

TEST(ActionTree, the_first_item_is_selected_when_the_tree_is_loaded) {
    load_tree("ab");
    EXPECT_EQ(action_tree.selected, 0);
    load_tree("");
    EXPECT_EQ(action_tree.selected, TREE_NONE);
    dialog_object_load_actions(nullptr);
    EXPECT_EQ(action_tree.selected, TREE_NONE);
    EXPECT_EQ(dialog_options_action_total, 0);
}

TEST(ActionTree, items_stand_below_their_submenu_wherever_the_list_has_them) {
    ActionNode source;
    source.add(ACTION_COMMAND, "of the second", 2);
    source.add(ACTION_SUBMENU, "first", 0);
    source.add(ACTION_SUBMENU, "second", 0);
    source.add(ACTION_COMMAND, "of the first", 1);
    dialog_object_load_actions(&source.node);
    EXPECT_EQ(tree_text(), "B[d]C[a]");
}

TEST(ActionTree, a_submenu_stands_at_the_top_level_whatever_its_owner_says) {
    ActionNode source;
    source.add(ACTION_SUBMENU, "owns itself", 1);
    source.add(ACTION_SUBMENU, "owned", 1);
    dialog_object_load_actions(&source.node);
    EXPECT_EQ(tree_text(), "A[]B[]");
}

TEST(ActionTree, a_loaded_record_holds_its_own_identifier_and_that_of_its_submenu) {
    load_tree("aB[c]");
    EXPECT_EQ(treeview_id_total, 3);
    for (std::int32_t i = 0; i < 3; i++) {
        EXPECT_EQ(dialog_options_action[i].menu_slot, i);
        EXPECT_EQ(dialog_object_get_action_id_from_treeview_id(i), i);
    }
    EXPECT_EQ(dialog_object_get_action_id_from_treeview_id(3), -1);
    EXPECT_EQ(dialog_object_get_action_id_from_treeview_id(TREE_NONE), -1);
}

TEST(ActionTree, a_full_node_loads_and_one_with_an_impossible_count_does_no_harm) {
    ActionNode source;
    for (std::int32_t i = 0; i < NODE_ACTIONS; i++)
        source.add(ACTION_COMMAND, "a", 0);
    source.node.action_count = NODE_ACTIONS + 7;
    dialog_object_load_actions(&source.node);
    EXPECT_EQ(dialog_options_action_total, NODE_ACTIONS);
    source.node.action_count = -3;
    dialog_object_load_actions(&source.node);
    EXPECT_EQ(dialog_options_action_total, 0);
    source.node.action_count = NODE_ACTIONS;
}

// ---- saving

TEST(ActionTree, saving_after_collapsing_a_submenu_by_hand_drops_that_submenus_children) {
    load_tree("aB[cd]e");
    action_tree_expand(tree_id('B'), false);
    EXPECT_EQ(saved_text(), "aB[]e");
    action_tree_expand(tree_id('B'), true);
    EXPECT_EQ(saved_text(), "aB[cd]e");
}

TEST(ActionTree, saving_an_empty_tree_leaves_no_action) {
    load_tree("ab");
    dialog_object_delete_action();
    dialog_object_delete_action();
    ActionNode target;
    add_actions(&target, "ab");
    dialog_object_save_actions(&target.node);
    EXPECT_EQ(target.node.action_count, 0);
}

TEST(ActionTree, saving_writes_into_the_records_that_are_there) {
    load_tree("ab");
    ActionNode target;
    add_actions(&target, "x");
    const Action *kept = target.node.actions[0];
    dialog_object_save_actions(&target.node);
    EXPECT_EQ(target.node.actions[0], kept);
    EXPECT_EQ(target.text(), "ab");
    EXPECT_STREQ(target.node.actions[0]->name, "a");
}

TEST(ActionTree, the_number_of_a_submenu_follows_the_new_order) {
    load_tree("A[b]C[d]");
    action_tree_select(tree_id('C'));
    dialog_object_move_selected_action_up();
    ActionNode target;
    dialog_object_save_actions(&target.node);
    EXPECT_EQ(target.text(), "C[d]A[b]");
    EXPECT_EQ(target.node.actions[1]->owner, 1);
    EXPECT_EQ(target.node.actions[3]->owner, 2);
}

// ---- moving

TEST(ActionTree, moving_an_item_down_past_the_last_child_of_a_submenu_takes_it_out_of_the_submenu) {
    EXPECT_EQ(after_down("A[bc]d", 'c'), "A[b]cd");
    EXPECT_EQ(after_down("A[b]C[d]", 'b'), "A[]bC[d]");
}

TEST(ActionTree, the_last_child_of_the_last_submenu_becomes_the_last_item) {
    EXPECT_EQ(after_down("aB[cd]", 'd'), "aB[c]d");
}

TEST(ActionTree, moving_it_down_onto_a_submenu_header_puts_it_inside_as_the_first_child) {
    EXPECT_EQ(after_down("aB[c]", 'a'), "B[ac]");
    EXPECT_EQ(action_tree_record(0)->owner, tree_id('B'));
}

TEST(ActionTree, submenus_never_become_children_of_submenus_by_moving) {
    EXPECT_EQ(after_down("A[b]C[d]", 'A'), "C[d]A[b]");
    EXPECT_EQ(after_up("A[b]C[d]", 'C'), "C[d]A[b]");
    EXPECT_EQ(after_up("aB[]C[d]", 'C'), "aC[d]B[]");
    EXPECT_EQ(after_down("A[b]", 'A'), "A[b]");
    EXPECT_EQ(after_up("A[b]", 'A'), "A[b]");
}

TEST(ActionTree, moving_up_enters_a_submenu_from_below_as_its_last_child) {
    EXPECT_EQ(after_up("A[b]c", 'c'), "A[bc]");
    EXPECT_EQ(after_up("A[]b", 'b'), "A[b]");
    EXPECT_EQ(after_up("aB[]c", 'c'), "aB[c]");
}

TEST(ActionTree, moving_the_first_child_up_leaves_the_submenu) {
    EXPECT_EQ(after_up("A[bc]", 'b'), "bA[c]");
    EXPECT_EQ(after_up("A[b]C[d]", 'd'), "A[b]dC[]");
}

TEST(ActionTree, a_collapsed_submenu_is_passed_or_opened_as_what_can_be_seen_says) {
    load_tree("aB[cd]e");
    action_tree_expand(tree_id('B'), false);
    action_tree_select(tree_id('e'));
    dialog_object_move_selected_action_up(); // the submenu is what is seen above it
    EXPECT_EQ(tree_text(), "aB[ecd]");
    EXPECT_TRUE(action_tree.item[1].expanded);

    load_tree("A[bc]d");
    action_tree_expand(tree_id('A'), false);
    action_tree_select(tree_id('d'));
    dialog_object_move_selected_action_up(); // nothing is seen above the submenu
    EXPECT_EQ(tree_text(), "A[bcd]");
    EXPECT_TRUE(action_tree.item[0].expanded);

    load_tree("A[bc]de");
    action_tree_expand(tree_id('A'), false);
    action_tree_select(tree_id('e'));
    dialog_object_move_selected_action_up();
    EXPECT_EQ(tree_text(), "A[bc]ed");
    EXPECT_FALSE(action_tree.item[0].expanded);
}

TEST(ActionTree, a_collapsed_submenu_is_open_again_after_it_moved) {
    load_tree("aB[c]");
    action_tree_expand(tree_id('B'), false);
    action_tree_select(tree_id('B'));
    dialog_object_move_selected_action_up();
    EXPECT_EQ(tree_text(), "B[c]a");
    EXPECT_TRUE(action_tree.item[0].expanded);
}

TEST(ActionTree, the_second_child_that_moves_up_stores_the_place_of_its_submenu_in_the_list) {
    load_tree("aB[cd]");
    dialog_object_delete_action(); // 'B' is record 0 now and still has identifier 1
    action_tree_select(tree_id('d'));
    dialog_object_move_selected_action_up();
    EXPECT_EQ(tree_text(), "B[dc]");
    EXPECT_EQ(action_tree_record(tree_id('d'))->owner, 0);
}

// "B[dce]", where B is record 0 and still has identifier 1, and 'd' has stored that 0.
static void load_tree_with_a_stored_place() {
    load_tree("aB[cde]");
    dialog_object_delete_action();
    action_tree_select(tree_id('d'));
    dialog_object_move_selected_action_up();
}

static void move_up(char letter) {
    action_tree_select(tree_id(letter));
    dialog_object_move_selected_action_up();
}

static std::int32_t stored_owner(char letter) {
    return action_tree_record(tree_id(letter))->owner;
}

TEST(ActionTree, an_item_that_moves_up_within_its_submenu_keeps_the_owner_it_has_stored) {
    load_tree_with_a_stored_place();
    move_up('c');
    move_up('e');
    EXPECT_EQ(tree_text(), "B[ced]");
    EXPECT_EQ(stored_owner('e'), tree_id('B'));
    move_up('d');
    EXPECT_EQ(tree_text(), "B[cde]");
    EXPECT_EQ(stored_owner('d'), 0);
}

TEST(ActionTree, an_item_that_moves_down_behind_another_takes_the_owner_that_one_has_stored) {
    load_tree_with_a_stored_place();
    move_up('c'); // stores 0 as well
    action_tree_select(tree_id('c'));
    dialog_object_move_selected_action_down();
    EXPECT_EQ(tree_text(), "B[dce]");
    EXPECT_EQ(stored_owner('c'), 0);
    dialog_object_move_selected_action_down();
    EXPECT_EQ(tree_text(), "B[dec]");
    EXPECT_EQ(stored_owner('c'), tree_id('B'));
}

TEST(ActionTree,
     an_item_that_enters_a_submenu_from_below_takes_the_owner_its_last_child_has_stored) {
    load_tree_with_a_stored_place();
    for (const char letter : {'c', 'e'}) { // out at the bottom
        action_tree_select(tree_id(letter));
        while (action_tree_record(tree_id(letter))->owner != TREE_NONE)
            dialog_object_move_selected_action_down();
    }
    ASSERT_EQ(tree_text(), "B[d]ec");
    move_up('e');
    EXPECT_EQ(tree_text(), "B[de]c");
    EXPECT_EQ(stored_owner('e'), 0);
}

TEST(ActionTree, nothing_moves_without_a_selection) {
    load_tree("ab");
    action_tree_select(TREE_NONE);
    dialog_object_move_selected_action_up();
    dialog_object_move_selected_action_down();
    EXPECT_EQ(tree_text(), "ab");
    const UpDownState state = dialog_object_updown_state();
    EXPECT_FALSE(state.up);
    EXPECT_FALSE(state.down);
}

// ---- new actions

TEST(ActionTree, a_new_action_goes_where_the_selection_is) {
    load_tree("");
    EXPECT_EQ(dialog_object_new_action(), 0);
    EXPECT_EQ(tree_text(), "a");
    EXPECT_EQ(dialog_object_new_action(), 1);
    EXPECT_EQ(tree_text(), "ab");
    load_tree("A[bc]d");
    dialog_object_new_action(); // the submenu is selected
    EXPECT_EQ(tree_text(), "A[ebc]d");
    action_tree_select(tree_id('b'));
    dialog_object_new_action();
    EXPECT_EQ(tree_text(), "A[ebfc]d");
    action_tree_select(tree_id('d'));
    dialog_object_new_action();
    EXPECT_EQ(tree_text(), "A[ebfc]dg");
    EXPECT_EQ(saved_text(), "A[ebfc]dg");
}

TEST(ActionTree, a_new_action_is_a_selected_command_of_that_name_without_a_command) {
    load_tree("a");
    const std::int32_t id = dialog_object_new_action();
    EXPECT_EQ(action_tree.selected, id);
    const Action *record = action_tree_record(id);
    EXPECT_EQ(record->type, ACTION_COMMAND);
    EXPECT_STREQ(record->name, "New action");
    EXPECT_STREQ(record->command, "");
}

TEST(ActionTree, a_new_action_without_a_selection_clears_the_tree) {
    load_tree("aB[c]");
    action_tree_select(TREE_NONE);
    dialog_object_new_action();
    EXPECT_EQ(tree_text(), "d");
    EXPECT_EQ(saved_text(), "d");
}

TEST(ActionTree, a_51st_action_cannot_be_created) {
    load_tree("");
    for (std::int32_t i = 0; i < NODE_ACTIONS; i++)
        EXPECT_EQ(dialog_object_new_action(), i);
    EXPECT_EQ(dialog_object_new_action(), TREE_NONE);
    EXPECT_EQ(dialog_options_action_total, NODE_ACTIONS);
    EXPECT_EQ(action_tree.total, NODE_ACTIONS);
    dialog_object_delete_action();
    EXPECT_EQ(dialog_object_new_action(), NODE_ACTIONS);
}

// ---- deleting

TEST(ActionTree, deleting_an_empty_submenu_asks_nothing) {
    load_tree("A[]B[c]d");
    EXPECT_FALSE(dialog_object_delete_asks());
    action_tree_select(tree_id('B'));
    EXPECT_TRUE(dialog_object_delete_asks());
    action_tree_select(tree_id('d'));
    EXPECT_FALSE(dialog_object_delete_asks());
    action_tree_select(TREE_NONE);
    EXPECT_FALSE(dialog_object_delete_asks());
}

TEST(ActionTree, deleting_a_submenu_takes_its_items_along) {
    load_tree("aB[cd]e");
    action_tree_select(tree_id('B'));
    dialog_object_delete_action();
    EXPECT_EQ(tree_text(), "ae");
    EXPECT_EQ(dialog_options_action_total, 2);
    EXPECT_EQ(action_tree.selected, tree_id('e'));
    EXPECT_EQ(saved_text(), "ae");
}

TEST(ActionTree, after_the_last_item_was_deleted_the_one_above_is_selected) {
    load_tree("ab");
    action_tree_select(tree_id('b'));
    dialog_object_delete_action();
    EXPECT_EQ(action_tree.selected, tree_id('a'));
    dialog_object_delete_action();
    EXPECT_EQ(action_tree.selected, TREE_NONE);
    EXPECT_EQ(action_tree.total, 0);
}

// ---- types and texts

TEST(ActionTree, labels_name_what_has_no_name) {
    Action action = {};
    EXPECT_STREQ(dialog_object_action_label(&action), "Unnamed Action");
    action.type = ACTION_SUBMENU;
    EXPECT_STREQ(dialog_object_action_label(&action), "Unnamed Menu");
    text_copy(action.name, "Tools");
    EXPECT_STREQ(dialog_object_action_label(&action), "Tools");
    action.type = ACTION_SEPARATOR;
    EXPECT_STREQ(dialog_object_action_label(&action), "<Separator>");
}

TEST(ActionTree, an_item_that_becomes_a_submenu_steps_out_of_its_submenu) {
    load_tree("A[bcd]e");
    action_tree_select(tree_id('c'));
    dialog_object_change_action_type(ACTION_SUBMENU);
    EXPECT_EQ(tree_text(), "A[bd]C[]e");
    EXPECT_EQ(saved_text(), "A[bd]C[]e");
}

TEST(ActionTree, the_items_of_a_submenu_that_becomes_a_command_stay_behind_it) {
    load_tree("aB[cd]e");
    action_tree_select(tree_id('B'));
    dialog_object_change_action_type(ACTION_COMMAND);
    EXPECT_EQ(tree_text(), "abcde");
    EXPECT_EQ(saved_text(), "abcde");
}

TEST(ActionTree, an_item_in_a_submenu_may_become_a_separator_and_stays_there) {
    load_tree("A[bc]");
    action_tree_select(tree_id('b'));
    dialog_object_change_action_type(ACTION_SEPARATOR);
    EXPECT_EQ(tree_text(), "A[bc]");
    EXPECT_EQ(action_tree_record(tree_id('b'))->type, ACTION_SEPARATOR);
}

TEST(ActionTree, names_are_cut_at_60_characters_and_commands_at_260) {
    load_tree("a");
    dialog_object_rename_action(0, std::string(61, 'n').c_str());
    dialog_object_set_action_command(0, std::string(261, 'c').c_str());
    EXPECT_EQ(action_tree_record(0)->name, std::string(60, 'n'));
    EXPECT_EQ(action_tree_record(0)->command, std::string(260, 'c'));
    dialog_object_rename_action(9, "nobody");
    dialog_object_set_action_command(TREE_NONE, "nobody");
    EXPECT_EQ(tree_text(), "a");
}

// ---- everything in any order

static void expect_two_levels() {
    ASSERT_EQ(action_tree.total, dialog_options_action_total);
    std::int32_t holder = TREE_NONE;
    for (std::int32_t i = 0; i < action_tree.total; i++) {
        const TreeItem &item = action_tree.item[i];
        const Action *record = action_tree_record(item.id);
        ASSERT_NE(record, nullptr);
        if (item.parent == TREE_NONE)
            holder = record->type == ACTION_SUBMENU ? item.id : TREE_NONE;
        else
            ASSERT_TRUE(item.parent == holder && record->type != ACTION_SUBMENU) << tree_text();
    }
}

static void change_somehow(std::mt19937 *random) {
    const auto below = [random](std::int32_t limit) {
        return static_cast<std::int32_t>((*random)() % static_cast<unsigned>(limit));
    };
    if (action_tree.total > 0)
        action_tree_select(action_tree.item[below(action_tree.total)].id);
    switch (below(8)) {
    case 0:
    case 1:
        dialog_object_new_action();
        break;
    case 2:
        dialog_object_delete_action();
        break;
    case 3:
        dialog_object_change_action_type(below(3));
        break;
    case 4:
        action_tree_expand(action_tree.selected, below(2) == 0);
        break;
    case 5:
        dialog_object_move_selected_action_up();
        break;
    default:
        dialog_object_move_selected_action_down();
        break;
    }
}

TEST(ActionTree, keeps_two_levels_whatever_is_done_in_whatever_order) {
    std::mt19937 random(5);
    for (int run = 0; run < 40; run++) {
        load_tree("aB[cd]E[]f");
        for (int step = 0; step < 400; step++) {
            change_somehow(&random);
            expect_two_levels();
            if (testing::Test::HasFatalFailure())
                return;
        }
        ActionNode target;
        dialog_object_save_actions(&target.node);
        EXPECT_LE(target.node.action_count, action_tree.total);
    }
}
