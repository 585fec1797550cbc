#include "actions/misc.h"

#include "platform/text.h"

#include <algorithm>
#include <cstring>
#include <string_view>

static constexpr char SEPARATOR = '\\';

struct Search {
    const char *file_name;
    std::int32_t recurse;
    std::int32_t max_depth; // 0 = no limit
    char (&found_path)[PATH_SIZE];
};

// folder, separator and name into path; false when that is longer than a path may be.
static bool join(char (&path)[PATH_SIZE], const char *folder, const char *name) {
    if (std::strlen(folder) + 1 + std::strlen(name) >= PATH_SIZE)
        return false;
    text_format(path, sizeof path, "%s\\%s", folder, name);
    return true;
}

// A limited walk ends whatever links it meets. One without a limit would go round through a link to
// one of its own parents, so it stays out of links.
static bool may_enter(const Search &search, const FolderEntry &entry, std::int32_t depth) {
    if (search.recurse != 1 || entry.name[0] == '.')
        return false;
    return search.max_depth == 0 ? !entry.is_link : depth <= search.max_depth;
}

static std::int32_t walk(const Search &search, const char *folder) {
    char path[PATH_SIZE];
    if (!join(path, folder, "*"))
        return 1;
    const std::string_view pattern = path;
    const auto depth =
        static_cast<std::int32_t>(std::count(pattern.begin(), pattern.end(), SEPARATOR));
    const FolderScanHandle scan = folder_scan_open(path);
    FolderEntry entry;
    while (scan != nullptr && folder_scan_next(scan.get(), &entry)) {
        if (!join(path, folder, entry.name))
            continue;
        if (entry.is_folder) {
            if (may_enter(search, entry, depth) && walk(search, path) == 0)
                return 0;
        } else if (text_equal_ignore_case(entry.name, search.file_name)) {
            text_copy(search.found_path, path);
            return 0;
        }
    }
    return 1;
}

std::int32_t finder_find(const char *folder, const char *file_name, std::int32_t recurse,
                         std::int32_t max_depth, char (&found_path)[PATH_SIZE]) {
    return walk({file_name, recurse, max_depth, found_path}, folder);
}
