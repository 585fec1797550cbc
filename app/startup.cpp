#include "app/startup.h"

#include "actions/menu.h"
#include "actions/misc.h"
#include "assets/model.h"
#include "assets/object_files.h"
#include "dialogs/rules/dialog_object_rules.h"
#include "dialogs/rules/dialog_page_rules.h"
#include "dialogs/splash_screen.h"
#include "editing/clipboard.h"
#include "editing/undo.h"
#include "page/node.h"
#include "page/options.h"
#include "platform/clock.h"
#include "platform/console.h"
#include "platform/locations.h"
#include "platform/message.h"
#include "platform/network.h"
#include "platform/text.h"
#include "scene/frame_clock.h"
#include "scene/interaction.h"
#include "scene/scene.h"
#include "scene/scene_page.h"
#include "update/auto_update.h"
#include "update/http_client.h"

#include <algorithm>
#include <cstring>
#include <string>

static constexpr std::int32_t FULL_WIDTH = 1280;   // pixels; wide enough for any page
static constexpr std::int32_t HEIGHT_LIMIT = 1024; // pixels
static constexpr std::int32_t SCREEN_MARGIN = 200; // pixels left free on a normal screen
static constexpr std::int32_t WIDE_MARGIN = 100;   // pixels left free in height on a wide one
static constexpr std::int32_t WIDE_PERCENT = 155;  // width / height from which a screen is wide
static constexpr std::size_t FOLDER_MESSAGE_SIZE = 400; // the longest path and its text

static constexpr std::uint32_t SPLASH_SCREEN_PAUSE = 500; // milliseconds

static constexpr float PAGE_ALPHA = 0.8f; // the floor lets the reflections through

// What servers learn of the program; nothing of the machine or the user.
static constexpr char AGENT[] = "Orvanel/1.4.1";

static constexpr char HOME_FILE[] = "home.orvl";
static constexpr char OPTIONS_INVALID_TEXT[] =
    "options.xml is not valid Orvanel file.  Please correct or remove the file.";
static constexpr char OPTIONS_NEWER_TEXT[] =
    "The options.xml apears to be from a newer version of Orvanel.\n\n"
    "It will be ignored, and default options will be used instead.";
static constexpr char NO_ACCELERATION_TEXT[] =
    "Orvanel couldn’t find a 3D accelerated graphics adapter.\n\n"
    "Orvanel will still work just fine, but to speed things up, some graphics options will be "
    "disabled.\n\n"
    "If you think that your PC does have a 3D capable graphics card, make sure that you have the "
    "correct drivers for it installed.";

bool startup_names_page(const char *command_line) {
    return text_contains(command_line, ".orvl") || text_contains(command_line, ".xml");
}

bool startup_names_home(const char *command_line) {
    return text_contains(command_line, HOME_FILE);
}

std::int32_t startup_network() {
    http_client_set_agent_string(AGENT);
    if (network_start() == 0)
        return 0;
    message_box("Failed to start winsock.\n", MESSAGE_CAPTION, MessageIcon::Error);
    return 1;
}

std::int32_t startup_program_folders() {
    if (location_program_file(exe_location, sizeof exe_location) != 0)
        return 1;
    char *backslash = std::strrchr(exe_location, '\\');
    if (backslash == nullptr)
        return 1;
    backslash[1] = '\0';
    text_format(object_dir_location, PATH_SIZE, "%smodels\\", exe_location);
    text_format(page_template_dir_location, PATH_SIZE, "%spages\\", exe_location);
    return 0;
}

// 0, or 1 after a message.
static std::int32_t load_options() {
    options_set_defaults();
    switch (xml_load_options()) {
    case OPTIONS_INVALID:
        message_box(OPTIONS_INVALID_TEXT, MESSAGE_CAPTION, MessageIcon::Error);
        return 1;
    case OPTIONS_NEWER:
        options_set_defaults();
        message_box(OPTIONS_NEWER_TEXT, MESSAGE_CAPTION, MessageIcon::Exclamation);
        return 0;
    default:
        return 0;
    }
}

std::int32_t startup_options() {
    const std::int32_t result = load_options();
    // A first page that names no colour has none to carry over from the page before.
    scene_floor.colour = {.use_default = 1,
                          .red = orvanel_options.default_page_red,
                          .green = orvanel_options.default_page_green,
                          .blue = orvanel_options.default_page_blue,
                          .alpha = PAGE_ALPHA};
    return result;
}

void startup_splash_screen() {
    if (orvanel_options.splash_screen != 1)
        return;
    splash_screen_display();
    clock_sleep(SPLASH_SCREEN_PAUSE);
}

// The splash screen would stand in front of the box.
static void report(const char *text, MessageIcon icon) {
    splash_screen_hide();
    message_box(text, MESSAGE_CAPTION, icon);
}

static void create_failed(const char *folder) {
    char text[FOLDER_MESSAGE_SIZE];
    text_format(text, sizeof text, "Failed to create page folder...\n\n%s\n", folder);
    report(text, MessageIcon::Error);
}

// The folder that the user chose is used even when it cannot be seen now: it may be on a disk that
// comes back.
static void use_chosen_folder(const char *folder) {
    text_copy(page_dir_location, folder);
    if (folder_exists(folder))
        return;
    char text[FOLDER_MESSAGE_SIZE];
    text_format(text, sizeof text, "Failed to open page folder...\n\n%s\n", folder);
    report(text, MessageIcon::Error);
}

// Makes the folder for a new user and puts the pages shipped with the program into it.
static void fill_new_folder(const char *folder) {
    if (folder_create(folder) != 0) {
        create_failed(folder);
        return;
    }
    copy_files(page_template_dir_location, folder, "*.orvl");
    copy_files(page_template_dir_location, folder, "*.xml");
}

// Without a documents folder the pages go to the top of the drive: the program can be used.
static void use_documents_folder() {
    char documents[PATH_SIZE];
    if (location_documents(documents, sizeof documents) != 0) {
        documents[0] = '\0';
        report("Failed to locate users documents folder.", MessageIcon::Error);
    }
    const std::string folder = std::string(documents) + "\\Orvanel Pages";
    text_copy(page_dir_location, folder.c_str());
    if (folder.size() >= PATH_SIZE)
        create_failed(folder.c_str()); // cut, it would name another folder
    else if (!folder_exists(page_dir_location))
        fill_new_folder(page_dir_location);
}

void startup_page_folder() {
    if (orvanel_options.page_folder[0] != '\0')
        use_chosen_folder(orvanel_options.page_folder);
    else
        use_documents_folder();
    const std::size_t length = std::strlen(page_dir_location);
    if (length > 0 && page_dir_location[length - 1] == '\\')
        return;
    page_dir_location[std::min(length, PATH_SIZE - 2)] = '\0'; // room for the backslash
    text_append(page_dir_location, "\\");
}

WindowSize startup_window_size(std::int32_t screen_width, std::int32_t screen_height) {
    const bool wide = 100 * screen_width >= WIDE_PERCENT * screen_height;
    return {.width = screen_width <= FULL_WIDTH ? screen_width - SCREEN_MARGIN : FULL_WIDTH,
            .height = std::min(screen_height - (wide ? WIDE_MARGIN : SCREEN_MARGIN), HEIGHT_LIMIT)};
}

void startup_graphics_check(std::int32_t software_renderer) {
    if (orvanel_options.good_graphics_card != 1 ||
        orvanel_options.disable_graphics_card_warning != 0 || software_renderer == 0)
        return;
    report(NO_ACCELERATION_TEXT, MessageIcon::Information);
    orvanel_options.good_graphics_card = 0;
    orvanel_options.disable_graphics_card_warning = 1;
    xml_save_options();
    char marker[PATH_SIZE];
    text_format(marker, sizeof marker, "%sgcard", exe_location);
    file_create_text(marker, ""); // only helps support; the folder may well be read-only
}

void startup_modules() {
    timer_init(&frame_timer);
    console_start();
    mouse_init();
    model_init();
    node_init_nodes();
    scene_init();
    scene_floor_init();
    scene_invalidate_floor();
    node_init_effects();
    menu_init();
    clipboard_init();
    undo_init();
    dialog_object_init();
    dialog_page_init();
    object_files_init();
    object_files_background_load();
    console_printf("exe location:  '%s'", exe_location);
    console_printf("obj location:  '%s'", object_dir_location);
    console_printf("template location: '%s'", page_template_dir_location);
    console_printf("page location: '%s'", page_dir_location);
}

static bool page_exists(const char *name) {
    char path[PATH_SIZE];
    text_format(path, sizeof path, "%s%s", page_dir_location, name);
    return file_exists(path);
}

void startup_migrate_pages() {
    if (!page_exists(HOME_FILE) && page_exists("home.xml"))
        change_file_extensions(page_dir_location, ".xml", ".orvl");
}

std::uint32_t startup_open_pages(const char *command_line) {
    scene_stack_jump(0);
    std::uint32_t result = scene_load_page(HOME_FILE, "Home");
    open_mode = 0;
    if (!startup_names_page(command_line) || startup_names_home(command_line))
        return result;
    if (result == PAGE_LOADED)
        scene_stack_push();
    return open_page_from_command_line(command_line);
}

void startup_report_page(std::uint32_t result) {
    report(scene_load_message(result, SCENE_TOO_MANY_ON_HOME), MessageIcon::Exclamation);
}

void startup_update_check() {
    http_client_init_proxy_settings();
    auto_update_start();
}

void startup_stop_modules() {
    object_files_stop();
    undo_stop();
    clipboard_stop();
    scene_stop();
    menu_stop();
    menu_icon_cache_free();
    node_free_nodes();
    template_object_free();
    console_stop();
}
