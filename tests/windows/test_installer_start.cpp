// A downloaded program is really started from the file that is held meanwhile. What is started is a
// copy of this test program, which then leaves a trace and ends.
#include "platform/installer_file.h"
#include "tests/support/test_folder.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <string>
#include <vector>

static constexpr char NAME[] = "orvanel_setup.exe";
static constexpr DWORD SHARE_ALL = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
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
    for (DWORD waited = 0; waited < WAIT && !file_exists((path + ".end").c_str());
         waited += WAIT_STEP)
        Sleep(WAIT_STEP);
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

// Only when its process has ended can a program be deleted.
static bool wait_until_deleted(const std::string &path) {
    for (DWORD waited = 0; waited < WAIT; waited += WAIT_STEP) {
        if (DeleteFileA(path.c_str()) != 0)
            return true;
        Sleep(WAIT_STEP);
    }
    return false;
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
        EXPECT_EQ(0, DeleteFileA(folder.file(NAME).c_str())) << "the process holds it at once";
        EXPECT_EQ(INVALID_HANDLE_VALUE, CreateFileA(folder.file(NAME).c_str(), GENERIC_WRITE,
                                                    SHARE_ALL, nullptr, OPEN_EXISTING, 0, nullptr));
        const std::string trace = folder.file(NAME) + ".started";
        EXPECT_EQ("\"" + folder.file(NAME) + "\"", wait_for_command_line(trace)) << verb;
        file_replace_text((folder.file(NAME) + ".end").c_str(), "");
        EXPECT_TRUE(wait_until_deleted(folder.file(NAME)));
    }
}
