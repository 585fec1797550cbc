#include "dialogs/rules/dialog_object_rules.h"

#include "assets/model.h"
#include "assets/object_files.h"
#include "dialogs/rules/action_tree.h"
#include "editing/undo.h"
#include "page/options.h"
#include "platform/text.h"
#include "scene/scene_page.h"
#include "tests/support/edit_stage.h"
#include "tests/unit/all_trees.h"
#include "tests/unit/tree_text.h"

#include <gtest/gtest.h>

#include <string>

struct ObjectRules : testing::Test {
    EditStage stage;

    ObjectRules() {
        dialog_object_init();
        dialog_object_load_actions(nullptr);
    }
    ~ObjectRules() override {
        node_free_nodes();
        template_object_free();
    }
};

static const ObjectDetails PLAIN = {
    .name = "server", .description = "cellar", .model_entry = OBJECT_NONE};

// ---- what is edited

TEST_F(ObjectRules, any_index_that_is_no_node_means_a_new_object) {
    stage_add_object("a", 0.0f, 0.0f);
    for (const std::int32_t index : {-1, 1, 255, -2}) {
        dialog_object_set_node(index);
        EXPECT_FALSE(dialog_object_edits_node());
        EXPECT_STREQ(dialog_object_title(), "New Object");
    }
    dialog_object_set_node(0);
    EXPECT_TRUE(dialog_object_edits_node());
    EXPECT_STREQ(dialog_object_title(), "Object Properties");
    EXPECT_EQ(dialog_object_source(), &node[0]);
}

TEST_F(ObjectRules, a_new_object_begins_with_what_the_template_has) {
    dialog_object_set_node(-1);
    EXPECT_EQ(dialog_object_source(), nullptr);
    stage_add_object("Template", 0.0f, 0.0f, 2);
    template_object_load();
    ASSERT_EQ(dialog_object_source(), &template_object.node);
    dialog_object_load_actions(dialog_object_source());
    EXPECT_EQ(dialog_options_action_total, 2);
    dialog_object_apply(PLAIN);
    EXPECT_EQ(node[1].action_count, 2);
    EXPECT_STREQ(node[1].actions[1]->command, "command 2");
    EXPECT_NE(node[1].actions[0], template_object.node.actions[0]);
}

// ---- OK

TEST_F(ObjectRules, a_new_object_stands_at_the_stored_point_plus_the_floors_offset) {
    scene_floor.position_x = 30.0f;
    scene_floor.position_y = -20.0f;
    dialog_object_set_mouse(4.0f, 5.0f);
    dialog_object_set_node(-1);
    EXPECT_EQ(dialog_object_apply(PLAIN), 0);
    ASSERT_EQ(node_total, 1);
    EXPECT_EQ(node[0].type, NODE_OBJECT);
    EXPECT_STREQ(node[0].name, "server");
    EXPECT_STREQ(node[0].description, "cellar");
    EXPECT_EQ(node[0].x, 34.0f);
    EXPECT_EQ(node[0].y, -15.0f);
    EXPECT_EQ(node[0].grab_x, 34.0f);
    EXPECT_EQ(node[0].height, NODE_REST_HEIGHT);
    EXPECT_EQ(node[0].dimensions[EXTENT_LEFT], models[0].min_x);
    EXPECT_EQ(node[0].dimensions[EXTENT_RIGHT], models[0].max_x);
}

TEST_F(ObjectRules, a_new_object_keeps_nothing_of_the_node_that_was_in_its_place) {
    stage_add_object("old", 1.0f, 2.0f, 3);
    node[0].move_dx = node[0].move_dy = 7.0f;
    node[0].label_depth = 3;
    node[0].angle = 90.0f;
    node_delete_node(0);
    dialog_object_apply(PLAIN);
    EXPECT_EQ(node[0].move_dx, 0.0f);
    EXPECT_EQ(node[0].move_dy, 0.0f);
    EXPECT_EQ(node[0].label_depth, 0);
    EXPECT_EQ(node[0].angle, 0.0f);
    EXPECT_EQ(node[0].action_count, 0);
}

TEST_F(ObjectRules, a_new_object_with_no_actions_saved_from_an_empty_tree_gets_action_count_0) {
    EXPECT_EQ(dialog_object_apply(PLAIN), 0);
    EXPECT_EQ(node[0].action_count, 0);
}

TEST_F(ObjectRules, a_name_longer_than_30_characters_is_cut_at_30_on_OK_and_a_description_at_50) {
    const std::string name(31, 'n'), description(51, 'd');
    dialog_object_apply(
        {.name = name.c_str(), .description = description.c_str(), .model_entry = OBJECT_NONE});
    EXPECT_EQ(node[0].name, std::string(30, 'n'));
    EXPECT_EQ(node[0].description, std::string(50, 'd'));
}

TEST_F(ObjectRules, an_edited_object_takes_the_entries_and_stays_where_it_is) {
    stage_add_object("a", 1.0f, 2.0f, 2);
    stage_add_object("b", 3.0f, 4.0f);
    dialog_object_set_node(0);
    dialog_object_set_mouse(50.0f, 60.0f);
    dialog_object_load_actions(dialog_object_source());
    dialog_object_delete_action();
    EXPECT_EQ(dialog_object_apply(PLAIN), 0);
    EXPECT_EQ(node_total, 2);
    EXPECT_STREQ(node[0].name, "server");
    EXPECT_EQ(node[0].x, 1.0f);
    EXPECT_EQ(node[0].y, 2.0f);
    ASSERT_EQ(node[0].action_count, 1);
    EXPECT_STREQ(node[0].actions[0]->command, "command 2");
    EXPECT_STREQ(node[1].name, "b");
}

TEST_F(ObjectRules, all_actions_can_be_taken_from_an_object) {
    stage_add_object("a", 0.0f, 0.0f, 1);
    dialog_object_set_node(0);
    dialog_object_load_actions(dialog_object_source());
    dialog_object_delete_action();
    dialog_object_apply(PLAIN);
    EXPECT_EQ(node[0].action_count, 0);
}

// All of them on one page.
TEST_F(ObjectRules, the_page_file_keeps_every_small_tree_of_actions) {
    const std::vector<std::string> trees = all_trees();
    for (const std::string &text : trees) {
        load_tree(text, "bdf");
        dialog_object_apply({.name = text.c_str(), .description = "", .model_entry = OBJECT_NONE});
    }
    ASSERT_EQ(xml_save_page("trees.orvl"), 0);
    ASSERT_EQ(scene_load_page("trees.orvl", ""), PAGE_LOADED);
    ASSERT_EQ(node_total, static_cast<std::int32_t>(TREES));
    for (std::int32_t i = 0; i < node_total; i++) {
        dialog_object_load_actions(&node[i]);
        EXPECT_EQ(tree_text(), trees[static_cast<std::size_t>(i)]);
        EXPECT_EQ(node[i].name, trees[static_cast<std::size_t>(i)]);
        for (std::int32_t action = 0; action < node[i].action_count; action++) {
            const bool second = action % 2 == 1;
            if (node[i].actions[action]->type != ACTION_SUBMENU) {
                EXPECT_EQ(node[i].actions[action]->type == ACTION_SEPARATOR, second);
            }
        }
    }
}

TEST_F(ObjectRules, the_template_object_is_read_again) {
    stage_add_object("Template", 0.0f, 0.0f);
    template_object_load();
    dialog_object_set_node(0);
    dialog_object_apply(
        {.name = "Template", .description = "new text", .model_entry = OBJECT_NONE});
    EXPECT_STREQ(template_object.node.description, "new text");
}

TEST_F(ObjectRules, the_256th_node_is_refused) {
    node_total = NODE_CAPACITY;
    EXPECT_EQ(dialog_object_apply(PLAIN), -1);
    EXPECT_EQ(node_total, NODE_CAPACITY);
    node_total = NODE_CAPACITY - 1;
    EXPECT_EQ(dialog_object_apply(PLAIN), NODE_CAPACITY - 1);
    EXPECT_EQ(node_total, NODE_CAPACITY);
    node_total = 0;
}

TEST_F(ObjectRules, opening_and_confirming_without_a_change_leaves_no_undo_entry) {
    stage_add_object("a", 0.0f, 0.0f, 2);
    text_copy(node[0].description, "text");
    undo_push();
    redo_reset();
    dialog_object_set_node(0);
    dialog_object_load_actions(dialog_object_source());
    dialog_object_apply({.name = "a", .description = "text", .model_entry = OBJECT_NONE});
    undo_duplicate_check(0);
    EXPECT_EQ(undo_total, 0);
}

TEST_F(ObjectRules, a_deleted_action_can_be_undone) {
    stage_add_object("a", 0.0f, 0.0f, 2);
    undo_push();
    redo_reset();
    dialog_object_set_node(0);
    dialog_object_load_actions(dialog_object_source());
    dialog_object_delete_action();
    dialog_object_apply({.name = "a", .description = "", .model_entry = OBJECT_NONE});
    undo_duplicate_check(0);
    EXPECT_EQ(undo_total, 1);
}

// ---- the model used last

// A catalogue of the built-in model and two that the table of models holds as 1 and 2.
struct ObjectModels : ObjectRules {
    ObjectModels() {
        object_files_total = 3;
        object_files[0] = object_files[1] = object_files[2] = {};
        text_copy(object_files[1].file, "one.obj");
        text_copy(object_files[2].file, "two.obj");
        models_total = 3;
        models[1] = models[2] = models[0];
        text_copy(models[1].file_name, "two.obj");
        text_copy(models[2].file_name, "one.obj");
        models[1].min_x = -9.0f;
        models[2].min_x = -8.0f;
        orvanel_options.remember_last_model = 1;
    }
    // The object or, without one, a new one takes the entry.
    static void choose(std::int32_t entry, std::int32_t id = DIALOG_OBJECT_NEW) {
        dialog_object_set_node(id);
        dialog_object_apply({.name = "a", .description = "", .model_entry = entry});
    }
    ~ObjectModels() override {
        models[1] = models[2] = {};
        models_total = 1;
        object_files_total = 0;
    }
};

TEST_F(ObjectModels, the_object_takes_the_model_of_the_entry_and_its_extents) {
    choose(1);
    EXPECT_EQ(node[0].model_id, 2);
    EXPECT_EQ(node[0].dimensions[EXTENT_LEFT], -8.0f);
    choose(2, 0);
    EXPECT_EQ(node[0].model_id, 1);
    EXPECT_EQ(node[0].dimensions[EXTENT_LEFT], -9.0f);
    choose(OBJECT_DEFAULT, 0);
    EXPECT_EQ(node[0].model_id, 0);
}

TEST_F(ObjectModels, an_edited_object_opens_with_its_own_model) {
    stage_add_object("a", 0.0f, 0.0f);
    choose(2);
    dialog_object_set_node(0);
    EXPECT_EQ(dialog_object_first_entry(), OBJECT_DEFAULT);
    node[0].model_id = 2;
    EXPECT_EQ(dialog_object_first_entry(), 1);
    EXPECT_EQ(dialog_object_first_model(), 2);
}

TEST_F(ObjectModels, a_new_object_opens_with_the_model_used_last_when_the_options_ask_for_it) {
    dialog_object_set_node(-1);
    orvanel_options.remember_last_model = 0;
    choose(2);
    EXPECT_EQ(dialog_object_last_model_used, OBJECT_NONE);
    orvanel_options.remember_last_model = 1;
    EXPECT_EQ(dialog_object_first_entry(), OBJECT_DEFAULT);
    choose(2);
    EXPECT_EQ(dialog_object_first_entry(), 2);
    orvanel_options.remember_last_model = 0;
    EXPECT_EQ(dialog_object_first_entry(), OBJECT_DEFAULT);
}

// ---- a template, and models that are not in the catalogue

struct ObjectTemplate : ObjectModels {
    ObjectTemplate() {
        stage_add_object("Template", 0.0f, 0.0f);
        node[0].model_id = 1;
        template_object_load();
        dialog_object_set_node(-1);
    }
};

TEST_F(ObjectTemplate, a_new_object_opens_with_its_model_unless_another_was_used_last) {
    EXPECT_EQ(dialog_object_first_entry(), 2);
    choose(1);
    EXPECT_EQ(dialog_object_first_entry(), 1);
}

TEST_F(ObjectTemplate, a_new_object_takes_its_model_also_when_that_is_not_in_the_catalogue) {
    text_copy(models[1].file_name, "elsewhere.obj");
    EXPECT_EQ(dialog_object_first_entry(), OBJECT_NONE);
    EXPECT_EQ(dialog_object_first_model(), 1);
    choose(OBJECT_NONE);
    EXPECT_EQ(node[1].model_id, 1);
    EXPECT_EQ(node[1].dimensions[EXTENT_LEFT], -9.0f);
}

TEST_F(ObjectModels, a_model_that_is_not_in_the_catalogue_stays_until_another_is_chosen) {
    stage_add_object("a", 0.0f, 0.0f);
    node[0].model_id = 2;
    text_copy(models[2].file_name, "elsewhere.obj");
    dialog_object_set_node(0);
    EXPECT_EQ(dialog_object_first_entry(), OBJECT_NONE);
    EXPECT_EQ(dialog_object_first_model(), 2);
    choose(OBJECT_NONE, 0);
    EXPECT_EQ(node[0].model_id, 2);
    EXPECT_EQ(node[0].dimensions[EXTENT_LEFT], -8.0f);
    choose(OBJECT_DEFAULT, 0);
    EXPECT_EQ(node[0].model_id, 0);
}

TEST_F(ObjectModels, a_model_that_merely_stayed_is_not_the_one_used_last) {
    choose(2);
    choose(OBJECT_NONE);
    EXPECT_EQ(dialog_object_last_model_used, 2);
}

TEST_F(ObjectModels, an_entry_that_the_catalogue_does_not_hold_leaves_the_model) {
    choose(1);
    for (const std::int32_t entry : {OBJECT_NONE, object_files_total, 100000}) {
        choose(entry, 0);
        EXPECT_EQ(node[0].model_id, 2);
        EXPECT_EQ(dialog_object_last_model_used, 1);
    }
}
