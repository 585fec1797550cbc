// The object dialog over the real window, worked by what mouse and keyboard send.
#include "assets/model.h"
#include "dialogs/dialog_object_actions.h"
#include "dialogs/dialogs.h"
#include "dialogs/model_viewer.h"
#include "dialogs/rules/action_tree.h"
#include "dialogs/rules/dialog_object_rules.h"
#include "dialogs/rules/model_viewer_picture.h"
#include "page/node.h"
#include "page/options.h"
#include "platform/text.h"
#include "resources/resource_ids.h"
#include "scene/scene_floor.h"
#include "scene/scene_page.h"
#include "tests/windows/dialog_growth.h"
#include "tests/windows/dialog_layout.h"
#include "tests/windows/object_dialog_fixture.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

struct ObjectDialog : ObjectDialogTest {};

// ---- opening and closing

TEST_F(ObjectDialog, a_new_object_is_made_of_what_was_entered) {
    dialog_object_set_node(-1);
    dialog_object_set_mouse(3.0f, 4.0f);
    scene_floor.position_x = 10.0f;
    scene_floor.position_y = 20.0f;
    EXPECT_EQ(play("New Object",
                   {
                       [](HWND) { EXPECT_TRUE(has_focus(details(), RESOURCE_OBJECT_NAME)); },
                       [](HWND) { type(details(), RESOURCE_OBJECT_NAME, "server"); },
                       [](HWND) { type(details(), RESOURCE_OBJECT_DESCRIPTION, "cellar"); },
                       [](HWND dialog) { press(dialog, VK_RETURN); },
                   }),
              DIALOG_OK);
    ASSERT_EQ(node_total, 1);
    EXPECT_STREQ(node[0].name, "server");
    EXPECT_STREQ(node[0].description, "cellar");
    EXPECT_EQ(node[0].x, 13.0f);
    EXPECT_EQ(node[0].y, 24.0f);
    EXPECT_EQ(node[0].action_count, 0);
}

TEST_F(ObjectDialog, cancel_escape_and_the_close_button_change_nothing) {
    const std::int32_t id = add_object("server", "aB[c]d");
    const std::vector<Step> ways = {
        [](HWND dialog) { click(dialog, IDCANCEL); },
        [](HWND dialog) { press(dialog, VK_ESCAPE); },
        [](HWND dialog) { PostMessageA(dialog, WM_SYSCOMMAND, SC_CLOSE, 0); },
    };
    for (const Step &way : ways) {
        dialog_object_set_node(id);
        EXPECT_EQ(play("Object Properties",
                       {
                           [](HWND) { type(details(), RESOURCE_OBJECT_NAME, "other"); },
                           [](HWND dialog) { show_actions(dialog); },
                           [](HWND) { click(actions(), RESOURCE_ACTION_DELETE); },
                           way,
                       }),
                  DIALOG_CANCEL);
        EXPECT_STREQ(node[id].name, "server");
        EXPECT_EQ(node[id].action_count, 4);
        EXPECT_EQ(node_total, 1);
    }
}

TEST_F(ObjectDialog, control_with_tab_or_page_down_shows_the_other_page_with_its_first_control) {
    dialog_object_set_node(-1);
    play("New Object", {
                           [](HWND) { EXPECT_TRUE(press_with_control(VK_TAB)); },
                           [](HWND) {
                               EXPECT_TRUE(has_focus(actions(), RESOURCE_ACTION_TREE));
                               EXPECT_FALSE(IsWindowVisible(details()));
                               EXPECT_TRUE(press_with_control(VK_NEXT));
                           },
                           [](HWND) {
                               EXPECT_TRUE(has_focus(details(), RESOURCE_OBJECT_NAME));
                               EXPECT_FALSE(IsWindowVisible(actions()));
                           },
                       });
}

TEST_F(ObjectDialog, an_objects_entries_are_shown_and_ok_keeps_them) {
    const std::int32_t id = add_object("server", "aB[c]d");
    text_copy(node[id].description, "cellar");
    dialog_object_set_node(id);
    EXPECT_EQ(play("Object Properties",
                   {
                       [](HWND) {
                           EXPECT_EQ(shown_text(details(), RESOURCE_OBJECT_NAME), "server");
                           EXPECT_EQ(shown_text(details(), RESOURCE_OBJECT_DESCRIPTION), "cellar");
                           EXPECT_EQ(tree_shown(), "aB[c]d");
                       },
                       [](HWND dialog) { click(dialog, IDOK); },
                   }),
              DIALOG_OK);
    EXPECT_STREQ(node[id].name, "server");
    EXPECT_STREQ(node[id].description, "cellar");
    ASSERT_EQ(node[id].action_count, 4);
    EXPECT_STREQ(node[id].actions[0]->command, "run a");
    EXPECT_EQ(node[id].actions[2]->owner, 1);
}

TEST_F(ObjectDialog, a_new_object_begins_with_what_the_template_has_but_its_name) {
    const std::int32_t id = add_object("Template", "aB[c]");
    text_copy(node[id].description, "cellar");
    template_object_load();
    dialog_object_set_node(-1);
    EXPECT_EQ(play("New Object",
                   {
                       [](HWND) {
                           EXPECT_EQ(shown_text(details(), RESOURCE_OBJECT_NAME), "");
                           EXPECT_EQ(shown_text(details(), RESOURCE_OBJECT_DESCRIPTION), "cellar");
                           EXPECT_EQ(tree_shown(), "aB[c]");
                       },
                       [](HWND dialog) { click(dialog, IDOK); },
                   }),
              DIALOG_OK);
    ASSERT_EQ(node_total, 2);
    EXPECT_EQ(node[1].action_count, 3);
    template_object_delete();
}

TEST_F(ObjectDialog, a_name_longer_than_30_characters_is_cut_at_30_on_OK_and_a_description_at_50) {
    dialog_object_set_node(-1);
    play("New Object", {
                           [](HWND) {
                               SetDlgItemTextA(details(), RESOURCE_OBJECT_NAME,
                                               std::string(31, 'n').c_str());
                               SetDlgItemTextA(details(), RESOURCE_OBJECT_DESCRIPTION,
                                               std::string(51, 'd').c_str());
                           },
                           [](HWND dialog) { click(dialog, IDOK); },
                       });
    ASSERT_EQ(node_total, 1);
    EXPECT_EQ(node[0].name, std::string(30, 'n'));
    EXPECT_EQ(node[0].description, std::string(50, 'd'));
}

TEST_F(ObjectDialog, no_more_can_be_typed_than_is_kept) {
    dialog_object_set_node(-1);
    play("New Object",
         {
             [](HWND) {
                 type(details(), RESOURCE_OBJECT_NAME, std::string(40, 'n').c_str());
                 EXPECT_EQ(shown_text(details(), RESOURCE_OBJECT_NAME), std::string(30, 'n'));
                 type(details(), RESOURCE_OBJECT_DESCRIPTION, std::string(60, 'd').c_str());
                 EXPECT_EQ(shown_text(details(), RESOURCE_OBJECT_DESCRIPTION),
                           std::string(50, 'd'));
             },
         });
    EXPECT_EQ(node_total, 0);
}

TEST_F(ObjectDialog, the_model_chosen_becomes_the_objects) {
    dialog_object_set_node(-1);
    play("New Object",
         {
             [](HWND) { type(details(), RESOURCE_OBJECT_NAME, "printer"); },
             [](HWND) { click(details(), RESOURCE_MODEL_NEXT); },
             [](HWND) { EXPECT_EQ(shown_text(details(), RESOURCE_MODEL_NAME), "Printer"); },
             [](HWND dialog) { click(dialog, IDOK); },
         });
    ASSERT_EQ(node_total, 1);
    EXPECT_STREQ(models[node[0].model_id].file_name, "printer.obj");
    EXPECT_EQ(node[0].dimensions[EXTENT_LEFT], models[node[0].model_id].min_x);
    EXPECT_NE(node[0].dimensions[EXTENT_LEFT], models[0].min_x);
}

TEST_F(ObjectDialog, a_model_that_is_not_in_the_catalogue_stays_until_another_is_chosen) {
    const std::int32_t id = add_object("server", "a");
    node[id].model_id = model_return_model_id("laptop.obj");
    ASSERT_NE(node[id].model_id, 0);
    dialog_object_set_node(id);
    const Step look = [](HWND) {
        EXPECT_EQ(shown_text(details(), RESOURCE_MODEL_NAME), "");
        EXPECT_STREQ(models[model_viewer_model_id].file_name, "laptop.obj");
    };
    const Step ok = [](HWND dialog) { click(dialog, IDOK); };
    EXPECT_EQ(play("Object Properties", {look, ok}), DIALOG_OK);
    EXPECT_STREQ(models[node[id].model_id].file_name, "laptop.obj");
    const Step next = [](HWND) { click(details(), RESOURCE_MODEL_NEXT); };
    EXPECT_EQ(play("Object Properties", {look, next, ok}), DIALOG_OK);
    EXPECT_EQ(node[id].model_id, 0);
}

TEST_F(ObjectDialog, the_model_used_last_is_offered_again_when_the_options_ask_for_it) {
    for (const std::int32_t remembers : {0, 1}) {
        orvanel_options.remember_last_model = remembers;
        dialog_object_set_node(-1);
        play("New Object", {[](HWND dialog) {
                 click(details(), RESOURCE_MODEL_NEXT);
                 click(dialog, IDOK);
             }});
        play("New Object", {[&](HWND) {
                 EXPECT_EQ(shown_text(details(), RESOURCE_MODEL_NAME),
                           remembers == 1 ? "Printer" : "Default");
             }});
    }
}

TEST_F(ObjectDialog, stands_over_the_middle_of_the_window) {
    dialog_object_set_node(-1);
    play("New Object", {[](HWND dialog) {
             RECT area, client;
             GetWindowRect(dialog, &area);
             GetClientRect(hWnd, &client);
             MapWindowPoints(hWnd, nullptr, reinterpret_cast<POINT *>(&client), 2);
             EXPECT_NEAR(area.left + area.right, client.left + client.right, 2);
             EXPECT_NEAR(area.top + area.bottom, client.top + client.bottom, 2);
             EXPECT_EQ(GetWindow(dialog, GW_OWNER), hWnd);
             EXPECT_FALSE(IsWindowEnabled(hWnd));
         }});
    EXPECT_TRUE(IsWindowEnabled(hWnd));
}

static std::string class_of(HWND page, int id) {
    char name[40] = "";
    GetClassNameA(GetDlgItem(page, id), name, sizeof name);
    return name;
}

TEST_F(ObjectDialog, the_controls_have_their_numbers_and_captions) {
    dialog_object_set_node(add_object("server", "a"));
    play("Object Properties", {[](HWND dialog) {
             EXPECT_EQ(shown_text(dialog, 1), "OK");
             EXPECT_EQ(shown_text(dialog, 2), "Cancel");
             EXPECT_EQ(class_of(dialog, 2034), "SysTabControl32");
             EXPECT_EQ(class_of(details(), 1000), "Edit");
             EXPECT_EQ(class_of(details(), 2023), "Edit");
             EXPECT_EQ(class_of(details(), 1002), "ComboBox");
             EXPECT_EQ(class_of(details(), 1001), "orvanel:model_viewer");
             EXPECT_EQ(class_of(details(), 2024), "ComboBox");
             EXPECT_EQ(shown_text(details(), 1007), "<");
             EXPECT_EQ(shown_text(details(), 1008), ">");
             EXPECT_EQ(class_of(actions(), 2064), "SysTreeView32");
             EXPECT_EQ(class_of(actions(), 2062), "ComboBox");
             EXPECT_EQ(class_of(actions(), 1000), "Edit");
             EXPECT_EQ(shown_text(actions(), RESOURCE_ACTION_COMMAND_TEXT),
                       "Enter the name of a &program, folder, document, or Internet resource: ");
             EXPECT_EQ(shown_text(actions(), 2057), "&Browse...");
             EXPECT_EQ(shown_text(actions(), 2058), "Te&st");
             EXPECT_EQ(shown_text(actions(), 2060), "Ne&w");
             EXPECT_EQ(shown_text(actions(), 2059), "De&lete");
             EXPECT_EQ(shown_text(actions(), 2055), "&Up");
             EXPECT_EQ(shown_text(actions(), 2053), "&Down");
             static const char *const types[] = {"Action", "Separator", "Submenu"};
             for (WPARAM type = 0; type < 3; type++) {
                 char text[20] = "";
                 SendDlgItemMessageA(actions(), 2062, CB_GETLBTEXT, type,
                                     reinterpret_cast<LPARAM>(text));
                 EXPECT_STREQ(text, types[type]);
             }
             EXPECT_EQ(SendDlgItemMessageA(actions(), 2062, CB_GETCOUNT, 0, 0), 3);
             static const char *const tabs[] = {"Details", "Actions"};
             for (WPARAM tab = 0; tab < 2; tab++) {
                 char text[20] = "";
                 TCITEMA item = {};
                 item.mask = TCIF_TEXT;
                 item.pszText = text;
                 item.cchTextMax = sizeof text;
                 SendDlgItemMessageA(dialog, 2034, TCM_GETITEMA, tab,
                                     reinterpret_cast<LPARAM>(&item));
                 EXPECT_STREQ(item.pszText, tabs[tab]);
             }
         }});
}

// ---- tabs

TEST_F(ObjectDialog, switching_tabs_puts_the_focus_on_the_first_control) {
    dialog_object_set_node(add_object("server", "ab"));
    play("Object Properties", {
                                  [](HWND dialog) { show_actions(dialog); },
                                  [](HWND) {
                                      EXPECT_TRUE(has_focus(actions(), RESOURCE_ACTION_TREE));
                                      EXPECT_TRUE(IsWindowVisible(actions()));
                                      EXPECT_FALSE(IsWindowVisible(details()));
                                  },
                                  [](HWND dialog) { show_details(dialog); },
                                  [](HWND) {
                                      EXPECT_TRUE(has_focus(details(), RESOURCE_OBJECT_NAME));
                                      EXPECT_TRUE(IsWindowVisible(details()));
                                      EXPECT_FALSE(IsWindowVisible(actions()));
                                  },
                              });
}

TEST_F(ObjectDialog, the_tab_key_goes_through_the_controls_in_reading_order) {
    dialog_object_set_node(add_object("server", "ab"));
    std::vector<int> order;
    std::vector<Step> steps;
    for (int i = 0; i < 9; i++) {
        steps.push_back([&order](HWND dialog) {
            order.push_back(GetDlgCtrlID(GetFocus()));
            press(dialog, VK_TAB);
        });
    }
    play("Object Properties", steps);
    const std::vector<int> expected = {RESOURCE_OBJECT_NAME,
                                       RESOURCE_OBJECT_DESCRIPTION,
                                       RESOURCE_MODEL_CATEGORY,
                                       RESOURCE_MODEL_PREVIOUS,
                                       RESOURCE_MODEL_NAME,
                                       RESOURCE_MODEL_NEXT,
                                       IDOK,
                                       IDCANCEL,
                                       RESOURCE_OBJECT_TAB};
    EXPECT_EQ(order, expected);
}

TEST_F(ObjectDialog, the_arrow_keys_switch_between_the_tabs) {
    dialog_object_set_node(add_object("server", "ab"));
    play("Object Properties",
         {
             [](HWND dialog) {
                 SendMessageA(dialog, WM_NEXTDLGCTL,
                              reinterpret_cast<WPARAM>(GetDlgItem(dialog, RESOURCE_OBJECT_TAB)),
                              TRUE);
             },
             [](HWND dialog) { press(dialog, VK_RIGHT); },
             [](HWND) { EXPECT_TRUE(has_focus(actions(), RESOURCE_ACTION_TREE)); },
         });
}

// ---- what must not go into a page file

TEST_F(ObjectDialog, no_field_takes_a_character_that_would_cut_the_page_file) {
    dialog_object_set_node(add_object("server", "a"));
    play("Object Properties",
         {
             [](HWND) {
                 type(details(), RESOURCE_OBJECT_NAME, "a<b");
                 EXPECT_EQ(shown_text(details(), RESOURCE_OBJECT_NAME), "ab");
                 type(details(), RESOURCE_OBJECT_DESCRIPTION, "<>");
                 EXPECT_EQ(shown_text(details(), RESOURCE_OBJECT_DESCRIPTION), ">");
             },
             [](HWND dialog) { show_actions(dialog); },
             [](HWND) {
                 type(actions(), RESOURCE_ACTION_COMMAND, "x < y");
                 EXPECT_EQ(shown_text(actions(), RESOURCE_ACTION_COMMAND), "x  y");
             },
         });
}

static int balloons;

static LRESULT CALLBACK watch_balloons(HWND window, UINT message, WPARAM wparam, LPARAM lparam,
                                       UINT_PTR, DWORD_PTR) {
    if (message == EM_SHOWBALLOONTIP)
        balloons++;
    return DefSubclassProc(window, message, wparam, lparam);
}

static void put_on_clipboard(HWND owner, const std::string &text) {
    ASSERT_NE(OpenClipboard(owner), 0);
    EmptyClipboard();
    const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, text.size() + 1);
    memcpy(GlobalLock(memory), text.c_str(), text.size() + 1);
    GlobalUnlock(memory);
    SetClipboardData(CF_TEXT, memory);
    CloseClipboard();
}

static void expect_refused_when_pasted(HWND edit) {
    ASSERT_NE(edit, nullptr);
    SetWindowSubclass(edit, watch_balloons, 99, 0);
    balloons = 0;
    put_on_clipboard(edit, "a<b>c");
    SendMessageA(edit, EM_SETSEL, 0, -1);
    SendMessageA(edit, WM_PASTE, 0, 0);
    char text[20] = "";
    GetWindowTextA(edit, text, sizeof text);
    EXPECT_STREQ(text, "ab>c");
    EXPECT_EQ(balloons, 1);
    SendMessageA(edit, WM_CHAR, '<', 1);
    EXPECT_EQ(balloons, 2);
}

TEST_F(ObjectDialog, every_field_refuses_it_pasted_as_well_and_tells_why) {
    dialog_object_set_node(add_object("server", "a"));
    play("Object Properties",
         {
             [](HWND) {
                 expect_refused_when_pasted(GetDlgItem(details(), RESOURCE_OBJECT_NAME));
                 expect_refused_when_pasted(GetDlgItem(details(), RESOURCE_OBJECT_DESCRIPTION));
             },
             [](HWND dialog) { show_actions(dialog); },
             [](HWND dialog) {
                 expect_refused_when_pasted(GetDlgItem(actions(), RESOURCE_ACTION_COMMAND));
                 show_actions(dialog);
             },
             [](HWND dialog) {
                 SetFocus(hwnd_treeview);
                 press(dialog, VK_F2);
             },
             [](HWND) { expect_refused_when_pasted(label_edit_shown()); },
         });
}

// ---- layout

TEST_F(ObjectDialog, dialog_and_pages_are_laid_out_well_at_all_resolutions) {
    model_viewer_init(); // makes the class of the preview known
    for (const int id :
         {RESOURCE_DIALOG_OBJECT, RESOURCE_OBJECT_DETAILS, RESOURCE_OBJECT_ACTIONS}) {
        EXPECT_EQ(dialog_shared_access_keys(id), "") << id;
        for (const int size : LAYOUT_POINT_SIZES) {
            for (const std::string &fault : dialog_layout_faults(id, size))
                ADD_FAILURE() << id << " at " << size << " points: " << fault;
        }
    }
}

TEST_F(ObjectDialog, the_pages_fit_into_the_tab_at_all_resolutions) {
    model_viewer_init();
    for (const int page : {RESOURCE_OBJECT_DETAILS, RESOURCE_OBJECT_ACTIONS}) {
        for (const int size : LAYOUT_POINT_SIZES) {
            for (const std::string &fault :
                 dialog_page_faults(RESOURCE_DIALOG_OBJECT, RESOURCE_OBJECT_TAB, page, size))
                ADD_FAILURE() << page << " at " << size << " points: " << fault;
        }
    }
}

// ---- what stays behind

TEST_F(ObjectDialog, leaves_nothing_behind_after_300_openings) {
    dialog_object_set_node(add_object("server", "aB[cd]e"));
    expect_no_growth_with_preview([] { dialog_object_show(); });
}
