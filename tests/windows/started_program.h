// Sees what programs were started with. The test program itself is what gets started, or a copy of
// it: with TRACE_SWITCH on its command line it writes that line beside itself and ends.
#pragma once

#include <windows.h>

#include <string>

inline constexpr char TRACE_SWITCH[] = "--leave-a-trace";
inline constexpr DWORD TRACE_WAIT_STEP = 50; // milliseconds between two looks

std::string own_path();

// The command line that the program at path was started with, empty when it never was.
std::string wait_for_trace(const std::string &path);
void delete_trace(const std::string &path);

// The registry key of the default browser, put back as it was.
struct BrowserKey {
    HKEY key = nullptr;
    char before[1024] = "";
    DWORD type = 0, size = sizeof before;
    bool had_value = false;

    BrowserKey();
    ~BrowserKey();
    BrowserKey(const BrowserKey &) = delete;
    BrowserKey &operator=(const BrowserKey &) = delete;

    void set(DWORD new_type, const void *bytes, std::size_t count);
    void set_to_own_program(); // addresses that are opened leave a trace beside it
};
