// The download in pieces: open, get until enough, close.
#include "tests/support/http_server.h"
#include "update/http_client.h"
#include "update/http_client_parts.h"

#include <atomic>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

static bool append(void *context, const char *bytes, std::size_t size) {
    static_cast<std::string *>(context)->append(bytes, size);
    return true;
}

// The body that a get reads, chunk by chunk.
struct Chunks {
    HttpServer server;
    HttpConnection connection;
    std::int64_t length = -1;
    std::string bytes;
    HttpSink sink{.write = append, .context = &bytes};

    explicit Chunks(const HttpScript &script) : server(script) {
        EXPECT_EQ(HTTP_OK, http_client_download_to_disk_chunked_open(server.url().c_str(),
                                                                     &connection, &length));
    }
    ~Chunks() {
        http_client_close(&connection);
    }
    std::int64_t get(std::int64_t count) {
        return http_client_download_to_disk_chunked_get(count, &connection, sink);
    }
};

TEST(HttpClientChunks, a_body_is_read_in_chunks_until_it_ends) {
    Chunks chunks(http_answer("1234567"));
    EXPECT_EQ(7, chunks.length);
    EXPECT_EQ(3, chunks.get(3));
    EXPECT_EQ("123", chunks.bytes);
    EXPECT_EQ(3, chunks.get(3));
    EXPECT_EQ(1, chunks.get(3));
    EXPECT_EQ("1234567", chunks.bytes);
    EXPECT_EQ(0, chunks.get(3));
}

TEST(HttpClientChunks, a_chunk_of_0_reads_one_byte) {
    Chunks chunks(http_answer("12"));
    EXPECT_EQ(1, chunks.get(0));
    EXPECT_EQ(1, chunks.get(-1));
    EXPECT_EQ(0, chunks.get(0));
    EXPECT_EQ("12", chunks.bytes);
}

TEST(HttpClientChunks, chunks_go_on_beyond_Content_Length) {
    Chunks chunks({http_send(http_head(2) + "12345")});
    EXPECT_EQ(2, chunks.length);
    EXPECT_EQ(5, chunks.get(100));
}

TEST(HttpClientChunks, without_Content_Length_the_length_is_0) {
    Chunks chunks({http_send(http_head() + "12")});
    EXPECT_EQ(0, chunks.length);
    EXPECT_EQ(2, chunks.get(100));
}

TEST(HttpClientChunks, a_Content_Length_that_needs_more_than_32_bits_is_told_as_it_is) {
    Chunks chunks({http_send(http_head(5'000'000'000))});
    EXPECT_EQ(5'000'000'000, chunks.length);
}

TEST(HttpClientChunks, a_head_without_Content_Length_and_one_that_never_came_leave_a_length_of_0) {
    static constexpr std::string_view HEAD = "HTTP/1.1 200 OK\r\n\r\n";
    HttpConnection connection;
    HEAD.copy(connection.buffer, HEAD.size());
    connection.last = HEAD.size();
    std::int64_t length = 7;
    EXPECT_EQ(HTTP_OK, http_client_read_head(&connection, &length));
    EXPECT_EQ(0, length);
    length = 7;
    EXPECT_EQ(HTTP_BAD_URL,
              http_client_download_to_disk_chunked_open("https://host/", &connection, &length));
    EXPECT_EQ(0, length);
}

TEST(HttpClientChunks, a_chunk_larger_than_any_buffer_is_filled_whole) {
    Chunks chunks({http_send(http_head()), http_repeat("0123456789", 50'000)});
    EXPECT_EQ(300'001, chunks.get(300'001));
    EXPECT_EQ(199'999, chunks.get(300'001));
    EXPECT_EQ('0', chunks.bytes.front());
    EXPECT_EQ('9', chunks.bytes.back());
}

TEST(HttpClientChunks, a_chunk_ends_with_a_time_out_and_the_next_one_goes_on) {
    const std::uint32_t usual = http_client_limits.timeout;
    std::atomic<bool> timed_out = false;
    Chunks chunks({http_send(http_head(6) + "123"), http_wait_for(timed_out), http_send("456")});
    EXPECT_EQ(3, chunks.get(3));
    http_client_limits.timeout = 20;
    EXPECT_EQ(0, chunks.get(3));
    http_client_limits.timeout = usual;
    timed_out = true;
    EXPECT_EQ(3, chunks.get(3));
    EXPECT_EQ("123456", chunks.bytes);
}

static bool refuse(void *context, const char *, std::size_t) {
    ++*static_cast<int *>(context);
    return false;
}

TEST(HttpClientChunks, a_write_that_fails_ends_the_chunk_and_all_that_follow) {
    Chunks chunks(http_answer("123456"));
    EXPECT_EQ(2, chunks.get(2));
    int refused = 0;
    const HttpSink sink{.write = refuse, .context = &refused};
    EXPECT_EQ(0, http_client_download_to_disk_chunked_get(2, &chunks.connection, sink));
    EXPECT_EQ(1, refused);
    EXPECT_EQ(0, chunks.get(2));
    EXPECT_EQ("12", chunks.bytes);
}

TEST(HttpClientChunks, closing_twice_or_never_opened_is_harmless) {
    HttpConnection connection;
    http_client_close(&connection);
    HttpServer server(http_answer("x"));
    std::int64_t length;
    EXPECT_EQ(HTTP_OK, http_client_download_to_disk_chunked_open(server.url().c_str(), &connection,
                                                                 &length));
    http_client_close(&connection);
    http_client_close(&connection);
    EXPECT_EQ(NETWORK_NO_SOCKET, connection.socket);
}

TEST(HttpClientChunks, a_connection_may_be_used_again_and_keeps_nothing_of_the_first_answer) {
    HttpServer server;
    server.scripts["/one"] = {http_send(http_head(100) + "1\r\n1")};
    server.scripts["/two"] = http_answer("22");
    HttpConnection connection;
    std::int64_t length;
    std::string bytes;
    EXPECT_EQ(HTTP_OK, http_client_download_to_disk_chunked_open(server.url("/one").c_str(),
                                                                 &connection, &length));
    EXPECT_EQ(HTTP_OK, http_client_download_to_disk_chunked_open(server.url("/two").c_str(),
                                                                 &connection, &length));
    EXPECT_EQ(2, length);
    EXPECT_EQ(2, http_client_download_to_disk_chunked_get(100, &connection, {append, &bytes}));
    EXPECT_EQ("22", bytes);
    http_client_close(&connection);
}
