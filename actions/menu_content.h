// What a menu holds: which entries in which order, their ids, texts and pictures, and which of them
// cannot be chosen. Worked out from the node clicked and the state of the program; nothing is
// shown.
#pragma once

#include "actions/command.h"
#include "actions/menu.h"
#include "page/node.h"
#include "platform/files.h"

#include <cstdint>

inline constexpr std::size_t MENU_TEXT_SIZE = 65; // 64 characters and the terminator
inline constexpr std::int32_t MENU_ENTRIES = 64;  // title and 50 actions fit, edit menus as well
inline constexpr std::int32_t MENU_SUBMENUS = NODE_ACTIONS;
inline constexpr std::int32_t MENU_TOP = 0; // number of the top menu; submenus count from 1

enum MenuEntryKind : std::int32_t {
    MENU_ENTRY_COMMAND,
    MENU_ENTRY_SEPARATOR,
    MENU_ENTRY_TITLE,
    MENU_ENTRY_SUBMENU, // opens one
};

struct MenuEntry {
    MenuEntryKind kind;
    std::int32_t menu;    // it stands in: MENU_TOP or a submenu's number
    std::int32_t submenu; // it opens; 0 = none
    std::int32_t id;      // sent when it is chosen; 0 = nothing is sent
    char text[MENU_TEXT_SIZE];
    MenuImage image;
    char icon_source[PATH_SIZE]; // file or command whose icon is shown; empty = none
    bool disabled;
};

struct MenuContent {
    MenuEntry entries[MENU_ENTRIES]; // of all menus; those of one menu stand in its order
    std::int32_t total;              // entries in use; 0 = there is nothing to show
    std::int32_t submenu_total;
};

// menu_type is a MenuType; node_id the node it is for, -1 = none.
void menu_content_build(MenuContent *content, std::int32_t menu_type, std::int32_t node_id);
