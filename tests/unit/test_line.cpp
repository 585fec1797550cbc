#include "page/node.h"

#include "platform/text.h"

#include <gtest/gtest.h>

struct LineTest : testing::Test {
    LineTest() {
        node_total = 0;
        line_init();
    }
    ~LineTest() override {
        node_total = 0;
        line_init();
    }
};

static void add_node(const char *name) {
    text_copy(node[node_total++].name, name);
}

TEST_F(LineTest, creating_a_link_b_a_when_a_b_exists_is_refused) {
    EXPECT_EQ(line_create_from_ids(1, 2), 0);
    EXPECT_EQ(line_create_from_ids(2, 1), 1);
    EXPECT_EQ(line_create_from_ids(1, 2), 1);
    EXPECT_EQ(line_total, 1);
}

TEST_F(LineTest, creating_a_link_from_a_node_to_itself_is_allowed) {
    EXPECT_EQ(line_create_from_ids(1, 1), 0);
    EXPECT_EQ(line_create_from_ids(1, 1), 1);
    EXPECT_EQ(line_total, 1);
}

TEST_F(LineTest, the_256th_link_is_refused) {
    for (std::int32_t i = 0; i < 255; i++)
        ASSERT_EQ(line_create_from_ids(i, i + 1), 0);
    EXPECT_EQ(line_create_from_ids(1000, 1001), 1);
    EXPECT_EQ(line_total, 255);
    add_node("a");
    EXPECT_EQ(line_create("a", "a"), 1);
}

TEST_F(LineTest, a_new_link_has_the_values_of_creation) {
    line[0] = Line{9, 9, {9.0f, 9.0f, 9.0f, 9.0f}, 9.0f, 9.0f};
    line_create_from_ids(4, 5);
    EXPECT_EQ(line[0].from, 4);
    EXPECT_EQ(line[0].to, 5);
    EXPECT_EQ(line[0].colour[0], 0.5f);
    EXPECT_EQ(line[0].colour[1], 0.5f);
    EXPECT_EQ(line[0].colour[2], 0.0f);
    EXPECT_EQ(line[0].colour[3], 1.0f);
    EXPECT_EQ(line[0].param, 0.0f);
    EXPECT_EQ(line[0].height_offset, 99.0f);
}

TEST_F(LineTest, a_link_by_names_needs_both_of_them) {
    add_node("a");
    add_node("b");
    EXPECT_EQ(line_create("a", "x"), 1);
    EXPECT_EQ(line_create("x", "b"), 1);
    EXPECT_EQ(line_create("b", "a"), 0);
    ASSERT_EQ(line_total, 1);
    EXPECT_EQ(line[0].from, 1);
    EXPECT_EQ(line[0].to, 0);
}

TEST_F(LineTest, deleting_a_link_moves_the_later_ones_down) {
    for (std::int32_t i = 0; i < 4; i++)
        line_create_from_ids(i, 10);
    line_delete_line(1);
    ASSERT_EQ(line_total, 3);
    EXPECT_EQ(line[0].from, 0);
    EXPECT_EQ(line[1].from, 2);
    EXPECT_EQ(line[2].from, 3);
}

TEST_F(LineTest, deleting_a_link_that_is_not_there_changes_nothing) {
    line_create_from_ids(1, 2);
    line_delete_line(1);
    line_delete_line(-1);
    EXPECT_EQ(line_total, 1);
}

TEST_F(LineTest, removing_the_links_of_a_node_takes_neighbours_in_the_table_as_well) {
    line_create_from_ids(1, 2);
    line_create_from_ids(3, 1);
    line_create_from_ids(1, 4);
    line_create_from_ids(3, 4);
    line_create_from_ids(1, 1);
    node_remove_lines(1);
    ASSERT_EQ(line_total, 1);
    EXPECT_EQ(line[0].from, 3);
    EXPECT_EQ(line[0].to, 4);
}

TEST_F(LineTest, a_node_with_links_answers_0_and_one_without_answers_1) {
    line_create_from_ids(1, 2);
    EXPECT_EQ(line_does_node_have_lines(1), 0);
    EXPECT_EQ(line_does_node_have_lines(2), 0);
    EXPECT_EQ(line_does_node_have_lines(3), 1);
}

TEST_F(LineTest, copying_a_link_takes_all_of_it) {
    line[1] = Line{1, 2, {0.1f, 0.2f, 0.3f, 0.4f}, 0.5f, 0.6f};
    line_copy_line(0, 1);
    EXPECT_EQ(line[0].to, 2);
    EXPECT_EQ(line[0].colour[3], 0.4f);
    EXPECT_EQ(line[0].param, 0.5f);
    EXPECT_EQ(line[0].height_offset, 0.6f);
}
