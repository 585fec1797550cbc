// What the versions of the page format have in common and where they differ.
#include "scene/scene_page.h"

#include "assets/model.h"
#include "page/options.h"
#include "platform/locations.h"
#include "platform/text.h"
#include "tests/support/test_folder.h"

#include <gtest/gtest.h>

#include <string>

struct SceneLoadVersionsTest : testing::Test {
    TestFolder folder;

    SceneLoadVersionsTest() {
        text_copy(page_dir_location, folder.path);
        text_copy(object_dir_location, folder.path);
        options_set_defaults();
        model_init();
        node_init_nodes();
        template_object_init();
        node_total = 0;
        line_init();
        scene_floor = {};
        scene_floor.home_x = scene_floor.position_x = 9.0f;
        scene_floor.colour = {0, 0.25f, 0.5f, 0.75f, 0.8f};
    }
    ~SceneLoadVersionsTest() override {
        node_free_nodes();
        model_unload_models();
        models_total = 0;
        node_total = 0;
        line_init();
        page_dir_location[0] = object_dir_location[0] = '\0';
    }
};

static std::uint32_t load(const std::string &version, const std::string &content) {
    const std::string bytes = "<page>\n<offv>" + version + "</offv>\n" + content + "</page>\n";
    return scene_load_page_memory({bytes.data(), bytes.size()}, "test.orvl", "Test");
}

static const char PROPERTIES[] = "<properties>\n<x_position>1.50</x_position>\n"
                                 "<y_position>-2.00</y_position>\n<colour>\n<red>0.10</red>\n"
                                 "<green>0.20</green>\n<blue>0.30</blue>\n</colour>\n"
                                 "</properties>\n";
static const char FIELDS[] = "<name>a</name>\n<description>b</description>\n"
                             "<x_position>1</x_position>\n<y_position>2</y_position>\n"
                             "<model></model>\n";
static const char PAIRS[] = "<action_1_name>One</action_1_name>\n<action_1>one.exe</action_1>\n"
                            "<action_2_name></action_2_name>\n<action_2></action_2>\n"
                            "<action_3_name></action_3_name>\n<action_3></action_3>\n";
static const char ACTION[] = "<action>\n<type>command</type>\n<owner>0</owner>\n<name>Two</name>\n"
                             "<command>two.exe</command>\n<icon></icon>\n</action>\n";

static std::string typed(const std::string &type, const std::string &content) {
    return "<node>\n<type>" + type + "</type>\n" + content + "</node>\n";
}

TEST_F(SceneLoadVersionsTest, versions_from_2_on_read_the_properties) {
    for (const char *version : {"002", "003", "004"}) {
        scene_floor.home_x = scene_floor.position_x = 9.0f;
        scene_floor.colour.red = 0.9f;
        EXPECT_EQ(load(version, PROPERTIES), PAGE_LOADED);
        EXPECT_EQ(scene_floor.home_x, 1.5f) << version;
        EXPECT_EQ(scene_floor.position_y, -2.0f) << version;
        EXPECT_EQ(scene_floor.colour.red, 0.1f) << version;
        EXPECT_EQ(scene_floor.colour.green, 0.2f) << version;
        EXPECT_EQ(scene_floor.colour.blue, 0.3f) << version;
    }
}

TEST_F(SceneLoadVersionsTest, only_a_red_of_exactly_minus_1_means_the_default_colour) {
    for (const char *red : {"-0.99", "-1.01", "-2"}) {
        EXPECT_EQ(load("4", std::string("<properties>\n<colour>\n<red>") + red +
                                "</red>\n<green>-1.00</green>\n<blue>-1.00</blue>\n</colour>\n"
                                "</properties>\n"),
                  PAGE_LOADED);
        EXPECT_EQ(scene_floor.colour.use_default, 0) << red;
        EXPECT_EQ(scene_floor.colour.red, 0.0f) << red;
        EXPECT_EQ(scene_floor.colour.green, 0.0f) << red;
    }
}

TEST_F(SceneLoadVersionsTest, versions_up_to_3_read_three_pairs_and_no_action_elements) {
    for (const char *version : {"0", "1", "2", "3"}) {
        const std::string type = std::string(version) == "0" ? "host" : "object";
        EXPECT_EQ(load(version, typed(type, std::string(FIELDS) + PAIRS + ACTION)), PAGE_LOADED);
        ASSERT_EQ(node_total, 1) << version;
        ASSERT_EQ(node[0].action_count, 1) << version;
        EXPECT_STREQ(node[0].actions[0]->command, "one.exe") << version;
        EXPECT_EQ(load(version, typed(type, std::string(FIELDS) + ACTION)), PAGE_SYNTAX) << version;
    }
}

TEST_F(SceneLoadVersionsTest, version_4_reads_action_elements_and_no_pairs) {
    EXPECT_EQ(load("4", typed("object", std::string(FIELDS) + PAIRS)), PAGE_LOADED);
    EXPECT_EQ(node[0].action_count, 0);
    EXPECT_EQ(load("4", typed("object", std::string(FIELDS) + PAIRS + ACTION)), PAGE_LOADED);
    ASSERT_EQ(node[0].action_count, 1);
    EXPECT_STREQ(node[0].actions[0]->command, "two.exe");
}

TEST_F(SceneLoadVersionsTest, versions_up_to_3_name_a_sub_page_in_a_plain_action) {
    for (const char *version : {"0", "1", "2", "3"}) {
        EXPECT_EQ(load(version, typed("page", std::string(FIELDS) + "<action>sub.xml</action>\n")),
                  PAGE_LOADED);
        ASSERT_EQ(node_total, 1) << version;
        EXPECT_STREQ(node[0].actions[0]->command, "sub.xml") << version;
        EXPECT_EQ(
            load(version, typed("page", std::string(FIELDS) + "<page_file>sub.xml</page_file>\n")),
            PAGE_SYNTAX)
            << version;
    }
}

TEST_F(SceneLoadVersionsTest,
       a_bracket_in_a_description_is_written_as_it_is_and_cuts_it_on_reading) {
    node_init_node(0);
    node[0].type = NODE_OBJECT;
    text_copy(node[0].name, "a<b");
    text_copy(node[0].description, "c<d");
    node_init_node(1);
    node[1].type = NODE_LABEL;
    text_copy(node[1].description, "e<f");
    node_total = 2;
    ASSERT_EQ(xml_save_page("a.orvl"), 0);
    const std::string written = folder.read_text("a.orvl");
    EXPECT_NE(written.find("<name>a<b</name>"), std::string::npos);
    EXPECT_NE(written.find("<description>c<d</description>"), std::string::npos);
    EXPECT_NE(written.find("<text>e<f</text>"), std::string::npos);
    ASSERT_EQ(scene_load_page("a.orvl", "A"), PAGE_LOADED);
    ASSERT_EQ(node_total, 2);
    EXPECT_STREQ(node[0].name, "a");
    EXPECT_STREQ(node[0].description, "c");
    EXPECT_STREQ(node[1].description, "e");
}

TEST_F(SceneLoadVersionsTest, a_node_without_a_type_of_its_own_keeps_its_place_in_the_file_only) {
    node_init_node(0);
    node[0].type = NODE_NONE;
    node_init_node(1);
    node[1].type = NODE_LABEL;
    text_copy(node[1].description, "kept");
    node_total = 2;
    ASSERT_EQ(xml_save_page("a.orvl"), 0);
    ASSERT_EQ(scene_load_page("a.orvl", "A"), PAGE_LOADED);
    ASSERT_EQ(node_total, 1);
    EXPECT_STREQ(node[0].description, "kept");
}
