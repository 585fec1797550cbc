// Opening pages and going back, as seen on the screen: the flights around the loading.
#include "page/options.h"
#include "platform/files.h"
#include "platform/locations.h"
#include "platform/text.h"
#include "scene/frame_clock.h"
#include "scene/interaction.h"
#include "scene/scene.h"
#include "scene/scene_page.h"
#include "tests/support/film.h"
#include "tests/support/manual_clock.h"
#include "tests/support/message_script.h"
#include "tests/support/scene_stage.h"
#include "tests/support/test_folder.h"

#include <gtest/gtest.h>

static constexpr std::uint32_t FLIGHT = 400; // milliseconds

static float angle() {
    return global_angle;
}
static float red() {
    return scene_floor.colour.red;
}

static const char OBJECT[] =
    "<node>\n<type>object</type>\n<name>A</name>\n<description></description>\n"
    "<x_position>3</x_position>\n<y_position>4</y_position>\n"
    "<model></model>\n</node>\n";

struct Flights : testing::Test {
    SceneStage stage;
    TestFolder folder;

    Flights() {
        text_copy(page_dir_location, folder.path);
        text_copy(object_dir_location, folder.path);
        write_page("home", "0.10", OBJECT);
        write_page("one", "0.20", OBJECT);
        write_page("two", "0.30", OBJECT);
        write_page("empty", "0.40", "");
        EXPECT_EQ(scene_load_page("home.orvl", "Home"), PAGE_LOADED);
        stage_draw();
    }
    ~Flights() override {
        node_free_nodes();
        template_object_free();
        node_total = 0;
        scene_stack_depth = 0;
        scene_changed = 0;
        app_mode = APP_VIEW;
        page_dir_location[0] = object_dir_location[0] = '\0';
    }

    void write_page(const char *name, const char *page_red, const char *nodes) {
        folder.write(
            (std::string(name) + ".orvl").c_str(),
            std::string("<page>\n<offv>004</offv>\n<properties>\n<x_position>5</x_position>\n"
                        "<y_position>6</y_position>\n<colour>\n<red>") +
                page_red + "</red>\n<green>0</green>\n<blue>0</blue>\n</colour>\n</properties>\n" +
                nodes + "</page>\n");
    }

    static void expect_at_rest() {
        EXPECT_EQ(global_angle, 0.0f);
        for (std::int32_t i = 0; i < node_total; i++)
            EXPECT_EQ(node[i].height, NODE_REST_HEIGHT);
        EXPECT_EQ(scene_redraw_flag, 0); // drawn
        // Nothing for the main loop to catch up with.
        EXPECT_EQ(next_frame_timer, sys_time_ms + FRAME_MILLISECONDS);
    }
};

TEST_F(Flights, opening_a_sub_page_flies_out_and_in) {
    Film film(angle);
    EXPECT_EQ(load_page("one.orvl", "One"), 0);
    EXPECT_EQ(film.milliseconds(), 2 * FLIGHT);
    // From 0 to -90; the new page starts at rest and comes from +90.
    ASSERT_GE(film.values().size(), 33u);
    EXPECT_EQ(film.values()[16], -90.0f);
    EXPECT_GT(film.values()[18], 70.0f);
    EXPECT_STREQ(scene_page_title, "One");
    expect_at_rest();
}

TEST_F(Flights, a_sub_page_blends_in_from_its_parents_colour_and_keeps_exactly_its_own) {
    Film film(red);
    load_page("two.orvl", "Two");
    ASSERT_EQ(film.values().size(), 17u);
    EXPECT_EQ(film.values().front(), 0.1f);
    EXPECT_EQ(scene_floor.colour.red, 0.3f);
}

TEST_F(Flights, from_a_page_without_objects_only_the_new_page_flies_in) {
    load_page("empty.orvl", "Empty");
    Film film(angle);
    load_page("one.orvl", "One");
    EXPECT_EQ(film.milliseconds(), FLIGHT);
    expect_at_rest();
}

TEST_F(Flights, going_back_turns_the_other_way) {
    load_page("one.orvl", "One");
    Film film(angle);
    scene_page_back();
    EXPECT_EQ(film.milliseconds(), 2 * FLIGHT);
    ASSERT_GE(film.values().size(), 33u);
    EXPECT_EQ(film.values()[16], 90.0f);
    EXPECT_LT(film.values()[17], 0.0f);
    EXPECT_STREQ(scene_page_title, "Home");
    expect_at_rest();
}

TEST_F(Flights, going_back_shows_the_parent_where_it_was_left) {
    scene_floor.position_x = -7.5f;
    scene_floor.position_y = 2.25f;
    scene_zoom_in();
    const std::int32_t zoom = scene_floor.zoom_level;
    const float distance = scene_floor.distance;
    load_page("one.orvl", "One");
    scene_zoom_out();
    Film film(angle);
    scene_page_back();
    EXPECT_EQ(scene_floor.position_x, -7.5f);
    EXPECT_EQ(scene_floor.position_y, 2.25f);
    EXPECT_EQ(scene_floor.zoom_level, zoom);
    EXPECT_EQ(scene_floor.distance, distance);
    EXPECT_EQ(scene_floor.colour.red, 0.1f);
    expect_at_rest();
}

TEST_F(Flights, going_home_flies_once_from_any_depth) {
    load_page("one.orvl", "One");
    load_page("two.orvl", "Two");
    Film film(angle);
    scene_page_back_home();
    EXPECT_EQ(film.milliseconds(), 2 * FLIGHT);
    EXPECT_EQ(scene_stack_depth, 0);
    EXPECT_STREQ(scene_page_title, "Home");
    EXPECT_EQ(scene_floor.position_x, 5.0f);
    expect_at_rest();
}

TEST_F(Flights, the_parent_is_in_view_during_its_flight_whatever_the_zoom_of_the_sub_page) {
    orvanel_options.maintain_zoom_level = 1;
    while (scene_floor.zoom_level > 0)
        scene_zoom_out();
    stage_draw();
    const float wide = scene_floor.view_right;
    load_page("one.orvl", "One");
    while (scene_floor.zoom_level < ZOOM_LEVEL_MAX)
        scene_zoom_in();
    stage_draw();
    ASSERT_LT(scene_floor.view_right, wide);
    Film film([] { return scene_floor.view_right; });
    scene_page_back();
    EXPECT_EQ(film.values().back(), wide);
    // The first frame of the flight in is drawn with the parent's bounds already.
    EXPECT_EQ(film.values().size(), 2u);
}

TEST_F(Flights, on_a_full_stack_the_page_flies_out_and_back_in_its_own_colour) {
    load_page("one.orvl", "One");
    while (scene_stack_push() == 0) {
    }
    stage_draw();
    const MessageScript script;
    Film film(red);
    EXPECT_EQ(load_page("two.orvl", "Two"), 1);
    ASSERT_EQ(script.shown().size(), 1u);
    EXPECT_EQ(script.shown()[0].text, "The maximum number of page levels has been reached.");
    EXPECT_EQ(script.shown()[0].caption, "Orvanel");
    EXPECT_EQ(film.milliseconds(), 2 * FLIGHT);
    EXPECT_EQ(film.values(), std::vector<float>{0.2f});
    EXPECT_STREQ(scene_page_title, "One");
    EXPECT_EQ(scene_stack_depth, SCENE_STACK_CAPACITY);
    expect_at_rest();
}

TEST_F(Flights, a_sub_page_that_cannot_be_loaded_brings_its_parent_back_in) {
    const MessageScript script;
    Film film(angle);
    load_page("missing.orvl", "Missing");
    ASSERT_EQ(script.shown().size(), 1u);
    EXPECT_EQ(script.shown()[0].text, "Failed to open page file.");
    EXPECT_EQ(film.milliseconds(), 2 * FLIGHT);
    EXPECT_STREQ(scene_page_title, "Home");
    EXPECT_EQ(scene_stack_depth, 0);
    expect_at_rest();
}

TEST_F(Flights, a_parent_deleted_meanwhile_brings_the_sub_page_back_in) {
    load_page("one.orvl", "One");
    file_delete(folder.file("home.orvl").c_str());
    const MessageScript script;
    Film film(angle);
    scene_page_back();
    ASSERT_EQ(script.shown().size(), 1u);
    EXPECT_EQ(script.shown()[0].text, "Failed to open page file.");
    EXPECT_EQ(film.milliseconds(), 2 * FLIGHT);
    EXPECT_STREQ(scene_page_title, "One");
    EXPECT_EQ(scene_stack_depth, 1);
    expect_at_rest();
}

TEST_F(Flights, going_back_on_the_home_page_does_nothing_also_in_edit_mode_with_changes) {
    app_mode = APP_EDIT;
    scene_changed = 1;
    const MessageScript script;
    Film film(angle);
    scene_page_back();
    scene_page_back_home();
    EXPECT_TRUE(script.shown().empty());
    EXPECT_EQ(film.milliseconds(), 0u);
    EXPECT_EQ(app_mode, APP_EDIT);
}

TEST_F(Flights, cancel_at_save_changes_is_no_flight) {
    load_page("one.orvl", "One");
    app_mode = APP_EDIT;
    scene_changed = 1;
    const MessageScript script({MessageAnswer::Cancel});
    Film film(angle);
    scene_page_back();
    EXPECT_EQ(script.shown().size(), 1u);
    EXPECT_EQ(film.milliseconds(), 0u);
    EXPECT_STREQ(scene_page_title, "One");
    EXPECT_EQ(global_angle, 0.0f);
}

TEST_F(Flights, with_zoom_transition_off_pages_change_at_once) {
    orvanel_options.zoom_transition = 0;
    Film film(red);
    load_page("two.orvl", "Two");
    EXPECT_EQ(scene_floor.colour.red, 0.3f);
    EXPECT_LT(film.milliseconds(), 2u); // nothing but readings of the clock
    expect_at_rest();
    manual_clock_advance(300);
    scene_page_back();
    EXPECT_EQ(scene_floor.colour.red, 0.1f);
    EXPECT_LT(film.milliseconds(), 302u);
    EXPECT_GE(next_frame_timer, 300u + FRAME_MILLISECONDS - 1);
    expect_at_rest();
}

TEST_F(Flights, a_handed_over_page_flies_in_above_the_home_page) {
    load_page("one.orvl", "One");
    load_page("two.orvl", "Two");
    Film film(angle);
    scene_open_handed_over_page("one.orvl");
    EXPECT_EQ(film.milliseconds(), 2 * FLIGHT);
    EXPECT_EQ(scene_stack_depth, 1);
    EXPECT_EQ(open_mode, 1);
    expect_at_rest();
}
