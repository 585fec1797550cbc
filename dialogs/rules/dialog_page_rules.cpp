#include "dialogs/rules/dialog_page_rules.h"

#include "actions/misc.h"
#include "dialogs/rules/dialog_model_rules.h"
#include "editing/undo.h"
#include "page/node.h"
#include "page/page_file.h"
#include "platform/files.h"
#include "platform/letters.h"
#include "platform/locations.h"
#include "platform/text.h"
#include "scene/scene_floor.h"
#include "scene/scene_page.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>

static constexpr std::int32_t FILE_NUMBERS = 999; // names "stem_0" to "stem_998" are tried

std::int32_t dialog_page_node_id = DIALOG_PAGE_NEW;
float dialog_page_mouse_x, dialog_page_mouse_y;
std::int32_t &dialog_page_last_model_used = last_page_model_used;
std::int32_t use_existing_page_file = 1;

void dialog_page_init() {
    dialog_page_node_id = DIALOG_PAGE_NEW;
    dialog_page_mouse_x = dialog_page_mouse_y = 0.0f;
    dialog_page_last_model_used = OBJECT_NONE;
    dialog_page_check_link(false);
}

void dialog_page_set_node(std::int32_t index) {
    dialog_page_node_id = index;
}

void dialog_page_set_mouse(float x, float y) {
    dialog_page_mouse_x = x;
    dialog_page_mouse_y = y;
}

bool dialog_page_edits_node() {
    return node_is_live(dialog_page_node_id);
}

void dialog_page_open() {
    dialog_page_check_link(dialog_page_edits_node());
}

void dialog_page_check_link(bool checked) {
    use_existing_page_file = checked ? 0 : 1;
}

bool dialog_page_existing_page_linked() {
    return use_existing_page_file == 0;
}

const char *dialog_page_title() {
    return dialog_page_edits_node() ? "Page Properties" : "New Page";
}

PageFieldTexts dialog_page_opening_texts() {
    PageFieldTexts texts = {};
    if (!dialog_page_edits_node())
        return texts;
    const Node &edited = node[dialog_page_node_id];
    text_copy(texts.name, edited.name);
    text_copy(texts.description, edited.description);
    if (edited.action_count > 0 && edited.actions[0] != nullptr)
        text_copy(texts.file_name, edited.actions[0]->command);
    return texts;
}

std::int32_t dialog_page_first_model() {
    return dialog_page_edits_node() ? node[dialog_page_node_id].model_id : 0;
}

std::int32_t dialog_page_first_entry() {
    if (dialog_page_edits_node())
        return dialog_model_entry(dialog_page_first_model());
    const std::int32_t entry = object_files_get_id_from_file(DIALOG_PAGE_MODEL);
    return dialog_model_entry_used_last(dialog_page_last_model_used,
                                        entry != OBJECT_NONE ? entry : OBJECT_DEFAULT);
}

// ---- file names

static bool page_exists(const char *name) {
    char path[PAGE_PATH_SIZE];
    page_path(path, name);
    return file_exists(path);
}

// A name that is in use is short enough for every number: no file system takes the longest ones.
static void number_file_name(char (&file_name)[PATH_SIZE]) {
    std::string stem(file_name);
    stem.resize(std::min(stem.size(), stem.find(".orvl")));
    for (std::int32_t number = 0; number < FILE_NUMBERS; number++) {
        text_format(file_name, PATH_SIZE, "%s_%d.orvl", stem.c_str(), number);
        if (!page_exists(file_name))
            return;
    }
    file_name[0] = '\0';
}

void dialog_page_generate_valid_filename(const char *name, char (&file_name)[PATH_SIZE]) {
    page_file_name_from_page_name(name, file_name);
    if (page_exists(file_name))
        number_file_name(file_name);
}

static bool is_in_missing_folder(const char *file_name) {
    const char *last = std::strrchr(file_name, '\\');
    if (last == nullptr)
        return false; // in the page folder
    char folder[PATH_SIZE];
    text_copy_limit(folder, static_cast<std::size_t>(last - file_name) + 1, file_name);
    return !folder_exists(folder);
}

const char *dialog_page_browse_start(const char *file_name) {
    return file_name[0] == '$' || is_in_missing_folder(file_name) ? "" : file_name;
}

static bool same_letter(char a, char b) {
    return letter_upper(a) == letter_upper(b);
}

// A page in a folder below keeps its full path: a name with a backslash is not looked for in the
// page folder.
void dialog_page_shown_path(const char *chosen, char (&shown)[PATH_SIZE]) {
    const std::string_view path(chosen), folder(page_dir_location);
    const auto found =
        std::search(path.begin(), path.end(), folder.begin(), folder.end(), same_letter);
    const char *behind = chosen;
    if (found != path.end())
        behind += (found - path.begin()) + static_cast<std::ptrdiff_t>(folder.size());
    text_copy(shown, text_contains(behind, "\\") ? chosen : behind);
}

// ---- OK

// What is to become of the page object, before anything of the page is touched.
struct PagePlan {
    bool is_new;
    std::int32_t id; // of the node
    char name[NODE_NAME_LENGTH + 1];
    char file_name[PATH_SIZE];
};

static PagePlan plan_page(const PageFields &fields) {
    PagePlan plan = {};
    plan.is_new = !dialog_page_edits_node();
    plan.id = plan.is_new ? node_total : dialog_page_node_id;
    text_copy(plan.name, fields.name);
    if (dialog_page_existing_page_linked())
        text_copy(plan.file_name, fields.file_name);
    return plan;
}

static PageRefusal check_name(const PagePlan &plan) {
    if (plan.name[0] == '\0')
        return dialog_page_existing_page_linked() ? PageRefusal::None : PageRefusal::NameEmpty;
    const bool taken = plan.is_new && node_return_id(plan.name) != -1;
    return taken ? PageRefusal::NameTaken : PageRefusal::None;
}

// Both by their full paths, letter case ignored as the file system does.
static bool is_page_shown(const char *file_name) {
    char path[PAGE_PATH_SIZE], shown[PAGE_PATH_SIZE];
    page_path(path, file_name);
    page_path(shown, scene_page_file_name);
    return std::ranges::equal(std::string_view(path), std::string_view(shown), same_letter);
}

// Fills in the file, and the name where it was left to the file.
static PageRefusal choose_file(PagePlan *plan) {
    const bool linked = dialog_page_existing_page_linked();
    if (linked && plan->file_name[0] == '\0')
        return PageRefusal::NoFile;
    if (!linked)
        dialog_page_generate_valid_filename(plan->name, plan->file_name);
    if (plan->name[0] == '\0') {
        char title[PAGE_TITLE_SIZE];
        generate_page_name_from_file_name(plan->file_name, title);
        text_copy(plan->name, title);
    }
    return is_page_shown(plan->file_name) ? PageRefusal::SelfLink : PageRefusal::None;
}

// A page that is linked and exists stays as it is. That the file is there then is looked at: the
// name may be that of a folder.
static PageRefusal create_file(const char *file_name) {
    xml_create_page(file_name);
    return page_exists(file_name) ? PageRefusal::None : PageRefusal::NoPageFile;
}

// The position stays in the table's entry when it is initialised, and the entry may have held
// another node before.
static void begin_new_node(std::int32_t id) {
    node[id].x = dialog_page_mouse_x + scene_floor.position_x;
    node[id].y = dialog_page_mouse_y + scene_floor.position_y;
    node[id].model_id = 0;
    node[id].move_dx = node[id].move_dy = 0.0f;
    node[id].label_depth = 0;
    node_init_node(id);
}

static void write_node(const PagePlan &plan, const PageFields &fields) {
    if (plan.is_new)
        begin_new_node(plan.id);
    Node *record = &node[plan.id];
    record->type = NODE_PAGE;
    text_copy(record->name, plan.name);
    text_copy_limit(record->description, NODE_DESCRIPTION_LENGTH, fields.description);
    dialog_model_take(plan.id, fields.model_entry);
    dialog_model_remember(&dialog_page_last_model_used, fields.model_entry);
    *record->actions[0] = Action{};
    text_copy(record->actions[0]->command, plan.file_name);
    record->action_count = 1;
    if (plan.is_new)
        node_total++;
}

static PageRefusal check_page(PagePlan *plan) {
    if (plan->is_new && node_total >= NODE_CAPACITY)
        return PageRefusal::PageFull;
    const PageRefusal name = check_name(*plan);
    if (name != PageRefusal::None)
        return name;
    action_allocate_action(&node[plan->id].actions[0]); // the slot alone does not show on the page
    if (node[plan->id].actions[0] == nullptr)
        return PageRefusal::NoPageFile;
    const PageRefusal file = choose_file(plan);
    if (file != PageRefusal::None)
        return file;
    return plan->is_new ? create_file(plan->file_name) : PageRefusal::None;
}

PageRefusal dialog_page_apply(const PageFields &fields) {
    redo_reset();
    PagePlan plan = plan_page(fields);
    const PageRefusal refusal = check_page(&plan);
    if (refusal != PageRefusal::None)
        return refusal;
    write_node(plan, fields);
    return PageRefusal::None;
}
