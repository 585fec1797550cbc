#include "tests/windows/object_dialog_fixture.h"

#include "assets/model.h"
#include "assets/object_files.h"
#include "dialogs/dialog_object_actions.h"
#include "dialogs/dialogs.h"
#include "dialogs/rules/dialog_object_rules.h"
#include "platform/locations.h"
#include "platform/text.h"
#include "resources/resource_ids.h"
#include "support/test_places.h"
#include "tests/unit/tree_text.h"

#include <cstring>

static void add_file(const char *name, const char *file) {
    ObjectFile *entry = &object_files[object_files_total++];
    *entry = {};
    text_copy(entry->name, name);
    text_copy(entry->file, file);
    entry->category = object_files_total == 1 ? CATAGORY_ALL : CATAGORY_MISC;
}

ObjectDialogTest::ObjectDialogTest() {
    object_files_stop();
    object_files_total = 0;
    text_copy(object_catagory[CATAGORY_ALL], "All");
    text_copy(object_catagory[CATAGORY_MISC], "Misc");
    object_catagory_total = CATAGORY_FIXED;
    add_file("Default", "");
    add_file("Printer", "printer.obj");
    add_file("Server", "server.obj");
    object_files_loaded_flag = CATALOGUE_LOADED;
    text_copy(object_dir_location, ORVANEL_SOURCE_DIR "\\models\\");
    dialog_object_init();
}

ObjectDialogTest::~ObjectDialogTest() {
    dialog_object_init();
    object_files_init();
}

std::int32_t ObjectDialogTest::play(const char *title, const std::vector<Step> &steps) {
    std::vector<DialogStep> wanted;
    for (const Step &step : steps)
        wanted.push_back({title, step});
    DialogPlayer player(wanted);
    const std::int32_t result = dialog_object_show();
    EXPECT_TRUE(player.done());
    EXPECT_FALSE(player.gave_up);
    handle_messages();
    return result;
}

std::int32_t add_object(const char *name, const std::string &tree, const char *separators) {
    const std::int32_t id = node_total++;
    node_init_node(id);
    node[id].type = NODE_OBJECT;
    node[id].model_id = 0;
    text_copy(node[id].name, name);
    node[id].description[0] = '\0';
    ActionNode source;
    add_actions(&source, tree, separators);
    node[id].action_count = source.node.action_count;
    for (std::int32_t i = 0; i < source.node.action_count; i++) {
        action_allocate_action(&node[id].actions[i]);
        action_copy_action(node[id].actions[i], source.node.actions[i]);
    }
    return id;
}

HWND details() {
    return dialog_object_tab_windows[0];
}

HWND actions() {
    return dialog_object_tab_windows[1];
}

static void click_tab(HWND dialog, int index) {
    const HWND tab = GetDlgItem(dialog, RESOURCE_OBJECT_TAB);
    RECT area = {};
    SendMessageA(tab, TCM_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&area));
    const LPARAM middle = MAKELPARAM((area.left + area.right) / 2, (area.top + area.bottom) / 2);
    SendMessageA(tab, WM_LBUTTONDOWN, MK_LBUTTON, middle);
    SendMessageA(tab, WM_LBUTTONUP, 0, middle);
}

void show_details(HWND dialog) {
    click_tab(dialog, 0);
}

void show_actions(HWND dialog) {
    click_tab(dialog, 1);
}

// ---- the tree control

static HTREEITEM related(UINT relation, HTREEITEM item) {
    return reinterpret_cast<HTREEITEM>(
        SendMessageA(hwnd_treeview, TVM_GETNEXTITEM, relation, reinterpret_cast<LPARAM>(item)));
}

static TVITEMA item_of(HTREEITEM handle, char *text, int size) {
    TVITEMA item = {};
    item.mask = TVIF_TEXT | TVIF_PARAM | TVIF_IMAGE | TVIF_SELECTEDIMAGE;
    item.hItem = handle;
    item.pszText = text;
    item.cchTextMax = size;
    SendMessageA(hwnd_treeview, TVM_GETITEMA, 0, reinterpret_cast<LPARAM>(&item));
    return item;
}

static std::string branch(HTREEITEM first) {
    std::string all;
    for (HTREEITEM handle = first; handle != nullptr; handle = related(TVGN_NEXT, handle)) {
        char text[100];
        const TVITEMA item = item_of(handle, text, sizeof text);
        const Action *record = action_tree_record(static_cast<std::int32_t>(item.lParam));
        all += record != nullptr ? tree_letter(*record) : '-';
        if (record != nullptr && record->type == ACTION_SUBMENU)
            all += '[' + branch(related(TVGN_CHILD, handle)) + ']';
    }
    return all;
}

std::string tree_shown() {
    return branch(related(TVGN_ROOT, nullptr));
}

static HTREEITEM handle_of(char letter) {
    return dialog_object_get_item_handle_from_treeview_id(tree_id(letter));
}

std::string label_shown(char letter) {
    char text[100];
    const HTREEITEM handle = letter == ' ' ? related(TVGN_ROOT, nullptr) : handle_of(letter);
    return item_of(handle, text, sizeof text).pszText;
}

int image_shown(char letter) {
    char text[100];
    const TVITEMA item = item_of(handle_of(letter), text, sizeof text);
    EXPECT_EQ(item.iImage, item.iSelectedImage);
    return item.iImage;
}

char letter_selected() {
    const std::int32_t id =
        dialog_object_get_treeview_id_from_item_handle(related(TVGN_CARET, nullptr));
    const Action *record = action_tree_record(id);
    return record != nullptr ? tree_letter(*record) : ' ';
}

// Posted: the control itself waits for the button to come up.
void click_item(char letter) {
    RECT area = {};
    HTREEITEM handle = handle_of(letter);
    memcpy(&area, &handle, sizeof handle); // how the control is asked
    ASSERT_NE(SendMessageA(hwnd_treeview, TVM_GETITEMRECT, TRUE, reinterpret_cast<LPARAM>(&area)),
              0);
    const LPARAM middle = MAKELPARAM((area.left + area.right) / 2, (area.top + area.bottom) / 2);
    PostMessageA(hwnd_treeview, WM_LBUTTONDOWN, MK_LBUTTON, middle);
    PostMessageA(hwnd_treeview, WM_LBUTTONUP, 0, middle);
}

HWND label_edit_shown() {
    return reinterpret_cast<HWND>(SendMessageA(hwnd_treeview, TVM_GETEDITCONTROL, 0, 0));
}

void type_label(const char *text) {
    const HWND edit = label_edit_shown();
    SendMessageA(edit, EM_SETSEL, 0, -1);
    for (const char *character = text; *character != '\0'; character++)
        SendMessageA(edit, WM_CHAR, static_cast<unsigned char>(*character), 1);
}
