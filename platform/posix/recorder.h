// What the posix side records instead of showing or starting it, and what tests tell it to answer.
// Only tests include this.
#pragma once

#include "platform/message.h"
#include "platform/network.h"

#include <cstdint>
#include <string>
#include <vector>

struct RecordedMessage {
    std::string text, caption;
    MessageIcon icon;
    MessageButtons buttons;
};

struct RecordedStart {
    bool through_shell;      // shell_open instead of process_start
    std::string application; // empty = none was named
    std::string command_line;
};

struct RecordedInstaller {
    std::string path, verb;
};

struct RecordedMenu {
    std::int32_t type; // MenuType
    std::int32_t node; // -1 = none
};

struct RecordedColour {
    std::int32_t red, green, blue; // 0..255
};

enum class RecordedDialog { Object, Page, Label, Options, About, Update };

struct Recorder {
    std::vector<RecordedMessage> messages;
    std::vector<MessageAnswer> answers; // given in turn; then Ok or Cancel, whichever the box has
    std::vector<RecordedStart> starts;
    int (*start_result)(const RecordedStart &start); // null = every start succeeds
    std::vector<RecordedInstaller> installers;       // started
    bool installer_refused;                          // by the user or the system
    void (*installer_read)();          // called before each read of one; null = nothing
    bool threads_refused;              // none is started
    std::int32_t system_major_version; // 0 = 10
    std::string browser_command;       // empty = there is no such registry key
    std::vector<RecordedMenu> menus;   // shown, and closed without a choice

    std::vector<RecordedDialog> dialogs; // shown
    // Plays the user of a dialog and returns its DialogResult; null = it is cancelled.
    std::int32_t (*dialog_user)(RecordedDialog which);

    std::int32_t splash_displays, splash_hides; // calls so far

    bool chooses_colour; // in the colour chooser, else it is closed without a choice
    RecordedColour colour_choice, colour_offered;

    std::int32_t swaps, invalidations, toggles, rebuilds; // calls so far
    bool minimised, background;                           // state of the imagined window
    bool mouse_captured;
    bool quit;
    int quit_code;
    std::int32_t cursor_x, cursor_y, mouse_trails;
    std::int32_t screen_width, screen_height; // 0 = 1920 x 1080
    bool network_missing;
    std::int32_t network_users;   // starts without a stop
    std::int32_t name_lookups;    // of hosts by their names
    std::int32_t address_lookups; // of the hosts of addresses
    std::int32_t connects;        // begun
    std::int32_t sends;           // calls
    bool addresses_unknown;       // no address has a host
    bool proxy_missing;           // the system tells no proxy setting
    ProxySetting proxy;
    std::string documents, local_app_data, temporary; // folders; empty = the system has none
};

extern Recorder recorder;
void recorder_reset();

// Maps a drive ("c:") to a folder of this system; an unmapped drive does not exist.
void drive_map(char letter, const std::string &folder);
