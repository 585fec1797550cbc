// Entries of the owner-drawn menus and the records attached to them.
#include "actions/menu_letter.h"
#include "actions/menu_windows.h"
#include "platform/text.h"
#include "platform/win32/object_count.h"

#include <algorithm>
#include <new>
#include <span>

// Submenus are inserted at positions counted from here: beyond the end of any menu, so that they
// stand behind what is there.
static constexpr std::uint32_t FIRST_SUBMENU_POSITION = 99;

static MenuItem *make_record(MenuItemType type, const char *text) {
    MenuItem *record = object_made(OBJECT_RECORD, new (std::nothrow) MenuItem{});
    if (record == nullptr)
        return nullptr;
    record->type = type;
    text_copy(record->text, text);
    return record;
}

// Puts an entry with its record into a menu; what else it is stands in info.
static void insert(HMENU menu, std::uint32_t position, MENUITEMINFOA info, MenuItemType type,
                   const char *text) {
    MenuItem *record = make_record(type, text);
    if (record == nullptr)
        return;
    info.cbSize = sizeof info;
    info.fMask |= MIIM_FTYPE | MIIM_DATA;
    info.fType |= MFT_OWNERDRAW;
    info.dwItemData = reinterpret_cast<ULONG_PTR>(record);
    if (!InsertMenuItemA(menu, position, TRUE, &info))
        object_destroy_record(record);
}

static std::uint32_t end_of(HMENU menu) {
    return static_cast<std::uint32_t>(GetMenuItemCount(menu));
}

void menu_item_add_item(HMENU menu, std::int32_t id, const char *text) {
    MENUITEMINFOA info = {};
    info.fMask = MIIM_ID;
    info.wID = static_cast<UINT>(id);
    insert(menu, end_of(menu), info, MENU_ITEM_COMMAND, text);
}

void menu_item_add_header(HMENU menu, const char *text) {
    MENUITEMINFOA info = {};
    info.fMask = MIIM_STATE;
    info.fState = MFS_DISABLED | MFS_GRAYED;
    insert(menu, end_of(menu), info, MENU_ITEM_HEADER, text);
}

void menu_item_add_seperator(HMENU menu) {
    MENUITEMINFOA info = {};
    info.fType = MFT_SEPARATOR; // the keyboard passes over it
    insert(menu, end_of(menu), info, MENU_ITEM_SEPARATOR, "");
}

std::uint32_t menu_item_add_submenu(HMENU menu, HMENU submenu, const char *text) {
    static std::uint32_t next_position = FIRST_SUBMENU_POSITION;
    MENUITEMINFOA info = {};
    info.fMask = MIIM_SUBMENU; // without an id: no command is looked for and finds it
    info.hSubMenu = submenu;
    insert(menu, next_position, info, MENU_ITEM_COMMAND, text);
    return next_position++;
}

static MENUITEMINFOA entry_info(HMENU menu, UINT item, bool by_position) {
    MENUITEMINFOA info = {};
    info.cbSize = sizeof info;
    info.fMask = MIIM_DATA | MIIM_FTYPE | MIIM_STATE;
    if (!GetMenuItemInfoA(menu, item, by_position, &info))
        info.fType = 0;
    return info;
}

static MenuItem *record_of(const MENUITEMINFOA &info) {
    if ((info.fType & MFT_OWNERDRAW) == 0)
        return nullptr;
    return reinterpret_cast<MenuItem *>(info.dwItemData);
}

MenuItem *menu_item_at(HMENU menu, std::int32_t position) {
    return record_of(entry_info(menu, static_cast<UINT>(position), true));
}

static MenuItem *find_command(HMENU menu, std::int32_t id) {
    return record_of(entry_info(menu, static_cast<UINT>(id), false));
}

void menu_item_add_bitmap(HMENU menu, std::int32_t id, HBITMAP bitmap) {
    if (MenuItem *record = find_command(menu, id)) {
        record->image_type = MENU_ITEM_BITMAP;
        record->bitmap = bitmap;
    }
}

static void release_icon(HICON icon) {
    if (!menu_icon_cache_holds(icon))
        object_destroy(icon);
}

void menu_item_add_icon(HMENU menu, std::int32_t id, HICON icon) {
    MenuItem *record = find_command(menu, id);
    if (record == nullptr) {
        release_icon(icon);
        return;
    }
    record->image_type = MENU_ITEM_ICON;
    record->icon = icon;
}

void menu_item_disable_item(HMENU menu, std::int32_t id) {
    EnableMenuItem(menu, static_cast<UINT>(id), MF_BYCOMMAND | MF_DISABLED | MF_GRAYED);
}

static void free_record(MenuItem *record) {
    if (record != nullptr && record->image_type == MENU_ITEM_ICON)
        release_icon(record->icon);
    object_destroy_record(record);
}

void menu_free_memory(HMENU menu) {
    MENUITEMINFOA forget = {};
    forget.cbSize = sizeof forget;
    forget.fMask = MIIM_DATA;
    for (std::int32_t i = 0; i < GetMenuItemCount(menu); i++) {
        free_record(menu_item_at(menu, i));
        SetMenuItemInfoA(menu, static_cast<UINT>(i), TRUE, &forget);
        if (const HMENU submenu = GetSubMenu(menu, i))
            menu_free_memory(submenu);
    }
}

// ---- letters

static char lower(char letter) {
    CharLowerBuffA(&letter, 1); // umlauts too, by the system's code page
    return letter;
}

static std::int32_t highlighted_entry(HMENU menu) {
    for (std::int32_t i = 0; i < GetMenuItemCount(menu); i++) {
        if ((entry_info(menu, static_cast<UINT>(i), true).fState & MFS_HILITE) != 0)
            return i;
    }
    return -1;
}

// Fills in the letters of the entries; their number, or -1 when it is not a menu of ours.
static std::int32_t read_letters(HMENU menu, std::span<MenuLetter> letters) {
    const std::int32_t total = std::min(GetMenuItemCount(menu), static_cast<int>(letters.size()));
    for (std::int32_t i = 0; i < total; i++) {
        const MENUITEMINFOA info = entry_info(menu, static_cast<UINT>(i), true);
        const MenuItem *record = record_of(info);
        if (record == nullptr)
            return -1;
        letters[static_cast<std::size_t>(i)] = {lower(record->text[0]),
                                                (info.fState & MFS_DISABLED) == 0};
    }
    return total;
}

LRESULT menu_item_char(HWND window, WPARAM wparam, LPARAM lparam) {
    const auto menu = reinterpret_cast<HMENU>(lparam);
    MenuLetter letters[MENU_ENTRIES] = {};
    const std::int32_t total = read_letters(menu, letters);
    if (total < 0)
        return DefWindowProcA(window, WM_MENUCHAR, wparam, lparam);
    const MenuLetterChoice choice =
        menu_letter_choose({letters, static_cast<std::size_t>(total)}, highlighted_entry(menu),
                           lower(static_cast<char>(LOWORD(wparam))));
    if (choice.index < 0)
        return MAKELRESULT(0, MNC_IGNORE);
    if (choice.execute)
        return MAKELRESULT(choice.index, MNC_EXECUTE);
    PostMessageA(window, MENU_HIGHLIGHT_MESSAGE, static_cast<WPARAM>(choice.index), lparam);
    return MAKELRESULT(choice.index, MNC_SELECT);
}

static bool is_separator(HMENU menu, std::int32_t position) {
    return (entry_info(menu, static_cast<UINT>(position), true).fType & MFT_SEPARATOR) != 0;
}

// The arrow key passes over separators and comes round at the end.
void menu_item_highlight(HWND window, WPARAM wparam, LPARAM lparam) {
    const auto menu = reinterpret_cast<HMENU>(lparam);
    const std::int32_t total = GetMenuItemCount(menu); // -1 when the menu is gone
    const auto wanted = static_cast<std::int32_t>(wparam);
    std::int32_t position = highlighted_entry(menu);
    if (wanted < 0 || wanted >= total)
        return;
    while (position != wanted) {
        position = (position + 1) % total;
        if (!is_separator(menu, position))
            PostMessageA(window, WM_KEYDOWN, VK_DOWN, 1);
    }
}
