#include "tests/windows/options_dialog_player.h"

#include "dialogs/dialogs.h"
#include "resources/resource_ids.h"

#include <gtest/gtest.h>

#include <commctrl.h>

HWND options_tabs(HWND dialog) {
    return GetDlgItem(dialog, RESOURCE_OPTIONS_TABS);
}

// Told apart by controls that only one of them has.
HWND options_page(HWND dialog, OptionsTab tab) {
    for (HWND page = nullptr; (page = FindWindowExA(dialog, page, "#32770", nullptr)) != nullptr;) {
        const bool general = GetDlgItem(page, RESOURCE_GENERAL_ZOOM) != nullptr;
        const bool graphics =
            !general && GetDlgItem(page, RESOURCE_GRAPHICS_TEXT_SHADOWS) != nullptr;
        if (tab == (general ? OPTIONS_GENERAL : graphics ? OPTIONS_GRAPHICS : OPTIONS_ACTIONS))
            return page;
    }
    return nullptr;
}

HWND options_open_page(HWND dialog, OptionsTab tab) {
    RECT area = {};
    const HWND tabs = options_tabs(dialog);
    SendMessageA(tabs, TCM_GETITEMRECT, static_cast<WPARAM>(tab), reinterpret_cast<LPARAM>(&area));
    const LPARAM middle = MAKELPARAM((area.left + area.right) / 2, (area.top + area.bottom) / 2);
    SendMessageA(tabs, WM_LBUTTONDOWN, MK_LBUTTON, middle);
    SendMessageA(tabs, WM_LBUTTONUP, 0, middle);
    return options_page(dialog, tab);
}

std::int32_t play_options(std::vector<DialogStep> steps) {
    DialogPlayer player(std::move(steps));
    const std::int32_t result = dialog_options_show();
    EXPECT_TRUE(player.done());
    return result;
}
