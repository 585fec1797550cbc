// The version of the system, which decides whether an installer is started with the administrator's
// rights: that of this system, and of systems that it is not.
#include "platform/process.h"
#include "tests/windows/replaced_import.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <cstdlib>
#include <string_view>

static constexpr char KEY[] = "SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion";

// The system told by its registry; 0 when it does not.
static std::int32_t registered_major_version() {
    DWORD number = 0, size = sizeof number;
    if (RegGetValueA(HKEY_LOCAL_MACHINE, KEY, "CurrentMajorVersionNumber", RRF_RT_REG_DWORD,
                     nullptr, &number, &size) == ERROR_SUCCESS)
        return static_cast<std::int32_t>(number);
    char text[20] = ""; // older systems have "6.1" only
    size = sizeof text;
    RegGetValueA(HKEY_LOCAL_MACHINE, KEY, "CurrentVersion", RRF_RT_REG_SZ, nullptr, text, &size);
    return std::atoi(text);
}

TEST(SystemVersion, It_is_the_major_version_of_this_system) {
    EXPECT_GT(registered_major_version(), 0);
    EXPECT_EQ(system_major_version(), registered_major_version());
}

// ---- other systems

static const ReplacedImport *usual_functions;
static FARPROC version_function; // of the other system; null = it has none
static DWORD other_version;

static LONG WINAPI tell_version(OSVERSIONINFOW *version) {
    EXPECT_EQ(version->dwOSVersionInfoSize, sizeof *version);
    version->dwMajorVersion = other_version;
    version->dwMinorVersion = other_version + 1;
    return 0;
}

static LONG WINAPI fail_to_tell(OSVERSIONINFOW *version) {
    tell_version(version);
    return -1;
}

static FARPROC WINAPI find_function(HMODULE library, LPCSTR name) {
    if (!IS_INTRESOURCE(name) && std::string_view("RtlGetVersion") == name)
        return version_function;
    return reinterpret_cast<decltype(&GetProcAddress)>(usual_functions->original)(library, name);
}

static std::int32_t version_with(LONG(WINAPI *function)(OSVERSIONINFOW *)) {
    REPLACED_IMPORT(functions, "kernel32.dll", GetProcAddress, find_function);
    usual_functions = &functions;
    version_function = reinterpret_cast<FARPROC>(reinterpret_cast<void *>(function));
    return system_major_version();
}

TEST(SystemVersion, It_is_what_the_system_says) {
    for (const DWORD major : {5, 6, 10}) {
        other_version = major;
        EXPECT_EQ(version_with(tell_version), static_cast<std::int32_t>(major));
    }
}

TEST(SystemVersion, Of_a_system_that_does_not_tell_it_is_0) {
    other_version = 10;
    EXPECT_EQ(version_with(fail_to_tell), 0);
    EXPECT_EQ(version_with(nullptr), 0);
}
