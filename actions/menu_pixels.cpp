#include "actions/menu_pixels.h"

#include <algorithm>

static constexpr std::uint32_t COLOUR_BITS = 0x00FFFFFF;
static constexpr std::uint32_t FADE_LIFT = 64;   // added to the mean of the three levels
static constexpr std::uint32_t FADE_LIMIT = 190; // stays darker than the column behind it

static bool has_colour(std::uint32_t pixel, std::uint32_t colour) {
    return (pixel & COLOUR_BITS) == (colour & COLOUR_BITS);
}

static std::uint32_t with_colour(std::uint32_t pixel, std::uint32_t colour) {
    return (pixel & ~COLOUR_BITS) | (colour & COLOUR_BITS);
}

void menu_pixels_fade(std::span<std::uint32_t> pixels) {
    for (std::uint32_t &pixel : pixels) {
        if (has_colour(pixel, MENU_TRANSPARENT))
            continue;
        const std::uint32_t sum = (pixel >> 16 & 0xFF) + (pixel >> 8 & 0xFF) + (pixel & 0xFF);
        const std::uint32_t level = std::min(sum / 3 + FADE_LIFT, FADE_LIMIT);
        pixel = with_colour(pixel, level << 16 | level << 8 | level);
    }
}

void menu_pixels_replace(std::span<std::uint32_t> pixels, std::uint32_t from, std::uint32_t to) {
    for (std::uint32_t &pixel : pixels) {
        if (has_colour(pixel, from))
            pixel = with_colour(pixel, to);
    }
}
