// The commands that open a dialog: the undo history, the counters and the placing around it. The
// user of the dialog is played through its rules; tests/windows opens the real ones.
#include "app/commands.h"

#ifndef _WIN32

#include "actions/command.h"
#include "app/input.h"
#include "dialogs/dialogs.h"
#include "dialogs/rules/dialog_label_rules.h"
#include "dialogs/rules/dialog_object_rules.h"
#include "dialogs/rules/dialog_options_rules.h"
#include "dialogs/rules/dialog_page_rules.h"
#include "editing/page_edit.h"
#include "editing/undo.h"
#include "page/options.h"
#include "platform/locations.h"
#include "platform/posix/recorder.h"
#include "platform/text.h"
#include "scene/interaction.h"
#include "scene/scene_page.h"
#include "tests/support/edit_stage.h"
#include "tests/support/message_script.h"

#include <gtest/gtest.h>

// ---- users

static std::int32_t cancel(RecordedDialog) {
    return DIALOG_CANCEL;
}

static std::int32_t just_ok(RecordedDialog) {
    return DIALOG_OK;
}

static std::int32_t describe_object(RecordedDialog) {
    return dialog_object_apply({.name = "made", .description = "d", .model_entry = -1}) == -1
               ? DIALOG_CANCEL
               : DIALOG_OK;
}

static std::int32_t write_label(RecordedDialog) {
    dialog_label_store("a text");
    return DIALOG_OK;
}

static std::int32_t write_empty_label(RecordedDialog) {
    dialog_label_store("");
    return DIALOG_OK;
}

static std::int32_t describe_page(RecordedDialog) {
    dialog_page_open();
    const PageFields fields = {
        .name = "Fresh", .description = "", .file_name = "", .model_entry = -1};
    return dialog_page_apply(fields) == PageRefusal::None ? DIALOG_OK : DIALOG_CANCEL;
}

static std::int32_t link_page(RecordedDialog) {
    dialog_page_open();
    dialog_page_check_link(true);
    const PageFields fields = {
        .name = "Linked", .description = "", .file_name = "there.orvl", .model_entry = -1};
    return dialog_page_apply(fields) == PageRefusal::None ? DIALOG_OK : DIALOG_CANCEL;
}

static void run_at(std::int32_t command, float x, float y) {
    stage_point_at_place(x, y);
    command_run(command);
}

// ---- new object

TEST(NewObject, stands_under_the_mouse_and_can_be_undone) {
    const EditStage stage;
    recorder.dialog_user = describe_object;
    scene_floor.position_x = 3.0f;
    run_at(COMMAND_NEW_OBJECT, 7.0f, 4.0f);
    ASSERT_EQ(node_total, 1);
    EXPECT_STREQ(node[0].name, "made");
    EXPECT_NEAR(node[0].x, 7.0f, 0.2f);
    EXPECT_NEAR(node[0].y, 4.0f, 0.2f);
    EXPECT_EQ(node[0].grab_state, GRAB_IDLE);
    EXPECT_EQ(scene_page_hosts_total, 1);
    EXPECT_EQ(scene_changed, 1);
    EXPECT_EQ(undo_total, 1);
    command_run(COMMAND_UNDO);
    EXPECT_EQ(node_total, 0);
}

TEST(NewObject, pushes_the_others_out_of_its_place) {
    const EditStage stage;
    const std::int32_t other = stage_add_object("other", 7.5f, 4.0f);
    recorder.dialog_user = describe_object;
    run_at(COMMAND_NEW_OBJECT, 7.0f, 4.5f);
    ASSERT_EQ(node_total, 2);
    EXPECT_NEAR(node[1].x, 7.0f, 0.3f);
    EXPECT_TRUE(node[other].x != 7.5f || node[other].y != 4.0f);
}

TEST(NewObject, cancelled_leaves_no_undo_entry_and_the_redo_stack_empty) {
    const EditStage stage;
    redo_push();
    recorder.dialog_user = cancel;
    run_at(COMMAND_NEW_OBJECT, 0.0f, 0.0f);
    EXPECT_EQ(node_total, 0);
    EXPECT_EQ(undo_total, 0);
    EXPECT_EQ(redo_total, 0);
    EXPECT_EQ(scene_changed, 0);
    EXPECT_EQ(scene_page_hosts_total, 0);
}

TEST(NewNodes, on_a_full_page_are_refused_with_a_message_before_any_dialog) {
    const EditStage stage;
    while (node_total < 255)
        stage_add_object("b", 50.0f, 50.0f);
    for (const std::int32_t command : {COMMAND_NEW_OBJECT, COMMAND_NEW_PAGE, COMMAND_NEW_LABEL}) {
        const MessageScript script;
        run_at(command, 0.0f, 0.0f);
        ASSERT_EQ(script.shown().size(), 1u);
        EXPECT_EQ(script.shown()[0].text,
                  "The maximum number of items has been reached on this page.");
    }
    EXPECT_TRUE(recorder.dialogs.empty());
    EXPECT_EQ(undo_total, 0);
}

// ---- new label

TEST(NewLabel, is_added_where_the_menu_was_opened_and_can_be_undone) {
    const EditStage stage;
    recorder.dialog_user = write_label;
    run_at(COMMAND_NEW_LABEL, 5.0f, 6.0f);
    ASSERT_EQ(node_total, 1);
    EXPECT_EQ(node[0].type, NODE_LABEL);
    EXPECT_STREQ(node[0].description, "a text");
    EXPECT_EQ(scene_changed, 1);
    EXPECT_EQ(undo_total, 1);
    EXPECT_EQ(scene_page_hosts_total, 0);
}

TEST(NewLabel, closed_with_an_empty_text_adds_nothing_and_leaves_no_undo_entry) {
    for (const bool empty_page : {true, false}) {
        const EditStage stage;
        if (!empty_page)
            stage_add_object("a", 0.0f, 0.0f);
        const std::int32_t before = node_total;
        recorder.dialog_user = write_empty_label;
        run_at(COMMAND_NEW_LABEL, 8.0f, 8.0f);
        EXPECT_EQ(node_total, before);
        EXPECT_EQ(undo_total, 0);
        EXPECT_EQ(scene_changed, 0);
        for (std::int32_t i = 0; i < node_total; i++)
            EXPECT_EQ(node[i].grab_state, GRAB_IDLE);
    }
}

// ---- new page

TEST(NewPage, is_added_with_its_file_and_the_user_may_stay_on_this_page) {
    const EditStage stage;
    recorder.dialog_user = describe_page;
    const MessageScript script({MessageAnswer::No});
    run_at(COMMAND_NEW_PAGE, 5.0f, 6.0f);
    ASSERT_EQ(node_total, 1);
    EXPECT_EQ(node[0].type, NODE_PAGE);
    EXPECT_EQ(scene_page_links_total, 1);
    EXPECT_TRUE(file_exists(stage.folder.file("Fresh.orvl").c_str()));
    ASSERT_EQ(script.shown().size(), 1u);
    EXPECT_EQ(script.shown()[0].text, "Do you want to edit this page now?");
    EXPECT_STREQ(scene_page_file_name, "page.orvl");
    EXPECT_EQ(undo_total, 1);
}

TEST(NewPage, linked_to_a_file_asks_nothing) {
    EditStage stage;
    stage.folder.write("there.orvl", "<page>\n<offv>004</offv>\n</page>\n");
    recorder.dialog_user = link_page;
    const MessageScript script;
    run_at(COMMAND_NEW_PAGE, 5.0f, 6.0f);
    EXPECT_EQ(node_total, 1);
    EXPECT_TRUE(script.shown().empty());
}

TEST(NewPage, edited_at_once_saves_this_page_and_never_lets_Undo_mix_the_two) {
    const EditStage stage;
    stage_add_object("first", -8.0f, 0.0f);
    recorder.dialog_user = describe_page;
    const MessageScript script({MessageAnswer::Yes});
    run_at(COMMAND_NEW_PAGE, 5.0f, 6.0f);
    EXPECT_STREQ(scene_page_file_name, "Fresh.orvl");
    EXPECT_STREQ(scene_page_title, "Fresh");
    EXPECT_EQ(scene_stack_depth, 1);
    EXPECT_EQ(app_mode, APP_EDIT);
    EXPECT_EQ(node_total, 0);
    EXPECT_NE(stage.page_text().find("<page_file>Fresh.orvl</page_file>"), std::string::npos);
    EXPECT_EQ(undo_total, 0);
    stage_add_object("second", 0.0f, 0.0f);
    command_run(COMMAND_UNDO);
    ASSERT_EQ(node_total, 1);
    EXPECT_STREQ(node[0].name, "second");
}

TEST(NewPage, that_cannot_be_opened_for_want_of_levels_stays_on_this_page) {
    const EditStage stage;
    while (scene_stack_push() == 0) {
    }
    recorder.dialog_user = describe_page;
    const MessageScript script({MessageAnswer::Yes, MessageAnswer::Ok});
    run_at(COMMAND_NEW_PAGE, 5.0f, 6.0f);
    ASSERT_EQ(script.shown().size(), 2u);
    EXPECT_EQ(script.shown()[1].text,
              "The maximum number of page levels has been reached on this page.");
    EXPECT_STREQ(scene_page_file_name, "page.orvl");
    EXPECT_EQ(node_total, 1);
    EXPECT_EQ(node[0].height, NODE_REST_HEIGHT);
}

TEST(NewPage, cancelled_leaves_no_undo_entry_and_asks_nothing) {
    for (const std::int32_t command : {COMMAND_NEW_PAGE, COMMAND_NEW_LABEL}) {
        const EditStage stage;
        redo_push();
        recorder.dialog_user = cancel;
        const MessageScript script;
        run_at(command, 5.0f, 6.0f);
        EXPECT_EQ(node_total, 0);
        EXPECT_EQ(undo_total, 0);
        EXPECT_EQ(redo_total, 0);
        EXPECT_EQ(scene_changed, 0);
        EXPECT_EQ(scene_page_links_total, 0);
        EXPECT_TRUE(script.shown().empty());
    }
}

static const char *damage; // what another program makes of the new page's file at once; null = none

static std::int32_t describe_damaged_page(RecordedDialog which) {
    const std::int32_t result = describe_page(which);
    char path[PATH_SIZE];
    text_format(path, sizeof path, "%sFresh.orvl", page_dir_location);
    file_delete(path);
    if (damage != nullptr)
        file_create_text(path, damage);
    return result;
}

TEST(NewPage, that_cannot_be_loaded_says_why_and_stays_on_this_page) {
    static constexpr struct {
        const char *file, *message;
    } cases[] = {
        {nullptr, "Failed to open page file."},
        {"<page>\n<offv>005</offv>\n</page>\n",
         "Failed to load page file.  It apears to be from a newer version of Orvanel."},
        {"no page\n", "Failed to load page file.  It does not apear to be a valid Orvanel file."},
        {"<page>\n<offv>004</offv>\n<node>\n<type>object</type>\n<name>a</name>\n</node>\n</"
         "page>\n",
         "The page file contains syntax errors and will not be loaded."},
    };
    for (const auto &expected : cases) {
        const EditStage stage;
        damage = expected.file;
        recorder.dialog_user = describe_damaged_page;
        const MessageScript script({MessageAnswer::Yes, MessageAnswer::Ok});
        run_at(COMMAND_NEW_PAGE, 5.0f, 6.0f);
        ASSERT_EQ(script.shown().size(), 2u) << expected.message;
        EXPECT_EQ(script.shown()[1].text, expected.message);
        EXPECT_EQ(script.shown()[1].caption, "Orvanel");
        EXPECT_EQ(scene_stack_depth, 0);
        EXPECT_STREQ(scene_page_file_name, "page.orvl");
        EXPECT_EQ(node_total, 1);
    }
}

// ---- properties

TEST(Properties, open_the_dialog_of_what_is_under_the_mouse) {
    const EditStage stage;
    const std::int32_t object = stage_add_object("a", -10.0f, 0.0f);
    const std::int32_t page = stage_add_page("p", "p.orvl", 10.0f, 0.0f);
    const std::int32_t label = stage_add_label("a label", 0.0f, 9.0f);
    recorder.dialog_user = cancel;
    for (const std::int32_t id : {object, page, label}) {
        stage_command(COMMAND_PROPERTIES, id);
        EXPECT_EQ(dialog_node_id, id);
    }
    stage_command(COMMAND_PROPERTIES, -1);
    EXPECT_EQ(recorder.dialogs,
              (std::vector<RecordedDialog>{RecordedDialog::Object, RecordedDialog::Page,
                                           RecordedDialog::Label}));
    EXPECT_EQ(undo_total, 0);
    EXPECT_EQ(scene_changed, 0);
}

TEST(Properties, confirmed_without_a_change_leave_no_undo_entry) {
    const EditStage stage;
    const std::int32_t id = stage_add_object("a", 0.0f, 0.0f);
    recorder.dialog_user = just_ok;
    stage_command(COMMAND_PROPERTIES, id);
    EXPECT_EQ(undo_total, 0);
    EXPECT_EQ(scene_changed, 1);
}

TEST(Properties, that_change_the_object_can_be_undone) {
    const EditStage stage;
    const std::int32_t id = stage_add_object("a", 0.0f, 0.0f);
    recorder.dialog_user = describe_object;
    stage_command(COMMAND_PROPERTIES, id);
    EXPECT_STREQ(node[id].name, "made");
    EXPECT_EQ(undo_total, 1);
    command_run(COMMAND_UNDO);
    EXPECT_STREQ(node[id].name, "a");
}

TEST(Properties, are_opened_by_a_double_click_in_edit_mode) {
    const EditStage stage;
    const std::int32_t id = stage_add_object("a", 0.0f, 0.0f);
    stage_draw();
    const WindowPoint point = stage_node_point(id);
    input_double_click(point.x, point.y);
    EXPECT_EQ(recorder.dialogs, std::vector<RecordedDialog>{RecordedDialog::Object});
    EXPECT_EQ(dialog_node_id, id);
}

// ---- options and about

static std::int32_t change_colour(RecordedDialog) {
    options_colour_change_flag = 1;
    orvanel_options.default_page_red = 0.5f;
    return DIALOG_OK;
}

static std::int32_t rebuild(RecordedDialog) {
    dialog_options_rebuild_window = 1;
    return DIALOG_OK;
}

struct OptionsStage : EditStage {
    OptionsStage() {
        options_colour_change_flag = dialog_options_folder_change_reload = 0;
        dialog_options_rebuild_window = 0;
    }
    ~OptionsStage() {
        options_colour_change_flag = dialog_options_folder_change_reload = 0;
        dialog_options_rebuild_window = 0;
    }
};

TEST(OptionsCommand, blends_only_a_page_of_the_default_colour_to_the_new_one) {
    for (const int uses_default : {0, 1}) {
        const OptionsStage stage;
        stage_page_colour(0.1f, 0.1f, 0.1f);
        scene_floor.colour.use_default = uses_default;
        recorder.dialog_user = change_colour;
        command_run(COMMAND_OPTIONS);
        EXPECT_EQ(scene_floor.colour.red, uses_default == 1 ? 0.5f : 0.1f);
        EXPECT_EQ(scene_floor.colour.use_default, uses_default);
    }
}

static OptionsStage *moving_stage;

static std::int32_t move_folder(RecordedDialog) {
    folder_create(moving_stage->folder.file("moved").c_str());
    moving_stage->folder.write("moved\\home.orvl", "<page>\n<offv>004</offv>\n</page>\n");
    text_append(page_dir_location, "moved\\");
    dialog_options_folder_change_reload = 1;
    return DIALOG_OK;
}

TEST(OptionsCommand, shows_the_home_page_of_a_new_page_folder_in_view_mode) {
    OptionsStage stage;
    moving_stage = &stage;
    scene_stack_push();
    scene_changed = 1;
    open_mode = 1;
    recorder.dialog_user = move_folder;
    command_run(COMMAND_OPTIONS);
    EXPECT_STREQ(scene_page_file_name, "home.orvl");
    EXPECT_STREQ(scene_page_title, "Home");
    EXPECT_EQ(scene_stack_depth, 0);
    EXPECT_EQ(app_mode, APP_VIEW);
    EXPECT_EQ(scene_changed, 0);
    EXPECT_EQ(open_mode, 0);
}

static std::int32_t move_folder_with_broken_page(RecordedDialog which) {
    move_folder(which);
    moving_stage->folder.write("moved\\home.orvl", "no page\n");
    return DIALOG_OK;
}

TEST(OptionsCommand, says_why_the_home_page_of_a_new_page_folder_cannot_be_shown) {
    OptionsStage stage;
    moving_stage = &stage;
    recorder.dialog_user = move_folder_with_broken_page;
    const MessageScript script;
    command_run(COMMAND_OPTIONS);
    ASSERT_EQ(script.shown().size(), 1u);
    EXPECT_EQ(script.shown()[0].text,
              "Failed to load page file.  It does not apear to be a valid Orvanel file.");
    EXPECT_EQ(app_mode, APP_VIEW);
    EXPECT_EQ(scene_stack_depth, 0);
}

TEST(OptionsCommand, saves_the_page_before_the_window_is_made_anew) {
    const OptionsStage stage;
    stage_add_object("kept", 0.0f, 0.0f);
    scene_changed = 1;
    recorder.dialog_user = rebuild;
    command_run(COMMAND_OPTIONS);
    EXPECT_EQ(recorder.rebuilds, 1);
    EXPECT_NE(stage.page_text().find("kept"), std::string::npos);
}

TEST(OptionsCommand, keeps_the_window_of_a_page_that_cannot_be_saved) {
    const OptionsStage stage;
    scene_changed = 1;
    text_append(page_dir_location, "gone\\");
    recorder.dialog_user = rebuild;
    const MessageScript script;
    command_run(COMMAND_OPTIONS);
    EXPECT_EQ(recorder.rebuilds, 0);
    EXPECT_EQ(app_mode, APP_EDIT);
    EXPECT_EQ(script.shown().size(), 1u);
    scene_changed = 0;
}

TEST(AboutCommand, opens_the_about_box) {
    const EditStage stage;
    command_run(COMMAND_ABOUT);
    EXPECT_EQ(recorder.dialogs, std::vector<RecordedDialog>{RecordedDialog::About});
}

#endif
