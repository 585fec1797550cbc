// What the options dialog does with the settings; the dialog itself only shows them: its check
// boxes, the page folder's way to another place, zoom level and page colour, and what has to happen
// at once.
#pragma once

#include "page/options.h"

#include <cstdint>
#include <span>

// What the last OK has changed, for the command that opened the dialog; each 1 or 0. A cancelled
// dialog leaves all of them 0.
extern std::int32_t dialog_options_folder_change_reload; // reload the home page: another folder
extern std::int32_t options_colour_change_flag;          // blend a page of the default colour
extern std::int32_t dialog_options_rebuild_window;       // anti-aliasing: make the main window anew

enum OptionsTab : std::int32_t { OPTIONS_GENERAL, OPTIONS_ACTIONS, OPTIONS_GRAPHICS, OPTIONS_TABS };
inline constexpr const char *OPTIONS_TAB_CAPTIONS[] = {"General", "Actions", "Graphics"};

// A check box and the flag that it edits. A control id says which one only together with its tab.
struct OptionsBox {
    OptionsTab tab;
    std::int32_t control;
    std::int32_t Options::*flag;
    bool enhanced; // can be ticked with "Enhanced graphics" only
};
extern const std::span<const OptionsBox> OPTIONS_BOXES;

inline constexpr char OPTIONS_CUSTOM_COLOUR[] = "Custom"; // the colour list's last entry
inline constexpr std::int32_t OPTIONS_COLOUR_LENGTH = 18; // characters read from the list
inline constexpr char OPTIONS_BROWSE_TITLE[] =
    "Choose the folder where Orvanel will store its page files:";

// What the controls show. chosen holds the flags, the zoom level, the name of the colour (empty =
// none is selected) and the text of the folder; the rest of it does not count.
struct OptionsForm {
    Options chosen;
    bool enhanced_graphics() const {
        return chosen.good_graphics_card == 1;
    }
};

// The form when the dialog opens, and the three flags above 0. Without multisampling the
// anti-aliasing option is off from here on.
void dialog_options_open(OptionsForm *form);

bool dialog_options_box_enabled(const OptionsForm &form, const OptionsBox &box);

// The list's "Custom" was chosen: opens the colour chooser. 0 when a colour was chosen, which OK
// will take; 1 when not.
std::int32_t get_custom_colour_options();

// OK. True when everything is in effect and saved, and the dialog may close; else a message has
// said what is wrong with the folder, and no setting has changed. show_folder brings the folder's
// edit before the user ahead of the message about a folder that is none.
bool dialog_options_accept(const OptionsForm &form, void (*show_folder)());
