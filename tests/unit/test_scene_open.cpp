#include "scene/scene_page.h"

#include "page_folder_fixture.h"
#include "tests/support/message_script.h"
#ifndef _WIN32
#include "platform/posix/recorder.h"
#endif

#include <gtest/gtest.h>

// The home page is shown.
struct SceneOpenTest : PageFolderTest {
    SceneOpenTest() {
        for (const char *name : {"home.orvl", "one.orvl", "my_games-old.orvl"})
            folder.write(name, "<page>\n<offv>004</offv>\n</page>\n");
        EXPECT_EQ(scene_load_page("home.orvl", "Home"), PAGE_LOADED);
    }
};

// Of the last message box; only the posix side knows.
static void expect_exclamation() {
#ifndef _WIN32
    EXPECT_EQ(recorder.messages.back().icon, MessageIcon::Exclamation);
#endif
}

// ---- opening a sub-page

TEST_F(SceneOpenTest, a_sub_page_opens_as_a_new_level_at_the_initial_zoom) {
    open_mode = 1;
    scene_floor.zoom_level = 7;
    scene_floor.spring_x = 1.0f;
    EXPECT_EQ(load_page("one.orvl", "One"), 0);
    EXPECT_EQ(scene_stack_depth, 1);
    EXPECT_STREQ(scene_page_title, "One");
    EXPECT_EQ(scene_stack[0].zoom_level, 7);
    EXPECT_EQ(scene_floor.zoom_level, 4);
    EXPECT_EQ(scene_floor.distance, -30.0f);
    EXPECT_EQ(scene_floor.spring_x, 0.0f);
    EXPECT_EQ(open_mode, 0);
}

TEST_F(SceneOpenTest, with_20_levels_open_one_more_shows_the_message_and_keeps_the_page) {
    for (int i = 0; i < 20; i++)
        ASSERT_EQ(load_page("one.orvl", "One"), 0);
    MessageScript script;
    EXPECT_EQ(load_page("my_games-old.orvl", "Games"), 1);
    ASSERT_EQ(script.shown().size(), 1u);
    EXPECT_EQ(script.shown()[0].text, "The maximum number of page levels has been reached.");
    EXPECT_EQ(script.shown()[0].caption, "Orvanel");
    expect_exclamation();
    EXPECT_STREQ(scene_page_title, "One");
    EXPECT_EQ(scene_stack_depth, 20);
}

TEST_F(SceneOpenTest, a_sub_page_that_cannot_be_loaded_shows_the_message_and_returns_to_the_page) {
    const struct {
        const char *bytes;
        const char *text;
    } cases[] = {
        {nullptr, "Failed to open page file."},
        {"<page>\n<offv>5</offv>\n</page>\n",
         "Failed to load page file.  It apears to be from a newer version of Orvanel."},
        {"", "Failed to load page file.  It does not apear to be a valid Orvanel file."},
        {"<page>\n<offv>4</offv>\n<node>\n<type>label</type>\n</node>\n</page>\n",
         "The page file contains syntax errors and will not be loaded."},
    };
    for (const auto &each : cases) {
        if (each.bytes != nullptr)
            folder.write("broken.orvl", each.bytes);
        MessageScript script;
        open_mode = 1;
        EXPECT_EQ(load_page("broken.orvl", "Broken"), 0);
        ASSERT_EQ(script.shown().size(), 1u);
        EXPECT_EQ(script.shown()[0].text, each.text);
        EXPECT_EQ(script.shown()[0].caption, "Orvanel");
        expect_exclamation();
        EXPECT_EQ(open_mode, 0);
        EXPECT_EQ(scene_stack_depth, 0);
        EXPECT_STREQ(scene_page_title, "Home");
    }
}

// ---- the command line

TEST_F(SceneOpenTest, a_page_of_the_command_line_is_titled_after_its_file) {
    EXPECT_EQ(open_page_from_command_line(folder.file("my_games-old.orvl").c_str()), PAGE_LOADED);
    EXPECT_STREQ(scene_page_title, "My Games-Old");
    EXPECT_EQ(std::string(scene_page_file_name), folder.file("my_games-old.orvl"));
    EXPECT_EQ(open_mode, 1);
}

TEST_F(SceneOpenTest, quotes_around_a_page_of_the_command_line_are_taken_off) {
    EXPECT_EQ(open_page_from_command_line("  \"one.orvl\" rest"), PAGE_LOADED);
    EXPECT_STREQ(scene_page_file_name, "one.orvl");
    EXPECT_EQ(open_page_from_command_line("\"one.orvl"), PAGE_LOADED);
    EXPECT_STREQ(scene_page_file_name, "one.orvl");
}

TEST_F(SceneOpenTest, a_command_line_is_cut_at_its_last_quote) {
    EXPECT_EQ(open_page_from_command_line("\"a\"b\"c"), PAGE_NOT_OPENED);
    EXPECT_STREQ(scene_page_file_name, "a\"b");
}

TEST_F(SceneOpenTest, a_command_line_keeps_260_characters) {
    EXPECT_EQ(open_page_from_command_line(("\"" + std::string(400, 'p')).c_str()), PAGE_NOT_OPENED);
    EXPECT_EQ(std::string(scene_page_file_name), std::string(260, 'p'));
}

TEST_F(SceneOpenTest, a_page_of_the_command_line_that_fails_leaves_the_open_mode) {
    EXPECT_EQ(open_page_from_command_line("none.orvl"), PAGE_NOT_OPENED);
    EXPECT_EQ(open_mode, 0);
}

// ---- a second instance

TEST_F(SceneOpenTest, a_handed_over_page_sits_above_the_home_page_whatever_was_open) {
    ASSERT_EQ(load_page("one.orvl", "One"), 0);
    ASSERT_EQ(load_page("one.orvl", "One"), 0);
    scene_open_handed_over_page("my_games-old.orvl");
    EXPECT_EQ(scene_stack_depth, 1);
    EXPECT_STREQ(scene_page_title, "My Games-Old");
    EXPECT_STREQ(scene_stack[0].title, "Home");
    EXPECT_EQ(open_mode, 1);
}

TEST_F(SceneOpenTest, a_page_handed_over_on_the_home_page_is_pushed) {
    scene_open_handed_over_page("one.orvl");
    EXPECT_EQ(scene_stack_depth, 1);
    EXPECT_STREQ(scene_stack[0].title, "Home");
    EXPECT_STREQ(scene_page_title, "One");
}

TEST_F(SceneOpenTest, a_page_handed_over_on_a_full_stack_is_opened) {
    for (int i = 0; i < 20; i++)
        ASSERT_EQ(load_page("one.orvl", "One"), 0);
    scene_open_handed_over_page("my_games-old.orvl");
    EXPECT_EQ(scene_stack_depth, 1);
    EXPECT_STREQ(scene_page_title, "My Games-Old");
}

TEST_F(SceneOpenTest, handing_over_the_home_page_goes_home) {
    ASSERT_EQ(load_page("one.orvl", "One"), 0);
    scene_open_handed_over_page("c:\\anywhere\\home.orvl");
    EXPECT_EQ(scene_stack_depth, 0);
    EXPECT_STREQ(scene_page_title, "Home");
    EXPECT_EQ(open_mode, 0);
}

TEST_F(SceneOpenTest, a_handed_over_page_that_fails_shows_one_text_and_returns_to_the_home_page) {
    MessageScript script;
    scene_open_handed_over_page("none.orvl");
    ASSERT_EQ(script.shown().size(), 1u);
    EXPECT_EQ(script.shown()[0].text, "Failed to load page file.");
    EXPECT_EQ(script.shown()[0].caption, "Orvanel");
    expect_exclamation();
    EXPECT_EQ(scene_stack_depth, 0);
    EXPECT_STREQ(scene_page_title, "Home");
    EXPECT_EQ(open_mode, 1);
}

TEST_F(SceneOpenTest, a_handed_over_page_ends_edit_mode_and_saves_on_yes) {
    ASSERT_EQ(load_page("one.orvl", "One"), 0);
    app_mode = APP_EDIT;
    app_align_mode = 1;
    scene_changed = 1;
    scene_floor.home_x = 42.0f;
    MessageScript script({MessageAnswer::Yes});
    scene_open_handed_over_page("my_games-old.orvl");
    ASSERT_EQ(script.shown().size(), 1u);
    EXPECT_EQ(script.shown()[0].text, "Save changes?");
    EXPECT_EQ(script.shown()[0].caption, "Question");
    EXPECT_NE(folder.read("one.orvl").find("<x_position>42.00</x_position>"), std::string::npos);
    EXPECT_EQ(app_mode, APP_VIEW);
    EXPECT_EQ(app_align_mode, 0);
    EXPECT_STREQ(scene_page_title, "My Games-Old");
}

TEST_F(SceneOpenTest, a_handed_over_page_discards_the_changes_on_no_and_on_cancel) {
    for (const MessageAnswer answer : {MessageAnswer::No, MessageAnswer::Cancel}) {
        ASSERT_EQ(load_page("one.orvl", "One"), 0);
        const std::string before = folder.read("one.orvl");
        app_mode = APP_EDIT;
        scene_changed = 1;
        scene_floor.home_x = 42.0f;
        MessageScript script({answer});
        scene_open_handed_over_page("my_games-old.orvl");
        EXPECT_EQ(script.shown().size(), 1u);
        EXPECT_EQ(folder.read("one.orvl"), before);
        EXPECT_EQ(app_mode, APP_VIEW);
        EXPECT_EQ(scene_changed, 0);
        EXPECT_STREQ(scene_page_title, "My Games-Old");
    }
}

TEST_F(SceneOpenTest, a_handed_over_page_does_not_take_the_place_of_changes_that_cannot_be_saved) {
    for (const char *page : {"my_games-old.orvl", "home.orvl"}) {
        ASSERT_EQ(load_page("one.orvl", "One"), 0);
        app_mode = APP_EDIT;
        scene_changed = 1;
        text_append(page_dir_location, "gone\\");
        MessageScript script({MessageAnswer::Yes, MessageAnswer::Ok});
        scene_open_handed_over_page(page);
        text_copy(page_dir_location, folder.path);
        ASSERT_EQ(script.shown().size(), 2u);
        EXPECT_EQ(script.shown()[1].text, "Failed to save page file.");
        EXPECT_STREQ(scene_page_title, "One");
        EXPECT_EQ(app_mode, APP_EDIT);
        EXPECT_EQ(scene_changed, 1);
        app_mode = APP_VIEW;
        scene_changed = 0;
    }
}

TEST_F(SceneOpenTest, a_home_page_handed_over_in_edit_mode_asks_only_once) {
    ASSERT_EQ(load_page("one.orvl", "One"), 0);
    app_mode = APP_EDIT;
    scene_changed = 1;
    MessageScript script({MessageAnswer::Cancel});
    scene_open_handed_over_page("home.orvl");
    EXPECT_EQ(script.shown().size(), 1u);
    EXPECT_STREQ(scene_page_title, "Home");
}

#ifndef _WIN32
TEST_F(SceneOpenTest, opening_draws_once_and_a_handed_over_page_twice) {
    std::int32_t swaps = recorder.swaps;
    ASSERT_EQ(load_page("one.orvl", "One"), 0);
    EXPECT_EQ(recorder.swaps, swaps + 1);
    swaps = recorder.swaps;
    scene_open_handed_over_page("one.orvl");
    EXPECT_EQ(recorder.swaps, swaps + 2);
}
#endif
