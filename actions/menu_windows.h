// The owner-drawn menus on Windows: entries with their records, how they are measured and drawn,
// their pictures, and the icons of actions. menu_show_menu (menu.h) puts them together.
#pragma once

#include "actions/command.h"
#include "actions/menu_content.h"

#include <windows.h>

#include <cstdint>

enum MenuItemType : std::int32_t { MENU_ITEM_COMMAND, MENU_ITEM_SEPARATOR, MENU_ITEM_HEADER };
enum MenuItemImage : std::int32_t { MENU_ITEM_PLAIN, MENU_ITEM_BITMAP, MENU_ITEM_ICON };

// Attached to each entry as its item data. Freed by menu_free_memory.
struct MenuItem {
    std::int32_t type; // MenuItemType; a submenu's entry is a command
    char text[MENU_TEXT_SIZE];
    std::int32_t image_type; // MenuItemImage
    HBITMAP bitmap;          // one of the shared pictures
    HICON icon;              // the icon cache's, or this entry's when the cache was full
};

// Shared pictures, from menu_init to menu_stop.
inline constexpr std::int32_t MENU_ICONS = MENU_IMAGE_SWATCH_FIRST;
inline constexpr std::int32_t MENU_SWATCHES = MENU_IMAGE_TOTAL - MENU_IMAGE_SWATCH_FIRST;
extern HFONT menu_font_header;
extern HBITMAP menu_icon[MENU_ICONS];  // by MenuImage
extern HBITMAP col_bmp[MENU_SWATCHES]; // of the page colours

// ---- entries (menu_items.cpp); one for whose record there is no memory is left out
void menu_item_add_item(HMENU menu, std::int32_t id, const char *text);
void menu_item_add_header(HMENU menu, const char *text); // a title: first in its menu
void menu_item_add_seperator(HMENU menu);
std::uint32_t menu_item_add_submenu(HMENU menu, HMENU submenu, const char *text); // its position
void menu_item_add_bitmap(HMENU menu, std::int32_t id, HBITMAP bitmap);
void menu_item_add_icon(HMENU menu, std::int32_t id, HICON icon); // from the icon cache
void menu_item_disable_item(HMENU menu, std::int32_t id);
MenuItem *menu_item_at(HMENU menu, std::int32_t position); // null when it is no entry of ours

// Frees the records of a menu and of its submenus, and icons that the cache did not take.
void menu_free_memory(HMENU menu);

// Answers the system's question which entry a typed letter means.
LRESULT menu_item_char(HWND window, WPARAM wparam, LPARAM lparam);

// Posted to the window behind an answer that only highlights an entry: not every system does so.
// Moves the highlight there with arrow keys if it is elsewhere.
inline constexpr UINT MENU_HIGHLIGHT_MESSAGE = WM_APP + 1;
void menu_item_highlight(HWND window, WPARAM wparam, LPARAM lparam);

// ---- measures and colours (menu_draw.cpp)
void menu_item_measure(HWND window, MEASUREITEMSTRUCT *request);
void menu_item_draw(HWND window, const DRAWITEMSTRUCT *request);

// ---- pictures (menu_image.cpp): changed copies, the caller's to destroy; null on failure
HBITMAP menu_bitmap_fade_color(HBITMAP bitmap); // for a disabled entry
// dc is where the bitmap may be selected, null = nowhere.
HBITMAP menu_bitmap_replace_color(HBITMAP bitmap, COLORREF from_colour, COLORREF to_colour, HDC dc);

// ---- icons of actions (menu_icon_cache.cpp)
inline constexpr std::int32_t MENU_ICON_CACHE_SIZE = 100;
extern std::int32_t menu_icon_cache_total; // icons held

// Null when there is none. An icon that the full cache did not take is the caller's to destroy.
HICON menu_icon_cache_get_command_icon(const char *command);
bool menu_icon_cache_holds(HICON icon);
