// Models: read from OBJ and MTL files, held once in the table models, drawn with fixed-function
// OpenGL. Model 0 is built in and stands in for every model that cannot be had.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

inline constexpr std::int32_t MODEL_CAPACITY = 255;
inline constexpr std::int32_t MODEL_PREVIEW = MODEL_CAPACITY; // id behind those of the registry
inline constexpr std::int32_t MATERIAL_NAME_SIZE = 20;
inline constexpr std::int32_t NO_MATERIAL = -1;
inline constexpr float colour_black[4] = {0.0f, 0.0f, 0.0f, 1.0f};

struct Face {
    std::int32_t vertex_total; // corners read, at most 3
    std::int32_t vertex_id[3]; // 0-based, as written in the file: not yet known to be in range
    std::int32_t normal_id[3]; // the same
    std::int32_t material_id;  // NO_MATERIAL for none
};

struct Material {
    char name[MATERIAL_NAME_SIZE]; // with its line end; not terminated when 20 or more long
    float shininess;               // OpenGL exponent, 0..128
    float ambient[4], diffuse[4], specular[4];
    std::int32_t illum; // 1 = lit by itself
};

struct Model {
    float *vertex; // x, y, z each; owned, as are the other arrays (malloc)
    std::int32_t vertex_total;
    float *normal; // as written, not normalised
    std::int32_t normal_total;
    Face *face;
    std::int32_t face_total;
    Material *material; // may be null
    std::int32_t material_total;
    std::uint32_t display_list;
    std::int32_t display_list_compiled;
    float reach; // of the farthest drawn corner from the origin; set with the display list
    float min_x, max_x, min_y, max_y, min_z, max_z; // padded bounding box, model units
    char file_name[256]; // relative to the models folder; empty = model 0
};

extern Model models[MODEL_CAPACITY + 1]; // the registry and the record of MODEL_PREVIEW
extern std::int32_t models_total;        // of the registry

// Empties the registry and builds model 0. For start-up and for a new GL window.
void model_init();

// Id of the model of this name, loaded on first use; 0 when it cannot be had or the table is full.
std::int32_t model_return_model_id(const char *file_name);

// Id of the model of this name for looking at it only. A model that is not registered takes no
// place in the registry, where it would stay for good: it is read into the record of MODEL_PREVIEW,
// until another one is. 0 where model_return_model_id would return 0.
std::int32_t model_return_preview_id(const char *file_name);
void model_free_preview(); // MODEL_PREVIEW is nothing then

// Reads a model of the models folder. 0 loaded; 1 the file cannot be opened or memory is short.
std::int32_t model_load(const char *file_name, Model *model, float scale);

// The same from memory: obj_path only serves to find the material library beside it.
std::int32_t model_load_memory(std::span<const char> obj, const char *obj_path, Model *model,
                               float scale);

// Builds the model that needs no file as entry 0. Returns 1 on success.
std::int32_t model_load_default_object();

std::int32_t model_unload(Model *model); // frees its arrays; always 0
void model_unload_models();
void model_free_display_lists(); // before another GL context draws

void model_draw(Model *model);
void model_draw_faded(Model *model, float alpha); // alpha 0..1, written into its materials

// No drawn part is further than this from the origin, model units. Infinite before the first
// drawing.
float model_reach(const Model *model);

// Number of materials read; *materials receives the array (malloc, null when none).
std::int32_t material_load(const char *path, Material **materials);
std::int32_t material_load_memory(std::span<const char> mtl, Material **materials);
std::int32_t material_search(const Material *materials, std::int32_t material_total,
                             const char *name);
float material_float_to_value(const char *text);
void material_clear(Material *material);
void material_unload(Material *materials);
