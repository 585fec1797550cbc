// Every tree of up to six items with up to two submenus, as text (tests/unit/tree_text.h).
#pragma once

#include <string>
#include <vector>

inline constexpr int MOST_ITEMS = 6;
inline constexpr int MOST_SUBMENUS = 2;
inline constexpr std::size_t TREES = 189;  // 7 of no, 56 of one and 126 of two submenus
inline constexpr std::size_t KINDS = 2621; // the same with commands and separators told apart

inline void grow_tree(const std::string &text, int items, int submenus, bool open,
                      std::vector<std::string> *trees) {
    if (!open)
        trees->push_back(text);
    else
        grow_tree(text + ']', items, submenus, false, trees);
    if (items == MOST_ITEMS)
        return;
    const char letter = static_cast<char>('a' + items);
    grow_tree(text + letter, items + 1, submenus, open, trees);
    if (!open && submenus < MOST_SUBMENUS) {
        const char upper = static_cast<char>('A' + items);
        grow_tree(text + upper + '[', items + 1, submenus + 1, true, trees);
    }
}

inline std::vector<std::string> all_trees() {
    std::vector<std::string> trees;
    grow_tree("", 0, 0, false, &trees);
    return trees;
}

inline bool is_submenu_letter(char letter) {
    return letter >= 'A' && letter <= 'Z';
}

// The letters of the items, in order.
inline std::string letters_of(const std::string &text) {
    std::string letters;
    for (const char sign : text) {
        if (sign != '[' && sign != ']')
            letters += sign;
    }
    return letters;
}

// Each choice of its items that are no submenus, none and all of them included: which of them are
// separators.
inline std::vector<std::string> all_separators(const std::string &text) {
    std::vector<std::string> choices = {""};
    for (const char letter : letters_of(text)) {
        const std::size_t total = is_submenu_letter(letter) ? 0 : choices.size();
        for (std::size_t i = 0; i < total; i++)
            choices.push_back(choices[i] + letter);
    }
    return choices;
}
