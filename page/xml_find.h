// Finding, comparing and moving short stretches of text, inline: in a file of tags the next bracket
// is mostly less than twenty bytes away, where calling the library costs more than the search
// itself.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

#ifdef __SSE2__
#include <bit>
#include <emmintrin.h>
#endif

// The first character of this value in from .. to - 1, or null.
inline const char *xml_find_character(const char *from, const char *to, char character) {
#ifdef __SSE2__
    constexpr std::ptrdiff_t step = 16;
    const __m128i wanted = _mm_set1_epi8(character);
    for (; to - from >= step; from += step) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i *>(from));
        const int equal = _mm_movemask_epi8(_mm_cmpeq_epi8(bytes, wanted));
        if (equal != 0)
            return from + std::countr_zero(static_cast<unsigned>(equal));
    }
#endif
    return from < to ? static_cast<const char *>(
                           std::memchr(from, character, static_cast<std::size_t>(to - from)))
                     : nullptr;
}

inline constexpr std::ptrdiff_t XML_BLOCK = 64; // bytes that are looked at together

// The bytes of a block that are this character: bit 0 is the first byte.
inline std::uint64_t xml_find_all(const char *block, char character) {
    std::uint64_t found = 0;
#ifdef __SSE2__
    constexpr std::ptrdiff_t step = 16;
    const __m128i wanted = _mm_set1_epi8(character);
    for (std::ptrdiff_t i = 0; i < XML_BLOCK; i += step) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i *>(block + i));
        const int equal = _mm_movemask_epi8(_mm_cmpeq_epi8(bytes, wanted));
        found |= static_cast<std::uint64_t>(static_cast<unsigned>(equal)) << i;
    }
#else
    for (std::ptrdiff_t i = 0; i < XML_BLOCK; i++)
        found |= static_cast<std::uint64_t>(block[i] == character) << i;
#endif
    return found;
}

// True when a block holds either character.
inline bool xml_holds_either(const char *block, char one, char other) {
#ifdef __SSE2__
    constexpr std::ptrdiff_t step = 16;
    const __m128i first = _mm_set1_epi8(one), second = _mm_set1_epi8(other);
    __m128i found = _mm_setzero_si128();
    for (std::ptrdiff_t i = 0; i < XML_BLOCK; i += step) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i *>(block + i));
        found = _mm_or_si128(
            found, _mm_or_si128(_mm_cmpeq_epi8(bytes, first), _mm_cmpeq_epi8(bytes, second)));
    }
    return _mm_movemask_epi8(found) != 0;
#else
    return (xml_find_all(block, one) | xml_find_all(block, other)) != 0;
#endif
}

inline bool xml_is_blank(char character) {
    return character == ' ' || character == '\t';
}

// The first character in from .. to - 1 that is no blank, or to. A block can be read at from,
// wherever to is: indents are taken in one look.
inline const char *xml_skip_blanks(const char *from, const char *to) {
#ifdef __SSE2__
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i *>(from));
    const __m128i blanks = _mm_or_si128(_mm_cmpeq_epi8(bytes, _mm_set1_epi8(' ')),
                                        _mm_cmpeq_epi8(bytes, _mm_set1_epi8('\t')));
    const unsigned others = ~static_cast<unsigned>(_mm_movemask_epi8(blanks)); // bit 16 is set
    from = std::min(from + std::countr_zero(others), to);
#endif
    while (from < to && xml_is_blank(*from))
        from++;
    return from;
}

// Moves the length bytes at from to out, which is the same buffer or another one of the same size
// and not further into it than from. Sixteen more bytes follow those at from. Behind the moved
// bytes it may write over what lies before from + length, and of another buffer over what has not
// been written.
inline void xml_move_short(char *out, const char *from, std::size_t length) {
#ifdef __SSE2__
    constexpr std::size_t step = 16;
    // So near to each other a step would write over the bytes of the next one.
    const std::uintptr_t distance =
        reinterpret_cast<std::uintptr_t>(from) - reinterpret_cast<std::uintptr_t>(out);
    if (distance >= step) {
        for (std::size_t i = 0; i < length; i += step)
            _mm_storeu_si128(reinterpret_cast<__m128i *>(out + i),
                             _mm_loadu_si128(reinterpret_cast<const __m128i *>(from + i)));
        return;
    }
#endif
    std::memmove(out, from, length);
}

// True when the length bytes at a and at b are the same.
inline bool xml_same_bytes(const char *a, const char *b, std::size_t length) {
    // Two words that may overlap cover every length from one word to two.
    const auto same_ends = [=]<typename Word>(Word first) {
        Word second, other;
        std::memcpy(&first, a, sizeof first);
        std::memcpy(&other, b, sizeof other);
        if (first != other)
            return false;
        std::memcpy(&second, a + length - sizeof second, sizeof second);
        std::memcpy(&other, b + length - sizeof other, sizeof other);
        return second == other;
    };
    if (length > 16 || length < 4)
        return std::memcmp(a, b, length) == 0;
    return length >= 8 ? same_ends(std::uint64_t{}) : same_ends(std::uint32_t{});
}
