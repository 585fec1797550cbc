// Transitions: short animations that draw frames of their own, block until they are over and leave
// an exact end state. Where the options switch one off, it goes straight to that state. Page and
// floor transitions pace themselves by the frame timer, node transitions by the millisecond clock.
#pragma once

#include <cstdint>

// ---- pages (scene_transition_page.cpp); back: 0 = a sub-page is opened, 1 = going back
void scene_page_out_transition(std::int32_t back); // leaves the empty floor on the screen
void scene_page_in_transition(std::int32_t back);

// Blends the floor to a colour, components 0..1.
void scene_page_colour_transition(float red, float green, float blue);

// ---- floor (scene_transition_floor.cpp)
// Glides to a scroll offset, or as near to it as the floor's edges allow.
void scene_move_floor_transition(float x, float y);
void scene_return_to_center_transition(); // to the page's home position

// ---- nodes (scene_transition_node.cpp)
void scene_node_fade_in_transition();  // all nodes with fade_state 1
void scene_node_fade_out_transition(); // all nodes with fade_state 2

// Objects only: labels come and go without.
void scene_new_node_transition(std::int32_t index);    // pops up
void scene_cut_node_transition(std::int32_t index);    // shrinks away
void scene_delete_node_transition(std::int32_t index); // flies up

// ---- placement (scene_transition_place.cpp)
// axis: an Alignment of page/placement.h: 1 = takes the other node's x, 2 = its y, else nothing
// moves.
void scene_align_node_transition(std::int32_t index, std::int32_t to, std::int32_t axis);
void scene_align_with_grid(std::int32_t index);

// Pushes the other nodes out of the footprint of a node just placed. The caller anchors it
// (GRAB_ANCHORED) meanwhile.
void scene_nodes_avoid_node_area(std::int32_t index);

// ---- menus (scene_transition_menu.cpp)
// Brings everything to rest before a menu opens: the hovered object faces the viewer.
void scene_prepare_for_menu_activation();
