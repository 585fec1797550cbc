// The options dialog over the running program: its boxes are clicked as a user clicks them, and the
// program can be looked at afterwards.
#pragma once

#include "tests/support/user_options.h"
#include "tests/windows/options_dialog_player.h"
#include "tests/windows/real_window.h"

#include <gtest/gtest.h>

inline constexpr float OBJECT_X = -8.0f, OBJECT_Y = 5.0f; // floor units

// The home page with an object there that opens the page "sub.orvl". Nothing has to be waited for.
struct OptionsEffects : testing::Test {
    UserOptionsFile file;
    RealWindow window;

    OptionsEffects();

    // The command, its dialog closed with OK after these steps of the user.
    static void change(std::vector<DialogStep> steps);
    static void tick(OptionsTab tab, int control);
    static void choose_folder(const std::string &folder);
};
