// The pictures of the menu entries and the swatches of the page colours.
#include "page/options.h"
#include "platform/resource.h"
#include "resources/resource_ids.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <vector>

struct Artwork {
    int resource;
    int id; // that the menus load it by
};

static constexpr Artwork PICTURES[] = {
    {RESOURCE_MENU_PASTE, 235},
    {RESOURCE_MENU_CUT, 232},
    {RESOURCE_MENU_COPY, 231},
    {RESOURCE_MENU_DELETE, 233},
    {RESOURCE_MENU_PROPERTIES, 236},
    {RESOURCE_MENU_ABOUT, 257},
    {RESOURCE_MENU_FINISH_EDITING, 238},
    {RESOURCE_MENU_ALIGN_WITH_OBJECT, 230},
    {RESOURCE_MENU_ALIGN_WITH_GRID, 234},
    {RESOURCE_MENU_UNDO, 239},
    {RESOURCE_MENU_REDO, 237},
    {RESOURCE_MENU_CHECK_MARK, 242},
    {RESOURCE_MENU_OPEN_PAGE, 244},
    {RESOURCE_MENU_OPTIONS, 259},
    {RESOURCE_MENU_SUBMENU, 262},
};
// In the order of PAGE_COLOUR_PRESETS.
static constexpr Artwork SWATCHES[] = {
    {RESOURCE_SWATCH_BLUE, 118},   {RESOURCE_SWATCH_GRAY, 119},   {RESOURCE_SWATCH_TURQUOISE, 120},
    {RESOURCE_SWATCH_PURPLE, 121}, {RESOURCE_SWATCH_ORANGE, 122}, {RESOURCE_SWATCH_BLACK, 123},
};
static_assert(std::size(SWATCHES) == std::size(PAGE_COLOUR_PRESETS));

// The icon column: 25 x 21, the picture's centre at 12, 10.
static constexpr int WIDTH_MAX = 20;
static constexpr int HEIGHT_MAX = 19;
static constexpr int COLUMN_TONES[] = {236, 223}; // of disabled entries, normal and highlighted
static constexpr int OPAQUE_MIN = 40;             // pixels; fewer is no picture
static constexpr int TRANSPARENT_MIN = 24;        // pixels; fewer is a tile instead of a sign
static constexpr int READABLE_CONTRAST = 48;      // grey levels between a sign and the column
static constexpr int READABLE_MIN = 30;           // pixels with that contrast

struct Colour {
    int red, green, blue;
};

static bool is_transparent(Colour c) {
    return c.red == 0 && c.green == 255 && c.blue == 0;
}

// Looks like the transparent colour: what is left when an edge was blended with it.
static bool is_greenish(Colour c) {
    return c.green - std::max(c.red, c.blue) > 60;
}

// What a disabled entry makes of an opaque pixel.
static int faded(Colour c) {
    return std::min(190, (c.red + c.green + c.blue) / 3 + 64);
}

static std::vector<Colour> load(int id, BitmapPixels *bitmap) {
    std::vector<Colour> colours;
    EXPECT_EQ(resource_bitmap(id, bitmap), 0) << id;
    for (std::size_t i = 0; i + 2 < bitmap->bytes.size(); i += 3)
        colours.push_back({bitmap->bytes[i + 2], bitmap->bytes[i + 1], bitmap->bytes[i]});
    return colours;
}

static std::vector<Colour> load(int id) {
    BitmapPixels bitmap;
    return load(id, &bitmap);
}

static std::vector<Artwork> all_artwork() {
    std::vector<Artwork> all(std::begin(PICTURES), std::end(PICTURES));
    all.insert(all.end(), std::begin(SWATCHES), std::end(SWATCHES));
    return all;
}

TEST(MenuArtwork, every_picture_has_the_id_that_the_menus_load_it_by) {
    for (const Artwork &a : all_artwork())
        EXPECT_EQ(a.resource, a.id);
}

TEST(MenuArtwork, every_picture_loads_and_fits_into_the_icon_column) {
    for (const Artwork &a : all_artwork()) {
        BitmapPixels bitmap;
        EXPECT_FALSE(load(a.id, &bitmap).empty()) << a.id;
        EXPECT_LE(bitmap.width, WIDTH_MAX) << a.id;
        EXPECT_LE(bitmap.height, HEIGHT_MAX) << a.id;
    }
}

TEST(MenuArtwork, the_column_shows_around_every_sign) {
    for (const Artwork &a : PICTURES) {
        const std::vector<Colour> colours = load(a.id);
        const auto transparent = std::count_if(colours.begin(), colours.end(), is_transparent);
        EXPECT_GE(transparent, TRANSPARENT_MIN) << a.id;
        EXPECT_GE(static_cast<int>(colours.size()) - transparent, OPAQUE_MIN) << a.id;
    }
}

TEST(MenuArtwork, no_edge_has_a_green_fringe) {
    for (const Artwork &a : all_artwork())
        for (const Colour c : load(a.id))
            EXPECT_TRUE(is_transparent(c) || !is_greenish(c))
                << a.id << ": " << c.red << ", " << c.green << ", " << c.blue;
}

TEST(MenuArtwork, no_two_pictures_are_the_same) {
    const std::vector<Artwork> all = all_artwork();
    for (std::size_t i = 0; i < all.size(); i++)
        for (std::size_t j = 0; j < i; j++) {
            BitmapPixels a, b;
            load(all[i].id, &a);
            load(all[j].id, &b);
            EXPECT_NE(a.bytes, b.bytes) << all[i].id << " and " << all[j].id;
        }
}

TEST(MenuArtwork, a_disabled_picture_stands_out_from_the_column) {
    for (const Artwork &a : PICTURES)
        for (const int tone : COLUMN_TONES) {
            int readable = 0;
            for (const Colour c : load(a.id))
                readable += !is_transparent(c) && tone - faded(c) >= READABLE_CONTRAST;
            EXPECT_GE(readable, READABLE_MIN) << a.id << " on " << tone;
        }
}

// Mean of the swatch within its frame.
static Colour inside_of_swatch(int id) {
    BitmapPixels bitmap;
    const std::vector<Colour> colours = load(id, &bitmap);
    Colour sum = {};
    int count = 0;
    for (int y = 2; y < bitmap.height - 2; y++)
        for (int x = 2; x < bitmap.width - 2; x++, count++) {
            const Colour c = colours.at(static_cast<std::size_t>(y * bitmap.width + x));
            sum = {sum.red + c.red, sum.green + c.green, sum.blue + c.blue};
        }
    count = std::max(count, 1);
    return {sum.red / count, sum.green / count, sum.blue / count};
}

TEST(MenuArtwork, a_swatch_shows_the_hue_of_its_page_colour) {
    for (std::size_t i = 0; i < std::size(SWATCHES); i++) {
        const PageColourPreset &floor = PAGE_COLOUR_PRESETS[i];
        const Colour shown = inside_of_swatch(SWATCHES[i].id);
        const float light = static_cast<float>(shown.red + shown.green + shown.blue);
        const float total = floor.red + floor.green + floor.blue;
        if (total == 0) { // black
            EXPECT_LT(light, 3 * 16);
            continue;
        }
        EXPECT_NEAR(static_cast<float>(shown.red) / light, floor.red / total, 0.05) << floor.name;
        EXPECT_NEAR(static_cast<float>(shown.green) / light, floor.green / total, 0.05)
            << floor.name;
        EXPECT_NEAR(static_cast<float>(shown.blue) / light, floor.blue / total, 0.05) << floor.name;
    }
}

// Frame: the middle of the left side; floor: the pixel beside it.
TEST(MenuArtwork, a_fine_frame_sets_a_swatch_off) {
    for (const Artwork &a : SWATCHES) {
        BitmapPixels bitmap;
        const std::vector<Colour> colours = load(a.id, &bitmap);
        const auto row = static_cast<std::size_t>(bitmap.height / 2 * bitmap.width);
        const Colour frame = colours.at(row), floor = colours.at(row + 1);
        EXPECT_GT(frame.red + frame.green + frame.blue, floor.red + floor.green + floor.blue + 60)
            << a.id;
    }
}
