// The picture of the model preview: a model above a translucent floor, mirrored below it. Draws
// into the current OpenGL context, which must be the preview's own: the state that these functions
// set is not taken back.
#pragma once

#include <cstdint>

extern std::int32_t model_viewer_model_id;       // index of models, -1 = nothing is shown
extern std::uint32_t model_viewer_floor_texture; // texture name
extern const float model_viewer_LightAmbient[4];
extern const float model_viewer_LightDiffuse[4];
extern const float model_viewer_LightSpecular[4];
extern const float model_viewer_floor_colour[4];
extern const float model_viewer_floor_specular[4];
extern const float model_viewer_floor_emission[4];

struct ViewerColour {
    float red, green, blue; // 0..1
};

// Sets the context up: state, light and floor. background is what the control stands on.
void model_viewer_picture_init(ViewerColour background);
void model_viewer_lights_init();
void model_viewer_load_floor_texture();
void model_viewer_picture_free(); // texture and list, while the context is still current

void model_viewer_resize(std::int32_t width, std::int32_t height); // pixels

// Draws the model at its present angle; with nothing to show it only clears. Does not swap.
void model_viewer_picture_draw();
