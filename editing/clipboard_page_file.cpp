#include "editing/clipboard_page_file.h"

#include "page/node.h"
#include "page/page_file.h"
#include "platform/files.h"
#include "platform/locations.h"
#include "platform/text.h"

#include <algorithm>
#include <cstring>
#include <string>

static constexpr std::size_t PATH_LENGTH = PATH_SIZE - 1;
static constexpr std::int32_t LAST_COPY = 1000; // taken even when there is such a file

// Cuts the text where the first occurrence of a part begins, searched from a position on; false
// when there is none.
static bool cut_at(std::string *text, const char *part, std::size_t from = 0) {
    const std::size_t found = text->find(part, from);
    if (found == std::string::npos)
        return false;
    text->resize(found);
    return true;
}

// Room for the base of a name whose end must be kept.
static void limit(std::string *base, std::size_t length, std::size_t end) {
    base->resize(std::min(base->size(), length - std::min(length, end)));
}

// ---- file names

struct CopyName {
    std::string stem; // with the folder when the page is named with one
    const char *extension;
};

// Copies of copies are numbered with the others. The folder's own name is left alone: a copy stands
// next to its original.
static CopyName copy_name(const char *file_name) {
    CopyName name = {file_name, ".orvl"};
    const std::size_t folder = name.stem.rfind('\\') + 1; // npos + 1 is 0
    if (!cut_at(&name.stem, ".orvl", folder) && cut_at(&name.stem, ".xml", folder))
        name.extension = ".xml";
    cut_at(&name.stem, "_copy_", folder);
    name.stem += "_copy_";
    return name;
}

// Characters a name may have so that its path still names a file.
static std::size_t name_limit(const std::string &name) {
    if (name.find('\\') != std::string::npos)
        return PATH_LENGTH;
    return PATH_LENGTH - std::min(PATH_LENGTH, std::strlen(page_dir_location));
}

static std::string candidate(const CopyName &name, std::int32_t number) {
    const std::string end = std::to_string(number) + name.extension;
    std::string text = name.stem;
    limit(&text, name_limit(text), end.size());
    return text + end;
}

static bool path_exists(const std::string &name) {
    char path[PAGE_PATH_SIZE];
    page_path(path, name.c_str());
    return file_exists(path) || folder_exists(path);
}

static std::int32_t free_number(const CopyName &name) {
    std::int32_t number = 1;
    while (number < LAST_COPY && path_exists(candidate(name, number)))
        number++;
    return number;
}

static void copy_page_file(const char *source_name, const char *target_name) {
    char source[PAGE_PATH_SIZE], target[PAGE_PATH_SIZE];
    page_path(source, source_name);
    page_path(target, target_name);
    file_copy(source, target);
}

// ---- object names

static void name_copy(Node *page, std::int32_t number) {
    std::string name = page->name;
    cut_at(&name, " (Copy)");
    cut_at(&name, " (Copy ");
    const std::string end = number == 1 ? " (Copy)" : " (Copy " + std::to_string(number) + ")";
    limit(&name, NODE_NAME_LENGTH, end.size());
    text_copy(page->name, (name + end).c_str());
}

void clipboard_duplicate_page_file(Node *page) {
    Action *action = page->actions[0];
    if (action == nullptr || page->action_count < 1)
        return;
    const CopyName name = copy_name(action->command);
    const std::int32_t number = free_number(name);
    const std::string copy = candidate(name, number);
    copy_page_file(action->command, copy.c_str());
    text_copy(action->command, copy.c_str());
    name_copy(page, number);
}
