#include "assets/model_text.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <vector>

using namespace std::string_literals;

// A copy of exactly the text's size, so that reading behind it is noticed.
struct ExactText {
    std::unique_ptr<char[]> bytes;

    explicit ExactText(const std::string &text) : bytes(new char[text.size()]) {
        std::memcpy(bytes.get(), text.data(), text.size());
    }
};

static float number(const std::string &text) {
    const ExactText exact(text + "\n");
    float value = -1.0f;
    model_text_number(exact.bytes.get(), &value);
    return value;
}

static std::int32_t integer(const std::string &text) {
    const ExactText exact(text + "\n");
    std::int32_t value = -1;
    model_text_integer(exact.bytes.get(), &value);
    return value;
}

static std::vector<std::string> lines(const std::string &bytes, std::size_t *incomplete = nullptr) {
    ModelText text;
    EXPECT_EQ(model_text_open(bytes, &text), 0);
    std::vector<std::string> found;
    char line[MODEL_LINE_LENGTH + 1];
    if (incomplete != nullptr)
        *incomplete = 0;
    for (const char *at = text.begin; at != text.end; at = model_text_next_line(&text, at)) {
        model_text_copy_line(&text, at, line);
        found.emplace_back(line);
        if (incomplete != nullptr && at >= text.complete_end)
            ++*incomplete;
    }
    model_text_close(&text);
    return found;
}

TEST(ModelText, an_empty_file_has_no_lines) {
    EXPECT_TRUE(lines("").empty());
}

TEST(ModelText, carriage_return_and_line_feed_arrive_as_a_line_feed) {
    EXPECT_EQ(lines("a\r\nb\nc\r\n"), (std::vector<std::string>{"a\n", "b\n", "c\n"}));
}

TEST(ModelText, a_carriage_return_alone_is_a_character_of_its_line) {
    EXPECT_EQ(lines("a\rb\n\r\r\n"), (std::vector<std::string>{"a\rb\n", "\r\n"}));
}

TEST(ModelText, a_last_line_without_a_line_end_is_handed_out_as_incomplete) {
    std::size_t incomplete = 0;
    EXPECT_EQ(lines("a\nb", &incomplete), (std::vector<std::string>{"a\n", "b"}));
    EXPECT_EQ(incomplete, 1u);
}

TEST(ModelText, a_line_of_998_characters_comes_whole) {
    const std::string line = std::string(998, 'x') + "\n";
    EXPECT_EQ(lines(line + "y\n"), (std::vector<std::string>{line, "y\n"}));
}

TEST(ModelText, a_line_of_999_characters_leaves_its_line_end_for_a_line_of_its_own) {
    const std::string line(999, 'x');
    EXPECT_EQ(lines(line + "\ny\n"), (std::vector<std::string>{line, "\n", "y\n"}));
}

TEST(ModelText, a_long_line_comes_in_pieces_of_999_characters) {
    const std::string piece(999, 'x');
    EXPECT_EQ(lines(piece + piece + "yz\n"), (std::vector<std::string>{piece, piece, "yz\n"}));
}

TEST(ModelText, a_full_piece_at_the_end_of_the_file_is_complete) {
    std::size_t incomplete = 1;
    EXPECT_EQ(lines(std::string(999, 'x'), &incomplete).size(), 1u);
    EXPECT_EQ(incomplete, 0u);
}

TEST(ModelText, carriage_returns_before_line_feeds_do_not_count_for_the_length_of_a_line) {
    const std::string line(998, 'x');
    EXPECT_EQ(lines(line + "\r\ny\n"), (std::vector<std::string>{line + "\n", "y\n"}));
}

TEST(ModelText, the_text_of_a_line_ends_at_its_first_nul) {
    EXPECT_EQ(lines(std::string("ab\0cd\nef\n", 9)), (std::vector<std::string>{"ab", "ef\n"}));
}

static std::string line_with(const std::string &bytes, const char *word) {
    ModelText text;
    EXPECT_EQ(model_text_open(bytes, &text), 0);
    const char *at = model_text_find_line(&text, text.begin, word);
    char line[MODEL_LINE_LENGTH + 1] = "";
    if (at != text.end)
        model_text_copy_line(&text, at, line);
    model_text_close(&text);
    return line;
}

TEST(ModelText, a_word_is_found_wherever_it_stands_in_its_line) {
    EXPECT_EQ(line_with("v 1 2 3\n# usemtl a\nusemtl b\n", "usemtl "), "# usemtl a\n");
    EXPECT_EQ(line_with("mmmtllib\nm\nmtllib x\n", "mtllib "), "mtllib x\n");
    EXPECT_EQ(line_with("usemtl\nsemtl \n", "usemtl "), "");
}

TEST(ModelText, a_word_in_a_last_line_without_a_line_end_is_found) {
    EXPECT_EQ(line_with("a\nmtllib x", "mtllib "), "mtllib x");
}

TEST(ModelText, a_word_behind_a_nul_is_not_found) {
    EXPECT_EQ(line_with(std::string("a\0usemtl b\nusemtl c\n", 20), "usemtl "), "usemtl c\n");
}

TEST(ModelText, a_word_across_two_pieces_of_a_long_line_is_not_found) {
    EXPECT_EQ(line_with(std::string(996, 'x') + "usemtl a\n", "usemtl "), "");
    EXPECT_EQ(line_with(std::string(999, 'x') + "usemtl a\n", "usemtl "), "usemtl a\n");
}

TEST(ModelNumber, ordinary_decimals_read_as_the_c_library_reads_them) {
    for (const char *text : {"0",
                             "1",
                             "-1",
                             "+1",
                             "0.5",
                             "-0.123456",
                             ".5",
                             "5.",
                             "123456.789",
                             "0.1",
                             "0.000001",
                             "1e3",
                             "1E-3",
                             "1e+3",
                             "-2.5e-7",
                             "1.17549435e-38",
                             "3.4028234e38",
                             "16777217",
                             "0.3000000119",
                             "123456789012345",
                             "1234567890123456",
                             "123456789012345678901234567890",
                             "0.00000000000000000000000000000000000001",
                             "1e-45",
                             "007",
                             "1.5abc",
                             "2,5",
                             "3 4"})
        EXPECT_EQ(number(text), static_cast<float>(std::atof(text))) << text;
}

TEST(ModelNumber, random_decimals_read_as_the_c_library_reads_them) {
    std::mt19937 random(1);
    for (int i = 0; i < 200000; i++) {
        const int decimals = static_cast<int>(random() % 20);
        const double size =
            std::ldexp(static_cast<double>(random()), static_cast<int>(random() % 90) - 60);
        char text[512];
        std::snprintf(text, sizeof text, i % 5 == 0 ? "%.*e" : "%.*f", decimals,
                      i % 2 ? size : -size);
        ASSERT_EQ(number(text), static_cast<float>(std::atof(text))) << text;
    }
}

TEST(ModelNumber, decimals_between_two_floats_round_as_the_c_library_rounds_them) {
    std::mt19937 random(2);
    for (int i = 0; i < 100000; i++) {
        const float low = std::ldexp(1.0f + std::ldexp(static_cast<float>(random() % 8388608), -23),
                                     static_cast<int>(random() % 20) - 10);
        const double middle =
            (static_cast<double>(low) + static_cast<double>(std::nextafter(low, 1e9f))) / 2;
        char text[128];
        std::snprintf(text, sizeof text, "%.*f", static_cast<int>(6 + random() % 30), middle);
        ASSERT_EQ(number(text), static_cast<float>(std::atof(text))) << text;
    }
}

TEST(ModelNumber, the_sign_of_zero_is_kept) {
    EXPECT_TRUE(std::signbit(number("-0.0")));
    EXPECT_FALSE(std::signbit(number("0.0")));
}

TEST(ModelNumber, text_that_is_no_decimal_number_is_zero) {
    for (const char *text : {"", "-", "+", ".", "-.", "e5", ".e5", "abc", "nan", "NAN", "-nan",
                             "inf", "-infinity", "--1", "0x10", "0x1p3"})
        EXPECT_EQ(number(text), 0.0f) << text;
}

TEST(ModelNumber, an_exponent_without_digits_is_no_exponent) {
    EXPECT_EQ(number("2e"), 2.0f);
    EXPECT_EQ(number("2e+"), 2.0f);
    EXPECT_EQ(number("2e-x"), 2.0f);
}

TEST(ModelNumber, a_number_too_large_becomes_the_largest_float) {
    for (const std::string &text : {std::string("1e39"), std::string("1e300"), std::string("1e400"),
                                    std::string("9e99999999999999999999"), std::string(400, '9'),
                                    std::string(900, '9') + "e-10"}) {
        EXPECT_EQ(number(text), FLT_MAX) << text;
        EXPECT_EQ(number("-"s + text), -FLT_MAX) << text;
    }
}

TEST(ModelNumber, a_number_too_small_becomes_zero) {
    for (const std::string &text :
         {std::string("1e-60"), std::string("1e-400"), std::string("1e-99999999999999999999"),
          "0."s + std::string(500, '0') + "1", "0."s + std::string(500, '0') + "1e20"})
        EXPECT_EQ(number(text), 0.0f) << text;
}

TEST(ModelNumber, leading_zeros_and_exponent_may_outweigh_each_other) {
    EXPECT_EQ(number("0."s + std::string(400, '0') + "1e401"), 1.0f);
    EXPECT_EQ(number("1"s + std::string(400, '0') + "e-400"), 1.0f);
}

TEST(ModelNumber, a_triple_is_cut_at_spaces_only) {
    float triple[3];
    const ExactText exact("  1.5x 2\t9   3\r");
    model_text_triple(exact.bytes.get(), triple);
    EXPECT_EQ(triple[0], 1.5f);
    EXPECT_EQ(triple[1], 2.0f);
    EXPECT_EQ(triple[2], 3.0f);
}

TEST(ModelNumber, what_a_triple_lacks_is_zero) {
    float triple[3] = {9, 9, 9};
    const ExactText exact("1 \t \n");
    model_text_triple(exact.bytes.get(), triple);
    EXPECT_EQ(triple[0], 1.0f);
    EXPECT_EQ(triple[1], 0.0f);
    EXPECT_EQ(triple[2], 0.0f);
}

TEST(ModelInteger, integers_read_as_the_c_library_reads_them) {
    for (const char *text : {"0", "1", "-1", "+12", "0007", "123456789", "1234567890", "2147483647",
                             "-2147483647", "12abc", "", "-", "x", "1.9", "0000000000000000012"})
        EXPECT_EQ(integer(text), std::atoi(text)) << text;
}

TEST(ModelInteger, integers_beyond_the_range_are_cut_to_it) {
    EXPECT_EQ(integer("2147483648"), INT32_MAX);
    EXPECT_EQ(integer("99999999999999999999999999"), INT32_MAX);
    EXPECT_EQ(integer("-2147483648"), -INT32_MAX);
    EXPECT_EQ(integer("-99999999999999999999999999"), -INT32_MAX);
}
