// The label dialog: the text of a label on the floor.
#include "dialogs/dialog.h"
#include "dialogs/dialogs.h"
#include "dialogs/page_text_edit.h"
#include "dialogs/rules/dialog_label_rules.h"
#include "page/node.h"
#include "platform/win32/window_attach.h"
#include "resources/resource_ids.h"

static void open(HWND dialog) {
    dialog_center_on_parent(static_cast<HWND>(window_attached()), dialog);
    SetWindowTextA(dialog, dialog_label_title());
    const HWND edit = GetDlgItem(dialog, RESOURCE_LABEL_TEXT);
    page_text_edit_attach(edit, NODE_DESCRIPTION_LENGTH);
    SetWindowTextA(edit, dialog_label_text());
}

static void accept(HWND dialog) {
    char text[NODE_DESCRIPTION_LENGTH + 1] = "";
    GetDlgItemTextA(dialog, RESOURCE_LABEL_TEXT, text, sizeof text);
    dialog_label_store(text);
    EndDialog(dialog, IDOK);
}

static INT_PTR handle_command(HWND dialog, int id) {
    switch (id) {
    case IDOK:
        accept(dialog);
        return TRUE;
    case IDCANCEL:
        EndDialog(dialog, IDCANCEL);
        return TRUE;
    default:
        return FALSE;
    }
}

static INT_PTR CALLBACK dialog_edit_label(HWND dialog, UINT message, WPARAM wparam, LPARAM) {
    switch (message) {
    case WM_INITDIALOG:
        open(dialog);
        return TRUE; // the edit gets the focus, its text selected
    case WM_COMMAND:
        return handle_command(dialog, LOWORD(wparam));
    default:
        return FALSE;
    }
}

std::int32_t dialog_label_show() {
    return dialog_run(RESOURCE_DIALOG_LABEL, dialog_edit_label);
}
