// What the options dialog does with the settings; the dialog itself only shows them.
#pragma once

#include <cstdint>

// What the last OK has changed, for the command that opened the dialog; each 1 or 0. A cancelled
// dialog leaves all of them 0.
extern std::int32_t dialog_options_folder_change_reload; // reload the home page from the new folder
extern std::int32_t options_colour_change_flag;          // blend a page of the default colour
extern std::int32_t
    dialog_options_rebuild_window; // make the main window anew: anti-aliasing changed
