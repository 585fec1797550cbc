// The update dialog when the system lets it down: no thread, no timer, a slow disk, a file that
// somebody holds.
#include "dialogs/dialogs.h"
#include "resources/resource_ids.h"
#include "tests/unit/update_fixture.h"
#include "tests/windows/answer_watch.h"
#include "tests/windows/dialog_player.h"
#include "tests/windows/opened_pages.h"
#include "tests/windows/real_window.h"
#include "tests/windows/replaced_import.h"

#include <gtest/gtest.h>

#include <atomic>

static constexpr char TITLE[] = "New version available";
static constexpr int DOWNLOAD = RESOURCE_UPDATE_DOWNLOAD;
static constexpr std::uint32_t FOR_EVER = 600'000; // milliseconds; no test waits as long
static constexpr std::size_t BLOCK = 64 * 1024;    // bytes that are read at a time
static constexpr int BLOCKS = 60;

// ---- what the system does

static HANDLE WINAPI refuse_thread(LPSECURITY_ATTRIBUTES, SIZE_T, LPTHREAD_START_ROUTINE, LPVOID,
                                   DWORD, LPDWORD) {
    return nullptr;
}

static const ReplacedImport *usual_timers;

// Those of windows are refused; the player of the dialog has one of its own.
static UINT_PTR WINAPI refuse_timer(HWND window, UINT_PTR id, UINT period, TIMERPROC function) {
    const auto set = reinterpret_cast<decltype(&SetTimer)>(usual_timers->original);
    return window != nullptr ? 0 : set(window, id, period, function);
}

static const ReplacedImport *usual_reads;
static std::atomic<int> reads; // of blocks

static BOOL WINAPI read_slowly(HANDLE file, LPVOID target, DWORD size, LPDWORD got,
                               LPOVERLAPPED overlapped) {
    const auto read = reinterpret_cast<decltype(&ReadFile)>(usual_reads->original);
    if (size == BLOCK) {
        reads++;
        Sleep(50);
    }
    return read(file, target, size, got, overlapped);
}

// What the shell was asked to start.
static struct {
    int times;
    std::wstring verb;
    bool parameters;
    int show;
} asked;

static HANDLE scanner;

// The user refuses, and a scanner looks at the file at the same time, for ever.
static BOOL WINAPI refuse_installer(SHELLEXECUTEINFOW *start) {
    asked = {asked.times + 1, start->lpVerb, start->lpParameters != nullptr, start->nShow};
    scanner = CreateFileW(start->lpFile, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                          OPEN_EXISTING, 0, nullptr);
    SetLastError(ERROR_CANCELLED);
    return FALSE;
}

// ---- the dialog

class UpdateDialogFaults : public UpdateTest {
protected:
    RealWindow window;

    UpdateDialogFaults() {
        http_client_limits = {.timeout = FOR_EVER, .disk_bytes = 100'000'000};
        asked = {};
        scanner = INVALID_HANDLE_VALUE;
    }

    // Plays the user, who begins the download and waits; what the dialog ended with.
    static std::int32_t play(AnswerWatch *watch = nullptr) {
        DialogPlayer player({{TITLE,
                              [watch](HWND shown) {
                                  if (watch != nullptr)
                                      watch->dialog = shown;
                                  click(shown, DOWNLOAD);
                              }},
                             {"a dialog that never comes: nobody cancels", nullptr}});
        return dialog_update_show();
    }
    static void expect_in_time(const AnswerWatch &watch) {
        EXPECT_GT(watch.main_asked.in_time, 0);
        EXPECT_GT(watch.dialog_asked.in_time, 0);
        if (!watch.machine_was_busy()) {
            EXPECT_EQ(watch.main_asked.late + watch.dialog_asked.late, 0);
        }
    }
};

TEST_F(UpdateDialogFaults, Without_a_thread_the_download_page_is_opened_and_the_program_quits) {
    give_installer();
    const OpenedPages pages_kept;
    REPLACED_IMPORT(threads, "kernel32.dll", CreateThread, refuse_thread);
    EXPECT_EQ(play(), DIALOG_UPDATE_QUIT);
    EXPECT_EQ(opened_pages,
              std::vector{"http://" + std::string(auto_update_site()) + "/download.html"});
    EXPECT_EQ(server.connections(), 0);
    EXPECT_FALSE(file_is_there());
}

TEST_F(UpdateDialogFaults, Without_a_timer_the_dialog_quits_without_giving_the_installer_its_time) {
    give_installer();
    auto_update_waits.after_installer = FOR_EVER;
    REPLACED_IMPORT(timers, "user32.dll", SetTimer, refuse_timer);
    usual_timers = &timers;
    EXPECT_EQ(play(), DIALOG_UPDATE_QUIT);
}

TEST_F(UpdateDialogFaults, A_large_installer_that_is_read_again_keeps_nobody_waiting) {
    give_installer(test_installer(BLOCKS * BLOCK));
    reads = 0;
    REPLACED_IMPORT(disk, "kernel32.dll", ReadFile, read_slowly);
    usual_reads = &disk;
    AnswerWatch watch(hWnd);
    DialogPlayer player({{TITLE,
                          [&](HWND shown) {
                              watch.dialog = shown;
                              click(shown, DOWNLOAD);
                          }},
                         {TITLE, [&](HWND shown) {
                              if (reads < BLOCKS / 4)
                                  player.steps.push_back(player.steps.back());
                              else
                                  click(shown, IDCANCEL);
                          }}});
    EXPECT_EQ(dialog_update_show(), DIALOG_CANCEL);
    watch.stop();
    EXPECT_TRUE(wait_until([this] { return !file_is_there(); }));
    EXPECT_LT(reads, BLOCKS / 2);
    expect_in_time(watch);
}

TEST_F(UpdateDialogFaults,
       An_installer_that_was_refused_and_cannot_be_deleted_keeps_nobody_waiting) {
    give_installer();
    auto_update_waits.after_installer = 1000;
    REPLACED_IMPORT(shell, "shell32.dll", ShellExecuteExW, refuse_installer);
    AnswerWatch watch(hWnd);
    EXPECT_EQ(play(&watch), DIALOG_UPDATE_QUIT);
    watch.stop();
    expect_in_time(watch);
    EXPECT_EQ(asked.times, 1);
    ASSERT_NE(scanner, INVALID_HANDLE_VALUE);
    EXPECT_TRUE(file_is_there());
    CloseHandle(scanner);
    const std::string path = temporary.file(INSTALLER_NAME);
    EXPECT_TRUE(wait_until([&] { return !file_is_there() || DeleteFileA(path.c_str()) != 0; }))
        << "somebody else holds it still";
}

TEST_F(UpdateDialogFaults,
       The_installer_is_started_without_parameters_shown_normally_and_with_elevation) {
    give_installer();
    REPLACED_IMPORT(shell, "shell32.dll", ShellExecuteExW, refuse_installer);
    EXPECT_EQ(play(), DIALOG_UPDATE_QUIT);
    CloseHandle(scanner);
    EXPECT_EQ(asked.times, 1);
    EXPECT_EQ(asked.verb, L"runas");
    EXPECT_FALSE(asked.parameters);
    EXPECT_EQ(asked.show, SW_SHOWNORMAL);
}
