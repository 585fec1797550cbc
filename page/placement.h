// Keeping objects off each other: the overlap test, pushing nodes out of the way of moving ones,
// and the choice of row or column when one node is aligned with another. A node covers the box x +
// left .. x + right, y + near .. y + far of its dimensions; a box that has an edge which is not a
// number overlaps nothing.
#pragma once

#include <cstdint>

inline constexpr std::int32_t MOVE_STEPS = 25; // steps that a whole push is spread over

// Results of node_align_node.
enum Alignment : std::int32_t { ALIGN_NONE = 0, ALIGN_COLUMN = 1, ALIGN_ROW = 2 };

// Lowest index whose box overlaps the node's (touching is not overlapping) and that nobody has
// pushed in the current step, or -1.
std::int32_t node_check_collision(std::int32_t id);

// Hands the mover's motion along one axis to the node it has hit. An anchored node is never pushed.
void node_collision_handle(std::int32_t pushed, std::int32_t mover);

// Runs all pending pushes to their end: set move_dx, move_dy (the whole displacement) and
// move_frames (MOVE_STEPS) of the nodes that are to move, then call it. Afterwards nothing is
// pending and every collision_with is -1.
//
// Three cases have rules of their own: an anchored node takes no part; a node told to move is not
// held back by nodes at rest that it overlapped from the start; a step whose end is not a finite
// number is not taken.
void node_move_nodes();

// The same for a frame in which many nodes move one after the other: begin reads all of the table
// once; then each call does what node_move_nodes would, provided that since begin nothing but
// inertia and the move of this node was changed from outside. No end is needed.
void node_move_begin();
void node_move_node(std::int32_t id);

// One pass of pushing the others out of the area of node index (which may stand just behind the
// last live one): each that overlaps it is moved away by a thirteenth of the distance. True when
// any did; call until false, which comes after AVOID_PASSES at the latest. The caller anchors the
// node (GRAB_ANCHORED) meanwhile, so that it stays where it is.
bool node_avoid_area_step(std::int32_t index);
inline constexpr std::int32_t AVOID_PASSES = 250;

// What aligning from with to would do (Alignment) when the mouse and the middle of the window stand
// at these floor positions, the mouse relative to the middle. node_align_node of
// scene/scene_align.h asks the scene for them.
std::int32_t node_align_choice(std::int32_t from, std::int32_t to, float mouse_x, float mouse_y,
                               float centre_x, float centre_y);
