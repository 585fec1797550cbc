#include "dialogs/rules/model_choice.h"

#include <algorithm>
#include <string_view>

static char lower(char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a')
                                                : character;
}

static bool precedes(std::string_view a, std::string_view b) {
    return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(),
                                        [](char x, char y) { return lower(x) < lower(y); });
}

static bool is_in_category(std::int32_t entry, std::int32_t category) {
    return category == CATAGORY_ALL || object_files[entry].category == category;
}

static bool has_models(std::int32_t category) {
    for (std::int32_t i = 0; i < object_files_total; i++) {
        if (object_files[i].category == category)
            return true;
    }
    return false;
}

// "All" first and "Misc", which is no subject, last; between them by name.
static bool category_precedes(std::int32_t a, std::int32_t b) {
    const auto rank = [](std::int32_t id) {
        return id == CATAGORY_ALL ? 0 : id == CATAGORY_MISC ? 2 : 1;
    };
    if (rank(a) != rank(b))
        return rank(a) < rank(b);
    return precedes(object_catagory[a], object_catagory[b]);
}

static void list_categories(ModelChoice *choice) {
    choice->category_total = 0;
    for (std::int32_t i = 0; i < object_catagory_total; i++) {
        if (i == CATAGORY_ALL || has_models(i))
            choice->category[choice->category_total++] = i;
    }
    std::stable_sort(choice->category, choice->category + choice->category_total,
                     category_precedes);
    choice->category_chosen = 0;
}

static bool model_precedes(std::int32_t a, std::int32_t b) {
    if (a == OBJECT_DEFAULT || b == OBJECT_DEFAULT)
        return a == OBJECT_DEFAULT && b != OBJECT_DEFAULT;
    return precedes(object_files[a].name, object_files[b].name);
}

// Chooses the entry, and none when it is not of the category.
static void list_models(ModelChoice *choice, std::int32_t entry) {
    choice->model_total = 0;
    for (std::int32_t i = 0; i < object_files_total; i++) {
        if (is_in_category(i, choice->category[choice->category_chosen]))
            choice->model[choice->model_total++] = i;
    }
    std::int32_t *end = choice->model + choice->model_total;
    std::stable_sort(choice->model, end, model_precedes);
    const std::int32_t *place = std::find(choice->model, end, entry);
    choice->model_chosen =
        place != end ? static_cast<std::int32_t>(place - choice->model) : MODEL_NOT_LISTED;
}

void model_choice_init(ModelChoice *choice, std::int32_t entry) {
    list_categories(choice);
    list_models(choice, entry);
}

void model_choice_set_category(ModelChoice *choice, std::int32_t place) {
    if (place < 0 || place >= choice->category_total || place == choice->category_chosen)
        return;
    const std::int32_t entry = model_choice_entry(choice);
    choice->category_chosen = place;
    list_models(choice, entry);
    choice->model_chosen = std::max(choice->model_chosen, 0);
}

void model_choice_set_model(ModelChoice *choice, std::int32_t place) {
    if (place >= 0 && place < choice->model_total)
        choice->model_chosen = place;
}

void model_choice_previous(ModelChoice *choice) {
    const std::int32_t place = choice->model_chosen;
    choice->model_chosen = (place > 0 ? place : choice->model_total) - 1;
}

void model_choice_next(ModelChoice *choice) {
    choice->model_chosen = (choice->model_chosen + 1) % choice->model_total;
}

std::int32_t model_choice_entry(const ModelChoice *choice) {
    return choice->model_chosen == MODEL_NOT_LISTED ? OBJECT_NONE
                                                    : choice->model[choice->model_chosen];
}

const char *model_choice_category_name(const ModelChoice *choice, std::int32_t place) {
    return object_catagory[choice->category[place]];
}

const char *model_choice_model_name(const ModelChoice *choice, std::int32_t place) {
    return object_files[choice->model[place]].name;
}
