#include "scene/gl_util.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

using Attributes = std::vector<std::pair<std::int32_t, std::int32_t>>;

// A driver that knows formats with one number of samples only, and keeps what it was asked for.
struct Driver {
    std::int32_t samples; // 0 = no multisampled format at all
    std::vector<Attributes> requests;
};

static constexpr std::int32_t SAMPLES = 0x2042;

static bool choose(void *device, const std::int32_t *attributes, std::int32_t *format) {
    Driver *driver = static_cast<Driver *>(device);
    Attributes request;
    for (; attributes[0] != 0; attributes += 2)
        request.emplace_back(attributes[0], attributes[1]);
    EXPECT_EQ(attributes[1], 0) << "the list ends with a pair of zeros";
    driver->requests.push_back(request);
    if (request.back() != std::pair(SAMPLES, driver->samples))
        return false;
    *format = 40 + driver->samples;
    return true;
}

static void forget() {
    arbMultisampleSupported = 0;
    arbMultisampleFormat = 0;
}

TEST(Multisample, four_samples_are_asked_for_first) {
    forget();
    Driver driver = {4, {}};
    EXPECT_EQ(gl_choose_multisample_format(choose, &driver), 1);
    EXPECT_EQ(driver.requests.size(), 1u);
    EXPECT_EQ(arbMultisampleFormat, 44);
    EXPECT_EQ(arbMultisampleSupported, 1);
}

TEST(Multisample, with_only_2_sample_formats_available_anti_aliasing_still_comes_on) {
    forget();
    Driver driver = {2, {}};
    EXPECT_EQ(gl_choose_multisample_format(choose, &driver), 1);
    EXPECT_EQ(driver.requests.size(), 2u);
    EXPECT_EQ(arbMultisampleFormat, 42);
    EXPECT_EQ(arbMultisampleSupported, 1);
}

TEST(Multisample, a_driver_without_such_formats_is_asked_twice_and_leaves_the_answer_as_it_was) {
    forget();
    Driver driver = {0, {}};
    EXPECT_EQ(gl_choose_multisample_format(choose, &driver), 0);
    EXPECT_EQ(driver.requests.size(), 2u);
    EXPECT_EQ(arbMultisampleFormat, 0);
    arbMultisampleSupported = 1;
    EXPECT_EQ(gl_choose_multisample_format(choose, &driver), 1);
}

TEST(Multisample, the_format_asked_for_is_accelerated_double_buffered_rgba_with_16_bit_depth) {
    forget();
    Driver driver = {4, {}};
    gl_choose_multisample_format(choose, &driver);
    const Attributes expected = {{0x2001, 1}, {0x2010, 1},  {0x2003, 0x2027}, {0x2014, 24},
                                 {0x201B, 8}, {0x2022, 16}, {0x2023, 0},      {0x2011, 1},
                                 {0x2041, 1}, {SAMPLES, 4}};
    EXPECT_EQ(driver.requests.front(), expected);
}
