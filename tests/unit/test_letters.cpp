#include "platform/letters.h"

#include <gtest/gtest.h>

#ifdef _WIN32
#include <windows.h>
#endif

static bool is_western() {
#ifdef _WIN32
    return GetACP() == 1252;
#else
    return true;
#endif
}

TEST(Letters, the_english_ones_are_letters_and_have_their_upper_case_everywhere) {
    for (int code = 0; code < 128; code++) {
        const char character = static_cast<char>(code);
        const bool lower = code >= 'a' && code <= 'z';
        const bool upper = code >= 'A' && code <= 'Z';
        EXPECT_EQ(lower || upper, letter_is(character)) << code;
        EXPECT_EQ(lower ? code - 32 : code, letter_upper(character)) << code;
    }
}

TEST(Letters, those_with_accents_count) {
    if (!is_western())
        GTEST_SKIP() << "another code page";
    for (const char letter : {'\xc0', '\xd6', '\xd8', '\xdf', '\xe4', '\xf6', '\xfc', '\xff',
                              '\x8a', '\x9c', '\x9e', '\x9f'})
        EXPECT_TRUE(letter_is(letter)) << static_cast<int>(letter);
    for (const char sign : {'\x80', '\x95', '\xa0', '\xa3', '\xa9', '\xb1', '\xbf', '\xd7', '\xf7'})
        EXPECT_FALSE(letter_is(sign)) << static_cast<int>(sign);
}

TEST(Letters, those_with_accents_have_an_upper_case) {
    if (!is_western())
        GTEST_SKIP() << "another code page";
    const char pairs[][2] = {{'\xe4', '\xc4'}, {'\xf8', '\xd8'}, {'\xfe', '\xde'}, {'\x9a', '\x8a'},
                             {'\x9c', '\x8c'}, {'\x9e', '\x8e'}, {'\xff', '\x9f'}};
    for (const auto &pair : pairs)
        EXPECT_EQ(pair[1], letter_upper(pair[0])) << static_cast<int>(pair[0]);
    for (const char same : {'\xc4', '\xdf', '\xf7', '\xd7', '\xa3', '\xb5'})
        EXPECT_EQ(same, letter_upper(same)) << static_cast<int>(same);
}
