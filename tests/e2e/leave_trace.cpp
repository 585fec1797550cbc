// Leaves a file in the temporary folder that shows with what it was started, and ends: NAME.trace,
// for a program NAME.exe. The end-to-end tests use it as an installer and as a browser.
#include <windows.h>

#include <cstdio>
#include <cstring>

int main() {
    char program[MAX_PATH], folder[MAX_PATH], trace[2 * MAX_PATH + 10];
    GetModuleFileNameA(nullptr, program, sizeof program);
    GetTempPathA(sizeof folder, folder);
    const char *backslash = std::strrchr(program, '\\');
    const char *name = backslash != nullptr ? backslash + 1 : program;
    const int length = static_cast<int>(std::strcspn(name, "."));
    std::snprintf(trace, sizeof trace, "%s%.*s.trace", folder, length, name);
    std::FILE *file = std::fopen(trace, "wb");
    if (file == nullptr)
        return 1;
    std::fputs(GetCommandLineA(), file);
    return std::fclose(file);
}
