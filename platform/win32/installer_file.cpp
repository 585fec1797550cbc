#include "platform/installer_file.h"

#include "platform/win32/window_attach.h"

#include <windows.h>
// Both need windows.h before them.
#include <sddl.h>
#include <shellapi.h>

#include <string>

// Virus scanners look at a file for a moment after it was written; they are waited for.
static constexpr int SCAN_ATTEMPTS = 25;
static constexpr DWORD SCAN_PAUSE = 20; // milliseconds
static constexpr std::wstring_view LONG_PREFIX = L"\\\\?\\";
static constexpr std::wstring_view SERVER_PREFIX = L"\\\\?\\UNC\\";

struct InstallerFile {
    HANDLE file;
    std::wstring path; // without links on the way, which could be turned elsewhere meanwhile
};

// 0 when nothing stands there any more. Deleting takes away a name only: of a file that has other
// names nothing is lost.
static int remove_leftover(const char *path) {
    const DWORD attributes = GetFileAttributesA(path);
    if (attributes == INVALID_FILE_ATTRIBUTES)
        return 0;
    if ((attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT)) != 0)
        return 1;
    return DeleteFileA(path) != 0 ? 0 : 1;
}

// Identity of the user the program runs for, as text. Empty on failure.
static std::string user_sid(HANDLE token) {
    alignas(TOKEN_USER) char buffer[sizeof(TOKEN_USER) + SECURITY_MAX_SID_SIZE];
    DWORD size = 0;
    char *text = nullptr;
    if (GetTokenInformation(token, TokenUser, buffer, sizeof buffer, &size) == 0 ||
        ConvertSidToStringSidA(reinterpret_cast<TOKEN_USER *>(buffer)->User.Sid, &text) == 0)
        return {};
    std::string sid = text;
    LocalFree(text);
    return sid;
}

// Lets in the user, the administrators and the system only, whatever the folder says. Null on
// failure; else the caller frees it with LocalFree.
static PSECURITY_DESCRIPTOR own_security() {
    HANDLE token = nullptr;
    if (OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &token) == 0)
        return nullptr;
    const std::string sid = user_sid(token);
    CloseHandle(token);
    PSECURITY_DESCRIPTOR security = nullptr;
    const std::string text = "D:P(A;;FA;;;" + sid + ")(A;;FA;;;BA)(A;;FA;;;SY)";
    if (sid.empty() || ConvertStringSecurityDescriptorToSecurityDescriptorA(
                           text.c_str(), SDDL_REVISION_1, &security, nullptr) == 0)
        return nullptr;
    return security;
}

static HANDLE create_new(const char *path) {
    SECURITY_ATTRIBUTES attributes = {sizeof attributes, own_security(), FALSE};
    if (attributes.lpSecurityDescriptor == nullptr)
        return INVALID_HANDLE_VALUE;
    const HANDLE file = CreateFileA(path, GENERIC_WRITE, FILE_SHARE_READ, &attributes, CREATE_NEW,
                                    FILE_ATTRIBUTE_NORMAL | FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
    LocalFree(attributes.lpSecurityDescriptor);
    return file;
}

// Where an open file really is. Empty on failure.
static std::wstring final_path(HANDLE file) {
    wchar_t buffer[MAX_PATH];
    const DWORD length = GetFinalPathNameByHandleW(file, buffer, MAX_PATH, VOLUME_NAME_DOS);
    if (length == 0 || length >= MAX_PATH)
        return {};
    const std::wstring_view path(buffer, length);
    if (path.starts_with(SERVER_PREFIX))
        return L"\\\\" + std::wstring(path.substr(SERVER_PREFIX.size()));
    return std::wstring(path.substr(path.starts_with(LONG_PREFIX) ? LONG_PREFIX.size() : 0));
}

InstallerFile *installer_file_create(const char *path) {
    if (remove_leftover(path) != 0)
        return nullptr;
    const HANDLE file = create_new(path);
    if (file == INVALID_HANDLE_VALUE)
        return nullptr;
    const std::wstring real_path = final_path(file);
    if (!real_path.empty())
        return new InstallerFile{file, real_path};
    CloseHandle(file);
    DeleteFileA(path);
    return nullptr;
}

int installer_file_write(InstallerFile *file, std::span<const char> bytes) {
    DWORD written = 0;
    return WriteFile(file->file, bytes.data(), static_cast<DWORD>(bytes.size()), &written,
                     nullptr) != 0 &&
                   written == bytes.size()
               ? 0
               : 1;
}

static HANDLE reopen_alone(HANDLE file) {
    for (int i = 0; i < SCAN_ATTEMPTS; i++) {
        const HANDLE alone = ReOpenFile(file, GENERIC_READ, FILE_SHARE_READ, 0);
        if (alone != INVALID_HANDLE_VALUE)
            return alone;
        Sleep(SCAN_PAUSE);
    }
    return INVALID_HANDLE_VALUE;
}

// The system starts no file that anyone has open for writing, ourselves included. A reader that
// shares writing bridges the change from the handle that writes to one that shares reading only:
// all the while the file can neither be renamed nor deleted.
int installer_file_seal(InstallerFile *file) {
    const HANDLE bridge =
        ReOpenFile(file->file, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, 0);
    if (bridge == INVALID_HANDLE_VALUE)
        return 1;
    CloseHandle(file->file);
    file->file = bridge;
    const HANDLE alone = reopen_alone(bridge);
    if (alone == INVALID_HANDLE_VALUE)
        return 1;
    CloseHandle(bridge);
    file->file = alone;
    return 0;
}

long long installer_file_read(InstallerFile *file, std::span<char> target) {
    DWORD got = 0;
    if (ReadFile(file->file, target.data(), static_cast<DWORD>(target.size()), &got, nullptr) == 0)
        return -1;
    return got;
}

// The shell may start programs beside the caller, above all those that get the administrator's
// rights; here it comes back only when the process stands or never will (SEE_MASK_NOASYNC). The
// system lets nobody write into or delete the file of a process, so that from then on it needs no
// holding: there is no moment between the last byte and the start in which it is free.
int installer_file_start(InstallerFile *file, const char *verb) {
    const std::wstring wide_verb(verb, verb + std::char_traits<char>::length(verb));
    SHELLEXECUTEINFOW start = {};
    start.cbSize = sizeof start;
    start.fMask = SEE_MASK_NOASYNC | SEE_MASK_FLAG_NO_UI;
    start.hwnd = static_cast<HWND>(window_in_front());
    start.lpVerb = wide_verb.c_str();
    start.lpFile = file->path.c_str();
    start.nShow = SW_SHOWNORMAL;
    return ShellExecuteExW(&start) != 0 ? 0 : 1;
}

void installer_file_keep(InstallerFile *file) {
    if (file == nullptr)
        return;
    CloseHandle(file->file);
    delete file;
}

void installer_file_delete(InstallerFile *file) {
    if (file == nullptr)
        return;
    CloseHandle(file->file);
    for (int i = 0; i < SCAN_ATTEMPTS && DeleteFileW(file->path.c_str()) == 0 &&
                    GetLastError() == ERROR_SHARING_VIOLATION;
         i++)
        Sleep(SCAN_PAUSE);
    delete file;
}
