#include "tests/support/http_server.h"
#include "tests/support/test_folder.h"
#include "update/http_client.h"
#include "update/http_client_parts.h"

#include <atomic>
#include <chrono>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

// Far less than a time-out, far more than a loaded machine needs.
static constexpr std::chrono::seconds SOON{10};

static bool count(void *context, const char *, std::size_t size) {
    *static_cast<std::int64_t *>(context) += static_cast<std::int64_t>(size);
    return true;
}

struct HttpClientAbort : testing::Test {
    HttpConnection connection;
    std::int64_t length;
    std::atomic<bool> opened = false; // the client has read the head
    std::chrono::steady_clock::time_point start = std::chrono::steady_clock::now();

    void TearDown() override {
        EXPECT_LT(std::chrono::steady_clock::now() - start, SOON);
        http_client_close(&connection);
        http_client_allow_all();
    }
    std::int32_t open(const std::string &url) {
        return http_client_download_to_disk_chunked_open(url.c_str(), &connection, &length);
    }
    HttpStep abort_now() {
        return http_call([this] { http_client_abort(&connection); });
    }
    // All of the body that comes, and the connection closed.
    std::int64_t get_all() {
        opened = true;
        std::int64_t bytes = 0;
        const std::int64_t got = http_client_download_to_disk_chunked_get(
            std::int64_t{1} << 50, &connection, {count, &bytes});
        EXPECT_EQ(bytes, got);
        http_client_close(&connection);
        return got;
    }
};

static const HttpStep ABORT_ALL = http_call(http_client_abort_all);

TEST_F(HttpClientAbort, a_wait_for_the_status_ends_with_5) {
    HttpServer server({abort_now(), http_wait_for_close()});
    EXPECT_EQ(5, open(server.url()));
    EXPECT_EQ(NETWORK_NO_SOCKET, connection.socket);
}

TEST_F(HttpClientAbort, a_wait_for_the_rest_of_the_head_ends_with_5) {
    HttpServer server({http_send("HTTP/1.1 200 OK\r\nA: b"), abort_now(), http_wait_for_close()});
    EXPECT_EQ(5, open(server.url()));
}

TEST_F(HttpClientAbort, a_head_that_the_abort_cuts_short_gives_5_although_its_end_counts_as_one) {
    static constexpr std::string_view RECEIVED = "HTTP/1.1 200 OK\r\nA: b";
    RECEIVED.copy(connection.buffer, RECEIVED.size());
    connection.last = RECEIVED.size();
    http_client_abort(&connection);
    EXPECT_EQ(5, http_client_read_head(&connection, &length));
}

TEST_F(HttpClientAbort, a_wait_for_the_body_ends_the_chunk) {
    HttpServer server({http_send(http_head(100) + "123"), http_wait_for(opened), abort_now(),
                       http_wait_for_close()});
    ASSERT_EQ(HTTP_OK, open(server.url()));
    EXPECT_LE(get_all(), 3);
}

// It may be reported as something to receive, which would then keep the thread until the time-out.
TEST_F(HttpClientAbort, a_wait_for_the_body_ends_the_chunk_although_urgent_data_have_come) {
    HttpServer server({http_send(http_head(100)), http_send_urgent('!'), http_wait_for(opened),
                       abort_now(), http_wait_for_close()});
    ASSERT_EQ(HTTP_OK, open(server.url()));
    EXPECT_EQ(0, get_all());
}

TEST_F(HttpClientAbort, a_body_without_end_ends) {
    HttpServer server({http_send(http_head()), http_wait_for(opened), http_repeat("x", 20'000'000),
                       abort_now(), http_repeat("x", std::int64_t{1} << 50)});
    ASSERT_EQ(HTTP_OK, open(server.url()));
    EXPECT_LT(get_all(), http_client_limits.disk_bytes);
}

TEST_F(HttpClientAbort, an_aborted_connection_is_not_made_until_it_is_allowed) {
    HttpServer server(http_answer("x"));
    http_client_abort(&connection);
    EXPECT_EQ(3, open(server.url()));
    EXPECT_EQ(3, open(server.url())) << "once is for good";
    http_client_allow(&connection);
    EXPECT_EQ(HTTP_OK, open(server.url()));
}

TEST_F(HttpClientAbort, an_abort_leaves_other_connections_alone) {
    HttpServer server(http_answer("x"));
    HttpConnection other;
    http_client_abort(&other);
    EXPECT_EQ(HTTP_OK, open(server.url()));
}

TEST_F(HttpClientAbort, an_aborted_connection_neither_sends_nor_receives) {
    HttpServer server({http_send("x")});
    server.reads_requests = false;
    ASSERT_EQ(HTTP_OK, http_client_connect(&connection, "localhost", server.port));
    http_client_abort(&connection);
    char byte = 'y';
    EXPECT_EQ(-1, http_client_tcp_write(&connection, "y", 1));
    EXPECT_EQ(-1, http_client_tcp_read(&connection, &byte, 1));
    EXPECT_EQ('\0', byte);
}

// More than the system holds on the way: the client has read the head when it has been sent.
static constexpr std::int64_t MUCH = 15'000'000;

TEST_F(HttpClientAbort, aborting_all_ends_a_download_to_memory_which_is_never_whole) {
    HttpServer server(
        {http_send(http_head(MUCH + 1)), http_repeat("x", MUCH), ABORT_ALL, http_wait_for_close()});
    char *buffer;
    EXPECT_EQ(9, http_client_download(server.url().c_str(), &buffer));
    EXPECT_EQ(nullptr, buffer);
}

TEST_F(HttpClientAbort, aborting_all_ends_a_download_to_disk_which_is_never_whole) {
    HttpServer server(
        {http_send(http_head()), http_repeat("x", MUCH), ABORT_ALL, http_wait_for_close()});
    TestFolder folder;
    EXPECT_EQ(9, http_client_download_to_disk(server.url().c_str(), folder.file("x").c_str()))
        << "although no length was announced";
}

TEST_F(HttpClientAbort, after_aborting_all_nothing_is_connected_until_it_is_allowed) {
    HttpServer server(http_answer("x"));
    http_client_abort_all();
    EXPECT_EQ(3, open(server.url()));
    char *buffer;
    EXPECT_EQ(3, http_client_download(server.url().c_str(), &buffer));
    http_client_allow_all();
    EXPECT_EQ(HTTP_OK, open(server.url()));
}
