// Pages in the scene: loading and saving one, the template object, the stack of page levels, and
// opening pages with their messages and transitions.
#pragma once

#include "page/node.h"
#include "scene/scene_floor.h"

#include <cstdint>
#include <span>

inline constexpr std::size_t SCENE_FILE_NAME_SIZE = 261;
inline constexpr std::size_t SCENE_TITLE_SIZE = 41;
inline constexpr std::int32_t SCENE_STACK_CAPACITY = 20;

enum PageResult : std::uint32_t {
    PAGE_LOADED = 0,
    PAGE_NOT_OPENED = 1,
    PAGE_NEWER = 2,
    PAGE_NOT_A_PAGE = 3,
    PAGE_SYNTAX = 4,
    PAGE_TOO_MANY = 5,
};

struct TemplateObject {
    std::int32_t empty; // 1 = no template
    Node node;
};

struct SceneStackEntry {
    char title[SCENE_TITLE_SIZE];
    char file_name[SCENE_FILE_NAME_SIZE];
    float position_x, position_y;
    float distance;
    std::int32_t zoom_level;
    TemplateObject template_object;
};

extern char scene_page_file_name[SCENE_FILE_NAME_SIZE];
extern char scene_page_title[SCENE_TITLE_SIZE];
extern std::int32_t node_label_total;       // labels of the page, for their generated names
extern std::int32_t scene_page_hosts_total; // objects on the page
extern std::int32_t scene_page_links_total; // page objects on the page
extern std::int32_t scene_changed;          // 1 = differs from its file
extern TemplateObject template_object;
extern SceneStackEntry scene_stack[SCENE_STACK_CAPACITY];
extern std::int32_t scene_stack_depth; // entries in use; the page shown is not among them

// ---- loading and saving (scene_load.cpp)
// PageResult. After a failure the scene is empty.
std::uint32_t scene_load_page(const char *file_name, const char *title);

// The same from the bytes of a page file; file_name is only remembered.
std::uint32_t scene_load_page_memory(std::span<const char> bytes, const char *file_name,
                                     const char *title);

// Loads the page shown again, leaving the floor where it is. PageResult.
std::uint32_t scene_reload_page();

// Writes the page shown. 0 written, 1 the file cannot be written (the old one is untouched).
std::int32_t xml_save_page(const char *name);

// Text shown for a PageResult; too_many is the caller's own wording for PAGE_TOO_MANY.
const char *scene_load_message(std::uint32_t result, const char *too_many);
extern const char SCENE_TOO_MANY_ON_HOME[]; // start-up and load_page
extern const char SCENE_TOO_MANY_ON_PAGE[]; // the page stack

// ---- template object (scene_template.cpp)
void template_object_init();
void template_object_load();          // from the object named "Template", else unchanged
std::int32_t template_object_check(); // 0 = a template is available
void template_object_copy(TemplateObject *target, const TemplateObject *source);
void template_object_delete(); // falls back to the nearest template of the stack
void template_object_free();   // at shutdown: frees the action records of all templates

// ---- page stack (scene_stack.cpp)
std::int32_t scene_stack_push(); // 0 pushed, 2 the stack is full
std::uint32_t
scene_stack_pop(); // 0 parent loaded or nothing to pop, 1 the current page was reloaded
void scene_stack_jump(std::int32_t depth); // drops the entries above depth
void scene_page_back();
void scene_page_back_home();

// ---- opening pages (scene_open.cpp)
// Opens a sub-page as a new level, with messages. 0 opened or a message was shown, 1 no level left.
std::int32_t load_page(const char *file, const char *title);

// Loads the page named in a command line, quotes allowed. PageResult; sets open_mode on success.
std::uint32_t open_page_from_command_line(const char *text);

// What a second instance hands over: leaves edit mode, then opens it above the home page, or goes
// home when it names the home page. Changes that were to be saved and cannot be keep the page
// shown.
void scene_open_handed_over_page(const char *path);
