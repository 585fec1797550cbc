#include "platform/resource.h"

#include "platform/dib.h"

#include <cstdio>
#include <cstring>
#include <string>

// The resource script and its ids are read as they stand, so that there is one list only.
static constexpr char FOLDER[] = ORVANEL_RESOURCE_DIR "/";
static constexpr std::size_t FILE_HEADER_SIZE =
    14; // of a bitmap file, before what a resource holds

static std::vector<std::uint8_t> read_bytes(const std::string &path) {
    std::vector<std::uint8_t> bytes;
    FILE *file = std::fopen(path.c_str(), "rb");
    if (file == nullptr)
        return bytes;
    std::uint8_t block[4096];
    for (std::size_t got; (got = std::fread(block, 1, sizeof block, file)) > 0;)
        bytes.insert(bytes.end(), block, block + got);
    std::fclose(file);
    return bytes;
}

// Calls visit(line) for the lines of a text file until it answers true.
template <typename Visit>
static bool find_line(const char *name, Visit visit) {
    const std::vector<std::uint8_t> bytes = read_bytes(std::string(FOLDER) + name);
    const std::string text(bytes.begin(), bytes.end());
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = text.find('\n', start);
        if (visit(text.substr(start, end - start)))
            return true;
        if (end == std::string::npos)
            break;
        start = end + 1;
    }
    return false;
}

// Whether the header of the ids defines name as id.
static bool id_is_named(int id, const char *name) {
    return find_line("resource_ids.h", [=](const std::string &line) {
        char defined[64];
        int value = 0;
        return std::sscanf(line.c_str(), "#define %63s %d", defined, &value) == 2 && value == id &&
               std::strcmp(defined, name) == 0;
    });
}

static std::string bitmap_file(int id) {
    std::string found;
    find_line("bitmaps.rc", [&](const std::string &line) {
        char name[64], file[128];
        if (std::sscanf(line.c_str(), "%63s BITMAP \"%127[^\"]\"", name, file) != 2 ||
            !id_is_named(id, name))
            return false;
        found = file;
        return true;
    });
    return found;
}

int resource_bitmap(int id, BitmapPixels *pixels) {
    *pixels = {};
    const std::string name = bitmap_file(id);
    if (name.empty())
        return 1;
    const std::vector<std::uint8_t> bytes = read_bytes(FOLDER + name);
    if (bytes.size() < FILE_HEADER_SIZE)
        return 1;
    return dib_decode(std::span(bytes).subspan(FILE_HEADER_SIZE), pixels);
}
