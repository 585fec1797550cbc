#include "platform/message.h"

#include "tests/support/message_script.h"

#include <gtest/gtest.h>

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
#endif

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

TEST(Message, a_box_nobody_planned_for_gets_its_harmless_button) {
    MessageScript script;
    EXPECT_EQ(MessageAnswer::Ok, message_box("a", "b", MessageIcon::None));
    EXPECT_EQ(MessageAnswer::Cancel,
              message_box("a", "b", MessageIcon::None, MessageButtons::YesNoCancel));
    EXPECT_EQ(MessageAnswer::No, message_box("a", "b", MessageIcon::None, MessageButtons::YesNo));
}
