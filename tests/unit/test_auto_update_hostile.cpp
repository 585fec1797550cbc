// Installers and signatures from hostile and broken servers: what the dialog is told, and that no
// file is left behind that should not be.
#include "tests/support/signature_vectors.h"
#include "tests/unit/update_fixture.h"

#include <limits>

static const std::string STATUS = "HTTP/1.1 200 OK\r\n";

class HostileServerTest : public UpdateTest {
protected:
    HostileServerTest() {
        http_client_limits.timeout = 300;
    }

    // How the download ends when the server answers so.
    std::int32_t end_of(const HttpScript &script) {
        server.give(INSTALLER_PATH, script);
        const std::int32_t last = download().back().first;
        EXPECT_EQ(last == AUTO_UPDATE_COMPLETE, file_is_there());
        return last;
    }

    std::int32_t end_of(const std::string &answer) {
        return end_of(HttpScript{http_send(answer)});
    }

    // The same of a server that announces a length.
    std::int32_t end_of_length(const std::string &length, const std::string &body) {
        return end_of(STATUS + "Content-Length: " + length + "\r\n\r\n" + body);
    }
};

TEST_F(HostileServerTest, an_answer_that_is_no_success_counts_as_no_connection) {
    for (const char *answer :
         {"", "\r\n", "\r\n\r\n", "nonsense", "HTTP/1.1 404 Not Found\r\n\r\n",
          "HTTP/1.1 200OK\r\n\r\n",
          "HTTP/1.1 302 Found\r\nLocation: http://127.0.0.1/other\r\n\r\n",
          "HTTP/1.1 500 200\r\n\r\n", "HTTP/1.1 301 Moved\r\nContent-Length: 10\r\n\r\n0123456789",
          "HTTP/1.1 2000 OK\r\n\r\n"})
        EXPECT_EQ(AUTO_UPDATE_NO_CONNECT, end_of(answer)) << answer;
}

TEST_F(HostileServerTest, a_connection_that_ends_within_the_status_line_counts_as_no_connection) {
    const std::string line = "HTTP/1.1 200";
    for (std::size_t cut = 0; cut <= line.size(); cut++)
        EXPECT_EQ(AUTO_UPDATE_NO_CONNECT, end_of(line.substr(0, cut))) << cut;
    EXPECT_EQ(AUTO_UPDATE_NO_CONNECT, end_of(HttpScript{http_reset()}));
}

TEST_F(HostileServerTest, a_connection_that_ends_within_the_head_brings_no_installer) {
    const std::string head = http_head(TEST_INSTALLER_SIZE);
    for (std::size_t cut = 13; cut < head.size(); cut++)
        EXPECT_EQ(AUTO_UPDATE_FAILED, end_of(head.substr(0, cut))) << cut;
    EXPECT_EQ(AUTO_UPDATE_FAILED, end_of(HttpScript{http_send(STATUS), http_reset()}));
}

TEST_F(HostileServerTest, silence_ends_with_the_time_out) {
    EXPECT_EQ(AUTO_UPDATE_NO_CONNECT, end_of(HttpScript{http_wait_for_close()}));
    EXPECT_EQ(AUTO_UPDATE_FAILED, end_of(HttpScript{http_send(STATUS), http_wait_for_close()}));
    EXPECT_EQ(AUTO_UPDATE_FAILED,
              end_of(HttpScript{http_send(http_head(4000)), http_wait_for_close()}));
    EXPECT_EQ(AUTO_UPDATE_FAILED,
              end_of(HttpScript{http_send(http_head(4000) + test_installer(3999)),
                                http_wait_for_close()}));
}

TEST_F(HostileServerTest, a_head_without_end_counts_as_no_connection) {
    EXPECT_EQ(AUTO_UPDATE_NO_CONNECT,
              end_of({http_send(STATUS), http_repeat("X-Header: value\r\n", 100'000)}));
    EXPECT_EQ(AUTO_UPDATE_NO_CONNECT,
              end_of({http_send(STATUS), http_repeat("one line without an end ", 100'000)}));
    EXPECT_EQ(AUTO_UPDATE_NO_CONNECT, end_of(HttpScript{http_repeat("x", 500'000)}));
}

TEST_F(HostileServerTest, a_truncated_installer_is_deleted_wherever_it_ends) {
    for (const std::size_t size : {0, 1, 199, 200, 201, 2000, 3999})
        EXPECT_EQ(AUTO_UPDATE_FAILED, end_of(http_head(4000) + test_installer(size))) << size;
    EXPECT_EQ(AUTO_UPDATE_FAILED, end_of({http_send(http_head(4000)), http_reset()}));
    EXPECT_EQ(AUTO_UPDATE_FAILED,
              end_of({http_send(http_head(4000) + test_installer(3000)), http_reset()}));
}

TEST_F(HostileServerTest, an_installer_that_comes_a_byte_at_a_time_is_complete) {
    EXPECT_EQ(
        AUTO_UPDATE_COMPLETE,
        end_of(HttpScript{http_send_bytewise(http_head(TEST_INSTALLER_SIZE) + test_installer())}));
    EXPECT_EQ(test_installer(), temporary.read(INSTALLER_NAME));
}

TEST_F(HostileServerTest, an_installer_longer_than_announced_is_complete_with_all_its_bytes) {
    server.give(INSTALLER_PATH, {http_send(http_head(2000) + test_installer())});
    EXPECT_EQ(steps(40, AUTO_UPDATE_COMPLETE), download());
    EXPECT_EQ(test_installer(), temporary.read(INSTALLER_NAME));
}

TEST_F(HostileServerTest, an_installer_that_never_ends_is_given_up_and_deleted) {
    http_client_limits.disk_bytes = 100'000;
    const HttpStep endless = http_repeat(test_installer(), 1'000'000);
    EXPECT_EQ(AUTO_UPDATE_FAILED, end_of({http_send(http_head(4000)), endless}));
    EXPECT_EQ(AUTO_UPDATE_FAILED, end_of({http_send(http_head(100'000)), endless}));
    EXPECT_EQ(AUTO_UPDATE_FAILED, end_of({http_send(http_head(1'000'000'000)), endless}));
}

TEST_F(HostileServerTest, huge_announced_lengths_are_not_believed) {
    for (const char *length :
         {"1073741824", "2147483647", "2147483648", "4294967295", "4294967296",
          "9223372036854775807", "9223372036854775808", "99999999999999999999999999999999"})
        EXPECT_EQ(AUTO_UPDATE_FAILED, end_of_length(length, test_installer())) << length;
}

// As without a length: one byte is read, and counts as complete.
TEST_F(HostileServerTest, lengths_that_are_none_count_as_missing) {
    for (const char *length : {"", "0", "-1", "-4000", "x", "0x1000"}) {
        EXPECT_EQ(AUTO_UPDATE_COMPLETE, end_of_length(length, test_installer())) << length;
        EXPECT_EQ(1u, temporary.read(INSTALLER_NAME).size()) << length;
    }
}

TEST_F(HostileServerTest, the_last_of_several_lengths_counts) {
    EXPECT_EQ(AUTO_UPDATE_FAILED, end_of_length("4000\r\nContent-Length: 4001", test_installer()));
    EXPECT_EQ(AUTO_UPDATE_COMPLETE,
              end_of_length("4001\r\nContent-Length: 4000", test_installer()));
}

class SignedUpdateTest : public HostileServerTest {
protected:
    SignedUpdateTest() {
        auto_update_server.key = VENDOR_KEY;
        give_installer();
    }

    // How the download of the whole installer ends when the signature is asked for.
    std::int32_t end_with(const HttpScript &script) {
        server.give(SIGNATURE_PATH, script);
        const std::vector<Step> all = download();
        EXPECT_EQ(steps(20, all.back().first), all);
        EXPECT_EQ(all.back().first == AUTO_UPDATE_COMPLETE, file_is_there());
        return all.back().first;
    }
};

TEST_F(SignedUpdateTest, without_its_signature_an_installer_is_a_failed_download) {
    EXPECT_EQ(AUTO_UPDATE_FAILED, end_with(NOT_FOUND));
    EXPECT_EQ(AUTO_UPDATE_FAILED, end_with({}));
    EXPECT_EQ(AUTO_UPDATE_FAILED, end_with({http_reset()}));
    EXPECT_EQ(AUTO_UPDATE_FAILED, end_with({http_wait_for_close()}));
    EXPECT_EQ(AUTO_UPDATE_FAILED, end_with(http_answer("")));
    EXPECT_EQ(AUTO_UPDATE_COMPLETE, end_with(http_answer(INSTALLER_SIGNATURE)));
}

TEST_F(SignedUpdateTest, a_signature_of_somebody_else_is_a_failed_download) {
    EXPECT_EQ(AUTO_UPDATE_FAILED, end_with(http_answer(STRANGERS_SIGNATURE)));
}

TEST_F(SignedUpdateTest, the_vendors_signature_for_another_file_is_a_failed_download) {
    EXPECT_EQ(AUTO_UPDATE_FAILED, end_with(http_answer(OTHER_FILES_SIGNATURE)));
    give_installer(test_installer(3999)); // the other file
    EXPECT_EQ(AUTO_UPDATE_COMPLETE, end_of(http_answer(test_installer(3999))));
}

TEST_F(SignedUpdateTest, an_installer_that_was_changed_is_a_failed_download) {
    server.give(SIGNATURE_PATH, http_answer(INSTALLER_SIGNATURE));
    for (const std::size_t at : {0, 2000, 3999}) {
        std::string changed = test_installer();
        changed[at] = static_cast<char>(changed[at] ^ 1);
        EXPECT_EQ(AUTO_UPDATE_FAILED, end_of(http_answer(changed))) << at;
    }
    EXPECT_EQ(AUTO_UPDATE_FAILED, end_of(http_answer(test_installer() + "more")));
    EXPECT_EQ(AUTO_UPDATE_FAILED, end_of(http_head(4000) + test_installer() + "more"));
    EXPECT_EQ(AUTO_UPDATE_FAILED, end_of(http_head() + test_installer())) << "a single byte";
}

TEST_F(SignedUpdateTest, a_broken_signature_is_a_failed_download) {
    const std::string whole = INSTALLER_SIGNATURE;
    std::string changed = whole;
    changed[40] = changed[40] == 'A' ? 'B' : 'A';
    for (const std::string &text :
         {whole.substr(0, whole.size() - 4), whole + "AAAA", "A" + whole, changed,
          std::string("not base64!"), std::string(200, '\0'), std::string(100'000, 'A')})
        EXPECT_EQ(AUTO_UPDATE_FAILED, end_with(http_answer(text))) << text.substr(0, 20);
    EXPECT_EQ(AUTO_UPDATE_FAILED,
              end_with({http_send(http_head(static_cast<std::int64_t>(whole.size()) + 1) + whole)}))
        << "it ends too early";
    EXPECT_EQ(AUTO_UPDATE_FAILED,
              end_with({http_send(STATUS + "Content-Length: 1000000000000\r\n\r\n" + whole)}));
    EXPECT_EQ(AUTO_UPDATE_FAILED, end_with({http_send(http_head()), http_repeat("A", 3'000'000)}));
}

TEST_F(SignedUpdateTest, the_signature_is_asked_for_after_the_whole_installer_only) {
    server.give(SIGNATURE_PATH, http_answer(INSTALLER_SIGNATURE));
    EXPECT_EQ(AUTO_UPDATE_FAILED, end_of(http_head(4000) + test_installer(3000)));
    EXPECT_EQ(1, server.connections());
    EXPECT_EQ(AUTO_UPDATE_COMPLETE, end_of(http_answer(test_installer())));
    server.stop();
    ASSERT_EQ(3u, server.requests.size());
    EXPECT_TRUE(server.requests[2].starts_with("GET /orvanel_setup.exe.sig HTTP/1.1\r\n"));
}

TEST_F(SignedUpdateTest, a_key_that_is_none_lets_nothing_through) {
    server.give(SIGNATURE_PATH, http_answer(INSTALLER_SIGNATURE));
    for (const std::string &key : {std::string("x"), std::string(VENDOR_KEY).substr(4),
                                   std::string(86, 'A') + "==", std::string(STRANGER_KEY)}) {
        auto_update_server.key = key.c_str();
        EXPECT_EQ(AUTO_UPDATE_FAILED, end_of(http_answer(test_installer()))) << key;
    }
}
