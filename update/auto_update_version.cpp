#include "update/auto_update_version.h"

#include <algorithm>
#include <limits>

static constexpr std::string_view OPENING_TAG = "<current_version>";
static constexpr std::string_view TEXT_ENDS = "<\n\r";
static constexpr std::size_t TEXT_LENGTH_MAX = 11; // a character and at most 10 more
static constexpr std::int64_t NUMBER_MAX = std::numeric_limits<std::int32_t>::max();
static constexpr std::int64_t FIELD_WEIGHTS[] = {10'000, 100, 1};

std::string_view auto_update_version_text(std::string_view document) {
    document = document.substr(0, document.find('\0')); // the rest is not text
    const std::size_t tag = document.find(OPENING_TAG);
    if (tag == std::string_view::npos)
        return {};
    const std::string_view text = document.substr(tag + OPENING_TAG.size(), TEXT_LENGTH_MAX);
    return text.substr(0, text.find_first_of(TEXT_ENDS));
}

static bool is_digit(char character) {
    return character >= '0' && character <= '9';
}

static std::string_view without_blanks(std::string_view text) {
    return text.substr(std::min(text.find_first_not_of(" \t"), text.size()));
}

// Leading blanks and what follows the digits do not count.
static std::int64_t field_value(std::string_view field) {
    field = without_blanks(field);
    std::int64_t value = 0;
    for (const char digit : field) {
        if (!is_digit(digit))
            break;
        value = std::min(value * 10 + (digit - '0'), NUMBER_MAX);
    }
    return value;
}

std::int32_t auto_update_version_number(std::string_view text) {
    text = without_blanks(text);
    if (text.empty() || !is_digit(text.front()))
        return 0;
    std::int64_t number = 0;
    for (const std::int64_t weight : FIELD_WEIGHTS) {
        const std::size_t point = std::min(text.find('.'), text.size());
        number = std::min(number + field_value(text.substr(0, point)) * weight, NUMBER_MAX);
        text.remove_prefix(std::min(point + 1, text.size()));
    }
    return static_cast<std::int32_t>(number);
}
