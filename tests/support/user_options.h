// The user's options file for tests that save it: natively in a fresh folder; on Windows the
// system's, where the file of whoever runs the test is put aside meanwhile.
#pragma once

#include "tests/support/test_folder.h"

#include <string>

struct UserOptionsFile {
    TestFolder folder; // the program's folder is in here as well: "program"
    std::string user_folder, user_file, put_aside;

    UserOptionsFile(); // no file yet, default settings
    ~UserOptionsFile();

    std::string text() const; // empty when missing
    void set_read_only(bool read_only);
};
