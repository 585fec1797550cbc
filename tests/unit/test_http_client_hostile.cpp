// Servers that break off, lie, never end or say nothing. Whatever they do, a download ends with the
// code it has for that, within its time-out, with what arrived and with bounded memory.
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

using namespace std::string_literals;

static constexpr std::int64_t DISK_BYTES = 2 * 1024 * 1024;    // the bound in these tests
static constexpr std::int64_t ENDLESS = std::int64_t{1} << 40; // times
static constexpr std::chrono::seconds LONG_ENOUGH{10};         // for a loaded machine
static const std::string OK = "HTTP/1.1 200 OK\r\n";

struct Hostile {
    const char *name;
    HttpScript script;
    std::int32_t memory; // code of the download to memory
    std::string in_memory;
    std::int32_t disk; // code of the one to disk
    std::string on_disk;
    bool reads_request = true; // the server does
};

// Most answers end both downloads alike.
static Hostile same(const char *name, const HttpScript &script, std::int32_t code,
                    const std::string &body = "") {
    return {name, script, code, code == HTTP_OK ? body : "", code, body};
}

static Hostile same(const char *name, const std::string &answer, std::int32_t code,
                    const std::string &body = "") {
    return same(name, HttpScript{http_send(answer)}, code, body);
}

static Hostile with_length(const char *name, const std::string &lines, std::int32_t memory,
                           const std::string &in_memory, std::int32_t disk) {
    return {name, {http_send(OK + lines + "\r\n12345")}, memory, in_memory, disk, "12345"};
}

static Hostile silent(const char *name, const std::string &answer, std::int32_t code,
                      const std::string &body = "") {
    Hostile hostile = same(name, answer, code, body);
    // Only when everything has been sent: before, a loaded machine may be slow.
    hostile.script.push_back(http_call([] { std::atomic_ref(http_client_limits.timeout) = 1; }));
    hostile.script.push_back(http_wait_for_close());
    return hostile;
}

static Hostile endless(const char *name, const std::string &start, const std::string &repeated,
                       std::int32_t code) {
    return same(name, {http_send(start), http_repeat(repeated, ENDLESS)}, code);
}

// On disk it ends with the bound, and a file that could not be written.
static Hostile endless_body(const char *name, const std::string &head, std::int32_t memory,
                            const std::string &in_memory) {
    return {name,   {http_send(head), http_repeat("x", ENDLESS)},
            memory, in_memory,
            10,     std::string(DISK_BYTES, 'x')};
}

static std::string filler(std::size_t length) {
    return "A: " + std::string(length - 3, 'x');
}

static std::string all_bytes() {
    std::string bytes;
    for (int i = 0; i < 256; i++)
        bytes += static_cast<char>(i);
    return bytes;
}

static const Hostile CLOSED[] = {
    {"closed_before_the_request_is_read", {}, 5, "", 5, "", false},
    same("closed_after_the_request", "", 5),
    same("closed_in_the_version", "H", 6),
    same("closed_in_the_status", "HTTP/1.1 20", 6),
    same("closed_before_the_blank_after_the_status", "HTTP/1.1 200", 6),
    same("closed_after_the_status", "HTTP/1.1 200 ", 0),
    same("closed_between_CR_and_LF_of_the_status_line", "HTTP/1.1 200 OK\r", 0),
    same("closed_after_the_status_line", OK, 0),
    same("closed_in_a_header_name", OK + "Content-Len", 0),
    same("closed_in_a_header_value", OK + "Content-Length: 1", 9),
    same("closed_after_a_header_line", OK + "Content-Length: 5\r\n", 9),
    same("closed_between_CR_and_LF_of_the_empty_line", OK + "Content-Length: 5\r\n\r", 9),
    same("closed_after_the_head_without_length", OK + "\r\n", 0),
    same("closed_after_the_head_with_length", OK + "Content-Length: 5\r\n\r\n", 9),
    same("closed_after_the_first_byte", OK + "Content-Length: 5\r\n\r\n1", 9, "1"),
    same("closed_before_the_last_byte", OK + "Content-Length: 5\r\n\r\n1234", 9, "1234"),
    same("closed_after_the_last_byte", OK + "Content-Length: 5\r\n\r\n12345", 0, "12345"),
};

static const Hostile SPLIT[] = {
    same("one_byte_at_a_time", {http_send_bytewise(http_head(5) + "12345")}, 0, "12345"),
    same("one_byte_at_a_time_without_length", {http_send_bytewise(http_head() + "12345")}, 0,
         "12345"),
    same("one_byte_at_a_time_and_too_short", {http_send_bytewise(http_head(5) + "1234")}, 9,
         "1234"),
    same("line_ends_in_two_pieces",
         {http_send("HTTP/1.1 200 OK\r"), http_send("\nContent-Length: 5\r"), http_send("\n\r"),
          http_send("\n1234"), http_send("5")},
         0, "12345"),
};

static const Hostile STATUS[] = {
    same("redirect_301", "HTTP/1.1 301 Moved\r\nLocation: http://localhost/\r\n\r\n", 6),
    same("redirect_302", "HTTP/1.1 302 Found\r\nLocation: http://localhost/\r\n\r\n", 6),
    same("not_modified_304", "HTTP/1.1 304 Not Modified\r\n\r\n", 6),
    same("partial_206", "HTTP/1.1 206 Partial\r\nContent-Length: 1\r\n\r\n1", 6),
    same("not_found_404", "HTTP/1.1 404 Not Found\r\nContent-Length: 1\r\n\r\n1", 6),
    same("failure_500", "HTTP/1.1 500 Failure\r\n\r\n", 6),
    same("continue_before_200", "HTTP/1.1 100 Continue\r\n\r\n" + OK + "\r\n12345", 6),
    same("no_blank_after_200", "HTTP/1.1 200\r\n\r\n12345", 6),
    same("no_blank_before_200", "200 OK\r\n\r\n12345", 6),
    same("tabs_around_200", "HTTP/1.1\t200\tOK\r\n\r\n12345", 6),
    same("status_2000", "HTTP/1.1 2000 OK\r\n\r\n12345", 6),
    same("status_1200", "HTTP/1.1 1200 OK\r\n\r\n12345", 6),
    same("any_line_with_200_in_it", "NOTHING 404 200 ELSE\r\n\r\n12345", 0, "12345"),
    same("an_empty_status_line", "\r\n" + OK + "\r\n12345", 6),
    same("no_head_at_all", "<current_version>9.9.9</current_version>", 6),
    same("line_feeds_alone_are_no_line_ends", "HTTP/1.1 200 OK\nContent-Length: 5\n\n12345", 0),
    same("carriage_returns_alone_are_no_line_ends", "HTTP/1.1 200 OK\r\r12345", 0),
    same("200_beyond_the_99th_byte", std::string(95, 'x') + " 200 OK\r\n\r\n12345", 6),
    same("200_up_to_the_99th_byte", std::string(94, 'x') + " 200 \r\n\r\n12345", 0, "\r\n12345"),
    same("a_NUL_before_the_status", "\0"s + OK + "\r\n12345", 6),
    same("noise", all_bytes() + all_bytes(), 6),
};

static const Hostile LINES[] = {
    with_length("a_line_of_97_bytes", filler(97) + "\r\nContent-Length: 5\r\n", 0, "12345", 0),
    with_length("a_line_of_98_bytes_leaves_its_LF_to_the_next",
                filler(98) + "\r\nContent-Length: 5\r\n", 0, "12345", 0),
    same("a_last_line_of_98_bytes_hides_the_empty_line", OK + filler(98) + "\r\n\r\n12345", 0),
    same("a_line_of_99_bytes_ends_the_head", OK + filler(99) + "\r\nContent-Length: 1\r\n\r\n12345",
         0, "Content-Length: 1\r\n\r\n12345"),
    with_length("a_line_of_100_bytes_is_two", filler(100) + "\r\nContent-Length: 5\r\n", 0, "12345",
                0),
    with_length("a_line_of_1000_bytes", filler(1000) + "\r\nContent-Length: 5\r\n", 0, "12345", 0),
    with_length("a_key_that_is_split_is_not_seen", filler(90) + "Content-Length: 1\r\n", 0, "12345",
                0),
    with_length("a_value_that_is_split_counts_up_to_there", filler(82) + "Content-Length: 19\r\n",
                0, "1", 0),
    same("a_NUL_at_the_beginning_of_a_line_ends_the_head", OK + "\0A: b\r\n12345"s, 0, "12345"),
    with_length("what_follows_a_NUL_in_a_line_is_not_seen", "A: \0Content-Length: 1\r\n"s, 0,
                "12345", 0),
};

static const Hostile LENGTHS[] = {
    with_length("too_short_a_length", "Content-Length: 3\r\n", 0, "123", 0),
    with_length("too_long_a_length", "Content-Length: 6\r\n", 9, "", 9),
    with_length("a_length_of_0_counts_as_none", "Content-Length: 0\r\n", 0, "12345", 0),
    with_length("a_negative_length_counts_as_none", "Content-Length: -3\r\n", 0, "12345", 0),
    with_length("a_length_with_a_plus_counts_as_none", "Content-Length: +3\r\n", 0, "12345", 0),
    with_length("a_length_in_words_counts_as_none", "Content-Length: three\r\n", 0, "12345", 0),
    with_length("an_empty_length_counts_as_none", "Content-Length: \r\n", 0, "12345", 0),
    with_length("a_hexadecimal_length_counts_as_none", "Content-Length: 0x3\r\n", 0, "12345", 0),
    with_length("a_length_of_1_GB", "Content-Length: 1000000000\r\n", 8, "", 9),
    with_length("a_length_of_16_MiB", "Content-Length: 16777216\r\n", 9, "", 9),
    with_length("a_length_of_one_byte_more", "Content-Length: 16777217\r\n", 8, "", 9),
    with_length("a_length_of_2_to_the_32_and_3", "Content-Length: 4294967299\r\n", 8, "", 9),
    with_length("a_length_of_2_to_the_63_and_3", "Content-Length: 9223372036854775811\r\n", 8, "",
                9),
    with_length("a_length_of_2_to_the_64_and_3", "Content-Length: 18446744073709551619\r\n", 8, "",
                9),
    with_length("a_length_of_80_digits", "Content-Length: " + std::string(80, '9') + "\r\n", 8, "",
                9),
    with_length("a_length_in_lower_case_is_not_seen", "content-length: 3\r\n", 0, "12345", 0),
    with_length("a_length_without_blank_is_not_seen", "Content-Length:3\r\n", 0, "12345", 0),
    with_length("a_length_after_two_blanks", "Content-Length:  3\r\n", 0, "123", 0),
    with_length("a_length_in_another_header", "X-Content-Length: 3\r\n", 0, "123", 0),
    with_length("two_lengths_the_last_larger", "Content-Length: 3\r\nContent-Length: 6\r\n", 9, "",
                9),
    with_length("two_lengths_the_last_smaller", "Content-Length: 6\r\nContent-Length: 3\r\n", 0,
                "123", 0),
    with_length("two_lengths_the_last_unreadable", "Content-Length: 6\r\nContent-Length: x\r\n", 0,
                "12345", 0),
    with_length("two_lengths_in_one_line", "Content-Length: 3, 6\r\n", 0, "123", 0),
};

static const Hostile BODIES[] = {
    same("a_body_with_NULs", http_head(7) + "\0a\0b\0c\0"s, 0, "\0a\0b\0c\0"s),
    same("a_body_of_all_bytes", http_head() + all_bytes(), 0, all_bytes()),
    same("an_empty_body", http_head(0), 0),
    same("a_body_in_chunks_comes_as_it_is",
         OK + "Transfer-Encoding: chunked\r\n\r\n5\r\n12345\r\n0\r\n\r\n", 0,
         "5\r\n12345\r\n0\r\n\r\n"),
    same("a_compressed_body_comes_as_it_is", OK + "Content-Encoding: gzip\r\n\r\n\x1f\x8b\0\0"s, 0,
         "\x1f\x8b\0\0"s),
    same("a_second_answer_belongs_to_the_body", http_head() + "1" + http_head() + "2", 0,
         "1" + http_head() + "2"),
    endless_body("a_body_without_end", http_head(), 0, std::string(1024 * 1024, 'x')),
    endless_body("a_body_without_end_beyond_its_length", http_head(5), 0, "xxxxx"),
    endless_body("a_body_without_end_of_1_GB", http_head(1'000'000'000), 8, ""),
};

// Nothing asks for urgent data: the byte is lost, and everything around it is read as without it.
static Hostile urgent_between(const char *name, const std::string &before,
                              const std::string &after) {
    return same(name, {http_send(before), http_send_urgent('!'), http_send(after)}, 0, "12345");
}

static const Hostile URGENT[] = {
    urgent_between("an_urgent_byte_before_the_status_line", "", http_head(5) + "12345"),
    urgent_between("an_urgent_byte_in_the_status_line", "HTTP/1.1 2", "00 OK\r\n\r\n12345"),
    urgent_between("an_urgent_byte_between_CR_and_LF", OK + "\r", "\n12345"),
    urgent_between("an_urgent_byte_before_the_body", http_head(5), "12345"),
    urgent_between("an_urgent_byte_in_the_body", http_head(5) + "12", "345"),
    urgent_between("an_urgent_byte_in_a_body_without_length", http_head() + "12", "345"),
    urgent_between("an_urgent_byte_after_the_body", http_head(5) + "12345", ""),
    {"an_urgent_byte_in_a_length",
     {http_send(OK + "Content-Length: "), http_send_urgent('!'), http_send("3\r\n\r\n12345")},
     0,
     "123",
     0,
     "12345"},
    same("an_urgent_byte_does_not_make_up_for_a_missing_one",
         {http_send(http_head(5) + "1234"), http_send_urgent('5')}, 9, "1234"),
    same("an_urgent_byte_is_no_status_line", HttpScript{http_send_urgent('H')}, 5),
};

static const Hostile WITHOUT_END[] = {
    endless("a_status_line_without_end", "", "x", 6),
    endless("NULs_without_end", "", "\0"s, 6),
    endless("a_status_line_of_200_without_end", "", " 200 ", 5),
    endless("header_lines_without_end", OK, "A: b\r\n", 5),
    endless("a_header_line_without_end", OK, "x", 5),
    endless("lengths_without_end", OK, "Content-Length: 5\r\n", 5),
};

static const Hostile SILENT[] = {
    silent("silent_after_the_request", "", 5),
    silent("silent_in_the_status_line", "HTTP/1.1 2", 6),
    silent("silent_after_the_status_line", OK, 0),
    silent("silent_in_a_header", OK + "Content-Len", 0),
    silent("silent_after_the_length", OK + "Content-Length: 5\r\n", 9),
    silent("silent_in_the_body", http_head(5) + "123", 9, "123"),
    silent("silent_after_a_body_without_length", http_head() + "12345", 0, "12345"),
};

static std::string name_of(const testing::TestParamInfo<Hostile> &info) {
    return info.param.name;
}

static void PrintTo(const Hostile &hostile, std::ostream *stream) {
    *stream << hostile.name;
}

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

struct HttpClientHostile : testing::TestWithParam<Hostile> {
    const std::uint32_t usual_timeout = http_client_limits.timeout;
    const std::int64_t usual_disk_bytes = http_client_limits.disk_bytes;
    int files = open_files();
    std::chrono::steady_clock::time_point start = std::chrono::steady_clock::now();

    HttpClientHostile() {
        http_client_limits.disk_bytes = DISK_BYTES;
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
    INSTANTIATE_TEST_SUITE_P(table, HttpClientHostile, testing::ValuesIn(table), name_of)
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
    std::string head = OK;
    while (head.size() < LIMIT - 100)
        head += "A: " + std::string(50, 'x') + "\r\n";
    const std::size_t left = LIMIT - head.size() - 4;
    for (const bool longer : {false, true}) {
        HttpServer server({http_send(head + filler(left + (longer ? 1 : 0)) + "\r\n\r\n12345")});
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
