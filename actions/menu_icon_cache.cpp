// Small icons of the programs that actions start, as the shell shows them.
#include "actions/menu.h"
#include "actions/menu_icon_key.h"
#include "actions/menu_windows.h"
#include "actions/misc.h"
#include "platform/text.h"
#include "platform/win32/object_count.h"

#include <shellapi.h>

#include <iterator>

struct CachedIcon {
    char key[PATH_SIZE]; // from menu_icon_key
    HICON icon;
};

static CachedIcon menu_icon_cache[MENU_ICON_CACHE_SIZE];
std::int32_t menu_icon_cache_total;

static HICON icon_of_file(const char *path) {
    SHFILEINFOA info = {};
    if (SHGetFileInfoA(path, 0, &info, sizeof info, SHGFI_ICON | SHGFI_SMALLICON) == 0)
        return nullptr;
    return object_made(OBJECT_ICON, info.hIcon);
}

static HICON icon_on_search_path(const char *program) {
    char path[PATH_SIZE];
    const DWORD found = SearchPathA(nullptr, program, nullptr, sizeof path, path, nullptr);
    return found > 0 && found < sizeof path ? icon_of_file(path) : nullptr;
}

static HICON icon_of_browser() {
    char path[PATH_SIZE];
    return get_default_browser_exe(path) == 0 ? icon_of_file(path) : nullptr;
}

static HICON icon_of_program(const char *program) {
    HICON icon = icon_of_file(program);
    if (icon == nullptr)
        icon = icon_on_search_path(program);
    if (icon != nullptr)
        return icon;
    char with_extension[PATH_SIZE + 4];
    text_format(with_extension, sizeof with_extension, "%s.exe", program);
    return icon_on_search_path(with_extension);
}

static HICON find_cached(const char *key) {
    for (std::int32_t i = 0; i < menu_icon_cache_total; i++) {
        if (text_equal(menu_icon_cache[i].key, key))
            return menu_icon_cache[i].icon;
    }
    return nullptr;
}

static void keep(const char *key, HICON icon) {
    if (menu_icon_cache_total >= MENU_ICON_CACHE_SIZE)
        return;
    CachedIcon *entry = &menu_icon_cache[menu_icon_cache_total++];
    text_copy(entry->key, key);
    entry->icon = icon;
}

HICON menu_icon_cache_get_command_icon(const char *command) {
    char key[PATH_SIZE];
    menu_icon_key(command, key);
    if (key[0] == '\0')
        return nullptr;
    if (const HICON cached = find_cached(key))
        return cached;
    const HICON icon =
        text_equal(key, MENU_ICON_BROWSER) ? icon_of_browser() : icon_of_program(key);
    if (icon != nullptr)
        keep(key, icon);
    return icon;
}

bool menu_icon_cache_holds(HICON icon) {
    for (std::int32_t i = 0; i < menu_icon_cache_total; i++) {
        if (menu_icon_cache[i].icon == icon)
            return true;
    }
    return false;
}

void menu_icon_cache_free() {
    for (std::int32_t i = 0; i < menu_icon_cache_total; i++)
        object_destroy(menu_icon_cache[i].icon);
    menu_icon_cache_total = 0;
}
