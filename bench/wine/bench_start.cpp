// Time from process start to the first frame, of several programs by turns in one run:
//   bench_start rounds program.exe…
// Prints one line a program: its name and the milliseconds of every round.
#include "bench/wine/first_frame.h"

#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <vector>

static constexpr DWORD TIMEOUT_MS = 60000;

static double milliseconds_now() {
    LARGE_INTEGER frequency, count;
    QueryPerformanceFrequency(&frequency);
    QueryPerformanceCounter(&count);
    return 1000.0 * static_cast<double>(count.QuadPart) / static_cast<double>(frequency.QuadPart);
}

// Milliseconds until the program showed its first frame; it is ended then. Negative on failure.
static double measure(char *program, HANDLE event) {
    ResetEvent(event);
    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process = {};
    const double begin = milliseconds_now();
    if (!CreateProcessA(nullptr, program, nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                        &process))
        return -1.0;
    const DWORD result = WaitForSingleObject(event, TIMEOUT_MS);
    const double end = milliseconds_now();
    TerminateProcess(process.hProcess, 0);
    WaitForSingleObject(process.hProcess, TIMEOUT_MS);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return result == WAIT_OBJECT_0 ? end - begin : -1.0;
}

int main(int argument_count, char **arguments) {
    if (argument_count < 3)
        return 2;
    const HANDLE event = CreateEventA(nullptr, TRUE, FALSE, FIRST_FRAME_EVENT);
    const int rounds = std::atoi(arguments[1]);
    const int programs = argument_count - 2;
    std::vector<std::vector<double>> times(static_cast<std::size_t>(programs));
    for (int round = 0; round <= rounds; round++) {
        for (int i = 0; i < programs; i++) {
            const double time = measure(arguments[2 + i], event);
            if (round > 0) // the first round only warms up
                times[static_cast<std::size_t>(i)].push_back(time);
        }
    }
    for (int i = 0; i < programs; i++) {
        std::printf("%s", arguments[2 + i]);
        for (const double time : times[static_cast<std::size_t>(i)])
            std::printf(" %.2f", time);
        std::printf("\n");
    }
    CloseHandle(event);
    return 0;
}
