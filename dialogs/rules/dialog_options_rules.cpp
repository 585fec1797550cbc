#include "dialogs/rules/dialog_options_rules.h"

#include "dialogs/rules/dialog_options_folder.h"
#include "platform/colour_chooser.h"
#include "platform/locations.h"
#include "platform/message.h"
#include "platform/text.h"
#include "resources/resource_ids.h"
#include "scene/gl_util.h"
#include "scene/scene.h"
#include "scene/scene_floor.h"

#include <algorithm>

static constexpr char READ_ONLY_TEXT[] =
    "The options file (options.xml) is read-only.  Any alterations will be lost when Orvanel is "
    "closed.";

std::int32_t dialog_options_folder_change_reload;
std::int32_t options_colour_change_flag;
std::int32_t dialog_options_rebuild_window;

struct CustomColour {
    float red, green, blue;
};
static CustomColour custom_colour; // the last one chosen, black = none yet

static constexpr OptionsBox boxes[] = {
    {OPTIONS_GENERAL, RESOURCE_GENERAL_HOME_TITLE, &Options::show_home_page_title, false},
    {OPTIONS_GENERAL, RESOURCE_GENERAL_MAINTAIN_ZOOM, &Options::maintain_zoom_level, false},
    {OPTIONS_GENERAL, RESOURCE_GENERAL_SPLASH_SCREEN, &Options::splash_screen, false},
    {OPTIONS_GENERAL, RESOURCE_GENERAL_CONFIRM_PAGE_FILE, &Options::confirm_page_file_delete,
     false},
    {OPTIONS_GENERAL, RESOURCE_GENERAL_CONFIRM_OBJECT, &Options::confirm_object_delete, false},
    {OPTIONS_GENERAL, RESOURCE_GENERAL_LAST_MODEL, &Options::remember_last_model, false},
    {OPTIONS_GENERAL, RESOURCE_GENERAL_UPDATES, &Options::check_for_updates, false},
    {OPTIONS_ACTIONS, RESOURCE_ACTIONS_DOUBLE_CLICK, &Options::action_double_click_run, false},
    {OPTIONS_ACTIONS, RESOURCE_ACTIONS_EXIT_FIRST, &Options::action_exit_action_1, false},
    {OPTIONS_ACTIONS, RESOURCE_ACTIONS_EXIT_ANY, &Options::action_exit_any, false},
    {OPTIONS_ACTIONS, RESOURCE_ACTIONS_MENU_TITLE, &Options::action_menu_title, false},
    {OPTIONS_ACTIONS, RESOURCE_ACTIONS_MENU_ICONS, &Options::action_menu_icons, false},
    {OPTIONS_GRAPHICS, RESOURCE_GRAPHICS_NO_WARNINGS, &Options::disable_graphics_card_warning,
     false},
    {OPTIONS_GRAPHICS, RESOURCE_GRAPHICS_ENHANCED, &Options::good_graphics_card, false},
    {OPTIONS_GRAPHICS, RESOURCE_GRAPHICS_REFLECTIONS, &Options::reflections, true},
    {OPTIONS_GRAPHICS, RESOURCE_GRAPHICS_ZOOM_TRANSITION, &Options::zoom_transition, true},
    {OPTIONS_GRAPHICS, RESOURCE_GRAPHICS_ROTATION, &Options::object_rotation, true},
    {OPTIONS_GRAPHICS, RESOURCE_GRAPHICS_TRANSITIONS, &Options::object_transitions, true},
    {OPTIONS_GRAPHICS, RESOURCE_GRAPHICS_PAGE_INERTIA, &Options::floor_inertia, true},
    {OPTIONS_GRAPHICS, RESOURCE_GRAPHICS_OBJECT_INERTIA, &Options::object_inertia, true},
    {OPTIONS_GRAPHICS, RESOURCE_GRAPHICS_TEXT_SHADOWS, &Options::text_shadows, true},
    {OPTIONS_GRAPHICS, RESOURCE_GRAPHICS_ANTI_ALIASING, &Options::anti_aliasing, true},
};
const std::span<const OptionsBox> OPTIONS_BOXES = boxes;

static bool is_custom(const char *colour_name) {
    return text_equal(colour_name, OPTIONS_CUSTOM_COLOUR);
}

void dialog_options_open(OptionsForm *form) {
    dialog_options_folder_change_reload = 0;
    options_colour_change_flag = 0;
    dialog_options_rebuild_window = 0;
    Options &options = orvanel_options;
    if (fsaa_possible == 0)
        options.anti_aliasing = 0;
    if (is_custom(options.default_page_colour_name))
        custom_colour = {options.default_page_red, options.default_page_green,
                         options.default_page_blue};
    form->chosen = options;
    text_copy(form->chosen.page_folder, page_dir_location);
}

bool dialog_options_box_enabled(const OptionsForm &form, const OptionsBox &box) {
    if (box.flag == &Options::anti_aliasing && fsaa_possible == 0)
        return false;
    return !box.enhanced || form.enhanced_graphics();
}

// ---- colour

// Black would be no help to start mixing from, and it is among the presets.
static CustomColour current_custom_colour() {
    if (custom_colour.red == 0.0f && custom_colour.green == 0.0f && custom_colour.blue == 0.0f)
        return {PAGE_COLOUR_PRESETS[0].red, PAGE_COLOUR_PRESETS[0].green,
                PAGE_COLOUR_PRESETS[0].blue};
    return custom_colour;
}

static std::int32_t chooser_component(float component) {
    return std::clamp(colour_opengl_to_win(component), 0, 255);
}

std::int32_t get_custom_colour_options() {
    const CustomColour before = current_custom_colour();
    std::int32_t red = chooser_component(before.red);
    std::int32_t green = chooser_component(before.green);
    std::int32_t blue = chooser_component(before.blue);
    if (colour_choose(&red, &green, &blue) != 0)
        return 1;
    custom_colour = {colour_win_to_opengl(red), colour_win_to_opengl(green),
                     colour_win_to_opengl(blue)};
    return 0;
}

// A name that is no preset keeps the colour it came with.
static void set_colour(Options *options, const char *name) {
    CustomColour colour = {options->default_page_red, options->default_page_green,
                           options->default_page_blue};
    if (is_custom(name))
        colour = current_custom_colour();
    for (const PageColourPreset &preset : PAGE_COLOUR_PRESETS) {
        if (text_equal(name, preset.name))
            colour = {preset.red, preset.green, preset.blue};
    }
    text_copy(options->default_page_colour_name, name);
    options->default_page_red = colour.red;
    options->default_page_green = colour.green;
    options->default_page_blue = colour.blue;
}

static void accept_colour(const char *name) {
    const bool changed = !text_equal(name, orvanel_options.default_page_colour_name);
    if (name[0] == '\0' || (!changed && !is_custom(name)))
        return;
    set_colour(&orvanel_options, name);
    options_colour_change_flag = 1;
}

// ---- OK

static void accept_flags(const OptionsForm &form) {
    for (const OptionsBox &box : boxes)
        orvanel_options.*box.flag = form.chosen.*box.flag;
    if (fsaa_possible == 0)
        orvanel_options.anti_aliasing = 0;
}

static void accept_zoom_level(std::int32_t level) {
    if (level == orvanel_options.initial_zoom_level)
        return;
    orvanel_options.initial_zoom_level = level;
    scene_floor.zoom_level = level;
    scene_floor.distance = ZOOM_STEP * static_cast<float>(level) + ZOOM_DISTANCE_MIN;
    scene_floor.pick_depth = 0.0f; // it belongs to the zoom level
}

static void accept_folder(const char *folder) {
    text_copy(orvanel_options.page_folder, folder);
    text_copy(page_dir_location, folder);
    dialog_options_folder_change_reload = 1;
}

// The pixel format depends on both options.
static bool changes_anti_aliasing(const Options &before, const Options &after) {
    return before.anti_aliasing != after.anti_aliasing ||
           (before.good_graphics_card != after.good_graphics_card && after.anti_aliasing == 1);
}

// Text casts shadows on a good graphics card only.
static bool changes_fonts(const Options &before, const Options &after) {
    return before.text_shadows != after.text_shadows ||
           (before.good_graphics_card != after.good_graphics_card && after.text_shadows == 1);
}

static void take_effect(const Options &before) {
    if (changes_anti_aliasing(before, orvanel_options))
        dialog_options_rebuild_window = 1;
    if (changes_fonts(before, orvanel_options))
        scene_fonts_init();
    if (xml_save_options() != 0)
        message_box(READ_ONLY_TEXT, MESSAGE_CAPTION, MessageIcon::Exclamation);
}

bool dialog_options_accept(const OptionsForm &form, void (*show_folder)()) {
    const Options before = orvanel_options;
    char folder[PATH_SIZE];
    const OptionsFolder result =
        dialog_options_settle_folder(form.chosen.page_folder, folder, show_folder);
    if (result == OptionsFolder::Refused)
        return false;
    if (result == OptionsFolder::Changed)
        accept_folder(folder);
    accept_zoom_level(form.chosen.initial_zoom_level);
    accept_colour(form.chosen.default_page_colour_name);
    accept_flags(form);
    take_effect(before);
    return true;
}
