// What the boxes of the transitions change in the running program: each is clicked in the options
// dialog, and a change of the page filmed afterwards, on a clock that moves with its readings.
#include "actions/command.h"
#include "app/commands.h"
#include "page/node.h"
#include "page/options.h"
#include "platform/locations.h"
#include "platform/text.h"
#include "resources/resource_ids.h"
#include "scene/interaction.h"
#include "scene/scene.h"
#include "scene/scene_page.h"
#include "tests/support/film.h"
#include "tests/support/scene_stage.h"
#include "tests/windows/options_effects_fixture.h"

#include <gtest/gtest.h>

#include <algorithm>

static constexpr int COMMAND_ORANGE = COMMAND_COLOUR_FIRST + 4;

struct OptionsTransitions : OptionsEffects {
    OptionsTransitions() {
        orvanel_options.confirm_object_delete = 0;
        orvanel_options.reflections = orvanel_options.text_shadows = 0; // frames are many
        text_copy(object_dir_location, window.pages.path); // no models but the built-in one
    }
    ~OptionsTransitions() override {
        object_dir_location[0] = '\0';
        scene_changed = 0;
    }
};

// The values that were seen on the way: the first one alone when there was no way.
using Seen = std::vector<float>;

static float lowest(const Seen &seen) {
    return *std::min_element(seen.begin(), seen.end());
}

static float highest(const Seen &seen) {
    return *std::max_element(seen.begin(), seen.end());
}

static Seen film(float (*sample)(), void (*act)()) {
    const Film film(sample);
    act();
    return film.values();
}

// ---- pages

static float scene_angle() {
    return global_angle;
}

static float floor_red() {
    return scene_floor.colour.red;
}

static void open_page() {
    scene_draw();
    const WindowPoint point = stage_window_point(node[0].x, node[0].y, NODE_REST_HEIGHT);
    post(WM_LBUTTONDBLCLK, 0, MAKELPARAM(point.x, point.y));
}

static void make_orange() {
    command_run(COMMAND_ORANGE);
}

static void expect_pages_stand() {
    EXPECT_EQ(film(scene_angle, open_page), Seen{0.0f});
    EXPECT_STREQ(scene_page_file_name, "sub.orvl");
    EXPECT_EQ(film(scene_angle, scene_page_back), Seen{0.0f});
    EXPECT_STREQ(scene_page_file_name, "home.orvl");
}

static void expect_pages_fly() {
    const Seen opened = film(scene_angle, open_page);
    EXPECT_STREQ(scene_page_file_name, "sub.orvl");
    EXPECT_NEAR(lowest(opened), -90.0f, 0.1f); // the home page flies away
    EXPECT_GT(highest(opened), 70.0f);         // the other comes down
    EXPECT_EQ(opened.back(), 0.0f);
    const Seen left = film(scene_angle, scene_page_back);
    EXPECT_STREQ(scene_page_file_name, "home.orvl");
    EXPECT_LT(lowest(left), -70.0f); // the home page comes back; the empty one had nothing to fly
    EXPECT_EQ(left.back(), 0.0f);
}

TEST_F(OptionsTransitions, Pages_fly_out_and_in_as_long_as_the_box_is_ticked) {
    expect_pages_stand();
    tick(OPTIONS_GRAPHICS, RESOURCE_GRAPHICS_ZOOM_TRANSITION);
    expect_pages_fly();
    tick(OPTIONS_GRAPHICS, RESOURCE_GRAPHICS_ZOOM_TRANSITION);
    expect_pages_stand();
}

TEST_F(OptionsTransitions, A_page_takes_another_colour_by_and_by_as_long_as_the_box_is_ticked) {
    const PageColour before = scene_floor.colour;
    EXPECT_LE(film(floor_red, make_orange).size(), 2u);
    EXPECT_EQ(scene_floor.colour.red, 0.25f);
    scene_floor.colour = before;
    tick(OPTIONS_GRAPHICS, RESOURCE_GRAPHICS_ZOOM_TRANSITION);
    EXPECT_GE(film(floor_red, make_orange).size(), 30u);
    EXPECT_EQ(scene_floor.colour.red, 0.25f);
}

// ---- objects

static float last_scale() {
    return node[node_total - 1].scale;
}

static float first_height() {
    return node[0].height;
}

static void add_object() {
    DialogPlayer player({{"New Object", [](HWND dialog) { click(dialog, IDOK); }}});
    pre_dialog_mouse = {scene_floor.window_width * 3 / 4, scene_floor.window_height / 2};
    command_run(COMMAND_NEW_OBJECT);
    EXPECT_TRUE(player.done());
    handle_messages();
}

static void delete_first_object() {
    scene_draw();
    const WindowPoint point = stage_window_point(node[0].x, node[0].y, NODE_REST_HEIGHT);
    pre_dialog_mouse = {point.x, point.y};
    command_run(COMMAND_DELETE);
}

static void expect_objects_are_there_and_gone_at_once() {
    const std::int32_t before = node_total;
    EXPECT_EQ(film(last_scale, add_object), Seen{1.0f});
    EXPECT_EQ(node_total, before + 1);
    EXPECT_EQ(film(first_height, delete_first_object), Seen{NODE_REST_HEIGHT});
    EXPECT_EQ(node_total, before);
}

static void expect_objects_pop_up_and_fly_away() {
    const std::int32_t before = node_total;
    const Seen added = film(last_scale, add_object);
    EXPECT_EQ(node_total, before + 1);
    EXPECT_EQ(lowest(added), 0.0f);
    EXPECT_EQ(highest(added), 1.4f); // it overshoots
    EXPECT_EQ(added.back(), 1.0f);
    const Seen deleted = film(first_height, delete_first_object);
    EXPECT_EQ(node_total, before);
    EXPECT_GT(highest(deleted), 100.0f);
}

TEST_F(OptionsTransitions, Objects_pop_up_and_fly_away_as_long_as_the_box_is_ticked) {
    expect_objects_are_there_and_gone_at_once();
    tick(OPTIONS_GRAPHICS, RESOURCE_GRAPHICS_TRANSITIONS);
    expect_objects_pop_up_and_fly_away();
    tick(OPTIONS_GRAPHICS, RESOURCE_GRAPHICS_TRANSITIONS);
    expect_objects_are_there_and_gone_at_once();
}

TEST_F(OptionsTransitions, Neither_is_seen_without_Enhanced_graphics) {
    orvanel_options.zoom_transition = orvanel_options.object_transitions = 1;
    expect_pages_fly();
    tick(OPTIONS_GRAPHICS, RESOURCE_GRAPHICS_ENHANCED);
    EXPECT_EQ(orvanel_options.zoom_transition, 1);
    EXPECT_EQ(orvanel_options.object_transitions, 1);
    expect_pages_stand();
    expect_objects_are_there_and_gone_at_once();
}
