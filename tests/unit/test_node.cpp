#include "page/node.h"

#include "assets/model.h"
#include "platform/text.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

struct NodeTest : testing::Test {
    NodeTest() {
        node_init_nodes();
        node_total = 0;
        line_init();
    }
    ~NodeTest() override {
        node_free_nodes();
        node_total = 0;
        line_init();
    }
};

static void add_node(const char *name) {
    node_init_node(node_total);
    node[node_total].type = NODE_OBJECT;
    text_copy(node[node_total].name, name);
    node_total++;
}

static void give_actions(Node *record, std::int32_t count, const char *prefix) {
    for (std::int32_t i = 0; i < count; i++) {
        action_allocate_action(&record->actions[i]);
        record->actions[i]->type = ACTION_COMMAND;
        text_format(record->actions[i]->name, sizeof record->actions[i]->name, "%s%d", prefix, i);
    }
    record->action_count = count;
}

TEST_F(NodeTest, initialising_an_entry_sets_its_defaults) {
    Node *record = &node[5];
    record->x = 3.0f;
    record->y = 4.0f;
    record->grab_state = GRAB_GRABBED;
    record->action_count = 9;
    record->bounce_active = BOUNCE_SPIN;
    record->bounce_step = 4;
    record->height = record->scale = record->alpha = 0.5f;
    record->move_frames = record->inertia_frames = record->fade_state = record->pick_id = 1;
    record->inertia_dx = record->inertia_dy = 1.0f;
    for (float &dimension : record->dimensions)
        dimension = 1.0f;
    record->angle = record->angle_target = record->rotation_speed = record->rotation_step = 1.0f;
    record->collision_with = 2;
    node_init_node(5);
    EXPECT_EQ(record->grab_state, GRAB_IDLE);
    EXPECT_EQ(record->action_count, 0);
    EXPECT_EQ(record->bounce_active, BOUNCE_REST);
    EXPECT_EQ(record->bounce_step, 0);
    EXPECT_EQ(record->height, 10.0f);
    EXPECT_EQ(record->scale, 1.0f);
    EXPECT_EQ(record->alpha, 1.0f);
    EXPECT_EQ(record->grab_x, 3.0f);
    EXPECT_EQ(record->grab_y, 4.0f);
    EXPECT_EQ(record->move_frames, 0);
    EXPECT_EQ(record->collision_with, -1);
    EXPECT_EQ(record->inertia_dx, 0.0f);
    EXPECT_EQ(record->inertia_dy, 0.0f);
    EXPECT_EQ(record->inertia_frames, 0);
    for (const float dimension : record->dimensions)
        EXPECT_EQ(dimension, 0.0f);
    EXPECT_EQ(record->angle, 0.0f);
    EXPECT_EQ(record->angle_target, 0.0f);
    EXPECT_EQ(record->rotation_speed, 0.0f);
    EXPECT_EQ(record->rotation_step, 0.0f);
    EXPECT_EQ(record->fade_state, 0);
    EXPECT_EQ(record->pick_id, -2);
}

TEST_F(NodeTest, initialising_an_entry_leaves_what_its_page_sets) {
    Node *record = &node[5];
    record->type = NODE_LABEL;
    record->model_id = 7;
    record->x = 3.0f;
    record->y = 4.0f;
    record->move_dx = 5.0f;
    record->move_dy = 6.0f;
    record->label_depth = 8;
    text_copy(record->name, "name");
    text_copy(record->description, "text");
    give_actions(record, 1, "a");
    Action *action = record->actions[0];
    node_init_node(5);
    EXPECT_EQ(record->type, NODE_LABEL);
    EXPECT_EQ(record->model_id, 7);
    EXPECT_EQ(record->x, 3.0f);
    EXPECT_EQ(record->y, 4.0f);
    EXPECT_EQ(record->move_dx, 5.0f);
    EXPECT_EQ(record->move_dy, 6.0f);
    EXPECT_EQ(record->label_depth, 8);
    EXPECT_STREQ(record->name, "name");
    EXPECT_STREQ(record->description, "text");
    EXPECT_EQ(record->actions[0], action);
}

TEST_F(NodeTest, initialising_the_table_sets_every_entry_and_forgets_every_action) {
    std::vector<Action *> given;
    for (Node &record : node) {
        record.scale = 0.5f;
        give_actions(&record, NODE_ACTIONS, "a");
        given.insert(given.end(), record.actions, record.actions + NODE_ACTIONS);
    }
    node_init_nodes();
    for (const Node &record : node) {
        EXPECT_EQ(record.scale, 1.0f);
        for (const Action *slot : record.actions)
            EXPECT_EQ(slot, nullptr);
    }
    EXPECT_STREQ(given.back()->name, "a49"); // not freed
    for (Action *&action : given)
        action_free_action(&action);
}

TEST_F(NodeTest, freeing_the_nodes_frees_the_actions_of_every_entry) {
    for (Node &record : node)
        give_actions(&record, NODE_ACTIONS, "a");
    node_free_nodes();
    for (const Node &record : node) {
        for (const Action *slot : record.actions)
            EXPECT_EQ(slot, nullptr);
    }
}

TEST_F(NodeTest, a_name_that_two_nodes_share_returns_the_lower_index) {
    add_node("other");
    add_node("twin");
    add_node("twin");
    EXPECT_EQ(node_return_id("twin"), 1);
}

TEST_F(NodeTest, a_name_is_compared_by_case_and_only_among_live_nodes) {
    add_node("Server");
    add_node("gone");
    node_total = 1;
    EXPECT_EQ(node_return_id("server"), -1);
    EXPECT_EQ(node_return_id("Serve"), -1);
    EXPECT_EQ(node_return_id("gone"), -1);
    EXPECT_EQ(node_return_id("Server"), 0);
}

TEST_F(NodeTest, only_indices_below_the_total_are_live) {
    add_node("a");
    EXPECT_TRUE(node_is_live(0));
    EXPECT_FALSE(node_is_live(1));
    EXPECT_FALSE(node_is_live(-1));
}

TEST_F(NodeTest, dimensions_are_the_models_extents_in_their_order) {
    add_node("a");
    node[0].model_id = 2;
    Model &model = models[2];
    model.min_x = -1.0f;
    model.max_x = 2.0f;
    model.min_y = -3.0f;
    model.max_y = 4.0f;
    model.min_z = -5.0f;
    model.max_z = 6.0f;
    node_set_model_dimensions(0);
    EXPECT_EQ(node[0].dimensions[EXTENT_LEFT], -1.0f);
    EXPECT_EQ(node[0].dimensions[EXTENT_RIGHT], 2.0f);
    EXPECT_EQ(node[0].dimensions[EXTENT_NEAR], -3.0f);
    EXPECT_EQ(node[0].dimensions[EXTENT_FAR], 4.0f);
    EXPECT_EQ(node[0].dimensions[EXTENT_BOTTOM], -5.0f);
    EXPECT_EQ(node[0].dimensions[EXTENT_TOP], 6.0f);
}

TEST_F(NodeTest, slots_beyond_a_shorter_node_keep_their_records_and_are_used_again) {
    give_actions(&node[0], 5, "five");
    give_actions(&node[1], 2, "two");
    Action *third = node[0].actions[2];
    node_copy_node(0, 1);
    EXPECT_EQ(node[0].action_count, 2);
    EXPECT_STREQ(node[0].actions[1]->name, "two1");
    for (int slot = 2; slot < 5; slot++)
        EXPECT_NE(node[0].actions[slot], nullptr);
    action_allocate_action(&node[0].actions[2]);
    EXPECT_EQ(node[0].actions[2], third);
    EXPECT_STREQ(third->name, "five2");
    EXPECT_STREQ(node[0].actions[4]->name, "five4");
}

// Every field of the record gets a value of its own, so that one forgotten in the copy shows.
TEST_F(NodeTest, copying_takes_every_field) {
    Node source = {};
    source.type = 1;
    source.model_id = 2;
    source.grab_state = 4;
    text_copy(source.name, "name");
    text_copy(source.description, "description");
    source.pick_id = 5;
    source.bounce_active = 3;
    source.bounce_step = 6;
    float *const floats[] = {&source.x,
                             &source.y,
                             &source.height,
                             &source.scale,
                             &source.grab_x,
                             &source.grab_y,
                             &source.move_dx,
                             &source.move_dy,
                             &source.inertia_dx,
                             &source.inertia_dy,
                             &source.angle,
                             &source.angle_target,
                             &source.alpha,
                             &source.dimensions[0],
                             &source.dimensions[1],
                             &source.dimensions[2],
                             &source.dimensions[3],
                             &source.dimensions[4],
                             &source.dimensions[5],
                             &source.rotation_speed,
                             &source.rotation_step};
    float value = 10.5f;
    for (float *field : floats)
        *field = value++;
    source.move_frames = 7;
    source.collision_with = 8;
    source.inertia_frames = 9;
    source.label_depth = 11;
    source.fade_state = 2;
    Node target = {};
    node_copy_node2(&target, &source);
    EXPECT_EQ(std::memcmp(&target, &source, sizeof target), 0);
}

TEST_F(NodeTest, copying_gives_the_target_records_of_its_own) {
    Node source = {}, target = {};
    give_actions(&source, 50, "a");
    node_copy_node2(&target, &source);
    EXPECT_EQ(target.action_count, 50);
    EXPECT_NE(target.actions[49], source.actions[49]);
    EXPECT_STREQ(target.actions[49]->name, "a49");
    node_free_node_actions(&source);
    node_free_node_actions(&target);
}

TEST_F(NodeTest, copying_keeps_30_characters_of_the_name_and_50_of_the_description) {
    Node source = {}, target = {};
    text_copy(source.description, std::string(60, 'd').c_str());
    text_copy(source.name, std::string(30, 'n').c_str());
    node_copy_node2(&target, &source);
    EXPECT_EQ(std::string(target.description), std::string(50, 'd'));
    EXPECT_EQ(std::string(target.name), std::string(30, 'n'));
}

TEST_F(NodeTest, copying_leaves_out_a_slot_that_never_got_memory) {
    Node source = {}, target = {};
    source.action_count = 1;
    node_copy_node2(&target, &source);
    EXPECT_EQ(target.actions[0], nullptr);
}

TEST_F(NodeTest, copying_onto_itself_changes_nothing) {
    Node record = {};
    text_copy(record.name, "same");
    give_actions(&record, 1, "a");
    node_copy_node2(&record, &record);
    EXPECT_STREQ(record.name, "same");
    EXPECT_STREQ(record.actions[0]->name, "a0");
    node_free_node_actions(&record);
}

TEST_F(NodeTest, freeing_the_actions_clears_the_slots) {
    give_actions(&node[0], 3, "a");
    node_free_node_actions(&node[0]);
    EXPECT_EQ(node[0].actions[0], nullptr);
    EXPECT_EQ(node[0].actions[2], nullptr);
}

TEST_F(NodeTest, deleting_node_3_of_6_drops_the_link_2_3_and_turns_1_5_into_1_4) {
    for (const char *name : {"a", "b", "c", "d", "e", "f"})
        add_node(name);
    line_create_from_ids(1, 5);
    line_create_from_ids(2, 3);
    node_delete_node(3);
    EXPECT_EQ(node_total, 5);
    EXPECT_STREQ(node[2].name, "c");
    EXPECT_STREQ(node[3].name, "e");
    EXPECT_STREQ(node[4].name, "f");
    ASSERT_EQ(line_total, 1);
    EXPECT_EQ(line[0].from, 1);
    EXPECT_EQ(line[0].to, 4);
}

TEST_F(NodeTest, deleting_lowers_both_ends_of_links_behind_it_and_none_before_it) {
    for (const char *name : {"a", "b", "c", "d", "e", "f"})
        add_node(name);
    line_create_from_ids(3, 4);
    line_create_from_ids(5, 1);
    line_create_from_ids(0, 1);
    line_create_from_ids(255, -1); // of nodes that do not exist
    node_delete_node(2);
    ASSERT_EQ(line_total, 4);
    const std::int32_t expected[][2] = {{2, 3}, {4, 1}, {0, 1}, {254, -1}};
    for (std::int32_t i = 0; i < 4; i++) {
        EXPECT_EQ(line[i].from, expected[i][0]) << i;
        EXPECT_EQ(line[i].to, expected[i][1]) << i;
    }
}

TEST_F(NodeTest, deleting_moves_the_actions_down_with_their_node) {
    add_node("a");
    add_node("b");
    give_actions(&node[0], 3, "first");
    give_actions(&node[1], 1, "second");
    node_delete_node(0);
    EXPECT_EQ(node[0].action_count, 1);
    EXPECT_STREQ(node[0].actions[0]->name, "second0");
}

TEST_F(NodeTest, deleting_the_last_entry_only_lowers_the_count) {
    add_node("a");
    add_node("b");
    node_delete_node(1);
    EXPECT_EQ(node_total, 1);
    EXPECT_STREQ(node[0].name, "a");
    EXPECT_STREQ(node[1].name, "b");
}

TEST_F(NodeTest, deleting_the_only_entry_empties_the_table) {
    add_node("a");
    node_delete_node(0);
    EXPECT_EQ(node_total, 0);
}

TEST_F(NodeTest, deleting_from_a_full_table_stays_inside_it) {
    while (node_total < NODE_CAPACITY)
        add_node(std::to_string(node_total).c_str());
    node_delete_node(0);
    EXPECT_EQ(node_total, 254);
    EXPECT_STREQ(node[253].name, "254");
}

TEST_F(NodeTest, deleting_a_node_that_is_not_live_changes_nothing) {
    add_node("a");
    line_create_from_ids(0, 7);
    node_delete_node(1);
    node_delete_node(-1);
    node_delete_node(NODE_CAPACITY);
    EXPECT_EQ(node_total, 1);
    EXPECT_EQ(line_total, 1);
}
