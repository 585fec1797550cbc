// Where a dialog opens: over the middle of the main window, and on the screen.
#pragma once

#include <cstdint>

// Screen pixels; right and bottom are the first beyond.
struct PlaceArea {
    std::int32_t left, top, right, bottom;
};

struct PlacePoint {
    std::int32_t x, y; // screen pixels
};

inline constexpr std::int32_t PLACE_SCREEN_MARGIN = 50; // pixels kept free when it is pulled back

// Top left corner of a dialog of this size. A dialog larger than the screen shows its top left
// part.
PlacePoint dialog_place_on_parent(const PlaceArea &client, const PlaceArea &dialog,
                                  std::int32_t screen_width, std::int32_t screen_height);
