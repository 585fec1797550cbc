#include "tests/unit/all_trees.h"
#include "tests/unit/tree_text.h"

#include <set>

// Every tree of up to six items with up to two submenus, whichever of its items are separators,
// every item moved up and down, against rules that know nothing of how the program decides: written
// as text, an item that is no submenu changes places with the sign next to it, be it a letter or a
// bracket; a submenu changes places with the entry of the top level next to it.

static std::vector<std::string> signs(const std::string &text) {
    std::vector<std::string> all;
    for (const char sign : text) {
        if (sign == '[')
            all.back() += sign;
        else
            all.emplace_back(1, sign);
    }
    return all;
}

static std::vector<std::string> entries(const std::string &text) {
    std::vector<std::string> all;
    bool open = false;
    for (const char sign : text) {
        if (open || sign == '[')
            all.back() += sign;
        else
            all.emplace_back(1, sign);
        open = sign != ']' && (open || sign == '[');
    }
    return all;
}

static std::string moved(const std::string &text, char letter, int direction) {
    std::vector<std::string> parts = is_submenu_letter(letter) ? entries(text) : signs(text);
    for (std::size_t i = 0; i < parts.size(); i++) {
        const std::size_t other = i + static_cast<std::size_t>(direction);
        if (parts[i][0] != letter || other >= parts.size())
            continue;
        std::swap(parts[i], parts[other]);
        break;
    }
    std::string joined;
    for (const std::string &part : parts)
        joined += part;
    return joined;
}

// The letters in order, so that the trees can be told apart by their shape alone.
static std::string shape(std::string text) {
    int next = 0;
    for (char &sign : text) {
        if (sign >= 'a')
            sign = static_cast<char>('a' + next++);
        else if (sign <= 'Z')
            sign = static_cast<char>('A' + next++);
    }
    return text;
}

static void expect_records_agree() {
    EXPECT_EQ(action_tree.total, dialog_options_action_total);
    for (std::int32_t i = 0; i < action_tree.total; i++) {
        const TreeItem &item = action_tree.item[i];
        const Action *record = action_tree_record(item.id);
        ASSERT_NE(record, nullptr);
        EXPECT_EQ(record->owner, item.parent);
        EXPECT_TRUE(item.expanded);
        if (record->type == ACTION_SUBMENU) {
            EXPECT_EQ(item.parent, TREE_NONE);
        }
    }
}

static void expect_record_kept(const Action &record, const std::string &separators) {
    const char letter = tree_letter(record);
    const std::string name(1, letter);
    if (is_submenu_letter(letter)) {
        EXPECT_EQ(record.name, name);
    } else if (separators.find(letter) != std::string::npos) {
        EXPECT_EQ(record.type, ACTION_SEPARATOR);
        EXPECT_STREQ(record.name, "");
    } else {
        EXPECT_EQ(record.type, ACTION_COMMAND);
        EXPECT_EQ(record.name, name);
        EXPECT_EQ(record.command, "run " + name);
    }
}

static void expect_saved_as(const std::string &expected, const std::string &separators) {
    ActionNode target;
    dialog_object_save_actions(&target.node);
    EXPECT_EQ(target.text(), expected);
    for (std::int32_t i = 0; i < target.node.action_count; i++)
        expect_record_kept(*target.node.actions[i], separators);
    dialog_object_load_actions(&target.node);
    EXPECT_EQ(tree_text(), shape(expected));
}

static void move_selected(int direction) {
    if (direction < 0)
        dialog_object_move_selected_action_up();
    else
        dialog_object_move_selected_action_down();
}

static void expect_moves_past_one_thing(const std::string &text, const std::string &separators,
                                        char letter, int direction) {
    SCOPED_TRACE(text + " (" + separators + ") " + letter + (direction < 0 ? " up" : " down"));
    load_tree(text, separators.c_str());
    action_tree_select(tree_id(letter));
    move_selected(direction);
    const std::string expected = moved(text, letter, direction);
    EXPECT_EQ(tree_text(), expected);
    EXPECT_EQ(action_tree.selected, tree_id(letter));
    expect_records_agree();
    expect_saved_as(expected, separators);
}

TEST(ActionTreeMoves, the_trees_are_all_there) {
    const std::vector<std::string> trees = all_trees();
    EXPECT_EQ(std::set<std::string>(trees.begin(), trees.end()).size(), TREES);
    std::size_t kinds = 0;
    for (const std::string &text : trees)
        kinds += all_separators(text).size();
    EXPECT_EQ(kinds, KINDS);
}

TEST(ActionTreeMoves, the_rules_that_they_are_held_against_say_what_they_should) {
    EXPECT_EQ(moved("aB[cd]e", 'c', 1), "aB[dc]e");
    EXPECT_EQ(moved("aB[cd]e", 'c', -1), "acB[d]e");
    EXPECT_EQ(moved("aB[cd]e", 'd', 1), "aB[c]de");
    EXPECT_EQ(moved("aB[cd]e", 'B', 1), "aeB[cd]");
    EXPECT_EQ(moved("aB[cd]e", 'B', -1), "B[cd]ae");
    EXPECT_EQ(moved("ab", 'b', 1), "ab");
    EXPECT_EQ(moved("ab", 'a', -1), "ab");
}

TEST(ActionTreeMoves, every_item_of_every_small_tree_moves_past_exactly_one_thing) {
    for (const std::string &text : all_trees()) {
        for (const std::string &separators : all_separators(text)) {
            for (const char letter : letters_of(text)) {
                for (const int direction : {-1, 1})
                    expect_moves_past_one_thing(text, separators, letter, direction);
                if (testing::Test::HasFailure())
                    return;
            }
        }
    }
}

TEST(ActionTreeMoves, a_button_is_dark_just_where_its_move_changes_nothing) {
    for (const std::string &text : all_trees()) {
        for (const char letter : letters_of(text)) {
            load_tree(text);
            action_tree_select(tree_id(letter));
            const UpDownState state = dialog_object_updown_state();
            EXPECT_EQ(state.up, moved(text, letter, -1) != text) << text << ' ' << letter;
            EXPECT_EQ(state.down, moved(text, letter, 1) != text) << text << ' ' << letter;
        }
    }
}

TEST(ActionTreeMoves, saving_and_loading_keeps_every_tree) {
    for (const std::string &text : all_trees()) {
        for (const std::string &separators : all_separators(text)) {
            SCOPED_TRACE(text + " (" + separators + ")");
            load_tree(text, separators.c_str());
            EXPECT_EQ(tree_text(), text);
            expect_saved_as(text, separators);
        }
    }
}

TEST(ActionTreeMoves, down_and_then_up_brings_every_item_back) {
    for (const std::string &text : all_trees()) {
        for (const char letter : letters_of(text)) {
            if (moved(text, letter, 1) == text)
                continue;
            load_tree(text);
            action_tree_select(tree_id(letter));
            dialog_object_move_selected_action_down();
            dialog_object_move_selected_action_up();
            EXPECT_EQ(tree_text(), text) << letter;
        }
    }
}
