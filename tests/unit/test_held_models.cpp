#include "app/held_models.h"

#include "assets/model.h"
#include "editing/clipboard.h"
#include "platform/locations.h"
#include "platform/text.h"
#include "scene/scene_page.h"
#include "tests/support/test_folder.h"

#include <gtest/gtest.h>

static constexpr char TRIANGLE[] = "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n";

struct HeldModels : testing::Test {
    TestFolder folder;

    HeldModels() {
        text_copy(object_dir_location, folder.path);
        folder.write("a.obj", TRIANGLE);
        folder.write("b.obj", TRIANGLE);
        folder.write("c.obj", TRIANGLE);
        model_init();
    }
    ~HeldModels() override {
        model_unload_models();
        models_total = 0;
        clipboard.model_id = template_object.node.model_id = 0;
        scene_stack[3].template_object.node.model_id = 0;
        object_dir_location[0] = '\0';
    }

    static void rebuild() {
        held_models_remember();
        model_unload_models();
        model_init();
        held_models_find_again();
    }
};

TEST_F(HeldModels, clipboard_and_templates_show_the_same_model_after_the_table_was_built_anew) {
    model_return_model_id("c.obj"); // of the page shown: not loaded again at once
    template_object.node.model_id = model_return_model_id("a.obj");
    scene_stack[3].template_object.node.model_id = model_return_model_id("b.obj");
    clipboard.model_id = model_return_model_id("b.obj");
    rebuild();
    EXPECT_STREQ(models[template_object.node.model_id].file_name, "a.obj");
    EXPECT_STREQ(models[scene_stack[3].template_object.node.model_id].file_name, "b.obj");
    EXPECT_STREQ(models[clipboard.model_id].file_name, "b.obj");
    EXPECT_EQ(models_total, 3);
}

TEST_F(HeldModels, a_model_that_is_gone_and_one_out_of_range_become_the_built_in_one) {
    clipboard.model_id = model_return_model_id("a.obj");
    template_object.node.model_id = 9999;
    ASSERT_EQ(file_delete(folder.file("a.obj").c_str()), 0);
    rebuild();
    EXPECT_EQ(clipboard.model_id, 0);
    EXPECT_EQ(template_object.node.model_id, 0);
}
