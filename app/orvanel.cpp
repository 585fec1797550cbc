// The entry point: a process becomes the running launcher, and ends.
#include "app/hand_over.h"
#include "app/main_loop.h"
#include "app/main_window.h"
#include "app/mouse_trails.h"
#include "app/startup.h"
#include "editing/clipboard.h"
#include "platform/clock.h"
#include "platform/network.h"
#include "platform/process.h"
#include "scene/frame_clock.h"
#include "scene/gl_window.h"
#include "scene/interaction.h"
#include "scene/scene.h"
#include "scene/scene_page.h"
#include "update/auto_update.h"

#include <commctrl.h>
#include <objbase.h>
#include <windows.h>

#include <cstdlib>

static constexpr int EXIT_FAILED_TO_START = 1;
static constexpr UINT HAND_OVER_TIMEOUT = 30'000; // milliseconds; the other may be in a transition

// Of several starts at the same moment each waits until the one before has its window, which is
// what the next one looks for.
static constexpr char START_MUTEX[] = "Local\\orvanel:start";
static constexpr DWORD START_TIMEOUT = 10'000; // milliseconds; a message may keep the other

static HANDLE start_turn;

static void begin_start_turn() {
    start_turn = CreateMutexA(nullptr, FALSE, START_MUTEX);
    if (start_turn != nullptr)
        WaitForSingleObject(start_turn, START_TIMEOUT);
}

static void end_start_turn() {
    if (start_turn == nullptr)
        return;
    ReleaseMutex(start_turn);
    CloseHandle(start_turn);
    start_turn = nullptr;
}

static void hand_over(HWND other, const char *command_line) {
    if (IsIconic(other))
        ShowWindow(other, SW_RESTORE);
    SetForegroundWindow(GetLastActivePopup(other)); // a dialog that is open stays in front
    char path[HAND_OVER_SIZE];
    if (!hand_over_write(command_line, path))
        return;
    COPYDATASTRUCT message = {};
    message.dwData = HAND_OVER_ID;
    message.cbData = HAND_OVER_SIZE;
    message.lpData = path;
    SendMessageTimeoutA(other, WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&message), SMTO_ABORTIFHUNG,
                        HAND_OVER_TIMEOUT, nullptr);
}

static void start_common_controls() {
    INITCOMMONCONTROLSEX controls = {};
    controls.dwSize = sizeof controls;
    controls.dwICC = ICC_STANDARD_CLASSES | ICC_WIN95_CLASSES;
    InitCommonControlsEx(&controls);
}

// Everything up to a window that can be drawn in. 0, or 1 when the program may not go on.
static int open_window(HINSTANCE instance) {
    std::srand(clock_unix_seconds());
    if (startup_program_folders() != 0 || startup_options() != 0)
        return 1;
    startup_splash_screen();
    startup_page_folder();
    start_common_controls();
    if (main_window_register(instance) != 0)
        return 1;
    interaction_init();
    if (main_window_create() != 0)
        return 1;
    end_start_turn();
    startup_graphics_check(graphics_adapter_check());
    main_window_show();
    return 0;
}

static std::uint32_t open_first_page(const char *command_line) {
    startup_modules();
    startup_migrate_pages();
    const std::uint32_t result = startup_open_pages(command_line);
    main_window_update();
    mouse_trails_init();
    scene_request_redraw();
    scene_draw();
    return result;
}

// Leaves the processor to others until something is due or a message comes, whichever is first.
static void wait_for_work() {
    const DWORD spare_time = main_loop_spare_time();
    if (spare_time > 0)
        MsgWaitForMultipleObjectsEx(0, nullptr, spare_time, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
}

// Runs until the quit message, and returns its exit code, or until an update ends the program.
static int run_main_loop() {
    reset_frame_timer();
    MSG message = {};
    while (run == 1) {
        if (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE) == 0) {
            main_loop_pass();
            wait_for_work();
        } else if (message.message == WM_QUIT) {
            run = 0;
            return static_cast<int>(message.wParam);
        } else {
            TranslateMessage(&message);
            DispatchMessageA(&message);
        }
    }
    return 0;
}

static int run_in_window(const char *command_line) {
    const std::uint32_t result = open_first_page(command_line);
    int exit_code = EXIT_FAILED_TO_START;
    if (result == PAGE_LOADED) {
        scene_invalidate_floor();
        main_window_update();
        startup_update_check();
        clipboard_used = CLIPBOARD_EMPTY;
        exit_code = run_main_loop();
    } else {
        startup_report_page(result);
    }
    startup_stop_modules();
    main_window_destroy();
    mouse_trails_stop();
    auto_update_stop(); // it may take a moment, with the window gone
    return exit_code;
}

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR command_line, int) {
    process_restrict_libraries();
    begin_start_turn(); // the end of the process ends it in any case
    const HWND other = FindWindowA(MAIN_WINDOW_CLASS, nullptr);
    if (other != nullptr) {
        hand_over(other, command_line);
        return 0;
    }
    if (startup_network() != 0)
        return EXIT_FAILED_TO_START;
    const HRESULT com = CoInitialize(nullptr); // what the shell opens may need it
    const int exit_code =
        open_window(instance) == 0 ? run_in_window(command_line) : EXIT_FAILED_TO_START;
    if (SUCCEEDED(com))
        CoUninitialize();
    network_stop();
    return exit_code;
}
