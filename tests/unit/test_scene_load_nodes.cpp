#include "scene_load_fixture.h"

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

static std::string page_object() {
    return typed("page", object_fields("Sub") + text_element("page_file", "sub.orvl"));
}

TEST_F(SceneLoadTest, broken_objects_are_counted_and_broken_page_objects_are_not) {
    EXPECT_EQ(load(page("4", object("a") + without(object("b"), "name"))), PAGE_SYNTAX);
    EXPECT_EQ(scene_page_hosts_total, 2);
    EXPECT_EQ(load(page("4", page_object() + without(page_object(), "name"))), PAGE_SYNTAX);
    EXPECT_EQ(scene_page_links_total, 1);
}

TEST_F(SceneLoadTest, every_page_is_counted_from_nothing) {
    EXPECT_EQ(load(page("4", object("a") + page_object() + object("b"))), PAGE_LOADED);
    EXPECT_EQ(scene_page_hosts_total, 2);
    EXPECT_EQ(scene_page_links_total, 1);
    EXPECT_EQ(load(page("4", "")), PAGE_LOADED);
    EXPECT_EQ(scene_page_hosts_total, 0);
    EXPECT_EQ(scene_page_links_total, 0);
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

TEST_F(SceneLoadTest, a_submenu_stands_at_the_top_level_whatever_the_slot_held) {
    EXPECT_EQ(load(page("4", object("a", command("old", "x", "y")))), PAGE_LOADED);
    ASSERT_EQ(node[0].actions[0]->owner, 2);
    EXPECT_EQ(
        load(page("4", object("a", std::string("<action>\n") + text_element("type", "submenu") +
                                       text_element("name", "More") + "</action>\n"))),
        PAGE_LOADED);
    EXPECT_EQ(node[0].actions[0]->owner, 0);
}

TEST_F(SceneLoadTest, an_older_page_does_not_show_names_and_icons_of_the_page_before) {
    const std::string three = command("old", "x", "old.ico") + command("old", "x", "old.ico") +
                              command("old", "x", "old.ico");
    EXPECT_EQ(load(page("4", object("a", three))), PAGE_LOADED);
    EXPECT_EQ(load(page("3", object("a", old_actions("", "one.exe", "", "two.exe", "", "")))),
              PAGE_LOADED);
    ASSERT_EQ(node[0].action_count, 2);
    for (std::int32_t i = 0; i < 2; i++) {
        EXPECT_STREQ(node[0].actions[i]->name, "") << i;
        EXPECT_STREQ(node[0].actions[i]->icon, "") << i;
    }
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
         {"action_1_name", "action_1", "action_2_name", "action_2", "action_3_name", "action_3"})
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

TEST_F(SceneLoadTest, a_page_object_has_no_name_and_icon_in_its_action_whatever_the_slot_held) {
    EXPECT_EQ(load(page("4", object("a", command("old", "x", "old.ico")))), PAGE_LOADED);
    EXPECT_EQ(load(page("4", page_object())), PAGE_LOADED);
    EXPECT_STREQ(node[0].actions[0]->name, "");
    EXPECT_STREQ(node[0].actions[0]->icon, "");
    EXPECT_EQ(node[0].actions[0]->owner, 0);
    EXPECT_STREQ(node[0].actions[0]->command, "sub.orvl");
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

TEST_F(SceneLoadTest, a_node_without_a_type_is_skipped_behind_the_value_of_any_other_word) {
    const std::string fields = object_fields("c") + text_element("page_file", "sub.orvl") +
                               text_element("from", "a") + text_element("to", "b");
    const std::string untyped_label = without(label("x"), "type");
    const std::string untyped = std::string("<node>\n") + fields + "</node>\n";
    const std::string untyped_line =
        std::string("<node>\n") + text_element("from", "a") + text_element("to", "b") + "</node>\n";
    for (const char *word : {"object", "page", "label", "line"}) {
        for (const std::string &node_text : {untyped, untyped_label, untyped_line}) {
            EXPECT_EQ(
                load(page("4", object("b") + object("a", command("x", "y", word)) + node_text)),
                PAGE_LOADED)
                << word;
            EXPECT_EQ(node_total, 2) << word;
            EXPECT_EQ(line_total, 0) << word;
        }
    }
}
