// The "3D Model" group of the object and page dialogs: the boxes "Category" and of the models, "<"
// and ">" between which the latter stands, and the preview that follows them. One at a time.
//
// The template holds, with these ids: combo boxes (CBS_DROPDOWNLIST, not sorted)
// RESOURCE_MODEL_CATEGORY and RESOURCE_MODEL_NAME, buttons RESOURCE_MODEL_PREVIOUS and
// RESOURCE_MODEL_NEXT, and a control of class MODEL_VIEWER_CLASS without tab stop,
// RESOURCE_MODEL_VIEWER.
#pragma once

#include "resources/resource_ids.h"

#include <windows.h>

#include <cstdint>

// Waits until the catalogue can be read, while the main window goes on being painted but takes no
// input. Before the dialog opens and before the catalogue is asked for the entry to choose. False
// when the program ends instead: the dialog is not to be opened.
bool model_chooser_wait_for_catalogue();

// Fills the controls of the dialog (or of the page of a tab that holds the group) and chooses a
// catalogue entry. With OBJECT_NONE none is chosen yet and the preview shows the model of this id,
// of the table of models, until one is. In WM_INITDIALOG.
void model_chooser_init(HWND dialog, std::int32_t entry, std::int32_t model_id);

// Hand every WM_COMMAND over: true when it came from one of the controls and is done.
bool model_chooser_command(HWND dialog, WPARAM wparam);

std::int32_t model_chooser_entry(); // chosen catalogue index, OBJECT_NONE when none is chosen
