// Renders the glyph atlases of the texture fonts: 21 sets of the Tahoma face in six grey channels,
// and the table of the glyphs' places. The same fonts give the same bytes on every machine.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

inline constexpr char ATLAS_FONT_FOLDER[] = "/usr/share/wine/fonts"; // package fonts-wine
inline constexpr std::int32_t ATLAS_WIDTH = 512;                     // pixels
inline constexpr std::int32_t ATLAS_HEIGHT = 256;                    // pixels
inline constexpr std::int32_t ATLAS_CHANNELS = 6;                    // three a bitmap

struct AtlasGlyph {
    std::uint8_t code;           // Latin-1
    std::int32_t x0, y0, x1, y1; // box in atlas pixels, from the top left
    std::int32_t baseline;       // in atlas pixels
};

struct AtlasSet {
    const char *name;
    std::int32_t channel;
    std::int32_t spacing, padding; // pixels
    std::vector<AtlasGlyph> glyphs;
};

struct Atlas {
    std::vector<std::uint8_t> channel[ATLAS_CHANNELS]; // top row first
    std::vector<AtlasSet> sets;
};

// Renders everything with tahoma.ttf and tahomabd.ttf of the folder. Empty on success, else what
// went wrong.
std::string atlas_render(const std::string &font_folder, Atlas *atlas);

// Windows bitmap of channels first, first + 1 and first + 2 (blue, green, red).
std::string atlas_bitmap(const Atlas &atlas, std::int32_t first);

// The C++ header with the tables of all sets.
std::string atlas_tables(const Atlas &atlas);
