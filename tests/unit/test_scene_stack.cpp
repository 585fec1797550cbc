#include "scene/scene_page.h"

#include "page_folder_fixture.h"
#include "scene/gl_util.h"
#include "tests/support/message_script.h"
#ifdef _WIN32
#include <windows.h>
#else
#include "platform/posix/recorder.h"
#endif

#include <gtest/gtest.h>

// Pages "home", "one" and "two" on top of each other.
struct SceneStackTest : PageFolderTest {
    SceneStackTest() {
        write_page("home", "1", "");
        write_page("one", "2", "");
        write_page("two", "3", "");
        EXPECT_EQ(scene_load_page("home.orvl", "Home"), PAGE_LOADED);
    }

    // A page whose resting position is (centre, centre).
    void write_page(const std::string &name, const std::string &centre, const std::string &nodes) {
        folder.write((name + ".orvl").c_str(),
                     "<page>\n<offv>004</offv>\n<properties>\n<x_position>" + centre +
                         "</x_position>\n<y_position>" + centre + "</y_position>\n</properties>\n" +
                         nodes + "</page>\n");
    }

    void remove_page(const char *name) const {
        file_delete(folder.file(name).c_str());
    }
};

static std::string template_node(const char *description) {
    return std::string("<node>\n<type>object</type>\n<name>Template</name>\n<description>") +
           description +
           "</description>\n<x_position>0</x_position>\n<y_position>0</y_position>\n"
           "<model></model>\n</node>\n";
}

static void open_above(const char *file_name, const char *title) {
    ASSERT_EQ(scene_stack_push(), 0);
    ASSERT_EQ(scene_load_page(file_name, title), PAGE_LOADED);
}

static void scroll_to(float x, float y, float distance, std::int32_t zoom_level) {
    scene_floor.position_x = x;
    scene_floor.position_y = y;
    scene_floor.distance = distance;
    scene_floor.zoom_level = zoom_level;
}

static void expect_view(float x, float y, float distance, std::int32_t zoom_level) {
    EXPECT_EQ(scene_floor.position_x, x);
    EXPECT_EQ(scene_floor.position_y, y);
    EXPECT_EQ(scene_floor.distance, distance);
    EXPECT_EQ(scene_floor.zoom_level, zoom_level);
}

TEST_F(SceneStackTest, pushing_keeps_the_page_shown_and_its_view) {
    scroll_to(5.0f, 6.0f, -20.0f, 5);
    EXPECT_EQ(scene_stack_push(), 0);
    EXPECT_EQ(scene_stack_depth, 1);
    EXPECT_STREQ(scene_stack[0].title, "Home");
    EXPECT_STREQ(scene_stack[0].file_name, "home.orvl");
    EXPECT_EQ(scene_stack[0].position_x, 5.0f);
    EXPECT_EQ(scene_stack[0].position_y, 6.0f);
    EXPECT_EQ(scene_stack[0].distance, -20.0f);
    EXPECT_EQ(scene_stack[0].zoom_level, 5);
}

TEST_F(SceneStackTest, a_21st_level_is_refused_and_stores_nothing) {
    for (int i = 0; i < 20; i++)
        ASSERT_EQ(scene_stack_push(), 0);
    text_copy(scene_page_title, "Too deep");
    EXPECT_EQ(scene_stack_push(), 2);
    EXPECT_EQ(scene_stack_depth, 20);
    EXPECT_STREQ(scene_stack[19].title, "Home");
}

TEST_F(SceneStackTest, popping_an_empty_stack_does_nothing) {
    EXPECT_EQ(scene_stack_pop(), 0u);
    EXPECT_STREQ(scene_page_title, "Home");
}

TEST_F(SceneStackTest, going_back_20_times_from_the_deepest_level_returns_to_the_home_page) {
    for (int i = 0; i < 20; i++)
        open_above(i % 2 == 0 ? "one.orvl" : "two.orvl", "Sub");
    for (int i = 0; i < 20; i++) {
        EXPECT_STREQ(scene_page_title, "Sub");
        scene_page_back();
    }
    EXPECT_EQ(scene_stack_depth, 0);
    EXPECT_STREQ(scene_page_title, "Home");
    EXPECT_STREQ(scene_page_file_name, "home.orvl");
}

// Every third page has a template of its own; the others use the one below them.
TEST_F(SceneStackTest, twenty_levels_deep_and_back_restore_scroll_zoom_and_template_at_each) {
    const auto name = [](int level) { return "level" + std::to_string(level); };
    const auto template_of = [](int level) { return "of " + std::to_string(level / 3 * 3); };
    const auto scroll = [](int level) {
        const std::int32_t zoom = (level * 5) % (ZOOM_LEVEL_MAX + 1);
        scroll_to(0.25f + static_cast<float>(level), -1.5f * static_cast<float>(level),
                  ZOOM_DISTANCE_MIN + ZOOM_STEP * static_cast<float>(zoom), zoom);
    };
    for (int level = 0; level <= 20; level++)
        write_page(name(level), "7",
                   level % 3 == 0 ? template_node(template_of(level).c_str()) : "");
    ASSERT_EQ(scene_load_page("level0.orvl", "level0"), PAGE_LOADED);
    for (int level = 0; level < 20; level++) {
        scroll(level);
        ASSERT_EQ(load_page((name(level + 1) + ".orvl").c_str(), name(level + 1).c_str()), 0);
        EXPECT_EQ(template_object.node.description, template_of(level + 1));
    }
    scroll(20);
    ASSERT_EQ(scene_stack_depth, 20);
    for (int level = 19; level >= 0; level--) {
        scene_page_back();
        EXPECT_EQ(scene_stack_depth, level);
        EXPECT_EQ(scene_page_title, name(level));
        EXPECT_EQ(scene_page_file_name, name(level) + ".orvl");
        const SceneFloor shown = scene_floor;
        scroll(level);
        expect_view(shown.position_x, shown.position_y, shown.distance, shown.zoom_level);
        EXPECT_EQ(shown.pick_depth, gl_depth_of_zoom_level(DEPTH_LOOKUP_FLOOR));
        EXPECT_EQ(template_object.node.description, template_of(level));
    }
}

TEST_F(SceneStackTest, going_back_restores_scroll_and_zoom_and_not_the_position_in_the_file) {
    scroll_to(5.0f, 6.0f, -20.0f, 5);
    open_above("one.orvl", "One");
    scroll_to(7.0f, 8.0f, 10.0f, 8);
    scene_floor.pick_depth = 0.5f;
    EXPECT_EQ(scene_stack_pop(), 0u);
    expect_view(5.0f, 6.0f, -20.0f, 5);
    EXPECT_EQ(scene_floor.home_x, 1.0f);
}

TEST_F(SceneStackTest, going_home_restores_the_files_position_and_the_zoom_it_was_left_with) {
    scroll_to(5.0f, 6.0f, -20.0f, 5);
    open_above("one.orvl", "One");
    open_above("two.orvl", "Two");
    scroll_to(7.0f, 8.0f, 10.0f, 8);
    scene_page_back_home();
    EXPECT_EQ(scene_stack_depth, 0);
    EXPECT_STREQ(scene_page_title, "Home");
    expect_view(1.0f, 1.0f, -20.0f, 5);
}

TEST_F(SceneStackTest, going_back_one_level_of_two_shows_the_middle_page) {
    open_above("one.orvl", "One");
    open_above("two.orvl", "Two");
    scene_page_back();
    EXPECT_EQ(scene_stack_depth, 1);
    EXPECT_STREQ(scene_page_title, "One");
}

TEST_F(SceneStackTest, jumping_only_ever_drops_levels) {
    open_above("one.orvl", "One");
    open_above("two.orvl", "Two");
    scene_stack_jump(3);
    EXPECT_EQ(scene_stack_depth, 2);
    scene_stack_jump(1);
    EXPECT_EQ(scene_stack_depth, 1);
    EXPECT_EQ(scene_stack_pop(), 0u);
    EXPECT_STREQ(scene_page_title, "Home");
}

TEST_F(SceneStackTest, a_page_without_a_template_uses_its_parents) {
    write_page("home", "1", template_node("home's"));
    ASSERT_EQ(scene_load_page("home.orvl", "Home"), PAGE_LOADED);
    open_above("one.orvl", "One");
    EXPECT_EQ(template_object_check(), 0);
    EXPECT_STREQ(template_object.node.description, "home's");
}

TEST_F(SceneStackTest, after_going_back_the_parents_template_is_in_force_again) {
    write_page("home", "1", template_node("home's"));
    write_page("one", "2", template_node("one's"));
    ASSERT_EQ(scene_load_page("home.orvl", "Home"), PAGE_LOADED);
    open_above("one.orvl", "One");
    EXPECT_STREQ(template_object.node.description, "one's");
    scene_page_back();
    EXPECT_STREQ(template_object.node.description, "home's");
}

TEST_F(SceneStackTest, after_going_back_a_parent_without_a_template_has_none) {
    write_page("one", "2", template_node("one's"));
    open_above("one.orvl", "One");
    EXPECT_EQ(template_object_check(), 0);
    scene_page_back();
    EXPECT_EQ(template_object_check(), 1);
}

TEST_F(SceneStackTest, going_back_to_a_deleted_page_shows_the_message_and_keeps_the_sub_page) {
    open_above("one.orvl", "One");
    scroll_to(7.0f, 8.0f, 10.0f, 8);
    remove_page("home.orvl");
    MessageScript script;
    scene_page_back();
    ASSERT_EQ(script.shown().size(), 1u);
    EXPECT_EQ(script.shown()[0].text, "Failed to open page file.");
    EXPECT_EQ(script.shown()[0].caption, "Orvanel");
    EXPECT_EQ(scene_stack_depth, 1);
    EXPECT_STREQ(scene_page_title, "One");
    EXPECT_STREQ(scene_page_file_name, "one.orvl");
    expect_view(7.0f, 8.0f, 10.0f, 8);
}

TEST_F(SceneStackTest, a_failed_pop_answers_1_and_names_its_reason) {
    const struct {
        const char *bytes;
        const char *text;
    } cases[] = {
        {"<page>\n<offv>005</offv>\n</page>\n",
         "Failed to load page file.  It apears to be from a newer version of Orvanel."},
        {"", "Failed to load page file.  It does not apear to be a valid Orvanel file."},
        {"<page>\n<offv>004</offv>\n<node>\n<type>label</type>\n</node>\n</page>\n",
         "The page file contains syntax errors and will not be loaded."},
    };
    open_above("one.orvl", "One");
    for (const auto &each : cases) {
        folder.write("home.orvl", each.bytes);
        MessageScript script;
        EXPECT_EQ(scene_stack_pop(), 1u);
        ASSERT_EQ(script.shown().size(), 1u);
        EXPECT_EQ(script.shown()[0].text, each.text);
    }
}

// Whether the program was asked to end, and with the exit code 0.
static bool took_quit() {
#ifdef _WIN32
    MSG message;
    return PeekMessageA(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE) != 0 && message.wParam == 0;
#else
    return recorder.quit && recorder.quit_code == 0;
#endif
}

TEST_F(SceneStackTest, when_neither_page_can_be_loaded_the_program_ends) {
    open_above("one.orvl", "One");
    remove_page("home.orvl");
    remove_page("one.orvl");
    const MessageScript script;
    EXPECT_FALSE(took_quit());
    EXPECT_EQ(scene_stack_pop(), 1u);
    EXPECT_TRUE(took_quit());
    ASSERT_EQ(script.shown().size(), 2u);
    EXPECT_EQ(script.shown()[0].text, "Failed to open page file.");
    EXPECT_EQ(script.shown()[1].text,
              "Unable to load either the previous or he current page.  Orvanel will exit.");
    EXPECT_EQ(script.shown()[1].caption, "Orvanel");
    EXPECT_EQ(scene_stack_depth, 1);
}

#ifndef _WIN32
TEST_F(SceneStackTest, the_page_below_missing_is_a_warning_and_both_missing_an_error) {
    open_above("one.orvl", "One");
    remove_page("home.orvl");
    remove_page("one.orvl");
    scene_stack_pop();
    ASSERT_EQ(recorder.messages.size(), 2u);
    EXPECT_EQ(recorder.messages[0].icon, MessageIcon::Exclamation);
    EXPECT_EQ(recorder.messages[1].icon, MessageIcon::Error);
}

TEST_F(SceneStackTest, going_back_draws_the_page) {
    open_above("one.orvl", "One");
    const std::int32_t swaps = recorder.swaps;
    scene_page_back();
    EXPECT_EQ(recorder.swaps, swaps + 1);
}
#endif

TEST_F(SceneStackTest, going_back_on_the_home_page_does_nothing_and_asks_nothing) {
    app_mode = APP_EDIT;
    scene_changed = 1;
    MessageScript script;
    scene_page_back();
    scene_page_back_home();
    EXPECT_TRUE(script.shown().empty());
    EXPECT_EQ(app_mode, APP_EDIT);
    EXPECT_EQ(scene_changed, 1);
}

TEST_F(SceneStackTest, cancel_at_save_changes_stays_on_the_page_in_edit_mode) {
    open_above("one.orvl", "One");
    app_mode = APP_EDIT;
    scene_changed = 1;
    MessageScript script({MessageAnswer::Cancel, MessageAnswer::Cancel});
    scene_page_back();
    scene_page_back_home();
    ASSERT_EQ(script.shown().size(), 2u);
    EXPECT_EQ(script.shown()[0].text, "Save changes?");
    EXPECT_EQ(script.shown()[0].caption, "Question");
    EXPECT_EQ(app_mode, APP_EDIT);
    EXPECT_EQ(scene_changed, 1);
    EXPECT_EQ(scene_stack_depth, 1);
    EXPECT_STREQ(scene_page_title, "One");
}

TEST_F(SceneStackTest, yes_at_save_changes_saves_the_page_before_going_back) {
    open_above("one.orvl", "One");
    app_mode = APP_EDIT;
    scene_changed = 1;
    scene_floor.home_x = 42.0f;
    MessageScript script({MessageAnswer::Yes});
    scene_page_back();
    EXPECT_NE(folder.read("one.orvl").find("<x_position>42.00</x_position>"), std::string::npos);
    EXPECT_EQ(app_mode, APP_VIEW);
    EXPECT_EQ(scene_changed, 0);
    EXPECT_STREQ(scene_page_title, "Home");
}

TEST_F(SceneStackTest, no_at_save_changes_goes_back_without_saving) {
    open_above("one.orvl", "One");
    const std::string before = folder.read("one.orvl");
    app_mode = APP_EDIT;
    scene_changed = 1;
    scene_floor.home_x = 42.0f;
    MessageScript script({MessageAnswer::No});
    scene_page_back_home();
    EXPECT_EQ(folder.read("one.orvl"), before);
    EXPECT_EQ(app_mode, APP_VIEW);
    EXPECT_STREQ(scene_page_title, "Home");
}

TEST_F(SceneStackTest, unchanged_edits_are_left_without_a_question) {
    open_above("one.orvl", "One");
    app_mode = APP_EDIT;
    MessageScript script;
    scene_page_back();
    EXPECT_TRUE(script.shown().empty());
    EXPECT_EQ(app_mode, APP_VIEW);
    EXPECT_STREQ(scene_page_title, "Home");
}
