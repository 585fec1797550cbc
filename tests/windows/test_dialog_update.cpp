#include "dialogs/dialogs.h"
#include "dialogs/rules/dialog_update_rules.h"
#include "platform/resource.h"
#include "platform/text.h"
#include "resources/resource_ids.h"
#include "tests/windows/dialog_growth.h"
#include "tests/windows/dialog_layout.h"
#include "tests/windows/dialog_player.h"
#include "tests/windows/real_window.h"
#include "tests/windows/started_program.h"
#include "tests/windows/tab_background.h"
#include "update/auto_update.h"

#include <gtest/gtest.h>

#include <commctrl.h>

static constexpr char TITLE[] = "New version available";
static constexpr UINT STEP_MESSAGE = WM_USER + 1;
static constexpr int DOWNLOAD = RESOURCE_UPDATE_DOWNLOAD;

struct UpdateDialog : testing::Test {
    RealWindow window;

    UpdateDialog() {
        text_copy(new_version_string, "1.4.10");
        auto_update_waits.after_installer = 200;
    }
};

static void report(HWND dialog, AutoUpdateStep step, std::int32_t value = 0) {
    SendMessageA(dialog, STEP_MESSAGE, static_cast<WPARAM>(step), value);
}

static std::string text_of(HWND dialog) {
    return shown_text(dialog, RESOURCE_UPDATE_TEXT);
}

static std::string with_site(const char *before, const char *after) {
    return std::string(before) + auto_update_site() + after;
}

static HWND bar_of(HWND dialog) {
    return GetDlgItem(dialog, RESOURCE_UPDATE_PROGRESS);
}

static bool shows_bar(HWND dialog) {
    return IsWindowVisible(bar_of(dialog)) != 0;
}

static LRESULT position(HWND dialog) {
    return SendMessageA(bar_of(dialog), PBM_GETPOS, 0, 0);
}

// Plays the user of one opening and returns what the dialog ended with.
static std::int32_t play(std::function<void(HWND dialog)> act) {
    DialogPlayer player({{TITLE, std::move(act)}});
    const std::int32_t result = dialog_update_show();
    EXPECT_TRUE(player.done());
    return result;
}

// ---- opening

TEST_F(UpdateDialog, It_offers_the_version_with_the_download_as_default_and_no_bar) {
    play([](HWND dialog) {
        EXPECT_EQ(text_of(dialog), "A new version of Orvanel (1.4.10) is available.  Would you "
                                   "like to download it now?");
        EXPECT_EQ(shown_text(dialog, DOWNLOAD), "&Download Orvanel");
        EXPECT_TRUE(is_enabled(dialog, DOWNLOAD));
        EXPECT_TRUE(has_focus(dialog, DOWNLOAD));
        EXPECT_EQ(SendMessageA(dialog, DM_GETDEFID, 0, 0), MAKELRESULT(DOWNLOAD, DC_HASDEFID));
        EXPECT_FALSE(shows_bar(dialog));
    });
}

TEST_F(UpdateDialog, It_opens_over_the_middle_of_the_main_window_which_waits_for_it) {
    play([](HWND dialog) {
        RECT area, parent;
        GetWindowRect(dialog, &area);
        GetClientRect(hWnd, &parent);
        MapWindowPoints(hWnd, nullptr, reinterpret_cast<POINT *>(&parent), 2);
        EXPECT_NEAR(area.left + area.right, parent.left + parent.right, 2);
        EXPECT_NEAR(area.top + area.bottom, parent.top + parent.bottom, 2);
        EXPECT_EQ(GetWindow(dialog, GW_OWNER), hWnd);
        EXPECT_FALSE(IsWindowEnabled(hWnd));
    });
    EXPECT_TRUE(IsWindowEnabled(hWnd));
}

static int shields; // seen by the hook

static LRESULT CALLBACK see_shield(int code, WPARAM wparam, LPARAM lparam) {
    const CWPSTRUCT *message = reinterpret_cast<const CWPSTRUCT *>(lparam);
    if (code == HC_ACTION && message->message == BCM_SETSHIELD && message->lParam == TRUE &&
        GetDlgCtrlID(message->hwnd) == DOWNLOAD)
        shields++;
    return CallNextHookEx(nullptr, code, wparam, lparam);
}

TEST_F(UpdateDialog, The_button_bears_the_shield_of_the_administrators_rights) {
    shields = 0;
    const HHOOK hook = SetWindowsHookExA(WH_CALLWNDPROC, see_shield, nullptr, GetCurrentThreadId());
    play([](HWND) {});
    UnhookWindowsHookEx(hook);
    EXPECT_EQ(shields, 1);
}

TEST_F(UpdateDialog, It_has_the_themed_background_of_a_tab) {
    play([](HWND dialog) { EXPECT_TRUE(has_tab_background(dialog)); });
}

// Colours of an icon, row by row; empty when it is none.
static std::vector<std::uint32_t> icon_pixels(HICON icon) {
    ICONINFO info = {};
    if (GetIconInfo(icon, &info) == 0)
        return {};
    BITMAP bitmap = {};
    GetObjectA(info.hbmColor, sizeof bitmap, &bitmap);
    BITMAPINFO format = {};
    format.bmiHeader.biSize = sizeof format.bmiHeader;
    format.bmiHeader.biWidth = bitmap.bmWidth;
    format.bmiHeader.biHeight = bitmap.bmHeight;
    format.bmiHeader.biPlanes = 1;
    format.bmiHeader.biBitCount = 32;
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(bitmap.bmWidth * bitmap.bmHeight));
    const HDC dc = CreateCompatibleDC(nullptr);
    GetDIBits(dc, info.hbmColor, 0, static_cast<UINT>(bitmap.bmHeight), pixels.data(), &format,
              DIB_RGB_COLORS);
    DeleteDC(dc);
    DeleteObject(info.hbmColor);
    DeleteObject(info.hbmMask);
    return pixels;
}

static std::vector<std::uint32_t> small_icon_pixels(int resource) {
    const auto icon = static_cast<HICON>(
        LoadImageA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(resource), IMAGE_ICON,
                   GetSystemMetrics(SM_CXSMICON), GetSystemMetrics(SM_CYSMICON), LR_DEFAULTCOLOR));
    const std::vector<std::uint32_t> pixels = icon_pixels(icon);
    DestroyIcon(icon);
    return pixels;
}

TEST_F(UpdateDialog, It_has_a_small_icon_of_its_own) {
    play([](HWND dialog) {
        const auto shown =
            icon_pixels(reinterpret_cast<HICON>(SendMessageA(dialog, WM_GETICON, ICON_SMALL, 0)));
        EXPECT_EQ(shown.size(), static_cast<std::size_t>(GetSystemMetrics(SM_CXSMICON) *
                                                         GetSystemMetrics(SM_CYSMICON)));
        EXPECT_TRUE(shown == small_icon_pixels(144));
        EXPECT_FALSE(shown == small_icon_pixels(RESOURCE_ICON)) << "that of the program";
    });
}

// ---- the picture

static constexpr int PICTURE_X = 10, PICTURE_Y = 13, PICTURE_SIDE = 32; // pixels

static COLORREF picture_pixel(const BitmapPixels &picture, int x, int y) {
    const std::size_t at = 3 * static_cast<std::size_t>((PICTURE_SIDE - 1 - y) * PICTURE_SIDE + x);
    return RGB(picture.bytes.at(at + 2), picture.bytes.at(at + 1), picture.bytes.at(at));
}

// How many pixels of the dialog are those of the picture, or where that is transparent those of the
// dialog's background.
static int matching_pixels(HWND dialog, const BitmapPixels &picture) {
    static constexpr COLORREF TRANSPARENT_PIXEL = RGB(0, 255, 0);
    const HDC dc = GetDC(dialog);
    const COLORREF background = GetPixel(dc, 2, 2);
    int matching = 0;
    for (int y = 0; y < PICTURE_SIDE; y++) {
        for (int x = 0; x < PICTURE_SIDE; x++) {
            const COLORREF wanted = picture_pixel(picture, x, y);
            const COLORREF seen = GetPixel(dc, PICTURE_X + x, PICTURE_Y + y);
            matching += seen == (wanted == TRANSPARENT_PIXEL ? background : wanted) ? 1 : 0;
        }
    }
    ReleaseDC(dialog, dc);
    return matching;
}

TEST_F(UpdateDialog, The_picture_is_painted_in_its_place_whenever_the_dialog_is_painted) {
    play([](HWND dialog) {
        BitmapPixels picture;
        ASSERT_EQ(resource_bitmap(RESOURCE_UPDATE_PICTURE, &picture), 0);
        ASSERT_EQ(picture.width, PICTURE_SIDE);
        ASSERT_EQ(picture.height, PICTURE_SIDE);
        for (int painting = 0; painting < 2; painting++) {
            InvalidateRect(dialog, nullptr, TRUE);
            UpdateWindow(dialog);
            EXPECT_EQ(matching_pixels(dialog, picture), PICTURE_SIDE * PICTURE_SIDE);
        }
    });
}

// ---- closing

TEST(UpdateDialogResult, Cancelling_gives_2_and_quitting_for_the_update_38666) {
    EXPECT_EQ(DIALOG_CANCEL, 2);
    EXPECT_EQ(DIALOG_UPDATE_QUIT, 38666);
}

TEST_F(UpdateDialog, Cancel_Escape_and_the_close_button_decline) {
    EXPECT_EQ(play([](HWND dialog) { click(dialog, IDCANCEL); }), DIALOG_CANCEL);
    EXPECT_EQ(play([](HWND dialog) { press(dialog, VK_ESCAPE); }), DIALOG_CANCEL);
    EXPECT_EQ(play([](HWND dialog) { PostMessageA(dialog, WM_SYSCOMMAND, SC_CLOSE, 0); }),
              DIALOG_CANCEL);
}

TEST_F(UpdateDialog, Cancel_declines_also_while_the_download_runs) {
    EXPECT_EQ(play([](HWND dialog) {
                  report(dialog, AUTO_UPDATE_CONNECTED);
                  report(dialog, AUTO_UPDATE_CHUNK, 3);
                  click(dialog, IDCANCEL);
              }),
              DIALOG_CANCEL);
}

TEST_F(UpdateDialog, Opening_and_closing_it_300_times_leaves_nothing_behind) {
    expect_no_growth([] { dialog_update_show(); });
}

// ---- steps of the download

TEST_F(UpdateDialog, Step_0_says_that_it_is_downloading) {
    play([](HWND dialog) {
        report(dialog, AUTO_UPDATE_CONNECTED);
        EXPECT_EQ(text_of(dialog), with_site("Downloading the latest version from ", "..."));
    });
}

static void expect_retry(HWND dialog, AutoUpdateStep step, const std::string &text) {
    report(dialog, step);
    EXPECT_EQ(text_of(dialog), text);
    EXPECT_FALSE(shows_bar(dialog));
    EXPECT_TRUE(is_enabled(dialog, DOWNLOAD));
}

TEST_F(UpdateDialog, Steps_1_and_2_tell_what_failed_and_leave_the_button_to_try_again) {
    play([](HWND dialog) {
        expect_retry(dialog, AUTO_UPDATE_NO_FILE, "Failed to open temporary file.");
        expect_retry(dialog, AUTO_UPDATE_NO_CONNECT, with_site("Failed to connect to ", "."));
    });
}

TEST_F(UpdateDialog, Step_3_moves_the_bar) {
    play([](HWND dialog) {
        SendMessageA(bar_of(dialog), PBM_SETRANGE, 0, MAKELPARAM(0, UPDATE_PROGRESS_RANGE));
        for (std::int32_t chunk = 1; chunk <= UPDATE_PROGRESS_RANGE; chunk++) {
            report(dialog, AUTO_UPDATE_CHUNK, chunk);
            EXPECT_EQ(position(dialog), chunk);
        }
    });
}

TEST_F(UpdateDialog, Step_4_opens_the_download_page_in_the_browser_and_quits) {
    BrowserKey browser;
    browser.set_to_own_program();
    delete_trace(own_path());
    EXPECT_EQ(play([](HWND dialog) { report(dialog, AUTO_UPDATE_FAILED); }), DIALOG_UPDATE_QUIT);
    char page[AUTO_UPDATE_URL_SIZE];
    auto_update_url(page, AUTO_UPDATE_PAGE);
    EXPECT_NE(wait_for_trace(own_path()).find(page), std::string::npos);
    delete_trace(own_path());
}

TEST_F(UpdateDialog, What_a_step_leads_to_comes_after_the_report_of_it) {
    BrowserKey browser;
    browser.set_to_own_program();
    EXPECT_EQ(play([](HWND dialog) {
                  report(dialog, AUTO_UPDATE_FAILED);
                  EXPECT_TRUE(IsWindowVisible(dialog)) << "ended while the sender waits";
              }),
              DIALOG_UPDATE_QUIT);
    wait_for_trace(own_path());
    delete_trace(own_path());
}

static DWORD completed_at; // milliseconds

TEST_F(UpdateDialog, Step_5_says_so_gives_the_installer_its_time_and_quits) {
    EXPECT_EQ(play([](HWND dialog) {
                  report(dialog, AUTO_UPDATE_COMPLETE);
                  completed_at = GetTickCount();
                  EXPECT_EQ(text_of(dialog), "Download completed.  Starting the installer...");
                  EXPECT_FALSE(is_enabled(dialog, DOWNLOAD));
                  EXPECT_FALSE(is_enabled(dialog, IDCANCEL));
                  SendMessageA(dialog, WM_COMMAND, IDCANCEL, 0); // the close button, Escape
              }),
              DIALOG_UPDATE_QUIT);
    EXPECT_GE(GetTickCount() - completed_at, auto_update_waits.after_installer - 20);
}

TEST_F(UpdateDialog, Timers_that_are_not_the_installers_do_not_end_it) {
    EXPECT_EQ(play([](HWND dialog) {
                  for (const WPARAM timer : {WPARAM{0}, WPARAM{2}, WPARAM{0xffff}})
                      SendMessageA(dialog, WM_TIMER, timer, 0);
                  EXPECT_TRUE(IsWindowVisible(dialog));
              }),
              DIALOG_CANCEL);
}

TEST_F(UpdateDialog, Steps_above_5_are_ignored) {
    EXPECT_EQ(play([](HWND dialog) {
                  const std::string before = text_of(dialog);
                  for (const WPARAM step : {WPARAM{6}, WPARAM{7}, WPARAM{1000}, WPARAM{0x80000000}})
                      SendMessageA(dialog, STEP_MESSAGE, step, 1);
                  EXPECT_EQ(text_of(dialog), before);
                  EXPECT_TRUE(is_enabled(dialog, DOWNLOAD));
                  EXPECT_FALSE(shows_bar(dialog));
              }),
              DIALOG_CANCEL);
}

// ---- layout

TEST_F(UpdateDialog, It_is_laid_out_as_dialogs_are_at_96_120_and_144_DPI) {
    for (const int size : LAYOUT_POINT_SIZES) {
        for (const std::string &fault : dialog_layout_faults(RESOURCE_DIALOG_UPDATE, size))
            ADD_FAILURE() << size << " points: " << fault;
    }
    EXPECT_EQ(dialog_shared_access_keys(RESOURCE_DIALOG_UPDATE), "");
}

TEST_F(UpdateDialog, The_site_has_room_in_its_texts) {
    EXPECT_LE(std::string(auto_update_site()).size(), UPDATE_SITE_LENGTH);
}
