#include "dialogs/rules/dialog_update_rules.h"
#include "platform/text.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

static constexpr char SITE[] = "www.orvanel.example";

// The view while the download runs.
static UpdateView running() {
    UpdateView view = dialog_update_offer("1.5");
    dialog_update_connect(&view, SITE);
    return view;
}

static bool operator==(const UpdateView &a, const UpdateView &b) {
    return std::string(a.text) == b.text && a.can_download == b.can_download &&
           a.can_cancel == b.can_cancel && a.shows_progress == b.shows_progress &&
           a.progress == b.progress;
}

TEST(DialogUpdateRules, the_offer_names_the_version_and_hides_the_bar) {
    const UpdateView view = dialog_update_offer("1.4.10");
    EXPECT_STREQ(view.text, "A new version of Orvanel (1.4.10) is available.  Would you like to "
                            "download it now?");
    EXPECT_TRUE(view.can_download);
    EXPECT_TRUE(view.can_cancel);
    EXPECT_FALSE(view.shows_progress);
}

TEST(DialogUpdateRules, the_longest_version_is_shown_whole_and_no_version_is_a_format) {
    const std::string longest(24, 'W');
    EXPECT_STREQ(dialog_update_offer(longest.c_str()).text,
                 ("A new version of Orvanel (" + longest +
                  ") is available.  Would you like to download it now?")
                     .c_str());
    EXPECT_NE(std::strstr(dialog_update_offer("%s%n").text, "(%s%n)"), nullptr);
}

TEST(DialogUpdateRules, a_download_that_starts_shows_an_empty_bar_and_disables_the_button) {
    const UpdateView view = running();
    EXPECT_STREQ(view.text, "Connecting to www.orvanel.example...");
    EXPECT_FALSE(view.can_download);
    EXPECT_TRUE(view.can_cancel);
    EXPECT_TRUE(view.shows_progress);
    EXPECT_EQ(view.progress, 0);
}

TEST(DialogUpdateRules, the_longest_site_is_shown_whole_and_a_longer_one_cut) {
    const std::string longest(UPDATE_SITE_LENGTH, 'w');
    UpdateView view = running();
    dialog_update_step(&view, longest.c_str(), 0, 0);
    EXPECT_EQ(view.text, "Downloading the latest version from " + longest + "...");
    dialog_update_step(&view, (longest + "x").c_str(), 0, 0);
    EXPECT_EQ(view.text, "Downloading the latest version from " + longest + "...");
}

TEST(DialogUpdateRules, step_0_says_that_it_is_downloading) {
    UpdateView view = running();
    UpdateView expected = view;
    EXPECT_EQ(dialog_update_step(&view, SITE, 0, 0), UpdateNext::Wait);
    text_copy(expected.text, "Downloading the latest version from www.orvanel.example...");
    EXPECT_TRUE(view == expected) << view.text;
}

static void expect_retry(std::int32_t step, const char *text) {
    UpdateView view = running();
    EXPECT_EQ(dialog_update_step(&view, SITE, step, 0), UpdateNext::Wait);
    EXPECT_STREQ(view.text, text);
    EXPECT_FALSE(view.shows_progress);
    EXPECT_TRUE(view.can_download);
    EXPECT_TRUE(view.can_cancel);
}

TEST(DialogUpdateRules, step_1_tells_of_a_missing_file_and_lets_the_user_try_again) {
    expect_retry(1, "Failed to open temporary file.");
}

TEST(DialogUpdateRules, step_2_tells_of_a_failed_request_and_lets_the_user_try_again) {
    expect_retry(2, "Failed to connect to www.orvanel.example.");
}

TEST(DialogUpdateRules, step_3_moves_the_bar_to_its_value_and_nothing_else) {
    for (const std::int32_t value : {1, 19, 20}) {
        UpdateView view = running();
        UpdateView expected = view;
        EXPECT_EQ(dialog_update_step(&view, SITE, 3, value), UpdateNext::Wait);
        expected.progress = value;
        EXPECT_TRUE(view == expected) << value;
    }
}

TEST(DialogUpdateRules, more_chunks_than_the_bar_has_fill_it) {
    UpdateView view = running();
    dialog_update_step(&view, SITE, 3, 21); // what the division left over
    EXPECT_EQ(view.progress, UPDATE_PROGRESS_RANGE);
    dialog_update_step(&view, SITE, 3, -1);
    EXPECT_EQ(view.progress, 0);
}

TEST(DialogUpdateRules, step_4_leads_to_the_download_page) {
    UpdateView view = running();
    const UpdateView expected = view;
    EXPECT_EQ(dialog_update_step(&view, SITE, 4, 0), UpdateNext::DownloadPage);
    EXPECT_TRUE(view == expected);
}

TEST(DialogUpdateRules, step_5_starts_the_installer_and_leaves_nothing_to_press) {
    UpdateView view = running();
    EXPECT_EQ(dialog_update_step(&view, SITE, 5, 0), UpdateNext::StartInstaller);
    EXPECT_STREQ(view.text, "Download completed.  Starting the installer...");
    EXPECT_FALSE(view.can_download);
    EXPECT_FALSE(view.can_cancel);
    EXPECT_TRUE(view.shows_progress);
}

TEST(DialogUpdateRules, steps_that_nobody_knows_change_nothing) {
    for (const std::int32_t step : {6, 7, 1'000'000, -1, INT32_MIN, INT32_MAX}) {
        UpdateView view = running();
        const UpdateView expected = view;
        EXPECT_EQ(dialog_update_step(&view, SITE, step, 3), UpdateNext::Wait);
        EXPECT_TRUE(view == expected) << step;
    }
}

TEST(DialogUpdateRules, a_second_try_begins_with_an_empty_bar) {
    UpdateView view = running();
    dialog_update_step(&view, SITE, 3, 7);
    dialog_update_step(&view, SITE, 2, 0);
    dialog_update_connect(&view, SITE);
    EXPECT_TRUE(view == running());
}
