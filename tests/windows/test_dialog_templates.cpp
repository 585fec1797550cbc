#include "dialogs/rules/dialog_options_rules.h"
#include "dialogs/rules/dialog_update_rules.h"
#include "resources/resource_ids.h"
#include "tests/windows/dialog_template.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

static constexpr int DPI_VALUES[] = {96, 120, 144};
static constexpr int MARGIN = 7;          // dialog units kept free at the edge of a dialog
static constexpr short COMBO_HEIGHT = 13; // dialog units of the closed box; the template says how
                                          // far it opens

static DWORD button_kind(const TemplateItem &item) {
    return item.class_atom == ATOM_BUTTON ? item.style & BS_TYPEMASK : ~0u;
}

static bool is_group(const TemplateItem &item) {
    return button_kind(item) == BS_GROUPBOX;
}

static bool is_box(const TemplateItem &item) {
    const DWORD kind = button_kind(item);
    return kind == BS_AUTOCHECKBOX || kind == BS_CHECKBOX || kind == BS_AUTORADIOBUTTON;
}

static bool is_icon(const TemplateItem &item) {
    return item.class_atom == ATOM_STATIC && (item.style & SS_TYPEMASK) == SS_ICON;
}

static short item_height(const TemplateItem &item) {
    return item.class_atom == ATOM_COMBO ? COMBO_HEIGHT : item.height;
}

// Lower case; 0 = none.
static wchar_t access_key(const std::wstring &text) {
    for (std::size_t i = 0; i + 1 < text.size(); i++) {
        if (text[i] != L'&')
            continue;
        if (text[i + 1] != L'&')
            return static_cast<wchar_t>(towlower(static_cast<wint_t>(text[i + 1])));
        i++;
    }
    return 0;
}

static bool shows_prefix(const TemplateItem &item) {
    return item.class_atom == ATOM_BUTTON ||
           (item.class_atom == ATOM_STATIC && (item.style & SS_NOPREFIX) == 0);
}

TEST(DialogTemplates, All_dialogs_are_there_with_their_numbers) {
    std::vector<int> numbers;
    for (const DialogTemplate &dialog : read_dialog_templates())
        numbers.push_back(dialog.number);
    for (const int number : {104, 111, 116, 143, 216, 253, 2000, 2046, 2047, 2048})
        EXPECT_NE(std::find(numbers.begin(), numbers.end(), number), numbers.end()) << number;
}

TEST(DialogTemplates, The_dialogs_for_pages_labels_options_and_updates_have_their_controls) {
    const std::map<int, std::vector<DWORD>> wanted = {
        {253, {1000, 2023, 1003, 1005, 2033, 1004, 1002, 1001, 1007, 2024, 1008, 1, 2}},
        {104, {1001, 1, 2}},
        {143, {1000, 1001, 1002, 2}},
        {2000, {1000, 1001, 1002, 1003, 1004}},
        {2046, {2034, 1, 2}},
        {2047, {2043, 1001, 1000, 1002}}, // and the boxes, which have their captions below
    };
    std::size_t found = 0;
    for (const DialogTemplate &dialog : read_dialog_templates()) {
        const auto expected = wanted.find(dialog.number);
        if (expected == wanted.end())
            continue;
        found++;
        for (const DWORD id : expected->second) {
            EXPECT_EQ(std::count_if(dialog.items.begin(), dialog.items.end(),
                                    [=](const TemplateItem &item) { return item.id == id; }),
                      1)
                << dialog.number << " " << id;
        }
    }
    EXPECT_EQ(found, wanted.size());
}

TEST(DialogTemplates, Access_keys_are_unique_in_each_dialog) {
    for (const DialogTemplate &dialog : read_dialog_templates()) {
        std::map<wchar_t, DWORD> keys;
        for (const TemplateItem &item : dialog.items) {
            const wchar_t key = shows_prefix(item) ? access_key(item.text) : L'\0';
            if (key != 0) {
                EXPECT_TRUE(keys.insert({key, item.id}).second)
                    << dialog.number << ": " << static_cast<char>(key);
            }
        }
    }
}

TEST(DialogTemplates, Every_check_box_and_named_field_has_an_access_key) {
    for (const DialogTemplate &dialog : read_dialog_templates()) {
        for (std::size_t i = 0; i < dialog.items.size(); i++) {
            const TemplateItem &item = dialog.items[i];
            if (is_box(item)) {
                EXPECT_NE(access_key(item.text), 0) << dialog.number << " " << item.id;
            }
            if (item.class_atom == ATOM_EDIT && i > 0 && (item.style & ES_READONLY) == 0) {
                EXPECT_NE(access_key(dialog.items[i - 1].text), 0) << dialog.number << " " << i;
            }
        }
    }
}

TEST(DialogTemplates, Dialogs_with_a_caption_use_the_systems_font_and_a_default_button) {
    for (const DialogTemplate &dialog : read_dialog_templates()) {
        EXPECT_EQ(dialog.font, L"MS Shell Dlg") << dialog.number;
        EXPECT_EQ(dialog.font_size, 8) << dialog.number;
        if ((dialog.style & WS_CAPTION) != WS_CAPTION)
            continue;
        EXPECT_EQ(std::count_if(dialog.items.begin(), dialog.items.end(),
                                [](const TemplateItem &item) {
                                    return button_kind(item) == BS_DEFPUSHBUTTON;
                                }),
                  1)
            << dialog.number;
    }
}

TEST(DialogTemplates, Controls_keep_the_margin_of_their_dialog) {
    for (const DialogTemplate &dialog : read_dialog_templates()) {
        for (const TemplateItem &item : dialog.items) {
            EXPECT_GE(item.x, MARGIN) << dialog.number << " " << item.id;
            EXPECT_GE(item.y, MARGIN) << dialog.number << " " << item.id;
            EXPECT_LE(item.x + item.width, dialog.width - MARGIN)
                << dialog.number << " " << item.id;
            EXPECT_LE(item.y + item_height(item), dialog.height - MARGIN)
                << dialog.number << " " << item.id;
        }
    }
}

static bool overlap(const TemplateItem &a, const TemplateItem &b) {
    return a.x < b.x + b.width && b.x < a.x + a.width && a.y < b.y + item_height(b) &&
           b.y < a.y + item_height(a);
}

TEST(DialogTemplates, No_control_stands_on_another) {
    for (const DialogTemplate &dialog : read_dialog_templates()) {
        for (std::size_t i = 0; i < dialog.items.size(); i++) {
            for (std::size_t k = i + 1; k < dialog.items.size(); k++) {
                const TemplateItem &a = dialog.items[i];
                const TemplateItem &b = dialog.items[k];
                if (!is_group(a) && !is_group(b)) {
                    EXPECT_FALSE(overlap(a, b)) << dialog.number << " " << a.id << " " << b.id;
                }
            }
        }
    }
}

// ---- room for the texts

// A dialog's font on a screen of some resolution, and what it makes of dialog units.
struct Measure {
    int dpi, base_x, base_y;
    HDC dc = CreateCompatibleDC(nullptr);
    HFONT font;
    HGDIOBJ before;

    Measure(const DialogTemplate &dialog, int wanted_dpi) : dpi(wanted_dpi) {
        font = CreateFontW(-MulDiv(dialog.font_size, dpi, 72), 0, 0, 0, FW_NORMAL, FALSE, FALSE,
                           FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS,
                           DEFAULT_QUALITY, DEFAULT_PITCH, dialog.font.c_str());
        before = SelectObject(dc, font);
        static constexpr char LETTERS[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
        SIZE size = {};
        GetTextExtentPoint32A(dc, LETTERS, 52, &size);
        TEXTMETRICA metric = {};
        GetTextMetricsA(dc, &metric);
        base_x = (size.cx / 26 + 1) / 2;
        base_y = metric.tmHeight;
    }
    ~Measure() {
        SelectObject(dc, before);
        DeleteObject(font);
        DeleteDC(dc);
    }
    int pixels_96(int pixels) const {
        return MulDiv(pixels, dpi, 96);
    }
    SIZE room(const TemplateItem &item) const {
        return {MulDiv(item.width, base_x, 4), MulDiv(item.height, base_y, 8)};
    }
    // Broken into lines of this width where that is more than 0.
    SIZE text(const TemplateItem &item, int width) const {
        RECT area = {0, 0, width, 0};
        const bool breaks_words =
            item.class_atom == ATOM_STATIC && (item.style & SS_EDITCONTROL) != 0;
        const UINT flags = DT_CALCRECT | (width > 0 ? DT_WORDBREAK : DT_SINGLELINE) |
                           (breaks_words ? DT_EDITCONTROL : 0) |
                           (shows_prefix(item) ? 0 : DT_NOPREFIX);
        DrawTextW(dc, item.text.c_str(), -1, &area, flags);
        return {area.right, area.bottom};
    }
};

static void expect_room(const Measure &measure, const DialogTemplate &dialog,
                        const TemplateItem &item) {
    static constexpr int BOX = 13 + 6;   // pixels at 96 DPI: a box, its gap and the focus frame
    static constexpr int BUTTON = 2 * 5; // edges and focus frame of a push button
    static constexpr int GROUP = 2 * 9;  // edges left and right of a group's caption
    const SIZE room = measure.room(item);
    const bool is_text = item.class_atom == ATOM_STATIC;
    const SIZE needed = measure.text(item, is_text ? room.cx : 0);
    const int extra = is_box(item) ? BOX : is_group(item) ? GROUP : is_text ? 0 : BUTTON;
    EXPECT_LE(needed.cx + measure.pixels_96(extra), room.cx)
        << dialog.number << " " << item.id << " at " << measure.dpi;
    EXPECT_LE(needed.cy, room.cy) << dialog.number << " " << item.id << " at " << measure.dpi;
}

TEST(DialogTemplates, No_text_is_clipped_at_96_120_and_144_DPI) {
    int texts = 0;
    for (const DialogTemplate &dialog : read_dialog_templates()) {
        for (const int dpi : DPI_VALUES) {
            const Measure measure(dialog, dpi);
            for (const TemplateItem &item : dialog.items) {
                const bool shows_text =
                    item.class_atom == ATOM_BUTTON || item.class_atom == ATOM_STATIC;
                if (!shows_text || is_icon(item) || item.text.empty())
                    continue;
                expect_room(measure, dialog, item);
                texts++;
            }
        }
    }
    EXPECT_GE(texts, 3 * 37);
}

static std::vector<std::string> longest_update_texts() {
    const std::string site(UPDATE_SITE_LENGTH, 'W'), version(24, 'W');
    UpdateView view = dialog_update_offer(version.c_str());
    std::vector<std::string> texts = {view.text};
    dialog_update_connect(&view, site.c_str());
    texts.push_back(view.text);
    for (std::int32_t step = 0; step <= 5; step++) {
        dialog_update_step(&view, site.c_str(), step, 0);
        texts.push_back(view.text);
    }
    return texts;
}

static void expect_room_for_update(const DialogTemplate &dialog, const TemplateItem &item) {
    for (const int dpi : DPI_VALUES) {
        const Measure measure(dialog, dpi);
        for (const std::string &text : longest_update_texts()) {
            TemplateItem filled = item;
            filled.text.assign(text.begin(), text.end());
            expect_room(measure, dialog, filled);
        }
        static constexpr int PICTURE_RIGHT = 10 + 32; // pixels
        EXPECT_GT(MulDiv(item.x, measure.base_x, 4), PICTURE_RIGHT) << dpi;
    }
}

TEST(DialogTemplates, The_update_dialog_has_room_for_the_longest_site_and_version) {
    int texts = 0;
    for (const DialogTemplate &dialog : read_dialog_templates()) {
        for (const TemplateItem &item : dialog.items) {
            if (dialog.number != RESOURCE_DIALOG_UPDATE || item.id != RESOURCE_UPDATE_TEXT)
                continue;
            expect_room_for_update(dialog, item);
            texts++;
        }
    }
    EXPECT_EQ(texts, 1);
}

// ---- captions of the options

static std::string plain(const std::wstring &text) {
    std::string plain;
    for (const wchar_t character : text) {
        if (character != L'&')
            plain += static_cast<char>(character);
    }
    return plain;
}

TEST(DialogTemplates, The_boxes_of_the_options_have_their_captions) {
    struct Caption {
        int page;
        DWORD id;
        const char *text;
    };
    static constexpr Caption captions[] = {
        {2047, 2042, "Show home page title"},
        {2047, 2041, "Maintain zoom level between pages"},
        {2047, 2035, "Display splash screen"},
        {2047, 2037, "Confirm page file deletion"},
        {2047, 2036, "Confirm object deletion"},
        {2047, 2038, "Remember last 3D model used"},
        {2047, 2039, "Check for updates automatically"},
        {116, 2038, "Double-Click runs Action 1"},
        {116, 2039, "Exit after running Action 1"},
        {116, 2040, "Exit after running any Action"},
        {116, 1000, "Show Action menu title bar"},
        {116, 1001, "Show Action menu application icons"},
        {2048, 1000, "Disable start-up graphics card warnings"},
        {2048, 2037, "Enhanced graphics"},
        {2048, 2036, "Draw reflections"},
        {2048, 2039, "Page zoom transiton"},
        {2048, 2038, "Object rotation"},
        {2048, 2040, "Object transitions"},
        {2048, 2035, "Page inertia"},
        {2048, 2041, "Object inertia"},
        {2048, 2042, "Text shadows"},
        {2048, 1001, "Anti-aliasing"},
    };
    std::size_t found = 0;
    for (const DialogTemplate &dialog : read_dialog_templates()) {
        for (const TemplateItem &item : dialog.items) {
            for (const Caption &caption : captions) {
                if (caption.page != dialog.number || caption.id != item.id)
                    continue;
                EXPECT_EQ(plain(item.text), caption.text);
                EXPECT_TRUE(is_box(item)) << item.id;
                found++;
            }
        }
    }
    EXPECT_EQ(found, std::size(captions));
    EXPECT_EQ(found, OPTIONS_BOXES.size());
}
