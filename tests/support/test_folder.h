// A fresh folder of its own for a test, removed with everything in it afterwards.
#pragma once

#include "platform/files.h"

#include <string>

struct TestFolder {
    char path[PATH_SIZE]; // full path, ends in a backslash

    TestFolder();
    ~TestFolder();
    TestFolder(const TestFolder &) = delete;
    TestFolder &operator=(const TestFolder &) = delete;

    std::string file(const char *name) const; // full path of a file in it
    std::string write(const char *name,
                      const std::string &bytes);   // raw bytes; returns the full path
    std::string read(const char *name) const;      // raw bytes, empty when missing
    std::string read_text(const char *name) const; // line ends as '\n'
    void set_read_only(const char *name, bool read_only);
};
