#include "platform/files.h"
#include "platform/locations.h"
#include "platform/process.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <string>

static constexpr char LIBRARY[] = "orvanel_test_library.dll"; // stands beside this program

static bool loads(const char *name) {
    const HMODULE library = LoadLibraryA(name);
    if (library != nullptr)
        FreeLibrary(library);
    return library != nullptr;
}

static std::string own_folder() {
    char path[PATH_SIZE] = "";
    location_program_file(path, sizeof path);
    const std::string file = path;
    return file.substr(0, file.rfind('\\') + 1);
}

TEST(RestrictLibraries, a_library_beside_the_program_or_in_the_current_folder_is_never_loaded) {
    const std::string folder = own_folder();
    SetCurrentDirectoryA(folder.c_str());
    ASSERT_TRUE(loads(LIBRARY));
    process_restrict_libraries();
    EXPECT_FALSE(loads(LIBRARY));
    EXPECT_TRUE(loads("version.dll"));              // the system's own
    EXPECT_TRUE(loads((folder + LIBRARY).c_str())); // whoever names it by its path means it
}
