// Motion that goes on by itself: thrown objects glide, objects over the edge slide back onto the
// floor, the floor coasts and springs back. Steps of scene_process_frame, in this order.
#pragma once

#include <cstdint>

void scene_motion_begin_frame();
void scene_motion_move_node(std::int32_t index); // once for each live node
void scene_motion_move_floor();

// Another page is shown: forgets how long the objects of the last one have been on their way.
void scene_motion_reset();
