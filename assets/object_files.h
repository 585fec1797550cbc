// The object catalogue: every model file of the models folder with the name and category that its
// first lines give it. The folder, object_dir_location, is scanned once a run, on a thread of its
// own; the tables may be read only after object_files_load has returned or while
// object_files_loaded() is true.
#pragma once

#include <atomic>
#include <cstdint>

inline constexpr std::int32_t OBJECT_FILES_CAPACITY = 1024; // further files are left out
inline constexpr std::int32_t OBJECT_CATAGORY_CAPACITY = 30;
inline constexpr std::int32_t OBJECT_NAME_SIZE = 21; // 20 characters and the terminator

inline constexpr std::int32_t OBJECT_DEFAULT = 0; // entry of the built-in model, with an empty file
inline constexpr std::int32_t OBJECT_NONE = -1;

enum ObjectCatagory : std::int32_t { CATAGORY_ALL = 0, CATAGORY_MISC = 1, CATAGORY_FIXED = 2 };
enum ObjectFilesState : std::int32_t { CATALOGUE_NOT_STARTED, CATALOGUE_RUNNING, CATALOGUE_LOADED };

struct ObjectFile {
    char path[256]; // folder and file name
    char file[256]; // name within the models folder, for model_return_model_id
    char name[OBJECT_NAME_SIZE];
    std::int32_t category; // index into object_catagory
};

extern ObjectFile object_files[OBJECT_FILES_CAPACITY];
extern std::int32_t object_files_total;
extern char object_catagory[OBJECT_CATAGORY_CAPACITY][OBJECT_NAME_SIZE];
extern std::int32_t object_catagory_total;
extern std::atomic<std::int32_t> object_files_loaded_flag; // ObjectFilesState

// Catalogue entries last chosen for an object and for a page object, OBJECT_NONE at start-up.
extern std::int32_t last_host_model_used;
extern std::int32_t last_page_model_used;

void object_files_init();            // at start-up, before the thread
void object_files_background_load(); // begins the scan half a second from now, on its own thread
void object_files_load();            // scans, or waits for the scan that runs; then does nothing
bool object_files_loaded();          // the tables may be read
void object_files_stop(); // gives up a scan that is not finished, before the program ends

// The category of this name, which becomes a new one while there is room, else CATAGORY_MISC.
std::int32_t object_catagory_get_id(const char *name);
std::int32_t object_files_get_id_from_name(const char *name); // ignoring case; OBJECT_NONE
std::int32_t object_files_get_id_from_file(const char *file); // exactly; OBJECT_NONE
