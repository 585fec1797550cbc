#include "dialogs/dialog.h"

#include "resources/resource_ids.h"
#include "tests/windows/window_properties.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

// Copies of this program, processes that have not loaded the themes yet, say by their exit code
// whether they found them.
static constexpr char CHILD_SWITCH[] = "--ask-for-themes";
static constexpr char NO_LIBRARIES_SWITCH[] = "--and-find-no-libraries";
static constexpr DWORD CHILD_TIMEOUT = 60'000; // milliseconds
static constexpr DWORD WITHOUT_THEMES = 77, WITH_THEMES = 78;
static constexpr DWORD SEARCH_USER_FOLDERS = 0x400; // LOAD_LIBRARY_SEARCH_USER_DIRS: there are none

static void find_no_libraries() {
    using SetDirectories = BOOL(WINAPI *)(DWORD flags);
    const auto set_directories = reinterpret_cast<SetDirectories>(reinterpret_cast<void *>(
        GetProcAddress(GetModuleHandleA("kernel32.dll"), "SetDefaultDllDirectories")));
    set_directories(SEARCH_USER_FOLDERS);
}

static const bool is_child = [] {
    if (std::strstr(GetCommandLineA(), CHILD_SWITCH) == nullptr)
        return false;
    if (std::strstr(GetCommandLineA(), NO_LIBRARIES_SWITCH) != nullptr)
        find_no_libraries();
    enable_xp_theme(nullptr);
    enable_xp_theme(nullptr); // the answer is kept
    ExitProcess(GetModuleHandleA("uxtheme.dll") == nullptr ? WITHOUT_THEMES : WITH_THEMES);
}();

static DWORD child_exit_code(const std::string &switches) {
    char path[MAX_PATH];
    GetModuleFileNameA(nullptr, path, sizeof path);
    std::string command = std::string("\"") + path + "\" " + switches;
    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process = {};
    if (CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                       &startup, &process) == 0)
        return 0;
    WaitForSingleObject(process.hProcess, CHILD_TIMEOUT);
    DWORD code = 0;
    GetExitCodeProcess(process.hProcess, &code);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return code;
}

TEST(DialogTheme, A_system_with_themes_is_asked_for_them) {
    EXPECT_EQ(child_exit_code(CHILD_SWITCH), WITH_THEMES);
}

static HWND page_of_a_tab(HWND parent) {
    return CreateDialogParamA(GetModuleHandleA(nullptr),
                              MAKEINTRESOURCEA(RESOURCE_DIALOG_OPTIONS_ACTIONS), parent, nullptr,
                              0);
}

TEST(DialogTheme, A_page_gets_the_texture_of_tabs) {
    static constexpr DWORD ENABLE_TAB = 6; // ETDT_ENABLETAB
    const HMODULE themes = LoadLibraryA("uxtheme.dll");
    const auto enable = reinterpret_cast<HRESULT(WINAPI *)(HWND, DWORD)>(
        reinterpret_cast<void *>(GetProcAddress(themes, "EnableThemeDialogTexture")));
    ASSERT_NE(enable, nullptr);
    const HWND parent =
        CreateWindowA("STATIC", "", WS_POPUP, 0, 0, 400, 400, nullptr, nullptr, nullptr, nullptr);
    const HWND wanted = page_of_a_tab(parent), page = page_of_a_tab(parent);
    const WindowProperties before = window_properties(page);
    enable(wanted, ENABLE_TAB);
    enable_xp_theme(page);
    EXPECT_NE(window_properties(page), before);
    EXPECT_EQ(window_properties(page), window_properties(wanted));
    DestroyWindow(parent);
    FreeLibrary(themes);
}

TEST(DialogTheme, On_a_system_without_uxtheme_dll_enable_xp_theme_does_nothing) {
    EXPECT_EQ(child_exit_code(std::string(CHILD_SWITCH) + " " + NO_LIBRARIES_SWITCH),
              WITHOUT_THEMES);
}
