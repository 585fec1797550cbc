#include "scene/scene_floor.h"

SceneFloor scene_floor;
std::int32_t screen_size_x, screen_size_y;
