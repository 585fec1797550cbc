// The user's settings: one process-wide record, read from and written to options.xml.
#pragma once

#include <cstdint>
#include <span>
#include <string>

struct Options {
    std::int32_t show_home_page_title;
    char default_page_colour_name[20]; // a preset's name or "Custom"
    float default_page_red, default_page_green, default_page_blue;
    std::int32_t maintain_zoom_level;
    std::int32_t initial_zoom_level; // 0..8
    char page_folder[261];           // empty = the folder under the documents folder
    std::int32_t action_double_click_run;
    std::int32_t action_exit_action_1;
    std::int32_t action_exit_any;
    std::int32_t action_menu_icons;
    std::int32_t action_menu_title;
    std::int32_t splash_screen;
    std::int32_t confirm_page_file_delete;
    std::int32_t confirm_object_delete;
    std::int32_t remember_last_model;
    std::int32_t disable_graphics_card_warning;
    std::int32_t good_graphics_card;
    std::int32_t reflections;
    std::int32_t object_rotation;
    std::int32_t zoom_transition;
    std::int32_t object_transitions;
    std::int32_t floor_inertia;
    std::int32_t object_inertia;
    std::int32_t anti_aliasing;
    std::int32_t text_shadows;
    std::int32_t check_for_updates;
    std::uint32_t check_for_updates_next; // seconds since 1970
};

struct PageColourPreset {
    const char *name;
    float red, green, blue;
};
inline constexpr PageColourPreset PAGE_COLOUR_PRESETS[] = {
    {"Blue", 0.07f, 0.13f, 0.19f},      {"Gray", 0.14f, 0.14f, 0.14f},
    {"Turquoise", 0.05f, 0.19f, 0.18f}, {"Purple", 0.11f, 0.09f, 0.19f},
    {"Orange", 0.25f, 0.13f, 0.00f},    {"Black", 0.00f, 0.00f, 0.00f},
};

enum OptionsResult : std::int32_t {
    OPTIONS_READ = 0,
    OPTIONS_NONE = 1,    // no file, or no version element: the defaults stay
    OPTIONS_INVALID = 3, // no root element
    OPTIONS_NEWER = 4,
};

extern Options orvanel_options;

void options_set_defaults();

std::string options_format(); // the record as file text, lines ending in '\n'

// 0 written; 1 no local application data folder, its "Orvanel" folder cannot be made, or the file
// cannot be written (the old one is untouched).
std::int32_t xml_save_options();

// OptionsResult. Reads the user's file, else the one in the program's folder (and then saves it to
// the user's place).
std::int32_t xml_load_options();

// Reads the bytes of an options file over the record. OptionsResult.
std::int32_t options_read_memory(std::span<const char> bytes);
