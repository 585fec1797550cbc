#include "platform/message.h"

#include "tests/support/message_script.h"

#include <gtest/gtest.h>

#ifdef _WIN32
#include "platform/win32/message_over.h"
#endif

TEST(Message, the_text_and_the_caption_are_shown_as_they_are_given) {
    MessageScript script;
    EXPECT_EQ(MessageAnswer::Ok,
              message_box("Failed to start winsock.\n", MESSAGE_CAPTION, MessageIcon::Error));
    ASSERT_EQ(1u, script.shown().size());
    EXPECT_EQ("Failed to start winsock.\n", script.shown()[0].text);
    EXPECT_EQ("Orvanel", script.shown()[0].caption);
}

TEST(Message, a_typographic_apostrophe_arrives_as_one) {
    MessageScript script;
    message_box("couldn\xe2\x80\x99t", "caption \xe2\x80\x99", MessageIcon::Information);
    ASSERT_EQ(1u, script.shown().size());
    EXPECT_EQ("couldn\xe2\x80\x99t", script.shown()[0].text);
    EXPECT_EQ("caption \xe2\x80\x99", script.shown()[0].caption);
}

#ifdef _WIN32
TEST(Message, a_text_that_is_no_utf_8_is_read_in_the_systems_code_page) {
    MessageScript script;
    message_box("C:\\B\xfc"
                "cher",
                MESSAGE_CAPTION, MessageIcon::Error); // code page 1252
    ASSERT_EQ(1u, script.shown().size());
    EXPECT_EQ("C:\\B\xc3\xbc"
              "cher",
              script.shown()[0].text);
}

TEST(Message, a_box_over_a_window_that_takes_no_input_leaves_it_like_that) {
    MessageScript script;
    const HWND owner = CreateWindowA("STATIC", "", WS_POPUP | WS_VISIBLE, 0, 0, 50, 50, nullptr,
                                     nullptr, nullptr, nullptr);
    message_box_over(owner, "a", "b", MessageIcon::None);
    EXPECT_TRUE(IsWindowEnabled(owner));
    EnableWindow(owner, FALSE);
    message_box_over(owner, "a", "b", MessageIcon::None);
    EXPECT_FALSE(IsWindowEnabled(owner));
    ASSERT_EQ(2u, script.shown().size());
    EXPECT_EQ(owner, script.shown()[1].owner);
    DestroyWindow(owner);
}

TEST(Message, the_enter_key_answers_a_careful_question_with_No) {
    MessageScript script({MessageAnswer::Yes, MessageAnswer::Yes});
    message_box("a", "b", MessageIcon::Question, MessageButtons::YesNo);
    message_box("a", "b", MessageIcon::Question, MessageButtons::YesNoCareful);
    EXPECT_FALSE(script.shown()[0].defaults_to_no);
    EXPECT_TRUE(script.shown()[1].defaults_to_no);
}
#endif

TEST(Message, every_icon_is_the_one_asked_for) {
    MessageScript script;
    for (const MessageIcon icon :
         {MessageIcon::None, MessageIcon::Information, MessageIcon::Exclamation,
          MessageIcon::Question, MessageIcon::Error}) {
        message_box("a", "b", icon);
        EXPECT_EQ(icon, script.shown().back().icon);
    }
}

TEST(Message, every_button_gives_its_answer) {
    MessageScript script({MessageAnswer::Yes, MessageAnswer::No, MessageAnswer::Cancel,
                          MessageAnswer::No, MessageAnswer::Yes});
    const auto ask = [](MessageButtons buttons) {
        return message_box("Save changes?", "Question", MessageIcon::Question, buttons);
    };
    EXPECT_EQ(MessageAnswer::Yes, ask(MessageButtons::YesNoCancel));
    EXPECT_EQ(MessageAnswer::No, ask(MessageButtons::YesNoCancel));
    EXPECT_EQ(MessageAnswer::Cancel, ask(MessageButtons::YesNoCancel));
    EXPECT_EQ(MessageAnswer::No, ask(MessageButtons::YesNo));
    EXPECT_EQ(MessageAnswer::Yes, ask(MessageButtons::YesNo));
    EXPECT_EQ(5u, script.shown().size());
}

TEST(Message, a_careful_question_is_answered_like_any_other) {
    MessageScript script({MessageAnswer::Yes, MessageAnswer::No});
    const auto ask = [] {
        return message_box("a", "b", MessageIcon::Question, MessageButtons::YesNoCareful);
    };
    EXPECT_EQ(MessageAnswer::Yes, ask());
    EXPECT_EQ(MessageAnswer::No, ask());
}

TEST(Message, a_box_nobody_planned_for_gets_its_harmless_button) {
    MessageScript script;
    EXPECT_EQ(MessageAnswer::Ok, message_box("a", "b", MessageIcon::None));
    EXPECT_EQ(MessageAnswer::Cancel,
              message_box("a", "b", MessageIcon::None, MessageButtons::YesNoCancel));
    EXPECT_EQ(MessageAnswer::No, message_box("a", "b", MessageIcon::None, MessageButtons::YesNo));
    EXPECT_EQ(MessageAnswer::No,
              message_box("a", "b", MessageIcon::None, MessageButtons::YesNoCareful));
}
