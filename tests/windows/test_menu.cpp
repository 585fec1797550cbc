// Real menus over the real window, worked by keys while they are open.
#include "actions/menu.h"

#include "actions/menu_windows.h"
#include "editing/clipboard.h"
#include "editing/undo.h"
#include "page/options.h"
#include "platform/text.h"
#include "platform/win32/object_count.h"
#include "scene/scene_page.h"
#include "tests/windows/menu_player.h"
#include "tests/windows/real_window.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

using Steps = std::vector<std::function<void()>>;
using Commands = std::vector<int>;

static std::int32_t add_node(NodeType type, const char *name) {
    const std::int32_t id = node_total++;
    node_init_node(id);
    node[id].type = type;
    node[id].action_count = 0;
    text_copy(node[id].name, name);
    return id;
}

static Action *add_action(std::int32_t id, ActionType type, const char *name,
                          const char *command = "", std::int32_t owner = 0) {
    Action **slot = &node[id].actions[node[id].action_count++];
    action_allocate_action(slot);
    (*slot)->type = type;
    (*slot)->owner = owner;
    text_copy((*slot)->name, name);
    text_copy((*slot)->command, command);
    (*slot)->icon[0] = '\0';
    return *slot;
}

// Server: two commands, a separator, a submenu with one more. Games: a page object. Label.
struct MenuTest : testing::Test {
    RealWindow window;
    std::int32_t server, games, label;

    MenuTest() {
        orvanel_options.action_menu_title = 1;
        orvanel_options.action_menu_icons = 1;
        server = add_node(NODE_OBJECT, "Server");
        add_action(server, ACTION_COMMAND, "Edit", "notepad");
        add_action(server, ACTION_COMMAND, "Page", "http://a.example");
        add_action(server, ACTION_SEPARATOR, "");
        add_action(server, ACTION_SUBMENU, "More");
        add_action(server, ACTION_COMMAND, "Inner", "winver", 1);
        games = add_node(NODE_PAGE, "Games");
        label = add_node(NODE_LABEL, "Label");
        move_cursor(200, 200);
    }

    static void move_cursor(int x, int y) {
        SetCursorPos(x, y);
    }

    Commands play(Steps steps, int menu_type, int node_id = -1) {
        MenuPlayer player(std::move(steps));
        player.show(menu_type, node_id);
        return player.commands;
    }
};

static void expect_same_entries(HMENU menu, const MenuContent &content, std::int32_t number) {
    int position = 0;
    for (std::int32_t i = 0; i < content.total; i++) {
        const MenuEntry &entry = content.entries[i];
        if (entry.menu != number)
            continue;
        const MenuItem *record = menu_item_at(menu, position);
        ASSERT_NE(nullptr, record) << position;
        EXPECT_STREQ(entry.text, record->text);
        const bool closed = (entry_state(menu, static_cast<UINT>(position)) & MFS_DISABLED) != 0;
        EXPECT_EQ(entry.disabled || entry.kind == MENU_ENTRY_TITLE, closed) << entry.text;
        if (entry.kind == MENU_ENTRY_COMMAND) {
            EXPECT_EQ(static_cast<UINT>(entry.id), GetMenuItemID(menu, position));
        }
        if (entry.kind == MENU_ENTRY_SUBMENU)
            expect_same_entries(GetSubMenu(menu, position), content, entry.submenu);
        position++;
    }
    EXPECT_EQ(position, GetMenuItemCount(menu));
}

TEST_F(MenuTest, every_menu_shows_the_entries_it_should_hold) {
    const struct {
        int type;
        std::int32_t node;
    } menus[] = {{MENU_PAGE, -1},         {MENU_ACTION, server},      {MENU_ACTION, games},
                 {MENU_EDIT_PAGE, -1},    {MENU_EDIT_OBJECT, server}, {MENU_EDIT_OBJECT, games},
                 {MENU_EDIT_LABEL, label}};
    for (const auto &shown : menus) {
        const auto content = std::make_unique<MenuContent>();
        menu_content_build(content.get(), shown.type, shown.node);
        MenuPlayer player;
        player.steps = {[&] {
            expect_same_entries(player.menu, *content, MENU_TOP);
            EndMenu();
        }};
        player.show(shown.type, shown.node);
        EXPECT_NE(nullptr, player.menu) << shown.type;
        EXPECT_EQ(Commands{}, player.commands);
    }
}

TEST_F(MenuTest, the_chosen_entry_arrives_as_a_command_after_the_menu_is_closed) {
    MenuPlayer player({key(VK_DOWN), key(VK_DOWN), key(VK_RETURN)});
    player.show(MENU_PAGE);
    EXPECT_EQ((Commands{COMMAND_CENTER_PAGE}), player.commands);
    EXPECT_FALSE(IsMenu(player.menu));
}

TEST_F(MenuTest, escape_closes_the_menu_without_a_choice) {
    MenuPlayer player({key(VK_DOWN), key(VK_ESCAPE)});
    player.show(MENU_PAGE);
    EXPECT_EQ(Commands{}, player.commands);
    EXPECT_EQ(2u, player.next_step);
    EXPECT_EQ(2u, player.highlights.size()); // it was closed by the key, not by the player
}

TEST_F(MenuTest, the_arrow_keys_pass_over_separators_and_come_round) {
    MenuPlayer player(
        {key(VK_DOWN), key(VK_DOWN), key(VK_DOWN), key(VK_DOWN), key(VK_DOWN), key(VK_UP)});
    player.show(MENU_PAGE); // edit, center, separator, options, about
    EXPECT_EQ((std::vector<UINT>{UINT_MAX, 0, 1, 3, 4, 0, 4}), player.highlights);
}

TEST_F(MenuTest, the_right_arrow_opens_a_submenu_and_return_chooses_in_it) {
    const Steps to_page_colour = {key(VK_UP), key(VK_UP), key(VK_UP)}; // about, options, colours
    Steps steps = to_page_colour;
    for (const UINT code : {VK_RIGHT, VK_DOWN, VK_DOWN, VK_RETURN})
        steps.push_back(key(code));
    EXPECT_EQ((Commands{COMMAND_COLOUR_FIRST + 1}), play(steps, MENU_EDIT_PAGE));
}

TEST_F(MenuTest, an_action_in_a_submenu_is_chosen_by_its_own_index) {
    EXPECT_EQ((Commands{COMMAND_ACTION_FIRST + 4}),
              play({key(VK_UP), key(VK_RIGHT), key(VK_RETURN)}, MENU_ACTION, server));
}

TEST_F(MenuTest, a_first_letter_chooses_the_only_entry_with_it) {
    EXPECT_EQ((Commands{COMMAND_CENTER_PAGE}), play({letter('c')}, MENU_PAGE));
    EXPECT_EQ((Commands{COMMAND_OPTIONS}), play({letter('O')}, MENU_PAGE));
    EXPECT_EQ((Commands{COMMAND_ACTION_FIRST + 1}), play({letter('p')}, MENU_ACTION, server));
}

TEST_F(MenuTest, a_first_letter_of_several_entries_highlights_them_in_turn) {
    MenuPlayer player({letter('n'), letter('N'), letter('n'), letter('n'), key(VK_RETURN)});
    player.show(MENU_EDIT_PAGE); // new object, new label, new page
    EXPECT_EQ((std::vector<UINT>{UINT_MAX, 3, 4, 5, 3}), player.highlights);
    EXPECT_EQ((Commands{COMMAND_NEW_OBJECT}), player.commands);
}

TEST_F(MenuTest, the_highlight_moves_round_the_end_to_an_entry_above_it) {
    MenuPlayer player({key(VK_UP), letter('c')});
    node[server].action_count = 0;
    add_action(server, ACTION_COMMAND, "Copy");
    add_action(server, ACTION_SEPARATOR, "");
    add_action(server, ACTION_COMMAND, "Cut");
    add_action(server, ACTION_COMMAND, "Run");
    player.show(MENU_ACTION, server); // title, copy, separator, cut, run
    EXPECT_EQ((std::vector<UINT>{UINT_MAX, 4, 1}), player.highlights);
}

TEST_F(MenuTest, a_first_letter_never_chooses_a_disabled_entry_or_a_title) {
    const struct {
        int type;
        std::int32_t node;
        char typed;
    } menus[] = {{MENU_EDIT_PAGE, -1, 'u'}, // there is nothing to undo
                 {MENU_ACTION, server, 's'}};
    for (const auto &shown : menus) {
        MenuPlayer player({letter(shown.typed)});
        player.show(shown.type, shown.node);
        EXPECT_EQ(Commands{}, player.commands) << shown.typed;
        EXPECT_EQ(2u, player.highlights.size()) << "the menu did not stay open";
    }
}

TEST_F(MenuTest, a_title_can_never_be_chosen) {
    EXPECT_EQ(Commands{}, play({key(VK_HOME), key(VK_RETURN)}, MENU_ACTION, games));
    MenuPlayer click;
    click.steps = {[&] {
        RECT area = {};
        GetMenuItemRect(nullptr, click.menu, 0, &area);
        const LPARAM place = MAKELPARAM(area.left + 30, area.top + 10);
        PostMessageA(hWnd, WM_LBUTTONDOWN, MK_LBUTTON, place);
        PostMessageA(hWnd, WM_LBUTTONUP, 0, place);
    }};
    click.show(MENU_ACTION, games);
    EXPECT_EQ(Commands{}, click.commands);
}

TEST_F(MenuTest, no_title_is_shown_without_the_option) {
    orvanel_options.action_menu_title = 0;
    MenuPlayer player;
    player.steps = {[&] {
        EXPECT_EQ(1, GetMenuItemCount(player.menu));
        EXPECT_EQ(2000u, GetMenuItemID(player.menu, 0));
        EndMenu();
    }};
    player.show(MENU_ACTION, games);
    EXPECT_NE(nullptr, player.menu);
}

TEST_F(MenuTest, the_menu_opens_at_the_mouse_pointer) {
    move_cursor(321, 234);
    MenuPlayer player;
    RECT area = {};
    player.steps = {[&] {
        GetMenuItemRect(nullptr, player.menu, 0, &area);
        EndMenu();
    }};
    player.show(MENU_PAGE);
    const LONG border = 10; // pixels at most
    EXPECT_GE(area.left, 321);
    EXPECT_LE(area.left, 321 + border);
    EXPECT_GE(area.top, 234);
    EXPECT_LE(area.top, 234 + border);
}

static COLORREF screen_pixel(LONG x, LONG y) {
    const HDC screen = GetDC(nullptr);
    const COLORREF colour = GetPixel(screen, static_cast<int>(x), static_cast<int>(y));
    ReleaseDC(nullptr, screen);
    return colour;
}

TEST_F(MenuTest, the_open_menu_shows_its_colours_on_the_screen) {
    MenuPlayer player;
    COLORREF title = 0, column = 0, highlight = 0;
    player.steps = {key(VK_DOWN), key(VK_DOWN), [&] {
                        RECT area = {};
                        GetMenuItemRect(nullptr, player.menu, 0, &area);
                        title = screen_pixel(area.left + 2, area.top + 2);
                        GetMenuItemRect(nullptr, player.menu, 1, &area);
                        highlight = screen_pixel(area.right - 4, area.top + 2);
                        GetMenuItemRect(nullptr, player.menu, 2, &area);
                        column = screen_pixel(area.left + 2, area.top + 2);
                        EndMenu();
                    }};
    player.show(MENU_ACTION, server);
    EXPECT_EQ(RGB(118, 118, 118), title);
    EXPECT_EQ(RGB(192, 226, 255), highlight);
    EXPECT_EQ(RGB(236, 236, 236), column);
}

TEST_F(MenuTest, entries_have_the_heights_they_ask_for) {
    MenuPlayer player;
    std::vector<LONG> heights;
    player.steps = {[&] {
        for (UINT i = 0; i < 5; i++) {
            RECT area = {};
            GetMenuItemRect(nullptr, player.menu, i, &area);
            heights.push_back(area.bottom - area.top);
        }
        EndMenu();
    }};
    player.show(MENU_PAGE);
    EXPECT_EQ((std::vector<LONG>{21, 21, 5, 21, 21}), heights);
}

TEST_F(MenuTest, the_window_answers_1_to_requests_to_measure_and_draw) {
    MEASUREITEMSTRUCT measure = {};
    measure.CtlType = ODT_MENU;
    EXPECT_EQ(1, SendMessageA(hWnd, WM_MEASUREITEM, 0, reinterpret_cast<LPARAM>(&measure)));
    DRAWITEMSTRUCT draw = {};
    draw.CtlType = ODT_MENU;
    EXPECT_EQ(1, SendMessageA(hWnd, WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&draw)));
}

static BOOL selection_fade() {
    BOOL fade = FALSE;
    SystemParametersInfoA(SPI_GETSELECTIONFADE, 0, &fade, 0);
    return fade;
}

static void set_selection_fade(BOOL fade) {
    SystemParametersInfoA(SPI_SETSELECTIONFADE, 0,
                          reinterpret_cast<void *>(static_cast<INT_PTR>(fade)), 0);
}

TEST_F(MenuTest, the_systems_selection_fade_is_off_while_a_menu_is_open_and_restored) {
    const BOOL before = selection_fade();
    for (const BOOL wanted : {TRUE, FALSE}) {
        set_selection_fade(wanted);
        BOOL during = TRUE;
        play({[&] {
                 during = selection_fade();
                 EndMenu();
             }},
             MENU_PAGE);
        EXPECT_FALSE(during);
        EXPECT_EQ(wanted, selection_fade());
    }
    set_selection_fade(before);
}

TEST_F(MenuTest, nothing_opens_when_there_is_nothing_to_show) {
    const struct {
        int type;
        std::int32_t node;
    } menus[] = {{MENU_ACTION, -1}, {MENU_ACTION, label}, {MENU_EDIT_OBJECT, 254}, {99, server}};
    for (const auto &asked : menus) {
        MenuPlayer player;
        player.show(asked.type, asked.node);
        EXPECT_EQ(nullptr, player.menu) << asked.type;
    }
}

// ---- nothing is left behind

struct Counts {
    std::int32_t live[OBJECT_KINDS];
    bool operator==(const Counts &) const = default;
};

static Counts counts() {
    Counts result = {};
    std::copy(std::begin(object_count), std::end(object_count), result.live);
    return result;
}

static std::ostream &operator<<(std::ostream &out, const Counts &shown) {
    for (const std::int32_t count : shown.live)
        out << count << ' ';
    return out;
}

// Opens menus of all types by turns, highlights entries in each and opens its submenu. All entries
// of both are drawn.
static void open_and_close(int menus, std::int32_t server, std::int32_t games, std::int32_t label) {
    const struct {
        int type;
        std::int32_t node;
        std::size_t keys_up; // the entry highlighted last, from the end of the menu
        int submenu_entries; // that it opens
    } kinds[] = {{MENU_PAGE, -1, 1, 0},
                 {MENU_ACTION, server, 1, 1},
                 {MENU_ACTION, games, 1, 0},
                 {MENU_EDIT_PAGE, -1, 3, 10},
                 {MENU_EDIT_OBJECT, server, 1, 0},
                 {MENU_EDIT_LABEL, label, 1, 0}};
    for (int i = 0; i < menus; i++) {
        const auto &kind = kinds[static_cast<std::size_t>(i) % std::size(kinds)];
        int entries = kind.submenu_entries;
        MenuPlayer player(Steps(kind.keys_up, key(VK_UP)));
        player.steps.push_back([&] {
            entries += GetMenuItemCount(player.menu);
            press_key(VK_RIGHT);
        });
        player.show(kind.type, kind.node);
        ASSERT_NE(nullptr, player.menu);
        ASSERT_EQ(entries, static_cast<int>(player.drawn.size())) << kind.type;
    }
}

TEST_F(MenuTest, after_500_menus_of_all_types_every_object_is_given_back) {
    open_and_close(6, server, games, label); // the icons of the actions are in the cache now
    const Counts before = counts();
    EXPECT_EQ(0, before.live[OBJECT_MENU]);
    EXPECT_EQ(0, before.live[OBJECT_RECORD]);
    EXPECT_EQ(0, before.live[OBJECT_DC]);
    EXPECT_EQ(1, before.live[OBJECT_FONT]);
    EXPECT_EQ(MENU_IMAGE_TOTAL, before.live[OBJECT_BITMAP]);
    EXPECT_EQ(menu_icon_cache_total, before.live[OBJECT_ICON]);
    open_and_close(500, server, games, label);
    EXPECT_EQ(before, counts());
}

TEST_F(MenuTest, a_planted_leak_of_any_kind_shows_in_the_counts) {
    open_and_close(6, server, games, label);
    const Counts before = counts();
    const HBITMAP bitmap = object_made(OBJECT_BITMAP, CreateBitmap(1, 1, 1, 1, nullptr));
    const HFONT font =
        object_made(OBJECT_FONT, CreateFontA(9, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, "Tahoma"));
    const HDC dc = object_made(OBJECT_DC, CreateCompatibleDC(nullptr));
    const HMENU menu = object_made(OBJECT_MENU, CreatePopupMenu());
    const BYTE bits[32] = {};
    const HICON icon = object_made(OBJECT_ICON, CreateIcon(nullptr, 16, 16, 1, 1, bits, bits));
    menu_item_add_item(menu, 1, "A record");
    for (std::int32_t kind = 0; kind < OBJECT_KINDS; kind++)
        EXPECT_EQ(before.live[kind] + 1, object_count[kind]) << kind;
    object_destroy(bitmap);
    object_destroy(font);
    object_destroy(dc);
    menu_free_memory(menu);
    object_destroy(menu);
    object_destroy(icon);
    EXPECT_EQ(before, counts());
}

TEST_F(MenuTest, icons_that_the_full_cache_did_not_take_are_destroyed_with_their_menu) {
    menu_icon_cache_free();
    char folder[MAX_PATH] = "";
    GetSystemDirectoryA(folder, sizeof folder);
    std::string path = std::string(folder) + "\\notepad.exe";
    for (unsigned number = 0; menu_icon_cache_total < MENU_ICON_CACHE_SIZE; number++) {
        for (std::size_t i = 0; i < 7; i++) // "notepad" in 128 spellings
            path[path.size() - 11 + i] =
                static_cast<char>((number >> i & 1) != 0 ? "NOTEPAD"[i] : "notepad"[i]);
        ASSERT_NE(nullptr, menu_icon_cache_get_command_icon(path.c_str()));
        ASSERT_LT(number, 127u);
    }
    const Counts before = counts();
    EXPECT_EQ(MENU_ICON_CACHE_SIZE, before.live[OBJECT_ICON]);
    std::int32_t during = 0;
    play({[&] {
             during = object_count[OBJECT_ICON];
             EndMenu();
         }},
         MENU_ACTION, server);
    EXPECT_GT(during, MENU_ICON_CACHE_SIZE);
    EXPECT_EQ(before, counts());
}

TEST_F(MenuTest, the_menus_work_as_before_after_the_window_was_made_anew) {
    const Counts before = counts();
    toggle_fsaa();
    EXPECT_EQ(before, counts());
    MenuPlayer player({key(VK_DOWN), key(VK_RETURN)});
    player.show(MENU_PAGE);
    EXPECT_EQ((Commands{COMMAND_EDIT_PAGE}), player.commands);
    toggle_fsaa();
}

TEST(MenuStop, the_end_of_the_program_leaves_nothing_behind) {
    {
        const RealWindow window;
        ASSERT_NE(nullptr, menu_icon_cache_get_command_icon("notepad"));
    }
    for (const std::int32_t count : object_count)
        EXPECT_EQ(0, count);
}
