// Choosing a model from the catalogue: the categories and the models as the combo boxes list them,
// and what "<" and ">" do. The catalogue must be loaded.
#pragma once

#include "assets/object_files.h"

#include <cstdint>

inline constexpr std::int32_t MODEL_NOT_LISTED = -1; // until one of the list is chosen

struct ModelChoice {
    std::int32_t category[OBJECT_CATAGORY_CAPACITY]; // into object_catagory, as listed: "All" first
    std::int32_t category_total;                     // only those with a model in them
    std::int32_t category_chosen;                    // place in the list
    std::int32_t model[OBJECT_FILES_CAPACITY];       // into object_files: those of the category,
    std::int32_t model_total;                        // by name, the built-in one first; never 0
    std::int32_t model_chosen;                       // place in the list, or MODEL_NOT_LISTED
};

// Lists everything and chooses the catalogue entry, none when it does not exist.
void model_choice_init(ModelChoice *choice, std::int32_t entry);

// Places are those of the lists; others are ignored. A model that is in another category as well
// stays chosen there, else that category's first one is.
void model_choice_set_category(ModelChoice *choice, std::int32_t place);
void model_choice_set_model(ModelChoice *choice, std::int32_t place);

void model_choice_previous(ModelChoice *choice); // from the first, and from none, to the last
void model_choice_next(ModelChoice *choice);     // from the last, and from none, to the first

// Catalogue index of the chosen model, OBJECT_NONE when none is chosen.
std::int32_t model_choice_entry(const ModelChoice *choice);
const char *model_choice_category_name(const ModelChoice *choice, std::int32_t place);
const char *model_choice_model_name(const ModelChoice *choice, std::int32_t place);
