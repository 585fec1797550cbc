#include "actions/menu_pixels.h"

#include <gtest/gtest.h>

#include <vector>

static std::uint32_t faded(std::uint32_t pixel) {
    menu_pixels_fade({&pixel, 1});
    return pixel;
}

TEST(MenuPixelsFade, a_pixel_becomes_grey_64_levels_above_the_mean_of_its_colours) {
    EXPECT_EQ(0x404040u, faded(0x000000));
    EXPECT_EQ(0x5E5E5Eu, faded(0x0A1E32)); // 10, 30, 50: 30 + 64 = 94
    EXPECT_EQ(0x959595u, faded(0xFF0000)); // 85 + 64
    EXPECT_EQ(0x959595u, faded(0x0000FF));
    EXPECT_EQ(0x404040u, faded(0x000002)); // the mean is cut, not rounded
    EXPECT_EQ(0x414141u, faded(0x000003));
}

TEST(MenuPixelsFade, the_grey_is_never_lighter_than_190) {
    EXPECT_EQ(0xBDBDBDu, faded(0x7D7D7D)); // 125 + 64 = 189
    EXPECT_EQ(0xBEBEBEu, faded(0x7E7E7E));
    EXPECT_EQ(0xBEBEBEu, faded(0x7F7F7F));
    EXPECT_EQ(0xBEBEBEu, faded(0xFFFFFF));
}

TEST(MenuPixelsFade, only_pure_green_stays) {
    EXPECT_EQ(0x00FF00u, faded(0x00FF00));
    EXPECT_EQ(0x949494u, faded(0x00FE00)); // 84 + 64
    EXPECT_EQ(0x959595u, faded(0x01FF00)); // 256 / 3 = 85
    EXPECT_EQ(0x959595u, faded(0x00FF01));
}

TEST(MenuPixelsFade, the_top_byte_is_neither_read_nor_changed) {
    EXPECT_EQ(0x8000FF00u, faded(0x8000FF00));
    EXPECT_EQ(0xFF404040u, faded(0xFF000000));
}

TEST(MenuPixelsReplace, every_pixel_of_the_colour_is_replaced_and_no_other) {
    std::vector<std::uint32_t> pixels = {0x00FF00, 0x00FF01, 0xAA00FF00, 0x000000, 0x00FF00};
    menu_pixels_replace(pixels, 0x00FF00, 0xECECEC);
    EXPECT_EQ((std::vector<std::uint32_t>{0xECECEC, 0x00FF01, 0xAAECECEC, 0x000000, 0xECECEC}),
              pixels);
}

TEST(MenuPixels, no_pixels_are_no_trouble) {
    menu_pixels_fade({});
    menu_pixels_replace({}, 0, 1);
}
