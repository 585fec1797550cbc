#include "assets/model.h"

#include "platform/gl.h"
#include "platform/text.h"

#include <cstdlib>

Model models[MODEL_CAPACITY + 1];
std::int32_t models_total = 0;

void model_init() {
    models_total = 0;
    model_load_default_object();
}

// Id of the registered model of this name, -1 when there is none.
static std::int32_t find(const char *file_name) {
    for (std::int32_t i = 0; i < models_total; i++) {
        if (text_equal(models[i].file_name, file_name))
            return i;
    }
    return -1;
}

std::int32_t model_return_model_id(const char *file_name) {
    const std::int32_t known = find(file_name);
    if (known >= 0)
        return known;
    if (models_total >= MODEL_CAPACITY)
        return 0;
    if (model_load(file_name, &models[models_total], 1.0f) != 0)
        return 0;
    return models_total++;
}

std::int32_t model_return_preview_id(const char *file_name) {
    const std::int32_t known = find(file_name);
    if (known >= 0)
        return known;
    if (models_total >= MODEL_CAPACITY)
        return 0;
    Model *shown = &models[MODEL_PREVIEW];
    if (text_equal(shown->file_name, file_name))
        return MODEL_PREVIEW;
    model_free_preview();
    return model_load(file_name, shown, 1.0f) == 0 ? MODEL_PREVIEW : 0;
}

void model_free_preview() {
    model_unload(&models[MODEL_PREVIEW]);
    models[MODEL_PREVIEW] = {};
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
