#include "dialogs/rules/model_choice.h"

#include "platform/text.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

static void add(const char *name, const char *category) {
    ObjectFile *file = &object_files[object_files_total++];
    *file = {};
    text_copy(file->name, name);
    file->category = object_catagory_get_id(category);
}

struct ModelChoiceTest : testing::Test {
    ModelChoice choice{};

    ModelChoiceTest() {
        object_files_total = 0;
        object_catagory_total = 0;
        add("Default", "All");
        object_catagory_get_id("Misc");
    }
    std::vector<std::string> categories() const {
        std::vector<std::string> names;
        for (std::int32_t i = 0; i < choice.category_total; i++)
            names.emplace_back(model_choice_category_name(&choice, i));
        return names;
    }
    std::vector<std::string> names() const {
        std::vector<std::string> list;
        for (std::int32_t i = 0; i < choice.model_total; i++)
            list.emplace_back(model_choice_model_name(&choice, i));
        return list;
    }
    std::string chosen() const {
        const std::int32_t entry = model_choice_entry(&choice);
        return entry == OBJECT_NONE ? "none" : object_files[entry].name;
    }
    void fill() {
        add("switch", "Network");
        add("Folder", "Misc");
        add("Printer", "Devices");
        add("Laptop", "Devices");
        add("mouse", "devices");
        model_choice_init(&choice, OBJECT_DEFAULT);
    }
};

using Names = std::vector<std::string>;

TEST_F(ModelChoiceTest, all_comes_first_then_the_categories_by_name_and_misc_last) {
    fill();
    EXPECT_EQ(categories(), (Names{"All", "Devices", "devices", "Network", "Misc"}));
    EXPECT_EQ(choice.category_chosen, 0);
}

TEST_F(ModelChoiceTest, all_lists_every_model_by_name_after_the_built_in_one) {
    fill();
    EXPECT_EQ(names(), (Names{"Default", "Folder", "Laptop", "mouse", "Printer", "switch"}));
}

TEST_F(ModelChoiceTest, a_category_without_models_is_not_listed) {
    add("Printer", "Devices");
    object_catagory_get_id("Empty");
    model_choice_init(&choice, OBJECT_DEFAULT);
    EXPECT_EQ(categories(), (Names{"All", "Devices"}));
}

TEST_F(ModelChoiceTest, with_no_model_files_the_built_in_model_is_all_there_is) {
    model_choice_init(&choice, OBJECT_NONE);
    EXPECT_EQ(categories(), Names{"All"});
    EXPECT_EQ(names(), Names{"Default"});
    model_choice_next(&choice);
    EXPECT_EQ(chosen(), "Default");
    model_choice_previous(&choice);
    EXPECT_EQ(chosen(), "Default");
}

TEST_F(ModelChoiceTest, the_entry_asked_for_is_chosen_under_all) {
    fill();
    model_choice_init(&choice, object_files_get_id_from_name("printer"));
    EXPECT_EQ(choice.category_chosen, 0);
    EXPECT_EQ(chosen(), "Printer");
    EXPECT_STREQ(model_choice_model_name(&choice, choice.model_chosen), "Printer");
}

TEST_F(ModelChoiceTest, without_an_entry_that_exists_none_is_chosen) {
    fill();
    for (const std::int32_t entry : {OBJECT_NONE, -5, object_files_total, 30000}) {
        model_choice_init(&choice, entry);
        EXPECT_EQ(choice.model_chosen, MODEL_NOT_LISTED) << entry;
        EXPECT_EQ(model_choice_entry(&choice), OBJECT_NONE) << entry;
    }
}

TEST_F(ModelChoiceTest, when_none_is_chosen_every_way_leads_into_the_list) {
    fill();
    const auto after = [this](auto act) {
        model_choice_init(&choice, OBJECT_NONE);
        act();
        return chosen();
    };
    EXPECT_EQ(after([this] { model_choice_next(&choice); }), "Default");
    EXPECT_EQ(after([this] { model_choice_previous(&choice); }), "switch");
    EXPECT_EQ(after([this] { model_choice_set_model(&choice, 2); }), "Laptop");
    EXPECT_EQ(after([this] { model_choice_set_category(&choice, 3); }), "switch");
    EXPECT_EQ(after([this] { model_choice_set_category(&choice, 0); }), "none"); // as it was
}

TEST_F(ModelChoiceTest, a_category_lists_its_own_models_only) {
    fill();
    model_choice_set_category(&choice, 1);
    EXPECT_EQ(names(), (Names{"Laptop", "Printer"}));
    EXPECT_EQ(chosen(), "Laptop"); // the built-in model is not among them
}

TEST_F(ModelChoiceTest, a_model_that_is_in_the_new_category_stays_chosen) {
    fill();
    model_choice_set_model(&choice, 4);
    EXPECT_EQ(chosen(), "Printer");
    model_choice_set_category(&choice, 1);
    EXPECT_EQ(chosen(), "Printer");
    model_choice_set_category(&choice, 0);
    EXPECT_EQ(chosen(), "Printer");
}

TEST_F(ModelChoiceTest, next_and_previous_step_within_the_category_and_wrap) {
    fill();
    model_choice_set_category(&choice, 1);
    Names seen;
    for (int i = 0; i < 3; i++) {
        seen.push_back(chosen());
        model_choice_next(&choice);
    }
    EXPECT_EQ(seen, (Names{"Laptop", "Printer", "Laptop"}));
    model_choice_set_category(&choice, 0);
    model_choice_set_model(&choice, 0);
    model_choice_previous(&choice);
    EXPECT_EQ(chosen(), "switch");
    model_choice_previous(&choice);
    EXPECT_EQ(chosen(), "Printer");
}

TEST_F(ModelChoiceTest, places_outside_the_lists_change_nothing) {
    fill();
    model_choice_set_model(&choice, 2);
    for (const std::int32_t place : {-1, 6, 1000}) {
        model_choice_set_model(&choice, place);
        model_choice_set_category(&choice, place);
    }
    EXPECT_EQ(choice.category_chosen, 0);
    EXPECT_EQ(chosen(), "Laptop");
}

TEST_F(ModelChoiceTest, of_two_models_of_one_name_the_chosen_one_is_meant) {
    add("Twin", "A");
    add("Twin", "B");
    model_choice_init(&choice, 2);
    EXPECT_EQ(model_choice_entry(&choice), 2);
    model_choice_next(&choice);
    model_choice_next(&choice);
    EXPECT_EQ(model_choice_entry(&choice), 1);
}

TEST_F(ModelChoiceTest, a_full_catalogue_is_listed_whole) {
    while (object_files_total < OBJECT_FILES_CAPACITY)
        add(std::to_string(object_files_total).c_str(), "Many");
    model_choice_init(&choice, OBJECT_FILES_CAPACITY - 1);
    EXPECT_EQ(choice.model_total, OBJECT_FILES_CAPACITY);
    EXPECT_EQ(model_choice_entry(&choice), OBJECT_FILES_CAPACITY - 1);
}
