// Pop-up menus of the main window: the action menu of an object, the page menus and the menus of
// edit mode. What a menu holds is decided in menu_content.h; on Windows the entries are drawn by
// the program itself, the posix side records which menu was asked for.
#pragma once

#include <cstdint>

enum MenuType : std::int32_t {
    MENU_PAGE = 0,        // the floor or a label, view mode
    MENU_ACTION = 1,      // an object or page object, view mode
    MENU_EDIT_PAGE = 2,   // the floor, edit mode
    MENU_EDIT_OBJECT = 3, // an object or page object, edit mode
    MENU_EDIT_LABEL = 4,  // a label, edit mode
};

// Font and pictures shared by all menus. Around the life of the main window.
void menu_init();
void menu_stop();

// Icons of actions are kept from menu to menu. After the last one.
void menu_icon_cache_free();

// Shows a menu at the mouse pointer and waits until it is closed. The chosen entry arrives at the
// main window as an ordinary command message. node_id is the node it is for, -1 = none.
void menu_show_menu(std::int32_t menu_type, std::int32_t node_id);
