#include "scene/pick_ray.h"

#include <cmath>
#include <numbers>

// Half a pixel's diagonal is 0.71; the rest is for what the driver rounds.
static constexpr double REACH = 2.0; // pixels

PickRay pick_ray(std::int32_t x, std::int32_t y, std::int32_t width, std::int32_t height,
                 double field_of_view) {
    const double pixel =
        2.0 * std::tan(field_of_view * std::numbers::pi / 360.0) / height; // a unit of depth
    const double right = pixel * (x - width / 2.0);
    const double up = pixel * (y - height / 2.0);
    const double length = std::sqrt(right * right + up * up + 1.0);
    return {right / length, up / length, -1.0 / length, REACH * pixel};
}

bool pick_ray_may_hit(const PickRay &ray, double x, double y, double z, double radius) {
    const double along = x * ray.x + y * ray.y + z * ray.z;
    const double away_x = x - along * ray.x;
    const double away_y = y - along * ray.y;
    const double away_z = z - along * ray.z;
    const double limit = radius + ray.spread * (std::fabs(z) + radius);
    return !(away_x * away_x + away_y * away_y + away_z * away_z > limit * limit);
}
