#include "dialogs/dialogs.h"
#include "dialogs/model_chooser.h"

#include "assets/model.h"
#include "assets/object_files.h"
#include "dialogs/rules/model_viewer_picture.h"
#include "page/node.h"
#include "platform/locations.h"
#include "platform/text.h"
#include "tests/windows/real_window.h"

#include <gtest/gtest.h>

#include <string>

static constexpr int TEMPLATE = 5000; // tests/support/test_resources.rc

static std::int32_t model_before; // of what the dialog edits

static INT_PTR CALLBACK dialog_procedure(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam) {
    if (message == WM_INITDIALOG)
        model_chooser_init(dialog, static_cast<std::int32_t>(lparam), model_before);
    else if (message == WM_COMMAND)
        return model_chooser_command(dialog, wparam) ? TRUE : FALSE;
    return message == WM_INITDIALOG ? TRUE : FALSE;
}

struct ModelChooser : testing::Test {
    TestFolder folder;
    RealWindow window;
    HWND dialog = nullptr;

    ModelChooser() {
        write("laptop.obj", "Laptop", "Devices");
        write("printer.obj", "Printer", "Devices");
        write("tree.obj", "Tree", "Garden");
        text_copy(object_dir_location, folder.path);
        object_files_init();
    }
    ~ModelChooser() override {
        if (dialog != nullptr)
            DestroyWindow(dialog);
        handle_messages();
    }
    void write(const char *file, const std::string &name, const std::string &category) {
        folder.write(file, "#name:" + name + "\n#category:" + category +
                               "\nv 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n\n");
    }

    void open(const char *file) {
        model_chooser_wait_for_catalogue();
        dialog = CreateDialogParamA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(TEMPLATE), hWnd,
                                    dialog_procedure, object_files_get_id_from_file(file));
        handle_messages();
    }
    std::string shown(int id) const {
        char text[100] = "";
        GetDlgItemTextA(dialog, id, text, sizeof text);
        return text;
    }
    std::string list(int id) const {
        std::string names;
        const LRESULT total = SendDlgItemMessageA(dialog, id, CB_GETCOUNT, 0, 0);
        for (LRESULT i = 0; i < total; i++) {
            char text[100] = "";
            SendDlgItemMessageA(dialog, id, CB_GETLBTEXT, static_cast<WPARAM>(i),
                                reinterpret_cast<LPARAM>(text));
            names += std::string(text) + "|";
        }
        return names;
    }
    void click(int id) const {
        SendDlgItemMessageA(dialog, id, BM_CLICK, 0, 0);
        handle_messages();
    }
    void press(int id, WPARAM key) const {
        SendDlgItemMessageA(dialog, id, WM_KEYDOWN, key, 0);
        SendDlgItemMessageA(dialog, id, WM_KEYUP, key, 0);
        handle_messages();
    }
    // The name in the chooser, the preview and the result are one and the same model.
    void expect_chosen(const char *name, const char *file) const {
        EXPECT_EQ(shown(RESOURCE_MODEL_NAME), name);
        EXPECT_STREQ(object_files[model_chooser_entry()].file, file);
        EXPECT_STREQ(models[model_viewer_model_id].file_name, file);
    }
};

TEST_F(ModelChooser, all_categories_come_first_and_every_model_is_offered) {
    open("");
    EXPECT_EQ(list(RESOURCE_MODEL_CATEGORY), "All|Devices|Garden|");
    EXPECT_EQ(list(RESOURCE_MODEL_NAME), "Default|Laptop|Printer|Tree|");
    EXPECT_EQ(shown(RESOURCE_MODEL_CATEGORY), "All");
    expect_chosen("Default", "");
}

TEST_F(ModelChooser, the_model_asked_for_is_chosen_and_previewed) {
    open("printer.obj");
    expect_chosen("Printer", "printer.obj");
}

TEST_F(ModelChooser, a_model_that_is_not_listed_is_previewed_without_a_name_until_one_is_chosen) {
    model_chooser_wait_for_catalogue();
    write("late.obj", "Late", "Devices");
    model_before = model_return_model_id("late.obj");
    ASSERT_NE(model_before, 0);
    open("late.obj");
    EXPECT_EQ(list(RESOURCE_MODEL_NAME), "Default|Laptop|Printer|Tree|");
    EXPECT_EQ(shown(RESOURCE_MODEL_NAME), "");
    EXPECT_EQ(model_chooser_entry(), OBJECT_NONE);
    EXPECT_EQ(model_viewer_model_id, model_before);
    click(RESOURCE_MODEL_NEXT);
    expect_chosen("Default", "");
}

TEST_F(ModelChooser, the_buttons_step_through_all_models_and_wrap) {
    open("");
    click(RESOURCE_MODEL_PREVIOUS);
    expect_chosen("Tree", "tree.obj");
    click(RESOURCE_MODEL_PREVIOUS);
    expect_chosen("Printer", "printer.obj");
    click(RESOURCE_MODEL_NEXT);
    click(RESOURCE_MODEL_NEXT);
    expect_chosen("Default", "");
}

TEST_F(ModelChooser,
       choosing_a_category_with_the_keyboard_offers_its_models_and_the_buttons_stay_in_it) {
    open("");
    press(RESOURCE_MODEL_CATEGORY, VK_DOWN);
    EXPECT_EQ(shown(RESOURCE_MODEL_CATEGORY), "Devices");
    EXPECT_EQ(list(RESOURCE_MODEL_NAME), "Laptop|Printer|");
    expect_chosen("Laptop", "laptop.obj");
    click(RESOURCE_MODEL_NEXT);
    expect_chosen("Printer", "printer.obj");
    click(RESOURCE_MODEL_NEXT);
    expect_chosen("Laptop", "laptop.obj");
    press(RESOURCE_MODEL_CATEGORY, VK_UP);
    EXPECT_EQ(list(RESOURCE_MODEL_NAME), "Default|Laptop|Printer|Tree|");
    expect_chosen("Laptop", "laptop.obj");
}

TEST_F(ModelChooser, choosing_a_name_with_the_keyboard_previews_it) {
    open("");
    press(RESOURCE_MODEL_NAME, VK_DOWN);
    expect_chosen("Laptop", "laptop.obj");
    press(RESOURCE_MODEL_NAME, VK_END);
    expect_chosen("Tree", "tree.obj");
}

TEST_F(ModelChooser,
       stepping_through_400_models_previews_each_and_leaves_room_for_those_of_objects) {
    for (int i = 100; i < 500; i++)
        write((std::to_string(i) + ".obj").c_str(), std::to_string(i), "Many");
    node_init_node(node_total);
    node[node_total].model_id = model_return_model_id("250.obj");
    const Node &object = node[node_total++];
    const std::int32_t total = models_total, id = object.model_id;
    open("100.obj");
    for (int i = 100; i < 500; i++) {
        const std::string name = std::to_string(i);
        expect_chosen(name.c_str(), (name + ".obj").c_str());
        EXPECT_EQ(model_viewer_model_id == id, i == 250);
        click(RESOURCE_MODEL_NEXT);
    }
    expect_chosen("Laptop", "laptop.obj");
    EXPECT_EQ(models_total, total);
    EXPECT_EQ(object.model_id, id);
    EXPECT_STREQ(models[object.model_id].file_name, "250.obj");
    EXPECT_STREQ(models[model_return_model_id("499.obj")].file_name, "499.obj");
}

TEST_F(ModelChooser, nothing_is_kept_of_the_models_looked_at_when_the_dialog_closes) {
    open("printer.obj");
    EXPECT_STREQ(models[MODEL_PREVIEW].file_name, "printer.obj");
    DestroyWindow(dialog);
    dialog = nullptr;
    EXPECT_STREQ(models[MODEL_PREVIEW].file_name, "");
    EXPECT_EQ(models[MODEL_PREVIEW].vertex, nullptr);
}

TEST_F(ModelChooser, other_commands_are_left_to_the_dialog) {
    open("");
    EXPECT_FALSE(model_chooser_command(dialog, MAKEWPARAM(IDOK, BN_CLICKED)));
    EXPECT_FALSE(model_chooser_command(dialog, MAKEWPARAM(RESOURCE_MODEL_NAME, CBN_DROPDOWN)));
    EXPECT_TRUE(model_chooser_command(dialog, MAKEWPARAM(RESOURCE_MODEL_NEXT, BN_CLICKED)));
}

TEST_F(ModelChooser, waiting_for_the_catalogue_ends_with_it_loaded_and_the_window_usable_again) {
    EXPECT_FALSE(object_files_loaded());
    EXPECT_TRUE(model_chooser_wait_for_catalogue());
    EXPECT_TRUE(object_files_loaded());
    EXPECT_TRUE(IsWindowEnabled(hWnd));
    EXPECT_TRUE(model_chooser_wait_for_catalogue()); // there is nothing to wait for
}

static bool was_disabled, was_painted;

// In the middle of a scan that takes long.
static void CALLBACK look_and_finish(HWND main, UINT, UINT_PTR timer, DWORD) {
    was_disabled = IsWindowEnabled(main) == FALSE;
    InvalidateRect(main, nullptr, FALSE);
    UpdateWindow(main);
    was_painted = GetUpdateRect(main, nullptr, FALSE) == FALSE;
    KillTimer(main, timer);
    object_files_total = 0;
    object_files_loaded_flag = CATALOGUE_LOADED;
}

TEST_F(ModelChooser,
       while_the_catalogue_is_waited_for_the_main_window_is_painted_but_takes_no_input) {
    was_disabled = was_painted = false;
    object_files_loaded_flag = CATALOGUE_RUNNING;
    SetTimer(hWnd, 77, 100, look_and_finish);
    model_chooser_wait_for_catalogue();
    EXPECT_TRUE(was_disabled);
    EXPECT_TRUE(was_painted);
    EXPECT_TRUE(IsWindowEnabled(hWnd));
}

TEST_F(ModelChooser, a_program_that_is_told_to_end_does_not_wait_any_longer) {
    object_files_loaded_flag = CATALOGUE_RUNNING;
    PostQuitMessage(5);
    EXPECT_FALSE(model_chooser_wait_for_catalogue());
    EXPECT_EQ(dialog_object_show(), DIALOG_CANCEL);
    EXPECT_EQ(dialog_page_show(), DIALOG_CANCEL);
    EXPECT_TRUE(IsWindowEnabled(hWnd));
    MSG message = {};
    EXPECT_TRUE(PeekMessageA(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
    EXPECT_EQ(message.wParam, 5u);
    object_files_loaded_flag = CATALOGUE_NOT_STARTED; // lets the waiting thread go
}
