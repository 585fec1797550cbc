#include "app/commands.h"

#include "actions/command.h"
#include "app/edit_choice.h"
#include "editing/page_edit.h"
#include "editing/undo.h"
#include "page/node.h"
#include "page/options.h"
#include "page/page_file.h"
#include "platform/files.h"
#include "platform/message.h"
#include "platform/text.h"
#include "scene/scene.h"
#include "scene/scene_page.h"
#include "scene/scene_transition.h"

static bool is_yes(const char *question, MessageButtons buttons) {
    return message_box(question, MESSAGE_CAPTION, MessageIcon::Question, buttons) ==
           MessageAnswer::Yes;
}

static bool deletion_is_confirmed() {
    return orvanel_options.confirm_object_delete != 1 ||
           is_yes("Are you sure?", MessageButtons::YesNo);
}

// A label is no object and was never counted.
static void delete_object(std::int32_t target) {
    command_begin_change();
    if (node[target].type == NODE_OBJECT)
        scene_page_hosts_total--;
    scene_delete_node_transition(target);
    const bool is_template =
        node[target].type == NODE_OBJECT && text_equal(node[target].name, "Template");
    if (is_template)
        template_object_delete();
    node_delete_node(target);
}

// The file cannot be brought back, so neither can the page object: the history ends here.
static void delete_page_file(const char *file) {
    if (xml_delete_page(file) != 0)
        message_box("Failed to remove page file", MESSAGE_CAPTION, MessageIcon::Error);
    page_edit_save();
    undo_reset();
}

// The command that asks no question about the file leaves it where it is.
static bool file_goes_too(std::int32_t id) {
    if (id == COMMAND_DELETE_KEEPING_FILE)
        return false;
    return orvanel_options.confirm_page_file_delete != 1 ||
           is_yes("The Page has been deleted.\nDo you also want to delete the page file?",
                  MessageButtons::YesNoCareful);
}

// By either of its names: with its folder or without.
static bool is_home_page(const char *file) {
    char path[PAGE_PATH_SIZE], home[PAGE_PATH_SIZE];
    page_path(path, file);
    page_path(home, "home.orvl");
    return text_equal_ignore_case(path, home);
}

static void delete_page_object(std::int32_t target, std::int32_t id) {
    command_begin_change();
    scene_page_links_total--;
    char file[PATH_SIZE] = "";
    if (node[target].action_count > 0 && node[target].actions[0] != nullptr)
        text_copy(file, node[target].actions[0]->command);
    scene_delete_node_transition(target);
    node_delete_node(target);
    scene_request_redraw();
    scene_draw();
    if (file[0] == '\0' || is_home_page(file))
        return; // the home page's file is never deleted
    if (file_goes_too(id))
        delete_page_file(file);
}

void command_delete(std::int32_t id) {
    scene_changed = 1;
    const std::int32_t target = command_target();
    if (target == -1 || !deletion_is_confirmed())
        return;
    if (node[target].type == NODE_PAGE)
        delete_page_object(target, id);
    else
        delete_object(target);
}

void command_draw_link(std::int32_t) {
    const std::int32_t target = command_target();
    if (target != -1)
        edit_begin_link(target);
}

void command_remove_links(std::int32_t) {
    scene_changed = 1;
    const std::int32_t target = command_target();
    if (target == -1)
        return;
    command_begin_change();
    node_remove_lines(target);
}

void command_align_with_object(std::int32_t) {
    const std::int32_t target = command_target();
    if (target != -1)
        edit_begin_alignment(target);
}

void command_align_with_grid(std::int32_t) {
    const std::int32_t target = command_target();
    if (target == -1)
        return;
    undo_push();
    scene_align_with_grid(target);
    undo_duplicate_check(target);
    scene_changed = 1;
}
