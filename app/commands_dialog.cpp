#include "app/commands.h"

#include "actions/command.h"
#include "app/input.h"
#include "app/window_rebuild.h"
#include "dialogs/dialogs.h"
#include "dialogs/rules/dialog_object_rules.h"
#include "dialogs/rules/dialog_options_rules.h"
#include "dialogs/rules/dialog_page_rules.h"
#include "editing/page_edit.h"
#include "editing/undo.h"
#include "page/node.h"
#include "page/options.h"
#include "platform/message.h"
#include "platform/text.h"
#include "scene/interaction.h"
#include "scene/scene.h"
#include "scene/scene_page.h"
#include "scene/scene_transition.h"

static constexpr std::int32_t OPENING = 0; // for the transitions

// Where a node would stand under the mouse as it was when the menu was opened.
struct Place {
    float x, y; // relative to the floor's offset
};

static Place place_of_menu() {
    Place place = {};
    input_node_position(pre_dialog_mouse.x, pre_dialog_mouse.y, &place.x, &place.y);
    return place;
}

// The others make room for it.
static void settle_node(std::int32_t id) {
    node[id].grab_state = GRAB_ANCHORED;
    scene_nodes_avoid_node_area(id);
    node[id].grab_state = GRAB_IDLE;
}

// After a dialog that was to add a node, which it then did as the last one.
static void welcome_node() {
    const std::int32_t id = node_total - 1;
    settle_node(id);
    scene_new_node_transition(id);
    scene_changed = 1;
    undo_duplicate_check(id);
}

void command_about(std::int32_t) {
    dialog_about_show();
}

// ---- new nodes

void command_new_object(std::int32_t) {
    if (!command_has_room())
        return;
    command_begin_change();
    const Place place = place_of_menu();
    dialog_object_set_node(-1);
    dialog_object_set_mouse(place.x, place.y);
    if (dialog_object_show() != DIALOG_OK) {
        undo_reject();
        return;
    }
    scene_page_hosts_total++;
    welcome_node();
}

// A label without a text is none: nothing was added.
void command_new_label(std::int32_t) {
    if (!command_has_room())
        return;
    command_begin_change();
    dialog_node_id = -1;
    const std::int32_t before = node_total;
    if (dialog_label_show() == DIALOG_OK && node_total > before)
        welcome_node();
    else
        undo_reject();
}

static void report_page(std::uint32_t result) {
    message_box(scene_load_message(result, SCENE_TOO_MANY_ON_PAGE), MESSAGE_CAPTION,
                MessageIcon::Exclamation);
}

// Goes on editing on the new page. The page left is saved first; its history ends there.
static void edit_new_page(std::int32_t id) {
    char file[SCENE_FILE_NAME_SIZE];
    char title[SCENE_TITLE_SIZE];
    text_copy(file, node[id].actions[0]->command);
    text_copy(title, node[id].name);
    if (page_edit_save() != 0)
        return;
    undo_reset();
    scene_page_out_transition(OPENING);
    if (scene_stack_push() != 0) {
        message_box("The maximum number of page levels has been reached on this page.",
                    MESSAGE_CAPTION, MessageIcon::Exclamation);
    } else {
        scene_floor_init();
        const std::uint32_t result = scene_load_page(file, title);
        if (result != PAGE_LOADED) {
            report_page(result);
            scene_stack_pop();
        }
    }
    scene_page_in_transition(OPENING);
    scene_invalidate_floor();
}

void command_new_page(std::int32_t) {
    if (!command_has_room())
        return;
    command_begin_change();
    const Place place = place_of_menu();
    dialog_node_id = -1;
    dialog_page_set_node(-1);
    dialog_page_set_mouse(place.x, place.y);
    if (dialog_page_show() != DIALOG_OK) {
        undo_reject();
        return;
    }
    scene_page_links_total++;
    welcome_node();
    if (!dialog_page_existing_page_linked() &&
        message_box("Do you want to edit this page now?", MESSAGE_CAPTION, MessageIcon::Question,
                    MessageButtons::YesNo) == MessageAnswer::Yes)
        edit_new_page(node_total - 1);
}

// ---- properties

static std::int32_t show_properties(std::int32_t id) {
    switch (node[id].type) {
    case NODE_OBJECT:
        dialog_object_set_node(id);
        return dialog_object_show();
    case NODE_PAGE:
        dialog_page_set_node(id);
        return dialog_page_show();
    case NODE_LABEL:
        return dialog_label_show();
    default:
        return DIALOG_CANCEL;
    }
}

void command_properties(std::int32_t) {
    const std::int32_t target = command_target();
    if (target == -1)
        return;
    dialog_node_id = target;
    command_begin_change();
    if (show_properties(target) == DIALOG_OK) {
        scene_changed = 1;
        settle_node(target);
    }
    undo_duplicate_check(target);
}

// ---- options

static void show_home_of_new_folder() {
    page_edit_cancel();
    scene_page_out_transition(OPENING);
    scene_stack_jump(0);
    const std::uint32_t result = scene_load_page("home.orvl", "Home");
    if (result != PAGE_LOADED)
        report_page(result);
    scene_floor_init();
    scene_page_in_transition(OPENING);
    scene_invalidate_floor();
    open_mode = 0;
}

// False when the page cannot be saved: its changes would be lost with the window.
static bool leave_edit_mode() {
    return app_mode != APP_EDIT || page_edit_end() == 0;
}

void command_options(std::int32_t) {
    if (dialog_options_show() != DIALOG_OK)
        return;
    if (options_colour_change_flag == 1 && scene_floor.colour.use_default == 1)
        scene_page_colour_transition(orvanel_options.default_page_red,
                                     orvanel_options.default_page_green,
                                     orvanel_options.default_page_blue);
    if (dialog_options_folder_change_reload == 1)
        show_home_of_new_folder();
    if (dialog_options_rebuild_window == 1 && leave_edit_mode())
        toggle_fsaa();
}
