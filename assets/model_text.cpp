#include "assets/model_text.h"

#include <algorithm>
#include <cfloat>
#include <charconv>
#include <cstdlib>
#include <cstring>

// The numbers must not depend on the machine. The 80-bit registers of the oldest 32-bit processors
// round every result twice; the vector unit does not.
#if defined(__i386__) && !defined(__SSE2_MATH__)
#define EXACT_DOUBLES __attribute__((target("sse2,fpmath=sse")))
#else
#define EXACT_DOUBLES
#endif

static const char *find_byte(const char *begin, const char *end, char byte) {
    const void *found = std::memchr(begin, byte, static_cast<std::size_t>(end - begin));
    return found != nullptr ? static_cast<const char *>(found) : end;
}

static bool has_line_end_pair(const char *from, const char *to, const char *end) {
    for (const char *at = find_byte(from, to, '\r'); at != to; at = find_byte(at + 1, to, '\r')) {
        if (at + 1 != end && at[1] == '\n')
            return true;
    }
    return false;
}

// Looks only where a line would have to have ended.
static bool has_long_line(const char **line, const char *to) {
    static constexpr std::ptrdiff_t LENGTH = MODEL_LINE_LENGTH;
    while (to - *line > LENGTH) {
        const char *line_end = *line + LENGTH;
        while (line_end != *line && line_end[-1] != '\n')
            line_end--;
        if (line_end == *line)
            return true;
        *line = line_end;
    }
    return false;
}

// A long line grows by two characters a piece.
static std::size_t copy_capacity(std::size_t size) {
    return size + 2 * (size / MODEL_LINE_LENGTH + 1);
}

// One line or piece without its CR, where a CR LF ends it. Returns the target's new end.
static char *copy_line(const char **source, const char *end, char *target, bool *complete) {
    std::size_t length = 0;
    char last = '\0';
    while (*source != end && length < MODEL_LINE_LENGTH && last != '\n') {
        if (**source == '\r' && *source + 1 != end && (*source)[1] == '\n')
            (*source)++;
        last = *(*source)++;
        target[length++] = last;
    }
    *complete = last == '\n' || length == MODEL_LINE_LENGTH;
    target += length;
    if (last != '\n') {
        *target++ = '\0';
        *target++ = '\n';
    }
    return target;
}

int model_text_copy(std::span<const char> bytes, ModelText *text) {
    const char *begin = bytes.data();
    const char *end = begin + bytes.size();
    *text = {};
    text->owned = static_cast<char *>(std::malloc(copy_capacity(bytes.size())));
    if (text->owned == nullptr)
        return 1;
    char *target = text->owned;
    char *line = target;
    bool complete = true;
    while (begin != end) {
        line = target;
        target = copy_line(&begin, end, target, &complete);
    }
    text->begin = text->owned;
    text->end = target;
    text->complete_end = complete ? target : line;
    return 0;
}

void model_text_borrow(std::span<const char> bytes, ModelText *text) {
    const char *end = bytes.data() + bytes.size();
    *text = {.begin = bytes.data(), .end = end, .complete_end = end, .owned = nullptr};
}

bool model_text_is_plain(const char *from, const char *to, const char *end, const char **line) {
    const bool ends = to != end || from == end || end[-1] == '\n';
    return ends && !has_line_end_pair(from, to, end) && !has_long_line(line, to);
}

int model_text_open(std::span<const char> bytes, ModelText *text) {
    const char *line = bytes.data();
    const char *end = bytes.data() + bytes.size();
    if (!model_text_is_plain(bytes.data(), end, end, &line))
        return model_text_copy(bytes, text);
    model_text_borrow(bytes, text);
    return 0;
}

void model_text_close(ModelText *text) {
    std::free(text->owned);
    *text = {};
}

const char *model_text_next_line(const ModelText *text, const char *line) {
    return find_byte(line, text->end, '\n') + 1;
}

static const char *find_word(const char *begin, const char *end, const char *word) {
    const std::ptrdiff_t length = static_cast<std::ptrdiff_t>(std::strlen(word));
    const std::ptrdiff_t rare = static_cast<std::ptrdiff_t>(std::strcspn(word, "m"));
    while (end - begin >= length) {
        const char *letter = find_byte(begin + rare, end, word[rare]);
        if (end - letter < length - rare)
            return end;
        begin = letter - rare;
        if (std::memcmp(begin, word, static_cast<std::size_t>(length)) == 0)
            return begin;
        begin++;
    }
    return end;
}

const char *model_text_find_line(const ModelText *text, const char *line, const char *word) {
    while (line != text->end) {
        const char *found = find_word(line, text->end, word);
        if (found == text->end)
            return found;
        const char *begin = found;
        while (begin != line && begin[-1] != '\n')
            begin--;
        if (find_byte(begin, found, '\0') == found)
            return begin;
        line = model_text_next_line(text, found);
    }
    return line;
}

void model_text_copy_line(const ModelText *text, const char *line,
                          char (&target)[MODEL_LINE_LENGTH + 1]) {
    const char *end = find_byte(line, model_text_next_line(text, line), '\0');
    const std::size_t length = std::min(static_cast<std::size_t>(end - line), MODEL_LINE_LENGTH);
    std::memcpy(target, line, length);
    target[length] = '\0';
}

std::int32_t model_text_long_integer(const char *first) {
    std::int64_t size = 0;
    for (; model_text_is_digit(*first) && size <= INT32_MAX; first++)
        size = size * 10 + (*first - '0');
    return static_cast<std::int32_t>(std::min<std::int64_t>(size, INT32_MAX));
}

// Whether a number that no double holds is too large rather than too small: where its first digit
// other than 0 stands.
static bool is_huge(const char *begin, const char *end) {
    static constexpr std::int32_t EXPONENT_LIMIT =
        100000; // beyond what a line of digits can offset
    const char *point = begin;
    while (point != end && model_text_is_digit(*point))
        point++;
    const char *digit = begin;
    while (digit != end && (*digit == '0' || *digit == '.'))
        digit++;
    const char *exponent = std::find_if(begin, end, [](char c) { return c == 'e' || c == 'E'; });
    std::int32_t power = 0;
    if (exponent != end)
        model_text_integer(exponent + 1, &power);
    return point - digit + std::clamp(power, -EXPONENT_LIMIT, EXPONENT_LIMIT) > 0;
}

static bool is_number_sign(char character) {
    return character == '.' || character == 'e' || character == 'E' || character == '+' ||
           character == '-';
}

// Begins at a digit or at a point before one.
EXACT_DOUBLES static const char *read_hard_number(const char *at, double *size) {
    const char *end = at;
    while (model_text_is_digit(*end) || is_number_sign(*end))
        end++;
    const std::from_chars_result result = std::from_chars(at, end, *size);
    if (result.ec == std::errc::result_out_of_range)
        *size = is_huge(at, result.ptr) ? DBL_MAX : 0.0;
    return result.ptr;
}

// Up to 15 digits and the power of ten below them are exact doubles, so that their quotient is
// rounded just once: the same double that a careful conversion gives. Almost all numbers of model
// files are of this kind.
EXACT_DOUBLES static inline const char *read_number(const char *at, float *value) {
    static constexpr double POWERS_OF_TEN[] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                               1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    static constexpr std::ptrdiff_t EXACT_DIGITS = 15;
    const bool negative = *at == '-';
    if (*at == '-' || *at == '+')
        at++;
    const char *first = at;
    std::int64_t mantissa = 0;
    for (; model_text_is_digit(*at) && at - first < EXACT_DIGITS; at++)
        mantissa = mantissa * 10 + (*at - '0');
    std::ptrdiff_t digits = at - first, decimals = 0;
    if (*at == '.') {
        const char *point = at++;
        for (; model_text_is_digit(*at) && at - first <= EXACT_DIGITS; at++)
            mantissa = mantissa * 10 + (*at - '0');
        decimals = at - point - 1;
        digits += decimals;
    }
    double size = 0.0;
    if (digits > 0 && (model_text_is_digit(*at) || *at == 'e' || *at == 'E'))
        at = read_hard_number(first, &size);
    else
        size = static_cast<double>(mantissa) / POWERS_OF_TEN[decimals];
    size = std::min(size, static_cast<double>(FLT_MAX));
    *value = static_cast<float>(negative && digits > 0 ? -size : size);
    return at;
}

const char *model_text_number(const char *text, float *value) {
    return read_number(text, value);
}

EXACT_DOUBLES const char *model_text_triple(const char *text, float *triple) {
    for (int i = 0; i < 3; i++) {
        text = model_text_skip_tabs(model_text_skip_spaces(text));
        text = read_number(text, &triple[i]);
        while (*text != ' ' && !model_text_ends_line(*text))
            text++;
    }
    return text;
}
