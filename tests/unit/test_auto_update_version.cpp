#include "update/auto_update_version.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

static constexpr std::int32_t LARGEST = std::numeric_limits<std::int32_t>::max();

static std::string text_of(std::string_view document) {
    return std::string(auto_update_version_text(document));
}

TEST(AutoUpdateVersion, the_version_text_1_4_2_gives_10402_and_2_0_gives_20000) {
    EXPECT_EQ(10402, auto_update_version_number("1.4.2"));
    EXPECT_EQ(20000, auto_update_version_number("2.0"));
}

TEST(AutoUpdateVersion, version_1_4_10_gives_10410_and_1_5_gives_10500) {
    EXPECT_EQ(10410, auto_update_version_number("1.4.10"));
    EXPECT_EQ(10500, auto_update_version_number("1.5"));
    EXPECT_EQ(10401, auto_update_version_number("1.4.1"));
}

TEST(AutoUpdateVersion, a_missing_field_counts_as_0) {
    EXPECT_EQ(30000, auto_update_version_number("3"));
    EXPECT_EQ(30000, auto_update_version_number("3."));
    EXPECT_EQ(30007, auto_update_version_number("3..7"));
    EXPECT_EQ(7, auto_update_version_number("0..7"));
}

TEST(AutoUpdateVersion, a_fourth_field_does_not_count) {
    EXPECT_EQ(10203, auto_update_version_number("1.2.3.4"));
    EXPECT_EQ(10203, auto_update_version_number("1.2.3....9"));
}

TEST(AutoUpdateVersion, fields_overflow_into_each_other) {
    EXPECT_EQ(20000 + 12345 * 100 + 678, auto_update_version_number("2.12345.678"));
}

TEST(AutoUpdateVersion, blanks_before_and_letters_behind_a_number_do_not_count) {
    EXPECT_EQ(10402, auto_update_version_number(" 1.\t4.2 beta"));
    EXPECT_EQ(10402, auto_update_version_number("1rc.4a.2-3"));
}

TEST(AutoUpdateVersion, what_cannot_be_read_offers_nothing) {
    for (const char *text :
         {"", ".", "..", "...", "beta", "v1.4.2x", "-1.4.2", "+3", " ", "<", "x.500.0", ".9.9"})
        EXPECT_EQ(0, auto_update_version_number(text)) << text;
}

TEST(AutoUpdateVersion, a_version_of_9999999999_9_9_stays_at_the_largest_number) {
    EXPECT_EQ(LARGEST, auto_update_version_number("9999999999.9.9"));
    EXPECT_EQ(LARGEST, auto_update_version_number("99999999999999999999999999999999"));
    EXPECT_EQ(LARGEST, auto_update_version_number("0.9999999999"));
    EXPECT_EQ(LARGEST, auto_update_version_number("1.4.9999999999"));
    EXPECT_EQ(LARGEST, auto_update_version_number("214748.36.47"));
    EXPECT_EQ(LARGEST, auto_update_version_number("214748.36.48"));
    EXPECT_EQ(LARGEST - 1, auto_update_version_number("214748.36.46"));
}

TEST(AutoUpdateVersion, the_text_ends_at_the_closing_tag_a_line_end_or_the_end) {
    EXPECT_EQ("1.4.2", text_of("<current_version>1.4.2</current_version>"));
    EXPECT_EQ("1.4.2", text_of("<current_version>1.4.2\n9"));
    EXPECT_EQ("1.4.2", text_of("<current_version>1.4.2\r\n9"));
    EXPECT_EQ("1.4.2", text_of("<current_version>1.4.2"));
    EXPECT_EQ("", text_of("<current_version></current_version>"));
    EXPECT_EQ("", text_of("<current_version>"));
}

TEST(AutoUpdateVersion, the_text_has_at_most_10_characters_after_the_first) {
    EXPECT_EQ("12345678901", text_of("<current_version>12345678901<"));
    EXPECT_EQ("12345678901", text_of("<current_version>123456789012</current_version>"));
    EXPECT_EQ("9999999999.", text_of("<current_version>9999999999.9.9</current_version>"));
}

TEST(AutoUpdateVersion, the_first_opening_tag_counts_wherever_it_stands) {
    EXPECT_EQ("1.5", text_of("<?xml version=\"1.0\"?>\n<orvanel>\n\t<current_version>1.5"
                             "</current_version>\n<current_version>9.9</current_version>"));
    EXPECT_EQ("1.5", text_of("<current_version<current_version>1.5<"));
}

TEST(AutoUpdateVersion, without_the_tag_there_is_no_text) {
    for (const char *document : {"", "<", "<current_version", "< current_version>1.5",
                                 "<current_version >1.5", "<Current_Version>1.5", "1.5"})
        EXPECT_EQ("", text_of(document)) << document;
}

TEST(AutoUpdateVersion, what_follows_a_zero_byte_is_no_text) {
    EXPECT_EQ("", text_of(std::string_view("\0<current_version>1.5", 21)));
    EXPECT_EQ("1.", text_of(std::string_view("<current_version>1.\0005", 21)));
}
