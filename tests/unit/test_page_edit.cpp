#include "editing/page_edit.h"

#include "app/input.h"
#include "editing/undo.h"
#include "platform/locations.h"
#include "platform/text.h"
#include "scene/interaction.h"
#include "scene/scene.h"
#include "scene/scene_page.h"
#include "tests/support/edit_stage.h"
#include "tests/support/message_script.h"

#include <gtest/gtest.h>

#ifndef _WIN32
#include "platform/posix/recorder.h"
#endif

// A page that cannot be written: its folder is gone.
static void lose_folder() {
    text_append(page_dir_location, "gone\\");
}

TEST(PageEdit, beginning_and_ending_empty_the_history) {
    const EditStage stage;
    undo_push();
    page_edit_begin();
    EXPECT_EQ(undo_total, 0);
    undo_push();
    EXPECT_EQ(page_edit_end(), 0);
    EXPECT_EQ(undo_total, 0);
    EXPECT_EQ(app_mode, APP_VIEW);
}

TEST(PageEdit, a_page_that_cannot_be_written_stays_in_view_mode_with_a_message) {
    const EditStage stage;
    page_edit_cancel();
    lose_folder();
    const MessageScript script;
    page_edit_begin();
    EXPECT_EQ(app_mode, APP_VIEW);
    ASSERT_EQ(script.shown().size(), 1u);
    EXPECT_EQ(script.shown()[0].text, "This page is read-only and cannot be edited.");
    EXPECT_EQ(script.shown()[0].caption, "Orvanel");
}

TEST(PageEdit, ending_an_unchanged_page_does_not_write_it) {
    EditStage stage;
    stage.folder.write("page.orvl", "as it was");
    EXPECT_EQ(page_edit_end(), 0);
    EXPECT_EQ(stage.folder.read("page.orvl"), "as it was");
}

TEST(PageEdit, an_object_that_still_glides_stays_where_it_was_saved) {
    const EditStage stage;
    const std::int32_t id = stage_add_object("a", 3.0f, 4.0f);
    node[id].inertia_dx = 1.0f;
    node[id].inertia_frames = 30;
    scene_changed = 1;
    EXPECT_EQ(page_edit_end(), 0);
    scene_process_frame();
    EXPECT_EQ(node[id].x, 3.0f);
    EXPECT_NE(stage.page_text().find("<x_position>3.00</x_position>"), std::string::npos);
}

TEST(PageEdit, a_page_is_written_only_when_it_has_changed_and_then_counts_as_unchanged) {
    EditStage stage;
    stage.folder.write("page.orvl", "as it was");
    EXPECT_EQ(page_edit_save(), 0);
    EXPECT_EQ(stage.folder.read("page.orvl"), "as it was");
    scene_changed = 1;
    EXPECT_EQ(page_edit_save(), 0);
    EXPECT_EQ(scene_changed, 0);
    EXPECT_NE(stage.page_text().find("<page>"), std::string::npos);
    EXPECT_EQ(app_mode, APP_EDIT);
}

TEST(PageEdit, cancelling_neither_saves_nor_stays_changed) {
    EditStage stage;
    stage.folder.write("page.orvl", "as it was");
    scene_changed = 1;
    app_align_mode = app_line_draw_mode = 1;
    page_edit_cancel();
    EXPECT_EQ(stage.folder.read("page.orvl"), "as it was");
    EXPECT_EQ(scene_changed, 0);
    EXPECT_EQ(app_mode, APP_VIEW);
    EXPECT_EQ(app_align_mode, 0);
    EXPECT_EQ(app_line_draw_mode, 0);
}

TEST(PageEdit, a_page_that_cannot_be_saved_stays_in_edit_mode_with_all_its_changes) {
    const EditStage stage;
    undo_push();
    stage_add_object("a", 0.0f, 0.0f);
    scene_changed = 1;
    lose_folder();
    const MessageScript script({MessageAnswer::Ok, MessageAnswer::Yes, MessageAnswer::Ok});
    EXPECT_EQ(page_edit_end(), 1);
    EXPECT_EQ(script.shown()[0].text, "Failed to save page file.");
    EXPECT_FALSE(page_edit_leave());
    EXPECT_EQ(app_mode, APP_EDIT);
    EXPECT_EQ(scene_changed, 1);
    EXPECT_EQ(node_total, 1);
    EXPECT_EQ(undo_total, 1);
    scene_changed = 0;
}

TEST(PageEdit, Cancel_at_the_question_leaves_page_mode_and_history_as_they_were) {
    const EditStage stage;
    scene_stack_push();
    undo_push();
    scene_changed = 1;
    const MessageScript script(
        {MessageAnswer::Cancel, MessageAnswer::Cancel, MessageAnswer::Cancel});
    scene_page_back();
    scene_page_back_home();
    input_key_down(KEY_BACKSPACE);
    ASSERT_EQ(script.shown().size(), 3u);
    EXPECT_EQ(script.shown()[0].text, "Save changes?");
    EXPECT_EQ(script.shown()[0].caption, "Question");
    EXPECT_EQ(app_mode, APP_EDIT);
    EXPECT_EQ(scene_changed, 1);
    EXPECT_EQ(undo_total, 1);
    EXPECT_EQ(scene_stack_depth, 1);
}

TEST(PageEdit, going_back_ends_the_history_so_that_no_page_gets_the_objects_of_another) {
    const EditStage stage;
    scene_stack_push();
    undo_push();
    stage_add_object("a", 0.0f, 0.0f);
    scene_changed = 1;
    const MessageScript script({MessageAnswer::Yes});
    scene_page_back();
    EXPECT_EQ(app_mode, APP_VIEW);
    EXPECT_EQ(undo_total, 0);
    EXPECT_EQ(scene_changed, 0);
    EXPECT_NE(stage.page_text().find("<name>a</name>"), std::string::npos);
}

#ifndef _WIN32 // only the other side knows icons and buttons
TEST(PageEdit, messages_have_the_icons_and_buttons_of_their_kind) {
    const EditStage stage;
    scene_changed = 1;
    lose_folder();
    const MessageScript script({MessageAnswer::Yes, MessageAnswer::Ok});
    page_edit_settle_changes();
    page_edit_cancel();
    page_edit_begin();
    ASSERT_EQ(recorder.messages.size(), 3u);
    EXPECT_EQ(recorder.messages[0].icon, MessageIcon::Question);
    EXPECT_EQ(recorder.messages[0].buttons, MessageButtons::YesNoCancel);
    EXPECT_EQ(recorder.messages[1].icon, MessageIcon::Exclamation);
    EXPECT_EQ(recorder.messages[1].caption, "Orvanel");
    EXPECT_EQ(recorder.messages[2].icon, MessageIcon::Exclamation);
}
#endif

TEST(PageEdit, beginning_ending_and_cancelling_draw_the_floor_anew) {
    const EditStage stage;
    for (void (*change)() :
         {+[] { page_edit_begin(); }, +[] { page_edit_end(); }, +[] { page_edit_cancel(); }}) {
        stage_draw();
        ASSERT_EQ(scene_floor.list_valid, 1);
        change();
        EXPECT_EQ(scene_floor.list_valid, 0);
    }
}

TEST(PageEdit, No_at_the_question_leaves_the_page_without_saving_and_without_a_history) {
    const EditStage stage;
    const std::string before = stage.page_text();
    scene_stack_push();
    undo_push();
    stage_add_object("a", 0.0f, 0.0f);
    scene_changed = 1;
    const MessageScript script({MessageAnswer::No});
    scene_page_back();
    EXPECT_EQ(stage.page_text(), before);
    EXPECT_EQ(node_total, 0);
    EXPECT_EQ(scene_changed, 0);
    EXPECT_EQ(undo_total, 0);
    EXPECT_EQ(app_mode, APP_VIEW);
}

// ---- pages of older releases

static const char *sub_page_file(std::int32_t id) {
    return node[id].actions[0]->command;
}

TEST(SubPageNames, take_the_new_extension_when_only_that_file_is_there) {
    EditStage stage;
    stage.folder.write("new.orvl", "");
    const std::int32_t id = stage_add_page("New", "new.xml", 0.0f, 0.0f);
    page_edit_begin();
    EXPECT_STREQ(sub_page_file(id), "new.orvl");
    EXPECT_EQ(scene_changed, 1);
}

TEST(SubPageNames, keep_the_old_extension_when_that_file_is_there) {
    EditStage stage;
    stage.folder.write("old.xml", "");
    stage.folder.write("old.orvl", "");
    const std::int32_t id = stage_add_page("Old", "old.xml", 0.0f, 0.0f);
    page_edit_begin();
    EXPECT_STREQ(sub_page_file(id), "old.xml");
    EXPECT_EQ(scene_changed, 0);
}

TEST(SubPageNames, of_no_file_at_all_stay_but_count_as_changed) {
    const EditStage stage;
    const std::int32_t id = stage_add_page("None", "none.xml", 0.0f, 0.0f);
    page_edit_begin();
    EXPECT_STREQ(sub_page_file(id), "none.xml");
    EXPECT_EQ(scene_changed, 1);
}

TEST(SubPageNames, with_a_folder_are_looked_for_there) {
    EditStage stage;
    const std::string path = stage.folder.file("sub.xml");
    folder_create(stage.folder.file("elsewhere").c_str());
    stage.folder.write("sub.orvl", "");
    text_append(page_dir_location, "elsewhere\\");
    const std::int32_t id = stage_add_page("Sub", path.c_str(), 0.0f, 0.0f);
    xml_save_page(scene_page_file_name);
    page_edit_begin();
    EXPECT_EQ(sub_page_file(id), stage.folder.file("sub.orvl"));
}

TEST(SubPageNames, without_an_old_extension_are_left_alone) {
    const EditStage stage;
    const std::int32_t id = stage_add_page("Other", "other.orvl", 0.0f, 0.0f);
    page_edit_begin();
    EXPECT_STREQ(sub_page_file(id), "other.orvl");
    EXPECT_EQ(scene_changed, 0);
}
