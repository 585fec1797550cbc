// Models from hostile OBJ files: nothing is read or written out of bounds, and what is handed on is
// finite.
#include "assets/model.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

static void require(bool holds) {
    if (!holds)
        std::abort();
}

static void require_finite(const float *value, std::int32_t count) {
    for (std::int32_t i = 0; i < count; i++)
        require(std::isfinite(value[i]));
}

static void require_sound(const Model *model) {
    require_finite(model->vertex, 3 * model->vertex_total);
    require_finite(model->normal, 3 * model->normal_total);
    for (std::int32_t i = 0; i < model->face_total; i++) {
        const Face *face = &model->face[i];
        require(face->vertex_total >= 0 && face->vertex_total <= 3);
        require(face->material_id >= NO_MATERIAL && face->material_id < model->material_total);
    }
    require(model->min_x <= -0.5f && model->min_y <= -0.5f && model->min_z <= -0.5f);
    require(model->max_x >= 0.5f && model->max_y >= 0.5f && model->max_z >= 0.5f);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const std::span<const char> obj(reinterpret_cast<const char *>(data), size);
    Model model;
    if (model_load_memory(obj, "no_such_folder\\model.obj", &model, 2.0f) == 0)
        require_sound(&model);
    model_unload(&model);
    return 0;
}
