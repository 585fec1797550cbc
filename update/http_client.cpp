#include "update/http_client.h"

#include "platform/text.h"
#include "update/http_client_parts.h"

#include <algorithm>
#include <cstring>
#include <limits>

// How soon an abort is noticed, in milliseconds.
static constexpr std::uint32_t ABORT_INTERVAL = 50;
static constexpr std::int32_t LINE_LENGTH = 99; // bytes; a longer one is read as several lines
static constexpr char LENGTH_KEY[] = "Content-Length: ";

HttpLimits http_client_limits{.timeout = 30000, .disk_bytes = 1024 * 1024 * 1024};
char agent_string[HTTP_AGENT_SIZE];

static std::atomic<bool> all_aborted = false;

void http_client_set_agent_string(const char *text) {
    text_copy(agent_string, text);
}

void http_client_abort(HttpConnection *connection) {
    connection->aborted = true;
}

void http_client_allow(HttpConnection *connection) {
    connection->aborted = false;
}

void http_client_abort_all() {
    all_aborted = true;
}

void http_client_allow_all() {
    all_aborted = false;
}

static std::uint32_t timeout_now() {
    return std::atomic_ref(http_client_limits.timeout).load();
}

bool http_client_is_aborted(const HttpConnection *connection) {
    return all_aborted || connection->aborted;
}

void http_client_close(HttpConnection *connection) {
    if (connection->socket != NETWORK_NO_SOCKET)
        network_close(connection->socket);
    connection->socket = NETWORK_NO_SOCKET;
    connection->first = connection->last = 0;
}

static bool is_letter(char character) {
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

// A host that begins with a letter is a name, any other an address, which must be known by a name
// too.
static bool find_host(const char *host, std::uint32_t *address) {
    return is_letter(host[0]) ? network_find_host(host, address)
                              : network_find_address(host, address);
}

// Waits as long as the system tries, or until the connection is aborted.
static bool wait_until_connected(const HttpConnection *connection) {
    while (!http_client_is_aborted(connection)) {
        if (network_wait(connection->socket, NetworkWait::ToConnect, ABORT_INTERVAL))
            return network_connected(connection->socket);
    }
    return false;
}

std::int32_t http_client_connect(HttpConnection *connection, const char *host, std::int32_t port) {
    const bool direct = http_client_use_proxy(host) != 0;
    const std::int32_t target_port = direct ? port : proxy_port;
    std::uint32_t address;
    if (!find_host(direct ? host : proxy_host, &address))
        return HTTP_NO_HOST;
    connection->socket = network_open();
    if (connection->socket != NETWORK_NO_SOCKET && target_port > 0 &&
        target_port < HTTP_PORT_TOO_LARGE &&
        network_connect(connection->socket, address, static_cast<std::uint16_t>(target_port)) &&
        wait_until_connected(connection))
        return HTTP_OK;
    http_client_close(connection);
    return HTTP_NO_CONNECTION;
}

// In short waits, so that an abort need not touch a socket that another thread may be closing.
static int receive(const HttpConnection *connection, char *buffer, std::size_t size) {
    if (connection->socket == NETWORK_NO_SOCKET)
        return NETWORK_FAILED;
    network_set_timeouts(connection->socket, timeout_now());
    std::uint32_t waited = 0;
    while (!http_client_is_aborted(connection)) {
        const std::uint32_t timeout = timeout_now();
        const std::uint32_t wait = std::min(ABORT_INTERVAL, timeout - std::min(waited, timeout));
        if (network_wait(connection->socket, NetworkWait::ToReceive, wait))
            return network_receive(connection->socket, buffer, size);
        waited += wait;
        if (waited >= timeout)
            return NETWORK_TIMED_OUT;
    }
    return NETWORK_FAILED;
}

// A time-out counts as the end of the data.
static std::int32_t bytes_or_failure(int result) {
    return result == NETWORK_TIMED_OUT ? 0 : result;
}

// True when there are received bytes to be read.
static bool fill(HttpConnection *connection) {
    if (connection->first < connection->last)
        return true;
    const int got = receive(connection, connection->buffer, sizeof connection->buffer);
    connection->first = 0;
    connection->last = got > 0 ? static_cast<std::size_t>(got) : 0;
    return got > 0;
}

static std::size_t take(HttpConnection *connection, char *buffer, std::size_t size) {
    const std::size_t taken = std::min(size, connection->last - connection->first);
    std::memcpy(buffer, connection->buffer + connection->first, taken);
    connection->first += taken;
    return taken;
}

std::int32_t http_client_tcp_read(HttpConnection *connection, char *buffer, std::int32_t length) {
    buffer[0] = '\0';
    const std::size_t size = static_cast<std::size_t>(length);
    if (connection->first < connection->last)
        return static_cast<std::int32_t>(take(connection, buffer, size));
    return bytes_or_failure(receive(connection, buffer, size));
}

std::int32_t http_client_tcp_write(HttpConnection *connection, const char *buffer,
                                   std::int32_t length) {
    if (http_client_is_aborted(connection))
        return NETWORK_FAILED;
    network_set_timeouts(connection->socket, timeout_now());
    return bytes_or_failure(
        network_send(connection->socket, buffer, static_cast<std::size_t>(length)));
}

std::int32_t http_client_tcp_read_line(HttpConnection *connection, char *buffer,
                                       std::int32_t maximum) {
    std::int32_t count = 0;
    while (count < maximum && fill(connection)) {
        take(connection, buffer + count, 1);
        count++;
        if (count >= 2 && buffer[count - 2] == '\r' && buffer[count - 1] == '\n') {
            buffer[count - 2] = buffer[count - 1] = '\0';
            break;
        }
    }
    buffer[count] = '\0';
    return count;
}

// The values are the program's own, the odd ones too.
std::string http_client_request(const char *target, const char *host) {
    std::string request = "GET ";
    request.append(target).append(" HTTP/1.1\r\nHost: ").append(host);
    request.append("\r\nConnection: close\r\nUser-Agent: ").append(agent_string);
    return request.append("\r\nAccept: html/text\r\nCache-Control: no\r\nReferer: -\r\n\r\n");
}

static std::int32_t send_request(HttpConnection *connection, const std::string &request) {
    const std::int32_t length = static_cast<std::int32_t>(request.size());
    return http_client_tcp_write(connection, request.data(), length) == length ? HTTP_OK
                                                                               : HTTP_NOT_SENT;
}

// Reads the lines up to an empty one. The end of the data counts as one: a status line has arrived,
// so that it is not missing, and the body is empty then. A line that fills the buffer without its
// end counts as whole, and then the end that follows as an empty line.
static std::int32_t read_headers(HttpConnection *connection, std::int64_t read_before,
                                 std::int64_t *length) {
    char line[LINE_LENGTH + 1];
    std::int64_t head = read_before;
    for (;;) {
        const std::int32_t got = http_client_tcp_read_line(connection, line, LINE_LENGTH);
        head += got;
        if (head > HTTP_HEAD_LIMIT || http_client_is_aborted(connection))
            return HTTP_NO_STATUS;
        if (line[0] == '\0')
            return HTTP_OK;
        const char *key = std::strstr(line, LENGTH_KEY); // anywhere; the last such line wins
        if (key != nullptr)
            *length = http_client_decimal(key + sizeof LENGTH_KEY - 1,
                                          std::numeric_limits<std::int64_t>::max());
    }
}

std::int32_t http_client_read_head(HttpConnection *connection, std::int64_t *length) {
    *length = 0;
    char line[LINE_LENGTH + 1];
    const std::int32_t got = http_client_tcp_read_line(connection, line, LINE_LENGTH);
    if (got == 0)
        return HTTP_NO_STATUS;
    if (!text_contains(line, " 200 "))
        return HTTP_BAD_STATUS;
    return read_headers(connection, got, length);
}

std::int32_t http_client_download_to_disk_chunked_open(const char *url, HttpConnection *connection,
                                                       std::int64_t *length) {
    http_client_close(connection);
    *length = 0;
    connection->ended = false;
    connection->delivered = 0;
    char host[HTTP_HOST_SIZE], path[HTTP_PATH_SIZE];
    std::int32_t port;
    std::int32_t result = http_client_parse_url(url, host, path, &port);
    if (result == HTTP_OK)
        result = http_client_connect(connection, host, port);
    if (result != HTTP_OK)
        return result;
    const bool direct = http_client_use_proxy(host) != 0;
    result = send_request(connection, http_client_request(direct ? path : url, host));
    if (result == HTTP_OK)
        result = http_client_read_head(connection, length);
    if (result != HTTP_OK)
        http_client_close(connection);
    return result;
}

// Bytes that may still be asked for; the first byte beyond the bound ends all.
static std::int64_t allowed(HttpConnection *connection, std::int64_t most) {
    const std::int64_t left = http_client_limits.disk_bytes - connection->delivered;
    if (left <= 0)
        connection->ended = true;
    return std::min(most, left);
}

// Hands on what is there, most bytes at most. 0 when nothing came or it cannot be kept.
static std::size_t hand_on(HttpConnection *connection, std::int64_t most, const HttpSink &sink) {
    if (connection->ended || !fill(connection))
        return 0;
    const std::int64_t there = static_cast<std::int64_t>(connection->last - connection->first);
    const std::int64_t size = std::min(allowed(connection, most), there);
    if (size <= 0)
        return 0;
    const std::size_t bytes = static_cast<std::size_t>(size);
    if (!sink.write(sink.context, connection->buffer + connection->first, bytes)) {
        connection->ended = true;
        return 0;
    }
    connection->first += bytes;
    connection->delivered += size;
    return bytes;
}

std::int64_t http_client_download_to_disk_chunked_get(std::int64_t count,
                                                      HttpConnection *connection,
                                                      const HttpSink &sink) {
    count = std::max<std::int64_t>(count, 1);
    std::int64_t written = 0;
    while (written < count) {
        const std::size_t size = hand_on(connection, count - written, sink);
        if (size == 0)
            break;
        written += static_cast<std::int64_t>(size);
    }
    return written;
}
