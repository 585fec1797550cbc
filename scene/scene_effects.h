// Scale factors of the effects that objects play, a value a frame; filled by node_init_effects.
#pragma once

#include <cstdint>

inline constexpr std::int32_t NODE_EFFECT_FRAMES = 15;

extern float node_effect_bounce1[NODE_EFFECT_FRAMES]; // grows when the mouse comes over it
extern float node_effect_bounce2[NODE_EFFECT_FRAMES]; // settles when the mouse leaves it
