// Installers and signatures from hostile and broken servers: what the dialog is told, and that no
// file is left behind that should not be.
#include "tests/support/hostile_servers.h"
#include "tests/support/signature_vectors.h"
#include "tests/unit/update_fixture.h"

static const std::string STATUS = "HTTP/1.1 200 OK\r\n";

class HostileServerTest : public UpdateTest {
protected:
    HostileServerTest() {
        http_client_limits.disk_bytes = HOSTILE_DISK_BYTES;
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
};

class HostileUpdateTest : public HostileServerTest,
                          public testing::WithParamInterface<HostileUpdate> {};

TEST_P(HostileUpdateTest, the_download_ends_as_it_should_and_leaves_no_file_but_a_whole_one) {
    http_client_limits.timeout = 60'000; // cut short by the servers that are silent
    give(GetParam());
    EXPECT_EQ(GetParam().end, end_of(GetParam().installer));
    EXPECT_EQ(GetParam().file, temporary.read(INSTALLER_NAME));
}

INSTANTIATE_TEST_SUITE_P(
    UPDATES, HostileUpdateTest,
    testing::ValuesIn(hostile_updates({&HOSTILE_CLOSED, &HOSTILE_SPLIT, &HOSTILE_STATUS,
                                       &HOSTILE_LINES, &HOSTILE_LENGTHS, &HOSTILE_BODIES,
                                       &HOSTILE_URGENT, &HOSTILE_WITHOUT_END, &HOSTILE_SILENT})),
    hostile_name<HostileUpdate>);

TEST_F(HostileServerTest, a_connection_that_ends_within_the_status_line_counts_as_no_connection) {
    const std::string line = "HTTP/1.1 200";
    for (std::size_t cut = 0; cut <= line.size(); cut++)
        EXPECT_EQ(AUTO_UPDATE_NO_CONNECT, end_of(line.substr(0, cut))) << cut;
}

TEST_F(HostileServerTest, a_connection_that_ends_within_the_head_brings_no_installer) {
    const std::string head = http_head(TEST_INSTALLER_SIZE);
    for (std::size_t cut = 13; cut < head.size(); cut++)
        EXPECT_EQ(AUTO_UPDATE_FAILED, end_of(head.substr(0, cut))) << cut;
}

TEST_F(HostileServerTest, real_silence_ends_with_the_time_out) {
    http_client_limits.timeout = 300;
    EXPECT_EQ(AUTO_UPDATE_NO_CONNECT, end_of(HttpScript{http_wait_for_close()}));
    EXPECT_EQ(AUTO_UPDATE_FAILED, end_of(HttpScript{http_send(STATUS), http_wait_for_close()}));
    EXPECT_EQ(AUTO_UPDATE_FAILED,
              end_of(HttpScript{http_send(http_head(4000)), http_wait_for_close()}));
}

TEST_F(HostileServerTest, an_installer_longer_than_announced_comes_in_more_chunks) {
    server.give(INSTALLER_PATH, {http_send(http_head(2000) + test_installer())});
    EXPECT_EQ(steps(40, AUTO_UPDATE_COMPLETE), download());
}

TEST_F(HostileServerTest, an_installer_in_ever_more_chunks_does_not_flood_the_dialog_with_them) {
    server.give(INSTALLER_PATH, {http_send(http_head(40)), http_repeat("x", 100'000)});
    EXPECT_EQ(steps(1000, AUTO_UPDATE_COMPLETE), download());
    EXPECT_EQ(std::string(100'000, 'x'), temporary.read(INSTALLER_NAME));
}

class SignedUpdateTest : public HostileServerTest {
protected:
    SignedUpdateTest() {
        auto_update_server.key = VENDOR_KEY;
        server.give(SIGNATURE_PATH, http_answer(INSTALLER_SIGNATURE));
    }
};

TEST_F(SignedUpdateTest, the_signature_is_asked_for_after_the_whole_installer_only) {
    EXPECT_EQ(AUTO_UPDATE_FAILED, end_of(http_head(4000) + test_installer(3000)));
    EXPECT_EQ(1, server.connections());
    EXPECT_EQ(AUTO_UPDATE_COMPLETE, end_of(http_answer(test_installer())));
    server.stop();
    ASSERT_EQ(3u, server.requests.size());
    EXPECT_TRUE(server.requests[2].starts_with("GET /orvanel_setup.exe.sig HTTP/1.1\r\n"));
}

TEST_F(SignedUpdateTest, without_its_signature_an_installer_is_failed_after_all_of_its_chunks) {
    give_installer();
    server.give(SIGNATURE_PATH, NOT_FOUND);
    EXPECT_EQ(steps(20, AUTO_UPDATE_FAILED), download());
}

TEST_F(SignedUpdateTest, a_key_that_is_none_lets_nothing_through) {
    for (const std::string &key : {std::string("x"), std::string(VENDOR_KEY).substr(4),
                                   std::string(86, 'A') + "==", std::string(STRANGER_KEY)}) {
        auto_update_server.key = key.c_str();
        EXPECT_EQ(AUTO_UPDATE_FAILED, end_of(http_answer(test_installer()))) << key;
    }
}
