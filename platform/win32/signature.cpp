#include "platform/signature.h"

#include <windows.h>
// bcrypt.h needs windows.h before it.
#include <bcrypt.h>

#include <algorithm>

struct Sha256 {
    BCRYPT_ALG_HANDLE algorithm;
    BCRYPT_HASH_HANDLE hash;
    bool failed;
};

static void release(Sha256 *sha256) {
    if (sha256->hash != nullptr)
        BCryptDestroyHash(sha256->hash);
    if (sha256->algorithm != nullptr)
        BCryptCloseAlgorithmProvider(sha256->algorithm, 0);
    delete sha256;
}

Sha256 *sha256_begin() {
    Sha256 *sha256 = new Sha256{};
    if (BCryptOpenAlgorithmProvider(&sha256->algorithm, BCRYPT_SHA256_ALGORITHM, nullptr, 0) == 0 &&
        BCryptCreateHash(sha256->algorithm, &sha256->hash, nullptr, 0, nullptr, 0, 0) == 0)
        return sha256;
    release(sha256);
    return nullptr;
}

// The system takes what it only reads as writable.
static PUCHAR input(const void *bytes) {
    return static_cast<PUCHAR>(const_cast<void *>(bytes));
}

void sha256_add(Sha256 *sha256, std::span<const char> bytes) {
    if (BCryptHashData(sha256->hash, input(bytes.data()), static_cast<ULONG>(bytes.size()), 0) != 0)
        sha256->failed = true;
}

int sha256_end(Sha256 *sha256, Sha256Digest *digest) {
    const bool done =
        digest != nullptr && !sha256->failed &&
        BCryptFinishHash(sha256->hash, digest->data(), static_cast<ULONG>(digest->size()), 0) == 0;
    release(sha256);
    return done ? 0 : 1;
}

struct KeyBlob {
    BCRYPT_ECCKEY_BLOB head;
    SignatureKey point;
};
static_assert(sizeof(KeyBlob) == sizeof(BCRYPT_ECCKEY_BLOB) + std::tuple_size_v<SignatureKey>);

static bool verify_with(BCRYPT_ALG_HANDLE algorithm, const SignatureKey &key,
                        const Sha256Digest &digest, const Signature &signature) {
    KeyBlob blob = {{BCRYPT_ECDSA_PUBLIC_P256_MAGIC, std::tuple_size_v<SignatureKey> / 2}, key};
    BCRYPT_KEY_HANDLE imported = nullptr;
    if (BCryptImportKeyPair(algorithm, nullptr, BCRYPT_ECCPUBLIC_BLOB, &imported,
                            reinterpret_cast<PUCHAR>(&blob), sizeof blob, 0) != 0)
        return false;
    const NTSTATUS status = BCryptVerifySignature(
        imported, nullptr, input(digest.data()), static_cast<ULONG>(digest.size()),
        input(signature.data()), static_cast<ULONG>(signature.size()), 0);
    BCryptDestroyKey(imported);
    return status == 0;
}

bool signature_verify(const SignatureKey &key, const Sha256Digest &digest,
                      const Signature &signature) {
    BCRYPT_ALG_HANDLE algorithm = nullptr;
    if (BCryptOpenAlgorithmProvider(&algorithm, BCRYPT_ECDSA_P256_ALGORITHM, nullptr, 0) != 0)
        return false;
    const bool verified = verify_with(algorithm, key, digest, signature);
    BCryptCloseAlgorithmProvider(algorithm, 0);
    return verified;
}
