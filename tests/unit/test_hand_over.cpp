#include "app/hand_over.h"

#include "platform/text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>

// Reads a message of exactly these bytes, so that reading on would be noticed.
static bool taken(std::uintptr_t id, const std::string &bytes, std::string *path) {
    const auto copy = std::make_unique<char[]>(bytes.size());
    std::copy(bytes.begin(), bytes.end(), copy.get());
    char text[HAND_OVER_SIZE];
    const bool result = hand_over_read(id, copy.get(), bytes.size(), text);
    *path = text;
    return result;
}

TEST(HandOver, a_page_file_is_handed_over_with_all_of_the_message_defined) {
    char path[HAND_OVER_SIZE];
    for (char &byte : path)
        byte = 'x';
    EXPECT_TRUE(hand_over_write("\"C:\\a b.orvl\"", path));
    EXPECT_STREQ("\"C:\\a b.orvl\"", path);
    EXPECT_EQ('\0', path[HAND_OVER_SIZE - 1]);
    EXPECT_EQ('\0', path[100]);
    EXPECT_TRUE(hand_over_write("old.xml", path));
    EXPECT_EQ(261u, HAND_OVER_SIZE);
}

TEST(HandOver, with_any_other_argument_there_is_nothing_to_hand_over) {
    char path[HAND_OVER_SIZE];
    EXPECT_FALSE(hand_over_write("", path));
    EXPECT_FALSE(hand_over_write("something else", path));
    EXPECT_FALSE(hand_over_write("page.ORVL", path));
}

TEST(HandOver, at_most_260_characters_are_sent) {
    char path[HAND_OVER_SIZE];
    EXPECT_TRUE(hand_over_write((".orvl" + std::string(1000, 'a')).c_str(), path));
    EXPECT_EQ(".orvl" + std::string(255, 'a'), path);
}

TEST(HandOver, what_was_written_is_read_back) {
    char sent[HAND_OVER_SIZE];
    hand_over_write("C:\\a b.orvl", sent);
    char path[HAND_OVER_SIZE];
    EXPECT_TRUE(hand_over_read(HAND_OVER_ID, sent, sizeof sent, path));
    EXPECT_STREQ("C:\\a b.orvl", path);
}

TEST(HandOver, a_message_with_another_id_is_not_ours) {
    std::string path;
    EXPECT_EQ(392817u, HAND_OVER_ID);
    EXPECT_FALSE(taken(392816, "C:\\a.orvl", &path));
    EXPECT_FALSE(taken(0, "C:\\a.orvl", &path));
    EXPECT_EQ("", path);
}

TEST(HandOver, a_text_without_a_terminator_ends_where_its_bytes_end) {
    std::string path;
    EXPECT_TRUE(taken(HAND_OVER_ID, "a.orvl", &path));
    EXPECT_EQ("a.orvl", path);
    EXPECT_TRUE(taken(HAND_OVER_ID, "x", &path));
    EXPECT_EQ("x", path);
}

TEST(HandOver, a_huge_text_is_cut_at_260_characters) {
    std::string path;
    EXPECT_TRUE(taken(HAND_OVER_ID, std::string(100'000, 'a'), &path));
    EXPECT_EQ(std::string(260, 'a'), path);
    EXPECT_TRUE(taken(HAND_OVER_ID, std::string(260, 'a'), &path));
    EXPECT_EQ(std::string(260, 'a'), path);
    EXPECT_TRUE(taken(HAND_OVER_ID, std::string(261, 'a'), &path));
    EXPECT_EQ(std::string(260, 'a'), path);
}

TEST(HandOver, a_length_that_lies_does_not_read_beyond_the_terminator) {
    const char text[] = "a.orvl";
    char path[HAND_OVER_SIZE];
    EXPECT_TRUE(hand_over_read(HAND_OVER_ID, text, static_cast<std::size_t>(-1), path));
    EXPECT_STREQ("a.orvl", path);
}

TEST(HandOver, no_data_no_length_and_an_empty_text_open_nothing) {
    std::string path = "x";
    char text[HAND_OVER_SIZE] = "x";
    EXPECT_FALSE(hand_over_read(HAND_OVER_ID, nullptr, 261, text));
    EXPECT_STREQ("", text);
    EXPECT_FALSE(hand_over_read(HAND_OVER_ID, nullptr, 0, text));
    EXPECT_FALSE(taken(HAND_OVER_ID, "", &path));
    EXPECT_FALSE(taken(HAND_OVER_ID, std::string(261, '\0'), &path));
    EXPECT_EQ("", path);
}

TEST(HandOver, a_page_is_kept_until_it_is_taken_once) {
    char path[HAND_OVER_SIZE];
    EXPECT_FALSE(hand_over_take(path));
    EXPECT_STREQ("", path);
    hand_over_keep("first.orvl");
    hand_over_keep("second.orvl");
    EXPECT_TRUE(hand_over_take(path));
    EXPECT_STREQ("second.orvl", path);
    EXPECT_FALSE(hand_over_take(path));
}
