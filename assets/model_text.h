// The text of model and material files: lines as the C library would hand them out in text mode,
// but taken from memory, and the numbers in them. Only the model loader includes this.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

// Longer lines come in pieces of this many characters, each treated as a line.
inline constexpr std::size_t MODEL_LINE_LENGTH = 999;

// A file's lines, each ending in LF: CR LF is turned into LF, and a piece of a long line or a last
// line that was not ended is followed by NUL and LF. As everywhere in these files, a line's text
// ends at its first NUL. Borrows the bytes when there is nothing to change.
struct ModelText {
    const char *begin, *end;
    const char *complete_end; // end, or the beginning of a last line that was not ended
    char *owned;              // malloc, null when borrowed
};

int model_text_open(std::span<const char> bytes, ModelText *text); // 0, or 1 when memory is short
void model_text_close(ModelText *text);

// Characters that large files are looked at together.
inline constexpr std::ptrdiff_t MODEL_TEXT_STRETCH = 61440;

// What model_text_open does, in steps: for whoever looks at every character of a large file anyway
// and wants it to come from memory once for both. A file is borrowed when all its stretches, one
// after the other, are plain, else copied.
//
// True when from .. to - 1 need no change. *line is the beginning of a line, at first that of the
// file, and moves on. end: the end of the file.
bool model_text_is_plain(const char *from, const char *to, const char *end, const char **line);
void model_text_borrow(std::span<const char> bytes, ModelText *text);
int model_text_copy(std::span<const char> bytes, ModelText *text); // 0, or 1 when memory is short

// The beginning of the next line. line is the beginning of one, not the text's end.
const char *model_text_next_line(const ModelText *text, const char *line);

// The first line, from line on, in whose text the word stands; the text's end when there is none.
// The word has an 'm' in it, a letter that is rare enough in these files to search by.
const char *model_text_find_line(const ModelText *text, const char *line, const char *word);

// Copies a line's text with its LF, but without what follows a NUL, into target and terminates it.
void model_text_copy_line(const ModelText *text, const char *line,
                          char (&target)[MODEL_LINE_LENGTH + 1]);

// The readers below take text that ends in NUL or LF and never look past that end. They begin at
// the first character, blanks before a number being the caller's to skip, and return the place
// where they stopped.

// Reads a decimal number as atof followed by a cast to float would; text that is none gives 0.
// Unlike atof it knows no hexadecimal numbers, infinities and NaNs (they read 0), and what exceeds
// the range of a float becomes its largest value: every result is finite, and the same on all
// systems.
const char *model_text_number(const char *text, float *value);

// Reads three such numbers, each ending at a space or at the line end whatever follows its digits.
const char *model_text_triple(const char *text, float *triple);

inline bool model_text_is_digit(char character) {
    return static_cast<unsigned char>(character - '0') < 10;
}

inline bool model_text_ends_line(char character) {
    return character == '\n' || character == '\r' || character == '\0';
}

inline const char *model_text_skip_spaces(const char *text) {
    while (*text == ' ')
        text++;
    return text;
}

// The white space that atof and atoi skip within what lies between two spaces of a line.
inline const char *model_text_skip_tabs(const char *text) {
    while (*text == '\t' || *text == '\v' || *text == '\f')
        text++;
    return text;
}

// For integers of more digits than 32 bits hold without fail; first is at the first digit.
std::int32_t model_text_long_integer(const char *first);

// Reads an integer as atoi would, cut to +-INT32_MAX. Inline, since most of a model file are
// indices.
inline const char *model_text_integer(const char *text, std::int32_t *value) {
    static constexpr std::ptrdiff_t SAFE_DIGITS = 9;
    const bool negative = *text == '-';
    if (*text == '-' || *text == '+')
        text++;
    const char *first = text;
    std::uint32_t size = 0;
    for (; model_text_is_digit(*text); text++)
        size = size * 10 + static_cast<std::uint32_t>(*text - '0');
    std::int32_t number = static_cast<std::int32_t>(size);
    if (text - first > SAFE_DIGITS)
        number = model_text_long_integer(first);
    *value = negative ? -number : number;
    return text;
}
