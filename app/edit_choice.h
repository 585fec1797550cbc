// Edit mode while the user chooses a second object: the other end of a new link, or the object to
// align with. A click chooses, a right click, a double click or Escape leaves the choice.
#pragma once

#include <cstdint>

void edit_begin_link(std::int32_t from);
void edit_begin_alignment(std::int32_t from);

// The next left click; target is a node index or PICK_NOTHING.
void edit_choose_link_end(std::int32_t target);
void edit_choose_alignment(std::int32_t target);

// False when nothing was being chosen.
bool edit_leave_choice();
