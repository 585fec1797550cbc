// The update dialog while it downloads from a server on this machine.
#include "dialogs/dialogs.h"
#include "dialogs/rules/dialog_update_rules.h"
#include "resources/resource_ids.h"
#include "tests/unit/update_fixture.h"
#include "tests/windows/dialog_player.h"
#include "tests/windows/real_window.h"
#include "tests/windows/started_program.h"

#include <gtest/gtest.h>

#include <commctrl.h>

static constexpr char TITLE[] = "New version available";
static constexpr int DOWNLOAD = RESOURCE_UPDATE_DOWNLOAD;
static constexpr std::int64_t ENDLESS = 900'000;    // bytes announced; more than a test waits for
static constexpr std::uint32_t LONG_WAIT = 600'000; // milliseconds; no test waits as long

class UpdateDialogDownload : public UpdateTest {
protected:
    RealWindow window;
    BrowserKey browser;

    UpdateDialogDownload() {
        browser.set_to_own_program();
        delete_trace(own_path());
        http_client_limits.timeout = LONG_WAIT;
    }
    ~UpdateDialogDownload() override {
        delete_trace(own_path());
    }
    void give_silence() {
        server.give(INSTALLER_PATH, {http_wait_for_close()});
    }
    static bool page_was_opened() {
        char page[AUTO_UPDATE_URL_SIZE];
        auto_update_url(page, AUTO_UPDATE_PAGE);
        return wait_for_trace(own_path()).find(page) != std::string::npos;
    }
};

// Plays the user of one opening and returns what the dialog ended with.
static std::int32_t play(std::function<void(HWND dialog)> act) {
    DialogPlayer player({{TITLE, std::move(act)}});
    const std::int32_t result = dialog_update_show();
    EXPECT_TRUE(player.done());
    return result;
}

// Meanwhile only what the download's thread sends is let through: nobody plays on.
static bool wait_in_dialog(const std::function<bool()> &condition) {
    for (int i = 0; i < 1000; i++) {
        MSG message;
        PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE | PM_QS_SENDMESSAGE);
        if (condition())
            return true;
        Sleep(10);
    }
    return false;
}

static bool wait_text(HWND dialog, const std::string &text) {
    return wait_in_dialog([&] { return shown_text(dialog, RESOURCE_UPDATE_TEXT) == text; });
}

static std::string with_site(const char *before, const char *after) {
    return std::string(before) + auto_update_site() + after;
}

static HWND bar_of(HWND dialog) {
    return GetDlgItem(dialog, RESOURCE_UPDATE_PROGRESS);
}

TEST_F(UpdateDialogDownload, The_button_starts_it_shows_the_bar_and_leaves_Cancel_to_the_keyboard) {
    give_silence();
    EXPECT_EQ(play([](HWND shown) {
                  click(shown, DOWNLOAD);
                  EXPECT_EQ(shown_text(shown, RESOURCE_UPDATE_TEXT),
                            with_site("Connecting to ", "..."));
                  EXPECT_FALSE(is_enabled(shown, DOWNLOAD));
                  EXPECT_TRUE(has_focus(shown, IDCANCEL));
                  EXPECT_TRUE(IsWindowVisible(bar_of(shown)));
                  PBRANGE range = {};
                  SendMessageA(bar_of(shown), PBM_GETRANGE, TRUE, reinterpret_cast<LPARAM>(&range));
                  EXPECT_EQ(range.iLow, 0);
                  EXPECT_EQ(range.iHigh, UPDATE_PROGRESS_RANGE);
                  press(shown, VK_ESCAPE);
              }),
              DIALOG_CANCEL);
}

TEST_F(UpdateDialogDownload, Enter_and_the_access_key_press_the_button) {
    give_silence();
    const DialogStep cancel = {TITLE, [](HWND shown) {
                                   EXPECT_FALSE(is_enabled(shown, DOWNLOAD));
                                   click(shown, IDCANCEL);
                               }};
    DialogPlayer player({{TITLE, [](HWND shown) { press(shown, VK_RETURN); }}, cancel});
    dialog_update_show();
    player.steps.push_back({TITLE, [](HWND shown) { press_alt(shown, 'D'); }});
    player.steps.push_back(cancel);
    dialog_update_show();
    EXPECT_TRUE(player.done());
}

TEST_F(UpdateDialogDownload,
       Cancelling_closes_the_dialog_while_the_server_is_silent_and_the_file_goes) {
    give_silence();
    EXPECT_EQ(play([&](HWND shown) {
                  click(shown, DOWNLOAD);
                  EXPECT_TRUE(wait_in_dialog([this] { return server.connections() == 1; }));
                  EXPECT_TRUE(file_is_there());
                  click(shown, IDCANCEL);
              }),
              DIALOG_CANCEL);
    EXPECT_TRUE(wait_until([this] { return !file_is_there(); }));
}

TEST_F(UpdateDialogDownload, The_bar_follows_the_chunks) {
    server.give(INSTALLER_PATH,
                {http_send(http_head(TEST_INSTALLER_SIZE)),
                 http_send(test_installer(TEST_INSTALLER_SIZE * 7 / 20)), http_wait_for_close()});
    play([](HWND shown) {
        click(shown, DOWNLOAD);
        EXPECT_TRUE(wait_text(shown, with_site("Downloading the latest version from ", "...")));
        EXPECT_TRUE(
            wait_in_dialog([=] { return SendMessageA(bar_of(shown), PBM_GETPOS, 0, 0) == 7; }));
        EXPECT_TRUE(IsWindowVisible(bar_of(shown)));
    });
}

TEST_F(UpdateDialogDownload, A_failed_request_is_told_and_can_be_tried_again) {
    EXPECT_EQ(play([this](HWND shown) {
                  click(shown, DOWNLOAD); // 404
                  EXPECT_TRUE(wait_text(shown, with_site("Failed to connect to ", ".")));
                  EXPECT_TRUE(has_focus(shown, DOWNLOAD));
                  EXPECT_FALSE(IsWindowVisible(bar_of(shown)));
                  give_silence();
                  click(shown, DOWNLOAD);
                  EXPECT_EQ(shown_text(shown, RESOURCE_UPDATE_TEXT),
                            with_site("Connecting to ", "..."));
                  EXPECT_TRUE(IsWindowVisible(bar_of(shown)));
                  EXPECT_TRUE(wait_in_dialog([this] { return server.connections() == 2; }));
              }),
              DIALOG_CANCEL);
}

TEST_F(UpdateDialogDownload,
       A_download_that_breaks_off_midway_deletes_the_file_and_opens_the_download_page) {
    server.give(INSTALLER_PATH, {http_send(http_head(TEST_INSTALLER_SIZE)),
                                 http_send(test_installer(TEST_INSTALLER_SIZE / 2))});
    DialogPlayer player({{TITLE, [](HWND shown) { click(shown, DOWNLOAD); }},
                         {"a dialog that never comes: nobody cancels", nullptr}});
    EXPECT_EQ(dialog_update_show(), DIALOG_UPDATE_QUIT);
    EXPECT_FALSE(file_is_there());
    EXPECT_TRUE(page_was_opened());
}

TEST_F(UpdateDialogDownload,
       While_the_download_before_still_ends_the_button_does_nothing_and_stays) {
    std::atomic<bool> held = true;
    on_step = [&](std::int32_t, std::int32_t) {
        while (held)
            Sleep(10);
    };
    ASSERT_EQ(0, auto_update_download(dialog)); // 404, and no end of it
    ASSERT_TRUE(wait_told(1));
    give_silence();
    EXPECT_EQ(play([&](HWND shown) {
                  const std::string offer = shown_text(shown, RESOURCE_UPDATE_TEXT);
                  click(shown, DOWNLOAD);
                  EXPECT_TRUE(IsWindowVisible(shown)) << "it was ended";
                  EXPECT_EQ(shown_text(shown, RESOURCE_UPDATE_TEXT), offer);
                  EXPECT_TRUE(is_enabled(shown, DOWNLOAD));
                  EXPECT_TRUE(has_focus(shown, DOWNLOAD));
                  EXPECT_FALSE(IsWindowVisible(bar_of(shown)));
                  EXPECT_EQ(server.connections(), 1);
                  held = false;
                  EXPECT_TRUE(wait_in_dialog([=] {
                      click(shown, DOWNLOAD);
                      return !is_enabled(shown, DOWNLOAD);
                  }));
                  EXPECT_TRUE(wait_in_dialog([this] { return server.connections() == 2; }));
              }),
              DIALOG_CANCEL);
    held = false;
    auto_update_stop();
}

TEST_F(UpdateDialogDownload, Dialogs_that_go_while_chunks_arrive_are_never_touched_again) {
    server.give(INSTALLER_PATH, {http_send(http_head(ENDLESS)), http_repeat("x", ENDLESS)});
    for (int i = 0; i < 20; i++) {
        EXPECT_EQ(play([](HWND shown) {
                      click(shown, DOWNLOAD);
                      wait_in_dialog(
                          [=] { return SendMessageA(bar_of(shown), PBM_GETPOS, 0, 0) > 0; });
                      click(shown, IDCANCEL);
                  }),
                  DIALOG_CANCEL)
            << i;
    }
    auto_update_stop();
    EXPECT_FALSE(file_is_there());
}
