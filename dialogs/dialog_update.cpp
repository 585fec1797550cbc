// The dialog "New version available": offers the download, shows its progress, and starts what was
// downloaded. What it shows at each step stands in dialogs/rules/dialog_update_rules.h.
#include "actions/misc.h"
#include "dialogs/dialog.h"
#include "dialogs/dialogs.h"
#include "dialogs/rules/dialog_update_rules.h"
#include "platform/text.h"
#include "platform/win32/object_count.h"
#include "platform/win32/window_attach.h"
#include "resources/resource_ids.h"
#include "update/auto_update.h"

#include <commctrl.h>

#include <atomic>

static constexpr UINT STEP_MESSAGE = WM_USER + 1; // step code and value, from the download
static constexpr UINT NEXT_MESSAGE = WM_APP;      // an UpdateNext, posted by the dialog to itself
static constexpr UINT_PTR INSTALLER_TIMER = 1;
static constexpr int PICTURE_X = 10, PICTURE_Y = 13, PICTURE_SIDE = 32; // pixels
static constexpr COLORREF PICTURE_TRANSPARENT = RGB(0, 255, 0);

static std::atomic<HWND> open_dialog; // null = there is none

// Of the one dialog that is open.
static UpdateView view;
static HICON icon;
static HIMAGELIST picture;

// ---- pictures

static void create_pictures(HWND dialog) {
    const HMODULE module = GetModuleHandleA(nullptr);
    icon =
        object_made(OBJECT_ICON,
                    static_cast<HICON>(LoadImageA(module, MAKEINTRESOURCEA(RESOURCE_UPDATE_ICON),
                                                  IMAGE_ICON, GetSystemMetrics(SM_CXSMICON),
                                                  GetSystemMetrics(SM_CYSMICON), LR_DEFAULTCOLOR)));
    SendMessageA(dialog, WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(icon));
    picture = ImageList_LoadImageA(module, MAKEINTRESOURCEA(RESOURCE_UPDATE_PICTURE), PICTURE_SIDE,
                                   0, PICTURE_TRANSPARENT, IMAGE_BITMAP, LR_CREATEDIBSECTION);
}

static void destroy_pictures(HWND dialog) {
    SendMessageA(dialog, WM_SETICON, ICON_SMALL, 0);
    object_destroy(icon);
    ImageList_Destroy(picture);
    icon = nullptr;
    picture = nullptr;
}

static void paint(HWND dialog) {
    PAINTSTRUCT state;
    const HDC dc = BeginPaint(dialog, &state);
    ImageList_Draw(picture, 0, dc, PICTURE_X, PICTURE_Y, ILD_TRANSPARENT);
    EndPaint(dialog, &state);
}

// ---- the view

static void focus(HWND dialog, int id) {
    SendMessageA(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(GetDlgItem(dialog, id)), TRUE);
}

static void enable(HWND dialog, int id, bool enabled) {
    EnableWindow(GetDlgItem(dialog, id), enabled);
}

// Focus goes along with the button that can be pressed: a disabled one would keep the keyboard.
static void show_buttons(HWND dialog) {
    if (view.can_download) {
        enable(dialog, RESOURCE_UPDATE_DOWNLOAD, true);
        focus(dialog, RESOURCE_UPDATE_DOWNLOAD);
    } else if (view.can_cancel) {
        focus(dialog, IDCANCEL);
    }
    enable(dialog, RESOURCE_UPDATE_DOWNLOAD, view.can_download);
    enable(dialog, IDCANCEL, view.can_cancel);
}

static void show(HWND dialog, const UpdateView &before) {
    const HWND bar = GetDlgItem(dialog, RESOURCE_UPDATE_PROGRESS);
    if (!text_equal(view.text, before.text))
        SetDlgItemTextA(dialog, RESOURCE_UPDATE_TEXT, view.text);
    if (view.can_download != before.can_download || view.can_cancel != before.can_cancel)
        show_buttons(dialog);
    if (view.progress != before.progress)
        SendMessageA(bar, PBM_SETPOS, static_cast<WPARAM>(view.progress), 0);
    if (view.shows_progress != before.shows_progress)
        ShowWindow(bar, view.shows_progress ? SW_SHOW : SW_HIDE);
    UpdateWindow(dialog); // what follows may take a while
}

// ---- the download

// Called by the download's thread. A report that had begun when the dialog went finds it gone.
static void report_step(void *dialog, std::int32_t step, std::int32_t value) {
    if (open_dialog == dialog)
        SendMessageA(static_cast<HWND>(dialog), STEP_MESSAGE, static_cast<WPARAM>(step), value);
}

static void open_download_page(HWND dialog) {
    char address[AUTO_UPDATE_URL_SIZE];
    auto_update_url(address, AUTO_UPDATE_PAGE);
    run_program(address);
    EndDialog(dialog, DIALOG_UPDATE_QUIT);
}

static void show_connecting(HWND dialog) {
    const UpdateView before = view;
    dialog_update_connect(&view, auto_update_site());
    SendDlgItemMessageA(dialog, RESOURCE_UPDATE_PROGRESS, PBM_SETRANGE, 0,
                        MAKELPARAM(0, UPDATE_PROGRESS_RANGE));
    show(dialog, before);
}

// While the download before still ends, the button stays for another try.
static void start_download(HWND dialog) {
    const std::int32_t result = auto_update_download({.report = report_step, .dialog = dialog});
    if (result == AUTO_UPDATE_STARTED)
        show_connecting(dialog);
    else if (result == AUTO_UPDATE_NO_THREAD)
        open_download_page(dialog);
}

// A timer rather than a sleep: the windows go on answering while the installer starts.
static void start_installer(HWND dialog) {
    auto_update_start_installer();
    if (SetTimer(dialog, INSTALLER_TIMER, auto_update_waits.after_installer, nullptr) == 0)
        EndDialog(dialog, DIALOG_UPDATE_QUIT);
}

// The shell refuses some of its work while a message that another thread sent is being handled:
// what a step leads to comes after it.
static void take_step(HWND dialog, std::int32_t step, std::int32_t value) {
    const UpdateView before = view;
    const UpdateNext next = dialog_update_step(&view, auto_update_site(), step, value);
    show(dialog, before);
    if (next != UpdateNext::Wait)
        PostMessageA(dialog, NEXT_MESSAGE, static_cast<WPARAM>(next), 0);
}

static void go_on(HWND dialog, UpdateNext next) {
    if (next == UpdateNext::DownloadPage)
        open_download_page(dialog);
    else if (next == UpdateNext::StartInstaller)
        start_installer(dialog);
}

// ---- the dialog

static void open(HWND dialog) {
    dialog_center_on_parent(static_cast<HWND>(window_attached()), dialog);
    open_dialog = dialog;
    view = dialog_update_offer(new_version_string);
    SetDlgItemTextA(dialog, RESOURCE_UPDATE_TEXT, view.text);
    create_pictures(dialog);
    SendDlgItemMessageA(dialog, RESOURCE_UPDATE_DOWNLOAD, BCM_SETSHIELD, 0, TRUE);
    enable_xp_theme(dialog);
}

static void close(HWND dialog) {
    open_dialog = nullptr;
    auto_update_cancel_download();
    destroy_pictures(dialog);
}

static INT_PTR handle_timer(HWND dialog, WPARAM timer) {
    if (timer != INSTALLER_TIMER)
        return FALSE;
    EndDialog(dialog, DIALOG_UPDATE_QUIT);
    return TRUE;
}

static INT_PTR handle_command(HWND dialog, int id) {
    switch (id) {
    case RESOURCE_UPDATE_DOWNLOAD:
        start_download(dialog);
        return TRUE;
    case IDCANCEL:
        if (view.can_cancel)
            EndDialog(dialog, IDCANCEL);
        return TRUE;
    default:
        return FALSE;
    }
}

static INT_PTR CALLBACK auto_update_dialog_new_version(HWND dialog, UINT message, WPARAM wparam,
                                                       LPARAM lparam) {
    switch (message) {
    case WM_INITDIALOG:
        open(dialog);
        return TRUE;
    case WM_PAINT:
        paint(dialog);
        return TRUE;
    case WM_COMMAND:
        return handle_command(dialog, LOWORD(wparam));
    case STEP_MESSAGE:
        take_step(dialog, static_cast<std::int32_t>(wparam), static_cast<std::int32_t>(lparam));
        return TRUE;
    case NEXT_MESSAGE:
        go_on(dialog, static_cast<UpdateNext>(wparam));
        return TRUE;
    case WM_TIMER:
        return handle_timer(dialog, wparam);
    case WM_DESTROY:
        close(dialog);
        return TRUE;
    default:
        return FALSE;
    }
}

std::int32_t dialog_update_show() {
    return dialog_run(RESOURCE_DIALOG_UPDATE, auto_update_dialog_new_version);
}
