#include "platform/installer_file.h"

#include "tests/support/test_folder.h"
#include "tests/support/test_installer.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#ifdef _WIN32
#include <windows.h>
#else
#include "platform/posix/drives.h"

#include <sys/stat.h>
#endif

namespace fs = std::filesystem;

static constexpr char NAME[] = "orvanel_setup.exe";

class InstallerFileTest : public testing::Test {
protected:
    TestFolder folder;

    InstallerFile *create() const {
        return installer_file_create(folder.file(NAME).c_str());
    }

    // How this system's own functions name the file.
    std::string system_name(const char *name) const {
#ifdef _WIN32
        return folder.file(name);
#else
        return native_path(folder.file(name).c_str());
#endif
    }
};

static std::string read_all(InstallerFile *file, std::size_t at_a_time) {
    std::string bytes;
    std::vector<char> block(at_a_time);
    long long got = 0;
    while ((got = installer_file_read(file, block)) > 0)
        bytes.append(block.data(), static_cast<std::size_t>(got));
    EXPECT_EQ(0, got);
    return bytes;
}

TEST_F(InstallerFileTest, what_was_written_is_read_from_the_beginning_once_sealed) {
    InstallerFile *file = create();
    ASSERT_NE(nullptr, file);
    EXPECT_EQ(0, installer_file_write(file, test_installer(1000)));
    EXPECT_EQ(0, installer_file_write(file, std::string("end")));
    ASSERT_EQ(0, installer_file_seal(file));
    EXPECT_EQ(test_installer(1000) + "end", read_all(file, 7));
    installer_file_keep(file);
    EXPECT_EQ(test_installer(1000) + "end", folder.read(NAME));
}

TEST_F(InstallerFileTest, a_deleted_file_is_gone_sealed_or_not) {
    InstallerFile *file = create();
    ASSERT_NE(nullptr, file);
    installer_file_delete(file);
    EXPECT_FALSE(file_exists(folder.file(NAME).c_str()));
    file = create();
    ASSERT_NE(nullptr, file);
    EXPECT_EQ(0, installer_file_seal(file));
    installer_file_delete(file);
    EXPECT_FALSE(file_exists(folder.file(NAME).c_str()));
}

TEST_F(InstallerFileTest, no_file_at_all_can_be_kept_and_deleted) {
    installer_file_keep(nullptr);
    installer_file_delete(nullptr);
}

TEST_F(InstallerFileTest, a_leftover_is_deleted_not_written_into) {
    folder.write(NAME, "leftover that is longer");
    fs::create_hard_link(system_name(NAME), system_name("same file"));
    InstallerFile *file = create();
    ASSERT_NE(nullptr, file);
    EXPECT_EQ(0, installer_file_write(file, std::string("new")));
    EXPECT_EQ(0, installer_file_seal(file));
    installer_file_keep(file);
    EXPECT_EQ("new", folder.read(NAME));
    EXPECT_EQ("leftover that is longer", folder.read("same file"));
}

TEST_F(InstallerFileTest, a_folder_of_that_name_stays) {
    ASSERT_EQ(0, folder_create(folder.file(NAME).c_str()));
    EXPECT_EQ(nullptr, create());
    EXPECT_TRUE(folder_exists(folder.file(NAME).c_str()));
}

TEST_F(InstallerFileTest, a_missing_folder_takes_no_file) {
    EXPECT_EQ(nullptr, installer_file_create(folder.file("missing\\file.exe").c_str()));
    EXPECT_EQ(nullptr, installer_file_create(""));
}

#ifndef _WIN32
TEST_F(InstallerFileTest, a_link_is_left_alone) {
    folder.write("target", "the user's");
    fs::create_symlink(system_name("target"), system_name(NAME));
    EXPECT_EQ(nullptr, create());
    EXPECT_EQ("the user's", folder.read("target"));
    EXPECT_TRUE(fs::is_symlink(system_name(NAME)));
}

TEST_F(InstallerFileTest, a_link_to_nothing_makes_no_file) {
    fs::create_symlink(system_name("target"), system_name(NAME));
    EXPECT_EQ(nullptr, create());
    EXPECT_FALSE(file_exists(folder.file("target").c_str()));
}

TEST_F(InstallerFileTest, only_the_owner_may_read_and_write_it) {
    InstallerFile *file = create();
    ASSERT_NE(nullptr, file);
    struct stat status;
    ASSERT_EQ(0, stat(system_name(NAME).c_str(), &status));
    EXPECT_EQ(0600u, status.st_mode & 0777u);
    installer_file_delete(file);
}

TEST_F(InstallerFileTest, a_file_put_in_its_place_is_noticed) {
    InstallerFile *file = create();
    ASSERT_NE(nullptr, file);
    ASSERT_EQ(0, file_delete(folder.file(NAME).c_str()));
    folder.write(NAME, "another");
    EXPECT_NE(0, installer_file_seal(file));
    installer_file_delete(file);
}

#else

// Error of the system when somebody else opens the file like that; 0 when it can be.
static DWORD open_error(const std::string &path, DWORD access, DWORD share) {
    const HANDLE other =
        CreateFileA(path.c_str(), access, share, nullptr, OPEN_EXISTING, 0, nullptr);
    if (other == INVALID_HANDLE_VALUE)
        return GetLastError();
    CloseHandle(other);
    return 0;
}

static constexpr DWORD SHARE_ALL = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

// Whoever shares all may read; nobody may write, rename or delete.
static void expect_held(const std::string &path) {
    EXPECT_EQ(0u, open_error(path, GENERIC_READ, SHARE_ALL));
    for (const DWORD access : {DWORD{GENERIC_WRITE}, DWORD{FILE_APPEND_DATA}, DWORD{DELETE}})
        EXPECT_EQ(DWORD{ERROR_SHARING_VIOLATION}, open_error(path, access, SHARE_ALL)) << access;
    EXPECT_EQ(0, DeleteFileA(path.c_str()));
    EXPECT_EQ(0, MoveFileA(path.c_str(), (path + ".moved").c_str()));
    EXPECT_EQ(0, CopyFileA((path + ".other").c_str(), path.c_str(), FALSE));
}

TEST_F(InstallerFileTest, from_its_creation_nobody_else_can_write_rename_or_delete_it) {
    folder.write("orvanel_setup.exe.other", "another");
    InstallerFile *file = create();
    ASSERT_NE(nullptr, file);
    expect_held(folder.file(NAME));
    EXPECT_EQ(0, installer_file_write(file, std::string("bytes")));
    expect_held(folder.file(NAME));
    ASSERT_EQ(0, installer_file_seal(file));
    expect_held(folder.file(NAME));
    installer_file_keep(file);
    EXPECT_EQ("bytes", folder.read(NAME));
}

TEST_F(InstallerFileTest, a_sealed_file_can_be_opened_as_the_system_opens_programs) {
    static constexpr DWORD PROGRAM_ACCESS = FILE_EXECUTE | FILE_READ_DATA | SYNCHRONIZE;
    InstallerFile *file = create();
    ASSERT_NE(nullptr, file);
    EXPECT_EQ(DWORD{ERROR_SHARING_VIOLATION},
              open_error(folder.file(NAME), PROGRAM_ACCESS, FILE_SHARE_READ | FILE_SHARE_DELETE));
    ASSERT_EQ(0, installer_file_seal(file));
    EXPECT_EQ(0u,
              open_error(folder.file(NAME), PROGRAM_ACCESS, FILE_SHARE_READ | FILE_SHARE_DELETE));
    installer_file_delete(file);
}

TEST_F(InstallerFileTest, a_file_that_another_download_holds_is_left_alone) {
    InstallerFile *file = create();
    ASSERT_NE(nullptr, file);
    EXPECT_EQ(nullptr, create());
    EXPECT_EQ(0, installer_file_write(file, std::string("bytes")));
    installer_file_keep(file);
    EXPECT_EQ("bytes", folder.read(NAME));
}

TEST_F(InstallerFileTest, a_read_only_file_is_left_alone) {
    folder.write(NAME, "old");
    folder.set_read_only(NAME, true);
    EXPECT_EQ(nullptr, create());
    folder.set_read_only(NAME, false);
    EXPECT_EQ("old", folder.read(NAME));
}
#endif
