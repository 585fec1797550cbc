// What the object dialog does to the page: which object it edits or where it puts a new one, and
// what OK takes over from its two tabs. The tree of actions is in dialogs/rules/action_tree.h.
#pragma once

#include "page/node.h"

#include <cstdint>

inline constexpr std::int32_t DIALOG_OBJECT_NEW = -1;

extern std::int32_t dialog_object_node_id; // object being edited, DIALOG_OBJECT_NEW = a new one
extern float dialog_object_mouse_x,
    dialog_object_mouse_y; // where a new object goes, relative to the floor's offset, floor units
extern std::int32_t &dialog_object_last_model_used; // last_host_model_used of the catalogue

void dialog_object_init(); // at start-up

// To be called before the dialog opens. Any index that is no node's means a new object.
void dialog_object_set_node(std::int32_t index);
void dialog_object_set_mouse(float x, float y);

// True when dialog_object_node_id is a node of the page, so that the dialog edits it.
bool dialog_object_edits_node();
const char *dialog_object_title();

// What description, model and actions are taken from when the dialog opens: the edited object, for
// a new one the template object. Null = no template, so there is nothing to begin with.
const Node *dialog_object_source();

// Index into models of the model that the dialog opens with, and catalogue index of the one that is
// chosen then: that of the edited object, for a new one the model used last when the options ask
// for it, else the template's. OBJECT_NONE when the model is not in the catalogue, which must be
// loaded.
std::int32_t dialog_object_first_model();
std::int32_t dialog_object_first_entry();

// Entries of the Details tab as the user left them.
struct ObjectDetails {
    const char *name;         // cut at 30 characters
    const char *description;  // cut at 50
    std::int32_t model_entry; // of the catalogue; OBJECT_NONE = the model that it opened with
};

// What OK does: the details and the working list of actions go into the node, which is a new one
// at the end of the table when none is edited; then the template object is read again. Returns the
// node, or -1 when there is no room for another.
std::int32_t dialog_object_apply(const ObjectDetails &details);
