// Bitmap resources of the program.
#pragma once

#include <cstdint>
#include <vector>

// 24-bit pixels as a Windows bitmap holds them: blue, green, red; bottom row first; no row padding.
struct BitmapPixels {
    std::int32_t width;  // pixels
    std::int32_t height; // pixels
    std::vector<std::uint8_t> bytes;
};

// Loads a bitmap resource by its id (resources/resource_ids.h). Returns 0, or 1 when there is no
// such resource or it is no 24-bit bitmap (pixels is empty then). The posix side reads the same
// file from the resources folder.
int resource_bitmap(int id, BitmapPixels *pixels);
