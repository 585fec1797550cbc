// Ids of the program's resources. Plain defines: the resource compiler reads this file as well.
#pragma once

// Bitmaps (bitmaps.rc).
#define RESOURCE_ATLAS_A 139     // glyphs of texture fonts 0, 1, 2
#define RESOURCE_ATLAS_B 141     // glyphs of texture fonts 3, 4, 5
#define RESOURCE_BUTTON_BACK 208 // navigation buttons, 64 x 32: normal and highlighted
#define RESOURCE_BUTTON_HOME 210

// The program's icon (orvanel.rc).
#define RESOURCE_ICON 101
