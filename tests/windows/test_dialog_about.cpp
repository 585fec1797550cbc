#include "dialogs/dialogs.h"
#include "platform/gl.h"
#include "resources/resource_ids.h"
#include "tests/windows/dialog_growth.h"
#include "tests/windows/dialog_player.h"
#include "tests/windows/real_window.h"
#include "tests/windows/started_program.h"
#include "update/auto_update_server.h"

#include <gtest/gtest.h>

static constexpr char ABOUT[] = "About Orvanel";

static std::string gl_string(GLenum name) {
    return reinterpret_cast<const char *>(glGetString(name));
}

TEST(AboutBox, It_shows_the_product_with_its_version_and_what_draws_it) {
    RealWindow window;
    DialogPlayer player(
        {{ABOUT, [](HWND dialog) {
              wchar_t product[40] = L"";
              GetDlgItemTextW(dialog, RESOURCE_ABOUT_PRODUCT, product, 40);
              EXPECT_STREQ(product, L"Orvanel\u2122 v1.4.1");
              EXPECT_EQ(shown_text(dialog, RESOURCE_ABOUT_VENDOR), gl_string(GL_VENDOR));
              EXPECT_EQ(shown_text(dialog, RESOURCE_ABOUT_RENDERER), gl_string(GL_RENDERER));
              EXPECT_EQ(shown_text(dialog, RESOURCE_ABOUT_VERSION), gl_string(GL_VERSION));
              EXPECT_NE(
                  GetPropA(GetDlgItem(dialog, RESOURCE_ABOUT_HOME_PAGE), "_Hyperlink_From_Static_"),
                  nullptr);
          }}});
    dialog_about_show();
    EXPECT_TRUE(player.done());
}

TEST(AboutBox, Enter_and_Escape_and_OK_close_it) {
    RealWindow window;
    DialogPlayer enter({{ABOUT, [](HWND dialog) { press(dialog, VK_RETURN); }}});
    EXPECT_EQ(dialog_about_show(), DIALOG_OK);
    enter.steps.push_back({ABOUT, [](HWND dialog) { press(dialog, VK_ESCAPE); }});
    EXPECT_EQ(dialog_about_show(), DIALOG_CANCEL);
    enter.steps.push_back({ABOUT, [](HWND dialog) { click(dialog, IDOK); }});
    EXPECT_EQ(dialog_about_show(), DIALOG_OK);
    EXPECT_TRUE(enter.done());
}

TEST(AboutBox, The_link_is_reached_with_the_keyboard_and_does_not_close_it) {
    RealWindow window;
    DialogPlayer player(
        {{ABOUT,
          [](HWND dialog) {
              EXPECT_TRUE(has_focus(dialog, IDOK));
              press(dialog, VK_TAB);
          }},
         {ABOUT, [](HWND dialog) { EXPECT_TRUE(has_focus(dialog, RESOURCE_ABOUT_HOME_PAGE)); }}});
    EXPECT_EQ(dialog_about_show(), DIALOG_CANCEL);
    EXPECT_TRUE(player.done());
}

TEST(AboutBox, The_link_opens_the_home_page_by_mouse_and_by_keyboard_and_the_box_stays) {
    RealWindow window;
    BrowserKey key;
    key.set_to_own_program();
    const AutoUpdateServer usual = auto_update_server;
    for (const bool mouse : {true, false}) {
        delete_trace(own_path());
        auto_update_server.host = mouse ? usual.host : "www.vendor.example:8080";
        std::string shown;
        DialogPlayer player({{ABOUT,
                              [&](HWND dialog) {
                                  shown = shown_text(dialog, RESOURCE_ABOUT_HOME_PAGE);
                                  if (mouse)
                                      click(dialog, RESOURCE_ABOUT_HOME_PAGE);
                                  else
                                      press(dialog, VK_TAB);
                              }},
                             {ABOUT,
                              [=](HWND dialog) {
                                  if (!mouse)
                                      press(dialog, VK_RETURN);
                              }},
                             {ABOUT, [](HWND dialog) { press(dialog, VK_ESCAPE); }}});
        dialog_about_show();
        EXPECT_TRUE(player.done());
        EXPECT_EQ(shown, auto_update_server.host);
        EXPECT_NE(wait_for_trace(own_path()).find("\"http://" + shown + "/\""), std::string::npos);
    }
    auto_update_server = usual;
    delete_trace(own_path());
}

static RECT place_in(HWND dialog, int control) {
    RECT place;
    GetWindowRect(GetDlgItem(dialog, control), &place);
    MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT *>(&place), 2);
    return place;
}

static LONG width_of_text(HWND dialog, int control) {
    const HDC dc = GetDC(dialog);
    const HGDIOBJ previous =
        SelectObject(dc, reinterpret_cast<HFONT>(SendMessageA(dialog, WM_GETFONT, 0, 0)));
    const std::string text = shown_text(dialog, control);
    SIZE size = {};
    GetTextExtentPoint32A(dc, text.c_str(), static_cast<int>(text.size()), &size);
    SelectObject(dc, previous);
    ReleaseDC(dialog, dc);
    return size.cx;
}

TEST(AboutBox, The_link_is_a_little_wider_than_its_text_whatever_the_site_is_called) {
    RealWindow window;
    const AutoUpdateServer usual = auto_update_server;
    for (const char *host : {usual.host, "v.example", "orvanel.downloads.vendor.example:8080"}) {
        auto_update_server.host = host;
        DialogPlayer player({{ABOUT, [](HWND dialog) {
                                  const RECT product = place_in(dialog, RESOURCE_ABOUT_PRODUCT);
                                  const RECT link = place_in(dialog, RESOURCE_ABOUT_HOME_PAGE);
                                  const LONG text = width_of_text(dialog, RESOURCE_ABOUT_HOME_PAGE);
                                  const LONG frame = product.left - link.left;
                                  EXPECT_GE(frame, 1);
                                  EXPECT_LE(frame, 3);
                                  EXPECT_EQ(link.right - link.left, text + 2 * frame);
                              }}});
        dialog_about_show();
        EXPECT_TRUE(player.done());
    }
    auto_update_server = usual;
}

TEST(AboutBox, Opening_and_closing_it_300_times_leaves_nothing_behind) {
    RealWindow window;
    expect_no_growth([] { dialog_about_show(); });
}
