#include "app/commands.h"

#include "actions/command.h"
#include "actions/misc.h"
#include "app/edit_choice.h"
#include "app/input.h"
#include "page/node.h"
#include "page/options.h"
#include "platform/message.h"
#include "platform/text.h"
#include "platform/window.h"
#include "scene/frame_clock.h"
#include "scene/interaction.h"
#include "scene/scene.h"

// Keys come in pairs: the code of the letter's key and that of its lower-case character, which as a
// key is another one (numeric keypad 3, F7, F9, F10, F11). The pairs are kept on purpose.
static constexpr Command commands[] = {
    {COMMAND_ABOUT, "About", MENU_IMAGE_ABOUT, 0, 0, command_about},
    {COMMAND_OPTIONS, "Options", MENU_IMAGE_OPTIONS, 0, 0, command_options},
    {COMMAND_EDIT_PAGE, "Edit This Page", MENU_IMAGE_NONE, 0, 0, command_edit_page},
    {COMMAND_FINISH_EDITING, "Finish Editing", MENU_IMAGE_FINISH_EDITING, 0, 0,
     command_finish_editing},
    {COMMAND_NEW_OBJECT, "New Object", MENU_IMAGE_NONE, 0, 0, command_new_object},
    {COMMAND_NEW_PAGE, "New Page", MENU_IMAGE_NONE, 0, 0, command_new_page},
    {COMMAND_NEW_LABEL, "New Label", MENU_IMAGE_NONE, 0, 0, command_new_label},
    {COMMAND_DELETE, "Delete", MENU_IMAGE_DELETE, 0, 0, command_delete},
    {COMMAND_DRAW_LINK, "Draw Link", MENU_IMAGE_NONE, 0, 0, command_draw_link},
    {COMMAND_REMOVE_LINKS, "Remove Links", MENU_IMAGE_NONE, 0, 0, command_remove_links},
    {COMMAND_PROPERTIES, "Properties", MENU_IMAGE_PROPERTIES, 0, 0, command_properties},
    {COMMAND_ALIGN_WITH_OBJECT, "Align With Object", MENU_IMAGE_ALIGN_WITH_OBJECT, 0, 0,
     command_align_with_object},
    {COMMAND_ALIGN_WITH_GRID, "Align With Grid", MENU_IMAGE_ALIGN_WITH_GRID, 0, 0,
     command_align_with_grid},
    {COMMAND_DELETE_KEEPING_FILE, "", MENU_IMAGE_NONE, 0, 0, command_delete},
    {COMMAND_REVERT, "Revert to saved", MENU_IMAGE_NONE, 0, 0, command_revert},
    {COMMAND_CENTER_PAGE, "Center Page", MENU_IMAGE_NONE, 0, 0, command_center_page},
    {COMMAND_SET_PAGE_CENTER, "Set Page Center", MENU_IMAGE_NONE, 0, 0, command_set_page_center},
    {COMMAND_CUT, "Cut", MENU_IMAGE_CUT, 'X', 'x', command_cut},
    {COMMAND_COPY, "Copy", MENU_IMAGE_COPY, 'C', 'c', command_copy},
    {COMMAND_PASTE, "Paste", MENU_IMAGE_PASTE, 'V', 'v', command_paste},
    {COMMAND_PASTE_ACTIONS, "Paste Actions", MENU_IMAGE_PASTE, 0, 0, command_paste_actions},
    {COMMAND_UNDO, "Undo", MENU_IMAGE_UNDO, 'Z', 'z', command_undo},
    {COMMAND_REDO, "Redo", MENU_IMAGE_REDO, 'Y', 'y', command_redo},
    {COMMAND_COLOUR_FIRST, "Blue", swatch(0), 0, 0, command_page_colour},
    {COMMAND_COLOUR_FIRST + 1, "Gray", swatch(1), 0, 0, command_page_colour},
    {COMMAND_COLOUR_FIRST + 2, "Turquoise", swatch(2), 0, 0, command_page_colour},
    {COMMAND_COLOUR_FIRST + 3, "Purple", swatch(3), 0, 0, command_page_colour},
    {COMMAND_COLOUR_FIRST + 4, "Orange", swatch(4), 0, 0, command_page_colour},
    {COMMAND_COLOUR_FIRST + 5, "Black", swatch(5), 0, 0, command_page_colour},
    {COMMAND_COLOUR_DEFAULT, "Default", MENU_IMAGE_NONE, 0, 0, command_default_page_colour},
    {COMMAND_COLOUR_CUSTOM, "Custom...", MENU_IMAGE_NONE, 0, 0, get_custom_colour_menu},
};

const Command *command_find(std::int32_t id) {
    for (const Command &command : commands) {
        if (command.id == id)
            return &command;
    }
    return nullptr;
}

std::int32_t command_target() {
    const std::int32_t target = input_target(pre_dialog_mouse.x, pre_dialog_mouse.y);
    return node_is_live(target) ? target : -1;
}

// Either option ends the program, whichever action it was.
static bool exits_after_action() {
    return orvanel_options.action_exit_any == 1 || orvanel_options.action_exit_action_1 == 1;
}

static void run_target_action(std::int32_t action) {
    const std::int32_t target = command_target();
    if (target == -1)
        return;
    if (node[target].type == NODE_PAGE)
        run_action(target, 0);
    else if (run_action(target, action) == 0 && exits_after_action())
        window_quit(0);
}

static void report_unknown(std::int32_t id) {
    char text[40];
    text_format(text, sizeof text, "Unkonwn option (%d).", static_cast<int>(id));
    message_box(text, "Not implemented", MessageIcon::Exclamation);
}

void command_run(std::int32_t id) {
    const Command *command = command_find(id);
    edit_leave_choice(); // its node may not survive the command
    if (id >= COMMAND_ACTION_FIRST)
        run_target_action(id - COMMAND_ACTION_FIRST);
    else if (command != nullptr && command->run != nullptr)
        command->run(id);
    else
        report_unknown(id);
    reset_frame_timer();
    scene_request_redraw();
}

bool command_run_key(std::int32_t code) {
    for (const Command &command : commands) {
        if (command.key == 0 || (command.key != code && command.second_key != code))
            continue;
        input_capture_lost(); // a drag ends where it is
        pre_dialog_mouse = {mouse.x, mouse.y};
        command_run(command.id);
        return true;
    }
    return false;
}
