#include "actions/misc.h"

#include "tests/support/test_folder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#ifndef _WIN32
#include "platform/posix/drives.h"
#include "platform/posix/recorder.h"

#include <unistd.h>
#endif

// A folder without its trailing backslash, as the search takes it.
static std::string top(const TestFolder &folder) {
    return std::string(folder.path, std::string(folder.path).size() - 1);
}

// Backslashes of the pattern with which the search enumerates the folder itself.
static std::int32_t depth_of(const TestFolder &folder) {
    const std::string path = folder.path;
    return static_cast<std::int32_t>(std::count(path.begin(), path.end(), '\\'));
}

TEST(FinderFind, a_file_is_found_whatever_its_letter_case) {
    TestFolder folder;
    folder.write("Tool.EXE", "");
    char found[PATH_SIZE];
    ASSERT_EQ(0, finder_find(top(folder).c_str(), "tool.exe", 1, 0, found));
    EXPECT_EQ(folder.file("Tool.EXE"), found);
    EXPECT_EQ(1, finder_find(top(folder).c_str(), "tool", 1, 0, found));
    EXPECT_EQ(1, finder_find(folder.file("missing").c_str(), "tool.exe", 1, 0, found));
}

TEST(FinderFind, folders_are_entered_up_to_the_depth_and_no_further) {
    TestFolder folder;
    folder_create(folder.file("a").c_str());
    folder_create(folder.file("a\\b").c_str());
    folder_create(folder.file("a\\b\\c").c_str());
    folder.write("a\\b\\c\\tool.exe", "");
    char found[PATH_SIZE];
    const std::int32_t depth = depth_of(folder);
    EXPECT_EQ(1, finder_find(top(folder).c_str(), "tool.exe", 1, depth + 1, found));
    EXPECT_EQ(0, finder_find(top(folder).c_str(), "tool.exe", 1, depth + 2, found));
    EXPECT_EQ(folder.file("a\\b\\c\\tool.exe"), found);
    EXPECT_EQ(0, finder_find(top(folder).c_str(), "tool.exe", 1, 0, found));
}

TEST(FinderFind, without_recursion_only_the_folder_itself_is_searched) {
    TestFolder folder;
    folder_create(folder.file("a").c_str());
    folder.write("a\\tool.exe", "");
    folder.write("own.exe", "");
    char found[PATH_SIZE];
    EXPECT_EQ(1, finder_find(top(folder).c_str(), "tool.exe", 0, 0, found));
    EXPECT_EQ(0, finder_find(top(folder).c_str(), "own.exe", 0, 0, found));
}

TEST(FinderFind, folders_whose_name_begins_with_a_dot_are_not_entered) {
    TestFolder folder;
    folder_create(folder.file(".a").c_str());
    folder.write(".a\\tool.exe", "");
    char found[PATH_SIZE];
    EXPECT_EQ(1, finder_find(top(folder).c_str(), "tool.exe", 1, 0, found));
}

TEST(FinderFind, a_folder_of_the_wanted_name_is_no_match) {
    TestFolder folder;
    folder_create(folder.file("tool.exe").c_str());
    char found[PATH_SIZE];
    EXPECT_EQ(1, finder_find(top(folder).c_str(), "tool.exe", 1, 0, found));
}

TEST(FinderFind, a_path_that_is_too_long_is_passed_over_and_never_cut) {
    TestFolder folder;
    // The longest folder that can still be enumerated; a file in it no longer fits.
    const std::size_t room = 257 - std::string(folder.path).size();
    const std::string deep(room / 2, 'a');
    const std::string deeper(room - deep.size() - 1, 'b');
    ASSERT_EQ(0, folder_create(folder.file(deep.c_str()).c_str()));
    folder_create(folder.file((deep + "\\" + deeper).c_str()).c_str());
    folder.write("z.exe", "");
    char found[PATH_SIZE];
    EXPECT_EQ(0, finder_find(top(folder).c_str(), "z.exe", 1, 0, found));
    EXPECT_EQ(folder.file("z.exe"), found);
    EXPECT_EQ(1, finder_find(std::string(260, 'x').c_str(), "z.exe", 1, 0, found));
    EXPECT_EQ(1, finder_find(std::string(5000, 'x').c_str(), "z.exe", 1, 0, found));
}

#ifndef _WIN32
TEST(FinderFind, the_top_folder_of_a_drive_has_depth_one) {
    TestFolder folder;
    drive_map('c', folder.path);
    folder_create("c:\\a");
    folder_create("c:\\a\\b");
    file_create_text("c:\\a\\in_subfolder.exe", "");
    file_create_text("c:\\a\\b\\too_deep.exe", "");
    char found[PATH_SIZE];
    EXPECT_EQ(0, finder_find("c:", "in_subfolder.exe", 1, 1, found));
    EXPECT_STREQ("c:\\a\\in_subfolder.exe", found);
    EXPECT_EQ(1, finder_find("c:", "too_deep.exe", 1, 1, found));
}

TEST(FinderFind, program_files_is_searched_two_folders_deep) {
    TestFolder folder;
    drive_map('c', folder.path);
    for (const char *path : {"c:\\program files", "c:\\program files\\1", "c:\\program files\\1\\2",
                             "c:\\program files\\1\\2\\3"})
        folder_create(path);
    file_create_text("c:\\program files\\1\\2\\two.exe", "");
    file_create_text("c:\\program files\\1\\2\\3\\three.exe", "");
    char found[PATH_SIZE];
    EXPECT_EQ(0, finder_find("c:\\program files", "two.exe", 1, 3, found));
    EXPECT_EQ(1, finder_find("c:\\program files", "three.exe", 1, 3, found));
}

TEST(FinderFind, a_walk_ends_although_links_lead_back_to_their_own_parents) {
    TestFolder folder;
    folder_create(folder.file("a").c_str());
    for (const char *name : {"a\\1", "a\\2", "a\\3", "4", "5"})
        ASSERT_EQ(0, symlink("..", native_path(folder.file(name).c_str()).c_str()));
    char found[PATH_SIZE];
    EXPECT_EQ(1, finder_find(top(folder).c_str(), "missing.exe", 1, 0, found));
    EXPECT_EQ(1, finder_find(top(folder).c_str(), "missing.exe", 1, depth_of(folder) + 3, found));
}

TEST(FinderFind, a_linked_folder_is_entered_where_the_depth_is_limited) {
    TestFolder folder, elsewhere;
    elsewhere.write("tool.exe", "");
    ASSERT_EQ(0, symlink(native_path(elsewhere.path).c_str(),
                         native_path(folder.file("link").c_str()).c_str()));
    char found[PATH_SIZE];
    EXPECT_EQ(0, finder_find(top(folder).c_str(), "tool.exe", 1, depth_of(folder), found));
    EXPECT_EQ(folder.file("link\\tool.exe"), found);
}
#endif
