#include "app/commands.h"

#include "actions/command.h"
#include "editing/clipboard.h"
#include "editing/undo.h"
#include "page/options.h"
#include "platform/text.h"
#include "scene/frame_clock.h"
#include "scene/interaction.h"
#include "scene/scene.h"
#include "scene/scene_page.h"
#include "tests/support/edit_stage.h"
#include "tests/support/manual_clock.h"
#include "tests/support/message_script.h"

#include <gtest/gtest.h>

#include <set>

#ifndef _WIN32
#include "platform/posix/recorder.h"
#endif

// ---- the table

TEST(CommandTable, every_id_and_every_key_stands_in_it_once) {
    std::set<std::int32_t> found;
    for (std::int32_t id = 0; id < 3000; id++) {
        const Command *command = command_find(id);
        if (command == nullptr)
            continue;
        EXPECT_EQ(command->id, id);
        for (const std::int32_t key : {command->key, command->second_key}) {
            if (key == 0)
                continue;
            EXPECT_TRUE(found.insert(key).second) << id;
        }
    }
    EXPECT_EQ(found, (std::set<std::int32_t>{67, 99, 86, 118, 88, 120, 89, 121, 90, 122}));
}

TEST(CommandTable, colours_are_offered_with_the_names_of_the_presets) {
    for (std::int32_t i = 0; i < 6; i++) {
        const Command *command = command_find(COMMAND_COLOUR_FIRST + i);
        ASSERT_NE(command, nullptr);
        EXPECT_STREQ(command->text, PAGE_COLOUR_PRESETS[i].name);
        EXPECT_EQ(command->image, MENU_IMAGE_SWATCH_FIRST + i);
    }
}

TEST(CommandTable, an_id_that_is_no_command_says_so) {
    const EditStage stage;
    for (const std::int32_t id : {0, 999, 1016, 1206, 1299 + 1, 1999}) {
        const MessageScript script;
        command_run(id);
        ASSERT_EQ(script.shown().size(), 1u) << id;
        EXPECT_EQ(script.shown()[0].text, "Unkonwn option (" + std::to_string(id) + ").");
        EXPECT_EQ(script.shown()[0].caption, "Not implemented");
    }
}

// ---- deleting

TEST(DeleteCommand, asks_first_and_No_keeps_the_object) {
    const EditStage stage;
    orvanel_options.confirm_object_delete = 1;
    const std::int32_t id = stage_add_object("a", 0.0f, 0.0f);
    {
        const MessageScript script({MessageAnswer::No});
        stage_command(COMMAND_DELETE, id);
        ASSERT_EQ(script.shown().size(), 1u);
        EXPECT_EQ(script.shown()[0].text, "Are you sure?");
        EXPECT_EQ(script.shown()[0].caption, "Orvanel");
    }
    EXPECT_EQ(node_total, 1);
    EXPECT_EQ(undo_total, 0);
    EXPECT_EQ(scene_changed, 1); // asking is enough
    const MessageScript script({MessageAnswer::Yes});
    stage_command(COMMAND_DELETE, id);
    EXPECT_EQ(node_total, 0);
    EXPECT_EQ(undo_total, 1);
    EXPECT_EQ(scene_changed, 1);
    EXPECT_EQ(scene_page_hosts_total, 0);
}

TEST(DeleteCommand, of_an_object_can_be_undone_with_its_links) {
    const EditStage stage;
    const std::int32_t a = stage_add_object("a", -8.0f, 0.0f, 3);
    const std::int32_t b = stage_add_object("b", 8.0f, 0.0f);
    ASSERT_EQ(line_create_from_ids(a, b), 0);
    stage_command(COMMAND_DELETE, a);
    EXPECT_EQ(node_total, 1);
    EXPECT_EQ(line_total, 0);
    stage_command(COMMAND_UNDO, -1);
    ASSERT_EQ(node_total, 2);
    EXPECT_STREQ(node[0].name, "a");
    EXPECT_EQ(node[0].action_count, 3);
    EXPECT_STREQ(node[0].actions[2]->command, "command 3");
    EXPECT_EQ(line_total, 1);
    stage_command(COMMAND_REDO, -1);
    EXPECT_EQ(node_total, 1);
    EXPECT_STREQ(node[0].name, "b");
}

TEST(DeleteCommand, of_the_template_object_takes_the_template_along) {
    const EditStage stage;
    const std::int32_t id = stage_add_object("Template", 0.0f, 0.0f);
    template_object_load();
    ASSERT_EQ(template_object_check(), 0);
    stage_command(COMMAND_DELETE, id);
    EXPECT_NE(template_object_check(), 0);
}

TEST(DeleteCommand, of_nothing_only_marks_the_page_as_changed) {
    const EditStage stage;
    stage_command(COMMAND_DELETE, -1);
    EXPECT_EQ(scene_changed, 1);
    EXPECT_EQ(undo_total, 0);
}

TEST(DeleteCommand, of_a_label_leaves_the_number_of_objects_as_it_is) {
    const EditStage stage;
    stage_add_object("a", -8.0f, 0.0f);
    stage_command(COMMAND_DELETE, stage_add_label("a label", 8.0f, 0.0f));
    EXPECT_EQ(node_total, 1);
    EXPECT_EQ(scene_page_hosts_total, 1);
    EXPECT_EQ(undo_total, 1);
}

TEST(DeletePageObject, without_a_file_asks_no_question_about_it) {
    const EditStage stage;
    orvanel_options.confirm_page_file_delete = 1;
    const MessageScript script;
    stage_command(COMMAND_DELETE, stage_add_page("None", "", 0.0f, 0.0f));
    EXPECT_EQ(node_total, 0);
    EXPECT_TRUE(script.shown().empty());
    EXPECT_EQ(undo_total, 1);
}

TEST(DeletePageObject, whose_page_file_is_home_orvl_never_offers_to_delete_the_file) {
    for (const std::int32_t asks : {0, 1}) {
        EditStage stage;
        stage.folder.write("home.orvl", "home");
        orvanel_options.confirm_page_file_delete = asks;
        const std::string path = stage.folder.file("home.orvl");
        const MessageScript script({MessageAnswer::Yes, MessageAnswer::Yes, MessageAnswer::Yes});
        for (const char *name : {"home.orvl", "HOME.ORVL", path.c_str()}) {
            stage_command(COMMAND_DELETE, stage_add_page("Home", name, 0.0f, 0.0f));
            EXPECT_EQ(node_total, 0);
        }
        EXPECT_TRUE(script.shown().empty());
        EXPECT_EQ(stage.folder.read("home.orvl"), "home");
        EXPECT_EQ(undo_total, 3);
        EXPECT_EQ(scene_changed, 1);
    }
}

TEST(DeletePageObject, whose_file_is_the_home_page_of_another_folder_may_lose_it) {
    EditStage stage;
    ASSERT_EQ(folder_create(stage.folder.file("other").c_str()), 0);
    const std::string path = stage.folder.file("other\\home.orvl");
    ASSERT_EQ(file_replace_text(path.c_str(), "other"), 0);
    const MessageScript script;
    stage_command(COMMAND_DELETE, stage_add_page("Home", path.c_str(), 0.0f, 0.0f));
    EXPECT_FALSE(file_exists(path.c_str()));
}

TEST(DeletePageObject, file_cannot_be_undone_the_page_is_saved_and_the_history_cleared_at_once) {
    EditStage stage;
    orvanel_options.confirm_page_file_delete = 1;
    stage.folder.write("sub.orvl", "sub");
    stage_add_object("kept", -8.0f, 0.0f);
    const std::int32_t id = stage_add_page("Sub", "sub.orvl", 8.0f, 0.0f);
    const MessageScript script({MessageAnswer::Yes});
    stage_command(COMMAND_DELETE, id);
    ASSERT_EQ(script.shown().size(), 1u);
    EXPECT_EQ(script.shown()[0].text,
              "The Page has been deleted.\nDo you also want to delete the page file?");
    EXPECT_FALSE(file_exists(stage.folder.file("sub.orvl").c_str()));
    EXPECT_NE(undo_available(), 0);
    EXPECT_EQ(scene_changed, 0);
    EXPECT_NE(stage.page_text().find("kept"), std::string::npos);
    EXPECT_EQ(scene_page_links_total, 0);
}

TEST(DeletePageObject, keeps_its_file_and_the_history_when_the_question_is_answered_No) {
    EditStage stage;
    orvanel_options.confirm_page_file_delete = 1;
    stage.folder.write("sub.orvl", "sub");
    const std::int32_t id = stage_add_page("Sub", "sub.orvl", 0.0f, 0.0f);
    const MessageScript script({MessageAnswer::No});
    stage_command(COMMAND_DELETE, id);
    EXPECT_EQ(stage.folder.read("sub.orvl"), "sub");
    EXPECT_EQ(undo_total, 1);
    EXPECT_EQ(scene_changed, 1);
}

TEST(DeletePageObject, deletes_the_file_without_a_question_when_the_option_is_off) {
    EditStage stage;
    stage.folder.write("sub.orvl", "sub");
    const MessageScript script;
    stage_command(COMMAND_DELETE, stage_add_page("Sub", "sub.orvl", 0.0f, 0.0f));
    EXPECT_TRUE(script.shown().empty());
    EXPECT_FALSE(file_exists(stage.folder.file("sub.orvl").c_str()));
}

TEST(DeletePageObject, by_the_command_without_the_question_keeps_the_file) {
    EditStage stage;
    stage.folder.write("sub.orvl", "sub");
    const MessageScript script;
    stage_command(COMMAND_DELETE_KEEPING_FILE, stage_add_page("Sub", "sub.orvl", 0.0f, 0.0f));
    EXPECT_TRUE(script.shown().empty());
    EXPECT_EQ(node_total, 0);
    EXPECT_EQ(stage.folder.read("sub.orvl"), "sub");
}

TEST(DeletePageObject, says_so_when_the_file_cannot_be_removed_and_saves_the_page_all_the_same) {
    EditStage stage;
    stage.folder.write("sub.orvl", "sub");
    stage.folder.set_read_only("sub.orvl", true);
    const MessageScript script;
    stage_command(COMMAND_DELETE, stage_add_page("Sub", "sub.orvl", 0.0f, 0.0f));
    ASSERT_EQ(script.shown().size(), 1u);
    EXPECT_EQ(script.shown()[0].text, "Failed to remove page file");
    EXPECT_EQ(undo_total, 0);
    EXPECT_EQ(scene_changed, 0);
    stage.folder.set_read_only("sub.orvl", false);
}

// ---- clipboard

TEST(ClipboardCommands, cut_takes_the_object_off_the_page_and_paste_puts_it_under_the_mouse) {
    const EditStage stage;
    const std::int32_t id = stage_add_object("a", 0.0f, 0.0f, 2);
    stage_command(COMMAND_CUT, id);
    EXPECT_EQ(node_total, 0);
    EXPECT_EQ(clipboard_used, CLIPBOARD_CUT);
    EXPECT_EQ(scene_page_hosts_total, 0);
    EXPECT_EQ(undo_total, 1);
    EXPECT_EQ(scene_changed, 1);
    stage_point_at_place(7.0f, 5.0f);
    command_run(COMMAND_PASTE);
    ASSERT_EQ(node_total, 1);
    EXPECT_STREQ(node[0].name, "a");
    EXPECT_NEAR(node[0].x, 7.0f, 0.2f);
    EXPECT_NEAR(node[0].y, 5.0f, 0.2f);
    EXPECT_EQ(scene_page_hosts_total, 1);
    EXPECT_EQ(undo_total, 2);
}

TEST(ClipboardCommands, copy_takes_no_snapshot_and_changes_nothing) {
    const EditStage stage;
    const std::int32_t id = stage_add_object("a", 0.0f, 0.0f);
    stage_command(COMMAND_COPY, id);
    EXPECT_EQ(clipboard_used, CLIPBOARD_COPIED);
    EXPECT_STREQ(clipboard.name, "a");
    EXPECT_EQ(undo_total, 0);
    EXPECT_EQ(scene_changed, 0);
    EXPECT_EQ(node_total, 1);
}

TEST(ClipboardCommands, on_empty_floor_cut_and_copy_do_nothing) {
    const EditStage stage;
    stage_add_object("a", 5.0f, 5.0f);
    stage_command(COMMAND_CUT, -1);
    stage_command(COMMAND_COPY, -1);
    EXPECT_EQ(clipboard_used, CLIPBOARD_EMPTY);
    EXPECT_EQ(node_total, 1);
    EXPECT_EQ(undo_total, 0);
}

TEST(ClipboardCommands, paste_with_an_empty_clipboard_leaves_no_undo_entry) {
    const EditStage stage;
    stage_command(COMMAND_PASTE, -1);
    EXPECT_EQ(undo_total, 0);
    EXPECT_EQ(scene_changed, 0);
}

TEST(ClipboardCommands, on_a_full_page_paste_says_so_and_changes_nothing) {
    const EditStage stage;
    stage_command(COMMAND_COPY, stage_add_object("a", 0.0f, 0.0f));
    while (node_total < 255)
        stage_add_object("b", 50.0f, 50.0f);
    const MessageScript script;
    stage_command(COMMAND_PASTE, -1);
    ASSERT_EQ(script.shown().size(), 1u);
    EXPECT_EQ(script.shown()[0].text, "The maximum number of items has been reached on this page.");
    EXPECT_EQ(script.shown()[0].caption, "Orvanel");
    EXPECT_EQ(node_total, 255);
    EXPECT_EQ(undo_total, 0);
}

TEST(ClipboardCommands, paste_actions_replaces_the_actions_and_renews_the_template) {
    const EditStage stage;
    stage_command(COMMAND_COPY, stage_add_object("a", -8.0f, 0.0f, 3));
    const std::int32_t id = stage_add_object("Template", 8.0f, 0.0f, 1);
    stage_command(COMMAND_PASTE_ACTIONS, id);
    EXPECT_EQ(node[id].action_count, 3);
    EXPECT_EQ(undo_total, 1);
    EXPECT_EQ(scene_changed, 1);
    ASSERT_EQ(template_object_check(), 0);
    EXPECT_EQ(template_object.node.action_count, 3);
    stage_command(COMMAND_UNDO, -1);
    EXPECT_EQ(node[id].action_count, 1);
}

TEST(ClipboardCommands, cut_counts_objects_page_objects_and_labels_as_what_they_are) {
    EditStage stage;
    stage.folder.write("sub.orvl", "sub");
    const std::int32_t object = stage_add_object("a", -10.0f, 0.0f);
    const std::int32_t page = stage_add_page("p", "sub.orvl", 0.0f, 8.0f);
    const std::int32_t label = stage_add_label("a label", 10.0f, 0.0f);
    stage_command(COMMAND_CUT, label);
    EXPECT_EQ(scene_page_hosts_total, 1);
    EXPECT_EQ(scene_page_links_total, 1);
    stage_command(COMMAND_CUT, page);
    EXPECT_EQ(scene_page_hosts_total, 1);
    EXPECT_EQ(scene_page_links_total, 0);
    stage_command(COMMAND_CUT, object);
    EXPECT_EQ(scene_page_hosts_total, 0);
    EXPECT_EQ(node_total, 0);
}

TEST(ClipboardCommands, paste_fills_the_last_place_of_the_page_and_counts_as_a_change) {
    const EditStage stage;
    stage_command(COMMAND_COPY, stage_add_object("a", 0.0f, 0.0f));
    while (node_total < 254)
        stage_add_object("b", 50.0f, 50.0f);
    stage_point_at_place(12.0f, 8.0f);
    const MessageScript script;
    command_run(COMMAND_PASTE);
    EXPECT_TRUE(script.shown().empty());
    EXPECT_EQ(node_total, 255);
    EXPECT_EQ(scene_changed, 1);
    stage_command(COMMAND_UNDO, -1);
    EXPECT_EQ(node_total, 254);
}

TEST(ClipboardCommands, actions_are_pasted_into_objects_only) {
    const EditStage stage;
    stage_command(COMMAND_COPY, stage_add_object("a", -8.0f, 0.0f, 3));
    const std::int32_t page = stage_add_page("p", "sub.orvl", 8.0f, 0.0f);
    for (const std::int32_t target : {page, -1}) {
        stage_command(COMMAND_PASTE_ACTIONS, target);
        EXPECT_STREQ(node[page].actions[0]->command, "sub.orvl");
        EXPECT_EQ(undo_total, 0);
        EXPECT_EQ(scene_changed, 0);
    }
}

TEST(ClipboardCommands, pasting_as_many_actions_as_there_were_leaves_no_undo_entry) {
    const EditStage stage;
    stage_command(COMMAND_COPY, stage_add_object("a", -8.0f, 0.0f, 2));
    const std::int32_t id = stage_add_object("b", 8.0f, 0.0f, 2);
    text_copy(node[id].actions[1]->command, "of b");
    stage_command(COMMAND_PASTE_ACTIONS, id);
    EXPECT_STREQ(node[id].actions[1]->command, "command 2");
    EXPECT_EQ(undo_total, 0);
    EXPECT_EQ(scene_changed, 1);
}

TEST(ClipboardCommands, pasted_actions_leave_the_template_alone_unless_its_object_took_them) {
    const EditStage stage;
    const std::int32_t id = stage_add_object("Template", -8.0f, 0.0f, 1);
    template_object_load();
    stage_command(COMMAND_COPY, id);
    node[id].description[0] = 'x'; // known only to the object
    stage_command(COMMAND_PASTE_ACTIONS, stage_add_object("b", 8.0f, 0.0f));
    EXPECT_STREQ(template_object.node.description, "");
}

// ---- the way forward

TEST(ChangingCommands, forget_what_could_be_redone) {
    for (const std::int32_t command :
         {COMMAND_DELETE, COMMAND_CUT, COMMAND_REMOVE_LINKS, COMMAND_PASTE, COMMAND_PASTE_ACTIONS,
          COMMAND_ALIGN_WITH_GRID}) {
        for (const bool page : {false, true}) {
            const EditStage stage;
            const std::int32_t id = page ? stage_add_page("p", "home.orvl", 8.0f, 3.0f)
                                         : stage_add_object("a", 8.0f, 3.0f);
            stage_command(COMMAND_COPY, stage_add_object("b", -8.0f, 0.0f, 2));
            redo_push();
            stage_command(command, command == COMMAND_PASTE ? -1 : id);
            const bool changes = !page || command != COMMAND_PASTE_ACTIONS;
            EXPECT_EQ(undo_total, changes ? 1 : 0) << command;
            EXPECT_EQ(redo_total, changes ? 0 : 1) << command;
        }
    }
}

// ---- links and alignment

TEST(LinkCommands, remove_links_takes_all_of_the_object_s_links_and_can_be_undone) {
    const EditStage stage;
    const std::int32_t a = stage_add_object("a", -10.0f, 0.0f);
    const std::int32_t b = stage_add_object("b", 0.0f, 8.0f);
    const std::int32_t c = stage_add_object("c", 10.0f, 0.0f);
    line_create_from_ids(a, b);
    line_create_from_ids(c, a);
    line_create_from_ids(b, c);
    stage_command(COMMAND_REMOVE_LINKS, a);
    EXPECT_EQ(line_total, 1);
    EXPECT_EQ(scene_changed, 1);
    stage_command(COMMAND_UNDO, -1);
    EXPECT_EQ(line_total, 3);
}

TEST(LinkCommands, remove_links_of_nothing_only_marks_the_page_as_changed) {
    const EditStage stage;
    stage_command(COMMAND_REMOVE_LINKS, -1);
    EXPECT_EQ(scene_changed, 1);
    EXPECT_EQ(undo_total, 0);
}

TEST(ChoosingCommands, begin_only_with_an_object_under_the_remembered_position) {
    const EditStage stage;
    for (const std::int32_t command : {COMMAND_DRAW_LINK, COMMAND_ALIGN_WITH_OBJECT}) {
        stage_command(command, -1);
        EXPECT_EQ(app_line_draw_mode, 0);
        EXPECT_EQ(app_align_mode, 0);
    }
}

TEST(ChoosingCommands, the_other_choice_takes_the_place_of_the_first) {
    const EditStage stage;
    const std::int32_t id = stage_add_object("a", 0.0f, 0.0f);
    stage_command(COMMAND_DRAW_LINK, id);
    stage_command(COMMAND_ALIGN_WITH_OBJECT, id);
    EXPECT_EQ(app_line_draw_mode, 0);
    EXPECT_EQ(app_align_mode, 1);
    EXPECT_EQ(app_align_from_node, id);
    stage_command(COMMAND_DRAW_LINK, id);
    EXPECT_EQ(app_line_draw_mode, 1);
    EXPECT_EQ(app_align_mode, 0);
}

TEST(GridCommand, on_empty_floor_does_nothing) {
    const EditStage stage;
    stage_add_object("a", 8.0f, 3.0f);
    stage_command(COMMAND_ALIGN_WITH_GRID, -1);
    EXPECT_EQ(undo_total, 0);
    EXPECT_EQ(scene_changed, 0);
}

TEST(GridCommand, moves_the_object_to_the_grid_and_leaves_no_entry_when_it_stood_there) {
    const EditStage stage; // without good graphics the grid is 20 wide
    const std::int32_t id = stage_add_object("a", 8.0f, 3.0f);
    stage_command(COMMAND_ALIGN_WITH_GRID, id);
    EXPECT_NEAR(node[id].x, 0.0f, 1e-4f);
    EXPECT_NEAR(node[id].y, 0.0f, 1e-4f);
    EXPECT_EQ(undo_total, 1);
    EXPECT_EQ(scene_changed, 1);
    node[id].x = node[id].y = 0.0f;
    stage_command(COMMAND_ALIGN_WITH_GRID, id);
    EXPECT_EQ(undo_total, 1);
}

// ---- actions

TEST(ActionCommands, without_an_object_under_the_remembered_position_nothing_runs) {
    const EditStage stage;
    const MessageScript script;
    stage_command(COMMAND_ACTION_FIRST, -1);
    stage_command(COMMAND_ACTION_FIRST + 60000, -1);
    EXPECT_TRUE(script.shown().empty());
}

TEST(ActionCommands, end_with_the_frame_clock_set_anew_and_a_picture_asked_for) {
    const EditStage stage;
    manual_clock_step(0);
    for (const std::int32_t command : {COMMAND_COPY, COMMAND_DELETE, COMMAND_ACTION_FIRST}) {
        stage_point_at_place(-18.0f, -12.0f);
        next_frame_timer = timer_get_time_ms(&frame_timer) - 10'000;
        scene_redraw_flag = 0;
        command_run(command);
        EXPECT_FALSE(timer_is_before(next_frame_timer, timer_get_time_ms(&frame_timer)));
        EXPECT_EQ(scene_redraw_flag, 1);
    }
}

#ifndef _WIN32 // only the other side knows icons, buttons and pictures

TEST(CommandMessages, have_the_icons_and_buttons_of_their_kind) {
    EditStage stage;
    orvanel_options.confirm_object_delete = orvanel_options.confirm_page_file_delete = 1;
    stage.folder.write("sub.orvl", "sub");
    const MessageScript script({MessageAnswer::Yes, MessageAnswer::Yes});
    stage_command(COMMAND_DELETE, stage_add_page("Sub", "sub.orvl", 0.0f, 0.0f));
    ASSERT_EQ(recorder.messages.size(), 2u);
    for (const RecordedMessage &question : recorder.messages)
        EXPECT_EQ(question.icon, MessageIcon::Question);
    EXPECT_EQ(recorder.messages[0].buttons, MessageButtons::YesNo);
    EXPECT_EQ(recorder.messages[1].buttons, MessageButtons::YesNoCareful); // the file is gone then
    while (node_total < 255)
        stage_add_object("b", 50.0f, 50.0f);
    clipboard_fill(0, CLIPBOARD_COPIED);
    command_run(COMMAND_PASTE);
    ASSERT_EQ(recorder.messages.size(), 3u);
    EXPECT_EQ(recorder.messages[2].icon, MessageIcon::Exclamation);
}

TEST(CommandPictures, objects_and_page_objects_fly_away_when_they_are_deleted_or_cut) {
    for (const std::int32_t command : {COMMAND_DELETE, COMMAND_CUT}) {
        for (const bool page : {false, true}) {
            const EditStage stage;
            const std::int32_t id = page ? stage_add_page("p", "home.orvl", 0.0f, 0.0f)
                                         : stage_add_object("a", 0.0f, 0.0f);
            stage_point_at(id);
            orvanel_options.good_graphics_card = orvanel_options.object_transitions = 1;
            const std::int32_t before = recorder.swaps;
            command_run(command);
            EXPECT_GT(recorder.swaps, before + 5) << command << page;
        }
    }
}

TEST(CommandPictures, a_deleted_page_object_is_gone_from_the_screen_before_the_question) {
    const EditStage stage;
    stage_point_at(stage_add_page("p", "home.orvl", 0.0f, 0.0f));
    const std::int32_t before = recorder.swaps;
    command_run(COMMAND_DELETE);
    EXPECT_GT(recorder.swaps, before);
}
#endif
