#include "actions/misc.h"

#include "platform/letters.h"
#include "platform/text.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>

static constexpr std::string_view PAGE_EXTENSION = ".orvl";
static constexpr char POUND_SIGN = '\xa3'; // dropped even where a code page has a letter there
static constexpr std::size_t PATH_LENGTH = PATH_SIZE - 1;
static constexpr std::size_t TITLE_LENGTH = PAGE_TITLE_SIZE - 1;

// Calls work with the name of every file that matches. 0, or 1 when nothing matches.
template <typename Work>
static std::int32_t for_each_file(const char *folder, const std::string &pattern, Work work) {
    const std::string all = std::string(folder) + "\\" + pattern;
    const FolderScanHandle scan = folder_scan_open(all.c_str());
    if (scan == nullptr)
        return 1;
    FolderEntry entry;
    while (folder_scan_next(scan.get(), &entry)) {
        if (!entry.is_folder)
            work(entry.name);
    }
    return 0;
}

// A path that is too long is left alone rather than cut into another one.
static bool fits(const std::string &path) {
    return path.size() <= PATH_LENGTH;
}

std::int32_t copy_files(const char *source_folder, const char *target_folder, const char *pattern) {
    return for_each_file(source_folder, pattern, [&](const char *name) {
        const std::string source = std::string(source_folder) + name;
        const std::string target = std::string(target_folder) + "\\" + name;
        if (fits(source) && fits(target))
            file_copy(source.c_str(),
                      target.c_str()); // a file that cannot be copied is passed over
    });
}

static bool equal_ignore_case(char a, char b) {
    const char first[] = {a, '\0'};
    const char second[] = {b, '\0'};
    return text_equal_ignore_case(first, second);
}

// The path as it is after the change: cut at its first occurrence of the old extension, wherever in
// the path that is. Letter case is ignored, as it is where the files are looked for.
static std::string with_extension(const std::string &path, std::string_view old_extension,
                                  const char *new_extension) {
    const auto found = std::search(path.begin(), path.end(), old_extension.begin(),
                                   old_extension.end(), equal_ignore_case);
    return std::string(path.begin(), found) + new_extension;
}

std::int32_t change_file_extensions(const char *folder, const char *old_extension,
                                    const char *new_extension) {
    if (old_extension[0] == '\0')
        return 1;
    return for_each_file(folder, std::string("*") + old_extension, [&](const char *name) {
        const std::string old_path = std::string(folder) + name;
        const std::string new_path = with_extension(old_path, old_extension, new_extension);
        if (fits(old_path) && fits(new_path))
            file_rename(old_path.c_str(), new_path.c_str()); // one that fails keeps its name
    });
}

static bool is_digit(char character) {
    return character >= '0' && character <= '9';
}

static bool is_path(std::string_view name) {
    return name.find('\\') != std::string_view::npos || name.starts_with('/') ||
           (name.size() > 1 && name[1] == ':');
}

static std::string safe_characters(std::string_view name) {
    std::string safe;
    for (const char character : name) {
        if (character == ' ' || character == '.')
            safe += '_';
        else if ((letter_is(character) && character != POUND_SIGN) || is_digit(character) ||
                 character == '_')
            safe += character;
    }
    return safe;
}

void page_file_name_from_page_name(const char *name, char (&file_name)[PATH_SIZE]) {
    std::string safe = safe_characters(name);
    // An ending counts only where the name as it was typed ends: not when a character was dropped.
    const bool whole = safe.size() == std::strlen(name);
    if (whole && safe.ends_with("_orvl")) {
        safe[safe.size() - 5] = '.';
    } else if (whole && safe.ends_with("_xml")) {
        safe[safe.size() - 4] = '.';
    } else {
        safe.resize(std::min(safe.size(), PATH_LENGTH - PAGE_EXTENSION.size()));
        safe += PAGE_EXTENSION;
    }
    text_copy(file_name, safe.c_str());
}

void convert_string_to_valid_page_file_name(char (&name)[PATH_SIZE]) {
    if (is_path(name))
        return;
    char file_name[PATH_SIZE];
    page_file_name_from_page_name(name, file_name);
    text_copy(name, file_name);
}

// A letter behind one of these begins a word.
static bool is_word_break(char character) {
    return std::string_view(" -_.()").find(character) != std::string_view::npos;
}

void generate_page_name_from_file_name(const char *path, char (&title)[PAGE_TITLE_SIZE]) {
    const char *backslash = std::strrchr(path, '\\');
    std::string name(
        std::string_view(backslash == nullptr ? path : backslash + 1).substr(0, TITLE_LENGTH));
    name = name.substr(0, name.rfind('.'));
    bool word_begins = true;
    for (char &character : name) {
        if (word_begins)
            character = letter_upper(character);
        word_begins = is_word_break(character);
        if (character == '_')
            character = ' ';
    }
    text_copy(title, name.c_str());
}
