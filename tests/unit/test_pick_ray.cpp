#include "scene/pick_ray.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

static constexpr std::int32_t WIDTH = 640, HEIGHT = 480; // pixels
static constexpr double VIEW = 40.0;                     // degrees

static const double TANGENT = std::tan(VIEW * 3.14159265358979 / 360.0);

static PickRay ray_at(std::int32_t x, std::int32_t y) {
    return pick_ray(x, y, WIDTH, HEIGHT, VIEW);
}

TEST(PickRay, goes_straight_ahead_in_the_middle_and_along_the_view_at_its_top) {
    const PickRay middle = ray_at(WIDTH / 2, HEIGHT / 2);
    EXPECT_DOUBLE_EQ(middle.x, 0.0);
    EXPECT_DOUBLE_EQ(middle.y, 0.0);
    EXPECT_DOUBLE_EQ(middle.z, -1.0);
    const PickRay top = ray_at(WIDTH / 2, HEIGHT);
    EXPECT_NEAR(top.y / -top.z, TANGENT, 1e-12);
    const PickRay right = ray_at(WIDTH, HEIGHT / 2);
    EXPECT_NEAR(right.x / -right.z, TANGENT * WIDTH / HEIGHT, 1e-12);
    EXPECT_NEAR(std::hypot(right.x, right.y, right.z), 1.0, 1e-12);
}

TEST(PickRay, a_ball_is_hit_within_its_radius_and_a_few_pixels_and_no_further) {
    const PickRay ray = ray_at(WIDTH / 2, HEIGHT / 2);
    const double pixel = 2.0 * TANGENT / HEIGHT * 100.0; // at that distance
    EXPECT_TRUE(pick_ray_may_hit(ray, 2.0, 0.0, -100.0, 2.0));
    EXPECT_TRUE(pick_ray_may_hit(ray, 0.0, -2.0 - pixel, -100.0, 2.0));
    EXPECT_FALSE(pick_ray_may_hit(ray, 2.0 + 3.0 * pixel, 0.0, -100.0, 2.0));
    EXPECT_FALSE(pick_ray_may_hit(ray, 0.0, 2.0 + 3.0 * pixel, -100.0, 2.0));
}

TEST(PickRay, the_distance_counts_across_the_ray_and_not_across_the_screen) {
    const PickRay ray = ray_at(WIDTH, HEIGHT);
    const double x = ray.x * 90.0, y = ray.y * 90.0, z = ray.z * 90.0;
    EXPECT_TRUE(pick_ray_may_hit(ray, x, y, z, 0.0));
    EXPECT_TRUE(pick_ray_may_hit(ray, x, y, z + 1.0, 1.0));
    EXPECT_FALSE(pick_ray_may_hit(ray, x - 3.0, y, z, 1.0));
}

TEST(PickRay, what_is_not_made_of_numbers_may_be_hit) {
    const PickRay ray = ray_at(3, 4);
    const double none = std::numeric_limits<double>::quiet_NaN();
    const double endless = std::numeric_limits<double>::infinity();
    EXPECT_TRUE(pick_ray_may_hit(ray, none, 0.0, -100.0, 1.0));
    EXPECT_TRUE(pick_ray_may_hit(ray, 50.0, 0.0, none, 1.0));
    EXPECT_TRUE(pick_ray_may_hit(ray, 50.0, 0.0, -100.0, none));
    EXPECT_TRUE(pick_ray_may_hit(ray, 50.0, 0.0, -100.0, endless));
}
