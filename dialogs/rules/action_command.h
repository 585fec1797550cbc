// The command of an action in the dialog: where browsing for another program begins and what it
// makes of the command, and trying the command out.
#pragma once

#include "platform/files.h"

#include <cstdint>

struct BrowseStart {
    char file[PATH_SIZE];   // program the file dialog shows as chosen, empty = none
    char folder[PATH_SIZE]; // folder it begins in, empty = the system's choice
};

BrowseStart action_browse_start(const char *command);

// Puts the chosen file in place of the command's program; its arguments stay.
void action_browse_replace(char (&command)[PATH_SIZE], const char *chosen);

// Runs the command with the name in its variables. 0 started, else a message has been shown.
std::int32_t action_test(const char *name, const char *command);
