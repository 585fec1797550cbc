// The program icon: what Windows needs of it in the task bar, in menus and on large desktops.
#include "platform/files.h"
#include "support/test_places.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

static constexpr std::size_t HEADER_SIZE = 6; // bytes
static constexpr std::size_t ENTRY_SIZE = 16; // bytes

static std::uint32_t number_at(const std::vector<char> &bytes, std::size_t offset, int size) {
    std::uint32_t value = 0;
    for (int i = size - 1; i >= 0; i--)
        value =
            value << 8 | static_cast<unsigned char>(bytes.at(offset + static_cast<std::size_t>(i)));
    return value;
}

TEST(ProgramIcon, it_holds_a_true_colour_picture_of_every_size_the_system_asks_for) {
    std::vector<char> icon;
    ASSERT_EQ(0, file_read(ORVANEL_SOURCE_DIR "\\resources\\orvanel.ico", &icon));
    ASSERT_EQ(1u, number_at(icon, 2, 2)) << "not an icon";
    std::vector<std::uint32_t> sizes;
    for (std::size_t i = 0; i < number_at(icon, 4, 2); i++) {
        const std::size_t entry = HEADER_SIZE + i * ENTRY_SIZE;
        EXPECT_EQ(number_at(icon, entry, 1), number_at(icon, entry + 1, 1)) << "not square";
        EXPECT_EQ(32u, number_at(icon, entry + 6, 2)) << "bits a pixel";
        EXPECT_LE(number_at(icon, entry + 8, 4) + number_at(icon, entry + 12, 4), icon.size());
        sizes.push_back(number_at(icon, entry, 1));
    }
    EXPECT_EQ((std::vector<std::uint32_t>{16, 24, 32, 48, 64, 128, 0}), sizes) << "0 means 256";
}
