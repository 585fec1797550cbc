#include "platform/wildcard.h"

#include "platform/text.h"

static bool same_letter(char a, char b) {
    const char first[] = {a, '\0'};
    const char second[] = {b, '\0'};
    return text_equal_ignore_case(first, second);
}

// One star is remembered at a time: an earlier one never needs to take more than it did.
bool wildcard_match(const char *pattern, const char *name) {
    const char *after_star = nullptr;
    const char *star_name = nullptr;
    if (text_equal(pattern, "*.*")) // matches names without a dot as well, as it always has
        return true;
    while (*name != '\0') {
        if (*pattern == '*') {
            after_star = ++pattern;
            star_name = name;
        } else if (*pattern == '?' || (*pattern != '\0' && same_letter(*pattern, *name))) {
            pattern++;
            name++;
        } else if (after_star != nullptr) {
            pattern = after_star;
            name = ++star_name;
        } else {
            return false;
        }
    }
    while (*pattern == '*')
        pattern++;
    return *pattern == '\0';
}
