#include "page/action.h"

#include "platform/text.h"

#include <new>

inline constexpr std::size_t NAME_LENGTH = 60;  // characters of an item's text
inline constexpr std::size_t FILE_LENGTH = 260; // characters of a command and of an icon file

// The texts are made empty, not cleared: a full page has thousands of records.
static void make_empty(Action *action) {
    action->type = ACTION_COMMAND;
    action->owner = 0;
    action->name[0] = action->command[0] = action->icon[0] = '\0';
    action->menu_slot = 0;
}

void action_allocate_action(Action **slot) {
    if (*slot != nullptr)
        return;
    *slot = new (std::nothrow) Action;
    if (*slot != nullptr)
        make_empty(*slot);
}

void action_copy_action(Action *target, const Action *source) {
    if (target == source)
        return;
    const bool command = source->type == ACTION_COMMAND;
    const bool named = command || source->type == ACTION_SUBMENU;
    target->type = source->type;
    target->owner = source->owner;
    text_copy_limit(target->name, NAME_LENGTH, named ? source->name : "");
    text_copy_limit(target->command, FILE_LENGTH, command ? source->command : "");
    text_copy_limit(target->icon, FILE_LENGTH, command ? source->icon : "");
    target->menu_slot = source->menu_slot;
}

void action_free_action(Action **slot) {
    delete *slot;
}
