#include "dialogs/rules/action_command.h"

#include "actions/misc.h"
#include "platform/message.h"
#include "platform/text.h"

#include <cstring>

static constexpr char NO_FOLDER[] = "C:\\";
static constexpr char TEST_FAILED[] =
    "Orvanel failed to execute the action.\n\n"
    "Make sure that you have specified the full path to the executable.";

// Takes a program out of its quotes; what follows them are arguments.
static void split(const char *command, char (&program)[PATH_SIZE], char (&arguments)[PATH_SIZE]) {
    const char *closing = command[0] == '"' ? std::strchr(command + 1, '"') : nullptr;
    if (closing == nullptr) {
        command_line_seperate(command, program, arguments);
        return;
    }
    text_copy_limit(program, static_cast<std::size_t>(closing - command - 1), command + 1);
    text_copy(arguments, closing[1] == ' ' ? closing + 2 : closing + 1);
}

BrowseStart action_browse_start(const char *command) {
    BrowseStart start = {};
    if (command[0] == '\0')
        return start;
    char program[PATH_SIZE], arguments[PATH_SIZE];
    split(command, program, arguments);
    const char *last = std::strrchr(program, '\\');
    if (last == nullptr)
        text_copy(start.folder, NO_FOLDER);
    else if (file_exists(program))
        text_copy(start.file, program);
    else
        text_copy_limit(start.folder, static_cast<std::size_t>(last + 1 - program), program);
    return start;
}

void action_browse_replace(char (&command)[PATH_SIZE], const char *chosen) {
    char program[PATH_SIZE], arguments[PATH_SIZE];
    split(command, program, arguments);
    text_copy(command, chosen);
    if (arguments[0] == '\0')
        return;
    text_append(command, " ");
    text_append(command, arguments);
}

std::int32_t action_test(const char *name, const char *command) {
    char substituted[PATH_SIZE];
    text_copy(substituted, command);
    action_substitute_name(substituted, name);
    if (substituted[0] != '\0' && run_program(substituted) == 0)
        return 0;
    message_box(TEST_FAILED, MESSAGE_CAPTION, MessageIcon::Exclamation);
    return 1;
}
