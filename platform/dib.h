// Reads the headers and pixels of a Windows bitmap from memory.
#pragma once

#include "platform/resource.h"

#include <span>

// dib is a bitmap without its file header, as a resource holds it. Returns 0, or 1 when it is not
// an uncompressed 24-bit bitmap with its bottom row first, or is cut short (pixels is empty then).
int dib_decode(std::span<const std::uint8_t> dib, BitmapPixels *pixels);
