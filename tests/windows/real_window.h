// The program's own main window with a page in it, on the screen.
#pragma once

#include "app/main_window.h"
#include "tests/support/message_script.h"
#include "tests/support/test_folder.h"

struct RealWindow {
    TestFolder pages;
    MessageScript script;

    // Shows an empty home page; there is a page "sub.orvl" as well.
    RealWindow();
    ~RealWindow();
    RealWindow(const RealWindow &) = delete;
    RealWindow &operator=(const RealWindow &) = delete;

    void write_page(const char *name, const std::string &nodes = "");
};

// Handles the waiting messages as the main loop does; true when one of them was to quit.
bool handle_messages();

// Posts a message and handles all that it causes; true when the program was asked to quit.
bool post(UINT message, WPARAM wparam = 0, LPARAM lparam = 0);
