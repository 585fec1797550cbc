#include "dialogs/rules/dialog_options_rules.h"

#include "dialogs/dialog.h"
#include "dialogs/dialogs.h"
#include "platform/locations.h"
#include "platform/text.h"
#include "resources/resource_ids.h"
#include "scene/gl_util.h"
#include "scene/scene_floor.h"
#include "tests/support/user_options.h"
#include "tests/windows/dialog_growth.h"
#include "tests/windows/options_dialog_player.h"
#include "tests/windows/real_window.h"
#include "tests/windows/tab_background.h"

#include <gtest/gtest.h>

#include <commctrl.h>

#include <cstring>

struct OptionsDialog : testing::Test {
    UserOptionsFile file;
    RealWindow window;

    OptionsDialog() {
        fsaa_possible = 1;
    }
};

static bool is_ticked(HWND page, int control) {
    return SendDlgItemMessageA(page, control, BM_GETCHECK, 0, 0) == BST_CHECKED;
}

static void expect_only_page(HWND dialog, OptionsTab shown) {
    for (int tab = 0; tab < OPTIONS_TABS; tab++)
        EXPECT_EQ(IsWindowVisible(options_page(dialog, static_cast<OptionsTab>(tab))) != 0,
                  tab == shown)
            << tab;
}

// ---- tabs and boxes

TEST_F(OptionsDialog, It_opens_over_the_middle_of_the_main_window) {
    play_options({{OPTIONS, [](HWND dialog) {
                       RECT area, parent;
                       GetWindowRect(dialog, &area);
                       GetClientRect(hWnd, &parent);
                       MapWindowPoints(hWnd, nullptr, reinterpret_cast<POINT *>(&parent), 2);
                       EXPECT_NEAR(area.left + area.right, parent.left + parent.right, 2);
                       EXPECT_NEAR(area.top + area.bottom, parent.top + parent.bottom, 2);
                   }}});
}

TEST_F(OptionsDialog, One_page_is_shown_at_a_time_and_it_fits_into_the_tab) {
    play_options(
        {{OPTIONS, [](HWND dialog) {
              expect_only_page(dialog, OPTIONS_GENERAL);
              RECT frame;
              GetWindowRect(options_tabs(dialog), &frame);
              for (const OptionsTab tab : {OPTIONS_GRAPHICS, OPTIONS_ACTIONS, OPTIONS_GENERAL}) {
                  const HWND page = options_open_page(dialog, tab);
                  expect_only_page(dialog, tab);
                  for (HWND control = GetWindow(page, GW_CHILD); control != nullptr;
                       control = GetWindow(control, GW_HWNDNEXT)) {
                      RECT area, within;
                      GetWindowRect(control, &area);
                      GetWindowRect(page, &within);
                      EXPECT_TRUE(area.left >= within.left && area.right <= within.right &&
                                  area.top >= within.top && area.bottom <= within.bottom)
                          << tab << " " << GetDlgCtrlID(control);
                      EXPECT_LE(within.bottom, frame.bottom);
                      EXPECT_LE(within.right, frame.right);
                  }
              }
          }}});
}

TEST_F(OptionsDialog, The_tabs_have_their_captions_in_order) {
    play_options({{OPTIONS, [](HWND dialog) {
                       const char *captions[] = {"General", "Actions", "Graphics"};
                       ASSERT_EQ(SendMessageA(options_tabs(dialog), TCM_GETITEMCOUNT, 0, 0), 3);
                       for (WPARAM i = 0; i < 3; i++) {
                           char text[20] = "";
                           TCITEMA item = {};
                           item.mask = TCIF_TEXT;
                           item.pszText = text;
                           item.cchTextMax = sizeof text;
                           SendMessageA(options_tabs(dialog), TCM_GETITEMA, i,
                                        reinterpret_cast<LPARAM>(&item));
                           EXPECT_STREQ(text, captions[i]);
                       }
                   }}});
}

TEST_F(OptionsDialog, Every_page_has_the_themed_background_of_a_tab) {
    play_options({{OPTIONS, [](HWND dialog) {
                       for (int tab = 0; tab < OPTIONS_TABS; tab++)
                           EXPECT_TRUE(has_tab_background(
                               options_page(dialog, static_cast<OptionsTab>(tab))))
                               << tab;
                   }}});
}

TEST_F(OptionsDialog, Every_box_shows_its_setting_and_OK_stores_what_the_mouse_made_of_it) {
    const Options before = orvanel_options;
    EXPECT_EQ(play_options({{OPTIONS,
                             [](HWND dialog) {
                                 // Enhanced graphics last: without it boxes take no click.
                                 for (const bool enhanced : {false, true}) {
                                     for (const OptionsBox &box : OPTIONS_BOXES) {
                                         if ((box.flag == &Options::good_graphics_card) != enhanced)
                                             continue;
                                         const HWND page = options_open_page(dialog, box.tab);
                                         EXPECT_EQ(is_ticked(page, box.control),
                                                   orvanel_options.*box.flag == 1);
                                         click(page, box.control);
                                     }
                                 }
                                 click(dialog, IDOK);
                             }}}),
              DIALOG_OK);
    for (const OptionsBox &box : OPTIONS_BOXES)
        EXPECT_EQ(orvanel_options.*box.flag, 1 - before.*box.flag) << box.tab << " " << box.control;
    EXPECT_EQ(dialog_options_rebuild_window, 1);
    EXPECT_NE(file.text().find("<splash_screen>0</splash_screen>"), std::string::npos);
}

TEST_F(OptionsDialog, Cancel_and_Escape_change_nothing) {
    const Options before = orvanel_options;
    for (const bool escape : {false, true}) {
        EXPECT_EQ(play_options({{OPTIONS,
                                 [=](HWND dialog) {
                                     const HWND page = options_page(dialog, OPTIONS_GENERAL);
                                     click(page, RESOURCE_GENERAL_UPDATES);
                                     type(page, RESOURCE_GENERAL_FOLDER, "C:\\nowhere");
                                     if (escape)
                                         press(dialog, VK_ESCAPE);
                                     else
                                         click(dialog, IDCANCEL);
                                 }}}),
                  DIALOG_CANCEL);
        EXPECT_EQ(std::memcmp(&before, &orvanel_options, sizeof before), 0);
    }
    EXPECT_EQ(file.text(), "");
}

TEST_F(OptionsDialog, Without_enhanced_graphics_its_boxes_are_disabled_and_come_back_with_it) {
    play_options({{OPTIONS, [](HWND dialog) {
                       const HWND page = options_open_page(dialog, OPTIONS_GRAPHICS);
                       for (const bool enhanced : {true, false, true}) {
                           for (const OptionsBox &box : OPTIONS_BOXES) {
                               if (box.tab != OPTIONS_GRAPHICS)
                                   continue;
                               EXPECT_EQ(is_enabled(page, box.control), enhanced || !box.enhanced)
                                   << box.control;
                           }
                           click(page, RESOURCE_GRAPHICS_ENHANCED);
                       }
                   }}});
}

TEST_F(OptionsDialog, Without_multisampling_the_anti_aliasing_box_stays_disabled_and_empty) {
    fsaa_possible = 0;
    play_options({{OPTIONS, [](HWND dialog) {
                       const HWND page = options_open_page(dialog, OPTIONS_GRAPHICS);
                       for (int i = 0; i < 3; i++) {
                           EXPECT_FALSE(is_enabled(page, RESOURCE_GRAPHICS_ANTI_ALIASING));
                           EXPECT_FALSE(is_ticked(page, RESOURCE_GRAPHICS_ANTI_ALIASING));
                           click(page, RESOURCE_GRAPHICS_ENHANCED);
                       }
                   }}});
    EXPECT_EQ(orvanel_options.anti_aliasing, 0);
}

// ---- keyboard

TEST_F(OptionsDialog, Pages_and_boxes_are_reached_with_the_keyboard_alone) {
    EXPECT_EQ(play_options({{OPTIONS,
                             [](HWND dialog) {
                                 const HWND page = options_page(dialog, OPTIONS_GENERAL);
                                 EXPECT_TRUE(has_focus(page, RESOURCE_GENERAL_HOME_TITLE));
                                 EXPECT_EQ(GetNextDlgTabItem(dialog, GetFocus(), TRUE),
                                           options_tabs(dialog));
                                 press_alt(dialog, 'O'); // confirm object deletion
                             }},
                            {OPTIONS,
                             [](HWND dialog) {
                                 EXPECT_TRUE(has_focus(options_page(dialog, OPTIONS_GENERAL),
                                                       RESOURCE_GENERAL_CONFIRM_OBJECT));
                                 SendMessageA(dialog, WM_NEXTDLGCTL,
                                              reinterpret_cast<WPARAM>(options_tabs(dialog)), TRUE);
                                 press(dialog, VK_RIGHT);
                             }},
                            {OPTIONS,
                             [](HWND dialog) {
                                 expect_only_page(dialog, OPTIONS_ACTIONS);
                                 press(dialog, VK_TAB);
                             }},
                            {OPTIONS,
                             [](HWND dialog) {
                                 EXPECT_TRUE(has_focus(options_page(dialog, OPTIONS_ACTIONS),
                                                       RESOURCE_ACTIONS_DOUBLE_CLICK));
                                 press(dialog, VK_SPACE);
                                 PostMessageA(GetFocus(), WM_KEYUP, VK_SPACE, 1);
                             }},
                            {OPTIONS, [](HWND dialog) { press(dialog, VK_RETURN); }}}),
              DIALOG_OK);
    EXPECT_EQ(orvanel_options.confirm_object_delete, 1);
    EXPECT_EQ(orvanel_options.action_double_click_run, 0);
}

TEST_F(OptionsDialog, Control_with_Tab_or_PageDown_goes_to_the_next_page_and_back_round_and_round) {
    play_options({{OPTIONS, [](HWND dialog) {
                       for (const UINT forth : {VK_TAB, VK_NEXT}) {
                           for (const OptionsTab tab :
                                {OPTIONS_ACTIONS, OPTIONS_GRAPHICS, OPTIONS_GENERAL}) {
                               EXPECT_TRUE(press_with_control(forth));
                               expect_only_page(dialog, tab);
                               EXPECT_EQ(SendMessageA(options_tabs(dialog), TCM_GETCURSEL, 0, 0),
                                         tab);
                           }
                       }
                       press_with_control(VK_TAB, true);
                       expect_only_page(dialog, OPTIONS_GRAPHICS);
                       press_with_control(VK_PRIOR);
                       expect_only_page(dialog, OPTIONS_ACTIONS);
                   }}});
}

TEST_F(OptionsDialog, Tab_and_PageDown_without_Control_stay_what_they_are) {
    play_options({{OPTIONS, [](HWND dialog) {
                       for (const UINT code : {VK_TAB, VK_NEXT, VK_PRIOR}) {
                           MSG message = {GetFocus(), WM_KEYDOWN, code, 1, 0, {}};
                           EXPECT_FALSE(CallMsgFilterA(&message, MSGF_DIALOGBOX)) << code;
                       }
                       expect_only_page(dialog, OPTIONS_GENERAL);
                   }}});
}

TEST_F(OptionsDialog, The_focus_never_stays_behind_in_a_hidden_page) {
    play_options({{OPTIONS, [](HWND dialog) {
                       press_with_control(VK_TAB);
                       EXPECT_TRUE(has_focus(options_page(dialog, OPTIONS_ACTIONS),
                                             RESOURCE_ACTIONS_DOUBLE_CLICK));
                       options_open_page(dialog, OPTIONS_GRAPHICS); // with the mouse
                       EXPECT_TRUE(has_focus(options_page(dialog, OPTIONS_GRAPHICS),
                                             RESOURCE_GRAPHICS_NO_WARNINGS) ||
                                   GetFocus() == options_tabs(dialog));
                       SetFocus(GetDlgItem(dialog, IDOK));
                       press_with_control(VK_TAB);
                       EXPECT_EQ(GetFocus(), GetDlgItem(dialog, IDOK));
                   }}});
}

TEST_F(OptionsDialog, The_tab_key_goes_in_reading_order) {
    play_options(
        {{OPTIONS, [](HWND dialog) {
              for (const OptionsTab tab : {OPTIONS_GRAPHICS, OPTIONS_ACTIONS, OPTIONS_GENERAL}) {
                  const HWND page = options_open_page(dialog, tab);
                  HWND control = options_tabs(dialog);
                  int height = 0;
                  while ((control = GetNextDlgTabItem(dialog, control, FALSE)) != nullptr &&
                         GetParent(control) == page) {
                      RECT area;
                      GetWindowRect(control, &area);
                      EXPECT_GE(area.bottom, height) << GetDlgCtrlID(control);
                      height = area.bottom;
                  }
                  EXPECT_EQ(control, GetDlgItem(dialog, IDOK));
                  control = GetNextDlgTabItem(dialog, control, FALSE);
                  EXPECT_EQ(control, GetDlgItem(dialog, IDCANCEL));
                  EXPECT_EQ(GetNextDlgTabItem(dialog, control, FALSE), options_tabs(dialog));
              }
          }}});
}

// ---- zoom and colour

TEST_F(OptionsDialog, The_zoom_level_follows_the_arrow_keys) {
    play_options({{OPTIONS, [](HWND dialog) {
                       const HWND track =
                           GetDlgItem(options_page(dialog, OPTIONS_GENERAL), RESOURCE_GENERAL_ZOOM);
                       EXPECT_EQ(SendMessageA(track, TBM_GETPOS, 0, 0),
                                 orvanel_options.initial_zoom_level);
                       EXPECT_EQ(SendMessageA(track, TBM_GETRANGEMIN, 0, 0), 0);
                       EXPECT_EQ(SendMessageA(track, TBM_GETRANGEMAX, 0, 0), 8);
                       for (int i = 0; i < 2; i++)
                           SendMessageA(track, WM_KEYDOWN, VK_RIGHT, 1);
                       click(dialog, IDOK);
                   }}});
    EXPECT_EQ(orvanel_options.initial_zoom_level, 6);
    EXPECT_EQ(scene_floor.zoom_level, 6);
    EXPECT_EQ(scene_floor.distance, -10.0f);
}

static HWND colours_of(HWND dialog) {
    return GetDlgItem(options_page(dialog, OPTIONS_GENERAL), RESOURCE_GENERAL_COLOUR);
}

// With the keys of the closed list.
static void go_to_colour(HWND dialog, int entry) {
    const HWND list = colours_of(dialog);
    while (SendMessageA(list, CB_GETCURSEL, 0, 0) != entry)
        SendMessageA(list, WM_KEYDOWN,
                     SendMessageA(list, CB_GETCURSEL, 0, 0) < entry ? VK_DOWN : VK_UP, 1);
}

TEST_F(OptionsDialog, The_colour_list_holds_the_presets_and_custom_and_shows_the_setting) {
    text_copy(orvanel_options.default_page_colour_name, "Purple");
    play_options({{OPTIONS, [](HWND dialog) {
                       const char *names[] = {"Blue",   "Gray",  "Turquoise", "Purple",
                                              "Orange", "Black", "Custom"};
                       const HWND list = colours_of(dialog);
                       ASSERT_EQ(SendMessageA(list, CB_GETCOUNT, 0, 0), 7);
                       for (WPARAM i = 0; i < 7; i++) {
                           char name[20] = "";
                           SendMessageA(list, CB_GETLBTEXT, i, reinterpret_cast<LPARAM>(name));
                           EXPECT_STREQ(name, names[i]);
                       }
                       EXPECT_EQ(SendMessageA(list, CB_GETCURSEL, 0, 0), 3);
                   }}});
}

TEST_F(OptionsDialog, Another_colour_becomes_the_default) {
    play_options({{OPTIONS, [](HWND dialog) {
                       go_to_colour(dialog, 4);
                       click(dialog, IDOK);
                   }}});
    EXPECT_STREQ(orvanel_options.default_page_colour_name, "Orange");
    EXPECT_EQ(options_colour_change_flag, 1);
}

TEST_F(OptionsDialog, Choosing_the_same_preset_colour_again_does_not_start_a_colour_blend) {
    play_options({{OPTIONS, [](HWND dialog) {
                       go_to_colour(dialog, 2);
                       go_to_colour(dialog, 0);
                       click(dialog, IDOK);
                   }}});
    EXPECT_EQ(options_colour_change_flag, 0);
}

TEST_F(OptionsDialog, Custom_opens_the_colour_chooser_and_its_cancel_brings_the_entry_back) {
    play_options({{OPTIONS, [](HWND dialog) { go_to_colour(dialog, 5); }},
                  {OPTIONS, [](HWND dialog) { go_to_colour(dialog, 6); }},
                  {"Color", [](HWND chooser) { PostMessageA(chooser, WM_COMMAND, IDCANCEL, 0); }},
                  {OPTIONS, [](HWND dialog) {
                       EXPECT_EQ(SendMessageA(colours_of(dialog), CB_GETCURSEL, 0, 0), 5);
                       click(dialog, IDOK);
                   }}});
    EXPECT_STREQ(orvanel_options.default_page_colour_name, "Black");
}

static POINT middle_of(HWND window) {
    RECT area;
    GetWindowRect(window, &area);
    return {(area.left + area.right) / 2, (area.top + area.bottom) / 2};
}

TEST_F(OptionsDialog, The_colour_chooser_opens_over_the_middle_of_the_dialog) {
    play_options({{OPTIONS, [](HWND dialog) { go_to_colour(dialog, 6); }},
                  {"Color",
                   [](HWND chooser) {
                       const POINT wanted = middle_of(GetWindow(chooser, GW_OWNER));
                       const POINT middle = middle_of(chooser);
                       EXPECT_NEAR(middle.x, wanted.x, 1);
                       EXPECT_NEAR(middle.y, wanted.y, 1);
                       PostMessageA(chooser, WM_COMMAND, IDCANCEL, 0);
                   }},
                  {OPTIONS, [](HWND dialog) { click(dialog, IDCANCEL); }}});
}

TEST_F(OptionsDialog, A_custom_colour_chosen_in_the_chooser_becomes_the_default) {
    play_options({{OPTIONS, [](HWND dialog) { go_to_colour(dialog, 6); }},
                  {"Color",
                   [](HWND chooser) {
                       EXPECT_EQ(GetWindow(chooser, GW_OWNER), FindWindowA("#32770", OPTIONS));
                       PostMessageA(chooser, WM_COMMAND, IDOK, 0);
                   }},
                  {OPTIONS, [](HWND dialog) {
                       EXPECT_EQ(SendMessageA(colours_of(dialog), CB_GETCURSEL, 0, 0), 6);
                       click(dialog, IDOK);
                   }}});
    EXPECT_STREQ(orvanel_options.default_page_colour_name, "Custom");
    EXPECT_EQ(options_colour_change_flag, 1);
    const float red = colour_win_to_opengl(colour_opengl_to_win(0.07f)); // offered and taken
    EXPECT_FLOAT_EQ(orvanel_options.default_page_red, red);
}

// ---- the page folder

static constexpr int CHOOSER_TITLE = 0x3742; // control of the system's folder chooser

static void type_folder(HWND dialog, const std::string &folder) {
    type(options_page(dialog, OPTIONS_GENERAL), RESOURCE_GENERAL_FOLDER, folder.c_str());
}

TEST_F(OptionsDialog,
       Typing_the_current_page_folder_without_its_trailing_backslash_counts_as_no_change) {
    std::string folder = page_dir_location;
    folder.pop_back();
    play_options(
        {{OPTIONS, [&](HWND dialog) {
              EXPECT_EQ(shown_text(options_page(dialog, OPTIONS_GENERAL), RESOURCE_GENERAL_FOLDER),
                        page_dir_location);
              type_folder(dialog, folder);
              click(dialog, IDOK);
          }}});
    EXPECT_TRUE(window.script.shown().empty());
    EXPECT_EQ(dialog_options_folder_change_reload, 0);
}

TEST_F(OptionsDialog, An_invalid_folder_is_shown_on_the_General_tab_and_the_dialog_stays) {
    EXPECT_EQ(play_options({{OPTIONS,
                             [](HWND dialog) {
                                 type_folder(dialog, "C:\\orvanel test\\missing");
                                 options_open_page(dialog, OPTIONS_GRAPHICS);
                                 click(dialog, IDOK);
                             }},
                            {OPTIONS,
                             [](HWND dialog) {
                                 expect_only_page(dialog, OPTIONS_GENERAL);
                                 EXPECT_EQ(SendMessageA(options_tabs(dialog), TCM_GETCURSEL, 0, 0),
                                           OPTIONS_GENERAL);
                                 EXPECT_TRUE(has_focus(options_page(dialog, OPTIONS_GENERAL),
                                                       RESOURCE_GENERAL_FOLDER));
                             }}}),
              DIALOG_CANCEL);
    ASSERT_EQ(window.script.shown().size(), 1u);
    EXPECT_EQ(window.script.shown()[0].text, "The specified Page file folder is invalid.");
    EXPECT_STREQ(orvanel_options.page_folder, "");
}

TEST_F(OptionsDialog, A_folder_with_a_home_page_is_taken) {
    TestFolder other;
    other.write("home.orvl", "");
    play_options({{OPTIONS, [&](HWND dialog) {
                       type_folder(dialog, other.path);
                       click(dialog, IDOK);
                   }}});
    EXPECT_STREQ(page_dir_location, other.path);
    EXPECT_STREQ(orvanel_options.page_folder, other.path);
    EXPECT_EQ(dialog_options_folder_change_reload, 1);
    EXPECT_EQ(window.script.shown().size(), 1u);
}

TEST_F(OptionsDialog, The_browse_button_opens_the_folder_chooser_on_the_current_folder) {
    play_options({{OPTIONS,
                   [](HWND dialog) {
                       type_folder(dialog, "C:\\windows\\system32\\");
                       click(options_page(dialog, OPTIONS_GENERAL), RESOURCE_GENERAL_BROWSE);
                   }},
                  {"Browse for Folder",
                   [](HWND chooser) {
                       EXPECT_EQ(shown_text(chooser, CHOOSER_TITLE),
                                 "Choose the folder where Orvanel will store its page files:");
                       PostMessageA(chooser, WM_COMMAND, IDOK, 0);
                   }},
                  {OPTIONS, [](HWND dialog) {
                       const std::string chosen = shown_text(options_page(dialog, OPTIONS_GENERAL),
                                                             RESOURCE_GENERAL_FOLDER);
                       EXPECT_STRCASEEQ(chosen.c_str(), "C:\\windows\\system32");
                   }}});
}

TEST_F(OptionsDialog, A_cancelled_folder_chooser_leaves_the_text) {
    play_options(
        {{OPTIONS,
          [](HWND dialog) {
              type_folder(dialog, "C:\\");
              click(options_page(dialog, OPTIONS_GENERAL), RESOURCE_GENERAL_BROWSE);
          }},
         {"Browse for Folder",
          [](HWND chooser) { PostMessageA(chooser, WM_COMMAND, IDCANCEL, 0); }},
         {OPTIONS, [](HWND dialog) {
              EXPECT_EQ(shown_text(options_page(dialog, OPTIONS_GENERAL), RESOURCE_GENERAL_FOLDER),
                        "C:\\");
          }}});
}

TEST_F(OptionsDialog, Enter_presses_the_button_that_has_the_focus) {
    EXPECT_EQ(play_options({{OPTIONS,
                             [](HWND dialog) {
                                 const HWND button =
                                     GetDlgItem(options_page(dialog, OPTIONS_GENERAL),
                                                RESOURCE_GENERAL_BROWSE);
                                 SendMessageA(dialog, WM_NEXTDLGCTL,
                                              reinterpret_cast<WPARAM>(button), TRUE);
                                 press(dialog, VK_RETURN);
                             }},
                            {"Browse for Folder",
                             [](HWND chooser) { PostMessageA(chooser, WM_COMMAND, IDCANCEL, 0); }},
                            {OPTIONS, [](HWND dialog) { press(dialog, VK_ESCAPE); }}}),
              DIALOG_CANCEL);
}

// ---- growth

TEST_F(OptionsDialog, Opening_and_closing_it_300_times_leaves_nothing_behind) {
    expect_no_growth([] { dialog_options_show(); });
}
