#include "platform/network.h"

#include "platform/posix/recorder.h"
#include "platform/socket_calls.h"

#include <arpa/inet.h>
#include <atomic>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <netdb.h>
#include <poll.h>
#include <unistd.h>
#include <vector>

static constexpr std::size_t HOST_MEMORY = 1024;              // bytes of a usual answer
static constexpr std::size_t HOST_MEMORY_LIMIT = 1024 * 1024; // bytes; no host has as many names

int network_start() {
    if (recorder.network_missing)
        return 1;
    recorder.network_users++;
    return 0;
}

void network_stop() {
    recorder.network_users--;
}

// Calls look_up(host, memory, size, &result, &error), which answers ERANGE when the memory is too
// small. Unlike gethostbyname itself these may be called on several threads.
template <typename LookUp>
static bool find(std::uint32_t *address, LookUp look_up) {
    std::vector<char> memory(HOST_MEMORY);
    hostent host, *result = nullptr;
    int error, code;
    while ((code = look_up(&host, memory.data(), memory.size(), &result, &error)) == ERANGE &&
           memory.size() < HOST_MEMORY_LIMIT)
        memory.resize(2 * memory.size());
    if (code != 0 || result == nullptr || result->h_length != sizeof *address ||
        result->h_addr_list[0] == nullptr)
        return false;
    std::memcpy(address, result->h_addr_list[0], sizeof *address);
    return true;
}

bool network_find_host(const char *name, std::uint32_t *address) {
    recorder.name_lookups++;
    return find(address, [name](hostent *host, char *memory, std::size_t size, hostent **result,
                                int *error) {
        return gethostbyname_r(name, host, memory, size, result, error);
    });
}

bool network_find_address(const char *dotted, std::uint32_t *address) {
    const in_addr_t number = inet_addr(dotted);
    if (number == INADDR_NONE)
        return false;
    recorder.address_lookups++;
    if (recorder.addresses_unknown)
        return false;
    return find(address, [number](hostent *host, char *memory, std::size_t size, hostent **result,
                                  int *error) {
        return gethostbyaddr_r(&number, sizeof number, AF_INET, host, memory, size, result, error);
    });
}

NetworkSocket network_open() {
    return socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
}

void network_close(NetworkSocket socket) {
    close(socket_number(socket));
}

static bool set_waiting(NetworkSocket socket, bool waits) {
    const int flags = fcntl(socket_number(socket), F_GETFL);
    return fcntl(socket_number(socket), F_SETFL,
                 waits ? flags & ~O_NONBLOCK : flags | O_NONBLOCK) == 0;
}

bool network_connect(NetworkSocket socket, std::uint32_t address, std::uint16_t port) {
    recorder.connects++;
    return set_waiting(socket, false) &&
           (socket_connect(socket, address, port) || errno == EINPROGRESS);
}

bool network_connected(NetworkSocket socket) {
    return socket_is_sound(socket) && set_waiting(socket, true);
}

bool network_wait(NetworkSocket socket, NetworkWait what, std::uint32_t milliseconds) {
    const short events = what == NetworkWait::ToConnect ? POLLOUT : POLLIN;
    pollfd wait{.fd = socket_number(socket), .events = events, .revents = 0};
    return poll(&wait, 1, static_cast<int>(milliseconds)) > 0;
}

void network_set_timeouts(NetworkSocket socket, std::uint32_t milliseconds) {
    const timeval time{.tv_sec = milliseconds / 1000,
                       .tv_usec = static_cast<suseconds_t>(milliseconds % 1000) * 1000};
    for (const int direction : {SO_RCVTIMEO, SO_SNDTIMEO})
        socket_set(socket, SOL_SOCKET, direction, time);
}

static int bytes_or_code(ssize_t bytes) {
    if (bytes >= 0)
        return static_cast<int>(bytes);
    return errno == EAGAIN || errno == ETIMEDOUT ? NETWORK_TIMED_OUT : NETWORK_FAILED;
}

int network_receive(NetworkSocket socket, char *bytes, std::size_t size) {
    return bytes_or_code(recv(socket_number(socket), bytes, size, 0));
}

int network_send(NetworkSocket socket, const char *bytes, std::size_t size) {
    std::atomic_ref(recorder.sends)++; // a server in a test may be sending as well
    return bytes_or_code(send(socket_number(socket), bytes, size, MSG_NOSIGNAL));
}

int network_proxy_setting(ProxySetting *setting) {
    if (recorder.proxy_missing)
        return 1;
    *setting = recorder.proxy;
    return 0;
}
