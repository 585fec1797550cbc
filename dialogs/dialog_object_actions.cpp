#include "dialogs/dialog_object_actions.h"

#include "dialogs/page_text_edit.h"
#include "dialogs/rules/action_command.h"
#include "dialogs/rules/action_tree.h"
#include "dialogs/rules/dialog_object_rules.h"
#include "platform/message.h"
#include "platform/text.h"
#include "platform/win32/object_count.h"
#include "resources/resource_ids.h"

#include <commdlg.h>

static constexpr int IMAGE_SIDE = 16; // pixels
static constexpr COLORREF IMAGE_TRANSPARENT = RGB(0, 255, 0);
static constexpr int ACTION_NAME_LENGTH = 60;
static constexpr int COMMAND_LENGTH = 260;
static constexpr const char *TYPE_NAMES[] = {"Action", "Separator", "Submenu"}; // by ActionType
static constexpr char BROWSE_FILTER[] = "All Files\0*.*\0"
                                        "Programs\0*.exe;*.com;*.bat;*.cmd\0"
                                        "Documents\0*.doc;*.docx;*.txt;*.rtf;*.pdf\0";

enum TreeImage : int { IMAGE_ACTION, IMAGE_GROUP, IMAGE_EMPTY };

HWND hwnd_treeview;
HIMAGELIST submenu_imagelist;
std::int32_t dialog_object_disable_type_static_text;
std::int32_t dialog_object_disable_command_static_text;

static HWND page_window;
static bool label_open; // a label is being edited and has not been ended yet
static bool filling;    // the tree is being filled: what it reports is no doing of the user

// ---- pictures

static void add_image(int resource) {
    const HBITMAP bitmap = object_made(
        OBJECT_BITMAP, LoadBitmapA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(resource)));
    ImageList_AddMasked(submenu_imagelist, bitmap, IMAGE_TRANSPARENT);
    object_destroy(bitmap);
}

static void create_images() {
    submenu_imagelist = ImageList_Create(IMAGE_SIDE, IMAGE_SIDE, ILC_COLOR24 | ILC_MASK, 3, 0);
    for (const int resource : {RESOURCE_TREE_ACTION, RESOURCE_TREE_GROUP, RESOURCE_TREE_EMPTY})
        add_image(resource);
    SendMessageA(hwnd_treeview, TVM_SETIMAGELIST, TVSIL_NORMAL,
                 reinterpret_cast<LPARAM>(submenu_imagelist));
}

static void destroy_images() {
    SendMessageA(hwnd_treeview, TVM_SETIMAGELIST, TVSIL_NORMAL, 0);
    ImageList_Destroy(submenu_imagelist);
    submenu_imagelist = nullptr;
}

// ---- the tree control

static HTREEITEM next_item(UINT relation, HTREEITEM item) {
    return reinterpret_cast<HTREEITEM>(
        SendMessageA(hwnd_treeview, TVM_GETNEXTITEM, relation, reinterpret_cast<LPARAM>(item)));
}

std::int32_t dialog_object_get_treeview_id_from_item_handle(HTREEITEM handle) {
    TVITEMA item = {};
    item.mask = TVIF_PARAM;
    item.hItem = handle;
    if (handle == nullptr ||
        SendMessageA(hwnd_treeview, TVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&item)) == 0)
        return TREE_NONE;
    return static_cast<std::int32_t>(item.lParam);
}

static HTREEITEM find_among(HTREEITEM first, std::int32_t id) {
    for (HTREEITEM item = first; item != nullptr; item = next_item(TVGN_NEXT, item)) {
        if (dialog_object_get_treeview_id_from_item_handle(item) == id)
            return item;
        if (HTREEITEM child = find_among(next_item(TVGN_CHILD, item), id))
            return child;
    }
    return nullptr;
}

HTREEITEM dialog_object_get_item_handle_from_treeview_id(std::int32_t id) {
    return find_among(next_item(TVGN_ROOT, nullptr), id);
}

static HTREEITEM insert(HTREEITEM parent, std::int32_t id, const char *label, int image,
                        bool expanded) {
    char text[OBJECT_NAME_BUFFER];
    text_copy(text, label);
    TVINSERTSTRUCTA place = {};
    place.hParent = parent;
    place.hInsertAfter = TVI_LAST;
    place.item.mask = TVIF_TEXT | TVIF_PARAM | TVIF_IMAGE | TVIF_SELECTEDIMAGE | TVIF_STATE;
    place.item.pszText = text;
    place.item.lParam = id;
    place.item.iImage = place.item.iSelectedImage = image;
    place.item.state = expanded ? TVIS_EXPANDED : 0;
    place.item.stateMask = TVIS_EXPANDED;
    return reinterpret_cast<HTREEITEM>(
        SendMessageA(hwnd_treeview, TVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&place)));
}

static void insert_items() {
    HTREEITEM top = nullptr;
    for (std::int32_t i = 0; i < action_tree.total; i++) {
        const TreeItem &item = action_tree.item[i];
        const Action *record = action_tree_record(item.id);
        const int image = record->type == ACTION_COMMAND ? IMAGE_ACTION : IMAGE_GROUP;
        const bool inside = item.parent != TREE_NONE;
        const HTREEITEM made = insert(inside ? top : TVI_ROOT, item.id,
                                      dialog_object_action_label(record), image, item.expanded);
        if (!inside)
            top = made;
    }
    if (action_tree.total == 0)
        insert(TVI_ROOT, TREE_NONE, ACTION_TREE_EMPTY, IMAGE_EMPTY, false);
}

// Shows the tree as the rules have left it.
static void fill_tree() {
    filling = true;
    SendMessageA(hwnd_treeview, WM_SETREDRAW, FALSE, 0);
    SendMessageA(hwnd_treeview, TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(TVI_ROOT));
    insert_items();
    const LPARAM selected = reinterpret_cast<LPARAM>(
        dialog_object_get_item_handle_from_treeview_id(action_tree.selected));
    SendMessageA(hwnd_treeview, TVM_SELECTITEM, TVGN_CARET, selected);
    SendMessageA(hwnd_treeview, WM_SETREDRAW, TRUE, 0);
    SendMessageA(hwnd_treeview, TVM_ENSUREVISIBLE, 0, selected);
    filling = false;
}

static void set_label(HTREEITEM handle, const char *label) {
    char text[OBJECT_NAME_BUFFER];
    text_copy(text, label);
    TVITEMA item = {};
    item.mask = TVIF_TEXT;
    item.hItem = handle;
    item.pszText = text;
    SendMessageA(hwnd_treeview, TVM_SETITEMA, 0, reinterpret_cast<LPARAM>(&item));
}

// ---- the selected item

static void focus(HWND control) {
    SendMessageA(GetParent(page_window), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(control), TRUE);
}

static void enable(int id, bool enabled) {
    EnableWindow(GetDlgItem(page_window, id), enabled ? TRUE : FALSE);
}

static void dialog_object_refresh_updown_button_state() {
    const UpDownState state = dialog_object_updown_state();
    enable(RESOURCE_ACTION_UP, state.up);
    enable(RESOURCE_ACTION_DOWN, state.down);
}

// The page's background shows through a caption, so it is painted anew with it.
static void repaint_caption(int id) {
    RECT area;
    GetWindowRect(GetDlgItem(page_window, id), &area);
    MapWindowPoints(nullptr, page_window, reinterpret_cast<POINT *>(&area), 2);
    RedrawWindow(page_window, &area, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

static void show_captions(bool typed, bool command) {
    dialog_object_disable_type_static_text = typed ? 0 : 1;
    dialog_object_disable_command_static_text = command ? 0 : 1;
    repaint_caption(RESOURCE_ACTION_TYPE_TEXT);
    repaint_caption(RESOURCE_ACTION_COMMAND_TEXT);
}

// A control that had the focus must not be left with it when it is disabled.
static void rescue_focus(HWND focused) {
    if (focused != nullptr && IsChild(page_window, focused) && IsWindowEnabled(focused) == 0)
        focus(hwnd_treeview);
}

static void show_selection() {
    const HWND focused = GetFocus(); // disabling it takes the focus away
    const Action *record = action_tree_record(action_tree.selected);
    const bool command = record != nullptr && record->type == ACTION_COMMAND;
    const WPARAM type = static_cast<WPARAM>(record != nullptr ? record->type : -1);
    SendDlgItemMessageA(page_window, RESOURCE_ACTION_TYPE, CB_SETCURSEL, type, 0);
    SetDlgItemTextA(page_window, RESOURCE_ACTION_COMMAND, command ? record->command : "");
    enable(RESOURCE_ACTION_TYPE, record != nullptr);
    for (const int id : {RESOURCE_ACTION_COMMAND, RESOURCE_ACTION_BROWSE, RESOURCE_ACTION_TEST})
        enable(id, command);
    enable(RESOURCE_ACTION_DELETE, record != nullptr);
    enable(RESOURCE_ACTION_NEW, dialog_options_action_total < NODE_ACTIONS);
    dialog_object_refresh_updown_button_state();
    show_captions(record != nullptr, command);
    rescue_focus(focused);
}

void dialog_object_save_current_selection() {
    const Action *record = action_tree_record(action_tree.selected);
    if (record == nullptr || record->type != ACTION_COMMAND)
        return;
    char command[PATH_SIZE];
    GetDlgItemTextA(page_window, RESOURCE_ACTION_COMMAND, command, sizeof command);
    dialog_object_set_action_command(action_tree.selected, command);
}

static void change_selection(std::int32_t id) {
    dialog_object_save_current_selection();
    action_tree_select(id);
    show_selection();
}

// ---- buttons and boxes

static void refresh() {
    fill_tree();
    show_selection();
}

static void change_type() {
    const LRESULT type = SendDlgItemMessageA(page_window, RESOURCE_ACTION_TYPE, CB_GETCURSEL, 0, 0);
    dialog_object_save_current_selection();
    dialog_object_change_action_type(static_cast<std::int32_t>(type));
    refresh();
}

static void edit_label() {
    focus(hwnd_treeview);
    const HTREEITEM item = dialog_object_get_item_handle_from_treeview_id(action_tree.selected);
    SendMessageA(hwnd_treeview, TVM_EDITLABELA, 0, reinterpret_cast<LPARAM>(item));
}

static void new_action() {
    dialog_object_save_current_selection();
    if (dialog_object_new_action() == TREE_NONE)
        return;
    refresh();
    edit_label();
}

static void delete_action() {
    if (dialog_object_delete_asks() &&
        message_box(ACTION_TREE_DELETE_QUESTION, MESSAGE_CAPTION, MessageIcon::Question,
                    MessageButtons::YesNo) != MessageAnswer::Yes)
        return;
    dialog_object_delete_action();
    refresh();
}

static void move(void (*move_selected)()) {
    dialog_object_save_current_selection();
    move_selected();
    refresh();
    focus(hwnd_treeview);
}

static void browse() {
    char command[PATH_SIZE], file[PATH_SIZE];
    GetDlgItemTextA(page_window, RESOURCE_ACTION_COMMAND, command, sizeof command);
    const BrowseStart start = action_browse_start(command);
    text_copy(file, start.file);
    OPENFILENAMEA chooser = {};
    chooser.lStructSize = sizeof chooser;
    chooser.hwndOwner = GetParent(page_window);
    chooser.lpstrFilter = BROWSE_FILTER;
    chooser.nFilterIndex = 1;
    chooser.lpstrFile = file;
    chooser.nMaxFile = sizeof file;
    chooser.lpstrInitialDir = start.folder[0] != '\0' ? start.folder : nullptr;
    chooser.lpstrTitle = "Browse";
    chooser.Flags =
        OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST | OFN_HIDEREADONLY | OFN_NOCHANGEDIR | OFN_EXPLORER;
    if (GetOpenFileNameA(&chooser) == 0)
        return;
    action_browse_replace(command, file);
    SetDlgItemTextA(page_window, RESOURCE_ACTION_COMMAND, command);
}

static void test() {
    char name[OBJECT_NAME_BUFFER], command[PATH_SIZE];
    GetDlgItemTextA(dialog_object_tab_windows[0], RESOURCE_OBJECT_NAME, name, sizeof name);
    GetDlgItemTextA(page_window, RESOURCE_ACTION_COMMAND, command, sizeof command);
    action_test(name, command);
}

static bool press(int id) {
    switch (id) {
    case RESOURCE_ACTION_NEW:
        new_action();
        return true;
    case RESOURCE_ACTION_DELETE:
        delete_action();
        return true;
    case RESOURCE_ACTION_UP:
        move(dialog_object_move_selected_action_up);
        return true;
    case RESOURCE_ACTION_DOWN:
        move(dialog_object_move_selected_action_down);
        return true;
    case RESOURCE_ACTION_BROWSE:
        browse();
        return true;
    case RESOURCE_ACTION_TEST:
        test();
        return true;
    default:
        return false;
    }
}

static bool command(WPARAM wparam) {
    if (LOWORD(wparam) == RESOURCE_ACTION_TYPE && HIWORD(wparam) == CBN_SELCHANGE) {
        change_type();
        return true;
    }
    return HIWORD(wparam) == BN_CLICKED && press(LOWORD(wparam));
}

// ---- labels and what else the tree reports

static HWND label_edit() {
    return reinterpret_cast<HWND>(SendMessageA(hwnd_treeview, TVM_GETEDITCONTROL, 0, 0));
}

bool dialog_object_end_label_edit(bool cancel) {
    if (hwnd_treeview == nullptr || label_edit() == nullptr)
        return false;
    SendMessageA(hwnd_treeview, TVM_ENDEDITLABELNOW, cancel ? TRUE : FALSE, 0);
    return true;
}

// A moment after a click on the selected item the tree begins by itself: not when the user has gone
// on to another control, whose keys the label would take.
static bool is_late() {
    const HWND focused = GetFocus();
    return focused != nullptr && focused != hwnd_treeview;
}

// Nonzero refuses: separators and the line of an empty list have no name.
static LONG begin_label(std::int32_t id) {
    const Action *record = action_tree_record(id);
    if (record == nullptr || record->type == ACTION_SEPARATOR || is_late())
        return TRUE;
    page_text_edit_attach(label_edit(), ACTION_NAME_LENGTH);
    label_open = true;
    return FALSE;
}

// A null text means that the editing was cancelled. The control may report the end again, then with
// the text, when its field loses the focus by being taken away.
static void end_label(const TVITEMA &item) {
    const std::int32_t id = static_cast<std::int32_t>(item.lParam);
    Action *record = action_tree_record(id);
    const bool again = !label_open;
    label_open = false;
    if (again || item.pszText == nullptr || record == nullptr)
        return;
    dialog_object_rename_action(id, item.pszText);
    set_label(item.hItem, dialog_object_action_label(record));
}

static void key_down(WORD key) {
    if (key == VK_F2)
        edit_label();
    else if (key == VK_DELETE)
        delete_action();
}

static bool notify(const NMHDR *header) {
    const auto *change = reinterpret_cast<const NMTREEVIEWA *>(header);
    const auto *label = reinterpret_cast<const NMTVDISPINFOA *>(header);
    if (header->idFrom != RESOURCE_ACTION_TREE || filling)
        return false;
    switch (header->code) {
    case TVN_SELCHANGEDA:
        change_selection(static_cast<std::int32_t>(change->itemNew.lParam));
        return true;
    case TVN_ITEMEXPANDEDA:
        action_tree_expand(static_cast<std::int32_t>(change->itemNew.lParam),
                           (change->action & TVE_TOGGLE) == TVE_EXPAND);
        return true;
    case TVN_BEGINLABELEDITA:
        SetWindowLongPtrA(page_window, DWLP_MSGRESULT,
                          begin_label(static_cast<std::int32_t>(label->item.lParam)));
        return true;
    case TVN_ENDLABELEDITA:
        end_label(label->item);
        return true;
    case TVN_KEYDOWN:
        key_down(reinterpret_cast<const NMTVKEYDOWN *>(header)->wVKey);
        return true;
    default:
        return false;
    }
}

// ---- the page

static void open_page(HWND page) {
    page_window = page;
    hwnd_treeview = GetDlgItem(page, RESOURCE_ACTION_TREE);
    create_images();
    for (const char *name : TYPE_NAMES)
        SendDlgItemMessageA(page, RESOURCE_ACTION_TYPE, CB_ADDSTRING, 0,
                            reinterpret_cast<LPARAM>(name));
    page_text_edit_attach(GetDlgItem(page, RESOURCE_ACTION_COMMAND), COMMAND_LENGTH);
    dialog_object_load_actions(dialog_object_source());
    refresh();
}

static void close_page() {
    destroy_images();
    hwnd_treeview = nullptr;
    page_window = nullptr;
}

// The brush is none: the page's own background shows, whatever the theme paints.
static INT_PTR colour_caption(HDC dc, HWND caption) {
    const int id = GetDlgCtrlID(caption);
    const bool type = id == RESOURCE_ACTION_TYPE_TEXT;
    if (!type && id != RESOURCE_ACTION_COMMAND_TEXT)
        return FALSE;
    const std::int32_t disabled =
        type ? dialog_object_disable_type_static_text : dialog_object_disable_command_static_text;
    SetTextColor(dc, GetSysColor(disabled == 1 ? COLOR_GRAYTEXT : COLOR_BTNTEXT));
    SetBkMode(dc, TRANSPARENT);
    return reinterpret_cast<INT_PTR>(GetStockObject(NULL_BRUSH));
}

INT_PTR CALLBACK dialog_object_actions(HWND page, UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
    case WM_INITDIALOG:
        open_page(page);
        return FALSE;
    case WM_COMMAND:
        return command(wparam) ? TRUE : FALSE;
    case WM_NOTIFY:
        return notify(reinterpret_cast<const NMHDR *>(lparam)) ? TRUE : FALSE;
    case WM_CTLCOLORSTATIC:
        return colour_caption(reinterpret_cast<HDC>(wparam), reinterpret_cast<HWND>(lparam));
    case WM_DESTROY:
        close_page();
        return TRUE;
    default:
        return FALSE;
    }
}
