// SHA-256 and signatures with ECDSA over the curve P-256, as the system has them. May be called
// from any thread.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

using Sha256Digest = std::array<std::uint8_t, 32>;
using SignatureKey = std::array<std::uint8_t, 64>; // the public point: X, then Y, big-endian
using Signature = std::array<std::uint8_t, 64>;    // r, then s, big-endian

// A digest in the making. Null when the system has no SHA-256. sha256_end frees the record; 0, or 1
// when a step failed. sha256_end without a digest only frees.
struct Sha256;
Sha256 *sha256_begin();
void sha256_add(Sha256 *sha256, std::span<const char> bytes);
int sha256_end(Sha256 *sha256, Sha256Digest *digest);

// True only when the key's owner signed what has this digest; false also for a key or a signature
// that is none, and when the system cannot tell.
bool signature_verify(const SignatureKey &key, const Sha256Digest &digest,
                      const Signature &signature);
