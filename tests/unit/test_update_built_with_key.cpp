// A program that was built with a key (ORVANEL_UPDATE_KEY); all other tests are built without one.
#include "tests/support/signature_vectors.h"
#include "tests/unit/update_fixture.h"

static const std::string BUILT_KEY = auto_update_server.key; // before a test changes it

class BuiltWithKey : public UpdateTest {
protected:
    BuiltWithKey() {
        auto_update_server.key = BUILT_KEY.c_str();
        give_installer();
    }

    std::int32_t end_with(const HttpScript &signature) {
        server.give(SIGNATURE_PATH, signature);
        return download().back().first;
    }
};

TEST(BuiltKey, the_key_of_the_build_is_the_programs) {
    EXPECT_EQ(VENDOR_KEY, BUILT_KEY);
}

TEST_F(BuiltWithKey, an_installer_that_the_vendor_signed_is_complete) {
    EXPECT_EQ(AUTO_UPDATE_COMPLETE, end_with(http_answer(INSTALLER_SIGNATURE)));
    EXPECT_TRUE(file_is_there());
}

TEST_F(BuiltWithKey, one_without_a_signature_or_with_another_is_a_failed_download) {
    for (const HttpScript &signature :
         {NOT_FOUND, http_answer(STRANGERS_SIGNATURE), http_answer(OTHER_FILES_SIGNATURE)}) {
        EXPECT_EQ(AUTO_UPDATE_FAILED, end_with(signature));
        EXPECT_FALSE(file_is_there());
    }
}
