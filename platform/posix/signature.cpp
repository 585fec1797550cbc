#include "platform/signature.h"

#include <openssl/core_names.h>
#include <openssl/ecdsa.h>
#include <openssl/evp.h>
#include <openssl/params.h>

#include <algorithm>
#include <memory>

struct Sha256 {
    EVP_MD_CTX *context;
    bool failed;
};

Sha256 *sha256_begin() {
    EVP_MD_CTX *context = EVP_MD_CTX_new();
    if (context == nullptr)
        return nullptr;
    if (EVP_DigestInit_ex(context, EVP_sha256(), nullptr) == 1)
        return new Sha256{context, false};
    EVP_MD_CTX_free(context);
    return nullptr;
}

void sha256_add(Sha256 *sha256, std::span<const char> bytes) {
    if (EVP_DigestUpdate(sha256->context, bytes.data(), bytes.size()) != 1)
        sha256->failed = true;
}

int sha256_end(Sha256 *sha256, Sha256Digest *digest) {
    bool done = false;
    if (digest != nullptr)
        done = EVP_DigestFinal_ex(sha256->context, digest->data(), nullptr) == 1 && !sha256->failed;
    EVP_MD_CTX_free(sha256->context);
    delete sha256;
    return done ? 0 : 1;
}

template <auto function>
struct Free {
    template <class T>
    void operator()(T *object) const {
        function(object);
    }
};
using Key = std::unique_ptr<EVP_PKEY, Free<EVP_PKEY_free>>;
using KeyContext = std::unique_ptr<EVP_PKEY_CTX, Free<EVP_PKEY_CTX_free>>;
using Pair = std::unique_ptr<ECDSA_SIG, Free<ECDSA_SIG_free>>;

// Null when the point is not on the curve.
static Key import_key(const SignatureKey &key) {
    static constexpr std::uint8_t UNCOMPRESSED = 4;
    std::array<std::uint8_t, 1 + std::tuple_size_v<SignatureKey>> point = {UNCOMPRESSED};
    std::copy(key.begin(), key.end(), point.begin() + 1);
    char group[] = "P-256";
    OSSL_PARAM parameters[] = {
        OSSL_PARAM_construct_utf8_string(OSSL_PKEY_PARAM_GROUP_NAME, group, 0),
        OSSL_PARAM_construct_octet_string(OSSL_PKEY_PARAM_PUB_KEY, point.data(), point.size()),
        OSSL_PARAM_construct_end(),
    };
    const KeyContext context(EVP_PKEY_CTX_new_from_name(nullptr, "EC", nullptr));
    EVP_PKEY *imported = nullptr;
    if (context == nullptr || EVP_PKEY_fromdata_init(context.get()) != 1 ||
        EVP_PKEY_fromdata(context.get(), &imported, EVP_PKEY_PUBLIC_KEY, parameters) != 1)
        return nullptr;
    return Key(imported);
}

static Pair import_pair(const Signature &signature) {
    static constexpr int HALF = std::tuple_size_v<Signature> / 2;
    Pair pair(ECDSA_SIG_new());
    BIGNUM *r = BN_bin2bn(signature.data(), HALF, nullptr);
    BIGNUM *s = BN_bin2bn(signature.data() + HALF, HALF, nullptr);
    if (pair != nullptr && r != nullptr && s != nullptr && ECDSA_SIG_set0(pair.get(), r, s) == 1)
        return pair;
    BN_free(r);
    BN_free(s);
    return nullptr;
}

bool signature_verify(const SignatureKey &key, const Sha256Digest &digest,
                      const Signature &signature) {
    const Key imported = import_key(key);
    const Pair pair = import_pair(signature);
    if (imported == nullptr || pair == nullptr)
        return false;
    unsigned char *encoded = nullptr;
    const int length = i2d_ECDSA_SIG(pair.get(), &encoded);
    const KeyContext context(EVP_PKEY_CTX_new(imported.get(), nullptr));
    const bool verified = length > 0 && context != nullptr &&
                          EVP_PKEY_verify_init(context.get()) == 1 &&
                          EVP_PKEY_verify(context.get(), encoded, static_cast<std::size_t>(length),
                                          digest.data(), digest.size()) == 1;
    OPENSSL_free(encoded);
    return verified;
}
