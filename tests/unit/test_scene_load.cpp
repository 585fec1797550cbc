#include "scene_load_fixture.h"

#include "page/page_file.h"

// ---- versions

TEST_F(SceneLoadTest, a_version_above_4_is_refused) {
    EXPECT_EQ(load(page("5", object("a"))), PAGE_NEWER);
    EXPECT_EQ(load(page("005", object("a"))), PAGE_NEWER);
    EXPECT_EQ(load(page("99999999999999999999", object("a"))), PAGE_NEWER);
    EXPECT_EQ(node_total, 0);
}

TEST_F(SceneLoadTest, the_versions_004_and_4_are_read) {
    EXPECT_EQ(load(page("004", object("a"))), PAGE_LOADED);
    EXPECT_EQ(node_total, 1);
    EXPECT_EQ(load(page("4", object("a"))), PAGE_LOADED);
    EXPECT_EQ(node_total, 1);
}

TEST_F(SceneLoadTest, a_version_of_0_reads_objects_typed_host) {
    const std::string host =
        typed("host", object_fields("a") + old_actions("", "", "", "", "", ""));
    EXPECT_EQ(load(page("0", host + object("b"))), PAGE_LOADED);
    ASSERT_EQ(node_total, 1);
    EXPECT_STREQ(node[0].name, "a");
    EXPECT_EQ(node[0].type, NODE_OBJECT);
}

TEST_F(SceneLoadTest, a_version_that_is_no_number_reads_as_0) {
    const std::string host =
        typed("host", object_fields("a") + old_actions("", "", "", "", "", ""));
    EXPECT_EQ(load(page("abc", host + object("b"))), PAGE_LOADED);
    EXPECT_EQ(node_total, 1);
}

TEST_F(SceneLoadTest, a_version_1_page_skips_nodes_typed_host) {
    const std::string none = old_actions("", "", "", "", "", "");
    EXPECT_EQ(load(page("1", typed("host", object_fields("a") + none) +
                                 typed("object", object_fields("b") + none))),
              PAGE_LOADED);
    ASSERT_EQ(node_total, 1);
    EXPECT_STREQ(node[0].name, "b");
}

TEST_F(SceneLoadTest, a_negative_version_knows_neither_word_for_an_object) {
    EXPECT_EQ(load(page("-1", typed("host", object_fields("a")) + object("b") + label("c"))),
              PAGE_LOADED);
    ASSERT_EQ(node_total, 1);
    EXPECT_EQ(node[0].type, NODE_LABEL);
}

TEST_F(SceneLoadTest, a_file_without_page_or_version_is_no_page) {
    EXPECT_EQ(load(""), PAGE_NOT_A_PAGE);
    EXPECT_EQ(load("<orvanel_options>\n<offv>2</offv>\n</orvanel_options>\n"), PAGE_NOT_A_PAGE);
    EXPECT_EQ(load(std::string("<page>\n") + object("a") + "</page>\n"), PAGE_NOT_A_PAGE);
    EXPECT_EQ(load("<page>\n<offv>004</offv>\n</page>"), PAGE_NOT_A_PAGE);
}

// ---- properties

static std::string properties(const std::string &content) {
    return std::string("<properties>\n") + content + "</properties>\n";
}

static std::string colour(const char *red, const char *green, const char *blue) {
    return std::string("<colour>\n") + text_element("red", red) + text_element("green", green) +
           text_element("blue", blue) + "</colour>\n";
}

TEST_F(SceneLoadTest, the_centre_of_the_page_becomes_home_and_position) {
    EXPECT_EQ(load(page("4", properties(text_element("x_position", "12.50") +
                                        text_element("y_position", "-7.25")))),
              PAGE_LOADED);
    EXPECT_EQ(scene_floor.home_x, 12.5f);
    EXPECT_EQ(scene_floor.position_x, 12.5f);
    EXPECT_EQ(scene_floor.home_y, -7.25f);
    EXPECT_EQ(scene_floor.position_y, -7.25f);
}

TEST_F(SceneLoadTest, a_red_of_minus_1_takes_the_default_page_colour) {
    EXPECT_EQ(load(page("4", properties(colour("-1.00", "0.50", "0.50")))), PAGE_LOADED);
    EXPECT_EQ(scene_floor.colour.use_default, 1);
    EXPECT_EQ(scene_floor.colour.red, 0.07f);
    EXPECT_EQ(scene_floor.colour.green, 0.13f);
    EXPECT_EQ(scene_floor.colour.blue, 0.19f);
    EXPECT_EQ(scene_floor.colour.alpha, 0.8f);
}

TEST_F(SceneLoadTest, components_beyond_0_and_1_are_clamped) {
    EXPECT_EQ(load(page("4", properties(colour("1.5", "-0.2", "0.5")))), PAGE_LOADED);
    EXPECT_EQ(scene_floor.colour.use_default, 0);
    EXPECT_EQ(scene_floor.colour.red, 1.0f);
    EXPECT_EQ(scene_floor.colour.green, 0.0f);
    EXPECT_EQ(scene_floor.colour.blue, 0.5f);
}

TEST_F(SceneLoadTest, a_page_without_properties_keeps_position_and_colour_of_the_page_before) {
    scene_floor.home_x = scene_floor.position_y = 3.0f;
    scene_floor.colour = {0, 0.25f, 0.5f, 0.75f, 1.0f};
    EXPECT_EQ(load(page("2", "")), PAGE_LOADED);
    EXPECT_EQ(scene_floor.home_x, 3.0f);
    EXPECT_EQ(scene_floor.position_y, 3.0f);
    EXPECT_EQ(scene_floor.colour.red, 0.25f);
    EXPECT_EQ(scene_floor.colour.alpha, 1.0f);
}

TEST_F(SceneLoadTest, a_component_that_is_missing_keeps_its_value) {
    scene_floor.colour = {1, 0.25f, 0.5f, 0.75f, 0.8f};
    EXPECT_EQ(load(page("4", properties(std::string("<colour>\n") + text_element("green", "0.1") +
                                        "</colour>\n"))),
              PAGE_LOADED);
    EXPECT_EQ(scene_floor.colour.use_default, 0);
    EXPECT_EQ(scene_floor.colour.red, 0.25f);
    EXPECT_EQ(scene_floor.colour.green, 0.1f);
    EXPECT_EQ(scene_floor.colour.blue, 0.75f);
}

TEST_F(SceneLoadTest, versions_0_and_1_ignore_the_properties) {
    for (const char *version : {"0", "1"}) {
        scene_floor.home_x = scene_floor.home_y = 9.0f;
        scene_floor.position_x = scene_floor.position_y = 9.0f;
        EXPECT_EQ(load(page(version, properties(text_element("x_position", "5") +
                                                text_element("y_position", "6") +
                                                colour("0.5", "0.5", "0.5")))),
                  PAGE_LOADED);
        EXPECT_EQ(scene_floor.home_x, 0.0f);
        EXPECT_EQ(scene_floor.home_y, 0.0f);
        EXPECT_EQ(scene_floor.position_x, 0.0f);
        EXPECT_EQ(scene_floor.position_y, 0.0f);
        EXPECT_EQ(scene_floor.colour.use_default, 1);
        EXPECT_EQ(scene_floor.colour.red, 0.07f);
        EXPECT_EQ(scene_floor.colour.alpha, 0.8f);
    }
}

TEST_F(SceneLoadTest, a_negative_version_neither_reads_the_properties_nor_resets_them) {
    scene_floor.home_x = scene_floor.position_x = 9.0f;
    scene_floor.colour = {0, 0.25f, 0.5f, 0.75f, 0.8f};
    EXPECT_EQ(
        load(page("-1", properties(text_element("x_position", "5") + colour("0.9", "0.9", "0.9")))),
        PAGE_LOADED);
    EXPECT_EQ(scene_floor.home_x, 9.0f);
    EXPECT_EQ(scene_floor.position_x, 9.0f);
    EXPECT_EQ(scene_floor.colour.use_default, 0);
    EXPECT_EQ(scene_floor.colour.red, 0.25f);
}

TEST_F(SceneLoadTest, a_page_of_a_newer_version_changes_no_colour) {
    scene_floor.colour = {0, 0.25f, 0.5f, 0.75f, 0.8f};
    scene_floor.previous_colour = {0, 0.1f, 0.1f, 0.1f, 0.8f};
    EXPECT_EQ(load(page("5", properties(colour("0.9", "0.9", "0.9")))), PAGE_NEWER);
    EXPECT_EQ(scene_floor.colour.red, 0.25f);
    EXPECT_EQ(scene_floor.previous_colour.red, 0.1f);
}

TEST_F(SceneLoadTest, the_colour_of_the_page_before_is_remembered) {
    scene_floor.colour = {1, 0.25f, 0.5f, 0.75f, 0.6f};
    EXPECT_EQ(load(page("4", properties(colour("0.1", "0.2", "0.3")))), PAGE_LOADED);
    EXPECT_EQ(scene_floor.previous_colour.use_default, 1);
    EXPECT_EQ(scene_floor.previous_colour.red, 0.25f);
    EXPECT_EQ(scene_floor.previous_colour.green, 0.5f);
    EXPECT_EQ(scene_floor.previous_colour.blue, 0.75f);
    EXPECT_EQ(scene_floor.previous_colour.alpha, 0.6f);
}

// ---- capacity

TEST_F(SceneLoadTest, a_file_of_256_or_more_nodes_loads_its_first_255) {
    std::string nodes;
    for (int i = 0; i < 300; i++)
        nodes += label(std::to_string(i));
    EXPECT_EQ(load(page("4", nodes)), PAGE_LOADED);
    EXPECT_EQ(node_total, 255);
    EXPECT_STREQ(node[254].description, "254");
}

TEST_F(SceneLoadTest, whatever_follows_the_255th_node_is_not_even_looked_at) {
    std::string nodes;
    for (int i = 0; i < 255; i++)
        nodes += label("x");
    EXPECT_EQ(load(page("4", nodes + without(object("broken"), "name"))), PAGE_LOADED);
    EXPECT_EQ(node_total, 255);
}

TEST_F(SceneLoadTest, a_saved_page_of_255_nodes_reloads_with_its_nodes_and_no_links) {
    for (std::int32_t i = 0; i < NODE_CAPACITY; i++) {
        node_init_node(i);
        node[i].type = NODE_LABEL;
    }
    node_total = NODE_CAPACITY;
    line_create_from_ids(0, 1);
    line_create_from_ids(1, 2);
    EXPECT_EQ(xml_save_page("full.orvl"), 0);
    EXPECT_EQ(scene_load_page("full.orvl", "Full"), PAGE_LOADED);
    EXPECT_EQ(node_total, 255);
    EXPECT_EQ(line_total, 0);
}

TEST_F(SceneLoadTest, a_saved_page_of_254_nodes_reloads_with_its_links) {
    for (std::int32_t i = 0; i < NODE_CAPACITY - 1; i++) {
        node_init_node(i);
        node[i].type = NODE_LABEL;
    }
    node_total = NODE_CAPACITY - 1;
    line_create_from_ids(0, 1);
    line_create_from_ids(1, 2);
    EXPECT_EQ(xml_save_page("full.orvl"), 0);
    EXPECT_EQ(scene_load_page("full.orvl", "Full"), PAGE_LOADED);
    EXPECT_EQ(line_total, 2);
}

// ---- files

TEST_F(SceneLoadTest, a_saved_page_reads_back_as_it_was_written) {
    scene_floor.home_x = 4.25f;
    scene_floor.colour = {0, 0.5f, 0.25f, 0.75f, 0.8f};
    ASSERT_EQ(
        load(page("4", object("a", command("n", "c", "i")) + label("l") +
                           typed("page", object_fields("p") + text_element("page_file", "p.orvl")) +
                           link_node("0", "2"))),
        PAGE_LOADED);
    ASSERT_EQ(xml_save_page("a.orvl"), 0);
    const std::string written = folder.read_text("a.orvl");
    ASSERT_EQ(scene_load_page("a.orvl", "A"), PAGE_LOADED);
    EXPECT_EQ(page_format({scene_floor.home_x, scene_floor.home_y, scene_floor.colour}), written);
}

TEST_F(SceneLoadTest, a_page_is_found_in_the_page_folder_or_by_its_full_path) {
    folder.write("a.orvl", page("4", object("a")));
    EXPECT_EQ(scene_load_page("a.orvl", "A"), PAGE_LOADED);
    EXPECT_EQ(node_total, 1);
    EXPECT_STREQ(scene_page_file_name, "a.orvl");
    EXPECT_STREQ(scene_page_title, "A");
    const std::string path = folder.file("a.orvl");
    page_dir_location[0] = '\0';
    EXPECT_EQ(scene_load_page(path.c_str(), "B"), PAGE_LOADED);
    EXPECT_EQ(std::string(scene_page_file_name), path);
}

TEST_F(SceneLoadTest, a_missing_page_empties_the_scene_and_is_remembered) {
    ASSERT_EQ(load(page("4", object("a") + label("b") + link_node("0", "1"))), PAGE_LOADED);
    EXPECT_EQ(scene_load_page("none.orvl", "None"), PAGE_NOT_OPENED);
    EXPECT_EQ(node_total, 0);
    EXPECT_EQ(node_label_total, 0);
    EXPECT_EQ(line_total, 0);
    EXPECT_STREQ(scene_page_file_name, "none.orvl");
    EXPECT_STREQ(scene_page_title, "None");
}

TEST_F(SceneLoadTest, display_lists_of_the_models_are_given_back_whether_or_not_there_is_a_page) {
    models[0].display_list_compiled = 1;
    EXPECT_EQ(scene_load_page("none.orvl", "None"), PAGE_NOT_OPENED);
    EXPECT_EQ(models[0].display_list_compiled, 0);
    models[0].display_list_compiled = 1;
    EXPECT_EQ(load(page("4", "")), PAGE_LOADED);
    EXPECT_EQ(models[0].display_list_compiled, 0);
}

TEST_F(SceneLoadTest, a_missing_xml_page_is_loaded_from_its_orvl_twin_and_takes_its_name) {
    folder.write("old.orvl", page("4", object("a")));
    EXPECT_EQ(scene_load_page("old.xml", "Old"), PAGE_LOADED);
    EXPECT_EQ(node_total, 1);
    EXPECT_STREQ(scene_page_file_name, "old.orvl");
}

TEST_F(SceneLoadTest, the_twins_name_is_cut_where_xml_begins) {
    folder.write("old.orvl", page("4", object("a")));
    EXPECT_EQ(scene_load_page("old.xml.bak", "Old"), PAGE_LOADED);
    EXPECT_STREQ(scene_page_file_name, "old.orvl");
}

TEST_F(SceneLoadTest, an_xml_page_that_exists_keeps_its_name) {
    folder.write("old.xml", page("3", ""));
    folder.write("old.orvl", page("4", object("a")));
    EXPECT_EQ(scene_load_page("old.xml", "Old"), PAGE_LOADED);
    EXPECT_EQ(node_total, 0);
    EXPECT_STREQ(scene_page_file_name, "old.xml");
}

TEST_F(SceneLoadTest, an_xml_page_without_a_twin_cannot_be_opened_and_keeps_its_name) {
    EXPECT_EQ(scene_load_page("old.xml", "Old"), PAGE_NOT_OPENED);
    EXPECT_STREQ(scene_page_file_name, "old.xml");
}

TEST_F(SceneLoadTest, the_page_shown_can_be_loaded_again_from_its_own_name) {
    folder.write("a.orvl", page("4", object("a")));
    ASSERT_EQ(scene_load_page("a.orvl", "A page"), PAGE_LOADED);
    EXPECT_EQ(scene_load_page(scene_page_file_name, scene_page_title), PAGE_LOADED);
    EXPECT_STREQ(scene_page_file_name, "a.orvl");
    EXPECT_STREQ(scene_page_title, "A page");
}

TEST_F(SceneLoadTest, a_page_named_by_an_objects_own_action_is_loaded) {
    folder.write("a.orvl", page("4", object("one", command("x", "other", "y"))));
    folder.write("b.orvl", page("4", object("two", command("x", "yet another", "y"))));
    ASSERT_EQ(scene_load_page("a.orvl", "A"), PAGE_LOADED);
    text_copy(node[0].actions[0]->command, "b.orvl");
    EXPECT_EQ(scene_load_page(node[0].actions[0]->command, node[0].name), PAGE_LOADED);
    EXPECT_STREQ(scene_page_file_name, "b.orvl");
    EXPECT_STREQ(scene_page_title, "one");
}

TEST_F(SceneLoadTest, file_name_and_title_are_cut_at_their_fields) {
    EXPECT_EQ(scene_load_page(std::string(500, 'f').c_str(), std::string(500, 't').c_str()),
              PAGE_NOT_OPENED);
    EXPECT_EQ(std::string(scene_page_file_name), std::string(260, 'f'));
    EXPECT_EQ(std::string(scene_page_title), std::string(40, 't'));
}

TEST_F(SceneLoadTest, a_loaded_page_is_unchanged_and_at_rest) {
    scene_changed = 1;
    scene_floor.inertia_x = scene_floor.inertia_y = 2.0f;
    scene_floor.inertia_frames = 9;
    EXPECT_EQ(load(page("4", "")), PAGE_LOADED);
    EXPECT_EQ(scene_changed, 0);
    EXPECT_EQ(scene_floor.inertia_x, 0.0f);
    EXPECT_EQ(scene_floor.inertia_y, 0.0f);
    EXPECT_EQ(scene_floor.inertia_frames, 0);
}

TEST_F(SceneLoadTest, a_page_that_cannot_be_written_is_reported) {
    EXPECT_EQ(xml_save_page(folder.file("none\\a.orvl").c_str()), 1);
}

TEST_F(SceneLoadTest, every_result_has_its_text) {
    EXPECT_STREQ(scene_load_message(PAGE_NOT_OPENED, ""), "Failed to open page file.");
    EXPECT_STREQ(scene_load_message(PAGE_NEWER, ""),
                 "Failed to load page file.  It apears to be from a newer version of Orvanel.");
    EXPECT_STREQ(scene_load_message(PAGE_NOT_A_PAGE, ""),
                 "Failed to load page file.  It does not apear to be a valid Orvanel file.");
    EXPECT_STREQ(scene_load_message(PAGE_SYNTAX, ""),
                 "The page file contains syntax errors and will not be loaded.");
    EXPECT_STREQ(scene_load_message(PAGE_TOO_MANY, SCENE_TOO_MANY_ON_HOME),
                 "The Home Page (home.orvl) contains too many items and cannot be loaded.");
    EXPECT_STREQ(scene_load_message(PAGE_TOO_MANY, SCENE_TOO_MANY_ON_PAGE),
                 "The page file contains too many items and cannot be loaded.");
    EXPECT_STREQ(scene_load_message(77, ""), "Failed to load page file.");
}
