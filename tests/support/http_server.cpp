#include "tests/support/http_server.h"

#include "platform/socket_calls.h"
#include "platform/thread.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <utility>

#ifndef _WIN32
#include <netinet/tcp.h>
#endif

static constexpr std::uint32_t PATIENCE = 20000; // milliseconds; longer than any test runs
static constexpr std::size_t BLOCK = 64 * 1024;  // bytes
static constexpr int BACKLOG = 8;

HttpStep http_send(const std::string &bytes) {
    return {.kind = HttpStep::Kind::Send, .bytes = bytes};
}

HttpStep http_send_bytewise(const std::string &bytes) {
    return {.kind = HttpStep::Kind::SendBytewise, .bytes = bytes};
}

HttpStep http_send_urgent(char byte) {
    return {.kind = HttpStep::Kind::SendUrgent, .bytes = {byte}};
}

HttpStep http_repeat(const std::string &bytes, std::int64_t times) {
    return {.kind = HttpStep::Kind::Repeat, .bytes = bytes, .times = times};
}

HttpStep http_call(std::function<void()> call) {
    return {.kind = HttpStep::Kind::Call, .call = std::move(call)};
}

HttpStep http_wait_for(const std::atomic<bool> &flag) {
    return http_call([&flag] {
        while (!flag)
            thread_sleep(1);
    });
}

HttpStep http_wait_for_close() {
    return {.kind = HttpStep::Kind::WaitForClose};
}

HttpStep http_reset() {
    return {.kind = HttpStep::Kind::Reset};
}

std::string http_head(std::int64_t length) {
    std::string head = "HTTP/1.1 200 OK\r\nServer: test\r\n";
    if (length >= 0)
        head += "Content-Length: " + std::to_string(length) + "\r\n";
    return head + "\r\n";
}

HttpScript http_answer(const std::string &body) {
    return {http_send(http_head(static_cast<std::int64_t>(body.size())) + body)};
}

// A test without its server proves nothing.
static void require(bool condition, const char *what) {
    if (condition)
        return;
    std::fprintf(stderr, "server of the test: %s\n", what);
    std::abort();
}

static std::uint32_t loopback() {
    return htonl(INADDR_LOOPBACK);
}

static std::int32_t port_of(NetworkSocket socket) {
    sockaddr_in address{};
    SocketLength size = sizeof address;
    require(getsockname(socket_number(socket), reinterpret_cast<sockaddr *>(&address), &size) == 0,
            "no port");
    return ntohs(address.sin_port);
}

static NetworkSocket listen_on_loopback() {
    const NetworkSocket listener = network_open();
    require(listener != NETWORK_NO_SOCKET, "no socket");
    const sockaddr_in address = socket_address(loopback(), 0);
    require(bind(socket_number(listener), reinterpret_cast<const sockaddr *>(&address),
                 sizeof address) == 0,
            "no address");
    require(listen(socket_number(listener), BACKLOG) == 0, "not listening");
    return listener;
}

static NetworkSocket connect_to_loopback(std::int32_t port) {
    const NetworkSocket socket = network_open();
    if (socket_connect(socket, loopback(), static_cast<std::uint16_t>(port)))
        return socket;
    network_close(socket);
    return NETWORK_NO_SOCKET;
}

// The server whose thread is starting; the thread takes it from here.
static std::atomic<LoopbackServer *> starting;

static void accept_connections() {
    LoopbackServer *server = starting.exchange(nullptr);
    for (;;) {
        const SocketNumber accepted = accept(socket_number(server->listener), nullptr, nullptr);
        const NetworkSocket client = static_cast<NetworkSocket>(accepted);
        if (server->stopping) {
            network_close(client);
            return;
        }
        server->accepted++;
        network_set_timeouts(client, PATIENCE);
        server->serve(client);
        network_close(client);
    }
}

LoopbackServer::LoopbackServer() : stopping(false), accepted(0), thread(nullptr) {
    require(network_start() == 0, "no network");
    listener = listen_on_loopback();
    port = port_of(listener);
}

void LoopbackServer::start() {
    starting = this;
    thread = thread_start(accept_connections);
    require(thread != nullptr, "no thread");
    while (starting != nullptr)
        thread_sleep(0);
}

void LoopbackServer::stop() {
    if (thread == nullptr)
        return;
    stopping = true;
    const NetworkSocket wake = connect_to_loopback(port);
    require(thread_join(thread, PATIENCE), "it goes on: has the client closed?");
    network_close(wake);
    thread = nullptr;
}

LoopbackServer::~LoopbackServer() {
    network_close(listener);
    network_stop();
}

std::int32_t LoopbackServer::connections() const {
    return accepted;
}

// The bytes up to and with the empty line, or what came before the end.
static std::string read_head(NetworkSocket client) {
    std::string head;
    char byte;
    while (!head.ends_with("\r\n\r\n") && network_receive(client, &byte, 1) == 1)
        head += byte;
    return head;
}

static bool send_all(NetworkSocket client, const char *bytes, std::size_t size) {
    while (size > 0) {
        const int sent = network_send(client, bytes, size);
        if (sent <= 0)
            return false;
        bytes += sent;
        size -= static_cast<std::size_t>(sent);
    }
    return true;
}

static void send_bytewise(NetworkSocket client, const std::string &bytes) {
    const int at_once = 1;
    socket_set(client, IPPROTO_TCP, TCP_NODELAY, at_once);
    for (const char &byte : bytes) {
        if (!send_all(client, &byte, 1))
            return;
    }
}

static void send_repeatedly(NetworkSocket client, const std::string &bytes, std::int64_t times) {
    std::string block;
    const std::size_t in_block = std::max<std::size_t>(BLOCK / bytes.size(), 1);
    for (std::size_t i = 0; i < in_block; i++)
        block += bytes;
    while (times > 0) {
        const std::size_t now =
            static_cast<std::size_t>(std::min(times, static_cast<std::int64_t>(in_block)));
        if (!send_all(client, block.data(), now * bytes.size()))
            return;
        times -= static_cast<std::int64_t>(now);
    }
}

static void wait_for_close(NetworkSocket client) {
    char bytes[256];
    while (network_receive(client, bytes, sizeof bytes) > 0) {
    }
}

// The close that follows throws everything away that is on its way.
static void prepare_reset(NetworkSocket client) {
    const linger at_once{.l_onoff = 1, .l_linger = 0};
    socket_set(client, SOL_SOCKET, SO_LINGER, at_once);
}

static void play(NetworkSocket client, const HttpStep &step) {
    switch (step.kind) {
    case HttpStep::Kind::Send:
        send_all(client, step.bytes.data(), step.bytes.size());
        break;
    case HttpStep::Kind::SendBytewise:
        send_bytewise(client, step.bytes);
        break;
    case HttpStep::Kind::SendUrgent:
        send(socket_number(client), step.bytes.data(), 1, MSG_OOB);
        break;
    case HttpStep::Kind::Repeat:
        send_repeatedly(client, step.bytes, step.times);
        break;
    case HttpStep::Kind::Call:
        step.call();
        break;
    case HttpStep::Kind::WaitForClose:
        wait_for_close(client);
        break;
    case HttpStep::Kind::Reset:
        prepare_reset(client);
        break;
    }
}

HttpServer::HttpServer(const HttpScript &script) {
    scripts[""] = script;
    start();
}

HttpServer::~HttpServer() {
    stop();
}

std::string HttpServer::url(const std::string &path) const {
    return "http://localhost:" + std::to_string(port) + path;
}

// The second word of the first line.
static std::string target_of(const std::string &request) {
    const std::size_t start = request.find(' ') + 1;
    return request.substr(start, request.find(' ', start) - start);
}

void HttpServer::serve(NetworkSocket client) {
    std::string path;
    if (reads_requests) {
        requests.push_back(read_head(client));
        path = target_of(requests.back());
    }
    for (const HttpStep &step : script_for(path))
        play(client, step);
}

HttpScript HttpServer::script_for(const std::string &path) {
    const std::lock_guard guard(lock);
    const auto found = scripts.find(path);
    return found != scripts.end() ? found->second : scripts[""];
}

void HttpServer::give(const std::string &path, const HttpScript &script) {
    const std::lock_guard guard(lock);
    scripts[path] = script;
}

HttpProxy::HttpProxy() {
    start();
}

HttpProxy::~HttpProxy() {
    stop();
}

// Path, query and fragment.
static std::string path_of(const std::string &url) {
    static constexpr std::size_t AFTER_SCHEME = 7; // characters of "http://"
    const std::size_t slash = url.find('/', AFTER_SCHEME);
    return slash == std::string::npos ? "/" : url.substr(slash);
}

static std::int32_t port_in(const std::string &url) {
    const std::size_t colon = url.find(':', url.find("://") + 1);
    return colon == std::string::npos ? 80 : std::atoi(url.c_str() + colon + 1);
}

static void relay(NetworkSocket from, NetworkSocket to) {
    std::vector<char> block(BLOCK);
    for (;;) {
        const int got = network_receive(from, block.data(), block.size());
        if (got <= 0 || !send_all(to, block.data(), static_cast<std::size_t>(got)))
            return;
    }
}

void HttpProxy::serve(NetworkSocket client) {
    requests.push_back(read_head(client));
    const std::string &request = requests.back();
    const std::string url = target_of(request);
    const NetworkSocket server = connect_to_loopback(port_in(url));
    if (server == NETWORK_NO_SOCKET) {
        const std::string answer = "HTTP/1.1 502 Bad Gateway\r\n\r\n";
        send_all(client, answer.data(), answer.size());
        return;
    }
    const std::string forwarded =
        "GET " + path_of(url) + request.substr(request.find(' ', request.find(' ') + 1));
    if (send_all(server, forwarded.data(), forwarded.size()))
        relay(server, client);
    network_close(server);
}
