#include "platform/network.h"

#include "platform/socket_calls.h"

#include <memory>
#include <new>
#include <windows.h>
#include <wininet.h>

static constexpr BYTE WINSOCK_MAJOR = 2;
static constexpr BYTE WINSOCK_MINOR = 2;

int network_start() {
    WSADATA data;
    if (WSAStartup(MAKEWORD(WINSOCK_MAJOR, WINSOCK_MINOR), &data) != 0)
        return 1;
    if (data.wVersion == MAKEWORD(WINSOCK_MAJOR, WINSOCK_MINOR))
        return 0;
    WSACleanup();
    return 1;
}

void network_stop() {
    WSACleanup();
}

// The library keeps one answer for each thread.
static bool first_address(const hostent *host, std::uint32_t *address) {
    if (host == nullptr || host->h_length != sizeof *address || host->h_addr_list[0] == nullptr)
        return false;
    CopyMemory(address, host->h_addr_list[0], sizeof *address);
    return true;
}

bool network_find_host(const char *name, std::uint32_t *address) {
    return first_address(gethostbyname(name), address);
}

bool network_find_address(const char *dotted, std::uint32_t *address) {
    const std::uint32_t number = inet_addr(dotted);
    if (number == INADDR_NONE)
        return false;
    return first_address(
        gethostbyaddr(reinterpret_cast<const char *>(&number), sizeof number, AF_INET), address);
}

NetworkSocket network_open() {
    const SOCKET made = socket(AF_INET, SOCK_STREAM, 0);
    return made == INVALID_SOCKET ? NETWORK_NO_SOCKET : static_cast<NetworkSocket>(made);
}

void network_close(NetworkSocket socket) {
    closesocket(socket_number(socket));
}

static bool set_waiting(NetworkSocket socket, bool waits) {
    u_long at_once = waits ? 0 : 1;
    return ioctlsocket(socket_number(socket), FIONBIO, &at_once) == 0;
}

bool network_connect(NetworkSocket socket, std::uint32_t address, std::uint16_t port) {
    return set_waiting(socket, false) &&
           (socket_connect(socket, address, port) || WSAGetLastError() == WSAEWOULDBLOCK);
}

bool network_connected(NetworkSocket socket) {
    return socket_is_sound(socket) && set_waiting(socket, true);
}

// A connection that fails is reported among the errors, not among those that can be written. Of an
// open one they would tell urgent data, which the next receive does not get.
bool network_wait(NetworkSocket socket, NetworkWait what, std::uint32_t milliseconds) {
    fd_set waits, errors;
    waits.fd_count = errors.fd_count = 1;
    waits.fd_array[0] = errors.fd_array[0] = socket_number(socket);
    timeval time{.tv_sec = static_cast<long>(milliseconds / 1000),
                 .tv_usec = static_cast<long>(milliseconds % 1000) * 1000};
    return select(0, what == NetworkWait::ToReceive ? &waits : nullptr,
                  what == NetworkWait::ToConnect ? &waits : nullptr,
                  what == NetworkWait::ToConnect ? &errors : nullptr, &time) != 0;
}

void network_set_timeouts(NetworkSocket socket, std::uint32_t milliseconds) {
    const DWORD time = milliseconds;
    for (const int direction : {SO_RCVTIMEO, SO_SNDTIMEO})
        socket_set(socket, SOL_SOCKET, direction, time);
}

static int bytes_or_code(int bytes) {
    if (bytes >= 0)
        return bytes;
    return WSAGetLastError() == WSAETIMEDOUT ? NETWORK_TIMED_OUT : NETWORK_FAILED;
}

int network_receive(NetworkSocket socket, char *bytes, std::size_t size) {
    return bytes_or_code(recv(socket_number(socket), bytes, static_cast<int>(size), 0));
}

int network_send(NetworkSocket socket, const char *bytes, std::size_t size) {
    return bytes_or_code(send(socket_number(socket), bytes, static_cast<int>(size), 0));
}

int network_proxy_setting(ProxySetting *setting) {
    DWORD size = 0;
    InternetQueryOptionA(nullptr, INTERNET_OPTION_PROXY, nullptr, &size);
    if (size < sizeof(INTERNET_PROXY_INFO))
        return 1;
    const std::unique_ptr<std::byte[]> memory(new (std::nothrow) std::byte[size]);
    if (memory == nullptr ||
        !InternetQueryOptionA(nullptr, INTERNET_OPTION_PROXY, memory.get(), &size))
        return 1;
    const auto *info = reinterpret_cast<const INTERNET_PROXY_INFO *>(memory.get());
    setting->access = static_cast<std::int32_t>(info->dwAccessType);
    setting->proxies = info->lpszProxy != nullptr ? info->lpszProxy : "";
    setting->bypass = info->lpszProxyBypass != nullptr ? info->lpszProxyBypass : "";
    return 0;
}
