#include "actions/menu_content.h"

#include "editing/clipboard.h"
#include "editing/undo.h"
#include "page/options.h"
#include "platform/text.h"
#include "scene/scene_page.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

using Lines = std::vector<std::string>;

// The state that menus are made from: an empty page, nothing to undo, nothing copied, titles shown,
// icons not.
struct MenuContentTest : testing::Test {
    std::unique_ptr<MenuContent> content = std::make_unique<MenuContent>();

    MenuContentTest() {
        options_set_defaults();
        orvanel_options.action_menu_title = 1;
        orvanel_options.action_menu_icons = 0;
        node_init_nodes();
        node_total = 0;
        line_total = 0;
        undo_total = 0;
        redo_total = 0;
        clipboard_init();
        clipboard_used = CLIPBOARD_EMPTY;
        scene_changed = 0;
        scene_floor.colour.use_default = 0;
    }
    ~MenuContentTest() override {
        node_free_nodes();
        clipboard_stop();
    }

    std::int32_t add(NodeType type, const char *name) {
        const std::int32_t id = node_total++;
        node_init_node(id);
        node[id].type = type;
        text_copy(node[id].name, name);
        node[id].action_count = 0;
        return id;
    }

    Action *add_action(std::int32_t id, ActionType type, const char *name, std::int32_t owner = 0) {
        Action **slot = &node[id].actions[node[id].action_count++];
        action_allocate_action(slot);
        (*slot)->type = type;
        (*slot)->owner = owner;
        text_copy((*slot)->name, name);
        return *slot;
    }

    void build(std::int32_t type, std::int32_t node_id = -1) {
        menu_content_build(content.get(), type, node_id);
    }

    // One line an entry of a menu: id and text, "---" or "title …"; "(off)" when it is disabled and
    // "> n" when it opens a submenu.
    Lines lines(std::int32_t menu = MENU_TOP) const {
        Lines result;
        for (std::int32_t i = 0; i < content->total; i++) {
            if (content->entries[i].menu == menu)
                result.push_back(line_of(content->entries[i]));
        }
        return result;
    }

    static std::string line_of(const MenuEntry &entry) {
        const std::string text = entry.text;
        switch (entry.kind) {
        case MENU_ENTRY_SEPARATOR:
            return "---";
        case MENU_ENTRY_TITLE:
            return "title " + text;
        case MENU_ENTRY_SUBMENU:
            return text + " > " + std::to_string(entry.submenu);
        default:
            return std::to_string(entry.id) + " " + text + (entry.disabled ? " (off)" : "");
        }
    }

    const MenuEntry *find(std::int32_t id) const {
        for (std::int32_t i = 0; i < content->total; i++) {
            if (content->entries[i].kind == MENU_ENTRY_COMMAND && content->entries[i].id == id)
                return &content->entries[i];
        }
        return nullptr;
    }

    MenuImage image(std::int32_t id) const {
        const MenuEntry *entry = find(id);
        return entry == nullptr ? MENU_IMAGE_TOTAL : entry->image;
    }

    bool disabled(std::int32_t id) const {
        const MenuEntry *entry = find(id);
        return entry != nullptr && entry->disabled;
    }
};

// ---- view mode

TEST_F(MenuContentTest, the_page_menu_of_view_mode) {
    build(MENU_PAGE);
    EXPECT_EQ(
        (Lines{"1002 Edit This Page", "1015 Center Page", "---", "1001 Options", "1000 About"}),
        lines());
    EXPECT_EQ(MENU_IMAGE_NONE, image(COMMAND_EDIT_PAGE));
    EXPECT_EQ(MENU_IMAGE_NONE, image(COMMAND_CENTER_PAGE));
    EXPECT_EQ(MENU_IMAGE_OPTIONS, image(COMMAND_OPTIONS));
    EXPECT_EQ(MENU_IMAGE_ABOUT, image(COMMAND_ABOUT));
}

TEST_F(MenuContentTest, a_page_object_offers_to_open_its_page) {
    const std::int32_t id = add(NODE_PAGE, "Games");
    add_action(id, ACTION_COMMAND, "ignored");
    build(MENU_ACTION, id);
    EXPECT_EQ((Lines{"title Games", "2000 Open this page"}), lines());
    EXPECT_EQ(MENU_IMAGE_NONE, image(2000));
    orvanel_options.action_menu_icons = 1;
    build(MENU_ACTION, id);
    EXPECT_EQ(MENU_IMAGE_OPEN_PAGE, image(2000));
}

TEST_F(MenuContentTest, an_object_without_actions_says_so_and_offers_nothing) {
    build(MENU_ACTION, add(NODE_OBJECT, "Server"));
    EXPECT_EQ((Lines{"title Server", "2000 No actions defined (off)"}), lines());
}

TEST_F(MenuContentTest, without_the_option_no_title_is_shown) {
    const std::int32_t page = add(NODE_PAGE, "Games");
    const std::int32_t object = add(NODE_OBJECT, "Server");
    orvanel_options.action_menu_title = 0;
    build(MENU_ACTION, page);
    EXPECT_EQ((Lines{"2000 Open this page"}), lines());
    build(MENU_ACTION, object);
    EXPECT_EQ((Lines{"2000 No actions defined (off)"}), lines());
    add_action(object, ACTION_COMMAND, "Run");
    build(MENU_ACTION, object);
    EXPECT_EQ((Lines{"2000 Run"}), lines());
}

TEST_F(MenuContentTest, actions_stand_in_their_order_and_their_ids_are_their_indices) {
    const std::int32_t id = add(NODE_OBJECT, "Server");
    add_action(id, ACTION_COMMAND, "First");
    add_action(id, ACTION_SEPARATOR, "");
    add_action(id, ACTION_COMMAND, "Third");
    build(MENU_ACTION, id);
    EXPECT_EQ((Lines{"title Server", "2000 First", "---", "2002 Third"}), lines());
    EXPECT_EQ(0, content->submenu_total);
}

TEST_F(MenuContentTest, actions_with_empty_names_are_numbered_by_position_among_all_actions) {
    const std::int32_t id = add(NODE_OBJECT, "Server");
    add_action(id, ACTION_COMMAND, "");
    add_action(id, ACTION_SEPARATOR, "");
    add_action(id, ACTION_COMMAND, "");
    add_action(id, ACTION_SUBMENU, "More");
    add_action(id, ACTION_COMMAND, "", 1);
    add_action(id, ACTION_COMMAND, "");
    build(MENU_ACTION, id);
    EXPECT_EQ((Lines{"title Server", "2000 Action 1", "---", "2002 Action 3", "More > 1",
                     "2005 Action 6"}),
              lines());
    EXPECT_EQ((Lines{"2004 Action 5"}), lines(1));
}

TEST_F(MenuContentTest, actions_go_into_the_submenu_that_owns_them_wherever_it_stands) {
    const std::int32_t id = add(NODE_OBJECT, "Server");
    add_action(id, ACTION_COMMAND, "Early", 2); // before its submenu
    add_action(id, ACTION_SUBMENU, "One");
    add_action(id, ACTION_COMMAND, "In one", 1);
    add_action(id, ACTION_SUBMENU, "Two");
    add_action(id, ACTION_SEPARATOR, "", 2);
    add_action(id, ACTION_COMMAND, "In two", 2);
    add_action(id, ACTION_COMMAND, "Top");
    build(MENU_ACTION, id);
    EXPECT_EQ(2, content->submenu_total);
    EXPECT_EQ((Lines{"title Server", "One > 1", "Two > 2", "2006 Top"}), lines());
    EXPECT_EQ((Lines{"2002 In one"}), lines(1));
    EXPECT_EQ((Lines{"2000 Early", "---", "2005 In two"}), lines(2));
}

TEST_F(MenuContentTest, an_owner_that_is_no_submenus_number_means_the_top_menu) {
    for (const std::int32_t owner : {0, -1, 3, 50, INT32_MAX, INT32_MIN}) {
        node_free_nodes();
        node_total = 0;
        const std::int32_t id = add(NODE_OBJECT, "Server");
        add_action(id, ACTION_SUBMENU, "One");
        add_action(id, ACTION_SUBMENU, "Two");
        add_action(id, ACTION_COMMAND, "Run", owner);
        add_action(id, ACTION_SEPARATOR, "", owner);
        build(MENU_ACTION, id);
        EXPECT_EQ((Lines{"title Server", "One > 1", "Two > 2", "2002 Run", "---"}), lines())
            << owner;
    }
}

TEST_F(MenuContentTest, a_submenu_stands_in_the_top_menu_whoever_owns_it) {
    const std::int32_t id = add(NODE_OBJECT, "Server");
    add_action(id, ACTION_SUBMENU, "One", 1);
    add_action(id, ACTION_SUBMENU, "Two", 1);
    build(MENU_ACTION, id);
    EXPECT_EQ((Lines{"title Server", "One > 1", "Two > 2"}), lines());
}

TEST_F(MenuContentTest, fifty_submenus_are_all_there) {
    const std::int32_t id = add(NODE_OBJECT, "Server");
    for (int i = 0; i < NODE_ACTIONS; i++)
        add_action(id, ACTION_SUBMENU, "");
    build(MENU_ACTION, id);
    EXPECT_EQ(50, content->submenu_total);
    ASSERT_EQ(51u, lines().size());
    EXPECT_EQ(" > 1", lines()[1]);
    EXPECT_EQ(" > 50", lines()[50]);
}

TEST_F(MenuContentTest, fifty_commands_are_all_there) {
    const std::int32_t id = add(NODE_OBJECT, "Server");
    for (int i = 0; i < NODE_ACTIONS; i++)
        add_action(id, ACTION_COMMAND, "", i % 2 == 0 ? i : 0);
    build(MENU_ACTION, id);
    ASSERT_EQ(51u, lines().size());
    EXPECT_EQ("2049 Action 50", lines()[50]);
}

TEST_F(MenuContentTest, a_count_beyond_the_slots_or_below_zero_is_cut) {
    const std::int32_t id = add(NODE_OBJECT, "Server");
    for (int i = 0; i < NODE_ACTIONS; i++)
        add_action(id, ACTION_COMMAND, "");
    node[id].action_count = INT32_MAX;
    build(MENU_ACTION, id);
    EXPECT_EQ(51u, lines().size());
    node[id].action_count = -7;
    build(MENU_ACTION, id);
    EXPECT_EQ((Lines{"title Server", "2000 No actions defined (off)"}), lines());
    node[id].action_count = NODE_ACTIONS;
}

TEST_F(MenuContentTest, slots_without_a_record_and_unknown_types_are_left_out) {
    const std::int32_t id = add(NODE_OBJECT, "Server");
    add_action(id, static_cast<ActionType>(7), "What");
    node[id].action_count = 2; // the second slot was never filled
    add_action(id, ACTION_COMMAND, "Run");
    build(MENU_ACTION, id);
    EXPECT_EQ((Lines{"title Server", "2002 Run"}), lines());
}

TEST_F(MenuContentTest, nothing_is_offered_for_what_is_no_object) {
    const std::int32_t label = add(NODE_LABEL, "Label");
    for (const std::int32_t id : {label, -1, 1, NODE_CAPACITY, INT32_MAX}) {
        build(MENU_ACTION, id);
        EXPECT_EQ(0, content->total) << id;
    }
    build(MENU_EDIT_OBJECT, -1);
    EXPECT_EQ(0, content->total);
    for (const std::int32_t type : {-1, 5, INT32_MAX}) {
        build(type, label);
        EXPECT_EQ(0, content->total) << type;
    }
}

TEST_F(MenuContentTest, names_of_full_length_are_shown_whole) {
    const std::int32_t id = add(NODE_OBJECT, std::string(30, 'n').c_str());
    add_action(id, ACTION_COMMAND, std::string(60, 'a').c_str());
    build(MENU_ACTION, id);
    EXPECT_EQ((Lines{"title " + std::string(30, 'n'), "2000 " + std::string(60, 'a')}), lines());
}

TEST_F(MenuContentTest, icons_come_from_the_icon_file_or_else_from_the_command) {
    const std::int32_t id = add(NODE_OBJECT, "Server");
    Action *both = add_action(id, ACTION_COMMAND, "Both");
    text_copy(both->command, "tool.exe -x");
    text_copy(both->icon, "picture.ico");
    text_copy(add_action(id, ACTION_COMMAND, "Command only")->command, "http://a");
    add_action(id, ACTION_SUBMENU, "More");
    add_action(id, ACTION_COMMAND, "Neither");
    build(MENU_ACTION, id);
    EXPECT_STREQ("", find(2000)->icon_source); // the option is off
    EXPECT_EQ(MENU_IMAGE_NONE, content->entries[3].image);
    orvanel_options.action_menu_icons = 1;
    build(MENU_ACTION, id);
    EXPECT_STREQ("picture.ico", find(2000)->icon_source);
    EXPECT_STREQ("http://a", find(2001)->icon_source);
    EXPECT_STREQ("", find(2003)->icon_source);
    EXPECT_EQ(MENU_ENTRY_SUBMENU, content->entries[3].kind);
    EXPECT_EQ(MENU_IMAGE_SUBMENU, content->entries[3].image);
}

// ---- edit mode

TEST_F(MenuContentTest, the_page_menu_of_edit_mode) {
    build(MENU_EDIT_PAGE);
    EXPECT_EQ(
        (Lines{"1003 Finish Editing", "1015 Center Page", "---", "1004 New Object",
               "1006 New Label", "1005 New Page", "---", "1020 Paste (off)", "---",
               "1022 Undo (off)", "1023 Redo (off)", "1014 Revert to saved (off)", "---",
               "1017 Set Page Center", "Page Color > 1", "---", "1001 Options", "1000 About"}),
        lines());
    EXPECT_EQ((Lines{"1298 Default", "---", "1200 Blue", "1201 Gray", "1202 Turquoise",
                     "1203 Purple", "1204 Orange", "1205 Black", "---", "1299 Custom..."}),
              lines(1));
    EXPECT_EQ(1, content->submenu_total);
    EXPECT_EQ(MENU_IMAGE_FINISH_EDITING, image(COMMAND_FINISH_EDITING));
    EXPECT_EQ(MENU_IMAGE_PASTE, image(COMMAND_PASTE));
    EXPECT_EQ(MENU_IMAGE_UNDO, image(COMMAND_UNDO));
    EXPECT_EQ(MENU_IMAGE_REDO, image(COMMAND_REDO));
    for (int i = 0; i < 6; i++)
        EXPECT_EQ(MENU_IMAGE_SWATCH_FIRST + i, image(COMMAND_COLOUR_FIRST + i)) << i;
}

TEST_F(MenuContentTest, the_default_colour_is_checked_while_the_page_uses_it) {
    build(MENU_EDIT_PAGE);
    EXPECT_EQ(MENU_IMAGE_NONE, image(COMMAND_COLOUR_DEFAULT));
    scene_floor.colour.use_default = 1;
    build(MENU_EDIT_PAGE);
    EXPECT_EQ(MENU_IMAGE_CHECK_MARK, image(COMMAND_COLOUR_DEFAULT));
}

TEST_F(MenuContentTest, paste_is_offered_once_the_clipboard_was_filled) {
    for (const std::int32_t used : {CLIPBOARD_COPIED, CLIPBOARD_CUT}) {
        clipboard_used = used;
        build(MENU_EDIT_PAGE);
        EXPECT_FALSE(disabled(COMMAND_PASTE)) << used;
    }
}

TEST_F(MenuContentTest, undo_redo_and_revert_are_each_offered_when_there_is_something_to_do) {
    undo_total = 1;
    build(MENU_EDIT_PAGE);
    EXPECT_FALSE(disabled(COMMAND_UNDO));
    EXPECT_TRUE(disabled(COMMAND_REDO));
    EXPECT_TRUE(disabled(COMMAND_REVERT));
    undo_total = 0;
    redo_total = 1;
    build(MENU_EDIT_PAGE);
    EXPECT_TRUE(disabled(COMMAND_UNDO));
    EXPECT_FALSE(disabled(COMMAND_REDO));
    EXPECT_TRUE(disabled(COMMAND_REVERT));
    redo_total = 0;
    scene_changed = 1;
    build(MENU_EDIT_PAGE);
    EXPECT_TRUE(disabled(COMMAND_UNDO));
    EXPECT_TRUE(disabled(COMMAND_REDO));
    EXPECT_FALSE(disabled(COMMAND_REVERT));
}

TEST_F(MenuContentTest, the_edit_menu_of_an_object) {
    build(MENU_EDIT_OBJECT, add(NODE_OBJECT, "Server"));
    EXPECT_EQ((Lines{"1010 Properties", "---", "1018 Cut", "1019 Copy", "1007 Delete",
                     "1021 Paste Actions (off)", "---", "1008 Draw Link", "1009 Remove Links (off)",
                     "---", "1011 Align With Object", "1012 Align With Grid"}),
              lines());
    EXPECT_EQ(MENU_IMAGE_PROPERTIES, image(COMMAND_PROPERTIES));
    EXPECT_EQ(MENU_IMAGE_CUT, image(COMMAND_CUT));
    EXPECT_EQ(MENU_IMAGE_COPY, image(COMMAND_COPY));
    EXPECT_EQ(MENU_IMAGE_DELETE, image(COMMAND_DELETE));
    EXPECT_EQ(MENU_IMAGE_PASTE, image(COMMAND_PASTE_ACTIONS));
    EXPECT_EQ(MENU_IMAGE_NONE, image(COMMAND_DRAW_LINK));
    EXPECT_EQ(MENU_IMAGE_NONE, image(COMMAND_REMOVE_LINKS));
    EXPECT_EQ(MENU_IMAGE_ALIGN_WITH_OBJECT, image(COMMAND_ALIGN_WITH_OBJECT));
    EXPECT_EQ(MENU_IMAGE_ALIGN_WITH_GRID, image(COMMAND_ALIGN_WITH_GRID));
}

TEST_F(MenuContentTest, a_page_object_has_no_actions_to_paste) {
    const std::int32_t id = add(NODE_PAGE, "Games");
    clipboard_fill(id, CLIPBOARD_COPIED);
    build(MENU_EDIT_OBJECT, id);
    EXPECT_EQ((Lines{"1010 Properties", "---", "1018 Cut", "1019 Copy", "1007 Delete", "---",
                     "1008 Draw Link", "1009 Remove Links (off)", "---", "1011 Align With Object",
                     "1012 Align With Grid"}),
              lines());
}

TEST_F(MenuContentTest, the_edit_menu_of_a_label) {
    const std::int32_t id = add(NODE_LABEL, "Label");
    line_create_from_ids(id, id);
    build(MENU_EDIT_LABEL, id);
    EXPECT_EQ((Lines{"1010 Properties", "---", "1018 Cut", "1019 Copy", "1007 Delete", "---",
                     "1011 Align With Object", "1012 Align With Grid"}),
              lines());
}

TEST_F(MenuContentTest, actions_are_pasted_only_from_an_object_that_has_some) {
    const std::int32_t target = add(NODE_OBJECT, "Target");
    const std::int32_t page = add(NODE_PAGE, "Games");
    add_action(page, ACTION_COMMAND, "");
    const std::int32_t bare = add(NODE_OBJECT, "Bare");
    const std::int32_t full = add(NODE_OBJECT, "Full");
    add_action(full, ACTION_COMMAND, "Run");
    for (const std::int32_t source : {page, bare, full}) {
        clipboard_fill(source, CLIPBOARD_COPIED);
        build(MENU_EDIT_OBJECT, target);
        EXPECT_EQ(source != full, disabled(COMMAND_PASTE_ACTIONS)) << node[source].name;
    }
    clipboard_used = CLIPBOARD_EMPTY; // what the record still holds does not count
    build(MENU_EDIT_OBJECT, target);
    EXPECT_TRUE(disabled(COMMAND_PASTE_ACTIONS));
}

TEST_F(MenuContentTest, links_are_removed_only_where_there_are_some) {
    const std::int32_t from = add(NODE_OBJECT, "From");
    const std::int32_t to = add(NODE_PAGE, "To");
    const std::int32_t alone = add(NODE_OBJECT, "Alone");
    line_create_from_ids(from, to);
    for (const std::int32_t id : {from, to, alone}) {
        build(MENU_EDIT_OBJECT, id);
        EXPECT_EQ(id == alone, disabled(COMMAND_REMOVE_LINKS)) << node[id].name;
    }
}
