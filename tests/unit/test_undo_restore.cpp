#include "scene/scene_floor.h"
#include "tests/unit/edit_fixture.h"

#include <cmath>
#include <limits>

struct UndoRestore : Edit {
    UndoRestore() {
        add_node(NODE_OBJECT, "first", 0.0f, 0.0f);
        add_node(NODE_OBJECT, "second", 10.0f, 0.0f);
        add_node(NODE_LABEL, "_lbl0lbl_", -10.0f, 0.0f);
        stage_draw();
    }
};

// A 32-step glide of 17 ms frames and the pause after it.
static constexpr std::uint32_t GLIDE = 32 * 17 + 150;
static constexpr std::uint32_t FADE = 16 * 12;   // of at least one object
static constexpr std::uint32_t NO_FADE = 1 * 12; // a fade-in that finds nothing to do

static float first_alpha() {
    return node[0].alpha;
}
static float floor_x() {
    return scene_floor.position_x;
}

static void delete_node(std::int32_t id) {
    undo_push();
    redo_reset();
    node_delete_node(id);
}

// ---- fades

TEST_F(UndoRestore, an_object_that_reappears_fades_in) {
    delete_node(0);
    Film film(first_alpha);
    undo_pop();
    EXPECT_EQ(film.milliseconds(), FADE);
    const std::vector<float> &alpha = film.values();
    ASSERT_EQ(alpha.size(), 16u); // not to be seen, then 15 passes to full opacity
    EXPECT_EQ(alpha[0], 0.0f);
    EXPECT_NEAR(alpha[1], 0.07f, 1e-6f);
    EXPECT_EQ(alpha.back(), 1.0f);
    EXPECT_EQ(node[0].fade_state, 0);
    EXPECT_EQ(node[1].alpha, 1.0f);
}

TEST_F(UndoRestore, objects_that_stay_do_not_fade) {
    delete_node(1);
    Film film(first_alpha);
    undo_pop();
    EXPECT_EQ(film.values(), std::vector<float>{1.0f});
}

TEST_F(UndoRestore, an_object_that_vanishes_fades_out_before_the_page_changes) {
    undo_push();
    const std::int32_t id = add_node(NODE_PAGE, "new", 0.0f, 10.0f);
    ASSERT_EQ(id, 3);
    Film film([] { return node_total == 4 ? node[3].alpha : -1.0f; });
    undo_pop();
    EXPECT_EQ(film.milliseconds(), FADE + NO_FADE);
    const std::vector<float> &alpha = film.values();
    ASSERT_EQ(alpha.size(), 17u);
    EXPECT_EQ(alpha[0], 1.0f);
    EXPECT_EQ(alpha[15], 0.0f);
    EXPECT_EQ(alpha[16], -1.0f);
}

TEST_F(UndoRestore, an_object_moved_back_fades_out_and_in) {
    move_node(0, 0.0f, 5.0f);
    Film film(first_alpha);
    undo_pop();
    EXPECT_EQ(film.milliseconds(), 2 * FADE);
    EXPECT_EQ(node[0].y, 0.0f);
    EXPECT_EQ(node[0].alpha, 1.0f);
    EXPECT_EQ(node[0].fade_state, 0);
}

TEST_F(UndoRestore, a_redo_fades_as_an_undo_does) {
    delete_node(0);
    undo_pop();
    Film film(first_alpha);
    redo_pop();
    EXPECT_EQ(film.milliseconds(), FADE + NO_FADE);
    EXPECT_EQ(node_total, 2);
}

TEST_F(UndoRestore, labels_never_fade) {
    delete_node(2);
    static bool faded;
    faded = false;
    Film film([] {
        for (const Node &record : node)
            faded = faded || record.alpha != 1.0f || record.fade_state != 0;
        return 0.0f;
    });
    undo_pop(); // it appears
    EXPECT_EQ(node_total, 3);
    redo_pop(); // it vanishes
    EXPECT_FALSE(faded);
    EXPECT_EQ(film.milliseconds(), 2 * NO_FADE);
}

static void expect_a_swap_without_fades() {
    move_node(0, 0.0f, 5.0f);
    Film film(first_alpha);
    undo_pop();
    EXPECT_EQ(film.milliseconds(), 0u);
    EXPECT_EQ(node[0].y, 0.0f);
    EXPECT_EQ(node[0].alpha, 1.0f);
    EXPECT_EQ(node[0].fade_state, 0);
}

TEST_F(UndoRestore, with_object_transitions_off_the_page_is_swapped_without_fades) {
    orvanel_options.object_transitions = 0;
    expect_a_swap_without_fades();
}

TEST_F(UndoRestore, with_a_poor_graphics_card_the_page_is_swapped_without_fades) {
    orvanel_options.good_graphics_card = 0;
    expect_a_swap_without_fades();
}

TEST_F(UndoRestore, an_object_seen_half_faded_when_the_snapshot_was_taken_comes_back_opaque) {
    node[0].fade_state = 2;
    node[0].alpha = 0.4f;
    undo_push();
    text_copy(node[0].name, "renamed");
    Film film(first_alpha);
    undo_pop();
    EXPECT_EQ(node[0].alpha, 1.0f);
    EXPECT_EQ(node[0].fade_state, 0);
    EXPECT_EQ(film.milliseconds(), NO_FADE);
}

TEST_F(UndoRestore, an_object_that_faded_in_once_does_not_fade_in_again) {
    delete_node(0);
    undo_pop();
    redo_pop();
    undo_pop();
    move_node(1, 10.0f, 5.0f);
    Film film(first_alpha);
    undo_pop();
    EXPECT_EQ(film.values(), std::vector<float>{1.0f});
}

// ---- the floor

TEST_F(UndoRestore, a_restore_in_which_nothing_appears_or_vanishes_leaves_the_floor) {
    scene_floor.position_x = 90.0f; // none of the objects is in view
    stage_draw();
    rename_node(0, "renamed");
    Film film(floor_x);
    undo_pop();
    EXPECT_STREQ(node[0].name, "first");
    EXPECT_EQ(film.values(), std::vector<float>{90.0f});
    EXPECT_EQ(film.milliseconds(), NO_FADE);
}

TEST_F(UndoRestore, the_floor_stays_when_what_changes_is_in_view) {
    delete_node(0);
    Film film(floor_x);
    undo_pop();
    EXPECT_EQ(film.values(), std::vector<float>{0.0f});
}

TEST_F(UndoRestore, the_floor_glides_to_what_reappears_out_of_view_and_rests_before_it_does) {
    node[1].x = 80.0f;
    delete_node(1);
    static float floor_at_return;
    floor_at_return = -1.0f;
    Film film([] {
        if (node_total == 3 && floor_at_return < 0.0f)
            floor_at_return = scene_floor.position_x;
        return scene_floor.position_x;
    });
    undo_pop();
    EXPECT_EQ(film.milliseconds(), GLIDE + FADE);
    EXPECT_EQ(film.values().size(), 33u);
    EXPECT_EQ(scene_floor.position_x, 80.0f);
    EXPECT_EQ(scene_floor.position_y, 0.0f);
    EXPECT_EQ(floor_at_return, 80.0f);
    EXPECT_EQ(manual_clock_slept(), 150u);
}

TEST_F(UndoRestore, the_floor_glides_to_what_is_about_to_vanish) {
    undo_push();
    add_node(NODE_OBJECT, "far", 0.0f, -70.0f);
    Film film(floor_x);
    undo_pop();
    EXPECT_EQ(scene_floor.position_y, -70.0f);
    EXPECT_EQ(film.milliseconds(), GLIDE + FADE + NO_FADE);
}

TEST_F(UndoRestore, what_reappears_decides_where_the_floor_goes_not_what_vanishes) {
    node[0].x = 60.0f;
    move_node(0, -60.0f, 0.0f);
    scene_floor.position_x = -60.0f;
    stage_draw();
    undo_pop();
    EXPECT_EQ(scene_floor.position_x, 60.0f);
    redo_pop();
    EXPECT_EQ(scene_floor.position_x, -60.0f);
}

TEST_F(UndoRestore, the_floor_glides_to_the_middle_of_all_that_reappears) {
    node[0].x = 50.0f;
    node[0].y = 40.0f;
    node[1].x = 90.0f;
    node[1].y = 60.0f;
    undo_push();
    node_delete_node(1);
    node_delete_node(0);
    undo_pop();
    EXPECT_EQ(scene_floor.position_x, 70.0f);
    EXPECT_EQ(scene_floor.position_y, 50.0f);
}

TEST_F(UndoRestore, a_label_brings_the_floor_to_it) {
    node[2].x = -80.0f;
    delete_node(2);
    undo_pop();
    EXPECT_EQ(scene_floor.position_x, -80.0f);
}

TEST_F(UndoRestore, within_5_units_of_the_window_s_edge_is_out_of_view) {
    struct Place {
        float x, y;
    };
    const float right = scene_floor.view_right, left = scene_floor.view_left;
    const float top = scene_floor.view_top, bottom = scene_floor.view_bottom;
    const auto floor_moves = [](Place place) {
        scene_floor.position_x = scene_floor.position_y = 0.0f;
        stage_draw();
        node[1].x = place.x;
        node[1].y = place.y;
        delete_node(1);
        undo_pop();
        return scene_floor.position_x != 0.0f || scene_floor.position_y != 0.0f;
    };
    EXPECT_FALSE(floor_moves({right - 5.1f, 1.0f}));
    EXPECT_TRUE(floor_moves({right - 4.9f, 1.0f}));
    EXPECT_FALSE(floor_moves({left + 5.1f, 1.0f}));
    EXPECT_TRUE(floor_moves({left + 4.9f, 1.0f}));
    EXPECT_FALSE(floor_moves({1.0f, top - 5.1f}));
    EXPECT_TRUE(floor_moves({1.0f, top - 4.9f}));
    EXPECT_FALSE(floor_moves({1.0f, bottom + 5.1f}));
    EXPECT_TRUE(floor_moves({1.0f, bottom + 4.9f}));
}

TEST_F(UndoRestore, what_is_in_view_depends_on_where_the_floor_is) {
    scene_floor.position_x = 60.0f;
    stage_draw();
    node[1].x = 65.0f;
    delete_node(1);
    undo_pop();
    EXPECT_EQ(scene_floor.position_x, 60.0f);
}

TEST_F(UndoRestore, the_floor_goes_there_even_with_all_transitions_off) {
    orvanel_options.good_graphics_card = 0;
    node[1].x = 80.0f;
    delete_node(1);
    Film film(floor_x);
    undo_pop();
    EXPECT_EQ(scene_floor.position_x, 80.0f);
    EXPECT_EQ(film.milliseconds(), 150u);
}

TEST_F(UndoRestore, an_object_that_stands_nowhere_does_not_move_the_floor) {
    scene_floor.position_x = 60.0f;
    stage_draw();
    node[1].x = std::numeric_limits<float>::quiet_NaN();
    node[2].y = std::numeric_limits<float>::infinity();
    undo_push();
    node_delete_node(1);
    node_delete_node(1);
    undo_pop();
    EXPECT_EQ(scene_floor.position_x, 60.0f);
    EXPECT_EQ(node_total, 3);
    EXPECT_TRUE(std::isnan(node[1].x));
}

// ---- the page

TEST_F(UndoRestore, everything_comes_to_rest_where_it_stood) {
    // The fields that no page file holds, each away from its value at rest.
    Node *held = &node[0];
    held->grab_state = GRAB_GRABBED;
    held->pick_id = 7;
    held->bounce_active = BOUNCE_SPIN;
    held->bounce_step = 9;
    held->height = 55.0f;
    held->scale = 1.3f;
    held->grab_x = held->grab_y = -40.0f;
    held->move_dx = held->move_dy = 3.0f;
    held->move_frames = 11;
    held->collision_with = 1;
    held->inertia_dx = held->inertia_dy = 2.0f;
    held->inertia_frames = 13;
    held->angle = held->angle_target = 120.0f;
    held->rotation_speed = held->rotation_step = 4.0f;
    held->label_depth = 5;
    undo_push();
    text_copy(held->name, "renamed");
    undo_pop();
    Node rest = {};
    node_copy_node2(&rest, held);
    EXPECT_EQ(rest.grab_state, GRAB_IDLE);
    EXPECT_EQ(rest.bounce_active, BOUNCE_REST);
    EXPECT_EQ(rest.bounce_step, 0);
    EXPECT_EQ(rest.height, 10.0f);
    EXPECT_EQ(rest.scale, 1.0f);
    EXPECT_EQ(rest.grab_x, 0.0f);
    EXPECT_EQ(rest.grab_y, 0.0f);
    EXPECT_EQ(rest.move_dx, 0.0f);
    EXPECT_EQ(rest.move_dy, 0.0f);
    EXPECT_EQ(rest.move_frames, 0);
    EXPECT_EQ(rest.collision_with, -1);
    EXPECT_EQ(rest.inertia_dx, 0.0f);
    EXPECT_EQ(rest.inertia_dy, 0.0f);
    EXPECT_EQ(rest.inertia_frames, 0);
    EXPECT_EQ(rest.angle, 0.0f);
    EXPECT_EQ(rest.angle_target, 0.0f);
    EXPECT_EQ(rest.rotation_speed, 0.0f);
    EXPECT_EQ(rest.rotation_step, 0.0f);
    EXPECT_EQ(rest.label_depth, 0);
}

TEST_F(UndoRestore, picking_starts_anew) {
    orvanel_options.object_transitions = 0; // no picture is drawn
    node[0].pick_id = 0;
    node[1].pick_id = 1;
    undo_push();
    undo_pop();
    EXPECT_EQ(node[0].pick_id, -2);
    EXPECT_EQ(node[1].pick_id, -2);
}

TEST_F(UndoRestore, footprint_and_model_come_back) {
    node[0].dimensions[EXTENT_RIGHT] = 6.5f;
    delete_node(0);
    node[0].dimensions[EXTENT_RIGHT] = 1.0f;
    undo_pop();
    EXPECT_EQ(node[0].dimensions[EXTENT_RIGHT], 6.5f);
    EXPECT_EQ(node[0].type, NODE_OBJECT);
}

TEST_F(UndoRestore, links_come_back_as_they_were) {
    line_create_from_ids(0, 1);
    line_create_from_ids(1, 2);
    line[1].colour[2] = 0.75f;
    line[1].param = 3.0f;
    delete_node(1);
    ASSERT_EQ(line_total, 0);
    undo_pop();
    ASSERT_EQ(line_total, 2);
    EXPECT_EQ(line[0].from, 0);
    EXPECT_EQ(line[0].to, 1);
    EXPECT_EQ(line[1].from, 1);
    EXPECT_EQ(line[1].to, 2);
    EXPECT_EQ(line[1].colour[2], 0.75f);
    EXPECT_EQ(line[1].param, 3.0f);
    EXPECT_EQ(line[1].height_offset, 99.0f);
}

TEST_F(UndoRestore, the_page_s_actions_are_not_those_of_the_snapshot) {
    add_action(0, "Open", "c:\\open.exe");
    delete_node(0);
    undo_pop();
    ASSERT_NE(node[0].actions[0], undo_stack[0].nodes[0].actions[0]);
    text_copy(node[0].actions[0]->command, "changed");
    EXPECT_STREQ(undo_stack[0].nodes[0].actions[0]->command, "c:\\open.exe");
}

TEST_F(UndoRestore, objects_and_page_objects_are_counted_anew) {
    add_page("page", "page.orvl", 0.0f, 20.0f);
    scene_page_hosts_total = 2;
    scene_page_links_total = 1;
    undo_push();
    node_delete_node(3);
    node_delete_node(0);
    scene_page_hosts_total = -4; // whatever it has come to
    scene_page_links_total = 9;
    undo_pop();
    EXPECT_EQ(scene_page_hosts_total, 2);
    EXPECT_EQ(scene_page_links_total, 1);
    redo_pop();
    EXPECT_EQ(scene_page_hosts_total, 1);
    EXPECT_EQ(scene_page_links_total, 0);
}

TEST_F(UndoRestore, the_running_number_of_labels_goes_on_so_that_names_stay_unique) {
    node_label_total = 1;
    undo_push();
    add_node(NODE_LABEL, "_lbl1lbl_", 0.0f, -10.0f);
    node_label_total = 2;
    undo_pop();
    EXPECT_EQ(node_label_total, 2);
}

TEST_F(UndoRestore, the_template_is_the_one_of_the_page_again) {
    add_node(NODE_OBJECT, "Template", 0.0f, 30.0f);
    add_action(3, "Ping", "ping $NAME");
    template_object_load();
    delete_node(3);
    template_object_delete();
    ASSERT_EQ(template_object_check(), 1);
    undo_pop();
    ASSERT_EQ(template_object_check(), 0);
    EXPECT_STREQ(template_object.node.actions[0]->command, "ping $NAME");
    redo_pop();
    EXPECT_EQ(template_object_check(), 1);
}

TEST_F(UndoRestore, the_template_of_a_page_above_stays_in_force_where_the_page_has_none) {
    add_node(NODE_OBJECT, "Template", 0.0f, 30.0f);
    template_object_load();
    node_delete_node(3);
    delete_node(0);
    undo_pop();
    EXPECT_EQ(template_object_check(), 0);
}

TEST_F(UndoRestore, choosing_the_other_end_of_a_link_or_an_alignment_ends) {
    delete_node(0);
    app_line_draw_mode = 1;
    app_align_mode = 1;
    undo_pop();
    EXPECT_EQ(app_line_draw_mode, 0);
    EXPECT_EQ(app_align_mode, 0);
    app_line_draw_mode = 1;
    undo_pop(); // there is nothing more to undo
    EXPECT_EQ(app_line_draw_mode, 1);
}

TEST_F(UndoRestore, the_page_is_drawn_anew_and_the_main_loop_does_not_catch_up) {
    orvanel_options.object_transitions = 0;
    node[1].x = 80.0f;
    delete_node(1);
    Film film(floor_x);
    scene_redraw_flag = 0;
    undo_pop();
    EXPECT_EQ(scene_redraw_flag, 1);
    EXPECT_EQ(next_frame_timer, sys_time_ms + 25);
    EXPECT_GE(sys_time_ms, GLIDE - 1);
}

TEST_F(UndoRestore, a_page_that_was_saved_meanwhile_is_to_be_saved_again) {
    delete_node(0);
    scene_changed = 0; // saved
    undo_pop();
    EXPECT_EQ(scene_changed, 1);
    scene_changed = 0;
    redo_pop();
    EXPECT_EQ(scene_changed, 1);
    scene_changed = 0;
    redo_pop(); // there is nothing more to redo
    EXPECT_EQ(scene_changed, 0);
}

TEST_F(UndoRestore, what_reappears_is_seen) {
    orvanel_options.reflections = 0;
    const WindowPoint centre = stage_window_point(0.0f, 0.0f, 10.0f);
    ASSERT_TRUE(is_green(gl_pixel(centre.x, centre.y)));
    delete_node(0);
    stage_draw();
    ASSERT_FALSE(is_green(gl_pixel(centre.x, centre.y)));
    undo_pop();
    stage_draw();
    EXPECT_TRUE(is_green(gl_pixel(centre.x, centre.y)));
}
