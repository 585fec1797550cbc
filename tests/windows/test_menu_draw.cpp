#include "actions/menu.h"
#include "actions/menu_windows.h"
#include "platform/text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>

static constexpr int WIDTH = 200, HEIGHT = 60; // pixels of the canvas
static constexpr COLORREF UNTOUCHED = RGB(1, 2, 3);
static constexpr COLORREF COLUMN = RGB(236, 236, 236);
static constexpr COLORREF WHITE = RGB(255, 255, 255);
static constexpr COLORREF RED = RGB(255, 0, 0);
static constexpr COLORREF GREEN = RGB(0, 255, 0);

// A picture in memory to draw on and look at.
struct Canvas {
    HDC dc;
    HBITMAP bitmap;
    HGDIOBJ previous;

    Canvas(int width, int height, COLORREF colour) : dc(CreateCompatibleDC(nullptr)) {
        BITMAPINFO info = {};
        info.bmiHeader.biSize = sizeof info.bmiHeader;
        info.bmiHeader.biWidth = width;
        info.bmiHeader.biHeight = -height;
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        void *bits = nullptr;
        bitmap = CreateDIBSection(dc, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
        previous = SelectObject(dc, bitmap);
        fill({0, 0, width, height}, colour);
    }
    ~Canvas() {
        SelectObject(dc, previous);
        DeleteObject(bitmap);
        DeleteDC(dc);
    }
    Canvas(const Canvas &) = delete;
    Canvas &operator=(const Canvas &) = delete;

    void fill(RECT area, COLORREF colour) const {
        SetDCBrushColor(dc, colour);
        FillRect(dc, &area, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
    }
    COLORREF at(int x, int y) const {
        return GetPixel(dc, x, y);
    }
    // The colour of all of an area (right and bottom outside), or CLR_INVALID when it has several.
    COLORREF all(RECT area) const {
        const COLORREF first = at(static_cast<int>(area.left), static_cast<int>(area.top));
        for (int y = static_cast<int>(area.top); y < area.bottom; y++) {
            for (int x = static_cast<int>(area.left); x < area.right; x++) {
                if (at(x, y) != first)
                    return CLR_INVALID;
            }
        }
        return first;
    }
};

static SIZE text_size(HGDIOBJ font, const char *text) {
    SIZE size = {};
    const HDC dc = CreateCompatibleDC(nullptr);
    const HGDIOBJ previous = SelectObject(dc, font);
    GetTextExtentPoint32A(dc, text, static_cast<int>(std::strlen(text)), &size);
    SelectObject(dc, previous);
    DeleteDC(dc);
    return size;
}

struct MenuDraw : testing::Test {
    Canvas canvas{WIDTH, HEIGHT, UNTOUCHED};
    MenuItem item = {};

    MenuDraw() {
        menu_init();
    }
    ~MenuDraw() override {
        menu_stop();
    }

    void set(MenuItemType type, const char *text) {
        item.type = type;
        text_copy(item.text, text);
    }

    void draw(RECT area, UINT state = 0, UINT control = ODT_MENU) {
        DRAWITEMSTRUCT request = {};
        request.CtlType = control;
        request.itemState = state;
        request.hDC = canvas.dc;
        request.rcItem = area;
        request.itemData = reinterpret_cast<ULONG_PTR>(&item);
        menu_item_draw(nullptr, &request);
    }

    SIZE measure() {
        MEASUREITEMSTRUCT request = {};
        request.CtlType = ODT_MENU;
        request.itemData = reinterpret_cast<ULONG_PTR>(&item);
        const HWND window = CreateWindowExA(0, "STATIC", "", WS_OVERLAPPEDWINDOW, 0, 0, 100, 100,
                                            nullptr, nullptr, nullptr, nullptr);
        menu_item_measure(window, &request);
        DestroyWindow(window);
        return {static_cast<LONG>(request.itemWidth), static_cast<LONG>(request.itemHeight)};
    }

    // What the entry looks like, text aside; the text must be empty.
    void expect_entry(UINT state, COLORREF column, COLORREF paper, COLORREF frame) {
        canvas.fill({0, 0, WIDTH, HEIGHT}, UNTOUCHED);
        draw({10, 5, 190, 26}, state);
        const bool framed = frame != CLR_INVALID;
        const LONG edge = framed ? 1 : 0;
        EXPECT_EQ(column, canvas.all({10 + edge, 5 + edge, 35, 26 - edge}));
        EXPECT_EQ(paper, canvas.all({35, 5 + edge, 190 - edge, 26 - edge}));
        if (framed) {
            EXPECT_EQ(frame, canvas.all({10, 5, 190, 6}));
            EXPECT_EQ(frame, canvas.all({10, 25, 190, 26}));
            EXPECT_EQ(frame, canvas.all({10, 5, 11, 26}));
            EXPECT_EQ(frame, canvas.all({189, 5, 190, 26}));
        }
        EXPECT_EQ(UNTOUCHED, canvas.all({0, 0, WIDTH, 5}));
        EXPECT_EQ(UNTOUCHED, canvas.all({0, 26, WIDTH, HEIGHT}));
        EXPECT_EQ(UNTOUCHED, canvas.all({0, 0, 10, HEIGHT}));
        EXPECT_EQ(UNTOUCHED, canvas.all({190, 0, WIDTH, HEIGHT}));
    }

    // The text area shows just what the system draws for this text at its place.
    void expect_text(UINT state, COLORREF paper, COLORREF colour) {
        draw({10, 5, 190, 26}, state);
        const Canvas wanted(WIDTH, HEIGHT, paper);
        SetBkColor(wanted.dc, paper);
        SetTextColor(wanted.dc, colour);
        TextOutA(wanted.dc, 10 + 25 + 3, 5 + 3, item.text,
                 static_cast<int>(std::strlen(item.text)));
        int inked = 0;
        for (int y = 6; y < 25; y++) {
            for (int x = 36; x < 189; x++) {
                ASSERT_EQ(wanted.at(x, y), canvas.at(x, y)) << x << ", " << y;
                inked += canvas.at(x, y) == colour ? 1 : 0;
            }
        }
        EXPECT_GT(inked, 20);
    }
};

static constexpr UINT HIGHLIGHTED = ODS_SELECTED;
static constexpr UINT DISABLED = ODS_DISABLED | ODS_GRAYED;

TEST_F(MenuDraw, an_entry_at_rest_is_white_beside_a_light_grey_column) {
    set(MENU_ITEM_COMMAND, "");
    expect_entry(0, COLUMN, WHITE, CLR_INVALID);
    expect_entry(DISABLED, COLUMN, WHITE, CLR_INVALID);
}

TEST_F(MenuDraw, a_highlighted_entry_is_blue_and_framed) {
    set(MENU_ITEM_COMMAND, "");
    expect_entry(HIGHLIGHTED, RGB(183, 217, 246), RGB(192, 226, 255), RGB(51, 153, 255));
}

TEST_F(MenuDraw, a_highlighted_entry_that_is_disabled_is_grey_and_framed) {
    set(MENU_ITEM_COMMAND, "");
    for (const UINT disabled : {ODS_DISABLED, ODS_GRAYED})
        expect_entry(HIGHLIGHTED | disabled, RGB(223, 223, 223), RGB(233, 233, 233),
                     RGB(200, 200, 200));
}

TEST_F(MenuDraw, texts_stand_3_pixels_from_the_column_in_the_colour_of_their_state) {
    set(MENU_ITEM_COMMAND, "Properties & more");
    const COLORREF normal = GetSysColor(COLOR_MENUTEXT);
    const COLORREF grey = RGB(140, 140, 140);
    expect_text(0, WHITE, normal);
    expect_text(DISABLED, WHITE, grey);
    expect_text(HIGHLIGHTED, RGB(192, 226, 255), normal);
    expect_text(HIGHLIGHTED | DISABLED, RGB(233, 233, 233), grey);
}

TEST_F(MenuDraw, a_text_that_is_too_long_is_clipped_to_its_area) {
    set(MENU_ITEM_COMMAND, std::string(64, 'W').c_str());
    draw({10, 5, 100, 26}, HIGHLIGHTED);
    EXPECT_EQ(UNTOUCHED, canvas.all({100, 0, WIDTH, HEIGHT}));
    EXPECT_EQ(RGB(183, 217, 246), canvas.all({11, 6, 35, 25}));
    EXPECT_EQ(RGB(51, 153, 255), canvas.all({99, 5, 100, 26})); // the frame lies over it
}

TEST_F(MenuDraw, a_separator_is_a_line_behind_the_column) {
    set(MENU_ITEM_SEPARATOR, "");
    draw({10, 5, 190, 10});
    EXPECT_EQ(COLUMN, canvas.all({10, 5, 35, 10}));
    EXPECT_EQ(WHITE, canvas.all({35, 5, 190, 7}));
    EXPECT_EQ(WHITE, canvas.all({35, 7, 38, 8}));
    EXPECT_EQ(RGB(200, 200, 200), canvas.all({38, 7, 190, 8}));
    EXPECT_EQ(WHITE, canvas.all({35, 8, 190, 10}));
    EXPECT_EQ(UNTOUCHED, canvas.all({0, 10, WIDTH, HEIGHT}));
    EXPECT_EQ(UNTOUCHED, canvas.all({190, 0, WIDTH, HEIGHT}));
}

TEST_F(MenuDraw, a_title_stands_light_on_dark_in_the_middle_of_its_bar) {
    set(MENU_ITEM_HEADER, "HHHH");
    draw({10, 5, 190, 26});
    RECT text = {WIDTH, HEIGHT, 0, 0};
    int inked = 0;
    for (int y = 5; y < 26; y++) {
        for (int x = 10; x < 190; x++) {
            inked += canvas.at(x, y) == RGB(200, 200, 200) ? 1 : 0;
            if (canvas.at(x, y) != RGB(118, 118, 118))
                text = {std::min<LONG>(text.left, x), std::min<LONG>(text.top, y),
                        std::max<LONG>(text.right, x + 1), std::max<LONG>(text.bottom, y + 1)};
        }
    }
    EXPECT_GT(inked, 20);
    ASSERT_LT(text.left, text.right);
    // Not every system's glyphs fill the width that it tells.
    EXPECT_NEAR((10 + 190 - text_size(menu_font_header, "HHHH").cx) / 2, text.left, 2);
    EXPECT_NEAR(5 + 26, text.top + text.bottom, 4); // capitals have no descent
    EXPECT_EQ(RGB(118, 118, 118), canvas.all({10, 5, text.left - 2, 26}));
    EXPECT_EQ(RGB(118, 118, 118), canvas.all({text.right + 2, 5, 190, 26}));
    EXPECT_EQ(UNTOUCHED, canvas.all({0, 26, WIDTH, HEIGHT}));
}

TEST_F(MenuDraw, a_title_looks_the_same_highlighted_and_disabled) {
    set(MENU_ITEM_HEADER, "Server");
    draw({0, 0, 200, 21}, HIGHLIGHTED | DISABLED);
    draw({0, 30, 200, 51});
    for (int y = 0; y < 21; y++) {
        for (int x = 0; x < WIDTH; x++)
            ASSERT_EQ(canvas.at(x, y + 30), canvas.at(x, y)) << x << ", " << y;
    }
}

TEST_F(MenuDraw, a_title_that_is_too_long_is_clipped) {
    set(MENU_ITEM_HEADER, std::string(64, 'W').c_str());
    draw({50, 5, 150, 26});
    EXPECT_EQ(UNTOUCHED, canvas.all({0, 0, 50, HEIGHT}));
    EXPECT_EQ(UNTOUCHED, canvas.all({150, 0, WIDTH, HEIGHT}));
}

TEST_F(MenuDraw, the_title_font_is_tahoma_at_its_heaviest) {
    LOGFONTA font = {};
    ASSERT_NE(0, GetObjectA(menu_font_header, sizeof font, &font));
    EXPECT_STREQ("Tahoma", font.lfFaceName);
    EXPECT_EQ(16, font.lfHeight);
    EXPECT_EQ(900, font.lfWeight);
}

TEST_F(MenuDraw, the_device_context_is_left_as_it_was_but_for_the_colours_of_the_arrow) {
    const HGDIOBJ font = GetCurrentObject(canvas.dc, OBJ_FONT);
    for (const MenuItemType type : {MENU_ITEM_COMMAND, MENU_ITEM_SEPARATOR, MENU_ITEM_HEADER}) {
        SetTextColor(canvas.dc, RED);
        SetBkColor(canvas.dc, GREEN);
        set(type, "Text");
        draw({10, 5, 190, 26}, HIGHLIGHTED);
        const bool arrow = type == MENU_ITEM_COMMAND; // it may open a submenu
        EXPECT_EQ(arrow ? GetSysColor(COLOR_MENUTEXT) : RED, GetTextColor(canvas.dc));
        EXPECT_EQ(arrow ? RGB(192, 226, 255) : GREEN, GetBkColor(canvas.dc));
        EXPECT_EQ(OPAQUE, GetBkMode(canvas.dc));
        EXPECT_EQ(font, GetCurrentObject(canvas.dc, OBJ_FONT));
    }
}

TEST_F(MenuDraw, requests_that_are_not_about_our_entries_draw_and_measure_nothing) {
    set(MENU_ITEM_COMMAND, "Text");
    draw({10, 5, 190, 26}, 0, ODT_BUTTON);
    EXPECT_EQ(UNTOUCHED, canvas.all({0, 0, WIDTH, HEIGHT}));
    DRAWITEMSTRUCT draw_request = {};
    draw_request.CtlType = ODT_MENU;
    draw_request.hDC = canvas.dc;
    draw_request.rcItem = {0, 0, 100, 21};
    menu_item_draw(nullptr, &draw_request); // an entry without a record
    EXPECT_EQ(UNTOUCHED, canvas.all({0, 0, WIDTH, HEIGHT}));
    MEASUREITEMSTRUCT measure_request = {};
    measure_request.CtlType = ODT_MENU;
    menu_item_measure(nullptr, &measure_request);
    EXPECT_EQ(0u, measure_request.itemWidth);
}

// ---- pictures

// 16 x 16, green but for a red top left and bottom right pixel and a 2 x 2 black middle.
struct Picture : Canvas {
    Picture() : Canvas(16, 16, GREEN) {
        fill({0, 0, 1, 1}, RED);
        fill({15, 15, 16, 16}, RED);
        fill({7, 7, 9, 9}, RGB(0, 0, 0));
    }
};

TEST_F(MenuDraw, a_bitmap_is_centred_12_and_10_pixels_from_the_corner_and_green_is_transparent) {
    struct {
        UINT state;
        COLORREF column;
    } const states[] = {{0, COLUMN}, {HIGHLIGHTED, RGB(183, 217, 246)}};
    const Picture picture;
    SelectObject(picture.dc, picture.previous); // not selected anywhere
    set(MENU_ITEM_COMMAND, "");
    item.image_type = MENU_ITEM_BITMAP;
    item.bitmap = picture.bitmap;
    for (const auto &state : states) {
        draw({10, 5, 190, 26}, state.state);
        EXPECT_EQ(RED, canvas.at(10 + 4, 5 + 2));
        EXPECT_EQ(RED, canvas.at(10 + 19, 5 + 17));
        EXPECT_EQ(RGB(0, 0, 0), canvas.all({10 + 11, 5 + 9, 10 + 13, 5 + 11}));
        EXPECT_EQ(state.column, canvas.all({10 + 5, 5 + 2, 35, 5 + 9}));
        EXPECT_EQ(state.column, canvas.all({11, 6, 10 + 4, 25}));
        EXPECT_EQ(state.column, canvas.all({10 + 20, 6, 35, 25}));
    }
}

TEST_F(MenuDraw, the_bitmap_of_a_disabled_entry_is_faded) {
    struct {
        UINT state;
        COLORREF column;
    } const states[] = {{DISABLED, COLUMN}, {HIGHLIGHTED | DISABLED, RGB(223, 223, 223)}};
    const Picture picture;
    SelectObject(picture.dc, picture.previous);
    set(MENU_ITEM_COMMAND, "");
    item.image_type = MENU_ITEM_BITMAP;
    item.bitmap = picture.bitmap;
    for (const auto &state : states) {
        draw({10, 5, 190, 26}, state.state);
        EXPECT_EQ(RGB(149, 149, 149), canvas.at(10 + 4, 5 + 2));
        EXPECT_EQ(RGB(64, 64, 64), canvas.at(10 + 11, 5 + 9));
        EXPECT_EQ(state.column, canvas.all({10 + 5, 5 + 2, 35, 5 + 9}));
    }
}

TEST_F(MenuDraw, an_icon_stands_4_and_2_pixels_from_the_corner_in_its_own_size) {
    const Canvas colour(16, 16, RED);
    const Canvas mask(16, 16, RGB(0, 0, 0));
    SelectObject(colour.dc, colour.previous);
    SelectObject(mask.dc, mask.previous);
    ICONINFO info = {};
    info.fIcon = TRUE;
    info.hbmColor = colour.bitmap;
    info.hbmMask = CreateBitmap(16, 16, 1, 1, nullptr);
    const HICON icon = CreateIconIndirect(&info);
    ASSERT_NE(nullptr, icon);
    set(MENU_ITEM_COMMAND, "");
    item.image_type = MENU_ITEM_ICON;
    item.icon = icon;
    draw({10, 5, 190, 26});
    EXPECT_EQ(COLUMN, canvas.all({10, 5, 14, 26}));
    EXPECT_EQ(COLUMN, canvas.all({10, 5, 35, 7}));
    EXPECT_EQ(RED, canvas.at(14, 7));
    EXPECT_EQ(RED, canvas.at(29, 22));
    EXPECT_EQ(COLUMN, canvas.all({30, 5, 35, 26}));
    EXPECT_EQ(COLUMN, canvas.all({10, 23, 35, 26}));
    DestroyIcon(icon);
    DeleteObject(info.hbmMask);
}

static COLORREF pixel_of(HBITMAP bitmap, int x, int y) {
    const HDC dc = CreateCompatibleDC(nullptr);
    const HGDIOBJ previous = SelectObject(dc, bitmap);
    const COLORREF colour = GetPixel(dc, x, y);
    SelectObject(dc, previous);
    DeleteDC(dc);
    return colour;
}

TEST_F(MenuDraw, a_faded_copy_is_a_32_bit_picture_of_the_same_size) {
    const Picture picture;
    SelectObject(picture.dc, picture.previous);
    const HBITMAP faded = menu_bitmap_fade_color(picture.bitmap);
    ASSERT_NE(nullptr, faded);
    DIBSECTION info = {};
    ASSERT_EQ(static_cast<int>(sizeof info), GetObjectA(faded, sizeof info, &info));
    EXPECT_EQ(16, info.dsBm.bmWidth);
    EXPECT_EQ(16, info.dsBm.bmHeight);
    EXPECT_EQ(32, info.dsBm.bmBitsPixel);
    const auto *pixels = static_cast<const std::uint32_t *>(info.dsBm.bmBits);
    EXPECT_EQ(0x959595u, pixels[0]) << "the top row does not come first";
    EXPECT_EQ(0x00FF00u, pixels[15]);
    EXPECT_EQ(RGB(149, 149, 149), pixel_of(faded, 0, 0));
    EXPECT_EQ(RGB(64, 64, 64), pixel_of(faded, 7, 7));
    EXPECT_EQ(GREEN, pixel_of(faded, 1, 0));
    EXPECT_EQ(RED, pixel_of(picture.bitmap, 0, 0)); // the original is as it was
    DeleteObject(faded);
}

TEST_F(MenuDraw, a_colour_is_replaced_in_a_copy_even_while_the_bitmap_is_selected) {
    const Picture picture;
    const HBITMAP copy = menu_bitmap_replace_color(picture.bitmap, RED, RGB(1, 2, 3), picture.dc);
    ASSERT_NE(nullptr, copy);
    EXPECT_EQ(picture.bitmap, GetCurrentObject(picture.dc, OBJ_BITMAP));
    EXPECT_EQ(RED, picture.at(0, 0));
    EXPECT_EQ(RGB(1, 2, 3), pixel_of(copy, 0, 0));
    EXPECT_EQ(RGB(1, 2, 3), pixel_of(copy, 15, 15));
    EXPECT_EQ(GREEN, pixel_of(copy, 1, 0));
    EXPECT_EQ(RGB(0, 0, 0), pixel_of(copy, 7, 7));
    DeleteObject(copy);
}

TEST_F(MenuDraw, a_device_context_that_holds_another_bitmap_is_left_alone) {
    const Picture picture, other;
    SelectObject(picture.dc, picture.previous);
    const HBITMAP copy = menu_bitmap_replace_color(picture.bitmap, RED, GREEN, other.dc);
    ASSERT_NE(nullptr, copy);
    EXPECT_EQ(GREEN, pixel_of(copy, 0, 0));
    EXPECT_EQ(other.bitmap, GetCurrentObject(other.dc, OBJ_BITMAP));
    DeleteObject(copy);
}

TEST_F(MenuDraw, of_no_bitmap_there_is_no_copy) {
    EXPECT_EQ(nullptr, menu_bitmap_fade_color(nullptr));
    EXPECT_EQ(nullptr, menu_bitmap_replace_color(nullptr, RED, GREEN, nullptr));
    EXPECT_EQ(nullptr, menu_bitmap_replace_color(nullptr, RED, GREEN, canvas.dc));
}

TEST_F(MenuDraw, all_shared_pictures_are_there_and_gone_after_the_stop) {
    for (const HBITMAP bitmap : menu_icon)
        EXPECT_NE(nullptr, bitmap);
    for (const HBITMAP bitmap : col_bmp)
        EXPECT_NE(nullptr, bitmap);
    menu_stop();
    EXPECT_EQ(nullptr, menu_font_header);
    for (const HBITMAP bitmap : menu_icon)
        EXPECT_EQ(nullptr, bitmap);
    for (const HBITMAP bitmap : col_bmp)
        EXPECT_EQ(nullptr, bitmap);
}

TEST_F(MenuDraw, every_picture_of_a_command_is_transparent_in_its_corner) {
    for (int i = 0; i < MENU_ICONS; i++)
        EXPECT_EQ(GREEN, pixel_of(menu_icon[i], 0, 0)) << i;
}

// ---- measuring

static constexpr char LONG_TEXT[] = "A name that is surely wider than that";

TEST_F(MenuDraw, an_entry_is_as_wide_as_its_text_and_28_pixels) {
    set(MENU_ITEM_COMMAND, LONG_TEXT);
    const SIZE text = text_size(GetStockObject(SYSTEM_FONT), LONG_TEXT);
    ASSERT_GT(text.cx, 120);
    EXPECT_EQ(text.cx + 28, measure().cx);
    EXPECT_EQ(std::max<LONG>(text.cy, 21), measure().cy);
}

// Menus are drawn in a font of this height until the end of the test.
struct MenuFontHeight {
    NONCLIENTMETRICSA usual = {};
    HFONT font = nullptr;

    explicit MenuFontHeight(LONG height) {
        usual.cbSize = sizeof usual;
        SystemParametersInfoA(SPI_GETNONCLIENTMETRICS, sizeof usual, &usual, 0);
        NONCLIENTMETRICSA metrics = usual;
        metrics.lfMenuFont.lfHeight = -height;
        SystemParametersInfoA(SPI_SETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
        font = CreateFontIndirectA(&metrics.lfMenuFont);
    }
    ~MenuFontHeight() {
        DeleteObject(font);
        SystemParametersInfoA(SPI_SETNONCLIENTMETRICS, sizeof usual, &usual, 0);
    }
    MenuFontHeight(const MenuFontHeight &) = delete;
    MenuFontHeight &operator=(const MenuFontHeight &) = delete;
};

TEST_F(MenuDraw, a_large_menu_font_makes_entries_as_large_as_their_texts) {
    set(MENU_ITEM_COMMAND, "Align With Object gggg");
    const SIZE usual = measure();
    const MenuFontHeight menu_font(40);
    const SIZE text = text_size(menu_font.font, item.text);
    ASSERT_GT(text.cx + 28, usual.cx);
    const SIZE size = measure();
    EXPECT_GE(size.cx, text.cx + 28);
    EXPECT_GE(size.cy, text.cy + 3); // it is drawn 3 pixels from the top
    set(MENU_ITEM_SEPARATOR, "");
    EXPECT_EQ(5, measure().cy);
}

TEST_F(MenuDraw, a_title_is_as_wide_as_its_text_in_its_font) {
    set(MENU_ITEM_HEADER, LONG_TEXT);
    const SIZE text = text_size(menu_font_header, LONG_TEXT);
    ASSERT_GT(text.cx, 120);
    EXPECT_EQ(text.cx, measure().cx);
    EXPECT_EQ(21, measure().cy);
}

TEST_F(MenuDraw, nothing_is_narrower_than_120_pixels_or_lower_than_21_but_separators) {
    for (const MenuItemType type : {MENU_ITEM_COMMAND, MENU_ITEM_HEADER}) {
        set(type, "a");
        EXPECT_EQ(120, measure().cx);
        EXPECT_EQ(21, measure().cy);
        set(type, "");
        EXPECT_EQ(120, measure().cx);
        EXPECT_EQ(21, measure().cy);
    }
    set(MENU_ITEM_SEPARATOR, "");
    EXPECT_EQ(120, measure().cx);
    EXPECT_EQ(5, measure().cy);
}
