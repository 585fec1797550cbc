#include "actions/misc.h"

#include "page/node.h"
#include "platform/message.h"
#include "platform/process.h"
#include "platform/text.h"
#include "scene/scene_page.h"

#include <cstring>
#include <span>
#include <string>
#include <string_view>

static constexpr char FAILED_TO_EXECUTE[] =
    "Orvanel failed to execute the action.\n\n"
    "Make sure that you have specified the full path to the executable.";
static constexpr char PAGE_EXTENSION[] = ".orvl";
static constexpr std::size_t PAGE_EXTENSION_LENGTH = sizeof PAGE_EXTENSION - 1;
static constexpr char SEPARATOR = '\\';

// Each is looked for in the whole command before the next one is.
static constexpr const char *PROGRAM_EXTENSIONS[] = {".exe", ".EXE", ".com", ".COM",
                                                     ".bat", ".BAT", ".cmd", ".CMD"};

static constexpr std::string_view NAME_PATTERNS[] = {"$NAME", "$name", "${NAME}", "${name}"};

struct SearchPlace {
    const char *folder;
    std::int32_t max_depth;
};
static constexpr SearchPlace SEARCH_PLACES[] = {
    {"c:\\program files", 3}, {"d:\\program files", 3}, {"c:", 1}, {"d:", 1}};

// First pattern that text begins with, or an empty one.
static std::string_view pattern_at(std::string_view text,
                                   std::span<const std::string_view> patterns) {
    for (const std::string_view pattern : patterns) {
        if (!pattern.empty() && text.starts_with(pattern))
            return pattern;
    }
    return {};
}

// One walk over the text for all patterns: what was inserted is never scanned again, not even when
// an object is called "$name".
static void substitute(char *text, std::span<const std::string_view> patterns, const char *value,
                       std::size_t size) {
    const std::string_view inserted = std::string_view(value).substr(0, size);
    std::string result;
    for (std::string_view rest = text; !rest.empty();) {
        const std::string_view pattern = pattern_at(rest, patterns);
        if (pattern.empty())
            result += rest.front();
        else
            result += inserted;
        rest.remove_prefix(pattern.empty() ? 1 : pattern.size());
    }
    text_copy(text, size + 1, result.c_str());
}

void variable_substitute(char *text, const char *pattern, const char *value, std::size_t size) {
    const std::string_view patterns[] = {pattern};
    substitute(text, patterns, value, size);
}

void action_substitute_name(char (&command)[PATH_SIZE], const char *name) {
    substitute(command, NAME_PATTERNS, name, PATH_SIZE - 1);
}

std::int32_t is_url(const char *text) {
    for (const std::string_view scheme : {"http:", "HTTP:", "https:", "HTTPS:"}) {
        if (std::string_view(text).starts_with(scheme))
            return 0;
    }
    return 1;
}

// Where the program of a command line can end at the earliest, or null when all of it is the
// program.
static const char *split_point(const char *command) {
    if (std::strchr(command, SEPARATOR) == nullptr)
        return std::strchr(command, ' ');
    for (const char *extension : PROGRAM_EXTENSIONS) {
        if (const char *found = std::strstr(command, extension))
            return found;
    }
    return nullptr;
}

void command_line_seperate(const char *command, char (&program)[PATH_SIZE],
                           char (&arguments)[PATH_SIZE]) {
    text_copy(program, command);
    arguments[0] = '\0';
    const char *split = split_point(command);
    const char *space = split == nullptr ? nullptr : std::strchr(split, ' ');
    if (space == nullptr)
        return;
    text_copy_limit(program, static_cast<std::size_t>(space - command), command);
    text_copy(arguments, space + 1);
}

std::int32_t get_default_browser_exe(char (&path)[PATH_SIZE]) {
    char command[PATH_SIZE];
    if (registry_browser_command(command, sizeof command) != 0)
        return 1;
    const char *program = command;
    if (command[0] == '"') {
        program++;
        if (char *closing = std::strchr(command + 1, '"'))
            *closing = '\0';
    }
    char arguments[PATH_SIZE];
    command_line_seperate(program, path, arguments);
    return 0;
}

// Starts a program that was found on a disk. It is named to the system by its path, so that no
// "c:\program.exe" is started in place of one below "c:\program files"; the path at the head of the
// command line is quoted when it holds a blank, so that the program and the interpreter of batch
// files read their arguments where they begin.
static int start_found(const char *path, const char *arguments) {
    const char *quote = std::strchr(path, ' ') == nullptr ? "" : "\"";
    char command_line[2 * PATH_SIZE + 3];
    text_format(command_line, sizeof command_line, "%s%s%s %s", quote, path, quote, arguments);
    return process_start(path, command_line);
}

static std::int32_t search_disks(const char *file_name, char (&found_path)[PATH_SIZE]) {
    const CriticalErrorsOff no_dialogs;
    for (const SearchPlace &place : SEARCH_PLACES) {
        if (finder_find(place.folder, file_name, 1, place.max_depth, found_path) == 0)
            return 0;
    }
    return 1;
}

// A program name in quotes is taken out of them first: splitting does not know quotes.
static void split_command(const char *command, char (&program)[PATH_SIZE],
                          char (&arguments)[PATH_SIZE]) {
    const char *closing = command[0] == '"' ? std::strchr(command + 1, '"') : nullptr;
    if (closing == nullptr) {
        command_line_seperate(command, program, arguments);
        return;
    }
    text_copy_limit(program, static_cast<std::size_t>(closing - command - 1), command + 1);
    text_copy(arguments, closing[1] == ' ' ? closing + 2 : closing + 1);
}

// Looks for a bare program name on the disks and starts it. 0 started, 1 not found or not
// startable.
static int search_and_start(const char *command) {
    char program[PATH_SIZE];
    char arguments[PATH_SIZE];
    split_command(command, program, arguments);
    if (std::strchr(program, '.') == nullptr)
        text_append(program, ".exe");
    char found_path[PATH_SIZE];
    if (search_disks(program, found_path) != 0)
        return 1;
    return start_found(found_path, arguments);
}

std::int32_t run_program(const char *command) {
    if (command[0] == '\0')
        return 0;
    if (is_url(command) == 0) {
        shell_open(command); // an address that cannot be opened fails silently
        return 0;
    }
    if (text_contains(command, PAGE_EXTENSION))
        return 1;
    if (process_start(nullptr, command) == 0)
        return 0;
    if (std::strchr(command, SEPARATOR) == nullptr && search_and_start(command) == 0)
        return 0;
    return shell_open(command);
}

// True when the command is more than an extension and ends in the first one it holds.
static bool names_a_page(const char *command) {
    const std::size_t length = std::strlen(command);
    return length > PAGE_EXTENSION_LENGTH &&
           std::strstr(command, PAGE_EXTENSION) == command + length - PAGE_EXTENSION_LENGTH;
}

// Opening a page overwrites the node table and its actions: the texts are kept apart from it.
static void open_page(const char *file, const char *title) {
    char own_file[PATH_SIZE];
    char own_title[PATH_SIZE];
    text_copy(own_file, file);
    text_copy(own_title, title);
    load_page(own_file, own_title);
}

static std::int32_t run_object(const Node &object, const Action &action) {
    char command[PATH_SIZE];
    text_copy(command, action.command);
    action_substitute_name(command, object.name);
    if (names_a_page(command)) {
        open_page(action.command, action.name);
        return 0;
    }
    if (run_program(command) == 0)
        return 0;
    message_box(FAILED_TO_EXECUTE, MESSAGE_CAPTION, MessageIcon::Exclamation);
    return 1;
}

std::int32_t run_action(std::int32_t node_id, std::int32_t action_index) {
    if (!node_is_live(node_id) || action_index < 0 || action_index >= node[node_id].action_count ||
        action_index >= NODE_ACTIONS)
        return 1;
    const Node &target = node[node_id];
    const Action *first = target.actions[0];
    const Action *chosen = target.actions[action_index];
    if (target.type == NODE_PAGE && first != nullptr) {
        open_page(first->command, target.name);
        return 0;
    }
    if (target.type == NODE_OBJECT && chosen != nullptr)
        return run_object(target, *chosen);
    return 1;
}
