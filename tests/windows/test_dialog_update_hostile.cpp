// The update dialog and its download against every hostile server there is a script for: what the
// user is told, that the windows answer all the while, and that nothing is left behind.
#include "dialogs/dialogs.h"
#include "resources/resource_ids.h"
#include "tests/unit/update_fixture.h"
#include "tests/windows/answer_watch.h"
#include "tests/windows/dialog_player.h"
#include "tests/windows/memory_use.h"
#include "tests/windows/opened_pages.h"
#include "tests/windows/real_window.h"
#include "tests/windows/replaced_import.h"

#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <memory>

static constexpr char TITLE[] = "New version available";
static constexpr int DOWNLOAD = RESOURCE_UPDATE_DOWNLOAD;
static constexpr std::uint32_t SILENCE = 350;    // milliseconds; longer than an answer may take
static constexpr std::uint32_t TIMEOUT = 60'000; // milliseconds; silent servers cut it short
// What a server does to a window it does every time: a round with a late answer is played again. On
// a machine that has nothing else to do not many of them, for what happens now and then is a fault
// as well.
static constexpr int ATTEMPTS = 10;
static constexpr int LATE_ROUNDS = 3; // of all

// Bytes that a download may need at once: the buffers of the connection and of reading again, and
// what starting a program takes. Far less than any of the servers would have it allocate.
static constexpr SIZE_T MEMORY_LIMIT = 12 * 1024 * 1024;

// ---- the program's threads; the system starts some of its own, and keeps them

static const ReplacedImport *usual_threads;
static std::atomic<int> running_threads;

struct ThreadStart {
    LPTHREAD_START_ROUTINE function;
    void *parameter;
};

static DWORD WINAPI run_counted(void *start) {
    const std::unique_ptr<ThreadStart> taken(static_cast<ThreadStart *>(start));
    const DWORD code = taken->function(taken->parameter);
    running_threads--;
    return code;
}

static HANDLE WINAPI create_counted(LPSECURITY_ATTRIBUTES security, SIZE_T stack,
                                    LPTHREAD_START_ROUTINE function, LPVOID parameter, DWORD flags,
                                    LPDWORD id) {
    const auto create = reinterpret_cast<decltype(&CreateThread)>(usual_threads->original);
    running_threads++;
    return create(security, stack, run_counted, new ThreadStart{function, parameter}, flags, id);
}

// ---- what the dialog says

static std::vector<std::string> texts; // of the dialog, in turn

static LRESULT CALLBACK see_text(int code, WPARAM wparam, LPARAM lparam) {
    const CWPRETSTRUCT *message = reinterpret_cast<const CWPRETSTRUCT *>(lparam);
    if (code == HC_ACTION && message->message == WM_SETTEXT &&
        GetDlgCtrlID(message->hwnd) == RESOURCE_UPDATE_TEXT)
        texts.push_back(shown_text(GetParent(message->hwnd), RESOURCE_UPDATE_TEXT));
    return CallNextHookEx(nullptr, code, wparam, lparam);
}

static std::string with_site(const char *before, const char *after) {
    return std::string(before) + auto_update_site() + after;
}

// What the dialog says in turn when the download ends like this.
static std::vector<std::string> expected_texts(std::int32_t end) {
    std::vector<std::string> all = {
        "A new version of Orvanel (1.5) is available.  Would you like to download it now?",
        with_site("Connecting to ", "...")};
    if (end == AUTO_UPDATE_NO_CONNECT) {
        all.push_back(with_site("Failed to connect to ", "."));
        return all;
    }
    all.push_back(with_site("Downloading the latest version from ", "..."));
    if (end == AUTO_UPDATE_COMPLETE)
        all.push_back("Download completed.  Starting the installer...");
    return all;
}

// ---- the answers

static int main_answers, dialog_answers; // of all rounds
static int late_rounds;                  // so far, by nobody else's fault

// False when the round is to be played again, on a machine that was busy with something else.
static bool in_time(const AnswerWatch &watch) {
    main_answers += watch.main_asked.in_time;
    dialog_answers += watch.dialog_asked.in_time;
    const int late = watch.main_asked.late + watch.dialog_asked.late;
    if (late > 0 && !watch.machine_was_busy())
        late_rounds++;
    return late == 0;
}

// ---- one round

class UpdateDialogHostile : public UpdateTest, public testing::WithParamInterface<HostileUpdate> {
protected:
    static std::unique_ptr<RealWindow> window; // one for all: it takes longer than a download

    static void SetUpTestSuite() {
        SCOPED_TRACE("GoogleTest starts a thread of its own for the first of these");
        window = std::make_unique<RealWindow>();
    }
    static void TearDownTestSuite() {
        EXPECT_LE(late_rounds, LATE_ROUNDS);
        // Those of a round that is over at once may be missed.
        const int rounds = testing::UnitTest::GetInstance()->test_to_run_count();
        EXPECT_GT(main_answers, rounds);
        EXPECT_GT(dialog_answers, rounds);
        window.reset();
    }

    UpdateDialogHostile() {
        text_copy(new_version_string, "1.5");
        http_client_limits = {.timeout = TIMEOUT, .disk_bytes = HOSTILE_DISK_BYTES};
        auto_update_waits = {.before_check = 0, .after_connect = 20, .after_installer = 20};
        hostile_silence = SILENCE;
    }
    ~UpdateDialogHostile() override {
        hostile_silence = 0;
    }

    // Plays the user, who wants the download and cancels when it cannot be made.
    std::int32_t play(AnswerWatch *watch) {
        texts.clear();
        DialogPlayer player({});
        const DialogStep wait = {TITLE, [&](HWND shown) {
                                     if (!is_enabled(shown, DOWNLOAD))
                                         player.steps.push_back(player.steps.back());
                                     else
                                         click(shown, IDCANCEL);
                                 }};
        player.steps = {{TITLE,
                         [watch](HWND shown) {
                             watch->dialog = shown;
                             click(shown, DOWNLOAD);
                         }},
                        wait};
        const HHOOK hook =
            SetWindowsHookExA(WH_CALLWNDPROCRET, see_text, nullptr, GetCurrentThreadId());
        const std::int32_t result = dialog_update_show();
        UnhookWindowsHookEx(hook);
        return result;
    }

    bool folder_is_empty() const {
        std::error_code error;
        return std::filesystem::is_empty(temporary.path, error);
    }
};

std::unique_ptr<RealWindow> UpdateDialogHostile::window;

// ---- the rounds

static std::string download_page() {
    char page[AUTO_UPDATE_URL_SIZE];
    auto_update_url(page, AUTO_UPDATE_PAGE);
    return page;
}

TEST_P(UpdateDialogHostile, the_windows_answer_all_is_told_as_it_is_and_nothing_is_left) {
    const HostileUpdate &update = GetParam();
    give(update);
    const OpenedPages pages_kept;
    REPLACED_IMPORT(threads, "kernel32.dll", CreateThread, create_counted);
    usual_threads = &threads;
    const std::vector<std::string> pages = update.end == AUTO_UPDATE_FAILED
                                               ? std::vector{download_page()}
                                               : std::vector<std::string>();
    for (int attempt = 0; attempt < ATTEMPTS; attempt++) {
        http_client_limits.timeout = TIMEOUT;
        opened_pages.clear();
        const SIZE_T memory = static_cast<SIZE_T>(working_set_bytes());
        AnswerWatch watch(hWnd);
        EXPECT_EQ(play(&watch),
                  update.end == AUTO_UPDATE_NO_CONNECT ? DIALOG_CANCEL : DIALOG_UPDATE_QUIT);
        watch.stop();
        EXPECT_EQ(texts, expected_texts(update.end));
        EXPECT_EQ(opened_pages, pages);
        EXPECT_TRUE(wait_until([this] { return folder_is_empty(); }));
        EXPECT_TRUE(wait_until([] { return running_threads == 0; }));
        EXPECT_LT(watch.most_memory, memory + MEMORY_LIMIT);
        if (in_time(watch))
            return;
    }
    FAIL() << "a window does not answer in time";
}

// What is left out differs in the lines of the head only.
static std::vector<HostileUpdate> updates() {
    return hostile_updates({&HOSTILE_CLOSED, &HOSTILE_SPLIT, &HOSTILE_STATUS, &HOSTILE_BODIES,
                            &HOSTILE_WITHOUT_END, &HOSTILE_SILENT});
}

INSTANTIATE_TEST_SUITE_P(SERVERS, UpdateDialogHostile, testing::ValuesIn(updates()),
                         hostile_name<HostileUpdate>);
