// Materials shared by the passes that draw flat things: floor, grid, lines and text.
#pragma once

inline constexpr float scene_floor_specular[4] = {0.0f, 0.0f, 0.0f, 1.0f};
inline constexpr float scene_floor_emission[4] = {0.0f, 0.0f, 0.0f, 1.0f};

// Dull front faces seen from above: no specular light, no glow, normal towards the viewer. The
// colour is the caller's.
void scene_flat_material();

// Ambient and diffuse colour of front faces, RGBA.
void scene_flat_colour(const float (&colour)[4]);
