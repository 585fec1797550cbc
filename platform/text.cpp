#include "platform/text.h"

#include <cstdio>
#include <cstring>

void text_copy(char *target, std::size_t size, const char *source) {
    const std::size_t length = strnlen(source, size - 1);
    std::memcpy(target, source, length);
    target[length] = '\0';
}

void text_append(char *target, std::size_t size, const char *source) {
    const std::size_t used = strnlen(target, size - 1);
    text_copy(target + used, size - used, source);
}

void text_format_list(char *target, std::size_t size, const char *format, va_list arguments) {
    if (std::vsnprintf(target, size, format, arguments) < 0)
        target[0] = '\0';
}

void text_format(char *target, std::size_t size, const char *format, ...) {
    va_list arguments;
    va_start(arguments, format);
    text_format_list(target, size, format, arguments);
    va_end(arguments);
}

bool text_equal(const char *a, const char *b) {
    return std::strcmp(a, b) == 0;
}

static int lower(unsigned char character) {
    return character >= 'A' && character <= 'Z' ? character + ('a' - 'A') : character;
}

bool text_equal_ignore_case(const char *a, const char *b) {
    for (; *a != '\0' && *b != '\0'; a++, b++) {
        if (lower(static_cast<unsigned char>(*a)) != lower(static_cast<unsigned char>(*b)))
            return false;
    }
    return *a == *b;
}

bool text_contains(const char *text, const char *part) {
    return std::strstr(text, part) != nullptr;
}
