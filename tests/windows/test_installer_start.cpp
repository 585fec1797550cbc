// A downloaded program is really started from the file that is held meanwhile. What is started is a
// copy of this test program, which then leaves a trace and ends.
#include "platform/installer_file.h"
#include "tests/support/test_folder.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <string>
#include <vector>

static constexpr char NAME[] = "orvanel_setup.exe";
static constexpr DWORD WAIT = 20'000;  // milliseconds
static constexpr DWORD WAIT_STEP = 50; // milliseconds

static std::string own_path() {
    char path[MAX_PATH];
    GetModuleFileNameA(nullptr, path, sizeof path);
    return path;
}

static const bool started_as_installer = [] {
    const std::string path = own_path();
    if (!path.ends_with(NAME))
        return false;
    file_replace_text((path + ".started").c_str(), GetCommandLineA());
    ExitProcess(0);
}();

// That the program was started with, without the blanks that some systems leave at its end; empty
// when it never was.
static std::string wait_for_command_line(const std::string &trace) {
    std::vector<char> bytes;
    for (DWORD waited = 0; waited < WAIT; waited += WAIT_STEP) {
        if (file_read(trace.c_str(), &bytes) == 0)
            break;
        Sleep(WAIT_STEP);
    }
    while (!bytes.empty() && bytes.back() == ' ')
        bytes.pop_back();
    return {bytes.begin(), bytes.end()};
}

TEST(InstallerStart, a_sealed_file_is_started_without_parameters_while_it_is_held) {
    std::vector<char> program;
    ASSERT_EQ(0, file_read(own_path().c_str(), &program));
    for (const char *verb : {"open", "runas"}) {
        const TestFolder folder;
        InstallerFile *file = installer_file_create(folder.file(NAME).c_str());
        ASSERT_NE(nullptr, file);
        ASSERT_EQ(0, installer_file_write(file, program));
        ASSERT_EQ(0, installer_file_seal(file));
        EXPECT_EQ(0, installer_file_start(file, verb));
        EXPECT_EQ(0, DeleteFileA(folder.file(NAME).c_str())) << "it is still held";
        installer_file_keep(file);
        const std::string trace = folder.file(NAME) + ".started";
        EXPECT_EQ("\"" + folder.file(NAME) + "\"", wait_for_command_line(trace)) << verb;
    }
}
