// The options dialog: three pages behind a tab. All of them are there as long as the dialog is; one
// is shown. What OK does stands in dialogs/rules/dialog_options_rules.
#include "dialogs/dialog.h"
#include "dialogs/dialog_options_browse.h"
#include "dialogs/dialogs.h"
#include "dialogs/rules/dialog_options_rules.h"
#include "dialogs/tab_keys.h"
#include "platform/text.h"
#include "platform/win32/window_attach.h"
#include "resources/resource_ids.h"
#include "scene/scene_floor.h"

#include <commctrl.h>

// Posted to the General page when an entry of the colour list has been chosen: the list has closed
// by the time it arrives.
static constexpr UINT COLOUR_CHOSEN = WM_APP;

static OptionsForm form;
static HWND dialog_options_window;
static HWND dialog_options_tab_windows[OPTIONS_TABS];
static LRESULT chosen_colour; // index of the colour list
static bool colour_pending;   // COLOUR_CHOSEN is on its way

static HWND page_control(OptionsTab tab, int control) {
    return GetDlgItem(dialog_options_tab_windows[tab], control);
}

// ---- check boxes

static void show_box(const OptionsBox &box) {
    const HWND control = page_control(box.tab, box.control);
    SendMessageA(control, BM_SETCHECK, form.chosen.*box.flag != 0 ? BST_CHECKED : BST_UNCHECKED, 0);
    EnableWindow(control, dialog_options_box_enabled(form, box));
}

static void read_box(const OptionsBox &box) {
    const LRESULT state = SendMessageA(page_control(box.tab, box.control), BM_GETCHECK, 0, 0);
    form.chosen.*box.flag = state == BST_CHECKED ? 1 : 0;
}

static void read_boxes() {
    for (const OptionsBox &box : OPTIONS_BOXES)
        read_box(box);
}

static void enable_boxes() {
    read_boxes();
    for (const OptionsBox &box : OPTIONS_BOXES)
        EnableWindow(page_control(box.tab, box.control), dialog_options_box_enabled(form, box));
}

// ---- the General page

static HWND colour_list() {
    return page_control(OPTIONS_GENERAL, RESOURCE_GENERAL_COLOUR);
}

static void select_colour(LRESULT index) {
    SendMessageA(colour_list(), CB_SETCURSEL, static_cast<WPARAM>(index), 0);
    chosen_colour = index;
}

static LRESULT find_colour(const char *name) {
    return SendMessageA(colour_list(), CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1),
                        reinterpret_cast<LPARAM>(name));
}

static void add_colour(const char *name) {
    SendMessageA(colour_list(), CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(name));
}

static void fill_general_page() {
    const HWND zoom = page_control(OPTIONS_GENERAL, RESOURCE_GENERAL_ZOOM);
    SendMessageA(zoom, TBM_SETRANGE, FALSE, MAKELPARAM(0, ZOOM_LEVEL_MAX));
    SendMessageA(zoom, TBM_SETPAGESIZE, 0, 2);
    SendMessageA(zoom, TBM_SETPOS, TRUE, form.chosen.initial_zoom_level);
    for (const PageColourPreset &preset : PAGE_COLOUR_PRESETS)
        add_colour(preset.name);
    add_colour(OPTIONS_CUSTOM_COLOUR);
    select_colour(find_colour(form.chosen.default_page_colour_name));
    const HWND folder = page_control(OPTIONS_GENERAL, RESOURCE_GENERAL_FOLDER);
    SendMessageA(folder, EM_SETLIMITTEXT, PATH_SIZE - 1, 0);
    SetWindowTextA(folder, form.chosen.page_folder);
}

static void read_general_page() {
    const HWND page = dialog_options_tab_windows[OPTIONS_GENERAL];
    char colour[OPTIONS_COLOUR_LENGTH + 1] = "";
    GetDlgItemTextA(page, RESOURCE_GENERAL_COLOUR, colour, sizeof colour);
    text_copy(form.chosen.default_page_colour_name, colour);
    form.chosen.initial_zoom_level = static_cast<std::int32_t>(
        SendDlgItemMessageA(page, RESOURCE_GENERAL_ZOOM, TBM_GETPOS, 0, 0));
    GetDlgItemTextA(page, RESOURCE_GENERAL_FOLDER, form.chosen.page_folder,
                    sizeof form.chosen.page_folder);
}

static void browse() {
    char folder[PATH_SIZE] = "";
    const HWND edit = page_control(OPTIONS_GENERAL, RESOURCE_GENERAL_FOLDER);
    GetWindowTextA(edit, folder, sizeof folder);
    if (dialog_options_browse(dialog_options_window, folder) == 0)
        SetWindowTextA(edit, folder);
}

static void post_colour_chosen() {
    if (colour_pending)
        return; // one choice is told of in several ways
    colour_pending = true;
    PostMessageA(dialog_options_tab_windows[OPTIONS_GENERAL], COLOUR_CHOSEN, 0, 0);
}

// Going through the open list is no choice yet.
static void colour_list_changed(int notification) {
    const bool is_open = SendMessageA(colour_list(), CB_GETDROPPEDSTATE, 0, 0) != 0;
    if (notification == CBN_SELENDOK || (notification == CBN_SELCHANGE && !is_open))
        post_colour_chosen();
}

// A chooser closed without a choice brings the entry before back.
static void colour_chosen() {
    const LRESULT index = SendMessageA(colour_list(), CB_GETCURSEL, 0, 0);
    if (index == find_colour(OPTIONS_CUSTOM_COLOUR) && get_custom_colour_options() != 0)
        select_colour(chosen_colour);
    else
        chosen_colour = index;
    colour_pending = false; // no sooner: the chooser takes messages as well
}

static INT_PTR general_command(int id, int notification) {
    switch (id) {
    case RESOURCE_GENERAL_BROWSE:
        browse();
        return TRUE;
    case RESOURCE_GENERAL_COLOUR:
        colour_list_changed(notification);
        return TRUE;
    default:
        return FALSE;
    }
}

static INT_PTR CALLBACK dialog_options_general(HWND page, UINT message, WPARAM wparam, LPARAM) {
    switch (message) {
    case WM_INITDIALOG:
        enable_xp_theme(page);
        return FALSE;
    case WM_COMMAND:
        return general_command(LOWORD(wparam), HIWORD(wparam));
    case COLOUR_CHOSEN:
        colour_chosen();
        return TRUE;
    default:
        return FALSE;
    }
}

// ---- the other pages

static INT_PTR CALLBACK dialog_options_actions(HWND page, UINT message, WPARAM, LPARAM) {
    if (message == WM_INITDIALOG)
        enable_xp_theme(page);
    return FALSE;
}

static INT_PTR CALLBACK dialog_options_graphics(HWND page, UINT message, WPARAM wparam, LPARAM) {
    switch (message) {
    case WM_INITDIALOG:
        enable_xp_theme(page);
        return FALSE;
    case WM_COMMAND:
        if (LOWORD(wparam) == RESOURCE_GRAPHICS_ENHANCED)
            enable_boxes();
        return TRUE;
    default:
        return FALSE;
    }
}

// ---- the tab

struct OptionsPage {
    int template_id;
    DLGPROC procedure;
};
static constexpr OptionsPage PAGES[OPTIONS_TABS] = {
    {RESOURCE_DIALOG_OPTIONS_GENERAL, dialog_options_general},
    {RESOURCE_DIALOG_OPTIONS_ACTIONS, dialog_options_actions},
    {RESOURCE_DIALOG_OPTIONS_GRAPHICS, dialog_options_graphics},
};

static HWND tab_control() {
    return GetDlgItem(dialog_options_window, RESOURCE_OPTIONS_TABS);
}

static void go_to(HWND control) {
    SendMessageA(dialog_options_window, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(control), TRUE);
}

// A focus that would be left behind in a hidden page goes to the first control of the page shown.
static void show_page(int tab) {
    const HWND page = dialog_options_tab_windows[tab];
    const HWND focus = GetFocus();
    const bool leaves_page = GetParent(focus) != dialog_options_window && !IsChild(page, focus) &&
                             IsChild(dialog_options_window, focus);
    for (const HWND other : dialog_options_tab_windows) {
        if (other != page)
            ShowWindow(other, SW_HIDE);
    }
    ShowWindow(page, SW_SHOW);
    if (leaves_page)
        go_to(GetNextDlgTabItem(page, nullptr, FALSE));
}

static void show_folder() {
    SendMessageA(tab_control(), TCM_SETCURSEL, OPTIONS_GENERAL, 0);
    show_page(OPTIONS_GENERAL);
    go_to(page_control(OPTIONS_GENERAL, RESOURCE_GENERAL_FOLDER));
}

static void add_tab(int tab) {
    char caption[20];
    text_copy(caption, OPTIONS_TAB_CAPTIONS[tab]);
    TCITEMA item = {};
    item.mask = TCIF_TEXT;
    item.pszText = caption;
    SendMessageA(tab_control(), TCM_INSERTITEMA, static_cast<WPARAM>(tab),
                 reinterpret_cast<LPARAM>(&item));
}

// What the tab leaves free of itself, in client pixels of the dialog.
static RECT page_area() {
    RECT area;
    GetWindowRect(tab_control(), &area);
    MapWindowPoints(nullptr, dialog_options_window, reinterpret_cast<POINT *>(&area), 2);
    SendMessageA(tab_control(), TCM_ADJUSTRECT, FALSE, reinterpret_cast<LPARAM>(&area));
    return area;
}

// The page comes in front of the tab, which would paint over it.
static void add_page(int tab, const RECT &area) {
    HWND page =
        CreateDialogParamA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(PAGES[tab].template_id),
                           dialog_options_window, PAGES[tab].procedure, 0);
    dialog_options_tab_windows[tab] = page;
    SetWindowPos(page, HWND_TOP, area.left, area.top, area.right - area.left,
                 area.bottom - area.top, SWP_NOACTIVATE);
}

static void add_pages() {
    for (int tab = 0; tab < OPTIONS_TABS; tab++)
        add_tab(tab);
    const RECT area = page_area();
    for (int tab = 0; tab < OPTIONS_TABS; tab++)
        add_page(tab, area);
}

// ---- the dialog

static void open(HWND dialog) {
    dialog_options_window = dialog;
    colour_pending = false;
    dialog_options_open(&form);
    add_pages();
    tab_keys_attach(tab_control());
    for (const OptionsBox &box : OPTIONS_BOXES)
        show_box(box);
    fill_general_page();
    show_page(OPTIONS_GENERAL);
    dialog_center_on_parent(static_cast<HWND>(window_attached()), dialog);
}

static void accept() {
    read_boxes();
    read_general_page();
    if (dialog_options_accept(form, show_folder))
        EndDialog(dialog_options_window, IDOK);
}

static INT_PTR handle_command(int id) {
    switch (id) {
    case IDOK:
        accept();
        return TRUE;
    case IDCANCEL:
        EndDialog(dialog_options_window, IDCANCEL);
        return TRUE;
    default:
        return FALSE;
    }
}

static INT_PTR handle_notification(const NMHDR *header) {
    if (header->idFrom != RESOURCE_OPTIONS_TABS || header->code != TCN_SELCHANGE)
        return FALSE;
    show_page(static_cast<int>(SendMessageA(tab_control(), TCM_GETCURSEL, 0, 0)));
    return TRUE;
}

static INT_PTR CALLBACK dialog_options(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
    case WM_INITDIALOG:
        open(dialog);
        return TRUE;
    case WM_COMMAND:
        return handle_command(LOWORD(wparam)) || dialog_pass_to_page(dialog, wparam, lparam);
    case WM_NOTIFY:
        return handle_notification(reinterpret_cast<const NMHDR *>(lparam));
    default:
        return FALSE;
    }
}

std::int32_t dialog_options_show() {
    return dialog_run(RESOURCE_DIALOG_OPTIONS, dialog_options);
}
