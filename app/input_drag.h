// Dragging: the floor under the mouse, and in edit mode an object or label on it. What is taken
// hold of stays under the mouse until it is let go. Calls come after mouse_record_position.
#pragma once

#include <cstdint>

void drag_grab_floor();
void drag_hold_node(std::int32_t id); // view mode: only a hovered node is held, and does not move

// Edit mode: the node follows the mouse and pushes others aside. Its undo snapshot is taken here.
void drag_grab_node(std::int32_t id);

bool drag_is_running(); // the floor or a node is held
void drag_follow_mouse();

// The button came up: what was thrown goes on by itself.
void drag_release();
// The mouse was taken away: everything is let go where it is.
void drag_cancel();
