#include "dialogs/model_chooser.h"

#include "assets/model.h"
#include "dialogs/model_viewer.h"
#include "dialogs/rules/model_choice.h"
#include "platform/thread.h"
#include "platform/win32/window_attach.h"

static constexpr DWORD LOOK_TIME = 15; // milliseconds between two looks at the catalogue

static ModelChoice choice;
static std::int32_t model_not_listed; // id of the model shown while none of the list is chosen

// ---- waiting

// Handles what the main window is told while the user cannot reach it. False when the program ends.
static bool handle_messages() {
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT) {
            PostQuitMessage(static_cast<int>(message.wParam));
            return false;
        }
        DispatchMessageA(&message);
    }
    return true;
}

static void look_until_ended(Thread *thread) {
    const HCURSOR before = SetCursor(LoadCursorA(nullptr, reinterpret_cast<LPCSTR>(IDC_WAIT)));
    while (!object_files_loaded() && handle_messages())
        MsgWaitForMultipleObjects(0, nullptr, FALSE, LOOK_TIME, QS_ALLINPUT);
    // When the program ends meanwhile, the thread is left to itself: it ends with the scan.
    thread_join(thread, object_files_loaded() ? INFINITE : 0);
    SetCursor(before);
}

bool model_chooser_wait_for_catalogue() {
    if (object_files_loaded())
        return true;
    // It scans, or waits for the thread that does.
    Thread *thread = thread_start(object_files_load);
    if (thread == nullptr) {
        object_files_load();
        return true;
    }
    const HWND main = static_cast<HWND>(window_attached());
    const bool was_enabled = EnableWindow(main, FALSE) == 0;
    look_until_ended(thread);
    if (was_enabled)
        EnableWindow(main, TRUE);
    return object_files_loaded();
}

// ---- the controls

using ItemName = const char *(*)(const ModelChoice *choice, std::int32_t place);

static void fill(HWND box, std::int32_t total, std::int32_t chosen, ItemName name) {
    SendMessageA(box, WM_SETREDRAW, FALSE, 0);
    SendMessageA(box, CB_RESETCONTENT, 0, 0);
    for (std::int32_t i = 0; i < total; i++)
        SendMessageA(box, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(name(&choice, i)));
    SendMessageA(box, CB_SETCURSEL, static_cast<WPARAM>(chosen), 0);
    SendMessageA(box, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(box, nullptr, TRUE);
}

// The chooser and the preview follow what was chosen.
static void show_choice(HWND dialog) {
    SendDlgItemMessageA(dialog, RESOURCE_MODEL_NAME, CB_SETCURSEL,
                        static_cast<WPARAM>(choice.model_chosen), 0);
    const std::int32_t entry = model_choice_entry(&choice);
    const std::int32_t model_id =
        entry != OBJECT_NONE ? model_return_preview_id(object_files[entry].file) : model_not_listed;
    SendDlgItemMessageA(dialog, RESOURCE_MODEL_VIEWER, MODEL_VIEWER_SHOW,
                        static_cast<WPARAM>(model_id), 0);
}

static void show_models(HWND dialog) {
    fill(GetDlgItem(dialog, RESOURCE_MODEL_NAME), choice.model_total, choice.model_chosen,
         model_choice_model_name);
    show_choice(dialog);
}

void model_chooser_init(HWND dialog, std::int32_t entry, std::int32_t model_id) {
    model_not_listed = model_id;
    object_files_load();
    model_choice_init(&choice, entry);
    fill(GetDlgItem(dialog, RESOURCE_MODEL_CATEGORY), choice.category_total, choice.category_chosen,
         model_choice_category_name);
    show_models(dialog);
}

static std::int32_t selected(HWND dialog, int id) {
    return static_cast<std::int32_t>(SendDlgItemMessageA(dialog, id, CB_GETCURSEL, 0, 0));
}

static void choose_category(HWND dialog) {
    model_choice_set_category(&choice, selected(dialog, RESOURCE_MODEL_CATEGORY));
    show_models(dialog);
}

static void choose_model(HWND dialog) {
    model_choice_set_model(&choice, selected(dialog, RESOURCE_MODEL_NAME));
    show_choice(dialog);
}

static void step(HWND dialog, void (*to)(ModelChoice *choice)) {
    to(&choice);
    show_choice(dialog);
}

bool model_chooser_command(HWND dialog, WPARAM wparam) {
    switch (MAKEWPARAM(LOWORD(wparam), HIWORD(wparam))) {
    case MAKEWPARAM(RESOURCE_MODEL_CATEGORY, CBN_SELCHANGE):
        choose_category(dialog);
        return true;
    case MAKEWPARAM(RESOURCE_MODEL_NAME, CBN_SELCHANGE):
        choose_model(dialog);
        return true;
    case MAKEWPARAM(RESOURCE_MODEL_PREVIOUS, BN_CLICKED):
        step(dialog, model_choice_previous);
        return true;
    case MAKEWPARAM(RESOURCE_MODEL_NEXT, BN_CLICKED):
        step(dialog, model_choice_next);
        return true;
    default:
        return false;
    }
}

std::int32_t model_chooser_entry() {
    return model_choice_entry(&choice);
}
