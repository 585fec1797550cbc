// A page in edit mode in a real context, with its file in a folder of its own, for tests that edit
// it as a user does. Time moves by itself, so that transitions end. Link orvanel_manual_clock.
#pragma once

#include "tests/support/scene_stage.h"
#include "tests/support/test_folder.h"

#include <cstdint>
#include <string>

struct EditStage : SceneStage {
    TestFolder folder;

    // "page.orvl", empty and saved, in edit mode; transitions and questions about deleting are off.
    EditStage();
    ~EditStage();

    std::string page_text() const; // of the file
};

WindowPoint stage_node_point(std::int32_t id); // where a node shows

// An object with a name and actions whose commands are "command 1", "command 2", ...
std::int32_t stage_add_object(const char *name, float x, float y, std::int32_t actions = 0);
std::int32_t stage_add_page(const char *name, const char *file, float x, float y);
std::int32_t stage_add_label(const char *text, float x, float y);

void stage_point_at(std::int32_t id);                      // the mouse, and pre_dialog_mouse
void stage_point_at_place(float x, float y);               // where a node would show
void stage_command(std::int32_t command, std::int32_t id); // runs it for a node, -1 = empty floor
