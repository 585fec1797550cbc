// The object dialog: two tabs, each with a page of its own. What OK does stands in
// dialogs/rules/dialog_object_rules.h.
#include "dialogs/dialog.h"
#include "dialogs/dialog_object_actions.h"
#include "dialogs/dialogs.h"
#include "dialogs/model_chooser.h"
#include "dialogs/model_viewer.h"
#include "dialogs/page_text_edit.h"
#include "dialogs/rules/dialog_object_rules.h"
#include "dialogs/tab_keys.h"
#include "page/node.h"
#include "platform/win32/window_attach.h"
#include "resources/resource_ids.h"

enum ObjectTab : int { TAB_DETAILS, TAB_ACTIONS, TAB_TOTAL };

HWND dialog_object_tab_windows[TAB_TOTAL];

// ---- details

static void open_details(HWND page) {
    page_text_edit_attach(GetDlgItem(page, RESOURCE_OBJECT_NAME), NODE_NAME_LENGTH);
    page_text_edit_attach(GetDlgItem(page, RESOURCE_OBJECT_DESCRIPTION), NODE_DESCRIPTION_LENGTH);
    const Node *source = dialog_object_source();
    if (source != nullptr)
        SetDlgItemTextA(page, RESOURCE_OBJECT_DESCRIPTION, source->description);
    if (dialog_object_edits_node())
        SetDlgItemTextA(page, RESOURCE_OBJECT_NAME, source->name);
    model_chooser_init(page, dialog_object_first_entry(), dialog_object_first_model());
}

static INT_PTR CALLBACK dialog_object_details(HWND page, UINT message, WPARAM wparam, LPARAM) {
    switch (message) {
    case WM_INITDIALOG:
        open_details(page);
        return FALSE;
    case WM_COMMAND:
        return model_chooser_command(page, wparam) ? TRUE : FALSE;
    default:
        return FALSE;
    }
}

// ---- tabs

static void add_tab(HWND tab, ObjectTab index, const char *text) {
    TCITEMA item = {};
    item.mask = TCIF_TEXT;
    item.pszText = const_cast<char *>(text); // only read
    SendMessageA(tab, TCM_INSERTITEMA, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&item));
}

// The pages stand before the other controls, so that Tab goes from the tabs to the page shown.
static void add_page(HWND dialog, ObjectTab index, int resource, DLGPROC procedure) {
    const HWND tab = GetDlgItem(dialog, RESOURCE_OBJECT_TAB);
    const HWND page = CreateDialogParamA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(resource),
                                         dialog, procedure, 0);
    dialog_object_tab_windows[index] = page;
    enable_xp_theme(page);
    RECT area = {};
    GetClientRect(tab, &area);
    SendMessageA(tab, TCM_ADJUSTRECT, FALSE, reinterpret_cast<LPARAM>(&area));
    MapWindowPoints(tab, dialog, reinterpret_cast<POINT *>(&area), 2);
    SetWindowPos(page, HWND_TOP, area.left, area.top, area.right - area.left,
                 area.bottom - area.top, SWP_NOACTIVATE);
}

static void show_tab(HWND dialog) {
    const LRESULT shown = SendDlgItemMessageA(dialog, RESOURCE_OBJECT_TAB, TCM_GETCURSEL, 0, 0);
    for (int i = 0; i < TAB_TOTAL; i++)
        ShowWindow(dialog_object_tab_windows[i], i == shown ? SW_SHOW : SW_HIDE);
    const HWND first = shown == TAB_ACTIONS ? hwnd_treeview
                                            : GetDlgItem(dialog_object_tab_windows[TAB_DETAILS],
                                                         RESOURCE_OBJECT_NAME);
    SendMessageA(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(first), TRUE);
}

// ---- the dialog

static void open(HWND dialog) {
    SetWindowTextA(dialog, dialog_object_title());
    const HWND tab = GetDlgItem(dialog, RESOURCE_OBJECT_TAB);
    add_tab(tab, TAB_DETAILS, "Details");
    add_tab(tab, TAB_ACTIONS, "Actions");
    add_page(dialog, TAB_DETAILS, RESOURCE_OBJECT_DETAILS, dialog_object_details);
    add_page(dialog, TAB_ACTIONS, RESOURCE_OBJECT_ACTIONS, dialog_object_actions);
    tab_keys_attach(tab);
    dialog_center_on_parent(GetWindow(dialog, GW_OWNER), dialog);
    show_tab(dialog);
}

static void confirm(HWND dialog) {
    char name[OBJECT_NAME_BUFFER], description[OBJECT_NAME_BUFFER];
    const HWND details = dialog_object_tab_windows[TAB_DETAILS];
    GetDlgItemTextA(details, RESOURCE_OBJECT_NAME, name, sizeof name);
    GetDlgItemTextA(details, RESOURCE_OBJECT_DESCRIPTION, description, sizeof description);
    dialog_object_save_current_selection();
    const std::int32_t id = dialog_object_apply(
        {.name = name, .description = description, .model_entry = model_chooser_entry()});
    EndDialog(dialog, id >= 0 ? DIALOG_OK : DIALOG_CANCEL);
}

// Enter and Escape end the editing of a label first.
static void close(HWND dialog, bool cancel) {
    if (dialog_object_end_label_edit(cancel))
        return;
    if (cancel)
        EndDialog(dialog, DIALOG_CANCEL);
    else
        confirm(dialog);
}

static INT_PTR CALLBACK dialog_object(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam) {
    const auto *header = reinterpret_cast<const NMHDR *>(lparam);
    switch (message) {
    case WM_INITDIALOG:
        open(dialog);
        return FALSE; // the focus is set already
    case WM_NOTIFY:
        if (header->idFrom != RESOURCE_OBJECT_TAB || header->code != TCN_SELCHANGE)
            return FALSE;
        show_tab(dialog);
        return TRUE;
    case WM_COMMAND:
        if (LOWORD(wparam) != IDOK && LOWORD(wparam) != IDCANCEL)
            return dialog_pass_to_page(dialog, wparam, lparam) ? TRUE : FALSE;
        close(dialog, LOWORD(wparam) == IDCANCEL);
        return TRUE;
    case WM_CLOSE: // not by way of Cancel, which would only end the editing of a label
        EndDialog(dialog, DIALOG_CANCEL);
        return TRUE;
    default:
        return FALSE;
    }
}

std::int32_t dialog_object_show() {
    if (!model_chooser_wait_for_catalogue())
        return DIALOG_CANCEL;
    model_viewer_init();
    const INT_PTR result =
        DialogBoxParamA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(RESOURCE_DIALOG_OBJECT),
                        static_cast<HWND>(window_attached()), dialog_object, 0);
    return result == DIALOG_OK ? DIALOG_OK : DIALOG_CANCEL;
}
