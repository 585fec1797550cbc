#include "dialogs/rules/action_command.h"

#include "platform/text.h"
#include "tests/support/message_script.h"
#include "tests/support/test_folder.h"

#include <gtest/gtest.h>

#include <string>

#ifndef _WIN32
#include "platform/posix/recorder.h"
#endif

static const char FAILED[] = "Orvanel failed to execute the action.\n\n"
                             "Make sure that you have specified the full path to the executable.";

static std::string replaced(const char *command, const char *chosen) {
    char text[PATH_SIZE];
    text_copy(text, command);
    action_browse_replace(text, chosen);
    return text;
}

// ---- browsing

TEST(ActionBrowse, begins_on_the_program_when_it_exists) {
    TestFolder folder;
    const std::string program = folder.write("tool.exe", "");
    EXPECT_EQ(action_browse_start(program.c_str()).file, program);
    EXPECT_EQ(action_browse_start((program + " -x").c_str()).file, program);
    EXPECT_EQ(action_browse_start(('"' + program + "\" -x").c_str()).file, program);
}

TEST(ActionBrowse, begins_in_the_folder_of_a_program_that_is_gone) {
    const BrowseStart start = action_browse_start("q:\\tools\\gone.exe -x");
    EXPECT_STREQ(start.file, "");
    EXPECT_STREQ(start.folder, "q:\\tools\\");
}

TEST(ActionBrowse, begins_on_drive_c_when_the_program_has_no_folder) {
    const BrowseStart start = action_browse_start("ping server");
    EXPECT_STREQ(start.file, "");
    EXPECT_STREQ(start.folder, "C:\\");
}

TEST(ActionBrowse, begins_where_the_system_likes_without_a_command) {
    const BrowseStart start = action_browse_start("");
    EXPECT_STREQ(start.file, "");
    EXPECT_STREQ(start.folder, "");
}

TEST(ActionBrowse, the_chosen_file_replaces_the_program_and_the_arguments_stay) {
    EXPECT_EQ(replaced("", "c:\\b.exe"), "c:\\b.exe");
    EXPECT_EQ(replaced("c:\\a.exe", "c:\\b.exe"), "c:\\b.exe");
    EXPECT_EQ(replaced("c:\\a.exe -x $NAME", "c:\\b.exe"), "c:\\b.exe -x $NAME");
    EXPECT_EQ(replaced("ping server", "c:\\b.exe"), "c:\\b.exe server");
    EXPECT_EQ(replaced("\"c:\\p q\\a.exe\" -x", "c:\\b.exe"), "c:\\b.exe -x");
}

TEST(ActionBrowse, a_command_that_becomes_too_long_is_cut) {
    const std::string chosen(250, 'b');
    EXPECT_EQ(replaced(("a " + std::string(100, 'x')).c_str(), chosen.c_str()),
              chosen + " " + std::string(9, 'x'));
}

// ---- testing

TEST(ActionTest, with_an_empty_command_shows_the_failure_message_without_trying_to_run_anything) {
#ifndef _WIN32
    recorder_reset();
#endif
    const MessageScript script;
    EXPECT_EQ(action_test("server", ""), 1);
    ASSERT_EQ(script.shown().size(), 1u);
    EXPECT_EQ(script.shown()[0].text, FAILED);
    EXPECT_EQ(script.shown()[0].caption, "Orvanel");
    EXPECT_EQ(script.shown()[0].icon, MessageIcon::Exclamation) << "as when the menu runs it";
#ifndef _WIN32
    EXPECT_TRUE(recorder.starts.empty());
#endif
}

#ifndef _WIN32
TEST(ActionTest, puts_the_name_of_the_details_into_all_four_variables) {
    recorder_reset();
    EXPECT_EQ(action_test("srv", "x.exe $NAME $name ${NAME} ${name}"), 0);
    ASSERT_EQ(recorder.starts.size(), 1u);
    EXPECT_EQ(recorder.starts[0].command_line, "x.exe srv srv srv srv");
    EXPECT_TRUE(recorder.messages.empty());
}

TEST(ActionTest, a_start_that_fails_is_reported_once) {
    recorder_reset();
    recorder.start_result = [](const RecordedStart &) { return 1; };
    EXPECT_EQ(action_test("srv", "c:\\none.exe"), 1);
    ASSERT_EQ(recorder.messages.size(), 1u);
    EXPECT_EQ(recorder.messages[0].text, FAILED);
    recorder_reset();
}
#endif
