#include "platform/dib.h"

#include <gtest/gtest.h>

#include <vector>

using Bytes = std::vector<std::uint8_t>;

static void put(Bytes *bytes, std::size_t offset, std::uint32_t value, std::size_t size) {
    for (std::size_t i = 0; i < size; i++)
        (*bytes)[offset + i] = static_cast<std::uint8_t>(value >> (8 * i));
}

// Header of an uncompressed 24-bit bitmap, followed by size pixel bytes 1, 2, 3, ...
static Bytes bitmap(std::int32_t width, std::int32_t height, std::size_t size) {
    Bytes bytes(40 + size);
    put(&bytes, 0, 40, 4);
    put(&bytes, 4, static_cast<std::uint32_t>(width), 4);
    put(&bytes, 8, static_cast<std::uint32_t>(height), 4);
    put(&bytes, 12, 1, 2);
    put(&bytes, 14, 24, 2);
    for (std::size_t i = 0; i < size; i++)
        bytes[40 + i] = static_cast<std::uint8_t>(i + 1);
    return bytes;
}

static int decode(const Bytes &bytes) {
    BitmapPixels pixels = {7, 7, {1, 2, 3}};
    const int result = dib_decode(bytes, &pixels);
    if (result != 0) {
        EXPECT_TRUE(pixels.bytes.empty());
        EXPECT_EQ(pixels.width, 0);
        EXPECT_EQ(pixels.height, 0);
    }
    return result;
}

TEST(Dib, rows_lose_their_padding_and_keep_their_order) {
    BitmapPixels pixels;
    ASSERT_EQ(dib_decode(bitmap(1, 2, 8), &pixels), 0);
    EXPECT_EQ(pixels.width, 1);
    EXPECT_EQ(pixels.height, 2);
    EXPECT_EQ(pixels.bytes, (Bytes{1, 2, 3, 5, 6, 7}));
}

TEST(Dib, rows_of_a_multiple_of_four_bytes_have_no_padding) {
    BitmapPixels pixels;
    ASSERT_EQ(dib_decode(bitmap(4, 1, 12), &pixels), 0);
    EXPECT_EQ(pixels.bytes.size(), 12u);
    EXPECT_EQ(pixels.bytes.back(), 12);
}

TEST(Dib, the_padding_of_the_last_row_may_be_missing) {
    EXPECT_EQ(decode(bitmap(1, 2, 7)), 0);
    EXPECT_EQ(decode(bitmap(1, 2, 6)), 1);
}

TEST(Dib, a_larger_header_is_skipped) {
    Bytes bytes = bitmap(1, 1, 3);
    bytes.insert(bytes.begin() + 40, 12, 99);
    put(&bytes, 0, 52, 4);
    BitmapPixels pixels;
    ASSERT_EQ(dib_decode(bytes, &pixels), 0);
    EXPECT_EQ(pixels.bytes, (Bytes{1, 2, 3}));
}

TEST(Dib, what_is_no_uncompressed_24_bit_bitmap_is_refused) {
    Bytes eight_bits = bitmap(4, 4, 48);
    put(&eight_bits, 14, 8, 2);
    EXPECT_EQ(decode(eight_bits), 1);
    Bytes compressed = bitmap(4, 4, 48);
    put(&compressed, 16, 1, 4);
    EXPECT_EQ(decode(compressed), 1);
    EXPECT_EQ(decode(bitmap(4, -4, 48)), 1) << "top row first";
    EXPECT_EQ(decode(bitmap(0, 4, 48)), 1);
    EXPECT_EQ(decode(bitmap(4, 0, 48)), 1);
}

TEST(Dib, a_bitmap_cut_short_is_refused_at_every_length) {
    const Bytes whole = bitmap(4, 4, 48);
    for (std::size_t size = 0; size < whole.size(); size++)
        EXPECT_EQ(decode(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size))),
                  1)
            << size;
    EXPECT_EQ(decode(whole), 0);
}

TEST(Dib, sizes_that_lie_do_not_read_beyond_the_bytes) {
    EXPECT_EQ(decode(bitmap(0x7fffffff, 0x7fffffff, 48)), 1);
    EXPECT_EQ(decode(bitmap(8192, 8192, 48)), 1);
    Bytes header_size = bitmap(4, 4, 48);
    put(&header_size, 0, 0xffffffff, 4);
    EXPECT_EQ(decode(header_size), 1);
    put(&header_size, 0, 12, 4);
    EXPECT_EQ(decode(header_size), 1);
}
