#include "platform/network.h"

#include "tests/support/http_server.h"

#include <atomic>
#include <chrono>
#include <cstring>
#include <gtest/gtest.h>
#include <string>

#ifndef _WIN32
#include "platform/posix/recorder.h"

#include <sys/socket.h>
#endif

static constexpr unsigned char LOOPBACK[4] = {127, 0, 0, 1};

static bool is_loopback(std::uint32_t address) {
    return std::memcmp(&address, LOOPBACK, sizeof LOOPBACK) == 0;
}

struct Network : testing::Test {
    void SetUp() override {
        ASSERT_EQ(0, network_start());
    }
    void TearDown() override {
        network_stop();
    }
};

TEST(NetworkStart, it_starts_and_stops_and_starts_again) {
    EXPECT_EQ(0, network_start());
    network_stop();
    EXPECT_EQ(0, network_start());
    network_stop();
}

TEST_F(Network, a_host_is_found_by_its_name) {
    std::uint32_t address = 0;
    EXPECT_TRUE(network_find_host("localhost", &address));
    EXPECT_TRUE(is_loopback(address));
}

TEST_F(Network, a_name_that_cannot_be_one_is_not_found) {
    std::uint32_t address = 1;
    EXPECT_FALSE(network_find_host(std::string(64, 'x').c_str(), &address));
    EXPECT_FALSE(network_find_host((std::string(300, 'x') + ".example").c_str(), &address));
    EXPECT_EQ(1u, address);
}

TEST_F(Network, a_host_is_found_by_its_address) {
    std::uint32_t address = 0;
    EXPECT_TRUE(network_find_address("127.0.0.1", &address));
    EXPECT_TRUE(is_loopback(address));
}

TEST_F(Network, what_is_no_address_is_not_found) {
    std::uint32_t address = 1;
    for (const char *text : {"", "127.0.0.1x", "127.0.0.256", "localhost", "255.255.255.255"})
        EXPECT_FALSE(network_find_address(text, &address)) << text;
    EXPECT_EQ(1u, address);
}

static NetworkSocket connected_to(const HttpServer &server) {
    std::uint32_t address = 0;
    EXPECT_TRUE(network_find_host("localhost", &address));
    const NetworkSocket socket = network_open();
    EXPECT_NE(NETWORK_NO_SOCKET, socket);
    EXPECT_TRUE(network_connect(socket, address, static_cast<std::uint16_t>(server.port)));
    EXPECT_TRUE(network_wait(socket, NetworkWait::ToConnect, 10'000));
    EXPECT_TRUE(network_connected(socket));
    return socket;
}

// Connected to a server that sends this.
struct Connected : Network {
    HttpServer server{{http_send("abc"), http_wait_for_close()}};
    NetworkSocket socket = NETWORK_NO_SOCKET;

    void SetUp() override {
        Network::SetUp();
        server.reads_requests = false;
        socket = connected_to(server);
    }
    void TearDown() override {
        network_close(socket);
        Network::TearDown();
    }
};

TEST_F(Connected, bytes_are_sent_and_received) {
    EXPECT_EQ(2, network_send(socket, "xy", 2));
    ASSERT_TRUE(network_wait(socket, NetworkWait::ToReceive, 10'000));
    char bytes[4] = {};
    EXPECT_EQ(3, network_receive(socket, bytes, sizeof bytes));
    EXPECT_STREQ("abc", bytes);
}

TEST_F(Connected, a_receive_that_times_out_says_so) {
    char bytes[4];
    while (network_receive(socket, bytes, 1) == 1 && bytes[0] != 'c') {
    }
    EXPECT_FALSE(network_wait(socket, NetworkWait::ToReceive, 1));
    network_set_timeouts(socket, 100);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(NETWORK_TIMED_OUT, network_receive(socket, bytes, sizeof bytes));
    EXPECT_GT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(50));
}

TEST_F(Network, urgent_data_are_neither_waited_for_nor_received) {
    std::atomic<bool> looked = false;
    HttpServer server(
        {http_send_urgent('!'), http_wait_for(looked), http_send("abc"), http_wait_for_close()});
    server.reads_requests = false;
    const NetworkSocket socket = connected_to(server);
    EXPECT_FALSE(network_wait(socket, NetworkWait::ToReceive, 200));
    looked = true;
    EXPECT_TRUE(network_wait(socket, NetworkWait::ToReceive, 10'000));
    char bytes[4] = {};
    EXPECT_EQ(3, network_receive(socket, bytes, sizeof bytes));
    EXPECT_STREQ("abc", bytes);
    network_close(socket);
}

#ifndef _WIN32
static std::uint32_t timeout_of(NetworkSocket socket, int direction) {
    timeval time{};
    socklen_t size = sizeof time;
    getsockopt(static_cast<int>(socket), SOL_SOCKET, direction, &time, &size);
    return static_cast<std::uint32_t>(time.tv_sec * 1000 + time.tv_usec / 1000);
}

TEST_F(Connected, both_time_outs_are_set) {
    network_set_timeouts(socket, 30'250);
    EXPECT_NEAR(30'250, timeout_of(socket, SO_RCVTIMEO), 10); // in ticks of the system
    EXPECT_NEAR(30'250, timeout_of(socket, SO_SNDTIMEO), 10);
}

TEST(NetworkStart, a_network_that_is_missing_does_not_start) {
    recorder.network_missing = true;
    EXPECT_EQ(1, network_start());
    EXPECT_EQ(0, recorder.network_users);
}

TEST(NetworkStart, the_proxy_setting_is_the_recorder_s) {
    recorder.proxy = {.access = NETWORK_NAMED_PROXY, .proxies = "proxy:80", .bypass = "<local>"};
    ProxySetting setting;
    EXPECT_EQ(0, network_proxy_setting(&setting));
    EXPECT_EQ(NETWORK_NAMED_PROXY, setting.access);
    EXPECT_EQ("proxy:80", setting.proxies);
    EXPECT_EQ("<local>", setting.bypass);
    recorder.proxy_missing = true;
    EXPECT_EQ(1, network_proxy_setting(&setting));
}
#endif

TEST_F(Network, a_port_where_nobody_listens_refuses) {
    std::int32_t port;
    {
        HttpServer server;
        port = server.port;
    }
    std::uint32_t address = 0;
    ASSERT_TRUE(network_find_host("localhost", &address));
    const NetworkSocket socket = network_open();
    if (network_connect(socket, address, static_cast<std::uint16_t>(port))) {
        EXPECT_TRUE(network_wait(socket, NetworkWait::ToConnect, 10'000));
        EXPECT_FALSE(network_connected(socket));
    }
    network_close(socket);
}
