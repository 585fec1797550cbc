#include "actions/menu_icon_key.h"

#include "actions/misc.h"
#include "platform/text.h"

#include <cstring>

static constexpr char QUOTE = '"';

void menu_icon_key(const char *command, char (&key)[PATH_SIZE]) {
    if (command[0] != '\0' && is_url(command) == 0) {
        text_copy(key, MENU_ICON_BROWSER);
        return;
    }
    char copy[PATH_SIZE];
    text_copy(copy, command[0] == QUOTE ? command + 1 : command);
    if (command[0] == QUOTE) {
        if (char *closing = std::strchr(copy, QUOTE))
            *closing = '\0';
    }
    char arguments[PATH_SIZE];
    command_line_seperate(copy, key, arguments);
}
