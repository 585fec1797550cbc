// Random editing by the editing services themselves.
#include "app/edit_choice.h"
#include "tests/unit/edit_session.h"

#ifndef _WIN32
#include "platform/posix/recorder.h"
#endif

static std::int32_t aim(std::int32_t wanted) {
    return wanted;
}

static void drag(std::int32_t id, float dx, float dy) {
    undo_push();
    if (dx != 0.0f || dy != 0.0f) {
        node[id].move_dx = dx;
        node[id].move_dy = dy;
        node[id].move_frames = MOVE_STEPS;
        node_move_nodes();
    }
    undo_duplicate_check(id);
}

static bool link(std::int32_t from, std::int32_t to) {
    edit_begin_link(from);
    edit_choose_link_end(to);
    return true;
}

static void remove_links(std::int32_t id) {
    begin_change();
    node_remove_lines(id);
}

static void remove(std::int32_t id, bool with_file) {
    const std::string file = node[id].type == NODE_PAGE ? node[id].actions[0]->command : "";
    begin_change();
    count_type(node[id].type, -1);
    scene_delete_node_transition(id);
    node_delete_node(id);
    if (file.empty() || !with_file)
        return;
    xml_delete_page(file.c_str());
    xml_save_page(PAGE_FILE);
    undo_reset();
}

static void copy(std::int32_t id) {
    clipboard_fill(id, CLIPBOARD_COPIED);
}

static void cut(std::int32_t id) {
    begin_change();
    clipboard_fill(id, CLIPBOARD_CUT);
    count_type(node[id].type, -1);
    scene_cut_node_transition(id);
    node_delete_node(id);
}

static void paste(float x, float y) {
    if (clipboard_used == CLIPBOARD_EMPTY)
        return;
    begin_change();
    clipboard_paste(x, y);
}

static void paste_actions(std::int32_t id) {
    if (node[id].type != NODE_OBJECT)
        return;
    begin_change();
    clipboard_paste_actions(id);
    undo_duplicate_check(id);
}

static std::int32_t align(std::int32_t from, std::int32_t to) {
    const std::int32_t alignment = (from + to) % 2 == 0 ? ALIGN_COLUMN : ALIGN_ROW;
    begin_change();
    scene_align_node_transition(from, to, alignment);
    undo_duplicate_check(from);
    return alignment;
}

static void align_with_grid(std::int32_t id) {
    undo_push();
    scene_align_with_grid(id);
    undo_duplicate_check(id);
}

static void finish_editing() {
    xml_save_page(PAGE_FILE);
    undo_reset();
}

static void revert() {
    ASSERT_EQ(scene_load_page(PAGE_FILE, "Model"), PAGE_LOADED);
    undo_reset();
}

static constexpr Editor SERVICES = {
    .aim = aim,
    .drag = drag,
    .link = link,
    .remove_links = remove_links,
    .remove = remove,
    .copy = copy,
    .cut = cut,
    .paste = paste,
    .precision = 0.0f,
    .paste_actions = paste_actions,
    .align = align,
    .align_with_grid = align_with_grid,
    .undo = undo_pop,
    .redo = redo_pop,
    .finish_editing = finish_editing,
    .revert = revert,
};

struct EditModel : Edit {
    EditModel() {
        orvanel_options.object_transitions = 0;
        orvanel_options.floor_inertia = 0;
        // What is drawn is nothing to this test.
        scene_resize(16, 16);
#ifndef _WIN32
        recorder.minimised = true;
#endif
        text_copy(scene_page_file_name, PAGE_FILE);
    }
};

TEST_F(EditModel, the_page_and_a_plain_model_of_it_agree_after_every_step_of_random_editing) {
    for (std::uint32_t seed = 1; seed <= RUNS; seed++)
        ASSERT_TRUE(play(SERVICES, seed, static_cast<std::int32_t>(seed % 13), STEPS));
}

TEST_F(EditModel, they_agree_on_pages_that_are_nearly_full) {
    for (std::uint32_t seed = 1001; seed < 1001 + FULL_RUNS; seed++)
        ASSERT_TRUE(play(SERVICES, seed, 250, STEPS / 2));
}
