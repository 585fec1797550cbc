#include "platform/dib.h"

#include <cstddef>

static constexpr std::size_t INFO_HEADER_SIZE = 40; // bytes
static constexpr std::int32_t SIDE_MAX = 8192;      // pixels; keeps all sizes far from overflow
static constexpr std::int32_t BYTES_PER_PIXEL = 3;

static std::uint32_t read_number(std::span<const std::uint8_t> bytes, std::size_t offset,
                                 std::size_t size) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < size; i++)
        value |= static_cast<std::uint32_t>(bytes[offset + i]) << (8 * i);
    return value;
}

static bool read_header(std::span<const std::uint8_t> dib, BitmapPixels *pixels,
                        std::size_t *header_size) {
    if (dib.size() < INFO_HEADER_SIZE)
        return false;
    *header_size = read_number(dib, 0, 4);
    pixels->width = static_cast<std::int32_t>(read_number(dib, 4, 4));
    pixels->height = static_cast<std::int32_t>(read_number(dib, 8, 4));
    const std::uint32_t bits = read_number(dib, 14, 2);
    const std::uint32_t compression = read_number(dib, 16, 4);
    return *header_size >= INFO_HEADER_SIZE && *header_size <= dib.size() && bits == 24 &&
           compression == 0 && pixels->width > 0 && pixels->width <= SIDE_MAX &&
           pixels->height > 0 && pixels->height <= SIDE_MAX;
}

int dib_decode(std::span<const std::uint8_t> dib, BitmapPixels *pixels) {
    *pixels = {};
    BitmapPixels decoded = {};
    std::size_t header_size = 0;
    if (!read_header(dib, &decoded, &header_size))
        return 1;
    const std::size_t row = static_cast<std::size_t>(decoded.width) * BYTES_PER_PIXEL;
    const std::size_t stored_row = (row + 3) / 4 * 4; // rows are padded to four bytes
    const std::span<const std::uint8_t> stored = dib.subspan(header_size);
    const std::size_t rows = static_cast<std::size_t>(decoded.height);
    // The last row's padding may be missing.
    if (stored.size() < (rows - 1) * stored_row + row)
        return 1;
    decoded.bytes.reserve(rows * row);
    for (std::size_t y = 0; y < rows; y++) {
        const std::span<const std::uint8_t> line = stored.subspan(y * stored_row, row);
        decoded.bytes.insert(decoded.bytes.end(), line.begin(), line.end());
    }
    *pixels = decoded;
    return 0;
}
