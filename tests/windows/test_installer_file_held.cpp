// The installer's file while somebody else has it open, as virus scanners do when it was written:
// for a moment, or for good.
#include "platform/installer_file.h"

#include "tests/support/test_folder.h"
#include "tests/windows/replaced_import.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <string>

static constexpr char NAME[] = "orvanel_setup.exe";
static constexpr DWORD SHARE_ALL = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

static HANDLE other; // the other's handle
static std::string path;
static int looks;    // at the file, while the other holds it
static int patience; // looks after which the other lets go; negative = never

static void let_go() {
    if (other != INVALID_HANDLE_VALUE)
        CloseHandle(other);
    other = INVALID_HANDLE_VALUE;
}

static HANDLE open_other(DWORD access, DWORD share) {
    return CreateFileA(path.c_str(), access, share, nullptr, OPEN_EXISTING, 0, nullptr);
}

static const ReplacedImport *usual_sleep, *usual_reopen;

static void WINAPI sleep_and_look(DWORD milliseconds) {
    if (++looks == patience)
        let_go();
    reinterpret_cast<decltype(&Sleep)>(usual_sleep->original)(milliseconds);
}

// Somebody comes in between, while the file is open for reading only.
static HANDLE WINAPI reopen_behind_a_writer(HANDLE file, DWORD access, DWORD share, DWORD flags) {
    if (share == FILE_SHARE_READ && looks == 0)
        other = open_other(GENERIC_WRITE, SHARE_ALL);
    return reinterpret_cast<decltype(&ReOpenFile)>(usual_reopen->original)(file, access, share,
                                                                           flags);
}

class InstallerFileHeld : public testing::Test {
protected:
    TestFolder folder;
    InstallerFile *file;

    InstallerFileHeld() {
        path = folder.file(NAME);
        other = INVALID_HANDLE_VALUE;
        looks = 0;
        file = installer_file_create(path.c_str());
        EXPECT_EQ(0, installer_file_write(file, std::string("bytes")));
    }
    ~InstallerFileHeld() override {
        let_go();
    }

    // Seals the file while a writer comes in between, who goes after so many looks.
    int seal(int looks_of_the_writer) {
        patience = looks_of_the_writer;
        REPLACED_IMPORT(sleep, "kernel32.dll", Sleep, sleep_and_look);
        REPLACED_IMPORT(reopen, "kernel32.dll", ReOpenFile, reopen_behind_a_writer);
        usual_sleep = &sleep;
        usual_reopen = &reopen;
        return installer_file_seal(file);
    }

    void remove(int looks_of_the_reader) {
        patience = looks_of_the_reader;
        other = open_other(GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE);
        EXPECT_NE(other, INVALID_HANDLE_VALUE);
        REPLACED_IMPORT(sleep, "kernel32.dll", Sleep, sleep_and_look);
        usual_sleep = &sleep;
        installer_file_delete(file);
    }

    bool is_there() const {
        return file_exists(path.c_str());
    }
};

TEST_F(InstallerFileHeld, who_has_it_open_for_writing_for_a_moment_is_waited_for) {
    EXPECT_EQ(0, seal(3));
    EXPECT_EQ(3, looks);
    EXPECT_EQ(open_other(GENERIC_WRITE, SHARE_ALL), INVALID_HANDLE_VALUE) << "nobody else can now";
    installer_file_delete(file);
    EXPECT_FALSE(is_there());
}

TEST_F(InstallerFileHeld, who_has_it_open_for_writing_for_good_spoils_it) {
    EXPECT_NE(0, seal(-1));
    EXPECT_NE(other, INVALID_HANDLE_VALUE);
    EXPECT_LE(looks, 30) << "it is given up soon";
    installer_file_delete(file);
    let_go();
    EXPECT_FALSE(is_there());
}

TEST_F(InstallerFileHeld, who_looks_at_it_for_a_moment_delays_its_deletion) {
    EXPECT_EQ(0, installer_file_seal(file));
    remove(5);
    EXPECT_EQ(5, looks);
    EXPECT_FALSE(is_there());
}

TEST_F(InstallerFileHeld, who_looks_at_it_for_good_keeps_it_until_the_next_one_is_made) {
    EXPECT_EQ(0, installer_file_seal(file));
    remove(-1);
    EXPECT_LE(looks, 30) << "it is given up soon";
    EXPECT_TRUE(is_there());
    EXPECT_EQ(nullptr, installer_file_create(path.c_str())) << "another place is to be tried";
    let_go();
    file = installer_file_create(path.c_str());
    ASSERT_NE(nullptr, file);
    installer_file_delete(file);
    EXPECT_FALSE(is_there());
}
