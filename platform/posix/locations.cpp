#include "platform/locations.h"

#include "platform/posix/drives.h"
#include "platform/posix/recorder.h"
#include "platform/text.h"

#include <climits>
#include <unistd.h>

static int give(const std::string &folder, char *path, std::size_t size) {
    if (folder.empty())
        return 1;
    const bool trailing = folder.size() > 1 && folder.back() == '\\';
    text_copy(path, size, folder.substr(0, folder.size() - (trailing ? 1 : 0)).c_str());
    return 0;
}

int location_documents(char *path, std::size_t size) {
    return give(recorder.documents, path, size);
}

int location_local_app_data(char *path, std::size_t size) {
    return give(recorder.local_app_data, path, size);
}

int location_temporary(char *path, std::size_t size) {
    return give(recorder.temporary, path, size);
}

int location_program_file(char *path, std::size_t size) {
    char link[PATH_MAX];
    path[0] = '\0'; // a path that was cut names something else
    const ssize_t length = readlink("/proc/self/exe", link, sizeof link);
    if (length <= 0 || static_cast<std::size_t>(length) >= size)
        return 1;
    text_copy(path, size, program_path({link, static_cast<std::size_t>(length)}).c_str());
    return 0;
}
