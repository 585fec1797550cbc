#include "actions/menu.h"

#include "platform/posix/recorder.h"

void menu_init() {}

void menu_stop() {}

void menu_icon_cache_free() {}

void menu_show_menu(std::int32_t menu_type, std::int32_t node_id) {
    recorder.menus.push_back({menu_type, node_id});
}
