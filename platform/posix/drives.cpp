#include "platform/posix/drives.h"

#include "platform/files.h"
#include "platform/posix/recorder.h"

#include <algorithm>
#include <cctype>
#include <cstring>

static constexpr int LETTERS = 26;
static std::string drives[LETTERS]; // native folders without a trailing slash

// Index of the drive a path begins with, or -1.
static int drive_index(const char *path) {
    if (std::isalpha(static_cast<unsigned char>(path[0])) == 0 || path[1] != ':')
        return -1;
    return std::tolower(static_cast<unsigned char>(path[0])) - 'a';
}

void drive_map(char letter, const std::string &folder) {
    const char path[] = {letter, ':', '\0'};
    const int index = drive_index(path);
    if (index < 0)
        return;
    drives[index] = native_path(folder.c_str());
    while (!drives[index].empty() && drives[index].back() == '/')
        drives[index].pop_back();
}

void drives_reset() {
    for (std::string &drive : drives)
        drive.clear();
}

std::string native_path(const char *path) {
    if (std::strlen(path) >= PATH_SIZE)
        return {};
    std::string native;
    const int drive = drive_index(path);
    if (drive >= 0) {
        if (drives[drive].empty())
            return {};
        native = drives[drive] + "/";
        path += 2;
    }
    native += path;
    std::replace(native.begin(), native.end(), '\\', '/');
    return native;
}

std::string program_path(const std::string &native) {
    std::string path = native;
    std::replace(path.begin(), path.end(), '/', '\\');
    return path;
}
