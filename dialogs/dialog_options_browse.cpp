#include "dialogs/dialog_options_browse.h"

#include "dialogs/rules/dialog_options_rules.h"
#include "platform/text.h"

#include <objbase.h>
#include <shlobj.h>

#include <cstring>

static constexpr std::size_t ROOT_LENGTH = 3; // of "c:\"

// The chooser finds no folder by a name that ends in a backslash, but for the root of a drive.
static void drop_backslash(char (&folder)[PATH_SIZE]) {
    const std::size_t length = std::strlen(folder);
    if (length > ROOT_LENGTH && folder[length - 1] == '\\')
        folder[length - 1] = '\0';
}

static int CALLBACK select_folder(HWND chooser, UINT message, LPARAM, LPARAM folder) {
    if (message == BFFM_INITIALIZED)
        SendMessageA(chooser, BFFM_SETSELECTIONA, TRUE, folder);
    return 0;
}

static int take_path(PIDLIST_ABSOLUTE item, char (&folder)[PATH_SIZE]) {
    if (item == nullptr)
        return 1;
    char path[MAX_PATH] = "";
    const bool has_path = SHGetPathFromIDListA(item, path) != 0;
    CoTaskMemFree(item);
    if (has_path)
        text_copy(folder, path);
    return has_path ? 0 : 1;
}

int dialog_options_browse(HWND owner, char (&folder)[PATH_SIZE]) {
    char selected[PATH_SIZE];
    text_copy(selected, folder);
    drop_backslash(selected);
    BROWSEINFOA chooser = {};
    chooser.hwndOwner = owner;
    chooser.lpszTitle = OPTIONS_BROWSE_TITLE;
    chooser.ulFlags = BIF_RETURNONLYFSDIRS | BIF_NEWDIALOGSTYLE; // with a button for a new folder
    chooser.lpfn = select_folder;
    chooser.lParam = reinterpret_cast<LPARAM>(selected);
    const HRESULT com = CoInitialize(nullptr); // what the newer style needs
    const int result = take_path(SHBrowseForFolderA(&chooser), folder);
    if (SUCCEEDED(com))
        CoUninitialize();
    return result;
}
