#include "actions/misc.h"
#include "platform/process.h"
#include "platform/text.h"
#include "tests/support/test_folder.h"
#include "tests/windows/started_program.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <string>

// A folder below "c:\program files" for programs to be found in.
struct ProgramFiles {
    const std::string folder = "c:\\Program Files\\orvanel test";
    std::vector<std::string> files;

    ProgramFiles() {
        folder_create("c:\\Program Files");
        folder_create(folder.c_str());
    }
    ~ProgramFiles() {
        for (const std::string &file : files) {
            delete_trace(file);
            for (int i = 0; i < 100 && file_exists(file.c_str()) && file_delete(file.c_str()) != 0;
                 i++)
                Sleep(TRACE_WAIT_STEP); // until the program has ended
        }
        RemoveDirectoryA(folder.c_str());
    }
    // A copy of this program that leaves a trace.
    std::string program(const std::string &path) {
        files.push_back(path);
        EXPECT_EQ(0, file_copy(own_path().c_str(), path.c_str()));
        return path;
    }
    std::string batch_file(const char *name) {
        const std::string path = folder + "\\" + name;
        files.push_back(path);
        EXPECT_EQ(0, file_replace_text(path.c_str(), "@echo %1>\"%~f0.trace\"\n"));
        return path;
    }
};

TEST(RunProgram, a_program_is_started_with_its_arguments) {
    TestFolder folder;
    const std::string program = folder.file("tool.exe");
    file_copy(own_path().c_str(), program.c_str());
    const std::string command = program + " " + TRACE_SWITCH + " \"a b\"";
    EXPECT_EQ(0, run_program(command.c_str()));
    EXPECT_EQ(command, wait_for_trace(program));
}

TEST(RunProgram, a_program_found_in_a_folder_with_a_blank_is_started_and_no_other) {
    ProgramFiles files;
    const std::string decoy = files.program("c:\\program.exe");
    const std::string tool = files.program(files.folder + "\\orvanel_test_tool.exe");
    const std::string command = std::string("orvanel_test_tool ") + TRACE_SWITCH + " x";
    EXPECT_EQ(0, run_program(command.c_str()));
    const std::string seen = wait_for_trace(tool);
    EXPECT_NE(std::string::npos, seen.find("orvanel_test_tool.exe\" --leave-a-trace x")) << seen;
    EXPECT_FALSE(file_exists((decoy + ".trace").c_str()));
}

TEST(RunProgram, a_batch_file_found_in_a_folder_with_a_blank_runs_with_its_arguments) {
    for (const char *name : {"orvanel_test_batch.bat", "orvanel_test_command.cmd"}) {
        ProgramFiles files;
        const std::string batch = files.batch_file(name);
        EXPECT_EQ(0, run_program((std::string(name) + " first second").c_str()));
        EXPECT_EQ("first", wait_for_trace(batch).substr(0, 5)) << name;
    }
}

TEST(RunProgram, a_program_that_is_nowhere_cannot_be_started) {
    EXPECT_NE(0, run_program("orvanel_test_nowhere"));
    EXPECT_NE(0, run_program("c:\\orvanel test\\nowhere.exe -x"));
}

TEST(ProcessStart, a_missing_program_is_1) {
    EXPECT_EQ(1, process_start(nullptr, "c:\\orvanel_test_nowhere.exe"));
    EXPECT_EQ(1, process_start("c:\\orvanel_test_nowhere.exe", "x"));
    EXPECT_EQ(1, process_start(nullptr, ""));
}

TEST(ProcessStart, a_started_program_inherits_no_handles) {
    TestFolder folder;
    SECURITY_ATTRIBUTES inheritable = {sizeof inheritable, nullptr, TRUE};
    const std::string path = folder.file("held");
    const HANDLE held = CreateFileA(path.c_str(), GENERIC_WRITE, 0, &inheritable, CREATE_ALWAYS,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(INVALID_HANDLE_VALUE, held);
    EXPECT_EQ(0, process_start(nullptr, "cmd.exe /c ping -n 3 127.0.0.1 >nul"));
    CloseHandle(held);
    EXPECT_EQ(0, file_delete(path.c_str())); // nobody else holds it
}

TEST(CriticalErrors, the_dialogs_are_off_only_for_a_while) {
    const UINT before = SetErrorMode(SEM_NOGPFAULTERRORBOX);
    {
        const CriticalErrorsOff off;
        EXPECT_NE(0u, GetErrorMode() & SEM_FAILCRITICALERRORS);
    }
    EXPECT_EQ(static_cast<UINT>(SEM_NOGPFAULTERRORBOX), GetErrorMode());
    SetErrorMode(before);
}

TEST(RegistryBrowserCommand, a_plain_string_is_read_also_without_its_terminator) {
    BrowserKey key;
    char text[PATH_SIZE] = "";
    key.set(REG_SZ, "\"C:\\b.exe\" %1", 14);
    EXPECT_EQ(0, registry_browser_command(text, sizeof text));
    EXPECT_STREQ("\"C:\\b.exe\" %1", text);
    key.set(REG_SZ, "C:\\b.exeRUBBISH", 8);
    EXPECT_EQ(0, registry_browser_command(text, sizeof text));
    EXPECT_STREQ("C:\\b.exe", text);
}

TEST(RegistryBrowserCommand, a_long_value_is_cut_and_any_other_type_refused) {
    BrowserKey key;
    char text[PATH_SIZE] = "";
    const std::string value(5000, 'x');
    key.set(REG_SZ, value.c_str(), value.size() + 1);
    EXPECT_EQ(0, registry_browser_command(text, sizeof text));
    EXPECT_EQ(value.substr(0, 260), text);
    key.set(REG_BINARY, "C:\\b.exe", 9);
    EXPECT_EQ(1, registry_browser_command(text, sizeof text));
    key.set(REG_DWORD, "abcd", 4);
    EXPECT_EQ(1, registry_browser_command(text, sizeof text));
}

TEST(GetDefaultBrowserExe, it_is_the_program_that_the_registry_names) {
    BrowserKey key;
    const char command[] = "\"C:\\Program Files\\Browser\\browser.exe\" \"%1\"";
    key.set(REG_SZ, command, sizeof command);
    char path[PATH_SIZE];
    EXPECT_EQ(0, get_default_browser_exe(path));
    EXPECT_STREQ("C:\\Program Files\\Browser\\browser.exe", path);
}
