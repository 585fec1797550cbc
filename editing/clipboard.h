// The editor's own clipboard: one object, page object or label with its actions. It outlives page
// changes and is never emptied while the program runs.
#pragma once

#include "page/node.h"

#include <cstdint>

enum ClipboardUse : std::int32_t {
    CLIPBOARD_EMPTY = 0,
    CLIPBOARD_COPIED = 1,
    CLIPBOARD_CUT = 2, // a page object that is pasted now is the one that was cut, file and all
};

extern Node clipboard;
extern std::int32_t clipboard_used; // ClipboardUse

void clipboard_init(); // forgets the action slots without freeing them: for start-up only
void clipboard_stop();

// Puts a copy of a node of the page into the clipboard. An index of no node does nothing.
void clipboard_fill(std::int32_t id, ClipboardUse use);

// Adds the clipboard's node to the page at a place relative to the floor's offset, others are
// pushed out of its way. A copied page object gets a page file and a name of its own. Does nothing
// when the clipboard is empty or the page full.
void clipboard_paste(float x, float y);

// Gives an object the clipboard's actions in place of its own. Does nothing where
// clipboard_paste_actions_available says so, and on anything but an object.
void clipboard_paste_actions(std::int32_t id);

// 1 when the clipboard holds no object, or one without actions, else 0: the sense is inverted on
// purpose.
std::int32_t clipboard_paste_actions_available();
