// Command lines and file names: splitting, recognising addresses, deriving page names and titles,
// and the path that another instance hands over.
#include "actions/misc.h"
#include "app/hand_over.h"
#include "platform/text.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

static void require(bool holds) {
    if (!holds)
        abort();
}

// The parts stand in the command in their order, and nothing else than a space between them is
// lost.
static void check_separation(const char *command) {
    char program[PATH_SIZE], arguments[PATH_SIZE];
    command_line_seperate(command, program, arguments);
    const std::size_t length = std::strlen(command);
    require(std::strncmp(command, program, std::strlen(program)) == 0);
    if (arguments[0] != '\0')
        require(std::strstr(command, arguments) != nullptr);
    if (length < PATH_SIZE && arguments[0] == '\0')
        require(std::strlen(program) + 1 >= length || std::strlen(program) == length);
}

static void check_names(const char *text) {
    char name[PATH_SIZE];
    text_copy(name, text);
    const bool was_path =
        std::strchr(name, '\\') != nullptr || name[0] == '/' || (name[0] != '\0' && name[1] == ':');
    convert_string_to_valid_page_file_name(name);
    const std::string result = name;
    require(was_path || result.ends_with(".orvl") || result.ends_with(".xml"));
    require(was_path || result.find_first_of("\\/:*?\"<>|") == std::string::npos);

    char title[PAGE_TITLE_SIZE];
    generate_page_name_from_file_name(text, title);
    require(std::strlen(title) < PAGE_TITLE_SIZE);
    require(std::strchr(title, '_') == nullptr);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    char path[HAND_OVER_SIZE];
    if (hand_over_read(HAND_OVER_ID, data, size, path))
        require(std::memcmp(path, data, std::strlen(path)) == 0);

    const std::string text(reinterpret_cast<const char *>(data), size);
    check_separation(text.c_str());
    check_names(text.c_str());
    is_url(text.c_str());
    hand_over_write(text.c_str(), path);
    return 0;
}
