// The text of model and material files: lines as the C library would hand them out in text mode,
// but taken from memory, and the numbers in them. Only the model loader includes this.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

// Longer lines come in pieces of this many characters, each treated as a line.
inline constexpr std::size_t MODEL_LINE_LENGTH = 999;

// A file's bytes with every CR LF turned into LF. Borrows the bytes when there is nothing to turn.
struct ModelText {
    const char *begin, *end;
    char *owned; // malloc, null when borrowed
};

struct ModelLine {
    const char *begin, *end; // end is behind the line end, or behind the piece of a long line
    bool complete;           // false: the file ended before the line did
};

int model_text_open(std::span<const char> bytes, ModelText *text); // 0, or 1 when memory is short
void model_text_close(ModelText *text);

// Cuts the next line off the text (begin moves on). False when nothing is left.
bool model_text_next(ModelText *text, ModelLine *line);

// Number of characters before the line's first NUL, which is where its reader stops.
std::size_t model_line_length(const ModelLine *line);

// Copies the line, up to its first NUL, into target and terminates it.
void model_line_copy(const ModelLine *line, char (&target)[MODEL_LINE_LENGTH + 1]);

// Finds a word of at most 8 characters in the lines of a text that are asked for in their order.
// Most lines are answered without a look at them.
struct ModelWordFinder {
    const char *word;
    std::size_t length;
    const char *next, *end; // next place where the word stands, end when there is none any more
};
ModelWordFinder model_word_finder(const char *word, const ModelText *text);
bool model_word_in_line(ModelWordFinder *finder, const ModelLine *line);

// The readers below take text that ends in NUL or LF, and never look past that end.

// Reads a decimal number, blanks before it skipped, as atof followed by a cast to float would; text
// that is none gives 0. Unlike atof it knows no hexadecimal numbers, infinities and NaNs (they read
// 0) and values beyond the float range become its largest value: every result is finite, and the
// same on all systems. Returns the place where reading stopped.
const char *model_text_number(const char *text, float *value);

// The same for an integer, as atoi would, held inside the range of 32 bits.
const char *model_text_integer(const char *text, std::int32_t *value);
