// The options dialog as its user goes about in it.
#pragma once

#include "dialogs/rules/dialog_options_rules.h"
#include "tests/windows/dialog_player.h"

inline constexpr char OPTIONS[] = "Options"; // title of the dialog

HWND options_tabs(HWND dialog);
HWND options_page(HWND dialog, OptionsTab tab);
HWND options_open_page(HWND dialog, OptionsTab tab); // with the mouse; returns the page

// Opens the dialog, takes the steps and closes it. Its result.
std::int32_t play_options(std::vector<DialogStep> steps);
