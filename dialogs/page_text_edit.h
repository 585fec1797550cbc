// Edit fields whose text goes into a page file. Page files are written without escaping, so a text
// with "<" in it would be cut when the page is read again: these fields do not take that character,
// typed, pasted or come in any other way, and tell why in a balloon.
#pragma once

#include <windows.h>

inline constexpr char PAGE_TEXT_REFUSED = '<';

// For the life of the edit control, which may be one that edits the label of a tree item. length is
// the most characters that can be typed into it.
void page_text_edit_attach(HWND edit, int length);
