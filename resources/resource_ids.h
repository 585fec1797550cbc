// Ids of the program's resources. Plain defines: the resource compiler reads this file as well.
#pragma once

// Bitmaps (bitmaps.rc).
#define RESOURCE_ATLAS_A 139     // glyphs of texture fonts 0, 1, 2
#define RESOURCE_ATLAS_B 141     // glyphs of texture fonts 3, 4, 5
#define RESOURCE_BUTTON_BACK 208 // navigation buttons, 64 x 32: normal and highlighted
#define RESOURCE_BUTTON_HOME 210

// Page colours in the menu.
#define RESOURCE_SWATCH_BLUE 118
#define RESOURCE_SWATCH_GRAY 119
#define RESOURCE_SWATCH_TURQUOISE 120
#define RESOURCE_SWATCH_PURPLE 121
#define RESOURCE_SWATCH_ORANGE 122
#define RESOURCE_SWATCH_BLACK 123

// Pictures of menu entries: pure green is transparent.
#define RESOURCE_MENU_PASTE 235
#define RESOURCE_MENU_CUT 232
#define RESOURCE_MENU_COPY 231
#define RESOURCE_MENU_DELETE 233
#define RESOURCE_MENU_PROPERTIES 236
#define RESOURCE_MENU_ABOUT 257
#define RESOURCE_MENU_FINISH_EDITING 238
#define RESOURCE_MENU_ALIGN_WITH_OBJECT 230
#define RESOURCE_MENU_ALIGN_WITH_GRID 234
#define RESOURCE_MENU_UNDO 239
#define RESOURCE_MENU_REDO 237
#define RESOURCE_MENU_CHECK_MARK 242
#define RESOURCE_MENU_OPEN_PAGE 244
#define RESOURCE_MENU_OPTIONS 259
#define RESOURCE_MENU_SUBMENU 262

// The floor of the model preview.
#define RESOURCE_VIEWER_FLOOR 222

// What the program alone needs (orvanel.rc).
#define RESOURCE_ICON 101
#define RESOURCE_SPLASH 112         // bitmap, 478 x 288
#define RESOURCE_CURSOR_TURN 227    // over a model that can be turned
#define RESOURCE_CURSOR_TURNING 229 // while it is held

// The "3D Model" group of the object and page dialogs (dialogs/model_chooser.h).
#define RESOURCE_MODEL_VIEWER 1001
#define RESOURCE_MODEL_CATEGORY 1002
#define RESOURCE_MODEL_PREVIOUS 1007
#define RESOURCE_MODEL_NEXT 1008
#define RESOURCE_MODEL_NAME 2024
