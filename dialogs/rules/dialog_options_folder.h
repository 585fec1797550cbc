// The page folder of the options dialog: whether the one typed can be used, and what the user is
// told and asked on the way there.
#pragma once

#include "platform/files.h"

enum class OptionsFolder {
    Same,    // it is the current one
    Changed, // it can be used and holds a home page
    Refused, // a message has said why
};

// Looks at the text of the edit; folder receives it with the backslash that folders end in. Copies
// the pages there when the user wants that. show_folder is called ahead of the message about a
// folder that is none.
OptionsFolder dialog_options_settle_folder(const char *text, char (&folder)[PATH_SIZE],
                                           void (*show_folder)());
