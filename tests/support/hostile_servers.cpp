#include "tests/support/hostile_servers.h"

#include "platform/thread.h"
#include "tests/support/signature_vectors.h"
#include "tests/support/test_installer.h"
#include "update/auto_update.h"
#include "update/http_client.h"

using namespace std::string_literals;

static constexpr std::int64_t ENDLESS = std::int64_t{1} << 40; // times
static const std::string OK = "HTTP/1.1 200 OK\r\n";

std::atomic<std::uint32_t> hostile_silence = 0;

// What the server has sent is all that ever comes.
static HttpScript then_silence(HttpScript script) {
    script.push_back(http_call([] {
        thread_sleep(hostile_silence);
        std::atomic_ref(http_client_limits.timeout) = 1;
    }));
    script.push_back(http_wait_for_close());
    return script;
}

// ---- servers with a short body

// Most answers end both downloads alike.
static HostileServer same(const char *name, const HttpScript &script, std::int32_t code,
                          const std::string &body = "") {
    return {name, script, code, code == HTTP_OK ? body : "", code, body};
}

static HostileServer same(const char *name, const std::string &answer, std::int32_t code,
                          const std::string &body = "") {
    return same(name, HttpScript{http_send(answer)}, code, body);
}

static HostileServer with_length(const char *name, const std::string &lines, std::int32_t memory,
                                 const std::string &in_memory, std::int32_t disk) {
    return {name, {http_send(OK + lines + "\r\n12345")}, memory, in_memory, disk, "12345"};
}

static HostileServer silent(const char *name, const std::string &answer, std::int32_t code,
                            const std::string &body = "") {
    HostileServer server = same(name, answer, code, body);
    server.script = then_silence(server.script);
    return server;
}

static HostileServer one_byte(HostileServer server) {
    server.byte_is_installer = true;
    return server;
}

static HostileServer endless(const char *name, const std::string &start,
                             const std::string &repeated, std::int32_t code) {
    return {name, {http_send(start), http_repeat(repeated, ENDLESS)}, code, "", code, ""};
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

const std::vector<HostileServer> HOSTILE_CLOSED = {
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

const std::vector<HostileServer> HOSTILE_SPLIT = {
    {"one_byte_at_a_time", {http_send_bytewise(http_head(5) + "12345")}, 0, "12345", 0, "12345"},
    one_byte({"one_byte_at_a_time_without_length",
              {http_send_bytewise(http_head() + "12345")},
              0,
              "12345",
              0,
              "12345"}),
    {"one_byte_at_a_time_and_too_short",
     {http_send_bytewise(http_head(5) + "1234")},
     9,
     "",
     9,
     "1234"},
    {"line_ends_in_two_pieces",
     {http_send("HTTP/1.1 200 OK\r"), http_send("\nContent-Length: 5\r"), http_send("\n\r"),
      http_send("\n1234"), http_send("5")},
     0,
     "12345",
     0,
     "12345"},
};

const std::vector<HostileServer> HOSTILE_STATUS = {
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
    one_byte(same("any_line_with_200_in_it", "NOTHING 404 200 ELSE\r\n\r\n12345", 0, "12345")),
    same("an_empty_status_line", "\r\n" + OK + "\r\n12345", 6),
    same("no_head_at_all", "<current_version>9.9.9</current_version>", 6),
    same("line_feeds_alone_are_no_line_ends", "HTTP/1.1 200 OK\nContent-Length: 5\n\n12345", 0),
    same("carriage_returns_alone_are_no_line_ends", "HTTP/1.1 200 OK\r\r12345", 0),
    same("200_beyond_the_99th_byte", std::string(95, 'x') + " 200 OK\r\n\r\n12345", 6),
    one_byte(same("200_up_to_the_99th_byte", std::string(94, 'x') + " 200 \r\n\r\n12345", 0,
                  "\r\n12345")),
    same("a_NUL_before_the_status", "\0"s + OK + "\r\n12345", 6),
    same("noise", all_bytes() + all_bytes(), 6),
};

const std::vector<HostileServer> HOSTILE_LINES = {
    with_length("a_line_of_97_bytes", filler(97) + "\r\nContent-Length: 5\r\n", 0, "12345", 0),
    with_length("a_line_of_98_bytes_leaves_its_LF_to_the_next",
                filler(98) + "\r\nContent-Length: 5\r\n", 0, "12345", 0),
    same("a_last_line_of_98_bytes_hides_the_empty_line", OK + filler(98) + "\r\n\r\n12345", 0),
    one_byte(same("a_line_of_99_bytes_ends_the_head",
                  OK + filler(99) + "\r\nContent-Length: 1\r\n\r\n12345", 0,
                  "Content-Length: 1\r\n\r\n12345")),
    with_length("a_line_of_100_bytes_is_two", filler(100) + "\r\nContent-Length: 5\r\n", 0, "12345",
                0),
    with_length("a_line_of_1000_bytes", filler(1000) + "\r\nContent-Length: 5\r\n", 0, "12345", 0),
    one_byte(with_length("a_key_that_is_split_is_not_seen", filler(90) + "Content-Length: 1\r\n", 0,
                         "12345", 0)),
    one_byte(with_length("a_value_that_is_split_counts_up_to_there",
                         filler(82) + "Content-Length: 19\r\n", 0, "1", 0)),
    one_byte(same("a_NUL_at_the_beginning_of_a_line_ends_the_head", OK + "\0A: b\r\n12345"s, 0,
                  "12345")),
    one_byte(with_length("what_follows_a_NUL_in_a_line_is_not_seen", "A: \0Content-Length: 1\r\n"s,
                         0, "12345", 0)),
};

const std::vector<HostileServer> HOSTILE_LENGTHS = {
    with_length("too_short_a_length", "Content-Length: 3\r\n", 0, "123", 0),
    with_length("too_long_a_length", "Content-Length: 6\r\n", 9, "", 9),
    one_byte(with_length("a_length_of_0_counts_as_none", "Content-Length: 0\r\n", 0, "12345", 0)),
    one_byte(
        with_length("a_negative_length_counts_as_none", "Content-Length: -3\r\n", 0, "12345", 0)),
    one_byte(with_length("a_length_with_a_plus_counts_as_none", "Content-Length: +3\r\n", 0,
                         "12345", 0)),
    one_byte(with_length("a_length_in_words_counts_as_none", "Content-Length: three\r\n", 0,
                         "12345", 0)),
    one_byte(with_length("an_empty_length_counts_as_none", "Content-Length: \r\n", 0, "12345", 0)),
    one_byte(with_length("a_hexadecimal_length_counts_as_none", "Content-Length: 0x3\r\n", 0,
                         "12345", 0)),
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
    one_byte(
        with_length("a_length_in_lower_case_is_not_seen", "content-length: 3\r\n", 0, "12345", 0)),
    one_byte(
        with_length("a_length_without_blank_is_not_seen", "Content-Length:3\r\n", 0, "12345", 0)),
    with_length("a_length_after_two_blanks", "Content-Length:  3\r\n", 0, "123", 0),
    with_length("a_length_in_another_header", "X-Content-Length: 3\r\n", 0, "123", 0),
    with_length("two_lengths_the_last_larger", "Content-Length: 3\r\nContent-Length: 6\r\n", 9, "",
                9),
    with_length("two_lengths_the_last_smaller", "Content-Length: 6\r\nContent-Length: 3\r\n", 0,
                "123", 0),
    one_byte(with_length("two_lengths_the_last_unreadable",
                         "Content-Length: 6\r\nContent-Length: x\r\n", 0, "12345", 0)),
    with_length("two_lengths_in_one_line", "Content-Length: 3, 6\r\n", 0, "123", 0),
};

const std::vector<HostileServer> HOSTILE_BODIES = {
    same("a_body_with_NULs", http_head(7) + "\0a\0b\0c\0"s, 0, "\0a\0b\0c\0"s),
    one_byte(same("a_body_of_all_bytes", http_head() + all_bytes(), 0, all_bytes())),
    same("an_empty_body", http_head(0), 0),
    one_byte(same("a_body_in_chunks_comes_as_it_is",
                  OK + "Transfer-Encoding: chunked\r\n\r\n5\r\n12345\r\n0\r\n\r\n", 0,
                  "5\r\n12345\r\n0\r\n\r\n")),
    one_byte(same("a_compressed_body_comes_as_it_is",
                  OK + "Content-Encoding: gzip\r\n\r\n\x1f\x8b\0\0"s, 0, "\x1f\x8b\0\0"s)),
    one_byte(same("a_second_answer_belongs_to_the_body", http_head() + "1" + http_head() + "2", 0,
                  "1" + http_head() + "2")),
    one_byte({"a_body_without_end",
              {http_send(http_head()), http_repeat("x", ENDLESS)},
              0,
              std::string(1024 * 1024, 'x'),
              10,
              std::string(HOSTILE_DISK_BYTES, 'x')}),
    {"a_body_without_end_beyond_its_length",
     {http_send(http_head(5)), http_repeat("x", ENDLESS)},
     0,
     "xxxxx",
     10,
     std::string(HOSTILE_DISK_BYTES, 'x')},
    {"a_body_without_end_of_1_GB",
     {http_send(http_head(1'000'000'000)), http_repeat("x", ENDLESS)},
     8,
     "",
     10,
     std::string(HOSTILE_DISK_BYTES, 'x')},
};

// Nothing asks for urgent data: the byte is lost, and everything around it is read as without it.
static HostileServer urgent_between(const char *name, const std::string &before,
                                    const std::string &after) {
    return same(name, {http_send(before), http_send_urgent('!'), http_send(after)}, 0, "12345");
}

const std::vector<HostileServer> HOSTILE_URGENT = {
    urgent_between("an_urgent_byte_before_the_status_line", "", http_head(5) + "12345"),
    one_byte(
        urgent_between("an_urgent_byte_in_the_status_line", "HTTP/1.1 2", "00 OK\r\n\r\n12345")),
    one_byte(urgent_between("an_urgent_byte_between_CR_and_LF", OK + "\r", "\n12345")),
    urgent_between("an_urgent_byte_before_the_body", http_head(5), "12345"),
    urgent_between("an_urgent_byte_in_the_body", http_head(5) + "12", "345"),
    one_byte(urgent_between("an_urgent_byte_in_a_body_without_length", http_head() + "12", "345")),
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

const std::vector<HostileServer> HOSTILE_WITHOUT_END = {
    endless("a_status_line_without_end", "", "x", 6),
    endless("NULs_without_end", "", "\0"s, 6),
    endless("a_status_line_of_200_without_end", "", " 200 ", 5),
    endless("header_lines_without_end", OK, "A: b\r\n", 5),
    endless("a_header_line_without_end", OK, "x", 5),
    endless("lengths_without_end", OK, "Content-Length: 5\r\n", 5),
};

const std::vector<HostileServer> HOSTILE_SILENT = {
    silent("silent_after_the_request", "", 5),
    silent("silent_in_the_status_line", "HTTP/1.1 2", 6),
    silent("silent_after_the_status_line", OK, 0),
    silent("silent_in_a_header", OK + "Content-Len", 0),
    silent("silent_after_the_length", OK + "Content-Length: 5\r\n", 9),
    silent("silent_in_the_body", http_head(5) + "123", 9, "123"),
    one_byte(silent("silent_after_a_body_without_length", http_head() + "12345", 0, "12345")),
};

// ---- servers of updates

static HostileUpdate update(const char *name, std::int32_t end, const HttpScript &installer) {
    return {.name = name, .installer = installer, .end = end};
}

static HostileUpdate complete(const char *name, const std::string &file,
                              const HttpScript &installer) {
    return {.name = name, .installer = installer, .end = AUTO_UPDATE_COMPLETE, .file = file};
}

static HostileUpdate not_connected(const char *name, const HttpScript &installer) {
    return update(name, AUTO_UPDATE_NO_CONNECT, installer);
}

static HostileUpdate failed(const char *name, const HttpScript &installer) {
    return update(name, AUTO_UPDATE_FAILED, installer);
}

static HttpScript cut(std::size_t size) {
    return {http_send(http_head(TEST_INSTALLER_SIZE) + test_installer(size))};
}

static HttpScript with_end(HttpScript script, const HttpStep &end) {
    script.push_back(end);
    return script;
}

static HttpScript with_lengths(const std::string &length) {
    return {http_send(OK + "Content-Length: " + length + "\r\n\r\n" + test_installer())};
}

static HttpScript without_end(std::int64_t length) {
    return {http_send(http_head(length)), http_repeat(test_installer(), ENDLESS)};
}

static HostileUpdate byte_of(const char *name, const char *length) {
    return complete(name, test_installer(1), with_lengths(length));
}

const std::vector<HostileUpdate> HOSTILE_INSTALLERS = {
    not_connected("reset_instead_of_an_answer", {http_reset()}),
    failed("reset_after_the_status_line", {http_send(OK), http_reset()}),
    failed("reset_after_the_head", with_end(cut(0), http_reset())),
    failed("reset_in_the_installer", with_end(cut(3000), http_reset())),
    failed("closed_after_the_head", cut(0)),
    failed("closed_after_the_first_byte_of_the_installer", cut(1)),
    failed("closed_before_the_end_of_the_first_chunk", cut(199)),
    failed("closed_after_the_first_chunk", cut(200)),
    failed("closed_in_the_second_chunk", cut(201)),
    failed("closed_in_the_middle_of_the_installer", cut(2000)),
    failed("closed_before_the_last_byte_of_the_installer", cut(3999)),
    failed("silent_after_the_head", then_silence(cut(0))),
    failed("silent_in_the_middle_of_the_installer", then_silence(cut(2000))),
    failed("silent_before_the_last_byte_of_the_installer", then_silence(cut(3999))),
    complete("an_installer_a_byte_at_a_time", test_installer(400),
             {http_send_bytewise(http_head(400) + test_installer(400))}),
    complete("an_installer_longer_than_announced_comes_with_all_its_bytes", test_installer(),
             {http_send(http_head(2000) + test_installer())}),
    failed("an_installer_without_end", without_end(TEST_INSTALLER_SIZE)),
    failed("an_installer_without_end_that_announces_the_bound", without_end(HOSTILE_DISK_BYTES)),
    failed("an_installer_without_end_that_announces_1_GB", without_end(1'000'000'000)),
    failed("an_installer_without_end_that_announces_40_bytes", without_end(40)),
    failed("an_installer_of_1_GiB_that_is_none", with_lengths("1073741824")),
    failed("an_installer_of_2_to_the_31_less_1", with_lengths("2147483647")),
    failed("an_installer_of_2_to_the_31", with_lengths("2147483648")),
    failed("an_installer_of_2_to_the_32_less_1", with_lengths("4294967295")),
    failed("an_installer_of_2_to_the_32", with_lengths("4294967296")),
    failed("an_installer_of_2_to_the_63_less_1", with_lengths("9223372036854775807")),
    failed("an_installer_of_2_to_the_63", with_lengths("9223372036854775808")),
    failed("an_installer_of_a_length_of_32_digits", with_lengths(std::string(32, '9'))),
    byte_of("an_installer_with_an_empty_length", ""),
    byte_of("an_installer_of_0", "0"),
    byte_of("an_installer_of_less_than_nothing", "-4000"),
    byte_of("an_installer_of_a_length_in_letters", "x"),
    failed("two_lengths_the_last_too_long", with_lengths("4000\r\nContent-Length: 4001")),
    complete("two_lengths_the_last_right", test_installer(),
             with_lengths("4001\r\nContent-Length: 4000")),
};

// ---- servers of signatures

static HostileUpdate answered(const char *name, std::int32_t end, const std::string &installer,
                              const HttpScript &signature) {
    return {.name = name,
            .installer = http_answer(installer),
            .end = end,
            .file = end == AUTO_UPDATE_COMPLETE ? installer : "",
            .key = VENDOR_KEY,
            .signature = signature};
}

static HostileUpdate good(const char *name, const HttpScript &signature) {
    return answered(name, AUTO_UPDATE_COMPLETE, test_installer(), signature);
}

static HostileUpdate bad(const char *name, const HttpScript &signature) {
    return answered(name, AUTO_UPDATE_FAILED, test_installer(), signature);
}

// Another installer, with the signature of the usual one.
static HostileUpdate changed(const char *name, const std::string &installer) {
    return answered(name, AUTO_UPDATE_FAILED, installer, http_answer(INSTALLER_SIGNATURE));
}

static std::string flipped(std::string bytes, std::size_t at) {
    bytes[at] = static_cast<char>(bytes[at] ^ 1);
    return bytes;
}

static const std::string SIGNATURE = INSTALLER_SIGNATURE;
static const HttpScript SHORT_OF_A_BYTE = {
    http_send(http_head(static_cast<std::int64_t>(SIGNATURE.size()) + 1) + SIGNATURE)};

const std::vector<HostileUpdate> HOSTILE_SIGNATURES = {
    good("the_vendors_signature", http_answer(SIGNATURE)),
    good("a_signature_a_byte_at_a_time", {http_send_bytewise(http_head() + SIGNATURE + "\r\n")}),
    answered("the_vendors_signature_of_another_file_for_that_file", AUTO_UPDATE_COMPLETE,
             test_installer(3999), http_answer(OTHER_FILES_SIGNATURE)),
    bad("the_vendors_signature_of_another_file", http_answer(OTHER_FILES_SIGNATURE)),
    bad("a_strangers_signature", http_answer(STRANGERS_SIGNATURE)),
    bad("no_such_signature", {http_send("HTTP/1.1 404 Not Found\r\n\r\n" + SIGNATURE)}),
    bad("a_signature_elsewhere",
        {http_send("HTTP/1.1 302 Found\r\nLocation: /other.sig\r\n\r\n" + SIGNATURE)}),
    bad("closed_instead_of_a_signature", {}),
    bad("reset_instead_of_a_signature", {http_reset()}),
    bad("silent_instead_of_a_signature", then_silence({})),
    bad("silent_in_the_head_of_the_signature", then_silence({http_send(OK + "A: b")})),
    bad("silent_in_the_signature", then_silence(SHORT_OF_A_BYTE)),
    bad("a_signature_that_ends_too_early", SHORT_OF_A_BYTE),
    bad("an_empty_signature", http_answer("")),
    bad("a_signature_without_its_end", http_answer(SIGNATURE.substr(0, SIGNATURE.size() - 4))),
    bad("a_signature_with_more_behind_it", http_answer(SIGNATURE + "AAAA")),
    bad("a_signature_with_more_in_front_of_it", http_answer("A" + SIGNATURE)),
    bad("a_signature_with_a_changed_bit", http_answer(flipped(SIGNATURE, 40))),
    bad("a_signature_that_is_no_base64", http_answer("not base64!")),
    bad("a_signature_of_NULs", http_answer(std::string(200, '\0'))),
    bad("a_signature_of_100_KB", http_answer(std::string(100'000, 'A'))),
    bad("a_signature_of_1_TB_that_is_none",
        {http_send(OK + "Content-Length: 1000000000000\r\n\r\n" + SIGNATURE)}),
    bad("a_signature_of_a_negative_length_and_without_end",
        {http_send(OK + "Content-Length: -1\r\n\r\n"), http_repeat("A", ENDLESS)}),
    bad("a_signature_without_end", {http_send(http_head()), http_repeat("A", ENDLESS)}),
    bad("a_head_without_end_before_the_signature", {http_send(OK), http_repeat("x", ENDLESS)}),
    changed("an_installer_with_a_changed_first_byte", flipped(test_installer(), 0)),
    changed("an_installer_with_a_changed_byte_in_the_middle", flipped(test_installer(), 2000)),
    changed("an_installer_with_a_changed_last_byte", flipped(test_installer(), 3999)),
    changed("an_installer_with_more_behind_it", test_installer() + "more"),
    {.name = "an_installer_with_more_behind_it_than_announced",
     .installer = {http_send(http_head(TEST_INSTALLER_SIZE) + test_installer() + "more")},
     .end = AUTO_UPDATE_FAILED,
     .key = VENDOR_KEY,
     .signature = http_answer(SIGNATURE)},
    {.name = "a_byte_of_an_installer",
     .installer = {http_send(http_head() + test_installer())},
     .end = AUTO_UPDATE_FAILED,
     .key = VENDOR_KEY,
     .signature = http_answer(SIGNATURE)},
};

// ---- all of them

HostileUpdate hostile_update(const HostileServer &server) {
    const bool answered_200 = server.disk != HTTP_NO_STATUS && server.disk != HTTP_BAD_STATUS;
    HostileUpdate as_update = {.name = server.name,
                               .installer = server.script,
                               .end = answered_200 ? AUTO_UPDATE_FAILED : AUTO_UPDATE_NO_CONNECT,
                               .reads_request = server.reads_request};
    if (server.byte_is_installer) {
        as_update.end = AUTO_UPDATE_COMPLETE;
        as_update.file = server.on_disk.substr(0, 1);
    }
    return as_update;
}

std::vector<HostileUpdate>
hostile_updates(std::initializer_list<const std::vector<HostileServer> *> servers) {
    std::vector<HostileUpdate> all;
    for (const auto *table : servers) {
        for (const HostileServer &server : *table)
            all.push_back(hostile_update(server));
    }
    all.insert(all.end(), HOSTILE_INSTALLERS.begin(), HOSTILE_INSTALLERS.end());
    all.insert(all.end(), HOSTILE_SIGNATURES.begin(), HOSTILE_SIGNATURES.end());
    return all;
}
