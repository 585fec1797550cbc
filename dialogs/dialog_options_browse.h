// The system's folder chooser for the page folder.
#pragma once

#include "platform/files.h"

#include <windows.h>

// Opens over the owner with this folder chosen. 0 when the user chose one (it stands in folder
// then), 1 when not.
int dialog_options_browse(HWND owner, char (&folder)[PATH_SIZE]);
