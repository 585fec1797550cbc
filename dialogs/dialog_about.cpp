// The about box: what the program is, and what draws it.
#include "dialogs/dialog.h"
#include "dialogs/dialogs.h"
#include "dialogs/hyperlinks.h"
#include "platform/gl.h"
#include "platform/process.h"
#include "platform/win32/window_attach.h"
#include "resources/resource_ids.h"
#include "update/auto_update.h"

static constexpr wchar_t PRODUCT[] = L"Orvanel\u2122 v1.4.1";

static void show_gl_string(HWND dialog, int control, GLenum name) {
    const GLubyte *text = glGetString(name); // null without a context
    SetDlgItemTextA(dialog, control, text != nullptr ? reinterpret_cast<const char *>(text) : "");
}

static INT_PTR open(HWND dialog) {
    dialog_center_on_parent(static_cast<HWND>(window_attached()), dialog);
    SetDlgItemTextW(dialog, RESOURCE_ABOUT_PRODUCT, PRODUCT);
    show_gl_string(dialog, RESOURCE_ABOUT_VENDOR, GL_VENDOR);
    show_gl_string(dialog, RESOURCE_ABOUT_RENDERER, GL_RENDERER);
    show_gl_string(dialog, RESOURCE_ABOUT_VERSION, GL_VERSION);
    SetDlgItemTextA(dialog, RESOURCE_ABOUT_HOME_PAGE, auto_update_site());
    ConvertStaticToHyperlink(GetDlgItem(dialog, RESOURCE_ABOUT_HOME_PAGE));
    SetFocus(GetDlgItem(dialog, IDOK)); // the link comes before it, and Enter is to close the box
    return FALSE;
}

static void open_home_page() {
    char url[AUTO_UPDATE_URL_SIZE];
    auto_update_url(url, "");
    shell_open(url);
}

static INT_PTR handle_command(HWND dialog, WPARAM wparam, LPARAM lparam) {
    if (wparam == 0 && lparam == 0) { // the hyperlink
        open_home_page();
        return TRUE;
    }
    if (LOWORD(wparam) != IDOK && LOWORD(wparam) != IDCANCEL)
        return FALSE;
    EndDialog(dialog, LOWORD(wparam));
    return TRUE;
}

static INT_PTR CALLBACK dialog_about_box(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
    case WM_INITDIALOG:
        return open(dialog);
    case WM_COMMAND:
        return handle_command(dialog, wparam, lparam);
    default:
        return FALSE;
    }
}

std::int32_t dialog_about_show() {
    return dialog_run(RESOURCE_DIALOG_ABOUT, dialog_about_box);
}
