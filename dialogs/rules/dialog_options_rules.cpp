#include "dialogs/rules/dialog_options_rules.h"

std::int32_t dialog_options_folder_change_reload;
std::int32_t options_colour_change_flag;
std::int32_t dialog_options_rebuild_window;
