// The main loop and the offer of a new version; a recorder stands in for the dialog.
#include "app/main_loop.h"

#include "dialogs/dialogs.h"
#include "page/node.h"
#include "page/options.h"
#include "platform/clock.h"
#include "platform/locations.h"
#include "platform/posix/recorder.h"
#include "platform/text.h"
#include "scene/frame_clock.h"
#include "scene/interaction.h"
#include "scene/scene.h"
#include "scene/scene_page.h"
#include "tests/support/edit_stage.h"
#include "tests/support/manual_clock.h"
#include "tests/support/message_script.h"
#include "tests/support/user_options.h"
#include "update/auto_update.h"

#include <gtest/gtest.h>

static constexpr std::uint32_t DAY = 86'400;    // seconds
static constexpr std::uint32_t START = 864'000; // milliseconds; any time that is not 0
static constexpr std::int32_t NEWER = AUTO_UPDATE_THIS_VERSION + 1;

static std::int32_t dialog_lasts(RecordedDialog which) {
    EXPECT_EQ(which, RecordedDialog::Update);
    manual_clock_advance(60'000);
    return DIALOG_CANCEL;
}

static std::int32_t quit(RecordedDialog which) {
    EXPECT_EQ(which, RecordedDialog::Update);
    return DIALOG_UPDATE_QUIT;
}

// A page in view mode. The check has been started but is never heard of: what it finds is told by
// found().
struct UpdateStage {
    EditStage stage;
    UserOptionsFile options;

    UpdateStage() {
        manual_clock_high_resolution(false);
        manual_clock_advance(START);
        timer_init(&frame_timer);
        reset_frame_timer();
        recorder.dialogs.clear();
        recorder.dialog_user = nullptr;
        run = 1;
        mouse.flags = 0;
        auto_update_waits.before_check = 3'600'000;
        start();
    }
    ~UpdateStage() {
        auto_update_stop();
        new_version = 0;
        run = 1;
    }
    static void start() {
        auto_update_stop();
        auto_update_start();
    }
    static void found(std::int32_t version) {
        text_copy(new_version_string, "1.4.2");
        new_version = version;
    }
    // The loop without messages, as app/orvanel.cpp runs it.
    static void run_loop(std::uint32_t milliseconds) {
        const std::uint32_t end = manual_clock_now() + milliseconds;
        while (run == 1 && manual_clock_now() < end) {
            main_loop_pass();
            manual_clock_advance(main_loop_spare_time());
        }
    }
};

TEST(MainLoopUpdate, nothing_is_offered_while_the_check_runs) {
    const UpdateStage stage;
    stage.run_loop(1000);
    EXPECT_TRUE(recorder.dialogs.empty());
}

TEST(MainLoopUpdate, a_new_version_is_offered_although_every_pass_has_a_frame_to_run) {
    const UpdateStage stage;
    stage.run_loop(100);
    stage.found(NEWER);
    stage.run_loop(30);
    ASSERT_EQ(recorder.dialogs.size(), 1u);
    EXPECT_EQ(recorder.dialogs[0], RecordedDialog::Update);
    EXPECT_EQ(run, 1);
}

TEST(MainLoopUpdate, a_pass_with_nothing_due_looks_as_well) {
    const UpdateStage stage;
    stage.found(NEWER);
    main_loop_pass();
    EXPECT_EQ(recorder.dialogs.size(), 1u);
}

TEST(MainLoopUpdate, the_offer_is_made_once_a_run) {
    const UpdateStage stage;
    stage.found(NEWER);
    stage.run_loop(2000);
    orvanel_options.check_for_updates_next = 0;
    stage.run_loop(2000);
    EXPECT_EQ(recorder.dialogs.size(), 1u);
}

TEST(MainLoopUpdate, the_same_version_and_an_older_one_are_not_offered) {
    for (const std::int32_t version : {AUTO_UPDATE_THIS_VERSION, AUTO_UPDATE_THIS_VERSION - 1}) {
        const UpdateStage stage;
        stage.found(version);
        stage.run_loop(100);
        stage.found(NEWER); // 2 stops for this run
        stage.run_loop(100);
        EXPECT_TRUE(recorder.dialogs.empty()) << version;
    }
}

TEST(MainLoopUpdate, nothing_is_offered_with_the_check_switched_off_even_while_it_runs) {
    const UpdateStage stage;
    orvanel_options.check_for_updates = 0;
    stage.found(NEWER);
    stage.run_loop(200);
    EXPECT_TRUE(recorder.dialogs.empty());
}

TEST(
    MainLoopUpdate,
    cancelling_the_dialog_sets_check_for_updates_next_one_day_ahead_and_a_restart_within_that_day_shows_no_offer) {
    const UpdateStage stage;
    const std::uint32_t before = clock_unix_seconds();
    stage.found(NEWER);
    stage.run_loop(200);
    EXPECT_EQ(recorder.dialogs.size(), 1u);
    EXPECT_GE(orvanel_options.check_for_updates_next, before + DAY);
    EXPECT_LE(orvanel_options.check_for_updates_next, clock_unix_seconds() + DAY);
    const std::string key = "<check_for_updates_next>" +
                            std::to_string(orvanel_options.check_for_updates_next) +
                            "</check_for_updates_next>";
    EXPECT_NE(stage.options.text().find(key), std::string::npos) << stage.options.text();

    stage.start(); // the next run of the program
    stage.found(NEWER);
    stage.run_loop(200);
    EXPECT_EQ(recorder.dialogs.size(), 1u);
}

TEST(MainLoopUpdate, a_day_after_it_was_declined_the_version_is_offered_again) {
    const UpdateStage stage;
    stage.found(NEWER);
    stage.run_loop(200);
    manual_clock_advance(DAY * 1000);
    manual_clock_advance(2000);
    reset_frame_timer();
    stage.start();
    stage.found(NEWER);
    stage.run_loop(200);
    EXPECT_EQ(recorder.dialogs.size(), 2u);
}

TEST(MainLoopUpdate, nothing_is_offered_while_something_is_dragged) {
    const UpdateStage stage;
    mouse.flags |= MOUSE_LEFT;
    stage.found(NEWER);
    stage.run_loop(500);
    EXPECT_TRUE(recorder.dialogs.empty());
    mouse.flags &= ~MOUSE_LEFT;
    stage.run_loop(30);
    EXPECT_EQ(recorder.dialogs.size(), 1u);
}

TEST(MainLoopUpdate, time_lost_in_the_dialog_is_not_caught_up) {
    const UpdateStage stage;
    scene_floor.inertia_frames = 1'000'000; // counts the frames
    recorder.dialog_user = dialog_lasts;
    stage.found(NEWER);
    main_loop_pass();
    ASSERT_EQ(recorder.dialogs.size(), 1u);
    EXPECT_EQ(main_loop_spare_time(), FRAME_MILLISECONDS + 1);
    EXPECT_EQ(scene_floor.inertia_frames, 1'000'000);
}

TEST(MainLoopUpdate, an_update_that_is_being_installed_ends_the_program_and_postpones_nothing) {
    const UpdateStage stage;
    recorder.dialog_user = quit;
    stage.found(NEWER);
    stage.run_loop(200);
    EXPECT_EQ(run, 0);
    EXPECT_EQ(orvanel_options.check_for_updates_next, 0u);
    EXPECT_EQ(stage.options.text(), "");
    EXPECT_FALSE(recorder.quit); // the loop is left without a quit message, with exit code 0
}

TEST(MainLoopUpdate, changes_of_the_page_are_saved_before_the_program_ends_for_an_update) {
    const UpdateStage stage;
    recorder.dialog_user = quit;
    stage_add_object("changed", 0.0f, 0.0f);
    scene_changed = 1;
    const MessageScript script;
    stage.found(NEWER);
    stage.run_loop(200);
    EXPECT_EQ(run, 0);
    EXPECT_NE(stage.stage.page_text().find("<name>changed</name>"), std::string::npos);
    EXPECT_TRUE(script.shown().empty());
}

TEST(MainLoopUpdate, a_page_that_cannot_be_saved_keeps_the_program_running) {
    const UpdateStage stage;
    recorder.dialog_user = quit;
    stage_add_object("changed", 0.0f, 0.0f);
    scene_changed = 1;
    text_append(page_dir_location, "gone\\");
    const MessageScript script;
    stage.found(NEWER);
    stage.run_loop(500);
    EXPECT_EQ(run, 1);
    EXPECT_EQ(recorder.dialogs.size(), 1u);
    ASSERT_EQ(script.shown().size(), 1u);
    EXPECT_EQ(script.shown()[0].text, "Failed to save page file.");
    EXPECT_EQ(scene_changed, 1);
    scene_changed = 0;
}
