#include "app/commands.h"

#include "actions/command.h"
#include "editing/page_edit.h"
#include "editing/undo.h"
#include "page/options.h"
#include "platform/colour_chooser.h"
#include "platform/message.h"
#include "scene/gl_util.h"
#include "scene/interaction.h"
#include "scene/scene.h"
#include "scene/scene_page.h"
#include "scene/scene_transition.h"

#include <algorithm>

static constexpr std::int32_t GOING_BACK = 1; // for the transitions

void command_edit_page(std::int32_t) {
    page_edit_begin();
}

void command_finish_editing(std::int32_t) {
    page_edit_end();
}

// The file cannot be read: what the user has made is all there is, and it stays.
static void keep_page(std::uint32_t result, const SceneFloor &before) {
    message_box(scene_load_message(result, SCENE_TOO_MANY_ON_PAGE), MESSAGE_CAPTION,
                MessageIcon::Exclamation);
    scene_floor.home_x = before.home_x;
    scene_floor.home_y = before.home_y;
    scene_floor.colour = before.colour;
    undo_pop();
    redo_reset();
    scene_floor.position_x = before.position_x; // the undo has shown what came back
    scene_floor.position_y = before.position_y;
    scene_changed = 1;
}

static void leave_edit_mode() {
    scene_changed = 0;
    app_mode = APP_VIEW;
    app_align_mode = 0;
    undo_reset();
}

void command_revert(std::int32_t) {
    const SceneFloor before = scene_floor;
    undo_push();
    scene_page_out_transition(GOING_BACK);
    const std::uint32_t result = scene_reload_page();
    if (result == PAGE_LOADED)
        leave_edit_mode();
    else
        keep_page(result, before);
    scene_page_in_transition(GOING_BACK);
    scene_invalidate_floor();
}

void command_center_page(std::int32_t) {
    scene_return_to_center_transition();
}

void command_set_page_center(std::int32_t) {
    scene_floor.home_x = scene_floor.position_x;
    scene_floor.home_y = scene_floor.position_y;
    message_box("The Page Center has been set.", MESSAGE_CAPTION, MessageIcon::Information);
    scene_changed = 1;
}

// ---- colour

// The page keeps this colour, whatever becomes of the default.
static void give_own_colour(float red, float green, float blue) {
    scene_page_colour_transition(red, green, blue);
    scene_floor.colour.use_default = 0;
    scene_changed = 1;
}

void command_page_colour(std::int32_t id) {
    const PageColourPreset &preset = PAGE_COLOUR_PRESETS[id - COMMAND_COLOUR_FIRST];
    give_own_colour(preset.red, preset.green, preset.blue);
}

void command_default_page_colour(std::int32_t) {
    scene_page_colour_transition(orvanel_options.default_page_red,
                                 orvanel_options.default_page_green,
                                 orvanel_options.default_page_blue);
    scene_floor.colour.use_default = 1;
    scene_changed = 1;
}

static std::int32_t chooser_component(float component) {
    return std::clamp(colour_opengl_to_win(component), 0, 255);
}

void get_custom_colour_menu(std::int32_t) {
    std::int32_t red = chooser_component(scene_floor.colour.red);
    std::int32_t green = chooser_component(scene_floor.colour.green);
    std::int32_t blue = chooser_component(scene_floor.colour.blue);
    if (colour_choose(&red, &green, &blue) == 0)
        give_own_colour(colour_win_to_opengl(red), colour_win_to_opengl(green),
                        colour_win_to_opengl(blue));
}
