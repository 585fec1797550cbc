#include "scene/scene_page.h"

#include "platform/text.h"
#include "tests/unit/empty_scene.h"

#include <gtest/gtest.h>

#include <string>

struct SceneTemplateTest : testing::Test {
    SceneTemplateTest() {
        empty_scene_init();
        for (SceneStackEntry &entry : scene_stack)
            entry.template_object.empty = 1;
    }
    ~SceneTemplateTest() override {
        empty_scene_free();
    }
};

static void load(const std::string &nodes) {
    const std::string bytes = "<page>\n<offv>004</offv>\n" + nodes + "</page>\n";
    ASSERT_EQ(scene_load_page_memory({bytes.data(), bytes.size()}, "a.orvl", "A"), PAGE_LOADED);
}

static std::string object(const char *type, const char *name, const char *description) {
    return std::string("<node>\n<type>") + type + "</type>\n<name>" + name +
           "</name>\n<description>" + description +
           "</description>\n<x_position>0</x_position>\n<y_position>0</y_position>\n"
           "<model></model>\n<page_file>p.orvl</page_file>\n<action>\n<type>command</type>\n"
           "<owner>0</owner>\n<name>run</name>\n<command>run.exe</command>\n<icon></icon>\n"
           "</action>\n</node>\n";
}

static void put_template(TemplateObject *target, const char *description) {
    target->empty = 0;
    text_copy(target->node.description, description);
}

TEST_F(SceneTemplateTest, there_is_no_template_at_first) {
    EXPECT_EQ(template_object_check(), 1);
}

TEST_F(SceneTemplateTest, the_object_named_template_is_copied_with_its_actions) {
    load(object("object", "a", "one") + object("object", "Template", "two"));
    EXPECT_EQ(template_object_check(), 0);
    EXPECT_STREQ(template_object.node.description, "two");
    ASSERT_EQ(template_object.node.action_count, 1);
    EXPECT_STREQ(template_object.node.actions[0]->command, "run.exe");
    EXPECT_NE(template_object.node.actions[0], node[1].actions[0]);
}

TEST_F(SceneTemplateTest, a_page_object_named_template_is_none) {
    load(object("page", "Template", "two"));
    EXPECT_EQ(template_object_check(), 1);
}

TEST_F(SceneTemplateTest, a_page_without_a_template_keeps_that_of_the_page_it_was_opened_from) {
    load(object("object", "Template", "parent"));
    load(object("object", "template", "other case"));
    EXPECT_EQ(template_object_check(), 0);
    EXPECT_STREQ(template_object.node.description, "parent");
}

TEST_F(SceneTemplateTest, a_page_that_fails_to_load_leaves_the_template) {
    load(object("object", "Template", "parent"));
    const std::string bytes = "<page>\n<offv>005</offv>\n</page>\n";
    EXPECT_EQ(scene_load_page_memory({bytes.data(), bytes.size()}, "a.orvl", "A"), PAGE_NEWER);
    EXPECT_STREQ(template_object.node.description, "parent");
}

TEST_F(SceneTemplateTest, deleting_the_template_falls_back_to_the_nearest_one_of_the_stack) {
    put_template(&template_object, "own");
    put_template(&scene_stack[0].template_object, "home");
    put_template(&scene_stack[1].template_object, "middle");
    put_template(&scene_stack[3].template_object, "not in use");
    scene_stack_depth = 3;
    template_object_delete();
    EXPECT_EQ(template_object_check(), 0);
    EXPECT_STREQ(template_object.node.description, "middle");
}

TEST_F(SceneTemplateTest, deleting_the_template_leaves_none_when_the_stack_has_none) {
    put_template(&template_object, "own");
    put_template(&scene_stack[2].template_object, "not in use");
    scene_stack_depth = 2;
    template_object_delete();
    EXPECT_EQ(template_object_check(), 1);
}

TEST_F(SceneTemplateTest, copying_takes_flag_and_node) {
    TemplateObject source = {.empty = 0, .node = {}};
    text_copy(source.node.name, "Template");
    TemplateObject target = {.empty = 1, .node = {}};
    template_object_copy(&target, &source);
    EXPECT_EQ(target.empty, 0);
    EXPECT_STREQ(target.node.name, "Template");
}

TEST_F(SceneTemplateTest, initialising_again_frees_the_records_and_empties_the_template) {
    load(object("object", "Template", "parent"));
    template_object_init();
    EXPECT_EQ(template_object_check(), 1);
    EXPECT_EQ(template_object.node.actions[0], nullptr);
}
