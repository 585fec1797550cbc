// One item of an object's action menu: a command, a separator or a submenu. Heap records owned by
// the action slots of a node.
#pragma once

#include <cstdint>

enum ActionType : std::int32_t { ACTION_COMMAND = 0, ACTION_SEPARATOR = 1, ACTION_SUBMENU = 2 };

struct Action {
    std::int32_t type;      // ActionType
    std::int32_t owner;     // number of its submenu among the node's, from 1; 0 = top level
    char name[61];          // item text
    char command[261];      // program, document, folder, address or page file; may hold $NAME
    char icon[261];         // file the menu icon is taken from
    std::int32_t menu_slot; // run-time value of the action menu, never stored in a file
};

// Puts a new record into an empty slot, a command without texts; a slot that holds a record keeps
// it as it is. The slot stays null when there is no memory.
void action_allocate_action(Action **slot);

// Copies what the source's type uses: the name of commands and submenus, command and icon of
// commands; the rest of the target is emptied. menu_slot is always copied.
void action_copy_action(Action *target, const Action *source);

// Frees the record; the slot is not cleared (the caller does that where the node lives on).
void action_free_action(Action **slot);
