#include "platform/letters.h"

#include <string_view>

// Letters of code page 1252 outside the two blocks from 0xC0 and 0xE0 on.
static constexpr std::string_view OTHER_LETTERS = "\x83\x8a\x8c\x8e\x9a\x9c\x9e\x9f\xaa\xb5\xba";
static constexpr std::string_view SIXTEEN_APART =
    "\x9a\x9c\x9e"; // lower case, 16 above the upper one

static bool is_between(unsigned char character, unsigned first, unsigned last) {
    return character >= first && character <= last;
}

static bool is_lower(unsigned char character) {
    return is_between(character, 'a', 'z') ||
           (is_between(character, 0xe0, 0xfe) && character != 0xf7);
}

bool letter_is(char character) {
    const unsigned char code = static_cast<unsigned char>(character);
    return is_between(code, 'a', 'z') || is_between(code, 'A', 'Z') ||
           (code >= 0xc0 && code != 0xd7 && code != 0xf7) ||
           OTHER_LETTERS.find(character) != std::string_view::npos;
}

char letter_upper(char character) {
    if (is_lower(static_cast<unsigned char>(character)))
        return static_cast<char>(character - ('a' - 'A'));
    if (SIXTEEN_APART.find(character) != std::string_view::npos)
        return static_cast<char>(character - 0x10);
    return character == '\xff' ? '\x9f' : character;
}
