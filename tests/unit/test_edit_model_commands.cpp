// Random editing as the user does it: with the mouse, and the commands of the menus for what it
// points at.
#include "actions/command.h"
#include "app/commands.h"
#include "app/edit_choice.h"
#include "app/input.h"
#include "editing/page_edit.h"
#include "scene/scene_align.h"
#include "tests/unit/edit_session.h"

#ifndef _WIN32
#include "platform/posix/recorder.h"
#endif

// ---- the mouse

static void point_at(float x, float y) {
    const WindowPoint point = stage_window_point(x, y, NODE_REST_HEIGHT);
    mouse.x = mouse.previous_x = point.x;
    mouse.y = mouse.previous_y = point.y;
    pre_dialog_mouse = {point.x, point.y};
}

// Scrolls to the node and points at it. Another one may stand in front of it.
static std::int32_t aim(std::int32_t wanted) {
    scene_floor.position_x = node[wanted].x;
    scene_floor.position_y = node[wanted].y;
    point_at(node[wanted].x, node[wanted].y);
    const std::int32_t hit = command_target();
    EXPECT_NE(hit, -1) << "nothing there of node " << wanted;
    return hit;
}

static void click() {
    const MouseState at = mouse;
    input_left_down(at.x, at.y);
    input_left_up(at.x, at.y);
}

static void drag(std::int32_t, float dx, float dy) {
    const MouseState at = mouse;
    input_left_down(at.x, at.y);
    const auto x = static_cast<std::int32_t>(dx * 10.0f);
    const auto y = static_cast<std::int32_t>(dy * 10.0f);
    if (x != 0 || y != 0) {
        input_mouse_move(at.x + x / 2, at.y + y / 2, MOUSE_LEFT);
        input_mouse_move(at.x + x, at.y + y, MOUSE_LEFT);
    }
    input_left_up(at.x + x, at.y + y);
}

// ---- commands

static bool link(std::int32_t, std::int32_t to) {
    command_run(COMMAND_DRAW_LINK);
    if (aim(to) == to) {
        click();
        return true;
    }
    edit_leave_choice();
    return false;
}

static void remove_links(std::int32_t) {
    command_run(COMMAND_REMOVE_LINKS);
}

static void remove(std::int32_t, bool with_file) {
    command_run(with_file ? COMMAND_DELETE : COMMAND_DELETE_KEEPING_FILE);
}

static void copy(std::int32_t) {
    command_run(COMMAND_COPY);
}

static void cut(std::int32_t) {
    command_run(COMMAND_CUT);
}

static void paste(float x, float y) {
    point_at(scene_floor.position_x + x, scene_floor.position_y + y);
    command_run(COMMAND_PASTE);
}

static void paste_actions(std::int32_t) {
    command_run(COMMAND_PASTE_ACTIONS);
}

static std::int32_t align(std::int32_t from, std::int32_t to) {
    command_run(COMMAND_ALIGN_WITH_OBJECT);
    const bool hit = aim(to) == to;
    const std::int32_t alignment = hit ? node_align_node(from, to) : ALIGN_NONE;
    if (hit)
        click();
    edit_leave_choice();
    return alignment;
}

static void align_with_grid(std::int32_t) {
    command_run(COMMAND_ALIGN_WITH_GRID);
}

static void press_with_control(std::int32_t key) {
    input_key_down(KEY_CONTROL);
    input_key_down(key);
    input_key_up(key);
    input_key_up(KEY_CONTROL);
}

static void undo() {
    press_with_control('Z');
}

static void redo() {
    press_with_control('Y');
}

static void finish_editing() {
    command_run(COMMAND_FINISH_EDITING);
    command_run(COMMAND_EDIT_PAGE);
}

static void revert() {
    command_run(COMMAND_REVERT);
    command_run(COMMAND_EDIT_PAGE);
}

static constexpr Editor COMMANDS = {
    .aim = aim,
    .drag = drag,
    .link = link,
    .remove_links = remove_links,
    .remove = remove,
    .copy = copy,
    .cut = cut,
    .paste = paste,
    .precision = 0.15f, // a pixel and a half
    .paste_actions = paste_actions,
    .align = align,
    .align_with_grid = align_with_grid,
    .undo = undo,
    .redo = redo,
    .finish_editing = finish_editing,
    .revert = revert,
};

struct EditModelCommands : Edit {
    EditModelCommands() {
        orvanel_options.good_graphics_card = 0; // nothing is animated, nothing coasts
        orvanel_options.confirm_object_delete = 0;
        orvanel_options.confirm_page_file_delete = 0;
        text_copy(scene_page_file_name, PAGE_FILE);
        text_copy(scene_page_title, "Model");
        app_mode = APP_EDIT;
        stage_draw();
#ifndef _WIN32
        recorder.minimised = true; // from now on, what is drawn is nothing to this test
#endif
    }
    ~EditModelCommands() override {
        input_capture_lost();
        scene_changed = 0;
        interaction_init();
    }
};

TEST_F(EditModelCommands,
       the_page_and_a_plain_model_of_it_agree_after_every_step_of_random_editing) {
    for (std::uint32_t seed = 1; seed <= RUNS; seed++)
        ASSERT_TRUE(play(COMMANDS, seed, static_cast<std::int32_t>(seed % 13), STEPS));
}
