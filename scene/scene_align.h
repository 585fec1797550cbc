// Align mode: what the object chosen first would do for the object under the mouse.
#pragma once

#include "page/placement.h"

// Alignment of from with to for where the mouse stands now: ALIGN_NONE also when to is -1 or from
// itself. Needs the scene's matrices on the GL context.
std::int32_t node_align_node(std::int32_t from, std::int32_t to);
