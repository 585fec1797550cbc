// Measures and colours of the owner-drawn menus. They are fixed: the menus look alike under every
// theme of the system.
#include "actions/menu_windows.h"
#include "platform/win32/object_count.h"

#include <algorithm>
#include <cstring>

// Pixels.
static constexpr LONG WIDTH_MINIMUM = 120;
static constexpr LONG ENTRY_HEIGHT = 21;
static constexpr LONG SEPARATOR_HEIGHT = 5;
static constexpr LONG COLUMN_WIDTH = 25; // of the icon column
static constexpr LONG TEXT_INDENT = 28;  // of text and separator lines
static constexpr LONG TEXT_TOP = 3;
static constexpr LONG SEPARATOR_LINE_TOP = 2;
static constexpr LONG BITMAP_CENTRE_X = 12;
static constexpr LONG BITMAP_CENTRE_Y = 10;
static constexpr LONG ICON_LEFT = 4;
static constexpr LONG ICON_TOP = 2;

static constexpr COLORREF HEADER_BACK = RGB(118, 118, 118);
static constexpr COLORREF HEADER_TEXT = RGB(200, 200, 200);
static constexpr COLORREF COLUMN = RGB(236, 236, 236);
static constexpr COLORREF PAPER = RGB(255, 255, 255);
static constexpr COLORREF SEPARATOR_LINE = RGB(200, 200, 200);
static constexpr COLORREF DISABLED_TEXT = RGB(140, 140, 140);
static constexpr COLORREF TRANSPARENT_GREEN = RGB(0, 255, 0);

struct EntryColours {
    COLORREF column, paper, frame;
    bool framed;
};
static constexpr EntryColours NORMAL = {COLUMN, PAPER, 0, false};
static constexpr EntryColours HIGHLIGHTED = {RGB(183, 217, 246), RGB(192, 226, 255),
                                             RGB(51, 153, 255), true};
static constexpr EntryColours HIGHLIGHTED_DISABLED = {RGB(223, 223, 223), RGB(233, 233, 233),
                                                      RGB(200, 200, 200), true};

static bool is_disabled(UINT state) {
    return (state & (ODS_DISABLED | ODS_GRAYED)) != 0;
}

static int length(const char *text) {
    return static_cast<int>(std::strlen(text));
}

// ---- measuring

static SIZE text_size(HWND window, HGDIOBJ font, const char *text) {
    SIZE size = {};
    const HDC dc = GetDC(window);
    const HGDIOBJ previous = SelectObject(dc, font);
    GetTextExtentPoint32A(dc, text, length(text), &size);
    SelectObject(dc, previous);
    ReleaseDC(window, dc);
    return size;
}

// What the system selects into the device context that entries are drawn to.
static HFONT make_menu_font() {
    NONCLIENTMETRICSA metrics = {};
    metrics.cbSize = sizeof metrics;
    if (!SystemParametersInfoA(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0))
        return nullptr;
    return object_made(OBJECT_FONT, CreateFontIndirectA(&metrics.lfMenuFont));
}

// Entries are measured in the font that a window starts with, which does not grow with the
// resolution of the screen. Where the menu font has outgrown it, that decides: nothing is clipped.
static SIZE measure_entry(HWND window, const char *text) {
    const SIZE usual = text_size(window, GetStockObject(SYSTEM_FONT), text);
    const HFONT font = make_menu_font();
    const SIZE drawn = font != nullptr ? text_size(window, font, text) : SIZE{};
    object_destroy(font);
    return {std::max(usual.cx, drawn.cx) + TEXT_INDENT,
            std::max(usual.cy, drawn.cy + 2 * TEXT_TOP)};
}

static SIZE measure(HWND window, const MenuItem &item) {
    SIZE size;
    switch (item.type) {
    case MENU_ITEM_SEPARATOR:
        return {TEXT_INDENT, SEPARATOR_HEIGHT};
    case MENU_ITEM_HEADER:
        size = text_size(window, menu_font_header, item.text);
        break;
    default:
        size = measure_entry(window, item.text);
        break;
    }
    return {size.cx, std::max(size.cy, ENTRY_HEIGHT)};
}

void menu_item_measure(HWND window, MEASUREITEMSTRUCT *request) {
    const auto *item = reinterpret_cast<const MenuItem *>(request->itemData);
    if (request->CtlType != ODT_MENU || item == nullptr)
        return;
    const SIZE size = measure(window, *item);
    request->itemWidth = static_cast<UINT>(std::max(size.cx, WIDTH_MINIMUM));
    request->itemHeight = static_cast<UINT>(size.cy);
}

// ---- drawing

// Without a brush that would have to be made and destroyed.
static void fill(HDC dc, const RECT &area, COLORREF colour) {
    SetBkColor(dc, colour);
    ExtTextOutA(dc, 0, 0, ETO_OPAQUE, &area, "", 0, nullptr);
}

static void frame(HDC dc, const RECT &area, COLORREF colour) {
    fill(dc, {area.left, area.top, area.right, area.top + 1}, colour);
    fill(dc, {area.left, area.bottom - 1, area.right, area.bottom}, colour);
    fill(dc, {area.left, area.top, area.left + 1, area.bottom}, colour);
    fill(dc, {area.right - 1, area.top, area.right, area.bottom}, colour);
}

static void draw_header(HDC dc, RECT area, const MenuItem &item) {
    fill(dc, area, HEADER_BACK);
    SelectObject(dc, menu_font_header);
    SetTextColor(dc, HEADER_TEXT);
    SetBkMode(dc, TRANSPARENT);
    DrawTextA(dc, item.text, length(item.text), &area,
              DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
}

static void draw_separator(HDC dc, const RECT &area) {
    const LONG middle = area.top + SEPARATOR_LINE_TOP;
    fill(dc, area, PAPER);
    fill(dc, {area.left, area.top, area.left + COLUMN_WIDTH, area.bottom}, COLUMN);
    fill(dc, {area.left + TEXT_INDENT, middle, area.right, middle + 1}, SEPARATOR_LINE);
}

static void blit_centred(HDC dc, LONG centre_x, LONG centre_y, HBITMAP bitmap) {
    BITMAP info = {};
    const HDC memory = object_made(OBJECT_DC, CreateCompatibleDC(dc));
    if (memory == nullptr || GetObjectA(bitmap, sizeof info, &info) == 0) {
        object_destroy(memory);
        return;
    }
    const HGDIOBJ previous = SelectObject(memory, bitmap);
    BitBlt(dc, static_cast<int>(centre_x - info.bmWidth / 2),
           static_cast<int>(centre_y - info.bmHeight / 2), info.bmWidth, info.bmHeight, memory, 0,
           0, SRCCOPY);
    SelectObject(memory, previous);
    object_destroy(memory);
}

static void draw_bitmap(HDC dc, const RECT &area, HBITMAP bitmap, bool disabled, COLORREF column) {
    const HBITMAP faded = disabled ? menu_bitmap_fade_color(bitmap) : nullptr;
    const HBITMAP shown = menu_bitmap_replace_color(faded != nullptr ? faded : bitmap,
                                                    TRANSPARENT_GREEN, column, nullptr);
    if (shown != nullptr)
        blit_centred(dc, area.left + BITMAP_CENTRE_X, area.top + BITMAP_CENTRE_Y, shown);
    object_destroy(shown);
    object_destroy(faded);
}

static const EntryColours &entry_colours(UINT state) {
    if ((state & ODS_SELECTED) == 0)
        return NORMAL;
    return is_disabled(state) ? HIGHLIGHTED_DISABLED : HIGHLIGHTED;
}

static void set_text_colours(HDC dc, UINT state) {
    SetBkColor(dc, entry_colours(state).paper);
    SetTextColor(dc, is_disabled(state) ? DISABLED_TEXT : GetSysColor(COLOR_MENUTEXT));
}

static void draw_entry_text(HDC dc, const RECT &paper, UINT state, const MenuItem &item) {
    set_text_colours(dc, state);
    ExtTextOutA(dc, static_cast<int>(paper.left + TEXT_INDENT - COLUMN_WIDTH),
                static_cast<int>(paper.top + TEXT_TOP), ETO_OPAQUE | ETO_CLIPPED, &paper, item.text,
                static_cast<UINT>(length(item.text)), nullptr);
}

static void draw_entry(HDC dc, const RECT &area, UINT state, const MenuItem &item) {
    const EntryColours &colours = entry_colours(state);
    fill(dc, {area.left, area.top, area.left + COLUMN_WIDTH, area.bottom}, colours.column);
    draw_entry_text(dc, {area.left + COLUMN_WIDTH, area.top, area.right, area.bottom}, state, item);
    if (colours.framed)
        frame(dc, area, colours.frame);
    if (item.image_type == MENU_ITEM_BITMAP)
        draw_bitmap(dc, area, item.bitmap, is_disabled(state), colours.column);
    else if (item.image_type == MENU_ITEM_ICON)
        DrawIconEx(dc, static_cast<int>(area.left + ICON_LEFT),
                   static_cast<int>(area.top + ICON_TOP), item.icon, 0, 0, 0, nullptr, DI_NORMAL);
}

void menu_item_draw(HWND, const DRAWITEMSTRUCT *request) {
    const auto *item = reinterpret_cast<const MenuItem *>(request->itemData);
    if (request->CtlType != ODT_MENU || item == nullptr)
        return;
    const int saved = SaveDC(request->hDC);
    if (item->type == MENU_ITEM_HEADER)
        draw_header(request->hDC, request->rcItem, *item);
    else if (item->type == MENU_ITEM_SEPARATOR)
        draw_separator(request->hDC, request->rcItem);
    else
        draw_entry(request->hDC, request->rcItem, request->itemState, *item);
    RestoreDC(request->hDC, saved);
    if (item->type == MENU_ITEM_COMMAND) // the system draws a submenu's arrow in these
        set_text_colours(request->hDC, request->itemState);
}
