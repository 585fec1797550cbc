// The dialogs as the commands see them: each opens over the main window and returns when it is
// closed. What they do to the page is decided in dialogs/rules, which knows no window; the posix
// side records which dialog was asked for and lets the test play the user
// (platform/posix/recorder.h).
#pragma once

#include <cstdint>

enum DialogResult : std::int32_t {
    DIALOG_OK = 1,
    DIALOG_CANCEL = 2,
    DIALOG_UPDATE_QUIT = 38666, // the program is to end: an update is being installed or fetched
};

// Node handed to the label dialog, -1 = a new label.
extern std::int32_t dialog_node_id;

// Each returns a DialogResult.
std::int32_t dialog_object_show();  // after dialog_object_set_node and dialog_object_set_mouse
std::int32_t dialog_page_show();    // after dialog_page_set_node and dialog_page_set_mouse
std::int32_t dialog_label_show();   // for dialog_node_id
std::int32_t dialog_options_show(); // leaves what has changed in the flags of its rules
std::int32_t dialog_about_show();
std::int32_t dialog_update_show(); // offers new_version_string; DIALOG_UPDATE_QUIT or DIALOG_CANCEL
