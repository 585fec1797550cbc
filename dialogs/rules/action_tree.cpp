#include "dialogs/rules/action_tree.h"

#include "platform/text.h"

#include <algorithm>

Action dialog_options_action[NODE_ACTIONS];
std::int32_t dialog_options_action_total;
std::int32_t treeview_id_total;
ActionTree action_tree = {.item = {}, .total = 0, .selected = TREE_NONE};

static constexpr char NEW_ACTION_NAME[] = "New action";
static constexpr std::size_t ACTION_NAME_LENGTH = 60;
static constexpr std::int32_t NOWHERE = -1; // no position in the tree

// ---- looking at it

std::int32_t dialog_object_get_action_id_from_treeview_id(std::int32_t id) {
    for (std::int32_t i = 0; i < dialog_options_action_total; i++) {
        if (dialog_options_action[i].menu_slot == id)
            return i;
    }
    return -1;
}

Action *action_tree_record(std::int32_t id) {
    const std::int32_t index = dialog_object_get_action_id_from_treeview_id(id);
    return index == -1 ? nullptr : &dialog_options_action[index];
}

std::int32_t action_tree_position(std::int32_t id) {
    for (std::int32_t i = 0; i < action_tree.total; i++) {
        if (action_tree.item[i].id == id)
            return i;
    }
    return NOWHERE;
}

static TreeItem *item_at(std::int32_t position) {
    return &action_tree.item[position];
}

static bool is_submenu(std::int32_t position) {
    const Action *record = action_tree_record(item_at(position)->id);
    return record != nullptr && record->type == ACTION_SUBMENU;
}

static bool is_inside(std::int32_t position) {
    return item_at(position)->parent != TREE_NONE;
}

// Position behind an item and all that it holds.
static std::int32_t end_of(std::int32_t position) {
    std::int32_t end = position + 1;
    while (end < action_tree.total && item_at(end)->parent == item_at(position)->id)
        end++;
    return end;
}

static bool is_visible(std::int32_t position) {
    const std::int32_t parent = item_at(position)->parent;
    return parent == TREE_NONE || item_at(action_tree_position(parent))->expanded;
}

static std::int32_t next_visible(std::int32_t position) {
    for (std::int32_t i = position + 1; i < action_tree.total; i++) {
        if (is_visible(i))
            return i;
    }
    return NOWHERE;
}

static std::int32_t previous_visible(std::int32_t position) {
    for (std::int32_t i = position - 1; i >= 0; i--) {
        if (is_visible(i))
            return i;
    }
    return NOWHERE;
}

static std::int32_t next_at_top(std::int32_t position) {
    const std::int32_t next = end_of(position);
    return next < action_tree.total ? next : NOWHERE;
}

static std::int32_t previous_at_top(std::int32_t position) {
    std::int32_t i = position - 1;
    while (i >= 0 && is_inside(i))
        i--;
    return i;
}

bool action_tree_has_children(std::int32_t id) {
    const std::int32_t position = action_tree_position(id);
    return position != NOWHERE && end_of(position) > position + 1;
}

const char *dialog_object_action_label(const Action *action) {
    if (action->type == ACTION_SEPARATOR)
        return "<Separator>";
    if (action->name[0] != '\0')
        return action->name;
    return action->type == ACTION_SUBMENU ? "Unnamed Menu" : "Unnamed Action";
}

// The last child of the last submenu can still go down: out of the submenu.
UpDownState dialog_object_updown_state() {
    const std::int32_t position = action_tree_position(action_tree.selected);
    if (position == NOWHERE)
        return {.up = false, .down = false};
    const bool last = next_visible(position) == NOWHERE && !is_inside(position);
    const bool last_holder = end_of(position) > position + 1 && next_at_top(position) == NOWHERE;
    return {.up = position != 0, .down = !last && !last_holder};
}

// ---- between the node and the tree

// Tree identifier of the number-th submenu of the list, counted from 1.
static std::int32_t submenu_id(std::int32_t number) {
    for (std::int32_t i = 0; i < dialog_options_action_total; i++) {
        const Action *action = &dialog_options_action[i];
        if (action->type == ACTION_SUBMENU && --number == 0)
            return action->menu_slot;
    }
    return TREE_NONE;
}

static void load_records(const Node *source) {
    const std::int32_t count = std::clamp(source->action_count, 0, NODE_ACTIONS);
    for (std::int32_t i = 0; i < count; i++) {
        if (source->actions[i] == nullptr)
            continue;
        Action *record = &dialog_options_action[dialog_options_action_total++];
        action_copy_action(record, source->actions[i]);
        record->menu_slot = treeview_id_total++;
    }
}

// A submenu stands at the top level whatever its owner says.
static void load_owners() {
    for (std::int32_t i = 0; i < dialog_options_action_total; i++) {
        Action *record = &dialog_options_action[i];
        const bool owned = record->owner > 0 && record->type != ACTION_SUBMENU;
        record->owner = owned ? submenu_id(record->owner) : TREE_NONE;
    }
}

static void add_items_of(std::int32_t owner) {
    for (std::int32_t i = 0; i < dialog_options_action_total; i++) {
        const Action *record = &dialog_options_action[i];
        if (record->owner != owner)
            continue;
        *item_at(action_tree.total++) = {record->menu_slot, owner, true};
        if (record->type == ACTION_SUBMENU)
            add_items_of(record->menu_slot);
    }
}

void dialog_object_load_actions(const Node *source) {
    for (Action &record : dialog_options_action)
        record = {};
    dialog_options_action_total = 0;
    treeview_id_total = 0;
    action_tree.total = 0;
    if (source != nullptr)
        load_records(source);
    load_owners();
    add_items_of(TREE_NONE);
    action_tree.selected = action_tree.total > 0 ? item_at(0)->id : TREE_NONE;
}

static std::int32_t copy_visible_records(Node *target) {
    std::int32_t count = 0;
    for (std::int32_t i = 0; i < action_tree.total; i++) {
        const Action *record = action_tree_record(item_at(i)->id);
        if (record == nullptr || !is_visible(i))
            continue;
        action_allocate_action(&target->actions[count]);
        if (target->actions[count] == nullptr)
            break;
        action_copy_action(target->actions[count++], record);
    }
    return count;
}

// Number of the node's submenu with this tree identifier, counted from 1; 0 when it has none.
static std::int32_t submenu_number(const Node *target, std::int32_t id) {
    std::int32_t number = 0;
    for (std::int32_t i = 0; i < target->action_count; i++) {
        if (target->actions[i]->type != ACTION_SUBMENU)
            continue;
        number++;
        if (target->actions[i]->menu_slot == id)
            return number;
    }
    return 0;
}

void dialog_object_save_actions(Node *target) {
    target->action_count = copy_visible_records(target);
    for (std::int32_t i = 0; i < target->action_count; i++)
        target->actions[i]->owner = submenu_number(target, target->actions[i]->owner);
}

// ---- moving

// Brings an item, with all that it holds, in front of the one at position before.
static void shift(std::int32_t position, std::int32_t before) {
    TreeItem *const items = action_tree.item;
    const std::int32_t end = end_of(position);
    if (before > position)
        std::rotate(items + position, items + end, items + std::max(before, end));
    else
        std::rotate(items + before, items + position, items + end);
}

// The same, and the item belongs to parent from then on. The owner stored is the parent but for
// what become_first_child leaves behind.
static void place_owned(std::int32_t position, std::int32_t before, std::int32_t parent,
                        std::int32_t owner) {
    TreeItem *item = item_at(position);
    item->parent = parent;
    action_tree_record(item->id)->owner = owner;
    action_tree_expand(parent, true);
    shift(position, before);
}

static void place(std::int32_t position, std::int32_t before, std::int32_t parent) {
    place_owned(position, before, parent, parent);
}

// Where a neighbour is, with the owner that is stored there.
static void place_beside(std::int32_t position, std::int32_t before, std::int32_t neighbour) {
    const TreeItem *beside = item_at(neighbour);
    place_owned(position, before, beside->parent, action_tree_record(beside->id)->owner);
}

static void place_in(std::int32_t position, std::int32_t before, std::int32_t submenu) {
    place(position, before, item_at(submenu)->id);
}

// A submenu passes one whole entry of the top level and never enters another submenu.
static void move_submenu_down(std::int32_t position) {
    const std::int32_t next = next_at_top(position);
    shift(position, next == NOWHERE ? action_tree.total : end_of(next));
}

static void move_submenu_up(std::int32_t position) {
    const std::int32_t previous = previous_at_top(position);
    shift(position, previous == NOWHERE ? 0 : previous);
}

static void move_item_down(std::int32_t position) {
    const std::int32_t next = next_visible(position);
    const std::int32_t parent = item_at(position)->parent;
    if (next == NOWHERE)
        place(position, action_tree.total, TREE_NONE);
    else if (is_inside(position) && !is_inside(next))
        place(position, end_of(action_tree_position(parent)), TREE_NONE);
    else if (is_submenu(next))
        place_in(position, next + 1, next);
    else
        place_beside(position, next + 1, next);
}

// The second child of a submenu becomes its first. The owner stored is meant to be the submenu's
// place in the working list, which is its identifier as long as nothing was deleted.
static void become_first_child(std::int32_t position, std::int32_t submenu) {
    const std::int32_t id = item_at(position)->id;
    place_in(position, submenu + 1, submenu);
    action_tree_record(id)->owner =
        dialog_object_get_action_id_from_treeview_id(item_at(submenu)->id);
}

// previous is at the top level, position as well; there is nothing above it or a submenu's child.
static void move_up_below_nothing(std::int32_t position, std::int32_t previous) {
    if (previous == NOWHERE)
        place(position, 0, TREE_NONE);
    else if (is_submenu(previous))
        place_in(position, end_of(previous), previous);
    else
        place(position, previous, TREE_NONE);
}

static void move_item_up(std::int32_t position) {
    const std::int32_t previous = previous_visible(position);
    const std::int32_t above = previous == NOWHERE ? NOWHERE : previous_visible(previous);
    const std::int32_t parent = item_at(position)->parent;
    const bool top = parent == TREE_NONE;
    if (top && (above == NOWHERE || (!is_inside(previous) && is_inside(above))))
        move_up_below_nothing(position, previous);
    else if (!top && is_submenu(previous))
        place(position, previous, TREE_NONE);
    else if (top && is_inside(previous))
        place_beside(position, previous + 1, previous);
    else if (is_submenu(above) && item_at(above)->id == parent)
        become_first_child(position, above);
    else if (top && is_submenu(previous))
        place_in(position, previous + 1, previous);
    else
        shift(position, end_of(above)); // within its submenu, or the top level
}

void dialog_object_move_selected_action_up() {
    const std::int32_t position = action_tree_position(action_tree.selected);
    if (position == NOWHERE)
        return;
    action_tree_expand(action_tree.selected, true);
    if (is_submenu(position))
        move_submenu_up(position);
    else
        move_item_up(position);
}

void dialog_object_move_selected_action_down() {
    const std::int32_t position = action_tree_position(action_tree.selected);
    if (position == NOWHERE)
        return;
    action_tree_expand(action_tree.selected, true);
    if (is_submenu(position))
        move_submenu_down(position);
    else
        move_item_down(position);
}

// ---- changing it

void action_tree_select(std::int32_t id) {
    action_tree.selected = id;
}

void action_tree_expand(std::int32_t id, bool expanded) {
    const std::int32_t position = action_tree_position(id);
    if (position != NOWHERE)
        item_at(position)->expanded = expanded;
}

// Inserts an item for a new record in front of the one at position before.
static void insert_item(std::int32_t id, std::int32_t before, std::int32_t parent) {
    *item_at(action_tree.total++) = {id, TREE_NONE, true};
    place(action_tree.total - 1, before, parent);
}

static void insert_at_selection(std::int32_t id) {
    const std::int32_t selected = action_tree_position(action_tree.selected);
    if (selected == NOWHERE) {
        action_tree.total = 0;
        insert_item(id, 0, TREE_NONE);
    } else if (is_submenu(selected))
        insert_item(id, selected + 1, item_at(selected)->id);
    else
        insert_item(id, selected + 1, item_at(selected)->parent);
}

std::int32_t dialog_object_new_action() {
    if (dialog_options_action_total >= NODE_ACTIONS)
        return TREE_NONE;
    Action *record = &dialog_options_action[dialog_options_action_total++];
    *record = {};
    record->type = ACTION_COMMAND;
    record->menu_slot = treeview_id_total++;
    text_copy_limit(record->name, ACTION_NAME_LENGTH, NEW_ACTION_NAME);
    insert_at_selection(record->menu_slot);
    action_tree.selected = record->menu_slot;
    return record->menu_slot;
}

bool dialog_object_delete_asks() {
    return action_tree_has_children(action_tree.selected);
}

static void delete_record(std::int32_t id) {
    const std::int32_t index = dialog_object_get_action_id_from_treeview_id(id);
    if (index == -1)
        return;
    Action *const records = dialog_options_action;
    std::copy(records + index + 1, records + dialog_options_action_total, records + index);
    dialog_options_action_total--;
}

void dialog_object_delete_action() {
    const std::int32_t position = action_tree_position(action_tree.selected);
    if (position == NOWHERE)
        return;
    const std::int32_t end = end_of(position);
    for (std::int32_t i = position; i < end; i++)
        delete_record(item_at(i)->id);
    TreeItem *const items = action_tree.item;
    std::copy(items + end, items + action_tree.total, items + position);
    action_tree.total -= end - position;
    const std::int32_t next = std::min(position, action_tree.total - 1);
    action_tree.selected = next < 0 ? TREE_NONE : item_at(next)->id;
}

static void leave_submenu(std::int32_t position) {
    if (is_inside(position))
        place(position, end_of(action_tree_position(item_at(position)->parent)), TREE_NONE);
}

static void release_children(std::int32_t position) {
    for (std::int32_t i = end_of(position) - 1; i > position; i--)
        place(i, i, TREE_NONE);
}

void dialog_object_change_action_type(std::int32_t type) {
    const std::int32_t position = action_tree_position(action_tree.selected);
    Action *record = action_tree_record(action_tree.selected);
    if (position == NOWHERE || record == nullptr)
        return;
    if (type == ACTION_SUBMENU)
        leave_submenu(position);
    else
        release_children(position);
    record->type = type;
}

void dialog_object_rename_action(std::int32_t id, const char *name) {
    if (Action *record = action_tree_record(id))
        text_copy_limit(record->name, ACTION_NAME_LENGTH, name);
}

void dialog_object_set_action_command(std::int32_t id, const char *command) {
    if (Action *record = action_tree_record(id))
        text_copy(record->command, command);
}
