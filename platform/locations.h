// The program's folders, known to everything that opens a file. Set once at start-up; each ends in
// a backslash.
#pragma once

#include "platform/files.h"

extern char exe_location[PATH_SIZE];               // folder of the executable
extern char object_dir_location[PATH_SIZE];        // model files
extern char page_template_dir_location[PATH_SIZE]; // page files shipped with the program
extern char page_dir_location[PATH_SIZE];          // the user's page files

// Folders of the system, without a trailing backslash. 0, or 1 when the system has none.
int location_documents(char *path, std::size_t size);
int location_local_app_data(char *path, std::size_t size);
int location_temporary(char *path, std::size_t size);

// Full path of the running program.
int location_program_file(char *path, std::size_t size);
