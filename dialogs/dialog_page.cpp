#include "dialogs/dialog.h"
#include "dialogs/dialogs.h"
#include "dialogs/model_chooser.h"
#include "dialogs/page_text_edit.h"
#include "dialogs/rules/dialog_page_rules.h"
#include "page/node.h"
#include "platform/locations.h"
#include "platform/message.h"
#include "platform/text.h"
#include "platform/win32/message_over.h"
#include "platform/win32/window_attach.h"
#include "resources/resource_ids.h"

#include <windows.h>

#include <cderr.h>
#include <commdlg.h>

static HWND main_window() {
    return static_cast<HWND>(window_attached());
}

// ---- opening

static void set_text(HWND dialog, int id, std::int32_t length, const char *text) {
    page_text_edit_attach(GetDlgItem(dialog, id), length);
    SetDlgItemTextA(dialog, id, text);
}

static void enable_file(HWND dialog, bool enabled) {
    for (const int id : {RESOURCE_PAGE_FILE_CAPTION, RESOURCE_PAGE_FILE, RESOURCE_PAGE_BROWSE})
        EnableWindow(GetDlgItem(dialog, id), enabled);
}

static void open_dialog(HWND dialog) {
    dialog_page_open();
    const bool exists = dialog_page_edits_node();
    const PageFieldTexts texts = dialog_page_opening_texts();
    SetWindowTextA(dialog, dialog_page_title());
    set_text(dialog, RESOURCE_PAGE_NAME, NODE_NAME_LENGTH, texts.name);
    set_text(dialog, RESOURCE_PAGE_DESCRIPTION, NODE_DESCRIPTION_LENGTH, texts.description);
    set_text(dialog, RESOURCE_PAGE_FILE, DIALOG_PAGE_FILE_LENGTH, texts.file_name);
    CheckDlgButton(dialog, RESOURCE_PAGE_LINK, exists ? BST_CHECKED : BST_UNCHECKED);
    EnableWindow(GetDlgItem(dialog, RESOURCE_PAGE_LINK), !exists);
    enable_file(dialog, false);
    model_chooser_init(dialog, dialog_page_first_entry(), dialog_page_first_model());
    dialog_center_on_parent(main_window(), dialog);
}

// ---- the page file

static void take_over_check(HWND dialog) {
    const bool checked = IsDlgButtonChecked(dialog, RESOURCE_PAGE_LINK) == BST_CHECKED;
    dialog_page_check_link(checked);
    enable_file(dialog, checked);
}

static bool choose_file(HWND dialog, const char *start, char (&chosen)[PATH_SIZE]) {
    text_copy(chosen, start);
    OPENFILENAMEA request = {};
    request.lStructSize = sizeof request;
    request.hwndOwner = dialog;
    request.lpstrFilter = "Orvanel Pages (*.orvl)\0*.orvl\0All Files\0*\0";
    request.lpstrFile = chosen;
    request.nMaxFile = sizeof chosen;
    request.lpstrInitialDir = page_dir_location;
    request.lpstrTitle = "Browse";
    request.lpstrDefExt = "orvl";
    request.Flags =
        OFN_EXPLORER | OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST | OFN_HIDEREADONLY | OFN_NOCHANGEDIR;
    return GetOpenFileNameA(&request) != 0;
}

static void browse(HWND dialog) {
    char start[PATH_SIZE], chosen[PATH_SIZE], shown[PATH_SIZE];
    GetDlgItemTextA(dialog, RESOURCE_PAGE_FILE, start, sizeof start);
    bool done = choose_file(dialog, dialog_page_browse_start(start), chosen);
    // It does not even open for a text that can be no file name.
    if (!done && CommDlgExtendedError() == FNERR_INVALIDFILENAME)
        done = choose_file(dialog, "", chosen);
    if (!done)
        return;
    dialog_page_shown_path(chosen, shown);
    SetDlgItemTextA(dialog, RESOURCE_PAGE_FILE, shown);
}

// ---- OK

struct RefusalText {
    PageRefusal refusal;
    int field; // that is to be mended
    const char *text;
};

static constexpr RefusalText REFUSALS[] = {
    {PageRefusal::NameTaken, RESOURCE_PAGE_NAME, "There is already an item using this name"},
    {PageRefusal::NameEmpty, RESOURCE_PAGE_NAME, "The page name cannot have zero length"},
    {PageRefusal::NoFile, RESOURCE_PAGE_FILE, "No page file specified."},
    {PageRefusal::SelfLink, RESOURCE_PAGE_FILE,
     "A page cannot contain a link to itself.\n\nPlease choose an alternative file name."},
    {PageRefusal::PageFull, RESOURCE_PAGE_NAME,
     "The maximum number of items has been reached on this page."},
    {PageRefusal::NoPageFile, RESOURCE_PAGE_FILE, "Unable to create page file."},
};

// Messages about the name belong to the main window. The dialog, which they would leave open to
// input, waits for them all the same.
static void show_refusal(HWND dialog, const RefusalText &refusal) {
    const bool about_name =
        refusal.refusal == PageRefusal::NameTaken || refusal.refusal == PageRefusal::NameEmpty;
    EnableWindow(dialog, FALSE);
    message_box_over(about_name ? main_window() : dialog, refusal.text, MESSAGE_CAPTION,
                     MessageIcon::Exclamation);
    EnableWindow(dialog, TRUE);
    SetActiveWindow(dialog);
}

static void go_to_field(HWND dialog, int id) {
    const HWND field = GetDlgItem(dialog, id);
    const HWND next = IsWindowEnabled(field) ? field : GetDlgItem(dialog, RESOURCE_PAGE_NAME);
    SendMessageA(dialog, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(next), TRUE);
}

static PageRefusal apply(HWND dialog) {
    char name[NODE_NAME_LENGTH + 1], description[NODE_DESCRIPTION_LENGTH + 1];
    char file_name[PATH_SIZE];
    GetDlgItemTextA(dialog, RESOURCE_PAGE_NAME, name, sizeof name);
    GetDlgItemTextA(dialog, RESOURCE_PAGE_DESCRIPTION, description, sizeof description);
    GetDlgItemTextA(dialog, RESOURCE_PAGE_FILE, file_name, sizeof file_name);
    return dialog_page_apply({.name = name,
                              .description = description,
                              .file_name = file_name,
                              .model_entry = model_chooser_entry()});
}

static void finish(HWND dialog) {
    const PageRefusal refusal = apply(dialog);
    for (const RefusalText &known : REFUSALS) {
        if (known.refusal == refusal) {
            show_refusal(dialog, known);
            go_to_field(dialog, known.field);
        }
    }
    if (refusal == PageRefusal::None)
        EndDialog(dialog, DIALOG_OK);
}

// ---- the dialog

static bool run_command(HWND dialog, WPARAM wparam) {
    if (model_chooser_command(dialog, wparam))
        return true;
    switch (LOWORD(wparam)) {
    case RESOURCE_PAGE_LINK:
        take_over_check(dialog);
        return true;
    case RESOURCE_PAGE_BROWSE:
        browse(dialog);
        return true;
    case IDOK:
        finish(dialog);
        return true;
    case IDCANCEL:
        EndDialog(dialog, DIALOG_CANCEL);
        return true;
    default:
        return false;
    }
}

static INT_PTR CALLBACK dialog_page(HWND dialog, UINT message, WPARAM wparam, LPARAM) {
    switch (message) {
    case WM_INITDIALOG:
        open_dialog(dialog);
        return TRUE; // the focus goes to the name
    case WM_COMMAND:
        return run_command(dialog, wparam) ? TRUE : FALSE;
    default:
        return FALSE;
    }
}

std::int32_t dialog_page_show() {
    if (!model_chooser_wait_for_catalogue())
        return DIALOG_CANCEL;
    return dialog_run(RESOURCE_DIALOG_PAGE, dialog_page);
}
