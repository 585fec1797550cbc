#include "dialogs/rules/dialog_options_folder.h"

#include "platform/locations.h"
#include "platform/text.h"
#include "tests/support/message_script.h"
#include "tests/support/test_folder.h"

#include <gtest/gtest.h>

#ifndef _WIN32
#include "platform/posix/recorder.h"
#include "tests/support/full_disk.h"
#endif

static int shown; // times that the folder's edit was brought before the user

static void show_folder() {
    shown++;
}

// Pages in "old", an empty folder "new".
struct OptionsFolderTest : testing::Test {
    TestFolder folder;
    std::string old_folder = std::string(folder.path) + "old\\";
    std::string new_folder = std::string(folder.path) + "new\\";
    char settled[PATH_SIZE] = "";

    OptionsFolderTest() {
        folder_create((std::string(folder.path) + "old").c_str());
        folder_create((std::string(folder.path) + "new").c_str());
        folder.write("old\\home.orvl", "home page");
        folder.write("old\\second.orvl", "second page");
        folder.write("old\\third.xml", "third page");
        folder.write("old\\notes.txt", "no page");
        text_copy(page_dir_location, old_folder.c_str());
        shown = 0;
    }
    ~OptionsFolderTest() override {
        page_dir_location[0] = '\0';
    }
    OptionsFolder settle(const std::string &text) {
        return dialog_options_settle_folder(text.c_str(), settled, show_folder);
    }
};

static void expect_message(const MessageScript &script, const char *text) {
    ASSERT_EQ(script.shown().size(), 1u);
    EXPECT_EQ(script.shown()[0].text, text);
    EXPECT_EQ(script.shown()[0].caption, "Orvanel");
}

static void expect_icon([[maybe_unused]] MessageIcon icon,
                        [[maybe_unused]] MessageButtons buttons = MessageButtons::Ok) {
#ifndef _WIN32
    ASSERT_FALSE(recorder.messages.empty());
    EXPECT_EQ(recorder.messages.back().icon, icon);
    EXPECT_EQ(recorder.messages.back().buttons, buttons);
#endif
}

TEST_F(OptionsFolderTest, The_current_folder_is_no_change) {
    MessageScript script;
    EXPECT_EQ(settle(old_folder), OptionsFolder::Same);
    EXPECT_TRUE(script.shown().empty());
}

TEST_F(OptionsFolderTest,
       Typing_the_current_page_folder_without_its_trailing_backslash_counts_as_no_change) {
    MessageScript script;
    EXPECT_EQ(settle(old_folder.substr(0, old_folder.size() - 1)), OptionsFolder::Same);
    EXPECT_EQ(settled, old_folder);
    EXPECT_TRUE(script.shown().empty());
}

TEST_F(OptionsFolderTest, A_current_folder_that_is_missing_is_no_change_either) {
    text_copy(page_dir_location, "Q:\\not there\\");
    MessageScript script;
    EXPECT_EQ(settle("Q:\\not there"), OptionsFolder::Same);
    EXPECT_TRUE(script.shown().empty());
}

TEST_F(OptionsFolderTest, A_folder_that_does_not_exist_is_shown_and_refused) {
    MessageScript script;
    EXPECT_EQ(settle(std::string(folder.path) + "missing"), OptionsFolder::Refused);
    EXPECT_EQ(shown, 1);
    expect_message(script, "The specified Page file folder is invalid.");
    expect_icon(MessageIcon::Exclamation);
}

TEST_F(OptionsFolderTest, A_file_is_no_folder) {
    MessageScript script;
    EXPECT_EQ(settle(std::string(folder.path) + "old\\notes.txt"), OptionsFolder::Refused);
    expect_message(script, "The specified Page file folder is invalid.");
}

TEST_F(OptionsFolderTest, An_empty_text_is_refused) {
    MessageScript script;
    EXPECT_EQ(settle(""), OptionsFolder::Refused);
    EXPECT_EQ(shown, 1);
    expect_message(script, "The specified Page file folder is invalid.");
}

TEST_F(OptionsFolderTest, A_text_that_leaves_no_room_for_the_backslash_is_refused) {
    MessageScript script;
    std::string text = folder.path;
    while (text.size() < PATH_SIZE - 1)
        text += ".\\";
    text.resize(PATH_SIZE - 1, '.');
    text.back() = '.';
    EXPECT_EQ(settle(text), OptionsFolder::Refused);
    expect_message(script, "The specified Page file folder is invalid.");
}

TEST_F(OptionsFolderTest, A_folder_with_a_home_page_is_taken_as_it_is) {
    folder.write("new\\home.orvl", "another home");
    MessageScript script;
    EXPECT_EQ(settle(std::string(folder.path) + "new"), OptionsFolder::Changed);
    EXPECT_EQ(settled, new_folder);
    EXPECT_EQ(shown, 0);
    expect_message(script, "The page file folder has been changed.\n\nOrvanel will now reload the "
                           "Home page from the new location.");
    expect_icon(MessageIcon::Information);
    EXPECT_EQ(folder.read("new\\home.orvl"), "another home");
    EXPECT_FALSE(file_exists(folder.file("new\\second.orvl").c_str()));
    EXPECT_EQ(page_dir_location, old_folder); // the caller's to change
}

TEST_F(OptionsFolderTest, No_to_copying_refuses_the_folder) {
    MessageScript script({MessageAnswer::No});
    EXPECT_EQ(settle(new_folder), OptionsFolder::Refused);
    EXPECT_EQ(shown, 0);
    expect_message(script,
                   "The specified location does not contain a Home page (home.orvl).\n\nDo you "
                   "want to copy your existing pages into the new location?");
    expect_icon(MessageIcon::Question, MessageButtons::YesNo);
    EXPECT_FALSE(file_exists(folder.file("new\\home.orvl").c_str()));
}

TEST_F(OptionsFolderTest, Yes_copies_the_pages_of_both_kinds_and_nothing_else) {
    MessageScript script({MessageAnswer::Yes});
    EXPECT_EQ(settle(new_folder), OptionsFolder::Changed);
    EXPECT_EQ(settled, new_folder);
    EXPECT_EQ(folder.read("new\\home.orvl"), "home page");
    EXPECT_EQ(folder.read("new\\second.orvl"), "second page");
    EXPECT_EQ(folder.read("new\\third.xml"), "third page");
    EXPECT_FALSE(file_exists(folder.file("new\\notes.txt").c_str()));
    EXPECT_EQ(folder.read("old\\home.orvl"), "home page"); // copied, not moved
    ASSERT_EQ(script.shown().size(), 2u);
    EXPECT_EQ(script.shown()[1].text,
              "Your page files have been copied to the new Page file folder.\n\nOrvanel will now "
              "reload the Home page from the new location.");
    expect_icon(MessageIcon::Information);
}

TEST_F(OptionsFolderTest, When_the_home_page_does_not_arrive_the_folder_is_refused) {
    file_delete(folder.file("old\\home.orvl").c_str());
    MessageScript script({MessageAnswer::Yes});
    EXPECT_EQ(settle(new_folder), OptionsFolder::Refused);
    ASSERT_EQ(script.shown().size(), 2u);
    EXPECT_EQ(script.shown()[1].text,
              "Orvanel was unable to write to the new Page file folder location.");
    expect_icon(MessageIcon::Exclamation);
    EXPECT_EQ(shown, 0);
}

#ifndef _WIN32
TEST_F(OptionsFolderTest, Half_a_home_page_on_a_full_disk_is_none_and_the_folder_is_refused) {
    folder.write("old\\home.orvl", std::string(5000, 'x'));
    MessageScript script({MessageAnswer::Yes});
    const FullDisk disk(1000);
    EXPECT_EQ(settle(new_folder), OptionsFolder::Refused);
    ASSERT_EQ(script.shown().size(), 2u);
    EXPECT_EQ(script.shown()[1].text,
              "Orvanel was unable to write to the new Page file folder location.");
    EXPECT_FALSE(file_exists(folder.file("new\\home.orvl").c_str()));
    EXPECT_EQ(folder.read("new\\second.orvl"), "second page");
}
#endif
