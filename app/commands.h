// Running commands: those that a menu sends, and those that a key means together with Control. The
// handlers of the one table (actions/command.h) are declared here too.
#pragma once

#include <cstdint>

// Runs a command, or action n of the object under pre_dialog_mouse (COMMAND_ACTION_FIRST + n). An
// id that is no command shows a message.
void command_run(std::int32_t id);

// Edit mode, Control held: runs the command of a key for what the mouse is over. False when the key
// means none.
bool command_run_key(std::int32_t code);

// Node under pre_dialog_mouse, or -1.
std::int32_t command_target();

// ---- handlers of objects (commands_node.cpp)
void command_delete(std::int32_t id);
void command_draw_link(std::int32_t id);
void command_remove_links(std::int32_t id);
void command_align_with_object(std::int32_t id);
void command_align_with_grid(std::int32_t id);

// ---- clipboard and history (commands_clipboard.cpp)
void command_cut(std::int32_t id);
void command_copy(std::int32_t id);
void command_paste(std::int32_t id);
void command_paste_actions(std::int32_t id);
void command_undo(std::int32_t id);
void command_redo(std::int32_t id);

// True when another node fits on the page, else a message has been shown.
bool command_has_room();
// Snapshot before a change; what could be redone is past.
void command_begin_change();

// ---- handlers that open a dialog (commands_dialog.cpp)
void command_about(std::int32_t id);
void command_options(std::int32_t id);
void command_new_object(std::int32_t id);
void command_new_page(std::int32_t id);
void command_new_label(std::int32_t id);
void command_properties(std::int32_t id);

// ---- handlers of the page (commands_page.cpp)
void command_edit_page(std::int32_t id);
void command_finish_editing(std::int32_t id);
void command_revert(std::int32_t id);
void command_center_page(std::int32_t id);
void command_set_page_center(std::int32_t id);
void command_page_colour(std::int32_t id); // COMMAND_COLOUR_FIRST .. COMMAND_COLOUR_LAST
void command_default_page_colour(std::int32_t id);
void get_custom_colour_menu(std::int32_t id);
