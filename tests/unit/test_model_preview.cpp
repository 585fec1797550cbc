// Models that are only looked at.
#include "assets/model.h"

#include "platform/files.h"
#include "platform/locations.h"
#include "platform/text.h"
#include "tests/support/test_folder.h"

#include <gtest/gtest.h>

#include <string>

// A fresh models folder, and a registry with model 0 only.
struct ModelPreview : testing::Test {
    TestFolder folder;

    ModelPreview() {
        text_copy(object_dir_location, folder.path);
        model_init();
    }
    ~ModelPreview() override {
        model_free_preview();
        model_unload_models();
        model_init();
        model_unload_models();
    }
    // A triangle that is as high as its number.
    std::string write(int number) {
        std::string name = std::to_string(number) + ".obj";
        folder.write(name.c_str(), "v -1 0 0\nv 1 0 0\nv 0 " + std::to_string(number) +
                                       " 0\nvn 0 0 1\nf 1//1 2//1 3//1\n");
        return name;
    }
};

TEST_F(ModelPreview, a_model_looked_at_is_read_but_takes_no_place_in_the_registry) {
    EXPECT_EQ(model_return_preview_id(write(7).c_str()), MODEL_PREVIEW);
    EXPECT_STREQ(models[MODEL_PREVIEW].file_name, "7.obj");
    EXPECT_EQ(models[MODEL_PREVIEW].face_total, 1);
    EXPECT_EQ(models[MODEL_PREVIEW].max_y, 7.5f);
    EXPECT_EQ(models_total, 1);
}

TEST_F(ModelPreview, a_registered_model_is_looked_at_where_it_is) {
    ASSERT_EQ(model_return_model_id(write(7).c_str()), 1);
    EXPECT_EQ(model_return_preview_id("7.obj"), 1);
    EXPECT_EQ(model_return_preview_id(""), 0);
    EXPECT_STREQ(models[MODEL_PREVIEW].file_name, "");
}

TEST_F(ModelPreview, a_model_looked_at_can_be_registered_afterwards) {
    ASSERT_EQ(model_return_preview_id(write(7).c_str()), MODEL_PREVIEW);
    EXPECT_EQ(model_return_model_id("7.obj"), 1);
    EXPECT_EQ(models[1].max_y, 7.5f);
    EXPECT_EQ(model_return_preview_id("7.obj"), 1);
}

TEST_F(ModelPreview, looking_at_400_models_leaves_the_registry_to_those_in_use) {
    for (int i = 1; i <= 400; i++)
        write(i);
    ASSERT_EQ(model_return_model_id("11.obj"), 1);
    ASSERT_EQ(model_return_model_id("399.obj"), 2);
    const float *vertex = models[2].vertex;
    for (int i = 1; i <= 400; i++) {
        const std::string name = std::to_string(i) + ".obj";
        const std::int32_t id = model_return_preview_id(name.c_str());
        ASSERT_EQ(models[id].file_name, name);
        ASSERT_EQ(models[id].max_y, static_cast<float>(i) + 0.5f);
    }
    EXPECT_EQ(models_total, 3);
    EXPECT_STREQ(models[1].file_name, "11.obj");
    EXPECT_STREQ(models[2].file_name, "399.obj");
    EXPECT_EQ(models[2].vertex, vertex);
    EXPECT_EQ(model_return_model_id("400.obj"), 3);
}

TEST_F(ModelPreview, looking_twice_at_a_model_does_not_read_it_again) {
    ASSERT_EQ(model_return_preview_id(write(7).c_str()), MODEL_PREVIEW);
    const float *vertex = models[MODEL_PREVIEW].vertex;
    ASSERT_EQ(file_delete(folder.file("7.obj").c_str()), 0);
    EXPECT_EQ(model_return_preview_id("7.obj"), MODEL_PREVIEW);
    EXPECT_EQ(models[MODEL_PREVIEW].vertex, vertex);
}

TEST_F(ModelPreview, a_model_that_cannot_be_loaded_is_model_0_here_too) {
    ASSERT_EQ(model_return_preview_id(write(7).c_str()), MODEL_PREVIEW);
    EXPECT_EQ(model_return_preview_id("none.obj"), 0);
    EXPECT_STREQ(models[MODEL_PREVIEW].file_name, "");
    EXPECT_EQ(models[MODEL_PREVIEW].vertex, nullptr);
}

// It shows what an object would get.
TEST_F(ModelPreview, with_the_registry_full_a_new_model_is_model_0_here_too) {
    for (int i = 1; i < MODEL_CAPACITY; i++)
        ASSERT_EQ(model_return_model_id(write(i).c_str()), i);
    EXPECT_EQ(model_return_preview_id(write(255).c_str()), 0);
    EXPECT_EQ(model_return_preview_id("254.obj"), 254);
}

TEST_F(ModelPreview, what_was_looked_at_is_gone_once_it_is_freed) {
    ASSERT_EQ(model_return_preview_id(write(7).c_str()), MODEL_PREVIEW);
    model_free_preview();
    EXPECT_STREQ(models[MODEL_PREVIEW].file_name, "");
    EXPECT_EQ(models[MODEL_PREVIEW].vertex, nullptr);
    model_free_preview();
    EXPECT_EQ(model_return_preview_id("7.obj"), MODEL_PREVIEW);
}
