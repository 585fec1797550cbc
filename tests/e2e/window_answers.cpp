// Asks the program's main window and its dialogs for an answer again and again, and prints the
// longest that each kind of window took: class, milliseconds, number of answers, separated by '|'.
// Ends when the main window is gone, and after so many milliseconds at the latest.
//   window_answers.exe milliseconds
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

static constexpr UINT PATIENCE = 5000; // milliseconds; a window that takes longer hangs
static constexpr DWORD PAUSE = 5;      // milliseconds between two rounds

struct Asked {
    const char *name; // of the window class
    double longest;   // milliseconds
    int answers;
};

static Asked kinds[] = {{"orvanel:main_window", 0.0, 0}, {"#32770", 0.0, 0}};
static const Asked &main_window = kinds[0];

static double now() {
    LARGE_INTEGER frequency, count;
    QueryPerformanceFrequency(&frequency);
    QueryPerformanceCounter(&count);
    return 1000.0 * static_cast<double>(count.QuadPart) / static_cast<double>(frequency.QuadPart);
}

static BOOL CALLBACK ask(HWND window, LPARAM) {
    char name[64] = "";
    GetClassNameA(window, name, sizeof name);
    for (Asked &kind : kinds) {
        if (!IsWindowVisible(window) || lstrcmpA(name, kind.name) != 0)
            continue;
        const double start = now();
        SendMessageTimeoutA(window, WM_NULL, 0, 0, SMTO_NORMAL, PATIENCE, nullptr);
        kind.longest = std::max(kind.longest, now() - start);
        kind.answers++;
    }
    return TRUE;
}

int main(int, char **arguments) {
    const double end = now() + std::atof(arguments[1]);
    int answers = -1; // of the main window, before the last round
    while (now() < end && (answers != main_window.answers || answers == 0)) {
        answers = main_window.answers;
        EnumWindows(ask, 0);
        Sleep(PAUSE);
    }
    for (const Asked &kind : kinds)
        std::printf("%s|%.1f|%d\n", kind.name, kind.longest, kind.answers);
    return 0;
}
