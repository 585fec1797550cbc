// Page files: the bytes the writer produces and the small file operations. Reading is
// scene/scene_load.h. A name without a backslash is relative to the page folder.
#pragma once

#include <cstddef>
#include <string>

inline constexpr std::size_t PAGE_PATH_SIZE = 2001; // folder and name, 1,000 characters each
inline constexpr int PAGE_FORMAT_VERSION = 4;
inline constexpr char PAGE_FORMAT_VERSION_TEXT[] = "004";

struct PageColour {
    int use_default; // 1 = the default page colour of the options
    float red, green, blue, alpha;
};

struct PageProperties {
    float home_x, home_y; // resting position of the floor
    PageColour colour;
};

// Full path of a page.
void page_path(char (&path)[PAGE_PATH_SIZE], const char *name);

// The tables node and line as page text, lines ending in '\n'.
std::string page_format(const PageProperties &properties);

// Writes the tables as a page. 0 written, 1 the file cannot be written (the old one is untouched).
int page_save(const char *name, const PageProperties &properties);

// New empty page: 0 created, 1 the name exists (untouched), 2 cannot be created.
int xml_create_page(const char *name);

// 0 writable (a missing file is created empty by asking), 1 not.
int xml_is_page_writable(const char *name);

// 0 deleted or not there (nor openable for reading), 1 deletion failed.
int xml_delete_page(const char *name);
