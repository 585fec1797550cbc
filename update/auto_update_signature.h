// The text forms of the vendor's public key and of the signature beside an installer, both base64;
// docs/security.md tells how they are made.
#pragma once

#include "platform/signature.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

// Value of a base64 digit, or -1.
constexpr int base64_value(char digit) {
    if (digit >= 'A' && digit <= 'Z')
        return digit - 'A';
    if (digit >= 'a' && digit <= 'z')
        return digit - 'a' + 26;
    if (digit >= '0' && digit <= '9')
        return digit - '0' + 52;
    return digit == '+' ? 62 : digit == '/' ? 63 : -1;
}

// Number of bytes, or -1 when the text is not base64 or target too small. Blanks and line ends are
// skipped.
constexpr int base64_decode(std::string_view text, std::span<std::uint8_t> target) {
    std::size_t digits = 0, padding = 0, used = 0;
    std::uint32_t bits = 0;
    for (const char character : text) {
        if (character == ' ' || character == '\r' || character == '\n')
            continue;
        const int value = base64_value(character);
        if (character == '=') {
            padding++;
            continue;
        }
        if (value < 0 || padding > 0)
            return -1;
        bits = bits << 6 | static_cast<std::uint32_t>(value);
        digits++;
        if (digits % 4 == 1)
            continue; // six bits are no byte yet
        if (used == target.size())
            return -1;
        target[used++] = static_cast<std::uint8_t>(bits >> (6 - (digits - 1) % 4 * 2));
    }
    const bool whole = digits % 4 != 1 && padding == (4 - digits % 4) % 4;
    return whole ? static_cast<int>(used) : -1;
}

// False when the text is no key: the base64 of its 64 bytes.
constexpr bool auto_update_key_parse(std::string_view text, SignatureKey *key) {
    return base64_decode(text, *key) == static_cast<int>(key->size());
}

// False when the text is no signature: the base64 of its DER form, as openssl writes it.
bool auto_update_signature_parse(std::string_view text, Signature *signature);
