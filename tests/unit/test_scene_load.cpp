#include "scene/scene_page.h"

#include "assets/model.h"
#include "page/options.h"
#include "page/page_file.h"
#include "platform/locations.h"
#include "platform/text.h"
#include "tests/support/test_folder.h"

#include <gtest/gtest.h>

// A page folder and a models folder of its own, an empty scene, and a page shown before that would
// betray itself where something carries over.
struct SceneLoadTest : testing::Test {
    TestFolder folder;

    SceneLoadTest() {
        text_copy(page_dir_location, folder.path);
        text_copy(object_dir_location, folder.path);
        options_set_defaults();
        model_init();
        node_init_nodes();
        template_object_init();
        node_total = 0;
        line_init();
        scene_stack_depth = 0;
        scene_floor = {};
    }
    ~SceneLoadTest() override {
        node_free_nodes();
        template_object_free();
        template_object.empty = 1;
        model_unload_models();
        models_total = 0;
        node_total = 0;
        line_init();
        page_dir_location[0] = object_dir_location[0] = '\0';
    }
};

static std::string page(const char *version, const std::string &content) {
    return std::string("<page>\n\t<offv>") + version + "</offv>\n" + content + "</page>\n";
}

static std::string text_element(const char *tag, const std::string &text) {
    return std::string("<") + tag + ">" + text + "</" + tag + ">\n";
}

static std::string object_fields(const std::string &name) {
    return text_element("name", name) + text_element("description", "about " + name) +
           text_element("x_position", "1.50") + text_element("y_position", "-2.00") +
           text_element("model", "none.obj");
}

static std::string typed(const char *type, const std::string &content) {
    return std::string("<node>\n") + text_element("type", type) + content + "</node>\n";
}

static std::string object(const std::string &name, const std::string &actions = "") {
    return typed("object", object_fields(name) + actions);
}

static std::string label(const std::string &text) {
    return typed("label", text_element("text", text) + text_element("x_position", "3") +
                              text_element("y_position", "4"));
}

static std::string link_node(const char *from, const char *to) {
    return typed("link", text_element("from_id", from) + text_element("to_id", to));
}

static std::string old_actions(const char *name1, const char *command1, const char *name2,
                               const char *command2, const char *name3, const char *command3) {
    return text_element("action_1_name", name1) + text_element("action_1", command1) +
           text_element("action_2_name", name2) + text_element("action_2", command2) +
           text_element("action_3_name", name3) + text_element("action_3", command3);
}

static std::string command(const std::string &name, const std::string &text,
                           const std::string &icon) {
    return std::string("<action>\n") + text_element("type", "command") +
           text_element("owner", "2") + text_element("name", name) + text_element("command", text) +
           text_element("icon", icon) + "</action>\n";
}

static std::uint32_t load(const std::string &bytes) {
    return scene_load_page_memory({bytes.data(), bytes.size()}, "test.orvl", "Test");
}

static std::string without(std::string text, const char *tag) {
    const std::size_t begin = text.find(std::string("<") + tag + ">");
    return text.erase(begin, text.find('\n', begin) + 1 - begin);
}

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

TEST_F(SceneLoadTest, the_colour_of_the_page_before_is_remembered) {
    scene_floor.colour = {1, 0.25f, 0.5f, 0.75f, 0.6f};
    EXPECT_EQ(load(page("4", properties(colour("0.1", "0.2", "0.3")))), PAGE_LOADED);
    EXPECT_EQ(scene_floor.previous_colour.use_default, 1);
    EXPECT_EQ(scene_floor.previous_colour.red, 0.25f);
    EXPECT_EQ(scene_floor.previous_colour.green, 0.5f);
    EXPECT_EQ(scene_floor.previous_colour.blue, 0.75f);
    EXPECT_EQ(scene_floor.previous_colour.alpha, 0.6f);
}

// ---- objects

TEST_F(SceneLoadTest, an_object_is_read_with_all_its_fields) {
    node[0].height = 3.0f;
    EXPECT_EQ(load(page("4", object("Server"))), PAGE_LOADED);
    ASSERT_EQ(node_total, 1);
    EXPECT_EQ(node[0].type, NODE_OBJECT);
    EXPECT_STREQ(node[0].name, "Server");
    EXPECT_STREQ(node[0].description, "about Server");
    EXPECT_EQ(node[0].x, 1.5f);
    EXPECT_EQ(node[0].y, -2.0f);
    EXPECT_EQ(node[0].grab_x, 1.5f);
    EXPECT_EQ(node[0].grab_y, -2.0f);
    EXPECT_EQ(node[0].height, 10.0f);
    EXPECT_EQ(node[0].model_id, 0);
    EXPECT_EQ(node[0].dimensions[EXTENT_LEFT], models[0].min_x);
    EXPECT_EQ(node[0].dimensions[EXTENT_TOP], models[0].max_z);
    EXPECT_EQ(node[0].action_count, 0);
    EXPECT_EQ(scene_page_hosts_total, 1);
    EXPECT_EQ(scene_page_links_total, 0);
}

TEST_F(SceneLoadTest, a_model_of_the_models_folder_is_loaded_once) {
    folder.write("none.obj", "v 0 0 0\nv 5 0 0\nv 0 1 0\nvn 0 0 1\nf 1//1 2//1 3//1\n");
    EXPECT_EQ(load(page("4", object("a") + object("b"))), PAGE_LOADED);
    EXPECT_EQ(models_total, 2);
    EXPECT_EQ(node[0].model_id, 1);
    EXPECT_EQ(node[1].model_id, 1);
    EXPECT_EQ(node[1].dimensions[EXTENT_RIGHT], 5.5f);
}

TEST_F(SceneLoadTest, a_missing_required_field_of_an_object_is_a_syntax_error) {
    for (const char *tag : {"name", "description", "x_position", "y_position", "model"}) {
        EXPECT_EQ(load(page("4", label("x") + without(object("a"), tag))), PAGE_SYNTAX) << tag;
        EXPECT_EQ(node_total, 0);
        EXPECT_EQ(node_label_total, 0);
    }
}

TEST_F(SceneLoadTest, a_syntax_error_empties_the_links_as_well) {
    EXPECT_EQ(load(page("4", link_node("0", "1") + without(object("a"), "model"))), PAGE_SYNTAX);
    EXPECT_EQ(line_total, 0);
}

TEST_F(SceneLoadTest, a_name_behind_the_description_is_a_syntax_error) {
    const std::string swapped =
        typed("object", text_element("description", "d") + text_element("name", "n") +
                            text_element("x_position", "0") + text_element("y_position", "0") +
                            text_element("model", ""));
    EXPECT_EQ(load(page("4", swapped)), PAGE_SYNTAX);
}

TEST_F(SceneLoadTest, a_field_of_the_next_node_is_not_taken_for_a_missing_one) {
    EXPECT_EQ(load(page("4", without(object("a"), "description") + object("b"))), PAGE_SYNTAX);
}

TEST_F(SceneLoadTest, texts_are_cut_at_their_fields) {
    const std::string longest = std::string(300, 'x');
    EXPECT_EQ(
        load(page("4",
                  typed("object",
                        text_element("name", longest) + text_element("description", longest) +
                            text_element("x_position", "0") + text_element("y_position", "0") +
                            text_element("model", longest) + command(longest, longest, longest)))),
        PAGE_LOADED);
    EXPECT_EQ(std::string(node[0].name), std::string(30, 'x'));
    EXPECT_EQ(std::string(node[0].description), std::string(50, 'x'));
    EXPECT_EQ(std::string(node[0].actions[0]->name), std::string(60, 'x'));
    EXPECT_EQ(std::string(node[0].actions[0]->command), std::string(260, 'x'));
    EXPECT_EQ(std::string(node[0].actions[0]->icon), std::string(260, 'x'));
}

TEST_F(SceneLoadTest, a_name_holding_a_bracket_reloads_cut_at_it) {
    node_init_node(0);
    node[0].type = NODE_OBJECT;
    text_copy(node[0].name, "a<b");
    node_total = 1;
    EXPECT_EQ(xml_save_page("a.orvl"), 0);
    EXPECT_EQ(scene_load_page("a.orvl", "A"), PAGE_LOADED);
    ASSERT_EQ(node_total, 1);
    EXPECT_STREQ(node[0].name, "a");
}

// ---- actions

TEST_F(SceneLoadTest, actions_of_every_kind_are_read) {
    EXPECT_EQ(load(page("4", object("a", command("Ping", "ping $NAME", "ping.exe") + "<action>\n" +
                                             text_element("type", "separator") +
                                             text_element("owner", "5") + "</action>\n<action>\n" +
                                             text_element("type", "submenu") +
                                             text_element("name", "More") + "</action>\n"))),
              PAGE_LOADED);
    ASSERT_EQ(node[0].action_count, 3);
    EXPECT_EQ(node[0].actions[0]->type, ACTION_COMMAND);
    EXPECT_EQ(node[0].actions[0]->owner, 2);
    EXPECT_STREQ(node[0].actions[0]->name, "Ping");
    EXPECT_STREQ(node[0].actions[0]->command, "ping $NAME");
    EXPECT_STREQ(node[0].actions[0]->icon, "ping.exe");
    EXPECT_EQ(node[0].actions[1]->type, ACTION_SEPARATOR);
    EXPECT_EQ(node[0].actions[1]->owner, 5);
    EXPECT_EQ(node[0].actions[2]->type, ACTION_SUBMENU);
    EXPECT_STREQ(node[0].actions[2]->name, "More");
}

TEST_F(SceneLoadTest, a_51st_action_is_left_out) {
    std::string actions;
    for (int i = 0; i < 53; i++)
        actions += command(std::string("c") + std::to_string(i), "x", "y");
    EXPECT_EQ(load(page("4", object("a", actions) + object("b"))), PAGE_LOADED);
    ASSERT_EQ(node_total, 2);
    EXPECT_EQ(node[0].action_count, 50);
    EXPECT_STREQ(node[0].actions[49]->name, "c49");
    EXPECT_STREQ(node[1].name, "b");
}

TEST_F(SceneLoadTest, an_action_without_an_icon_takes_the_icon_of_the_next_one_that_has_one) {
    std::string bare = command("a", "x", "");
    bare = without(bare, "icon");
    EXPECT_EQ(load(page("4", object("a", bare + command("b", "y", "b.ico")))), PAGE_LOADED);
    EXPECT_STREQ(node[0].actions[0]->icon, "b.ico");
    EXPECT_EQ(node[0].action_count, 1);
}

TEST_F(SceneLoadTest, an_action_of_an_unknown_word_keeps_its_place_and_its_record) {
    EXPECT_EQ(load(page("4", object("a", command("old", "x", "y")))), PAGE_LOADED);
    EXPECT_EQ(load(page("4", object("a", std::string("<action>\n") + text_element("type", "magic") +
                                             "</action>\n" + command("b", "x", "y")))),
              PAGE_LOADED);
    ASSERT_EQ(node[0].action_count, 2);
    EXPECT_STREQ(node[0].actions[0]->name, "old");
    EXPECT_STREQ(node[0].actions[1]->name, "b");
}

TEST_F(SceneLoadTest, a_command_that_lacks_its_text_does_not_show_that_of_another_page) {
    EXPECT_EQ(load(page("4", object("a", command("old", "format c:", "old.ico")))), PAGE_LOADED);
    EXPECT_EQ(load(page("4", object("a", std::string("<action>\n") +
                                             text_element("type", "command") + "</action>\n"))),
              PAGE_LOADED);
    EXPECT_EQ(node[0].actions[0]->owner, 0);
    EXPECT_STREQ(node[0].actions[0]->name, "");
    EXPECT_STREQ(node[0].actions[0]->command, "");
    EXPECT_STREQ(node[0].actions[0]->icon, "");
}

TEST_F(SceneLoadTest, older_pages_hold_three_pairs_of_actions) {
    EXPECT_EQ(load(page("3", object("a", old_actions("One", "one.exe", "", "two.exe", "Three",
                                                     "three.exe")))),
              PAGE_LOADED);
    ASSERT_EQ(node[0].action_count, 3);
    EXPECT_STREQ(node[0].actions[0]->name, "One");
    EXPECT_STREQ(node[0].actions[1]->name, "");
    EXPECT_STREQ(node[0].actions[1]->command, "two.exe");
    EXPECT_EQ(node[0].actions[2]->type, ACTION_COMMAND);
    EXPECT_EQ(node[0].actions[2]->owner, 0);
    EXPECT_STREQ(node[0].actions[2]->icon, "");
}

TEST_F(SceneLoadTest, an_older_pair_with_a_name_and_no_command_is_written_over_by_the_next) {
    EXPECT_EQ(load(page("3", object("a", old_actions("One", "", "Two", "two.exe", "", "")))),
              PAGE_LOADED);
    ASSERT_EQ(node[0].action_count, 1);
    EXPECT_STREQ(node[0].actions[0]->name, "Two");
    EXPECT_EQ(load(page("3", object("a", old_actions("One", "", "", "two.exe", "", "")))),
              PAGE_LOADED);
    ASSERT_EQ(node[0].action_count, 1);
    EXPECT_STREQ(node[0].actions[0]->name, "One");
}

TEST_F(SceneLoadTest, an_older_object_that_lacks_a_pair_is_a_syntax_error) {
    const std::string whole = object("a", old_actions("", "", "", "", "", ""));
    EXPECT_EQ(load(page("3", whole)), PAGE_LOADED);
    for (const char *tag :
         {"action_1_name", "action_1", "action_2_name", "action_3_name", "action_3"})
        EXPECT_EQ(load(page("3", without(whole, tag))), PAGE_SYNTAX) << tag;
}

// ---- page objects

TEST_F(SceneLoadTest, a_page_object_keeps_its_sub_page_as_the_command_of_action_0) {
    EXPECT_EQ(load(page("4", typed("page",
                                   object_fields("Sub") + text_element("page_file", "sub.orvl")))),
              PAGE_LOADED);
    ASSERT_EQ(node_total, 1);
    EXPECT_EQ(node[0].type, NODE_PAGE);
    EXPECT_EQ(node[0].action_count, 1);
    EXPECT_EQ(node[0].actions[0]->type, ACTION_COMMAND);
    EXPECT_STREQ(node[0].actions[0]->command, "sub.orvl");
    EXPECT_EQ(scene_page_links_total, 1);
    EXPECT_EQ(scene_page_hosts_total, 0);
}

TEST_F(SceneLoadTest, a_version_4_page_object_without_its_page_file_is_a_syntax_error) {
    EXPECT_EQ(
        load(page("4", typed("page", object_fields("Sub") + text_element("action", "sub.orvl")))),
        PAGE_SYNTAX);
    EXPECT_EQ(node_total, 0);
}

TEST_F(SceneLoadTest, an_older_page_object_names_its_page_in_an_action) {
    EXPECT_EQ(
        load(page("3", typed("page", object_fields("Sub") + text_element("action", "sub.xml")))),
        PAGE_LOADED);
    EXPECT_STREQ(node[0].actions[0]->command, "sub.xml");
    EXPECT_EQ(load(page("3", typed("page",
                                   object_fields("Sub") + text_element("page_file", "sub.orvl")))),
              PAGE_SYNTAX);
}

TEST_F(SceneLoadTest, a_page_object_that_lacks_a_field_is_a_syntax_error) {
    const std::string whole =
        typed("page", object_fields("Sub") + text_element("page_file", "sub.orvl"));
    for (const char *tag : {"name", "description", "x_position", "y_position", "model"})
        EXPECT_EQ(load(page("4", without(whole, tag))), PAGE_SYNTAX) << tag;
}

// ---- labels

TEST_F(SceneLoadTest, labels_are_named_by_their_number_on_the_page) {
    EXPECT_EQ(load(page("4", label("first") + object("a") + label(std::string(60, 'x')))),
              PAGE_LOADED);
    ASSERT_EQ(node_total, 3);
    EXPECT_EQ(node[0].type, NODE_LABEL);
    EXPECT_STREQ(node[0].name, "_lbl0lbl_");
    EXPECT_STREQ(node[0].description, "first");
    EXPECT_EQ(node[0].x, 3.0f);
    EXPECT_EQ(node[0].y, 4.0f);
    EXPECT_STREQ(node[2].name, "_lbl1lbl_");
    EXPECT_EQ(std::string(node[2].description), std::string(50, 'x'));
    EXPECT_EQ(node_label_total, 2);
    EXPECT_EQ(load(page("4", label("again"))), PAGE_LOADED);
    EXPECT_STREQ(node[0].name, "_lbl0lbl_");
}

TEST_F(SceneLoadTest, a_label_that_lacks_a_field_is_a_syntax_error) {
    for (const char *tag : {"text", "x_position", "y_position"})
        EXPECT_EQ(load(page("4", without(label("a"), tag))), PAGE_SYNTAX) << tag;
}

// ---- links

TEST_F(SceneLoadTest, a_link_to_a_node_that_does_not_exist_is_accepted_as_it_stands) {
    EXPECT_EQ(load(page("4", object("a") + object("b") + object("c") + link_node("7", "1") +
                                 link_node("-5", "999999"))),
              PAGE_LOADED);
    ASSERT_EQ(line_total, 2);
    EXPECT_EQ(line[0].from, 7);
    EXPECT_EQ(line[0].to, 1);
    EXPECT_EQ(line[1].from, -5);
    EXPECT_EQ(line[1].to, 999999);
}

TEST_F(SceneLoadTest, a_link_between_the_same_two_ends_is_not_created_twice) {
    EXPECT_EQ(load(page("4", link_node("0", "1") + link_node("1", "0") + link_node("0", "1"))),
              PAGE_LOADED);
    EXPECT_EQ(line_total, 1);
}

TEST_F(SceneLoadTest, a_link_that_lacks_an_end_is_a_syntax_error) {
    EXPECT_EQ(load(page("4", without(link_node("0", "1"), "from_id"))), PAGE_SYNTAX);
    EXPECT_EQ(load(page("4", without(link_node("0", "1"), "to_id"))), PAGE_SYNTAX);
}

TEST_F(SceneLoadTest, an_older_line_joins_the_nodes_read_so_far_by_name) {
    const auto line_node = [](const char *from, const char *to) {
        return typed("line", text_element("from", from) + text_element("to", to));
    };
    EXPECT_EQ(load(page("4", object("a") + object("b") + line_node("a", "b") + line_node("b", "c") +
                                 line_node("b", "a") + object("c"))),
              PAGE_LOADED);
    ASSERT_EQ(line_total, 1);
    EXPECT_EQ(line[0].from, 0);
    EXPECT_EQ(line[0].to, 1);
    EXPECT_EQ(load(page("4", without(line_node("a", "b"), "from"))), PAGE_SYNTAX);
    EXPECT_EQ(load(page("4", without(line_node("a", "b"), "to"))), PAGE_SYNTAX);
}

TEST_F(SceneLoadTest, links_beyond_the_table_are_dropped) {
    std::string links;
    for (int i = 0; i < 300; i++)
        links += link_node(std::to_string(i).c_str(), "1000");
    EXPECT_EQ(load(page("4", links)), PAGE_LOADED);
    EXPECT_EQ(line_total, LINE_CAPACITY);
}

// ---- other nodes

TEST_F(SceneLoadTest, nodes_of_an_unknown_type_or_of_none_are_skipped) {
    EXPECT_EQ(load(page("4", typed("Object", object_fields("a")) + typed("", object_fields("b")) +
                                 std::string("<node>\n") + object_fields("c") + "</node>\n" +
                                 object("d"))),
              PAGE_LOADED);
    ASSERT_EQ(node_total, 1);
    EXPECT_STREQ(node[0].name, "d");
}

TEST_F(SceneLoadTest, an_object_whose_last_value_reads_link_stays_an_object) {
    EXPECT_EQ(load(page("4", object("a", command("x", "y", "link")) + object("b"))), PAGE_LOADED);
    EXPECT_EQ(node_total, 2);
}

TEST_F(SceneLoadTest, a_node_without_a_type_behind_the_value_link_is_read_as_a_link) {
    const std::string untyped = without(link_node("3", "4"), "type");
    EXPECT_EQ(load(page("4", object("a", command("x", "y", "link")) + untyped)), PAGE_LOADED);
    ASSERT_EQ(line_total, 1);
    EXPECT_EQ(line[0].to, 4);
    EXPECT_EQ(load(page("4", object("a", command("x", "y", "z")) + untyped)), PAGE_LOADED);
    EXPECT_EQ(line_total, 0);
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

TEST_F(SceneLoadTest, a_missing_xml_page_is_loaded_from_its_orvl_twin_and_takes_its_name) {
    folder.write("old.orvl", page("4", object("a")));
    EXPECT_EQ(scene_load_page("old.xml", "Old"), PAGE_LOADED);
    EXPECT_EQ(node_total, 1);
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
