#include "assets/model.h"

#include "platform/gl.h"
#include "platform/text.h"

#include <cstdlib>

Model models[MODEL_CAPACITY];
std::int32_t models_total = 0;

void model_init() {
    models_total = 0;
    model_load_default_object();
}

std::int32_t model_return_model_id(const char *file_name) {
    for (std::int32_t i = 0; i < models_total; i++) {
        if (text_equal(models[i].file_name, file_name))
            return i;
    }
    if (models_total >= MODEL_CAPACITY)
        return 0;
    if (model_load(file_name, &models[models_total], 1.0f) != 0)
        return 0;
    return models_total++;
}

// The counts stay: what was loaded is still known, it only cannot be drawn any more.
std::int32_t model_unload(Model *model) {
    std::free(model->vertex);
    std::free(model->normal);
    std::free(model->face);
    material_unload(model->material);
    model->vertex = nullptr;
    model->normal = nullptr;
    model->face = nullptr;
    model->material = nullptr;
    return 0;
}

void model_unload_models() {
    for (std::int32_t i = 0; i < models_total; i++)
        model_unload(&models[i]);
}

void model_free_display_lists() {
    for (std::int32_t i = 0; i < models_total; i++) {
        if (models[i].display_list_compiled == 1) {
            glDeleteLists(models[i].display_list, 1);
            models[i].display_list_compiled = 0;
        }
    }
}
