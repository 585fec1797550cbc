// Starting programs and handing things to the shell. The posix side records the starts
// (platform/posix/recorder.h).
#pragma once

#include <cstddef>
#include <cstdint>

// Starts a process in the program's own folder and environment, inheriting no handles, and lets go
// of it. application is the program's path, or null when command_line begins with it.
// Returns 0, or 1 when it could not be started.
int process_start(const char *application, const char *command_line);

// Hands a document, folder or address to the shell with the verb "open". 0 opened, 1 refused.
int shell_open(const char *target);

// From now on libraries come from the system's folder only: one that was put beside the program or
// into the current folder is never loaded. Nothing to do on the posix side.
void process_restrict_libraries();

// The system's real version, whatever it tells programs that it takes for old ones.
std::int32_t system_major_version();

// Switches the system's "no disk in drive" dialogs off while alive.
struct CriticalErrorsOff {
    unsigned previous;
    CriticalErrorsOff();
    ~CriticalErrorsOff();
    CriticalErrorsOff(const CriticalErrorsOff &) = delete;
    CriticalErrorsOff &operator=(const CriticalErrorsOff &) = delete;
};

// The default value of the classes-root key "HTTP\shell\open\command" into text. Returns 0, or 1
// when the key is missing or its value is not a plain string.
int registry_browser_command(char *text, std::size_t size);
