// A page to edit: an empty page in a real context, with undo, clipboard and a page folder of its
// own. Transitions are on; a clock that moves by being read runs them at once.
#pragma once

#include "editing/clipboard.h"
#include "editing/undo.h"
#include "page/options.h"
#include "page/page_file.h"
#include "platform/locations.h"
#include "platform/text.h"
#include "scene/frame_clock.h"
#include "scene/interaction.h"
#include "scene/scene.h"
#include "scene/scene_page.h"
#include "scene/scene_transition.h"
#include "tests/support/film.h"
#include "tests/support/manual_clock.h"
#include "tests/support/message_script.h"
#include "tests/support/scene_stage.h"
#include "tests/support/test_folder.h"

#include <gtest/gtest.h>

#include <string>

struct Edit : testing::Test {
    SceneStage stage;
    TestFolder folder;

    Edit() {
        manual_clock_reset();
        manual_clock_step(100); // microseconds
        timer_init(&frame_timer);
        text_copy(page_dir_location, folder.path);
        text_copy(scene_page_file_name, "edited.orvl");
        scene_page_hosts_total = scene_page_links_total = node_label_total = 0;
        clipboard = {};
        clipboard_used = CLIPBOARD_EMPTY;
        clipboard_init();
        undo_init();
    }
    ~Edit() override {
        undo_stop();
        clipboard_stop();
        node_free_nodes();
        template_object_free();
    }
};

// A named object, page object or label at rest. Returns its index.
inline std::int32_t add_node(NodeType type, const char *name, float x, float y) {
    const std::int32_t id = stage_add(type, x, y);
    text_copy_limit(node[id].name, NODE_NAME_LENGTH, name);
    node[id].description[0] = '\0';
    return id;
}

inline Action *add_action(std::int32_t id, const char *name, const char *command) {
    Action **slot = &node[id].actions[node[id].action_count++];
    action_allocate_action(slot);
    **slot = {};
    text_copy((*slot)->name, name);
    text_copy((*slot)->command, command);
    return *slot;
}

inline std::int32_t add_page(const char *name, const char *file, float x, float y) {
    const std::int32_t id = add_node(NODE_PAGE, name, x, y);
    add_action(id, "", file);
    return id;
}

// All that is saved of the page.
inline std::string page_text() {
    return page_format({});
}

// An editing command that moves an object.
inline void move_node(std::int32_t id, float x, float y) {
    undo_push();
    redo_reset();
    node[id].x = x;
    node[id].y = y;
    undo_duplicate_check(id);
}

inline void rename_node(std::int32_t id, const char *name) {
    undo_push();
    redo_reset();
    text_copy(node[id].name, name);
    undo_duplicate_check(id);
}
