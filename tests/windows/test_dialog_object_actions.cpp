// The Actions tab of the object dialog, worked by what mouse and keyboard send.
#include "dialogs/dialog_object_actions.h"

#include "dialogs/dialogs.h"
#include "dialogs/rules/action_tree.h"
#include "dialogs/rules/dialog_object_rules.h"
#include "page/node.h"
#include "platform/files.h"
#include "platform/text.h"
#include "resources/resource_ids.h"
#include "tests/unit/tree_text.h"
#include "tests/windows/object_dialog_fixture.h"

#include <gtest/gtest.h>

#include <dlgs.h>

#include <set>
#include <string>
#include <vector>

static const char TEST_FAILED[] =
    "Orvanel failed to execute the action.\n\n"
    "Make sure that you have specified the full path to the executable.";
static const char DELETE_QUESTION[] = "Deleting this menu will also remove all items contained "
                                      "within the menu.  Do you want to continue?";

struct ObjectActions : ObjectDialogTest {
    std::int32_t object = -1;

    void begin(const std::string &tree, const char *separators = "") {
        object = add_object("server", tree, separators);
        dialog_object_set_node(object);
    }
    // Shows the Actions tab, then takes the steps.
    std::int32_t play_actions(std::vector<Step> steps) const {
        steps.insert(steps.begin(), [](HWND dialog) { show_actions(dialog); });
        return play("Object Properties", steps);
    }
};

static void press_button(int id) {
    click(actions(), id);
}

static bool types_can_be_chosen() {
    return is_enabled(actions(), RESOURCE_ACTION_TYPE);
}

static int type_shown() {
    return static_cast<int>(
        SendDlgItemMessageA(actions(), RESOURCE_ACTION_TYPE, CB_GETCURSEL, 0, 0));
}

// As the arrow keys do in a closed box.
static void choose_type(int type) {
    const HWND box = GetDlgItem(actions(), RESOURCE_ACTION_TYPE);
    SendMessageA(actions(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(box), TRUE);
    for (int i = 0; i < 2; i++)
        SendMessageA(box, WM_KEYDOWN, VK_UP, 0);
    for (int i = 0; i < type; i++)
        SendMessageA(box, WM_KEYDOWN, VK_DOWN, 0);
}

static bool up_and_down_are(bool up, bool down) {
    return is_enabled(actions(), RESOURCE_ACTION_UP) == up &&
           is_enabled(actions(), RESOURCE_ACTION_DOWN) == down;
}

// ---- showing

TEST_F(ObjectActions, the_tree_shows_labels_pictures_and_open_submenus) {
    begin("aB[cd]e", "d");
    node[object].actions[0]->name[0] = '\0';
    node[object].actions[1]->name[0] = '\0';
    play_actions({[](HWND) {
        EXPECT_EQ(tree_shown(), "aB[cd]e");
        EXPECT_EQ(label_shown('a'), "Unnamed Action");
        EXPECT_EQ(label_shown('B'), "Unnamed Menu");
        EXPECT_EQ(label_shown('c'), "c");
        EXPECT_EQ(label_shown('d'), "<Separator>");
        EXPECT_EQ(image_shown('a'), 0);
        EXPECT_EQ(image_shown('B'), 1);
        EXPECT_EQ(image_shown('d'), 1);
        EXPECT_EQ(letter_selected(), 'a');
        RECT area = {};
        const HTREEITEM inner = dialog_object_get_item_handle_from_treeview_id(tree_id('c'));
        memcpy(&area, &inner, sizeof inner);
        EXPECT_NE(
            SendMessageA(hwnd_treeview, TVM_GETITEMRECT, TRUE, reinterpret_cast<LPARAM>(&area)), 0)
            << "its submenu is open";
    }});
}

static COLORREF caption_colour(int id) {
    const HDC dc = CreateCompatibleDC(nullptr);
    SendMessageA(actions(), WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(dc),
                 reinterpret_cast<LPARAM>(GetDlgItem(actions(), id)));
    const COLORREF colour = GetTextColor(dc);
    DeleteDC(dc);
    return colour;
}

static void expect_captions(int type, int command) {
    EXPECT_EQ(caption_colour(RESOURCE_ACTION_TYPE_TEXT), GetSysColor(type));
    EXPECT_EQ(caption_colour(RESOURCE_ACTION_COMMAND_TEXT), GetSysColor(command));
}

TEST_F(ObjectActions, captions_are_grey_while_they_do_not_apply_to_the_selection) {
    begin("Ab", "b");
    play_actions({
        [](HWND) {
            expect_captions(COLOR_BTNTEXT, COLOR_GRAYTEXT);
            press_button(RESOURCE_ACTION_DELETE);
        },
        [](HWND) {
            expect_captions(COLOR_BTNTEXT, COLOR_GRAYTEXT);
            choose_type(ACTION_COMMAND);
        },
        [](HWND) {
            expect_captions(COLOR_BTNTEXT, COLOR_BTNTEXT);
            press_button(RESOURCE_ACTION_DELETE);
        },
        [](HWND) { expect_captions(COLOR_GRAYTEXT, COLOR_GRAYTEXT); },
    });
}

TEST_F(ObjectActions, an_empty_list_says_so_and_only_offers_a_new_action) {
    begin("");
    play_actions({[](HWND) {
        EXPECT_EQ(tree_shown(), "-");
        EXPECT_EQ(label_shown(' '), "No actions defined");
        EXPECT_TRUE(is_enabled(actions(), RESOURCE_ACTION_NEW));
        for (const int id : {RESOURCE_ACTION_DELETE, RESOURCE_ACTION_UP, RESOURCE_ACTION_DOWN,
                             RESOURCE_ACTION_TYPE, RESOURCE_ACTION_COMMAND, RESOURCE_ACTION_BROWSE,
                             RESOURCE_ACTION_TEST})
            EXPECT_FALSE(is_enabled(actions(), id)) << id;
        EXPECT_EQ(dialog_object_disable_type_static_text, 1);
        EXPECT_EQ(dialog_object_disable_command_static_text, 1);
    }});
}

TEST_F(ObjectActions, selecting_an_item_shows_its_type_and_command) {
    begin("aB[c]d", "d");
    play_actions({
        [](HWND) {
            EXPECT_EQ(type_shown(), ACTION_COMMAND);
            EXPECT_EQ(shown_text(actions(), RESOURCE_ACTION_COMMAND), "run a");
            EXPECT_EQ(dialog_object_disable_command_static_text, 0);
            click_item('B');
        },
        [](HWND) {
            EXPECT_EQ(letter_selected(), 'B');
            EXPECT_EQ(type_shown(), ACTION_SUBMENU);
            EXPECT_EQ(shown_text(actions(), RESOURCE_ACTION_COMMAND), "");
            EXPECT_FALSE(is_enabled(actions(), RESOURCE_ACTION_COMMAND));
            EXPECT_EQ(dialog_object_disable_type_static_text, 0);
            EXPECT_EQ(dialog_object_disable_command_static_text, 1);
        },
        [](HWND dialog) { press(dialog, VK_DOWN); },
        [](HWND) {
            EXPECT_EQ(letter_selected(), 'c');
            EXPECT_EQ(shown_text(actions(), RESOURCE_ACTION_COMMAND), "run c");
            click_item('d');
        },
        [](HWND) { EXPECT_EQ(type_shown(), ACTION_SEPARATOR); },
    });
}

TEST_F(ObjectActions, a_command_is_kept_when_another_item_is_selected_and_at_ok) {
    begin("ab");
    EXPECT_EQ(play_actions({
                  [](HWND) { type(actions(), RESOURCE_ACTION_COMMAND, "first"); },
                  [](HWND) { click_item('b'); },
                  [](HWND) {
                      EXPECT_EQ(shown_text(actions(), RESOURCE_ACTION_COMMAND), "run b");
                      type(actions(), RESOURCE_ACTION_COMMAND, "second");
                  },
                  [](HWND dialog) { click(dialog, IDOK); },
              }),
              DIALOG_OK);
    EXPECT_STREQ(node[object].actions[0]->command, "first");
    EXPECT_STREQ(node[object].actions[1]->command, "second");
}

// ---- new, labels

TEST_F(ObjectActions, new_opens_the_label_and_enter_keeps_its_text) {
    begin("A[b]");
    EXPECT_EQ(play_actions({
                  [](HWND) { press_button(RESOURCE_ACTION_NEW); },
                  [](HWND) {
                      EXPECT_EQ(tree_shown(), "A[cb]");
                      EXPECT_EQ(letter_selected(), 'c');
                      EXPECT_EQ(label_shown('c'), "New action");
                      ASSERT_NE(label_edit_shown(), nullptr);
                      type_label("Ping");
                  },
                  [](HWND dialog) { press(dialog, VK_RETURN); },
                  [](HWND dialog) {
                      EXPECT_EQ(label_edit_shown(), nullptr);
                      EXPECT_EQ(label_shown('c'), "Ping");
                      type(actions(), RESOURCE_ACTION_COMMAND, "ping $NAME");
                      press(dialog, VK_RETURN);
                  },
              }),
              DIALOG_OK);
    ASSERT_EQ(node[object].action_count, 3);
    EXPECT_STREQ(node[object].actions[1]->name, "Ping");
    EXPECT_STREQ(node[object].actions[1]->command, "ping $NAME");
    EXPECT_EQ(node[object].actions[1]->owner, 1);
}

TEST_F(ObjectActions, escape_discards_the_text_of_a_label_and_leaves_the_dialog_open) {
    begin("a");
    EXPECT_EQ(play_actions({
                  [](HWND dialog) { press(dialog, VK_F2); },
                  [](HWND) {
                      ASSERT_NE(label_edit_shown(), nullptr);
                      type_label("Other");
                  },
                  [](HWND dialog) { press(dialog, VK_ESCAPE); },
                  [](HWND) {
                      EXPECT_EQ(label_edit_shown(), nullptr);
                      EXPECT_EQ(label_shown('a'), "a");
                  },
                  [](HWND dialog) { press(dialog, VK_ESCAPE); },
              }),
              DIALOG_CANCEL);
}

TEST_F(ObjectActions, commands_of_the_dialog_end_a_label_first) {
    begin("a");
    EXPECT_EQ(play_actions({
                  [](HWND dialog) { press(dialog, VK_F2); },
                  [](HWND dialog) {
                      type_label("Kept");
                      PostMessageA(dialog, WM_COMMAND, IDOK, 0);
                  },
                  [](HWND dialog) {
                      EXPECT_EQ(label_shown('a'), "Kept");
                      press(dialog, VK_F2);
                  },
                  [](HWND dialog) {
                      type_label("Dropped");
                      PostMessageA(dialog, WM_COMMAND, IDCANCEL, 0);
                  },
                  [](HWND dialog) {
                      EXPECT_EQ(label_shown('a'), "Kept");
                      click(dialog, IDOK);
                  },
              }),
              DIALOG_OK);
    EXPECT_STREQ(node[object].actions[0]->name, "Kept");
}

TEST_F(ObjectActions, a_label_takes_60_characters_and_none_that_cuts_the_page_file) {
    begin("a");
    play_actions({
        [](HWND dialog) { press(dialog, VK_F2); },
        [](HWND dialog) {
            type_label(("<" + std::string(70, 'x')).c_str());
            press(dialog, VK_RETURN);
        },
        [](HWND dialog) { click(dialog, IDOK); },
    });
    EXPECT_EQ(node[object].actions[0]->name, std::string(60, 'x'));
}

TEST_F(ObjectActions, an_emptied_label_shows_that_there_is_no_name) {
    begin("aB[]");
    play_actions({
        [](HWND dialog) { press(dialog, VK_F2); },
        [](HWND dialog) {
            SetWindowTextA(label_edit_shown(), "");
            press(dialog, VK_RETURN);
        },
        [](HWND dialog) {
            EXPECT_EQ(label_shown('a'), "Unnamed Action");
            click(dialog, IDOK);
        },
    });
    EXPECT_STREQ(node[object].actions[0]->name, "");
}

TEST_F(ObjectActions, separators_and_the_line_of_an_empty_list_have_no_label_to_edit) {
    begin("a", "a");
    play_actions({
        [](HWND dialog) { press(dialog, VK_F2); },
        [](HWND) { EXPECT_EQ(label_edit_shown(), nullptr); },
        [](HWND dialog) { press(dialog, VK_DELETE); },
        [](HWND dialog) {
            EXPECT_EQ(tree_shown(), "-");
            press(dialog, VK_F2);
        },
        [](HWND) { EXPECT_EQ(label_edit_shown(), nullptr); },
    });
}

// As long as the tree waits whether a second click follows, twice.
static void wait_for_label() {
    for (const DWORD begin = GetTickCount(); GetTickCount() - begin < 2 * GetDoubleClickTime();) {
        for (MSG message; PeekMessageA(&message, hwnd_treeview, 0, 0, PM_REMOVE) != 0;)
            DispatchMessageA(&message);
        Sleep(10);
    }
}

TEST_F(ObjectActions, a_click_on_the_selected_item_opens_its_label_unless_the_user_has_gone_on) {
    begin("ab");
    play_actions({
        [](HWND) {
            SetFocus(hwnd_treeview);
            click_item('a');
            wait_for_label();
            EXPECT_NE(label_edit_shown(), nullptr);
            SendMessageA(hwnd_treeview, TVM_ENDEDITLABELNOW, TRUE, 0);
        },
        [](HWND) {
            SetFocus(hwnd_treeview);
            click_item('a');
        },
        [](HWND) {
            SetFocus(GetDlgItem(actions(), RESOURCE_ACTION_COMMAND));
            wait_for_label();
            EXPECT_EQ(label_edit_shown(), nullptr);
            EXPECT_TRUE(has_focus(actions(), RESOURCE_ACTION_COMMAND));
        },
    });
}

TEST_F(ObjectActions, the_51st_action_is_not_offered) {
    begin(std::string(NODE_ACTIONS - 1, 'a'));
    play_actions({
        [](HWND) {
            EXPECT_TRUE(is_enabled(actions(), RESOURCE_ACTION_NEW));
            press_button(RESOURCE_ACTION_NEW);
        },
        [](HWND dialog) { press(dialog, VK_RETURN); },
        [](HWND) {
            EXPECT_FALSE(is_enabled(actions(), RESOURCE_ACTION_NEW));
            EXPECT_EQ(dialog_options_action_total, NODE_ACTIONS);
            press_button(RESOURCE_ACTION_DELETE);
        },
        [](HWND) { EXPECT_TRUE(is_enabled(actions(), RESOURCE_ACTION_NEW)); },
    });
}

TEST_F(ObjectActions, a_command_takes_260_characters) {
    begin("a");
    const std::string longest(260, 'c');
    play_actions({
        [&](HWND) { type(actions(), RESOURCE_ACTION_COMMAND, (longest + "cc").c_str()); },
        [&](HWND dialog) {
            EXPECT_EQ(shown_text(actions(), RESOURCE_ACTION_COMMAND), longest);
            click(dialog, IDOK);
        },
    });
    EXPECT_EQ(node[object].actions[0]->command, longest);
}

// ---- deleting

TEST_F(ObjectActions, deleting_a_submenu_with_items_asks_and_no_keeps_everything) {
    begin("A[b]c");
    window.script.answer({MessageAnswer::No, MessageAnswer::Yes});
    EXPECT_EQ(play_actions({
                  [](HWND) { press_button(RESOURCE_ACTION_DELETE); },
                  [](HWND) {
                      EXPECT_EQ(tree_shown(), "A[b]c");
                      press_button(RESOURCE_ACTION_DELETE);
                  },
                  [](HWND dialog) {
                      EXPECT_EQ(tree_shown(), "c");
                      EXPECT_EQ(letter_selected(), 'c');
                      click(dialog, IDOK);
                  },
              }),
              DIALOG_OK);
    ASSERT_EQ(window.script.shown().size(), 2u);
    EXPECT_EQ(window.script.shown()[0].text, DELETE_QUESTION);
    EXPECT_EQ(window.script.shown()[0].caption, "Orvanel");
    EXPECT_EQ(node[object].action_count, 1);
}

TEST_F(ObjectActions, deleting_an_empty_submenu_asks_nothing) {
    begin("A[]");
    play_actions({
        [](HWND) { press_button(RESOURCE_ACTION_DELETE); },
        [](HWND dialog) {
            EXPECT_EQ(tree_shown(), "-");
            EXPECT_TRUE(IsChild(dialog, GetFocus()));
            EXPECT_TRUE(IsWindowEnabled(GetFocus()));
            click(dialog, IDOK);
        },
    });
    EXPECT_TRUE(window.script.shown().empty());
    EXPECT_EQ(node[object].action_count, 0);
}

// ---- moving

TEST_F(ObjectActions, up_and_down_move_the_item_and_give_the_tree_the_focus) {
    begin("aB[c]d");
    EXPECT_EQ(play_actions({
                  [](HWND) {
                      EXPECT_TRUE(up_and_down_are(false, true));
                      press_button(RESOURCE_ACTION_DOWN);
                  },
                  [](HWND) {
                      EXPECT_EQ(tree_shown(), "B[ac]d");
                      EXPECT_EQ(letter_selected(), 'a');
                      EXPECT_TRUE(has_focus(actions(), RESOURCE_ACTION_TREE));
                      EXPECT_TRUE(up_and_down_are(true, true));
                      press_button(RESOURCE_ACTION_UP);
                  },
                  [](HWND) {
                      EXPECT_EQ(tree_shown(), "aB[c]d");
                      click_item('d');
                  },
                  [](HWND) {
                      EXPECT_TRUE(up_and_down_are(true, false));
                      press_button(RESOURCE_ACTION_UP);
                  },
                  [](HWND) {
                      EXPECT_EQ(tree_shown(), "aB[cd]");
                      EXPECT_TRUE(up_and_down_are(true, true)) << "out of the last submenu";
                      click_item('B');
                  },
                  [](HWND) {
                      EXPECT_TRUE(up_and_down_are(true, false));
                      press_button(RESOURCE_ACTION_UP);
                  },
                  [](HWND dialog) {
                      EXPECT_EQ(tree_shown(), "B[cd]a");
                      click(dialog, IDOK);
                  },
              }),
              DIALOG_OK);
    ASSERT_EQ(node[object].action_count, 4);
    EXPECT_STREQ(node[object].actions[0]->name, "B");
    EXPECT_STREQ(node[object].actions[2]->name, "d");
    EXPECT_EQ(node[object].actions[2]->owner, 1);
    EXPECT_EQ(node[object].actions[3]->owner, 0);
}

TEST_F(ObjectActions, the_access_keys_work_the_buttons) {
    begin("ab");
    play_actions({
        [](HWND dialog) { press_alt(dialog, 'D'); },
        [](HWND dialog) {
            EXPECT_EQ(tree_shown(), "ba");
            press_alt(dialog, 'U');
        },
        [](HWND dialog) {
            EXPECT_EQ(tree_shown(), "ab");
            press_alt(dialog, 'L');
        },
        [](HWND) { EXPECT_EQ(tree_shown(), "b"); },
    });
}

TEST_F(ObjectActions, a_command_that_was_typed_survives_a_move) {
    begin("ab");
    play_actions({
        [](HWND) { type(actions(), RESOURCE_ACTION_COMMAND, "typed"); },
        [](HWND) { press_button(RESOURCE_ACTION_DOWN); },
        [](HWND dialog) {
            EXPECT_EQ(shown_text(actions(), RESOURCE_ACTION_COMMAND), "typed");
            click(dialog, IDOK);
        },
    });
    EXPECT_STREQ(node[object].actions[1]->command, "typed");
}

TEST_F(ObjectActions, saving_after_a_submenu_was_collapsed_by_hand_drops_its_items) {
    begin("A[bc]d");
    EXPECT_EQ(play_actions({
                  [](HWND dialog) { press(dialog, VK_LEFT); },
                  [](HWND dialog) { click(dialog, IDOK); },
              }),
              DIALOG_OK);
    ASSERT_EQ(node[object].action_count, 2);
    EXPECT_STREQ(node[object].actions[0]->name, "A");
    EXPECT_STREQ(node[object].actions[1]->name, "d");
}

// ---- types

TEST_F(ObjectActions, a_change_of_type_changes_label_and_what_can_be_entered) {
    begin("a");
    node[object].actions[0]->name[0] = '\0';
    EXPECT_EQ(play_actions({
                  [](HWND) { choose_type(ACTION_SEPARATOR); },
                  [](HWND) {
                      EXPECT_TRUE(types_can_be_chosen());
                      EXPECT_EQ(label_shown('a'), "<Separator>");
                      EXPECT_FALSE(is_enabled(actions(), RESOURCE_ACTION_TEST));
                      choose_type(ACTION_SUBMENU);
                  },
                  [](HWND) {
                      EXPECT_EQ(label_shown('a'), "Unnamed Menu");
                      EXPECT_EQ(image_shown('a'), 1);
                      choose_type(ACTION_COMMAND);
                  },
                  [](HWND) {
                      EXPECT_EQ(label_shown('a'), "Unnamed Action");
                      EXPECT_EQ(shown_text(actions(), RESOURCE_ACTION_COMMAND), "run a");
                      choose_type(ACTION_SUBMENU);
                  },
                  [](HWND dialog) { click(dialog, IDOK); },
              }),
              DIALOG_OK);
    EXPECT_EQ(node[object].actions[0]->type, ACTION_SUBMENU);
}

TEST_F(ObjectActions, an_item_that_becomes_a_submenu_steps_out_of_its_submenu) {
    begin("A[bc]");
    play_actions({
        [](HWND) { click_item('b'); },
        [](HWND) { choose_type(ACTION_SUBMENU); },
        [](HWND) { EXPECT_EQ(tree_shown(), "A[c]B[]"); },
    });
}

// ---- testing and browsing

TEST_F(ObjectActions, testing_an_empty_command_shows_the_failure_over_the_dialog) {
    begin("a");
    HWND dialog_shown = nullptr;
    play_actions({
        [&](HWND dialog) {
            dialog_shown = dialog;
            SetDlgItemTextA(actions(), RESOURCE_ACTION_COMMAND, "");
        },
        [](HWND) { press_button(RESOURCE_ACTION_TEST); },
    });
    ASSERT_EQ(window.script.shown().size(), 1u);
    EXPECT_EQ(window.script.shown()[0].text, TEST_FAILED);
    EXPECT_EQ(window.script.shown()[0].caption, "Orvanel");
    EXPECT_EQ(window.script.shown()[0].owner, dialog_shown);
}

TEST_F(ObjectActions, testing_runs_the_command_as_typed_with_the_name_as_typed) {
    begin("a");
    const std::string made = window.pages.file("printer.txt");
    const std::string command = "cmd.exe /c echo x>" + window.pages.file("$NAME.txt");
    play_actions({
        [](HWND dialog) { show_details(dialog); },
        [](HWND) { type(details(), RESOURCE_OBJECT_NAME, "printer"); },
        [](HWND dialog) { show_actions(dialog); },
        [&](HWND) { type(actions(), RESOURCE_ACTION_COMMAND, command.c_str()); },
        [](HWND) { press_button(RESOURCE_ACTION_TEST); },
        [&](HWND) {
            for (int look = 0; look < 500 && !file_exists(made.c_str()); look++)
                Sleep(20);
        },
    });
    EXPECT_TRUE(file_exists(made.c_str()));
    EXPECT_TRUE(window.script.shown().empty());
    EXPECT_STREQ(node[object].name, "server");
    EXPECT_STREQ(node[object].actions[0]->command, "run a");
}

TEST_F(ObjectActions, testing_a_program_that_is_not_there_shows_the_failure) {
    begin("a");
    play_actions({
        [](HWND) { type(actions(), RESOURCE_ACTION_COMMAND, "q:\\none\\$NAME.exe"); },
        [](HWND) { press_button(RESOURCE_ACTION_TEST); },
    });
    ASSERT_EQ(window.script.shown().size(), 1u);
    EXPECT_EQ(window.script.shown()[0].text, TEST_FAILED);
}

// The field for the name is an edit or a box with an edit in it.
static void choose_file(HWND dialog, const std::string &path) {
    const int field = GetDlgItem(dialog, cmb13) != nullptr ? cmb13 : edt1;
    SendDlgItemMessageA(dialog, field, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(path.c_str()));
    PostMessageA(dialog, WM_COMMAND, IDOK, 0);
}

TEST_F(ObjectActions, browsing_replaces_the_program_and_keeps_its_arguments) {
    begin("a");
    const std::string chosen = window.pages.write("tool.exe", "");
    DialogPlayer player({
        {"Object Properties", [](HWND dialog) { show_actions(dialog); }},
        {"Object Properties",
         [](HWND) { type(actions(), RESOURCE_ACTION_COMMAND, "q:\\old.exe -x"); }},
        {"Object Properties", [](HWND) { press_button(RESOURCE_ACTION_BROWSE); }},
        {"Browse", [&chosen](HWND dialog) { choose_file(dialog, chosen); }},
        {"Object Properties", [](HWND dialog) { click(dialog, IDOK); }},
    });
    EXPECT_EQ(dialog_object_show(), DIALOG_OK);
    EXPECT_TRUE(player.done());
    EXPECT_EQ(node[object].actions[0]->command, chosen + " -x");
}

static std::vector<std::string> entries_of(HWND box) {
    std::vector<std::string> entries;
    const LRESULT count = SendMessageA(box, CB_GETCOUNT, 0, 0);
    for (LRESULT i = 0; i < count; i++) {
        char text[100] = "";
        SendMessageA(box, CB_GETLBTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(text));
        entries.emplace_back(text);
    }
    return entries;
}

TEST_F(ObjectActions, browsing_offers_all_files_programs_and_documents_and_may_be_cancelled) {
    begin("a");
    const std::string program = window.pages.write("tool.exe", "");
    std::vector<std::string> filters;
    LRESULT chosen = -1;
    std::string shown;
    DialogPlayer player({
        {"Object Properties", [](HWND dialog) { show_actions(dialog); }},
        {"Object Properties",
         [&](HWND) { type(actions(), RESOURCE_ACTION_COMMAND, (program + " -x").c_str()); }},
        {"Object Properties", [](HWND) { press_button(RESOURCE_ACTION_BROWSE); }},
        {"Browse",
         [&](HWND dialog) {
             filters = entries_of(GetDlgItem(dialog, cmb1));
             chosen = SendDlgItemMessageA(dialog, cmb1, CB_GETCURSEL, 0, 0);
             shown = shown_text(dialog, GetDlgItem(dialog, cmb13) != nullptr ? cmb13 : edt1);
             EXPECT_FALSE(IsWindowVisible(GetDlgItem(dialog, chx1))) << "read-only";
             PostMessageA(dialog, WM_COMMAND, IDCANCEL, 0);
         }},
        {"Object Properties", [](HWND dialog) { click(dialog, IDOK); }},
    });
    EXPECT_EQ(dialog_object_show(), DIALOG_OK);
    EXPECT_TRUE(player.done());
    EXPECT_EQ(filters, (std::vector<std::string>{"All Files", "Programs", "Documents"}));
    EXPECT_EQ(chosen, 0);
    EXPECT_EQ(shown, "tool.exe");
    EXPECT_EQ(node[object].actions[0]->command, program + " -x");
}

// Names in the list of a file dialog, in alphabetical order and without their endings.
static std::set<std::string> files_listed(HWND dialog) {
    const HWND view = FindWindowExA(dialog, nullptr, "SHELLDLL_DefView", nullptr);
    const HWND list = FindWindowExA(view, nullptr, "SysListView32", nullptr);
    std::set<std::string> names;
    const LRESULT total = SendMessageA(list, LVM_GETITEMCOUNT, 0, 0);
    for (LRESULT i = 0; i < total; i++) {
        char text[100] = "";
        LVITEMA item = {};
        item.pszText = text;
        item.cchTextMax = sizeof text;
        SendMessageA(list, LVM_GETITEMTEXTA, static_cast<WPARAM>(i),
                     reinterpret_cast<LPARAM>(&item));
        const std::string name = text;
        names.insert(name.substr(0, name.find('.')));
    }
    return names;
}

TEST_F(ObjectActions, browsing_lists_what_the_chosen_filter_lets_through) {
    using Names = std::set<std::string>;
    begin("a");
    for (const char *file : {"a.exe", "b.com", "c.bat", "d.cmd", "e.doc", "f.docx", "g.txt",
                             "h.rtf", "i.pdf", "j.obj"})
        window.pages.write(file, "");
    const std::string program = window.pages.file("a.exe");
    std::vector<Names> listed;
    const Step look = [&](HWND dialog) { listed.push_back(files_listed(dialog)); };
    const Step next = [](HWND dialog) {
        SendDlgItemMessageA(dialog, cmb1, WM_KEYDOWN, VK_DOWN, 1);
        SendDlgItemMessageA(dialog, cmb1, WM_KEYUP, VK_DOWN, 1);
    };
    DialogPlayer player({
        {"Object Properties", [](HWND dialog) { show_actions(dialog); }},
        {"Object Properties",
         [&](HWND) { type(actions(), RESOURCE_ACTION_COMMAND, program.c_str()); }},
        {"Object Properties", [](HWND) { press_button(RESOURCE_ACTION_BROWSE); }},
        {"Browse", look},
        {"Browse", next},
        {"Browse", look},
        {"Browse", next},
        {"Browse", look},
        {"Browse", [](HWND dialog) { PostMessageA(dialog, WM_COMMAND, IDCANCEL, 0); }},
    });
    dialog_object_show();
    EXPECT_TRUE(player.done());
    ASSERT_EQ(listed.size(), 3u);
    EXPECT_EQ(listed[0], (Names{"a", "b", "c", "d", "e", "f", "g", "h", "i", "j", "home", "sub"}));
    EXPECT_EQ(listed[1], (Names{"a", "b", "c", "d"}));
    EXPECT_EQ(listed[2], (Names{"e", "f", "g", "h", "i"}));
}
