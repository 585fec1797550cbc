// The commands of the menus: one table holds what each is called, shown with, which keys run it and
// what it does. The menus read it from here; the table itself stands beside the handlers, in
// app/commands.cpp.
#pragma once

#include <cstdint>

// Ids that a menu sends to the main window.
enum CommandId : std::int32_t {
    COMMAND_ABOUT = 1000,
    COMMAND_OPTIONS = 1001,
    COMMAND_EDIT_PAGE = 1002,
    COMMAND_FINISH_EDITING = 1003,
    COMMAND_NEW_OBJECT = 1004,
    COMMAND_NEW_PAGE = 1005,
    COMMAND_NEW_LABEL = 1006,
    COMMAND_DELETE = 1007,
    COMMAND_DRAW_LINK = 1008,
    COMMAND_REMOVE_LINKS = 1009,
    COMMAND_PROPERTIES = 1010,
    COMMAND_ALIGN_WITH_OBJECT = 1011,
    COMMAND_ALIGN_WITH_GRID = 1012,
    COMMAND_DELETE_KEEPING_FILE = 1013, // no menu offers it
    COMMAND_REVERT = 1014,
    COMMAND_CENTER_PAGE = 1015,
    COMMAND_SET_PAGE_CENTER = 1017,
    COMMAND_CUT = 1018,
    COMMAND_COPY = 1019,
    COMMAND_PASTE = 1020,
    COMMAND_PASTE_ACTIONS = 1021,
    COMMAND_UNDO = 1022,
    COMMAND_REDO = 1023,
    COMMAND_COLOUR_FIRST = 1200, // presets: blue, gray, turquoise, purple, orange, black
    COMMAND_COLOUR_LAST = 1205,
    COMMAND_COLOUR_DEFAULT = 1298,
    COMMAND_COLOUR_CUSTOM = 1299,
    COMMAND_ACTION_FIRST = 2000, // action n of the target is COMMAND_ACTION_FIRST + n
};

// Pictures of menu entries.
enum MenuImage : std::int32_t {
    MENU_IMAGE_NONE = -1,
    MENU_IMAGE_PASTE,
    MENU_IMAGE_CUT,
    MENU_IMAGE_COPY,
    MENU_IMAGE_DELETE,
    MENU_IMAGE_PROPERTIES,
    MENU_IMAGE_ABOUT,
    MENU_IMAGE_FINISH_EDITING,
    MENU_IMAGE_ALIGN_WITH_OBJECT,
    MENU_IMAGE_ALIGN_WITH_GRID,
    MENU_IMAGE_UNDO,
    MENU_IMAGE_REDO,
    MENU_IMAGE_CHECK_MARK,
    MENU_IMAGE_OPEN_PAGE,
    MENU_IMAGE_OPTIONS,
    MENU_IMAGE_SUBMENU,
    MENU_IMAGE_SWATCH_FIRST, // of the page colours, in the order of their commands
    MENU_IMAGE_TOTAL = MENU_IMAGE_SWATCH_FIRST + 6,
};

constexpr MenuImage swatch(std::int32_t preset) {
    return static_cast<MenuImage>(MENU_IMAGE_SWATCH_FIRST + preset);
}

struct Command {
    std::int32_t id;  // CommandId
    const char *text; // as menus show it
    MenuImage image;
    std::int32_t key, second_key; // run it together with Control in edit mode; 0 = none
    void (*run)(std::int32_t id);
};

// Null when there is no such command.
const Command *command_find(std::int32_t id);
