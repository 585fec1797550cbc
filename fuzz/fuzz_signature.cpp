// Signature texts. What is accepted has one form only: written again it gives the same bytes.
#include "update/auto_update_signature.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <vector>

using Bytes = std::vector<std::uint8_t>;

static void require(bool holds) {
    if (!holds)
        abort();
}

static Bytes der_number(std::span<const std::uint8_t> number) {
    const auto first =
        std::find_if(number.begin(), number.end(), [](auto byte) { return byte != 0; });
    Bytes content(first, number.end());
    if (content.empty() || content.front() >= 0x80)
        content.insert(content.begin(), 0);
    Bytes bytes = {0x02, static_cast<std::uint8_t>(content.size())};
    bytes.insert(bytes.end(), content.begin(), content.end());
    return bytes;
}

static Bytes der(const Signature &signature) {
    const std::span<const std::uint8_t> whole = signature;
    const Bytes r = der_number(whole.first(32)), s = der_number(whole.last(32));
    Bytes bytes = {0x30, static_cast<std::uint8_t>(r.size() + s.size())};
    bytes.insert(bytes.end(), r.begin(), r.end());
    bytes.insert(bytes.end(), s.begin(), s.end());
    return bytes;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char *>(data), size);
    // In an array of exactly its size, so that a byte too much is noticed.
    Bytes decoded(size / 4 * 3);
    const int length = base64_decode(text, decoded);
    require(length <= static_cast<int>(decoded.size()));

    Signature signature;
    if (auto_update_signature_parse(text, &signature)) {
        require(length > 0);
        decoded.resize(static_cast<std::size_t>(length));
        require(der(signature) == decoded);
    }
    SignatureKey key;
    if (auto_update_key_parse(text, &key))
        require(length == static_cast<int>(key.size()));
    return 0;
}
