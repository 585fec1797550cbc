// Running actions, and the helpers for files and names that pages are made with.
#pragma once

#include "platform/files.h"

#include <cstddef>
#include <cstdint>

// ---- running actions (misc_run.cpp)

// 0 carried out; 1 not: index out of range, a label, or the program could not be started (a message
// has been shown then).
std::int32_t run_action(std::int32_t node_id, std::int32_t action_index);

// Starts a program, or has the shell open a document, folder or address. 0 started, else not.
std::int32_t run_program(const char *command);

// Replaces every occurrence of pattern in text by value; text holds at most size characters and its
// terminator. Inserted text is not scanned again.
void variable_substitute(char *text, const char *pattern, const char *value, std::size_t size);

// Puts an object's name in place of $NAME, $name, ${NAME} and ${name}, as run_action does.
void action_substitute_name(char (&command)[PATH_SIZE], const char *name);

// Splits a command line; each part up to 260 characters.
void command_line_seperate(const char *command, char (&program)[PATH_SIZE],
                           char (&arguments)[PATH_SIZE]);

// 0 when text begins like a web address, 1 otherwise: zero means yes on purpose.
std::int32_t is_url(const char *text);

// Looks for a file below a folder (misc_find.cpp), depth first, in the order of the file system.
// Folders are entered when recurse is 1, down to max_depth backslashes in "folder\*"; 0 = no limit.
// Paths longer than 260 characters are passed over. 0 found, 1 not.
std::int32_t finder_find(const char *folder, const char *file_name, std::int32_t recurse,
                         std::int32_t max_depth, char (&found_path)[PATH_SIZE]);

// The default browser's program. 0, or 1 when there is none.
std::int32_t get_default_browser_exe(char (&path)[PATH_SIZE]);

// ---- file and name helpers (misc_files.cpp)

// Folders are given with a trailing backslash. 0, or 1 when nothing matches.
std::int32_t copy_files(const char *source_folder, const char *target_folder, const char *pattern);
std::int32_t change_file_extensions(const char *folder, const char *old_extension,
                                    const char *new_extension);

// The file that a page of this name goes into: letters, digits and '_' of it and ".orvl".
void page_file_name_from_page_name(const char *name, char (&file_name)[PATH_SIZE]);

// The same in place, but a path stays as it is.
void convert_string_to_valid_page_file_name(char (&name)[PATH_SIZE]);
inline constexpr std::size_t PAGE_TITLE_SIZE = 41;
void generate_page_name_from_file_name(const char *path, char (&title)[PAGE_TITLE_SIZE]);
