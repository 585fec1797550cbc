// The pictures and cursors of the splash screen, the model preview and the update dialog.
#include "platform/dib.h"
#include "platform/files.h"
#include "platform/resource.h"
#include "resources/resource_ids.h"
#include "support/test_places.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <vector>

static constexpr std::size_t BITMAP_FILE_HEADER = 14; // bytes
static constexpr std::size_t CURSOR_HEADER = 6;       // bytes
static constexpr int CURSOR_SIDE = 32;                // pixels
static constexpr int CURSOR_TYPE = 2;

static std::vector<std::uint8_t> resource_file(const char *path) {
    std::vector<char> bytes;
    EXPECT_EQ(0, file_read(path, &bytes)) << path;
    return std::vector<std::uint8_t>(bytes.begin(), bytes.end());
}

static int number_at(const std::vector<std::uint8_t> &bytes, std::size_t offset) {
    return bytes.at(offset) | bytes.at(offset + 1) << 8;
}

TEST(DialogArtwork, the_pictures_and_cursors_have_the_ids_that_they_are_loaded_by) {
    EXPECT_EQ(RESOURCE_SPLASH, 112);
    EXPECT_EQ(RESOURCE_VIEWER_FLOOR, 222);
    EXPECT_EQ(RESOURCE_CURSOR_TURN, 227);
    EXPECT_EQ(RESOURCE_CURSOR_TURNING, 229);
    EXPECT_EQ(RESOURCE_UPDATE_ICON, 144);
    EXPECT_EQ(RESOURCE_UPDATE_PICTURE, 146);
}

TEST(DialogArtwork, the_splash_screen_fills_its_window) {
    const std::vector<std::uint8_t> file =
        resource_file(ORVANEL_SOURCE_DIR "\\resources\\splash.bmp");
    ASSERT_GT(file.size(), BITMAP_FILE_HEADER);
    BitmapPixels pixels;
    ASSERT_EQ(0, dib_decode(std::span(file).subspan(BITMAP_FILE_HEADER), &pixels));
    EXPECT_EQ(pixels.width, 478);
    EXPECT_EQ(pixels.height, 288);
}

TEST(DialogArtwork, the_floor_of_the_preview_is_a_square_that_every_graphics_card_takes) {
    BitmapPixels floor;
    ASSERT_EQ(0, resource_bitmap(RESOURCE_VIEWER_FLOOR, &floor));
    EXPECT_EQ(floor.width, floor.height);
    EXPECT_TRUE(std::has_single_bit(static_cast<unsigned>(floor.width))) << floor.width;
    EXPECT_LE(floor.width, 256) << "all that old cards are sure to take";
}

// The texture is repeated: filtering mixes its edge with the opposite one.
TEST(DialogArtwork, opposite_edges_of_the_preview_floor_match) {
    BitmapPixels floor;
    ASSERT_EQ(0, resource_bitmap(RESOURCE_VIEWER_FLOOR, &floor));
    const auto row = static_cast<std::ptrdiff_t>(floor.width) * 3;
    EXPECT_TRUE(std::equal(floor.bytes.begin(), floor.bytes.begin() + row, floor.bytes.end() - row))
        << "top and bottom";
    for (auto start = floor.bytes.begin(); start != floor.bytes.end(); start += row)
        EXPECT_TRUE(std::equal(start, start + 3, start + row - 3)) << "left and right";
}

TEST(DialogArtwork, the_cursors_have_soft_edges_and_their_hot_spot_in_the_same_place) {
    for (const char *path : {ORVANEL_SOURCE_DIR "\\resources\\cursor_turn.cur",
                             ORVANEL_SOURCE_DIR "\\resources\\cursor_turning.cur"}) {
        const std::vector<std::uint8_t> file = resource_file(path);
        ASSERT_EQ(CURSOR_TYPE, number_at(file, 2)) << path;
        EXPECT_EQ(1, number_at(file, 4)) << "pictures";
        EXPECT_EQ(CURSOR_SIDE, file.at(CURSOR_HEADER)) << "width";
        EXPECT_EQ(CURSOR_SIDE, file.at(CURSOR_HEADER + 1)) << "height";
        EXPECT_EQ(CURSOR_SIDE / 2, number_at(file, CURSOR_HEADER + 4)) << "hot spot";
        EXPECT_EQ(CURSOR_SIDE / 2, number_at(file, CURSOR_HEADER + 6)) << "hot spot";
        const auto picture = static_cast<std::size_t>(number_at(file, CURSOR_HEADER + 12));
        EXPECT_EQ(32, number_at(file, picture + 14)) << "bits a pixel";
    }
}

TEST(DialogArtwork, the_hand_closes_when_it_holds_the_model) {
    EXPECT_NE(resource_file(ORVANEL_SOURCE_DIR "\\resources\\cursor_turn.cur"),
              resource_file(ORVANEL_SOURCE_DIR "\\resources\\cursor_turning.cur"));
}

TEST(DialogArtwork, the_picture_of_an_update_fills_its_square_and_lets_the_dialog_show_around_it) {
    BitmapPixels picture;
    ASSERT_EQ(0, resource_bitmap(RESOURCE_UPDATE_PICTURE, &picture));
    EXPECT_EQ(picture.width, 32);
    EXPECT_EQ(picture.height, 32);
    int transparent = 0;
    for (std::size_t i = 0; i + 2 < picture.bytes.size(); i += 3) {
        const int blue = picture.bytes[i], green = picture.bytes[i + 1], red = picture.bytes[i + 2];
        const bool is_transparent = red == 0 && green == 255 && blue == 0;
        transparent += is_transparent ? 1 : 0;
        EXPECT_TRUE(is_transparent || green - std::max(red, blue) <= 60) << "a green fringe";
    }
    EXPECT_GT(transparent, 32 * 32 / 4);
    EXPECT_LT(transparent, 32 * 32 * 3 / 4);
}

TEST(DialogArtwork, the_icon_of_an_update_has_all_sizes_of_a_caption_in_true_colour) {
    const std::vector<std::uint8_t> file =
        resource_file(ORVANEL_SOURCE_DIR "\\resources\\update.ico");
    static constexpr std::size_t ENTRY = 16; // bytes
    std::vector<int> sizes;
    for (std::size_t i = 0; i < static_cast<std::size_t>(number_at(file, 4)); i++) {
        const std::size_t entry = CURSOR_HEADER + i * ENTRY; // icons begin as cursors do
        EXPECT_EQ(32, number_at(file, entry + 6)) << "bits a pixel";
        sizes.push_back(file.at(entry));
    }
    EXPECT_EQ((std::vector<int>{16, 24, 32, 48}), sizes);
}
