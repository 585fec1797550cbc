#include "assets/model.h"

#include "platform/gl.h"
#include "platform/locations.h"
#include "platform/text.h"
#include "tests/support/gl_context.h"
#include "tests/support/test_folder.h"

#include <gtest/gtest.h>

#include <string>

// A fresh models folder with a triangle in it, and a registry with model 0 only.
struct ModelRegistry : testing::Test {
    TestFolder folder;

    ModelRegistry() {
        text_copy(object_dir_location, folder.path);
        write_triangle("a.obj");
        model_init();
    }
    ~ModelRegistry() override {
        model_unload_models();
        model_init();
        model_unload_models();
    }
    void write_triangle(const char *name) {
        folder.write(name, "v -1 -1 0\nv 1 -1 0\nv 0 1 0\nvn 0 0 1\nf 1//1 2//1 3//1\n");
    }
};

TEST_F(ModelRegistry, starts_with_model_0) {
    EXPECT_EQ(models_total, 1);
    EXPECT_EQ(models[0].face_total, 44);
}

TEST_F(ModelRegistry, an_empty_name_is_model_0) {
    EXPECT_EQ(model_return_model_id(""), 0);
    EXPECT_EQ(models_total, 1);
}

TEST_F(ModelRegistry, asking_twice_gives_the_same_id_without_reading_again) {
    EXPECT_EQ(model_return_model_id("a.obj"), 1);
    const float *vertex = models[1].vertex;
    ASSERT_EQ(file_delete(folder.file("a.obj").c_str()), 0);
    EXPECT_EQ(model_return_model_id("a.obj"), 1);
    EXPECT_EQ(models[1].vertex, vertex);
    EXPECT_EQ(models_total, 2);
}

TEST_F(ModelRegistry, names_differ_by_case) {
    write_triangle("A.OBJ");
    EXPECT_EQ(model_return_model_id("a.obj"), 1);
    EXPECT_EQ(model_return_model_id("A.OBJ"), 2);
}

TEST_F(ModelRegistry, a_model_that_cannot_be_loaded_is_model_0) {
    EXPECT_EQ(model_return_model_id("none.obj"), 0);
    EXPECT_EQ(models_total, 1);
}

TEST_F(ModelRegistry, a_failed_load_leaves_its_entry_to_the_next) {
    EXPECT_EQ(model_return_model_id("none.obj"), 0);
    EXPECT_EQ(model_return_model_id("a.obj"), 1);
    EXPECT_STREQ(models[1].file_name, "a.obj");
}

TEST_F(ModelRegistry, a_model_that_failed_once_is_looked_for_again) {
    EXPECT_EQ(model_return_model_id("b.obj"), 0);
    write_triangle("b.obj");
    EXPECT_EQ(model_return_model_id("b.obj"), 1);
}

TEST_F(ModelRegistry, with_255_entries_any_new_name_is_model_0) {
    for (int i = 1; i < MODEL_CAPACITY; i++) {
        const std::string name = std::to_string(i) + ".obj";
        write_triangle(name.c_str());
        ASSERT_EQ(model_return_model_id(name.c_str()), i);
    }
    EXPECT_EQ(models_total, 255);
    EXPECT_EQ(model_return_model_id("a.obj"), 0);
    EXPECT_EQ(model_return_model_id("254.obj"), 254);
    EXPECT_EQ(models_total, 255);
}

TEST_F(ModelRegistry, unloading_frees_the_arrays_and_keeps_the_counts) {
    ASSERT_EQ(model_return_model_id("a.obj"), 1);
    EXPECT_EQ(model_unload(&models[1]), 0);
    EXPECT_EQ(models[1].vertex, nullptr);
    EXPECT_EQ(models[1].vertex_total, 3);
    EXPECT_EQ(models_total, 2);
}

TEST_F(ModelRegistry, unloading_twice_is_harmless) {
    model_unload_models();
    model_unload_models();
    EXPECT_EQ(models_total, 1);
}

TEST_F(ModelRegistry, starting_anew_forgets_all_models_but_0) {
    ASSERT_EQ(model_return_model_id("a.obj"), 1);
    model_unload_models();
    model_init();
    EXPECT_EQ(models_total, 1);
    EXPECT_NE(models[0].vertex, nullptr);
    EXPECT_EQ(model_return_model_id("a.obj"), 1);
    EXPECT_NE(models[1].vertex, nullptr);
}

TEST_F(ModelRegistry, freeing_display_lists_deletes_those_that_are_compiled) {
    const GlContext context(16, 16);
    ASSERT_EQ(model_return_model_id("a.obj"), 1);
    model_draw(&models[0]);
    model_draw(&models[1]);
    const std::uint32_t list = models[1].display_list;
    EXPECT_TRUE(glIsList(list));
    model_free_display_lists();
    EXPECT_FALSE(glIsList(list));
    EXPECT_EQ(models[0].display_list_compiled, 0);
    EXPECT_EQ(models[1].display_list_compiled, 0);
}

TEST_F(ModelRegistry, freeing_display_lists_leaves_lists_of_others_alone) {
    const GlContext context(16, 16);
    const GLuint other = glGenLists(1);
    glNewList(other, GL_COMPILE);
    glEndList();
    models[0].display_list = other; // as left behind by another context
    model_free_display_lists();
    EXPECT_TRUE(glIsList(other));
}
