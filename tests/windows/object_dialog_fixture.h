// The object dialog with its player, for the tests that work it.
#pragma once

#include "tests/windows/dialog_player.h"
#include "tests/windows/real_window.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

using Step = std::function<void(HWND dialog)>;

// A page without objects, and a catalogue of "Default" and the shipped printer and server.
struct ObjectDialogTest : testing::Test {
    RealWindow window;

    ObjectDialogTest();
    ~ObjectDialogTest() override;

    // Opens the dialog, takes the steps and closes it. Its result.
    static std::int32_t play(const char *title, const std::vector<Step> &steps);
};

// An object whose actions are written as in tests/unit/tree_text.h.
std::int32_t add_object(const char *name, const std::string &tree, const char *separators = "");

HWND details(); // the pages of the tabs
HWND actions();
void show_details(HWND dialog); // clicks on the tab
void show_actions(HWND dialog);

// ---- the tree control, items by their letters
std::string tree_shown(); // as the control holds it: structure and identifiers
std::string label_shown(char letter);
int image_shown(char letter);
char letter_selected(); // ' ' = none
void click_item(char letter);
HWND label_edit_shown();           // null when no label is being edited
void type_label(const char *text); // in place of the one being edited
