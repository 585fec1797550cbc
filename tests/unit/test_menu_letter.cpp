#include "actions/menu_letter.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

// Entries by their first letters; a letter in brackets is disabled, '-' stands for a separator.
static std::vector<MenuLetter> menu(const std::string &letters) {
    std::vector<MenuLetter> result;
    for (std::size_t i = 0; i < letters.size(); i++) {
        if (letters[i] == '(') {
            result.push_back({letters[i + 1], false});
            i += 2;
        } else {
            result.push_back({letters[i] == '-' ? '\0' : letters[i], true});
        }
    }
    return result;
}

static void expect_choice(const std::string &letters, std::int32_t highlighted, char letter,
                          std::int32_t index, bool execute) {
    const MenuLetterChoice choice = menu_letter_choose(menu(letters), highlighted, letter);
    EXPECT_EQ(index, choice.index) << letters << " " << highlighted << " " << letter;
    EXPECT_EQ(execute, choice.execute) << letters << " " << highlighted << " " << letter;
}

TEST(MenuLetter, the_only_entry_with_the_letter_is_executed) {
    expect_choice("abc", -1, 'b', 1, true);
    expect_choice("abc", 1, 'b', 1, true); // although it is highlighted already
    expect_choice("abc", 2, 'b', 1, true);
}

TEST(MenuLetter, several_entries_are_highlighted_in_turn) {
    expect_choice("xaxbx", -1, 'x', 0, false);
    expect_choice("xaxbx", 0, 'x', 2, false);
    expect_choice("xaxbx", 2, 'x', 4, false);
    expect_choice("xaxbx", 4, 'x', 0, false);
    expect_choice("xaxbx", 3, 'x', 4, false); // from an entry with another letter
}

TEST(MenuLetter, case_makes_no_difference) {
    expect_choice("Ab", -1, 'a', 0, true);
    expect_choice("ab", -1, 'A', 0, true);
    expect_choice("aA", 0, 'A', 1, false);
}

TEST(MenuLetter, disabled_entries_are_passed_over) {
    expect_choice("(a)ba", -1, 'a', 2, true);
    expect_choice("(a)", -1, 'a', -1, false);
    expect_choice("a(a)a", 0, 'a', 2, false);
}

TEST(MenuLetter, a_letter_that_no_entry_starts_with_means_nothing) {
    expect_choice("abc", -1, 'x', -1, false);
    expect_choice("", -1, 'x', -1, false);
    expect_choice("--", -1, '\0', -1, false);
    for (const char *pair : {"@`", "[{"}) // 32 apart as letters and their capitals are
        expect_choice(std::string(1, pair[0]), -1, pair[1], -1, false);
}

TEST(MenuLetter, other_characters_match_themselves) {
    expect_choice("1-2", -1, '2', 2, true);
    expect_choice("\xE4z", -1, '\xE4', 0, true);
}

TEST(MenuLetter, a_highlighted_index_outside_the_menu_counts_as_none) {
    expect_choice("aba", 99, 'a', 0, false);
    expect_choice("aba", -5, 'a', 0, false);
}
