#include "actions/menu.h"

#include "actions/menu_windows.h"
#include "platform/win32/object_count.h"
#include "platform/win32/window_attach.h"
#include "resources/resource_ids.h"

#include <iterator>
#include <memory>
#include <new>

static constexpr LONG HEADER_FONT_HEIGHT = 16; // pixels, of the character cell
static constexpr LONG HEADER_FONT_WEIGHT = 900;
static constexpr char HEADER_FONT_FACE[] = "Tahoma";

static constexpr int ICON_RESOURCES[] = {
    RESOURCE_MENU_PASTE,
    RESOURCE_MENU_CUT,
    RESOURCE_MENU_COPY,
    RESOURCE_MENU_DELETE,
    RESOURCE_MENU_PROPERTIES,
    RESOURCE_MENU_ABOUT,
    RESOURCE_MENU_FINISH_EDITING,
    RESOURCE_MENU_ALIGN_WITH_OBJECT,
    RESOURCE_MENU_ALIGN_WITH_GRID,
    RESOURCE_MENU_UNDO,
    RESOURCE_MENU_REDO,
    RESOURCE_MENU_CHECK_MARK,
    RESOURCE_MENU_OPEN_PAGE,
    RESOURCE_MENU_OPTIONS,
    RESOURCE_MENU_SUBMENU,
};
static_assert(std::size(ICON_RESOURCES) == MENU_ICONS);
static constexpr int SWATCH_RESOURCES[] = {
    RESOURCE_SWATCH_BLUE,   RESOURCE_SWATCH_GRAY,   RESOURCE_SWATCH_TURQUOISE,
    RESOURCE_SWATCH_PURPLE, RESOURCE_SWATCH_ORANGE, RESOURCE_SWATCH_BLACK,
};
static_assert(std::size(SWATCH_RESOURCES) == MENU_SWATCHES);

HFONT menu_font_header;
HBITMAP menu_icon[MENU_ICONS];
HBITMAP col_bmp[MENU_SWATCHES];

// ---- shared pictures

// Pixel for pixel as stored, whatever colours the screen can show: green must stay green.
static HBITMAP load_bitmap(int resource) {
    return object_made(OBJECT_BITMAP, static_cast<HBITMAP>(LoadImageA(
                                          GetModuleHandleA(nullptr), MAKEINTRESOURCEA(resource),
                                          IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION)));
}

void menu_init() {
    LOGFONTA header = {};
    header.lfHeight = HEADER_FONT_HEIGHT;
    header.lfWeight = HEADER_FONT_WEIGHT;
    lstrcpynA(header.lfFaceName, HEADER_FONT_FACE, sizeof header.lfFaceName);
    menu_font_header = object_made(OBJECT_FONT, CreateFontIndirectA(&header));
    for (std::size_t i = 0; i < std::size(menu_icon); i++)
        menu_icon[i] = load_bitmap(ICON_RESOURCES[i]);
    for (std::size_t i = 0; i < std::size(col_bmp); i++)
        col_bmp[i] = load_bitmap(SWATCH_RESOURCES[i]);
}

static void destroy_bitmap(HBITMAP *bitmap) {
    object_destroy(*bitmap);
    *bitmap = nullptr;
}

void menu_stop() {
    object_destroy(menu_font_header);
    menu_font_header = nullptr;
    for (HBITMAP &bitmap : menu_icon)
        destroy_bitmap(&bitmap);
    for (HBITMAP &bitmap : col_bmp)
        destroy_bitmap(&bitmap);
}

static HBITMAP picture(MenuImage image) {
    if (image < 0 || image >= MENU_IMAGE_TOTAL)
        return nullptr;
    return image < MENU_IMAGE_SWATCH_FIRST ? menu_icon[image]
                                           : col_bmp[image - MENU_IMAGE_SWATCH_FIRST];
}

// ---- building

// The system's menus of one pop-up menu, by the numbers of the content.
struct MenuHandles {
    HMENU menu[1 + MENU_SUBMENUS];
    std::int32_t total;
};

static bool create_menus(const MenuContent &content, MenuHandles *handles) {
    handles->total = 1 + content.submenu_total;
    bool complete = true;
    for (std::int32_t i = 0; i < handles->total; i++) {
        handles->menu[i] = object_made(OBJECT_MENU, CreatePopupMenu());
        complete = complete && handles->menu[i] != nullptr;
    }
    return complete;
}

static void destroy_menus(const MenuHandles &handles) {
    for (std::int32_t i = 0; i < handles.total; i++)
        menu_free_memory(handles.menu[i]);
    while (RemoveMenu(handles.menu[MENU_TOP], 0, MF_BYPOSITION)) {
    }
    for (std::int32_t i = 0; i < handles.total; i++)
        object_destroy(handles.menu[i]);
}

static void add_command(HMENU menu, const MenuEntry &entry) {
    menu_item_add_item(menu, entry.id, entry.text);
    if (const HBITMAP bitmap = picture(entry.image))
        menu_item_add_bitmap(menu, entry.id, bitmap);
    if (entry.icon_source[0] != '\0') {
        if (const HICON icon = menu_icon_cache_get_command_icon(entry.icon_source))
            menu_item_add_icon(menu, entry.id, icon);
    }
    if (entry.disabled)
        menu_item_disable_item(menu, entry.id);
}

// A submenu's entry has no id to be found by: it is the last one.
static void add_submenu(HMENU menu, HMENU submenu, const MenuEntry &entry) {
    menu_item_add_submenu(menu, submenu, entry.text);
    const std::int32_t last = GetMenuItemCount(menu) - 1;
    MenuItem *record = menu_item_at(menu, last);
    const HBITMAP bitmap = picture(entry.image);
    if (record == nullptr || bitmap == nullptr || GetSubMenu(menu, last) != submenu)
        return;
    record->image_type = MENU_ITEM_BITMAP;
    record->bitmap = bitmap;
}

static void fill_menus(const MenuContent &content, const MenuHandles &handles) {
    for (std::int32_t i = 0; i < content.total; i++) {
        const MenuEntry &entry = content.entries[i];
        const HMENU menu = handles.menu[entry.menu];
        switch (entry.kind) {
        case MENU_ENTRY_COMMAND:
            add_command(menu, entry);
            break;
        case MENU_ENTRY_SEPARATOR:
            menu_item_add_seperator(menu);
            break;
        case MENU_ENTRY_TITLE:
            menu_item_add_header(menu, entry.text);
            break;
        case MENU_ENTRY_SUBMENU:
            add_submenu(menu, handles.menu[entry.submenu], entry);
            break;
        }
    }
}

// ---- showing

// While alive, a chosen entry vanishes at once: the system would fade a picture of it that it takes
// from the screen.
struct SelectionFadeOff {
    BOOL previous = FALSE;
    bool known;

    SelectionFadeOff() : known(SystemParametersInfoA(SPI_GETSELECTIONFADE, 0, &previous, 0) != 0) {
        if (known)
            set(FALSE);
    }
    ~SelectionFadeOff() {
        if (known)
            set(previous);
    }
    SelectionFadeOff(const SelectionFadeOff &) = delete;
    SelectionFadeOff &operator=(const SelectionFadeOff &) = delete;

    static void set(BOOL fade) {
        SystemParametersInfoA(SPI_SETSELECTIONFADE, 0,
                              reinterpret_cast<void *>(static_cast<INT_PTR>(fade)), 0);
    }
};

static void track(HMENU menu) {
    POINT cursor = {};
    GetCursorPos(&cursor);
    const SelectionFadeOff no_fade;
    TrackPopupMenu(menu, 0, static_cast<int>(cursor.x), static_cast<int>(cursor.y), 0,
                   static_cast<HWND>(window_attached()), nullptr);
}

void menu_show_menu(std::int32_t menu_type, std::int32_t node_id) {
    const std::unique_ptr<MenuContent> content(new (std::nothrow) MenuContent);
    if (content == nullptr)
        return;
    menu_content_build(content.get(), menu_type, node_id);
    if (content->total == 0)
        return;
    MenuHandles handles = {};
    if (create_menus(*content, &handles)) {
        fill_menus(*content, handles);
        track(handles.menu[MENU_TOP]);
    }
    destroy_menus(handles);
}
