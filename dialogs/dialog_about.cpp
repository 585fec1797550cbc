// The about box: what the program is, and what draws it.
#include "dialogs/dialog.h"
#include "dialogs/dialogs.h"
#include "dialogs/hyperlinks.h"
#include "platform/gl.h"
#include "platform/process.h"
#include "platform/win32/window_attach.h"
#include "resources/resource_ids.h"
#include "update/auto_update.h"

#include <algorithm>
#include <cstring>

static constexpr wchar_t PRODUCT[] = L"Orvanel\u2122 v1.4.1";

static void show_gl_string(HWND dialog, int control, GLenum name) {
    const GLubyte *text = glGetString(name); // null without a context
    SetDlgItemTextA(dialog, control, text != nullptr ? reinterpret_cast<const char *>(text) : "");
}

static constexpr int LINK_FRAME = 2; // pixels between the text and the edge, for the focus frame

static int text_width(HWND control, const char *text) {
    const HDC dc = GetDC(control);
    const HGDIOBJ previous =
        SelectObject(dc, reinterpret_cast<HFONT>(SendMessageA(control, WM_GETFONT, 0, 0)));
    SIZE size = {};
    GetTextExtentPoint32A(dc, text, static_cast<int>(std::strlen(text)), &size);
    SelectObject(dc, previous);
    ReleaseDC(control, dc);
    return static_cast<int>(size.cx);
}

// As wide as its text, so that the hand appears over the text only and the frame goes round it.
static void show_link(HWND dialog, HWND link, const char *text) {
    SetWindowTextA(link, text);
    RECT area;
    GetWindowRect(link, &area);
    MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT *>(&area), 2);
    const int room = static_cast<int>(area.right - area.left);
    SetWindowPos(link, nullptr, static_cast<int>(area.left) - LINK_FRAME,
                 static_cast<int>(area.top),
                 std::min(text_width(link, text), room) + 2 * LINK_FRAME,
                 static_cast<int>(area.bottom - area.top), SWP_NOZORDER | SWP_NOACTIVATE);
    ConvertStaticToHyperlink(link);
}

static INT_PTR open(HWND dialog) {
    dialog_center_on_parent(static_cast<HWND>(window_attached()), dialog);
    SetDlgItemTextW(dialog, RESOURCE_ABOUT_PRODUCT, PRODUCT);
    show_gl_string(dialog, RESOURCE_ABOUT_VENDOR, GL_VENDOR);
    show_gl_string(dialog, RESOURCE_ABOUT_RENDERER, GL_RENDERER);
    show_gl_string(dialog, RESOURCE_ABOUT_VERSION, GL_VERSION);
    show_link(dialog, GetDlgItem(dialog, RESOURCE_ABOUT_HOME_PAGE), auto_update_site());
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
