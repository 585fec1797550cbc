#include "page/options.h"

#include "page/xml.h"
#include "platform/files.h"
#include "platform/locations.h"
#include "platform/text.h"

#include <algorithm>
#include <cstdlib>

Options orvanel_options;

inline constexpr std::int32_t FORMAT_VERSION = 2;
inline constexpr char FORMAT_VERSION_TEXT[] = "002";
inline constexpr char END_TAG[] = "</orvanel_options>";
inline constexpr char COLOUR_END_TAG[] = "</default_page_colour>";
inline constexpr char CUSTOM_COLOUR[] = "Custom";
inline constexpr std::int32_t INITIAL_ZOOM_LEVEL = 4;
inline constexpr std::int32_t INITIAL_ZOOM_LEVEL_MAX = 8;
inline constexpr std::size_t COLOUR_NAME_LENGTH = 19;  // characters
inline constexpr std::size_t PAGE_FOLDER_LENGTH = 260; // characters

void options_set_defaults() {
    orvanel_options = Options{
        .show_home_page_title = 1,
        .default_page_colour_name = "Blue",
        .default_page_red = PAGE_COLOUR_PRESETS[0].red,
        .default_page_green = PAGE_COLOUR_PRESETS[0].green,
        .default_page_blue = PAGE_COLOUR_PRESETS[0].blue,
        .maintain_zoom_level = 0,
        .initial_zoom_level = INITIAL_ZOOM_LEVEL,
        .page_folder = "",
        .action_double_click_run = 1,
        .action_exit_action_1 = 0,
        .action_exit_any = 0,
        .action_menu_icons = 1,
        .action_menu_title = 0,
        .splash_screen = 1,
        .confirm_page_file_delete = 1,
        .confirm_object_delete = 0,
        .remember_last_model = 1,
        .disable_graphics_card_warning = 0,
        .good_graphics_card = 1,
        .reflections = 1,
        .object_rotation = 1,
        .zoom_transition = 1,
        .object_transitions = 1,
        .floor_inertia = 1,
        .object_inertia = 1,
        .anti_aliasing = 1,
        .text_shadows = 1,
        .check_for_updates = 1,
        .check_for_updates_next = 0,
    };
}

// ---- writing

struct Flag {
    const char *key;
    std::int32_t Options::*value;
};

static void add_text(std::string *file, const char *indent, const char *key, const char *value) {
    file->append(indent).append("<").append(key).append(">").append(value);
    file->append("</").append(key).append(">\n");
}

static void add_flag(std::string *file, const Flag &flag) {
    char number[16];
    text_format(number, sizeof number, "%d", orvanel_options.*flag.value);
    add_text(file, "\t", flag.key, number);
}

static void add_component(std::string *file, const char *key, float value) {
    char number[64]; // the largest float has 39 digits
    text_format(number, sizeof number, "%0.2f", static_cast<double>(value));
    add_text(file, "\t\t", key, number);
}

static void add_page_colour(std::string *file) {
    const Options &options = orvanel_options;
    file->append("\t<default_page_colour>\n");
    add_text(file, "\t\t", "name", options.default_page_colour_name);
    if (text_equal(options.default_page_colour_name, CUSTOM_COLOUR)) {
        add_component(file, "red", options.default_page_red);
        add_component(file, "green", options.default_page_green);
        add_component(file, "blue", options.default_page_blue);
    }
    file->append("\t</default_page_colour>\n");
}

std::string options_format() {
    static constexpr Flag zoom[] = {{"maintain_zoom_level", &Options::maintain_zoom_level},
                                    {"initial_zoom_level", &Options::initial_zoom_level}};
    static constexpr Flag rest[] = {
        {"action_double_click_run", &Options::action_double_click_run},
        {"action_exit_action_1", &Options::action_exit_action_1},
        {"action_exit_any", &Options::action_exit_any},
        {"action_menu_icons", &Options::action_menu_icons},
        {"action_menu_title", &Options::action_menu_title},
        {"splash_screen", &Options::splash_screen},
        {"confirm_page_file_delete", &Options::confirm_page_file_delete},
        {"confirm_object_delete", &Options::confirm_object_delete},
        {"remember_last_model", &Options::remember_last_model},
        {"disable_graphics_card_warning", &Options::disable_graphics_card_warning},
        {"good_graphics_card", &Options::good_graphics_card},
        {"reflections", &Options::reflections},
        {"object_rotation", &Options::object_rotation},
        {"zoom_transition", &Options::zoom_transition},
        {"object_transitions", &Options::object_transitions},
        {"floor_inertia", &Options::floor_inertia},
        {"object_inertia", &Options::object_inertia},
        {"anti_aliasing", &Options::anti_aliasing},
        {"text_shadows", &Options::text_shadows},
        {"check_for_updates", &Options::check_for_updates},
    };
    std::string file = "<?xml version=\"1.0\" encoding=\"utf-8\" ?>\n<orvanel_options>\n";
    add_text(&file, "\t", "offv", FORMAT_VERSION_TEXT);
    add_flag(&file, {"show_home_page_title", &Options::show_home_page_title});
    add_page_colour(&file);
    for (const Flag &flag : zoom)
        add_flag(&file, flag);
    add_text(&file, "\t", "page_folder", orvanel_options.page_folder);
    for (const Flag &flag : rest)
        add_flag(&file, flag);
    char time[16];
    text_format(time, sizeof time, "%lu",
                static_cast<unsigned long>(orvanel_options.check_for_updates_next));
    add_text(&file, "\t", "check_for_updates_next", time);
    file.append("</orvanel_options>\n");
    return file;
}

// The user's options file; the folder it stands in is made when make_folder is set. 0, or 1 when
// there is no such place.
static int user_file(char (&path)[PATH_SIZE], bool make_folder) {
    if (location_local_app_data(path, sizeof path) != 0)
        return 1;
    text_append(path, "\\Orvanel");
    if (make_folder && folder_create(path) != 0)
        return 1;
    text_append(path, "\\options.xml");
    return 0;
}

std::int32_t xml_save_options() {
    char path[PATH_SIZE];
    if (user_file(path, true) != 0)
        return 1;
    return file_replace_text(path, options_format());
}

// ---- reading

// A flag and the tag that must follow it. Keys are asked for in this order, and one that has been
// passed is not found again.
struct FlagRule {
    const char *open_tag;
    const char *limit_tag;
    std::int32_t Options::*value;
};

static void read_flag(const FlagRule &rule) {
    char value[XML_ITEM_SIZE];
    if (xml_get_item(rule.open_tag, rule.limit_tag, value) != 0)
        return;
    const std::int32_t number = xml_to_int(value);
    if (number == 0 || number == 1)
        orvanel_options.*rule.value = number;
}

static void set_page_colour(float red, float green, float blue) {
    orvanel_options.default_page_red = red;
    orvanel_options.default_page_green = green;
    orvanel_options.default_page_blue = blue;
}

static void read_custom_colour() {
    static constexpr const char *tags[] = {"<red>", "<green>", "<blue>"};
    float components[3];
    for (int i = 0; i < 3; i++) {
        char value[XML_ITEM_SIZE];
        if (xml_get_item(tags[i], COLOUR_END_TAG, value) != 0) {
            const PageColourPreset &blue = PAGE_COLOUR_PRESETS[0];
            set_page_colour(blue.red, blue.green, blue.blue);
            return;
        }
        components[i] = xml_to_float(value);
    }
    set_page_colour(components[0], components[1], components[2]);
}

// An unknown name is kept, with the colour as it was.
static void read_page_colour() {
    char value[XML_ITEM_SIZE];
    xml_get_element("<default_page_colour>", END_TAG);
    if (xml_get_item("<name>", COLOUR_END_TAG, value) != 0)
        return;
    char(&name)[20] = orvanel_options.default_page_colour_name;
    text_copy_limit(name, COLOUR_NAME_LENGTH, value);
    for (const PageColourPreset &preset : PAGE_COLOUR_PRESETS) {
        if (text_equal(name, preset.name))
            set_page_colour(preset.red, preset.green, preset.blue);
    }
    if (text_equal(name, CUSTOM_COLOUR))
        read_custom_colour();
}

static void read_zoom_level() {
    char value[XML_ITEM_SIZE];
    read_flag({"<maintain_zoom_level>", END_TAG, &Options::maintain_zoom_level});
    if (xml_get_item("<initial_zoom_level>", END_TAG, value) == 0)
        orvanel_options.initial_zoom_level =
            std::clamp(xml_to_int(value), 0, INITIAL_ZOOM_LEVEL_MAX);
}

static void read_page_folder() {
    char value[XML_ITEM_SIZE];
    if (xml_get_item("<page_folder>", END_TAG, value) == 0)
        text_copy_limit(orvanel_options.page_folder, PAGE_FOLDER_LENGTH, value);
}

static void read_flags() {
    static constexpr FlagRule rules[] = {
        {"<action_double_click_run>", END_TAG, &Options::action_double_click_run},
        {"<action_exit_action_1>", END_TAG, &Options::action_exit_action_1},
        {"<action_exit_any>", END_TAG, &Options::action_exit_any},
        {"<action_menu_icons>", "</action_menu_icons>", &Options::action_menu_icons},
        {"<action_menu_title>", "</action_menu_title>", &Options::action_menu_title},
        {"<splash_screen>", END_TAG, &Options::splash_screen},
        {"<confirm_page_file_delete>", END_TAG, &Options::confirm_page_file_delete},
        {"<confirm_object_delete>", "</confirm_object_delete>", &Options::confirm_object_delete},
        {"<remember_last_model>", "</remember_last_model>", &Options::remember_last_model},
        // Twice on purpose: a second occurrence wins.
        {"<disable_graphics_card_warning>", END_TAG, &Options::disable_graphics_card_warning},
        {"<disable_graphics_card_warning>", END_TAG, &Options::disable_graphics_card_warning},
        {"<good_graphics_card>", END_TAG, &Options::good_graphics_card},
        {"<reflections>", END_TAG, &Options::reflections},
        {"<object_rotation>", END_TAG, &Options::object_rotation},
        {"<zoom_transition>", END_TAG, &Options::zoom_transition},
        {"<object_transitions>", END_TAG, &Options::object_transitions},
        {"<floor_inertia>", END_TAG, &Options::floor_inertia},
        {"<anti_aliasing>", END_TAG, &Options::anti_aliasing},
        {"<text_shadows>", END_TAG, &Options::text_shadows},
        // Written before the two above, so it is on again after every start: meant to be so.
        {"<object_inertia>", END_TAG, &Options::object_inertia},
        {"<check_for_updates>", END_TAG, &Options::check_for_updates},
    };
    for (const FlagRule &rule : rules)
        read_flag(rule);
}

static void read_update_time() {
    char value[XML_ITEM_SIZE];
    if (xml_get_item("<check_for_updates_next>", END_TAG, value) != 0)
        return;
    const unsigned long long seconds = std::strtoull(value, nullptr, 10);
    orvanel_options.check_for_updates_next =
        static_cast<std::uint32_t>(std::min<unsigned long long>(seconds, UINT32_MAX));
}

// Reads the loaded text over the record.
static std::int32_t read_options() {
    char value[XML_ITEM_SIZE];
    if (xml_get_element("<orvanel_options>", END_TAG) != 0)
        return OPTIONS_INVALID;
    if (xml_get_item("<offv>", END_TAG, value) != 0)
        return OPTIONS_NONE;
    const std::int32_t version = xml_to_int(value);
    if (version > FORMAT_VERSION)
        return OPTIONS_NEWER;
    read_flag({"<show_home_page_title>", END_TAG, &Options::show_home_page_title});
    if (version >= 1)
        read_page_colour();
    read_zoom_level();
    if (version == FORMAT_VERSION)
        read_page_folder();
    read_flags();
    read_update_time();
    return OPTIONS_READ;
}

std::int32_t options_read_memory(std::span<const char> bytes) {
    const std::int32_t result = xml_load_memory(bytes) == 0 ? read_options() : OPTIONS_NONE;
    xml_unload_file();
    return result;
}

static bool load_user_file() {
    char path[PATH_SIZE];
    return user_file(path, false) == 0 && xml_load_file(path) == 0;
}

static bool load_program_file() {
    char path[PATH_SIZE];
    text_copy(path, exe_location);
    text_append(path, "options.xml");
    return xml_load_file(path) == 0;
}

std::int32_t xml_load_options() {
    const bool from_program = !load_user_file();
    if (from_program && !load_program_file()) {
        xml_unload_file();
        return OPTIONS_NONE;
    }
    const std::int32_t result = read_options();
    xml_unload_file();
    if (result == OPTIONS_READ && from_program)
        xml_save_options(); // settings of an older release move to the user's folder once
    return result;
}
