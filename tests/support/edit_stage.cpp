#include "tests/support/edit_stage.h"

#include "app/commands.h"
#include "app/input.h"
#include "editing/clipboard.h"
#include "editing/page_edit.h"
#include "editing/undo.h"
#include "page/options.h"
#include "platform/locations.h"
#include "platform/text.h"
#include "scene/frame_clock.h"
#include "scene/gl_util.h"
#include "scene/interaction.h"
#include "scene/scene.h"
#include "scene/scene_page.h"
#include "tests/support/manual_clock.h"

#ifndef _WIN32
#include "platform/posix/recorder.h"
#endif

EditStage::EditStage() {
#ifndef _WIN32
    recorder_reset();
#endif
    manual_clock_reset();
    manual_clock_high_resolution(false); // the millisecond clock is exact
    manual_clock_step(500);              // loops that wait for it end
    timer_init(&frame_timer);
    reset_frame_timer();
    orvanel_options.good_graphics_card = 0;
    orvanel_options.confirm_object_delete = 0;
    orvanel_options.confirm_page_file_delete = 0;
    text_copy(page_dir_location, folder.path);
    text_copy(scene_page_file_name, "page.orvl");
    text_copy(scene_page_title, "Page");
    node_label_total = 0;
    scene_page_hosts_total = scene_page_links_total = 0;
    clipboard_init();
    clipboard_used = CLIPBOARD_EMPTY;
    undo_init();
    mouse = {};
    xml_save_page(scene_page_file_name);
    page_edit_begin();
    scene_changed = 0;
    stage_draw();
}

EditStage::~EditStage() {
    input_capture_lost();
    page_edit_cancel();
    undo_stop();
    clipboard_stop();
    node_free_nodes();
    template_object_free();
    template_object_init();
    page_dir_location[0] = '\0';
    scene_stack_depth = 0;
    interaction_init();
}

std::string EditStage::page_text() const {
    return folder.read_text("page.orvl");
}

WindowPoint stage_node_point(std::int32_t id) {
    return stage_window_point(node[id].x, node[id].y, NODE_REST_HEIGHT);
}

static void set_action(std::int32_t id, std::int32_t slot, const char *command) {
    action_allocate_action(&node[id].actions[slot]);
    Action *action = node[id].actions[slot];
    action->type = ACTION_COMMAND;
    action->owner = 0;
    text_format(action->name, sizeof action->name, "Action name %d", static_cast<int>(slot + 1));
    text_copy(action->command, command);
    action->icon[0] = '\0';
    node[id].action_count = slot + 1;
}

std::int32_t stage_add_object(const char *name, float x, float y, std::int32_t actions) {
    const std::int32_t id = stage_add(NODE_OBJECT, x, y);
    text_copy(node[id].name, name);
    text_copy(node[id].description, "");
    scene_page_hosts_total++;
    for (std::int32_t i = 0; i < actions; i++) {
        char command[30];
        text_format(command, sizeof command, "command %d", static_cast<int>(i + 1));
        set_action(id, i, command);
    }
    return id;
}

std::int32_t stage_add_page(const char *name, const char *file, float x, float y) {
    const std::int32_t id = stage_add(NODE_PAGE, x, y);
    text_copy(node[id].name, name);
    text_copy(node[id].description, "");
    scene_page_links_total++;
    set_action(id, 0, file);
    return id;
}

std::int32_t stage_add_label(const char *text, float x, float y) {
    const std::int32_t id = stage_add(NODE_LABEL, x, y);
    text_format(node[id].name, sizeof node[id].name, "_lbl%dlbl_",
                static_cast<int>(node_label_total++));
    text_copy(node[id].description, text);
    return id;
}

static void point_at(WindowPoint point) {
    mouse.x = mouse.previous_x = point.x;
    mouse.y = mouse.previous_y = point.y;
    pre_dialog_mouse = {point.x, point.y};
}

void stage_point_at(std::int32_t id) {
    stage_draw();
    point_at(stage_node_point(id));
}

void stage_point_at_place(float x, float y) {
    stage_draw();
    point_at(stage_window_point(x, y, NODE_REST_HEIGHT));
}

static constexpr float EMPTY_X = -18.0f, EMPTY_Y = -12.0f; // a corner that tests leave free

void stage_command(std::int32_t command, std::int32_t id) {
    if (id == -1)
        stage_point_at_place(EMPTY_X, EMPTY_Y);
    else
        stage_point_at(id);
    command_run(command);
}
