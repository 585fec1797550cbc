#include "update/auto_update_signature.h"

#include "tests/support/signature_vectors.h"
#include "tests/support/test_installer.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

static std::string decoded(std::string_view text, std::size_t room = 100) {
    std::vector<std::uint8_t> target(room);
    const int size = base64_decode(text, target);
    return size < 0 ? "refused" : std::string(target.begin(), target.begin() + size);
}

static std::string encoded(const std::vector<std::uint8_t> &bytes) {
    static constexpr char DIGITS[] =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        const std::size_t count = std::min<std::size_t>(3, bytes.size() - i);
        unsigned bits = 0;
        for (std::size_t j = 0; j < 3; j++)
            bits = bits << 8 | (j < count ? bytes[i + j] : 0u);
        for (std::size_t j = 0; j < 4; j++)
            text += j <= count ? DIGITS[bits >> (18 - 6 * j) & 63] : '=';
    }
    return text;
}

TEST(AutoUpdateSignature, base64_of_every_length_is_read) {
    EXPECT_EQ("", decoded(""));
    EXPECT_EQ("f", decoded("Zg=="));
    EXPECT_EQ("fo", decoded("Zm8="));
    EXPECT_EQ("foo", decoded("Zm9v"));
    EXPECT_EQ("foob", decoded("Zm9vYg=="));
    EXPECT_EQ("fooba", decoded("Zm9vYmE="));
    EXPECT_EQ("foobar", decoded("Zm9vYmFy"));
    EXPECT_EQ("\xfb\xff\xbf", decoded("+/+/"));
}

TEST(AutoUpdateSignature, blanks_and_line_ends_in_base64_are_skipped) {
    EXPECT_EQ("foobar", decoded(" Zm9v\r\nYm\nFy\n"));
    EXPECT_EQ("f", decoded("Z g\n=\n=\r\n"));
}

TEST(AutoUpdateSignature, what_is_not_base64_is_refused) {
    for (const char *text : {"Z", "Zm9vY", "Zg", "Zg=", "Zg===", "Zm8", "Zm9v=", "Zm8=Zm8=", "=",
                             "Zm9?", "Zm9v-_", "Zm9v\xff", "Zm9v\t"})
        EXPECT_EQ("refused", decoded(text)) << text;
}

TEST(AutoUpdateSignature, base64_longer_than_its_room_is_refused) {
    EXPECT_EQ("foobar", decoded("Zm9vYmFy", 6));
    EXPECT_EQ("refused", decoded("Zm9vYmFy", 5));
    EXPECT_EQ("refused", decoded("Zg==", 0));
}

TEST(AutoUpdateSignature, a_key_is_the_base64_of_64_bytes) {
    SignatureKey key;
    EXPECT_TRUE(auto_update_key_parse(VENDOR_KEY, &key));
    EXPECT_FALSE(auto_update_key_parse(encoded(std::vector<std::uint8_t>(63)), &key));
    EXPECT_FALSE(auto_update_key_parse(encoded(std::vector<std::uint8_t>(65)), &key));
    EXPECT_FALSE(auto_update_key_parse("", &key));
}

// DER of the numbers with these bytes.
static std::vector<std::uint8_t> der(const std::vector<std::uint8_t> &r,
                                     const std::vector<std::uint8_t> &s) {
    std::vector<std::uint8_t> bytes = {0x30, static_cast<std::uint8_t>(r.size() + s.size() + 4)};
    for (const auto *number : {&r, &s}) {
        bytes.push_back(0x02);
        bytes.push_back(static_cast<std::uint8_t>(number->size()));
        bytes.insert(bytes.end(), number->begin(), number->end());
    }
    return bytes;
}

static bool parses(const std::vector<std::uint8_t> &bytes) {
    Signature signature;
    return auto_update_signature_parse(encoded(bytes), &signature);
}

TEST(AutoUpdateSignature, short_numbers_are_filled_up_in_front) {
    Signature signature;
    ASSERT_TRUE(auto_update_signature_parse(encoded(der({0x12, 0x34}, {0x00, 0x80})), &signature));
    Signature expected = {};
    expected[30] = 0x12;
    expected[31] = 0x34;
    expected[63] = 0x80;
    EXPECT_EQ(expected, signature);
}

TEST(AutoUpdateSignature, numbers_have_one_form_only_and_are_positive) {
    EXPECT_TRUE(parses(der({1}, {1})));
    EXPECT_FALSE(parses(der({0x80}, {1}))) << "negative";
    EXPECT_FALSE(parses(der({1}, {0xff})));
    EXPECT_FALSE(parses(der({0}, {1}))) << "zero";
    EXPECT_FALSE(parses(der({0, 1}, {1}))) << "a zero too many";
    EXPECT_FALSE(parses(der({}, {1})));
}

TEST(AutoUpdateSignature, numbers_have_at_most_32_bytes) {
    std::vector<std::uint8_t> number(32, 0x7f);
    EXPECT_TRUE(parses(der(number, number)));
    number.push_back(0x7f);
    EXPECT_FALSE(parses(der(number, {1})));
    EXPECT_FALSE(parses(der({1}, number)));
    number = std::vector<std::uint8_t>(32, 0xff);
    number.insert(number.begin(), 0);
    EXPECT_TRUE(parses(der(number, number)));
}

TEST(AutoUpdateSignature, every_cut_and_every_longer_form_is_refused) {
    const std::vector<std::uint8_t> whole = der({1, 2, 3}, {4, 5, 6});
    ASSERT_TRUE(parses(whole));
    for (std::size_t size = 0; size < whole.size(); size++)
        EXPECT_FALSE(parses({whole.begin(), whole.begin() + static_cast<long>(size)})) << size;
    std::vector<std::uint8_t> longer = whole;
    longer.push_back(0);
    EXPECT_FALSE(parses(longer)) << "behind the sequence";
    longer[1]++;
    EXPECT_FALSE(parses(longer)) << "behind the numbers";
    EXPECT_FALSE(parses({0x30, 0x81, 6, 2, 1, 1, 2, 1, 1})) << "a length of two bytes";
    EXPECT_FALSE(parses({0x31, 6, 2, 1, 1, 2, 1, 1}));
    EXPECT_FALSE(parses({0x30, 6, 3, 1, 1, 2, 1, 1}));
}

static Sha256Digest digest_of(const std::string &bytes) {
    Sha256Digest digest = {};
    Sha256 *sha256 = sha256_begin();
    EXPECT_NE(nullptr, sha256);
    if (sha256 == nullptr)
        return digest;
    sha256_add(sha256, bytes);
    EXPECT_EQ(0, sha256_end(sha256, &digest));
    return digest;
}

static bool verifies(const char *key_text, const std::string &bytes, const char *signature_text) {
    SignatureKey key;
    Signature signature;
    EXPECT_TRUE(auto_update_key_parse(key_text, &key));
    EXPECT_TRUE(auto_update_signature_parse(signature_text, &signature));
    return signature_verify(key, digest_of(bytes), signature);
}

TEST(Signature, the_digest_is_that_of_sha_256) {
    static constexpr Sha256Digest OF_ABC = {0xba, 0x78, 0x16, 0xbf, 0x8f, 0x01, 0xcf, 0xea,
                                            0x41, 0x41, 0x40, 0xde, 0x5d, 0xae, 0x22, 0x23,
                                            0xb0, 0x03, 0x61, 0xa3, 0x96, 0x17, 0x7a, 0x9c,
                                            0xb4, 0x10, 0xff, 0x61, 0xf2, 0x00, 0x15, 0xad};
    EXPECT_EQ(OF_ABC, digest_of("abc"));
}

TEST(Signature, the_digest_does_not_depend_on_the_pieces) {
    const std::string bytes = test_installer();
    Sha256 *sha256 = sha256_begin();
    ASSERT_NE(nullptr, sha256);
    for (std::size_t at = 0; at < bytes.size(); at += 7)
        sha256_add(sha256,
                   std::span(bytes).subspan(at, std::min<std::size_t>(7, bytes.size() - at)));
    Sha256Digest digest;
    EXPECT_EQ(0, sha256_end(sha256, &digest));
    EXPECT_EQ(digest_of(bytes), digest);
}

TEST(Signature, a_digest_can_be_given_up) {
    EXPECT_NE(0, sha256_end(sha256_begin(), nullptr));
}

TEST(Signature, what_openssl_signed_verifies) {
    EXPECT_TRUE(verifies(VENDOR_KEY, test_installer(), INSTALLER_SIGNATURE));
    EXPECT_TRUE(verifies(VENDOR_KEY, test_installer(), INSTALLER_SIGNATURE_SHORT));
    EXPECT_TRUE(verifies(STRANGER_KEY, test_installer(), STRANGERS_SIGNATURE));
}

TEST(Signature, a_signature_for_another_file_or_of_another_key_does_not_verify) {
    EXPECT_TRUE(verifies(VENDOR_KEY, test_installer(3999), OTHER_FILES_SIGNATURE));
    EXPECT_FALSE(verifies(VENDOR_KEY, test_installer(), OTHER_FILES_SIGNATURE));
    EXPECT_FALSE(verifies(VENDOR_KEY, test_installer(), STRANGERS_SIGNATURE));
    EXPECT_FALSE(verifies(STRANGER_KEY, test_installer(), INSTALLER_SIGNATURE));
}

TEST(Signature, a_changed_bit_anywhere_does_not_verify) {
    SignatureKey key;
    Signature signature;
    ASSERT_TRUE(auto_update_key_parse(VENDOR_KEY, &key));
    ASSERT_TRUE(auto_update_signature_parse(INSTALLER_SIGNATURE, &signature));
    Sha256Digest digest = digest_of(test_installer());
    ASSERT_TRUE(signature_verify(key, digest, signature));
    for (std::size_t i = 0; i < signature.size(); i += 9) {
        signature[i] ^= 1;
        EXPECT_FALSE(signature_verify(key, digest, signature)) << i;
        signature[i] ^= 1;
    }
    for (std::size_t i = 0; i < digest.size(); i += 5) {
        digest[i] ^= 0x80;
        EXPECT_FALSE(signature_verify(key, digest, signature)) << i;
        digest[i] ^= 0x80;
    }
    EXPECT_TRUE(signature_verify(key, digest, signature));
}

TEST(Signature, a_key_that_is_no_point_and_numbers_out_of_range_verify_nothing) {
    SignatureKey key;
    Signature signature;
    ASSERT_TRUE(auto_update_key_parse(VENDOR_KEY, &key));
    ASSERT_TRUE(auto_update_signature_parse(INSTALLER_SIGNATURE, &signature));
    const Sha256Digest digest = digest_of(test_installer());
    EXPECT_FALSE(signature_verify(SignatureKey{}, digest, signature));
    SignatureKey off_curve = key;
    off_curve[63] ^= 1;
    EXPECT_FALSE(signature_verify(off_curve, digest, signature));
    EXPECT_FALSE(signature_verify(key, digest, Signature{}));
    Signature all_ones;
    all_ones.fill(0xff);
    EXPECT_FALSE(signature_verify(key, digest, all_ones));
}
