// A page folder with the empty page "shown.orvl" shown, over which the page dialog was opened for a
// new page object.
#pragma once

#include "dialogs/rules/dialog_page_rules.h"

#include "assets/model.h"
#include "editing/undo.h"
#include "page/node.h"
#include "page/options.h"
#include "page/page_file.h"
#include "platform/locations.h"
#include "platform/text.h"
#include "scene/scene_floor.h"
#include "scene/scene_page.h"
#include "tests/support/test_folder.h"

#include <gtest/gtest.h>

#include <string>

struct PageDialog : testing::Test {
    TestFolder folder, models_folder;
    PageFields fields = {
        .name = "My Games", .description = "", .file_name = "", .model_entry = OBJECT_DEFAULT};

    PageDialog() {
        text_copy(page_dir_location, folder.path);
        text_copy(object_dir_location, models_folder.path);
        text_copy(scene_page_file_name, "shown.orvl");
        node_init_nodes();
        node_total = 0;
        line_init();
        model_init();
        write_model(DIALOG_PAGE_MODEL);
        write_model("box.obj");
        object_files_init();
        object_files_load();
        undo_init();
        scene_floor = {};
        orvanel_options.remember_last_model = 1;
        dialog_page_init();
        open_new();
    }
    ~PageDialog() override {
        undo_stop();
        node_free_nodes();
        model_unload_models();
        node_total = 0;
        page_dir_location[0] = object_dir_location[0] = scene_page_file_name[0] = '\0';
    }

    void open_new() {
        dialog_page_set_node(DIALOG_PAGE_NEW);
        dialog_page_open();
    }
    void open_existing(std::int32_t id) {
        dialog_page_set_node(id);
        dialog_page_open();
        const PageFieldTexts shown = dialog_page_opening_texts();
        text_copy(name, shown.name);
        text_copy(file_name, shown.file_name);
        fields.name = name;
        fields.description = "";
        fields.file_name = file_name;
    }
    PageRefusal link(const char *page_name, const char *file) {
        dialog_page_check_link(true);
        fields.name = page_name;
        fields.file_name = file;
        return dialog_page_apply(fields);
    }
    PageRefusal create(const char *page_name) {
        fields.name = page_name;
        return dialog_page_apply(fields);
    }
    void write_model(const char *file) {
        models_folder.write(file, "v -3 -2 -1\nv 3 -2 -1\nv 0 4 5\nvn 0 0 1\nf 1//1 2//1 3//1\n");
    }

    char name[31], file_name[PATH_SIZE]; // of the fields of an existing page object
};

inline std::string file_of(std::int32_t id) {
    return node[id].actions[0]->command;
}

inline std::string page_text() {
    return page_format({});
}
