// The actions of one object while the dialog edits them: a working copy of the records and the tree
// of two levels in which the user sees them. Everything that the Actions tab does to the tree is
// decided here; the dialog repeats the outcome in its tree control.
#pragma once

#include "page/node.h"

#include <cstdint>

inline constexpr std::int32_t TREE_NONE = -1; // no item; as an owner: the top level

// One item of the tree; the items stand in the order in which the whole tree reads from top to
// bottom, so the children of a submenu follow it.
struct TreeItem {
    std::int32_t id;     // tree identifier, that of its working record
    std::int32_t parent; // tree identifier of the submenu it stands in, TREE_NONE = top level
    bool expanded;       // the children of a collapsed submenu cannot be seen
};

struct ActionTree {
    TreeItem item[NODE_ACTIONS];
    std::int32_t total;
    std::int32_t selected; // tree identifier or TREE_NONE
};

struct UpDownState {
    bool up, down;
};

// The working copy. owner holds the tree identifier of the submenu an action belongs to or
// TREE_NONE, menu_slot the action's own tree identifier.
extern Action dialog_options_action[NODE_ACTIONS];
extern std::int32_t dialog_options_action_total;
extern std::int32_t treeview_id_total; // next free tree identifier
extern ActionTree action_tree;

inline constexpr char ACTION_TREE_EMPTY[] = "No actions defined"; // shown in place of items
inline constexpr char ACTION_TREE_DELETE_QUESTION[] =
    "Deleting this menu will also remove all items contained within the menu.  Do you want to "
    "continue?";

// ---- between the node and the tree
// Begins anew with a node's actions, or with none when source is null; the first item is selected.
void dialog_object_load_actions(const Node *source);

// Writes the items that can be seen, in the order of the tree, and their number into the node.
void dialog_object_save_actions(Node *target);

// ---- looking at it
// Index of the working record, or -1.
std::int32_t dialog_object_get_action_id_from_treeview_id(std::int32_t id);
Action *action_tree_record(std::int32_t id);        // null when there is none
std::int32_t action_tree_position(std::int32_t id); // index into item, or -1
bool action_tree_has_children(std::int32_t id);
const char *dialog_object_action_label(const Action *action); // what the tree shows
UpDownState dialog_object_updown_state();

// ---- changing it; each acts on the selected item and does nothing when there is none
void action_tree_select(std::int32_t id);
void action_tree_expand(std::int32_t id, bool expanded);
void dialog_object_move_selected_action_up();
void dialog_object_move_selected_action_down();

// Adds a command called "New action" and selects it. Its identifier, or TREE_NONE when the list is
// full. Without a selection the tree is emptied first.
std::int32_t dialog_object_new_action();

// True when deleting would take other items along, so that the user is asked first.
bool dialog_object_delete_asks();
void dialog_object_delete_action(); // and what a submenu holds; the item that follows is selected

// Submenus stand at the top level and only they hold items: an item that becomes a submenu steps
// out behind the submenu it was in, and those of a submenu that becomes something else stay behind
// it at the top level.
void dialog_object_change_action_type(std::int32_t type);
void dialog_object_rename_action(std::int32_t id, const char *name);
void dialog_object_set_action_command(std::int32_t id, const char *command);
