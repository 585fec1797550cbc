// Whether a window has the background that themes give the pages of a tab. The system notes it as
// properties of the window.
#pragma once

#include "dialogs/dialog.h"
#include "resources/resource_ids.h"
#include "tests/windows/window_properties.h"

#include <windows.h>

// Those that a page under parent, which has none before, gets with the theme.
inline WindowProperties tab_background_properties(HWND parent) {
    const HWND page =
        CreateDialogParamA(GetModuleHandleA(nullptr),
                           MAKEINTRESOURCEA(RESOURCE_DIALOG_OPTIONS_ACTIONS), parent, nullptr, 0);
    const bool plain = window_properties(page).empty();
    enable_xp_theme(page);
    const WindowProperties themed = window_properties(page);
    DestroyWindow(page);
    return plain ? themed : WindowProperties();
}

// False also when the system knows no such background.
inline bool has_tab_background(HWND window) {
    const WindowProperties themed = tab_background_properties(window);
    const WindowProperties shown = window_properties(window);
    for (const auto &[name, value] : themed) {
        if (!shown.contains(name) || shown.at(name) != value)
            return false;
    }
    return !themed.empty();
}
