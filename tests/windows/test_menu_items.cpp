#include "actions/menu.h"
#include "actions/menu_windows.h"
#include "platform/win32/object_count.h"
#include "tests/windows/menu_player.h"

#include <gtest/gtest.h>

#include <string>

struct MenuItems : testing::Test {
    HMENU menu = CreatePopupMenu();

    ~MenuItems() override {
        menu_free_memory(menu);
        DestroyMenu(menu);
    }

    const MenuItem &record(int position) const {
        static const MenuItem none = {};
        const MenuItem *found = menu_item_at(menu, position);
        EXPECT_NE(nullptr, found) << position;
        return found != nullptr ? *found : none;
    }

    UINT type(int position) const {
        MENUITEMINFOA info = {};
        info.cbSize = sizeof info;
        info.fMask = MIIM_FTYPE;
        GetMenuItemInfoA(menu, static_cast<UINT>(position), TRUE, &info);
        return info.fType;
    }

    LRESULT typed(char character) const {
        return menu_item_char(nullptr, MAKEWPARAM(static_cast<unsigned char>(character), MF_POPUP),
                              reinterpret_cast<LPARAM>(menu));
    }
};

TEST_F(MenuItems, entries_are_added_at_the_end_and_drawn_by_the_program) {
    menu_item_add_header(menu, "Title");
    menu_item_add_item(menu, 2000, "Run");
    menu_item_add_seperator(menu);
    menu_item_add_item(menu, 2001, "Stop");
    ASSERT_EQ(4, GetMenuItemCount(menu));
    const MenuItemType types[] = {MENU_ITEM_HEADER, MENU_ITEM_COMMAND, MENU_ITEM_SEPARATOR,
                                  MENU_ITEM_COMMAND};
    for (int i = 0; i < 4; i++) {
        EXPECT_EQ(types[i], record(i).type) << i;
        EXPECT_NE(0u, type(i) & MFT_OWNERDRAW) << i;
        EXPECT_EQ(MENU_ITEM_PLAIN, record(i).image_type) << i;
    }
    EXPECT_STREQ("Title", record(0).text);
    EXPECT_STREQ("Run", record(1).text);
    EXPECT_EQ(2000u, GetMenuItemID(menu, 1));
    EXPECT_EQ(2001u, GetMenuItemID(menu, 3));
}

TEST_F(MenuItems, a_title_is_disabled_and_a_separator_is_passed_over) {
    menu_item_add_header(menu, "Title");
    menu_item_add_seperator(menu);
    EXPECT_EQ(static_cast<UINT>(MFS_DISABLED | MFS_GRAYED),
              entry_state(menu, 0) & (MFS_DISABLED | MFS_GRAYED));
    EXPECT_NE(0u, type(1) & MFT_SEPARATOR);
}

TEST_F(MenuItems, texts_are_cut_at_64_characters) {
    menu_item_add_item(menu, 1, std::string(64, 'a').c_str());
    menu_item_add_item(menu, 2, std::string(65, 'b').c_str());
    EXPECT_EQ(std::string(64, 'a'), record(0).text);
    EXPECT_EQ(std::string(64, 'b'), record(1).text);
}

TEST_F(MenuItems, a_submenu_lands_at_the_end_and_answers_a_position_that_grows_by_one) {
    menu_item_add_item(menu, 2000, "Run");
    const HMENU first = CreatePopupMenu(), second = CreatePopupMenu();
    const std::uint32_t position = menu_item_add_submenu(menu, first, "One");
    EXPECT_GE(position, 99u);
    EXPECT_EQ(position + 1, menu_item_add_submenu(menu, second, "Two"));
    menu_item_add_item(menu, 2001, "Stop");
    ASSERT_EQ(4, GetMenuItemCount(menu));
    EXPECT_EQ(first, GetSubMenu(menu, 1));
    EXPECT_EQ(second, GetSubMenu(menu, 2));
    EXPECT_EQ(MENU_ITEM_COMMAND, record(1).type);
    EXPECT_STREQ("Two", record(2).text);
}

TEST_F(MenuItems, an_image_goes_to_the_entry_with_the_id_even_after_thousands_of_submenus) {
    for (int i = 0; i < 2500; i++) { // the positions have passed all ids by then
        const HMENU other = CreatePopupMenu();
        menu_item_add_submenu(other, CreatePopupMenu(), "One");
        menu_free_memory(other);
        DestroyMenu(other);
    }
    menu_item_add_submenu(menu, CreatePopupMenu(), "One");
    menu_item_add_item(menu, 2600, "Run");
    for (int id = 1000; id < 3000; id++)
        menu_item_add_bitmap(menu, id, reinterpret_cast<HBITMAP>(static_cast<INT_PTR>(id)));
    EXPECT_EQ(MENU_ITEM_PLAIN, record(0).image_type);
    EXPECT_EQ(MENU_ITEM_BITMAP, record(1).image_type);
    EXPECT_EQ(reinterpret_cast<HBITMAP>(2600), record(1).bitmap);
}

TEST_F(MenuItems, only_the_entry_with_the_id_is_disabled) {
    menu_item_add_item(menu, 2000, "Run");
    menu_item_add_item(menu, 2001, "Stop");
    menu_item_disable_item(menu, 2001);
    EXPECT_EQ(0u, entry_state(menu, 0) & MFS_DISABLED);
    EXPECT_EQ(static_cast<UINT>(MFS_DISABLED), entry_state(menu, 1) & MFS_DISABLED);
    menu_item_disable_item(menu, 5);
    EXPECT_EQ(0u, entry_state(menu, 0) & MFS_DISABLED);
}

TEST_F(MenuItems, all_records_are_freed_those_of_submenus_as_well) {
    const std::int32_t before = object_count[OBJECT_RECORD];
    const HMENU submenu = CreatePopupMenu(), deeper = CreatePopupMenu();
    menu_item_add_header(menu, "Title");
    menu_item_add_submenu(menu, submenu, "One");
    menu_item_add_item(submenu, 2000, "Run");
    menu_item_add_seperator(submenu);
    menu_item_add_submenu(submenu, deeper, "Deeper");
    menu_item_add_item(deeper, 2001, "Stop");
    EXPECT_EQ(before + 6, object_count[OBJECT_RECORD]);
    menu_free_memory(menu);
    EXPECT_EQ(before, object_count[OBJECT_RECORD]);
    EXPECT_EQ(nullptr, menu_item_at(menu, 0));
    menu_free_memory(menu); // a second time there is nothing to free
    EXPECT_EQ(before, object_count[OBJECT_RECORD]);
}

static HICON make_icon() {
    const BYTE bits[32] = {};
    return object_made(OBJECT_ICON, CreateIcon(nullptr, 16, 16, 1, 1, bits, bits));
}

TEST_F(MenuItems, an_icon_that_the_cache_did_not_take_goes_with_its_entry) {
    const std::int32_t before = object_count[OBJECT_ICON];
    menu_item_add_item(menu, 2000, "Run");
    menu_item_add_icon(menu, 2000, make_icon());
    EXPECT_EQ(MENU_ITEM_ICON, record(0).image_type);
    EXPECT_EQ(before + 1, object_count[OBJECT_ICON]);
    menu_free_memory(menu);
    EXPECT_EQ(before, object_count[OBJECT_ICON]);
    menu_item_add_icon(menu, 2999, make_icon()); // there is no such entry
    EXPECT_EQ(before, object_count[OBJECT_ICON]);
}

TEST_F(MenuItems, an_icon_of_the_cache_outlives_its_entry) {
    const std::int32_t before = object_count[OBJECT_ICON];
    menu_item_add_item(menu, 2000, "Run");
    const HICON icon = menu_icon_cache_get_command_icon("C:\\windows\\system32\\notepad.exe");
    ASSERT_NE(nullptr, icon);
    menu_item_add_icon(menu, 2000, icon);
    menu_free_memory(menu);
    EXPECT_EQ(before + 1, object_count[OBJECT_ICON]);
    ICONINFO info = {};
    EXPECT_TRUE(GetIconInfo(icon, &info));
    DeleteObject(info.hbmColor);
    DeleteObject(info.hbmMask);
    menu_icon_cache_free();
    EXPECT_EQ(before, object_count[OBJECT_ICON]);
}

// ---- letters

TEST_F(MenuItems, a_letter_executes_the_only_entry_that_starts_with_it) {
    menu_item_add_header(menu, "Run");
    menu_item_add_item(menu, 2000, "Run");
    menu_item_add_item(menu, 2001, "Stop");
    EXPECT_EQ(MAKELRESULT(1, MNC_EXECUTE), typed('r')); // not the title
    EXPECT_EQ(MAKELRESULT(2, MNC_EXECUTE), typed('S'));
    EXPECT_EQ(MAKELRESULT(0, MNC_IGNORE), typed('x'));
}

TEST_F(MenuItems, a_letter_selects_the_entries_that_start_with_it_in_turn) {
    menu_item_add_item(menu, 2000, "Red");
    menu_item_add_item(menu, 2001, "Stop");
    menu_item_add_item(menu, 2002, "Run");
    EXPECT_EQ(MAKELRESULT(0, MNC_SELECT), typed('r'));
    MENUITEMINFOA info = {};
    info.cbSize = sizeof info;
    info.fMask = MIIM_STATE;
    info.fState = MFS_HILITE;
    SetMenuItemInfoA(menu, 0, TRUE, &info);
    EXPECT_EQ(MAKELRESULT(2, MNC_SELECT), typed('r'));
}

TEST_F(MenuItems, a_letter_never_means_a_disabled_entry) {
    menu_item_add_item(menu, 2000, "Red");
    menu_item_disable_item(menu, 2000);
    EXPECT_EQ(MAKELRESULT(0, MNC_IGNORE), typed('r'));
    menu_item_add_item(menu, 2001, "Run");
    EXPECT_EQ(MAKELRESULT(1, MNC_EXECUTE), typed('r'));
}

TEST_F(MenuItems, letters_beyond_ascii_match_in_both_cases) {
    if (GetACP() != 1252)
        GTEST_SKIP() << "these letters are of the western code page";
    menu_item_add_item(menu, 2000, "\xC4pfel");
    EXPECT_EQ(MAKELRESULT(0, MNC_EXECUTE), typed('\xE4'));
    EXPECT_EQ(MAKELRESULT(0, MNC_EXECUTE), typed('\xC4'));
}

TEST_F(MenuItems, letters_in_other_menus_are_left_to_the_system) {
    AppendMenuA(menu, MF_STRING, 1, "Restore");
    EXPECT_EQ(DefWindowProcA(nullptr, WM_MENUCHAR, MAKEWPARAM('r', MF_POPUP),
                             reinterpret_cast<LPARAM>(menu)),
              typed('r'));
    EXPECT_EQ(nullptr, menu_item_at(menu, 0));
}
