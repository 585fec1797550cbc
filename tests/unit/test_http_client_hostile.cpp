// Servers that break off, lie, never end or say nothing. Whatever they do, a download ends with the
// code it has for that, within its time-out, with what arrived and with bounded memory.
#include "tests/support/hostile_servers.h"
#include "tests/support/http_server.h"
#include "tests/support/short_memory.h"
#include "tests/support/test_folder.h"
#include "update/http_client.h"

#include <atomic>
#include <chrono>
#include <gtest/gtest.h>
#include <string>

#ifndef _WIN32
#include <dirent.h>
#endif

static constexpr std::chrono::seconds LONG_ENOUGH{10}; // for a loaded machine

#ifndef _WIN32
static int open_files() {
    int count = 0;
    DIR *folder = opendir("/proc/self/fd");
    while (readdir(folder) != nullptr)
        count++;
    closedir(folder);
    return count;
}
#else
static int open_files() {
    return 0;
}
#endif

struct HttpClientHostile : testing::TestWithParam<HostileServer> {
    const std::uint32_t usual_timeout = http_client_limits.timeout;
    const std::int64_t usual_disk_bytes = http_client_limits.disk_bytes;
    int files = open_files();
    std::chrono::steady_clock::time_point start = std::chrono::steady_clock::now();

    HttpClientHostile() {
        http_client_limits.disk_bytes = HOSTILE_DISK_BYTES;
    }
    ~HttpClientHostile() override {
        EXPECT_LT(std::chrono::steady_clock::now() - start, LONG_ENOUGH);
        EXPECT_EQ(files, open_files()) << "every socket and file has been closed";
        std::atomic_ref(http_client_limits.timeout) = usual_timeout;
        http_client_limits.disk_bytes = usual_disk_bytes;
    }
};

TEST_P(HttpClientHostile, a_download_to_memory_ends_as_it_should) {
    HttpServer server(GetParam().script);
    server.reads_requests = GetParam().reads_request;
    const std::string url = server.url();
    ShortMemory memory;
    char *buffer;
    EXPECT_EQ(GetParam().memory, http_client_download(url.c_str(), &buffer));
    EXPECT_LE(memory.requests(), 1);
    EXPECT_LE(memory.bytes(), static_cast<std::size_t>(HTTP_MEMORY_LIMIT) + 1);
    ASSERT_EQ(GetParam().memory == HTTP_OK, buffer != nullptr);
    if (buffer == nullptr)
        return;
    const std::size_t size = GetParam().in_memory.size();
    EXPECT_TRUE(GetParam().in_memory == std::string(buffer, size));
    EXPECT_EQ('\0', buffer[size]);
    http_client_release(buffer);
}

TEST_P(HttpClientHostile, a_download_to_disk_ends_as_it_should) {
    HttpServer server(GetParam().script);
    server.reads_requests = GetParam().reads_request;
    const std::string url = server.url();
    TestFolder folder;
    const std::string path = folder.file("x");
    {
        ShortMemory memory;
        EXPECT_EQ(GetParam().disk, http_client_download_to_disk(url.c_str(), path.c_str()));
        EXPECT_EQ(0, memory.requests());
    }
    const bool opened = GetParam().disk == HTTP_OK || GetParam().disk > HTTP_BAD_STATUS;
    EXPECT_EQ(opened, file_exists(path.c_str()));
    EXPECT_TRUE(GetParam().on_disk == folder.read("x"));
}

#define HOSTILE_SERVERS(table)                                                                     \
    INSTANTIATE_TEST_SUITE_P(table, HttpClientHostile, testing::ValuesIn(HOSTILE_##table),         \
                             hostile_name<HostileServer>)
HOSTILE_SERVERS(CLOSED);
HOSTILE_SERVERS(SPLIT);
HOSTILE_SERVERS(STATUS);
HOSTILE_SERVERS(LINES);
HOSTILE_SERVERS(LENGTHS);
HOSTILE_SERVERS(BODIES);
HOSTILE_SERVERS(URGENT);
HOSTILE_SERVERS(WITHOUT_END);
HOSTILE_SERVERS(SILENT);

TEST(HttpClientHostileHead, a_head_of_64_KiB_is_read_and_a_longer_one_gives_5) {
    constexpr std::size_t LIMIT = 64 * 1024;
    std::string head = "HTTP/1.1 200 OK\r\n";
    while (head.size() < LIMIT - 100)
        head += "A: " + std::string(50, 'x') + "\r\n";
    const std::size_t left = LIMIT - head.size() - 4;
    for (const bool longer : {false, true}) {
        const std::string last = "A: " + std::string(left - 3 + (longer ? 1 : 0), 'x');
        HttpServer server({http_send(head + last + "\r\n\r\n12345")});
        char *buffer;
        EXPECT_EQ(longer ? 5 : 0, http_client_download(server.url().c_str(), &buffer));
        http_client_release(buffer);
    }
}

TEST(HttpClientHostileReset, a_connection_that_is_reset_at_once_gives_3_4_or_5) {
    HttpServer server({http_reset()}); // a reset may overtake each of the steps
    server.reads_requests = false;
    char *buffer;
    const std::int32_t result = http_client_download(server.url().c_str(), &buffer);
    EXPECT_TRUE(result == 3 || result == 4 || result == 5) << result;
}

TEST(HttpClientHostileReset, a_connection_that_is_reset_instead_of_an_answer_gives_5) {
    HttpServer server({http_reset()});
    char *buffer;
    EXPECT_EQ(5, http_client_download(server.url().c_str(), &buffer));
}

static bool count(void *context, const char *, std::size_t size) {
    *static_cast<std::int64_t *>(context) += static_cast<std::int64_t>(size);
    return true;
}

TEST(HttpClientHostileReset, a_connection_that_is_reset_in_the_body_ends_it) {
    std::atomic<bool> opened = false;
    HttpServer server({http_send(http_head(5) + "123"), http_wait_for(opened), http_reset()});
    HttpConnection connection;
    std::int64_t length, bytes = 0;
    EXPECT_EQ(HTTP_OK, http_client_download_to_disk_chunked_open(server.url().c_str(), &connection,
                                                                 &length));
    opened = true;
    const std::int64_t got =
        http_client_download_to_disk_chunked_get(length, &connection, {count, &bytes});
    EXPECT_EQ(3, got);
    EXPECT_EQ(0, http_client_download_to_disk_chunked_get(length, &connection, {count, &bytes}));
    http_client_close(&connection);
}
