// Trees of actions written as text: a lower-case letter is a command or separator, an upper-case
// one a submenu with its items in brackets: "aB[cd]e". Letters stand for tree identifiers, 'a' = 0,
// so a tree as it is loaded reads "aB[c]D[]e", letter by letter.
#pragma once

#include "dialogs/rules/action_tree.h"
#include "platform/text.h"

#include <gtest/gtest.h>

#include <cctype>
#include <string>
#include <vector>

inline std::int32_t tree_id(char letter) {
    return std::tolower(static_cast<unsigned char>(letter)) - 'a';
}

inline char tree_letter(const Action &action) {
    const char letter = static_cast<char>('a' + action.menu_slot);
    return action.type == ACTION_SUBMENU ? static_cast<char>(letter - 'a' + 'A') : letter;
}

// A node of its own whose records are freed.
struct ActionNode {
    Node node = {};
    ActionNode() = default;
    ~ActionNode() {
        node_free_node_actions(&node);
    }
    ActionNode(const ActionNode &) = delete;
    ActionNode &operator=(const ActionNode &) = delete;

    Action *add(ActionType type, const char *name, std::int32_t owner) {
        Action **slot = &node.actions[node.action_count++];
        action_allocate_action(slot);
        **slot = {};
        (*slot)->type = type;
        (*slot)->owner = owner;
        text_copy((*slot)->name, name);
        return *slot;
    }
    // The node's actions as its owner numbers tell them, letters in the order of menu_slot.
    std::string text() const {
        std::string all;
        std::int32_t number = 0;
        for (std::int32_t i = 0; i < node.action_count; i++) {
            if (node.actions[i]->owner != 0)
                continue;
            all += tree_letter(*node.actions[i]);
            if (node.actions[i]->type == ACTION_SUBMENU)
                all += '[' + children(++number) + ']';
        }
        return all;
    }
    std::string children(std::int32_t number) const {
        std::string all;
        for (std::int32_t i = 0; i < node.action_count; i++) {
            if (node.actions[i]->owner == number)
                all += tree_letter(*node.actions[i]);
        }
        return all;
    }
};

// Fills a node as a page file would: items called by their letters, with commands "run a", "run b",
// ...; separators tells which lower-case letters are separators.
inline void add_actions(ActionNode *target, const std::string &text, const char *separators = "") {
    std::int32_t owner = 0, submenus = 0;
    for (const char letter : text) {
        const std::string name(1, letter);
        if (letter == '[')
            owner = submenus;
        else if (letter == ']')
            owner = 0;
        else if (letter >= 'A' && letter <= 'Z') {
            target->add(ACTION_SUBMENU, name.c_str(), 0);
            submenus++;
        } else {
            const bool separator = std::string(separators).find(letter) != std::string::npos;
            Action *made =
                target->add(separator ? ACTION_SEPARATOR : ACTION_COMMAND, name.c_str(), owner);
            text_copy(made->command, ("run " + name).c_str());
        }
    }
}

inline void load_tree(const std::string &text, const char *separators = "") {
    ActionNode source;
    add_actions(&source, text, separators);
    dialog_object_load_actions(&source.node);
}

// The tree as it stands.
inline std::string tree_text() {
    std::string all;
    for (std::int32_t i = 0; i < action_tree.total; i++) {
        const TreeItem &item = action_tree.item[i];
        const Action *record = action_tree_record(item.id);
        all += record != nullptr ? tree_letter(*record) : '?';
        const bool next_inside =
            i + 1 < action_tree.total && action_tree.item[i + 1].parent == item.id;
        if (record != nullptr && record->type == ACTION_SUBMENU)
            all += next_inside ? "[" : "[]";
        const bool last =
            i + 1 == action_tree.total || action_tree.item[i + 1].parent != item.parent;
        if (item.parent != TREE_NONE && last)
            all += ']';
    }
    return all;
}

inline std::string saved_text() {
    ActionNode target;
    dialog_object_save_actions(&target.node);
    return target.text();
}

inline std::string after_up(const std::string &text, char letter) {
    load_tree(text);
    action_tree_select(tree_id(letter));
    dialog_object_move_selected_action_up();
    return tree_text();
}

inline std::string after_down(const std::string &text, char letter) {
    load_tree(text);
    action_tree_select(tree_id(letter));
    dialog_object_move_selected_action_down();
    return tree_text();
}
