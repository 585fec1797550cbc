#include "assets/object_files.h"

#include "platform/files.h"
#include "platform/locations.h"
#include "platform/text.h"
#include "platform/thread.h"

#include <algorithm>
#include <span>
#include <string_view>

ObjectFile object_files[OBJECT_FILES_CAPACITY];
std::int32_t object_files_total;
char object_catagory[OBJECT_CATAGORY_CAPACITY][OBJECT_NAME_SIZE];
std::int32_t object_catagory_total;
std::atomic<std::int32_t> object_files_loaded_flag{CATALOGUE_NOT_STARTED};
std::int32_t last_host_model_used = OBJECT_NONE;
std::int32_t last_page_model_used = OBJECT_NONE;

static constexpr std::uint32_t START_DELAY = 500; // milliseconds; the first page has the disk
static constexpr std::uint32_t POLL_TIME = 15;    // milliseconds
static constexpr std::uint32_t STOP_TIME = 2000;  // milliseconds; a dead network drive takes longer
static constexpr std::size_t PATH_LIMIT = 255;    // characters
static constexpr std::size_t EXTENSION_LENGTH = 4; // of ".obj"

static constexpr int HEADER_LINES = 5;
static constexpr int HEADER_TAGS = 2;
static constexpr std::size_t LINE_LENGTH = 999; // a longer line counts as several
static constexpr char NAME_TAG[] = "#name:";
static constexpr char CATEGORY_TAG[] = "#category:";
static constexpr char MISSPELT_TAG[] = "#catagory:"; // older model files have it
static constexpr std::size_t NAME_TAG_LENGTH = sizeof NAME_TAG - 1;
static constexpr std::size_t CATEGORY_TAG_LENGTH = sizeof CATEGORY_TAG - 1;

static Thread *background_thread;
static std::atomic<bool> stop_requested;

// ---- names

std::int32_t object_catagory_get_id(const char *name) {
    char wanted[OBJECT_NAME_SIZE];
    text_copy(wanted, name); // cut as it would be kept, so that a long name finds itself again
    for (std::int32_t i = 0; i < object_catagory_total; i++) {
        if (text_equal(object_catagory[i], wanted))
            return i;
    }
    if (object_catagory_total >= OBJECT_CATAGORY_CAPACITY)
        return CATAGORY_MISC;
    text_copy(object_catagory[object_catagory_total], wanted);
    return object_catagory_total++;
}

std::int32_t object_files_get_id_from_name(const char *name) {
    for (std::int32_t i = 0; i < object_files_total; i++) {
        if (text_equal_ignore_case(object_files[i].name, name))
            return i;
    }
    return OBJECT_NONE;
}

std::int32_t object_files_get_id_from_file(const char *file) {
    for (std::int32_t i = 0; i < object_files_total; i++) {
        if (text_equal(object_files[i].file, file))
            return i;
    }
    return OBJECT_NONE;
}

// ---- reading a file's first lines

// Takes the next line off the text, without its end; a NUL ends it as well.
static std::string_view take_line(std::string_view *text) {
    const std::string_view piece = text->substr(0, LINE_LENGTH);
    const std::size_t end = piece.find('\n');
    const std::string_view line = piece.substr(0, end);
    text->remove_prefix(end == std::string_view::npos ? piece.size() : end + 1);
    return line.substr(0, line.find_first_of(std::string_view("\r\0", 2)));
}

static bool contains(std::string_view line, const char *tag) {
    return line.find(tag) != std::string_view::npos;
}

static void copy_name(char (&target)[OBJECT_NAME_SIZE], std::string_view name) {
    const std::size_t length = std::min<std::size_t>(name.size(), OBJECT_NAME_SIZE - 1);
    name.copy(target, length);
    target[length] = '\0';
}

// A tag is looked for anywhere, yet its text is taken as if it stood at the line's beginning, where
// it belongs. True when the line has one.
static bool read_tag(std::string_view line, ObjectFile *entry) {
    if (contains(line, NAME_TAG)) {
        copy_name(entry->name, line.substr(NAME_TAG_LENGTH));
        return true;
    }
    if (!contains(line, CATEGORY_TAG) && !contains(line, MISSPELT_TAG))
        return false;
    char name[OBJECT_NAME_SIZE];
    copy_name(name, line.substr(CATEGORY_TAG_LENGTH));
    entry->category = object_catagory_get_id(name);
    return true;
}

static void read_header(std::string_view text, ObjectFile *entry) {
    int tags = 0;
    for (int i = 0; i < HEADER_LINES && tags < HEADER_TAGS && !text.empty(); i++)
        tags += read_tag(take_line(&text), entry) ? 1 : 0;
}

// True when the file can be opened; the entry is filled then.
static bool read_entry(const char *file, ObjectFile *entry) {
    static_assert(sizeof entry->path == PATH_LIMIT + 1);
    text_copy(entry->file, file);
    text_copy(entry->path, object_dir_location);
    text_append(entry->path, file);
    char bytes[HEADER_LINES * (LINE_LENGTH + 1)];
    const long long size = file_read_start(entry->path, bytes);
    if (size < 0)
        return false;
    const std::string_view name = file;
    copy_name(entry->name, name.substr(0, name.size() - std::min(name.size(), EXTENSION_LENGTH)));
    entry->category = CATAGORY_MISC;
    read_header({bytes, static_cast<std::size_t>(size)}, entry);
    return true;
}

// ---- the scan

static void reset_tables() {
    object_files[OBJECT_DEFAULT] = {.path = "", .file = "", .name = "Default", .category = 0};
    object_files_total = 1;
    text_copy(object_catagory[CATAGORY_ALL], "All");
    text_copy(object_catagory[CATAGORY_MISC], "Misc");
    object_catagory_total = CATAGORY_FIXED;
}

// The folder beside the program, as start-up has found it. It is written only when it is another
// one: the main thread may be reading a model from it.
static void find_folder() {
    if (exe_location[0] == '\0')
        return; // start-up has not looked yet
    char folder[PATH_SIZE];
    text_format(folder, sizeof folder, "%smodels\\", exe_location);
    if (!text_equal(folder, object_dir_location))
        text_copy(object_dir_location, folder);
}

// False when it was given up.
static bool scan() {
    reset_tables();
    find_folder();
    char pattern[PATH_SIZE];
    text_format(pattern, sizeof pattern, "%s*.obj", object_dir_location);
    const FolderScanHandle handle = folder_scan_open(pattern);
    FolderEntry found;
    while (handle && object_files_total < OBJECT_FILES_CAPACITY &&
           folder_scan_next(handle.get(), &found)) {
        if (stop_requested)
            return false;
        if (!found.is_folder && read_entry(found.name, &object_files[object_files_total]))
            object_files_total++;
    }
    return true;
}

// Of several callers one scans and the others wait for it.
void object_files_load() {
    std::int32_t state = CATALOGUE_NOT_STARTED;
    if (object_files_loaded_flag.compare_exchange_strong(state, CATALOGUE_RUNNING)) {
        object_files_loaded_flag = scan() ? CATALOGUE_LOADED : CATALOGUE_NOT_STARTED;
        return;
    }
    while (object_files_loaded_flag == CATALOGUE_RUNNING)
        thread_sleep(POLL_TIME);
}

bool object_files_loaded() {
    return object_files_loaded_flag == CATALOGUE_LOADED;
}

// ---- life

void object_files_init() {
    object_files_stop();
    stop_requested = false;
    object_files_loaded_flag = CATALOGUE_NOT_STARTED;
    last_host_model_used = OBJECT_NONE;
    last_page_model_used = OBJECT_NONE;
}

static void object_files_thread_func() {
    if (thread_sleep_unless(stop_requested, START_DELAY))
        object_files_load();
}

// When the system has no thread to give, the first dialog that needs the catalogue scans.
void object_files_background_load() {
    background_thread = thread_start(object_files_thread_func);
}

// The thread of a dialog that waits for the catalogue may be the one that scans.
static void wait_for_other_scan() {
    for (std::uint32_t waited = 0;
         object_files_loaded_flag == CATALOGUE_RUNNING && waited < STOP_TIME; waited += POLL_TIME)
        thread_sleep(POLL_TIME);
}

void object_files_stop() {
    stop_requested = true;
    if (background_thread != nullptr)
        thread_join(background_thread, STOP_TIME);
    background_thread = nullptr;
    wait_for_other_scan();
}
