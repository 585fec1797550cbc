#include "platform/locations.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#ifndef _WIN32
#include "platform/posix/recorder.h"
#endif

TEST(Locations, the_program_file_is_this_program) {
    char path[PATH_SIZE];
    ASSERT_EQ(0, location_program_file(path, sizeof path));
    EXPECT_TRUE(file_exists(path));
    EXPECT_NE(nullptr, strstr(path, "test_locations"));
}

TEST(Locations, a_program_path_that_does_not_fit_is_never_cut) {
    char path[8] = "x";
    EXPECT_EQ(1, location_program_file(path, sizeof path));
    EXPECT_STREQ("", path);
}

TEST(Locations, the_users_folders_exist_and_have_no_trailing_backslash) {
#ifndef _WIN32
    recorder.documents = "\\tmp\\";
    recorder.local_app_data = "\\tmp";
#endif
    for (const auto location : {location_documents, location_local_app_data}) {
        char path[PATH_SIZE];
        ASSERT_EQ(0, location(path, sizeof path));
        EXPECT_TRUE(folder_exists(path)) << path;
        EXPECT_NE('\\', std::string(path).back());
    }
}

#ifndef _WIN32
TEST(Locations, a_system_without_such_folders_says_so) {
    char path[PATH_SIZE];
    EXPECT_EQ(1, location_documents(path, sizeof path));
    EXPECT_EQ(1, location_local_app_data(path, sizeof path));
}
#endif
