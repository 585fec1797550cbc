// Keeps Wine's services and its desktop up while test programs come and go: each would start them
// anew otherwise, which takes longer than most of them. Says "ready", then waits until its input
// ends.
#include <windows.h>

#include <cstdio>

int main() {
    // The first window of a prefix brings its desktop along; who has had one holds on to it.
    const HWND window =
        CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr);
    if (window == nullptr)
        return 1;
    DestroyWindow(window);
    std::puts("ready");
    std::fflush(stdout);
    while (std::getchar() != EOF) {
    }
    return 0;
}
