#include "update/auto_update_signature.h"

#include <algorithm>
#include <array>

static constexpr std::size_t NUMBER_SIZE = std::tuple_size_v<Signature> / 2;
// A sequence of two integers, each with a length and at most one leading zero.
static constexpr std::size_t DER_SIZE_MAX = 2 + 2 * (2 + 1 + NUMBER_SIZE);
static constexpr std::uint8_t DER_INTEGER = 0x02;
static constexpr std::uint8_t DER_SEQUENCE = 0x30;
static constexpr std::uint8_t DER_SIGN_BIT = 0x80;

using Bytes = std::span<const std::uint8_t>;

// Takes an element of this kind off the front. All are shorter than 128 bytes.
static bool take(Bytes *bytes, std::uint8_t kind, Bytes *content) {
    if (bytes->size() < 2 || (*bytes)[0] != kind || (*bytes)[1] >= DER_SIGN_BIT ||
        (*bytes)[1] > bytes->size() - 2)
        return false;
    *content = bytes->subspan(2, (*bytes)[1]);
    *bytes = bytes->subspan(2 + content->size());
    return true;
}

// Takes a positive integer off the front into number, big-endian. Every number has one form only.
static bool take_number(Bytes *bytes, std::span<std::uint8_t> number) {
    Bytes content;
    if (!take(bytes, DER_INTEGER, &content) || content.empty() || content[0] >= DER_SIGN_BIT)
        return false;
    if (content[0] == 0) {
        content = content.subspan(1);
        if (content.empty() || content[0] < DER_SIGN_BIT)
            return false; // zero, or more zeros than needed
    }
    if (content.size() > number.size())
        return false;
    std::fill(number.begin(), number.end(), std::uint8_t{0});
    std::copy(content.begin(), content.end(), number.end() - static_cast<long>(content.size()));
    return true;
}

bool auto_update_signature_parse(std::string_view text, Signature *signature) {
    std::array<std::uint8_t, DER_SIZE_MAX> der;
    const int size = base64_decode(text, der);
    if (size < 0)
        return false;
    Bytes bytes(der.data(), static_cast<std::size_t>(size));
    Bytes numbers;
    const std::span<std::uint8_t> halves = *signature;
    return take(&bytes, DER_SEQUENCE, &numbers) && bytes.empty() &&
           take_number(&numbers, halves.first(NUMBER_SIZE)) &&
           take_number(&numbers, halves.last(NUMBER_SIZE)) && numbers.empty();
}
