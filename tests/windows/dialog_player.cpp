#include "tests/windows/dialog_player.h"

#include <cstdlib>

static constexpr UINT LOOK_PERIOD = 10;           // milliseconds
static constexpr int LOOKS_BEFORE_END = 3000;     // half a minute without a step
static constexpr int LOOKS_BEFORE_INACTIVE = 200; // a dialog that is not made the active one
static constexpr int LOOKS_BEFORE_CANCEL = 10;
static constexpr char DIALOG_CLASS[] = "#32770";

static DialogPlayer *player;

static bool is_dialog(HWND window) {
    char name[16];
    return GetClassNameA(window, name, sizeof name) != 0 && lstrcmpA(name, DIALOG_CLASS) == 0 &&
           IsWindowVisible(window) && IsWindowEnabled(window);
}

static std::string title_of(HWND window) {
    char title[100];
    const int length = GetWindowTextA(window, title, sizeof title);
    return {title, static_cast<std::size_t>(length)};
}

struct Search {
    const char *title; // null = any
    HWND found;
};

static BOOL CALLBACK look_at(HWND window, LPARAM parameter) {
    Search *search = reinterpret_cast<Search *>(parameter);
    if (is_dialog(window) && (search->title == nullptr || title_of(window) == search->title))
        search->found = window;
    return search->found == nullptr;
}

static HWND find_dialog(const char *title) {
    Search search = {title, nullptr};
    EnumThreadWindows(GetCurrentThreadId(), look_at, reinterpret_cast<LPARAM>(&search));
    return search.found;
}

// Nothing is left to do: what is still open would wait for ever.
static void cancel_all() {
    if (const HWND open = find_dialog(nullptr))
        PostMessageA(open, WM_COMMAND, IDCANCEL, 0);
}

static void CALLBACK look(HWND, UINT, UINT_PTR, DWORD) {
    if (HIWORD(GetQueueStatus(QS_POSTMESSAGE | QS_KEY)) != 0)
        return; // the last step is not over
    if (player->gave_up || player->done()) {
        if (player->steps.empty() || ++player->idle_looks > LOOKS_BEFORE_CANCEL)
            cancel_all();
        return;
    }
    const DialogStep step = player->steps[player->next_step];
    const HWND dialog = find_dialog(step.title.c_str());
    if (dialog == nullptr ||
        (GetActiveWindow() != dialog && player->idle_looks < LOOKS_BEFORE_INACTIVE)) {
        player->gave_up = ++player->idle_looks > LOOKS_BEFORE_END;
        return;
    }
    player->idle_looks = 0;
    player->next_step++;
    step.act(dialog); // may open a further dialog and come back when that is closed
}

DialogPlayer::DialogPlayer(std::vector<DialogStep> wanted_steps) : steps(std::move(wanted_steps)) {
    if (player != nullptr)
        abort(); // one at a time
    player = this;
    timer = SetTimer(nullptr, 0, LOOK_PERIOD, look);
}

DialogPlayer::~DialogPlayer() {
    KillTimer(nullptr, timer);
    player = nullptr;
}

bool DialogPlayer::done() const {
    return next_step == steps.size();
}

// ---- doing

void click(HWND dialog, int id) {
    const HWND control = GetDlgItem(dialog, id);
    RECT area = {};
    GetClientRect(control, &area);
    const LPARAM middle = MAKELPARAM(area.right / 2, area.bottom / 2);
    SendMessageA(control, WM_LBUTTONDOWN, MK_LBUTTON, middle);
    SendMessageA(control, WM_LBUTTONUP, 0, middle);
}

static void post_key(HWND dialog, UINT message, UINT code, LPARAM flags) {
    const HWND focus = GetFocus();
    const LPARAM scan_code = static_cast<LPARAM>(MapVirtualKeyA(code, MAPVK_VK_TO_VSC)) << 16 | 1;
    PostMessageA(focus != nullptr ? focus : dialog, message, code, scan_code | flags);
}

void press(HWND dialog, UINT code) {
    post_key(dialog, WM_KEYDOWN, code, 0);
}

void press_alt(HWND dialog, char letter) {
    static constexpr LPARAM ALT_IS_DOWN = 1L << 29;
    post_key(dialog, WM_SYSKEYDOWN, static_cast<UINT>(letter), ALT_IS_DOWN);
}

bool press_with_control(UINT key, bool shift) {
    static constexpr BYTE DOWN = 0x80;
    BYTE before[256] = {}, held[256] = {};
    GetKeyboardState(before);
    held[VK_CONTROL] = DOWN;
    held[VK_SHIFT] = shift ? DOWN : 0;
    SetKeyboardState(held);
    MSG message = {GetFocus(), WM_KEYDOWN, key, 1, 0, {}};
    const bool taken = CallMsgFilterA(&message, MSGF_DIALOGBOX) != 0;
    SetKeyboardState(before);
    return taken;
}

void type(HWND dialog, int id, const char *text) {
    const HWND control = GetDlgItem(dialog, id);
    SendMessageA(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(control), TRUE);
    SendMessageA(control, EM_SETSEL, 0, -1);
    SendMessageA(control, WM_CLEAR, 0, 0);
    for (const char *character = text; *character != '\0'; character++)
        SendMessageA(control, WM_CHAR, static_cast<unsigned char>(*character), 1);
}

// ---- seeing

std::string shown_text(HWND dialog, int id) {
    char text[400];
    const UINT length = GetDlgItemTextA(dialog, id, text, sizeof text);
    return {text, length};
}

bool is_enabled(HWND dialog, int id) {
    return IsWindowEnabled(GetDlgItem(dialog, id)) != 0;
}

bool has_focus(HWND dialog, int id) {
    return GetFocus() == GetDlgItem(dialog, id);
}
