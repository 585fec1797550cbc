// Edit mode of the page shown: entering it, leaving it with or without saving, and the question
// about unsaved changes. A page that cannot be saved stays in edit mode, so that no change is lost.
#pragma once

#include <cstdint>

// Enters edit mode; a read-only page shows a message and stays in view mode. Page objects whose
// file still has the extension of older pages take the new one where that is the file there is.
void page_edit_begin();

// Leaves edit mode, saving first when the page has changed. 0, or 1 when it could not be saved (a
// message has been shown; edit mode goes on).
std::int32_t page_edit_end();

void page_edit_cancel(); // leaves edit mode and forgets the changes; the caller reloads the page

// Saves the page shown when it has changed. 0, or 1 after a message.
std::int32_t page_edit_save();

enum class PageEditAnswer { Settled, Failed, Cancelled };

// Asks "Save changes?" when there are any. Yes saves (Failed: that went wrong, and a message was
// shown), No leaves the changes be, Cancel is Cancelled. Nothing else is changed.
PageEditAnswer page_edit_settle_changes();

// For leaving the page shown: asks, then ends edit mode. False when the user would rather stay or
// the page could not be saved; everything is as before then, the history included.
bool page_edit_leave();
