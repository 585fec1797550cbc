#include "dialogs/rules/dialog_model_rules.h"

#include "assets/model.h"
#include "assets/object_files.h"
#include "page/node.h"
#include "page/options.h"

static bool is_entry(std::int32_t entry) {
    return entry >= 0 && entry < object_files_total;
}

std::int32_t dialog_model_entry(std::int32_t model_id) {
    const bool known = model_id >= 0 && model_id < models_total;
    return known ? object_files_get_id_from_file(models[model_id].file_name) : OBJECT_DEFAULT;
}

std::int32_t dialog_model_entry_used_last(std::int32_t used_last, std::int32_t otherwise) {
    return orvanel_options.remember_last_model == 1 && is_entry(used_last) ? used_last : otherwise;
}

void dialog_model_take(std::int32_t id, std::int32_t entry) {
    if (is_entry(entry))
        node[id].model_id = model_return_model_id(object_files[entry].file);
    node_set_model_dimensions(id);
}

void dialog_model_remember(std::int32_t *used_last, std::int32_t entry) {
    if (orvanel_options.remember_last_model == 1 && is_entry(entry))
        *used_last = entry;
}
