#include "dialogs/rules/dialog_label_rules.h"

#include "dialogs/dialogs.h"
#include "editing/undo.h"
#include "platform/text.h"
#include "scene/gl_util.h"
#include "scene/interaction.h"
#include "scene/scene_page.h"
#include "tests/support/edit_stage.h"

#include <gtest/gtest.h>

#include <string>

struct LabelDialog : testing::Test {
    EditStage stage;

    void open(std::int32_t id) {
        dialog_node_id = id;
        undo_push();
        redo_reset();
    }
};

TEST_F(LabelDialog, A_new_label_has_its_title_and_an_empty_text) {
    stage_add_label("other", 10, 10);
    open(-1);
    EXPECT_STREQ(dialog_label_title(), "New Label");
    EXPECT_STREQ(dialog_label_text(), "");
}

TEST_F(LabelDialog, An_existing_label_has_its_title_and_shows_its_text) {
    stage_add_label("first", 10, 10);
    open(stage_add_label("second", 20, 10));
    EXPECT_STREQ(dialog_label_title(), "Label Properties");
    EXPECT_STREQ(dialog_label_text(), "second");
}

TEST_F(LabelDialog, OK_adds_a_label_with_its_text_and_an_internal_name) {
    stage_add_object("server", 30, 30);
    node_label_total = 7;
    open(-1);
    dialog_label_store("Rack 4");
    ASSERT_EQ(node_total, 2);
    EXPECT_EQ(node[1].type, NODE_LABEL);
    EXPECT_STREQ(node[1].description, "Rack 4");
    EXPECT_STREQ(node[1].name, "_lbl7lbl_");
    EXPECT_EQ(node_label_total, 8);
    EXPECT_EQ(node[1].action_count, 0);
}

TEST_F(LabelDialog, A_new_label_stands_where_the_menu_was_opened_also_on_a_scrolled_floor) {
    for (const float scroll : {0.0f, 25.0f}) {
        scene_floor.position_x = scroll;
        scene_floor.position_y = -scroll;
        pre_dialog_mouse = {150, 120};
        float x = 0.0f;
        float y = 0.0f;
        GetOGLPos(150, 120, &x, &y, gl_depth_of_zoom_level(DEPTH_LOOKUP_FLOOR));
        EXPECT_LT(x, -10.0f);
        open(-1);
        dialog_label_store("here");
        EXPECT_FLOAT_EQ(node[node_total - 1].x, x + scroll);
        EXPECT_FLOAT_EQ(node[node_total - 1].y, y - scroll);
        EXPECT_EQ(node[node_total - 1].grab_x, node[node_total - 1].x);
        EXPECT_EQ(node[node_total - 1].grab_y, node[node_total - 1].y);
    }
}

TEST_F(LabelDialog, The_text_is_cut_at_50_characters) {
    const std::string text(60, 'x');
    open(-1);
    dialog_label_store(text.c_str());
    EXPECT_EQ(node[0].description, text.substr(0, 50));
}

TEST_F(LabelDialog, OK_with_an_empty_text_creates_no_label_on_an_empty_page_or_a_full_one) {
    open(-1);
    dialog_label_store("");
    EXPECT_EQ(node_total, 0);
    EXPECT_EQ(node_label_total, 0);
    stage_add_object("server", 30, 30);
    open(-1);
    dialog_label_store("");
    EXPECT_EQ(node_total, 1);
    EXPECT_EQ(node_label_total, 0);
    EXPECT_STREQ(node[0].name, "server");
}

TEST_F(LabelDialog, OK_with_an_empty_text_leaves_an_existing_label_as_it_is) {
    const std::int32_t id = stage_add_label("stays", 10, 20);
    const std::string name = node[id].name;
    const std::int32_t counter = node_label_total;
    open(id);
    dialog_label_store("");
    EXPECT_STREQ(node[id].description, "stays");
    EXPECT_EQ(node[id].name, name);
    EXPECT_EQ(node_label_total, counter);
    EXPECT_EQ(node_total, 1);
}

TEST_F(LabelDialog,
       Every_stored_label_new_or_edited_takes_a_new_internal_name_and_advances_node_label_total) {
    open(-1);
    dialog_label_store("one");
    open(0);
    dialog_label_store("one again");
    EXPECT_STREQ(node[0].name, "_lbl1lbl_");
    EXPECT_EQ(node_label_total, 2);
    open(0);
    dialog_label_store("one again"); // the same text counts as well
    EXPECT_STREQ(node[0].name, "_lbl2lbl_");
    open(-1);
    dialog_label_store("two");
    EXPECT_STREQ(node[1].name, "_lbl3lbl_");
    EXPECT_EQ(node_label_total, 4);
}

TEST_F(LabelDialog, An_edited_label_keeps_its_place) {
    const std::int32_t id = stage_add_label("old", 10, 20);
    pre_dialog_mouse = {3, 3};
    open(id);
    dialog_label_store("new");
    EXPECT_STREQ(node[id].description, "new");
    EXPECT_EQ(node[id].x, 10.0f);
    EXPECT_EQ(node[id].y, 20.0f);
    EXPECT_EQ(node_total, 1);
}

TEST_F(LabelDialog, A_slot_that_held_a_grown_object_gives_a_label_at_rest) {
    node[0].scale = 1.4f;
    node[0].angle = 30.0f;
    node[0].action_count = 3;
    node[0].bounce_active = BOUNCE_SPIN;
    open(-1);
    dialog_label_store("fresh");
    EXPECT_EQ(node[0].scale, 1.0f);
    EXPECT_EQ(node[0].angle, 0.0f);
    EXPECT_EQ(node[0].action_count, 0);
    EXPECT_EQ(node[0].bounce_active, BOUNCE_REST);
}

TEST_F(LabelDialog, OK_forgets_what_could_be_redone_also_with_an_empty_text) {
    for (const char *text : {"", "text"}) {
        open(-1);
        redo_push();
        dialog_label_store(text);
        EXPECT_EQ(redo_total, 0) << text;
    }
}

TEST_F(LabelDialog, The_last_free_place_is_used_and_a_full_page_takes_no_more) {
    node_total = NODE_CAPACITY - 1;
    dialog_node_id = -1;
    dialog_label_store("last");
    EXPECT_EQ(node_total, NODE_CAPACITY);
    EXPECT_STREQ(node[NODE_CAPACITY - 1].description, "last");
    dialog_label_store("too many");
    EXPECT_EQ(node_total, NODE_CAPACITY);
    EXPECT_STREQ(node[NODE_CAPACITY - 1].description, "last");
}
