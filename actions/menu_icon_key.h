// Under which name the icon of an action's command is kept: commands that start the same program
// share one icon, and so do all web addresses.
#pragma once

#include "platform/files.h"

inline constexpr char MENU_ICON_BROWSER[] = "_HTTP_"; // key of all web addresses

// The key is empty when the command is.
void menu_icon_key(const char *command, char (&key)[PATH_SIZE]);
