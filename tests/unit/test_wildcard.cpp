#include "platform/wildcard.h"

#include <gtest/gtest.h>

TEST(Wildcard, a_star_stands_for_any_run_of_characters_also_an_empty_one) {
    EXPECT_TRUE(wildcard_match("*.orvl", "home.orvl"));
    EXPECT_TRUE(wildcard_match("*.orvl", ".orvl"));
    EXPECT_TRUE(wildcard_match("*", ""));
    EXPECT_TRUE(wildcard_match("a*b*c", "axxbyyc"));
    EXPECT_FALSE(wildcard_match("a*b*c", "axxbyyd"));
}

TEST(Wildcard, a_longer_extension_does_not_match_a_shorter_one) {
    EXPECT_FALSE(wildcard_match("*.xml", "old.xmlbackup"));
    EXPECT_FALSE(wildcard_match("*.xml", "old.xm"));
    EXPECT_TRUE(wildcard_match("*.xml", "a.xml.xml"));
}

TEST(Wildcard, letter_case_is_ignored) {
    EXPECT_TRUE(wildcard_match("*.XML", "home.xml"));
    EXPECT_TRUE(wildcard_match("*.xml", "HOME.XML"));
}

TEST(Wildcard, a_question_mark_stands_for_exactly_one_character) {
    EXPECT_TRUE(wildcard_match("a?c", "abc"));
    EXPECT_FALSE(wildcard_match("a?c", "ac"));
    EXPECT_FALSE(wildcard_match("a?", "a"));
}

TEST(Wildcard, star_dot_star_matches_names_without_a_dot) {
    EXPECT_TRUE(wildcard_match("*.*", "readme"));
}

TEST(Wildcard, brackets_stand_for_themselves) {
    EXPECT_TRUE(wildcard_match("[ab].x", "[ab].x"));
    EXPECT_FALSE(wildcard_match("[ab].x", "a.x"));
}
