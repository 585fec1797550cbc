#include "app/startup.h"

#include "assets/model.h"
#include "assets/object_files.h"
#include "editing/clipboard.h"
#include "editing/undo.h"
#include "page/options.h"
#include "platform/locations.h"
#include "platform/text.h"
#include "platform/thread.h"
#include "scene/interaction.h"
#include "scene/scene.h"
#include "scene/scene_page.h"
#include "tests/support/gl_context.h"
#include "tests/support/message_script.h"
#include "tests/support/test_folder.h"
#include "update/auto_update.h"
#include "update/auto_update_server.h"
#include "update/http_client.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#ifndef _WIN32
#include "platform/posix/recorder.h"
#include "tests/support/full_disk.h"

#include <unistd.h>
#endif

static void expect_size(std::int32_t screen_width, std::int32_t screen_height, std::int32_t width,
                        std::int32_t height) {
    const WindowSize size = startup_window_size(screen_width, screen_height);
    EXPECT_EQ(width, size.width) << screen_width << " x " << screen_height;
    EXPECT_EQ(height, size.height) << screen_width << " x " << screen_height;
}

TEST(StartupWindowSize,
     a_screen_of_1920_by_1080_gives_a_window_of_1280_by_980_and_1280_by_1024_gives_1080_by_824) {
    expect_size(1920, 1080, 1280, 980);
    expect_size(1280, 1024, 1080, 824);
}

TEST(StartupWindowSize, the_width_is_1280_on_any_screen_wider_than_that) {
    expect_size(1280, 800, 1080, 700);
    expect_size(1281, 800, 1280, 700);
}

TEST(StartupWindowSize, a_screen_is_wide_from_a_ratio_of_1_55_on) {
    expect_size(1240, 800, 1040, 700); // exactly 1.55
    expect_size(1239, 800, 1039, 600);
}

TEST(StartupWindowSize, the_height_never_exceeds_1024) {
    expect_size(1600, 1200, 1280, 1000);
    expect_size(1600, 1224, 1280, 1024);
    expect_size(1600, 1225, 1280, 1024);
    expect_size(3840, 2160, 1280, 1024);
}

TEST(StartupCommandLine, only_page_files_count) {
    EXPECT_TRUE(startup_names_page("\"C:\\a.orvl\""));
    EXPECT_TRUE(startup_names_page("old.xml"));
    EXPECT_FALSE(startup_names_page(""));
    EXPECT_FALSE(startup_names_page("-x something"));
    EXPECT_TRUE(startup_names_home("C:\\pages\\home.orvl"));
    EXPECT_FALSE(startup_names_home("C:\\pages\\other.orvl"));
}

TEST(StartupProgramFolders, models_and_pages_stand_beside_the_program) {
    ASSERT_EQ(0, startup_program_folders());
    const std::string folder = exe_location;
    EXPECT_EQ('\\', folder.back());
    EXPECT_TRUE(folder_exists(exe_location));
    EXPECT_EQ(folder + "models\\", object_dir_location);
    EXPECT_EQ(folder + "pages\\", page_template_dir_location);
}

struct PageFolder : testing::Test {
    TestFolder user, program;
    MessageScript script;

    PageFolder() {
        options_set_defaults();
        text_copy(page_template_dir_location, program.path);
    }
    std::string chosen(const std::string &folder) {
        text_copy(orvanel_options.page_folder, folder.c_str());
        startup_page_folder();
        return page_dir_location;
    }
};

TEST_F(PageFolder, the_folder_that_the_user_chose_is_used_and_nothing_is_copied_into_it) {
    program.write("home.orvl", "template");
    const std::string folder = std::string(user.path, std::strlen(user.path) - 1);
    EXPECT_EQ(user.path, chosen(folder));
    EXPECT_FALSE(file_exists(user.file("home.orvl").c_str()));
    EXPECT_EQ(0u, script.shown().size());
}

TEST_F(PageFolder, a_trailing_backslash_is_not_doubled) {
    EXPECT_EQ(user.path, chosen(user.path));
    EXPECT_EQ(0u, script.shown().size());
}

TEST_F(PageFolder, a_chosen_folder_that_is_missing_is_reported_and_used_all_the_same) {
    const std::string missing = user.file("missing");
    EXPECT_EQ(missing + "\\", chosen(missing));
    ASSERT_EQ(1u, script.shown().size());
    EXPECT_EQ("Failed to open page folder...\n\n" + missing + "\n", script.shown()[0].text);
    EXPECT_EQ("Orvanel", script.shown()[0].caption);
#ifndef _WIN32
    EXPECT_EQ(MessageIcon::Error, recorder.messages[0].icon);
#endif
    EXPECT_FALSE(folder_exists(missing.c_str()));
}

TEST_F(PageFolder, the_longest_folder_still_ends_in_a_backslash_and_its_message_holds_it_whole) {
    const std::string longest = "C:\\" + std::string(257, 'x');
    EXPECT_EQ(longest.substr(0, 259) + "\\", chosen(longest));
    ASSERT_EQ(1u, script.shown().size());
    EXPECT_EQ("Failed to open page folder...\n\n" + longest + "\n", script.shown()[0].text);
}

#ifndef _WIN32
// The folders of the system are the recorder's here; the end-to-end tests see the real ones.

TEST_F(PageFolder, a_new_user_gets_the_pages_shipped_in_the_documents_folder) {
    recorder.documents = user.path;
    program.write("home.orvl", "home");
    program.write("sub.orvl", "sub");
    program.write("old.xml", "old");
    program.write("readme.txt", "readme");
    EXPECT_EQ(user.file("Orvanel Pages\\"), chosen(""));
    EXPECT_EQ("home", user.read("Orvanel Pages\\home.orvl"));
    EXPECT_EQ("sub", user.read("Orvanel Pages\\sub.orvl"));
    EXPECT_EQ("old", user.read("Orvanel Pages\\old.xml"));
    EXPECT_FALSE(file_exists(user.file("Orvanel Pages\\readme.txt").c_str()));
    EXPECT_EQ(0u, script.shown().size());
}

TEST_F(PageFolder, a_disk_that_is_full_leaves_a_new_user_whole_pages_only) {
    recorder.documents = user.path;
    program.write("home.orvl", std::string(5000, 'x'));
    program.write("sub.orvl", "sub");
    const FullDisk disk(1000);
    chosen("");
    EXPECT_FALSE(file_exists(user.file("Orvanel Pages\\home.orvl").c_str()));
    EXPECT_EQ("sub", user.read("Orvanel Pages\\sub.orvl"));
}

TEST_F(PageFolder, the_pages_of_an_old_user_are_left_alone) {
    recorder.documents = user.path;
    folder_create(user.file("Orvanel Pages").c_str());
    program.write("home.orvl", "template");
    chosen("");
    EXPECT_FALSE(file_exists(user.file("Orvanel Pages\\home.orvl").c_str()));
}

TEST_F(PageFolder, without_a_documents_folder_the_pages_go_to_the_top_of_the_drive) {
    const char *folder = "\\Orvanel Pages";
    ASSERT_FALSE(folder_exists(folder)) << "left by somebody else";
    program.write("home.orvl", "home");
    EXPECT_EQ("\\Orvanel Pages\\", chosen(""));
    ASSERT_EQ(1u, script.shown().size());
    EXPECT_EQ("Failed to locate users documents folder.", script.shown()[0].text);
    EXPECT_EQ(0, file_delete("\\Orvanel Pages\\home.orvl"));
    rmdir("/Orvanel Pages");
}

TEST_F(PageFolder, a_folder_that_cannot_be_created_is_reported_with_its_path) {
    recorder.documents = user.write("a_file", "");
    const std::string folder = user.file("a_file\\Orvanel Pages");
    EXPECT_EQ(folder + "\\", chosen(""));
    ASSERT_EQ(1u, script.shown().size());
    EXPECT_EQ("Failed to create page folder...\n\n" + folder + "\n", script.shown()[0].text);
    EXPECT_EQ(MessageIcon::Error, recorder.messages[0].icon);
}

TEST_F(PageFolder, a_documents_folder_that_is_too_deep_is_never_cut_into_another_one) {
    recorder.documents = user.path + std::string(250 - std::strlen(user.path), 'x');
    chosen("");
    ASSERT_EQ(1u, script.shown().size());
    EXPECT_EQ("Failed to create page folder...\n\n" + recorder.documents + "\\Orvanel Pages\n",
              script.shown()[0].text);
}

struct StartupOptions : testing::Test {
    TestFolder user, program;
    MessageScript script;

    StartupOptions() {
        recorder.local_app_data = user.path;
        text_copy(exe_location, program.path);
        folder_create(user.file("Orvanel").c_str());
        orvanel_options.reflections = 0; // not what the defaults say
    }
};

TEST_F(StartupOptions, without_a_file_the_defaults_are_in_force) {
    EXPECT_EQ(0, startup_options());
    EXPECT_EQ(1, orvanel_options.reflections);
    EXPECT_EQ(0u, script.shown().size());
}

TEST_F(StartupOptions, a_file_of_something_else_ends_the_start_with_its_message) {
    user.write("Orvanel\\options.xml", "<something>\n</something>\n");
    EXPECT_EQ(1, startup_options());
    ASSERT_EQ(1u, script.shown().size());
    EXPECT_EQ("options.xml is not valid Orvanel file.  Please correct or remove the file.",
              script.shown()[0].text);
    EXPECT_EQ("Orvanel", script.shown()[0].caption);
}

TEST_F(StartupOptions, a_newer_file_is_reported_and_the_defaults_are_used) {
    user.write("Orvanel\\options.xml",
               "<orvanel_options>\n<offv>003</offv>\n<reflections>0</reflections>\n"
               "</orvanel_options>\n");
    EXPECT_EQ(0, startup_options());
    EXPECT_EQ(1, orvanel_options.reflections);
    ASSERT_EQ(1u, script.shown().size());
    EXPECT_EQ("The options.xml apears to be from a newer version of Orvanel.\n\n"
              "It will be ignored, and default options will be used instead.",
              script.shown()[0].text);
}

TEST_F(StartupOptions, the_floor_takes_the_default_page_colour_of_the_options) {
    user.write("Orvanel\\options.xml",
               "<orvanel_options>\n<offv>002</offv>\n<default_page_colour>\n<name>Orange</name>\n"
               "</default_page_colour>\n</orvanel_options>\n");
    scene_floor.colour = {};
    EXPECT_EQ(0, startup_options());
    EXPECT_EQ(1, scene_floor.colour.use_default);
    EXPECT_EQ(0.25f, scene_floor.colour.red);
    EXPECT_EQ(0.13f, scene_floor.colour.green);
    EXPECT_EQ(0.0f, scene_floor.colour.blue);
    EXPECT_EQ(0.8f, scene_floor.colour.alpha);
}

TEST(StartupNetwork, a_missing_network_library_is_reported) {
    EXPECT_EQ(0, startup_network());
    EXPECT_EQ(0u, recorder.messages.size());
    recorder.network_missing = true;
    EXPECT_EQ(1, startup_network());
    ASSERT_EQ(1u, recorder.messages.size());
    EXPECT_EQ("Failed to start winsock.\n", recorder.messages[0].text);
    EXPECT_EQ("Orvanel", recorder.messages[0].caption);
}

TEST(StartupNetwork, servers_learn_the_programs_name_and_version_and_nothing_else) {
    EXPECT_EQ(0, startup_network());
    EXPECT_STREQ("Orvanel/1.4.1", agent_string);
}

// Whether a newer version would be offered in this run.
static bool is_offered() {
    auto_update_waits.before_check = 3'600'000; // nobody is asked
    startup_update_check();
    new_version = AUTO_UPDATE_THIS_VERSION + 1;
    const bool offered = auto_update_poll();
    auto_update_stop();
    return offered;
}

TEST_F(StartupOptions, the_check_for_updates_runs_when_the_options_want_it) {
    options_set_defaults();
    EXPECT_TRUE(is_offered());
    orvanel_options.check_for_updates = 0;
    EXPECT_FALSE(is_offered());
}

#ifndef _WIN32
TEST_F(StartupOptions, with_check_for_updates_0_start_up_looks_nobody_up_and_connects_to_nobody) {
    const AutoUpdateWaits usual_waits = auto_update_waits;
    const AutoUpdateServer usual_server = auto_update_server;
    auto_update_waits.before_check = 0;
    auto_update_server.host = "127.0.0.1:65536"; // looked up, and then there is no such port
    options_set_defaults();
    for (const std::int32_t check : {0, 1}) {
        orvanel_options.check_for_updates = check;
        EXPECT_EQ(0, startup_network());
        startup_update_check();
        for (int i = 0; i < (check == 0 ? 50 : 5000) && recorder.address_lookups == 0; i++) {
            EXPECT_FALSE(auto_update_poll());
            thread_sleep(2);
        }
        auto_update_stop();
        EXPECT_EQ(check, recorder.name_lookups + recorder.address_lookups + recorder.connects);
    }
    auto_update_server = usual_server;
    auto_update_waits = usual_waits;
}
#endif

struct GraphicsCheck : StartupOptions {
    GraphicsCheck() {
        options_set_defaults();
    }
};

TEST_F(GraphicsCheck, a_software_renderer_is_reported_once_and_the_options_are_lowered_and_saved) {
    startup_graphics_check(1);
    ASSERT_EQ(1u, script.shown().size());
    EXPECT_EQ("Orvanel couldn\xe2\x80\x99t find a 3D accelerated graphics adapter.\n\n"
              "Orvanel will still work just fine, but to speed things up, some graphics options "
              "will be disabled.\n\n"
              "If you think that your PC does have a 3D capable graphics card, make sure that you "
              "have the correct drivers for it installed.",
              script.shown()[0].text);
    EXPECT_EQ("Orvanel", script.shown()[0].caption);
    EXPECT_EQ(MessageIcon::Information, recorder.messages[0].icon);
    EXPECT_EQ(0, orvanel_options.good_graphics_card);
    EXPECT_EQ(1, orvanel_options.disable_graphics_card_warning);
    EXPECT_TRUE(file_exists(program.file("gcard").c_str()));
    EXPECT_EQ("", program.read("gcard"));
    const std::string saved = user.read("Orvanel\\options.xml");
    EXPECT_NE(std::string::npos, saved.find("<good_graphics_card>0<"));
    EXPECT_NE(std::string::npos, saved.find("<disable_graphics_card_warning>1<"));
    startup_graphics_check(1);
    EXPECT_EQ(1u, script.shown().size());
}

TEST_F(GraphicsCheck, nothing_is_said_of_a_good_adapter_or_when_the_user_knows_already) {
    startup_graphics_check(0);
    EXPECT_EQ(1, orvanel_options.good_graphics_card);
    orvanel_options.disable_graphics_card_warning = 1;
    startup_graphics_check(1);
    EXPECT_EQ(1, orvanel_options.good_graphics_card);
    orvanel_options.disable_graphics_card_warning = 0;
    orvanel_options.good_graphics_card = 0;
    startup_graphics_check(1);
    EXPECT_EQ(0u, script.shown().size());
    EXPECT_FALSE(file_exists(program.file("gcard").c_str()));
}

TEST_F(GraphicsCheck, a_marker_that_cannot_be_written_stops_nothing) {
    text_copy(exe_location, program.file("missing\\").c_str());
    startup_graphics_check(1);
    EXPECT_EQ(0, orvanel_options.good_graphics_card);
    EXPECT_EQ(1u, script.shown().size());
}
#endif

struct FirstPages : testing::Test {
    GlContext context{640, 480};
    TestFolder pages;
    MessageScript script;

    FirstPages() {
        options_set_defaults();
        text_copy(page_dir_location, pages.path);
        startup_modules();
    }
    ~FirstPages() override {
        startup_stop_modules();
    }
    void page(const char *name) {
        pages.write(name, "<page>\n<offv>004</offv>\n</page>\n");
    }
    std::string quoted(const char *name) const {
        std::string path = pages.file(name);
        path.insert(0, 1, '"').push_back('"');
        return path;
    }
};

TEST_F(FirstPages, the_modules_are_ready_after_the_start) {
    EXPECT_EQ(1, models_total);
    EXPECT_EQ(0, node_total);
    EXPECT_EQ(1, scene_redraw_flag);
    EXPECT_EQ(4, scene_floor.zoom_level);
    EXPECT_EQ(-30.0f, scene_floor.distance);
    EXPECT_EQ(1, template_object_check());
    EXPECT_EQ(nullptr, clipboard.actions[0]);
    ASSERT_NE(nullptr, undo_stack);
    EXPECT_NE(nullptr, undo_stack[UNDO_CAPACITY - 1].lines);
    ASSERT_NE(nullptr, redo_stack);
}

TEST_F(FirstPages, the_history_is_given_back_before_the_page_it_is_of) {
    page("home.orvl");
    ASSERT_EQ(PAGE_LOADED, startup_open_pages(""));
    undo_push();
    startup_stop_modules();
    EXPECT_EQ(nullptr, undo_stack);
    EXPECT_EQ(nullptr, redo_stack);
    EXPECT_EQ(1, undo_available());
    startup_modules(); // for the end of the test
}

TEST_F(FirstPages, without_an_argument_the_home_page_is_shown) {
    page("home.orvl");
    scene_stack_depth = 3;
    open_mode = 1;
    EXPECT_EQ(PAGE_LOADED, startup_open_pages(""));
    EXPECT_STREQ("home.orvl", scene_page_file_name);
    EXPECT_STREQ("Home", scene_page_title);
    EXPECT_EQ(0, scene_stack_depth);
    EXPECT_EQ(0, open_mode);
}

TEST_F(FirstPages, a_page_on_the_command_line_opens_above_the_home_page) {
    page("home.orvl");
    page("my_tools.orvl");
    EXPECT_EQ(PAGE_LOADED, startup_open_pages(quoted("my_tools.orvl").c_str()));
    EXPECT_EQ(pages.file("my_tools.orvl"), scene_page_file_name);
    EXPECT_STREQ("My Tools", scene_page_title);
    EXPECT_EQ(1, scene_stack_depth);
    EXPECT_STREQ("home.orvl", scene_stack[0].file_name);
    EXPECT_EQ(1, open_mode);
}

TEST_F(FirstPages,
       a_command_line_naming_home_orvl_opens_only_the_home_page_without_a_second_stack_level) {
    page("home.orvl");
    EXPECT_EQ(PAGE_LOADED, startup_open_pages(quoted("home.orvl").c_str()));
    EXPECT_STREQ("home.orvl", scene_page_file_name);
    EXPECT_EQ(0, scene_stack_depth);
    EXPECT_EQ(0, open_mode);
}

TEST_F(FirstPages, an_argument_that_is_no_page_is_not_opened) {
    page("home.orvl");
    EXPECT_EQ(PAGE_LOADED, startup_open_pages("-something"));
    EXPECT_STREQ("home.orvl", scene_page_file_name);
    EXPECT_EQ(0, scene_stack_depth);
}

TEST_F(FirstPages, the_argument_is_opened_without_a_level_when_the_home_page_fails) {
    page("other.orvl");
    EXPECT_EQ(PAGE_LOADED, startup_open_pages(quoted("other.orvl").c_str()));
    EXPECT_EQ(0, scene_stack_depth);
    EXPECT_EQ(1, open_mode);
}

TEST_F(FirstPages, the_result_of_the_argument_replaces_that_of_the_home_page) {
    page("home.orvl");
    EXPECT_EQ(PAGE_NOT_OPENED, startup_open_pages(quoted("missing.orvl").c_str()));
    pages.write("newer.orvl", "<page>\n<offv>005</offv>\n</page>\n");
    EXPECT_EQ(PAGE_NEWER, startup_open_pages(quoted("newer.orvl").c_str()));
}

TEST_F(FirstPages, every_failure_has_its_text) {
    const struct {
        std::uint32_t result;
        const char *text;
    } cases[] = {
        {1, "Failed to open page file."},
        {2, "Failed to load page file.  It apears to be from a newer version of Orvanel."},
        {3, "Failed to load page file.  It does not apear to be a valid Orvanel file."},
        {4, "The page file contains syntax errors and will not be loaded."},
        {5, "The Home Page (home.orvl) contains too many items and cannot be loaded."},
        {9, "Failed to load page file."},
    };
    for (const auto &expected : cases) {
        startup_report_page(expected.result);
        EXPECT_EQ(expected.text, script.shown().back().text);
        EXPECT_EQ("Orvanel", script.shown().back().caption);
#ifndef _WIN32
        EXPECT_EQ(MessageIcon::Exclamation, recorder.messages.back().icon);
#endif
    }
}

TEST_F(FirstPages, pages_of_an_older_release_get_their_new_extension) {
    pages.write("home.xml", "home");
    pages.write("sub.xml", "sub");
    startup_migrate_pages();
    EXPECT_EQ("home", pages.read("home.orvl"));
    EXPECT_EQ("sub", pages.read("sub.orvl"));
    EXPECT_FALSE(file_exists(pages.file("home.xml").c_str()));
}

TEST_F(FirstPages, nothing_is_renamed_where_a_new_home_page_stands_or_no_old_one) {
    pages.write("sub.xml", "sub");
    startup_migrate_pages();
    EXPECT_TRUE(file_exists(pages.file("sub.xml").c_str()));
    pages.write("home.xml", "old");
    pages.write("home.orvl", "new");
    startup_migrate_pages();
    EXPECT_EQ("old", pages.read("home.xml"));
    EXPECT_TRUE(file_exists(pages.file("sub.xml").c_str()));
    EXPECT_EQ("new", pages.read("home.orvl"));
}

TEST_F(FirstPages, the_models_are_catalogued_in_the_background_and_no_model_was_used_last) {
    EXPECT_EQ(-1, last_host_model_used);
    EXPECT_EQ(-1, last_page_model_used);
    EXPECT_FALSE(object_files_loaded());
    for (int i = 0; i < 3000 && !object_files_loaded(); i++)
        thread_sleep(10);
    EXPECT_TRUE(object_files_loaded());
}
