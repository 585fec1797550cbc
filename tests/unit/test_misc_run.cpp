#include "actions/misc.h"

#include "page/node.h"
#include "platform/locations.h"
#include "platform/text.h"
#include "scene/scene_page.h"
#include "tests/support/message_script.h"
#include "tests/support/scene_stage.h"
#include "tests/support/test_folder.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#ifndef _WIN32
#include "platform/posix/recorder.h"
#endif

static constexpr char FAILED[] =
    "Orvanel failed to execute the action.\n\n"
    "Make sure that you have specified the full path to the executable.";

static std::string substituted(const std::string &text, const char *pattern, const char *value) {
    char buffer[PATH_SIZE];
    text_copy(buffer, text.c_str());
    variable_substitute(buffer, pattern, value, PATH_SIZE - 1);
    return buffer;
}

static std::string named(const std::string &command, const char *name) {
    char buffer[PATH_SIZE];
    text_copy(buffer, command.c_str());
    action_substitute_name(buffer, name);
    return buffer;
}

struct Parts {
    char program[PATH_SIZE], arguments[PATH_SIZE];
};

static Parts separated(const std::string &command) {
    Parts parts;
    std::memset(&parts, 'x', sizeof parts);
    command_line_seperate(command.c_str(), parts.program, parts.arguments);
    return parts;
}

TEST(VariableSubstitute, every_occurrence_is_replaced) {
    EXPECT_EQ("notepad Notes.txt", substituted("notepad $NAME.txt", "$NAME", "Notes"));
    EXPECT_EQ("aa", substituted("$NAME$NAME", "$NAME", "a"));
    EXPECT_EQ("x  y", substituted("x $NAME y", "$NAME", ""));
    EXPECT_EQ("$NAM", substituted("$NAM", "$NAME", "a"));
    EXPECT_EQ("", substituted("", "$NAME", "a"));
}

TEST(VariableSubstitute, inserted_text_is_not_scanned_again) {
    EXPECT_EQ("$NAME$NAME", substituted("$NAME", "$NAME", "$NAME$NAME"));
    EXPECT_EQ("a$NAME", substituted("a$NA$NAMEME", "$NAME", ""));
}

TEST(VariableSubstitute, a_result_that_is_too_long_is_cut_at_the_size) {
    const std::string value(200, 'v');
    EXPECT_EQ(value + std::string(60, 'v'), substituted("$NAME$NAME", "$NAME", value.c_str()));
    char small[6] = "ab$N";
    variable_substitute(small, "$N", "0123456789", 5);
    EXPECT_STREQ("ab012", small);
}

TEST(VariableSubstitute, an_empty_pattern_changes_nothing) {
    EXPECT_EQ("text", substituted("text", "", "a"));
}

TEST(ActionSubstituteName, all_four_spellings_stand_for_the_name) {
    EXPECT_EQ("N N N N", named("$NAME $name ${NAME} ${name}", "N"));
    EXPECT_EQ("$Name ${Name} NAME", named("$Name ${Name} NAME", "N"));
}

TEST(ActionSubstituteName, a_name_that_looks_like_a_variable_stays_as_it_is) {
    EXPECT_EQ("x$name", named("$NAME", "x$name"));
    EXPECT_EQ("x${name}", named("$NAME", "x${name}"));
    EXPECT_EQ("x$NAME", named("${name}", "x$NAME"));
}

TEST(IsUrl, zero_means_yes_for_the_four_spellings_at_the_first_character) {
    EXPECT_EQ(0, is_url("http://a"));
    EXPECT_EQ(0, is_url("HTTP:"));
    EXPECT_EQ(0, is_url("https://a"));
    EXPECT_EQ(0, is_url("HTTPS://example"));
    EXPECT_EQ(1, is_url("Https://example"));
    EXPECT_EQ(1, is_url(" http://a"));
    EXPECT_EQ(1, is_url("http"));
    EXPECT_EQ(1, is_url("ftp://a"));
    EXPECT_EQ(1, is_url(""));
}

TEST(CommandLineSeperate, the_extension_decides_when_a_backslash_is_present) {
    const Parts parts = separated("C:\\Tools\\my tool.exe -x");
    EXPECT_STREQ("C:\\Tools\\my tool.exe", parts.program);
    EXPECT_STREQ("-x", parts.arguments);
}

TEST(CommandLineSeperate, the_first_space_decides_without_a_backslash) {
    const Parts parts = separated("my tool.exe -x");
    EXPECT_STREQ("my", parts.program);
    EXPECT_STREQ("tool.exe -x", parts.arguments);
}

TEST(CommandLineSeperate, extensions_are_tried_in_their_order_not_in_that_of_the_text) {
    const Parts parts = separated("C:\\a.bat b.exe -x");
    EXPECT_STREQ("C:\\a.bat b.exe", parts.program);
    EXPECT_STREQ("-x", parts.arguments);
    const Parts upper = separated("C:\\a.CMD x");
    EXPECT_STREQ("C:\\a.CMD", upper.program);
    const Parts mixed = separated("C:\\a.Exe x");
    EXPECT_STREQ("C:\\a.Exe x", mixed.program);
    EXPECT_STREQ("", mixed.arguments);
}

TEST(CommandLineSeperate, without_a_split_point_the_whole_command_is_the_program) {
    const Parts folder = separated("C:\\my documents\\notes.txt");
    EXPECT_STREQ("C:\\my documents\\notes.txt", folder.program);
    EXPECT_STREQ("", folder.arguments);
    EXPECT_STREQ("notepad", separated("notepad").program);
    EXPECT_STREQ("C:\\a.exe", separated("C:\\a.exe").program);
    EXPECT_STREQ("", separated("").program);
    EXPECT_STREQ("", separated("a ").arguments);
}

TEST(CommandLineSeperate, quotes_are_not_interpreted) {
    EXPECT_STREQ("\"C:\\a b.exe\"", separated("\"C:\\a b.exe\" -x").program);
}

TEST(CommandLineSeperate, long_parts_are_cut_at_260_characters) {
    const Parts parts = separated(std::string(300, 'p') + " " + std::string(300, 'a'));
    EXPECT_EQ(std::string(260, 'p'), parts.program);
    EXPECT_EQ(std::string(260, 'a'), parts.arguments);
}

// ---- running; an action needs a page to stand on

struct RunStage : SceneStage {
    TestFolder folder;

    RunStage() {
        text_copy(page_dir_location, folder.path);
    }
    ~RunStage() {
        node_free_nodes();
    }
};

static std::int32_t add(NodeType type, const char *name, const char *command) {
    const std::int32_t id = stage_add(type, 0.0f, 0.0f);
    text_copy(node[id].name, name);
    action_allocate_action(&node[id].actions[0]);
    text_copy(node[id].actions[0]->name, "Action name");
    text_copy(node[id].actions[0]->command, command);
    node[id].action_count = 1;
    return id;
}

TEST(RunAction, an_action_index_equal_to_the_count_returns_1_without_a_message) {
    const RunStage stage;
    const MessageScript script;
    const std::int32_t id = add(NODE_OBJECT, "A", "no-such-program-anywhere");
    // A record of an earlier page still stands in the slot behind the last one in use.
    action_allocate_action(&node[id].actions[1]);
    text_copy(node[id].actions[1]->command, "no-such-program-either");
    EXPECT_EQ(1, run_action(id, 1));
    EXPECT_EQ(1, run_action(id, -1));
    EXPECT_EQ(1, run_action(id, NODE_ACTIONS));
    EXPECT_EQ(0u, script.shown().size());
}

TEST(RunAction, a_node_that_is_not_there_or_a_label_does_nothing) {
    const RunStage stage;
    const MessageScript script;
    EXPECT_EQ(1, run_action(0, 0));
    EXPECT_EQ(1, run_action(-1, 0));
    EXPECT_EQ(1, run_action(NODE_CAPACITY, 0));
    EXPECT_EQ(1, run_action(add(NODE_LABEL, "A", "notepad"), 0));
    EXPECT_EQ(0u, script.shown().size());
}

TEST(RunAction, a_slot_without_a_record_does_nothing) {
    const RunStage stage;
    const std::int32_t id = stage_add(NODE_OBJECT, 0.0f, 0.0f);
    node[id].action_count = 1;
    EXPECT_EQ(1, run_action(id, 0));
    node[id].type = NODE_PAGE;
    EXPECT_EQ(1, run_action(id, 0));
}

static const char EMPTY_PAGE[] = "<page>\n<offv>004</offv>\n</page>\n";

TEST(RunAction, a_command_that_ends_in_orvl_opens_that_page_under_the_actions_name) {
    RunStage stage;
    stage.folder.write("sub.orvl", EMPTY_PAGE);
    EXPECT_EQ(0, run_action(add(NODE_OBJECT, "A", "sub.orvl"), 0));
    EXPECT_STREQ("sub.orvl", scene_page_file_name);
    EXPECT_STREQ("Action name", scene_page_title);
    EXPECT_EQ(1, scene_stack_depth);
}

TEST(RunAction, a_page_object_opens_its_page_as_stored_under_its_name_whatever_the_index) {
    RunStage stage;
    stage.folder.write("$NAME.orvl", EMPTY_PAGE);
    const std::int32_t id = add(NODE_PAGE, "Sub", "$NAME.orvl");
    action_allocate_action(&node[id].actions[1]);
    text_copy(node[id].actions[1]->command, "other.orvl");
    node[id].action_count = 2;
    EXPECT_EQ(0, run_action(id, 1));
    EXPECT_STREQ("$NAME.orvl", scene_page_file_name);
    EXPECT_STREQ("Sub", scene_page_title);
}

TEST(RunAction, a_page_that_is_named_by_the_object_opens_the_stored_command) {
    RunStage stage;
    const MessageScript script;
    stage.folder.write("home.orvl", EMPTY_PAGE);
    stage.folder.write("sub.orvl", EMPTY_PAGE);
    scene_load_page("home.orvl", "Home");
    // Only the substituted command ends in ".orvl"; what is opened is the command as stored.
    EXPECT_EQ(0, run_action(add(NODE_OBJECT, "sub.orvl", "$NAME"), 0));
    ASSERT_EQ(1u, script.shown().size());
    EXPECT_EQ("Failed to open page file.", script.shown()[0].text);
    EXPECT_STREQ("home.orvl", scene_page_file_name);
}

TEST(RunAction, orvl_with_arguments_or_alone_fails_with_the_message) {
    for (const char *command : {"sub.orvl -x", ".orvl", "a.orvl.orvl"}) {
        const RunStage stage;
        const MessageScript script;
        EXPECT_EQ(1, run_action(add(NODE_OBJECT, "A", command), 0)) << command;
        ASSERT_EQ(1u, script.shown().size());
        EXPECT_EQ(FAILED, script.shown()[0].text);
        EXPECT_EQ("Orvanel", script.shown()[0].caption);
    }
}

TEST(RunAction, an_empty_command_counts_as_carried_out) {
    const RunStage stage;
    const MessageScript script;
    EXPECT_EQ(0, run_action(add(NODE_OBJECT, "A", ""), 0));
    EXPECT_EQ(0u, script.shown().size());
}

#ifndef _WIN32
// What is started, in which order, is recorded here; tests/windows/test_run_program.cpp starts it.

static int nothing_starts(const RecordedStart &) {
    return 1;
}

static int only_found_programs_start(const RecordedStart &start) {
    return start.application.empty() ? 1 : 0;
}

static int only_the_shell(const RecordedStart &start) {
    return start.through_shell ? 0 : 1;
}

struct Disks {
    TestFolder c, d;

    Disks() {
        drive_map('c', c.path);
        drive_map('d', d.path);
    }
};

TEST(RunAction, the_objects_name_is_put_into_the_command) {
    const RunStage stage;
    EXPECT_EQ(0, run_action(add(NODE_OBJECT, "Notes", "notepad $NAME.txt"), 0));
    ASSERT_EQ(1u, recorder.starts.size());
    EXPECT_EQ("notepad Notes.txt", recorder.starts[0].command_line);
    EXPECT_EQ("", recorder.starts[0].application);
    EXPECT_FALSE(recorder.starts[0].through_shell);
}

TEST(RunAction, a_program_that_cannot_be_started_shows_the_message) {
    const RunStage stage;
    const MessageScript script;
    recorder.start_result = nothing_starts;
    EXPECT_EQ(1, run_action(add(NODE_OBJECT, "A", "notepad"), 0));
    ASSERT_EQ(1u, recorder.messages.size());
    EXPECT_EQ(FAILED, recorder.messages[0].text);
    EXPECT_EQ("Orvanel", recorder.messages[0].caption);
    EXPECT_EQ(MessageIcon::Exclamation, recorder.messages[0].icon);
    EXPECT_EQ(MessageButtons::Ok, recorder.messages[0].buttons);
}

TEST(RunProgram, an_empty_command_does_nothing_and_succeeds) {
    EXPECT_EQ(0, run_program(""));
    EXPECT_EQ(0u, recorder.starts.size());
}

TEST(RunProgram, a_web_address_goes_to_the_shell_and_succeeds_whatever_comes_of_it) {
    recorder.start_result = nothing_starts;
    EXPECT_EQ(0, run_program("https://example/a b"));
    ASSERT_EQ(1u, recorder.starts.size());
    EXPECT_TRUE(recorder.starts[0].through_shell);
    EXPECT_EQ("https://example/a b", recorder.starts[0].command_line);
}

TEST(RunProgram, an_address_in_mixed_case_is_run_as_a_program) {
    recorder.start_result = nothing_starts;
    EXPECT_EQ(1, run_program("Https://example"));
    ASSERT_EQ(2u, recorder.starts.size());
    EXPECT_FALSE(recorder.starts[0].through_shell);
    EXPECT_TRUE(recorder.starts[1].through_shell);
}

TEST(RunProgram, a_page_file_anywhere_in_the_command_is_not_run) {
    EXPECT_EQ(1, run_program("sub.orvl -x"));
    EXPECT_EQ(0u, recorder.starts.size());
}

TEST(RunProgram, a_path_that_cannot_be_started_goes_to_the_shell) {
    recorder.start_result = only_the_shell;
    EXPECT_EQ(0, run_program("C:\\my documents\\notes.txt"));
    ASSERT_EQ(2u, recorder.starts.size());
    EXPECT_EQ("C:\\my documents\\notes.txt", recorder.starts[0].command_line);
    EXPECT_TRUE(recorder.starts[1].through_shell);
    EXPECT_EQ("C:\\my documents\\notes.txt", recorder.starts[1].command_line);
    recorder.start_result = nothing_starts;
    EXPECT_EQ(1, run_program("C:\\my documents\\notes.txt"));
}

TEST(RunProgram, a_bare_name_is_searched_for_as_an_exe_and_started_where_it_is_found) {
    Disks disks;
    folder_create("c:\\program files");
    folder_create("c:\\program files\\notes");
    file_create_text("c:\\program files\\notes\\notepad.exe", "");
    recorder.start_result = only_found_programs_start;
    EXPECT_EQ(0, run_program("notepad Notes.txt"));
    ASSERT_EQ(2u, recorder.starts.size());
    EXPECT_EQ("notepad Notes.txt", recorder.starts[0].command_line);
    EXPECT_EQ("c:\\program files\\notes\\notepad.exe", recorder.starts[1].application);
    EXPECT_EQ("\"c:\\program files\\notes\\notepad.exe\" Notes.txt",
              recorder.starts[1].command_line);
}

TEST(RunProgram, a_found_path_without_a_blank_stands_unquoted_before_its_arguments) {
    Disks disks;
    folder_create("c:\\tools");
    file_create_text("c:\\tools\\tool.com", "");
    recorder.start_result = only_found_programs_start;
    EXPECT_EQ(0, run_program("tool.com -a \"b c\""));
    ASSERT_EQ(2u, recorder.starts.size());
    EXPECT_EQ("c:\\tools\\tool.com -a \"b c\"", recorder.starts[1].command_line);
}

TEST(RunProgram, a_bare_name_in_quotes_is_searched_for_without_them) {
    Disks disks;
    folder_create("c:\\tools");
    file_create_text("c:\\tools\\my tool.exe", "");
    recorder.start_result = only_found_programs_start;
    for (const char *command : {"\"my tool\" -a \"b c\"", "\"my tool.exe\"-a \"b c\""}) {
        EXPECT_EQ(0, run_program(command));
        EXPECT_EQ("c:\\tools\\my tool.exe", recorder.starts.back().application);
        EXPECT_EQ("\"c:\\tools\\my tool.exe\" -a \"b c\"", recorder.starts.back().command_line);
    }
    EXPECT_EQ(1, run_program("\"my tool -a")); // nobody closed it: only the shell is left
    EXPECT_TRUE(recorder.starts.back().through_shell);
}

TEST(RunProgram, the_disks_are_searched_in_their_order) {
    Disks disks;
    for (const char *folder : {"c:\\program files", "d:\\program files", "c:\\x", "d:\\x"})
        folder_create(folder);
    const char *places[] = {"d:\\x\\tool.exe", "c:\\x\\tool.exe", "d:\\program files\\tool.exe",
                            "c:\\program files\\tool.exe"};
    recorder.start_result = only_found_programs_start;
    for (const char *place : places) {
        ASSERT_EQ(0, file_create_text(place, ""));
        EXPECT_EQ(0, run_program("tool"));
        EXPECT_EQ(place, recorder.starts.back().application);
    }
}

TEST(RunProgram, what_is_found_nowhere_goes_to_the_shell_as_it_was_written) {
    Disks disks;
    recorder.start_result = only_the_shell;
    EXPECT_EQ(0, run_program("tool with arguments"));
    ASSERT_EQ(2u, recorder.starts.size());
    EXPECT_TRUE(recorder.starts[1].through_shell);
    EXPECT_EQ("tool with arguments", recorder.starts[1].command_line);
}

TEST(RunProgram, what_is_found_but_does_not_start_goes_to_the_shell) {
    Disks disks;
    file_create_text("c:\\tool.exe", "");
    recorder.start_result = only_the_shell;
    EXPECT_EQ(0, run_program("tool x"));
    ASSERT_EQ(3u, recorder.starts.size());
    EXPECT_EQ("c:\\tool.exe", recorder.starts[1].application);
    EXPECT_TRUE(recorder.starts[2].through_shell);
}

TEST(RunProgram, the_longest_command_is_started_whole) {
    Disks disks;
    const std::string command = "t " + std::string(258, 'a');
    file_create_text("c:\\t.exe", "");
    recorder.start_result = only_found_programs_start;
    EXPECT_EQ(0, run_program(command.c_str()));
    EXPECT_EQ("c:\\t.exe " + std::string(258, 'a'), recorder.starts.back().command_line);
}

TEST(GetDefaultBrowserExe, it_is_what_stands_between_the_quotes) {
    char path[PATH_SIZE];
    recorder.browser_command = "\"C:\\Program Files\\Browser\\browser.exe\" -url \"%1\"";
    EXPECT_EQ(0, get_default_browser_exe(path));
    EXPECT_STREQ("C:\\Program Files\\Browser\\browser.exe", path);
}

TEST(GetDefaultBrowserExe, without_quotes_it_is_the_program_of_the_command_line) {
    char path[PATH_SIZE];
    recorder.browser_command = "C:\\Program Files\\b.exe %1";
    EXPECT_EQ(0, get_default_browser_exe(path));
    EXPECT_STREQ("C:\\Program Files\\b.exe", path);
    recorder.browser_command = "\"C:\\b.exe %1"; // nobody closed it
    EXPECT_EQ(0, get_default_browser_exe(path));
    EXPECT_STREQ("C:\\b.exe", path);
}

TEST(GetDefaultBrowserExe, there_is_none_without_the_key) {
    char path[PATH_SIZE];
    EXPECT_EQ(1, get_default_browser_exe(path));
}
#endif
