#include "update/http_client.h"
#include "update/http_client_parts.h"

#include <gtest/gtest.h>
#include <limits>
#include <string>

struct Parsed {
    std::int32_t result;
    std::string host, path;
    std::int32_t port;

    bool operator==(const Parsed &) const = default;
};

static std::ostream &operator<<(std::ostream &stream, const Parsed &parsed) {
    return stream << parsed.result << " host " << parsed.host << " path " << parsed.path << " port "
                  << parsed.port;
}

static Parsed parse(const std::string &url) {
    char host[HTTP_HOST_SIZE] = "-", path[HTTP_PATH_SIZE] = "-";
    std::int32_t port = -1;
    const std::int32_t result = http_client_parse_url(url.c_str(), host, path, &port);
    return {result, host, path, port};
}

static Parsed whole(const char *host, const char *path, std::int32_t port = 80) {
    return {HTTP_OK, host, path, port};
}

TEST(HttpClientUrl, URLs_beginning_with_https_or_Http_are_refused_with_11) {
    for (const char *url : {"https://host/", "Http://host/", "hTTP://host/", "HTTp://host/",
                            "ftp://host/", " http://host/", "http:/host/", "http:", "host/", ""})
        EXPECT_EQ(11, parse(url).result) << url;
}

TEST(HttpClientUrl, both_spellings_of_the_scheme_are_taken) {
    EXPECT_EQ(whole("host", "/a"), parse("http://host/a"));
    EXPECT_EQ(whole("host", "/a"), parse("HTTP://host/a"));
}

TEST(HttpClientUrl, the_host_ends_at_a_colon_a_slash_a_backslash_or_the_end) {
    EXPECT_EQ(whole("a.b", "/", 8080), parse("http://a.b:8080"));
    EXPECT_EQ(whole("a.b", "/c"), parse("http://a.b/c"));
    EXPECT_EQ(whole("a.b", "\\c"), parse("http://a.b\\c"));
    EXPECT_EQ(whole("a.b", "/"), parse("http://a.b"));
    EXPECT_EQ(whole("", "/"), parse("http://"));
}

TEST(HttpClientUrl, a_question_mark_does_not_end_the_host) {
    EXPECT_EQ(whole("a.b?c=d", "/"), parse("http://a.b?c=d"));
}

TEST(HttpClientUrl, the_port_is_80_when_none_or_0_or_no_number_is_given) {
    for (const char *url : {"http://h/p", "http://h:/p", "http://h:0/p", "http://h:x/p",
                            "http://h:-5/p", "http://h:000/p"})
        EXPECT_EQ(whole("h", "/p"), parse(url)) << url;
}

TEST(HttpClientUrl, the_digits_after_the_colon_are_the_port) {
    EXPECT_EQ(whole("h", "/p", 8080), parse("http://h:8080/p"));
    EXPECT_EQ(whole("h", "\\p", 8080), parse("http://h:8080\\p"));
    EXPECT_EQ(whole("h", "/", 65535), parse("http://h:65535"));
    EXPECT_EQ(whole("h", "/p", 81), parse("http://h:81x2/p"));
    EXPECT_EQ(whole("h", "/p", 82), parse("http://h:82?:9/p"));
}

TEST(HttpClientUrl, a_port_that_is_too_large_stays_too_large_whatever_its_digits) {
    for (const char *port : {"65536", "65616", "4294967376", "99999999999999999999999999"})
        EXPECT_EQ(HTTP_PORT_TOO_LARGE, parse(std::string("http://h:") + port + "/p").port) << port;
}

TEST(HttpClientUrl, the_path_loses_query_and_fragment) {
    EXPECT_EQ(whole("h", "/a/b.xml"), parse("http://h/a/b.xml?c=d"));
    EXPECT_EQ(whole("h", "/a/b.xml"), parse("http://h/a/b.xml#c"));
    EXPECT_EQ(whole("h", "/a"), parse("http://h/a#b?c"));
    EXPECT_EQ(whole("h", "/", 81), parse("http://h:81/?c=d"));
}

TEST(HttpClientUrl, a_path_of_nothing_or_of_one_character_is_a_slash) {
    EXPECT_EQ(whole("h", "/"), parse("http://h"));
    EXPECT_EQ(whole("h", "/"), parse("http://h/"));
    EXPECT_EQ(whole("h", "/"), parse("http://h\\"));
    EXPECT_EQ(whole("h", "/"), parse("http://h\\?q"));
    EXPECT_EQ(whole("h", "//"), parse("http://h//"));
}

TEST(HttpClientUrl, a_host_of_254_characters_is_kept_and_of_a_longer_one_the_first_254) {
    const std::string host(254, 'h');
    EXPECT_EQ(whole(host.c_str(), "/p", 81), parse("http://" + host + ":81/p"));
    EXPECT_EQ(whole(host.c_str(), "/p", 81), parse("http://" + host + "hhh:81/p"));
}

TEST(HttpClientUrl, a_path_of_255_characters_is_kept_and_of_a_longer_one_the_first_255) {
    const std::string path = "/" + std::string(254, 'p');
    EXPECT_EQ(whole("h", path.c_str()), parse("http://h" + path));
    EXPECT_EQ(whole("h", path.c_str()), parse("http://h" + path + "ppp"));
}

TEST(HttpClientUrl, a_decimal_number_stands_after_blanks_and_ends_at_the_first_other_character) {
    EXPECT_EQ(12, http_client_decimal("12", 100));
    EXPECT_EQ(12, http_client_decimal("  12 34", 100));
    EXPECT_EQ(12, http_client_decimal("12abc", 100));
    EXPECT_EQ(12, http_client_decimal("0012", 100));
}

TEST(HttpClientUrl, a_negative_or_unreadable_number_is_0) {
    for (const char *text : {"", " ", "-1", "- 1", "+1", "x1", "\t1", ".5"})
        EXPECT_EQ(0, http_client_decimal(text, 100)) << text;
}

TEST(HttpClientUrl, a_number_above_the_limit_is_the_limit_and_never_wraps) {
    constexpr std::int64_t MOST = std::numeric_limits<std::int64_t>::max();
    EXPECT_EQ(100, http_client_decimal("100", 100));
    EXPECT_EQ(100, http_client_decimal("101", 100));
    EXPECT_EQ(100, http_client_decimal("1000", 100));
    EXPECT_EQ(MOST, http_client_decimal("9223372036854775807", MOST));
    EXPECT_EQ(MOST - 1, http_client_decimal("9223372036854775806", MOST));
    EXPECT_EQ(MOST, http_client_decimal("9223372036854775808", MOST));
    EXPECT_EQ(MOST, http_client_decimal("18446744073709551617", MOST));
    EXPECT_EQ(MOST, http_client_decimal(std::string(5000, '9').c_str(), MOST));
}
