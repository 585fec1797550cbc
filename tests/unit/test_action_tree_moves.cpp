#include "tests/unit/tree_text.h"

// Every tree of up to six items with up to two submenus, every item moved up and down, against
// rules that know nothing of how the program decides: written as text, an item that is no submenu
// changes places with the sign next to it, be it a letter or a bracket; a submenu changes places
// with the entry of the top level next to it.

static constexpr int MOST_ITEMS = 6;
static constexpr int MOST_SUBMENUS = 2;
static constexpr std::size_t TREES = 189; // 1 + 6 of no, 56 of one and 126 of two submenus

static void grow(const std::string &text, int items, int submenus, bool open,
                 std::vector<std::string> *trees) {
    if (!open)
        trees->push_back(text);
    else
        grow(text + ']', items, submenus, false, trees);
    if (items == MOST_ITEMS)
        return;
    const char letter = static_cast<char>('a' + items);
    grow(text + letter, items + 1, submenus, open, trees);
    if (!open && submenus < MOST_SUBMENUS) {
        const char upper = static_cast<char>('A' + items);
        grow(text + upper + '[', items + 1, submenus + 1, true, trees);
    }
}

static std::vector<std::string> all_trees() {
    std::vector<std::string> trees;
    grow("", 0, 0, false, &trees);
    return trees;
}

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
    std::vector<std::string> parts = letter <= 'Z' ? entries(text) : signs(text);
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

static void expect_saved_as(const std::string &expected) {
    ActionNode target;
    dialog_object_save_actions(&target.node);
    EXPECT_EQ(target.text(), expected);
    dialog_object_load_actions(&target.node);
    EXPECT_EQ(tree_text(), shape(expected));
}

static const char *separators_of(const std::string &text) {
    return text.size() % 2 == 0 ? "bdf" : "ace";
}

TEST(ActionTreeMoves, the_trees_are_all_there) {
    const std::vector<std::string> trees = all_trees();
    EXPECT_EQ(trees.size(), TREES);
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
        for (const char letter : text) {
            if (letter == '[' || letter == ']')
                continue;
            for (const int direction : {-1, 1}) {
                SCOPED_TRACE(text + " " + letter + (direction < 0 ? " up" : " down"));
                load_tree(text, separators_of(text));
                action_tree_select(tree_id(letter));
                if (direction < 0)
                    dialog_object_move_selected_action_up();
                else
                    dialog_object_move_selected_action_down();
                const std::string expected = moved(text, letter, direction);
                ASSERT_EQ(tree_text(), expected);
                EXPECT_EQ(action_tree.selected, tree_id(letter));
                expect_records_agree();
                expect_saved_as(expected);
            }
        }
    }
}

TEST(ActionTreeMoves, a_button_is_dark_just_where_its_move_changes_nothing) {
    for (const std::string &text : all_trees()) {
        for (const char letter : text) {
            if (letter == '[' || letter == ']')
                continue;
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
        SCOPED_TRACE(text);
        load_tree(text, separators_of(text));
        EXPECT_EQ(tree_text(), text);
        expect_saved_as(text);
    }
}

TEST(ActionTreeMoves, down_and_then_up_brings_every_item_back) {
    for (const std::string &text : all_trees()) {
        for (const char letter : text) {
            if (letter == '[' || letter == ']' || moved(text, letter, 1) == text)
                continue;
            load_tree(text);
            action_tree_select(tree_id(letter));
            dialog_object_move_selected_action_down();
            dialog_object_move_selected_action_up();
            EXPECT_EQ(tree_text(), text) << letter;
        }
    }
}
