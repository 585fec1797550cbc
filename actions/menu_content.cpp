#include "actions/menu_content.h"

#include "editing/clipboard.h"
#include "editing/undo.h"
#include "page/options.h"
#include "platform/text.h"
#include "scene/scene_page.h"

#include <algorithm>

static constexpr char PAGE_COLOUR_TEXT[] = "Page Color";
static constexpr char OPEN_PAGE_TEXT[] = "Open this page";
static constexpr char NO_ACTIONS_TEXT[] = "No actions defined";

// An entry of the table, or null when it is full.
static MenuEntry *add_entry(MenuContent *content, MenuEntryKind kind, std::int32_t menu,
                            const char *text) {
    if (content->total >= MENU_ENTRIES)
        return nullptr;
    MenuEntry *entry = &content->entries[content->total++];
    *entry = {};
    entry->kind = kind;
    entry->menu = menu;
    entry->image = MENU_IMAGE_NONE;
    text_copy(entry->text, text);
    return entry;
}

static MenuEntry *add_item(MenuContent *content, std::int32_t menu, std::int32_t id,
                           const char *text) {
    MenuEntry *entry = add_entry(content, MENU_ENTRY_COMMAND, menu, text);
    if (entry != nullptr)
        entry->id = id;
    return entry;
}

static void add_separator(MenuContent *content, std::int32_t menu = MENU_TOP) {
    add_entry(content, MENU_ENTRY_SEPARATOR, menu, "");
}

// An entry that opens the submenu of this number.
static MenuEntry *add_submenu(MenuContent *content, std::int32_t submenu, const char *text) {
    MenuEntry *entry = add_entry(content, MENU_ENTRY_SUBMENU, MENU_TOP, text);
    if (entry != nullptr)
        entry->submenu = submenu;
    return entry;
}

// A command of the table, with its picture. Null when the table has none with this id.
static MenuEntry *add_command(MenuContent *content, std::int32_t id, bool disabled = false,
                              std::int32_t menu = MENU_TOP) {
    const Command *command = command_find(id);
    if (command == nullptr)
        return nullptr;
    MenuEntry *entry = add_item(content, menu, id, command->text);
    if (entry != nullptr) {
        entry->image = command->image;
        entry->disabled = disabled;
    }
    return entry;
}

static void add_options_and_about(MenuContent *content) {
    add_separator(content);
    add_command(content, COMMAND_OPTIONS);
    add_command(content, COMMAND_ABOUT);
}

// ---- view mode

static void build_page(MenuContent *content) {
    add_command(content, COMMAND_EDIT_PAGE);
    add_command(content, COMMAND_CENTER_PAGE);
    add_options_and_about(content);
}

static void add_title(MenuContent *content, const Node &target) {
    if (orvanel_options.action_menu_title == 1)
        add_entry(content, MENU_ENTRY_TITLE, MENU_TOP, target.name);
}

static void build_page_object(MenuContent *content, const Node &target) {
    add_title(content, target);
    MenuEntry *entry = add_item(content, MENU_TOP, COMMAND_ACTION_FIRST, OPEN_PAGE_TEXT);
    if (entry != nullptr && orvanel_options.action_menu_icons == 1)
        entry->image = MENU_IMAGE_OPEN_PAGE;
}

static std::int32_t live_actions(const Node &target) {
    return std::clamp(target.action_count, 0, NODE_ACTIONS);
}

static std::int32_t count_submenus(const Node &target) {
    const auto *end = target.actions + live_actions(target);
    return static_cast<std::int32_t>(std::count_if(target.actions, end, [](const Action *action) {
        return action != nullptr && action->type == ACTION_SUBMENU;
    }));
}

// The id tells which action to run. Unnamed actions are numbered by their place among all actions,
// separators and submenus included.
static void add_action_command(MenuContent *content, std::int32_t menu, std::int32_t index,
                               const Action &action) {
    char numbered[MENU_TEXT_SIZE];
    text_format(numbered, sizeof numbered, "Action %d", index + 1);
    MenuEntry *entry = add_item(content, menu, COMMAND_ACTION_FIRST + index,
                                action.name[0] != '\0' ? action.name : numbered);
    if (entry != nullptr && orvanel_options.action_menu_icons == 1)
        text_copy(entry->icon_source, action.icon[0] != '\0' ? action.icon : action.command);
}

// number is the submenu's. Submenus stand in the top menu, whatever their owner says.
static void add_action_submenu(MenuContent *content, std::int32_t number, const Action &action) {
    MenuEntry *entry = add_submenu(content, number, action.name);
    if (entry != nullptr && orvanel_options.action_menu_icons == 1)
        entry->image = MENU_IMAGE_SUBMENU;
}

static void build_object(MenuContent *content, const Node &target) {
    add_title(content, target);
    const std::int32_t actions = live_actions(target);
    if (actions == 0) {
        if (MenuEntry *entry = add_item(content, MENU_TOP, COMMAND_ACTION_FIRST, NO_ACTIONS_TEXT))
            entry->disabled = true;
        return;
    }
    content->submenu_total = count_submenus(target);
    std::int32_t submenu = 0; // number of the last one attached
    for (std::int32_t i = 0; i < actions; i++) {
        const Action *action = target.actions[i];
        if (action == nullptr)
            continue;
        const bool owned = action->owner >= 1 && action->owner <= content->submenu_total;
        const std::int32_t menu = owned ? action->owner : MENU_TOP;
        if (action->type == ACTION_COMMAND)
            add_action_command(content, menu, i, *action);
        else if (action->type == ACTION_SEPARATOR)
            add_separator(content, menu);
        else if (action->type == ACTION_SUBMENU)
            add_action_submenu(content, ++submenu, *action);
    }
}

static void build_action(MenuContent *content, std::int32_t node_id) {
    if (!node_is_live(node_id))
        return;
    const Node &target = node[node_id];
    if (target.type == NODE_PAGE)
        build_page_object(content, target);
    else if (target.type == NODE_OBJECT)
        build_object(content, target);
}

// ---- edit mode

static void add_page_colours(MenuContent *content) {
    const std::int32_t submenu = ++content->submenu_total;
    add_submenu(content, submenu, PAGE_COLOUR_TEXT);
    if (MenuEntry *entry = add_command(content, COMMAND_COLOUR_DEFAULT, false, submenu))
        entry->image =
            scene_floor.colour.use_default == 1 ? MENU_IMAGE_CHECK_MARK : MENU_IMAGE_NONE;
    add_separator(content, submenu);
    for (std::int32_t id = COMMAND_COLOUR_FIRST; id <= COMMAND_COLOUR_LAST; id++)
        add_command(content, id, false, submenu);
    add_separator(content, submenu);
    add_command(content, COMMAND_COLOUR_CUSTOM, false, submenu);
}

static void build_edit_page(MenuContent *content) {
    add_command(content, COMMAND_FINISH_EDITING);
    add_command(content, COMMAND_CENTER_PAGE);
    add_separator(content);
    add_command(content, COMMAND_NEW_OBJECT);
    add_command(content, COMMAND_NEW_LABEL);
    add_command(content, COMMAND_NEW_PAGE);
    add_separator(content);
    add_command(content, COMMAND_PASTE, clipboard_used == 0);
    add_separator(content);
    add_command(content, COMMAND_UNDO, undo_available() != 0); // nonzero means none is available
    add_command(content, COMMAND_REDO, redo_available() != 0);
    add_command(content, COMMAND_REVERT, scene_changed != 1);
    add_separator(content);
    add_command(content, COMMAND_SET_PAGE_CENTER);
    add_page_colours(content);
    add_options_and_about(content);
}

static void add_clipboard_commands(MenuContent *content) {
    add_command(content, COMMAND_PROPERTIES);
    add_separator(content);
    add_command(content, COMMAND_CUT);
    add_command(content, COMMAND_COPY);
    add_command(content, COMMAND_DELETE);
}

static void add_align_commands(MenuContent *content) {
    add_separator(content);
    add_command(content, COMMAND_ALIGN_WITH_OBJECT);
    add_command(content, COMMAND_ALIGN_WITH_GRID);
}

static void build_edit_object(MenuContent *content, std::int32_t node_id) {
    if (!node_is_live(node_id))
        return;
    add_clipboard_commands(content);
    if (node[node_id].type == NODE_OBJECT) // nonzero means that there are none to paste
        add_command(content, COMMAND_PASTE_ACTIONS,
                    clipboard_used == 0 || clipboard_paste_actions_available() != 0);
    add_separator(content);
    add_command(content, COMMAND_DRAW_LINK);
    add_command(content, COMMAND_REMOVE_LINKS, line_does_node_have_lines(node_id) != 0);
    add_align_commands(content);
}

static void build_edit_label(MenuContent *content) {
    add_clipboard_commands(content);
    add_align_commands(content);
}

void menu_content_build(MenuContent *content, std::int32_t menu_type, std::int32_t node_id) {
    content->total = 0;
    content->submenu_total = 0;
    switch (menu_type) {
    case MENU_PAGE:
        build_page(content);
        break;
    case MENU_ACTION:
        build_action(content, node_id);
        break;
    case MENU_EDIT_PAGE:
        build_edit_page(content);
        break;
    case MENU_EDIT_OBJECT:
        build_edit_object(content, node_id);
        break;
    case MENU_EDIT_LABEL:
        build_edit_label(content);
        break;
    default:
        break;
    }
}
