#include "tests/unit/edit_fixture.h"

#include <algorithm>
#include <climits>

struct Clipboard : Edit {
    Clipboard() {
        add_node(NODE_OBJECT, "server", 0.0f, 0.0f);
        text_copy(node[0].description, "in the cellar");
        add_action(0, "Ping", "ping $NAME");
        add_action(0, "Open", "c:\\open.exe");
        add_node(NODE_LABEL, "_lbl0lbl_", 30.0f, 0.0f);
        text_copy(node[1].description, "Cellar");
        stage_draw();
    }
};

// ---- filling

TEST_F(Clipboard, a_copy_is_the_object_with_actions_of_its_own) {
    clipboard_fill(0, CLIPBOARD_COPIED);
    EXPECT_EQ(clipboard_used, 1);
    text_copy(node[0].name, "renamed");
    text_copy(node[0].actions[0]->command, "changed");
    EXPECT_STREQ(clipboard.name, "server");
    EXPECT_STREQ(clipboard.actions[0]->command, "ping $NAME");
    EXPECT_EQ(clipboard.action_count, 2);
}

TEST_F(Clipboard, copying_and_pasting_take_no_snapshot) {
    clipboard_fill(0, CLIPBOARD_COPIED);
    clipboard_paste(0.0f, 0.0f);
    EXPECT_EQ(undo_total, 0);
}

TEST_F(Clipboard, filling_it_from_no_node_leaves_it_as_it_is) {
    for (const std::int32_t id : {-1, 2, 255, INT_MAX, INT_MIN})
        clipboard_fill(id, CLIPBOARD_COPIED);
    EXPECT_EQ(clipboard_used, 0);
}

TEST_F(Clipboard, it_outlives_a_page_change) {
    clipboard_fill(0, CLIPBOARD_COPIED);
    folder.write("other.orvl", "<page>\n<offv>004</offv>\n</page>\n");
    ASSERT_EQ(scene_load_page("other.orvl", "Other"), 0u);
    clipboard_paste(1.0f, 2.0f);
    ASSERT_EQ(node_total, 1);
    EXPECT_STREQ(node[0].name, "server");
    EXPECT_STREQ(node[0].actions[1]->command, "c:\\open.exe");
}

// ---- pasting

TEST_F(Clipboard, an_empty_clipboard_pastes_nothing) {
    clipboard_paste(0.0f, 0.0f);
    EXPECT_EQ(node_total, 2);
}

TEST_F(Clipboard, a_pasted_object_keeps_its_name_and_has_actions_of_its_own) {
    clipboard_fill(0, CLIPBOARD_COPIED);
    clipboard_paste(0.0f, 40.0f);
    ASSERT_EQ(node_total, 3);
    EXPECT_STREQ(node[2].name, "server");
    EXPECT_STREQ(node[2].description, "in the cellar");
    ASSERT_EQ(node[2].action_count, 2);
    EXPECT_NE(node[2].actions[0], clipboard.actions[0]);
    text_copy(node[2].actions[0]->command, "changed");
    EXPECT_STREQ(clipboard.actions[0]->command, "ping $NAME");
    EXPECT_STREQ(node[0].actions[0]->command, "ping $NAME");
    EXPECT_EQ(node[2].dimensions[EXTENT_RIGHT], node[0].dimensions[EXTENT_RIGHT]);
}

TEST_F(Clipboard, it_is_pasted_relative_to_the_floor_s_offset) {
    clipboard_fill(0, CLIPBOARD_COPIED);
    scene_floor.position_x = 20.0f;
    scene_floor.position_y = -30.0f;
    clipboard_paste(1.5f, 2.5f);
    EXPECT_EQ(node[2].x, 21.5f);
    EXPECT_EQ(node[2].y, -27.5f);
    EXPECT_EQ(node[2].grab_x, 21.5f);
    EXPECT_EQ(node[2].grab_y, -27.5f);
}

TEST_F(Clipboard, a_node_copied_in_full_motion_is_pasted_at_rest) {
    Node *moving = &node[0];
    moving->grab_state = GRAB_HOVERED;
    moving->bounce_active = BOUNCE_SPIN;
    moving->bounce_step = 9;
    moving->height = 55.0f;
    moving->scale = 1.3f;
    moving->move_dx = moving->move_dy = 3.0f;
    moving->move_frames = 11;
    moving->collision_with = 1;
    moving->inertia_dx = 2.0f;
    moving->inertia_frames = 13;
    moving->angle = moving->angle_target = 120.0f;
    moving->rotation_speed = moving->rotation_step = 4.0f;
    moving->fade_state = 1;
    moving->alpha = 0.3f;
    clipboard_fill(0, CLIPBOARD_COPIED);
    clipboard_paste(0.0f, 40.0f);
    const Node &pasted = node[2];
    EXPECT_EQ(pasted.grab_state, GRAB_IDLE);
    EXPECT_EQ(pasted.bounce_active, BOUNCE_REST);
    EXPECT_EQ(pasted.bounce_step, 0);
    EXPECT_EQ(pasted.height, 10.0f);
    EXPECT_EQ(pasted.scale, 1.0f);
    EXPECT_EQ(pasted.move_dx, 0.0f);
    EXPECT_EQ(pasted.move_frames, 0);
    EXPECT_EQ(pasted.collision_with, -1);
    EXPECT_EQ(pasted.inertia_frames, 0);
    EXPECT_EQ(pasted.angle, 0.0f);
    EXPECT_EQ(pasted.rotation_step, 0.0f);
    EXPECT_EQ(pasted.fade_state, 0);
    EXPECT_EQ(pasted.alpha, 1.0f);
}

TEST_F(Clipboard, others_are_pushed_out_of_the_way_of_the_pasted_one_which_stays) {
    clipboard_fill(0, CLIPBOARD_COPIED);
    clipboard_paste(0.5f, 0.0f);
    ASSERT_EQ(node_total, 3);
    EXPECT_EQ(node[2].x, 0.5f);
    EXPECT_EQ(node[2].y, 0.0f);
    EXPECT_EQ(node[2].grab_state, GRAB_IDLE);
    EXPECT_LE(node[0].x + node[0].dimensions[EXTENT_RIGHT],
              node[2].x + node[2].dimensions[EXTENT_LEFT]);
}

TEST_F(Clipboard, the_pasted_one_is_anchored_until_the_others_have_made_room) {
    clipboard_fill(0, CLIPBOARD_COPIED);
    Film film([] { return static_cast<float>(node_total == 2 ? node[2].grab_state : -1); });
    clipboard_paste(0.5f, 0.0f);
    EXPECT_EQ(film.values(), (std::vector<float>{GRAB_ANCHORED, -1.0f}));
}

TEST_F(Clipboard, a_pasted_object_pops_up_once_there_is_room) {
    clipboard_fill(0, CLIPBOARD_COPIED);
    Film film([] { return node_total == 3 ? node[2].scale : -1.0f; });
    clipboard_paste(0.0f, 40.0f);
    ASSERT_EQ(film.values().size(), 17u); // not there, at rest before the first picture, 15 steps
    EXPECT_EQ(film.values()[0], -1.0f);
    EXPECT_EQ(film.values()[2], 0.0f);
    EXPECT_EQ(*std::max_element(film.values().begin(), film.values().end()), 1.4f);
    EXPECT_EQ(film.milliseconds(), 15u * 25u);
    EXPECT_EQ(node[2].scale, 1.0f);
}

TEST_F(Clipboard, a_pasted_object_is_not_seen_while_others_make_room) {
    clipboard_fill(0, CLIPBOARD_COPIED);
    Film film([] { return static_cast<float>(node_total); });
    clipboard_paste(0.5f, 0.0f);
    EXPECT_EQ(film.values(), (std::vector<float>{2.0f, 3.0f}));
}

TEST_F(Clipboard, a_label_is_pasted_with_its_text) {
    clipboard_fill(1, CLIPBOARD_COPIED);
    clipboard_paste(0.0f, 40.0f);
    ASSERT_EQ(node_total, 3);
    EXPECT_EQ(node[2].type, NODE_LABEL);
    EXPECT_STREQ(node[2].name, "_lbl0lbl_");
    EXPECT_STREQ(node[2].description, "Cellar");
    EXPECT_EQ(node[2].scale, 1.0f);
}

TEST_F(Clipboard, objects_and_page_objects_are_counted_labels_are_not) {
    add_page("page", "page.orvl", 0.0f, -40.0f);
    clipboard_fill(0, CLIPBOARD_COPIED);
    clipboard_paste(0.0f, 40.0f);
    EXPECT_EQ(scene_page_hosts_total, 1);
    EXPECT_EQ(scene_page_links_total, 0);
    clipboard_fill(1, CLIPBOARD_COPIED);
    clipboard_paste(0.0f, 50.0f);
    EXPECT_EQ(scene_page_hosts_total, 1);
    EXPECT_EQ(scene_page_links_total, 0);
    clipboard_fill(2, CLIPBOARD_COPIED);
    clipboard_paste(0.0f, 60.0f);
    clipboard_fill(2, CLIPBOARD_CUT);
    clipboard_paste(0.0f, 70.0f);
    EXPECT_EQ(scene_page_hosts_total, 1);
    EXPECT_EQ(scene_page_links_total, 2);
}

TEST_F(Clipboard, a_cut_object_may_be_pasted_again_and_again) {
    clipboard_fill(0, CLIPBOARD_CUT);
    node_delete_node(0);
    clipboard_paste(0.0f, 40.0f);
    clipboard_paste(0.0f, 60.0f);
    EXPECT_EQ(node_total, 3);
    EXPECT_STREQ(node[1].name, "server");
    EXPECT_STREQ(node[2].name, "server");
}

TEST_F(Clipboard, the_255th_object_can_be_pasted_and_the_256th_cannot) {
    orvanel_options.object_transitions = 0;
    clipboard_fill(1, CLIPBOARD_COPIED);
    while (node_total < NODE_CAPACITY - 1)
        add_node(NODE_LABEL, "filler", 100.0f, 100.0f);
    clipboard_paste(0.0f, 40.0f);
    EXPECT_EQ(node_total, 255);
    EXPECT_EQ(node[254].y, 40.0f);
    clipboard_paste(0.0f, 60.0f);
    EXPECT_EQ(node_total, 255);
    EXPECT_EQ(node[254].y, 40.0f);
}

TEST_F(Clipboard, the_entry_s_earlier_life_does_not_show_in_what_is_pasted) {
    add_node(NODE_OBJECT, "earlier", 0.0f, -40.0f);
    for (int i = 0; i < 5; i++)
        add_action(2, "Earlier", "earlier.exe");
    node_delete_node(2);
    clipboard_fill(0, CLIPBOARD_COPIED);
    clipboard_paste(0.0f, 40.0f);
    EXPECT_EQ(node[2].action_count, 2);
    EXPECT_STREQ(node[2].actions[0]->name, "Ping");
}

// ---- pasting actions

TEST_F(Clipboard, pasted_actions_replace_those_of_the_object_entirely) {
    clipboard_fill(0, CLIPBOARD_COPIED);
    const std::int32_t id = add_node(NODE_OBJECT, "other", 0.0f, 40.0f);
    for (int i = 0; i < 4; i++)
        add_action(id, "Own", "own.exe");
    clipboard_paste_actions(id);
    ASSERT_EQ(node[id].action_count, 2);
    EXPECT_STREQ(node[id].actions[0]->name, "Ping");
    EXPECT_STREQ(node[id].actions[1]->name, "Open");
    EXPECT_STREQ(node[id].name, "other");
    EXPECT_EQ(page_text().find("Own"), std::string::npos);
}

TEST_F(Clipboard, pasted_actions_are_the_object_s_own) {
    clipboard_fill(0, CLIPBOARD_COPIED);
    const std::int32_t id = add_node(NODE_OBJECT, "other", 0.0f, 40.0f);
    clipboard_paste_actions(id);
    ASSERT_EQ(node[id].action_count, 2);
    text_copy(node[id].actions[0]->command, "changed");
    EXPECT_STREQ(clipboard.actions[0]->command, "ping $NAME");
}

TEST_F(Clipboard, all_50_actions_with_type_owner_and_icon_are_pasted) {
    while (node[0].action_count < NODE_ACTIONS)
        add_action(0, "More", "more.exe");
    node[0].actions[2]->type = ACTION_SUBMENU;
    node[0].actions[49]->owner = 2;
    text_copy(node[0].actions[49]->icon, "c:\\icon.ico");
    clipboard_fill(0, CLIPBOARD_COPIED);
    const std::int32_t id = add_node(NODE_OBJECT, "other", 0.0f, 40.0f);
    clipboard_paste_actions(id);
    ASSERT_EQ(node[id].action_count, 50);
    EXPECT_EQ(node[id].actions[2]->type, ACTION_SUBMENU);
    EXPECT_EQ(node[id].actions[49]->owner, 2);
    EXPECT_STREQ(node[id].actions[49]->icon, "c:\\icon.ico");
}

TEST_F(Clipboard, actions_are_available_answers_1_when_there_are_none) {
    EXPECT_EQ(clipboard_paste_actions_available(), 1);
    clipboard_fill(0, CLIPBOARD_COPIED);
    EXPECT_EQ(clipboard_paste_actions_available(), 0);
    clipboard_fill(1, CLIPBOARD_COPIED); // a label
    EXPECT_EQ(clipboard_paste_actions_available(), 1);
    clipboard_fill(add_page("page", "page.orvl", 0.0f, 40.0f), CLIPBOARD_COPIED);
    EXPECT_EQ(clipboard_paste_actions_available(), 1);
    clipboard_fill(add_node(NODE_OBJECT, "bare", 0.0f, 60.0f), CLIPBOARD_COPIED);
    EXPECT_EQ(clipboard_paste_actions_available(), 1);
}

TEST_F(Clipboard, an_empty_list_of_actions_is_never_pasted) {
    clipboard_fill(add_node(NODE_OBJECT, "bare", 0.0f, 60.0f), CLIPBOARD_COPIED);
    clipboard_paste_actions(0);
    EXPECT_EQ(node[0].action_count, 2);
}

TEST_F(Clipboard, actions_are_pasted_onto_objects_only) {
    const std::int32_t page = add_page("page", "page.orvl", 0.0f, 40.0f);
    clipboard_paste_actions(0); // nothing was copied yet
    clipboard_fill(0, CLIPBOARD_COPIED);
    clipboard_paste_actions(page);
    EXPECT_STREQ(node[page].actions[0]->command, "page.orvl");
    EXPECT_EQ(node[page].action_count, 1);
    clipboard_paste_actions(1);
    EXPECT_EQ(node[1].action_count, 0);
    for (const std::int32_t id : {-1, 3, 255, INT_MAX, INT_MIN})
        clipboard_paste_actions(id);
}
