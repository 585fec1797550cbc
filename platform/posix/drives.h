// Maps the program's paths (backslashes, drives) to paths of this system and back.
#pragma once

#include <string>

// Empty when the path is too long for the program or on a drive that is not mapped.
std::string native_path(const char *path);
std::string program_path(const std::string &native);

void drives_reset(); // no drive is mapped
