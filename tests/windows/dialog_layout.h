// Whether a dialog of the resources is laid out as dialogs on Windows are, at the sizes that
// screens of different resolutions give it.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

// The point sizes that 8-point dialogs have the extents of at 96, 120 and 144 dots an inch.
inline constexpr int LAYOUT_POINT_SIZES[] = {8, 10, 12};

// What is amiss, a line each: controls too near to the edge or over each other, texts that do not
// fit. The dialog is made but not shown, and none of its procedures is called.
std::vector<std::string> dialog_layout_faults(int template_id, int point_size);

// Controls of a tab's page that come too near to the edge of what the tab leaves free for it, a
// line each. The tab is a control of the dialog; its pages have captions.
std::vector<std::string> dialog_page_faults(int dialog_id, int tab_id, int page_id, int point_size);

// Access keys that two controls share, or "" when none do.
std::string dialog_shared_access_keys(int template_id);
