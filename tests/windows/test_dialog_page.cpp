#include "assets/model.h"
#include "dialogs/dialogs.h"
#include "dialogs/model_viewer.h"
#include "dialogs/rules/dialog_page_rules.h"
#include "dialogs/rules/model_viewer_picture.h"
#include "editing/undo.h"
#include "page/node.h"
#include "page/options.h"
#include "page/page_file.h"
#include "platform/locations.h"
#include "platform/text.h"
#include "resources/resource_ids.h"
#include "scene/scene_page.h"
#include "support/test_places.h"
#include "tests/windows/dialog_growth.h"
#include "tests/windows/dialog_layout.h"
#include "tests/windows/dialog_player.h"
#include "tests/windows/real_window.h"

#include <gtest/gtest.h>

static constexpr char NEW_PAGE[] = "New Page";
static constexpr char PROPERTIES[] = "Page Properties";
static constexpr char BROWSE[] = "Browse";

// The models that are shipped are known before the window is there.
struct Models {
    Models() {
        text_copy(object_dir_location, ORVANEL_SOURCE_DIR "\\models\\");
        model_viewer_init();
    }
    ~Models() {
        object_dir_location[0] = '\0';
    }
};

// The home page with the page object "Tools" of "sub.orvl" on it.
struct DialogPage : testing::Test {
    Models shipped_models;
    RealWindow window;

    DialogPage() {
        object_files_init();
        dialog_page_init();
        dialog_page_set_node(DIALOG_PAGE_NEW);
        dialog_page_open();
        dialog_page_check_link(true);
        dialog_page_apply({.name = "Tools",
                           .description = "what one needs",
                           .file_name = "sub.orvl",
                           .model_entry = OBJECT_DEFAULT});
        dialog_page_init();
        undo_reset();
    }
    ~DialogPage() override {
        object_files_stop();
    }

    std::int32_t play(std::int32_t id, std::vector<DialogStep> steps) {
        DialogPlayer player(std::move(steps));
        dialog_page_set_node(id);
        dialog_page_set_mouse(2.0f, 3.0f);
        const std::int32_t result = dialog_page_show();
        EXPECT_TRUE(player.done()) << "a dialog did not come, or closed too early";
        return result;
    }
    std::int32_t play_new(std::vector<std::function<void(HWND)>> acts) {
        std::vector<DialogStep> steps;
        for (auto &act : acts)
            steps.push_back({NEW_PAGE, std::move(act)});
        return play(DIALOG_PAGE_NEW, std::move(steps));
    }
    std::int32_t play_existing(std::vector<std::function<void(HWND)>> acts) {
        std::vector<DialogStep> steps;
        for (auto &act : acts)
            steps.push_back({PROPERTIES, std::move(act)});
        return play(0, std::move(steps));
    }
    ShownMessage last_message() {
        return window.script.shown().empty() ? ShownMessage{} : window.script.shown().back();
    }
};

static std::function<void(HWND)> click_on(int id) {
    return [=](HWND dialog) { click(dialog, id); };
}

static std::function<void(HWND)> enter(int id, const std::string &text) {
    return [=](HWND dialog) { type(dialog, id, text.c_str()); };
}

static std::function<void(HWND)> key(UINT code) {
    return [=](HWND dialog) { press(dialog, code); };
}

static std::string file_of(std::int32_t id) {
    return node[id].actions[0]->command;
}

static std::string model_of(std::int32_t id) {
    return models[node[id].model_id].file_name;
}

// ---- opening

TEST_F(DialogPage, a_new_page_opens_empty_with_the_file_controls_disabled) {
    play_new({[](HWND dialog) {
        for (const int id : {RESOURCE_PAGE_NAME, RESOURCE_PAGE_DESCRIPTION, RESOURCE_PAGE_FILE})
            EXPECT_EQ(shown_text(dialog, id), "") << id;
        EXPECT_EQ(IsDlgButtonChecked(dialog, RESOURCE_PAGE_LINK), UINT{BST_UNCHECKED});
        EXPECT_TRUE(is_enabled(dialog, RESOURCE_PAGE_LINK));
        EXPECT_FALSE(is_enabled(dialog, RESOURCE_PAGE_FILE));
        EXPECT_FALSE(is_enabled(dialog, RESOURCE_PAGE_BROWSE));
        EXPECT_FALSE(is_enabled(dialog, RESOURCE_PAGE_FILE_CAPTION));
        EXPECT_EQ(shown_text(dialog, RESOURCE_MODEL_CATEGORY), "All");
        const std::int32_t entry = object_files_get_id_from_file("page_orvanel.obj");
        ASSERT_NE(entry, OBJECT_NONE);
        EXPECT_EQ(shown_text(dialog, RESOURCE_MODEL_NAME), object_files[entry].name);
        EXPECT_TRUE(has_focus(dialog, RESOURCE_PAGE_NAME));
    }});
}

TEST_F(DialogPage, an_existing_page_object_opens_with_its_texts_and_its_file_locked) {
    play_existing({[](HWND dialog) {
        EXPECT_EQ(shown_text(dialog, RESOURCE_PAGE_NAME), "Tools");
        EXPECT_EQ(shown_text(dialog, RESOURCE_PAGE_DESCRIPTION), "what one needs");
        EXPECT_EQ(shown_text(dialog, RESOURCE_PAGE_FILE), "sub.orvl");
        EXPECT_EQ(IsDlgButtonChecked(dialog, RESOURCE_PAGE_LINK), UINT{BST_CHECKED});
        for (const int id : {RESOURCE_PAGE_LINK, RESOURCE_PAGE_FILE, RESOURCE_PAGE_BROWSE,
                             RESOURCE_PAGE_FILE_CAPTION})
            EXPECT_FALSE(is_enabled(dialog, id)) << id;
        EXPECT_EQ(shown_text(dialog, RESOURCE_MODEL_NAME), "Default");
    }});
}

TEST_F(DialogPage, the_dialog_stands_over_the_middle_of_the_window) {
    play_new({[](HWND dialog) {
        RECT area, client;
        GetWindowRect(dialog, &area);
        GetClientRect(hWnd, &client);
        MapWindowPoints(hWnd, nullptr, reinterpret_cast<POINT *>(&client), 2);
        EXPECT_NEAR(area.left + area.right, client.left + client.right, 2);
        EXPECT_NEAR(area.top + area.bottom, client.top + client.bottom, 2);
    }});
}

// ---- the box

static void expect_file_enabled(HWND dialog, bool enabled) {
    for (const int id : {RESOURCE_PAGE_FILE, RESOURCE_PAGE_BROWSE, RESOURCE_PAGE_FILE_CAPTION})
        EXPECT_EQ(is_enabled(dialog, id), enabled) << id;
    EXPECT_EQ(use_existing_page_file, enabled ? 0 : 1);
}

TEST_F(DialogPage, checking_the_box_enables_the_file_name_and_unchecking_disables_it) {
    play_new({click_on(RESOURCE_PAGE_LINK), [](HWND dialog) { expect_file_enabled(dialog, true); },
              click_on(RESOURCE_PAGE_LINK),
              [](HWND dialog) { expect_file_enabled(dialog, false); }});
}

TEST_F(DialogPage, the_box_is_checked_by_its_access_key_too) {
    play_new({[](HWND dialog) { press_alt(dialog, 'L'); },
              [](HWND dialog) { expect_file_enabled(dialog, true); }});
}

// ---- the fields

TEST_F(DialogPage, the_fields_take_30_50_and_260_characters) {
    const std::string text(300, 't');
    play_new({click_on(RESOURCE_PAGE_LINK), enter(RESOURCE_PAGE_NAME, text),
              enter(RESOURCE_PAGE_DESCRIPTION, text), enter(RESOURCE_PAGE_FILE, text),
              [&](HWND dialog) {
                  EXPECT_EQ(shown_text(dialog, RESOURCE_PAGE_NAME), std::string(30, 't'));
                  EXPECT_EQ(shown_text(dialog, RESOURCE_PAGE_DESCRIPTION), std::string(50, 't'));
                  EXPECT_EQ(shown_text(dialog, RESOURCE_PAGE_FILE), std::string(260, 't'));
              }});
}

TEST_F(DialogPage, no_field_takes_the_character_that_page_files_cannot_hold) {
    play_new({click_on(RESOURCE_PAGE_LINK), enter(RESOURCE_PAGE_NAME, "a<b"),
              enter(RESOURCE_PAGE_DESCRIPTION, "c<d"), enter(RESOURCE_PAGE_FILE, "e<f"),
              [](HWND dialog) {
                  EXPECT_EQ(shown_text(dialog, RESOURCE_PAGE_NAME), "ab");
                  EXPECT_EQ(shown_text(dialog, RESOURCE_PAGE_DESCRIPTION), "cd");
                  EXPECT_EQ(shown_text(dialog, RESOURCE_PAGE_FILE), "ef");
              }});
}

// ---- closing

TEST_F(DialogPage, ok_makes_the_page_object_and_its_page_file) {
    EXPECT_EQ(DIALOG_OK, play_new({enter(RESOURCE_PAGE_NAME, "My B\xfcro"),
                                   enter(RESOURCE_PAGE_DESCRIPTION, "\xe4\xf6"), click_on(IDOK)}));
    ASSERT_EQ(node_total, 2);
    EXPECT_STREQ(node[1].name, "My B\xfcro");
    EXPECT_STREQ(node[1].description, "\xe4\xf6");
    EXPECT_EQ(node[1].x, scene_floor.position_x + 2.0f);
    EXPECT_EQ(file_of(1), "My_B\xfcro.orvl");
    EXPECT_TRUE(file_exists(window.pages.file("My_B\xfcro.orvl").c_str()));
    EXPECT_EQ(model_of(1), "page_orvanel.obj");
    EXPECT_FALSE(dialog_page_existing_page_linked());
    EXPECT_TRUE(window.script.shown().empty());
}

TEST_F(DialogPage, ok_links_an_existing_file) {
    window.pages.write("my_games.orvl", "the user's");
    EXPECT_EQ(DIALOG_OK, play_new({click_on(RESOURCE_PAGE_LINK),
                                   enter(RESOURCE_PAGE_FILE, "my_games.orvl"), click_on(IDOK)}));
    ASSERT_EQ(node_total, 2);
    EXPECT_STREQ(node[1].name, "My Games");
    EXPECT_EQ(file_of(1), "my_games.orvl");
    EXPECT_EQ(window.pages.read("my_games.orvl"), "the user's");
    EXPECT_TRUE(dialog_page_existing_page_linked());
}

TEST_F(DialogPage, ok_renames_an_existing_page_object_and_gives_it_the_model_chosen) {
    EXPECT_EQ(DIALOG_OK, play_existing({enter(RESOURCE_PAGE_NAME, "Tools 2"),
                                        click_on(RESOURCE_MODEL_PREVIOUS), click_on(IDOK)}));
    EXPECT_EQ(node_total, 1);
    EXPECT_STREQ(node[0].name, "Tools 2");
    EXPECT_EQ(file_of(0), "sub.orvl");
    EXPECT_NE(model_of(0), "");
}

TEST_F(DialogPage, the_model_chosen_for_a_page_is_chosen_for_the_next_one) {
    std::string chosen;
    play_new({enter(RESOURCE_PAGE_NAME, "first"), click_on(RESOURCE_MODEL_NEXT),
              [&](HWND dialog) { chosen = shown_text(dialog, RESOURCE_MODEL_NAME); },
              click_on(IDOK)});
    EXPECT_STRCASEEQ(object_files[dialog_page_last_model_used].name, chosen.c_str());
    play_new({[&](HWND dialog) { EXPECT_EQ(shown_text(dialog, RESOURCE_MODEL_NAME), chosen); }});
    orvanel_options.remember_last_model = 0;
    play_new({[&](HWND dialog) { EXPECT_NE(shown_text(dialog, RESOURCE_MODEL_NAME), chosen); }});
}

TEST_F(DialogPage, a_model_that_is_not_in_the_catalogue_stays_until_another_is_chosen) {
    node[0].model_id = model_return_model_id("laptop.obj");
    object_files_load();
    const std::int32_t entry = object_files_get_id_from_file("laptop.obj");
    ASSERT_NE(entry, OBJECT_NONE);
    text_copy(object_files[entry].file, "other.obj");
    const auto look = [](HWND dialog) {
        EXPECT_EQ(shown_text(dialog, RESOURCE_MODEL_NAME), "");
        EXPECT_STREQ(models[model_viewer_model_id].file_name, "laptop.obj");
    };
    EXPECT_EQ(DIALOG_OK, play_existing({look, click_on(IDOK)}));
    EXPECT_EQ(model_of(0), "laptop.obj");
    EXPECT_EQ(DIALOG_OK, play_existing({look, click_on(RESOURCE_MODEL_NEXT), click_on(IDOK)}));
    EXPECT_EQ(model_of(0), "");
}

TEST_F(DialogPage, the_enter_key_is_ok) {
    EXPECT_EQ(DIALOG_OK, play_new({enter(RESOURCE_PAGE_NAME, "by key"), key(VK_RETURN)}));
    EXPECT_STREQ(node[1].name, "by key");
}

struct Closing : DialogPage, testing::WithParamInterface<int> {
    static void close(HWND dialog, int way) {
        if (way == 0)
            click(dialog, IDCANCEL);
        else if (way == 1)
            press(dialog, VK_ESCAPE);
        else
            PostMessageA(dialog, WM_SYSCOMMAND, SC_CLOSE, 0);
    }
};

TEST_P(Closing, cancel_escape_and_the_close_box_change_nothing) {
    const std::string before = page_format({});
    EXPECT_EQ(DIALOG_CANCEL, play_new({enter(RESOURCE_PAGE_NAME, "never"),
                                       [](HWND dialog) { close(dialog, GetParam()); }}));
    EXPECT_EQ(DIALOG_CANCEL,
              play_existing({enter(RESOURCE_PAGE_NAME, "never"), click_on(RESOURCE_MODEL_NEXT),
                             [](HWND dialog) { close(dialog, GetParam()); }}));
    EXPECT_EQ(page_format({}), before);
    EXPECT_FALSE(file_exists(window.pages.file("never.orvl").c_str()));
}
INSTANTIATE_TEST_SUITE_P(Ways, Closing, testing::Values(0, 1, 2));

// ---- refusals: the message, then the dialog is there again with the focus where it is amiss

struct Refused : DialogPage {
    static inline HWND open; // the dialog
    static inline bool took_input;
    static inline int messages; // that came up
    HHOOK hook = SetWindowsHookExA(WH_CBT, watch, nullptr, GetCurrentThreadId());

    ~Refused() override {
        UnhookWindowsHookEx(hook);
    }
    static LRESULT CALLBACK watch(int code, WPARAM wparam, LPARAM lparam) {
        char title[20] = "";
        if (code == HCBT_ACTIVATE)
            GetWindowTextA(reinterpret_cast<HWND>(wparam), title, sizeof title);
        const bool is_message =
            reinterpret_cast<HWND>(wparam) != hWnd && text_equal(title, MESSAGE_CAPTION);
        messages += is_message ? 1 : 0;
        took_input = took_input || (is_message && IsWindowEnabled(open));
        return CallNextHookEx(nullptr, code, wparam, lparam);
    }

    void expect_refusal(std::vector<DialogStep> steps, const char *text, bool over_dialog,
                        int focus, std::int32_t id = DIALOG_PAGE_NEW) {
        const char *title = id == DIALOG_PAGE_NEW ? NEW_PAGE : PROPERTIES;
        const std::string before = page_format({});
        took_input = false;
        messages = 0;
        bool back = false;
        steps.push_back({title, [](HWND dialog) {
                             open = dialog;
                             click(dialog, IDOK);
                         }});
        steps.push_back({title, [&](HWND dialog) {
                             back = has_focus(dialog, focus);
                             EXPECT_FALSE(IsWindowEnabled(hWnd));
                         }});
        EXPECT_EQ(DIALOG_CANCEL, play(id, std::move(steps)));
        ASSERT_EQ(window.script.shown().size(), 1u);
        const ShownMessage shown = window.script.shown()[0];
        EXPECT_EQ(shown.text, text);
        EXPECT_EQ(shown.caption, "Orvanel");
        EXPECT_EQ(shown.icon, MessageIcon::Exclamation);
        EXPECT_EQ(shown.owner, over_dialog ? open : hWnd);
        EXPECT_GE(messages, 1);
        EXPECT_FALSE(took_input) << "the dialog could be used behind the message";
        EXPECT_TRUE(back) << "the focus is elsewhere";
        EXPECT_TRUE(page_format({}) == before);
        EXPECT_TRUE(IsWindowEnabled(hWnd));
    }
};

TEST_F(Refused, a_name_that_is_taken) {
    expect_refusal({{NEW_PAGE, enter(RESOURCE_PAGE_NAME, "Tools")}},
                   "There is already an item using this name", false, RESOURCE_PAGE_NAME);
}

TEST_F(Refused, an_empty_name) {
    expect_refusal({}, "The page name cannot have zero length", false, RESOURCE_PAGE_NAME);
}

TEST_F(Refused, a_link_without_a_file) {
    expect_refusal({{NEW_PAGE, click_on(RESOURCE_PAGE_LINK)}}, "No page file specified.", true,
                   RESOURCE_PAGE_FILE);
}

TEST_F(Refused, a_link_to_the_page_itself) {
    expect_refusal(
        {{NEW_PAGE, click_on(RESOURCE_PAGE_LINK)},
         {NEW_PAGE, enter(RESOURCE_PAGE_FILE, "home.orvl")}},
        "A page cannot contain a link to itself.\n\nPlease choose an alternative file name.", true,
        RESOURCE_PAGE_FILE);
}

TEST_F(Refused, a_page_file_that_cannot_be_created) {
    text_copy(page_dir_location, window.pages.file("missing\\").c_str());
    expect_refusal({{NEW_PAGE, enter(RESOURCE_PAGE_NAME, "Games")}}, "Unable to create page file.",
                   true, RESOURCE_PAGE_NAME);
}

TEST_F(Refused, a_page_object_on_a_full_page) {
    for (; node_total < NODE_CAPACITY; node_total++)
        node[node_total].type = NODE_LABEL;
    expect_refusal({{NEW_PAGE, enter(RESOURCE_PAGE_NAME, "Games")}},
                   "The maximum number of items has been reached on this page.", true,
                   RESOURCE_PAGE_NAME);
    node_total = 1;
}

TEST_F(Refused, an_existing_page_object_that_opens_its_own_page) {
    text_copy(node[0].actions[0]->command, "home.orvl");
    expect_refusal(
        {}, "A page cannot contain a link to itself.\n\nPlease choose an alternative file name.",
        true, RESOURCE_PAGE_NAME, 0);
}

TEST_F(DialogPage, after_a_refusal_the_mended_fields_are_taken) {
    EXPECT_EQ(DIALOG_OK,
              play_new({click_on(IDOK), enter(RESOURCE_PAGE_NAME, "Games"), click_on(IDOK)}));
    EXPECT_EQ(window.script.shown().size(), 1u);
    EXPECT_STREQ(node[1].name, "Games");
    EXPECT_EQ(node_total, 2);
}

// ---- looking for a file

static constexpr int FILE_NAME_BOX = 0x480; // edt1
static constexpr int FILTER_BOX = 0x470;    // cmb1

// The file dialog's field for the name, however the system has made it.
static HWND file_name_field(HWND dialog) {
    const HWND field = GetDlgItem(dialog, FILE_NAME_BOX);
    return field != nullptr ? field : GetDlgItem(dialog, 0x47c); // cmb13
}

static std::string text_of(HWND window) {
    char text[400];
    const LRESULT length =
        SendMessageA(window, WM_GETTEXT, sizeof text, reinterpret_cast<LPARAM>(text));
    return {text, static_cast<std::size_t>(length)};
}

static std::vector<std::string> entries_of(HWND box) {
    std::vector<std::string> entries;
    for (WPARAM i = 0; i < static_cast<WPARAM>(SendMessageA(box, CB_GETCOUNT, 0, 0)); i++) {
        char text[100] = "";
        SendMessageA(box, CB_GETLBTEXT, i, reinterpret_cast<LPARAM>(text));
        entries.push_back(text);
    }
    return entries;
}

struct Browse : DialogPage {
    // Chooses a file and returns what stands in the field then.
    std::string choose(const std::string &file, const char *first = "") {
        std::string shown = "?";
        play(DIALOG_PAGE_NEW,
             {{NEW_PAGE, click_on(RESOURCE_PAGE_LINK)},
              {NEW_PAGE, enter(RESOURCE_PAGE_FILE, first)},
              {NEW_PAGE, click_on(RESOURCE_PAGE_BROWSE)},
              {BROWSE,
               [&](HWND dialog) {
                   offered = text_of(file_name_field(dialog));
                   filter = text_of(GetDlgItem(dialog, FILTER_BOX));
                   filters = entries_of(GetDlgItem(dialog, FILTER_BOX));
                   if (file.empty()) {
                       PostMessageA(dialog, WM_COMMAND, IDCANCEL, 0);
                       return;
                   }
                   SendMessageA(file_name_field(dialog), WM_SETTEXT, 0,
                                reinterpret_cast<LPARAM>(file.c_str()));
                   PostMessageA(dialog, WM_COMMAND, IDOK, 0);
               }},
              {NEW_PAGE, [&](HWND dialog) { shown = shown_text(dialog, RESOURCE_PAGE_FILE); }}});
        return shown;
    }
    std::string offered, filter; // by the file dialog when it opened
    std::vector<std::string> filters;
};

TEST_F(Browse, a_page_of_the_page_folder_is_found_there_and_shown_by_its_name) {
    EXPECT_EQ(choose("sub.orvl"), "sub.orvl");
    EXPECT_EQ(offered, "");
    EXPECT_EQ(filter, "Orvanel Pages (*.orvl)");
    EXPECT_EQ(filters, (std::vector<std::string>{"Orvanel Pages (*.orvl)", "All Files"}));
}

TEST_F(Browse, a_page_elsewhere_is_shown_with_its_full_path) {
    TestFolder elsewhere;
    const std::string path = elsewhere.write("far.orvl", "");
    EXPECT_EQ(choose(path), path);
}

TEST_F(Browse, cancel_leaves_the_field) {
    EXPECT_EQ(choose("", "kept.orvl"), "kept.orvl");
    EXPECT_EQ(offered, "kept.orvl");
}

TEST_F(Browse, a_name_that_begins_with_a_variable_is_not_offered) {
    EXPECT_EQ(choose("sub.orvl", "$NAME.orvl"), "sub.orvl");
    EXPECT_EQ(offered, "");
}

TEST_F(Browse, a_text_that_can_be_no_file_name_is_no_hindrance) {
    EXPECT_EQ(choose("sub.orvl", "a|b?.orvl"), "sub.orvl");
}

TEST_F(Browse, the_current_folder_of_the_program_stays) {
    char before[PATH_SIZE], after[PATH_SIZE];
    GetCurrentDirectoryA(sizeof before, before);
    choose("sub.orvl");
    GetCurrentDirectoryA(sizeof after, after);
    EXPECT_STREQ(before, after);
}

// ---- the keyboard

static std::vector<int> tab_stops(HWND dialog) {
    std::vector<int> ids;
    const HWND first = GetNextDlgTabItem(dialog, nullptr, FALSE);
    HWND item = first;
    do {
        ids.push_back(GetDlgCtrlID(item));
        item = GetNextDlgTabItem(dialog, item, FALSE);
    } while (item != first && ids.size() < 50);
    return ids;
}

TEST_F(DialogPage, the_tab_key_goes_through_the_controls_in_reading_order) {
    play_new({click_on(RESOURCE_PAGE_LINK), [](HWND dialog) {
                  const std::vector<int> expected = {RESOURCE_PAGE_NAME,
                                                     RESOURCE_PAGE_DESCRIPTION,
                                                     RESOURCE_PAGE_LINK,
                                                     RESOURCE_PAGE_FILE,
                                                     RESOURCE_PAGE_BROWSE,
                                                     RESOURCE_MODEL_CATEGORY,
                                                     RESOURCE_MODEL_PREVIOUS,
                                                     RESOURCE_MODEL_NAME,
                                                     RESOURCE_MODEL_NEXT,
                                                     IDOK,
                                                     IDCANCEL};
                  EXPECT_EQ(tab_stops(dialog), expected);
              }});
}

TEST_F(DialogPage, everything_can_be_done_by_keyboard) {
    window.pages.write("my_games.orvl", "");
    const auto characters = [](const char *text) {
        return [=](HWND) {
            for (const char *character = text; *character != '\0'; character++)
                PostMessageA(GetFocus(), WM_CHAR, static_cast<unsigned char>(*character), 1);
        };
    };
    const auto alt = [](char letter) { return [=](HWND dialog) { press_alt(dialog, letter); }; };
    EXPECT_EQ(DIALOG_OK, play_new({alt('D'), characters("all of them"), alt('L'), alt('F'),
                                   characters("my_games.orvl"), alt('C'), key(VK_TAB), key(VK_TAB),
                                   key(VK_DOWN), alt('N'), characters("Games"), key(VK_RETURN)}));
    ASSERT_EQ(node_total, 2);
    EXPECT_STREQ(node[1].name, "Games");
    EXPECT_STREQ(node[1].description, "all of them");
    EXPECT_EQ(file_of(1), "my_games.orvl");
    EXPECT_NE(model_of(1), "page_orvanel.obj");
}

// ---- the layout

TEST_F(DialogPage, nothing_is_clipped_or_crowded_at_96_120_and_144_dots_an_inch) {
    for (const int point_size : LAYOUT_POINT_SIZES) {
        for (const std::string &fault : dialog_layout_faults(RESOURCE_DIALOG_PAGE, point_size))
            ADD_FAILURE() << "at " << point_size << " points: " << fault;
    }
}

TEST_F(DialogPage, no_two_controls_share_an_access_key) {
    EXPECT_EQ(dialog_shared_access_keys(RESOURCE_DIALOG_PAGE), "");
}

TEST_F(DialogPage, opening_and_closing_it_300_times_leaves_nothing_behind) {
    dialog_page_set_node(DIALOG_PAGE_NEW);
    expect_no_growth_with_preview([] { dialog_page_show(); });
}
