// What the versions of the page format have in common and where they differ.
#include "page/xml.h"
#include "tests/unit/scene_load_fixture.h"

#include <utility>

static const char PROPERTIES[] = "<properties>\n<x_position>1.50</x_position>\n"
                                 "<y_position>-2.00</y_position>\n<colour>\n<red>0.10</red>\n"
                                 "<green>0.20</green>\n<blue>0.30</blue>\n</colour>\n"
                                 "</properties>\n";

static std::string one_pair() {
    return old_actions("One", "one.exe", "", "", "", "");
}

static const char *object_word(const char *version) {
    return version[0] == '0' ? "host" : "object";
}

TEST_F(SceneLoadTest, versions_from_2_on_read_the_properties) {
    for (const char *version : {"002", "003", "004"}) {
        scene_floor = {};
        EXPECT_EQ(load(page(version, PROPERTIES)), PAGE_LOADED);
        EXPECT_EQ(scene_floor.home_x, 1.5f) << version;
        EXPECT_EQ(scene_floor.position_y, -2.0f) << version;
        EXPECT_EQ(scene_floor.colour.red, 0.1f) << version;
        EXPECT_EQ(scene_floor.colour.green, 0.2f) << version;
        EXPECT_EQ(scene_floor.colour.blue, 0.3f) << version;
    }
}

TEST_F(SceneLoadTest, only_a_red_of_exactly_minus_1_means_the_default_colour) {
    for (const char *red : {"-0.99", "-1.01", "-2"}) {
        EXPECT_EQ(load(page("4", std::string("<properties>\n<colour>\n<red>") + red +
                                     "</red>\n<green>-1.00</green>\n<blue>-1.00</blue>\n"
                                     "</colour>\n</properties>\n")),
                  PAGE_LOADED);
        EXPECT_EQ(scene_floor.colour.use_default, 0) << red;
        EXPECT_EQ(scene_floor.colour.red, 0.0f) << red;
        EXPECT_EQ(scene_floor.colour.green, 0.0f) << red;
    }
}

TEST_F(SceneLoadTest, versions_up_to_3_read_three_pairs_and_no_action_elements) {
    const std::string action = command("Two", "two.exe", "");
    for (const char *version : {"0", "1", "2", "3"}) {
        const char *word = object_word(version);
        EXPECT_EQ(load(page(version, typed(word, object_fields("a") + one_pair() + action))),
                  PAGE_LOADED);
        ASSERT_EQ(node_total, 1) << version;
        ASSERT_EQ(node[0].action_count, 1) << version;
        EXPECT_STREQ(node[0].actions[0]->command, "one.exe") << version;
        EXPECT_EQ(load(page(version, typed(word, object_fields("a") + action))), PAGE_SYNTAX)
            << version;
    }
}

TEST_F(SceneLoadTest, version_4_reads_action_elements_and_no_pairs) {
    EXPECT_EQ(load(page("4", object("a", one_pair()))), PAGE_LOADED);
    EXPECT_EQ(node[0].action_count, 0);
    EXPECT_EQ(load(page("4", object("a", one_pair() + command("Two", "two.exe", "")))),
              PAGE_LOADED);
    ASSERT_EQ(node[0].action_count, 1);
    EXPECT_STREQ(node[0].actions[0]->command, "two.exe");
}

TEST_F(SceneLoadTest, versions_up_to_3_name_a_sub_page_in_a_plain_action) {
    for (const char *version : {"0", "1", "2", "3"}) {
        EXPECT_EQ(load(page(version,
                            typed("page", object_fields("a") + text_element("action", "sub.xml")))),
                  PAGE_LOADED);
        ASSERT_EQ(node_total, 1) << version;
        EXPECT_STREQ(node[0].actions[0]->command, "sub.xml") << version;
        EXPECT_EQ(load(page(version, typed("page", object_fields("a") +
                                                       text_element("page_file", "sub.orvl")))),
                  PAGE_SYNTAX)
            << version;
    }
}

TEST_F(SceneLoadTest, whatever_comes_of_it_no_file_stays_loaded) {
    const std::pair<std::string, std::uint32_t> files[] = {
        {page("4", object("a")), PAGE_LOADED},
        {page("5", object("a")), PAGE_NEWER},
        {"<other>\n</other>\n", PAGE_NOT_A_PAGE},
        {page("4", without(object("a"), "name")), PAGE_SYNTAX}};
    for (const auto &[text, result] : files) {
        folder.write("a.orvl", text);
        EXPECT_EQ(scene_load_page("a.orvl", "A"), result);
        EXPECT_EQ(xml, nullptr) << result;
    }
    const std::string text = "<a></a>\n";
    ASSERT_EQ(xml_load_memory({text.data(), text.size()}), 0);
    EXPECT_EQ(scene_load_page("none.orvl", "None"), PAGE_NOT_OPENED);
    EXPECT_EQ(xml, nullptr);
}

TEST_F(SceneLoadTest, a_bracket_in_a_text_is_written_as_it_is_and_cuts_it_on_reading) {
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

TEST_F(SceneLoadTest, a_node_of_no_type_takes_a_place_in_the_file_only) {
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
