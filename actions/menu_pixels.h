// Arithmetic on the pixels of menu pictures. A pixel is 0x00RRGGBB; its top byte is not looked at
// and is kept. Pure green stands for transparency.
#pragma once

#include <cstdint>
#include <span>

inline constexpr std::uint32_t MENU_TRANSPARENT = 0x0000FF00;

// Every pixel that is not transparent becomes a light grey as bright as it was.
void menu_pixels_fade(std::span<std::uint32_t> pixels);

void menu_pixels_replace(std::span<std::uint32_t> pixels, std::uint32_t from, std::uint32_t to);
