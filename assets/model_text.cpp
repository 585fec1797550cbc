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

static const char *find_line_end_pair(const char *begin, const char *end) {
    for (const char *at = find_byte(begin, end, '\r'); at != end;
         at = find_byte(at + 1, end, '\r')) {
        if (at + 1 != end && at[1] == '\n')
            return at;
    }
    return end;
}

int model_text_open(std::span<const char> bytes, ModelText *text) {
    *text = {};
    if (bytes.empty())
        return 0;
    const char *begin = bytes.data();
    const char *end = begin + bytes.size();
    const char *pair = find_line_end_pair(begin, end);
    if (pair == end) {
        *text = {.begin = begin, .end = end, .owned = nullptr};
        return 0;
    }
    text->owned = static_cast<char *>(std::malloc(bytes.size()));
    if (text->owned == nullptr)
        return 1;
    char *target = text->owned;
    while (begin != end) {
        target = std::copy(begin, pair, target);
        begin = pair == end ? end : pair + 1; // the CR is left out
        pair = find_line_end_pair(begin, end);
    }
    text->begin = text->owned;
    text->end = target;
    return 0;
}

void model_text_close(ModelText *text) {
    std::free(text->owned);
    *text = {};
}

bool model_text_next(ModelText *text, ModelLine *line) {
    if (text->begin == text->end)
        return false;
    const std::size_t left = static_cast<std::size_t>(text->end - text->begin);
    const char *limit = text->begin + std::min(left, MODEL_LINE_LENGTH);
    const char *feed = find_byte(text->begin, limit, '\n');
    line->begin = text->begin;
    line->end = feed != limit ? feed + 1 : limit;
    line->complete = feed != limit || left >= MODEL_LINE_LENGTH;
    text->begin = line->end;
    return true;
}

std::size_t model_line_length(const ModelLine *line) {
    return static_cast<std::size_t>(find_byte(line->begin, line->end, '\0') - line->begin);
}

void model_line_copy(const ModelLine *line, char (&target)[MODEL_LINE_LENGTH + 1]) {
    const std::size_t length = model_line_length(line);
    std::memcpy(target, line->begin, length);
    target[length] = '\0';
}

// The words looked for hold an 'm', a letter that hardly occurs elsewhere in these files.
static const char *find_word(const ModelWordFinder *finder, const char *begin, const char *end) {
    const std::size_t rare = std::strcspn(finder->word, "m");
    while (static_cast<std::size_t>(end - begin) >= finder->length) {
        const char *letter = find_byte(begin + rare, end, finder->word[rare]);
        if (static_cast<std::size_t>(end - letter) < finder->length - rare)
            return end;
        if (std::memcmp(letter - rare, finder->word, finder->length) == 0)
            return letter - rare;
        begin = letter - rare + 1;
    }
    return end;
}

ModelWordFinder model_word_finder(const char *word, const ModelText *text) {
    ModelWordFinder finder = {
        .word = word, .length = std::strlen(word), .next = text->end, .end = text->end};
    if (text->begin != text->end)
        finder.next = find_word(&finder, text->begin, text->end);
    return finder;
}

bool model_word_in_line(ModelWordFinder *finder, const ModelLine *line) {
    if (finder->next >= line->end)
        return false;
    // What was found may lie behind a NUL or across the end of a piece: the line itself decides.
    const char *text_end = line->begin + model_line_length(line);
    const bool found = find_word(finder, line->begin, text_end) != text_end;
    finder->next = find_word(finder, line->end, finder->end);
    return found;
}

static bool is_digit(char character) {
    return static_cast<unsigned char>(character - '0') < 10;
}

// The white space atof and atoi skip, short of a line end.
static const char *skip_blanks(const char *at) {
    while (*at == ' ' || *at == '\t' || *at == '\v' || *at == '\f')
        at++;
    return at;
}

struct Decimal {
    const char *begin, *end; // digits, point and exponent, without the sign
    std::uint64_t mantissa;  // all digits in a row; meaningless when there are more than 19
    std::ptrdiff_t digits;   // before and behind the point, leading zeros included
    std::ptrdiff_t decimals; // behind the point
    std::int32_t exponent;   // as written, held within +-EXPONENT_LIMIT
};

// Beyond any exponent that matters, even for a line full of digits.
static constexpr std::int32_t EXPONENT_LIMIT = 100000;

// An exponent counts only when it has a digit: "1e" is the number 1.
static const char *scan_exponent(const char *at, std::int32_t *exponent) {
    const char *digit = at + 1;
    const bool negative = *digit == '-';
    if (*digit == '-' || *digit == '+')
        digit++;
    if (!is_digit(*digit))
        return at;
    std::int32_t value = 0;
    for (; is_digit(*digit); digit++)
        value = std::min(value * 10 + (*digit - '0'), EXPONENT_LIMIT);
    *exponent = negative ? -value : value;
    return digit;
}

static inline Decimal scan_decimal(const char *at) {
    Decimal decimal = {
        .begin = at, .end = at, .mantissa = 0, .digits = 0, .decimals = 0, .exponent = 0};
    for (; is_digit(*at); at++)
        decimal.mantissa = decimal.mantissa * 10 + static_cast<std::uint64_t>(*at - '0');
    decimal.digits = at - decimal.begin;
    if (*at == '.') {
        const char *point = at++;
        for (; is_digit(*at); at++)
            decimal.mantissa = decimal.mantissa * 10 + static_cast<std::uint64_t>(*at - '0');
        decimal.decimals = at - point - 1;
        decimal.digits += decimal.decimals;
    }
    if (decimal.digits == 0)
        return decimal;
    if (*at == 'e' || *at == 'E')
        at = scan_exponent(at, &decimal.exponent);
    decimal.end = at;
    return decimal;
}

// Whether the number is too large rather than too small for a double.
static bool is_huge(const Decimal *decimal) {
    std::ptrdiff_t integer_digits = decimal->digits - decimal->decimals;
    const char *at = decimal->begin;
    for (; *at == '0' && integer_digits > 0; at++)
        integer_digits--;
    return integer_digits + decimal->exponent > 0;
}

EXACT_DOUBLES static double convert_slowly(const Decimal *decimal) {
    double value = 0.0;
    const std::from_chars_result result = std::from_chars(decimal->begin, decimal->end, value);
    if (result.ec == std::errc::result_out_of_range)
        return is_huge(decimal) ? DBL_MAX : 0.0;
    return value;
}

// Both operands exact, hence one rounding: the same double that a careful conversion gives.
EXACT_DOUBLES static double convert(const Decimal *decimal) {
    static constexpr double POWERS_OF_TEN[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                               1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                               1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
    static constexpr std::ptrdiff_t EXACT_POWER = 22; // 10^22 is the last exact double
    static constexpr std::uint64_t EXACT_MANTISSA = 1ull << 53;
    static constexpr std::ptrdiff_t MANTISSA_DIGITS = 19; // fit 64 bits
    const std::ptrdiff_t power = decimal->exponent - decimal->decimals;
    if (decimal->digits > MANTISSA_DIGITS || decimal->mantissa > EXACT_MANTISSA ||
        power < -EXACT_POWER || power > EXACT_POWER)
        return convert_slowly(decimal);
    const double mantissa = static_cast<double>(static_cast<std::int64_t>(decimal->mantissa));
    return power < 0 ? mantissa / POWERS_OF_TEN[-power] : mantissa * POWERS_OF_TEN[power];
}

EXACT_DOUBLES const char *model_text_number(const char *text, float *value) {
    const char *at = skip_blanks(text);
    const bool negative = *at == '-';
    if (*at == '-' || *at == '+')
        at++;
    const Decimal decimal = scan_decimal(at);
    if (decimal.digits == 0) {
        *value = 0.0f;
        return at;
    }
    const double size = std::min(convert(&decimal), static_cast<double>(FLT_MAX));
    *value = static_cast<float>(negative ? -size : size);
    return decimal.end;
}

const char *model_text_integer(const char *text, std::int32_t *value) {
    const char *at = skip_blanks(text);
    const bool negative = *at == '-';
    if (*at == '-' || *at == '+')
        at++;
    std::int64_t size = 0;
    for (; is_digit(*at); at++) {
        if (size <= INT32_MAX)
            size = size * 10 + (*at - '0');
    }
    const std::int64_t wide = negative ? -size : size;
    *value = static_cast<std::int32_t>(std::clamp<std::int64_t>(wide, INT32_MIN, INT32_MAX));
    return at;
}
