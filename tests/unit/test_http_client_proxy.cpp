#include "platform/text.h"
#include "update/http_client.h"
#include "update/http_client_parts.h"

#include <gtest/gtest.h>
#include <initializer_list>
#include <string>

#ifndef _WIN32
#include "platform/posix/recorder.h"
#endif

static constexpr std::int32_t DIRECT = 1; // as http_client_use_proxy says it
static constexpr std::int32_t PROXY = 0;

static void set_proxy(const std::string &proxies, const std::string &bypass = "") {
    http_client_set_proxy({.access = NETWORK_NAMED_PROXY, .proxies = proxies, .bypass = bypass});
}

static std::string proxy() {
    return proxy_host + (":" + std::to_string(proxy_port));
}

// Before any test.
static const std::string PROXY_AT_FIRST = proxy();
static const std::int32_t BYPASS_LOCAL_AT_FIRST = proxy_bypass_local;
static const std::int32_t BYPASS_LIST_TOTAL_AT_FIRST = proxy_bypass_list_total;

static void set_bypass_entries(std::initializer_list<const char *> entries) {
    proxy_bypass_list_total = 0;
    for (const char *entry : entries)
        text_copy(proxy_bypass_list[proxy_bypass_list_total++], entry);
}

TEST(HttpClientProxy, at_first_there_is_no_proxy_and_proxy_bypass_local_starts_as_1) {
    EXPECT_EQ(":80", PROXY_AT_FIRST);
    EXPECT_EQ(1, BYPASS_LOCAL_AT_FIRST);
    EXPECT_EQ(0, BYPASS_LIST_TOTAL_AT_FIRST);
}

TEST(
    HttpClientProxy,
    a_per_protocol_proxy_list_http_proxy_8080_https_proxy_8443_gives_the_proxy_host_proxy_and_the_port_8080_a_plain_proxy_entry_without_a_port_gives_port_80) {
    set_proxy("http=proxy:8080;https=proxy:8443");
    EXPECT_EQ("proxy:8080", proxy());
    set_proxy("proxy");
    EXPECT_EQ("proxy:80", proxy());
}

TEST(HttpClientProxy,
     a_bypass_string_local_alone_keeps_proxy_bypass_local_at_1_and_stores_one_entry) {
    set_proxy("proxy", "<local>");
    EXPECT_EQ(1, proxy_bypass_local);
    ASSERT_EQ(1, proxy_bypass_list_total);
    EXPECT_STREQ("<local>", proxy_bypass_list[0]);
}

TEST(HttpClientProxy,
     a_bypass_string_lan_local_clears_proxy_bypass_local_and_stores_only_the_local_entry) {
    set_proxy("proxy", "*.lan;<local>");
    EXPECT_EQ(0, proxy_bypass_local);
    ASSERT_EQ(1, proxy_bypass_list_total);
    EXPECT_STREQ("<local>", proxy_bypass_list[0]);
}

TEST(HttpClientProxy, only_a_named_proxy_is_used) {
    for (const std::int32_t access : {-1, 0, 1, 2, 4, 5}) {
        set_proxy("earlier", "a;<local>");
        http_client_set_proxy({.access = access, .proxies = "proxy:1", .bypass = "a;<local>"});
        EXPECT_STREQ("", proxy_host) << access;
        EXPECT_EQ(1, proxy_bypass_local);
        EXPECT_EQ(0, proxy_bypass_list_total);
    }
}

TEST(HttpClientProxy, a_plain_list_is_the_proxy_whole_with_its_port) {
    set_proxy("10.0.0.1:3128");
    EXPECT_EQ("10.0.0.1:3128", proxy());
    set_proxy("one two:7");
    EXPECT_EQ("one two:7", proxy());
}

TEST(HttpClientProxy, a_proxy_of_255_characters_is_kept_and_of_a_longer_one_the_first_255) {
    const std::string name(255, 'p');
    set_proxy(name + "xx:81");
    EXPECT_EQ(name + ":80", proxy());
    set_proxy("http=" + name + "xx:81");
    EXPECT_EQ(name + ":80", proxy());
}

TEST(HttpClientProxy, a_per_protocol_list_is_cut_at_a_blank_only) {
    set_proxy("ftp=f:21 http=proxy:8080 https=proxy:8443");
    EXPECT_EQ("proxy:8080", proxy());
    set_proxy("http=proxy;https=other:8443");
    EXPECT_EQ("proxy;https=other:8443", proxy()) << "the following entry is taken along";
}

TEST(HttpClientProxy, a_per_protocol_list_without_http_gives_no_proxy) {
    set_proxy("https=proxy:8443;ftp=proxy:21", "a");
    EXPECT_STREQ("", proxy_host);
    EXPECT_EQ(1, proxy_bypass_local) << "the bypass list is not read then";
}

TEST(HttpClientProxy, an_empty_proxy_is_none_and_its_bypass_list_is_not_read) {
    for (const char *list : {"", "http=", "http= a:1"}) {
        set_proxy(list, "a;<local>");
        EXPECT_STREQ("", proxy_host) << list;
        EXPECT_EQ(1, proxy_bypass_local) << list;
        EXPECT_EQ(0, proxy_bypass_list_total) << list;
    }
}

TEST(HttpClientProxy, a_port_that_is_missing_or_no_number_is_80_and_one_too_large_stays_so) {
    for (const char *list : {"proxy:", "proxy:x", "proxy:-1", "proxy:0"}) {
        set_proxy(list);
        EXPECT_EQ("proxy:80", proxy()) << list;
    }
    set_proxy("proxy:4294967376");
    EXPECT_EQ(HTTP_PORT_TOO_LARGE, proxy_port);
}

TEST(HttpClientProxy, a_new_setting_replaces_the_earlier_one_whole) {
    set_proxy("proxy:8080", "a;<local>;<local>");
    set_proxy("other");
    EXPECT_EQ("other:80", proxy());
    EXPECT_EQ(1, proxy_bypass_local);
    EXPECT_EQ(0, proxy_bypass_list_total);
}

TEST(HttpClientProxy, the_bypass_list_is_split_at_blanks_semicolons_and_commas) {
    set_proxy("proxy", "<local>;<local>,<local> <local>");
    EXPECT_EQ(1, proxy_bypass_local);
    EXPECT_EQ(4, proxy_bypass_list_total);
    set_proxy("proxy", "<local>;");
    EXPECT_EQ(1, proxy_bypass_local) << "after the last separator there is no entry";
    EXPECT_EQ(1, proxy_bypass_list_total);
}

TEST(HttpClientProxy, the_first_character_of_a_bypass_entry_never_separates) {
    set_proxy("proxy", ";<local>");
    EXPECT_EQ(0, proxy_bypass_local) << "the entry is \";<local>\"";
    EXPECT_EQ(0, proxy_bypass_list_total);
    set_proxy("proxy", "<local>; <local>");
    EXPECT_EQ(0, proxy_bypass_local) << "the second entry is \" <local>\"";
    EXPECT_EQ(1, proxy_bypass_list_total);
    set_proxy("proxy", ";;<local>");
    EXPECT_EQ(0, proxy_bypass_local) << "the first entry is \";\"";
    EXPECT_EQ(1, proxy_bypass_list_total);
}

TEST(HttpClientProxy, entries_that_are_not_exactly_local_clear_the_flag_and_are_not_stored) {
    for (const char *entry : {"a", "*", "<LOCAL>", "<local>x", "<loca", "192.168.*"}) {
        set_proxy("proxy", entry);
        EXPECT_EQ(0, proxy_bypass_local) << entry;
        EXPECT_EQ(0, proxy_bypass_list_total) << entry;
    }
}

TEST(HttpClientProxy, a_hundred_bypass_entries_are_counted_and_no_more) {
    std::string list;
    for (int i = 0; i < 101; i++)
        list += "<local>;";
    set_proxy("proxy", list);
    EXPECT_EQ(100, proxy_bypass_list_total);
    EXPECT_EQ(1, proxy_bypass_local);
    EXPECT_STREQ("<local>", proxy_bypass_list[99]);
    set_proxy("proxy", list + "a");
    EXPECT_EQ(0, proxy_bypass_local) << "entries beyond still clear the flag";
}

TEST(HttpClientProxy, of_a_bypass_string_the_first_25500_characters_are_read) {
    const std::string filler(25493, 'a');
    set_proxy("proxy", filler.substr(1) + ";<local>");
    EXPECT_EQ(1, proxy_bypass_list_total);
    set_proxy("proxy", filler + ";<local>");
    EXPECT_EQ(0, proxy_bypass_list_total) << "of the last entry \"<local\" is left";
}

TEST(HttpClientProxy, without_a_proxy_every_host_is_reached_directly) {
    http_client_set_proxy({.access = NETWORK_DIRECT, .proxies = "", .bypass = ""});
    EXPECT_EQ(DIRECT, http_client_use_proxy("host.example"));
    set_bypass_entries({"other"});
    EXPECT_EQ(DIRECT, http_client_use_proxy("host.example"));
}

TEST(HttpClientProxy, with_an_empty_bypass_list_every_host_goes_through_the_proxy) {
    set_proxy("proxy");
    EXPECT_EQ(PROXY, http_client_use_proxy("host.example"));
    EXPECT_EQ(PROXY, http_client_use_proxy("host")) << "the flag is 1";
}

TEST(HttpClientProxy, with_the_flag_cleared_a_host_without_a_dot_is_reached_directly) {
    set_proxy("proxy", "a");
    EXPECT_EQ(DIRECT, http_client_use_proxy("host"));
    EXPECT_EQ(PROXY, http_client_use_proxy("host.example"));
    EXPECT_EQ(DIRECT, http_client_use_proxy(""));
}

TEST(HttpClientProxy, the_stored_local_entry_matches_only_a_host_that_contains_it) {
    set_proxy("proxy", "<local>");
    EXPECT_EQ(PROXY, http_client_use_proxy("host"));
    EXPECT_EQ(PROXY, http_client_use_proxy("host.example"));
    EXPECT_EQ(DIRECT, http_client_use_proxy("a<local>b"));
}

TEST(HttpClientProxy, an_entry_with_a_star_at_both_ends_matches_its_middle_anywhere) {
    set_proxy("proxy");
    set_bypass_entries({"*lan*"});
    for (const char *host : {"lan", "a.lan", "lan.a", "a.lan.b"})
        EXPECT_EQ(DIRECT, http_client_use_proxy(host)) << host;
    EXPECT_EQ(PROXY, http_client_use_proxy("la.n"));
    for (const char *entry : {"*", "**"}) {
        set_bypass_entries({entry});
        EXPECT_EQ(DIRECT, http_client_use_proxy("host.example")) << entry;
    }
}

TEST(HttpClientProxy, an_entry_with_a_star_at_its_end_matches_the_beginning) {
    set_proxy("proxy");
    set_bypass_entries({"192.168.*"});
    EXPECT_EQ(DIRECT, http_client_use_proxy("192.168.0.1"));
    EXPECT_EQ(DIRECT, http_client_use_proxy("192.168."));
    EXPECT_EQ(PROXY, http_client_use_proxy("10.192.168.1"));
    EXPECT_EQ(PROXY, http_client_use_proxy("192.168"));
}

TEST(HttpClientProxy, an_entry_with_a_star_at_its_beginning_matches_anywhere) {
    set_proxy("proxy");
    set_bypass_entries({"*.lan"});
    EXPECT_EQ(DIRECT, http_client_use_proxy("host.lan"));
    EXPECT_EQ(DIRECT, http_client_use_proxy("host.lan.example")) << "not only at the end";
    EXPECT_EQ(PROXY, http_client_use_proxy("lan.example"));
}

TEST(HttpClientProxy, an_entry_without_a_star_matches_anywhere) {
    set_proxy("proxy");
    set_bypass_entries({"exam"});
    EXPECT_EQ(DIRECT, http_client_use_proxy("host.example"));
    EXPECT_EQ(DIRECT, http_client_use_proxy("exam.host"));
    EXPECT_EQ(PROXY, http_client_use_proxy("host.EXAMPLE"));
    set_bypass_entries({"ex*m"});
    EXPECT_EQ(PROXY, http_client_use_proxy("host.example")) << "a star inside is a character";
}

TEST(HttpClientProxy, any_entry_that_matches_means_direct) {
    set_proxy("proxy");
    set_bypass_entries({"a.b", "*.lan", "10.*"});
    EXPECT_EQ(DIRECT, http_client_use_proxy("x.a.b.y"));
    EXPECT_EQ(DIRECT, http_client_use_proxy("10.0.0.1"));
    EXPECT_EQ(PROXY, http_client_use_proxy("11.0.0.1"));
}

#ifndef _WIN32
TEST(HttpClientProxy, initialising_takes_the_system_s_setting_over) {
    recorder.proxy = {.access = NETWORK_NAMED_PROXY, .proxies = "proxy:8080", .bypass = "a"};
    EXPECT_EQ(0, http_client_init_proxy_settings());
    EXPECT_EQ("proxy:8080", proxy());
    EXPECT_EQ(0, proxy_bypass_local);
}

TEST(HttpClientProxy, without_a_setting_initialising_returns_1_and_clears_what_was) {
    set_proxy("proxy:8080", "a;<local>");
    recorder.proxy_missing = true;
    EXPECT_EQ(1, http_client_init_proxy_settings());
    EXPECT_STREQ("", proxy_host);
    EXPECT_EQ(1, proxy_bypass_local);
    EXPECT_EQ(0, proxy_bypass_list_total);
}
#endif
