#include "platform/process.h"

#include "platform/text.h"
#include "platform/win32/window_attach.h"

#include <windows.h>
// shellapi.h needs windows.h before it.
#include <shellapi.h>

#include <string>
#include <vector>

static constexpr char BROWSER_KEY[] = "HTTP\\shell\\open\\command";
static constexpr DWORD REGISTRY_VALUE_LIMIT = 1u << 16; // bytes; longer values are no command
static constexpr INT_PTR SHELL_ERROR_MAX = 32;          // ShellExecute reports success above it

#ifndef LOAD_LIBRARY_SEARCH_SYSTEM32
#define LOAD_LIBRARY_SEARCH_SYSTEM32 0x00000800
#endif

// The second call is missing from older systems.
void process_restrict_libraries() {
    SetDllDirectoryA("");
    using SetDirectories = BOOL(WINAPI *)(DWORD flags);
    const auto set_directories = reinterpret_cast<SetDirectories>(reinterpret_cast<void *>(
        GetProcAddress(GetModuleHandleA("kernel32.dll"), "SetDefaultDllDirectories")));
    if (set_directories != nullptr)
        set_directories(LOAD_LIBRARY_SEARCH_SYSTEM32);
}

int process_start(const char *application, const char *command_line) {
    std::string writable = command_line; // the system may write into it
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    if (CreateProcessA(application, writable.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                       &startup, &process) == 0)
        return 1;
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return 0;
}

int shell_open(const char *target) {
    const HINSTANCE result = ShellExecuteA(static_cast<HWND>(window_in_front()), "open", target,
                                           nullptr, nullptr, SW_SHOWNORMAL);
    return reinterpret_cast<INT_PTR>(result) > SHELL_ERROR_MAX ? 0 : 1;
}

std::int32_t system_major_version() {
    using GetVersion = LONG(WINAPI *)(OSVERSIONINFOW * version);
    const auto get_version = reinterpret_cast<GetVersion>(
        reinterpret_cast<void *>(GetProcAddress(GetModuleHandleA("ntdll.dll"), "RtlGetVersion")));
    OSVERSIONINFOW version = {};
    version.dwOSVersionInfoSize = sizeof version;
    if (get_version == nullptr || get_version(&version) != 0)
        return 0;
    return static_cast<std::int32_t>(version.dwMajorVersion);
}

CriticalErrorsOff::CriticalErrorsOff()
    : previous(SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX)) {}

CriticalErrorsOff::~CriticalErrorsOff() {
    SetErrorMode(previous);
}

// Reads the default value of an open key: 0, or 1 when it is no plain string. The value may come
// without its terminator.
static int read_default_string(HKEY key, char *text, std::size_t size) {
    DWORD type = 0;
    DWORD bytes = 0;
    if (RegQueryValueExA(key, nullptr, nullptr, &type, nullptr, &bytes) != ERROR_SUCCESS ||
        type != REG_SZ || bytes > REGISTRY_VALUE_LIMIT)
        return 1;
    std::vector<char> value(bytes + 1, '\0');
    if (RegQueryValueExA(key, nullptr, nullptr, &type, reinterpret_cast<BYTE *>(value.data()),
                         &bytes) != ERROR_SUCCESS ||
        type != REG_SZ)
        return 1;
    value.back() = '\0';
    text_copy(text, size, value.data());
    return 0;
}

int registry_browser_command(char *text, std::size_t size) {
    HKEY key = nullptr;
    if (RegOpenKeyExA(HKEY_CLASSES_ROOT, BROWSER_KEY, 0, KEY_READ, &key) != ERROR_SUCCESS)
        return 1;
    const int result = read_default_string(key, text, size);
    RegCloseKey(key);
    return result;
}
