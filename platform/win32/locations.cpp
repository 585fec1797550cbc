#include "platform/locations.h"

#include "platform/text.h"

#include <windows.h>
// shlobj.h needs windows.h before it.
#include <shlobj.h>

static int system_folder(int id, char *path, std::size_t size) {
    char folder[MAX_PATH];
    if (SHGetFolderPathA(nullptr, id, nullptr, SHGFP_TYPE_CURRENT, folder) != S_OK)
        return 1;
    text_copy(path, size, folder);
    return 0;
}

int location_documents(char *path, std::size_t size) {
    return system_folder(CSIDL_PERSONAL, path, size);
}

int location_local_app_data(char *path, std::size_t size) {
    return system_folder(CSIDL_LOCAL_APPDATA, path, size);
}

int location_temporary(char *path, std::size_t size) {
    const DWORD capacity = static_cast<DWORD>(size);
    const DWORD length = GetTempPathA(capacity, path);
    if (length == 0 || length >= capacity) {
        path[0] = '\0'; // a path that was cut names something else
        return 1;
    }
    path[length - 1] = '\0'; // the backslash
    return 0;
}

int location_program_file(char *path, std::size_t size) {
    const DWORD capacity = static_cast<DWORD>(size);
    const DWORD length = GetModuleFileNameA(nullptr, path, capacity);
    if (length > 0 && length < capacity)
        return 0;
    path[0] = '\0'; // a path that was cut names something else
    return 1;
}
