#include "app/commands.h"

#include "actions/command.h"
#include "editing/undo.h"
#include "page/options.h"
#include "platform/text.h"
#include "scene/interaction.h"
#include "scene/scene_page.h"
#include "scene/scene_transition.h"
#include "tests/support/edit_stage.h"
#include "tests/support/manual_clock.h"
#include "tests/support/message_script.h"

#include <gtest/gtest.h>

#ifndef _WIN32
#include "platform/posix/recorder.h"
#endif

// ---- modes

TEST(PageCommands, edit_and_finish_change_the_mode_and_finish_saves) {
    const EditStage stage;
    stage_add_object("a", 0.0f, 0.0f);
    scene_changed = 1;
    command_run(COMMAND_FINISH_EDITING);
    EXPECT_EQ(app_mode, APP_VIEW);
    EXPECT_EQ(scene_changed, 0);
    EXPECT_NE(stage.page_text().find("<name>a</name>"), std::string::npos);
    command_run(COMMAND_EDIT_PAGE);
    EXPECT_EQ(app_mode, APP_EDIT);
}

// ---- reverting

TEST(Revert, keeps_the_floor_position_although_it_reloads_the_page) {
    const EditStage stage;
    stage_add_object("saved", 0.0f, 0.0f);
    xml_save_page(scene_page_file_name);
    stage_add_object("not saved", 8.0f, 0.0f);
    scene_changed = 1;
    undo_push();
    app_align_mode = 1;
    scene_floor.position_x = 12.0f;
    scene_floor.position_y = -7.0f;
    command_run(COMMAND_REVERT);
    EXPECT_EQ(scene_floor.position_x, 12.0f);
    EXPECT_EQ(scene_floor.position_y, -7.0f);
    ASSERT_EQ(node_total, 1);
    EXPECT_STREQ(node[0].name, "saved");
    EXPECT_EQ(scene_changed, 0);
    EXPECT_EQ(app_mode, APP_VIEW);
    EXPECT_EQ(app_align_mode, 0);
    EXPECT_EQ(undo_total, 0);
}

#ifndef _WIN32
TEST(Revert, lets_the_page_fly_out_and_in) {
    const EditStage stage;
    stage_add_object("a", 0.0f, 0.0f);
    xml_save_page(scene_page_file_name);
    stage_draw();
    orvanel_options.good_graphics_card = orvanel_options.object_transitions = 1;
    manual_clock_step(5000);
    std::int32_t swaps = recorder.swaps;
    scene_page_out_transition(1);
    const std::int32_t out = recorder.swaps - swaps;
    swaps = recorder.swaps;
    command_run(COMMAND_REVERT);
    EXPECT_GT(out, 2);
    EXPECT_GT(recorder.swaps - swaps, out + 2); // in as well
}
#endif

TEST(Revert, takes_back_a_template_that_was_never_saved) {
    const EditStage stage;
    text_copy(node[stage_add_object("Template", 0.0f, 0.0f)].description, "not saved");
    template_object_load();
    scene_changed = 1;
    command_run(COMMAND_REVERT);
    EXPECT_EQ(template_object_check(), 1);
}

TEST(Revert, falls_back_to_the_template_of_the_page_before_or_the_saved_one) {
    const EditStage stage;
    const std::int32_t id = stage_add_object("Template", 0.0f, 0.0f);
    text_copy(node[id].description, "of the page before");
    template_object_load();
    scene_stack_push();
    text_copy(node[id].description, "not saved");
    template_object_load();
    command_run(COMMAND_REVERT); // the file is empty
    EXPECT_EQ(template_object_check(), 0);
    EXPECT_STREQ(template_object.node.description, "of the page before");
    text_copy(node[stage_add_object("Template", 0.0f, 0.0f)].description, "saved");
    xml_save_page(scene_page_file_name);
    node[0].description[0] = '\0';
    command_run(COMMAND_REVERT);
    EXPECT_STREQ(template_object.node.description, "saved");
}

TEST(Revert, to_a_file_that_is_gone_says_so_and_keeps_what_the_user_made) {
    const EditStage stage;
    stage_add_object("a", 5.0f, 6.0f, 2);
    stage_add_object("b", -5.0f, 6.0f);
    line_create_from_ids(0, 1);
    scene_changed = 1;
    scene_floor.home_x = 3.0f;
    scene_floor.position_x = 90.0f; // nothing is in view
    ASSERT_EQ(file_delete(stage.folder.file("page.orvl").c_str()), 0);
    const MessageScript script;
    command_run(COMMAND_REVERT);
    ASSERT_EQ(script.shown().size(), 1u);
    EXPECT_EQ(script.shown()[0].text, "Failed to open page file.");
    ASSERT_EQ(node_total, 2);
    EXPECT_STREQ(node[0].name, "a");
    EXPECT_EQ(node[0].action_count, 2);
    EXPECT_EQ(node[0].height, NODE_REST_HEIGHT);
    EXPECT_EQ(line_total, 1);
    EXPECT_EQ(scene_floor.home_x, 3.0f);
    EXPECT_EQ(scene_floor.position_x, 90.0f);
    EXPECT_EQ(scene_changed, 1);
    EXPECT_NE(undo_available(), 0);
    EXPECT_NE(redo_available(), 0);
    EXPECT_EQ(app_mode, APP_EDIT);
}

TEST(Revert, to_a_file_that_was_broken_meanwhile_keeps_what_the_user_made) {
    EditStage stage;
    stage_add_object("a", 5.0f, 6.0f);
    const PageColour colour = scene_floor.colour;
    stage.folder.write("page.orvl",
                       "<page>\n<offv>004</offv>\n<properties>\n<colour>\n<red>1</red>\n"
                       "</colour>\n</properties>\n<node>\n<type>label</type>\n</node>\n"
                       "</page>\n");
    const MessageScript script;
    command_run(COMMAND_REVERT);
    ASSERT_EQ(script.shown().size(), 1u);
    EXPECT_EQ(script.shown()[0].text,
              "The page file contains syntax errors and will not be loaded.");
    ASSERT_EQ(node_total, 1);
    EXPECT_STREQ(node[0].name, "a");
    EXPECT_EQ(scene_floor.colour.red, colour.red);
    EXPECT_EQ(scene_changed, 1);
}

// ---- the page's centre

TEST(PageCenter, is_set_to_where_the_floor_stands_and_gone_back_to) {
    const EditStage stage;
    scene_floor.position_x = 4.0f;
    scene_floor.position_y = 9.0f;
    {
        const MessageScript script;
        command_run(COMMAND_SET_PAGE_CENTER);
        ASSERT_EQ(script.shown().size(), 1u);
        EXPECT_EQ(script.shown()[0].text, "The Page Center has been set.");
        EXPECT_EQ(script.shown()[0].caption, "Orvanel");
#ifndef _WIN32
        EXPECT_EQ(recorder.messages.back().icon, MessageIcon::Information);
#endif
    }
    EXPECT_EQ(scene_floor.home_x, 4.0f);
    EXPECT_EQ(scene_floor.home_y, 9.0f);
    EXPECT_EQ(scene_changed, 1);
    scene_floor.position_x = scene_floor.position_y = 0.0f;
    command_run(COMMAND_CENTER_PAGE);
    EXPECT_EQ(scene_floor.position_x, 4.0f);
    EXPECT_EQ(scene_floor.position_y, 9.0f);
}

// ---- colour

TEST(PageColourCommand, each_preset_has_the_colour_of_its_name) {
    const EditStage stage;
    constexpr float expected[6][3] = {{0.07f, 0.13f, 0.19f}, {0.14f, 0.14f, 0.14f},
                                      {0.05f, 0.19f, 0.18f}, {0.11f, 0.09f, 0.19f},
                                      {0.25f, 0.13f, 0.0f},  {0.0f, 0.0f, 0.0f}};
    for (std::int32_t i = 0; i < 6; i++) {
        scene_changed = 0;
        scene_floor.colour.use_default = 1;
        command_run(COMMAND_COLOUR_FIRST + i);
        EXPECT_EQ(scene_floor.colour.red, expected[i][0]) << i;
        EXPECT_EQ(scene_floor.colour.green, expected[i][1]) << i;
        EXPECT_EQ(scene_floor.colour.blue, expected[i][2]) << i;
        EXPECT_EQ(scene_floor.colour.use_default, 0);
        EXPECT_EQ(scene_changed, 1);
    }
}

TEST(PageColourCommand,
     a_preset_on_a_page_that_used_the_default_colour_stays_when_the_default_changes_later) {
    const EditStage stage;
    command_run(COMMAND_COLOUR_DEFAULT);
    command_run(COMMAND_COLOUR_FIRST + 3);
    command_run(COMMAND_FINISH_EDITING);
    orvanel_options.default_page_red = 0.5f;
    ASSERT_EQ(scene_load_page("page.orvl", "Page"), PAGE_LOADED);
    EXPECT_NEAR(scene_floor.colour.red, 0.11f, 1e-6f);
    EXPECT_EQ(scene_floor.colour.use_default, 0);
}

TEST(PageColourCommand, the_default_colour_follows_the_options) {
    const EditStage stage;
    command_run(COMMAND_COLOUR_FIRST + 3);
    orvanel_options.default_page_red = 0.5f;
    orvanel_options.default_page_green = 0.25f;
    command_run(COMMAND_COLOUR_DEFAULT);
    EXPECT_EQ(scene_floor.colour.red, 0.5f);
    EXPECT_EQ(scene_floor.colour.green, 0.25f);
    EXPECT_EQ(scene_floor.colour.use_default, 1);
    EXPECT_EQ(scene_changed, 1);
}

#ifndef _WIN32 // tests/windows opens the real colour chooser
TEST(CustomPageColour, is_taken_from_the_chooser_which_opens_with_the_page_s_own) {
    const EditStage stage;
    stage_page_colour(0.25f, 1.0f, 0.0f);
    recorder.chooses_colour = true;
    recorder.colour_choice = {255, 41, 0};
    command_run(COMMAND_COLOUR_CUSTOM);
    EXPECT_EQ(recorder.colour_offered.red, 104);   // 0.25 x 255 x 1.64
    EXPECT_EQ(recorder.colour_offered.green, 255); // no more than a chooser can show
    EXPECT_EQ(recorder.colour_offered.blue, 0);
    EXPECT_NEAR(scene_floor.colour.red, 255.0f / 255.0f / 1.64f, 1e-6f);
    EXPECT_NEAR(scene_floor.colour.green, 41.0f / 255.0f / 1.64f, 1e-6f);
    EXPECT_EQ(scene_floor.colour.use_default, 0);
    EXPECT_EQ(scene_changed, 1);
}

TEST(CustomPageColour, changes_nothing_when_the_chooser_is_closed_without_a_choice) {
    const EditStage stage;
    stage_page_colour(0.25f, 0.5f, 0.0f);
    command_run(COMMAND_COLOUR_CUSTOM);
    EXPECT_EQ(scene_floor.colour.red, 0.25f);
    EXPECT_EQ(scene_changed, 0);
}
#endif
