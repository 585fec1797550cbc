// Requests through a real forwarding proxy, and past it.
#include "platform/text.h"
#include "tests/support/http_server.h"
#include "tests/support/test_folder.h"
#include "update/http_client.h"
#include "update/http_client_parts.h"

#include <gtest/gtest.h>
#include <string>

struct HttpClientForward : testing::Test {
    HttpServer server{http_answer("body")};
    HttpProxy proxy;

    void SetUp() override {
        http_client_set_agent_string("Orvanel");
    }
    void TearDown() override {
        http_client_set_proxy({.access = NETWORK_DIRECT, .proxies = "", .bypass = ""});
    }
    std::string proxy_name() const {
        return "localhost:" + std::to_string(proxy.port);
    }
    void use(const std::string &proxies, const std::string &bypass = "") const {
        http_client_set_proxy(
            {.access = NETWORK_NAMED_PROXY, .proxies = proxies, .bypass = bypass});
    }
    std::string url(const std::string &host, const std::string &path = "/") const {
        return "http://" + host + ":" + std::to_string(server.port) + path;
    }
    // What a download brings, which is the server's body or nothing.
    std::int32_t download(const std::string &address) const {
        char *buffer;
        const std::int32_t result = http_client_download(address.c_str(), &buffer);
        EXPECT_STREQ(result == HTTP_OK ? "body" : nullptr, buffer);
        http_client_release(buffer);
        return result;
    }
};

TEST_F(HttpClientForward, the_request_to_a_proxy_names_the_whole_URL_and_is_else_the_same) {
    use(proxy_name());
    EXPECT_EQ(HTTP_OK, download(url("host.example", "/a/b.xml?c=d#e")));
    proxy.stop();
    ASSERT_EQ(1u, proxy.requests.size());
    EXPECT_EQ("GET " + url("host.example", "/a/b.xml?c=d#e") +
                  " HTTP/1.1\r\n"
                  "Host: host.example\r\n"
                  "Connection: close\r\n"
                  "User-Agent: Orvanel\r\n"
                  "Accept: html/text\r\n"
                  "Cache-Control: no\r\n"
                  "Referer: -\r\n"
                  "\r\n",
              proxy.requests[0]);
}

TEST_F(HttpClientForward,
       a_URL_with_a_query_sent_directly_loses_the_query_and_sent_through_a_proxy_keeps_it) {
    EXPECT_EQ(HTTP_OK, download(url("localhost", "/a?b=c")));
    use(proxy_name());
    EXPECT_EQ(HTTP_OK, download(url("localhost", "/a?b=c")));
    server.stop();
    ASSERT_EQ(2u, server.requests.size());
    EXPECT_TRUE(server.requests[0].starts_with("GET /a HTTP/1.1\r\n")) << server.requests[0];
    EXPECT_TRUE(server.requests[1].starts_with("GET /a?b=c HTTP/1.1\r\n")) << server.requests[1];
    EXPECT_EQ(1, proxy.connections());
}

TEST_F(HttpClientForward, the_proxy_resolves_the_host_and_the_client_does_not) {
    use(proxy_name());
    EXPECT_EQ(HTTP_OK, download(url("a" + std::string(100, 'x') + ".example")));
    EXPECT_EQ(HTTP_OK, download(url("1.2.3.256")));
    EXPECT_EQ(2, proxy.connections());
}

TEST_F(HttpClientForward, a_long_URL_goes_to_the_proxy_as_it_is) {
    use(proxy_name());
    const std::string address = url("host.example", "/" + std::string(3000, 'p'));
    EXPECT_EQ(HTTP_OK, download(address));
    proxy.stop();
    EXPECT_TRUE(proxy.requests.at(0).starts_with("GET " + address + " HTTP/1.1\r\n"));
}

TEST_F(HttpClientForward, a_proxy_for_each_protocol) {
    use("ftp=other:21 http=" + proxy_name() + ";https=other:8443");
    EXPECT_EQ(HTTP_OK, download(url("host.example")));
    EXPECT_EQ(1, proxy.connections());
    use("https=" + proxy_name());
    EXPECT_EQ(HTTP_OK, download(url("localhost"))) << "none for this protocol: directly";
    EXPECT_EQ(1, proxy.connections());
}

TEST_F(HttpClientForward, a_proxy_by_its_address) {
    use("127.0.0.1:" + std::to_string(proxy.port));
    EXPECT_EQ(HTTP_OK, download(url("host.example")));
    EXPECT_EQ(1, proxy.connections());
}

TEST_F(HttpClientForward, a_bypass_list_sends_hosts_without_a_dot_past_the_proxy) {
    use(proxy_name(), "*.lan");
    EXPECT_EQ(HTTP_OK, download(url("localhost")));
    EXPECT_EQ(0, proxy.connections());
    EXPECT_EQ(HTTP_OK, download(url("host.lan"))) << "what the list names is not kept";
    EXPECT_EQ(1, proxy.connections());
}

TEST_F(HttpClientForward, a_bypass_list_of_local_alone_sends_all_hosts_to_the_proxy) {
    use(proxy_name(), "<local>");
    EXPECT_EQ(HTTP_OK, download(url("localhost")));
    EXPECT_EQ(HTTP_OK, download(url("host.example")));
    EXPECT_EQ(2, proxy.connections());
}

TEST_F(HttpClientForward, a_host_that_an_entry_matches_is_reached_past_the_proxy) {
    use(proxy_name());
    text_copy(proxy_bypass_list[0], "127.*");
    proxy_bypass_list_total = 1;
    EXPECT_EQ(HTTP_OK, download(url("127.0.0.1")));
    EXPECT_EQ(0, proxy.connections());
    EXPECT_EQ(HTTP_OK, download(url("localhost")));
    EXPECT_EQ(1, proxy.connections());
}

TEST_F(HttpClientForward, a_server_that_the_proxy_cannot_reach_gives_6) {
    use(proxy_name());
    EXPECT_EQ(HTTP_BAD_STATUS, download("http://host.example:1/"));
}

TEST_F(HttpClientForward,
       a_proxy_that_does_not_exist_gives_2_and_one_that_does_not_listen_gives_3) {
    use("1.2.3.256:80");
    EXPECT_EQ(HTTP_NO_HOST, download(url("localhost")));
    use(proxy_name() + "0000");
    EXPECT_EQ(HTTP_NO_CONNECTION, download(url("localhost")));
    proxy.stop();
    EXPECT_EQ(0, proxy.connections());
}

TEST_F(HttpClientForward, the_other_downloads_go_through_the_proxy_too) {
    use(proxy_name());
    TestFolder folder;
    EXPECT_EQ(HTTP_OK,
              http_client_download_to_disk(url("host.example").c_str(), folder.file("x").c_str()));
    EXPECT_EQ("body", folder.read("x"));
    HttpConnection connection;
    std::int64_t length;
    EXPECT_EQ(HTTP_OK, http_client_download_to_disk_chunked_open(url("host.example").c_str(),
                                                                 &connection, &length));
    EXPECT_EQ(4, length);
    http_client_close(&connection);
    EXPECT_EQ(2, proxy.connections());
}
