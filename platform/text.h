// Bounded text in fixed-size arrays: every copy in the program goes through these.
// All of them terminate the target and cut what does not fit; none ever fails.
#pragma once

#include <cstdarg>
#include <cstddef>

#if defined(__GNUC__)
#define TEXT_PRINTF_LIKE(format_index, first_argument)                                             \
    __attribute__((format(printf, format_index, first_argument)))
#else
#define TEXT_PRINTF_LIKE(format_index, first_argument)
#endif

// Copies source into target, whose size in bytes includes the terminator. size must be at least 1.
// source and target may not overlap.
void text_copy(char *target, std::size_t size, const char *source);

// Appends source to the terminated text in target; size is target's whole size.
void text_append(char *target, std::size_t size, const char *source);

// printf into target; size as in text_copy.
void text_format(char *target, std::size_t size, const char *format, ...) TEXT_PRINTF_LIKE(3, 4);
void text_format_list(char *target, std::size_t size, const char *format, va_list arguments);

bool text_equal(const char *a, const char *b);
bool text_equal_ignore_case(const char *a, const char *b); // ASCII letters only
bool text_contains(const char *text, const char *part);

// The same for an array whose size the compiler knows.
template <std::size_t N>
void text_copy(char (&target)[N], const char *source) {
    text_copy(target, N, source);
}

// Copies at most characters characters although the array could hold more.
template <std::size_t N>
void text_copy_limit(char (&target)[N], std::size_t characters, const char *source) {
    text_copy(target, characters + 1 < N ? characters + 1 : N, source);
}

template <std::size_t N>
void text_append(char (&target)[N], const char *source) {
    text_append(target, N, source);
}
