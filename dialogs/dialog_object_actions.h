// The Actions tab of the object dialog: a tree control that repeats what
// dialogs/rules/action_tree.h decides, and the type and command of the item selected in it.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <cstdint>

inline constexpr std::size_t OBJECT_NAME_BUFFER = 256; // bytes; the object takes 30 characters

// The pages of the tabs: Details, Actions. Made and destroyed by dialog_object.cpp.
extern HWND dialog_object_tab_windows[2];
extern HWND hwnd_treeview;
extern HIMAGELIST submenu_imagelist; // item, separator or submenu, no item; 16 x 16 pixels

// Read when the captions are coloured: 1 = does not apply to the selection.
extern std::int32_t dialog_object_disable_type_static_text;
extern std::int32_t dialog_object_disable_command_static_text;

// Of the tree control; null and -1 when there is no such item.
HTREEITEM dialog_object_get_item_handle_from_treeview_id(std::int32_t id);
std::int32_t dialog_object_get_treeview_id_from_item_handle(HTREEITEM item);

INT_PTR CALLBACK dialog_object_actions(HWND page, UINT message, WPARAM wparam, LPARAM lparam);

// Puts what was typed into the command field into the record of the selected item.
void dialog_object_save_current_selection();

// Ends the editing of a label, keeping its text or not; false when none is being edited.
bool dialog_object_end_label_edit(bool cancel);
