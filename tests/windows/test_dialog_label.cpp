#include "dialogs/dialogs.h"
#include "editing/undo.h"
#include "page/node.h"
#include "platform/text.h"
#include "resources/resource_ids.h"
#include "scene/interaction.h"
#include "scene/scene_page.h"
#include "tests/windows/dialog_growth.h"
#include "tests/windows/dialog_player.h"
#include "tests/windows/real_window.h"

#include <gtest/gtest.h>

static constexpr char NEW_LABEL[] = "New Label";
static constexpr char PROPERTIES[] = "Label Properties";

struct LabelDialog : testing::Test {
    RealWindow window;

    LabelDialog() {
        pre_dialog_mouse = {300, 300};
        dialog_node_id = -1;
    }
    static std::int32_t add(const char *text) {
        Node &label = node[node_total];
        node_init_node(node_total);
        label.type = NODE_LABEL;
        text_copy(label.description, text);
        return node_total++;
    }
};

TEST_F(LabelDialog, A_new_label_is_written_with_the_keyboard_alone) {
    DialogPlayer player({{NEW_LABEL, [](HWND dialog) {
                              EXPECT_TRUE(has_focus(dialog, RESOURCE_LABEL_TEXT));
                              EXPECT_EQ(shown_text(dialog, RESOURCE_LABEL_TEXT), "");
                              type(dialog, RESOURCE_LABEL_TEXT, "Rack 4");
                              press(dialog, VK_RETURN);
                          }}});
    EXPECT_EQ(dialog_label_show(), DIALOG_OK);
    EXPECT_TRUE(player.done());
    ASSERT_EQ(node_total, 1);
    EXPECT_STREQ(node[0].description, "Rack 4");
    EXPECT_EQ(node[0].type, NODE_LABEL);
}

TEST_F(LabelDialog, A_new_label_is_accepted_with_the_mouse) {
    DialogPlayer player({{NEW_LABEL, [](HWND dialog) {
                              type(dialog, RESOURCE_LABEL_TEXT, "x");
                              click(dialog, IDOK);
                          }}});
    EXPECT_EQ(dialog_label_show(), DIALOG_OK);
    EXPECT_EQ(node_total, 1);
}

TEST_F(LabelDialog, An_existing_label_shows_its_text_selected_and_takes_another_one) {
    dialog_node_id = add("before");
    DialogPlayer player({{PROPERTIES, [](HWND dialog) {
                              EXPECT_EQ(shown_text(dialog, RESOURCE_LABEL_TEXT), "before");
                              EXPECT_EQ(
                                  SendDlgItemMessageA(dialog, RESOURCE_LABEL_TEXT, EM_GETSEL, 0, 0),
                                  MAKELRESULT(0, 6));
                              SendDlgItemMessageA(dialog, RESOURCE_LABEL_TEXT, WM_CHAR, 'n', 1);
                              click(dialog, IDOK);
                          }}});
    EXPECT_EQ(dialog_label_show(), DIALOG_OK);
    EXPECT_TRUE(player.done());
    EXPECT_STREQ(node[0].description, "n");
    EXPECT_EQ(node_total, 1);
}

TEST_F(LabelDialog, Cancel_and_Escape_change_nothing) {
    dialog_node_id = add("before");
    const std::int32_t counter = node_label_total;
    for (const bool escape : {false, true}) {
        DialogPlayer player({{PROPERTIES, [=](HWND dialog) {
                                  type(dialog, RESOURCE_LABEL_TEXT, "after");
                                  if (escape)
                                      press(dialog, VK_ESCAPE);
                                  else
                                      click(dialog, IDCANCEL);
                              }}});
        EXPECT_EQ(dialog_label_show(), DIALOG_CANCEL);
        EXPECT_TRUE(player.done());
        EXPECT_STREQ(node[0].description, "before");
        EXPECT_EQ(node_label_total, counter);
    }
}

TEST_F(LabelDialog, OK_with_an_empty_label_text_creates_no_label) {
    DialogPlayer player({{NEW_LABEL, [](HWND dialog) { click(dialog, IDOK); }}});
    EXPECT_EQ(dialog_label_show(), DIALOG_OK);
    EXPECT_EQ(node_total, 0);
    EXPECT_EQ(node_label_total, 0);
}

TEST_F(LabelDialog,
       Every_stored_label_new_or_edited_takes_a_new_internal_name_and_advances_node_label_total) {
    for (int i = 0; i < 3; i++) {
        DialogPlayer player({{i == 0 ? NEW_LABEL : PROPERTIES, [](HWND dialog) {
                                  type(dialog, RESOURCE_LABEL_TEXT, "text");
                                  click(dialog, IDOK);
                              }}});
        EXPECT_EQ(dialog_label_show(), DIALOG_OK);
        EXPECT_TRUE(player.done());
        EXPECT_EQ(node[0].name, "_lbl" + std::to_string(i) + "lbl_");
        EXPECT_EQ(node_label_total, i + 1);
        dialog_node_id = 0;
    }
}

TEST_F(LabelDialog, The_edit_takes_50_characters_and_none_that_page_files_cannot_hold) {
    DialogPlayer player({{NEW_LABEL, [](HWND dialog) {
                              type(dialog, RESOURCE_LABEL_TEXT, "a<b");
                              EXPECT_EQ(shown_text(dialog, RESOURCE_LABEL_TEXT), "ab");
                              type(dialog, RESOURCE_LABEL_TEXT, std::string(60, 'y').c_str());
                              click(dialog, IDOK);
                          }}});
    EXPECT_EQ(dialog_label_show(), DIALOG_OK);
    EXPECT_EQ(node[0].description, std::string(50, 'y'));
}

TEST_F(LabelDialog, It_opens_over_the_middle_of_the_main_window) {
    DialogPlayer player({{NEW_LABEL, [](HWND dialog) {
                              RECT area, parent;
                              GetWindowRect(dialog, &area);
                              GetClientRect(hWnd, &parent);
                              MapWindowPoints(hWnd, nullptr, reinterpret_cast<POINT *>(&parent), 2);
                              EXPECT_NEAR(area.left + area.right, parent.left + parent.right, 2);
                              EXPECT_NEAR(area.top + area.bottom, parent.top + parent.bottom, 2);
                              EXPECT_EQ(GetWindow(dialog, GW_OWNER), hWnd);
                              EXPECT_FALSE(IsWindowEnabled(hWnd));
                          }}});
    EXPECT_EQ(dialog_label_show(), DIALOG_CANCEL);
    EXPECT_TRUE(player.done());
    EXPECT_TRUE(IsWindowEnabled(hWnd));
}

// The window manager may still be placing the new window and take a move back: it is made until the
// window stays.
static void move_window(int x, int y) {
    constexpr DWORD settle_time = 200; // milliseconds
    for (int stays = 0, attempts = 0; stays < 3 && attempts < 30; attempts++) {
        RECT area;
        GetWindowRect(hWnd, &area);
        stays = area.left == x && area.top == y ? stays + 1 : 0;
        if (stays == 0)
            SetWindowPos(hWnd, nullptr, x, y, 640, 480, SWP_NOZORDER);
        Sleep(settle_time);
        handle_messages();
    }
}

TEST_F(LabelDialog, Over_a_window_at_the_edge_it_is_pulled_back_so_that_50_pixels_remain) {
    const int screen = GetSystemMetrics(SM_CXSCREEN);
    move_window(screen - 100, 100);
    RECT client;
    GetClientRect(hWnd, &client);
    MapWindowPoints(hWnd, nullptr, reinterpret_cast<POINT *>(&client), 2);
    ASSERT_GT((client.left + client.right) / 2, screen);
    DialogPlayer player({{NEW_LABEL, [=](HWND dialog) {
                              RECT area;
                              GetWindowRect(dialog, &area);
                              EXPECT_EQ(screen - area.right, 50);
                          }}});
    EXPECT_EQ(dialog_label_show(), DIALOG_CANCEL);
    EXPECT_TRUE(player.done());
}

TEST_F(LabelDialog, Opening_and_closing_it_300_times_leaves_nothing_behind) {
    expect_no_growth([] { dialog_label_show(); });
}
