// Opening an action menu with 50 actions, each of another program, until all of it is drawn and it
// waits for the user. Prints the microseconds of every sample: "first" of the process, "cold" when
// the program has no icon any more (the shell may still know them), "warm" when it has all.
#include "actions/menu.h"
#include "actions/menu_windows.h"
#include "bench/wine/bench_scene.h"
#include "page/node.h"
#include "page/options.h"
#include "platform/text.h"
#include "platform/win32/window_attach.h"

#include <objbase.h>
#include <windows.h>

#include <iterator>

static constexpr int SAMPLES = 15;
static constexpr double FAILED = -1.0;

static int entries_drawn;
static double shown_at; // microseconds

static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
    case WM_MEASUREITEM:
        menu_item_measure(window, reinterpret_cast<MEASUREITEMSTRUCT *>(lparam));
        return 1;
    case WM_DRAWITEM:
        menu_item_draw(window, reinterpret_cast<const DRAWITEMSTRUCT *>(lparam));
        entries_drawn++;
        return 1;
    case WM_ENTERIDLE:
        GdiFlush();
        shown_at = bench_microseconds();
        EndMenu();
        return 0;
    default:
        return DefWindowProcA(window, message, wparam, lparam);
    }
}

static HWND make_window() {
    WNDCLASSEXA window_class = {};
    window_class.cbSize = sizeof window_class;
    window_class.lpfnWndProc = procedure;
    window_class.hInstance = GetModuleHandleA(nullptr);
    window_class.lpszClassName = "orvanel:menu_benchmark";
    RegisterClassExA(&window_class);
    const HWND window = CreateWindowExA(0, window_class.lpszClassName, "menu benchmark",
                                        WS_OVERLAPPEDWINDOW | WS_VISIBLE, 100, 100, 1280, 980,
                                        nullptr, nullptr, window_class.hInstance, nullptr);
    window_attach(window, nullptr);
    return window;
}

// An object that starts the first programs of the system's folder. Returns its actions.
static int make_object() {
    node_init_nodes();
    node_init_node(0);
    node_total = 1;
    node[0].type = NODE_OBJECT;
    node[0].action_count = 0;
    text_copy(node[0].name, "Server");
    char folder[MAX_PATH], pattern[MAX_PATH + 8];
    GetSystemDirectoryA(folder, sizeof folder);
    text_format(pattern, sizeof pattern, "%s\\*.exe", folder);
    WIN32_FIND_DATAA found;
    const HANDLE search = FindFirstFileA(pattern, &found);
    if (search == INVALID_HANDLE_VALUE)
        return 0;
    do {
        Action **slot = &node[0].actions[node[0].action_count++];
        action_allocate_action(slot);
        text_format((*slot)->command, sizeof(*slot)->command, "%s\\%s", folder, found.cFileName);
        text_format((*slot)->name, sizeof(*slot)->name, "%.60s", found.cFileName);
    } while (node[0].action_count < NODE_ACTIONS && FindNextFileA(search, &found));
    FindClose(search);
    return node[0].action_count;
}

// Microseconds from the call to the menu on the screen.
static double open_menu() {
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE))
        DispatchMessageA(&message);
    entries_drawn = 0;
    const double begin = bench_microseconds();
    menu_show_menu(MENU_ACTION, 0);
    return entries_drawn >= NODE_ACTIONS ? shown_at - begin : FAILED;
}

int main() {
    CoInitialize(nullptr);
    options_set_defaults();
    orvanel_options.action_menu_icons = 1;
    const HWND window = make_window();
    if (make_object() < NODE_ACTIONS)
        return 1;
    menu_init();
    const double first[] = {open_menu()};
    double cold[SAMPLES], warm[SAMPLES];
    for (int i = 0; i < SAMPLES; i++) {
        menu_icon_cache_free();
        cold[i] = open_menu();
        warm[i] = open_menu();
    }
    bench_print("menu_open/first", first);
    bench_print("menu_open/cold", cold);
    bench_print("menu_open/warm", warm);
    menu_icon_cache_free();
    menu_stop();
    DestroyWindow(window);
    node_free_nodes();
    CoUninitialize();
    return 0;
}
