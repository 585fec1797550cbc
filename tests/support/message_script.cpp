#include "tests/support/message_script.h"

#ifdef _WIN32
#include <windows.h>

#include <deque>

// A second thread plays the user: it looks for a message box of the test's thread, reads it and
// presses the wanted button.
static constexpr DWORD LOOK_PAUSE = 5;      // milliseconds
static constexpr int TEXT_CONTROL = 0xFFFF; // id of the text in a message box
static constexpr char DIALOG_CLASS[] = "#32770";

struct Player {
    DWORD user_thread; // thread whose boxes are answered
    HANDLE stop, thread;
    CRITICAL_SECTION lock;
    std::deque<MessageAnswer> answers;
    std::vector<ShownMessage> shown;
    HWND answered; // box whose button has been pressed already
};

static Player *player;

static std::string window_text(HWND window) {
    wchar_t wide[2000];
    const LRESULT length =
        SendMessageW(window, WM_GETTEXT, std::size(wide), reinterpret_cast<LPARAM>(wide));
    char text[4000];
    const int bytes = WideCharToMultiByte(CP_UTF8, 0, wide, static_cast<int>(length), text,
                                          sizeof text, nullptr, nullptr);
    return {text, static_cast<std::size_t>(bytes)};
}

static int button_id(MessageAnswer answer) {
    switch (answer) {
    case MessageAnswer::Yes:
        return IDYES;
    case MessageAnswer::No:
        return IDNO;
    case MessageAnswer::Cancel:
        return IDCANCEL;
    default:
        return IDOK;
    }
}

// The button of a box to press: the wanted one if the box has it, else its most harmless one.
static int choose_button(HWND box) {
    std::vector<int> wishes;
    if (!player->answers.empty()) {
        wishes.push_back(button_id(player->answers.front()));
        player->answers.pop_front();
    }
    wishes.insert(wishes.end(), {IDOK, IDCANCEL, IDNO});
    for (const int id : wishes) {
        if (GetDlgItem(box, id) != nullptr)
            return id;
    }
    return IDCANCEL;
}

static BOOL CALLBACK look_at_icon(HWND control, LPARAM icon) {
    static const struct {
        const char *name;
        MessageIcon icon;
    } icons[] = {{IDI_INFORMATION, MessageIcon::Information},
                 {IDI_EXCLAMATION, MessageIcon::Exclamation},
                 {IDI_QUESTION, MessageIcon::Question},
                 {IDI_ERROR, MessageIcon::Error}};
    const LRESULT shown = SendMessageA(control, STM_GETICON, 0, 0);
    for (const auto &known : icons) {
        if (shown != 0 && reinterpret_cast<HICON>(shown) == LoadIconA(nullptr, known.name))
            *reinterpret_cast<MessageIcon *>(icon) = known.icon;
    }
    return TRUE;
}

static ShownMessage read_box(HWND box) {
    ShownMessage message = {.text = window_text(GetDlgItem(box, TEXT_CONTROL)),
                            .caption = window_text(box),
                            .owner = GetWindow(box, GW_OWNER)};
    message.defaults_to_no =
        (GetWindowLongA(GetDlgItem(box, IDNO), GWL_STYLE) & BS_TYPEMASK) == BS_DEFPUSHBUTTON;
    EnumChildWindows(box, look_at_icon, reinterpret_cast<LPARAM>(&message.icon));
    return message;
}

static BOOL CALLBACK answer_box(HWND box, LPARAM) {
    char name[16];
    HWND text = GetDlgItem(box, TEXT_CONTROL);
    if (GetClassNameA(box, name, sizeof name) == 0 || lstrcmpA(name, DIALOG_CLASS) != 0 ||
        IsWindowVisible(box) == 0 || text == nullptr || box == player->answered)
        return TRUE;
    const ShownMessage message = read_box(box);
    player->answered = box;
    EnterCriticalSection(&player->lock);
    player->shown.push_back(message);
    const int id = choose_button(box);
    LeaveCriticalSection(&player->lock);
    PostMessageA(box, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED),
                 reinterpret_cast<LPARAM>(GetDlgItem(box, id)));
    return FALSE;
}

static DWORD WINAPI play(void *) {
    while (WaitForSingleObject(player->stop, LOOK_PAUSE) == WAIT_TIMEOUT) {
        if (IsWindow(player->answered) == 0)
            player->answered = nullptr;
        EnumThreadWindows(player->user_thread, answer_box, 0);
    }
    return 0;
}

MessageScript::MessageScript(std::vector<MessageAnswer> answers) {
    player = new Player{};
    player->user_thread = GetCurrentThreadId();
    player->answers.assign(answers.begin(), answers.end());
    InitializeCriticalSection(&player->lock);
    player->stop = CreateEventA(nullptr, TRUE, FALSE, nullptr);
    player->thread = CreateThread(nullptr, 0, play, nullptr, 0, nullptr);
}

MessageScript::~MessageScript() {
    SetEvent(player->stop);
    // The player may be waiting for an answer of a window of this thread.
    while (MsgWaitForMultipleObjects(1, &player->thread, FALSE, INFINITE, QS_SENDMESSAGE) !=
           WAIT_OBJECT_0) {
        MSG message;
        PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE);
    }
    CloseHandle(player->thread);
    CloseHandle(player->stop);
    DeleteCriticalSection(&player->lock);
    delete player;
    player = nullptr;
}

void MessageScript::answer(std::vector<MessageAnswer> answers) {
    EnterCriticalSection(&player->lock);
    player->answers.assign(answers.begin(), answers.end());
    LeaveCriticalSection(&player->lock);
}

std::vector<ShownMessage> MessageScript::shown() const {
    EnterCriticalSection(&player->lock);
    const std::vector<ShownMessage> copy = player->shown;
    LeaveCriticalSection(&player->lock);
    return copy;
}

#else
#include "platform/posix/recorder.h"

static std::size_t first; // message of the recorder that came after the script began

MessageScript::MessageScript(std::vector<MessageAnswer> answers) {
    recorder.answers = std::move(answers);
    first = recorder.messages.size();
}

MessageScript::~MessageScript() {
    recorder.answers.clear();
}

void MessageScript::answer(std::vector<MessageAnswer> answers) {
    recorder.answers = std::move(answers);
}

std::vector<ShownMessage> MessageScript::shown() const {
    std::vector<ShownMessage> messages;
    for (std::size_t i = first; i < recorder.messages.size(); i++)
        messages.push_back({.text = recorder.messages[i].text,
                            .caption = recorder.messages[i].caption,
                            .icon = recorder.messages[i].icon});
    return messages;
}
#endif
